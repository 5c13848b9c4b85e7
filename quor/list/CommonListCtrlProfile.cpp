// What a list keeps from one run to the next: its column profile, grid lines and records of appearance. The texts are
// made and read in core/; here they move between the host's store and the list's arrays.
#include "quor/foundation/core/AppearanceRecords.h"
#include "quor/list/CommonListCtrlParts.h"
#include "quor/list/ListSettings.h"
#include "quor/list/core/ColumnArrays.h"
#include "quor/list/core/ColumnProfileText.h"
#include "quor/platform/tools/QuorTools.h"

using namespace quor::list;
using namespace quor::foundation;

namespace {

constexpr char kProfileKey[] = "COLUMNPROFILE";
constexpr char kGridLineKey[] = "GridLine";
constexpr char kFactoryFile[] = "FactorySetting.ini";
constexpr char kFactorySection[] = "COLUMN PROFILE";
// Headings are compared up to this length, terminator included.
constexpr int kHeadingSize = 256;

int widthOf(const std::vector<HeaderColumn>& header, const char* heading) {
    for (const HeaderColumn& item : header) {
        if (item.heading == heading) return item.width;
    }
    return 0;
}

}  // namespace

CString CCommonListCtrl::KnownHeading(int, const CString& shown) { return shown; }

std::vector<HeaderColumn> CCommonListCtrl::Parts::readHeader() const {
    std::vector<HeaderColumn> header;
    const CHeaderCtrl* control = m_list.GetHeaderCtrl();
    for (int i = 0; isLive(control) && i < control->GetItemCount(); ++i) {
        char heading[kHeadingSize] = "";
        HDITEM item{};
        item.mask = HDI_TEXT | HDI_WIDTH;
        item.pszText = heading;
        item.cchTextMax = sizeof heading;
        if (control->GetItem(i, &item)) header.push_back({m_list.KnownHeading(i, heading), item.cxy});
    }
    return header;
}

// A gap is left out: a reader would take the next column for its user part.
std::vector<ProfileEntry> CCommonListCtrl::Parts::currentProfile() const {
    const std::vector<HeaderColumn> header = readHeader();
    std::vector<ProfileEntry> entries;
    const int count = static_cast<int>(m_list.m_arrColumns.GetCount());
    for (int i = 0; i < count; ++i) {
        const sQuorColInfo& column = m_list.m_arrColumns.GetAt(i);
        if (i >= m_list.m_nBaseColumnCount && isColumnGap(column)) continue;
        ProfileEntry entry;
        entry.columnIndex = i;
        entry.place = m_list.PlaceOfColumn(i);
        entry.width = widthOf(header, column.szColumnName);
        entry.isUserColumn = i >= m_list.m_nBaseColumnCount && !m_list.m_bGroupList;
        entry.name = column.szColumnName;
        entry.expression = column.csExpression;
        entry.toolTip = column.csToolTip;
        entries.push_back(entry);
    }
    return entries;
}

bool CCommonListCtrl::Parts::readStoredColumns(int builtInCount, std::vector<ProfileEntry>& entries) const {
    CString text;
    if (!readListSetting(m_list.m_csListName, kProfileKey, text)) return false;
    entries = parseColumnProfile(text, builtInCount);
    return true;
}

bool CCommonListCtrl::ColumnsStand() const {
    const CHeaderCtrl* header = GetHeaderCtrl();
    return !m_columnsChanging && !m_arrOrder.IsEmpty() && isLive(header) && header->GetItemCount() > 0;
}

void CCommonListCtrl::SaveColumnProfile() {
    if (!m_bUseColumnProfile || !ColumnsStand()) return;
    if (writeListSetting(m_csListName, kProfileKey, formatColumnProfile(m_parts->currentProfile()))) {
        SaveMovedSortLock();
    } else {
        AfxMessageBox("Error while saving column profile");
    }
}

// A flag that is set was read, or is the user's own.
void CCommonListCtrl::SaveState() {
    if (!m_hWnd || m_columnsChanging || SaveMarketWatchProfile()) return;
    if (m_autoSortRead || m_bAutoSort) SaveAutoSort();
    SaveColumnProfile();
    if (m_gridLinesRead || m_bGridLines) SaveGridLineStatus();
}

// A message box may run while lists come and go, so the registry is read anew at each step.
void CCommonListCtrl::ApplyColumnProfile() {
    for (INT_PTR i = 0; i < g_listRegistry.GetCount(); ++i) {
        CCommonListCtrl& list = *g_listRegistry.GetAt(i);
        if (!isLive(&list)) continue;
        CString text, error, file = kFactoryFile;
        if (!quoru_ini_file_operations(0, kFactorySection, list.m_csListName, text, file, error)) {
            if (!error.IsEmpty()) AfxMessageBox(error);
            continue;
        }
        const FactoryColumns factory = parseFactoryProfile(text);
        if (factory.columns.empty()) continue;
        CArray<int, int> columns, widths;
        assign(columns, factory.columns);
        assign(widths, factory.widths);
        list.LoadHeaders(&columns, &widths);
    }
}

void CCommonListCtrl::GridLines() {
    const DWORD style = GetExtendedStyle() ^ LVS_EX_GRIDLINES;
    SetExtendedStyle(style);
    m_bGridLines = (style & LVS_EX_GRIDLINES) != 0;
    m_gridLinesRead = true;  // whatever was stored, the user wants this
}

// The style is flipped, not set: on a list that has grid lines already, a stored "true" takes them away.
void CCommonListCtrl::ReadGridLineStatus() {
    m_gridLinesRead = true;
    CString value;
    if (!readListSetting(m_csListName, kGridLineKey, value)) return;
    m_bGridLines = value == "true";
    if (m_bGridLines) SetExtendedStyle(GetExtendedStyle() ^ LVS_EX_GRIDLINES);
}

void CCommonListCtrl::SaveGridLineStatus() {
    writeListSetting(m_csListName, kGridLineKey, m_bGridLines ? "true" : "false");
}

void CCommonListCtrl::ReadCustomizeRecord(const CString& record) { parseAppearanceRecord(record, m_Appearance); }

void CCommonListCtrl::ReadUserCustomizeRecord(const CString& record) {
    parseUserAppearanceRecord(record, m_Appearance);
}

void CCommonListCtrl::WriteCustomizeRecord() {
    CString key, error, file, record = formatAppearanceRecord(m_Appearance);
    key.Format("%s-%d", m_csListName.GetString(), GetDlgCtrlID());
    // Without a file, where readers name the recovery file: hosts know this record only from the appearance dialogs.
    quoru_appdata_ini_file_operations(1, "CUSTOMIZE_LISTS", key, record, file, error);
}
