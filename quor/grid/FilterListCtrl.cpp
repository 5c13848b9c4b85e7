// Construction, message map, modes, header, timers.
//
// Every message passes NativeList first: the native row count may lag behind, and whoever looks must not see that.
#include "quor/foundation/ControlBlock.h"
#include "quor/foundation/HostServices.h"
#include "quor/foundation/TimerIds.h"
#include "quor/grid/FilterListCtrlInternal.h"
#include "quor/grid/FilterText.h"
#include "quor/grid/ListTrendSetting.h"
#include "quor/resource/resource.h"

using namespace quor::foundation;
using namespace quor::grid;

namespace {

// Also a narrower column: the scroll bar below may go.
bool canGrowPage(UINT message, LPARAM lParam) {
    if (message != WM_NOTIFY) return message == WM_WINDOWPOSCHANGED || message == WM_SIZE;
    const UINT code = reinterpret_cast<const NMHDR*>(lParam)->code;
    return code == HDN_ITEMCHANGEDA || code == HDN_ITEMCHANGEDW;
}

}  // namespace

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
    ON_COMMAND(kCommandSetTrendColumns, &CFilterListCtrl::OnSetTrendColumns)
    // What the control asks. The second is sent in either form, whatever the control was created with.
    ON_NOTIFY_REFLECT(LVN_GETDISPINFOA, &CFilterListCtrl::OnLvnGetdispinfo)
    ON_NOTIFY_REFLECT(LVN_ODFINDITEMA, &CFilterListCtrl::OnLvnOdfinditem)
    ON_NOTIFY_REFLECT(LVN_ODFINDITEMW, &CFilterListCtrl::OnLvnOdfinditem)
END_MESSAGE_MAP()

CArray<CFilterListCtrl*, CFilterListCtrl*> CFilterListCtrl::g_OptiDataFilterLists;

CFilterListCtrl::CFilterListCtrl() : m_parts(std::make_unique<Parts>(*this)) {
    SetPointerToGetTextColor(static_cast<TextColorCallback>(&CFilterListCtrl::GetTextColorForItem));
}

CFilterListCtrl::~CFilterListCtrl() {
    if (m_hWnd) DestroyWindow();
    CFilterText::forget(this);
    CListTrendSetting::forgetGrid(this);
    if (g_SortingList == this) g_SortingList = nullptr;
    for (INT_PTR i = g_OptiDataFilterLists.GetUpperBound(); i >= 0; --i)
        if (g_OptiDataFilterLists.GetAt(i) == this) g_OptiDataFilterLists.RemoveAt(i);
    m_parts->rows.clear();
}

// The layout may be read while a message runs, before the control has followed it: so it is stale behind it as well.
LRESULT CFilterListCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const MessageKind kind = messageKind(message, wParam, lParam);
    const Presence presence(*this);
    beforeMessage(message, wParam, lParam);
    if (presence.gone()) return 0;
    const bool mayGrow = m_hWnd && canGrowPage(message, lParam);
    const int formerTop = mayGrow ? m_parts->native.topIndex() : 0;
    const LRESULT result = CCommonListCtrl::WindowProc(message, wParam, lParam);
    if (presence.gone()) return result;
    // A page that grew beyond the last row moves up; the control may leave its pixels where they were.
    if (mayGrow && m_parts->native.topIndex() != formerTop) m_parts->native.invalidateAll();
    // A control without WS_VISIBLE may make its header only for the first column.
    if (message == WM_PARENTNOTIFY && LOWORD(wParam) == WM_CREATE) SubclassHeader();
    if (kind == MessageKind::counts) m_parts->rows.takeCount(m_parts->native.nativeCount());
    if (kind == MessageKind::counts || kind == MessageKind::general) m_parts->rows.forgetLayout();
    return result;
}

void CFilterListCtrl::beforeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    LiveRows& rows = m_parts->rows;
    const Presence presence(*this);
    m_parts->native.beforeMessage(message, wParam);
    if (message == WM_NCDESTROY) return rows.windowWent();
    switch (messageKind(message, wParam, lParam)) {
        case MessageKind::blind:
            return;
        case MessageKind::paint:
            rows.paintComes();
            return m_parts->native.widenUpdate(rows.layout());
        case MessageKind::quiet:
            return rows.settle();
        default:
            rows.forgetLayout();
            rows.settle();
            if (!presence.gone()) rows.settleScrollBar();
    }
}

