// Which rows are displayed: the store's setters, the test of one row, the rebuild of all.
//
// A setter writes the header's field and lets the header's own notification bring the text into the store, so that
// there is one road for the user and the program. Columns that have no field go into the store directly.
#include "src/grid/FilterListCtrl.h"

namespace {

// The text of a cell for the row test: emptied, not freed, between rows.
class CellScope {
public:
    // A host's callback may come back into the grid: that test then finds the scratch taken and allocates its own.
    explicit CellScope(CString& scratch) : m_scratch(scratch), text(std::move(scratch)) {}
    CellScope(const CellScope&) = delete;
    CellScope& operator=(const CellScope&) = delete;
    ~CellScope() { m_scratch = std::move(text); }

private:
    CString& m_scratch;

public:
    CString text;
};

}  // namespace

// ---- The test of a row

int CFilterListCtrl::IsItemMatchingFilter(CString& cell, CString& filter) {
    const auto length = static_cast<std::size_t>(filter.GetLength());
    return FilterTokens({filter.GetString(), length}, matchesExactly()).passes(cell);
}

bool CFilterListCtrl::passesFilters(DWORD_PTR data, CString& cell) {
    for (int i = 0; i < m_filters.count(); ++i) {
        readCell(data, m_filters.columnAt(i), cell);
        if (!m_filters.tokensAt(i, matchesExactly()).passes(cell)) return false;
    }
    return true;
}

int CFilterListCtrl::CheckForFilteredData(DWORD_PTR data) {
    if (m_filters.isEmpty() || !hasTextCallback()) return 1;
    CellScope cell(m_cellText);
    return passesFilters(data, cell.text);
}

RowTest CFilterListCtrl::rowTest() {
    if (m_filters.isEmpty()) return {};
    return {[](const void* grid, RowData data) {
                return const_cast<CFilterListCtrl*>(static_cast<const CFilterListCtrl*>(grid))
                           ->CheckForFilteredData(data) != 0;
            },
            this};
}

// Nothing is painted between the first line and the last, so redrawing is not frozen for it: that alone would cost the
// control more than the walk. It is switched on at the end where somebody left it off.
void CFilterListCtrl::PopulateList() {
    if (!hasTextCallback() || !UseFilter || SubclassHeader() != 0 || m_header.GetItemCount() <= 0) return;
    if (!m_filters.isConsistent()) {
        m_native.setRedraw(false);
        m_rows.clearDisplay();
        AfxMessageBox("Error occured while filtering");
        return;
    }
    m_rows.rebuild(rowTest());
    MatchExact = 0;
    if (SortOnCheckedFlag) SortOnChecked();
    const bool locked = m_bLockSortEnabled && m_bSorted && m_bSortLocked;
    const bool sorts = locked && placeOf(m_nLockSortColumn) >= 0 && GetDisplayCount() != 0 && !m_sorting;
    if (locked) SortByLastColumnWithLock();
    m_native.setCount(m_rows.displayCount());
    if (m_native.redrawIsOff()) m_native.setRedraw(true);
    if (!sorts) m_native.invalidateAll();  // a sort that runs invalidates by itself
}

// ---- The store

int CFilterListCtrl::placeOf(int columnIndex) const {
    return columnIndex >= 0 && columnIndex < m_arrOrder.GetSize() ? m_arrOrder.GetAt(columnIndex) : -1;
}

void CFilterListCtrl::GetFileteredCols(CArray<int, int>& columns, CArray<CString, CString>& texts) {
    columns.Copy(m_filters.columns());
    texts.Copy(m_filters.texts());
}

int CFilterListCtrl::SetMapColumnFilter(int columnIndex, CString& text, int exact) {
    const int place = placeOf(columnIndex);
    MatchExact = static_cast<BYTE>(exact);
    if (place >= 0) return SetVisibleColumnFilter(place, text, exact), 1;
    AddToFilteredCols(columnIndex, text);
    CString none;
    SetVisibleColumnFilter(0, none, exact);
    return 1;
}

// All notifications but the last are swallowed. Where the last column has no field, the one at place 0 is written once
// more with the text it just got; without any column it is emptied, so that the owner hears of the removal.
int CFilterListCtrl::SetMapColumnFilter(CArray<int, int>* columns, CArray<CString, CString>* texts, int exact) {
    const INT_PTR count = columns->GetSize();
    if (texts->GetSize() != count) return 0;
    for (INT_PTR i = 0; i < count; ++i)
        if (columns->GetAt(i) < 0) return 0;
    SetDoFilter(0);
    RemoveAllFilters();
    MatchExact = static_cast<BYTE>(exact);
    CString textAtFirstPlace;
    int place = -1;
    for (INT_PTR i = 0; i < count; ++i) {
        if (i + 1 == count) SetDoFilter(1);
        CString text = texts->GetAt(i);
        AddToFilteredCols(columns->GetAt(i), text);
        place = placeOf(columns->GetAt(i));
        if (place == 0) textAtFirstPlace = text;
        if (place >= 0) SetVisibleColumnFilter(place, text, exact);
    }
    SetDoFilter(1);
    if (place < 0) SetVisibleColumnFilter(0, textAtFirstPlace, 0);
    return 1;
}

int CFilterListCtrl::RemoveMapColumnFilter(int columnIndex) {
    const int place = placeOf(columnIndex);
    CString text;
    if (place < 0) {
        AddToFilteredCols(-1, text);
    } else if (GetHeaderText(place, text) != 0) {
        m_header.ClearFilter(place);
    }
    return 1;
}

int CFilterListCtrl::RemoveAllFilters() {
    ResetFilterStore();
    return 1;
}

// Which columns have a filter is what tints the header.
void CFilterListCtrl::AddToFilteredCols(int columnIndex, const CString& text) {
    const int former = m_filters.count();
    m_filters.set(columnIndex, text);
    if (m_filters.count() != former && m_header.m_hWnd) m_header.Invalidate(FALSE);
}

void CFilterListCtrl::ResetFilterStore() {
    if (!m_filters.isEmpty() && m_header.m_hWnd) m_header.Invalidate(FALSE);
    m_filters.clear();
    if (m_header.m_hWnd) m_header.ClearFilter(-1);
}

void CFilterListCtrl::OnOptionResetFilter() { RemoveAllFilters(); }
