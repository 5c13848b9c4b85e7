// The owner-drawn buttons in a real dialog: every road to a press, the dialog's default, what they draw.
#include "EditsTestsIds.h"
#include "quor/edits/ClrButton.h"
#include "quor/edits/QuorSplitButton.h"
#include "quor/edits/XListCtrl.h"
#include "quor/foundation/ControlBlock.h"
#include "quor/platform/proving/UserInput.h"
#include "support/Canvas.h"
#include "support/FakeHost.h"
#include "support/HandleCounts.h"
#include "support/WindowFixture.h"

#include <optional>

namespace {

constexpr UINT kMenuCommand = 700;
constexpr int kChild = WS_CHILD | WS_VISIBLE;
constexpr COLORREF kText = RGB(10, 20, 250), kFace = RGB(250, 250, 200), kOff = RGB(90, 90, 90), kOdd = RGB(1, 2, 3);

// The library's own fault, not the host's, would be to call a loader that is not there.
struct NoThemes {
    NoThemes() {
        g_pControlBlock->quoru_call_LoadLibrary = [](const char*) -> HMODULE { return nullptr; };
    }
    ~NoThemes() { g_pControlBlock->quoru_call_LoadLibrary = former; }
    const decltype(g_pControlBlock->quoru_call_LoadLibrary) former = g_pControlBlock->quoru_call_LoadLibrary;
};

class ButtonDialog : public CDialog {
public:
    CClrButton colour;
    CQuorSplitButton split;
    std::vector<WPARAM> commands;
    std::function<void()> onCommand;

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        const bool isButton = lParam && HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) != IDC_TEXT;
        const bool ends = LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL;
        const BOOL handled = ends || CDialog::OnCommand(wParam, lParam);
        if (isButton) commands.push_back(wParam);
        if (isButton && onCommand) onCommand();
        return handled;
    }

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, IDC_COLOUR, colour);
        DDX_Control(exchange, IDC_SPLIT, split);
    }
};

class Buttons : public test::WindowFixture {
protected:
    Buttons() {
        resetFakeHost();
        open();
        split().RegisterParentDlg(&*dialog);
        split().RegisterParentDlg(nullptr);
        split().m_menu.AppendMenu(MF_STRING, kMenuCommand, "First");
        pumpUntilIdle();
    }
    void TearDown() override {
        dialog.reset();
        WindowFixture::TearDown();
    }
    void open() {
        ASSERT_TRUE(dialog->Create(IDD_BUTTONS, &frame()));
        dialog->ShowWindow(SW_SHOW);
    }
    CQuorSplitButton& split() { return dialog->split; }
    CPoint stripPoint() {
        CRect area;
        split().GetClientRect(area);
        return {area.right - split().m_nMenuStripWidth / 2, area.CenterPoint().y};
    }
    void mouse(UINT message, CPoint at) { split().SendMessage(message, MK_LBUTTON, MAKELPARAM(at.x, at.y)); }
    // Answers the menu that opens next.
    void chooseFirst() {
        split().PostMessage(WM_KEYDOWN, VK_DOWN);
        split().PostMessage(WM_KEYDOWN, VK_RETURN);
    }

    std::optional<ButtonDialog> dialog{std::in_place};
};

TEST_F(Buttons, EveryRoadSendsOneCommand) {
    CQuorSplitButton& b = split();
    const CPoint inside(8, 8);
    const auto press = [&](WPARAM key) { b.SendMessage(WM_KEYDOWN, key), b.SendMessage(WM_KEYUP, key); };
    const auto post = [&](WORD key) { b.PostMessage(WM_KEYDOWN, key); };
    constexpr int kNothing = -1, kMainLast = 100;
    const std::vector<WPARAM> none, main{IDC_SPLIT}, menu{kMenuCommand};
    const struct {
        std::function<void()> act;
        std::vector<WPARAM> commands;
        int last;
    } cases[] = {
        {[&] { quor::sendClick(b, inside); }, main, kMainLast},
        {[&] { quor::sendClick(b, inside, quor::MouseButton::left, 2); }, {IDC_SPLIT, IDC_SPLIT}, kMainLast},
        {[&] { quor::sendDrag(b, inside, CPoint(8, 200)); }, none, kNothing},
        {[&] { mouse(WM_LBUTTONDOWN, inside), ::ReleaseCapture(), mouse(WM_LBUTTONUP, inside); }, none, kNothing},
        {[&] { chooseFirst(), mouse(WM_LBUTTONDOWN, stripPoint()); }, menu, kMenuCommand},
        {[&] { chooseFirst(), press(VK_SPACE); }, menu, kMenuCommand},
        {[&] { post(VK_DOWN), chooseFirst(); }, menu, kMenuCommand},
        {[&] { post(VK_ESCAPE), b.OnShowMenu(); }, none, 0},
        {[&] { b.SendMessage(WM_KEYDOWN, VK_RETURN); }, main, kMainLast},  // not by the dialog
        {[&] {
             quor::sendKeys({VK_MENU, 'P'});
         },
         main, kMainLast},
        {[&] { b.Click(); }, main, kMainLast},
        {[&] { b.EnableWindow(FALSE), b.Click(), b.EnableWindow(); }, none, kNothing},
        {[&] { b.m_pParentDlg = nullptr, b.Click(), chooseFirst(), b.OnShowMenu(); }, none, kMenuCommand},
        {[&] { b.RegisterParentDlg(&*dialog), b.RemoveMenuItem(kMenuCommand, "", MF_BYCOMMAND); }, none, kNothing},
        {[&] { quor::sendClick(b, stripPoint()); }, main, kMainLast},  // without items it is the main part too
    };
    EXPECT_EQ(b.m_nMenuStripWidth, quor::platform::scaled(b, 16));
    int row = 0;
    for (const auto& [act, commands, last] : cases) {
        SCOPED_TRACE(row++);
        dialog->commands.clear();
        dialog->GotoDlgCtrl(dialog->GetDlgItem(IDC_TEXT));
        b.m_nLastCommand = kNothing;
        act();
        pumpUntilIdle();
        EXPECT_EQ(dialog->commands, commands);
        EXPECT_EQ(b.m_nLastCommand, last);
        EXPECT_TRUE(!b.m_bPushed && !b.m_bMenuPushed && !::GetCapture());
    }
}

