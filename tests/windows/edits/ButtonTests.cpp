// The owner-drawn buttons in a real dialog: every road to a press, the dialog's default, what they draw.
#include "EditsTestsIds.h"
#include "quor/edits/ClrButton.h"
#include "quor/edits/QuorSplitButton.h"
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

// The library's own fault, not the host's, would be to call a loader that is not there.
class NoThemes {
public:
    NoThemes() {
        g_pControlBlock->quoru_call_LoadLibrary = [](const char*) -> HMODULE { return nullptr; };
    }
    ~NoThemes() { g_pControlBlock->quoru_call_LoadLibrary = m_former; }

private:
    decltype(g_pControlBlock->quoru_call_LoadLibrary) m_former = g_pControlBlock->quoru_call_LoadLibrary;
};

class ButtonDialog : public CDialog {
public:
    CClrButton colour;
    CQuorSplitButton split;
    std::vector<WPARAM> commands;
    std::function<void(WPARAM)> onCommand;

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        const bool isButton = lParam && HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) != IDC_TEXT;
        const bool ends = LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL;
        const BOOL handled = ends || CDialog::OnCommand(wParam, lParam);
        if (isButton) commands.push_back(wParam);
        if (isButton && onCommand) onCommand(wParam);
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
        dialog->Create(IDD_BUTTONS, &frame());
        dialog->ShowWindow(SW_SHOW);
        split().RegisterParentDlg(&*dialog);
        split().RegisterParentDlg(nullptr);
        split().m_menu.AppendMenu(MF_STRING, kMenuCommand, "First");
        pumpUntilIdle();
    }
    void TearDown() override {
        dialog.reset();
        WindowFixture::TearDown();
    }
    CQuorSplitButton& split() { return dialog->split; }
    static CPoint middleOf(CWnd& window) {
        CRect area;
        window.GetClientRect(area);
        return area.CenterPoint();
    }
    CPoint stripPoint() {
        CRect area;
        split().GetClientRect(area);
        return {area.right - split().m_nMenuStripWidth / 2, area.CenterPoint().y};
    }
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
    const auto mouse = [&](UINT message, CPoint at) { b.SendMessage(message, MK_LBUTTON, MAKELPARAM(at.x, at.y)); };
    const auto post = [&](WORD key) { b.PostMessage(WM_KEYDOWN, key); };
    const auto mnemonic = [] { quor::sendKeys({VK_MENU, 'P'}); };
    const struct {
        const char* road;
        std::function<void()> act;
        std::vector<WPARAM> commands;
        int last;
    } cases[] = {
        {"click", [&] { quor::sendClick(b, inside); }, {IDC_SPLIT}, 100},
        {"two quick ones",
         [&] { quor::sendClick(b, inside, quor::MouseButton::left, 2); },
         {IDC_SPLIT, IDC_SPLIT},
         100},
        {"moved off", [&] { quor::sendDrag(b, inside, CPoint(8, 200)); }, {}, -1},
        {"capture lost",
         [&] { mouse(WM_LBUTTONDOWN, inside), ::ReleaseCapture(), mouse(WM_LBUTTONUP, inside); },
         {},
         -1},
        {"strip", [&] { chooseFirst(), mouse(WM_LBUTTONDOWN, stripPoint()); }, {kMenuCommand}, kMenuCommand},
        {"space",
         [&] { chooseFirst(), b.SendMessage(WM_KEYDOWN, VK_SPACE), b.SendMessage(WM_KEYUP, VK_SPACE); },
         {kMenuCommand},
         kMenuCommand},
        {"down", [&] { post(VK_DOWN), chooseFirst(); }, {kMenuCommand}, kMenuCommand},
        {"escape", [&] { post(VK_ESCAPE), b.OnShowMenu(); }, {}, 0},
        {"enter outside a dialog", [&] { b.SendMessage(WM_KEYDOWN, VK_RETURN); }, {IDC_SPLIT}, 100},
        {"mnemonic", mnemonic, {IDC_SPLIT}, 100},
        {"BM_CLICK", [&] { b.Click(); }, {IDC_SPLIT}, 100},
        {"BM_CLICK, disabled", [&] { b.EnableWindow(FALSE), b.Click(), b.EnableWindow(); }, {}, -1},
    };
    for (const auto& each : cases) {
        dialog->commands.clear();
        dialog->GotoDlgCtrl(dialog->GetDlgItem(IDC_TEXT));
        split().m_nLastCommand = -1;
        each.act();
        pumpUntilIdle();
        EXPECT_EQ(dialog->commands, each.commands) << each.road;
        EXPECT_EQ(split().m_nLastCommand, each.last) << each.road;
        EXPECT_EQ(split().m_bPushed + split().m_bMenuPushed, 0) << each.road;
        EXPECT_EQ(::GetCapture(), nullptr) << each.road;
    }
}

