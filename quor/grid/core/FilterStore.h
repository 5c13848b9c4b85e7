// FilterStore: the filters of one grid, a text for each filtered column, in the order in which they were first set.
//
// Knows no rows: whoever walks them asks per column. Each text is compiled once per match mode, when it is first asked
// for. A column number is kept as it is given; nothing checks its range.
#pragma once

#include "quor/grid/core/FilterTokens.h"

#include <functional>
#include <optional>

namespace quor::grid {

class FilterStore {
public:
    // An empty text removes the column's filter, if there is one; another text replaces it, or is appended.
    void set(int columnIndex, const CString& text);
    void clear();
    // Columns were numbered anew: `moved` has the new columnIndex for each former one, -1 for one that went. A filter
    // ends with its column; one of no column ends if a column of the new set has its number. Whether one ended.
    bool moveColumns(const std::vector<int>& moved, int columnCount);

    int count() const { return static_cast<int>(FilteredCols.GetSize()); }
    bool isEmpty() const { return FilteredCols.GetSize() == 0; }
    // The two arrays have the same size. Only a fault of a derived list can break that.
    bool isConsistent() const { return FilteredCols.GetSize() == FilterStrings.GetSize(); }

    int columnAt(int i) const { return FilteredCols.GetAt(i); }
    const CString& textAt(int i) const { return FilterStrings.GetAt(i); }
    const CArray<int, int>& columns() const { return FilteredCols; }
    const CArray<CString, CString>& texts() const { return FilterStrings; }

    // The compiled text. The reference holds until the next set or clear.
    const FilterTokens& tokensAt(int i, bool exact) {
        const auto index = static_cast<std::size_t>(i);
        const bool isThere = m_compiledExact == exact && index < m_compiled.size() && m_compiled[index];
        return isThere ? *m_compiled[index] : compile(index, exact);
    }

    // Where a text of this store stands: by its address, since it is asked with every row. -1 for any other, an equal
    // one too.
    int indexOf(const CString& own) const {
        const CString* const first = FilterStrings.GetData();
        const bool isOwn = first && !std::less<>()(&own, first) && std::less<>()(&own, first + FilterStrings.GetSize());
        return isOwn ? static_cast<int>(&own - first) : -1;
    }

protected:
    CArray<int, int> FilteredCols;
    CArray<CString, CString> FilterStrings;

private:
    int find(int columnIndex) const;
    void removeAt(int i);
    const FilterTokens& compile(std::size_t index, bool exact);

    // By position, as the two arrays; empty until asked for.
    std::vector<std::optional<FilterTokens>> m_compiled;
    bool m_compiledExact = false;
};

}  // namespace quor::grid
