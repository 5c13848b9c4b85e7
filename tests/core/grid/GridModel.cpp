#include "tests/core/grid/GridModel.h"

#include "quor/list/core/NaturalCompare.h"
#include "quor/platform/tools/QuorTools.h"
#include "tests/core/grid/NaiveFilter.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

using namespace quor::grid;
using namespace quor::list;

namespace grid_mix {

namespace {

NaiveGrid::Row keyOf(Row* row) { return static_cast<CFilterListBaseData*>(row); }

// Decimal only: what follows the last character that a number can have is not read.
double readNumber(const std::string& text) {
    return std::strtod(text.substr(0, text.find_first_not_of(" 0123456789.eE+-")).c_str(), nullptr);
}

long long readInteger(const std::string& text, bool narrow) {
    const long long value = std::strtoll(text.c_str(), nullptr, 10);
    if (!narrow) return value;
    return std::clamp<long long>(value, std::numeric_limits<std::int32_t>::min(),
                                 std::numeric_limits<std::int32_t>::max());
}

template <class Value>
int compareValues(Value a, Value b, int order) {
    return a < b ? order : a > b ? -order : 0;
}

int compareTexts(const std::string& a, const std::string& b, int dataType, int order, bool narrow) {
    switch (dataType) {
        case 1:
        case 4:
            return compareValues(readInteger(a, narrow), readInteger(b, narrow), order);
        case 2:
        case 5:
            return compareValues(readNumber(a), readNumber(b), order);
        case 3:
            return naturalCompare(b.c_str(), a.c_str()) * order;
        case 6:
            return CompareDateTime(std::string(a).data(), std::string(b).data(), order);
        default:
            return 0;
    }
}

}  // namespace

std::string columnName(int columnIndex) { return std::string("column ") + static_cast<char>('A' + columnIndex); }

GridModel::GridModel(const Places& shownPlaces, NativeControl& control)
    : places(shownPlaces),
      native(control),
      grid(native, [this](NaiveGrid::Row row) { return passes(row); }),
      fields(static_cast<std::size_t>(visibleColumns())),
      firstCaption(columnName(columnAt(0))),
      arrows(fields.size(), -1) {}

int GridModel::apply(const Action& action) {
    switch (action.kind) {
        case Action::addRow:
            return add(action.row, action.value != 0);
        case Action::updateRow:
            return update(action.row);
        case Action::deleteRow:
            return remove(action.row, action.value != 0);
        case Action::updateVisual:
            return update(rowOfVisual(action.number));
        case Action::updateMap:
            return update(rowOfMap(action.number));
        case Action::deleteVisual:
            return rowOfVisual(action.number) ? remove(rowOfVisual(action.number), false) : 0;
        case Action::deleteMap:
            return rowOfMap(action.number) ? remove(rowOfMap(action.number), false) : 0;
        case Action::endBatch:
            return endBatch(), 0;
        case Action::populate:
            return populate(), 0;
        case Action::storeFilter:
            return store(action.number, action.text), 0;
        case Action::setFilter:
            return setFilter(action.number, action.text, action.value), 1;
        case Action::setFilters:
            return setFilters(action.filters, action.value), 1;
        case Action::removeFilter:
            return removeFilter(action.number), 1;
        case Action::removeAllFilters:
            return clearFilters(true), 1;
        case Action::toggleExact:
            return toggleExact(), 0;
        case Action::click:
            return click(action.number), 0;
        case Action::sortOn:
            return sortOn(action.number, action.value), 1;
        case Action::applyLock:
            return applyLock(), 0;
        case Action::toggleLock:
            return locked = !locked, 0;
        case Action::checkVisual: {
            const int slot = grid.visualOf(action.number);
            if (slot < 0 || slot >= grid.count()) return 0;
            return checks[static_cast<std::size_t>(grid.display[static_cast<std::size_t>(slot)])] = action.value, 1;
        }
        case Action::checkMap:
            return checks[static_cast<std::size_t>(action.number)] = action.value, 1;
        case Action::resetChecks:
            return std::fill(checks.begin(), checks.end(), 0), 0;
        case Action::toggleCheckedFirst:
            return checkedFirst = !checkedFirst, 0;
        case Action::sortOnChecked:
            return sortOnChecked(), 0;
        case Action::toggleReverse:
            return grid.reverse = !grid.reverse, 0;
        case Action::deleteAll:
            return deleteAll(), 1;
        case Action::select:
            return select(action), 0;
        case Action::scroll:
        case Action::changeSilently:
        case Action::kinds:
            break;
    }
    return 0;
}

int GridModel::columnAt(int place) const {
    const auto found = std::find(places.begin(), places.end(), place);
    return found == places.end() ? -1 : static_cast<int>(found - places.begin());
}

int GridModel::visibleColumns() const {
    return static_cast<int>(std::count_if(places.begin(), places.end(), [](int place) { return place >= 0; }));
}

int GridModel::checkedCount() const {
    return static_cast<int>(std::count_if(checks.begin(), checks.end(), [](int check) { return check > 0; }));
}

// ---- Rows

Row* GridModel::rowOfMap(int mapIndex) const {
    if (mapIndex < 0 || mapIndex >= static_cast<int>(grid.map.size())) return nullptr;
    const auto* data = static_cast<const CFilterListBaseData*>(grid.map[static_cast<std::size_t>(mapIndex)]);
    return const_cast<Row*>(static_cast<const Row*>(data));
}

Row* GridModel::rowAt(int slot) const { return rowOfMap(grid.display[static_cast<std::size_t>(slot)]); }

Row* GridModel::rowOfVisual(int visual) const {
    const int slot = grid.visualOf(visual);
    return slot >= 0 && slot < grid.count() ? rowAt(slot) : nullptr;
}

bool GridModel::passes(NaiveGrid::Row data) const {
    const Row& row = *static_cast<const Row*>(static_cast<const CFilterListBaseData*>(data));
    return std::all_of(filters.begin(), filters.end(), [&](const auto& filter) {
        const std::string& cell = row.cells[static_cast<std::size_t>(filter.first)];
        return naive_filter::passes(cell.c_str(), filter.second.c_str(), isExact());
    });
}

int GridModel::add(Row* row, bool now) {
    checks.push_back(0);
    return grid.addRow(keyOf(row), now);
}
int GridModel::remove(Row* row, bool now) { return grid.deleteRow(keyOf(row), now); }
int GridModel::update(Row* row) { return row ? grid.updateRow(keyOf(row)) : 0; }

void GridModel::endBatch() {
    grid.endBatch();
    onEndBatch();
}

void GridModel::deleteAll() {
    grid.clear();
    checks.clear();
}

void GridModel::populate() {
    grid.rebuild();
    onRebuild();
    exact = 0;
    if (checkedFirst) sortOnChecked();
    if (sorted && locked) applyLock();
    grid.tellCount();
}

// ---- Filters

void GridModel::store(int columnIndex, const std::string& text) {
    onStoreFilter(columnIndex, text);
    const auto found =
        std::find_if(filters.begin(), filters.end(), [&](const auto& filter) { return filter.first == columnIndex; });
    if (found != filters.end() && text.empty()) {
        filters.erase(found);
    } else if (found != filters.end()) {
        found->second = text;
    } else if (!text.empty()) {
        filters.emplace_back(columnIndex, text);
    }
}

void GridModel::writeField(int place, const std::string& text, int exactFlag, bool heard) {
    fields[static_cast<std::size_t>(place)] = text;
    if (heard) {
        store(columnAt(place), text);
        ++changes;
    }
    exact = exactFlag;
}

void GridModel::setFilter(int columnIndex, const std::string& text, int exactFlag) {
    const int place = places[static_cast<std::size_t>(columnIndex)];
    if (place >= 0) return writeField(place, text, exactFlag);
    store(columnIndex, text);
    writeField(0, "", exactFlag);
}

void GridModel::setFilters(const Filters& all, int exactFlag) {
    clearFilters(false);
    exact = exactFlag;
    std::string remembered;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto& [columnIndex, text] = all[i];
        const int place = places[static_cast<std::size_t>(columnIndex)];
        store(columnIndex, text);
        if (place == 0) remembered = text;
        if (place >= 0) writeField(place, text, exactFlag, i + 1 == all.size());
    }
    if (all.empty() || places[static_cast<std::size_t>(all.back().first)] < 0) writeField(0, remembered, 0);
}

