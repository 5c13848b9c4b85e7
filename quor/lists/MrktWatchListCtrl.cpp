// Life, cells and the multi-column sort of a market watch.
#include "quor/foundation/ControlBlock.h"
#include "quor/foundation/Messages.h"
#include "quor/list/ListCommands.h"
#include "quor/lists/MrktWatchListCtrlParts.h"

#include <numeric>
#include <utility>

using namespace quor::list;
using namespace quor::watch;
using namespace quor::expression;

IMPLEMENT_DYNAMIC(CMrktWatchListCtrl, CCommonListCtrl)

BEGIN_MESSAGE_MAP(CMrktWatchListCtrl, CCommonListCtrl)
    // Life
    ON_WM_DESTROY()
    // Painting
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_SIZE()
    // Commands
    ON_COMMAND(kFitColumnsToData, &CMrktWatchListCtrl::ColFitToContentMarketListControl)
    ON_COMMAND(kFitColumnsToHeader, &CMrktWatchListCtrl::ColFitToHeaderMarketListControl)
END_MESSAGE_MAP()

CMrktWatchListCtrl* CMrktWatchListCtrl::g_pLastMarketWatch = nullptr;
int CMrktWatchListCtrl::g_nMarketWatchesBuilt = 0;

namespace {

// Where the two texts stand in the host's record.
constexpr std::size_t kTradingSymbolOffset = 266;
constexpr std::size_t kSymbolOffset = 401;

// The host's texts of one record, for as long as the list is there.
class HostCells : public CustomCellSource {
public:
    HostCells(const CMrktWatchListCtrl& list, std::weak_ptr<char> alive, sMWStruct* record)
        : m_list(list), m_alive(std::move(alive)), m_record(record) {}
    bool cellText(int columnIndex, CString& text) override {
        if (m_alive.expired() || columnIndex < 0 || columnIndex >= m_list.m_arrColumns.GetCount()) return false;
        g_pControlBlock->MrktWatchGetColumnText(m_list.GetParent(), m_record, columnIndex, text);
        return true;
    }

private:
    const CMrktWatchListCtrl& m_list;
    std::weak_ptr<char> m_alive;
    sMWStruct* m_record;
};

// What an owner asks while it draws a row.
bool leavesRowsAlone(UINT message) {
    switch (message) {
        case LVM_GETITEMA:
        case LVM_GETITEMRECT:
        case LVM_GETSUBITEMRECT:
        case LVM_GETITEMSTATE:
        case LVM_GETITEMCOUNT:
        case LVM_GETTOPINDEX:
        case LVM_GETCOLUMNWIDTH:
        case LVM_GETHEADER:
        case WM_GETFONT:
            return true;
        default:
            return false;
    }
}

}  // namespace

CMrktWatchListCtrl::CMrktWatchListCtrl() : m_parts(std::make_unique<Parts>(*this)) {
    m_bGroupList = 1;
    m_nBaseColumnCount = kMarketWatchColumns;
    g_pLastMarketWatch = this;
}

// The window goes here, while its messages still find this class.
CMrktWatchListCtrl::~CMrktWatchListCtrl() {
    if (m_hWnd) DestroyWindow();
    if (g_pLastMarketWatch == this) g_pLastMarketWatch = nullptr;
}

CString CMrktWatchListCtrl::WatchSection(const CString& name) { return "MarketWatchNew_" + name; }

CString CMrktWatchListCtrl::ParentTitle() const {
    CString title;
    if (const CWnd* parent = GetParent()) parent->GetWindowText(title);
    return title;
}

void CMrktWatchListCtrl::OnDestroy() {
    CCommonListCtrl::OnDestroy();
    m_parts->shared = {};
}

bool CMrktWatchListCtrl::SaveMarketWatchProfile() {
    SaveColumnProfile(ParentTitle());
    return true;
}

LRESULT CMrktWatchListCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!leavesRowsAlone(message)) m_parts->paintedRow = -1;
    if (message != WM_PAINT) return CCommonListCtrl::WindowProc(message, wParam, lParam);
    const std::shared_ptr<bool> isPainting = m_parts->isPainting;
    const FlagScope painting(*isPainting, true);
    return CCommonListCtrl::WindowProc(message, wParam, lParam);
}

