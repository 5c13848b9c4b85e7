// Calls of CWnd that are more than one call of the system.
#include "quor/platform/win/WndInternal.h"

using quor::throwKeptException;

// --- Text ----------------------------------------------------------------------------------------------------------

void CWnd::SetWindowText(LPCSTR lpszString) {
    ::SetWindowTextA(m_hWnd, lpszString);
    throwKeptException();
}

void CWnd::GetWindowText(CString& rString) const {
    const int length = ::GetWindowTextLengthA(m_hWnd);
    ::GetWindowTextA(m_hWnd, rString.GetBuffer(length), length + 1);
    rString.ReleaseBuffer();
}

int CWnd::GetDlgItemText(int nID, CString& rString) const {
    rString.Empty();
    if (const CWnd* item = GetDlgItem(nID)) item->GetWindowText(rString);
    return rString.GetLength();
}

void CWnd::SetFont(CFont* pFont, BOOL bRedraw) {
    const HGDIOBJ font = pFont ? pFont->m_hObject : nullptr;
    ::SendMessageA(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(font), bRedraw);
}

CFont* CWnd::GetFont() const {
    return CFont::FromHandle(reinterpret_cast<HFONT>(::SendMessageA(m_hWnd, WM_GETFONT, 0, 0)));
}

// --- State, style, place -------------------------------------------------------------------------------------------

namespace {

BOOL modifyStyle(HWND window, int which, DWORD remove, DWORD add, UINT flags) {
    const auto former = static_cast<DWORD>(::GetWindowLongPtrA(window, which));
    const DWORD style = (former & ~remove) | add;
    if (style == former) return FALSE;
    ::SetWindowLongPtrA(window, which, static_cast<LONG_PTR>(style));
    if (flags)
        ::SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
    return TRUE;
}

HWND handleOf(const CWnd* window) { return window ? window->m_hWnd : nullptr; }

}  // namespace

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    return modifyStyle(m_hWnd, GWL_STYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags) {
    return modifyStyle(m_hWnd, GWL_EXSTYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ShowWindow(int nCmdShow) {
    const BOOL wasVisible = ::ShowWindow(m_hWnd, nCmdShow);
    throwKeptException();
    return wasVisible;
}

BOOL CWnd::EnableWindow(BOOL bEnable) { return ::EnableWindow(m_hWnd, bEnable); }

void CWnd::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint) {
    ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
    throwKeptException();
}

void CWnd::MoveWindow(LPCRECT lpRect, BOOL bRepaint) {
    MoveWindow(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top, bRepaint);
}

BOOL CWnd::SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags) {
    const BOOL done = ::SetWindowPos(m_hWnd, handleOf(pWndInsertAfter), x, y, cx, cy, nFlags);
    throwKeptException();
    return done;
}

BOOL CWnd::GetWindowPlacement(WINDOWPLACEMENT* lpwndpl) const {
    lpwndpl->length = sizeof(WINDOWPLACEMENT);
    return ::GetWindowPlacement(m_hWnd, lpwndpl);
}

void CWnd::MapWindowPoints(CWnd* pWndTo, LPPOINT lpPoint, UINT nCount) const {
    ::MapWindowPoints(m_hWnd, handleOf(pWndTo), lpPoint, nCount);
}

void CWnd::MapWindowPoints(CWnd* pWndTo, LPRECT lpRect) const {
    ::MapWindowPoints(m_hWnd, handleOf(pWndTo), reinterpret_cast<POINT*>(lpRect), 2);
}

