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
        FilteredCols.RemoveAt(found);
        FilterStrings.RemoveAt(found);
        m_compiled.erase(m_compiled.begin() + found);
    } else if (FilterStrings.GetAt(found) != text) {
        FilterStrings.SetAt(found, text);
        m_compiled[static_cast<std::size_t>(found)].reset();
    }
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
