// Adds, ticks and deletes, and the display as a whole. The host may do anything while it is asked, so whatever asks it
// does so in a walk and changes the rows only once it has the answer.
#include "quor/grid/core/LiveRows.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace quor::grid {

LiveRows::~LiveRows() {
    for (RowWalk* walk = m_walk; walk; walk = walk->m_outer) walk->m_rows = nullptr;
}

void LiveRows::reserve(int n) {
    m_store.reserve(n);
    m_display.reserve(n);
}

void LiveRows::setReverse(bool on) {
    settleTicks();
    ReverseDisplay = on;
}

// ---- Numbers

int LiveRows::mapIndexOfSlot(int slot) {
    if (!slotIsValid(slot)) return -1;
    settleTicks();
    return m_display.at(slot);
}

int LiveRows::slotOf(const CFilterListBaseData* row) {
    settleTicks();
    const sFilterListRowIndex* const numbers = m_store.numbersOf(row);
    if (!numbers || numbers->displayIndex == -1) return -1;
    return m_display.slotOf(*numbers);
}

int LiveRows::slotOfMapIndex(int mapIndex) {
    settleTicks();
    return m_display.slotOfMapIndex(mapIndex);
}

void LiveRows::numbersOf(const CFilterListBaseData* row, int& mapIndex, int& visual) {
    mapIndex = visual = -1;
    const sFilterListRowIndex* const numbers = m_store.numbersOf(row);
    if (!numbers) return;
    mapIndex = numbers->mapIndex;
    if (const int slot = slotOf(row); slot != -1) visual = mirrored(slot);
}

std::vector<std::int32_t> LiveRows::displayOrder() {
    settleTicks();
    return m_display.order();
}

std::vector<std::int32_t> LiveRows::displayedInMapOrder() {
    std::vector<std::int32_t> mapIndices(static_cast<std::size_t>(displayCount()));
    if (displayCount() == itemCount()) {
        std::iota(mapIndices.begin(), mapIndices.end(), 0);
        return mapIndices;
    }
    settleTicks();
    std::vector<char> isDisplayed(static_cast<std::size_t>(itemCount()));
    m_display.forEach([&](int mapIndex) { isDisplayed[static_cast<std::size_t>(mapIndex)] = 1; });
    auto next = mapIndices.begin();
    for (int mapIndex = 0; mapIndex < itemCount(); ++mapIndex)
        if (isDisplayed[static_cast<std::size_t>(mapIndex)]) *next++ = mapIndex;
    return mapIndices;
}

// ---- Adds

// A row that is not in the list after all, since its test or a notification of the control threw.
class LiveRows::AddScope {
public:
    AddScope(LiveRows& rows, const RowWalk& walk, CFilterListBaseData* row)
        : m_rows(rows), m_walk(walk), m_row(row), m_mapIndex(rows.m_store.add(row)) {}
    AddScope(const AddScope&) = delete;
    AddScope& operator=(const AddScope&) = delete;
    ~AddScope() {
        if (m_kept || m_walk.gone() || m_walk.emptied()) return;
        RowStore& store = m_rows.m_store;
        const bool isHere = store.dataOf(m_mapIndex) == dataOf(m_row);
        if (isHere && !m_walk.disturbed() && m_mapIndex + 1 == store.count()) {
            store.takeBackLast(m_row);
            m_rows.m_trends.forgetRow(m_mapIndex);
        } else {
            m_rows.takeBack(m_mapIndex, isHere ? m_row : nullptr);  // what came meanwhile keeps its numbers
        }
    }
    int mapIndex() const { return m_mapIndex; }
    void keep() { m_kept = true; }

private:
    LiveRows& m_rows;
    const RowWalk& m_walk;
    CFilterListBaseData* m_row;
    int m_mapIndex;
    bool m_kept = false;
};

// Asks nobody: it runs while exceptions pass. A row that somebody else deleted, then null, has left a tombstone.
void LiveRows::takeBack(int mapIndex, CFilterListBaseData* row) {
    settleTicks();
    const int slot = m_display.slotOfMapIndex(mapIndex);
    note({.kind = RowStep::Kind::bury, .mapIndex = mapIndex, .now = true});
    ++m_changes;
    if (row) {
        m_store.bury(row, m_store.numbersOf(row));
        m_trends.forgetRow(mapIndex);
        if (slot != -1) m_display.buried(mapIndex);
    }
    if (slot == -1) return;
    m_display.eraseTombstones(slot, nullptr);
    tellDisplayCount();
    m_port.invalidateAll();
}

int LiveRows::add(CFilterListBaseData* row, bool now, RowTest test) {
    settleTicks();
    RowWalk walk(*this);
    AddScope added(*this, walk, row);
    const int mapIndex = added.mapIndex();
    ++m_changes;
    const bool passes = test.passes(dataOf(row));
    if (now && !walk.gone()) layout();  // what may reach the host and throw comes before the commit
    if (walk.gone()) return -1;
    if (passes) commit(walk, {.kind = RowStep::Kind::append, .mapIndex = mapIndex, .passes = true, .now = now});
    walk.finish();
    added.keep();
    return mapIndex;
}

