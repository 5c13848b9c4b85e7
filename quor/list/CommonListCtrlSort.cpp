// Sorting by one column: a click on the header, the same from code, and the lock that keeps a sort.
//
// A sort reads every row's text once into keys (core/RowSort.h) and settles where each row ends. The control then moves
// its items by comparing these positions: its own sort sees a plain order of numbers, whatever the texts compare to.
#include "quor/foundation/HostServices.h"
#include "quor/foundation/Messages.h"
#include "quor/list/CommonListCtrlParts.h"
#include "quor/list/ListSettings.h"
#include "quor/list/core/ColumnImport.h"
#include "quor/list/core/SortTexts.h"

#include <algorithm>
#include <utility>

using namespace quor::list;
using namespace quor::foundation;

namespace {

constexpr const char* kSortLockKey = "SortLockInfo";

// Where each row ends, by its item data, which is what the control's comparison is given. An open hash table at most
// half full: the control asks some 25 times per row.
class PositionOfData {
public:
    // False if two rows have the same data; then the table is of no use.
    bool fill(const std::vector<DWORD_PTR>& data, const std::vector<std::uint32_t>& positions) {
        m_bits = 1;
        while ((std::size_t{1} << m_bits) < 2 * positions.size()) ++m_bits;
        m_slots.assign(std::size_t{1} << m_bits, {0, kFree});
        for (std::size_t row = 0; row < positions.size(); ++row) {
            Slot& slot = m_slots[find(data[row])];
            if (slot.position != kFree) return false;
            slot = {data[row], positions[row]};
        }
        return true;
    }
    // Data that no row had are behind all rows.
    std::uint32_t of(DWORD_PTR data) const { return m_slots[find(data)].position; }

private:
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;
    struct Slot {
        DWORD_PTR data;
        std::uint32_t position;
    };
    std::size_t find(DWORD_PTR data) const {
        constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;
        auto slot = static_cast<std::size_t>((data * kGoldenRatio) >> (64 - m_bits));
        while (m_slots[slot].position != kFree && m_slots[slot].data != data) slot = (slot + 1) & (m_slots.size() - 1);
        return slot;
    }

    int m_bits = 1;
    std::vector<Slot> m_slots;
};

int CALLBACK comparePositions(LPARAM data1, LPARAM data2, LPARAM argument) {
    const auto& positions = *reinterpret_cast<const PositionOfData*>(argument);
    const std::uint32_t first = positions.of(static_cast<DWORD_PTR>(data1));
    const std::uint32_t second = positions.of(static_cast<DWORD_PTR>(data2));
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
    NMLISTVIEW click = headerClick(*this, place);
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
    return owner.m_parts->prepareSort({static_cast<int>(row1), static_cast<int>(row2)}).compare(0, 1);
}

RowSort CCommonListCtrl::Parts::prepareSort(const std::vector<int>& rows) {
    RowSort sort(rows.size());
    const auto addLevel = [&](int place, SortKeys keys) {
        keys.reserve(rows.size());
        if (keys.readsTexts()) {
            for (const int row : rows) keys.add(m_list.GetItemText(row, place));
        }
        sort.addLevel(std::move(keys));
    };
    if (!m_list.m_bMultiSortActive) {
        addLevel(m_list.m_nSortCol, SortKeys(m_list.m_nSortDataType, m_list.m_nSortOrder, SortRule::singleColumn));
        return sort;
    }
    for (INT_PTR i = 0; i < m_list.m_arrSortOrder.GetCount(); ++i) {
        const ColumnSortInfo& level = m_list.m_arrSortOrder.GetAt(i);
        const int place = m_list.PlaceOfColumn(level.iColumnIndex);
        if (place < 0 || level.iColumnIndex >= m_list.m_arrColumns.GetCount()) continue;
        const int dataType = m_list.m_arrColumns.GetAt(level.iColumnIndex).iDataType;
        addLevel(place, SortKeys(dataType, level.iSortOrder, SortRule::levels));
    }
    return sort;
}

// Rows are told apart by their data. Only where two rows have the same do the items hold row numbers meanwhile: each
// change of an item's data costs two notifications of the owner, together more than all the rest of a sort.
void CCommonListCtrl::SortRows() {
    TakeSortDataType();
    if (!RowsAreNative()) return;
    const RedrawScope frozen(*this);
    const std::vector<DWORD_PTR> data = SaveRowData();
    std::vector<int> rows(data.size());
    for (std::size_t row = 0; row < rows.size(); ++row) rows[row] = static_cast<int>(row);
    const std::vector<std::uint32_t> positions = m_parts->prepareSort(rows).positions();
    PositionOfData table;
    const bool distinct = table.fill(data, positions);
    if (distinct) {
        m_arrSavedItemData.RemoveAll();
    } else {
        table.fill(NumberRows(), positions);
    }
    CListCtrl::SortItems(comparePositions, reinterpret_cast<DWORD_PTR>(&table));
    if (!distinct) ReleaseRowData();
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

// From here GetItemData answers from m_arrSavedItemData. Returns the same data.
std::vector<DWORD_PTR> CCommonListCtrl::SaveRowData() {
    std::vector<DWORD_PTR> data(static_cast<std::size_t>(CListCtrl::GetItemCount()));
    for (std::size_t row = 0; row < data.size(); ++row) data[row] = CListCtrl::GetItemData(static_cast<int>(row));
    m_arrSavedItemData.SetSize(static_cast<INT_PTR>(data.size()));
    std::copy(data.begin(), data.end(), m_arrSavedItemData.GetData());
    return data;
}

// Gives each item its row number as data, until ReleaseRowData. Returns the numbers.
std::vector<DWORD_PTR> CCommonListCtrl::NumberRows() {
    std::vector<DWORD_PTR> numbers(static_cast<std::size_t>(m_arrSavedItemData.GetCount()));
    for (std::size_t row = 0; row < numbers.size(); ++row) {
        numbers[row] = row;
        CListCtrl::SetItemData(static_cast<int>(row), row);
    }
    return numbers;
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
    if (!writeListSetting(m_csListName, kSortLockKey, text)) logToHost("Error while saving Lock profile");
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
    if (!readListSetting(m_csListName, kSortLockKey, text)) return;
    const SortLock lock = parseSortLock(text);
    if (!lock.locked) return;
    m_bSortLocked = m_bSorted = 1;
    m_nLockSortColumn = lock.columnIndex;
    m_nLockSortOrder = lock.order;
}

// Once the user columns of the profile are there, so that a lock on one of them stands.
void CCommonListCtrl::DropSortLockOutsideColumns() {
    if (!m_bSortLocked || m_nLockSortColumn < m_arrColumns.GetCount()) return;
    EndSortLock();
}

void CCommonListCtrl::EndSortLock() {
    m_bSortLocked = m_bSorted = 0;
    m_nLockSortColumn = -1;
    m_nLockSortOrder = 0;
}

void CCommonListCtrl::SaveMovedSortLock() {
    if (!m_parts->sortLockMoved) return;
    m_parts->sortLockMoved = false;
    SetSortLock(m_bSortLocked != 0);
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
