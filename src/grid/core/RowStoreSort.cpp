// The map order replaced as a whole: what a sort does in lists whose user arranges the rows. The rows stay.
#include "src/grid/core/RowStore.h"

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
