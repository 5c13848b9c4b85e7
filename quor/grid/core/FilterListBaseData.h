// CFilterListBaseData: what the host's row objects derive from to be shown by grids in opti-data mode.
//
// GLOSSARY of row numbers; every other file points here.
//   mapIndex  place in order of arrival. A live row keeps it; deleted rows leave a tombstone behind and no gap closes.
//   slot      place in display order: only rows that pass the row test, in sorted order. -1: not displayed.
//   visual    what the user and the native control see. It equals the slot, or with reverse display
//             count - 1 - slot, so that the newest row stands on top.
// And of columns: columnIndex is the position in the list's column array, place the position on screen (-1 hidden).
//
// A row carries its own numbers for every grid that shows it, so no update searches through a grid. The numbers of the
// first two grids lie inside the row, since a million random ticks a second are bound by the cache lines they touch;
// a third grid makes the row allocate. The numbers are private: read them with CFilterListCtrl::getRowIndices.
//
// Contract for the host:
//   - Derive from this class; it may stand anywhere among the bases. It has no virtual functions.
//   - Do not add a row to the same grid twice without DeleteRow between the two.
//   - A row must outlive its time in a grid: until DeleteRow returned (the batch may still be open), or until the grid
//     emptied its store (DeleteAllItems, destruction). Destroy grids before rows.
//   - A copy belongs to no grid. Assigning to a row changes its data and leaves it in the grids that show it.
//   - One thread: that of the windows.
#pragma once

#include "quor/platform/Base.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace quor::grid {
class RowStore;
}

// The numbers of one row in one list. `list` is the key: the address of the list's row store, compared and never
// followed. An element without a list is free.
struct sFilterListRowIndex {
    std::int32_t mapIndex = -1;
    std::int32_t displayIndex = -1;  // -1 when the row test keeps the row out, else what DisplayedRows makes of it
    const void* list = nullptr;
};

class CFilterListBaseData {
public:
    CFilterListBaseData() = default;
    CFilterListBaseData(const CFilterListBaseData&) {}
    CFilterListBaseData& operator=(const CFilterListBaseData&) {  // NOLINT(bugprone-unhandled-self-assignment)
        return *this;
    }
    ~CFilterListBaseData() = default;

private:
    friend class quor::grid::RowStore;  // writes the numbers

    using Overflow = std::vector<sFilterListRowIndex>;

    // The element of a grid, null when the row is not in it. The address holds until the next set or erase.
    sFilterListRowIndex* find(const void* list) {
        if (m_inline[0].list == list) return &m_inline[0];
        if (m_inline[1].list == list) return &m_inline[1];
        return m_overflow ? findInOverflow(list) : nullptr;
    }
    const sFilterListRowIndex* find(const void* list) const {
        return const_cast<CFilterListBaseData*>(this)->find(list);
    }

    // An element that exists takes both numbers, or goes when mapIndex is -1. One that does not is added, whatever
    // the numbers are.
    void setIndices(const void* list, std::int32_t mapIndex, std::int32_t displayIndex) {
        if (sFilterListRowIndex* element = find(list)) {
            if (mapIndex == -1) {
                erase(element);
            } else {
                element->mapIndex = mapIndex;
                element->displayIndex = displayIndex;
            }
            return;
        }
        append({mapIndex, displayIndex, list});
    }

    sFilterListRowIndex* findInOverflow(const void* list) {
        for (sFilterListRowIndex& element : *m_overflow)
            if (element.list == list) return &element;
        return nullptr;
    }

    void append(const sFilterListRowIndex& added) {
        for (sFilterListRowIndex& element : m_inline) {
            if (element.list != nullptr) continue;
            element = added;
            return;
        }
        if (!m_overflow) m_overflow = std::make_unique<Overflow>();
        m_overflow->push_back(added);
    }

    // A freed place is filled with the last element of the overflow: what two grids leave fits inside the row.
    void erase(sFilterListRowIndex* element) {
        if (!m_overflow) {
            *element = {};
            return;
        }
        *element = m_overflow->back();
        m_overflow->pop_back();
        if (m_overflow->empty()) m_overflow.reset();
    }

    sFilterListRowIndex m_inline[2];
    std::unique_ptr<Overflow> m_overflow;
};
