// Who gets the focus when a dialog closes, and what stays of one that has closed.
#include "DialogFixture.h"
#include "quor/platform/proving/UserInput.h"
#include "support/HandleCounts.h"
#include "support/Rounds.h"

namespace {

using test::TestDialog;

class Focus : public test::ZTDialogFixture {
protected:
    Focus() {
        bar.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &frame(), 77);
        frame().SetFocus();
    }
    void TearDown() override {
        bar.DestroyWindow();
        ZTDialogFixture::TearDown();
    }
    // From the top: the windows of the stack, which is emptied.
    static std::vector<CWnd*> takeStack() {
        std::vector<CWnd*> windows;
        int flag = 0;
        while (CWnd* const window = GetFocusWnd(flag)) {
            windows.push_back(window);
            RemoveFocusWnd(window);
        }
        return windows;
    }

    CEdit bar;
};

TEST_F(Focus, NothingIsLeftOfADialogThatHidOnAnyRoad) {
    const std::pair<const char*, std::function<void(TestDialog&)>> roads[] = {
        {"OK", [](TestDialog& dialog) { dialog.press(IDOK); }},
        {"Cancel", [](TestDialog& dialog) { dialog.press(IDCANCEL); }},
        {"a caption that is not known", [](TestDialog& dialog) { dialog.press(IDC_CLOSE), dialog.EndDialog(7); }},
        {"Esc", [](TestDialog& dialog) { dialog.SetFocus(IDC_TEXT), quor::sendKeys({VK_ESCAPE}), pumpUntilIdle(); }},
        {"the close box", [](TestDialog& dialog) { dialog.SendMessage(WM_SYSCOMMAND, SC_CLOSE), pumpUntilIdle(); }},
        {"code", [](TestDialog& dialog) { dialog.ShowWindow(SW_HIDE); }},
        {"its end", [](TestDialog& dialog) { dialog.DestroyWindow(); }},
    };
    const long rounds = test::rounds("QUOR_DIALOG_ROUNDS", 200);
    takeStack();
    for (const auto& [road, hide] : roads) {
        SCOPED_TRACE(road);
        AddToFocusWnd(&bar, 0);
        AddToFocusWnd(&frame(), 0);
        TestDialog dialog;
        test::HandleCounts after;
        for (long round = 0; round < rounds; ++round) {
            dialog.open(frame());
            hide(dialog);
            ASSERT_TRUE(!dialog.m_hWnd || !dialog.IsWindowVisible()) << round;
            if (round == 0) after = test::countHandles();
        }
        EXPECT_EQ(GetPreviousFocusWnd(), &bar);
        EXPECT_EQ(takeStack(), (std::vector<CWnd*>{&frame(), &bar}));
        EXPECT_EQ(CZTDialog::AllDlgArray.GetCount(), dialog.m_hWnd ? 1 : 0);
        EXPECT_EQ(test::countHandles(), after);
    }
    EXPECT_EQ(CZTDialog::AllDlgArray.GetCount(), 0);
}

// How the stack works stands in the core; here: whose window lives.
TEST_F(Focus, TheStackFollowsNoDeadWindow) {
    int flag = 5;
    EXPECT_EQ(GetFocusWnd(flag), nullptr);
    EXPECT_EQ(flag, 5);
    AddToFocusWnd(&bar, 1);
    {
        CEdit gone;
        gone.Create(WS_CHILD, CRect(), &frame(), 78);
        AddToFocusWnd(&gone, 2);
        EXPECT_EQ(GetPreviousFocusWnd(), &bar);
    }
    AddToFocusWnd(nullptr, 3);
    EXPECT_EQ(GetPreviousFocusWnd(), nullptr);
    EXPECT_EQ(GetFocusWnd(flag), &bar);
    EXPECT_EQ(flag, 1);
    takeStack();
}

enum Behind { kMain, kDialog, kMultiMonitor, kModal, kMiniFrame, kMiniFrameWithBar };
enum Given { kToBar, kToMain, kToOther, kStaysInDialog };

