// Opti-data mode: from the host's call to the rows; the end of a batch.
#include "quor/foundation/TimerIds.h"
#include "quor/grid/FilterListCtrlInternal.h"

using namespace quor::grid;

bool CFilterListCtrl::takesRows() const { return UseFilter != 0 && m_parts->rows.optiData(); }

int CFilterListCtrl::AddRow(CFilterListBaseData* row, bool updateNow) {
    if (row == nullptr || !takesRows()) return -1;
    return hasTextCallback() ? m_parts->rows.add(row, updateNow, m_parts->rowTest()) : 0;
}

int CFilterListCtrl::UpdateRow(CFilterListBaseData* row) {
    if (row == nullptr || !takesRows() || !hasTextCallback()) return 0;
    return m_parts->rows.update(row, m_parts->rowTest());
}

int CFilterListCtrl::DeleteRow(CFilterListBaseData* row, bool updateNow) {
    if (row == nullptr || !takesRows()) return -1;
    return hasTextCallback() ? m_parts->rows.remove(row, updateNow) : 0;
}

int CFilterListCtrl::AddRow(void* row, bool updateNow) {
    return AddRow(static_cast<CFilterListBaseData*>(row), updateNow);
}
int CFilterListCtrl::UpdateRow(void* row) { return UpdateRow(static_cast<CFilterListBaseData*>(row)); }
int CFilterListCtrl::DeleteRow(void* row, bool updateNow) {
    return DeleteRow(static_cast<CFilterListBaseData*>(row), updateNow);
}

void CFilterListCtrl::reserveForItems(int n) { m_parts->rows.reserve(n); }

void CFilterListCtrl::getRowIndices(CFilterListBaseData* row, CFilterListCtrl* list, int& mapIndex, int& displayIndex) {
    mapIndex = displayIndex = -1;
    if (row && list) list->m_parts->rows.numbersOf(row, mapIndex, displayIndex);
}

void CFilterListCtrl::processPendingOptiUpdates() { m_parts->rows.endBatch(); }

void CFilterListCtrl::startFlushTimer() {
    if (m_parts->rows.needsFlush() && FlushTimerId == 0) FlushTimerId = SetTimer(kFlushTimer, FlushDelay);
}

// A batch end sends notifications, and a host may destroy this grid or others in one of them, or open a new one: each
// grid that was there at the start has its turn once, wherever it stands by then.
void processEndofBatchUpdates() {
    auto& grids = CFilterListCtrl::g_OptiDataFilterLists;
    std::vector<std::pair<CFilterListCtrl*, std::weak_ptr<char>>> turns;
    for (INT_PTR i = 0; i < grids.GetCount(); ++i) turns.emplace_back(grids.GetAt(i), grids.GetAt(i)->m_parts->alive);
    for (const auto& [grid, alive] : turns) {
        if (alive.expired() || !grid->m_hWnd) continue;
        grid->processPendingOptiUpdates();
        if (!alive.expired() && grid->m_hWnd) grid->startFlushTimer();
    }
}

// ---- What both modes read

DWORD_PTR CFilterListCtrl::GetItemData(int item) {
    return UseFilter ? m_parts->rows.dataOfVisual(item) : CCommonListCtrl::GetItemData(item);
}

int CFilterListCtrl::GetItemCount() const { return UseFilter ? m_parts->rows.itemCount() : CListCtrl::GetItemCount(); }

CString CFilterListCtrl::GetItemText(int item, int place, bool mapColumn, bool forExport) {
    if (!UseFilter) return CCommonListCtrl::GetItemText(item, place, mapColumn, forExport);
    const int mapIndex = item < GetDisplayCount() ? m_parts->rows.mapIndexOfVisual(item) : -1;
    if (mapIndex == -1) return {};
    if (!hasTextCallback()) return "no data descriptor initialised";
    int columnIndex = place;
    if (!mapColumn) {
        columnIndex = GetOriginalColumnPosition(place);
        if (columnIndex == -1) columnIndex = GetOriginalColNo(place);
    }
    CellAnswer cell;
    if (const DWORD_PTR data = GetItemData(item); data != 0) m_parts->askCell(data, columnIndex, cell, forExport);
    return cell.text;
}

DWORD_PTR CFilterListCtrl::GetMapItemData(unsigned long long mapIndex) const {
    return m_parts->rows.dataOfMapIndexUnchecked(static_cast<std::size_t>(mapIndex));
}

int CFilterListCtrl::GetMapIndexFromDisplayIndex(int slot) const { return m_parts->rows.mapIndexOfSlot(slot); }

int CFilterListCtrl::GetDisplayCount() const { return m_parts->rows.displayCount(); }

void CFilterListCtrl::FreeFilterStore() {
    if (UseFilter) m_parts->rows.clear();
}

int CFilterListCtrl::DeleteAllItems() {
    if (!UseFilter) return CListCtrl::DeleteAllItems();
    FreeFilterStore();
    m_parts->rows.tellDisplayCount();
    m_parts->native.invalidateAll();
    return 1;
}

int CFilterListCtrl::DeleteAllMapListItems() {
    if (!UseFilter) return 1;
    DeleteAllItems();
    m_parts->touchControl([this] { m_parts->native.deleteAllRows(); });
    m_parts->rows.takeCount(m_parts->native.nativeCount());
    return 1;
}
