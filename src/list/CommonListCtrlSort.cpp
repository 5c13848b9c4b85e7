// Sorting by one column: a click on the header, the same from code, and the lock that keeps a sort.
//
// A sort reads every row's text once into keys (core/RowSort.h) and settles where each row ends. The control then moves
// its items by comparing these positions: its own sort sees a plain order of numbers, whatever the texts compare to.
#include "src/foundation/HostServices.h"
#include "src/foundation/Messages.h"
#include "src/list/CommonListCtrlInternal.h"
#include "src/list/ListSettings.h"
#include "src/list/core/RowSort.h"
#include "src/list/core/SortTexts.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char* kSortLockKey = "SortLockInfo";

// The arguments of the control's comparison are item data: row numbers while a sort holds the rows' data. `positions`
// is indexed by them; data that something else has put into an item meanwhile are no row and go last.
struct Positions {
    std::vector<std::uint32_t> ofRow;
    std::uint32_t of(LPARAM row) const {
        const auto index = static_cast<std::size_t>(row);
        return index < ofRow.size() ? ofRow[index] : static_cast<std::uint32_t>(ofRow.size());
    }
};

int CALLBACK comparePositions(LPARAM row1, LPARAM row2, LPARAM argument) {
    const auto& positions = *reinterpret_cast<const Positions*>(argument);
    const std::uint32_t first = positions.of(row1);
    const std::uint32_t second = positions.of(row2);
    return first < second ? -1 : first > second ? 1 : 0;
}

}  // namespace

void CCommonListCtrl::OnLvnColumnclick(NMHDR* header, LRESULT* result) {
    if (m_bSortLocked) return;
    *result = 0;
    if (m_bSortDisabled || m_bMultiSortActive) return;
    CHeaderCtrl* headerControl = GetHeaderCtrl();
    m_nSortCol = reinterpret_cast<const NMLISTVIEW*>(header)->iSubItem;
    if (m_nSortCol < 0 || !headerControl || m_nSortCol >= headerControl->GetItemCount()) m_nSortCol = 0;
    m_nSortOrder = m_nSortCol != m_nLastSortCol ? -1 : -m_nSortOrder;
    m_nLockSortOrder = m_nSortOrder;
    const int previous = m_nLastSortCol;
    m_nLastSortCol = m_nSortCol;
    m_nLockSortColumn = GetOriginalColumnPosition(m_nSortCol);
    SortRows();
    if (m_nSortOrder == -1) {
        if (previous != m_nSortCol && previous != -1) ShowSortImage(previous, kHeaderImageBlank);
        ShowSortImage(m_nSortCol, kHeaderImageRising);
    } else {
        ShowSortImage(m_nSortCol, kHeaderImageFalling);
    }
    AfterSort(m_nSortCol == 0 || previous == 0);
    m_bSorted = 1;
}

void CCommonListCtrl::ClickColumn(int place) {
    NMLISTVIEW click{};
    click.hdr.hwndFrom = m_hWnd;
    click.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    click.hdr.code = static_cast<UINT>(LVN_COLUMNCLICK);
    click.iItem = -1;
    click.iSubItem = place;
    LRESULT result = 0;
    CCommonListCtrl::OnLvnColumnclick(&click.hdr, &result);
}

int CCommonListCtrl::SortOn(int columnIndex, int order) {
    const int place = std::max(PlaceOfColumn(columnIndex), 0);
    m_nSortOrder = order == 1 ? -1 : 1;
    CHeaderCtrl* header = GetHeaderCtrl();
    if (!header || m_nSortCol >= header->GetItemCount()) m_nSortCol = 0;
    const RedrawScope frozen(*this);
    if (m_nSortCol == m_nLastSortCol) ClickColumn(place);
    ClickColumn(place);
    return 1;
}

int CALLBACK CCommonListCtrl::CompareRows(LPARAM row1, LPARAM row2, LPARAM list) {
    if (!list) return -1;
    auto& owner = *reinterpret_cast<CCommonListCtrl*>(list);
    return owner.PrepareSort({static_cast<int>(row1), static_cast<int>(row2)}).compare(0, 1);
}

