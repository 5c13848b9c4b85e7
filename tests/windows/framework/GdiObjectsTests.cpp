// Who owns a GDI object, an image list or a menu, and what the scopes put back.
#include "Probe.h"
#include "support/Canvas.h"

#include <stdexcept>

namespace {

constexpr COLORREF red = RGB(255, 0, 0);
constexpr COLORREF blue = RGB(0, 0, 255);

struct GdiObjects : test::WindowFixture {
    test::Canvas sheet{frame(), {40, 20}, RGB(255, 255, 255)};
};

TEST_F(GdiObjects, NestedScopesPutBackWhatWasThere) {
    const CPen* const first = sheet.dc.GetCurrentPen();
    const COLORREF color = sheet.dc.GetTextColor();
    CPen outer(PS_SOLID, 1, red);
    CPen inner(PS_SOLID, 3, blue);
    {
        const DcStateScope state(sheet.dc);
        const SelectScope outerScope(sheet.dc, outer);
        {
            const SelectScope innerScope(&sheet.dc, &inner);
            EXPECT_EQ(sheet.dc.GetCurrentPen(), &inner);
        }
        EXPECT_EQ(sheet.dc.GetCurrentPen(), &outer);
        const SelectScope nothing(&sheet.dc, nullptr);
        sheet.dc.SetTextColor(red);
        sheet.dc.SetViewportOrg(5, 5);
        sheet.dc.IntersectClipRect(0, 0, 2, 2);
    }
    CRect clip;
    sheet.dc.GetClipBox(&clip);
    EXPECT_EQ(sheet.dc.GetTextColor(), color);
    EXPECT_EQ(sheet.dc.GetViewportOrg(), CPoint(0, 0));
    EXPECT_EQ(clip, CRect(0, 0, 40, 20));
    EXPECT_EQ(sheet.dc.GetCurrentPen(), first);
    EXPECT_TRUE(outer.DeleteObject()) << "still selected somewhere";
}

TEST_F(GdiObjects, AHandleLeadsToItsOwnerElseToATemporaryThatOwnsNothing) {
    CPen owned(PS_DOT, 1, red);
    EXPECT_EQ(CPen::FromHandle(owned), &owned);
    EXPECT_EQ(CGdiObject::FromHandle(owned), &owned);
    EXPECT_EQ(CPen::FromHandle(nullptr), nullptr);
    const HGDIOBJ given = owned.Detach();
    EXPECT_NE(CPen::FromHandle(static_cast<HPEN>(given)), &owned);
    EXPECT_FALSE(owned.DeleteObject());
    ASSERT_TRUE(owned.Attach(given));
    EXPECT_TRUE(owned.DeleteObject());
    EXPECT_EQ(::GetObjectType(given), 0u);

    const HBRUSH bare = ::CreateSolidBrush(blue);
    CBrush* const temporary = CBrush::FromHandle(bare);
    EXPECT_EQ(CBrush::FromHandle(bare), temporary);
    quorFreeTemporaryGdiObjects();
    EXPECT_EQ(::GetObjectType(bare), static_cast<DWORD>(OBJ_BRUSH)) << "the temporary object deleted it";
    CBrush::FromHandle(bare)->DeleteObject();
    EXPECT_EQ(::GetObjectType(bare), 0u);
    EXPECT_EQ(CBrush::FromHandle(bare)->m_hObject, bare) << "a reused handle must not meet a detached object";
}

TEST_F(GdiObjects, AnImageListBelongsToItsObjectUntilDetached) {
    HIMAGELIST handle = nullptr;
    {
        CImageList images;
        ASSERT_TRUE(images.Create(8, 8, ILC_COLOR32, 1, 1));
        handle = images;
        EXPECT_EQ(CImageList::FromHandle(handle), &images);
        images.Detach();
        EXPECT_EQ(CImageList::FromHandlePermanent(handle), nullptr);
    }
    EXPECT_EQ(CImageList::FromHandle(handle)->GetImageCount(), 0);
    quorFreeTemporaryGdiObjects();
    EXPECT_TRUE(::ImageList_Destroy(handle)) << "destroyed behind its holder's back";
}

TEST_F(GdiObjects, ShortenedTextComesBackInTheCallersBufferOnly) {
    const UINT format = DT_NOPREFIX | DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING;
    const CString text = "a text far too long for the sheet";
    char buffer[64] = "";
    ::lstrcpyA(buffer, text);
    CRect rect(0, 0, 40, 20);
    sheet.dc.DrawTextEx(buffer, -1, rect, format, nullptr);
    EXPECT_NE(std::string(buffer).find("..."), std::string::npos);
    const CString shared = text;
    sheet.dc.DrawTextEx(shared, rect, format, nullptr);
    EXPECT_EQ(text, "a text far too long for the sheet");
}

// ---- Menus

TEST_F(GdiObjects, AMenuDiesWithItsObjectAndASubmenuWithItsMenu) {
    HMENU bar = nullptr;
    HMENU popup = nullptr;
    {
        CMenu menu;
        CMenu sub;
        ASSERT_TRUE(menu.CreateMenu());
        ASSERT_TRUE(sub.CreatePopupMenu());
        popup = sub;
        EXPECT_TRUE(menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup), "Rows"));
        EXPECT_EQ(menu.GetSubMenu(0), &sub);
        sub.Detach();
        EXPECT_EQ(menu.GetSubMenu(0)->m_hMenu, popup);
        EXPECT_EQ(menu.GetSubMenu(1), nullptr);
        quorFreeTemporaryGdiObjects();
        EXPECT_TRUE(::IsMenu(popup)) << "a temporary object destroyed what it does not own";
        bar = menu;
    }
    EXPECT_FALSE(::IsMenu(bar));
    EXPECT_FALSE(::IsMenu(popup));
}

TEST_F(GdiObjects, TrackingReturnsTheChosenCommandAndLetsExceptionsPass) {
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 10, CString('x', 300));
    menu.AppendMenu(MF_STRING, 11, "Second");
    CString text;
    EXPECT_EQ(menu.GetMenuString(10, text, MF_BYCOMMAND), 300);
    EXPECT_EQ(text.GetLength(), 300);
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
