// What a sort asks of the store: both orders, read and replaced as a whole. The rows themselves stay.
#include "src/grid/core/RowStore.h"

std::vector<std::int32_t> RowStore::displayOrder() const { return DisplayItems; }

// Rows learn their slots in the order of the map: that is how they mostly lie in memory.
void RowStore::reorderDisplay(std::vector<std::int32_t> mapIndices) {
    if (OptiDataMode) {
        std::vector<std::int32_t> slots(MapItems.size(), -1);
        for (std::size_t slot = 0; slot < mapIndices.size(); ++slot)
            slots[static_cast<std::size_t>(mapIndices[slot])] = static_cast<std::int32_t>(slot);
        for (std::size_t mapIndex = 0; mapIndex < MapItems.size(); ++mapIndex) {
            if (slots[mapIndex] == -1 || MapItems[mapIndex].data == 0) continue;
            if (sFilterListRowIndex* numbers = rowOf(MapItems[mapIndex].data)->find(m_list))
                numbers->displayIndex = slots[mapIndex];
        }
    }
    DisplayItems = std::move(mapIndices);
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