// The area is the owner's window, or the parent's client area for a child; the result stays on the area's monitor.
void CWnd::CenterWindow(CWnd* pAlternateOwner) {
    const bool child = GetStyle() & WS_CHILD;
    HWND over = handleOf(pAlternateOwner);
    if (!over) over = child ? ::GetParent(m_hWnd) : ::GetWindow(m_hWnd, GW_OWNER);
    if (!child && over && (!::IsWindowVisible(over) || ::IsIconic(over))) over = nullptr;
    MONITORINFO monitor{};
    const auto& screens = quor::platform::screens();
    screens.describe(screens.monitorFromWindow(over ? over : m_hWnd), monitor);
    CRect area(monitor.rcWork);
    CRect bounds = area;
    if (over && child) {
        ::GetClientRect(over, &area);
        bounds = area;
    } else if (over) {
        ::GetWindowRect(over, &area);
    }
    CRect own;
    GetWindowRect(&own);
    int x = area.left + (area.Width() - own.Width()) / 2;
    int y = area.top + (area.Height() - own.Height()) / 2;
    x = std::max(std::min(x, static_cast<int>(bounds.right) - own.Width()), static_cast<int>(bounds.left));
    y = std::max(std::min(y, static_cast<int>(bounds.bottom) - own.Height()), static_cast<int>(bounds.top));
    SetWindowPos(nullptr, x, y, -1, -1, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HICON CWnd::SetIcon(HICON hIcon, BOOL bBigIcon) {
    return reinterpret_cast<HICON>(
        ::SendMessageA(m_hWnd, WM_SETICON, bBigIcon ? ICON_BIG : ICON_SMALL, reinterpret_cast<LPARAM>(hIcon)));
}

HICON CWnd::GetIcon(BOOL bBigIcon) const {
    return reinterpret_cast<HICON>(::SendMessageA(m_hWnd, WM_GETICON, bBigIcon ? ICON_BIG : ICON_SMALL, 0));
}

// --- Painting ------------------------------------------------------------------------------------------------------

void CWnd::UpdateWindow() {
    ::UpdateWindow(m_hWnd);
    throwKeptException();
}

BOOL CWnd::RedrawWindow(LPCRECT lpRectUpdate, CRgn* prgnUpdate, UINT flags) {
    const auto region = prgnUpdate ? static_cast<HRGN>(prgnUpdate->m_hObject) : nullptr;
    const BOOL done = ::RedrawWindow(m_hWnd, lpRectUpdate, region, flags);
    throwKeptException();
    return done;
}

CDC* CWnd::GetDC() { return CDC::FromHandle(::GetDC(m_hWnd)); }
CDC* CWnd::GetWindowDC() { return CDC::FromHandle(::GetWindowDC(m_hWnd)); }
int CWnd::ReleaseDC(CDC* pDC) { return ::ReleaseDC(m_hWnd, pDC->m_hDC); }
CDC* CWnd::BeginPaint(LPPAINTSTRUCT lpPaint) { return CDC::FromHandle(::BeginPaint(m_hWnd, lpPaint)); }

void CWnd::CreateCaret(CBitmap* pBitmap) { ::CreateCaret(m_hWnd, static_cast<HBITMAP>(pBitmap->m_hObject), 0, 0); }

// --- Family --------------------------------------------------------------------------------------------------------

CWnd* CWnd::SetParent(CWnd* pWndNewParent) { return FromHandle(::SetParent(m_hWnd, handleOf(pWndNewParent))); }

CWnd* CWnd::GetOwner() const { return m_hWndOwner ? FromHandle(m_hWndOwner) : GetParent(); }

void CWnd::SetOwner(CWnd* pOwnerWnd) { m_hWndOwner = handleOf(pOwnerWnd); }

CWnd* CWnd::GetTopLevelParent() const {
    if (!m_hWnd) return nullptr;
    HWND top = m_hWnd;
    while (const HWND parent = ::GetParent(top)) top = parent;
    return FromHandle(top);
}

CWnd* CWnd::GetTopLevelOwner() const {
    HWND top = m_hWnd;
    while (top && (::GetWindowLongPtrA(top, GWL_STYLE) & WS_CHILD)) top = ::GetParent(top);
    while (top && ::GetWindow(top, GW_OWNER)) top = ::GetWindow(top, GW_OWNER);
    return FromHandle(top);
}

CFrameWnd* CWnd::GetParentFrame() const {
    for (HWND parent = m_hWnd ? ::GetParent(m_hWnd) : nullptr; parent; parent = ::GetParent(parent)) {
        CWnd* object = FromHandlePermanent(parent);
        if (object && object->IsFrameWnd()) return static_cast<CFrameWnd*>(object);
    }
    return nullptr;
}

CFrameWnd* CWnd::GetTopLevelFrame() const {
    CFrameWnd* frame = IsFrameWnd() ? static_cast<CFrameWnd*>(const_cast<CWnd*>(this)) : GetParentFrame();
    while (frame) {
        CFrameWnd* outer = frame->GetParentFrame();
        if (!outer) break;
        frame = outer;
    }
    return frame;
}

BOOL CWnd::IsFrameWnd() const { return FALSE; }

CWnd* CWnd::GetDescendantWindow(int nID, BOOL bOnlyPerm) const {
    if (const HWND child = ::GetDlgItem(m_hWnd, nID)) {
        CWnd* object = bOnlyPerm ? FromHandlePermanent(child) : FromHandle(child);
        if (object) return object;
    }
    for (HWND child = ::GetTopWindow(m_hWnd); child; child = ::GetWindow(child, GW_HWNDNEXT))
        if (::GetTopWindow(child))
            if (CWnd* found = FromHandle(child)->GetDescendantWindow(nID, bOnlyPerm)) return found;
    return nullptr;
}

CWnd* CWnd::GetSafeOwner(CWnd* pParent) {
    const CWnd* mainWindow = pParent ? pParent : AfxGetMainWnd();
    HWND window = handleOf(mainWindow);
    while (window && (::GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD)) window = ::GetParent(window);
    if (!pParent && window) window = ::GetLastActivePopup(window);
    return FromHandle(window);
}

// --- Scrolling -----------------------------------------------------------------------------------------------------

CScrollBar* CWnd::GetScrollBarCtrl(int) const { return nullptr; }

BOOL CWnd::GetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, UINT nMask) {
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    lpScrollInfo->fMask = nMask;
    return ::GetScrollInfo(m_hWnd, nBar, lpScrollInfo);
}

BOOL CWnd::SetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, BOOL bRedraw) {
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    ::SetScrollInfo(m_hWnd, nBar, lpScrollInfo, bRedraw);
    return TRUE;
}

