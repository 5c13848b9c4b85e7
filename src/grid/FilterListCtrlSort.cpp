// The grid's own sort: header clicks, the locked sort, checked rows first. The windowless part is in core/GridSort.h.
//
// The arrows of the heading follow rules of the grid's own: a click takes the old column's arrow off by giving it a
// plain text format (its alignment goes with it); the lock path leaves the old arrow where it is.
#include "src/grid/FilterListCtrl.h"

#include "platform/tools/QuorTools.h"
#include "src/list/CommonListCtrlInternal.h"

using namespace quor::grid;
using namespace quor::list;

CArray<__int64, __int64> CFilterListCtrl::g_SortDataLongArr;
CArray<double, double> CFilterListCtrl::g_SortDataDblArr;
CStringArray CFilterListCtrl::g_SortDataStrArr;
CFilterListCtrl* CFilterListCtrl::g_SortingList = nullptr;

namespace {

// A run ends by an exception too: an invalid column throws.
class SortRun {
public:
    SortRun(CFilterListCtrl* list, bool& sorting) : m_sorting(sorting) {
        CFilterListCtrl::g_SortingList = list;
        m_sorting = true;
    }
    SortRun(const SortRun&) = delete;
    SortRun& operator=(const SortRun&) = delete;
    ~SortRun() {
        m_sorting = false;
        CFilterListCtrl::g_SortDataLongArr.RemoveAll();
        CFilterListCtrl::g_SortDataDblArr.RemoveAll();
        CFilterListCtrl::g_SortDataStrArr.RemoveAll();
    }

private:
    bool& m_sorting;
};

class RedrawOff {
public:
    explicit RedrawOff(NativeList& native) : m_native(native) { m_native.setRedraw(false); }
    RedrawOff(const RedrawOff&) = delete;
    RedrawOff& operator=(const RedrawOff&) = delete;
    ~RedrawOff() {
        m_native.setRedraw(true);
        m_native.invalidateAll();
    }

private:
    NativeList& m_native;
};

}  // namespace

int CFilterListCtrl::SortOn(int columnIndex, int order) {
    if (!UseFilter) return CCommonListCtrl::SortOn(columnIndex, order);
    if (m_bSortLocked) return 1;
    NMLISTVIEW click{};
    click.iSubItem = std::max(0, m_arrOrder.GetAt(columnIndex));
    m_nSortOrder = order == 1 ? -1 : 1;
    const RedrawOff off(m_native);
    LRESULT result = 0;
    OnLvnColumnclick(&click.hdr, &result);
    return 1;
}

void CFilterListCtrl::OnLvnColumnclick(NMHDR* header, LRESULT* result) {
    *result = 0;
    if (m_bSortLocked || m_sorting) return;
    if (!UseFilter) return CCommonListCtrl::OnLvnColumnclick(header, result);
    processPendingOptiUpdates();
    if (GetDisplayCount() == 0) return;
    const SortRun run(this, m_sorting);
    m_nSortCol = reinterpret_cast<const NMLISTVIEW*>(header)->iSubItem;
    const bool columnStayed = m_nSortCol == m_nLastSortCol;
    m_nSortOrder = columnStayed ? -m_nSortOrder : -1;
    m_nLockSortOrder = m_nSortOrder;
    m_nLockSortColumn = GetOriginalColumnPosition(m_nSortCol);
    if (!columnStayed && m_nLastSortCol != -1) hideSortArrow(m_nLastSortCol);
    showSortArrow(m_nSortCol, columnStayed && m_nSortOrder != -1);
    findSortMapColumn();
    m_nLastSortCol = m_nSortCol;
    if (SortOnCheckedFlag) return SortOnChecked();
    sortRows(SortIntegers::wide, true);
    m_bSorted = TRUE;
}

void CFilterListCtrl::OnAutoSortClick(NMHDR* header, LRESULT* result) {
    OnLvnColumnclick(header, result);
    CCommonListCtrl::OnAutoSortClick(header, result);
}

