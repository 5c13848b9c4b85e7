#include "host/panes/ListPane.h"

#include "host/panes/DarkFields.h"
#include "host/panes/DarkMenus.h"
#include "host/panes/DarkScrollBars.h"
#include "host/panes/GridLines.h"
#include "host/panes/HostEntries.h"
#include "host/panes/ListMenu.h"
#include "host/panes/LiveGrid.h"
#include "host/panes/PaneHolder.h"
#include "host/panes/Theme.h"
#include "host/resource/resource.h"
#include "quor/grid/FilterListCtrl.h"

#include <algorithm>
#include <cstring>

namespace terminal {

namespace {
constexpr UINT kWmFiltersChanged = WM_APP + 40;
}  // namespace

void assignText(CString& text, std::string_view value) {
    char* const room = text.GetBuffer(static_cast<int>(value.size()));
    std::memcpy(room, value.data(), value.size());
    text.ReleaseBuffer(static_cast<int>(value.size()));
}

void groupDigits(CCommonListCtrl& list, CString& number) {
    constexpr std::size_t kGroup = 3;
    std::string_view digits = viewOf(number);
    const bool rose = digits.starts_with('+');
    if (rose || digits.starts_with('-')) digits.remove_prefix(1);
    const std::size_t whole = (std::min)(digits.find('.'), digits.size());
    if (whole <= kGroup || digits.find_first_not_of("0123456789.") != std::string_view::npos) return;
    if (rose) number.Delete(0);
    number = (rose ? "+" : "") + list.GetCommaData(number);
}

std::string grouped(CCommonListCtrl& list, std::string_view number) {
    CString text(number.data(), static_cast<int>(number.size()));
    groupDigits(list, text);
    return std::string(viewOf(text));
}

std::string countedIn(CCommonListCtrl& list, std::int64_t count, const char* what) {
    const std::string text = counted(count, what);
    const std::size_t digits = text.find(' ');
    return grouped(list, std::string_view(text).substr(0, digits)) + text.substr(digits);
}

BEGIN_MESSAGE_MAP(CListPane, CBCGPFormView)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_ERASEBKGND()
    ON_WM_CONTEXTMENU()
    ON_WM_PARENTNOTIFY()
    ON_MESSAGE(kWmFiltersChanged, &CListPane::OnFiltersChanged)
END_MESSAGE_MAP()

CListPane::CListPane(const char* title) : CBCGPFormView(IDD_PANE), m_title(title) {}

BOOL CListPane::CreatePane(CWnd* parent, UINT id) {
    const CRect none(0, 0, 0, 0);
    if (!Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, none, parent, id, nullptr))
        return FALSE;
    if (CPaneHolder* const holder = CPaneHolder::around(*this)) holder->hold(*this, m_title);
    return TRUE;
}

int CListPane::OnCreate(LPCREATESTRUCT create) {
    if (CBCGPFormView::OnCreate(create) == -1) return -1;
    if (!createList()) return -1;
    m_fill.start(list(), [this] { return layoutSection(); });
    darken();
    return 0;
}

void CListPane::darken() {
    darkenScrollBars(list());
    darkenMenus(list());
    if (const CHeaderCtrl* const header = list().GetHeaderCtrl()) darkenFields(header->m_hWnd);
}

void CListPane::PostNcDestroy() {
    if (m_onGone) m_onGone();
    CBCGPFormView::PostNcDestroy();
}

void CListPane::OnParentNotify(UINT message, LPARAM lParam) {
    CBCGPFormView::OnParentNotify(message, lParam);
    const bool listGoes = LOWORD(message) == WM_DESTROY && reinterpret_cast<HWND>(lParam) == list().GetSafeHwnd();
    if (listGoes && m_onGone) m_onGone();
}

void CListPane::saveState() { list().SaveState(); }

void CListPane::OnInitialUpdate() {
    CBCGPFormView::OnInitialUpdate();
    layOut();
}