int CWnd::GetScrollLimit(int nBar) {
    SCROLLINFO info{};
    if (!GetScrollInfo(nBar, &info, SIF_RANGE | SIF_PAGE)) return 0;
    const int beyond = info.nPage > 0 ? static_cast<int>(info.nPage) - 1 : 0;
    return info.nMax - beyond;
}

BOOL CWnd::EnableScrollBarCtrl(int nBar, BOOL bEnable) {
    return ::EnableScrollBar(m_hWnd, static_cast<UINT>(nBar), bEnable ? ESB_ENABLE_BOTH : ESB_DISABLE_BOTH);
}

// --- Menus and dialog items ----------------------------------------------------------------------------------------

CMenu* CWnd::GetMenu() const { return CMenu::FromHandle(::GetMenu(m_hWnd)); }
BOOL CWnd::SetMenu(CMenu* pMenu) { return ::SetMenu(m_hWnd, pMenu ? pMenu->m_hMenu : nullptr); }
CMenu* CWnd::GetSystemMenu(BOOL bRevert) const { return CMenu::FromHandle(::GetSystemMenu(m_hWnd, bRevert)); }

int CWnd::MessageBox(LPCSTR lpszText, LPCSTR lpszCaption, UINT nType) {
    return ::MessageBoxA(m_hWnd, lpszText, lpszCaption ? lpszCaption : AfxGetAppName(), nType);
}

CWnd* CWnd::GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious) const {
    return FromHandle(::GetNextDlgTabItem(m_hWnd, handleOf(pWndCtl), bPrevious));
}

void CWnd::DoDataExchange(CDataExchange*) {}

BOOL CWnd::UpdateData(BOOL bSaveAndValidate) {
    CDataExchange exchange(this, bSaveAndValidate);
    try {
        DoDataExchange(&exchange);
        return TRUE;
    } catch (CUserException* e) {
        e->Delete();  // the user has been told
        return FALSE;
    }
}

// --- Layout of a frame's inside ------------------------------------------------------------------------------------

namespace {

// A status bar of the system places itself; it only has to be taken off the rest.
bool layOutStatusBar(HWND child, RECT& rest) {
    char name[32] = "";
    ::GetClassNameA(child, name, sizeof(name));
    if (::lstrcmpiA(name, STATUSCLASSNAMEA) != 0) return false;
    ::SendMessageA(child, WM_SIZE, 0, 0);
    CRect own;
    ::GetWindowRect(child, &own);
    rest.bottom -= own.Height();
    return true;
}

}  // namespace

void CWnd::RepositionBars(UINT nIDFirst, UINT nIDLast, UINT nIDLeftOver) {
    AFX_SIZEPARENTPARAMS layout{};
    GetClientRect(&layout.rect);
    layout.hDWP = ::BeginDeferWindowPos(8);
    HWND leftOver = nullptr;
    for (HWND child = ::GetTopWindow(m_hWnd); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const auto id = static_cast<UINT>(::GetDlgCtrlID(child));
        if (id == nIDLeftOver)
            leftOver = child;
        else if (id >= nIDFirst && id <= nIDLast && (::GetWindowLongPtrA(child, GWL_STYLE) & WS_VISIBLE) &&
                 !layOutStatusBar(child, layout.rect))
            ::SendMessageA(child, WM_SIZEPARENT, 0, reinterpret_cast<LPARAM>(&layout));
    }
    const CRect rest(layout.rect);
    if (leftOver && layout.hDWP)
        layout.hDWP = ::DeferWindowPos(layout.hDWP, leftOver, nullptr, rest.left, rest.top, rest.Width(), rest.Height(),
                                       SWP_NOACTIVATE | SWP_NOZORDER);
    if (layout.hDWP) ::EndDeferWindowPos(layout.hDWP);
    throwKeptException();
}
