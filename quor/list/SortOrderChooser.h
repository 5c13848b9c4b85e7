// What a list asks of the dialog in which the user picks the columns of a multi-column sort. Public: hosts give their
// lists one (CCommonListCtrl::SetSortOrderChooser).
#pragma once

#include "quor/foundation/core/ColumnRecords.h"

#include <vector>

namespace quor::list {

// The dialog's list of chosen headings. A list without such a dialog has none of these.
class SortOrderChooser {
public:
    virtual ~SortOrderChooser() = default;

    // The chosen headings, first level first.
    virtual std::vector<CString> chosenNames() const = 0;
    // The heading's column was hidden; a heading that is not there is ignored.
    virtual void removeName(const CString& heading) = 0;
    // The list has no levels.
    virtual void clear() = 0;
};

// For lists whose host shows no dialog: the names are those of a list's levels (CCommonListCtrl::m_arrSortOrder). The
// array is borrowed; the list itself keeps it up to date, so there is nothing to remove.
class LevelsAsChooser : public SortOrderChooser {
public:
    explicit LevelsAsChooser(const CArray<ColumnSortInfo, ColumnSortInfo>& levels) : m_levels(levels) {}

    std::vector<CString> chosenNames() const override {
        std::vector<CString> names;
        for (INT_PTR i = 0; i < m_levels.GetCount(); ++i) names.push_back(m_levels.GetAt(i).csColumnName);
        return names;
    }
    void removeName(const CString&) override {}
    void clear() override {}

private:
    const CArray<ColumnSortInfo, ColumnSortInfo>& m_levels;
};

}  // namespace quor::list
