// The rules of a list's column arrays that need no window.
#pragma once

#include "quor/foundation/core/ColumnRecords.h"

#include <vector>

namespace quor::list {

// Whether an index belongs to no column: stored user columns may leave numbers out, and a list keeps their formulas'
// numbers, so it keeps the gaps.
bool isColumnGap(const sQuorColInfo& column);

// Turns the columns that show by default, given by columnIndex in screen order, into a place for each column of the
// array: its first position in `shown`, or -1.
std::vector<int> defaultPlaces(int columnCount, const int* shown, int shownCount);

// The columnIndex of the first record for a place, -1 if there is none.
int columnAtPlace(const CArray<sVisibleColumn, sVisibleColumn>& visible, int place);

// Where each column of `former` stands in `now`, both headings by columnIndex: at its own number if that has its
// heading still, else at the first of that heading that no other column has; -1 nowhere.
std::vector<int> movedColumns(const std::vector<CString>& former, const std::vector<CString>& now);

// The new number of a column; -1 for one that went, or never was.
int movedColumn(const std::vector<int>& moved, int columnIndex);

// Appends a record; one for place 0 goes to the front, so that it is always met first.
void addVisibleColumn(CArray<sVisibleColumn, sVisibleColumn>& visible, sVisibleColumn column);

// The arrays of a list that shows exactly the columns asked for.
struct ShownColumns {
    std::vector<int> order;               // by columnIndex
    std::vector<int> widths;              // by columnIndex, 0 for a hidden column
    std::vector<sVisibleColumn> visible;  // in columnIndex order
    std::vector<int> bySequence;          // columnIndex at each place
};

// `columns` and `widths` are by place. A column that is not in the array or was met before is passed over and the
// places behind it close up, so that the arrays are in step whatever comes in; a missing width is 0.
ShownColumns showColumns(int columnCount, const std::vector<int>& columns, const std::vector<int>& widths);

// Seeds a keyword array: appends all of `values` if the array is empty. True if it did.
template <class Array>
bool seedWhenEmpty(Array& array, const Array& values) {
    if (array.GetCount() != 0) return false;
    for (INT_PTR i = 0; i < values.GetCount(); ++i) array.Add(values.GetAt(i));
    return true;
}

}  // namespace quor::list
