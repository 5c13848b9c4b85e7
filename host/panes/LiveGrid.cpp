#include "host/panes/LiveGrid.h"

#include "host/panes/HeaderPaint.h"
#include "host/panes/ListPane.h"
#include "host/panes/Theme.h"

#include <utility>

namespace terminal {

BEGIN_MESSAGE_MAP(CLiveGrid, CFilterListCtrl)
    ON_WM_PAINT()
    ON_WM_SIZE()
    ON_WM_VSCROLL()
    ON_WM_MOUSEWHEEL()
    ON_WM_KEYDOWN()
END_MESSAGE_MAP()

BOOL CLiveGrid::CreateGrid(CWnd* owner, UINT id) {
    const CRect none(0, 0, 0, 0);
    m_bUserCustomizeEnabled = 1;
    Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_OWNERDRAWFIXED | LVS_SHOWSELALWAYS,
           none, owner, id);
    if (!GetSafeHwnd()) return FALSE;
    SetUseFilter(TRUE);
    SetOptiDataMode(true);
    return TRUE;
}

void CLiveGrid::beginSlice() {
    const int top = GetTopIndex();
    if (top != m_topInView) startGeneration();
    m_topInView = top;
    m_endInView = top + GetCountPerPage() + 1;  // the last one may show in part
}

void CLiveGrid::touched(CFilterListBaseData* row, PaintStamp& stamp, std::int64_t now) {
    if (stamp.micros && stamp.generation == m_generation) return;
    int mapIndex = -1, visual = -1;
    getRowIndices(row, this, mapIndex, visual);
    if (visual < m_topInView || visual >= m_endInView) return;
    stamp.micros = now;
    stamp.generation = m_generation;
}

void CLiveGrid::add(CFilterListBaseData* row) {
    AddRow(row, false);
    ++m_live;
    m_rowsCame = true;
}

void CLiveGrid::remove(CFilterListBaseData* row) {
    if (DeleteRow(row, false) >= 0) --m_live;
}

CFilterListBaseData* CLiveGrid::rowAt(int visual) {
    return visual < 0 ? nullptr : reinterpret_cast<CFilterListBaseData*>(GetItemData(visual));
}

int CLiveGrid::visualOf(CFilterListBaseData* row) {
    int mapIndex = -1, visual = -1;
    if (row) getRowIndices(row, this, mapIndex, visual);
    return visual;
}

// The control knows the selection by visual index alone: what the rows were is kept here, and put on again. A list that
// shows its top stays there; one that was scrolled keeps a focused row in its place.
void CLiveGrid::keepSelection(const std::function<void()>& change) {
    constexpr UINT kBoth = LVIS_SELECTED | LVIS_FOCUSED;
    processPendingOptiUpdates();
    struct State {
        CFilterListBaseData* row;
        int visual;
        UINT state;
    };
    std::vector<State> kept;
    const int top = GetTopIndex(), focus = CListCtrl::GetNextItem(-1, LVNI_FOCUSED);
    for (int i = -1; (i = CListCtrl::GetNextItem(i, LVNI_SELECTED)) >= 0;)
        kept.push_back({rowAt(i), i, i == focus ? kBoth : UINT{LVIS_SELECTED}});
    if (focus >= 0 && !CListCtrl::GetItemState(focus, LVIS_SELECTED))
        kept.push_back({rowAt(focus), focus, LVIS_FOCUSED});
    CFilterListBaseData* const focused = rowAt(focus);
    CFilterListBaseData* const marked = rowAt(GetSelectionMark());
    const bool focusInView = focus >= top && focus < top + GetCountPerPage();
    change();
    processPendingOptiUpdates();
    for (const State& was : kept)
        if (visualOf(was.row) != was.visual) CListCtrl::SetItemState(was.visual, 0, was.state);
    for (const State& was : kept)
        if (const int now = visualOf(was.row); now >= 0 && CListCtrl::GetItemState(now, was.state) != was.state)
            CListCtrl::SetItemState(now, was.state, was.state);
    if (marked) SetSelectionMark(visualOf(marked));
    const int moved = visualOf(focused);
    if (top > 0 && focusInView && moved >= 0) scrollTo(top + moved - focus);
}

void CLiveGrid::scrollTo(int top) {
    CRect row;
    if (GetDisplayCount() > 0 && GetItemRect(GetTopIndex(), &row, LVIR_BOUNDS))
        Scroll(CSize(0, (top - GetTopIndex()) * row.Height()));
}

void CLiveGrid::resort() {
    if (m_bSortLocked) keepSelection([this] { SortByLastColumnWithLock(); });
}

void CLiveGrid::refill(const std::function<void()>& addAll) {
    keepSelection([&] {
        DeleteAllItems();
        m_live = 0;
        addAll();
        processPendingOptiUpdates();
        if (m_bSortLocked) SortByLastColumnWithLock();
    });
    beginTrends();
}

void CLiveGrid::batchClosed() {
    if (std::exchange(m_rowsCame, false)) ExtendTrendColumns();
}

// All rows that are in the grid now have them; none flashes.
void CLiveGrid::beginTrends() {
    CArray<int, int> columns;
    GetTrendColumns(columns);
    SetTrendColumns(&columns);
}

void CLiveGrid::DrawItem(LPDRAWITEMSTRUCT item) {
    const int visual = static_cast<int>(item->itemID);
    void* const row = visual < GetDisplayCount() ? reinterpret_cast<void*>(GetItemData(visual)) : nullptr;
    m_drawing = &m_drawn.begin(visual, row);
    CFilterListCtrl::DrawItem(item);
    m_drawing = nullptr;
    if (!row || !m_stampOf) return;
    PaintStamp& stamp = m_stampOf(row);
    if (stamp.micros) m_painted.push_back(&stamp);
}

void CLiveGrid::takeSelection(CFilterListBaseData* row, COLORREF& text, COLORREF& back) {
    if (!m_painting || !CListCtrl::GetItemState(visualOf(row), LVIS_SELECTED)) return;
    text = palette::kSelectedText;
    back = selectionColour(*this);
}

// A change has its sign before the digits.
void CLiveGrid::GroupDigits(int dataType, CString& text) {
    if (dataType == kTypeDecimal) groupDigits(*this, text);
}

void CLiveGrid::OnPaint() {
    m_drawn.clear();
    m_painted.clear();
    m_painting = true;
    CFilterListCtrl::OnPaint();
    m_painting = false;
    const std::int64_t now = m_figures.now();
    for (PaintStamp* stamp : m_painted) {
        if (stamp->generation == m_generation) m_figures.addLatency(now - stamp->micros);
        stamp->micros = 0;
    }
    m_figures.paintEnded(now, m_drawn.size() != 0);
}

BOOL CLiveGrid::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (paintHeader(*this, reinterpret_cast<NMHDR*>(lParam), result)) return TRUE;
    return CFilterListCtrl::OnNotify(wParam, lParam, result);
}

void CLiveGrid::OnVScroll(UINT code, UINT position, CScrollBar* bar) {
    startGeneration();
    CFilterListCtrl::OnVScroll(code, position, bar);
}

BOOL CLiveGrid::OnMouseWheel(UINT flags, short delta, CPoint point) {
    startGeneration();
    return CFilterListCtrl::OnMouseWheel(flags, delta, point);
}

void CLiveGrid::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    startGeneration();
    CFilterListCtrl::OnKeyDown(key, repeat, flags);
}

void CLiveGrid::OnSize(UINT type, int width, int height) {
    startGeneration();
    CFilterListCtrl::OnSize(type, width, height);
}

}  // namespace terminal