void CFilterListCtrl::SortByLastColumnWithLock() {
    if (!UseFilter) return CCommonListCtrl::SortByLastColumnWithLock();
    const int place = m_arrOrder.GetAt(m_nLockSortColumn);
    if (!m_bSortLocked || place < 0 || m_sorting) return;
    processPendingOptiUpdates();
    m_nSortCol = place;
    m_nSortOrder = m_nLockSortOrder;
    if (GetDisplayCount() == 0) return;
    const SortRun run(this, m_sorting);
    showSortArrow(m_nSortCol, m_nSortOrder != -1);
    findSortMapColumn();
    m_nLastSortCol = m_nSortCol;
    if (SortOnCheckedFlag) return SortOnChecked();
    sortRows(SortIntegers::narrow, false);
}

void CFilterListCtrl::findSortMapColumn() {
    for (INT_PTR i = 0; i < m_arrVisible.GetSize(); ++i)
        if (m_arrVisible.GetAt(i).iVisiblePosition == m_nSortCol) SortMapColumn = m_arrVisible.GetAt(i).iColumnIndex;
}

// ---- Header arrows

void CFilterListCtrl::hideSortArrow(int place) {
    const bool checkBox = m_bHeaderCheckBox && place == 0;
    HDITEM item{};
    item.mask = HDI_FORMAT;
    item.fmt = checkBox ? HDF_STRING | HDF_CHECKBOX : HDF_STRING;
    if (m_header.m_hWnd) m_header.SetItem(place, &item);
    if (checkBox) SetHeaderCheckbox();
}

void CFilterListCtrl::showSortArrow(int place, bool falling) {
    const bool checkBox = m_bHeaderCheckBox && place == 0;
    if (m_header.m_hWnd)
        setHeaderImage(m_header, place, checkBox ? kHeaderCheckSortFormat : kHeaderSortFormat,
                       falling ? kHeaderImageFalling : kHeaderImageRising);
    if (checkBox) SetHeaderCheckbox();
}

// ---- The sorts

void CFilterListCtrl::sortRows(SortIntegers integers, bool shortcut) {
    m_nSortDataType = m_arrColumns.GetAt(SortMapColumn).iDataType;
    if (m_bRowDragEnabled) {
        sortMap(integers, shortcut);
    } else {
        sortDisplay(integers, shortcut);
    }
}

SortRule CFilterListCtrl::sortRule() const {
    return {m_nSortOrder, m_rows.reverse() && m_bRowDragEnabled != 0, &CompareDateTime};
}

// One string for the whole walk. A row that has no data yet has no text.
SortKeys CFilterListCtrl::readKeys(const std::vector<std::int32_t>& mapIndices, SortIntegers integers) {
    constexpr std::size_t ahead = 12;  // the host's rows may be far apart in memory
    constexpr RowData line = 64;
    SortKeys keys(m_nSortDataType, integers, mapIndices.size());
    CString text;
    for (std::size_t i = 0; i < mapIndices.size(); ++i) {
        if (i + ahead < mapIndices.size()) {
            const RowData next = m_rows.dataOfMapIndex(static_cast<std::size_t>(mapIndices[i + ahead]));
            __builtin_prefetch(reinterpret_cast<const void*>(next));
            __builtin_prefetch(reinterpret_cast<const void*>(next + line));
        }
        const RowData data = m_rows.dataOfMapIndex(static_cast<std::size_t>(mapIndices[i]));
        if (data != 0) {
            readCell(data, SortMapColumn, text);
        } else {
            text = "";
        }
        keys.add(mapIndices[i], text);
    }
    return keys;
}

void CFilterListCtrl::sortDisplay(SortIntegers integers, bool shortcut) {
    const SortKeys keys = readKeys(m_rows.displayedInMapOrder(), integers);
    if (shortcut && keys.allTextsEqual()) return;
    if (m_nSortOrder == 0) return m_native.invalidateAll();  // all rows are equal: none moves
    std::vector<std::int32_t> sorted = sortedMapIndices(keys, sortRule());
    if (m_rows.reverse()) std::reverse(sorted.begin(), sorted.end());
    m_rows.reorderDisplay(std::move(sorted));
    m_native.invalidateAll();
}

