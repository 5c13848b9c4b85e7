// The column set: how it is built, replaced and sized. What is decided about it stands in core/.
#include "src/foundation/Messages.h"
#include "src/list/CommonListCtrlInternal.h"
#include "src/list/core/ColumnArrays.h"
#include "src/list/core/ColumnSetPlan.h"
#include "src/list/core/ListLayout.h"

#include <algorithm>

using namespace quor::list;

namespace {

// What the control adds to a text when it fits a column to it.
constexpr int kCellPadding = 12;
constexpr int kHeadingPadding = 11;
constexpr int kLongestHeading = 256;

}  // namespace

// As the control has it: the text, and the image with a margin on either side.
int quor::list::headingWidth(CHeaderCtrl& header, CDC& dc, int item) {
    char heading[kLongestHeading] = "";
    HDITEM record{};
    record.mask = HDI_TEXT | HDI_FORMAT;
    record.pszText = heading;
    record.cchTextMax = sizeof heading;
    if (!header.GetItem(item, &record)) return 0;
    int width = dc.GetTextExtent(heading).cx + kHeadingPadding;
    const CImageList* const images = header.GetImageList();
    int imageWidth = 0, imageHeight = 0;
    if ((record.fmt & HDF_IMAGE) && images && images->GetIconSize(&imageWidth, &imageHeight))
        width += imageWidth + 2 * header.GetBitmapMargin();
    return width;
}

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

int CCommonListCtrl::WidestCellInView(int place) { return WidestCell(place, SpanInView()); }

// All texts first: an owner that is asked may take the window away.
int CCommonListCtrl::WidestCell(int place, RowSpan rows) {
    const HWND window = m_hWnd;
    std::vector<CString> texts;
    for (int row = rows.first; row <= rows.last; ++row) {
        texts.push_back(ShownText(row, place));
        if (!::IsWindow(window)) return 0;
    }
    if (texts.empty()) return 0;
    CClientDC dc(this);
    const SelectScope font(&dc, GetFont());
    int widest = 0;
    for (const CString& text : texts) widest = std::max<int>(widest, dc.GetTextExtent(text).cx);
    return widest + kCellPadding;
}

CString CCommonListCtrl::ShownText(int row, int place) { return GetItemText(row, place); }

std::optional<RowSpan> CCommonListCtrl::RowsToMeasure() const {
    if (RowsAreNative()) return std::nullopt;
    return SpanInView();
}

// An owner that is asked for texts may take the window away: nothing is touched then.
void CCommonListCtrl::AutoSizeColumns(int command) {
    if (!GetHeaderCtrl()) return;
    const HWND window = m_hWnd;
    std::vector<ColumnMeasure> measures = MeasureColumns(command);
    if (!::IsWindow(window)) return;
    FitColumns(command, measures);
    if (m_bHeaderToolTips) LayOutHeaderToolTips();
    GetHeaderCtrl()->Invalidate();
}

// What the command reads, and nothing else: a list may have many rows.
std::vector<ColumnMeasure> CCommonListCtrl::MeasureColumns(int command) {
    CHeaderCtrl& header = *GetHeaderCtrl();
    CRect client;
    GetClientRect(&client);
    ColumnMeasure measure;
    measure.client = client.Width();
    measure.columnCount = header.GetItemCount();
    std::vector<ColumnMeasure> measures(static_cast<std::size_t>(measure.columnCount), measure);
    if (fitReadsHeadings(command)) {
        CClientDC dc(&header);
        const SelectScope font(&dc, header.GetFont());
        int item = 0;
        for (ColumnMeasure& column : measures) column.header = headingWidth(header, dc, item++);
    }
    const std::optional<RowSpan> rows = fitReadsData(command) ? RowsToMeasure() : std::nullopt;
    const HWND window = m_hWnd;
    int place = 0;
    for (ColumnMeasure& column : measures) {
        if (!rows || !::IsWindow(window)) break;
        column.data = WidestCell(place++, *rows);
    }
    return measures;
}

void CCommonListCtrl::FitColumns(int command, std::vector<ColumnMeasure>& measures) {
    const FlagScope<BYTE> sizing(m_bRedrawEnabled, 0);
    const RedrawScope frozen(*this);
    const bool controlMeasures = fitReadsData(command) && !RowsToMeasure();
    int place = 0, others = 0;
    for (ColumnMeasure& measure : measures) {
        if (controlMeasures) {
            CListCtrl::SetColumnWidth(place, LVSCW_AUTOSIZE);
            measure.data = CListCtrl::GetColumnWidth(place);
        }
        const bool isLast = &measure == &measures.back();
        if (isLast && fitReadsHeadings(command)) measure.header = std::max(measure.header, measure.client - others);
        const int width = fittedColumnWidth(command, measure);
        CListCtrl::SetColumnWidth(place++, width);
        others += width;
    }
}

void CCommonListCtrl::ColFitToContent() { AutoSizeColumns(kFitColumnsToData); }
void CCommonListCtrl::ColFitToHeader() { AutoSizeColumns(kFitColumnsToHeader); }
void CCommonListCtrl::ColFitToWindow() { AutoSizeColumns(kFitColumnsToWindow); }

int CCommonListCtrl::GetOriginalColumnPosition(int place) { return columnAtPlace(m_arrVisible, place); }

void CCommonListCtrl::AddToVisibleArray(sVisibleColumn column) { addVisibleColumn(m_arrVisible, column); }

CString CCommonListCtrl::GetCommaData(CString& value) { return withThousandsSeparators(value); }
