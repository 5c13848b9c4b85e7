// Classic mode: rows are inserted empty, get their data afterwards, and are deleted and re-tested one at a time. Map
// indices move when a row is inserted or erased in the middle, so all rows behind it are renumbered anyhow: a lazy
// order would save nothing, and the plain one is kept.
#include "quor/grid/core/LiveRows.h"

#include <algorithm>

namespace quor::grid {

namespace {

// Gives a row the data that it had, if its test throws and nobody else gave it other data meanwhile.
class DataScope {
public:
    DataScope(RowStore& rows, const RowWalk& walk, int mapIndex, RowData data)
        : m_rows(rows), m_walk(walk), m_mapIndex(mapIndex), m_former(rows.dataAt(mapIndex)) {
        rows.at(mapIndex).data = data;
    }
    DataScope(const DataScope&) = delete;
    DataScope& operator=(const DataScope&) = delete;
    ~DataScope() {
        if (m_kept || m_walk.gone() || m_walk.wasGivenData(m_mapIndex)) return;
        if (const int present = m_walk.present(m_mapIndex); m_rows.holds(present)) m_rows.at(present).data = m_former;
    }
    void keep() { m_kept = true; }

private:
    RowStore& m_rows;
    const RowWalk& m_walk;
    int m_mapIndex;
    RowData m_former;
    bool m_kept = false;
};

}  // namespace

ClassicChange LiveRows::insertItem(int item) {
    if (item < 0) return {};
    const int count = itemCount();
    const bool atEnd = item == 0 || item >= count;
    const int mapIndex = atEnd ? count : item;
    std::vector<std::int32_t>& display = m_display.plain();
    for (const std::int32_t value : display)
        if (!atEnd && value == -1) return {.outcome = ClassicOutcome::corrupt};
    note({.kind = RowStep::Kind::insert, .mapIndex = mapIndex, .now = atEnd});
    ++m_changes;
    m_movedUntold = true;
    for (std::int32_t& value : display)
        if (value >= mapIndex) ++value;
    const int slot = atEnd ? displayCount() : std::min(mapIndex, displayCount());
    m_store.insert(mapIndex);
    m_trends.insertRow(mapIndex);
    display.insert(display.begin() + slot, mapIndex);
    return {ClassicOutcome::done, mapIndex, mirrored(slot)};
}

ClassicChange LiveRows::setItemData(int item, RowData data, RowTest test) {
    const int last = displayCount() - 1;
    if (last < 0 || item < 0) return {};
    const bool lastFirst = item == 0 || item > last;
    int slot = last;
    if (!lastFirst || dataOfMapIndex(m_display.at(last)) != 0) {
        if (item > last) return {};
        slot = mirrored(item);
    }
    const int mapIndex = m_display.at(slot);
    if (!m_store.holds(mapIndex)) return {};
    RowWalk walk(*this);
    const RowData former = m_store.dataAt(mapIndex);
    DataScope given(m_store, walk, mapIndex, data);
    const bool passes = test.passes(data);
    if (walk.gone() || walk.emptied()) return {};
    m_movedUntold = true;  // the control is told of it in the middle, and may move pixels
    if (walk.m_outer) commit(walk, {.kind = RowStep::Kind::give, .mapIndex = mapIndex});
    ClassicChange change = judge(walk, mapIndex, slot, passes);
    given.keep();
    change.former = former;
    return change;
}

void LiveRows::takeBackData(RowData data, RowData former) {
    for (int mapIndex = 0; mapIndex < itemCount(); ++mapIndex) {
        if (m_store.dataAt(mapIndex) != data) continue;
        m_store.at(mapIndex).data = former;
        ++m_changes;
        return;
    }
}

// The visual index of a row whose slot was known before the host was asked.
int LiveRows::shownAt(const RowWalk& walk, int mapIndex, int slot) {
    if (walk.disturbed()) slot = m_display.slotOfMapIndex(walk.present(mapIndex));
    return slot == -1 ? -1 : mirrored(slot);
}

// A row that was displayed before the host was asked stays or leaves. Inside another walk one that stays is judged too:
// that walk may show other rows, and comes before.
ClassicChange LiveRows::judge(RowWalk& walk, int mapIndex, int slot, bool passes) {
    const ClassicChange change{passes ? ClassicOutcome::shown : ClassicOutcome::left, walk.present(mapIndex),
                               shownAt(walk, mapIndex, slot)};
    if (!passes || walk.m_outer) {
        commit(walk, {.kind = RowStep::Kind::judge, .mapIndex = mapIndex, .passes = passes});
        m_movedUntold = true;
    }
    walk.finish();
    return change;
}

ClassicChange LiveRows::eraseVisual(int visual) {
    if (visual >= displayCount()) return {};
    const int slot = mirrored(visual);
    const int mapIndex = mapIndexOfSlot(slot);
    if (!m_store.holds(mapIndex)) return {.outcome = ClassicOutcome::unknown};
    note({.kind = RowStep::Kind::erase, .mapIndex = mapIndex});
    ++m_changes;
    m_movedUntold = true;
    m_display.plain().erase(m_display.plain().begin() + slot);
    if (!closeDisplayGap(mapIndex)) return {.outcome = ClassicOutcome::corrupt};
    m_store.erase(mapIndex);
    m_trends.eraseRow(mapIndex);
    return {ClassicOutcome::done, mapIndex, visual};
}

ClassicChange LiveRows::eraseHidden(int mapIndex) {
    if (!m_store.holds(mapIndex) || slotOfMapIndex(mapIndex) != -1) return {};
    note({.kind = RowStep::Kind::erase, .mapIndex = mapIndex});
    ++m_changes;
    closeDisplayGap(mapIndex);
    m_store.erase(mapIndex);
    return {ClassicOutcome::done, mapIndex, -1};
}

// The map index is about to go: every higher one in the display drops by one. False for a value that cannot be there.
bool LiveRows::closeDisplayGap(int mapIndex) {
    if (mapIndex == itemCount() - 1) return true;
    for (std::int32_t& value : m_display.plain()) {
        if (value == -1 || value == mapIndex) return false;
        if (value > mapIndex) --value;
    }
    return true;
}

ClassicChange LiveRows::retestMapIndex(int mapIndex, RowTest test) {
    if (!m_store.holds(mapIndex)) return {};
    const int slot = slotOfMapIndex(mapIndex);
    if (slot != -1) return retestVisual(mirrored(slot), test);
    const RowData data = m_store.dataAt(mapIndex);
    if (data == 0) return {ClassicOutcome::keptOut, mapIndex, -1};
    RowWalk walk(*this);
    const bool passes = test.passes(data);
    if (walk.gone() || walk.emptied()) return {};
    const RowStep step{.kind = RowStep::Kind::judge, .mapIndex = mapIndex, .passes = passes};
    if (passes || walk.m_outer) commit(walk, step);
    if (passes) m_movedUntold = true;
    const int present = walk.present(mapIndex);
    const int entered = m_display.slotOfMapIndex(present);
    ClassicChange change{ClassicOutcome::keptOut, present, -1};
    if (passes) change = {ClassicOutcome::entered, present, entered == -1 ? -1 : mirrored(entered)};
    walk.finish();
    return change;
}

ClassicChange LiveRows::retestVisual(int visual, RowTest test) {
    const int slot = mirrored(visual);
    const int mapIndex = mapIndexOfSlot(slot);
    if (!m_store.holds(mapIndex)) return {};
    const RowData data = m_store.dataAt(mapIndex);
    if (data == 0) return {ClassicOutcome::keptOut, mapIndex, visual};
    RowWalk walk(*this);
    const bool passes = test.passes(data);
    if (walk.gone() || walk.emptied()) return {};
    return judge(walk, mapIndex, slot, passes);
}

}  // namespace quor::grid
