// Numbers that follow columns: whatever numbers or places these anew takes down first what is kept by them.
#include "quor/list/ColumnNumbers.h"
#include "quor/list/CommonListCtrlParts.h"
#include "quor/list/SortOrderChooser.h"
#include "quor/list/core/ColumnArrays.h"

#include <algorithm>

using namespace quor::list;

std::vector<CString> CCommonListCtrl::Headings() const {
    std::vector<CString> headings;
    for (INT_PTR i = 0; i < m_arrColumns.GetCount(); ++i) headings.emplace_back(m_arrColumns.GetAt(i).szColumnName);
    return headings;
}

ColumnNumbers CCommonListCtrl::TakeColumnNumbers() const {
    ColumnNumbers numbers;
    numbers.headings = Headings();
    const auto columnAt = [this](int place) { return place < 0 ? -1 : columnAtPlace(m_arrVisible, place); };
    if (m_bSorted) {  // before the first sort they speak of no column
        numbers.sortColumn = columnAt(m_nSortCol);
        numbers.lastSortColumn = columnAt(m_nLastSortCol);
    }
    const CHeaderCtrl* const header = GetHeaderCtrl();
    HDITEM item{};
    item.mask = HDI_FORMAT | HDI_IMAGE;
    for (int place = 0; header && place < header->GetItemCount(); ++place) {
        if (!header->GetItem(place, &item) || !(item.fmt & HDF_IMAGE)) continue;
        const auto image = static_cast<HeaderImage>(item.iImage);
        const int columnIndex = columnAt(place);
        if (columnIndex >= 0 && (image == kHeaderImageRising || image == kHeaderImageFalling))
            numbers.arrows.push_back({columnIndex, item.fmt & ~HDF_CHECKBOX, image});
    }
    return numbers;
}

std::vector<int> CCommonListCtrl::FollowNumbers(const ColumnNumbers& before, bool imported) {
    const std::vector<int> moved = movedColumns(before.headings, Headings());
    const int former = m_bSortLocked ? m_nLockSortColumn : -1;
    OnColumnsMoved(moved);
    if (imported && former >= 0 && m_nLockSortColumn != former) m_parts->sortLockMoved = true;
    return moved;
}

// Without its column a sort is that of the first place, and no click is the second one.
void CCommonListCtrl::FollowPlaces(const ColumnNumbers& before, const std::vector<int>& moved) {
    const auto placeOf = [&](int formerColumn) { return PlaceOfColumn(movedColumn(moved, formerColumn)); };
    if (before.sortColumn >= 0) m_nSortCol = std::max(0, placeOf(before.sortColumn));
    if (before.lastSortColumn >= 0) m_nLastSortCol = placeOf(before.lastSortColumn);
    CHeaderCtrl* const header = GetHeaderCtrl();
    if (!header) return;
    for (const ColumnNumbers::Arrow& arrow : before.arrows)
        if (const int place = placeOf(arrow.columnIndex); place >= 0)
            setHeaderImage(*header, place, arrow.format, arrow.image);
}

void CCommonListCtrl::OnColumnsMoved(const std::vector<int>& moved) {
    if (m_nLockSortColumn >= 0) {
        m_nLockSortColumn = movedColumn(moved, m_nLockSortColumn);
        if (m_nLockSortColumn < 0) EndSortLock();
    }
    for (INT_PTR i = m_arrSortOrder.GetUpperBound(); i >= 0; --i) {
        ColumnSortInfo& level = m_arrSortOrder[i];
        level.iColumnIndex = movedColumn(moved, level.iColumnIndex);
        if (level.iColumnIndex >= 0) continue;
        if (m_parts->sortOrderChooser) m_parts->sortOrderChooser->removeName(level.csColumnName);
        m_arrSortOrder.RemoveAt(i);
    }
    if (m_arrSortOrder.IsEmpty()) m_bMultiSortActive = 0;
    m_Appearance.iKeywordColumn = movedColumn(moved, m_Appearance.iKeywordColumn);
}
