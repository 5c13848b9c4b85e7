// The column set: how it is built, replaced and sized. What is decided about it stands in core/.
#include "quor/foundation/Messages.h"
#include "quor/list/ColumnNumbers.h"
#include "quor/list/CommonListCtrlParts.h"
#include "quor/list/ListCommands.h"
#include "quor/list/core/ColumnArrays.h"

#include <algorithm>

using namespace quor::list;

namespace {

// What the control adds to a text when it fits a column to it.
constexpr int kCellPadding = 12;
constexpr int kHeadingPadding = 11;
constexpr int kLongestHeading = 256;

FitTo fitOf(int command) {
    switch (command) {
        case kFitColumnsToData:
            return FitTo::data;
        case kFitColumnsToHeader:
            return FitTo::header;
        case kFitColumnsToWindow:
            return FitTo::window;
        default:
            return FitTo::dataAndHeader;
    }
}

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
    input.hasProfile = m_bUseColumnProfile && m_parts->readStoredColumns(count, input.profile);
    if (m_hWnd != window) return;  // the host took it away while it was asked
    const ColumnSetPlan plan = planColumnSet(input);

    m_parts->takePlan(plan);
    DropSortLockOutsideColumns();
    m_parts->showPlan(plan);
    OnColumnsRebuilt(true);
    if (!plan.readsSortOrder) return;
    ReadSortOrderProfile();
    if (m_bMultiSortActive) DrawHeaderSortImageForMultiSortMode(1, true);
}

void CCommonListCtrl::Parts::takePlan(const ColumnSetPlan& plan) {
    for (const auto& [index, column] : plan.userColumns) m_list.m_arrColumns.SetAtGrow(index, column);
    assign(m_list.m_arrOrder, plan.order);
    assign(m_list.m_arrWidth, plan.widths);
    assign(m_list.m_arrVisible, plan.visible);
    m_list.m_nFirstColumn = plan.firstColumn;
}

void CCommonListCtrl::Parts::showPlan(const ColumnSetPlan& plan) {
    const RedrawScope frozen(m_list);
    m_list.DeleteAllColumns();
    for (int place = 0; place < static_cast<int>(plan.inserts.size()); ++place) {
        const ColumnSetPlan::Insert& insert = plan.inserts[static_cast<std::size_t>(place)];
        m_list.InsertColumnRecord(place, insert.columnIndex, insert.width);
        if (!insert.isUserColumn) continue;
        m_list.AddHeaderToolTip(place, m_list.m_arrColumns.GetAt(insert.columnIndex).csToolTip);
        m_list.SetUserColumnReadOnly(insert.columnIndex);
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
    m_parts->shiftHeaderToolTips(result);
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
    const ColumnNumbers before = TakeColumnNumbers();
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
    FollowPlaces(before, movedColumns(before.headings, before.headings));
    OnColumnsRebuilt(true);
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

int CCommonListCtrl::WidestCellInView(int place) { return m_parts->widestCell(place, m_parts->spanInView()); }

// All texts first: an owner that is asked may take the window away.
int CCommonListCtrl::Parts::widestCell(int place, RowSpan rows) {
    const HWND window = m_list.m_hWnd;
    std::vector<CString> texts;
    for (int row = rows.first; row <= rows.last; ++row) {
        texts.push_back(m_list.ShownText(row, place));
        if (!::IsWindow(window)) return 0;
    }
    if (texts.empty()) return 0;
    CClientDC dc(&m_list);
    const SelectScope select(&dc, m_list.GetFont());
    int widest = 0;
    for (const CString& text : texts) widest = std::max<int>(widest, dc.GetTextExtent(text).cx);
    return widest + kCellPadding;
}

CString CCommonListCtrl::ShownText(int row, int place) { return GetItemText(row, place); }

bool CCommonListCtrl::RowsToMeasure(int& first, int& last) const {
    if (RowsAreNative()) return false;
    const RowSpan span = m_parts->spanInView();
    first = span.first;
    last = span.last;
    return true;
}

std::optional<RowSpan> CCommonListCtrl::Parts::rowsToMeasure() const {
    RowSpan rows;
    if (!m_list.RowsToMeasure(rows.first, rows.last)) return std::nullopt;
    return rows;
}

// An owner that is asked for texts may take the window away: nothing is touched then.
void CCommonListCtrl::AutoSizeColumns(int command) {
    if (!GetHeaderCtrl()) return;
    const HWND window = m_hWnd;
    std::vector<ColumnMeasure> measures = m_parts->measureColumns(fitOf(command));
    if (!::IsWindow(window)) return;
    m_parts->fitColumns(fitOf(command), measures);
    if (m_bHeaderToolTips) LayOutHeaderToolTips();
    GetHeaderCtrl()->Invalidate();
}

// What the fit reads, and nothing else: a list may have many rows.
std::vector<ColumnMeasure> CCommonListCtrl::Parts::measureColumns(FitTo fit) {
    CHeaderCtrl& header = *m_list.GetHeaderCtrl();
    CRect client;
    m_list.GetClientRect(&client);
    ColumnMeasure measure;
    measure.client = client.Width();
    measure.columnCount = header.GetItemCount();
    std::vector<ColumnMeasure> measures(static_cast<std::size_t>(measure.columnCount), measure);
    if (fitReadsHeadings(fit)) {
        CClientDC dc(&header);
        const SelectScope select(&dc, header.GetFont());
        int item = 0;
        for (ColumnMeasure& column : measures) column.header = headingWidth(header, dc, item++);
    }
    const std::optional<RowSpan> rows = fitReadsData(fit) ? rowsToMeasure() : std::nullopt;
    const HWND window = m_list.m_hWnd;
    int place = 0;
    for (ColumnMeasure& column : measures) {
        if (!rows || !::IsWindow(window)) break;
        column.data = widestCell(place++, *rows);
    }
    return measures;
}

void CCommonListCtrl::Parts::fitColumns(FitTo fit, std::vector<ColumnMeasure>& measures) {
    const FlagScope<BYTE> sizing(m_list.m_bRedrawEnabled, 0);
    const RedrawScope frozen(m_list);
    const bool controlMeasures = fitReadsData(fit) && !rowsToMeasure();
    int place = 0, others = 0;
    for (ColumnMeasure& measure : measures) {
        if (controlMeasures) {
            m_list.CListCtrl::SetColumnWidth(place, LVSCW_AUTOSIZE);
            measure.data = m_list.CListCtrl::GetColumnWidth(place);
        }
        const bool isLast = &measure == &measures.back();
        if (isLast && fitReadsHeadings(fit)) measure.header = std::max(measure.header, measure.client - others);
        const int width = fittedColumnWidth(fit, measure);
        m_list.CListCtrl::SetColumnWidth(place++, width);
        others += width;
    }
}

void CCommonListCtrl::ColFitToContent() { AutoSizeColumns(kFitColumnsToData); }
void CCommonListCtrl::ColFitToHeader() { AutoSizeColumns(kFitColumnsToHeader); }
void CCommonListCtrl::ColFitToWindow() { AutoSizeColumns(kFitColumnsToWindow); }

int CCommonListCtrl::GetOriginalColumnPosition(int place) { return columnAtPlace(m_arrVisible, place); }

void CCommonListCtrl::AddToVisibleArray(sVisibleColumn column) { addVisibleColumn(m_arrVisible, column); }

CString CCommonListCtrl::GetCommaData(CString& value) { return withThousandsSeparators(value); }

// Empty here: only a category list has cells that can be edited.
void CCommonListCtrl::SetUserColumnReadOnly(int) {}
