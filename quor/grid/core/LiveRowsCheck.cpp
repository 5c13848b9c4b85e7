// The invariants of the rows, verified the slow way. Tests call it after each step.
#include "quor/grid/core/LiveRows.h"

namespace quor::grid {

std::string LiveRows::Check() {
    settleTicks();
    std::size_t tombstones = 0;
    if (std::string fault = m_display.Check(tombstones); !fault.empty()) return fault;
    for (int slot = 0; optiData() && slot < displayCount(); ++slot) {
        if (!m_store.isTombstone(m_display.at(slot))) continue;
        const std::string where = "slot " + std::to_string(slot);
        if (!m_pending.PendingDelete) return where + " is a tombstone and no delete is pending";
        if (slot < m_pending.FirstPendingDelete) return where + " is a tombstone below the first pending delete";
    }
    if (m_pending.PendingDelete != (m_pending.FirstPendingDelete != -1))
        return "the pending delete and its first slot disagree";
    if (m_pending.FirstPendingDelete > m_pending.LastPendingDelete)
        return "the first pending delete lies above the last";
    return optiData() ? checkNumbers() : std::string();
}

std::string LiveRows::checkNumbers() {
    std::vector<int> slots(static_cast<std::size_t>(itemCount()), -1);
    for (int slot = 0; slot < displayCount(); ++slot) slots[static_cast<std::size_t>(m_display.at(slot))] = slot;
    for (int mapIndex = 0; mapIndex < itemCount(); ++mapIndex) {
        const RowData data = m_store.dataAt(mapIndex);
        if (data == 0) continue;
        const std::string which = "row " + std::to_string(mapIndex);
        const sFilterListRowIndex* const numbers = m_store.numbersOf(reinterpret_cast<CFilterListBaseData*>(data));
        const int slot = slots[static_cast<std::size_t>(mapIndex)];
        if (numbers == nullptr) return which + " does not know this list";
        if (numbers->mapIndex != mapIndex) return which + " says another map index";
        if ((numbers->displayIndex == -1) != (slot == -1)) return which + " is wrong about being displayed";
        if (m_display.slotOf(*numbers) != slot) return which + " says another slot";
    }
    return {};
}

}  // namespace quor::grid
