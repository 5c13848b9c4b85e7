// Controls, dialogs, GDI objects and menus of the system, where the wrapper does more than to pass a call on; what
// lists and grids stand on is tested with them.
#include "support/Canvas.h"
#include "support/WindowFixture.h"

#include <stdexcept>
#include <string>

namespace {

constexpr DWORD kChild = WS_CHILD | WS_VISIBLE;

using Controls = test::WindowFixture;

TEST_F(Controls, TextsOfAnyLengthComeBackWhole) {
    CListCtrl list;
    ASSERT_TRUE(list.Create(kChild | LVS_REPORT, CRect(0, 0, 400, 300), &frame(), 7));
    list.InsertColumn(0, "column", LVCFMT_LEFT, 60);
    list.InsertItem(0, "");
    for (const int length : {0, 1, 126, 127, 128, 129, 255, 256, 259, 5000}) {
        const CString text('x', length);
        list.SetItemText(0, 0, text);
        EXPECT_EQ(list.GetItemText(0, 0), text) << length;
    }
}

// ---- Dialogs of the system

// The dialog offers installed faces only: any scalable one will do.
int CALLBACK takeScalable(const LOGFONTA* font, const TEXTMETRICA*, DWORD kind, LPARAM found) {
    if (!(kind & TRUETYPE_FONTTYPE) || font->lfFaceName[0] == '@') return 1;
    ::lstrcpyA(reinterpret_cast<LOGFONTA*>(found)->lfFaceName, font->lfFaceName);
    return 0;
}

TEST_F(Controls, AFontComesBackFromItsDialog) {
    LOGFONT font{};
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfHeight = -16;
    LOGFONT chosen = font;
    ::EnumFontFamiliesExA(CClientDC(nullptr), &font, &takeScalable, reinterpret_cast<LPARAM>(&chosen), 0);
    font = chosen;
    CFontDialog dialog(&chosen, CF_SCREENFONTS | CF_EFFECTS, nullptr, &frame());
    frame().onMessage = [](UINT message, WPARAM, LPARAM idle, LRESULT&) {
        if (message == WM_ENTERIDLE) ::PostMessageA(reinterpret_cast<HWND>(idle), WM_COMMAND, IDOK, 0);
        return false;
    };
    ASSERT_EQ(dialog.DoModal(), IDOK);
    EXPECT_STREQ(dialog.GetFaceName(), font.lfFaceName);
    LOGFONT back{};
    dialog.GetCurrentFont(&back);
    EXPECT_EQ(back.lfHeight, -16);
    EXPECT_EQ(dialog.GetSize(), ::MulDiv(160, 72, ::GetDeviceCaps(CClientDC(nullptr), LOGPIXELSY)));
}

// ---- GDI objects and menus: who owns them

TEST_F(Controls, AHandleLeadsToItsOwnerElseToATemporaryThatOwnsNothing) {
    CPen owned(PS_DOT, 1, RGB(255, 0, 0));
    EXPECT_EQ(CPen::FromHandle(owned), &owned);
    const HGDIOBJ given = owned.Detach();
    EXPECT_NE(CPen::FromHandle(static_cast<HPEN>(given)), &owned);
    EXPECT_TRUE(owned.Attach(given));

    const HBRUSH bare = ::CreateSolidBrush(RGB(0, 0, 255));
    EXPECT_EQ(CBrush::FromHandle(bare), CBrush::FromHandle(bare));
    quorFreeTemporaryGdiObjects();
    EXPECT_EQ(::GetObjectType(bare), static_cast<DWORD>(OBJ_BRUSH)) << "the temporary object deleted it";
    CBrush::FromHandle(bare)->DeleteObject();
    EXPECT_EQ(::GetObjectType(bare), 0u);
    EXPECT_EQ(CBrush::FromHandle(bare)->m_hObject, bare) << "a reused handle must not meet a detached object";
}

TEST_F(Controls, ScopesPutBackWhatTheContextHad) {
    test::Canvas sheet(frame(), {40, 20}, RGB(255, 255, 255));
    const CPen* const former = sheet.dc.GetCurrentPen();
    const COLORREF color = sheet.dc.GetTextColor();
    CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
    {
        const SelectScope selected(sheet.dc, pen);
        const DcStateScope state(sheet.dc);
        EXPECT_EQ(sheet.dc.GetCurrentPen(), &pen);
        sheet.dc.SetTextColor(RGB(0, 0, 255));
    }
    EXPECT_EQ(sheet.dc.GetCurrentPen(), former);
    EXPECT_EQ(sheet.dc.GetTextColor(), color);
}

TEST_F(Controls, AShortenedTextLeavesACopyOfItWhole) {
    const UINT format = DT_NOPREFIX | DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING;
    const CString text = "a text far too long for the sheet", shared = text;
    test::Canvas sheet(frame(), {40, 20}, RGB(255, 255, 255));
    sheet.dc.DrawTextEx(shared, CRect(0, 0, 40, 20), format, nullptr);
    EXPECT_EQ(text, "a text far too long for the sheet");
}

TEST_F(Controls, AMenuDiesWithItsObjectAndASubmenuWithItsMenu) {
    HMENU bar = nullptr, popup = nullptr;
    {
        CMenu menu, sub;
        ASSERT_TRUE(menu.CreateMenu());
        ASSERT_TRUE(sub.CreatePopupMenu());
        EXPECT_TRUE(menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(sub.m_hMenu), "Rows"));
        EXPECT_EQ(menu.GetSubMenu(0), &sub);
        popup = sub.Detach();
        EXPECT_EQ(menu.GetSubMenu(0)->m_hMenu, popup);
        quorFreeTemporaryGdiObjects();
        EXPECT_TRUE(::IsMenu(popup)) << "a temporary object destroyed what it does not own";
        bar = menu;
    }
    EXPECT_FALSE(::IsMenu(bar) || ::IsMenu(popup));
}

TEST_F(Controls, TrackingReturnsTheChosenCommandAndLetsExceptionsPass) {
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 10, "First");
    menu.AppendMenu(MF_STRING, 11, "Second");
    bool fails = false;
    frame().onMessage = [&](UINT message, WPARAM opened, LPARAM, LRESULT&) {
        if (message != WM_INITMENUPOPUP) return false;
        EXPECT_EQ(reinterpret_cast<HMENU>(opened), menu.m_hMenu);
        for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN}) frame().PostMessage(WM_KEYDOWN, key);
        if (fails) throw std::runtime_error("handler");
        return true;
    };
    EXPECT_EQ(menu.TrackPopupMenu(TPM_RETURNCMD | TPM_LEFTALIGN, 10, 10, &frame()), 11);
    fails = true;
    EXPECT_THROW(menu.TrackPopupMenu(TPM_RETURNCMD, 10, 10, &frame()), std::runtime_error);
}

}  // namespace
