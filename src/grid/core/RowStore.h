// RowStore: the rows of one grid, without a window. It holds the two orders of the same rows, the state of an open
// batch and the check states, and answers every operation with what the shell has to tell the native control.
// Row numbers (mapIndex, slot, visual): see FilterListBaseData.h.
//
// Owns: the row slots. The row objects are the host's; in opti-data mode the store writes their numbers.
// Knows no text: whether a row is displayed is decided by the RowTest that the caller passes.
//
// Invariants, verified by Check():
//   - every displayed map index is valid and displayed once;
//   - in opti-data mode a displayed row knows its slot, and a row that is not displayed says displayIndex -1;
//   - tombstones stand in the display only while a deferred delete is pending, none below the first pending slot.
//
// The display order has two forms, and nobody but this class indexes it.
//   plain  DisplayItems, a row's displayIndex is its slot. So it stands after rebuild and reorderDisplay and while rows
//          come and go at its end; a tick reads the slot in the row that it writes anyhow.
//   lazy   m_lazyOrder, from the first time on that a row in opti-data mode leaves or enters with rows behind it. These
//          are not renumbered; a slot is counted when it is asked for, and displayIndex says only -1 or something else.
//
// In the lazy form ticks may come in by updateLater: it answers at once and notes what it did, and the order follows
// when anybody asks for a place, or after `laterCapacity` ticks. By then the store knows what it will touch and fetches
// it ahead, while a tick itself jumps nowhere that depends on a row: both matter more than any count of instructions,
// since half of the ticks could go either way and rows lie far apart. Every operation settles the notes first.
//
// A batch opens with the first deferred add or delete and closes in endBatch.
#pragma once

#include "src/grid/core/DisplayOrder.h"
#include "src/grid/core/FilterListBaseData.h"

#include <array>
#include <cstddef>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

// A row slot. `data` 0 in opti-data mode: a tombstone.
struct sFilterListRow {
    DWORD_PTR data = 0;
    std::int32_t check = 0;
};

namespace quor::grid {

// The item data of a row: in opti-data mode a CFilterListBaseData*, in classic mode whatever the host gave. 0: none.
using RowData = DWORD_PTR;

// Decides whether a row is displayed. Empty: every row is, at the cost of one comparison.
struct RowTest {
    bool (*function)(const void* context, RowData data) = nullptr;
    const void* context = nullptr;

    bool passes(RowData data) const { return function == nullptr || function(context, data); }
};

// What an operation did, for the shell to carry on.
struct StoreChange {
    int result = 0;                   // of the public operation
    bool countChanged = false;        // the native control has to hear displayCount()
    int dirtyRow = -1;                // visual index of the one row to repaint, -1 none
    int dirtyFrom = -1;               // visual index from which the page is to repaint, -1 none
    bool dirtyMayStartAbove = false;  // dirtyFrom above the page counts as the top of the page
};

// What updateLater has done to the display, told when it is settled. Visual indices, each at the time of its tick.
struct LaterChanges {
    int firstRepaint = std::numeric_limits<int>::max();  // of the rows that stayed displayed; above lastRepaint: none
    int lastRepaint = -1;
    int firstMoved = std::numeric_limits<int>::max();  // the least from which rows moved, by rows that left or entered
    int lowestCount = 0;
};

// The native selection at the end of a batch: visual indices, in the order in which the control returned them.
struct BatchSelection {
    std::vector<int> selected;
    int mark = -1;
};

// What an operation of classic mode found.
enum class ClassicOutcome {
    refused,  // out of range: nothing happened
    unknown,  // the displayed row has no map index
    corrupt,  // the display holds a value that it must not hold
    done,     // inserted, stored or deleted
    shown,    // the row stands in the display and passes
    left,     // the row left the display
    entered,  // the row entered the display
    keptOut,  // not displayed before or after, or no data yet
};

struct ClassicChange {
    ClassicOutcome outcome = ClassicOutcome::refused;
    int mapIndex = -1;
    int visual = -1;
};

class QUOR_CONTROLS_API RowStore {
public:
    // `list` is the key under which rows keep their numbers. It is compared and never followed.
    explicit RowStore(CFilterListCtrl* list) : m_list(list) {}
    RowStore(const RowStore&) = delete;
    RowStore& operator=(const RowStore&) = delete;
    ~RowStore() = default;  // the rows are not told; the shell empties the store while its rows live

