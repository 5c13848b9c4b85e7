// Classic mode: rows are inserted empty, get their data later, and are deleted and re-tested one at a time. Here map
// indices move when a row is inserted or erased in the middle. And the check states, which both modes have.
#include "src/grid/core/RowStore.h"

#include <algorithm>

namespace quor::grid {

ClassicChange RowStore::insertItem(int item) {
    if (item < 0) return {};
    const int count = itemCount();
    const int mapIndex = item == 0 || item > count ? count : item;
    for (std::int32_t& value : DisplayItems) {
        if (mapIndex == count) break;
        if (value == -1) return {.outcome = ClassicOutcome::corrupt};
        if (value >= mapIndex) ++value;
    }
    const int slot = mapIndex == count ? displayCount() : std::min(mapIndex, displayCount());
    MapItems.insert(MapItems.begin() + mapIndex, sFilterListRow{});
    DisplayItems.insert(DisplayItems.begin() + slot, mapIndex);
    return {ClassicOutcome::done, mapIndex, visualOfSlot(slot)};
}

ClassicChange RowStore::setItemData(int item, RowData data, RowTest test) {
    const int last = displayCount() - 1;
    if (last < 0 || item < 0) return {};
    const bool lastFirst = item == 0 || item > last;
    int slot = last;
    if (!lastFirst || rowAtSlot(last).data != 0) {
        if (item > last) return {};
        slot = slotOfVisual(item);
    }
    const int mapIndex = mapIndexOfSlot(slot);
    rowAtSlot(slot).data = data;
    if (!test.passes(data)) return leaveClassic(slot);
    return {ClassicOutcome::shown, mapIndex, visualOfSlot(slot)};
}

ClassicChange RowStore::eraseVisual(int visual) {
    if (visual >= displayCount()) return {};
    const int slot = slotOfVisual(visual);
    const int mapIndex = mapIndexOfSlot(slot);
    if (!mapIndexIsValid(mapIndex)) return {.outcome = ClassicOutcome::unknown};
    DisplayItems.erase(DisplayItems.begin() + slot);
    if (!closeDisplayGap(mapIndex)) return {.outcome = ClassicOutcome::corrupt};
    MapItems.erase(MapItems.begin() + mapIndex);
    return {ClassicOutcome::done, mapIndex, visual};
}

ClassicChange RowStore::eraseHidden(int mapIndex) {
    if (!mapIndexIsValid(mapIndex) || slotOfMapIndex(mapIndex) != -1) return {};
    closeDisplayGap(mapIndex);
    MapItems.erase(MapItems.begin() + mapIndex);
    return {ClassicOutcome::done, mapIndex, -1};
}

// The map index is about to go: every higher one in the display drops by one. False for a value that cannot be there.
bool RowStore::closeDisplayGap(int mapIndex) {
    if (mapIndex == itemCount() - 1) return true;
    for (std::int32_t& value : DisplayItems) {
        if (value == -1 || value == mapIndex) return false;
        if (value > mapIndex) --value;
    }
    return true;
}

ClassicChange RowStore::retestMapIndex(int mapIndex, RowTest test) {
    if (!mapIndexIsValid(mapIndex)) return {};
    const int slot = slotOfMapIndex(mapIndex);
    if (slot != -1) return retestVisual(visualOfSlot(slot), test);
    const RowData data = dataOfMapIndexChecked(mapIndex);
    if (data == 0 || !test.passes(data)) return {ClassicOutcome::keptOut, mapIndex, -1};
    const auto place = std::find_if(DisplayItems.begin(), DisplayItems.end(),
                                    [mapIndex](std::int32_t value) { return value > mapIndex; });
    const int newSlot = static_cast<int>(place - DisplayItems.begin());
    DisplayItems.insert(place, mapIndex);
    return {ClassicOutcome::entered, mapIndex, visualOfSlot(newSlot)};
}

ClassicChange RowStore::retestVisual(int visual, RowTest test) {
    const int slot = slotOfVisual(visual);
    const int mapIndex = mapIndexOfSlot(slot);
    if (!mapIndexIsValid(mapIndex)) return {};
    const RowData data = dataOfMapIndexChecked(mapIndex);
    if (data == 0) return {ClassicOutcome::keptOut, mapIndex, visual};
    if (!test.passes(data)) return leaveClassic(slot);
    return {ClassicOutcome::shown, mapIndex, visual};
}

ClassicChange RowStore::leaveClassic(int slot) {
    const ClassicChange change{ClassicOutcome::left, mapIndexOfSlot(slot), visualOfSlot(slot)};
    DisplayItems.erase(DisplayItems.begin() + slot);
    return change;
}

int RowStore::checkOfVisual(int visual) const {
    const int mapIndex = mapIndexOfVisual(visual);
    return mapIndexIsValid(mapIndex) ? checkOfMapIndex(static_cast<std::size_t>(mapIndex)) : 0;
}

bool RowStore::setCheckOfVisual(int visual, int state) { return setCheckOfMapIndex(mapIndexOfVisual(visual), state); }

bool RowStore::setCheckOfMapIndex(int mapIndex, int state) {
    if (!mapIndexIsValid(mapIndex)) return false;
    MapItems[static_cast<std::size_t>(mapIndex)].check = state;
    return true;
}

int RowStore::checkedCount() const {
    return static_cast<int>(
        std::count_if(MapItems.begin(), MapItems.end(), [](const auto& row) { return row.check > 0; }));
}

void RowStore::resetChecks() {
    for (sFilterListRow& row : MapItems) row.check = 0;
}

}  // namespace quor::grid
