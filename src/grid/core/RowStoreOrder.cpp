// The display order as a whole: made anew, assigned, emptied, and its change from the plain to the lazy form.
#include "src/grid/core/RowStore.h"

#include <algorithm>

namespace {

constexpr std::size_t ahead = 16;  // rows are far apart in memory: ask for their numbers before they are written

void askForRow(RowData data) { __builtin_prefetch(reinterpret_cast<const void*>(data), 1); }

}  // namespace

template <class Function>
void RowStore::forEachDisplayed(Function function) const {
    if (m_lazyOrder) return m_lazyOrder->forEach(function);
    for (const std::int32_t mapIndex : DisplayItems) function(int{mapIndex});
}

void RowStore::tellRow(std::size_t mapIndex, int displayIndex) {
    const RowData data = MapItems[mapIndex].data;
    if (!OptiDataMode || data == 0) return;
    if (sFilterListRowIndex* numbers = rowOf(data)->find(m_list)) numbers->displayIndex = displayIndex;
}

int RowStore::displayLast(int mapIndex) {
    if (m_lazyOrder) return m_lazyOrder->append(mapIndex);
    DisplayItems.push_back(mapIndex);
    return displayCount() - 1;
}

void RowStore::forgetOrder() {
    DisplayItems.clear();
    m_lazyOrder.reset();
    m_lazyTombstones.clear();
}

// The rows keep the slots that they know. From now on these mean no more than that they are displayed.
void RowStore::becomeLazy() {
    m_lazyTombstones.clear();
    if (PendingDelete)
        std::copy_if(DisplayItems.begin(), DisplayItems.end(), std::back_inserter(m_lazyTombstones),
                     [this](std::int32_t mapIndex) { return isTombstone(mapIndex); });
    m_lazyOrder.emplace(DisplayItems);
    std::vector<std::int32_t>().swap(DisplayItems);
}

void RowStore::clearDisplay() {
    forEachDisplayed([this](int mapIndex) { tellRow(static_cast<std::size_t>(mapIndex), -1); });
    forgetOrder();
}

// Each row hears of its place once, shown or not.
void RowStore::rebuild(RowTest test) {
    forgetOrder();
    if (test.function == nullptr) DisplayItems.reserve(MapItems.size());
    for (std::size_t mapIndex = 0; mapIndex < MapItems.size(); ++mapIndex) {
        if (OptiDataMode && mapIndex + ahead < MapItems.size()) askForRow(MapItems[mapIndex + ahead].data);
        const RowData data = MapItems[mapIndex].data;
        if (data == 0) continue;
        const bool passes = test.passes(data);
        tellRow(mapIndex, passes ? displayCount() : -1);
        if (passes) DisplayItems.push_back(static_cast<std::int32_t>(mapIndex));
    }
}

std::vector<std::int32_t> RowStore::displayOrder() const {
    if (!m_lazyOrder) return DisplayItems;
    std::vector<std::int32_t> mapIndices;
    mapIndices.reserve(static_cast<std::size_t>(displayCount()));
    m_lazyOrder->forEach([&](int mapIndex) { mapIndices.push_back(mapIndex); });
    return mapIndices;
}

// Rows learn their slots in the order of the map: that is how they mostly lie in memory.
void RowStore::reorderDisplay(std::vector<std::int32_t> mapIndices) {
    forgetOrder();
    DisplayItems = std::move(mapIndices);
    if (!OptiDataMode) return;
    std::vector<std::int32_t> slots(MapItems.size(), -1);
    for (std::size_t slot = 0; slot < DisplayItems.size(); ++slot)
        slots[static_cast<std::size_t>(DisplayItems[slot])] = static_cast<std::int32_t>(slot);
    for (std::size_t mapIndex = 0; mapIndex < MapItems.size(); ++mapIndex) {
        if (mapIndex + ahead < MapItems.size()) askForRow(MapItems[mapIndex + ahead].data);
        if (slots[mapIndex] != -1) tellRow(mapIndex, slots[mapIndex]);
    }
}
