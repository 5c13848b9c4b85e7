// What an exchange text does to the columns of a list: matched by heading, so that it survives a change of indices.
//
// The set starts as all built-in columns in array order. Each built-in entry of the text gives its place and width to
// the column of its heading, tried at the entry's own index first; a heading that the list does not have is dropped. If
// the text has the marker of user columns, built-in columns that it does not name are hidden with width 100; without it
// they keep the place that equals their index, even one that the text gave to another column. User columns are appended
// behind the built-in ones, whatever their index in the text.
//
// Of two columns at one place the later one is shown, and both keep that place in the order array; a place that nobody
// has shows column 0 once, and nothing after that. So a text that gives places twice can leave a column with a place at
// which another stands: what lists have always made of such a text. A text without double places gives each place once.
//
// A text does not fit if an index lies outside 0..4095 or a place outside -1..4095, if it has more user columns than
// there are indices, or if it places no column at all: the set then stays as it starts, without user columns.
#pragma once

#include "quor/list/core/ColumnProfileText.h"
#include "quor/list/core/ColumnSetPlan.h"

namespace quor::list {

// The built-in columns of the list, by columnIndex.
struct ImportColumn {
    CString heading;
    int width = 0;
};

// The columnIndex that carries the heading: `index` if it does, else the first of all; -1 if none, or if `index` is no
// column. `headingAt` gives the heading of a columnIndex.
template <class HeadingAt>
int findHeading(int columnCount, HeadingAt headingAt, const CString& heading, int index) {
    if (index < 0 || index >= columnCount) return -1;
    if (heading == headingAt(index)) return index;
    for (int i = 0; i < columnCount; ++i) {
        if (heading == headingAt(i)) return i;
    }
    return -1;
}

// The set as it is without a text.
ColumnSetPlan planBuiltInColumns(const std::vector<ImportColumn>& columns);

// The set that the text makes. In the plan, a visible record holds the column's place in the order array, which is not
// its position in `inserts` where the text has gaps.
ColumnSetPlan planColumnImport(const std::vector<ImportColumn>& columns, const ExchangeProfile& profile);

}  // namespace quor::list