void LiveRows::append(int mapIndex, bool now) {
    const int slot = m_display.append(mapIndex);
    if (now) {
        tellDisplayCount();
        markFrom(mirrored(slot));
        return;
    }
    m_pending.PendingInsert = true;
    if (ReverseDisplay) {
        ++m_pending.PendingTopInserts;
        m_movedUntold = true;
    }
}

// ---- Ticks. The road of a tick is kept short: the less it does, the more cold rows the processor fetches side by
// side.

int LiveRows::update(CFilterListBaseData* row, RowTest test) {
    sFilterListRowIndex* numbers = m_store.numbersOf(row);
    if (!numbers) return 0;
    if (test.function == nullptr) {
        const RowLayout* const inForce = layoutInForce();
        if (!inForce || m_walk || numbers->displayIndex == -1) {
            RowWalk walk(*this);
            return updateSlowly(walk, numbers->mapIndex, true);
        }
        settleTicks();
        if (inForce->visible) m_dirty.noteRow(mirrored(m_display.slotOf(*numbers)));
        return 0;
    }
    const int mapIndex = numbers->mapIndex;
    RowWalk walk(*this);
    const int passes = test.passes(dataOf(row));
    if (walk.gone()) return 0;
    if (walk.m_journal == nullptr && walk.m_outer == nullptr && layoutAllowsNotes()) {
        numbers = m_store.numbersOf(row);
        const int shown = numbers->displayIndex != -1;
        if (m_display.note(*numbers, passes)) {
            m_changes += static_cast<unsigned>(shown != passes);
            return passes - shown;
        }
    }
    return updateSlowly(walk, mapIndex, passes != 0);
}

// Whether the display stays longer than the page, whatever the next ticks do. (A control whose rows end above the end
// of the page moves the page; changes that do so are told one by one.)
bool LiveRows::layoutAllowsNotes() const {
    const RowLayout* const inForce = layoutInForce();
    return inForce && inForce->rowHeight != 0 && displayCount() > inForce->topIndex + inForce->countPerPage;
}

int LiveRows::updateSlowly(RowWalk& walk, int mapIndex, bool passes) {
    layout();  // what may reach the host and throw comes before the commit
    if (walk.gone()) return 0;
    settleTicks();
    if (walk.emptied() || mapIndex == -1) return 0;
    int was = 0, is = passes;
    const RowStep step{.kind = RowStep::Kind::retest, .mapIndex = mapIndex, .passes = passes};
    if (walk.disturbed()) {
        // The answer is that of the moment at which the host was asked.
        const std::vector<std::int32_t>& before = walk.m_journal->before->order;
        was = std::find(before.begin(), before.end(), mapIndex) != before.end();
        commit(walk, step);
    } else {
        auto* const row = reinterpret_cast<CFilterListBaseData*>(m_store.dataAt(mapIndex));
        const sFilterListRowIndex& numbers = *m_store.numbersOf(row);
        was = numbers.displayIndex != -1;
        if (was == is && !walk.m_outer) {
            if (is) markRow(mirrored(m_display.slotOf(numbers)));
            return 0;
        }
        commit(walk, step);
        is = numbers.displayIndex != -1;
    }
    walk.finish();
    return is - was;
}

int LiveRows::retest(sFilterListRowIndex& numbers, bool passes) {
    const int formerCount = displayCount();
    if (numbers.displayIndex != -1 && !passes) {
        const int slot = m_display.leave(numbers);
        m_pending.slotLeft(slot);
        tellDisplayCount();
        markFrom(ReverseDisplay ? formerCount - 1 - slot : slot);
        return -1;
    }
    if (numbers.displayIndex != -1 || !passes || numbers.mapIndex == -1) return 0;
    const int slot = m_display.enter(numbers.mapIndex);
    if (slot == -1) return 0;
    tellDisplayCount();
    markFrom(mirrored(slot));
    return 1;
}

// ---- Deletes. Deferred ones only leave tombstones; a batch end closes them in one pass from the lowest of them while
// the display order is plain, one by one while it is lazy.

int LiveRows::remove(CFilterListBaseData* row, bool now) {
    if (now && m_store.numbersOf(row)) {
        const RowWalk walk(*this);
        layout();  // what may reach the host and throw comes first
        if (walk.rowsWent()) return -1;
    }
    sFilterListRowIndex* const numbers = m_store.numbersOf(row);
    if (!numbers) return -1;
    settleTicks();
    note({.kind = RowStep::Kind::bury, .mapIndex = numbers->mapIndex, .now = now});
    ++m_changes;
    const sFilterListRowIndex had = m_store.bury(row, numbers);
    m_trends.forgetRow(had.mapIndex);
    if (m_store.holds(had.mapIndex)) bury(had, now);
    return had.mapIndex;
}

