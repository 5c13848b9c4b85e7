// An import starts from the columns that the list has if the text says nothing, and changes a copy: any fault of the
// text then gives them back untouched.
#include "quor/list/core/ColumnImport.h"

#include <algorithm>
#include <cstddef>

namespace quor::list {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

bool inRange(const std::vector<ProfileEntry>& entries) {
    return std::ranges::all_of(entries, [](const auto& e) { return fitsColumnRange(e.columnIndex, e.place); });
}

bool fits(const ExchangeProfile& profile, std::size_t builtInCount) {
    return inRange(profile.builtIn) && inRange(profile.user) && builtInCount + profile.user.size() <= kMaxColumns;
}

// Which column stands at each place; a place that was skipped reads as column 0.
void stand(std::vector<int>& bySequence, int place, int column) {
    if (place == -1) return;
    if (at(place) >= bySequence.size()) bySequence.resize(at(place) + 1);
    bySequence[at(place)] = column;
}

void takeBuiltIn(ColumnSetPlan& plan, std::vector<int>& bySequence, const std::vector<ImportColumn>& columns,
                 const ExchangeProfile& profile) {
    std::vector<bool> seen(columns.size());
    const int count = static_cast<int>(columns.size());
    const auto headingAt = [&](int i) -> const CString& { return columns[at(i)].heading; };
    for (const ProfileEntry& entry : profile.builtIn) {
        const int found = findHeading(count, headingAt, entry.name, entry.columnIndex);
        if (found == -1) continue;
        seen[at(found)] = true;
        plan.order[at(found)] = entry.place;
        plan.widths[at(found)] = entry.width;
        stand(bySequence, entry.place, found);
    }
    for (int i = 0; profile.hasMarker && i < count; ++i) {
        if (seen[at(i)]) continue;
        plan.order[at(i)] = -1;
        plan.widths[at(i)] = kUnknownColumnWidth;
    }
}

void takeUserColumns(ColumnSetPlan& plan, std::vector<int>& bySequence, const std::vector<ProfileEntry>& entries) {
    for (const ProfileEntry& entry : entries) {
        const int column = static_cast<int>(plan.order.size());
        sQuorColInfo record = makeUserColumn(entry.name, entry.expression, entry.toolTip);
        record.iWidth = entry.width;
        plan.userColumns.emplace_back(column, record);
        plan.order.push_back(entry.place);
        plan.widths.push_back(entry.width);
        stand(bySequence, entry.place, column);
    }
}

void insertInSequence(ColumnSetPlan& plan, const std::vector<int>& bySequence, int builtInCount) {
    plan.inserts.clear();
    plan.visible.clear();
    bool zeroUsed = false;
    for (const int column : bySequence) {
        if (column == 0 && zeroUsed) continue;
        zeroUsed = zeroUsed || column == 0;
        plan.inserts.push_back({column, plan.widths[at(column)], column >= builtInCount});
        plan.visible.emplace_back(plan.order[at(column)], column);
    }
    plan.firstColumn = bySequence[0];
}

}  // namespace

ColumnSetPlan planBuiltInColumns(const std::vector<ImportColumn>& columns) {
    ColumnSetPlan plan;
    for (const ImportColumn& column : columns) {
        const int index = static_cast<int>(plan.order.size());
        plan.order.push_back(index);
        plan.widths.push_back(column.width);
        plan.visible.emplace_back(index, index);
        plan.inserts.push_back({index, column.width, false});
    }
    return plan;
}

ColumnSetPlan planColumnImport(const std::vector<ImportColumn>& columns, const ExchangeProfile& profile) {
    ColumnSetPlan unchanged = planBuiltInColumns(columns);
    if (!fits(profile, columns.size())) return unchanged;
    ColumnSetPlan plan = unchanged;
    std::vector<int> bySequence;
    takeBuiltIn(plan, bySequence, columns, profile);
    takeUserColumns(plan, bySequence, profile.user);
    // A gap reads as column 0, which must exist.
    if (bySequence.empty() || plan.order.empty()) return unchanged;
    insertInSequence(plan, bySequence, static_cast<int>(columns.size()));
    return plan;
}

}  // namespace quor::list
