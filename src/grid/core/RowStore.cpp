// Both orders and the open batch. Deferred deletes only leave tombstones. endBatch closes them in one pass from the
// lowest of them while the display order is plain, one by one while it is lazy.
#include "src/grid/core/RowStore.h"

#include <algorithm>
#include <stdexcept>

namespace quor::grid {

void RowStore::reserve(int n) {
    if (n < 0 || static_cast<std::size_t>(n) > std::min(MapItems.max_size(), DisplayItems.max_size()))
        throw std::length_error("vector too long");
    MapItems.reserve(static_cast<std::size_t>(n));
    DisplayItems.reserve(static_cast<std::size_t>(n));
}

int RowStore::mapIndexOfSlot(int slot) const {
    if (!slotIsValid(slot)) return -1;
    settleLater();
    return m_lazyOrder ? m_lazyOrder->at(slot) : DisplayItems[static_cast<std::size_t>(slot)];
}

int RowStore::slotOfMapIndex(int mapIndex) const {
    settleLater();
    if (m_lazyOrder) return mapIndex < 0 ? -1 : m_lazyOrder->slotOf(mapIndex);
    const auto found = std::find(DisplayItems.begin(), DisplayItems.end(), mapIndex);
    return found == DisplayItems.end() ? -1 : static_cast<int>(found - DisplayItems.begin());
}

RowData RowStore::dataOfVisual(int visual) const { return dataOfMapIndexChecked(mapIndexOfVisual(visual)); }

RowData RowStore::dataOfMapIndexChecked(int mapIndex) const {
    return mapIndexIsValid(mapIndex) ? MapItems[static_cast<std::size_t>(mapIndex)].data : 0;
}

StoreChange RowStore::add(CFilterListBaseData* row, bool now, RowTest test) {
    settleLater();
    StoreChange change;
    change.result = itemCount();
    MapItems.push_back({dataOf(row), 0});
    if (!test.passes(dataOf(row))) {
        row->setIndices(m_list, change.result, -1);
        return change;
    }
    const int slot = displayLast(change.result);
    row->setIndices(m_list, change.result, slot);
    if (now) {
        change.countChanged = true;
        change.dirtyFrom = visualOfSlot(slot);
    } else {
        PendingInsert = true;
        if (ReverseDisplay) ++PendingTopInserts;
    }
    return change;
}

StoreChange RowStore::update(CFilterListBaseData* row, RowTest test) {
    sFilterListRowIndex* const numbers = row->find(m_list);
    if (numbers == nullptr) return {};
    settleLater();
    const bool passes = test.passes(dataOf(row));
    if (numbers->displayIndex != -1) {
        if (!passes) return leave(*numbers);
        StoreChange change;
        change.dirtyRow = visualOfSlot(slotOfNumbers(*numbers));
        return change;
    }
    return passes && numbers->mapIndex != -1 ? enter(*numbers) : StoreChange{};
}

StoreChange RowStore::leave(sFilterListRowIndex& numbers) {
    const int formerCount = displayCount();
    int slot = numbers.displayIndex;
    if (!m_lazyOrder && slot == formerCount - 1) {
        DisplayItems.pop_back();
    } else {
        if (!m_lazyOrder) becomeLazy();
        slot = m_lazyOrder->erase(numbers.mapIndex);
    }
    shiftPendingDeletes(slot);
    numbers.displayIndex = -1;
    const int visual = ReverseDisplay ? formerCount - 1 - slot : slot;
    return {.result = -1, .countChanged = true, .dirtyFrom = visual, .dirtyMayStartAbove = true};
}

void RowStore::shiftPendingDeletes(int erasedSlot) {
    if (FirstPendingDelete > erasedSlot) --FirstPendingDelete;
    if (LastPendingDelete > erasedSlot) --LastPendingDelete;
}

// The place is just after the rightmost slot with a larger map index: at the end while the display stands in arrival
// order. A row is never sorted in here; a later sort puts it in place.
StoreChange RowStore::enter(sFilterListRowIndex& numbers) {
    if (!m_lazyOrder && !DisplayItems.empty() && DisplayItems.back() < numbers.mapIndex) becomeLazy();
    if (m_lazyOrder && m_lazyOrder->contains(numbers.mapIndex)) return {};
    const int slot = m_lazyOrder ? m_lazyOrder->enter(numbers.mapIndex) : displayLast(numbers.mapIndex);
    numbers.displayIndex = slot;
    return {.result = 1, .countChanged = true, .dirtyFrom = visualOfSlot(slot), .dirtyMayStartAbove = true};
}

StoreChange RowStore::remove(CFilterListBaseData* row, bool now) {
    sFilterListRowIndex* const element = row->find(m_list);
    if (element == nullptr) return {.result = -1};
    settleLater();
    const sFilterListRowIndex numbers = *element;
    row->erase(element);
    StoreChange change{.result = numbers.mapIndex};
    if (!mapIndexIsValid(numbers.mapIndex)) return change;
    MapItems[static_cast<std::size_t>(numbers.mapIndex)].data = 0;
    const int slot = slotOfNumbers(numbers);
    if (slot == -1) return change;
    if (m_lazyOrder) m_lazyTombstones.push_back(numbers.mapIndex);
    if (now) {
        change.countChanged = true;
        change.dirtyFrom = visualOfSlot(slot);
        change.dirtyMayStartAbove = true;
        eraseTombstonesFrom(slot, nullptr);
    } else {
        PendingDelete = true;
        FirstPendingDelete = FirstPendingDelete == -1 ? slot : std::min(FirstPendingDelete, slot);
        LastPendingDelete = std::max(LastPendingDelete, slot);
    }
    return change;
}

StoreChange RowStore::endBatch(BatchSelection& selection) {
    if (!batchIsOpen()) return {};
    settleLater();
    const int topInserts = static_cast<int>(PendingTopInserts);
    for (int& visual : selection.selected) visual += topInserts;
    selection.mark += topInserts;

    int repaintFrom = FirstPendingDelete;
    if (PendingInsert) {
        repaintFrom = 0;
    } else if (ReverseDisplay) {
        repaintFrom = displayCount() - LastPendingDelete - 1;
    }
    if (FirstPendingDelete != -1) {
        const int formerCount = displayCount();
        m_erasedSlots.clear();
        eraseTombstonesFrom(FirstPendingDelete, &m_erasedSlots);
        moveSelection(selection, formerCount);
    }
    PendingDelete = PendingInsert = false;
    PendingTopInserts = 0;
    FirstPendingDelete = LastPendingDelete = -1;

    std::erase_if(selection.selected, [this](int visual) { return !slotIsValid(visual); });
    if (ReverseDisplay) repaintFrom = std::min(repaintFrom, displayCount() - 1);
    return {.countChanged = true, .dirtyFrom = std::max(repaintFrom, 0), .dirtyMayStartAbove = true};
}

// One pass: live rows move down and learn their slot, tombstones go. The former slots of those are noted, rising.
void RowStore::eraseTombstonesFrom(int slot, std::vector<int>* erased) {
    if (m_lazyOrder) return eraseLazyTombstonesFrom(slot, erased);
    const int count = displayCount();
    constexpr int ahead = 16;  // rows are far apart in memory: ask for their numbers before they are written
    int kept = slot;
    for (int from = slot; from < count; ++from) {
        const std::size_t mapIndex = indexAtSlot(from);
        if (from + ahead < count) __builtin_prefetch(rowOf(rowAtSlot(from + ahead).data), 1);
        if (const RowData data = MapItems[mapIndex].data; data != 0) {
            DisplayItems[static_cast<std::size_t>(kept)] = static_cast<std::int32_t>(mapIndex);
            if (sFilterListRowIndex* numbers = rowOf(data)->find(m_list)) numbers->displayIndex = kept;
            ++kept;
        } else if (erased != nullptr) {
            erased->push_back(from);
        }
    }
    if (kept < count) DisplayItems.resize(static_cast<std::size_t>(kept));
}

// The rule is told row by row: each tombstone, from the lowest slot up, drops the entry of its visual index and lowers
// every entry above it, and the mark likewise. Taken together, an entry falls by the number of tombstones whose former
// visual index lies below its own; in reverse display these are the ones in higher slots. (The mark stops moving once
// the list is empty; it then has no entry left to give the focus to, so that is not told apart here.)
void RowStore::moveSelection(BatchSelection& selection, int formerCount) const {
    const auto moved = [&](int visual) {
        const int formerSlot = ReverseDisplay ? formerCount - 1 - visual : visual;
        const auto [at, after] = std::equal_range(m_erasedSlots.begin(), m_erasedSlots.end(), formerSlot);
        if (at != after) return -1;
        return visual - static_cast<int>(ReverseDisplay ? m_erasedSlots.end() - after : at - m_erasedSlots.begin());
    };
    for (int& visual : selection.selected) visual = moved(visual);
    std::erase(selection.selected, -1);
    selection.mark = moved(selection.mark);  // -1 lies below every row and stays
}

// All slots are read before the first tombstone goes.
void RowStore::eraseLazyTombstonesFrom(int slot, std::vector<int>* erased) {
    const auto stays = [&](std::int32_t mapIndex) {
        const int own = m_lazyOrder->slotOf(mapIndex);
        if (own >= slot && erased != nullptr) erased->push_back(own);
        return own < slot;
    };
    const auto going = std::partition(m_lazyTombstones.begin(), m_lazyTombstones.end(), stays);
    std::for_each(going, m_lazyTombstones.end(), [this](std::int32_t mapIndex) { m_lazyOrder->erase(mapIndex); });
    m_lazyTombstones.erase(going, m_lazyTombstones.end());
    if (erased != nullptr) std::sort(erased->begin(), erased->end());
}

void RowStore::clear() {
    settleLater();
    forgetOrder();
    if (OptiDataMode) {
        for (const sFilterListRow& slot : MapItems)
            if (slot.data != 0) rowOf(slot.data)->setIndices(m_list, -1, -1);
    }
    MapItems.clear();
}

}  // namespace quor::grid
