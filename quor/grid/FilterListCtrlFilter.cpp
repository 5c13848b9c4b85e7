// Which rows are displayed: the store's setters, the test of one row, the rebuild of all.
//
// A setter writes the header's field and lets the header's own notification bring the text into the store, so that
// there is one road for the user and the program. Columns that have no field go into the store directly.
#include "quor/grid/FilterListCtrlInternal.h"

using namespace quor::grid;

namespace {

// The answer for a cell of the row test: its text is emptied, not freed, between rows.
class CellScope {
public:
    // A host's callback may come back into the grid: that test then finds the scratch taken and allocates its own.
    CellScope(CString& scratch, const RowWalk& walk)
        : m_scratch(scratch), m_walk(walk), answer{std::move(scratch), {}, -1} {}
    CellScope(const CellScope&) = delete;
    CellScope& operator=(const CellScope&) = delete;
    ~CellScope() {
        if (!m_walk.gone()) m_scratch = std::move(answer.text);
    }

private:
    CString& m_scratch;
    const RowWalk& m_walk;

public:
    CellAnswer answer;
};

}  // namespace

// ---- The test of a row

// A walk asks with a text of the store, which has it compiled.
inline int CFilterListCtrl::IsItemMatchingFilter(CString& cell, CString& filter) {
    const std::string_view text(cell.GetString(), static_cast<std::size_t>(cell.GetLength()));
    const int own = m_parts->filters.indexOf(filter);
    if (own != -1) return m_parts->filters.tokensAt(own, matchesExactly()).passes(text);
    return FilterTokens({filter.GetString(), static_cast<std::size_t>(filter.GetLength())}, matchesExactly())
        .passes(text);
}

// The host may end the grid, change its filters or free the row while it gives a text.
bool CFilterListCtrl::Parts::passesFilters(DWORD_PTR data, const RowWalk& walk) {
    CellScope cell(m_cellText, walk);
    for (int i = 0; i < filters.count(); ++i) {
        readCell(data, filters.columnAt(i), cell.answer);
        if (walk.gone() || (walk.disturbed() && !rows.holdsData(data))) return false;
        if (i >= filters.count()) break;
        auto& filter = const_cast<CString&>(filters.textAt(i));  // older than const; the text is only read
        if (!m_list.IsItemMatchingFilter(cell.answer.text, filter)) return false;
    }
    return true;
}

int CFilterListCtrl::CheckForFilteredData(DWORD_PTR data) {
    if (m_parts->filters.isEmpty() || !hasTextCallback()) return 1;
    const RowWalk walk(m_parts->rows);
    return m_parts->passesFilters(data, walk);
}

// Asked inside a walk of the rows.
RowTest CFilterListCtrl::Parts::rowTest() {
    if (filters.isEmpty()) return {};
    return {[](const void* context, RowData data) {
                auto& parts = *const_cast<Parts*>(static_cast<const Parts*>(context));
                return parts.passesFilters(data, *parts.rows.innermostWalk());
            },
            this};
}

int CFilterListCtrl::GetFilterCount() const { return m_parts->filters.count(); }

