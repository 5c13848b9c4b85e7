#include "FrameworkTestsIds.h"
#include "support/CallRecorder.h"
#include "support/Input.h"
#include "support/WindowFixture.h"

#include <stdexcept>

namespace {

test::CallRecorder calls;

class TestDialog : public CDialog {
public:
    std::function<void(TestDialog&)> onInit;
    CEdit edit;
    CString text = "initial";
    explicit TestDialog(CWnd& owner) : CDialog(IDD_MODAL, &owner) {}

    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        calls.record("init", IsWindowVisible());
        if (onInit) onInit(*this);
        return TRUE;
    }

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, IDC_TEXT, edit);
        DDX_Text(exchange, IDC_TEXT, text);
    }
    void OnOK() override {
        calls.record("ok");
        CDialog::OnOK();
    }
    void OnCancel() override {
        calls.record("cancel");
        CDialog::OnCancel();
    }
    void PostNcDestroy() override { calls.record("end"); }
};

class Dialog : public test::WindowFixture {
protected:
    TestDialog dialog{frame()};

    void SetUp() override { calls.clear(); }
    // Runs it modally; `act` is called once the dialog stands.
    INT_PTR runModal(const std::function<void(TestDialog&)>& act) {
        frame().onMessage = [this, act](UINT message, WPARAM, LPARAM, LRESULT&) {
            if (message == WM_APP) act(dialog);
            return false;
        };
        frame().PostMessage(WM_APP);
        return dialog.DoModal();
    }
};

TEST_F(Dialog, ModalDialogEndsByKeys) {
    const struct {
        WORD key;
        INT_PTR result;
        const char* call;
        const char* text;
    } cases[] = {{VK_RETURN, IDOK, "ok", "an initial"}, {VK_ESCAPE, IDCANCEL, "cancel", "initial"}};
    for (const auto& each : cases) {
        calls.clear();
        dialog.text = "initial";
        bool ownerEnabled = true;
        bool focusInFirst = false;
        const INT_PTR result = runModal([&](TestDialog& shown) {
            EXPECT_TRUE(shown.IsWindowVisible());
            ownerEnabled = frame().IsWindowEnabled();
            focusInFirst = ::GetFocus() == shown.edit.m_hWnd;
            test::sendKeys({VK_HOME});
            test::sendText("an ");
            test::sendKeys({each.key});
        });
        EXPECT_EQ(result, each.result);
        EXPECT_EQ(calls.take(), (test::Calls{"init 0", each.call, "end"}));
        EXPECT_FALSE(ownerEnabled);
        EXPECT_TRUE(focusInFirst);
        EXPECT_TRUE(frame().IsWindowEnabled());
        EXPECT_EQ(::GetActiveWindow(), frame().m_hWnd);
        EXPECT_STREQ(dialog.text, each.text);
        EXPECT_EQ(dialog.m_hWnd, nullptr);
    }
}

TEST_F(Dialog, ExceptionsLeaveNoDialogAndNoDisabledOwner) {
    dialog.onInit = [](TestDialog&) { throw std::runtime_error("in OnInitDialog"); };
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_TRUE(frame().IsWindowEnabled());
    dialog.onInit = [](TestDialog& made) { made.EndDialog(42); };
    EXPECT_EQ(dialog.DoModal(), 42);
    dialog.onInit = nullptr;
    EXPECT_THROW(runModal([](TestDialog&) { throw std::logic_error("in the loop"); }), std::logic_error);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_TRUE(frame().IsWindowEnabled());
}

TEST_F(Dialog, ModelessDialogIsHiddenByItsButtonsAndEndedByItsOwner) {
    ASSERT_TRUE(dialog.Create(IDD_MODELESS, &frame()));
    EXPECT_TRUE(dialog.IsWindowVisible());
    EXPECT_TRUE(frame().IsWindowEnabled());
    EXPECT_EQ(dialog.GetParent(), &frame());
    pumpUntilIdle();
    dialog.edit.SetFocus();
    test::sendKeys({VK_RETURN});
    pumpUntilIdle();
    EXPECT_TRUE(::IsWindow(dialog));
    EXPECT_FALSE(dialog.IsWindowVisible());
    EXPECT_TRUE(dialog.DestroyWindow());
    EXPECT_EQ(calls.take(), (test::Calls{"init 0", "ok", "end"}));
}

TEST_F(Dialog, TheModalLoopLeavesTheQuitMessageToTheOuterOne) {
    dialog.onInit = [](TestDialog&) { AfxPostQuitMessage(3); };
    EXPECT_EQ(dialog.DoModal(), -1);
    MSG message;
    ASSERT_TRUE(::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
}

// ---- Stored placement

class PlacedDialog : public CBCGPDialog {
public:
    BOOL OnInitDialog() override {
        CBCGPDialog::OnInitDialog();
        EnableLoadWindowPlacement(TRUE, "Software\\Quor\\framework_tests\\");
        return TRUE;
    }
    CRect placeIn(CWnd& owner) {
        EXPECT_TRUE(Create(IDD_PLACED, &owner));
        CRect place;
        GetWindowRect(&place);
        return place;
    }
};

TEST_F(Dialog, PlacementSurvivesTheDialogAndTheSession) {
    ::RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\Quor");
    const CRect place(120, 130, 420, 330), later(150, 160, 450, 360);
    {
        PlacedDialog first;
        first.placeIn(frame());
        first.MoveWindow(place);
    }
    PlacedDialog second;
    EXPECT_EQ(second.placeIn(frame()), place);
    EXPECT_FALSE(second.IsWindowVisible());
    second.MoveWindow(later);
    for (const BOOL ends : {FALSE, TRUE}) {
        second.SendMessage(WM_ENDSESSION, static_cast<WPARAM>(ends));
        PlacedDialog third;
        EXPECT_EQ(third.placeIn(frame()), ends ? later : place);
    }
}

}  // namespace
