// How the columns of a market watch come on screen and how wide they are.
#include "quor/expression/core/CustomColumnDependents.h"
#include "quor/foundation/core/Globals.h"
#include "quor/list/ListCommands.h"
#include "quor/list/ListSettings.h"
#include "quor/list/core/ColumnArrays.h"
#include "quor/list/core/ListLayout.h"
#include "quor/lists/MrktWatchListCtrlParts.h"
#include "quor/lists/core/WatchColumns.h"

using namespace quor::list;
using namespace quor::watch;
using namespace quor::expression;

namespace {

constexpr char kUserColumnsSection[] = "MarketWatch";

}  // namespace

void CMrktWatchListCtrl::InsertColumnsForList(int*) {
    const FlagScope changing(m_columnsChanging, true);
    const HWND window = m_hWnd;
    m_nBaseColumnCount = kMarketWatchColumns;
    ReadAutoSort();
    InitializeAutoSort();
    if (m_bLockSortEnabled) ReadSortLockInfo();
    ReadGridLines();
    CString userColumns;
    const bool known = g_pControlBlock->UserSettingMWColumns(0, kUserColumnsSection, userColumns) != 0;
    if (m_hWnd != window) return;  // the host took it away while it was asked
    if (known) TakeUserColumns(userColumns);
    DropSortLockOutsideColumns();
    if (m_arrOrder.IsEmpty()) ReadStoredPlaces();
    if (m_hWnd != window) return;
    ShowColumns(iNewDataArrCnt > 0 && m_arrColumns.GetCount() == iMrktInfoColCount + 1);
    ++g_nMarketWatchesBuilt;
}

// The first watch counts the user columns; they are the same for all. Numbers that the store leaves out count as well:
// what is counted is the column array.
void CMrktWatchListCtrl::TakeUserColumns(const CString& text) {
    const std::vector<WatchColumn> columns = parseWatchUserColumns(text);
    if (!fitWatchColumns(columns)) return;
    int added = 0;
    for (const WatchColumn& column : columns) {
        if (column.columnIndex < kMarketWatchColumns) continue;
        constexpr int kWidth = 80;
        m_arrColumns.SetAtGrow(column.columnIndex, makeWatchUserColumn(column, kWidth));
        added = std::max(added, column.columnIndex + 1 - kMarketWatchColumns);
    }
    m_parts->shared = {true, text, formatWatchUserColumns(m_parts->columnsAsTheyStand())};
    if (g_nMarketWatchesBuilt) return;
    iMrktInfoColCount += added;
    iNewDataArrCnt += added;
}

void CMrktWatchListCtrl::ReadStoredPlaces() {
    WatchArrays arrays;
    CString text;
    const bool stored = m_bUseColumnProfile && readListSetting(WatchSection(ParentTitle()), "COLUMNPROFILE", text);
    const int count = static_cast<int>(m_arrColumns.GetCount());  // none if the host took the window away
    if (!stored || !placeByProfile(parseWatchProfile(text), count, arrays)) {
        for (int i = 0; i < std::min(count, kMarketWatchColumns); ++i) {
            const bool known = i < m_arrDefaultColumns.GetCount();
            arrays.order.push_back(m_arrDefaultColumns.IsEmpty() ? i : known ? m_arrDefaultColumns.GetAt(i) : -1);
            arrays.widths.push_back(m_arrColumns.GetAt(i).iWidth);
        }
    }
    assign(m_arrOrder, arrays.order);
    assign(m_arrWidth, arrays.widths);
}

// A watch keeps its grid lines under its own name, not under the list's.
void CMrktWatchListCtrl::ReadGridLines() {
    m_gridLinesRead = true;
    CString text;
    if (!readListSetting(WatchSection(ParentTitle()), "GridLine", text)) return;
    m_bGridLines = text == "true";
    SetExtendedStyle((GetExtendedStyle() & ~static_cast<DWORD>(LVS_EX_GRIDLINES)) |
                     (m_bGridLines ? LVS_EX_GRIDLINES : 0));
}

// Replaces the control's columns by what the arrays say, and puts the arrays in step.
void CMrktWatchListCtrl::ShowColumns(bool placesUserColumns) {
    WatchPlanInput input;
    input.arrays = {toVector(m_arrOrder), toVector(m_arrWidth)};
    input.lastColumn = iMrktInfoColCount;
    input.placesUserColumns = placesUserColumns;
    for (INT_PTR i = 0; i < m_arrColumns.GetCount(); ++i) {
        const sQuorColInfo& column = m_arrColumns.GetAt(i);
        input.recordWidths.push_back(isColumnGap(column) ? kNoColumn : column.iWidth);
    }
    const WatchPlan plan = planWatchColumns(input);
    assign(m_arrOrder, plan.arrays.order);
    assign(m_arrWidth, plan.arrays.widths);
    assign(m_arrVisible, plan.visible);
    if (!plan.bySequence.empty()) m_nFirstColumn = plan.bySequence[0];
    const RedrawScope frozen(*this);
    DeleteAllColumns();
    int place = 0;
    for (const int columnIndex : plan.bySequence) {
        const sQuorColInfo& column = m_arrColumns.GetAt(columnIndex);
        InsertColumn(place, column.szColumnName, column.iFormat, m_arrWidth.GetAt(columnIndex), place);
        if (columnIndex >= kMarketWatchColumns)
            AddHeaderToolTip(place, displayExpression(column, ListFamily::marketWatch));
        ++place;
    }
}

int CMrktWatchListCtrl::InsertMrktColumn(int place, CString name, int format, int width, int order) {
    sQuorColInfo column;
    setColumnName(column, name);
    column.iFormat = format;
    column.iWidth = width;
    const int columnIndex = static_cast<int>(m_arrColumns.Add(column));
    for (int* sorted : {&m_nSortCol, &m_nLastSortCol})
        if (order >= 0 && *sorted >= order && *sorted < m_arrVisible.GetCount()) ++*sorted;
    if (order == 0) m_nFirstColumn = columnIndex;
    if (order >= 0) {
        for (INT_PTR i = 0; i < m_arrOrder.GetCount(); ++i)
            if (m_arrOrder.GetAt(i) >= order) m_arrOrder.SetAt(i, m_arrOrder.GetAt(i) + 1);
    }
    // Columns that the array does not speak of yet stay hidden.
    while (m_arrOrder.GetCount() < columnIndex) m_arrOrder.Add(-1);
    m_arrOrder.SetAtGrow(columnIndex, order);
    m_arrWidth.SetAtGrow(columnIndex, width);
    rebuildVisible(m_arrOrder, m_arrVisible);
    if (order >= 0) InsertColumn(place, name, format, width, place);
    return columnIndex;
}

bool CMrktWatchListCtrl::RowsToMeasure(int& first, int& last) const {
    first = 0;
    last = GetItemCount() - 1;
    return true;
}

void CMrktWatchListCtrl::ColFitToContentMarketListControl() { AutoSizeColumns(kFitColumnsToData); }

void CMrktWatchListCtrl::ColFitToHeaderMarketListControl() { AutoSizeColumns(kFitColumnsToHeader); }