void CListPane::describeColumns(const ColumnSpec* columns, int count) {
    CCommonListCtrl& target = list();
    target.m_csListName = m_title;
    for (int i = 0; i < count; ++i) {
        sQuorColInfo column{};
        setColumnName(column, columns[i].heading);
        column.iWidth = quor::platform::scaled(m_hWnd, columns[i].width);
        column.iFormat = columns[i].format;
        column.iDataType = columns[i].dataType;
        target.m_arrColumns.Add(column);
    }
}

void CListPane::setRemark(const std::string& remark) {
    if (remark == m_remark) return;
    m_remark = remark;
    if (CPaneHolder* const holder = CPaneHolder::around(*this)) holder->setRemark(remark);
}

void CListPane::layOut() {
    if (!GetSafeHwnd() || !list().GetSafeHwnd()) return;
    CRect area;
    GetClientRect(&area);
    list().MoveWindow(&area);
}

void CListPane::fitColumns() {
    CCommonListCtrl& target = list();
    CRect area;  // with a bar that may show
    target.GetWindowRect(&area);
    const int room = area.Width() - ::GetSystemMetrics(SM_CXVSCROLL);
    int total = 0;
    const auto eachShown = [&target](auto&& use) {
        for (INT_PTR i = 0; i < target.m_arrColumns.GetSize() && i < target.m_arrOrder.GetSize(); ++i)
            if (target.m_arrOrder[i] >= 0) use(target.m_arrOrder[i], target.m_arrColumns[i].iWidth);
    };
    eachShown([&](int, int width) { total += width; });
    if (total <= 0) return;
    eachShown([&](int place, int width) { target.SetColumnWidth(place, total < room ? width * room / total : width); });
    m_fill.begin();
}

void CListPane::fitNewColumns() {
    if (!settingStored(layoutSection().c_str(), "COLUMNPROFILE")) fitColumns();
}

// Any number of changed filters cost one rebuild, and that only once the caller who set them has set everything.
BOOL CListPane::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const NMHDR& news = *reinterpret_cast<const NMHDR*>(lParam);
    if (news.code == static_cast<UINT>(HDN_FILTERCHANGE) && !m_filtersChanged)
        m_filtersChanged = PostMessage(kWmFiltersChanged) != FALSE;
    if (news.code == static_cast<UINT>(NM_CUSTOMDRAW) && news.hwndFrom == list().m_hWnd && showsGridLines(list()))
        return paintLined(wParam, lParam, result);
    return CBCGPFormView::OnNotify(wParam, lParam, result);
}

// The lines lie over whatever the list paints.
BOOL CListPane::paintLined(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto& draw = *reinterpret_cast<const NMCUSTOMDRAW*>(lParam);
    *result = CDRF_DODEFAULT;
    const BOOL answered = CBCGPFormView::OnNotify(wParam, lParam, result);
    if (draw.dwDrawStage == CDDS_POSTPAINT) drawGridLines(list(), *CDC::FromHandle(draw.hdc));
    if (draw.dwDrawStage != CDDS_PREPAINT) return answered;
    *result |= CDRF_NOTIFYPOSTPAINT;
    return TRUE;
}

LRESULT CListPane::OnFiltersChanged(WPARAM, LPARAM) {
    m_filtersChanged = false;
    if (const auto live = dynamic_cast<CLiveGrid*>(&list()))
        live->keepSelection([live] { live->PopulateList(); });
    else if (const auto grid = dynamic_cast<CFilterListCtrl*>(&list()))
        grid->PopulateList();
    showCount();
    return 0;
}

// The pane may go while a dialog of the menu is open.
void CListPane::OnContextMenu(CWnd*, CPoint point) {
    const HWND window = m_hWnd;
    showListMenu(list(), point);
    if (CWnd::FromHandlePermanent(window) == this) menuClosed();
}

void CListPane::OnSize(UINT type, int width, int height) {
    CBCGPFormView::OnSize(type, width, height);
    layOut();
}

void CListPane::OnSetFocus(CWnd*) {
    if (list().m_hWnd) list().SetFocus();
}

BOOL CListPane::OnEraseBkgnd(CDC*) { return TRUE; }

}  // namespace terminal
