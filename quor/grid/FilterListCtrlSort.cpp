// The grid's own sort: header clicks, the locked sort, checked rows first. The windowless part is in core/GridSort.h.
//
// The arrows of the heading follow rules of the grid's own: a click takes the old column's arrow off by giving it a
// plain text format (its alignment goes with it); the lock path leaves the old arrow where it is.
#include "quor/grid/FilterListCtrlInternal.h"
#include "quor/grid/core/GridSort.h"
#include "quor/list/HeaderImages.h"
#include "quor/platform/tools/QuorTools.h"

#include <algorithm>
#include <utility>

using namespace quor::grid;
using namespace quor::list;

CArray<__int64, __int64> CFilterListCtrl::g_SortDataLongArr;
CArray<double, double> CFilterListCtrl::g_SortDataDblArr;
CStringArray CFilterListCtrl::g_SortDataStrArr;
CFilterListCtrl* CFilterListCtrl::g_SortingList = nullptr;

namespace {

constexpr int kSortArrowMask = HDI_FORMAT | HDI_IMAGE;

}  // namespace

// A sort of the rows of a walk: by columns as it was asked for, or checked rows first. The host gives the texts, so the
// grid may be gone behind each step; the walk knows.
class CFilterListCtrl::SortRun {
public:
    // What the rows are sorted by. The run keeps it: the grid's own fields may change while the host gives its texts.
    struct Request {
        int columnIndex;
        int dataType;
        int order;
        SortIntegers integers;
        bool shortcut;  // equal texts end the run

        SortRule rule(bool reverseMap) const { return {order, reverseMap, &CompareDateTime}; }
    };

    SortRun(CFilterListCtrl& grid, RowWalk& walk) : m_grid(grid), m_walk(walk) {}
    void sortRows(const Request& request);
    void sortCheckedFirst();

private:
    void sortDisplay(const Request& request);
    void sortMap(const Request& request);
    SortKeys readKeys(const Request& request, const std::vector<std::int32_t>& mapIndices);
    SortKeys readCheckedKeys(const Request& request, const std::vector<std::int32_t>& mapIndices);

    CFilterListCtrl& m_grid;
    RowWalk& m_walk;
};

// A run of a sort. An exception that ends it gives the grid's fields and arrows back, unless another run came in
// between: then they are that one's.
class CFilterListCtrl::SortScope {
public:
    explicit SortScope(CFilterListCtrl& grid)
        : m_grid(grid), m_presence(grid), m_number(++grid.m_parts->sorts), m_fields(grid), m_arrows(arrows()) {
        g_SortingList = &grid;
    }
    SortScope(const SortScope&) = delete;
    SortScope& operator=(const SortScope&) = delete;
    ~SortScope() {
        g_SortDataLongArr.RemoveAll();
        g_SortDataDblArr.RemoveAll();
        g_SortDataStrArr.RemoveAll();
        if (m_done || m_presence.gone() || m_grid.m_parts->sorts != m_number) return;
        m_fields.giveBack(m_grid);
        for (std::size_t place = 0; place < m_arrows.size(); ++place) {
            HDITEM item = m_arrows[place];
            item.mask = kSortArrowMask;
            m_grid.m_header.SetItem(static_cast<int>(place), &item);
        }
    }
    void keep() { m_done = true; }

private:
    struct Fields {
        explicit Fields(const CFilterListCtrl& grid)
            : sortCol(grid.m_nSortCol),
              lastSortCol(grid.m_nLastSortCol),
              sortOrder(grid.m_nSortOrder),
              lockSortColumn(grid.m_nLockSortColumn),
              lockSortOrder(grid.m_nLockSortOrder),
              sortDataType(grid.m_nSortDataType),
              sortMapColumn(grid.SortMapColumn) {}
        void giveBack(CFilterListCtrl& grid) const {
            grid.m_nSortCol = sortCol;
            grid.m_nLastSortCol = lastSortCol;
            grid.m_nSortOrder = sortOrder;
            grid.m_nLockSortColumn = lockSortColumn;
            grid.m_nLockSortOrder = lockSortOrder;
            grid.m_nSortDataType = sortDataType;
            grid.SortMapColumn = sortMapColumn;
        }
        int sortCol, lastSortCol, sortOrder, lockSortColumn, lockSortOrder, sortDataType, sortMapColumn;
    };

