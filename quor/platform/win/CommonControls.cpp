#include "quor/platform/win/ControlsInternal.h"

IMPLEMENT_DYNAMIC(CSliderCtrl, CWnd)
IMPLEMENT_DYNAMIC(CDateTimeCtrl, CWnd)
IMPLEMENT_DYNAMIC(CStatusBarCtrl, CWnd)
IMPLEMENT_DYNAMIC(CTabCtrl, CWnd)
IMPLEMENT_DYNAMIC(CProgressCtrl, CWnd)
IMPLEMENT_DYNAMIC(CSpinButtonCtrl, CWnd)

namespace {

int call(const CWnd* window, UINT message, int wParam = 0, LPARAM lParam = 0) {
    return static_cast<int>(send(window, message, static_cast<WPARAM>(static_cast<INT_PTR>(wParam)), lParam));
}

}  // namespace

BOOL CSliderCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    registerCommonControls();
    return CWnd::Create(TRACKBAR_CLASS, nullptr, style, rect, parent, id);
}

int CSliderCtrl::GetPos() const { return call(this, TBM_GETPOS); }
void CSliderCtrl::SetPos(int position) { call(this, TBM_SETPOS, TRUE, position); }
void CSliderCtrl::GetRange(int& minimum, int& maximum) const {
    minimum = GetRangeMin();
    maximum = GetRangeMax();
}
void CSliderCtrl::SetRange(int minimum, int maximum, BOOL redraw) {
    SetRangeMin(minimum, FALSE);
    SetRangeMax(maximum, redraw);
}
int CSliderCtrl::GetRangeMin() const { return call(this, TBM_GETRANGEMIN); }
void CSliderCtrl::SetRangeMin(int minimum, BOOL redraw) { call(this, TBM_SETRANGEMIN, redraw, minimum); }
int CSliderCtrl::GetRangeMax() const { return call(this, TBM_GETRANGEMAX); }
void CSliderCtrl::SetRangeMax(int maximum, BOOL redraw) { call(this, TBM_SETRANGEMAX, redraw, maximum); }
int CSliderCtrl::GetLineSize() const { return call(this, TBM_GETLINESIZE); }
int CSliderCtrl::SetLineSize(int size) { return call(this, TBM_SETLINESIZE, 0, size); }
int CSliderCtrl::GetPageSize() const { return call(this, TBM_GETPAGESIZE); }
int CSliderCtrl::SetPageSize(int size) { return call(this, TBM_SETPAGESIZE, 0, size); }
void CSliderCtrl::SetTicFreq(int frequency) { call(this, TBM_SETTICFREQ, frequency); }
BOOL CSliderCtrl::SetTic(int position) { return call(this, TBM_SETTIC, 0, position); }
void CSliderCtrl::ClearTics(BOOL redraw) { call(this, TBM_CLEARTICS, redraw); }
UINT CSliderCtrl::GetNumTics() const { return static_cast<UINT>(call(this, TBM_GETNUMTICS)); }
void CSliderCtrl::GetThumbRect(LPRECT rect) const { call(this, TBM_GETTHUMBRECT, 0, pointerParam(rect)); }
void CSliderCtrl::GetChannelRect(LPRECT rect) const { call(this, TBM_GETCHANNELRECT, 0, pointerParam(rect)); }

BOOL CDateTimeCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    registerCommonControls();
    return CWnd::Create(DATETIMEPICK_CLASS, nullptr, style, rect, parent, id);
}

DWORD CDateTimeCtrl::GetTime(LPSYSTEMTIME time) const {
    return static_cast<DWORD>(send(this, DTM_GETSYSTEMTIME, 0, pointerParam(time)));
}
// Some systems refuse a null record even where it means nothing.
BOOL CDateTimeCtrl::SetTime(LPSYSTEMTIME time) {
    SYSTEMTIME none{};
    return call(this, DTM_SETSYSTEMTIME, time ? GDT_VALID : GDT_NONE, pointerParam(time ? time : &none));
}
BOOL CDateTimeCtrl::SetFormat(LPCTSTR format) { return call(this, DTM_SETFORMAT, 0, pointerParam(format)); }

BOOL CStatusBarCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    registerCommonControls();
    return CWnd::Create(STATUSCLASSNAME, nullptr, style, rect, parent, id);
}

BOOL CStatusBarCtrl::SetParts(int count, int* rightEdges) {
    return call(this, SB_SETPARTS, count, pointerParam(rightEdges));
}
int CStatusBarCtrl::GetParts(int count, int* rightEdges) const {
    return call(this, SB_GETPARTS, count, pointerParam(rightEdges));
}
BOOL CStatusBarCtrl::SetText(LPCTSTR text, int pane, int type) {
    return call(this, SB_SETTEXT, pane | type, pointerParam(text));
}
CString CStatusBarCtrl::GetText(int pane, int* type) const {
    CString text;
    const int length = GetTextLength(pane, type);
    send(this, SB_GETTEXT, static_cast<WPARAM>(pane), pointerParam(text.GetBuffer(length)));
    text.ReleaseBuffer(length);
    return text;
}
int CStatusBarCtrl::GetTextLength(int pane, int* type) const {
    const LRESULT result = send(this, SB_GETTEXTLENGTH, static_cast<WPARAM>(pane));
    if (type) *type = HIWORD(result);
    return LOWORD(result);
}
BOOL CStatusBarCtrl::GetRect(int pane, LPRECT rect) const { return call(this, SB_GETRECT, pane, pointerParam(rect)); }
BOOL CStatusBarCtrl::SetSimple(BOOL simple) { return call(this, SB_SIMPLE, simple); }
BOOL CStatusBarCtrl::IsSimple() const { return call(this, SB_ISSIMPLE); }
void CStatusBarCtrl::SetMinHeight(int height) { call(this, SB_SETMINHEIGHT, height); }
BOOL CStatusBarCtrl::SetIcon(int pane, HICON icon) { return call(this, SB_SETICON, pane, pointerParam(icon)); }
COLORREF CStatusBarCtrl::SetBkColor(COLORREF color) {
    return static_cast<COLORREF>(send(this, SB_SETBKCOLOR, 0, static_cast<LPARAM>(color)));
}

