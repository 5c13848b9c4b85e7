#include "quor/platform/win/ControlsInternal.h"
#include "quor/platform/win/FilterBar.h"
#include "quor/platform/win/HeaderDrag.h"

#include <memory>

IMPLEMENT_DYNCREATE(CListCtrl, CWnd)

BEGIN_MESSAGE_MAP(CListCtrl, CWnd)
    ON_WM_PARENTNOTIFY()
END_MESSAGE_MAP()

void CListCtrl::PreSubclassWindow() {
    CWnd::PreSubclassWindow();
    quor::attachFilterBarOfList(m_hWnd);  // of a list that exists already
}

// A list makes its header when it needs it first.
void CListCtrl::OnParentNotify(UINT message, LPARAM lParam) {
    if (LOWORD(message) == WM_CREATE) quor::attachFilterBarOfList(m_hWnd);
    CWnd::OnParentNotify(message, lParam);
}

BOOL CListCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    registerCommonControls();
    return CWnd::Create(WC_LISTVIEW, nullptr, style, rect, parent, id);
}

BOOL CListCtrl::CreateEx(DWORD exStyle, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    registerCommonControls();
    return CWnd::CreateEx(exStyle, WC_LISTVIEW, nullptr, style, rect, parent, id);
}

int CListCtrl::InsertItem(int row, LPCTSTR text) { return InsertItem(LVIF_TEXT, row, text, 0, 0, 0, 0); }

int CListCtrl::InsertItem(int row, LPCTSTR text, int image) {
    return InsertItem(LVIF_TEXT | LVIF_IMAGE, row, text, 0, 0, image, 0);
}

int CListCtrl::InsertItem(UINT mask, int row, LPCTSTR text, UINT state, UINT stateMask, int image, LPARAM data) {
    LVITEM item{};
    item.mask = mask;
    item.iItem = row;
    item.pszText = const_cast<LPTSTR>(text);
    item.state = state;
    item.stateMask = stateMask;
    item.iImage = image;
    item.lParam = data;
    return InsertItem(&item);
}

BOOL CListCtrl::SetItem(int row, int subItem, UINT mask, LPCTSTR text, int image, UINT state, UINT stateMask,
                        LPARAM data) {
    return SetItem(row, subItem, mask, text, image, state, stateMask, data, 0);
}

BOOL CListCtrl::SetItem(int row, int subItem, UINT mask, LPCTSTR text, int image, UINT state, UINT stateMask,
                        LPARAM data, int indent) {
    LVITEM item{};
    item.mask = mask;
    item.iItem = row;
    item.iSubItem = subItem;
    item.pszText = const_cast<LPTSTR>(text);
    item.state = state;
    item.stateMask = stateMask;
    item.iImage = image;
    item.lParam = data;
    item.iIndent = indent;
    return SetItem(&item);
}

// The control does not tell a text's length: the buffer doubles until the text leaves room.
CString CListCtrl::GetItemText(int row, int subItem) const {
    CString text;
    for (int size = 128;; size *= 2) {
        LPTSTR buffer = text.GetBuffer(size);
        buffer[size] = '\0';
        const int length = GetItemText(row, subItem, buffer, size);
        text.ReleaseBuffer(length);
        if (length < size - 1) return text;
    }
}

// Some systems leave a cut text without a terminator and count on behind the buffer.
int CListCtrl::GetItemText(int row, int subItem, LPTSTR text, int length) const {
    if (length <= 0) return 0;
    LVITEM item{};
    item.iSubItem = subItem;
    item.pszText = text;
    item.cchTextMax = length;
    text[0] = '\0';
    const int copied = intFrom(LVM_GETITEMTEXT, row, param(&item));
    if (copied < length) return copied;
    text[length - 1] = '\0';
    return length - 1;
}

BOOL CListCtrl::SetItemText(int row, int subItem, LPCTSTR text) {
    LVITEM item{};
    item.iSubItem = subItem;
    item.pszText = const_cast<LPTSTR>(text);
    return boolFrom(LVM_SETITEMTEXT, row, param(&item));
}

DWORD_PTR CListCtrl::GetItemData(int row) const {
    LVITEM item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    return GetItem(&item) ? static_cast<DWORD_PTR>(item.lParam) : 0;
}

BOOL CListCtrl::SetItemData(int row, DWORD_PTR data) {
    return SetItem(row, 0, LVIF_PARAM, nullptr, 0, 0, 0, static_cast<LPARAM>(data));
}

BOOL CListCtrl::SetItemState(int row, UINT state, UINT mask) {
    LVITEM item{};
    item.state = state;
    item.stateMask = mask;
    return SetItemState(row, &item);
}

BOOL CListCtrl::GetCheck(int row) const { return GetItemState(row, LVIS_STATEIMAGEMASK) >> 12 == 2; }

