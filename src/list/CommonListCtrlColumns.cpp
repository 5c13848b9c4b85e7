// The column set: how it is built, replaced and sized. What is decided about it stands in core/.
#include "src/foundation/Messages.h"
#include "src/list/CommonListCtrlInternal.h"
#include "src/list/core/ColumnArrays.h"
#include "src/list/core/ColumnSetPlan.h"
#include "src/list/core/ListLayout.h"

using namespace quor::list;

void CCommonListCtrl::InsertColumnsForList(int* unused) {
    const FlagScope changing(m_columnsChanging, true);
    m_nBaseColumnCount = static_cast<int>(m_arrColumns.GetCount());
    ReadAutoSort();
    InitializeAutoSort();
    ReadGridLineStatus();
    InsertColumnsForList_Recursive(unused);
}

// Columns are inserted once, when it is settled which: a profile that does not fit never reaches the control.
void CCommonListCtrl::InsertColumnsForList_Recursive(int*) {
    const HWND window = m_hWnd;
    ReadDealSlipState();
    if (m_bLockSortEnabled) ReadSortLockInfo();
    ColumnSetInput input;
    for (INT_PTR i = 0; i < m_arrColumns.GetCount(); ++i) input.widths.push_back(m_arrColumns.GetAt(i).iWidth);
    input.defaultPlaces = toVector(m_arrDefaultColumns);
    const int count = static_cast<int>(input.widths.size());
    input.hasProfile = m_bUseColumnProfile && ReadStoredColumns(count, input.profile);
    if (m_hWnd != window) return;  // the host took it away while it was asked
    const ColumnSetPlan plan = planColumnSet(input);

    TakePlan(plan);
    DropSortLockOutsideColumns();
    ShowPlan(plan);
    if (!plan.readsSortOrder) return;
    ReadSortOrderProfile();
    if (m_bMultiSortActive) DrawHeaderSortImageForMultiSortMode(1, true);
}

// The arrays as a plan has them; the control is left alone.
void CCommonListCtrl::TakePlan(const ColumnSetPlan& plan) {
    for (const auto& [index, column] : plan.userColumns) m_arrColumns.SetAtGrow(index, column);
    assign(m_arrOrder, plan.order);
    assign(m_arrWidth, plan.widths);
    assign(m_arrVisible, plan.visible);
    m_nFirstColumn = plan.firstColumn;
}

void CCommonListCtrl::ShowPlan(const ColumnSetPlan& plan) {
    const RedrawScope frozen(*this);
    DeleteAllColumns();
    for (int place = 0; place < static_cast<int>(plan.inserts.size()); ++place) {
        const ColumnSetPlan::Insert& insert = plan.inserts[static_cast<std::size_t>(place)];
        InsertColumnRecord(place, insert.columnIndex, insert.width);
        if (!insert.isUserColumn) continue;
        AddHeaderToolTip(place, m_arrColumns.GetAt(insert.columnIndex).csToolTip);
        SetUserColumnReadOnly(insert.columnIndex);
    }
}

void CCommonListCtrl::InsertColumnRecord(int place, int columnIndex, int width) {
    const sQuorColInfo& column = m_arrColumns.GetAt(columnIndex);
    InsertColumn(place, column.szColumnName, column.iFormat, width, place);
}

void CCommonListCtrl::DeleteAllColumns() {
    const CHeaderCtrl* header = GetHeaderCtrl();
    for (int place = header ? header->GetItemCount() - 1 : -1; place >= 0; --place) DeleteColumn(place);
}

int CCommonListCtrl::SetDefaultCols(CArray<int, int>& columns) {
    assign(m_arrDefaultColumns, defaultPlaces(static_cast<int>(m_arrColumns.GetCount()), columns.GetData(),
                                              static_cast<int>(columns.GetCount())));
    return 1;
}

int CCommonListCtrl::SetDefaultCols(int count, const int* columns) {
    if (count == 0) return 0;
    assign(m_arrDefaultColumns, defaultPlaces(static_cast<int>(m_arrColumns.GetCount()), columns, count));
    return 1;
}

