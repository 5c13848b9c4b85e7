// How a stored column profile meets the columns that a list has now: the whole decision, without a window.
//
// Three roads, each falling back to the next when what it has does not fit:
//   profile   the user's saved columns. Built-in columns are known by their index alone; entries beyond them make user
//             columns. Columns that the profile does not speak of were added by the host since: they stay hidden.
//   defaults  the places of SetDefaultCols.
//   all       every column in array order.
// A profile does not fit if an index lies outside 0..4095 or a place outside -1..4095 (its user columns are forgotten
// then), if an index comes twice, if no column stands at place 0, or if its places leave a gap; default places are held
// to the last two rules too. All this is silent: the next save repairs the stored text. Of two columns at one place the
// later shows, and both keep that place in the order array.
//
// A gap is found as lists have always found it: places without a column read as column 0, and column 0 met for the
// second time is a gap. So a single gap in a profile that hides column 0 shows column 0 there, at order -1.
#pragma once

#include "quor/list/core/ColumnProfileText.h"

#include <utility>
#include <vector>

namespace quor::list {

// What a column gets that the profile does not know.
inline constexpr int kUnknownColumnWidth = 100;

// What a list knows before it inserts its columns.
struct ColumnSetInput {
    std::vector<int> widths;         // of each column of the array, so their count too
    std::vector<int> defaultPlaces;  // by columnIndex, -1 hidden; empty: no defaults
    bool hasProfile = false;
    std::vector<ProfileEntry> profile;  // in stored order; read only if hasProfile
};

// What to do. The arrays are indexed by columnIndex and of one length, that of the column array with its user columns.
struct ColumnSetPlan {
    // A column to insert; its place is its position in `inserts`.
    struct Insert {
        int columnIndex = 0;
        int width = 0;
        bool isUserColumn = false;  // its formula becomes the header tip
    };

    std::vector<int> order;  // places, -1 hidden
    std::vector<int> widths;
    std::vector<sVisibleColumn> visible;  // in place order
    std::vector<Insert> inserts;
    // Records to put into the column array at these indices, in this order, growing it.
    std::vector<std::pair<int, sQuorColInfo>> userColumns;
    int firstColumn = 0;          // columnIndex at place 0
    bool readsSortOrder = false;  // the "all" road leaves the stored sort levels unread
};

ColumnSetPlan planColumnSet(const ColumnSetInput& input);

}  // namespace quor::list