TEST_F(Buttons, WithoutItemsTheStripIsMainPartToo) {
    EXPECT_TRUE(split().HitMenuBtn(stripPoint()));
    EXPECT_TRUE(split().RemoveMenuItem(kMenuCommand, "", MF_BYCOMMAND));
    EXPECT_EQ(split().m_nMenuFlags, 1);
    EXPECT_FALSE(split().HitMenuBtn(stripPoint()));
    quor::sendClick(split(), stripPoint());
    pumpUntilIdle();
    EXPECT_EQ(dialog->commands, std::vector<WPARAM>{IDC_SPLIT});
}

TEST_F(Buttons, AButtonWithoutAParentSendsNothing) {
    split().m_pParentDlg = nullptr;
    quor::sendClick(split(), {8, 8});
    split().Click();
    chooseFirst();
    split().OnShowMenu();
    pumpUntilIdle();
    EXPECT_TRUE(dialog->commands.empty());
    EXPECT_EQ(::GetCapture(), nullptr);
}

TEST_F(Buttons, AHostMayEndTheDialogFromTheMenu) {
    for (const bool strip : {true, false}) {
        dialog->onCommand = [this](WPARAM) { dialog->DestroyWindow(); };
        chooseFirst();
        if (strip)
            split().SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(stripPoint().x, stripPoint().y));
        else
            split().SendMessage(WM_KEYDOWN, VK_SPACE);
        EXPECT_EQ(dialog->m_hWnd, nullptr);
        ASSERT_TRUE(dialog->Create(IDD_BUTTONS, &frame()));
        dialog->ShowWindow(SW_SHOW);
    }
}

