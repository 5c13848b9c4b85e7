#include "quor/lists/core/WatchColumns.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>

using namespace quor::watch;

namespace {

constexpr int kRecordWidth = 70;

std::vector<sQuorColInfo> builtInColumns() {
    std::vector<sQuorColInfo> columns(kMarketWatchColumns);
    int number = 0;
    for (sQuorColInfo& column : columns) {
        CString name;
        name.Format("c%d", number++);
        setColumnName(column, name);
        column.iWidth = kRecordWidth;
    }
    return columns;
}

// A user column that stands alone at its place stays there, in its width, whatever else comes back to the screen. (Not
// asked where columns are gone: the places behind them close up, and may meet.)
void checkStanding(const WatchArrays& arrays, const WatchPlan& plan) {
    const auto count = static_cast<int>(plan.arrays.order.size());
    if (static_cast<int>(arrays.order.size()) > count || arrays.widths.size() < arrays.order.size()) return;
    for (std::size_t i = kMarketWatchColumns; i < arrays.order.size(); ++i) {
        const int place = arrays.order[i], width = arrays.widths[i];
        if (place < 0 || place >= count || std::count(arrays.order.begin(), arrays.order.end(), place) > 1) continue;
        require(plan.arrays.order[i] != -1, "a user column lost its place");
        require(plan.arrays.widths[i] == (width ? width : kRecordWidth), "a user column lost its width");
    }
}

// Shows the arrays with `user` user columns and checks what comes on screen: places from 0 up, each once.
void checkPlan(const WatchArrays& arrays, int user) {
    WatchPlanInput input;
    input.arrays = arrays;
    input.recordWidths.assign(static_cast<std::size_t>(kMarketWatchColumns + user), kRecordWidth);
    input.lastColumn = kMarketWatchColumns - 1 + user;
    for (const bool gap : {false, true}) {
        for (const bool places : {true, false}) {
            input.placesUserColumns = places;
            const WatchPlan plan = planWatchColumns(input);
            require(plan.arrays.order.size() == input.recordWidths.size(), "arrays of another length");
            require(plan.arrays.widths.size() == plan.arrays.order.size(), "arrays of different length");
            if (!gap) checkStanding(arrays, plan);
            std::size_t shown = 0;
            for (const int place : plan.arrays.order) shown += place != -1;
            require(shown == plan.bySequence.size() && shown == plan.visible.size(), "shown columns out of step");
            for (std::size_t place = 0; place < shown; ++place)
                require(plan.arrays.order[static_cast<std::size_t>(plan.bySequence[place])] == static_cast<int>(place),
                        "a column at another place");
            require(!gap || plan.arrays.order[kMarketWatchColumns] == -1, "a column that is not there is shown");
        }
        if (user == 0) return;
        input.recordWidths[kMarketWatchColumns] = kNoColumn;
        --input.lastColumn;
    }
}

}  // namespace

void fuzzWatchProfile(const std::uint8_t* data, std::size_t size) {
    WatchArrays arrays;
    for (std::size_t i = 0; i < size % 130; ++i)
        arrays.order.push_back(static_cast<int>((data[i] * 37 + i) % 140) - 10);
    arrays.widths.resize(size * 7 % 130);
    checkPlan(arrays, 2);
    const auto profile = parseWatchProfile(textOf(data, size));
    if (!placeByProfile(profile, kMarketWatchColumns + 2, arrays)) return;
    require(arrays.order.size() <= 4096 && arrays.order.size() == arrays.widths.size(), "arrays beyond the cap");
    checkPlan(arrays, 2);
}

void fuzzWatchUserColumns(const std::uint8_t* data, std::size_t size) {
    const auto columns = parseWatchUserColumns(textOf(data, size));
    const CString written = formatWatchUserColumns(columns);
    require(formatWatchUserColumns(parseWatchUserColumns(written)) == written, "user columns read back otherwise");
    for (const WatchColumn& column : parseWatchUserColumns(written))
        require(isWatchUserColumn(column), "a built-in column among the user columns");
}

void fuzzWatchExport(const std::uint8_t* data, std::size_t size) {
    static const std::vector<sQuorColInfo> builtIn = builtInColumns();
    const WatchImport import = importWatch(textOf(data, size), builtIn);
    const std::size_t count = builtIn.size() + import.userColumns.size();
    require(import.arrays.order.size() == count && import.arrays.widths.size() == count, "arrays out of step");
    for (const int place : import.arrays.order) require(place >= -1 && place < 4096, "a place beyond the cap");
    checkPlan(import.arrays, static_cast<int>(import.userColumns.size()));
}
