// The invariants of the row store, verified the slow way. Tests call it after each step.
#include "src/grid/core/RowStore.h"

#include <algorithm>

namespace quor::grid {

std::string RowStore::Check() const {
    std::string fault = checkDisplay();
    return fault.empty() && OptiDataMode ? checkNumbers() : fault;
}

std::string RowStore::checkDisplay() const {
    if (m_lazyOrder) {
        if (!OptiDataMode) return "the order is lazy outside opti-data mode";
        if (!DisplayItems.empty()) return "two display orders hold rows";
        if (std::string fault = m_lazyOrder->Check(); !fault.empty()) return fault;
    }
    std::size_t tombstones = 0;
    std::vector<bool> seen(MapItems.size());
    for (int slot = 0; slot < displayCount(); ++slot) {
        const std::string where = "slot " + std::to_string(slot);
        const int mapIndex = mapIndexOfSlot(slot);
        if (!mapIndexIsValid(mapIndex)) return where + " holds no valid map index";
        const auto index = static_cast<std::size_t>(mapIndex);
        if (seen[index]) return where + " holds a map index that is displayed already";
        seen[index] = true;
        if (m_lazyOrder && m_lazyOrder->slotOf(mapIndex) != slot) return where + " is not where its row says";
        if (!OptiDataMode || MapItems[index].data != 0) continue;
        ++tombstones;
        if (!PendingDelete) return where + " is a tombstone and no delete is pending";
        if (slot < FirstPendingDelete) return where + " is a tombstone below the first pending delete";
    }
    if (m_lazyOrder && m_lazyTombstones.size() != tombstones) return "a tombstone is not listed, or one too many is";
    if (PendingDelete != (FirstPendingDelete != -1)) return "the pending delete and its first slot disagree";
    if (FirstPendingDelete > LastPendingDelete) return "the first pending delete lies above the last";
    return {};
}

std::string RowStore::checkNumbers() const {
    std::vector<int> slots(MapItems.size(), -1);
    for (int slot = 0; slot < displayCount(); ++slot) slots[static_cast<std::size_t>(mapIndexOfSlot(slot))] = slot;
    for (std::size_t mapIndex = 0; mapIndex < MapItems.size(); ++mapIndex) {
        if (MapItems[mapIndex].data == 0) continue;
        const std::string which = "row " + std::to_string(mapIndex);
        const sFilterListRowIndex* const numbers = rowOf(MapItems[mapIndex].data)->find(m_list);
        if (numbers == nullptr) return which + " does not know this grid";
        if (numbers->mapIndex != static_cast<int>(mapIndex)) return which + " says another map index";
        if ((numbers->displayIndex == -1) != (slots[mapIndex] == -1)) return which + " is wrong about being displayed";
        if (slotOfNumbers(*numbers) != slots[mapIndex]) return which + " says another slot";
    }
    return {};
}

}  // namespace quor::grid