TEST_F(Buttons, AHostMayEndTheDialogFromTheMenu) {
    for (const bool strip : {true, false}) {
        dialog->onCommand = [this] { dialog->DestroyWindow(); };
        chooseFirst();
        strip ? mouse(WM_LBUTTONDOWN, stripPoint()) : static_cast<void>(split().SendMessage(WM_KEYDOWN, VK_SPACE));
        EXPECT_EQ(dialog->m_hWnd, nullptr);
        open();
    }
}

// Enter presses what has the focus; else the default.
TEST_F(Buttons, TheDialogKeepsOneDefaultButton) {
    // Who says it is the default, whom the dialog names, what Enter sends.
    const auto enterIn = [&](int focus) {
        dialog->GotoDlgCtrl(dialog->GetDlgItem(focus));
        dialog->commands.clear();
        CString told;
        for (const int id : {IDC_COLOUR, IDC_SPLIT, IDOK, IDCANCEL})
            if (dialog->SendDlgItemMessage(id, WM_GETDLGCODE) & DLGC_DEFPUSHBUTTON) told.AppendFormat("%d ", id);
        told.AppendFormat("of %d:", LOWORD(dialog->GetDefID()));
        quor::sendKeys({VK_RETURN});
        pumpUntilIdle();
        for (const WPARAM command : dialog->commands) told.AppendFormat(" %d", static_cast<int>(command));
        return told;
    };
    EXPECT_EQ(enterIn(IDC_COLOUR), "1002 of 1: 1002");
    EXPECT_EQ(enterIn(IDC_SPLIT), "1003 of 1: 1003");
    EXPECT_EQ(enterIn(IDC_TEXT), "1 of 1: 1");
    split().SetDefaultButton(1);
    EXPECT_EQ(enterIn(IDC_TEXT), "1003 of 1003: 1003");
    EXPECT_EQ(enterIn(IDC_COLOUR), "1002 of 1003: 1002");
    dialog->SetDefID(IDC_COLOUR);
    split().SetDefaultButton(0);
    EXPECT_EQ(enterIn(IDC_TEXT), "1002 of 1002: 1002");
    for (CButton* const button : {static_cast<CButton*>(&dialog->colour), static_cast<CButton*>(&split())})
        EXPECT_EQ(button->GetButtonStyle() & BS_TYPEMASK, static_cast<UINT>(BS_OWNERDRAW));
}

TEST_F(Buttons, AFontIsShownAsText) {
    dialog->colour.DisplayFont("Arial", "10", kFontBoldItalic);
    CString shown;
    dialog->colour.GetWindowText(shown);
    EXPECT_EQ(shown + dialog->colour.GetFont() + dialog->colour.GetSize(), "Arial (Bold Italic , 10)Arial10");
}

// ---- Colours and pictures

TEST_F(Buttons, ColoursThatNobodySetFollowTheSystem) {
    CClrButton& button = dialog->colour;
    using Colours = std::vector<COLORREF>;
    const auto told = [&] { return Colours{button.m_clrText, button.m_clrFace, button.m_clrDisabled}; };
    const int system[] = {COLOR_BTNTEXT, COLOR_BTNFACE};
    const COLORREF odd[] = {kOdd, kOdd}, former[] = {::GetSysColor(system[0]), ::GetSysColor(system[1])};
    ::SetSysColors(2, system, odd);
    button.SendMessage(WM_SYSCOLORCHANGE);
    EXPECT_EQ(told(), (Colours{kOdd, kOdd, kOdd}));
    button.SetColour(kText, kFace);
    EXPECT_EQ(told(), (Colours{kText, kFace, kOdd}));
    EXPECT_EQ(button.GetColor(), kText);
    button.SetColour(kText, kFace, kOff);
    button.SendMessage(WM_SYSCOLORCHANGE);
    EXPECT_EQ(told(), (Colours{kText, kFace, kOff}));
    button.ResetColour();
    EXPECT_EQ(told(), (Colours{kOdd, kOdd, kOdd}));
    ::SetSysColors(2, system, former);
}