    // ---- sizes and numbers
    int itemCount() const { return static_cast<int>(MapItems.size()); }  // tombstones included
    int displayCount() const {
        return m_lazyOrder ? m_lazyOrder->size() + m_laterGrowth : static_cast<int>(DisplayItems.size());
    }
    bool optiData() const { return OptiDataMode; }
    void enterOptiData() { OptiDataMode = true; }  // there is no way back
    bool reverse() const { return ReverseDisplay; }
    void setReverse(bool on) { ReverseDisplay = on; }

    // Room for n rows. Throws std::length_error("vector too long") for a number that no store can hold, or below 0.
    void reserve(int n);

    // Its own inverse. The number need not be in range.
    int mirrored(int number) const { return ReverseDisplay ? displayCount() - 1 - number : number; }
    int slotOfVisual(int visual) const { return mirrored(visual); }
    int visualOfSlot(int slot) const { return mirrored(slot); }
    // -1 when out of range.
    int mapIndexOfSlot(int slot) const;
    int mapIndexOfVisual(int visual) const { return mapIndexOfSlot(slotOfVisual(visual)); }
    // -1 when the row is not displayed. Walks through a plain display; rows in opti-data mode know it themselves.
    int slotOfMapIndex(int mapIndex) const;
    // 0 when out of range, for a tombstone, and for a row without data.
    RowData dataOfVisual(int visual) const;
    // No bounds check.
    RowData dataOfMapIndex(std::size_t mapIndex) const { return MapItems[mapIndex].data; }
    // 0 when out of range.
    RowData dataOfMapIndexChecked(int mapIndex) const;

    // ---- opti-data mode. Rows must not be null; `now` false holds the native side back to the end of the batch.
    StoreChange add(CFilterListBaseData* row, bool now, RowTest test);
    // The slot of a row, -1 when it is not displayed or not here. What a tick asks when no row can leave.
    int slotOf(const CFilterListBaseData* row) const {
        const sFilterListRowIndex* const numbers = row->find(m_list);
        return numbers ? slotOfNumbers(*numbers) : -1;
    }
    // Tests a changed row anew. Result 1: it entered the display, -1: it left, 0: neither.
    StoreChange update(CFilterListBaseData* row, RowTest test);
    // The same answer, and a display that follows no later than it is asked for. Only where canUpdateLater.
    int updateLater(CFilterListBaseData* row, RowTest test);
    // Whether the display stays longer than `rows`, whatever the next tick does. (A control whose rows end above the
    // end of the page moves the page; changes that do so are told one by one.)
    bool canUpdateLater(int rows) const { return m_lazyOrder && displayCount() > rows; }
    void settleLater() const {
        if (m_laterCount != 0) const_cast<RowStore*>(this)->applyLater();
    }
    // Hears of every settling. Called from any operation; it must not call back.
    std::function<void(const LaterChanges&)> onSettled;
    // The row may be freed on return. Result: its map index, -1 when the store does not know it.
    StoreChange remove(CFilterListBaseData* row, bool now);

    bool batchIsOpen() const { return PendingDelete || PendingInsert; }
    // Applies what is pending and moves the selection along with its rows. On entry `selection` is what the native
    // control holds, on return what it has to hold: in range, in the same order. The result names the repaint start.
    StoreChange endBatch(BatchSelection& selection);

    // ---- both modes
    // Displays all rows that pass, in map order. Pending work stays pending.
    void rebuild(RowTest test);
    // Takes every row out of the display and leaves it in the store.
    void clearDisplay();
    // Forgets every row and tells it so. What a batch has pending stays pending; it finds nothing to do.
    void clear();

    // ---- sorts. The batch is closed.
    // The map indices in display order, by slot.
    std::vector<std::int32_t> displayOrder() const;
    // The same rows by rising map index: as they mostly lie in memory, where a million of them are read several times
    // faster than in display order.
    std::vector<std::int32_t> displayedInMapOrder() const;
    // Takes the same rows in another order, by slot; in opti-data mode they are told their slots.
    void reorderDisplay(std::vector<std::int32_t> mapIndices);
    // Puts every row and tombstone, each named once by its present map index, into a new map order, check states with
    // them. Rows in opti-data mode learn their map index. The display is empty afterwards: rebuild it.
    void reorderMap(const std::vector<std::int32_t>& mapIndices);

