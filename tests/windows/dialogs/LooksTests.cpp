// Titles, fonts, colours, and whom a dialog tells of itself. What titles are made of stands in the core.
#include "DialogFixture.h"

#include <stdexcept>

namespace {

using test::TestDialog;
using Looks = test::ZTDialogFixture;

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
    auto& combo = *static_cast<CComboBox*>(dialog.GetDlgItem(IDC_CHOICE));
    combo.SetCurSel(combo.AddString("NIFTY"));
    dialog.SetWindowText("T");
    dialog.SetWindowTitleWithClientName(IDC_CHOICE);
    dialog.GetWindowText(title);
    EXPECT_EQ(title, "T - Asha                     NIFTY");
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
        dialog->EnumerateChildWindowForFontChange(font);
        const auto has = [&](CWnd* window) { return reinterpret_cast<HFONT>(window->SendMessage(WM_GETFONT)) == font; };
        CWnd* const list = dialog->GetDlgItem(IDC_LIST);
        const bool given = dialog->IsKindOf(RUNTIME_CLASS(CSnapQuoteDlg));
        EXPECT_TRUE(has(dialog->GetDlgItem(IDC_TEXT)));
        EXPECT_EQ(has(list), given);
        EXPECT_EQ(has(static_cast<CListCtrl*>(list)->GetHeaderCtrl()), given) << "a list hands its font on";
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
    for (const int id : {IDC_TEXT, IDC_LIST}) EXPECT_FALSE(plain.GetDlgItem(id)->IsWindowEnabled());
    CountingDialog dialog;
    dialog.endAt = 8;
    dialog.open(frame());
    for (const int seen : {7, 8}) {  // six controls and a header, then one, which ends it
        dialog.EnumerateChildWindow();
        EXPECT_EQ(dialog.seen, seen);
    }
}

TEST_F(Looks, TheBrushHasTheThemesColour) {
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE), window = ::GetSysColor(COLOR_WINDOW);
    CRuntimeClass *const styled = RUNTIME_CLASS(CBCGPVisualManager2007),
                         *const plain = RUNTIME_CLASS(CBCGPVisualManager),
                         *const flat = RUNTIME_CLASS(CBCGPVisualManagerVS2005);
    const struct {
        CRuntimeClass* theme;
        int style;
        COLORREF color;
    } cases[] = {{nullptr, 0, face},    {plain, 0, face},      {flat, 0, window},    {styled, 1, 0xE5E2E1},
                 {styled, 2, 0xE9DAD4}, {styled, 3, 0xDDD4D0}, {styled, 4, 0xF5D7C1}};
    TestDialog dialog;
    dialog.open(frame());
    CClientDC dc(&dialog);
    const auto colorOf = [&](UINT kind, bool bases) {
        LOGBRUSH brush{};
        dialog.m_bDefaultCtlColor = bases;
        ::GetObjectA(dialog.OnCtlColor(&dc, &dialog, kind), sizeof(brush), &brush);
        return brush.lbColor;
    };
    for (const auto& [theme, style, color] : cases) {
        CBCGPVisualManager::SetDefaultManager(theme);
        CBCGPVisualManager2007::SetStyle(static_cast<CBCGPVisualManager2007::Style>(style));
        CZTDialog::VisualizationColor();
        EXPECT_EQ(colorOf(CTLCOLOR_DLG, true), color);
        EXPECT_EQ(colorOf(CTLCOLOR_STATIC, false), color);
    }
    EXPECT_NE(colorOf(CTLCOLOR_STATIC, true), 0xF5D7C1u);
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

TEST_F(Looks, TheWatcherAndTheHostHearOfEachDialog) {
    RecordingWatcher watcher;
    CZTDialog::SetLayoutWatcher(&watcher);
    TestDialog dialog;
    const Events both{{1, &dialog}, {0, &dialog}};
    dialog.open(frame());
    for (int show = 1; show <= 2; ++show) {
        dialog.open(frame());
        EXPECT_EQ(fakeHost().calls.count("pu_RegisterForWindowDisplayAffinity"), show);
        dialog.press(IDCANCEL);
        EXPECT_EQ(fakeHost().calls.count("pu_RemoveWindowFromDispAffinityWindowsMap"), show);
    }
    EXPECT_EQ(dialog.SetDisplayAffinity(), FakeHost::affinityResult);
    EXPECT_EQ(dialog.GetProfileSection(), "Software\\Zorvane Technologies\\QUOR Trader\\hash\\201\\");
    dialog.DestroyWindow();
    EXPECT_EQ(std::exchange(watcher.events, {}), both);
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

}  // namespace