BOOL CListCtrl::SetCheck(int row, BOOL check) {
    return SetItemState(row, static_cast<UINT>(INDEXTOSTATEIMAGEMASK(check ? 2 : 1)), LVIS_STATEIMAGEMASK);
}

// A position is the row plus one, so that null is the end.
POSITION CListCtrl::GetFirstSelectedItemPosition() const {
    return reinterpret_cast<POSITION>(static_cast<INT_PTR>(GetNextItem(-1, LVNI_SELECTED) + 1));
}

int CListCtrl::GetNextSelectedItem(POSITION& position) const {
    const int row = static_cast<int>(reinterpret_cast<INT_PTR>(position)) - 1;
    position = reinterpret_cast<POSITION>(static_cast<INT_PTR>(GetNextItem(row, LVNI_SELECTED) + 1));
    return row;
}

int CListCtrl::InsertColumn(int column, LPCTSTR heading, int format, int width, int subItem) {
    LVCOLUMN record{};
    record.mask = LVCF_TEXT | LVCF_FMT;
    record.pszText = const_cast<LPTSTR>(heading);
    record.fmt = format;
    if (width != -1) {
        record.mask |= LVCF_WIDTH;
        record.cx = width;
    }
    if (subItem != -1) {
        record.mask |= LVCF_SUBITEM;
        record.iSubItem = subItem;
    }
    return InsertColumn(column, &record);
}

BOOL CListCtrl::GetColumnOrderArray(LPINT order, int count) const {
    const int columns = count < 0 ? GetHeaderCtrl()->GetItemCount() : count;
    return boolFrom(LVM_GETCOLUMNORDERARRAY, columns, param(order));
}

CHeaderCtrl* CListCtrl::GetHeaderCtrl() const {
    return static_cast<CHeaderCtrl*>(CWnd::FromHandle(reinterpret_cast<HWND>(send(LVM_GETHEADER))));
}

BOOL CListCtrl::GetItemRect(int row, LPRECT rect, UINT area) const {
    rect->left = static_cast<LONG>(area);
    return boolFrom(LVM_GETITEMRECT, row, param(rect));
}

BOOL CListCtrl::GetSubItemRect(int row, int subItem, int area, CRect& rect) const {
    rect.top = subItem;
    rect.left = area;
    return boolFrom(LVM_GETSUBITEMRECT, row, param(&rect));
}

int CListCtrl::HitTest(POINT point, UINT* flags) const {
    LVHITTESTINFO info{};
    info.pt = point;
    const int row = HitTest(&info);
    if (flags) *flags = info.flags;
    return row;
}

CSize CListCtrl::ApproximateViewRect(CSize size, int count) const {
    const LRESULT result = send(LVM_APPROXIMATEVIEWRECT, count, MAKELPARAM(size.cx, size.cy));
    return CSize(static_cast<short>(LOWORD(result)), static_cast<short>(HIWORD(result)));
}

CImageList* CListCtrl::GetImageList(int kind) const {
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(send(LVM_GETIMAGELIST, kind)));
}

CImageList* CListCtrl::SetImageList(CImageList* list, int kind) {
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(send(LVM_SETIMAGELIST, kind, param(handleOf(list)))));
}

CImageList* CListCtrl::CreateDragImage(int row, LPPOINT point) {
    const auto handle = reinterpret_cast<HIMAGELIST>(send(LVM_CREATEDRAGIMAGE, row, param(point)));
    if (!handle) return nullptr;
    auto picture = std::make_unique<CImageList>();
    picture->Attach(handle);
    return picture.release();
}

CToolTipCtrl* CListCtrl::GetToolTips() const {
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(reinterpret_cast<HWND>(send(LVM_GETTOOLTIPS))));
}

CToolTipCtrl* CListCtrl::SetToolTips(CToolTipCtrl* toolTip) {
    const auto window = reinterpret_cast<INT_PTR>(handleOf(toolTip));
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(reinterpret_cast<HWND>(send(LVM_SETTOOLTIPS, window))));
}

CEdit* CListCtrl::EditLabel(int row) {
    return static_cast<CEdit*>(CWnd::FromHandle(reinterpret_cast<HWND>(send(LVM_EDITLABEL, row))));
}

CEdit* CListCtrl::GetEditControl() const {
    return static_cast<CEdit*>(CWnd::FromHandle(reinterpret_cast<HWND>(send(LVM_GETEDITCONTROL))));
}

void CListCtrl::DrawItem(LPDRAWITEMSTRUCT) {}

BOOL CListCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM) return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

BOOL CListCtrl::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.code == static_cast<UINT>(HDN_ENDDRAG)) quor::repairAfterHeaderDrag(header.hwndFrom);
    return CWnd::OnNotify(wParam, lParam, result);
}
