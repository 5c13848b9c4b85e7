// What a market watch stores and exchanges; the texts stand in core/WatchTexts.h.
#include "quor/expression/core/CustomColumnDependents.h"
#include "quor/foundation/Messages.h"
#include "quor/foundation/core/Globals.h"
#include "quor/list/ColumnNumbers.h"
#include "quor/list/ListSettings.h"
#include "quor/lists/MrktWatchListCtrlParts.h"
#include "quor/lists/core/WatchColumns.h"
#include "quor/platform/tools/QuorTools.h"

#include <cstring>

using namespace quor::list;
using namespace quor::watch;
using namespace quor::expression;

namespace {

// The section of user columns and of exported watches.
constexpr char kAllWatches[] = "MarketWatch";
constexpr int kLongestHeading = 255;

CString exportKey(const CString& name) { return "MW:" + name; }

}  // namespace

int CMrktWatchListCtrl::WidthOfHeading(const char* heading) const {
    const CHeaderCtrl* header = GetHeaderCtrl();
    const int count = header ? header->GetItemCount() : 0;
    for (int place = 0; place < count; ++place) {
        char text[kLongestHeading + 1] = "";
        LVCOLUMN column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH;
        column.pszText = text;
        column.cchTextMax = kLongestHeading;
        if (GetColumn(place, &column) && std::strcmp(text, heading) == 0) return column.cx;
    }
    return 0;
}

std::vector<WatchColumn> CMrktWatchListCtrl::Parts::columnsAsTheyStand() const {
    const CHeaderCtrl* header = m_list.GetHeaderCtrl();
    std::vector<int> shownAt(header ? static_cast<std::size_t>(header->GetItemCount()) : 0, -1);
    for (std::size_t i = 0; i < shownAt.size(); ++i) {
        const int item = header->OrderToIndex(static_cast<int>(i));
        if (item >= 0 && static_cast<std::size_t>(item) < shownAt.size())
            shownAt[static_cast<std::size_t>(item)] = static_cast<int>(i);
    }
    std::vector<WatchColumn> columns;
    for (int i = 0; i < m_list.m_arrColumns.GetCount(); ++i) {
        WatchColumn column;
        column.columnIndex = i;
        const int item = i < m_list.m_arrOrder.GetCount() ? m_list.m_arrOrder.GetAt(i) : -1;
        if (item >= 0 && static_cast<std::size_t>(item) < shownAt.size())
            column.place = shownAt[static_cast<std::size_t>(item)];
        const sQuorColInfo& record = m_list.m_arrColumns.GetAt(i);
        column.name = record.szColumnName;
        column.idForm = idExpression(record, ListFamily::marketWatch);
        column.displayForm = displayExpression(record, ListFamily::marketWatch);
        if (column.place >= 0) column.width = m_list.WidthOfHeading(record.szColumnName);
        columns.push_back(column);
    }
    return columns;
}

void CMrktWatchListCtrl::SaveColumnProfile(CString name) {
    const CString section = WatchSection(name);
    const std::vector<WatchColumn> columns = m_parts->columnsAsTheyStand();
    const bool saves = ColumnsStand();
    const bool saved = saves && writeListSetting(section, "COLUMNPROFILE", formatWatchProfile(columns));
    if (saved) SaveMovedSortLock();
    WriteUserColumns(formatWatchUserColumns(columns));
    if (m_gridLinesRead || m_bGridLines) writeListSetting(section, "GridLine", m_bGridLines ? "true" : "false");
    if (saves && !saved) AfxMessageBox("Error while saving column profile");
}

// Columns that nobody changed here may be older than the store: another watch may have changed them.
bool CMrktWatchListCtrl::MayWriteUserColumns(const CString& own) {
    const Parts::SharedColumns& shared = m_parts->shared;
    if (shared.own != own) return shared.known || !own.IsEmpty();
    CString stored;
    return shared.known && (!g_pControlBlock->UserSettingMWColumns(0, kAllWatches, stored) || stored == shared.stored);
}

void CMrktWatchListCtrl::WriteUserColumns(const CString& own) {
    if (!MayWriteUserColumns(own)) return;
    CString text = own;
    if (g_pControlBlock->UserSettingMWColumns(1, kAllWatches, text)) m_parts->shared = {true, own, own};
}

// Places are the order array's, not the header's: what a file says is independent of how this window was dragged.
void CMrktWatchListCtrl::ExportColumnToFile(CString name, CString file) {
    std::vector<WatchColumn> columns = m_parts->columnsAsTheyStand();
    for (WatchColumn& column : columns)
        column.place = column.columnIndex < m_arrOrder.GetCount() ? m_arrOrder.GetAt(column.columnIndex) : -1;
    CString text = formatWatchExport(columns), error;
    quoru_appdata_ini_file_operations(1, kAllWatches, exportKey(name), text, file, error);
}

bool CMrktWatchListCtrl::ExportMarketWatch(const CString& name, const CString& file) {
    CString title;
    if (const CFrameWnd* frame = GetParentFrame()) frame->GetWindowText(title);
    if (title == name) ExportColumnToFile(title, file);
    return true;
}

bool CMrktWatchListCtrl::ImportMarketWatch(const CString& file) {
    ImportColumnsFromFile(file);
    return true;
}

void CMrktWatchListCtrl::ImportColumnsFromFile(CString file) {
    const ColumnNumbers before = TakeColumnNumbers();
    const bool imported = TakeColumnsFrom(file);
    FollowPlaces(before, FollowNumbers(before, imported));
    if (!imported) return;
    if (CWnd* parent = GetParent(); isLive(parent))
        parent->SendMessage(WM_LIST_COLUMNS_REBUILT, static_cast<WPARAM>(GetDlgCtrlID()), 0);
}

bool CMrktWatchListCtrl::TakeColumnsFrom(CString file) {
    const FlagScope changing(m_columnsChanging, true);
    CString title, text, error;
    if (const CFrameWnd* frame = GetParentFrame()) frame->GetWindowText(title);
    const bool found = quoru_appdata_ini_file_operations(0, kAllWatches, exportKey(title), text, file, error) != 0;
    if (!found) text.Empty();

    if (m_arrColumns.GetCount() > kMarketWatchColumns) m_arrColumns.SetSize(kMarketWatchColumns);
    std::vector<sQuorColInfo> builtIn;
    for (INT_PTR i = 0; i < m_arrColumns.GetCount(); ++i) builtIn.push_back(m_arrColumns.GetAt(i));
    const WatchImport import = importWatch(text, builtIn);
    for (const sQuorColInfo& column : import.userColumns) m_arrColumns.Add(column);
    assign(m_arrOrder, import.arrays.order);
    assign(m_arrWidth, import.arrays.widths);
    rebuildVisible(m_arrOrder, m_arrVisible);
    if (found) {
        iNewDataArrCnt = static_cast<int>(import.userColumns.size());
        iMrktInfoColCount = kMarketWatchColumns - 1 + iNewDataArrCnt;
    }
    m_parts->shared = import.whole ? Parts::SharedColumns{true, "", std::nullopt} : Parts::SharedColumns{};
    ShowColumns(false);
    return found;
}
