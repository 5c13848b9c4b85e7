// Classic mode: rows one at a time, and the routes from its operations to the row in opti-data mode.
#include "src/grid/FilterListCtrl.h"

#include "src/foundation/HostServices.h"

using namespace quor::grid;
using namespace quor::foundation;

int CFilterListCtrl::refuse(const char* message, int result) {
    AfxMessageBox(message);
    return result;
}

CFilterListBaseData* CFilterListCtrl::liveRow(int mapIndex) const {
    return reinterpret_cast<CFilterListBaseData*>(m_rows.dataOfMapIndexChecked(mapIndex));
}

int CFilterListCtrl::InsertItem(int item, const char* text, int image) {
    if (!UseFilter) return CListCtrl::InsertItem(item, text, image);
    if (m_rows.optiData()) return refuse("Unexpected Error : InsertItem Should not be called in OptiMode", -1);
    if (!hasTextCallback()) return 0;
    const ClassicChange change = m_rows.insertItem(item);
    if (change.outcome == ClassicOutcome::corrupt) {
        refuse("Insert Item: Reindexing Error", 0);
        DeleteAllItems();
        return 0;
    }
    if (change.outcome == ClassicOutcome::done) InsertTrendValues(change.mapIndex);
    return change.mapIndex;
}

int CFilterListCtrl::SetItemData(int item, DWORD_PTR data) {
    if (!UseFilter) return CListCtrl::SetItemData(item, data);
    if (m_rows.optiData()) return refuse("Unexpected Error : SetItemData Should not be called in OptiMode", 0);
    if (!hasTextCallback()) return 0;
    const ClassicChange change = m_rows.setItemData(item, data, rowTest());
    if (change.outcome != ClassicOutcome::shown) return 0;
    m_native.insertRow(item);
    StartRepaintTimer();
    m_native.setCount(m_rows.displayCount());
    if (m_rows.reverse() && m_hWnd && !m_hasFocus) m_native.ensureVisible(change.visual);
    if (change.visual == m_native.layout().pageEnd(m_rows.displayCount())) {
        invalidateShownRow(change.visual);
    } else {
        invalidateToBottom(change.visual);
    }
    return 1;
}

int CFilterListCtrl::SetItemText(int item, int place, const char* text) {
    if (!UseFilter) return CListCtrl::SetItemText(item, place, text);
    return hasTextCallback() ? 1 : 0;
}

int CFilterListCtrl::DeleteItem(int item) {
    if (!UseFilter) return CListCtrl::DeleteItem(item);
    if (m_rows.optiData()) {
        CFilterListBaseData* const row = liveRow(m_rows.mapIndexOfVisual(item));
        return row ? DeleteRow(row, false) : 0;
    }
    return hasTextCallback() ? finishDelete(m_rows.eraseVisual(item)) : 0;
}

int CFilterListCtrl::finishDelete(const ClassicChange& change) {
    switch (change.outcome) {
        case ClassicOutcome::done:
            break;
        case ClassicOutcome::unknown:
            return refuse("Delete item: Item not found", 0);
        case ClassicOutcome::corrupt:
            refuse("Delete item: Reindexing Error", 0);
            DeleteAllItems();
            return 0;
        default:
            return 0;
    }
    RemoveTrendValues(change.mapIndex);
    if (rowDragIsOn()) {
        ResetDragOperation();
        logToHost("Item getting deleted when Drag/Drop operation is in progress.");
    }
    if (!m_bSortLocked) m_nLastSortCol = -1;
    m_native.setCount(m_rows.displayCount());
    StartRepaintTimer();
    if (m_rows.reverse() && !m_hasFocus) m_native.ensureVisible(0);
    return 1;
}

int CFilterListCtrl::DeleteMapItem(int mapIndex) {
    if (!UseFilter) return 1;
    if (m_rows.optiData()) {
        CFilterListBaseData* const row = liveRow(mapIndex);
        return row ? DeleteRow(row, false) : 0;
    }
    if (mapIndex < 0 || mapIndex >= m_rows.itemCount() || !hasTextCallback()) return 0;
    const int slot = m_rows.slotOfMapIndex(mapIndex);
    if (slot == -1) return m_rows.eraseHidden(mapIndex).outcome == ClassicOutcome::done;
    if (slot >= m_rows.displayCount()) {
        logToHost("Error occured while deleting map item");
        return 0;
    }
    return DeleteItem(m_rows.visualOfSlot(slot));
}

int CFilterListCtrl::RepaintMapItem(int mapIndex) {
    if (m_rows.optiData()) return UpdateRow(liveRow(mapIndex));
    return UseFilter && hasTextCallback() ? finishRetest(m_rows.retestMapIndex(mapIndex, rowTest())) : 0;
}

int CFilterListCtrl::RepaintDisplayItem(int item) {
    if (m_rows.optiData()) return UpdateRow(liveRow(m_rows.mapIndexOfVisual(item)));
    return UseFilter && hasTextCallback() ? finishRetest(m_rows.retestVisual(item, rowTest())) : 0;
}

int CFilterListCtrl::finishRetest(const ClassicChange& change) {
    switch (change.outcome) {
        case ClassicOutcome::shown:
            invalidateShownRow(change.visual);
            return 0;
        case ClassicOutcome::left:
        case ClassicOutcome::entered:
            m_native.setCount(m_rows.displayCount());
            invalidateToBottom(change.visual);
            return change.outcome == ClassicOutcome::entered ? 1 : -1;
        case ClassicOutcome::keptOut:
            return 1;
        default:
            return 0;
    }
}

int CFilterListCtrl::InvalidateSetItemData(void* data) {
    const RowLayout& layout = m_native.layout();
    const int end = std::min(layout.topIndex + layout.countPerPage + 1, GetDisplayCount());
    for (int visual = layout.topIndex; visual < end; ++visual) {
        if (GetItemData(visual) != reinterpret_cast<DWORD_PTR>(data)) continue;
        RepaintDisplayItem(visual);
        return 1;
    }
    return 0;
}

// The page and the row that it cuts.
bool CFilterListCtrl::isInView(int visual) {
    const RowLayout& layout = m_native.layout();
    return visual >= layout.topIndex && visual <= layout.topIndex + layout.countPerPage;
}

void CFilterListCtrl::invalidateShownRow(int visual) {
    if (isInView(visual)) m_native.invalidate(m_native.layout().rowRect(visual), true);
}

void CFilterListCtrl::invalidateToBottom(int visual) {
    if (!isInView(visual)) return;
    const RowLayout& layout = m_native.layout();
    m_native.invalidate({0, layout.rowRect(visual).top, layout.clientWidth, layout.clientHeight}, true);
}