// The keys of these rows, from texts asked for here and nowhere else. A level whose column does not show compares
// nothing.
RowSort CCommonListCtrl::PrepareSort(const std::vector<int>& rows) {
    RowSort sort(rows.size());
    const auto addLevel = [&](int place, SortKeys keys) {
        keys.reserve(rows.size());
        if (keys.readsTexts()) {
            for (const int row : rows) keys.add(GetItemText(row, place));
        }
        sort.addLevel(std::move(keys));
    };
    if (!m_bMultiSortActive) {
        addLevel(m_nSortCol, SortKeys(m_nSortDataType, m_nSortOrder, SortRule::singleColumn));
        return sort;
    }
    for (INT_PTR i = 0; i < m_arrSortOrder.GetCount(); ++i) {
        const ColumnSortInfo& level = m_arrSortOrder.GetAt(i);
        const int place = PlaceOfColumn(level.iColumnIndex);
        if (place < 0 || level.iColumnIndex >= m_arrColumns.GetCount()) continue;
        addLevel(place, SortKeys(m_arrColumns.GetAt(level.iColumnIndex).iDataType, level.iSortOrder, SortRule::levels));
    }
    return sort;
}

void CCommonListCtrl::SortRows() {
    TakeSortDataType();
    if (!RowsAreNative()) return;
    const RedrawScope frozen(*this);
    HoldRowData();
    std::vector<int> rows(static_cast<std::size_t>(m_arrSavedItemData.GetCount()));
    for (std::size_t row = 0; row < rows.size(); ++row) rows[row] = static_cast<int>(row);
    Positions positions{PrepareSort(rows).positions()};
    CListCtrl::SortItems(comparePositions, reinterpret_cast<DWORD_PTR>(&positions));
    ReleaseRowData();
}

void CCommonListCtrl::TakeSortDataType() {
    m_nSortDataType = 0;
    const INT_PTR count = std::min(m_arrOrder.GetCount(), m_arrColumns.GetCount());
    for (INT_PTR column = 0; column < count; ++column) {
        if (m_arrOrder.GetAt(column) != m_nSortCol) continue;
        m_nSortDataType = m_arrColumns.GetAt(column).iDataType;
        return;
    }
}

// From here to ReleaseRowData an item's data are its row number and GetItemData answers from m_arrSavedItemData, which
// is complete before the first item changes: a handler of a change may ask for any row.
void CCommonListCtrl::HoldRowData() {
    const int count = CListCtrl::GetItemCount();
    CArray<DWORD_PTR, DWORD_PTR> data;
    data.SetSize(count);
    for (int row = 0; row < count; ++row) data.SetAt(row, CListCtrl::GetItemData(row));
    m_arrSavedItemData.Copy(data);
    for (int row = 0; row < count; ++row) CListCtrl::SetItemData(row, static_cast<DWORD_PTR>(row));
}

// The saved data first follow the rows to their new places, for the same reason.
void CCommonListCtrl::ReleaseRowData() {
    const INT_PTR count = std::min<INT_PTR>(CListCtrl::GetItemCount(), m_arrSavedItemData.GetCount());
    CArray<DWORD_PTR, DWORD_PTR> data;
    data.SetSize(count);
    for (INT_PTR row = 0; row < count; ++row) {
        const auto former = static_cast<INT_PTR>(CListCtrl::GetItemData(static_cast<int>(row)));
        const bool isHeld = former >= 0 && former < m_arrSavedItemData.GetCount();
        data.SetAt(row, isHeld ? m_arrSavedItemData.GetAt(former) : static_cast<DWORD_PTR>(former));
    }
    m_arrSavedItemData.Copy(data);
    for (INT_PTR row = 0; row < count; ++row) CListCtrl::SetItemData(static_cast<int>(row), data.GetAt(row));
    m_arrSavedItemData.RemoveAll();
}

bool CCommonListCtrl::RowsAreNative() const { return !(GetStyle() & LVS_OWNERDATA); }

int CCommonListCtrl::PlaceOfColumn(int columnIndex) const {
    return columnIndex >= 0 && columnIndex < m_arrOrder.GetCount() ? m_arrOrder.GetAt(columnIndex) : -1;
}

