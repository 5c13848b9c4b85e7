// The map order of what is displayed, read by a sort; and replaced as a whole, as a sort does in lists whose user
// arranges the rows. The rows stay.
#include "src/grid/core/RowStore.h"

#include <numeric>

namespace quor::grid {

std::vector<std::int32_t> RowStore::displayedInMapOrder() const {
    std::vector<std::int32_t> mapIndices(static_cast<std::size_t>(displayCount()));
    if (displayCount() == itemCount()) {
        std::iota(mapIndices.begin(), mapIndices.end(), 0);
        return mapIndices;
    }
    std::vector<char> isDisplayed(MapItems.size());
    for (const std::int32_t mapIndex : displayOrder()) isDisplayed[static_cast<std::size_t>(mapIndex)] = 1;
    auto next = mapIndices.begin();
    for (int mapIndex = 0; mapIndex < itemCount(); ++mapIndex)
        if (isDisplayed[static_cast<std::size_t>(mapIndex)]) *next++ = mapIndex;
    return mapIndices;
}

void RowStore::reorderMap(const std::vector<std::int32_t>& mapIndices) {
    clearDisplay();
    std::vector<sFilterListRow> sorted;
    sorted.reserve(MapItems.size());
    for (const std::int32_t mapIndex : mapIndices) sorted.push_back(MapItems[static_cast<std::size_t>(mapIndex)]);
    MapItems.swap(sorted);
    if (!OptiDataMode) return;
    for (int mapIndex = 0; mapIndex < itemCount(); ++mapIndex) {
        const RowData data = MapItems[static_cast<std::size_t>(mapIndex)].data;
        if (data != 0) rowOf(data)->setIndices(m_list, mapIndex, -1);
    }
}

}  // namespace quor::grid