    std::vector<HDITEM> arrows() const {
        std::vector<HDITEM> items;
        if (!m_grid.m_header.m_hWnd) return items;
        items.resize(static_cast<std::size_t>(std::max(0, m_grid.m_header.GetItemCount())));
        for (std::size_t place = 0; place < items.size(); ++place) {
            items[place].mask = kSortArrowMask;
            m_grid.m_header.GetItem(static_cast<int>(place), &items[place]);
        }
        return items;
    }

    CFilterListCtrl& m_grid;
    Presence m_presence;
    unsigned m_number;
    Fields m_fields;
    std::vector<HDITEM> m_arrows;
    bool m_done = false;
};

int CFilterListCtrl::SortOn(int columnIndex, int order) {
    if (!UseFilter) return CCommonListCtrl::SortOn(columnIndex, order);
    if (m_bSortLocked) return 1;
    NMLISTVIEW click{};
    click.iSubItem = std::max(0, m_arrOrder.GetAt(columnIndex));
    const Presence presence(*this);
    const int former = std::exchange(m_nSortOrder, order == 1 ? -1 : 1);
    LRESULT result = 0;
    m_parts->native.setRedraw(false);
    try {
        OnLvnColumnclick(&click.hdr, &result);
    } catch (...) {
        if (!presence.gone()) {
            m_nSortOrder = former;
            showRepainted();
        }
        throw;
    }
    if (!presence.gone()) showRepainted();
    return 1;
}

void CFilterListCtrl::showRepainted() {
    m_parts->native.setRedraw(true);
    m_parts->native.invalidateAll();
}

void CFilterListCtrl::OnLvnColumnclick(NMHDR* header, LRESULT* result) {
    *result = 0;
    if (m_bSortLocked) return;
    if (!UseFilter) return CCommonListCtrl::OnLvnColumnclick(header, result);
    const int place = reinterpret_cast<const NMLISTVIEW*>(header)->iSubItem;
    RowWalk walk(m_parts->rows);
    m_parts->rows.endBatch(walk);
    if (walk.gone()) return;
    if (GetDisplayCount() == 0) return walk.finish();
    SortScope run(*this);
    m_nSortCol = place;
    const bool columnStayed = m_nSortCol == m_nLastSortCol;
    m_nSortOrder = columnStayed ? -m_nSortOrder : -1;
    m_nLockSortOrder = m_nSortOrder;
    m_nLockSortColumn = GetOriginalColumnPosition(m_nSortCol);
    if (!columnStayed && m_nLastSortCol != -1) hideSortArrow(m_nLastSortCol);
    showSortArrow(m_nSortCol, columnStayed && m_nSortOrder != -1);
    findSortMapColumn();
    m_nLastSortCol = m_nSortCol;
    SortRun sort(*this, walk);
    if (SortOnCheckedFlag) {
        sort.sortCheckedFirst();
    } else {
        sort.sortRows(
            {SortMapColumn, m_arrColumns.GetAt(SortMapColumn).iDataType, m_nSortOrder, SortIntegers::wide, true});
        if (!walk.gone()) m_bSorted = TRUE;
    }
    run.keep();
    if (!walk.gone()) walk.finish();
}

void CFilterListCtrl::OnAutoSortClick(NMHDR* header, LRESULT* result) {
    const Presence presence(*this);
    OnLvnColumnclick(header, result);
    if (!presence.gone()) CCommonListCtrl::OnAutoSortClick(header, result);
}

