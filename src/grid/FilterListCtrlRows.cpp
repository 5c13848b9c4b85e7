// Opti-data mode: from the host's call to the store, the native count and the dirty rectangle; the end of a batch.
#include "src/grid/FilterListCtrl.h"

#include "src/foundation/TimerIds.h"

using namespace quor::grid;

int CFilterListCtrl::AddRow(void* row, bool updateNow) {
    if (row == nullptr || !takesRows()) return -1;
    if (!hasTextCallback()) return 0;
    return carryOut(m_rows.add(static_cast<CFilterListBaseData*>(row), updateNow, rowTest()));
}

int CFilterListCtrl::UpdateRow(void* row) {
    if (row == nullptr || !takesRows() || !hasTextCallback()) return 0;
    auto* const data = static_cast<CFilterListBaseData*>(row);
    // The roads of a tick. They are kept short: the less they do, the more cold rows the processor fetches side by
    // side.
    if (const RowLayout* const layout = m_native.layoutInForce()) {
        if (!m_filters.isEmpty()) {
            if (layout->rowHeight != 0 && m_rows.canUpdateLater(layout->topIndex + layout->countPerPage))
                return m_rows.updateLater(data, rowTest());
        } else if (const int slot = m_rows.slotOf(data); slot != -1) {
            if (layout->visible) m_dirty.noteRow(m_rows.visualOfSlot(slot));
            return 0;
        }
    }
    return carryOut(m_rows.update(data, rowTest()));
}

int CFilterListCtrl::DeleteRow(void* row, bool updateNow) {
    if (row == nullptr || !takesRows()) return -1;
    if (!hasTextCallback()) return 0;
    return carryOut(m_rows.remove(static_cast<CFilterListBaseData*>(row), updateNow));
}

void CFilterListCtrl::getRowIndices(CFilterListBaseData* row, CFilterListCtrl* list, int& mapIndex, int& displayIndex) {
    mapIndex = displayIndex = -1;
    const sFilterListRowIndex* const numbers = row && list ? row->find(list) : nullptr;
    if (!numbers) return;
    mapIndex = numbers->mapIndex;
    if (const int slot = list->m_rows.slotOf(row); slot != -1) displayIndex = list->m_rows.visualOfSlot(slot);
}

int CFilterListCtrl::carryOut(const StoreChange& change) {
    if (change.countChanged) m_native.setCount(m_rows.displayCount());
    markDirty(change);
    return change.result;
}

void CFilterListCtrl::markDirty(const StoreChange& change) {
    if (change.dirtyRow != -1) {
        m_dirty.addRow(m_native.layout(), change.dirtyRow);
    } else if (change.dirtyFrom != -1) {
        const RowLayout& layout = m_native.layout();
        const int first = change.dirtyMayStartAbove ? std::max(layout.topIndex, change.dirtyFrom) : change.dirtyFrom;
        m_dirty.addToPageEnd(layout, first, m_rows.displayCount());
    }
}

// The layout is the one in force since before the first of these ticks, and the page stayed where it was.
void CFilterListCtrl::followTicks(const LaterChanges& changes) {
    m_native.setCount(changes.lowestCount);
    m_native.setCount(m_rows.displayCount());
    const RowLayout& layout = m_native.layout();
    if (changes.firstRepaint <= changes.lastRepaint) {
        m_dirty.addRow(layout, changes.firstRepaint);
        m_dirty.addRow(layout, changes.lastRepaint);
    }
    m_dirty.addToPageEnd(layout, std::max(layout.topIndex, changes.firstMoved), m_rows.displayCount());
}

// The native selection knows visual indices only: it is taken off, moved along with its rows, and put on again.
void CFilterListCtrl::processPendingOptiUpdates() {
    m_native.forgetVisibility();
    if (!m_rows.batchIsOpen()) return;
    BatchSelection selection = std::move(m_selection);  // the control's notifications may close a batch of their own
    m_native.settle();
    selection.mark = m_native.selectionMark();
    m_native.collectSelected(selection.selected);
    m_native.clearSelection(selection.selected);

    const StoreChange change = m_rows.endBatch(selection);
    m_native.setCount(m_rows.displayCount());
    m_native.settle();
    restoreSelection(selection);
    markDirty(change);
    m_selection = std::move(selection);
}

// Selects the rows again; the marked one takes the focus. Without a mark every row takes it in turn: the first becomes
// the control's mark and the last keeps the focus, so those two calls bring about the same state. (Each call that moves
// the focus costs the control milliseconds.)
void CFilterListCtrl::restoreSelection(const BatchSelection& selection) {
    const std::vector<int>& rows = selection.selected;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool focused = selection.mark == -1 ? i == 0 || i + 1 == rows.size() : rows[i] == selection.mark;
        const UINT state = focused ? LVIS_SELECTED | LVIS_FOCUSED : LVIS_SELECTED;
        m_native.setState(rows[i], state, state);
    }
}

void CFilterListCtrl::startFlushTimer() {
    m_rows.settleLater();
    if (m_dirty.hasNews() && FlushTimerId == 0) FlushTimerId = SetTimer(kFlushTimer, FlushDelay);
}

// By index: a batch end sends notifications, and a host may destroy a grid in one of them.
void processEndofBatchUpdates() {
    auto& grids = CFilterListCtrl::g_OptiDataFilterLists;
    const auto stillThere = [&grids](INT_PTR i, const CFilterListCtrl* grid) {
        return i < grids.GetCount() && grids.GetAt(i) == grid;
    };
    for (INT_PTR i = 0; i < grids.GetCount();) {
        CFilterListCtrl* const grid = grids.GetAt(i);
        if (grid->m_hWnd) grid->processPendingOptiUpdates();
        if (!stillThere(i, grid)) continue;
        if (grid->m_hWnd) grid->startFlushTimer();
        ++i;
    }
}

// ---- What both modes read

DWORD_PTR CFilterListCtrl::GetItemData(int item) {
    return UseFilter ? m_rows.dataOfVisual(item) : CCommonListCtrl::GetItemData(item);
}

int CFilterListCtrl::GetItemCount() const { return UseFilter ? m_rows.itemCount() : CListCtrl::GetItemCount(); }

CString CFilterListCtrl::GetItemText(int item, int place, bool mapColumn, bool forExport) {
    if (!UseFilter) return CCommonListCtrl::GetItemText(item, place, mapColumn, forExport);
    const int mapIndex = item < GetDisplayCount() ? m_rows.mapIndexOfVisual(item) : -1;
    if (mapIndex == -1) return {};
    if (!hasTextCallback()) return "no data descriptor initialised";
    int columnIndex = place;
    if (!mapColumn) {
        columnIndex = GetOriginalColumnPosition(place);
        if (columnIndex == -1) columnIndex = GetOriginalColNo(place);
    }
    CString text;
    if (const DWORD_PTR data = GetItemData(item); data != 0) {
        COLORREF textColor = kColorUnset, background = kColorUnset;
        int icon = -1;
        GetColumnText(data, columnIndex, text, textColor, background, icon, forExport);
    }
    return text;
}

void CFilterListCtrl::FreeFilterStore() {
    if (UseFilter) m_rows.clear();
}

int CFilterListCtrl::DeleteAllItems() {
    if (!UseFilter) return CListCtrl::DeleteAllItems();
    FreeFilterStore();
    m_native.setCount(0);
    FreeTrendValues();
    m_native.invalidateAll();
    return 1;
}

int CFilterListCtrl::DeleteAllMapListItems() {
    if (!UseFilter) return 1;
    DeleteAllItems();
    m_native.deleteAllRows();
    return 1;
}
