// The columns belong to all watches and the places to one, and either may be older than the other. So the arrays are
// first brought to the length of what exists, then user columns without a place get one, and places close up last, when
// no later step can open a gap again.
#include "quor/lists/core/WatchColumns.h"

#include "quor/expression/core/CustomColumnText.h"
#include "quor/list/core/ColumnSetPlan.h"

#include <algorithm>
#include <cstddef>
#include <set>

namespace quor::watch {

namespace {

constexpr int kUserColumnWidth = 80;

std::size_t at(int index) { return static_cast<std::size_t>(index); }

bool fits(const WatchColumn& column) { return list::fitsColumnRange(column.columnIndex, column.place); }

void dropSurplus(WatchArrays& arrays, std::size_t count) {
    while (arrays.order.size() > count) {
        const int place = arrays.order.back();
        arrays.order.pop_back();
        if (place < 0) continue;
        for (int& other : arrays.order) other -= other > place ? 1 : 0;
    }
    arrays.widths.resize(std::min(arrays.widths.size(), count));
}

int nextFreePlace(const std::set<int>& taken, int place) {
    do ++place;
    while (taken.contains(place));
    return place;
}

// User columns that are not on screen come back at the end. One that stands where no earlier column does stays there:
// all places are taken before the first column moves.
void placeUserColumns(WatchArrays& arrays, const std::vector<int>& recordWidths, std::size_t known) {
    std::set<int> taken;
    std::vector<std::size_t> moving;
    for (std::size_t i = 0; i < arrays.order.size(); ++i) {
        const int place = arrays.order[i];
        const bool stands = place >= 0 && i < known && taken.insert(place).second;
        if (!stands && i >= at(kMarketWatchColumns) && recordWidths[i] != kNoColumn) moving.push_back(i);
    }
    for (const std::size_t i : moving) {
        arrays.order[i] = nextFreePlace(taken, arrays.order[i]);
        arrays.widths[i] = kUserColumnWidth;
        taken.insert(arrays.order[i]);
    }
}

// The order array's places, closed up; hides what lost its place.
std::vector<int> closeUp(std::vector<int>& order) {
    std::vector<int> columnAt(order.size(), -1);
    for (std::size_t i = 0; i < order.size(); ++i)
        if (order[i] >= 0 && at(order[i]) < order.size()) columnAt[at(order[i])] = static_cast<int>(i);
    std::erase(columnAt, -1);
    std::fill(order.begin(), order.end(), -1);
    for (std::size_t place = 0; place < columnAt.size(); ++place) order[at(columnAt[place])] = static_cast<int>(place);
    return columnAt;
}

// The column of a name: the one at the stored index, else the first.
int columnNamed(const std::vector<sQuorColInfo>& columns, const WatchColumn& stored) {
    const auto matches = [&](const sQuorColInfo& column) { return stored.name == column.szColumnName; };
    if (at(stored.columnIndex) < columns.size() && matches(columns[at(stored.columnIndex)])) return stored.columnIndex;
    const auto found = std::find_if(columns.begin(), columns.end(), matches);
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

}  // namespace

bool fitWatchColumns(const std::vector<WatchColumn>& columns) {
    return std::all_of(columns.begin(), columns.end(), fits);
}

bool placeByProfile(const std::vector<WatchColumn>& profile, int columnCount, WatchArrays& arrays) {
    if (!fitWatchColumns(profile)) return false;
    WatchArrays read;
    std::set<int> named;
    bool shows = false;
    for (const WatchColumn& column : profile) {
        if (!named.insert(column.columnIndex).second) return false;
        if (at(column.columnIndex) >= read.order.size()) {
            read.order.resize(at(column.columnIndex) + 1, -1);
            read.widths.resize(at(column.columnIndex) + 1, list::kUnknownColumnWidth);
        }
        read.order[at(column.columnIndex)] = column.place;
        read.widths[at(column.columnIndex)] = column.width;
        shows = shows || (column.place >= 0 && column.columnIndex < columnCount);
    }
    if (!shows) return false;
    arrays = read;
    return true;
}

WatchPlan planWatchColumns(const WatchPlanInput& input) {
    WatchPlan plan;
    WatchArrays& arrays = plan.arrays;
    arrays = input.arrays;
    const std::size_t count = input.recordWidths.size();
    dropSurplus(arrays, std::min(at(input.lastColumn) + 1, count));
    const std::size_t known = arrays.order.size();
    arrays.order.resize(count, -1);
    arrays.widths.resize(count, list::kUnknownColumnWidth);
    for (std::size_t i = 0; i < count; ++i)
        if (input.recordWidths[i] == kNoColumn) arrays.order[i] = -1;
    if (input.placesUserColumns) placeUserColumns(arrays, input.recordWidths, known);
    plan.bySequence = closeUp(arrays.order);
    for (const int column : plan.bySequence) {
        int& width = arrays.widths[at(column)];
        if (width == 0) width = input.recordWidths[at(column)];
        plan.visible.emplace_back(arrays.order[at(column)], column);
    }
    return plan;
}

WatchImport importWatch(const CString& text, const std::vector<sQuorColInfo>& builtIn) {
    WatchImport made;
    for (const sQuorColInfo& column : builtIn) {
        made.arrays.order.push_back(static_cast<int>(made.arrays.order.size()));
        made.arrays.widths.push_back(column.iWidth);
    }
    const WatchExport stored = parseWatchExport(text);
    if (!fitWatchColumns(stored.builtIn) || !fitWatchColumns(stored.user)) return made;
    made.whole = stored.hasMarker;
    std::set<int> named;
    for (const WatchColumn& column : stored.builtIn) {
        const int index = columnNamed(builtIn, column);
        if (index < 0) continue;
        named.insert(index);
        made.arrays.order[at(index)] = column.place;
        made.arrays.widths[at(index)] = column.width;
    }
    for (int i = 0; stored.hasMarker && i < static_cast<int>(builtIn.size()); ++i) {
        if (named.contains(i)) continue;
        made.arrays.order[at(i)] = -1;
        made.arrays.widths[at(i)] = list::kUnknownColumnWidth;
    }
    for (const WatchColumn& column : stored.user) {
        if (made.arrays.order.size() == at(list::kMaxColumns)) break;
        made.userColumns.push_back(makeWatchUserColumn(column, column.width));
        made.arrays.order.push_back(column.place);
        made.arrays.widths.push_back(column.width);
    }
    return made;
}

sQuorColInfo makeWatchUserColumn(const WatchColumn& column, int width) {
    sQuorColInfo made;
    setColumnName(made, column.name);
    expression::setExpressions(made, expression::ListFamily::marketWatch, column.idForm, column.displayForm);
    made.iWidth = width;
    made.iFormat = kFormatRight;
    made.iDataType = kTypeWatchDecimal;
    return made;
}

}  // namespace quor::watch
