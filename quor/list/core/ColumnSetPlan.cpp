// A road is tried on a draft, and one that does not fit is dropped whole: half a profile would be a column set that
// nobody chose. Only its user columns stay, since they are the user's work and other formulas may name them.
#include "quor/list/core/ColumnSetPlan.h"

#include <cstddef>
#include <set>

namespace quor::list {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

// The place-to-column array of one road. It grows by assignment, and what was never assigned reads as column 0.
void putAt(std::vector<int>& array, int index, int value, int filler = 0) {
    if (at(index) >= array.size()) array.resize(at(index) + 1, filler);
    array[at(index)] = value;
}

// A road under way: the plan so far and which column stands at each place.
struct Draft {
    explicit Draft(const std::vector<int>& columnWidths) : builtInCount(static_cast<int>(columnWidths.size())) {
        plan.widths = columnWidths;
        for (int i = 0; i < builtInCount; ++i) plan.order.push_back(i);
    }

    int columnCount() const { return static_cast<int>(plan.order.size()); }

    int builtInCount;
    ColumnSetPlan plan;
    std::vector<int> bySequence;
};

void takeEntry(Draft& draft, const ProfileEntry& entry) {
    const int column = entry.columnIndex;
    if (column >= draft.builtInCount) {
        // Indices that a user column skips are columns without a record of their own: hidden.
        draft.plan.userColumns.emplace_back(column, makeUserColumn(entry.name, entry.expression, entry.toolTip));
    }
    putAt(draft.plan.order, column, entry.place, -1);
    putAt(draft.plan.widths, column, entry.width, kUnknownColumnWidth);
    if (entry.place != -1) putAt(draft.bySequence, entry.place, column);
}

// Columns that no entry named stay hidden.
void hideUnnamed(Draft& draft, const std::set<int>& named) {
    for (int i = 0; i < draft.columnCount(); ++i) {
        if (named.contains(i)) continue;
        draft.plan.order[at(i)] = -1;
        draft.plan.widths[at(i)] = kUnknownColumnWidth;
    }
}

// Appends what `bySequence` says. False at a gap, at a column that stands at two places, or without a column at place
// 0; the draft is of no use then.
bool insertInSequence(Draft& draft) {
    if (draft.bySequence.empty() || draft.plan.order[at(draft.bySequence[0])] != 0) return false;
    bool zeroUsed = false;
    for (int place = 0; at(place) < draft.bySequence.size(); ++place) {
        const int column = draft.bySequence[at(place)];
        const int itsPlace = draft.plan.order[at(column)];
        if (column == 0 ? zeroUsed : itsPlace != place) return false;
        zeroUsed = zeroUsed || column == 0;
        draft.plan.inserts.push_back({column, draft.plan.widths[at(column)], column >= draft.builtInCount});
        draft.plan.visible.emplace_back(itsPlace, column);
    }
    draft.plan.firstColumn = draft.bySequence[0];
    draft.plan.readsSortOrder = true;
    return true;
}

ColumnSetPlan planAll(const std::vector<int>& widths) {
    Draft draft(widths);
    for (int i = 0; i < draft.columnCount(); ++i) {
        draft.plan.inserts.push_back({i, widths[at(i)], false});
        draft.plan.visible.emplace_back(i, i);
    }
    return std::move(draft.plan);
}

// The default places may be older than the column array: what they do not know stays hidden, what is gone is skipped.
ColumnSetPlan planDefaults(const std::vector<int>& widths, const std::vector<int>& defaultPlaces) {
    if (defaultPlaces.empty()) return planAll(widths);
    Draft draft(widths);
    for (int i = 0; i < draft.columnCount(); ++i) {
        const int place = at(i) < defaultPlaces.size() ? defaultPlaces[at(i)] : -1;
        draft.plan.order[at(i)] = place;
        if (place != -1) putAt(draft.bySequence, place, i);
    }
    return insertInSequence(draft) ? std::move(draft.plan) : planAll(widths);
}

// Widths of the columns as they stand once a profile was refused: its user columns are in the array by now.
std::vector<int> widthsWithUserColumns(const ColumnSetInput& input, const Draft& refused) {
    std::vector<int> widths = input.widths;
    for (const auto& [index, column] : refused.plan.userColumns) putAt(widths, index, column.iWidth);
    return widths;
}

ColumnSetPlan planWithoutProfile(const ColumnSetInput& input, const Draft& refused) {
    ColumnSetPlan plan = planDefaults(widthsWithUserColumns(input, refused), input.defaultPlaces);
    plan.userColumns = refused.plan.userColumns;
    return plan;
}

}  // namespace

ColumnSetPlan planColumnSet(const ColumnSetInput& input) {
    if (!input.hasProfile) return planDefaults(input.widths, input.defaultPlaces);
    Draft draft(input.widths);
    std::set<int> named;
    int loaded = 0;
    for (const ProfileEntry& entry : input.profile) {
        if (!fitsColumnRange(entry.columnIndex, entry.place)) return planDefaults(input.widths, input.defaultPlaces);
        if (entry.columnIndex >= draft.builtInCount && !entry.isUserColumn)
            break;  // a text cut short: what stands, stands
        takeEntry(draft, entry);
        named.insert(entry.columnIndex);
        ++loaded;
    }
    if (draft.columnCount() < loaded) return planWithoutProfile(input, draft);
    hideUnnamed(draft, named);
    if (!insertInSequence(draft)) return planWithoutProfile(input, draft);
    return std::move(draft.plan);
}

}  // namespace quor::list
