#include "host/LiveGrid.h"

#include "host/HeaderPaint.h"
#include "host/Theme.h"

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
}

void CLiveGrid::remove(CFilterListBaseData* row) {
    if (DeleteRow(row, false) >= 0) --m_live;
}

void CLiveGrid::refill(const std::function<void()>& addAll) {
    std::vector<CFilterListBaseData*> selected;
    for (int i = -1; (i = CListCtrl::GetNextItem(i, LVNI_SELECTED)) >= 0;)
        selected.push_back(reinterpret_cast<CFilterListBaseData*>(GetItemData(i)));
    const int focus = CListCtrl::GetNextItem(-1, LVNI_FOCUSED);
    const auto focused = focus >= 0 ? reinterpret_cast<CFilterListBaseData*>(GetItemData(focus)) : nullptr;
    DeleteAllItems();
    m_live = 0;
    addAll();
    processPendingOptiUpdates();
    if (m_bSortLocked) SortByLastColumnWithLock();
    const auto restore = [this](CFilterListBaseData* row, UINT state) {
        int mapIndex = -1, visual = -1;
        if (row) getRowIndices(row, this, mapIndex, visual);
        if (visual >= 0) CListCtrl::SetItemState(visual, state, state);
    };
    for (CFilterListBaseData* row : selected) restore(row, LVIS_SELECTED);
    restore(focused, LVIS_FOCUSED);
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

void CLiveGrid::OnPaint() {
    m_drawn.clear();
    m_painted.clear();
    CFilterListCtrl::OnPaint();
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