// Nothing is painted between the first line and the last, so redrawing is not frozen for it: that alone would cost the
// control more than the walk. It is switched on at the end where somebody left it off.
void CFilterListCtrl::PopulateList() {
    if (!hasTextCallback() || !UseFilter || SubclassHeader() != 0 || m_header.GetItemCount() <= 0) return;
    LiveRows& rows = m_parts->rows;
    NativeList& native = m_parts->native;
    if (!m_parts->filters.isConsistent()) {
        native.setRedraw(false);
        rows.clearDisplay();
        AfxMessageBox("Error occured while filtering");
        return;
    }
    RowWalk walk(rows);
    const bool locked = m_bLockSortEnabled && m_bSorted && m_bSortLocked;
    if (locked || SortOnCheckedFlag) walk.expectMore();
    rows.rebuild(walk, m_parts->rowTest());
    if (walk.gone()) return;
    MatchExact = 0;
    const auto goOn = [&](auto sort) {
        m_parts->rebuilding = &walk;
        (this->*sort)();
        if (!walk.gone()) m_parts->rebuilding = nullptr;
    };
    if (SortOnCheckedFlag) goOn(&CFilterListCtrl::SortOnChecked);
    if (walk.gone()) return;
    const bool sorts = locked && placeOf(m_nLockSortColumn) >= 0 && GetDisplayCount() != 0;
    if (locked) goOn(&CFilterListCtrl::SortByLastColumnWithLock);
    if (walk.gone()) return;
    rows.tellDisplayCount();
    if (native.redrawIsOff()) native.setRedraw(true);
    if (!sorts) native.invalidateAll();  // a sort that runs invalidates by itself
    walk.finish();
}

// ---- The store

int CFilterListCtrl::placeOf(int columnIndex) const {
    return columnIndex >= 0 && columnIndex < m_arrOrder.GetSize() ? m_arrOrder.GetAt(columnIndex) : -1;
}

void CFilterListCtrl::GetFileteredCols(CArray<int, int>& columns, CArray<CString, CString>& texts) {
    columns.Copy(m_parts->filters.columns());
    texts.Copy(m_parts->filters.texts());
}

int CFilterListCtrl::SetMapColumnFilter(int columnIndex, CString& text, int exact) {
    const int place = placeOf(columnIndex);
    MatchExact = static_cast<BYTE>(exact);
    if (place >= 0) return SetVisibleColumnFilter(place, text, exact);
    AddToFilteredCols(columnIndex, text);
    CString none;
    return SetVisibleColumnFilter(0, none, exact);
}

// All notifications but the last are swallowed. Where the last column has no field, the one at place 0 is written once
// more with the text it just got; without any column it is emptied, so that the owner hears of the removal.
int CFilterListCtrl::SetMapColumnFilter(CArray<int, int>* columns, CArray<CString, CString>* texts, int exact) {
    const INT_PTR count = columns->GetSize();
    if (texts->GetSize() != count) return 0;
    for (INT_PTR i = 0; i < count; ++i)
        if (columns->GetAt(i) < 0) return 0;
    const Presence presence(*this);
    SetDoFilter(0);
    RemoveAllFilters();
    if (presence.gone()) return 0;
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
        if (presence.gone()) return 0;
    }
    SetDoFilter(1);
    if (place < 0) SetVisibleColumnFilter(0, textAtFirstPlace, 0);
    return presence.gone() ? 0 : 1;
}

int CFilterListCtrl::RemoveMapColumnFilter(int columnIndex) {
    const int place = placeOf(columnIndex);
    const Presence presence(*this);
    CString text;
    if (place < 0) {
        AddToFilteredCols(-1, text);
    } else if (GetHeaderText(place, text) != 0) {
        m_header.ClearFilter(place);
    }
    return presence.gone() ? 0 : 1;
}

int CFilterListCtrl::RemoveAllFilters() {
    const Presence presence(*this);
    ResetFilterStore();
    return presence.gone() ? 0 : 1;
}

// Which columns have a filter is what tints the header.
void CFilterListCtrl::AddToFilteredCols(int columnIndex, const CString& text) {
    const int former = m_parts->filters.count();
    m_parts->filters.set(columnIndex, text);
    if (m_parts->filters.count() != former && m_header.m_hWnd) m_header.Invalidate(FALSE);
}

void CFilterListCtrl::ResetFilterStore() {
    if (!m_parts->filters.isEmpty() && m_header.m_hWnd) m_header.Invalidate(FALSE);
    m_parts->filters.clear();
    if (m_header.m_hWnd) m_header.ClearFilter(-1);
}

void CFilterListCtrl::OnOptionResetFilter() { RemoveAllFilters(); }