void LiveRows::bury(const sFilterListRowIndex& had, bool now) {
    const int slot = m_display.slotOf(had);
    if (slot == -1) return;
    m_display.buried(had.mapIndex);
    if (!now) return m_pending.noteDelete(slot);
    const int formerCount = displayCount();
    m_erasedSlots.clear();
    m_display.eraseTombstones(slot, &m_erasedSlots);
    tellDisplayCount();
    // In reverse display the tombstones behind stand above.
    markFrom(ReverseDisplay ? formerCount - 1 - m_erasedSlots.back() : slot);
}

// ---- The display as a whole

// Rows of opti-data mode are told their places while their memory is near, and hear the former ones again if anybody
// asks before the last of them has answered, or the rebuild ends early.
class LiveRows::ToldAhead {
public:
    ToldAhead(LiveRows& rows, const RowWalk& walk) : m_rows(rows), m_walk(walk) {
        m_rows.m_toldAhead = m_rows.optiData() && !m_walk.disturbed();
    }
    ToldAhead(const ToldAhead&) = delete;
    ToldAhead& operator=(const ToldAhead&) = delete;
    ~ToldAhead() {
        if (!m_walk.rowsWent() && m_rows.m_toldAhead) m_rows.takeBackTold();
    }

private:
    LiveRows& m_rows;
    const RowWalk& m_walk;
};

void LiveRows::takeBackTold() {
    m_toldAhead = false;
    m_display.tellAll();
}

// Every row is asked for once, and the display is what it was until all have answered: a host that comes back into the
// list meanwhile finds it as it was.
void LiveRows::rebuild(RowWalk& walk, RowTest test) {
    constexpr int kAhead = 16;  // rows are far apart in memory; the test reads what the host has behind the numbers
    constexpr RowData kLine = 64;
    settleTicks();
    const int count = itemCount();
    const ToldAhead told(*this, walk);
    auto passing = std::make_shared<std::vector<std::int32_t>>();
    passing->reserve(static_cast<std::size_t>(test.function == nullptr ? count : displayCount()));
    for (int mapIndex = 0; mapIndex < count; ++mapIndex) {
        const int present = walk.present(mapIndex);
        if (walk.emptied()) return;
        if (present == -1) continue;
        if (optiData() && present + kAhead < itemCount()) {
            m_store.fetchToTell(present + kAhead);
            prefetch(reinterpret_cast<const void*>(m_store.dataAt(present + kAhead) + kLine));
        }
        const RowData data = m_store.dataAt(present);
        if (data == 0) continue;
        const bool passes = test.passes(data);
        if (walk.gone()) return;
        if (m_toldAhead) m_store.tell(present, passes ? static_cast<int>(passing->size()) : -1);
        if (passes) passing->push_back(mapIndex);
    }
    commit(walk, {.kind = RowStep::Kind::replace, .rows = std::move(passing)});
}

void LiveRows::reorder(RowWalk& walk, std::vector<std::int32_t> mapIndices, std::function<void()> again) {
    settleTicks();
    commit(walk, {.kind = RowStep::Kind::order,
                  .rows = std::make_shared<const std::vector<std::int32_t>>(std::move(mapIndices)),
                  .again = std::move(again)});
}

void LiveRows::reorderMap(RowWalk& walk, std::vector<std::int32_t> mapIndices) {
    if (walk.gone() || walk.emptied()) return;
    std::vector<std::int32_t> present;
    std::vector<char> named(static_cast<std::size_t>(itemCount()));
    for (const std::int32_t mapIndex : mapIndices) {
        const int now = walk.present(mapIndex);
        if (now == -1) continue;
        present.push_back(now);
        named[static_cast<std::size_t>(now)] = 1;
    }
    for (int mapIndex = 0; mapIndex < itemCount(); ++mapIndex)
        if (!named[static_cast<std::size_t>(mapIndex)]) present.push_back(mapIndex);  // came meanwhile
    settleTicks();
    emptyWalks();
    walk.m_journal.reset();  // goes on with the new numbers
    ++m_changes;
    m_display.clear(true);
    m_store.reorder(present);
    m_trends.reorderRows(present);
}

void LiveRows::clearDisplay() {
    settleTicks();
    note({.kind = RowStep::Kind::replace, .rows = std::make_shared<const std::vector<std::int32_t>>()});
    ++m_changes;
    m_display.clear(true);
}

void LiveRows::clear() {
    settleTicks();
    emptyWalks();
    ++m_changes;
    m_display.clear(false);
    m_store.clear();
    m_trends.clearRows();
}

// ---- Check states

int LiveRows::checkOfVisual(int visual) {
    const int mapIndex = mapIndexOfVisual(visual);
    return m_store.holds(mapIndex) ? m_store.at(mapIndex).check : 0;
}

bool LiveRows::setCheckOfMapIndex(int mapIndex, int state) {
    if (!m_store.holds(mapIndex)) return false;
    m_store.at(mapIndex).check = state;
    return true;
}

}  // namespace quor::grid