// ---- Creation. The header object attaches as soon as the control has a header, so before the first column. A hidden
// control of a dialog may get its header from the start of the list.

void CFilterListCtrl::PreSubclassWindow() {
    CCommonListCtrl::PreSubclassWindow();
    SubclassHeader();
    setCallbackMask();
    m_hasFocus = ::GetFocus() == m_hWnd;
    startTrendTimer();
    paintDoubleBuffered();  // of a living control that is taken over
}

int CFilterListCtrl::OnCreate(LPCREATESTRUCT create) {
    if (CCommonListCtrl::OnCreate(create) == -1) return -1;
    SubclassHeader();
    paintDoubleBuffered();
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
    CListTrendSetting::forgetGrid(this);
    FlushTimerId = RepaintTimerId = 0;  // timers die with the window
    CCommonListCtrl::OnDestroy();
}

// ---- Modes

void CFilterListCtrl::SetUseFilter(int flag) {
    UseFilter = flag;
    setCallbackMask();
    if (flag) {
        showFilterBar(true);
        m_parts->touchControl([this] { m_parts->native.deleteAllRows(); });
        PutListFilter();  // the flag was just set, so this hides the bar
        turnHeaderThemeOff();
    } else {
        const Presence presence(*this);
        if (m_header.m_hWnd) m_header.ClearFilter(-1);
        if (presence.gone()) return;
        showFilterBar(false);
        m_parts->touchControl([this] { m_parts->native.deleteAllRows(); });
        m_parts->rows.clear();
    }
    m_parts->rows.takeCount(m_parts->native.nativeCount());
    m_parts->native.setRedraw(true);
    m_parts->native.invalidateAll();
}

// Numbers that a host gave to classic rows are no pointers.
void CFilterListCtrl::SetOptiDataMode(bool on) {
    if (!on || m_parts->rows.optiData()) return;
    if (m_parts->rows.itemCount() != 0) {
        logToHost("SetOptiDataMode refused: the grid already has rows of classic mode");
        return;
    }
    m_parts->rows.enterOptiData();
    g_OptiDataFilterLists.Add(this);
    paintDoubleBuffered();
}

void CFilterListCtrl::paintDoubleBuffered() {
    if (m_parts->rows.optiData() && m_hWnd)
        m_parts->native.setExtendedStyle(m_parts->native.extendedStyle() | LVS_EX_DOUBLEBUFFER);
}

bool CFilterListCtrl::GetOptiDataMode() const { return m_parts->rows.optiData(); }
void CFilterListCtrl::SetReverseDisplay(bool on) { m_parts->rows.setReverse(on); }
bool CFilterListCtrl::GetReverseDisplay() const { return m_parts->rows.reverse(); }
void CFilterListCtrl::AnchorView(bool on) { m_parts->rows.setAnchored(on); }

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
    m_parts->rows.flush();
}

void CFilterListCtrl::StartRepaintTimer() {
    if (m_hWnd && RepaintTimerId == 0) RepaintTimerId = SetTimer(kRepaintTimer, kRepaintDelay);
}

void CFilterListCtrl::OnAutoSortTimerTaken() {
    if (RepaintTimerId == 0) return;
    RepaintTimerId = 0;
    StartRepaintTimer();
}

void CFilterListCtrl::repaintWhole() {
    KillTimer(kRepaintTimer);
    RepaintTimerId = 0;
    m_parts->native.invalidateAll();
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
    if (LinesPerRow > 1) m_parts->native.invalidateAll();
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
    const CString text = m_parts->native.isMeasuring() ? CString() : GetItemText(item.iItem, item.iSubItem);
    ::lstrcpynA(item.pszText, text, item.cchTextMax);
}

// Typing finds nothing: the answer is always the marked row.
void CFilterListCtrl::OnLvnOdfinditem(NMHDR*, LRESULT* result) { *result = m_parts->native.selectionMark(); }
