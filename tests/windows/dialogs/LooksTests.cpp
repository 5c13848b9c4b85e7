// Titles, fonts, colours, and whom a dialog tells of itself.
#include "DialogFixture.h"

#include <stdexcept>

namespace {

using test::TestDialog;

using Looks = test::ZTDialogFixture;

// What titles are made of stands in the core.
TEST_F(Looks, TitlesHaveTheClientWhileThereIsOne) {
    TestDialog dialog;
    dialog.m_strTitleDetails = "NSE";
    CString title;
    for (const char* outcome : {"Order", "Order - Asha( NSE )"}) {
        dialog.open(frame());
        dialog.GetWindowText(title);
        EXPECT_EQ(title, outcome);
        dialog.ShowWindow(SW_HIDE);
        fakeHost().appStatus = 4;
        fakeHost().clientName = "Asha";
    }
    auto* const combo = static_cast<CComboBox*>(dialog.GetDlgItem(IDC_CHOICE));
    combo->AddString("NIFTY");
    dialog.SetWindowText("T");
    for (const char* outcome : {"T - Asha", "T - Asha - Asha                     NIFTY"}) {
        dialog.SetWindowTitleWithClientName(IDC_CHOICE);
        dialog.GetWindowText(title);
        EXPECT_EQ(title, outcome);
        combo->SetCurSel(0);
    }
}

class CSnapQuoteDlg : public TestDialog {
    DECLARE_DYNAMIC(CSnapQuoteDlg)
};
IMPLEMENT_DYNAMIC(CSnapQuoteDlg, CZTDialog)

TEST_F(Looks, AFontGoesToAllButListsAndHeaders) {
    CFont font;
    font.CreateFont(30, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, "Tahoma");
    TestDialog plain;
    CSnapQuoteDlg quote;
    for (TestDialog* const dialog : {&plain, static_cast<TestDialog*>(&quote)}) {
        dialog->open(frame());
        CWnd* const list = dialog->GetDlgItem(IDC_LIST);
        const HWND header = reinterpret_cast<HWND>(list->SendMessage(LVM_GETHEADER));
        dialog->EnumerateChildWindowForFontChange(font);
        const auto has = [&](HWND window) {
            return reinterpret_cast<HFONT>(::SendMessageA(window, WM_GETFONT, 0, 0)) == HFONT(font);
        };
        EXPECT_TRUE(has(*dialog->GetDlgItem(IDC_TEXT)));
        const bool given = dialog->IsKindOf(RUNTIME_CLASS(CSnapQuoteDlg));
        EXPECT_EQ(has(*list), given);
        EXPECT_EQ(has(header), given) << "a list hands its font on";
        dialog->DestroyWindow();
    }
}

class CountingDialog : public TestDialog {
public:
    int seen = 0, endAt = 0;

protected:
    BOOL MyMemberEnumFunction(HWND, LPARAM context) override {
        EXPECT_EQ(reinterpret_cast<sEnumChildContext*>(context)->pDialog, this);
        if (++seen == endAt) DestroyWindow();
        return FALSE;  // goes on all the same
    }
};

TEST_F(Looks, ChildrenAreEnumeratedWhateverIsDoneToThem) {
    TestDialog plain;
    plain.open(frame());
    plain.EnumerateChildWindow();
    for (const int id : {IDC_TEXT, IDCANCEL, IDC_LIST}) EXPECT_FALSE(plain.GetDlgItem(id)->IsWindowEnabled());
    CountingDialog dialog;
    dialog.endAt = 8;
    dialog.open(frame());
    dialog.EnumerateChildWindow();
    EXPECT_EQ(dialog.seen, 7) << "six controls and a header";
    dialog.EnumerateChildWindow();
    EXPECT_EQ(dialog.seen, 8);
}

TEST_F(Looks, TheBrushHasTheThemesColour) {
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE), window = ::GetSysColor(COLOR_WINDOW);
    CRuntimeClass* const styled = RUNTIME_CLASS(CBCGPVisualManager2007);
    const struct {
        CRuntimeClass* theme;
        int style;
        COLORREF color;
    } cases[] = {{nullptr, 0, face},
                 {RUNTIME_CLASS(CBCGPVisualManager), 0, face},
                 {RUNTIME_CLASS(CBCGPVisualManagerXP), 0, window},
                 {RUNTIME_CLASS(CBCGPVisualManagerVS2005), 0, window},
                 {styled, 1, 0xE5E2E1},
                 {styled, 2, 0xE9DAD4},
                 {styled, 3, 0xDDD4D0},
                 {styled, 4, 0xF5D7C1}};
    TestDialog dialog;
    dialog.open(frame());
    CClientDC dc(&dialog);
    const auto colorOf = [&](UINT kind, bool bases) {
        LOGBRUSH brush{};
        dialog.m_bDefaultCtlColor = bases;
        ::GetObjectA(dialog.OnCtlColor(&dc, &dialog, kind), sizeof(brush), &brush);
        return brush.lbColor;
    };
    for (const auto& each : cases) {
        CBCGPVisualManager::SetDefaultManager(each.theme);
        CBCGPVisualManager2007::SetStyle(static_cast<CBCGPVisualManager2007::Style>(each.style));
        CZTDialog::VisualizationColor();
        EXPECT_EQ(colorOf(CTLCOLOR_DLG, true), each.color);
        EXPECT_EQ(colorOf(CTLCOLOR_STATIC, false), each.color);
    }
    EXPECT_NE(colorOf(CTLCOLOR_STATIC, true), cases[7].color);
    CBCGPVisualManager::DestroyInstance();
}

