// Construction, message map, modes, header, timers.
//
// Every message passes NativeList first: the native row count may lag behind, and whoever looks must not see that.
#include "src/grid/FilterListCtrl.h"

#include "src/foundation/ControlBlock.h"
#include "src/foundation/TimerIds.h"
#include "src/grid/FilterText.h"
#include "src/resource/resource.h"

IMPLEMENT_DYNAMIC(CFilterListCtrl, CCommonListCtrl)

BEGIN_MESSAGE_MAP(CFilterListCtrl, CCommonListCtrl)
    // Life
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_TIMER()
    // Focus
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    // Painting
    ON_WM_ERASEBKGND()
    ON_WM_MEASUREITEM_REFLECT()
    ON_NOTIFY_REFLECT_EX(NM_CUSTOMDRAW, &CFilterListCtrl::OnNMCustomdraw)
    // Sort
    ON_NOTIFY_REFLECT(LVN_COLUMNCLICK, &CFilterListCtrl::OnLvnColumnclick)
    // Commands
    ON_COMMAND(kCommandResetFilters, &CFilterListCtrl::OnOptionResetFilter)
    // What the control asks. The second is sent in either form, whatever the control was created with.
    ON_NOTIFY_REFLECT(LVN_GETDISPINFOA, &CFilterListCtrl::OnLvnGetdispinfo)
    ON_NOTIFY_REFLECT(LVN_ODFINDITEMA, &CFilterListCtrl::OnLvnOdfinditem)
    ON_NOTIFY_REFLECT(LVN_ODFINDITEMW, &CFilterListCtrl::OnLvnOdfinditem)
END_MESSAGE_MAP()

CArray<CFilterListCtrl*, CFilterListCtrl*> CFilterListCtrl::g_OptiDataFilterLists;

CFilterListCtrl::CFilterListCtrl() : m_rows(this), m_native(*this, m_dirty, [this] { m_rows.settleLater(); }) {
    m_rows.onSettled = [this](const LaterChanges& changes) { followTicks(changes); };
    SetPointerToGetTextColor(static_cast<TextColorCallback>(&CFilterListCtrl::GetTextColorForItem));
}

CFilterListCtrl::~CFilterListCtrl() {
    if (m_hWnd) DestroyWindow();
    CFilterText::forget(this);
    for (INT_PTR i = g_OptiDataFilterLists.GetUpperBound(); i >= 0; --i)
        if (g_OptiDataFilterLists.GetAt(i) == this) g_OptiDataFilterLists.RemoveAt(i);
    m_rows.clear();
    FreeTrendValues();
}

LRESULT CFilterListCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    m_native.beforeMessage(message, wParam, lParam);
    if (message == WM_PARENTNOTIFY) {
        // A control without WS_VISIBLE may make its header only for the first column.
        const LRESULT result = CCommonListCtrl::WindowProc(message, wParam, lParam);
        if (LOWORD(wParam) == WM_CREATE) SubclassHeader();
        return result;
    }
    if (!NativeList::changesCount(message)) return CCommonListCtrl::WindowProc(message, wParam, lParam);
    const LRESULT result = CCommonListCtrl::WindowProc(message, wParam, lParam);
    m_native.takeCountFromControl();
    return result;
}

// ---- Creation. The header object attaches as soon as the control has a header, so before the first column. A hidden
// control of a dialog may get its header from the start of the list.

void CFilterListCtrl::PreSubclassWindow() {
    CCommonListCtrl::PreSubclassWindow();
    SubclassHeader();
    setCallbackMask();
    m_hasFocus = ::GetFocus() == m_hWnd;
}

int CFilterListCtrl::OnCreate(LPCREATESTRUCT create) {
    if (CCommonListCtrl::OnCreate(create) == -1) return -1;
    SubclassHeader();
    setCallbackMask();
    return 0;
}

// With a store the control keeps no state images: it asks for a row's as it asks for the text.
void CFilterListCtrl::setCallbackMask() {
    if (m_hWnd) SendMessage(LVM_SETCALLBACKMASK, UseFilter ? LVIS_STATEIMAGEMASK : 0);
}

int CFilterListCtrl::SubclassHeader() {
    if (m_header.m_hWnd) return 0;
    // A control that is just making its header cannot name it yet.
    const HWND header = ::FindWindowExA(m_hWnd, nullptr, WC_HEADERA, nullptr);
    if (!header || !m_header.SubclassWindow(header)) return -1;
    FilterBarVisible = (m_header.GetStyle() & HDS_FILTERBAR) != 0;
    if (UseFilter) turnHeaderThemeOff();
    return 0;
}

void CFilterListCtrl::OnDestroy() {
    FlushTimerId = RepaintTimerId = 0;  // timers die with the window
    CCommonListCtrl::OnDestroy();
}

