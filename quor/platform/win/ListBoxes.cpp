// The combo box and the list box: the same calls under two sets of message names.
#include "quor/platform/win/ControlsInternal.h"

IMPLEMENT_DYNAMIC(CComboBox, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)

namespace {

int call(const CWnd* window, UINT message, int wParam = 0, LPARAM lParam = 0) {
    return static_cast<int>(send(window, message, static_cast<WPARAM>(static_cast<INT_PTR>(wParam)), lParam));
}

// Reads one item's text; empty where the index is outside.
void readItem(const CWnd* window, UINT lengthMessage, UINT textMessage, int index, CString& text) {
    const int length = call(window, lengthMessage, index);
    if (length <= 0) {
        text.Empty();
        return;
    }
    call(window, textMessage, index, pointerParam(text.GetBuffer(length)));
    text.ReleaseBuffer(length);
}

// Hands the requests of the owner-drawn styles to the control's own virtual functions. False: not such a request.
template <class Control>
bool ownerDrawn(Control* control, UINT message, LPARAM lParam, LRESULT* result) {
    switch (message) {
        case WM_DRAWITEM:
            control->DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
            return true;
        case WM_MEASUREITEM:
            control->MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
            return true;
        case WM_COMPAREITEM: {
            const int order = control->CompareItem(reinterpret_cast<LPCOMPAREITEMSTRUCT>(lParam));
            if (result) *result = order;
            return true;
        }
        case WM_DELETEITEM:
            control->DeleteItem(reinterpret_cast<LPDELETEITEMSTRUCT>(lParam));
            return true;
        default:
            return false;
    }
}

}  // namespace

BOOL CComboBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(WC_COMBOBOX, nullptr, style, rect, parent, id);
}

int CComboBox::GetCount() const { return call(this, CB_GETCOUNT); }
int CComboBox::GetCurSel() const { return call(this, CB_GETCURSEL); }
int CComboBox::SetCurSel(int index) { return call(this, CB_SETCURSEL, index); }
int CComboBox::AddString(LPCTSTR text) { return call(this, CB_ADDSTRING, 0, pointerParam(text)); }
int CComboBox::InsertString(int index, LPCTSTR text) { return call(this, CB_INSERTSTRING, index, pointerParam(text)); }
int CComboBox::DeleteString(UINT index) { return call(this, CB_DELETESTRING, static_cast<int>(index)); }
void CComboBox::ResetContent() { call(this, CB_RESETCONTENT); }
int CComboBox::GetLBText(int index, LPTSTR text) const { return call(this, CB_GETLBTEXT, index, pointerParam(text)); }
void CComboBox::GetLBText(int index, CString& text) const {
    readItem(this, CB_GETLBTEXTLEN, CB_GETLBTEXT, index, text);
}
int CComboBox::GetLBTextLen(int index) const { return call(this, CB_GETLBTEXTLEN, index); }
int CComboBox::FindString(int after, LPCTSTR text) const {
    return call(this, CB_FINDSTRING, after, pointerParam(text));
}
int CComboBox::FindStringExact(int after, LPCTSTR text) const {
    return call(this, CB_FINDSTRINGEXACT, after, pointerParam(text));
}
int CComboBox::SelectString(int after, LPCTSTR text) { return call(this, CB_SELECTSTRING, after, pointerParam(text)); }
DWORD_PTR CComboBox::GetItemData(int index) const {
    return static_cast<DWORD_PTR>(send(this, CB_GETITEMDATA, static_cast<WPARAM>(index)));
}
int CComboBox::SetItemData(int index, DWORD_PTR data) {
    return call(this, CB_SETITEMDATA, index, static_cast<LPARAM>(data));
}
DWORD CComboBox::GetEditSel() const { return static_cast<DWORD>(send(this, CB_GETEDITSEL)); }
BOOL CComboBox::SetEditSel(int start, int end) { return call(this, CB_SETEDITSEL, 0, MAKELPARAM(start, end)); }
BOOL CComboBox::LimitText(int characters) { return call(this, CB_LIMITTEXT, characters); }
void CComboBox::ShowDropDown(BOOL show) { call(this, CB_SHOWDROPDOWN, show); }
BOOL CComboBox::GetDroppedState() const { return call(this, CB_GETDROPPEDSTATE); }
void CComboBox::GetDroppedControlRect(LPRECT rect) const {
    call(this, CB_GETDROPPEDCONTROLRECT, 0, pointerParam(rect));
}
int CComboBox::GetDroppedWidth() const { return call(this, CB_GETDROPPEDWIDTH); }
int CComboBox::SetDroppedWidth(UINT width) { return call(this, CB_SETDROPPEDWIDTH, static_cast<int>(width)); }
int CComboBox::GetItemHeight(int index) const { return call(this, CB_GETITEMHEIGHT, index); }
int CComboBox::SetItemHeight(int index, UINT height) { return call(this, CB_SETITEMHEIGHT, index, height); }
int CComboBox::GetTopIndex() const { return call(this, CB_GETTOPINDEX); }
int CComboBox::SetTopIndex(int index) { return call(this, CB_SETTOPINDEX, index); }
BOOL CComboBox::SetExtendedUI(BOOL extended) { return call(this, CB_SETEXTENDEDUI, extended); }
BOOL CComboBox::SetCueBanner(LPCWSTR text) { return call(this, CB_SETCUEBANNER, 0, pointerParam(text)); }
void CComboBox::Clear() { call(this, WM_CLEAR); }
void CComboBox::Copy() { call(this, WM_COPY); }
void CComboBox::Cut() { call(this, WM_CUT); }
void CComboBox::Paste() { call(this, WM_PASTE); }