void GridModel::removeFilter(int columnIndex) {
    const int place = places[static_cast<std::size_t>(columnIndex)];
    if (place >= 0 && !fields[static_cast<std::size_t>(place)].empty()) writeField(place, "", exact);
}

void GridModel::clearFilters(bool heard) {
    while (!filters.empty()) store(filters.back().first, "");
    int cleared = 0;
    for (std::string& field : fields) cleared += !std::exchange(field, "").empty();
    if (heard) changes += std::max(cleared, 1);
}

void GridModel::toggleExact() {
    exactSticky = !exactSticky;
    exact = 0;
    const int place = filters.empty() ? -1 : places[static_cast<std::size_t>(filters[0].first)];
    if (place >= 0) return writeField(place, std::string(filters[0].second), 0);
    writeField(0, "", 0);
}

// ---- Sorts

void GridModel::click(int place) {
    if (locked) return;
    endBatch();
    if (grid.count() == 0) return;
    const bool stayed = place == lastSortPlace;
    sortPlace = place;
    sortOrder = stayed ? -sortOrder : -1;
    lockOrder = sortOrder;
    lockColumn = columnAt(place);
    if (!stayed && lastSortPlace != -1) arrows[static_cast<std::size_t>(lastSortPlace)] = -1;
    arrows[static_cast<std::size_t>(place)] = stayed && sortOrder != -1 ? 1 : 0;
    lastSortPlace = place;
    if (checkedFirst) return sortOnChecked();
    if (!allTextsEqual(lockColumn)) sortDisplay(lockColumn, false);
    sorted = true;
}

