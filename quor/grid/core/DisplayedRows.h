// DisplayedRows: which rows are displayed, and in which order. Nobody else knows that the order has two forms:
//   plain  an array, and a row's displayIndex is its slot. So it stands after a rebuild and a sort and while rows come
//          and go at its end; a tick reads the slot in the row that it writes anyhow.
//   lazy   a DisplayOrder, from the first time on that a row in opti-data mode leaves or enters with rows behind it.
//          These are not renumbered; a slot is counted when it is asked for, and displayIndex says only -1 or not.
//
// In the lazy form a tick may be noted: its answer is known at once, and the order follows in `settle`. By then it is
// known what will be touched, and it is fetched ahead, while a tick itself jumps nowhere that depends on a row: both
// matter more than any count of instructions, since half of the ticks could go either way and rows lie far apart.
// Whoever asks for a place settles first; only size() counts noted ticks in.
//
// Tombstones (rows without data in opti-data mode) stand in the order until eraseTombstones.
// Row numbers: see FilterListBaseData.h. The store of the rows is borrowed and outlives this object.
#pragma once

#include "quor/grid/core/DisplayOrder.h"
#include "quor/grid/core/RowStore.h"

#include <array>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace quor::grid {

// What settled ticks did to the display. Visual indices, each at the time of its tick.
struct SettledTicks {
    int firstRepaint = std::numeric_limits<int>::max();  // of the rows that stayed displayed; above lastRepaint: none
    int lastRepaint = -1;
    int firstMoved = std::numeric_limits<int>::max();  // the least from which rows moved, by rows that left or entered
    int lowestCount = 0;
    std::vector<int> left;  // slots that rows left, each at its time
};

class DisplayedRows {
public:
    explicit DisplayedRows(RowStore& rows) : m_rows(rows) {}
    DisplayedRows(const DisplayedRows&) = delete;
    DisplayedRows& operator=(const DisplayedRows&) = delete;
    ~DisplayedRows() = default;

    int size() const { return m_lazy ? m_lazy->size() + m_notedGrowth : static_cast<int>(DisplayItems.size()); }
    bool isLazy() const { return m_lazy.has_value(); }
    void reserve(int n) { DisplayItems.reserve(static_cast<std::size_t>(n)); }

    // ---- Noted ticks
    bool hasNotes() const { return m_noteCount != 0; }
    // Whether a tick was noted: only in the lazy form, and while there is room. The numbers are those of its row.
    bool note(sFilterListRowIndex& numbers, int passes);
    // Applies the notes in the order in which they came: where a row enters depends on those that entered before.
    SettledTicks settle(bool reverse);

    // ---- Places. Nothing is noted.
    int at(int slot) const {  // trusts its caller
        return m_lazy ? m_lazy->at(slot) : DisplayItems[static_cast<std::size_t>(slot)];
    }
    // -1 when the row is not displayed; of the row that has these numbers.
    int slotOf(const sFilterListRowIndex& numbers) const {
        return numbers.displayIndex == -1 || !m_lazy ? numbers.displayIndex : m_lazy->slotOf(numbers.mapIndex);
    }
    // The same; walks through a plain display.
    int slotOfMapIndex(int mapIndex) const;
    std::vector<std::int32_t> order() const;
    template <class Function>
    void forEach(Function function) const {
        if (m_lazy) return m_lazy->forEach(function);
        for (const std::int32_t mapIndex : DisplayItems) function(int{mapIndex});
    }

    // ---- Changes. Nothing is noted. Rows learn what they have to know. Result: the slot.
    int append(int mapIndex);
    // Just behind the rightmost slot with a larger map index: at the end while the display stands in arrival order. A
    // row is never sorted in here. -1 when it is displayed already.
    int enter(int mapIndex);
    int leave(const sFilterListRowIndex& numbers);
    // The row of the slot, -1 if none, became a tombstone.
    void buried(int mapIndex) {
        if (m_lazy) m_lazyTombstones.push_back(mapIndex);
    }
    // Closes the tombstones from a slot on; their slots are noted, rising.
    void eraseTombstones(int fromSlot, std::vector<int>* erased);
    // Takes another order, by slot. Rows that it does not name are told that they are not displayed, if `tellOthers`.
    void assign(std::vector<std::int32_t> mapIndices, bool tellOthers);
    // The same where every row has been told already.
    void assignTold(std::vector<std::int32_t> mapIndices);
    // Every row hears once more whether it is displayed, and where.
    void tellAll() { tell(order(), true); }
    void clear(bool tell);

    // ---- Classic mode: the order is plain, and map indices move.
    std::vector<std::int32_t>& plain() { return DisplayItems; }

    // Empty when every invariant of this class holds. `tombstones` counts those that the display holds.
    std::string Check(std::size_t& tombstones) const;

private:
    static constexpr std::size_t kNoteCapacity = 1024;
    // The row was displayed before or passes now, or both.
    struct Note {
        std::int32_t mapIndex;
        std::int8_t shown;
        std::int8_t passes;
    };

    void tell(const std::vector<std::int32_t>& mapIndices, bool tellOthers);
    void becomeLazy();
    void eraseLazyTombstones(int fromSlot, std::vector<int>* erased);

    RowStore& m_rows;
    std::vector<std::int32_t> DisplayItems;  // empty while the order is lazy
    std::optional<DisplayOrder> m_lazy;
    std::vector<std::int32_t> m_lazyTombstones;  // map indices of those in the lazy order
    std::array<Note, kNoteCapacity> m_notes;
    std::size_t m_noteCount = 0;
    int m_notedGrowth = 0;  // rows that the display gains when the notes are settled
};

}  // namespace quor::grid
