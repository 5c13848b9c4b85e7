// Static, button, scroll bar. The edit control is in EditCtrl.cpp, the two list controls in ListBoxes.cpp.
#include "quor/platform/win/ControlsInternal.h"

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CScrollBar, CWnd)

namespace {

template <class Handle>
Handle handleFrom(LRESULT result) {
    return reinterpret_cast<Handle>(result);
}

}  // namespace

BOOL CStatic::Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(WC_STATIC, text, style, rect, parent, id);
}

HICON CStatic::SetIcon(HICON icon) {
    return handleFrom<HICON>(send(this, STM_SETIMAGE, IMAGE_ICON, pointerParam(icon)));
}
HICON CStatic::GetIcon() const { return handleFrom<HICON>(send(this, STM_GETIMAGE, IMAGE_ICON)); }
HBITMAP CStatic::SetBitmap(HBITMAP bitmap) {
    return handleFrom<HBITMAP>(send(this, STM_SETIMAGE, IMAGE_BITMAP, pointerParam(bitmap)));
}
HBITMAP CStatic::GetBitmap() const { return handleFrom<HBITMAP>(send(this, STM_GETIMAGE, IMAGE_BITMAP)); }

void CStatic::DrawItem(LPDRAWITEMSTRUCT) {}

BOOL CStatic::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM) return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

BOOL CButton::Create(LPCTSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(WC_BUTTON, caption, style, rect, parent, id);
}

UINT CButton::GetState() const { return static_cast<UINT>(send(this, BM_GETSTATE)); }
void CButton::SetState(BOOL highlight) { send(this, BM_SETSTATE, static_cast<WPARAM>(highlight)); }
int CButton::GetCheck() const { return static_cast<int>(send(this, BM_GETCHECK)); }
void CButton::SetCheck(int check) { send(this, BM_SETCHECK, static_cast<WPARAM>(check)); }
UINT CButton::GetButtonStyle() const {
    return static_cast<UINT>(::GetWindowLongPtr(m_hWnd, GWL_STYLE)) & static_cast<UINT>(0xFF);
}
void CButton::SetButtonStyle(UINT style, BOOL redraw) { send(this, BM_SETSTYLE, style, redraw); }
HICON CButton::SetIcon(HICON icon) {
    return handleFrom<HICON>(send(this, BM_SETIMAGE, IMAGE_ICON, pointerParam(icon)));
}
HICON CButton::GetIcon() const { return handleFrom<HICON>(send(this, BM_GETIMAGE, IMAGE_ICON)); }
HBITMAP CButton::SetBitmap(HBITMAP bitmap) {
    return handleFrom<HBITMAP>(send(this, BM_SETIMAGE, IMAGE_BITMAP, pointerParam(bitmap)));
}
HBITMAP CButton::GetBitmap() const { return handleFrom<HBITMAP>(send(this, BM_GETIMAGE, IMAGE_BITMAP)); }
void CButton::Click() { send(this, BM_CLICK); }

void CButton::DrawItem(LPDRAWITEMSTRUCT) {}

BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM) return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

BOOL CScrollBar::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(WC_SCROLLBAR, nullptr, style, rect, parent, id);
}

int CScrollBar::GetScrollPos() const { return ::GetScrollPos(m_hWnd, SB_CTL); }
int CScrollBar::SetScrollPos(int position, BOOL redraw) { return ::SetScrollPos(m_hWnd, SB_CTL, position, redraw); }
void CScrollBar::GetScrollRange(LPINT minimum, LPINT maximum) const {
    ::GetScrollRange(m_hWnd, SB_CTL, minimum, maximum);
}
void CScrollBar::SetScrollRange(int minimum, int maximum, BOOL redraw) {
    ::SetScrollRange(m_hWnd, SB_CTL, minimum, maximum, redraw);
}
BOOL CScrollBar::GetScrollInfo(LPSCROLLINFO info, UINT mask) {
    info->cbSize = sizeof(SCROLLINFO);
    info->fMask = mask;
    return ::GetScrollInfo(m_hWnd, SB_CTL, info);
}
BOOL CScrollBar::SetScrollInfo(LPSCROLLINFO info, BOOL redraw) {
    info->cbSize = sizeof(SCROLLINFO);
    ::SetScrollInfo(m_hWnd, SB_CTL, info, redraw);
    return TRUE;
}
void CScrollBar::ShowScrollBar(BOOL show) { ::ShowScrollBar(m_hWnd, SB_CTL, show); }
BOOL CScrollBar::EnableScrollBar(UINT arrows) { return ::EnableScrollBar(m_hWnd, SB_CTL, arrows); }