// A dialog over the main window and perhaps one window more.
TEST_F(Focus, AClickThatClosesHandsTheFocusOn) {
    const struct {
        Behind behind;
        bool hasBar;
        int button;
        bool focusStatus;
        Given given;
    } cases[] = {
        {kMain, true, IDOK, true, kToBar},
        {kMain, false, IDOK, true, kToMain},
        {kDialog, true, IDOK, false, kToMain},
        {kDialog, false, IDOK, true, kToOther},
        {kMultiMonitor, true, IDOK, true, kToBar},
        {kMultiMonitor, false, IDOK, true, kToMain},
        {kModal, true, IDOK, true, kStaysInDialog},
        {kModal, false, IDCANCEL, false, kStaysInDialog},
        {kMiniFrame, true, IDOK, true, kToMain},
        {kMiniFrameWithBar, true, IDOK, true, kToBar},
        {kModal, true, IDC_CLOSE, false, kStaysInDialog},  // a caption that is not known
    };
    for (const auto& [behind, hasBar, button, focusStatus, given] : cases) {
        SCOPED_TRACE(std::to_string(behind) + (hasBar ? " with bar" : ""));
        CZTDialog::m_pDgBar = hasBar ? &bar : nullptr;
        CZTDialog::m_bGlobalMmmMode = true;
        frame().SetFocus();
        TestDialog other, dialog;
        CBCGPMiniFrameWnd mini;
        CEdit floating;
        if (behind >= kMiniFrame) mini.CreateEx(0, "Bars", WS_VISIBLE, CRect(300, 300, 500, 400), &frame());
        if (behind == kMiniFrameWithBar) floating.Create(WS_CHILD, CRect(), &mini, 10000);
        if (behind != kMain && behind < kMiniFrame) other.open(frame());
        other.m_bMmmMode = behind == kMultiMonitor || behind == kModal;
        other.m_nFlags |= behind == kModal ? WF_MODALLOOP : 0;
        dialog.open(frame());
        CZTDialog::m_bFocusStatus = false;
        dialog.press(button);
        EXPECT_EQ(dialog.IsWindowVisible() != FALSE, given == kStaysInDialog);
        EXPECT_EQ(CZTDialog::m_bFocusStatus, focusStatus);
        EXPECT_EQ(::GetFocus() == bar.m_hWnd, given == kToBar);
        const HWND active[] = {frame(), frame(), other, dialog};
        EXPECT_EQ(::GetActiveWindow(), active[given]);
        other.m_nFlags &= ~WF_MODALLOOP;
        takeStack();
    }
}

TEST_F(Focus, AWindowOfTheStackWithAFlagComesFirst) {
    CZTDialog::m_pDgBar = &frame();
    for (const int flag : {0, 1}) {
        frame().SetFocus();
        AddToFocusWnd(&bar, flag);
        TestDialog dialog;
        dialog.open(frame());
        dialog.press(IDOK);
        EXPECT_EQ(::GetFocus() == bar.m_hWnd, flag != 0);
        EXPECT_EQ(takeStack().size(), flag ? 0u : 1u);
    }
}

// A dialog whose object goes with its window, at the click.
class PassingDialog : public TestDialog {
public:
    static inline int living = 0;
    PassingDialog() { ++living; }
    ~PassingDialog() override { --living; }

protected:
    void OnOK() override { DestroyWindow(); }
    void PostNcDestroy() override { delete this; }
};

TEST_F(Focus, ADialogMayEndWithItsClick) {
    for (const bool hasBar : {true, false}) {
        CZTDialog::m_pDgBar = hasBar ? &bar : nullptr;
        for (const bool overDialog : {false, true}) {
            TestDialog other;
            if (overDialog) other.open(frame());
            auto* const dialog = new PassingDialog;
            dialog->open(frame());
            dialog->press(IDOK);
            EXPECT_EQ(PassingDialog::living, 0);
            EXPECT_EQ(CZTDialog::AllDlgArray.GetCount(), overDialog ? 1 : 0);
            EXPECT_EQ(::GetActiveWindow(), overDialog ? other.m_hWnd : frame().m_hWnd);
            EXPECT_EQ(::GetFocus() == bar.m_hWnd, hasBar && !overDialog);
        }
    }
}

TEST_F(Focus, AControlGetsItAtTheNextActivation) {
    TestDialog dialog;
    dialog.open(frame());
    for (const bool lives : {true, false}) {
        dialog.SetFocus(IDC_TEXT);
        EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), IDC_TEXT);
        dialog.ZTDGotoDlgCtrl(dialog.GetDlgItem(IDC_LIST));
        frame().SetActiveWindow();
        pumpUntilIdle();  // the object that was named is gone by then
        if (!lives) dialog.GetDlgItem(IDC_LIST)->DestroyWindow();
        dialog.SetActiveWindow();
        pumpUntilIdle();
        EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), lives ? IDC_LIST : IDC_TEXT);
    }
}

}  // namespace