void CComboBox::DrawItem(LPDRAWITEMSTRUCT) {}
void CComboBox::MeasureItem(LPMEASUREITEMSTRUCT) {}
int CComboBox::CompareItem(LPCOMPAREITEMSTRUCT) { return 0; }
void CComboBox::DeleteItem(LPDELETEITEMSTRUCT) {}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    return ownerDrawn(this, message, lParam, result) || CWnd::OnChildNotify(message, wParam, lParam, result);
}

BOOL CListBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(WC_LISTBOX, nullptr, style, rect, parent, id);
}

int CListBox::GetCount() const { return call(this, LB_GETCOUNT); }
int CListBox::AddString(LPCTSTR text) { return call(this, LB_ADDSTRING, 0, pointerParam(text)); }
int CListBox::InsertString(int index, LPCTSTR text) { return call(this, LB_INSERTSTRING, index, pointerParam(text)); }
int CListBox::DeleteString(UINT index) { return call(this, LB_DELETESTRING, static_cast<int>(index)); }
void CListBox::ResetContent() { call(this, LB_RESETCONTENT); }
int CListBox::GetText(int index, LPTSTR text) const { return call(this, LB_GETTEXT, index, pointerParam(text)); }
void CListBox::GetText(int index, CString& text) const { readItem(this, LB_GETTEXTLEN, LB_GETTEXT, index, text); }
int CListBox::GetTextLen(int index) const { return call(this, LB_GETTEXTLEN, index); }
int CListBox::FindString(int after, LPCTSTR text) const { return call(this, LB_FINDSTRING, after, pointerParam(text)); }
int CListBox::FindStringExact(int after, LPCTSTR text) const {
    return call(this, LB_FINDSTRINGEXACT, after, pointerParam(text));
}
DWORD_PTR CListBox::GetItemData(int index) const {
    return static_cast<DWORD_PTR>(send(this, LB_GETITEMDATA, static_cast<WPARAM>(index)));
}
int CListBox::SetItemData(int index, DWORD_PTR data) {
    return call(this, LB_SETITEMDATA, index, static_cast<LPARAM>(data));
}
int CListBox::GetCurSel() const { return call(this, LB_GETCURSEL); }
int CListBox::SetCurSel(int index) { return call(this, LB_SETCURSEL, index); }
int CListBox::SelectString(int after, LPCTSTR text) { return call(this, LB_SELECTSTRING, after, pointerParam(text)); }
int CListBox::GetSel(int index) const { return call(this, LB_GETSEL, index); }
int CListBox::SetSel(int index, BOOL select) { return call(this, LB_SETSEL, select, index); }
int CListBox::GetSelCount() const { return call(this, LB_GETSELCOUNT); }
int CListBox::GetSelItems(int maxItems, LPINT indexes) const {
    return call(this, LB_GETSELITEMS, maxItems, pointerParam(indexes));
}
int CListBox::SelItemRange(BOOL select, int first, int last) {
    return call(this, LB_SELITEMRANGE, select, MAKELPARAM(first, last));
}
int CListBox::GetCaretIndex() const { return call(this, LB_GETCARETINDEX); }
int CListBox::SetCaretIndex(int index, BOOL scroll) {
    return call(this, LB_SETCARETINDEX, index, MAKELPARAM(scroll, 0));
}
int CListBox::GetTopIndex() const { return call(this, LB_GETTOPINDEX); }
int CListBox::SetTopIndex(int index) { return call(this, LB_SETTOPINDEX, index); }
int CListBox::GetItemRect(int index, LPRECT rect) const {
    return call(this, LB_GETITEMRECT, index, pointerParam(rect));
}
int CListBox::GetItemHeight(int index) const { return call(this, LB_GETITEMHEIGHT, index); }
int CListBox::SetItemHeight(int index, UINT height) {
    return call(this, LB_SETITEMHEIGHT, index, MAKELPARAM(height, 0));
}

UINT CListBox::ItemFromPoint(CPoint point, BOOL& outside) const {
    const LRESULT result = send(this, LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y));
    outside = HIWORD(result) != 0;
    return LOWORD(result);
}

int CListBox::GetHorizontalExtent() const { return call(this, LB_GETHORIZONTALEXTENT); }
void CListBox::SetHorizontalExtent(int width) { call(this, LB_SETHORIZONTALEXTENT, width); }

void CListBox::DrawItem(LPDRAWITEMSTRUCT) {}
void CListBox::MeasureItem(LPMEASUREITEMSTRUCT) {}
int CListBox::CompareItem(LPCOMPAREITEMSTRUCT) { return 0; }
void CListBox::DeleteItem(LPDELETEITEMSTRUCT) {}

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    return ownerDrawn(this, message, lParam, result) || CWnd::OnChildNotify(message, wParam, lParam, result);
}
