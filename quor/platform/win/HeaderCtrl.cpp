#include "quor/platform/win/ControlsInternal.h"
#include "quor/platform/win/FilterBar.h"

IMPLEMENT_DYNAMIC(CHeaderCtrl, CWnd)

void registerCommonControls() {
    static const BOOL registered = [] {
        const INITCOMMONCONTROLSEX classes = {sizeof(classes),
                                              ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
        return ::InitCommonControlsEx(&classes);
    }();
    static_cast<void>(registered);
}

BOOL CHeaderCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    registerCommonControls();
    return CWnd::Create(WC_HEADER, nullptr, style, rect, parent, id);
}

// Below the object's own procedure: what the object sees of the filter bar is what the system would have sent.
void CHeaderCtrl::PreSubclassWindow() {
    CWnd::PreSubclassWindow();
    quor::attachFilterBar(m_hWnd);
}

int CHeaderCtrl::GetItemCount() const { return static_cast<int>(send(this, HDM_GETITEMCOUNT)); }

BOOL CHeaderCtrl::GetItem(int index, HDITEM* item) const {
    return static_cast<BOOL>(send(this, HDM_GETITEM, static_cast<WPARAM>(index), pointerParam(item)));
}

BOOL CHeaderCtrl::SetItem(int index, HDITEM* item) {
    return static_cast<BOOL>(send(this, HDM_SETITEM, static_cast<WPARAM>(index), pointerParam(item)));
}

int CHeaderCtrl::InsertItem(int index, HDITEM* item) {
    return static_cast<int>(send(this, HDM_INSERTITEM, static_cast<WPARAM>(index), pointerParam(item)));
}

BOOL CHeaderCtrl::DeleteItem(int index) {
    return static_cast<BOOL>(send(this, HDM_DELETEITEM, static_cast<WPARAM>(index)));
}

BOOL CHeaderCtrl::GetItemRect(int index, LPRECT rect) const {
    return static_cast<BOOL>(send(this, HDM_GETITEMRECT, static_cast<WPARAM>(index), pointerParam(rect)));
}

BOOL CHeaderCtrl::Layout(HDLAYOUT* layout) {
    return static_cast<BOOL>(send(this, HDM_LAYOUT, 0, pointerParam(layout)));
}

int CHeaderCtrl::HitTest(LPHDHITTESTINFO info) {
    return static_cast<int>(send(this, HDM_HITTEST, 0, pointerParam(info)));
}

BOOL CHeaderCtrl::GetOrderArray(LPINT order, int count) const {
    const int items = count < 0 ? GetItemCount() : count;
    return static_cast<BOOL>(send(this, HDM_GETORDERARRAY, static_cast<WPARAM>(items), pointerParam(order)));
}

BOOL CHeaderCtrl::SetOrderArray(int count, LPINT order) {
    return static_cast<BOOL>(send(this, HDM_SETORDERARRAY, static_cast<WPARAM>(count), pointerParam(order)));
}

int CHeaderCtrl::OrderToIndex(int order) const {
    return static_cast<int>(send(this, HDM_ORDERTOINDEX, static_cast<WPARAM>(order)));
}

CImageList* CHeaderCtrl::GetImageList() const {
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(send(this, HDM_GETIMAGELIST)));
}

CImageList* CHeaderCtrl::SetImageList(CImageList* list) {
    return CImageList::FromHandle(
        reinterpret_cast<HIMAGELIST>(send(this, HDM_SETIMAGELIST, 0, pointerParam(handleOf(list)))));
}

int CHeaderCtrl::GetBitmapMargin() const { return static_cast<int>(send(this, HDM_GETBITMAPMARGIN)); }

int CHeaderCtrl::SetBitmapMargin(int width) {
    return static_cast<int>(send(this, HDM_SETBITMAPMARGIN, static_cast<WPARAM>(width)));
}

CImageList* CHeaderCtrl::CreateDragImage(int index) {
    return CImageList::FromHandle(
        reinterpret_cast<HIMAGELIST>(send(this, HDM_CREATEDRAGIMAGE, static_cast<WPARAM>(index))));
}

int CHeaderCtrl::SetHotDivider(POINT point) {
    return static_cast<int>(send(this, HDM_SETHOTDIVIDER, TRUE, MAKELPARAM(point.x, point.y)));
}

int CHeaderCtrl::SetHotDivider(int index) { return static_cast<int>(send(this, HDM_SETHOTDIVIDER, FALSE, index)); }

int CHeaderCtrl::EditFilter(int column, BOOL discardChanges) {
    return static_cast<int>(send(this, HDM_EDITFILTER, static_cast<WPARAM>(column), MAKELPARAM(discardChanges, 0)));
}

int CHeaderCtrl::ClearFilter(int column) {
    return static_cast<int>(send(this, HDM_CLEARFILTER, static_cast<WPARAM>(column)));
}

int CHeaderCtrl::SetFilterChangeTimeout(DWORD timeout) {
    return static_cast<int>(send(this, HDM_SETFILTERCHANGETIMEOUT, 0, static_cast<LPARAM>(timeout)));
}

void CHeaderCtrl::DrawItem(LPDRAWITEMSTRUCT) {}

BOOL CHeaderCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM) return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}