int CCommonListCtrl::InsertColumn(int place, const char* heading, int format, int width, int subItem) {
    const int result = CListCtrl::InsertColumn(place, heading, format, width, subItem);
    if (m_bHeaderToolTips) AddHeaderToolTip(place, heading);
    CHeaderCtrl* header = GetHeaderCtrl();
    if (format == kFormatHeaderImage && header) setHeaderImage(*header, place, kHeaderSortFormat, kHeaderImageBlank);
    return result;
}

BOOL CCommonListCtrl::DeleteColumn(int place) {
    const BOOL deleted = CListCtrl::DeleteColumn(place);
    if (deleted) RemoveHeaderToolTip(place);
    return deleted;
}

void CCommonListCtrl::LoadHeaders(CArray<int, int>* columns, CArray<int, int>* widths) {
    const ShownColumns shown =
        showColumns(static_cast<int>(m_arrColumns.GetCount()), toVector(*columns), toVector(*widths));
    assign(m_arrOrder, shown.order);
    assign(m_arrWidth, shown.widths);
    assign(m_arrVisible, shown.visible);
    if (!shown.bySequence.empty()) m_nFirstColumn = shown.bySequence[0];
    {
        const FlagScope changing(m_columnsChanging, true);
        const RedrawScope frozen(*this);
        DeleteAllColumns();
        int place = 0;
        for (const int column : shown.bySequence) InsertColumnRecord(place++, column, m_arrWidth.GetAt(column));
    }
    NotifyColumnsRebuilt(0);
}

// A group list reports to its parent; any other to the first dialog or dialog bar above it, if there is one.
void CCommonListCtrl::NotifyColumnsRebuilt(LPARAM imported) {
    CWnd* parent = GetParent();
    if (!isLive(parent)) return;
    while (!m_bGroupList && parent && !parent->IsKindOf(RUNTIME_CLASS(CBCGPDialog)) &&
           !parent->IsKindOf(RUNTIME_CLASS(CBCGPDialogBar))) {
        parent = parent->GetParent();
    }
    if (parent) parent->SendMessage(WM_LIST_COLUMNS_REBUILT, static_cast<WPARAM>(GetDlgCtrlID()), imported);
}

void CCommonListCtrl::AutoSizeColumns(int command) {
    CHeaderCtrl* header = GetHeaderCtrl();
    if (!header) return;
    {
        const FlagScope<BYTE> sizing(m_bRedrawEnabled, 0);
        const RedrawScope frozen(*this);
        CRect client;
        GetClientRect(&client);
        ColumnMeasure measure;
        measure.client = client.Width();
        measure.columnCount = header->GetItemCount();
        for (int place = 0; place < measure.columnCount; ++place) {
            CListCtrl::SetColumnWidth(place, LVSCW_AUTOSIZE);
            measure.data = CListCtrl::GetColumnWidth(place);
            CListCtrl::SetColumnWidth(place, LVSCW_AUTOSIZE_USEHEADER);
            measure.header = CListCtrl::GetColumnWidth(place);
            CListCtrl::SetColumnWidth(place, fittedColumnWidth(command, measure));
        }
    }
    if (m_bHeaderToolTips) LayOutHeaderToolTips();
    header->Invalidate();
}

void CCommonListCtrl::ColFitToContent() { AutoSizeColumns(kFitColumnsToData); }
void CCommonListCtrl::ColFitToHeader() { AutoSizeColumns(kFitColumnsToHeader); }
void CCommonListCtrl::ColFitToWindow() { AutoSizeColumns(kFitColumnsToWindow); }

int CCommonListCtrl::GetOriginalColumnPosition(int place) { return columnAtPlace(m_arrVisible, place); }

void CCommonListCtrl::AddToVisibleArray(sVisibleColumn column) { addVisibleColumn(m_arrVisible, column); }

CString CCommonListCtrl::GetCommaData(CString& value) { return withThousandsSeparators(value); }