    // ---- classic mode
    // A new slot without data, displayed. 0 and everything past the end append. Outcome: done, refused for a negative
    // item, or corrupt: then the caller empties the store.
    ClassicChange insertItem(int item);
    // Gives data to a displayed row; item 0 and everything past the end mean the last slot while that has none.
    // Outcome: shown, left (the test failed; the row stays in the map) or refused.
    ClassicChange setItemData(int item, RowData data, RowTest test);
    // Outcome: done, refused, unknown or corrupt.
    ClassicChange eraseVisual(int visual);
    // A row that is not displayed. Outcome: done, or refused for a row out of range or displayed.
    ClassicChange eraseHidden(int mapIndex);
    // Tests a changed row anew. Outcome: refused, shown, left, entered or keptOut. `visual` as before a row left and
    // after it entered.
    ClassicChange retestMapIndex(int mapIndex, RowTest test);
    ClassicChange retestVisual(int visual, RowTest test);

    // ---- check states
    int checkOfVisual(int visual) const;                                                  // 0 when out of range
    bool setCheckOfVisual(int visual, int state);                                         // false when out of range
    int checkOfMapIndex(std::size_t mapIndex) const { return MapItems[mapIndex].check; }  // no bounds check
    bool setCheckOfMapIndex(int mapIndex, int state);
    int checkedCount() const;  // rows with a state above 0
    void resetChecks();

    // Empty when every invariant holds, else the first one that does not. Reads every live row.
    std::string Check() const;

private:
    static constexpr std::size_t laterCapacity = 1024;
    // A noted tick: the row was displayed before or passes now, or both.
    struct LaterTick {
        std::int32_t mapIndex;
        std::int8_t shown;
        std::int8_t passes;
    };

    static CFilterListBaseData* rowOf(RowData data) { return reinterpret_cast<CFilterListBaseData*>(data); }
    static RowData dataOf(CFilterListBaseData* row) { return reinterpret_cast<RowData>(row); }
    sFilterListRow& rowAtSlot(int slot) { return MapItems[indexAtSlot(slot)]; }
    std::size_t indexAtSlot(int slot) const {
        return static_cast<std::size_t>(DisplayItems[static_cast<std::size_t>(slot)]);
    }
    int slotOfNumbers(const sFilterListRowIndex& numbers) const {
        const int displayIndex = numbers.displayIndex;
        if (displayIndex == -1 || !m_lazyOrder) return displayIndex;
        settleLater();
        return m_lazyOrder->slotOf(numbers.mapIndex);
    }
    bool isTombstone(int mapIndex) const { return MapItems[static_cast<std::size_t>(mapIndex)].data == 0; }
    bool mapIndexIsValid(int mapIndex) const { return mapIndex >= 0 && mapIndex < itemCount(); }
    bool slotIsValid(int slot) const { return slot >= 0 && slot < displayCount(); }

    void applyLater();
    void shiftPendingDeletes(int erasedSlot);
    void becomeLazy();
    void forgetOrder();
    template <class Function>
    void forEachDisplayed(Function function) const;
    void tellRow(std::size_t mapIndex, int displayIndex);
    int displayLast(int mapIndex);
    StoreChange leave(sFilterListRowIndex& numbers);
    StoreChange enter(sFilterListRowIndex& numbers);
    void eraseTombstonesFrom(int slot, std::vector<int>* erased);
    void eraseLazyTombstonesFrom(int slot, std::vector<int>* erased);
    void moveSelection(BatchSelection& selection, int formerCount) const;
    ClassicChange leaveClassic(int slot);
    bool closeDisplayGap(int mapIndex);
    std::string checkDisplay() const;
    std::string checkNumbers() const;

    CFilterListCtrl* m_list;
    std::vector<sFilterListRow> MapItems;
    std::vector<std::int32_t> DisplayItems;  // empty while the order is lazy
    std::optional<DisplayOrder> m_lazyOrder;
    std::vector<std::int32_t> m_lazyTombstones;  // map indices of those in the lazy order
    std::array<LaterTick, laterCapacity> m_later;
    std::size_t m_laterCount = 0;
    int m_laterGrowth = 0;  // rows that the display gains when the notes are settled
    bool ReverseDisplay = false;
    bool OptiDataMode = false;
    bool PendingDelete = false;
    bool PendingInsert = false;
    std::uint32_t PendingTopInserts = 0;
    std::int32_t FirstPendingDelete = -1;
    std::int32_t LastPendingDelete = -1;
    std::vector<int> m_erasedSlots;  // scratch of endBatch
};

}  // namespace quor::grid
