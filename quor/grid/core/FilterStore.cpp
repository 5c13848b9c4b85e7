// A text is compiled when it is asked for, not when it is set: setters run one by one before a rebuild, and the match
// mode is set behind them.
#include "quor/grid/core/FilterStore.h"

namespace quor::grid {

int FilterStore::find(int columnIndex) const {
    for (int i = 0; i < count(); ++i)
        if (columnAt(i) == columnIndex) return i;
    return -1;
}

void FilterStore::set(int columnIndex, const CString& text) {
    const int found = find(columnIndex);
    m_compiled.resize(static_cast<std::size_t>(count()));
    if (found == -1) {
        if (text.IsEmpty()) return;
        FilteredCols.Add(columnIndex);
        FilterStrings.Add(text);
    } else if (text.IsEmpty()) {
        removeAt(found);
    } else if (FilterStrings.GetAt(found) != text) {
        FilterStrings.SetAt(found, text);
        m_compiled[static_cast<std::size_t>(found)].reset();
    }
}

void FilterStore::removeAt(int i) {
    m_compiled.resize(static_cast<std::size_t>(count()));
    m_compiled.erase(m_compiled.begin() + i);
    FilteredCols.RemoveAt(i);
    FilterStrings.RemoveAt(i);
}

bool FilterStore::moveColumns(const std::vector<int>& moved, int columnCount) {
    const int former = count();
    for (int i = former - 1; i >= 0; --i) {
        int number = columnAt(i);
        const bool hadColumn = number >= 0 && static_cast<std::size_t>(number) < moved.size();
        if (hadColumn) number = moved[static_cast<std::size_t>(number)];
        const bool hasColumn = number >= 0 && number < columnCount;
        if (hadColumn != hasColumn) {
            removeAt(i);
        } else {
            FilteredCols.SetAt(i, number);
        }
    }
    return count() != former;
}

void FilterStore::clear() {
    FilteredCols.RemoveAll();
    FilterStrings.RemoveAll();
    m_compiled.clear();
}

const FilterTokens& FilterStore::compile(std::size_t index, bool exact) {
    if (m_compiledExact != exact) m_compiled.clear();
    m_compiledExact = exact;
    m_compiled.resize(static_cast<std::size_t>(count()));
    const CString& text = textAt(static_cast<int>(index));
    return m_compiled[index].emplace(std::string_view(text.GetString(), static_cast<std::size_t>(text.GetLength())),
                                     exact);
}

}  // namespace quor::grid
