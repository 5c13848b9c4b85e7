// RowStore: the rows of one list in order of arrival, with their check states and the numbers that rows carry. It knows
// nothing of which rows are displayed, of texts, or of a control.
// Row numbers (mapIndex, slot, visual): see FilterListBaseData.h.
//
// Owns the row slots. The row objects are the host's; in opti-data mode the store writes their numbers, under its own
// address as the key.
#pragma once

#include "quor/grid/core/FilterListBaseData.h"

#include <cstddef>
#include <vector>

// A row slot. `data` 0 in opti-data mode: a tombstone.
struct sFilterListRow {
    DWORD_PTR data = 0;
    std::int32_t check = 0;
};

namespace quor::grid {

// The item data of a row: in opti-data mode a CFilterListBaseData*, in classic mode whatever the host gave. 0: none.
using RowData = DWORD_PTR;

class RowStore {
public:
    RowStore() = default;
    RowStore(const RowStore&) = delete;
    RowStore& operator=(const RowStore&) = delete;
    ~RowStore() = default;  // the rows are not told; the owner clears the store while its rows live

    int count() const { return static_cast<int>(MapItems.size()); }  // tombstones included
    bool holds(int mapIndex) const { return mapIndex >= 0 && mapIndex < count(); }
    bool optiData() const { return OptiDataMode; }
    void enterOptiData() { OptiDataMode = true; }  // there is no way back
    // Throws std::length_error("vector too long") for a number that no store can hold, or below 0.
    void reserve(int n);

    // These trust their caller.
    RowData dataAt(int mapIndex) const { return at(mapIndex).data; }
    bool isTombstone(int mapIndex) const { return at(mapIndex).data == 0; }
    sFilterListRow& at(int mapIndex) { return MapItems[static_cast<std::size_t>(mapIndex)]; }
    const sFilterListRow& at(int mapIndex) const { return MapItems[static_cast<std::size_t>(mapIndex)]; }
    // 0 when out of range.
    RowData dataOf(int mapIndex) const { return holds(mapIndex) ? dataAt(mapIndex) : 0; }
    // Touches no row.
    bool holdsData(RowData data) const;

    // ---- Rows in opti-data mode
    // The row's numbers here, null when it is not here. The address holds until the row enters or leaves a list.
    sFilterListRowIndex* numbersOf(CFilterListBaseData* row) const { return row->find(this); }
    const sFilterListRowIndex* numbersOf(const CFilterListBaseData* row) const { return row->find(this); }
    // Tells the row its place in the display; nothing for a tombstone and in classic mode.
    void tell(int mapIndex, int displayIndex);
    // Fetches what `tell` writes, a few rows ahead: rows lie far apart in memory.
    void fetchToTell(int mapIndex) const;
    // The row hears its map index and is not displayed yet. Result: the map index.
    int add(CFilterListBaseData* row);
    // Takes back the row that was added last.
    void takeBackLast(CFilterListBaseData* row);
    // Leaves a tombstone; the row forgets the list and may be freed. Result: the numbers that it had.
    sFilterListRowIndex bury(CFilterListBaseData* row, sFilterListRowIndex* numbers);

    // ---- Rows in classic mode: those behind move.
    void insert(int mapIndex) { MapItems.insert(MapItems.begin() + mapIndex, sFilterListRow{}); }
    void erase(int mapIndex) { MapItems.erase(MapItems.begin() + mapIndex); }

    // Forgets every row and tells it so.
    void clear();
    // Puts every slot, each named once by its present map index, into a new order. Rows in opti-data mode learn their
    // map index; none is displayed.
    void reorder(const std::vector<std::int32_t>& mapIndices);

    int checkedCount() const;  // rows with a state above 0
    void resetChecks();

private:
    static CFilterListBaseData* rowOf(RowData data) { return reinterpret_cast<CFilterListBaseData*>(data); }

    std::vector<sFilterListRow> MapItems;
    bool OptiDataMode = false;
};

inline void RowStore::tell(int mapIndex, int displayIndex) {
    const RowData data = dataAt(mapIndex);
    if (!OptiDataMode || data == 0) return;
    if (sFilterListRowIndex* const numbers = rowOf(data)->find(this)) numbers->displayIndex = displayIndex;
}

inline void RowStore::fetchToTell(int mapIndex) const {
    if (OptiDataMode) prefetchToWrite(reinterpret_cast<const void*>(dataAt(mapIndex)));
}

}  // namespace quor::grid
