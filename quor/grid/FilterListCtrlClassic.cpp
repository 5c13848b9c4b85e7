// Classic mode: rows one at a time, and the routes from its operations to the row in opti-data mode.
#include "quor/foundation/HostServices.h"
#include "quor/grid/FilterListCtrlInternal.h"

using namespace quor::grid;
using namespace quor::foundation;

int CFilterListCtrl::refuse(const char* message, int result) {
    AfxMessageBox(message);
    return result;
}

CFilterListBaseData* CFilterListCtrl::liveRow(int mapIndex) const {
    return reinterpret_cast<CFilterListBaseData*>(m_parts->rows.dataOfMapIndex(mapIndex));
}

int CFilterListCtrl::InsertItem(int item, const char* text, int image) {
    if (!UseFilter) return CListCtrl::InsertItem(item, text, image);
    if (m_parts->rows.optiData()) return refuse("Unexpected Error : InsertItem Should not be called in OptiMode", -1);
    if (!hasTextCallback()) return 0;
    const ClassicChange change = m_parts->rows.insertItem(item);
    if (change.outcome == ClassicOutcome::corrupt) {
        refuse("Insert Item: Reindexing Error", 0);
        DeleteAllItems();
        return 0;
    }
    return change.mapIndex;
}

int CFilterListCtrl::SetItemData(int item, DWORD_PTR data) {
    if (!UseFilter) return CListCtrl::SetItemData(item, data);
    if (m_parts->rows.optiData()) return refuse("Unexpected Error : SetItemData Should not be called in OptiMode", 0);
    if (!hasTextCallback()) return 0;
    const Presence presence(*this);
    const ClassicChange change = m_parts->rows.setItemData(item, data, m_parts->rowTest());
    if (presence.gone() || change.outcome != ClassicOutcome::shown) return 0;
    try {
        return showNewRow(item, change.visual);
    } catch (...) {  // the host hears that its row is not in the list
        if (!presence.gone()) m_parts->rows.takeBackData(data, change.former);
        throw;
    }
}

// 1, or 0 if the grid went: each of these calls may reach the host.
int CFilterListCtrl::showNewRow(int item, int visual) {
    const Presence presence(*this);
    LiveRows& rows = m_parts->rows;
    m_parts->touchControl([&] { m_parts->native.insertRow(item); });
    if (presence.gone()) return 0;
    rows.takeCountOfInsert(m_parts->native.nativeCount());
    StartRepaintTimer();
    rows.tellDisplayCount();
    if (rows.reverse() && m_hWnd && !m_hasFocus) m_parts->touchControl([&] { m_parts->native.ensureVisible(visual); });
    if (presence.gone()) return 0;
    const RowLayout& layout = rows.layout();
    if (presence.gone()) return 0;
    if (visual == layout.pageEnd(rows.displayCount())) {
        invalidateShownRow(visual);
    } else {
        invalidateToBottom(visual);
    }
    return 1;
}

int CFilterListCtrl::SetItemText(int item, int place, const char* text) {
    if (!UseFilter) return CListCtrl::SetItemText(item, place, text);
    return hasTextCallback() ? 1 : 0;
}

int CFilterListCtrl::DeleteItem(int item) {
    if (!UseFilter) return CListCtrl::DeleteItem(item);
    if (m_parts->rows.optiData()) {
        CFilterListBaseData* const row = liveRow(m_parts->rows.mapIndexOfVisual(item));
        return row ? DeleteRow(row, false) : 0;
    }
    if (!hasTextCallback()) return 0;
    const RowData data = m_parts->rows.dataOfVisual(item);
    const Presence presence(*this);
    if (!scrollToNewest(item)) return presence.gone() ? 0 : eraseHiddenRow(data);
    const ClassicChange change = m_parts->rows.eraseVisual(item);
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
    if (rowDragIsOn()) {
        ResetDragOperation();
        logToHost("Item getting deleted when Drag/Drop operation is in progress.");
    }
    if (!m_bSortLocked) m_nLastSortCol = -1;
    m_parts->rows.tellDisplayCount();
    StartRepaintTimer();
    return 1;
}

// A row that the host's filter hid while it was being deleted.
int CFilterListCtrl::eraseHiddenRow(DWORD_PTR data) {
    LiveRows& rows = m_parts->rows;
    for (int mapIndex = 0; data != 0 && mapIndex < rows.itemCount(); ++mapIndex) {
        if (rows.dataOfMapIndex(mapIndex) != data) continue;
        if (rows.eraseHidden(mapIndex).outcome != ClassicOutcome::done) return 0;
        rows.trends().eraseRow(mapIndex);
        return 1;
    }
    return 0;
}