// The alignment comes from the column record whose index is the sorted *place*, for the old column too: hosts have seen
// this for so long that it stays.
void CCommonListCtrl::ShowSortImage(int place, int image) {
    CHeaderCtrl* header = GetHeaderCtrl();
    if (!header) return;
    const bool hasRecord = m_nSortCol >= 0 && m_nSortCol < m_arrColumns.GetCount();
    const int alignment = hasRecord ? m_arrColumns.GetAt(m_nSortCol).iFormat : kFormatLeft;
    const bool checkBox = m_bHeaderCheckBox && place == 0;
    setHeaderImage(*header, place, alignment | (checkBox ? kHeaderCheckSortFormat : kHeaderSortFormat),
                   static_cast<HeaderImage>(image));
}

void CCommonListCtrl::AfterSort(bool touchesFirstColumn) {
    if (m_bHeaderCheckBox && touchesFirstColumn) SetHeaderCheckbox();
    CWnd* parent = GetParent();
    if (IsMarketWatch() && isLive(parent)) {
        parent->SendMessage(WM_LIST_ROWS_REORDERED, static_cast<WPARAM>(GetDlgCtrlID()), 0);
    }
}

// Boxes show only in a header that has the style for them; it stays for columns that are inserted later. The item keeps
// all else, its tick included.
void CCommonListCtrl::SetHeaderCheckbox() {
    CHeaderCtrl* header = GetHeaderCtrl();
    if (!header) return;
    header->ModifyStyle(0, HDS_CHECKBOXES);
    HDITEM item{};
    item.mask = HDI_FORMAT;
    if (!header->GetItem(0, &item)) return;
    item.fmt |= HDF_CHECKBOX;
    header->SetItem(0, &item);
    header->Invalidate();
}

void CCommonListCtrl::SetSortLock(bool locked) {
    m_bSortLocked = locked;
    const CString text = formatSortLock({locked, m_nLockSortColumn, m_nLockSortOrder});
    if (!writeListSetting(*this, kSortLockKey, text)) logToHost("Error while saving Lock profile");
}

void CCommonListCtrl::OnLockUnlockSortCheck() {
    if (!m_bSorted) {
        AfxMessageBox("sort the coloumn before locking");
        return;
    }
    SetSortLock(!m_bSortLocked);
}

void CCommonListCtrl::ReadSortLockInfo() {
    CString text;
    if (!readListSetting(*this, kSortLockKey, text)) return;
    const SortLock lock = parseSortLock(text);
    if (!lock.locked) return;
    m_bSortLocked = m_bSorted = 1;
    m_nLockSortColumn = lock.columnIndex;
    m_nLockSortOrder = lock.order;
}

// Once the user columns of the profile are there, so that a lock on one of them stands.
void CCommonListCtrl::DropSortLockOutsideColumns() {
    if (!m_bSortLocked || m_nLockSortColumn < m_arrColumns.GetCount()) return;
    m_bSortLocked = m_bSorted = 0;
    m_nLockSortColumn = -1;
    m_nLockSortOrder = 0;
}

void CCommonListCtrl::SortByLastColumnWithLock() {
    const int place = PlaceOfColumn(m_nLockSortColumn);
    if (!m_bSortLocked || place == -1) return;
    m_nSortCol = place;
    m_nSortOrder = m_nLockSortOrder;
    SortRows();
    ShowSortImage(place, m_nSortOrder == -1 ? kHeaderImageRising : kHeaderImageFalling);
    AfterSort(place == 0);
}

void CCommonListCtrl::ClearSortIndicators() {
    if (m_bSortLocked || !m_bLockSortEnabled || !m_bSorted || m_nSortCol == -1) return;
    if (CHeaderCtrl* header = GetHeaderCtrl()) {
        HDITEM item{};
        item.mask = HDI_FORMAT;
        item.fmt = HDF_STRING;
        header->SetItem(m_nSortCol, &item);
    }
    m_bSorted = 0;
    m_nLockSortColumn = -1;
    m_nLockSortOrder = 0;
}

// Ctrl+0 sorts again what is sorted by several columns or locked. The key goes on in any case.
void CCommonListCtrl::OnListKey(WPARAM key) {
    const bool zero = key == '0' || key == VK_NUMPAD0;
    if (!zero || ::GetKeyState(VK_CONTROL) >= 0) return;
    if (m_bMultiSortActive) {
        SortListOnMultiplelevel();
    } else if (m_bSortLocked) {
        SortByLastColumnWithLock();
    }
}