void GridModel::sortOn(int columnIndex, int order) {
    if (locked) return;
    sortOrder = order == 1 ? -1 : 1;
    click(std::max(0, places[static_cast<std::size_t>(columnIndex)]));
}

void GridModel::applyLock() {
    const int place = places[static_cast<std::size_t>(lockColumn)];
    if (!locked || place < 0) return;
    endBatch();
    sortPlace = place;
    sortOrder = lockOrder;
    if (grid.count() == 0) return;
    arrows[static_cast<std::size_t>(place)] = sortOrder != -1 ? 1 : 0;
    lastSortPlace = place;
    if (checkedFirst) return sortOnChecked();
    sortDisplay(columnAt(place), true);
}

bool GridModel::allTextsEqual(int columnIndex) const {
    for (int slot = 0; slot < grid.count(); ++slot) {
        const auto column = static_cast<std::size_t>(columnIndex);
        if (rowAt(slot)->cells[column] != rowAt(0)->cells[column]) return false;
    }
    return true;
}

std::vector<int> GridModel::sortedRows(std::vector<int> mapIndices, int dataType, int columnIndex, bool narrow) const {
    const auto text = [&](int mapIndex) { return rowOfMap(mapIndex)->cells[static_cast<std::size_t>(columnIndex)]; };
    std::sort(mapIndices.begin(), mapIndices.end(), [&](int a, int b) {
        if (a == b) return false;
        const int result = compareTexts(text(a), text(b), dataType, sortOrder, narrow);
        return (result != 0 ? result : a > b ? sortOrder : -sortOrder) < 0;
    });
    return mapIndices;
}

void GridModel::sortDisplay(int columnIndex, bool narrow) {
    onSort(columnIndex, narrow);
    show(sortedRows(grid.display, kDataTypes[static_cast<std::size_t>(columnIndex)], columnIndex, narrow));
}

void GridModel::show(std::vector<int> sortedMapIndices) {
    if (grid.reverse) std::reverse(sortedMapIndices.begin(), sortedMapIndices.end());
    grid.reorder(std::move(sortedMapIndices));
}

// The check state is that of visual index i, the row that of slot i.
void GridModel::sortOnChecked() {
    endBatch();
    const int mark = native.selectionMark();
    Row* const marked = mark < 0 ? nullptr : rowOfVisual(mark);
    onSortOnChecked();
    std::vector<int> checked, unchecked;
    for (int i = 0; i < grid.count(); ++i) {
        const auto shown = static_cast<std::size_t>(grid.display[static_cast<std::size_t>(grid.visualOf(i))]);
        (checks[shown] ? checked : unchecked).push_back(grid.display[static_cast<std::size_t>(i)]);
    }
    checked = sortedRows(checked, kDataTypes[0], kFirstTextColumn, false);
    unchecked = sortedRows(unchecked, kDataTypes[0], kFirstTextColumn, false);
    checked.insert(checked.end(), unchecked.begin(), unchecked.end());
    show(std::move(checked));
    firstCaption =
        columnName(0) + " (" + std::to_string(checkedCount()) + " / " + std::to_string(grid.map.size()) + ")";
    if (marked) moveMarkTo(marked);
}

// The control must know the row before it can mark it.
void GridModel::moveMarkTo(Row* row) {
    const int visual = grid.visualOf(grid.numbers.at(keyOf(row)).slot);
    grid.tellCount();
    native.setSelectionMark(visual);
    native.setState(visual, 3, 3);
    onMark(visual);
}

void GridModel::select(const Action& action) {
    if (action.number < native.rowCount()) native.setState(action.number, static_cast<unsigned>(action.value), 3);
    native.setSelectionMark(action.mark);
}

}  // namespace grid_mix
