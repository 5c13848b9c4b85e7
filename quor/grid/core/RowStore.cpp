// Rows know the store by its address. A store made later may stand at the same one, so every row that leaves, and every
// row of a store that empties, gives its numbers up: else it would pass for a row of the next list.
#include "quor/grid/core/RowStore.h"

#include <algorithm>
#include <stdexcept>

namespace quor::grid {

void RowStore::reserve(int n) {
    if (n < 0 || static_cast<std::size_t>(n) > MapItems.max_size()) throw std::length_error("vector too long");
    MapItems.reserve(static_cast<std::size_t>(n));
}

int RowStore::add(CFilterListBaseData* row) {
    const int mapIndex = count();
    MapItems.push_back({reinterpret_cast<RowData>(row), 0});
    row->setIndices(this, mapIndex, -1);
    return mapIndex;
}

void RowStore::takeBackLast(CFilterListBaseData* row) {
    row->setIndices(this, -1, -1);
    MapItems.pop_back();
}

sFilterListRowIndex RowStore::bury(CFilterListBaseData* row, sFilterListRowIndex* numbers) {
    const sFilterListRowIndex had = *numbers;
    row->erase(numbers);
    if (holds(had.mapIndex)) at(had.mapIndex).data = 0;
    return had;
}

void RowStore::clear() {
    if (OptiDataMode) {
        for (const sFilterListRow& slot : MapItems)
            if (slot.data != 0) rowOf(slot.data)->setIndices(this, -1, -1);
    }
    MapItems.clear();
}

void RowStore::reorder(const std::vector<std::int32_t>& mapIndices) {
    std::vector<sFilterListRow> sorted;
    sorted.reserve(MapItems.size());
    for (const std::int32_t mapIndex : mapIndices) sorted.push_back(at(mapIndex));
    MapItems.swap(sorted);
    if (!OptiDataMode) return;
    for (int mapIndex = 0; mapIndex < count(); ++mapIndex)
        if (const RowData data = dataAt(mapIndex); data != 0) rowOf(data)->setIndices(this, mapIndex, -1);
}

bool RowStore::holdsData(RowData data) const {
    return std::any_of(MapItems.begin(), MapItems.end(), [data](const auto& row) { return row.data == data; });
}

int RowStore::checkedCount() const {
    return static_cast<int>(
        std::count_if(MapItems.begin(), MapItems.end(), [](const auto& row) { return row.check > 0; }));
}

void RowStore::resetChecks() {
    for (sFilterListRow& row : MapItems) row.check = 0;
}

}  // namespace quor::grid