void CFilterListCtrl::SortByLastColumnWithLock() {
    if (!UseFilter) return CCommonListCtrl::SortByLastColumnWithLock();
    const int place = m_arrOrder.GetAt(m_nLockSortColumn);
    if (!m_bSortLocked || place < 0) return;
    inWalk([&](RowWalk& walk) {
        m_parts->rows.endBatch(walk);
        if (walk.gone()) return;
        SortScope run(*this);
        m_nSortCol = place;
        m_nSortOrder = m_nLockSortOrder;
        if (GetDisplayCount() == 0) return run.keep();
        showSortArrow(m_nSortCol, m_nSortOrder != -1);
        findSortMapColumn();
        m_nLastSortCol = m_nSortCol;
        SortRun sort(*this, walk);
        if (SortOnCheckedFlag) {
            sort.sortCheckedFirst();
        } else {
            sort.sortRows({SortMapColumn, m_arrColumns.GetAt(SortMapColumn).iDataType, m_nSortOrder,
                           SortIntegers::narrow, false});
        }
        run.keep();
    });
}

// A sort that ends a rebuild belongs to the walk of that.
template <class Function>
void CFilterListCtrl::inWalk(Function function) {
    if (RowWalk* const outer = std::exchange(m_parts->rebuilding, nullptr)) return function(*outer);
    RowWalk walk(m_parts->rows);
    function(walk);
    if (!walk.gone()) walk.finish();
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

void CFilterListCtrl::SortRun::sortRows(const Request& request) {
    m_grid.m_nSortDataType = request.dataType;
    if (m_grid.m_bRowDragEnabled) {
        sortMap(request);
    } else {
        sortDisplay(request);
    }
}

// One answer for the whole walk. A row that has no data, or none any more, has no text.
SortKeys CFilterListCtrl::SortRun::readKeys(const Request& request, const std::vector<std::int32_t>& mapIndices) {
    constexpr std::size_t kAhead = 12;  // the host's rows may be far apart in memory
    constexpr RowData kLine = 64;
    LiveRows& rows = m_grid.m_parts->rows;
    SortKeys keys(request.dataType, request.integers, mapIndices.size());
    CellAnswer cell;
    for (std::size_t i = 0; i < mapIndices.size(); ++i) {
        if (i + kAhead < mapIndices.size()) {
            const RowData next = rows.dataOfMapIndex(mapIndices[i + kAhead]);
            quor::prefetch(reinterpret_cast<const void*>(next));
            quor::prefetch(reinterpret_cast<const void*>(next + kLine));
        }
        const RowData data = rows.dataOfMapIndex(m_walk.present(mapIndices[i]));
        if (data != 0) {
            m_grid.m_parts->readCell(data, request.columnIndex, cell);
            if (m_walk.gone()) break;
        } else {
            cell.text = "";
        }
        keys.add(mapIndices[i], cell.text);
    }
    return keys;
}

void CFilterListCtrl::SortRun::sortDisplay(const Request& request) {
    LiveRows& rows = m_grid.m_parts->rows;
    const SortKeys keys = readKeys(request, rows.displayedInMapOrder());
    if (m_walk.gone() || (request.shortcut && keys.allTextsEqual())) return;
    if (request.order != 0) {  // else all rows are equal: none moves
        std::vector<std::int32_t> sorted = sortedMapIndices(keys, request.rule(false));
        if (rows.reverse()) std::reverse(sorted.begin(), sorted.end());
        rows.reorder(m_walk, std::move(sorted), [&grid = m_grid, request] {
            RowWalk again(grid.m_parts->rows);
            SortRun(grid, again).sortDisplay(request);
            if (!again.gone()) again.finish();
        });
    }
    m_grid.m_parts->native.invalidateAll();
}

void CFilterListCtrl::SortRun::sortMap(const Request& request) {
    LiveRows& rows = m_grid.m_parts->rows;
    std::vector<std::int32_t> all(static_cast<std::size_t>(rows.itemCount()));
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::int32_t>(i);
    const SortKeys keys = readKeys(request, all);
    if (m_walk.gone() || (request.shortcut && keys.allTextsEqual())) return;
    rows.reorderMap(m_walk, sortedMapIndices(keys, request.rule(rows.reverse())));
    rows.rebuild(m_walk, m_grid.m_parts->rowTest());
    if (m_walk.gone()) return;
    m_grid.MatchExact = 0;
    rows.tellDisplayCount();
    m_grid.m_parts->native.invalidateAll();
}

// ---- Checked rows first

void CFilterListCtrl::SortOnChecked() {
    if (!UseFilter) return;
    inWalk([this](RowWalk& walk) {
        SortScope run(*this);
        SortRun(*this, walk).sortCheckedFirst();
        run.keep();
    });
}

void CFilterListCtrl::SortRun::sortCheckedFirst() {
    LiveRows& rows = m_grid.m_parts->rows;
    NativeList& native = m_grid.m_parts->native;
    rows.endBatch(m_walk);
    if (m_walk.gone()) return;
    const int itemCount = m_grid.GetItemCount();
    const int mark = native.selectionMark();
    const DWORD_PTR marked = mark >= 0 && mark < m_grid.GetDisplayCount() ? m_grid.GetItemData(mark) : 0;

    g_SortingList = &m_grid;
    m_grid.SortMapColumn = 0;
    m_grid.m_nSortDataType = m_grid.m_arrColumns.GetAt(0).iDataType;
    const Request request{0, m_grid.m_nSortDataType, m_grid.m_nSortOrder, SortIntegers::wide, false};
    const std::vector<std::int32_t> order = rows.displayOrder();
    std::vector<std::int32_t> parts[2];  // checked, unchecked
    for (std::size_t i = 0; i < order.size(); ++i)
        parts[m_grid.GetCheck(static_cast<int>(i)) ? 0 : 1].push_back(order[i]);
    std::vector<std::int32_t> sorted;
    for (const std::vector<std::int32_t>& part : parts) {
        const SortKeys keys = readCheckedKeys(request, part);
        if (m_walk.gone()) return;
        const std::vector<std::int32_t> next =
            sortedMapIndices(keys, request.rule(rows.reverse() && m_grid.m_bRowDragEnabled != 0));
        sorted.insert(sorted.end(), next.begin(), next.end());
    }
    if (rows.reverse()) std::reverse(sorted.begin(), sorted.end());
    rows.reorder(m_walk, std::move(sorted), [&grid = m_grid] { grid.SortOnChecked(); });

    m_grid.showCheckedCounts(itemCount);
    if (marked != 0) m_grid.moveMarkTo(marked);
    if (!m_walk.gone()) native.invalidateAll();
}

// Only texts count here: for a column of numbers every key is missing, and missing keys are 0.
SortKeys CFilterListCtrl::SortRun::readCheckedKeys(const Request& request,
                                                   const std::vector<std::int32_t>& mapIndices) {
    if (sortKeyKind(request.dataType) == SortKeyKind::text) return readKeys(request, mapIndices);
    SortKeys keys(request.dataType, SortIntegers::wide, mapIndices.size());
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

CString CFilterListCtrl::KnownHeading(int item, const CString& shown) {
    if (item != 0 || m_countsCaption.IsEmpty() || shown != m_countsCaption) return shown;
    const int columnIndex = GetOriginalColumnPosition(0);
    return columnIndex != -1 ? CString(m_arrColumns.GetAt(columnIndex).szColumnName) : shown;
}

// The control must know the row before it can mark it: a rebuild under way has not told it the new count yet.
void CFilterListCtrl::moveMarkTo(DWORD_PTR data) {
    LiveRows& rows = m_parts->rows;
    for (int visual = 0; visual < rows.displayCount(); ++visual) {
        if (GetItemData(visual) != data) continue;
        const Presence presence(*this);
        rows.tellDisplayCount();
        rows.settle();
        if (presence.gone()) return;
        SetSelectionMark(visual);
        if (!presence.gone()) m_parts->native.setState(visual, kRowSelected | kRowFocused, kRowSelected | kRowFocused);
        return;
    }
}
