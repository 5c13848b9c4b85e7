// How stored texts meet the columns of a market watch: decisions without a window.
//
// A text does not fit if an index lies outside 0..4095 or a place outside -1..4095, or if a profile names a column
// twice or shows none; what it held is forgotten then. Of two columns at one place the later (higher index) stays and
// the other is hidden; gaps close up.
#pragma once

#include "quor/lists/core/WatchTexts.h"

#include <vector>

namespace quor::watch {

// By columnIndex and of one length.
struct WatchArrays {
    std::vector<int> order;   // place, -1 hidden
    std::vector<int> widths;  // 0: the record's own
};

// Whether every entry keeps to the range.
bool fitWatchColumns(const std::vector<WatchColumn>& columns);

// What a profile says of `columnCount` columns: the built-in ones that it does not name are hidden at width 100. False,
// with `arrays` left alone, if it does not fit.
bool placeByProfile(const std::vector<WatchColumn>& profile, int columnCount, WatchArrays& arrays);

inline constexpr int kNoColumn = -1;

// The columns as they come on screen. The arrays are as long as the records.
struct WatchPlan {
    WatchArrays arrays;
    std::vector<int> bySequence;          // columnIndex at each place
    std::vector<sVisibleColumn> visible;  // in place order
};

struct WatchPlanInput {
    WatchArrays arrays;             // as read; may be longer or shorter than the records
    std::vector<int> recordWidths;  // of each column record; kNoColumn for a number that no column has
    int lastColumn = 0;             // the highest columnIndex that the watches know
    // User columns that are hidden, new, or at a place that is taken go to the next free place, at width 80. Without
    // it they are taken as they are.
    bool placesUserColumns = true;
};

// Places beyond `lastColumn` are dropped, and those behind them close up: such a column is hidden.
WatchPlan planWatchColumns(const WatchPlanInput& input);

// What an exported watch says of the built-in columns, which it knows by name; `columns` are their records. User
// columns follow in the text's order from index 112 on, whatever number they carry. A text that does not fit leaves
// every built-in column at its index.
struct WatchImport {
    bool whole = false;  // the text fits and tells of all columns, user columns too
    WatchArrays arrays;
    std::vector<sQuorColInfo> userColumns;
};
WatchImport importWatch(const CString& text, const std::vector<sQuorColInfo>& builtIn);

// A user column's record, in a market watch's way: right aligned, decimal, display form first.
sQuorColInfo makeWatchUserColumn(const WatchColumn& column, int width);

}  // namespace quor::watch
