#include "quor/platform/Framework.h"
#include "quor/platform/win/HandleMapInternal.h"
#include "quor/platform/win/WndInternal.h"

IMPLEMENT_DYNCREATE(CMenu, CObject)

namespace {

struct MenuMaps {
    PermanentMap<CMenu, HMENU> owners;
    TemporaryMap<CMenu, HMENU, &CMenu::m_hMenu> temporaries;
};

// Never freed: menus may be held by statics of other modules.
MenuMaps& maps() {
    static thread_local MenuMaps* const instance = new MenuMaps;
    return *instance;
}

}  // namespace

CMenu::~CMenu() { DestroyMenu(); }

CMenu* CMenu::FromHandle(HMENU handle) {
    if (!handle) return nullptr;
    if (CMenu* owner = maps().owners.find(handle)) return owner;
    return maps().temporaries.get(handle);
}

CMenu* CMenu::FromHandlePermanent(HMENU handle) { return maps().owners.find(handle); }

void CMenu::DeleteTempMap() { maps().temporaries.clear(); }

BOOL CMenu::Attach(HMENU handle) {
    ASSERT(!m_hMenu);
    if (!handle) return FALSE;
    m_hMenu = handle;
    maps().owners.add(handle, this);
    return TRUE;
}

HMENU CMenu::Detach() {
    const HMENU handle = m_hMenu;
    if (handle) maps().owners.remove(handle, this);
    m_hMenu = nullptr;
    return handle;
}

BOOL CMenu::DestroyMenu() { return m_hMenu ? ::DestroyMenu(Detach()) : FALSE; }

BOOL CMenu::LoadMenu(LPCTSTR name) { return Attach(::LoadMenu(AfxFindResourceHandle(name, RT_MENU), name)); }

BOOL CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, LPCRECT ignored) {
    const BOOL result = ::TrackPopupMenu(m_hMenu, flags, x, y, 0, owner ? owner->m_hWnd : nullptr, ignored);
    quor::throwKeptException();
    return result;
}

BOOL CMenu::TrackPopupMenuEx(UINT flags, int x, int y, CWnd* owner, LPTPMPARAMS params) {
    const BOOL result = ::TrackPopupMenuEx(m_hMenu, flags, x, y, owner ? owner->m_hWnd : nullptr, params);
    quor::throwKeptException();
    return result;
}

int CMenu::GetMenuString(UINT item, CString& text, UINT flags) const {
    const int length = ::GetMenuString(m_hMenu, item, nullptr, 0, flags);
    if (length > 0) ::GetMenuString(m_hMenu, item, text.GetBuffer(length), length + 1, flags);
    text.ReleaseBuffer(length > 0 ? length : 0);
    return length;
}

CMenu* CMenu::GetSubMenu(int position) const { return FromHandle(::GetSubMenu(m_hMenu, position)); }

void CMenu::DrawItem(LPDRAWITEMSTRUCT) {}
void CMenu::MeasureItem(LPMEASUREITEMSTRUCT) {}