// How many pixels of a colour a button draws in an area of this size.
int inkOf(CButton& button, CSize size, COLORREF color, UINT state = 0) {
    test::Canvas canvas(button, size, RGB(255, 0, 255));
    const SelectScope font(canvas.dc, reinterpret_cast<HFONT>(button.SendMessage(WM_GETFONT)));
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_BUTTON;
    item.itemState = state | ODS_NOFOCUSRECT;
    item.hwndItem = button;
    item.hDC = canvas.dc;
    item.rcItem = CRect(CPoint(), size);
    button.DrawItem(&item);
    return canvas.count(CRect(CPoint(), size), color);
}

// Drawn where there is plenty of room, a text has the same ink.
TEST_F(Buttons, NoTextIsCutAtItsOwnSize) {
    dialog->colour.SetColour(kText, kFace);
    for (const char* text : {"x", "Trebuchet MS (Bold Italic , 10)"}) {
        dialog->colour.SetWindowText(text);
        CRect line;
        CClientDC dc(&dialog->colour);
        const SelectScope font(dc, reinterpret_cast<HFONT>(dialog->colour.SendMessage(WM_GETFONT)));
        dc.DrawText(text, -1, line, DT_CALCRECT | DT_SINGLELINE);
        const int margin = 2 * quor::platform::scaled(dialog->colour, 2);
        const int whole = inkOf(dialog->colour, {line.Width() * 3, line.Height() * 3}, kText);
        EXPECT_GT(whole, 0);
        EXPECT_EQ(inkOf(dialog->colour, {line.Width() + margin, line.Height() + margin}, kText), whole) << text;
    }
}

TEST_F(Buttons, ColoursAreDrawnAsTold) {
    const CSize size(80, 30);
    constexpr int kMost = 80 * 30 / 2;
    CClrButton& button = dialog->colour;
    button.SetColour(kText, kFace, kOff);
    EXPECT_GT(inkOf(button, size, kFace), kMost);
    EXPECT_EQ(inkOf(button, size, kOff), 0);
    EXPECT_GT(inkOf(button, size, kOff, ODS_DISABLED), kMost);
    EXPECT_EQ(inkOf(button, size, kText, ODS_DISABLED), 0);
    const NoThemes off;
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    split().SendMessage(WM_THEMECHANGED);
    const int plain = inkOf(split(), size, face);
    split().SetDefaultButton(1);
    EXPECT_LT(inkOf(split(), size, face), plain - 80) << "the default button shows";
}

TEST_F(Buttons, ThemesComeByTheHostsLoader) {
    CThemeUtil theme;
    fakeHost().calls.clear();
    const bool themed = theme.OpenThemeData(frame(), L"BUTTON");
    EXPECT_EQ(fakeHost().calls.count("quoru_call_LoadLibrary UxTheme.dll"), 1);
    EXPECT_EQ(themed, CThemeUtil::IsAppThemed() != FALSE);
    const NoThemes off;
    EXPECT_FALSE(theme.OpenThemeData(frame(), L"BUTTON") || CThemeUtil::IsAppThemed());
    CRect inside(1, 2, 3, 4);
    EXPECT_FALSE(theme.GetThemeBackgroundContentRect(CClientDC(&frame()), 1, 1, CRect(0, 0, 20, 20), inside));
    EXPECT_EQ(inside, CRect(1, 2, 3, 4));
}

TEST_F(Buttons, TheSmallControlsGiveBackWhatTheyTake) {
    test::expectHandlesReturn(200, [&](int) {
        CClrButton colour;
        CQuorSplitButton button;
        CXListCtrl list;
        colour.Create("a", kChild | BS_PUSHBUTTON, CRect(0, 0, 80, 20), &frame(), 5);
        button.Create("b", kChild | BS_DEFPUSHBUTTON, CRect(0, 30, 80, 50), &frame(), 6);
        EXPECT_EQ(button.m_bDefaultButton, 1);
        button.m_menu.AppendMenu(MF_STRING, kMenuCommand, "First");
        list.Create(kChild | LVS_REPORT, CRect(10, 220, 410, 400), &frame(), 10);
        list.InsertColumn(0, "column", LVCFMT_LEFT, 100);
        list.SetHeaderCheckbox(0, TRUE);
        list.SetCheckbox(list.InsertItem(0, "row"), 0, 1);
        frame().RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    });
}

}  // namespace