// A message to the control for every cell would take longer than the host takes for its text.
MrktWatchRowData* CMrktWatchListCtrl::RowData(int row) {
    Parts& parts = *m_parts;
    if (*parts.isPainting && row >= 0 && row == parts.paintedRow) return parts.paintedData;
    auto* data = reinterpret_cast<MrktWatchRowData*>(GetItemData(row));
    parts.paintedRow = row;
    return parts.paintedData = data && data->pRecord ? data : nullptr;
}

CString CMrktWatchListCtrl::GetItemText(int row, int place) {
    CString text;
    MrktWatchRowData* data = RowData(row);
    if (!data) return text;
    int columnIndex = 0;
    if (const INT_PTR count = m_arrOrder.GetCount()) {
        while (columnIndex < count && m_arrOrder.GetAt(columnIndex) != place) ++columnIndex;
        if (columnIndex == count) return text;
    }
    g_pControlBlock->MrktWatchGetColumnText(GetParent(), data, columnIndex, text);
    return text;
}

CString CMrktWatchListCtrl::GetItemText(int row, int place, bool, bool) { return GetItemText(row, place); }

CString CMrktWatchListCtrl::GetTradingSymbolOrSymbol(bool tradingSymbol, int row) {
    const MrktWatchRowData* data = RowData(row);
    if (!data) return {};
    return reinterpret_cast<const char*>(data->pRecord) + (tradingSymbol ? kTradingSymbolOffset : kSymbolOffset);
}

int CMrktWatchListCtrl::GetCustomColumnText(sMWStruct* record, int columnIndex, CString& text) {
    if (columnIndex < kFirstMarketWatchUserColumn) return 1;
    if (columnIndex >= m_arrColumns.GetCount()) return 0;
    HostCells row(*this, m_parts->alive, record);
    // Copies: a host's text and the message box may bring messages that change the columns or end the list.
    const CString formula = idExpression(m_arrColumns.GetAt(columnIndex), ListFamily::marketWatch);
    const std::shared_ptr<CustomColumnText> cells = m_parts->customText;
    const CustomCell cell{reinterpret_cast<std::uintptr_t>(record), columnIndex};
    switch (cells->evaluate(ListFamily::marketWatch, cell, formula, row, text)) {
        case CustomCellOutcome::noValue:
            return 0;
        case CustomCellOutcome::invalid:
            AfxMessageBox(kInvalidCustomExpression);
            return 0;
        default:
            return 1;
    }
}

// Row numbers are sorted while the items keep their data; then each item takes the data of the row that belongs there.
void CMrktWatchListCtrl::SortListOnMultiplelevel() {
    const int count = GetItemCount();
    if (!m_bMultiSortActive || !m_bSortEnabled || count == 0) return;
    std::vector<int> rows(static_cast<std::size_t>(count));
    std::iota(rows.begin(), rows.end(), 0);
    SendInfoForQSort(rows.data(), rows.size(), sizeof(int));
    std::vector<DWORD_PTR> data;
    for (const int row : rows) data.push_back(GetItemData(row));
    {
        const RedrawScope frozen(*this);
        for (int row = 0; row < count; ++row) SetItemData(row, data[static_cast<std::size_t>(row)]);
    }
    if (CWnd* parent = GetParent(); isLive(parent))
        parent->SendMessage(WM_LIST_ROWS_REORDERED, static_cast<WPARAM>(GetDlgCtrlID()), 0);
}

void CMrktWatchListCtrl::ReadSortOrderProfile() {
    if (!isLive(SortProfileCombo)) return;
    CString name;
    SortProfileCombo->GetWindowText(name);
    ReadMultiSortOrderProfile(name);
}

void CMrktWatchListCtrl::SaveSortOrderProfile() {
    if (!isLive(SortProfileCombo)) return;
    CString name;
    SortProfileCombo->GetWindowText(name);
    SaveMultiSortOrderProfile(name);
}

void CMrktWatchListCtrl::ReadMultiSortOrderProfile(CString name) {
    ReadSortLevels(WatchSection(name), name);
    if (m_bMultiSortActive) DrawHeaderSortImageForMultiSortMode(1, true);
}

void CMrktWatchListCtrl::SaveMultiSortOrderProfile(CString name) { WriteSortLevels(WatchSection(name)); }