// Enter presses what has the focus; else the default.
TEST_F(Buttons, TheDialogKeepsOneDefaultButton) {
    const auto defaults = [&] {
        std::string told;
        for (const int id : {IDC_COLOUR, IDC_SPLIT, IDOK, IDCANCEL})
            if (dialog->SendDlgItemMessage(id, WM_GETDLGCODE) & DLGC_DEFPUSHBUTTON) told += std::to_string(id) + " ";
        return told + "of " + std::to_string(LOWORD(dialog->GetDefID()));
    };
    const auto enterIn = [&](int id) {
        dialog->GotoDlgCtrl(dialog->GetDlgItem(id));
        dialog->commands.clear();
        const std::string told = defaults();
        quor::sendKeys({VK_RETURN});
        pumpUntilIdle();
        return told + (dialog->commands.size() == 1 ? ": " + std::to_string(dialog->commands[0]) : ": ?");
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
    EXPECT_EQ(dialog->colour.GetButtonStyle() & BS_TYPEMASK, static_cast<UINT>(BS_OWNERDRAW));
    EXPECT_EQ(split().GetButtonStyle() & BS_TYPEMASK, static_cast<UINT>(BS_OWNERDRAW));
}

TEST_F(Buttons, AFontIsShownAsText) {
    const std::pair<eFontStyle, const char*> cases[] = {{kFontRegular, "Arial (Regular , 10)"},
                                                        {kFontBoldItalic, "Arial (Bold Italic , 10)"},
                                                        {static_cast<eFontStyle>(9), "Arial (Regular , 10)"},
                                                        {kFontStyleNotShown, "Arial (10)"}};
    for (const auto& [style, text] : cases) {
        dialog->colour.DisplayFont("Arial", "10", style);
        CString shown;
        dialog->colour.GetWindowText(shown);
        EXPECT_STREQ(shown, text);
        EXPECT_EQ(dialog->colour.GetFont() + dialog->colour.GetSize(), CString("Arial10"));
        EXPECT_EQ(dialog->colour.GetFontStyle(), style);
    }
}

// ---- Colours and pictures

class SystemColour {
public:
    SystemColour(int index, COLORREF color) : m_index(index), m_former(::GetSysColor(index)) { set(color); }
    ~SystemColour() { set(m_former); }

private:
    void set(COLORREF color) const { ::SetSysColors(1, &m_index, &color); }
    int m_index;
    COLORREF m_former;
};

TEST_F(Buttons, ColoursThatNobodySetFollowTheSystem) {
    constexpr COLORREF kOdd = RGB(1, 2, 3), kText = RGB(9, 9, 9), kFace = RGB(200, 0, 0), kOff = RGB(0, 99, 0);
    const auto told = [&] {
        return std::vector<COLORREF>{dialog->colour.m_clrText, dialog->colour.m_clrFace, dialog->colour.m_clrDisabled};
    };
    const SystemColour text(COLOR_BTNTEXT, kOdd), face(COLOR_BTNFACE, kOdd);
    dialog->colour.SendMessage(WM_SYSCOLORCHANGE);
    EXPECT_EQ(told(), (std::vector<COLORREF>{kOdd, kOdd, kOdd}));
    dialog->colour.SetColour(kText, kFace);
    EXPECT_EQ(told(), (std::vector<COLORREF>{kText, kFace, kOdd}));
    EXPECT_EQ(dialog->colour.GetColor(), kText);
    dialog->colour.SetColour(kText, kFace, kOff);
    dialog->colour.SendMessage(WM_SYSCOLORCHANGE);
    EXPECT_EQ(told(), (std::vector<COLORREF>{kText, kFace, kOff}));
    dialog->colour.ResetColour();
    EXPECT_EQ(told(), (std::vector<COLORREF>{kOdd, kOdd, kOdd}));
}

// How many pixels of a colour a button draws in an area of this size.
int inkOf(CButton& button, CSize size, COLORREF color, UINT state = 0) {
    test::Canvas canvas(button, size, RGB(255, 0, 255));
    const SelectScope font(canvas.dc, static_cast<CWnd&>(button).SendMessage(WM_GETFONT)
                                          ? reinterpret_cast<HFONT>(button.SendMessage(WM_GETFONT))
                                          : nullptr);
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
    constexpr COLORREF kText = RGB(10, 20, 250);
    for (const char* text : {"x", "Trebuchet MS (Bold Italic , 10)"}) {
        dialog->colour.SetWindowText(text);
        dialog->colour.SetColour(kText, RGB(250, 250, 200));
        CRect line;
        {
            test::Canvas measure(dialog->colour, {1, 1}, 0);
            const SelectScope font(measure.dc, reinterpret_cast<HFONT>(dialog->colour.SendMessage(WM_GETFONT)));
            measure.dc.DrawText(text, -1, line, DT_CALCRECT | DT_SINGLELINE);
        }
        const int margin = 2 * quor::platform::scaled(dialog->colour, 2);
        const int whole = inkOf(dialog->colour, {line.Width() * 3, line.Height() * 3}, kText);
        EXPECT_GT(whole, 0);
        EXPECT_EQ(inkOf(dialog->colour, {line.Width() + margin, line.Height() + margin}, kText), whole) << text;
    }
}

TEST_F(Buttons, ColoursAreDrawnAsTold) {
    constexpr COLORREF kText = RGB(10, 20, 250), kFace = RGB(250, 250, 200), kOff = RGB(90, 90, 90);
    const CSize size(80, 30);
    dialog->colour.SetColour(kText, kFace, kOff);
    EXPECT_GT(inkOf(dialog->colour, size, kFace), 80 * 30 / 2);
    EXPECT_EQ(inkOf(dialog->colour, size, kOff), 0);
    EXPECT_GT(inkOf(dialog->colour, size, kOff, ODS_DISABLED), 80 * 30 / 2);
    EXPECT_EQ(inkOf(dialog->colour, size, kText, ODS_DISABLED), 0);
    dialog->colour.SetColour(kText, kText);
    EXPECT_EQ(inkOf(dialog->colour, size, kFace), 0);
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
    EXPECT_FALSE(theme.OpenThemeData(frame(), L"NOSUCHCLASS"));
    const NoThemes off;
    EXPECT_FALSE(theme.OpenThemeData(frame(), L"BUTTON"));
    EXPECT_FALSE(CThemeUtil::IsAppThemed());
    test::Canvas canvas(frame(), {20, 20}, 0);
    CRect inside(1, 2, 3, 4);
    SIZE size = {5, 6};
    COLORREF color = 7;
    EXPECT_FALSE(theme.DrawThemeBackground(canvas.dc, 1, 1, CRect(0, 0, 20, 20)));
    EXPECT_FALSE(theme.GetThemeBackgroundContentRect(canvas.dc, 1, 1, CRect(0, 0, 20, 20), inside));
    EXPECT_FALSE(theme.DrawThemeParentBackground(frame(), canvas.dc, CRect(0, 0, 20, 20)));
    EXPECT_FALSE(theme.GetThemePartSize(canvas.dc, 3, 1, size) || theme.GetThemeColor(1, 1, 3803, color));
    EXPECT_EQ(inside, CRect(1, 2, 3, 4));
    EXPECT_EQ(canvas.count(CRect(0, 0, 20, 20), 0), 400);
}

TEST_F(Buttons, HandlesReturnToTheirStart) {
    test::expectHandlesReturn(200, [&](int) {
        CClrButton colour;
        CQuorSplitButton button;
        ASSERT_TRUE(colour.Create("a", kChild | BS_PUSHBUTTON, CRect(0, 0, 80, 20), &frame(), 5));
        ASSERT_TRUE(button.Create("b", kChild | BS_DEFPUSHBUTTON, CRect(0, 30, 80, 50), &frame(), 6));
        EXPECT_EQ(button.m_bDefaultButton, 1);
        button.m_menu.AppendMenu(MF_STRING, kMenuCommand, "First");
        frame().UpdateWindow();
        colour.UpdateWindow();
        button.UpdateWindow();
    });
}

TEST_F(Buttons, LengthsGrowWithTheScreen) {
    const int dots = CClientDC(nullptr).GetDeviceCaps(LOGPIXELSY);
    for (const int length : {0, -1, 7, 96})
        EXPECT_EQ(quor::platform::scaled(frame(), length), ::MulDiv(length, dots, 96)) << length;
    EXPECT_EQ(quor::platform::fontHeight(nullptr, 9), -::MulDiv(9, dots, 72));
    EXPECT_EQ(split().m_nMenuStripWidth, ::MulDiv(16, dots, 96));
}

}  // namespace