void CFilterListCtrl::sortMap(SortIntegers integers, bool shortcut) {
    std::vector<std::int32_t> all(static_cast<std::size_t>(m_rows.itemCount()));
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::int32_t>(i);
    const SortKeys keys = readKeys(all, integers);
    if (shortcut && keys.allTextsEqual()) return;
    m_rows.reorderMap(sortedMapIndices(keys, sortRule()));
    PopulateList();
}

// ---- Checked rows first

void CFilterListCtrl::SortOnChecked() {
    if (!UseFilter) return;
    processPendingOptiUpdates();
    const int itemCount = GetItemCount();
    const int mark = m_native.selectionMark();
    const DWORD_PTR marked = mark >= 0 && mark < GetDisplayCount() ? GetItemData(mark) : 0;

    g_SortingList = this;
    SortMapColumn = 0;
    m_nSortDataType = m_arrColumns.GetAt(0).iDataType;
    const std::vector<std::int32_t> order = m_rows.displayOrder();
    std::vector<std::int32_t> parts[2];  // checked, unchecked
    for (std::size_t i = 0; i < order.size(); ++i) parts[GetCheck(static_cast<int>(i)) ? 0 : 1].push_back(order[i]);
    std::vector<std::int32_t> sorted;
    for (const std::vector<std::int32_t>& part : parts) {
        const std::vector<std::int32_t> rows = sortedMapIndices(readCheckedKeys(part), sortRule());
        sorted.insert(sorted.end(), rows.begin(), rows.end());
    }
    if (m_rows.reverse()) std::reverse(sorted.begin(), sorted.end());
    m_rows.reorderDisplay(std::move(sorted));

    showCheckedCounts(itemCount);
    if (marked != 0) moveMarkTo(marked);
    m_native.invalidateAll();
}

// Only texts count here: for a column of numbers every key is missing, and missing keys are 0.
SortKeys CFilterListCtrl::readCheckedKeys(const std::vector<std::int32_t>& mapIndices) {
    if (sortKeyKind(m_nSortDataType) == SortKeyKind::text) return readKeys(mapIndices, SortIntegers::wide);
    SortKeys keys(m_nSortDataType, SortIntegers::wide, mapIndices.size());
    for (const std::int32_t mapIndex : mapIndices) keys.add(mapIndex, CString());
    return keys;
}

void CFilterListCtrl::showCheckedCounts(int itemCount) {
    m_countsCaption.Format("%s (%d / %d)", m_arrColumns.GetAt(0).szColumnName, GetCheckedItemCount(), itemCount);
    HDITEM item{};
    item.mask = HDI_TEXT;
    item.pszText = m_countsCaption.GetBuffer();
    if (m_header.m_hWnd) m_header.SetItem(0, &item);
}

std::vector<HeaderColumn> CFilterListCtrl::ReadHeader() {
    std::vector<HeaderColumn> header = CCommonListCtrl::ReadHeader();
    const int columnIndex = GetOriginalColumnPosition(0);
    if (columnIndex != -1 && !header.empty() && !m_countsCaption.IsEmpty() && header[0].heading == m_countsCaption)
        header[0].heading = m_arrColumns.GetAt(columnIndex).szColumnName;
    return header;
}

// The control must know the row before it can mark it: a rebuild under way has not told it the new count yet.
void CFilterListCtrl::moveMarkTo(DWORD_PTR data) {
    for (int visual = 0; visual < GetDisplayCount(); ++visual) {
        if (GetItemData(visual) != data) continue;
        m_native.setCount(GetDisplayCount());
        m_native.settle();
        SetSelectionMark(visual);
        m_native.setState(visual, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        return;
    }
}
