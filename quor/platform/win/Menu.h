// Menus. An object owns its menu and destroys it with all its submenus; a menu that was given to a window, or a popup
// that was appended to another menu, belongs to that one and must be detached. FromHandle and GetSubMenu wrap menus
// that somebody else owns in temporary objects, valid until the pump is idle.
//
// Items are addressed by command id (MF_BYCOMMAND) or by position from 0 (MF_BYPOSITION). What is not found is -1.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/Object.h"
#include "quor/platform/base/Strings.h"
#include "quor/platform/base/WinTypes.h"

class CWnd;

class QUOR_FRAMEWORK_API CMenu : public CObject {
    DECLARE_DYNCREATE(CMenu)
public:
    CMenu() = default;
    ~CMenu() override;

    operator HMENU() const { return m_hMenu; }
    HMENU GetSafeHmenu() const { return m_hMenu; }
    static CMenu* FromHandle(HMENU handle);
    // The owner, or null; makes no temporary object.
    static CMenu* FromHandlePermanent(HMENU handle);
    static void DeleteTempMap();

    BOOL Attach(HMENU handle);
    HMENU Detach();
    BOOL DestroyMenu();
    BOOL CreateMenu() { return Attach(::CreateMenu()); }
    BOOL CreatePopupMenu() { return Attach(::CreatePopupMenu()); }
    BOOL LoadMenu(UINT id) { return LoadMenu(MAKEINTRESOURCE(id)); }
    BOOL LoadMenu(LPCTSTR name);
    BOOL LoadMenuIndirect(const void* menuTemplate) { return Attach(::LoadMenuIndirect(menuTemplate)); }

    // Shows the menu at a screen point and returns TRUE; with TPM_RETURNCMD the chosen command, 0 for none. The owner
    // gets the menu's messages; what its handlers throw meanwhile is thrown again here. `ignored` is unused by the
    // system.
    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, LPCRECT ignored = nullptr);
    BOOL TrackPopupMenuEx(UINT flags, int x, int y, CWnd* owner, LPTPMPARAMS params);

    // With MF_POPUP the id is an HMENU, which this menu then owns.
    BOOL AppendMenu(UINT flags, UINT_PTR id = 0, LPCTSTR text = nullptr) {
        return ::AppendMenu(m_hMenu, flags, id, text);
    }
    BOOL InsertMenu(UINT position, UINT flags, UINT_PTR id = 0, LPCTSTR text = nullptr) {
        return ::InsertMenu(m_hMenu, position, flags, id, text);
    }
    BOOL ModifyMenu(UINT position, UINT flags, UINT_PTR id = 0, LPCTSTR text = nullptr) {
        return ::ModifyMenu(m_hMenu, position, flags, id, text);
    }
    // DeleteMenu destroys a submenu with its item, RemoveMenu leaves it to the caller.
    BOOL DeleteMenu(UINT position, UINT flags) { return ::DeleteMenu(m_hMenu, position, flags); }
    BOOL RemoveMenu(UINT position, UINT flags) { return ::RemoveMenu(m_hMenu, position, flags); }

    // The former state (MF_CHECKED or MF_ENABLED, MF_GRAYED, MF_DISABLED), -1 cast to unsigned if there is no such
    // item.
    UINT CheckMenuItem(UINT item, UINT check) { return ::CheckMenuItem(m_hMenu, item, check); }
    UINT EnableMenuItem(UINT item, UINT enable) { return static_cast<UINT>(::EnableMenuItem(m_hMenu, item, enable)); }
    BOOL CheckMenuRadioItem(UINT first, UINT last, UINT item, UINT flags) {
        return ::CheckMenuRadioItem(m_hMenu, first, last, item, flags);
    }
    BOOL SetDefaultItem(UINT item, BOOL byPosition = FALSE) {
        return ::SetMenuDefaultItem(m_hMenu, item, static_cast<UINT>(byPosition));
    }
    UINT GetDefaultItem(UINT flags, BOOL byPosition = FALSE) const {
        return ::GetMenuDefaultItem(m_hMenu, static_cast<UINT>(byPosition), flags);
    }

    UINT GetMenuItemCount() const { return static_cast<UINT>(::GetMenuItemCount(m_hMenu)); }
    // 0 for a separator, -1 cast to unsigned for a submenu or a position outside.
    UINT GetMenuItemID(int position) const { return ::GetMenuItemID(m_hMenu, position); }
    UINT GetMenuState(UINT item, UINT flags) const { return ::GetMenuState(m_hMenu, item, flags); }
    // Copies at most maxCount - 1 characters; returns the number copied.
    int GetMenuString(UINT item, LPTSTR text, int maxCount, UINT flags) const {
        return ::GetMenuString(m_hMenu, item, text, maxCount, flags);
    }
    int GetMenuString(UINT item, CString& text, UINT flags) const;
    BOOL GetMenuItemInfo(UINT item, LPMENUITEMINFO info, BOOL byPosition = FALSE) {
        return ::GetMenuItemInfo(m_hMenu, item, byPosition, info);
    }
    BOOL SetMenuItemInfo(UINT item, LPMENUITEMINFO info, BOOL byPosition = FALSE) {
        return ::SetMenuItemInfo(m_hMenu, item, byPosition, info);
    }
    BOOL InsertMenuItem(UINT item, LPMENUITEMINFO info, BOOL byPosition = FALSE) {
        return ::InsertMenuItem(m_hMenu, item, byPosition, info);
    }
    // Null if the item opens none.
    CMenu* GetSubMenu(int position) const;
    BOOL SetMenuItemBitmaps(UINT position, UINT flags, HBITMAP unchecked, HBITMAP checked) {
        return ::SetMenuItemBitmaps(m_hMenu, position, flags, unchecked, checked);
    }

    // Owner-drawn items of a menu whose owner passes the messages on. They do nothing here.
    virtual void DrawItem(LPDRAWITEMSTRUCT drawItem);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT measureItem);

    HMENU m_hMenu = nullptr;
};