// ---- Modes

void CFilterListCtrl::SetUseFilter(int flag) {
    UseFilter = flag;
    setCallbackMask();
    if (flag) {
        showFilterBar(true);
        m_native.deleteAllRows();
        PutListFilter();  // the flag was just set, so this hides the bar
        turnHeaderThemeOff();
    } else {
        if (m_header.m_hWnd) m_header.ClearFilter(-1);
        showFilterBar(false);
        m_native.deleteAllRows();
        m_rows.clear();
    }
    m_native.setRedraw(true);
    m_native.invalidateAll();
}

void CFilterListCtrl::SetOptiDataMode(bool on) {
    if (!on || m_rows.optiData()) return;
    m_rows.enterOptiData();
    g_OptiDataFilterLists.Add(this);
    m_native.setExtendedStyle(m_native.extendedStyle() | LVS_EX_DOUBLEBUFFER);
}

// A themed header does not show the colours that the grid gives it.
void CFilterListCtrl::turnHeaderThemeOff() {
    using SetWindowThemeFunction = HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR);
    if (!m_header.m_hWnd) return;
    const HMODULE library = g_pControlBlock->quoru_call_LoadLibrary("UxTheme.dll");
    if (!library) return;
    const auto address = reinterpret_cast<void (*)()>(::GetProcAddress(library, "SetWindowTheme"));
    if (address) reinterpret_cast<SetWindowThemeFunction>(address)(m_header.m_hWnd, L" ", L" ");
}

// ---- Timers

void CFilterListCtrl::OnTimer(UINT_PTR id) {
    switch (id) {
        case kFlushTimer:
            return flushDirtyRect();
        case kRepaintTimer:
            return repaintWhole();
        case kTrendFadeTimer:
            return FadeTrends();
        default:
            CCommonListCtrl::OnTimer(id);
    }
}

void CFilterListCtrl::flushDirtyRect() {
    KillTimer(kFlushTimer);
    FlushTimerId = 0;
    m_native.settle();
    m_native.invalidate(m_dirty.flush(m_native.layout()), false);
}

void CFilterListCtrl::StartRepaintTimer() {
    if (m_hWnd && RepaintTimerId == 0) RepaintTimerId = SetTimer(kRepaintTimer, kRepaintDelay);
}

void CFilterListCtrl::repaintWhole() {
    KillTimer(kRepaintTimer);
    RepaintTimerId = 0;
    m_native.invalidateAll();
}

void CFilterListCtrl::OnSetFocus(CWnd* former) {
    m_hasFocus = true;
    CCommonListCtrl::OnSetFocus(former);
}

void CFilterListCtrl::OnKillFocus(CWnd* next) {
    m_hasFocus = false;
    CCommonListCtrl::OnKillFocus(next);
}

// ---- Notifications. Those of the header reach the list and go no further.

BOOL CFilterListCtrl::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    auto* const header = reinterpret_cast<NMHDR*>(lParam);
    if (header->hwndFrom == m_header.m_hWnd && m_header.m_hWnd) {
        switch (header->code) {
            case HDN_ENDTRACKA:
            case HDN_ENDTRACKW:
                OnHdnEnddragList(result);
                break;
            case HDN_FILTERCHANGE:
                OnFilterChange(header);
                return TRUE;
            case HDN_FILTERBTNCLICK:
                OnFilterButtonClicked(header, result);
                return TRUE;
            default:
                break;
        }
    }
    return CCommonListCtrl::OnNotify(wParam, lParam, result);
}

// A new column width can wrap a text of several lines differently.
void CFilterListCtrl::OnHdnEnddragList(LRESULT* result) {
    if (LinesPerRow > 1) m_native.invalidateAll();
    *result = 0;
}

void CFilterListCtrl::OnLvnGetdispinfo(NMHDR* header, LRESULT* result) {
    *result = 0;
    LVITEMA& item = reinterpret_cast<NMLVDISPINFOA*>(header)->item;
    if (!UseFilter || item.iItem > GetDisplayCount()) return;
    if (item.mask & LVIF_IMAGE) item.iImage = 0;
    if (item.mask & (LVIF_IMAGE | LVIF_STATE)) {
        item.stateMask = LVIS_STATEIMAGEMASK;
        item.state = INDEXTOSTATEIMAGEMASK(2);
    }
    if (!(item.mask & LVIF_TEXT)) return;
    const CString text = m_native.isMeasuring() ? CString() : GetItemText(item.iItem, item.iSubItem);
    ::lstrcpynA(item.pszText, text, item.cchTextMax);
}

// Typing finds nothing: the answer is always the marked row.
void CFilterListCtrl::OnLvnOdfinditem(NMHDR*, LRESULT* result) { *result = m_native.selectionMark(); }
