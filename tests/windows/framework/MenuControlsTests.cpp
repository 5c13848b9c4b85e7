// CMenu over real menus, tracked ones included.
#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/Framework.h"
#include "support/WindowFixture.h"

namespace {

class MenuControls : public test::WindowFixture {
protected:
    static void fill(CMenu& menu) {
        ASSERT_TRUE(menu.CreatePopupMenu());
        EXPECT_TRUE(menu.AppendMenu(MF_STRING, 11, "&Add row"));
        EXPECT_TRUE(menu.AppendMenu(MF_SEPARATOR));
        EXPECT_TRUE(menu.AppendMenu(MF_STRING | MF_GRAYED, 12, "Delete"));
        EXPECT_TRUE(menu.InsertMenu(0, MF_BYPOSITION | MF_STRING, 10, "First"));
    }
};

TEST_F(MenuControls, ItemsAreFoundByPlaceAndCommand) {
    CMenu menu;
    fill(menu);
    EXPECT_EQ(menu.GetMenuItemCount(), 4u);
    EXPECT_EQ(menu.GetMenuItemID(0), 10u);
    EXPECT_EQ(menu.GetMenuItemID(2), 0u) << "a separator";
    EXPECT_EQ(menu.GetMenuItemID(9), static_cast<UINT>(-1));
    CString text;
    EXPECT_EQ(menu.GetMenuString(11, text, MF_BYCOMMAND), 8);
    EXPECT_EQ(text, "&Add row");
    EXPECT_EQ(menu.GetMenuString(99, text, MF_BYCOMMAND), 0);
    EXPECT_EQ(text, "");
    EXPECT_TRUE(menu.ModifyMenu(11, MF_BYCOMMAND | MF_STRING, 11, CString('x', 300)));
    EXPECT_EQ(menu.GetMenuString(11, text, MF_BYCOMMAND), 300);
    EXPECT_EQ(text.GetLength(), 300);
    EXPECT_TRUE(menu.DeleteMenu(2, MF_BYPOSITION));
    EXPECT_FALSE(menu.DeleteMenu(99, MF_BYCOMMAND));
    EXPECT_EQ(menu.GetMenuItemCount(), 3u);
}

TEST_F(MenuControls, MarksAndDefaultReadBack) {
    CMenu menu;
    fill(menu);
    EXPECT_EQ(menu.CheckMenuItem(11, MF_BYCOMMAND | MF_CHECKED), static_cast<UINT>(MF_UNCHECKED));
    EXPECT_EQ(menu.CheckMenuItem(11, MF_BYCOMMAND | MF_CHECKED), static_cast<UINT>(MF_CHECKED));
    EXPECT_EQ(menu.CheckMenuItem(99, MF_BYCOMMAND | MF_CHECKED), static_cast<UINT>(-1));
    EXPECT_EQ(menu.EnableMenuItem(12, MF_BYCOMMAND | MF_ENABLED), static_cast<UINT>(MF_GRAYED));
    EXPECT_EQ(menu.GetMenuState(12, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED), 0u);
    EXPECT_EQ(menu.GetDefaultItem(0), static_cast<UINT>(-1));
    EXPECT_TRUE(menu.SetDefaultItem(12));
    EXPECT_EQ(menu.GetDefaultItem(0), 12u);
    EXPECT_TRUE(menu.SetDefaultItem(0, TRUE));
    EXPECT_EQ(menu.GetDefaultItem(0, TRUE), 0u);
}

TEST_F(MenuControls, AMenuDiesWithItsObjectAndASubmenuWithItsMenu) {
    HMENU bar = nullptr;
    HMENU popup = nullptr;
    {
        CMenu menu;
        CMenu sub;
        ASSERT_TRUE(menu.CreateMenu());
        fill(sub);
        popup = sub;
        EXPECT_TRUE(menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup), "Rows"));
        EXPECT_EQ(menu.GetSubMenu(0), &sub);
        sub.Detach();
        CMenu* const temporary = menu.GetSubMenu(0);
        EXPECT_EQ(temporary->GetMenuItemCount(), 4u);
        EXPECT_EQ(menu.GetSubMenu(1), nullptr);
        quorFreeTemporaryGdiObjects();
        EXPECT_TRUE(::IsMenu(popup)) << "a temporary object destroyed what it does not own";
        bar = menu;
    }
    EXPECT_FALSE(::IsMenu(bar));
    EXPECT_FALSE(::IsMenu(popup));
}

// Chooses the second item with the keyboard as soon as the menu is open.
class MenuOwner : public CWnd {
public:
    CMenu* opened = nullptr;
    bool fails = false;

protected:
    afx_msg void OnInitMenuPopup(CMenu* menu, UINT, BOOL) {
        opened = menu;
        for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN}) PostMessage(WM_KEYDOWN, key);
        if (fails) throw std::runtime_error("handler");
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(MenuOwner, CWnd)
ON_WM_INITMENUPOPUP()
END_MESSAGE_MAP()

TEST_F(MenuControls, TrackingReturnsTheChosenCommand) {
    MenuOwner owner;
    ASSERT_TRUE(
        owner.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 200, 200), nullptr, 0));
    CMenu menu;
    fill(menu);
    EXPECT_EQ(menu.TrackPopupMenu(TPM_RETURNCMD | TPM_LEFTALIGN, 10, 10, &owner), 11);
    EXPECT_EQ(owner.opened, &menu);
    owner.fails = true;
    EXPECT_THROW(menu.TrackPopupMenu(TPM_RETURNCMD, 10, 10, &owner), std::runtime_error);
}

}  // namespace
