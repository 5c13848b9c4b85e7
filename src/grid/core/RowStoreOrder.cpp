// The display order as a whole: made anew, assigned, emptied, and its change from the plain to the lazy form.
#include "src/grid/core/RowStore.h"

#include <algorithm>

namespace quor::grid {

namespace {

constexpr std::size_t ahead = 16;  // rows are far apart in memory: ask for their numbers before they are written

void askForRow(RowData data) { __builtin_prefetch(reinterpret_cast<const void*>(data), 1); }

// The test reads what the host has behind the numbers.
void askForRow(RowData data, RowTest test) {
    constexpr RowData line = 64;
    askForRow(data);
    if (test.function) __builtin_prefetch(reinterpret_cast<const void*>(data + line));
}

}  // namespace

template <class Function>
void RowStore::forEachDisplayed(Function function) const {
    if (m_lazyOrder) return m_lazyOrder->forEach(function);
    for (const std::int32_t mapIndex : DisplayItems) function(int{mapIndex});
}

inline void RowStore::tellRow(std::size_t mapIndex, int displayIndex) {
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
    settleLater();
    forEachDisplayed([this](int mapIndex) { tellRow(static_cast<std::size_t>(mapIndex), -1); });
    forgetOrder();
}

// Each row hears of its place once, shown or not.
void RowStore::rebuild(RowTest test) {
    settleLater();
    forgetOrder();
    if (test.function == nullptr) DisplayItems.reserve(MapItems.size());
    for (std::size_t mapIndex = 0; mapIndex < MapItems.size(); ++mapIndex) {
        if (OptiDataMode && mapIndex + ahead < MapItems.size()) askForRow(MapItems[mapIndex + ahead].data, test);
        const RowData data = MapItems[mapIndex].data;
        if (data == 0) continue;
        const bool passes = test.passes(data);
        tellRow(mapIndex, passes ? displayCount() : -1);
        if (passes) DisplayItems.push_back(static_cast<std::int32_t>(mapIndex));
    }
}

std::vector<std::int32_t> RowStore::displayOrder() const {
    settleLater();
    if (!m_lazyOrder) return DisplayItems;
    std::vector<std::int32_t> mapIndices;
    mapIndices.reserve(static_cast<std::size_t>(displayCount()));
    m_lazyOrder->forEach([&](int mapIndex) { mapIndices.push_back(mapIndex); });
    return mapIndices;
}

// Rows learn their slots in the order of the map: that is how they mostly lie in memory.
void RowStore::reorderDisplay(std::vector<std::int32_t> mapIndices) {
    settleLater();
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

// No jump depends on the row or on its test: what one of two ways would do is done by arithmetic. The test comes first,
// since a host's callback may come back into the store.
int RowStore::updateLater(CFilterListBaseData* row, RowTest test) {
    const int passes = test.passes(dataOf(row));
    sFilterListRowIndex* const numbers = row->find(m_list);
    if (numbers == nullptr || numbers->mapIndex == -1) return 0;
    if (m_laterCount == laterCapacity) applyLater();
    if (!m_lazyOrder) becomeLazy();
    const int shown = numbers->displayIndex != -1;
    m_later[m_laterCount] = {numbers->mapIndex, static_cast<std::int8_t>(shown), static_cast<std::int8_t>(passes)};
    m_laterCount += static_cast<std::size_t>(shown | passes);
    m_laterGrowth += passes - shown;
    numbers->displayIndex = passes - 1;  // the order is lazy: only -1 has a meaning
    return passes - shown;
}

// In the order in which they came: where a row enters depends on those that entered before.
void RowStore::applyLater() {
    constexpr std::size_t farAhead = 16, nearAhead = 8;
    DisplayOrder& order = *m_lazyOrder;
    const std::size_t count = m_laterCount;
    m_laterCount = 0;
    m_laterGrowth = 0;
    LaterChanges changes;
    changes.lowestCount = order.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i + farAhead < count) order.prefetchHome(m_later[i + farAhead].mapIndex);
        if (i + nearAhead < count) order.prefetchPlace(m_later[i + nearAhead].mapIndex);
        const LaterTick tick = m_later[i];
        const int formerCount = order.size();
        if (tick.shown && tick.passes) {
            const int slot = order.slotOf(tick.mapIndex);
            const int visual = ReverseDisplay ? formerCount - 1 - slot : slot;
            changes.firstRepaint = std::min(changes.firstRepaint, visual);
            changes.lastRepaint = std::max(changes.lastRepaint, visual);
        } else if (tick.shown) {
            const int slot = order.erase(tick.mapIndex);
            shiftPendingDeletes(slot);
            changes.firstMoved = std::min(changes.firstMoved, ReverseDisplay ? formerCount - 1 - slot : slot);
            changes.lowestCount = std::min(changes.lowestCount, formerCount - 1);
        } else {
            const int slot = order.enter(tick.mapIndex);
            changes.firstMoved = std::min(changes.firstMoved, ReverseDisplay ? formerCount - slot : slot);
        }
    }
    if (onSettled) onSettled(changes);
}

}  // namespace quor::grid
