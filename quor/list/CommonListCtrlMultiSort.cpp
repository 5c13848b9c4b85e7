// Sorting by several columns: the levels, their arrows and their stored text. The rows are sorted by derived lists,
// which reorder row numbers with SendInfoForQSort.
#include "quor/foundation/HostServices.h"
#include "quor/list/CommonListCtrlParts.h"
#include "quor/list/ListSettings.h"
#include "quor/list/core/SortTexts.h"

#include <cstring>

using namespace quor::list;
using namespace quor::foundation;

namespace {

constexpr const char* kLevelsKey = "COLUMN_SORT_ORDER_PROFILE";
constexpr UINT kAskBeforeHiding = MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2;

}  // namespace

void CCommonListCtrl::SetSortOrderChooser(SortOrderChooser* chooser) { m_parts->sortOrderChooser = chooser; }

void CCommonListCtrl::SendInfoForQSort(void* base, size_t count, size_t size) {
    if (!base || size < sizeof(int)) return;
    auto* bytes = static_cast<char*>(base);
    std::vector<int> rows(count);
    for (std::size_t i = 0; i < count; ++i) std::memcpy(&rows[i], bytes + i * size, sizeof(int));
    const std::vector<std::uint32_t> sorted = m_parts->prepareSort(rows).sortedRows();
    const std::vector<char> former(bytes, bytes + count * size);
    for (std::size_t i = 0; i < count; ++i) std::memcpy(bytes + i * size, former.data() + sorted[i] * size, size);
}

int CCommonListCtrl::BuildSortColumnOrderArray(CString heading, int order) {
    INT_PTR column = 0;
    while (column < m_arrColumns.GetCount() && heading != m_arrColumns.GetAt(column).szColumnName) ++column;
    if (column < m_arrColumns.GetCount()) {
        const int place = PlaceOfColumn(static_cast<int>(column));
        const int shown = place == -1 ? -1 : GetOriginalColumnPosition(place);
        if (shown == -1) {
            AfxMessageBox("Please select columns that are visible in the list for sorting");
            return 0;
        }
        ColumnSortInfo level;
        level.iColumnIndex = shown;
        level.iSortOrder = order;
        level.csColumnName = heading;
        m_arrSortOrder.Add(level);
    }
    m_mapSortOrderByName[heading] = order;
    return 1;
}

void CCommonListCtrl::ReadSortOrderProfile() { ReadSortLevels(m_csListName, m_csListName); }

void CCommonListCtrl::SaveSortOrderProfile() { WriteSortLevels(m_csListName); }

void CCommonListCtrl::ReadSortLevels(const CString& section, const CString& name) {
    m_arrSortOrder.RemoveAll();
    CString text;
    if (!readListSetting(section, kLevelsKey, text) || !m_bMultiSortEnabled) return;
    if (text.TrimLeft(',').IsEmpty()) {
        if (m_parts->sortOrderChooser) m_parts->sortOrderChooser->clear();
        m_bMultiSortActive = 0;
        return;
    }
    const SortLevelsText stored = parseSortLevels(text);
    bool missing = false;
    for (const SortLevelText& level : stored.levels) {
        if (!BuildSortColumnOrderArray(level.heading, level.order)) missing = true;
    }
    if (stored.hasFlag) m_bMultiSortActive = stored.active;
    if (missing) {
        CString line;
        line.Format(
            "Few columns in the multi sort order are hidden in %s, resave the multicolumn sort to update the setting",
            name.GetString());
        logToHost(line);
    }
    if (m_bMultiSortActive) m_bSortLocked = m_bSorted = 0;
}

void CCommonListCtrl::WriteSortLevels(const CString& section) {
    const SortOrderChooser* const chooser = m_parts->sortOrderChooser;
    if (!m_bMultiSortEnabled || !chooser) return;
    std::vector<SortLevelText> levels;
    for (const CString& heading : chooser->chosenNames()) {
        int order = -1;
        m_mapSortOrderByName.Lookup(heading, order);
        levels.push_back({heading, order});
    }
    if (!writeListSetting(section, kLevelsKey, formatSortLevels(levels, m_bMultiSortActive != 0))) {
        BCGPMessageBox(m_hWnd, "Error while saving sort column profile");
    }
}

bool CCommonListCtrl::RemoveNonVisibleColumnsFromSortOrder() {
    bool removed = false;
    for (INT_PTR i = m_arrSortOrder.GetUpperBound(); i >= 0; --i) {
        const ColumnSortInfo& level = m_arrSortOrder.GetAt(i);
        if (PlaceOfColumn(level.iColumnIndex) != -1) continue;
        if (m_parts->sortOrderChooser) m_parts->sortOrderChooser->removeName(level.csColumnName);
        m_arrSortOrder.RemoveAt(i);
        removed = true;
    }
    if (m_parts->multiSortEnds) m_bMultiSortActive = 0;
    return removed;
}

bool CCommonListCtrl::AlertUserOnRemovalOfSortColumns(CString heading, int* shown) {
    if (*shown) return true;
    if (m_bSortLocked) {
        const bool isLocked = m_nLockSortColumn >= 0 && m_nLockSortColumn < m_arrColumns.GetCount() &&
                              heading == m_arrColumns.GetAt(m_nLockSortColumn).szColumnName;
        if (!isLocked) return true;
        *shown = 1;
        return AfxMessageBox("You are removing one or more sorted columns. Do you want to continue ?",
                             kAskBeforeHiding) != IDNO;
    }
    if (!m_bMultiSortActive) return true;
    for (INT_PTR i = 0; i < m_arrSortOrder.GetCount(); ++i) {
        if (m_arrSortOrder.GetAt(i).csColumnName != heading) continue;
        *shown = 1;
        const int answer = AfxMessageBox(
            "You are removing one or more sorted columns this will disable multi-level sorting, Do you want to "
            "continue ?",
            kAskBeforeHiding);
        m_parts->multiSortEnds = answer != IDNO;
        return m_parts->multiSortEnds;
    }
    return true;
}

void CCommonListCtrl::DrawHeaderSortImageForMultiSortMode(int draw, bool show) {
    CHeaderCtrl* header = GetHeaderCtrl();
    if (!draw || !header) return;
    HDITEM item{};
    item.mask = HDI_FORMAT | HDI_IMAGE;
    for (int place = 0; place < header->GetItemCount(); ++place) {
        if (!header->GetItem(place, &item) || !(item.fmt & HDF_IMAGE) || item.iImage < 0 ||
            item.iImage == kHeaderImageBlank)
            continue;
        setHeaderImage(*header, place, (item.fmt & HDF_JUSTIFYMASK) | kHeaderSortFormat, kHeaderImageBlank);
    }
    for (INT_PTR i = 0; show && i < m_arrSortOrder.GetCount(); ++i) {
        const ColumnSortInfo& level = m_arrSortOrder.GetAt(i);
        const int place = PlaceOfColumn(level.iColumnIndex);
        if (place < 0 || !header->GetItem(place, &item)) continue;
        setHeaderImage(*header, place, (item.fmt & HDF_JUSTIFYMASK) | kHeaderSortFormat,
                       level.iSortOrder == 1 ? kHeaderImageFalling : kHeaderImageRising);
    }
    header->RedrawWindow();
}

// There is no chooser to show yet.
void CCommonListCtrl::OnListColumnSortOrder() {}

// Empty for good: which rows a list has to reorder, only a derived list knows.
void CCommonListCtrl::SortListOnMultiplelevel() {}
