#include "host/panes/ListPane.h"

#include "host/panes/HostEntries.h"
#include "host/panes/ListMenu.h"
#include "host/panes/LiveGrid.h"
#include "host/panes/Theme.h"
#include "host/resource/resource.h"
#include "quor/grid/FilterListCtrl.h"

#include <algorithm>
#include <cstring>

namespace terminal {

namespace {
constexpr int kCaptionHeight = 22;
constexpr UINT kWmFiltersChanged = WM_APP + 40;
}  // namespace

void assignText(CString& text, std::string_view value) {
    char* const room = text.GetBuffer(static_cast<int>(value.size()));
    std::memcpy(room, value.data(), value.size());
    text.ReleaseBuffer(static_cast<int>(value.size()));
}

BEGIN_MESSAGE_MAP(CListPane, CBCGPFormView)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_CONTEXTMENU()
    ON_WM_PARENTNOTIFY()
    ON_MESSAGE(kWmFiltersChanged, &CListPane::OnFiltersChanged)
END_MESSAGE_MAP()

CListPane::CListPane(const char* title) : CBCGPFormView(IDD_PANE), m_title(title) {}

BOOL CListPane::CreatePane(CWnd* parent, UINT id) {
    const CRect none(0, 0, 0, 0);
    return Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, none, parent, id,
                  nullptr);
}

int CListPane::OnCreate(LPCREATESTRUCT create) {
    if (CBCGPFormView::OnCreate(create) == -1) return -1;
    m_captionFont.CreatePointFont(90, "Tahoma");
    return createList() ? 0 : -1;
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
        column.iWidth = columns[i].width;
        column.iFormat = columns[i].format;
        column.iDataType = columns[i].dataType;
        target.m_arrColumns.Add(column);
    }
}

void CListPane::setRemark(const std::string& remark) {
    if (remark == m_remark) return;
    m_remark = remark;
    CRect area;
    GetClientRect(&area);
    area.bottom = (std::min)(area.bottom, static_cast<LONG>(kCaptionHeight));
    InvalidateRect(&area, FALSE);
}

void CListPane::layOut() {
    if (!GetSafeHwnd() || !list().GetSafeHwnd()) return;
    CRect area;
    GetClientRect(&area);
    list().MoveWindow(0, kCaptionHeight, area.Width(), (std::max)(0, area.Height() - kCaptionHeight));
}

void CListPane::fitColumns() {
    CCommonListCtrl& target = list();
    CRect area;
    target.GetClientRect(&area);
    const int room = area.Width() - ::GetSystemMetrics(SM_CXVSCROLL);
    int total = 0;
    const auto eachShown = [&target](auto&& use) {
        for (INT_PTR i = 0; i < target.m_arrColumns.GetSize() && i < target.m_arrOrder.GetSize(); ++i)
            if (target.m_arrOrder[i] >= 0) use(target.m_arrOrder[i], target.m_arrColumns[i].iWidth);
    };
    eachShown([&](int, int width) { total += width; });
    if (total <= 0) return;
    eachShown([&](int place, int width) { target.SetColumnWidth(place, total < room ? width * room / total : width); });
}

void CListPane::fitNewColumns() {
    if (!settingStored(layoutSection().c_str(), "COLUMNPROFILE")) fitColumns();
}

// Any number of changed filters cost one rebuild, and that only once the caller who set them has set everything.
BOOL CListPane::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(HDN_FILTERCHANGE) && !m_filtersChanged)
        m_filtersChanged = PostMessage(kWmFiltersChanged) != FALSE;
    return CBCGPFormView::OnNotify(wParam, lParam, result);
}

LRESULT CListPane::OnFiltersChanged(WPARAM, LPARAM) {
    m_filtersChanged = false;
    if (const auto live = dynamic_cast<CLiveGrid*>(&list()))
        live->keepSelection([live] { live->PopulateList(); });
    else if (const auto grid = dynamic_cast<CFilterListCtrl*>(&list()))
        grid->PopulateList();
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

void CListPane::OnPaint() {
    CPaintDC dc(this);
    CRect strip;
    GetClientRect(&strip);
    strip.bottom = (std::min)(strip.bottom, static_cast<LONG>(kCaptionHeight));
    dc.FillSolidRect(&strip, palette::kSurface);
    const RECT foot{strip.left, strip.bottom - 1, strip.right, strip.bottom};
    dc.FillSolidRect(&foot, palette::kEdge);
    CFont* const former = dc.SelectObject(&m_captionFont);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(palette::kText);
    drawCellText(dc, m_title, static_cast<int>(std::strlen(m_title)), strip, 0);
    dc.SetTextColor(palette::kDim);
    drawCellText(dc, m_remark.c_str(), static_cast<int>(m_remark.size()), strip, 1);
    dc.SelectObject(former);
}

BOOL CListPane::OnEraseBkgnd(CDC*) { return TRUE; }

}  // namespace terminal