// Before a delete in reverse display. It may reach the host, who may throw, and who must then find the row still there.
// False if the grid went, or the row went or is hidden; `item` follows the row.
bool CFilterListCtrl::scrollToNewest(int& item) {
    LiveRows& rows = m_parts->rows;
    if (!rows.reverse() || m_hasFocus || item >= rows.displayCount()) return true;
    const Presence presence(*this);
    const unsigned changes = rows.changes();
    const RowData data = rows.dataOfVisual(item);
    m_parts->touchControl([this] { m_parts->native.ensureVisible(0); });
    if (presence.gone()) return false;
    if (rows.changes() == changes || rows.dataOfVisual(item) == data) return true;
    for (item = 0; item < rows.displayCount(); ++item)
        if (rows.dataOfVisual(item) == data) return true;
    return false;
}

int CFilterListCtrl::DeleteMapItem(int mapIndex) {
    if (!UseFilter) return 1;
    if (m_parts->rows.optiData()) {
        CFilterListBaseData* const row = liveRow(mapIndex);
        return row ? DeleteRow(row, false) : 0;
    }
    if (mapIndex < 0 || mapIndex >= m_parts->rows.itemCount() || !hasTextCallback()) return 0;
    const int slot = m_parts->rows.slotOfMapIndex(mapIndex);
    if (slot == -1) return m_parts->rows.eraseHidden(mapIndex).outcome == ClassicOutcome::done;
    if (slot >= m_parts->rows.displayCount()) {
        logToHost("Error occured while deleting map item");
        return 0;
    }
    return DeleteItem(m_parts->rows.mirrored(slot));
}

int CFilterListCtrl::RepaintMapItem(int mapIndex) {
    if (m_parts->rows.optiData()) return UpdateRow(liveRow(mapIndex));
    return repaintRetested([&] { return m_parts->rows.retestMapIndex(mapIndex, m_parts->rowTest()); });
}

int CFilterListCtrl::RepaintDisplayItem(int item) {
    if (m_parts->rows.optiData()) return UpdateRow(liveRow(m_parts->rows.mapIndexOfVisual(item)));
    return repaintRetested([&] { return m_parts->rows.retestVisual(item, m_parts->rowTest()); });
}

template <class Retest>
int CFilterListCtrl::repaintRetested(Retest retest) {
    if (!UseFilter || !hasTextCallback()) return 0;
    const Presence presence(*this);
    const ClassicChange change = retest();
    if (presence.gone()) return 0;
    switch (change.outcome) {
        case ClassicOutcome::shown:
            invalidateShownRow(change.visual);
            return 0;
        case ClassicOutcome::left:
        case ClassicOutcome::entered:
            m_parts->rows.tellDisplayCount();
            if (!isInView(change.visual) && !presence.gone()) StartRepaintTimer();  // the scroll bar follows the count
            if (!presence.gone()) invalidateToBottom(change.visual);
            return change.outcome == ClassicOutcome::entered ? 1 : -1;
        case ClassicOutcome::keptOut:
            return 1;
        default:
            return 0;
    }
}

int CFilterListCtrl::InvalidateSetItemData(void* data) {
    const Presence presence(*this);
    const RowLayout& layout = m_parts->rows.layout();
    if (presence.gone()) return 0;
    const int end = std::min(layout.topIndex + layout.countPerPage + 1, GetDisplayCount());
    for (int visual = layout.topIndex; visual < end; ++visual) {
        if (GetItemData(visual) != reinterpret_cast<DWORD_PTR>(data)) continue;
        RepaintDisplayItem(visual);
        return 1;
    }
    return 0;
}

// The page and the row that it cuts, if it cuts one. False too when the grid went: reading the layout may reach a host.
bool CFilterListCtrl::isInView(int visual) {
    const Presence presence(*this);
    const RowLayout& layout = m_parts->rows.layout();
    return !presence.gone() && visual >= layout.topIndex && visual <= layout.topIndex + layout.countPerPage &&
           layout.rowRect(visual).top < layout.clientHeight;
}

void CFilterListCtrl::invalidateShownRow(int visual) {
    if (isInView(visual)) m_parts->native.invalidate(m_parts->rows.layout().rowRect(visual), true);
}

// The rows from this one on have moved: all in view if it stands above them.
void CFilterListCtrl::invalidateToBottom(int visual) {
    const Presence presence(*this);
    const int top = m_parts->rows.layout().topIndex;
    if (presence.gone()) return;
    visual = std::max(visual, top);
    if (!isInView(visual)) return;
    const RowLayout& layout = m_parts->rows.layout();
    m_parts->native.invalidate({0, layout.rowRect(visual).top, layout.clientWidth, layout.clientHeight}, true);
}