class HearingEdit : public CEdit {
public:
    int heard = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        heard += message == WM_SYSCOLORCHANGE;
        return CEdit::WindowProc(message, wParam, lParam);
    }
};

TEST_F(Looks, ControlsHearOfNewSystemColours) {
    TestDialog dialog;
    dialog.open(frame());
    HearingEdit control;
    control.SubclassDlgItem(IDC_TEXT, &dialog);
    dialog.SendMessage(WM_SYSCOLORCHANGE);
    EXPECT_EQ(control.heard, 1);
}

using Events = std::vector<std::pair<int, CZTDialog*>>;

class RecordingWatcher : public CWatcher {
public:
    Events events;
    std::function<void()> onEvent;
    void OnUpdate(int event, CString text, sUpdateData* data, int last) override {
        EXPECT_TRUE(text.IsEmpty() && last == 0);
        events.emplace_back(event, reinterpret_cast<CZTDialog*>(data));
        if (onEvent) onEvent();
    }
    void OnReserved() override {}
};

TEST_F(Looks, TheWatcherHearsOfEachDialogOnce) {
    RecordingWatcher watcher;
    CZTDialog::SetLayoutWatcher(&watcher);
    TestDialog dialog;
    const Events both{{1, &dialog}, {0, &dialog}};
    for (int time = 0; time < 2; ++time) {
        dialog.open(frame());
        dialog.press(IDCANCEL);
        dialog.open(frame());
        dialog.DestroyWindow();
        EXPECT_EQ(std::exchange(watcher.events, {}), both);
    }
    watcher.onEvent = [&] { dialog.DestroyWindow(); };
    EXPECT_EQ(dialog.Create(IDD_FIXED, &frame()), TRUE);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(watcher.events, both) << "a watcher that ends it, in either event";
    watcher.onEvent = [] { throw std::runtime_error("in the watcher"); };
    EXPECT_THROW(dialog.Create(IDD_FIXED, &frame()), std::runtime_error);
    watcher.onEvent = nullptr;
    dialog.DestroyWindow();
    EXPECT_EQ(CZTDialog::AllDlgArray.GetCount(), 0);
}

TEST_F(Looks, TheHostGuardsAgainstCaptureAtEachShow) {
    TestDialog dialog;
    for (int show = 1; show <= 2; ++show) {
        dialog.open(frame());
        EXPECT_EQ(fakeHost().calls.count("pu_RegisterForWindowDisplayAffinity"), show);
        dialog.press(IDCANCEL);
        EXPECT_EQ(fakeHost().calls.count("pu_RemoveWindowFromDispAffinityWindowsMap"), show);
    }
    EXPECT_EQ(dialog.SetDisplayAffinity(), FakeHost::affinityResult);
    EXPECT_EQ(fakeHost().calls.count("pu_GetAppdataHashCode"), 1);
    EXPECT_EQ(dialog.GetProfileSection(), "Software\\Zorvane Technologies\\QUOR Trader\\hash\\201\\");
}

}  // namespace