void CStatusBarCtrl::DrawItem(LPDRAWITEMSTRUCT) {}

BOOL CStatusBarCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM) return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

BOOL CTabCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    registerCommonControls();
    return CWnd::Create(WC_TABCONTROL, nullptr, style, rect, parent, id);
}

int CTabCtrl::GetItemCount() const { return call(this, TCM_GETITEMCOUNT); }
LONG CTabCtrl::InsertItem(int index, TCITEM* item) { return call(this, TCM_INSERTITEM, index, pointerParam(item)); }
LONG CTabCtrl::InsertItem(int index, LPCTSTR text) {
    TCITEM item{};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<LPTSTR>(text);
    return InsertItem(index, &item);
}
BOOL CTabCtrl::GetItem(int index, TCITEM* item) const { return call(this, TCM_GETITEM, index, pointerParam(item)); }
BOOL CTabCtrl::SetItem(int index, TCITEM* item) { return call(this, TCM_SETITEM, index, pointerParam(item)); }
BOOL CTabCtrl::DeleteItem(int index) { return call(this, TCM_DELETEITEM, index); }
BOOL CTabCtrl::DeleteAllItems() { return call(this, TCM_DELETEALLITEMS); }
int CTabCtrl::GetCurSel() const { return call(this, TCM_GETCURSEL); }
int CTabCtrl::SetCurSel(int index) { return call(this, TCM_SETCURSEL, index); }
BOOL CTabCtrl::GetItemRect(int index, LPRECT rect) const {
    return call(this, TCM_GETITEMRECT, index, pointerParam(rect));
}
void CTabCtrl::AdjustRect(BOOL larger, LPRECT rect) { call(this, TCM_ADJUSTRECT, larger, pointerParam(rect)); }
int CTabCtrl::HitTest(TCHITTESTINFO* info) const { return call(this, TCM_HITTEST, 0, pointerParam(info)); }
CImageList* CTabCtrl::SetImageList(CImageList* list) {
    const LRESULT former = send(this, TCM_SETIMAGELIST, 0, pointerParam(handleOf(list)));
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(former));
}

void CTabCtrl::DrawItem(LPDRAWITEMSTRUCT) {}

BOOL CTabCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM) return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

BOOL CProgressCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    registerCommonControls();
    return CWnd::Create(PROGRESS_CLASS, nullptr, style, rect, parent, id);
}

void CProgressCtrl::SetRange(short lower, short upper) { SetRange32(lower, upper); }
void CProgressCtrl::SetRange32(int lower, int upper) { call(this, PBM_SETRANGE32, lower, upper); }
int CProgressCtrl::GetPos() const { return call(this, PBM_GETPOS); }
int CProgressCtrl::SetPos(int position) { return call(this, PBM_SETPOS, position); }
int CProgressCtrl::OffsetPos(int by) { return call(this, PBM_DELTAPOS, by); }
int CProgressCtrl::StepIt() { return call(this, PBM_STEPIT); }
int CProgressCtrl::SetStep(int step) { return call(this, PBM_SETSTEP, step); }

BOOL CSpinButtonCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    registerCommonControls();
    return CWnd::Create(UPDOWN_CLASS, nullptr, style, rect, parent, id);
}

CWnd* CSpinButtonCtrl::SetBuddy(CWnd* buddy) {
    const auto window = reinterpret_cast<WPARAM>(handleOf(buddy));
    return CWnd::FromHandle(reinterpret_cast<HWND>(send(this, UDM_SETBUDDY, window)));
}
CWnd* CSpinButtonCtrl::GetBuddy() const { return CWnd::FromHandle(reinterpret_cast<HWND>(send(this, UDM_GETBUDDY))); }
void CSpinButtonCtrl::SetRange(short lower, short upper) { SetRange32(lower, upper); }
void CSpinButtonCtrl::SetRange32(int lower, int upper) { call(this, UDM_SETRANGE32, lower, upper); }
void CSpinButtonCtrl::GetRange32(int& lower, int& upper) const {
    send(this, UDM_GETRANGE32, reinterpret_cast<WPARAM>(&lower), pointerParam(&upper));
}
int CSpinButtonCtrl::GetPos(BOOL* failed) const { return call(this, UDM_GETPOS32, 0, pointerParam(failed)); }
int CSpinButtonCtrl::SetPos(int position) { return call(this, UDM_SETPOS32, 0, position); }
