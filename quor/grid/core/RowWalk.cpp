// Walks and their journals. The plain state is changed step by step here, slowly and without asking anybody: this runs
// only when a host came back into a list in the middle of an operation.
#include "quor/grid/core/RowWalk.h"

#include "quor/grid/core/LiveRows.h"

#include <algorithm>
#include <set>
#include <utility>

namespace quor::grid {

// ---- The plain state

bool DisplayState::isTombstone(std::int32_t mapIndex) const {
    return std::binary_search(tombstones.begin(), tombstones.end(), mapIndex);
}

bool DisplayState::take(const RowStep& step, BatchSelection* selection) {
    const auto place = std::find(order.begin(), order.end(), step.mapIndex);
    const auto firstLarger = [&](auto begin, auto end) {
        return std::find_if(begin, end, [&](std::int32_t value) { return value > step.mapIndex; });
    };
    switch (step.kind) {
        case RowStep::Kind::append:
            order.push_back(step.mapIndex);
            if (step.now) break;
            pending.PendingInsert = true;
            if (reverse) ++pending.PendingTopInserts;
            break;
        case RowStep::Kind::retest:
            if (place != order.end() && !step.passes) {
                pending.slotLeft(static_cast<int>(place - order.begin()));
                order.erase(place);
            } else if (place == order.end() && step.passes) {
                const auto larger = firstLarger(order.rbegin(), order.rend());
                order.insert(larger == order.rend() ? order.end() : larger.base(), step.mapIndex);
            }
            break;
        case RowStep::Kind::judge:
            if (place != order.end() && !step.passes) order.erase(place);
            if (place == order.end() && step.passes)
                order.insert(firstLarger(order.begin(), order.end()), step.mapIndex);
            break;
        case RowStep::Kind::give:
            break;
        case RowStep::Kind::bury:
            if (place != order.end()) bury(step);
            break;
        case RowStep::Kind::compact:
            compact(selection);
            break;
        case RowStep::Kind::replace:
            order = *step.rows;
            tombstones.clear();
            break;
        case RowStep::Kind::order: {
            const std::set<std::int32_t> displayed(order.begin(), order.end());
            const std::set<std::int32_t> known(step.rows->begin(), step.rows->end());
            std::vector<std::int32_t> next, unknown;
            for (const std::int32_t mapIndex : *step.rows)
                if (displayed.count(mapIndex)) next.push_back(mapIndex);
            for (const std::int32_t mapIndex : order)
                if (!known.count(mapIndex)) unknown.push_back(mapIndex);
            order = std::move(next);
            order.insert(order.end(), unknown.begin(), unknown.end());
            pending.findDeletes(order, [this](std::int32_t mapIndex) { return isTombstone(mapIndex); });
            return unknown.empty();
        }
        case RowStep::Kind::insert: {
            for (std::int32_t& value : order)
                if (value >= step.mapIndex) ++value;
            const auto slot = step.now ? order.size() : std::min(static_cast<std::size_t>(step.mapIndex), order.size());
            order.insert(order.begin() + static_cast<std::ptrdiff_t>(slot), step.mapIndex);
            break;
        }
        case RowStep::Kind::erase:
            if (place != order.end()) order.erase(place);
            for (std::int32_t& value : order)
                if (value > step.mapIndex) --value;
            break;
    }
    return true;
}

void DisplayState::bury(const RowStep& step) {
    tombstones.insert(std::lower_bound(tombstones.begin(), tombstones.end(), step.mapIndex), step.mapIndex);
    const auto place = std::find(order.begin(), order.end(), step.mapIndex);
    if (!step.now) return pending.noteDelete(static_cast<int>(place - order.begin()));
    std::vector<std::int32_t> gone;
    order.erase(std::remove_if(place, order.end(),
                               [&](std::int32_t mapIndex) {
                                   if (isTombstone(mapIndex)) gone.push_back(mapIndex);
                                   return isTombstone(mapIndex);
                               }),
                order.end());
    std::erase_if(tombstones, [&](std::int32_t one) { return std::find(gone.begin(), gone.end(), one) != gone.end(); });
}

void DisplayState::compact(BatchSelection* selection) {
    const int topInserts = static_cast<int>(pending.PendingTopInserts);
    const int formerCount = static_cast<int>(order.size());
    std::vector<int> erased;
    if (pending.FirstPendingDelete != -1)
        for (int slot = 0; slot < formerCount; ++slot)
            if (isTombstone(order[static_cast<std::size_t>(slot)])) erased.push_back(slot);
    std::erase_if(order, [this](std::int32_t mapIndex) { return isTombstone(mapIndex); });
    tombstones.clear();
    pending = {};
    if (!selection) return;
    for (int& visual : selection->selected) visual += topInserts;
    selection->mark += topInserts;
    if (!erased.empty()) moveSelection(*selection, erased, formerCount, reverse);
    const int count = static_cast<int>(order.size());
    std::erase_if(selection->selected, [count](int visual) { return visual < 0 || visual >= count; });
}

// ---- Walks

RowWalk::RowWalk(LiveRows& rows) : m_rows(&rows), m_outer(rows.m_walk) { rows.m_walk = this; }

RowWalk::~RowWalk() {
    if (m_rows) m_rows->leaveWalk(*this, false);
}

void RowWalk::expectMore() {
    if (m_rows) m_rows->remember();
}

void RowWalk::finish() {
    if (m_rows && m_journal && !m_outer && !m_journal->emptied && !m_windowWent) m_rows->finishJournal(*this);
    if (m_rows) std::exchange(m_rows, nullptr)->leaveWalk(*this, true);
}

int RowWalk::presentByJournal(int mapIndex) const {
    if (m_journal->emptied) return -1;
    for (const RowStep& step : m_journal->inner) mapIndex = movedBy(step, mapIndex);
    return mapIndex;
}

bool RowWalk::wasGivenData(int mapIndex) const {
    if (!m_journal) return false;
    for (const RowStep& step : m_journal->inner) {
        if (step.kind == RowStep::Kind::give && step.mapIndex == mapIndex) return true;
        mapIndex = movedBy(step, mapIndex);
    }
    return false;
}

// Where a row of this map index stands after the step, -1 nowhere.
int RowWalk::movedBy(const RowStep& step, int mapIndex) {
    if (step.kind == RowStep::Kind::insert && mapIndex >= step.mapIndex) return mapIndex + 1;
    if (step.kind != RowStep::Kind::erase || mapIndex < step.mapIndex) return mapIndex;
    return mapIndex == step.mapIndex ? -1 : mapIndex - 1;
}

std::shared_ptr<const DisplayState> LiveRows::displayState() const {
    auto state = std::make_shared<DisplayState>();
    state->order = m_display.order();
    if (optiData())
        for (const std::int32_t mapIndex : state->order)
            if (m_store.isTombstone(mapIndex)) state->tombstones.push_back(mapIndex);
    std::sort(state->tombstones.begin(), state->tombstones.end());
    state->pending = m_pending;
    state->reverse = ReverseDisplay;
    return state;
}

// The display is about to change: walks that have seen no change so far keep what it was.
void LiveRows::remember() {
    std::shared_ptr<const DisplayState> state;
    for (RowWalk* walk = m_walk; walk; walk = walk->m_outer) {
        if (walk->journal().before) break;
        if (!state) state = displayState();
        walk->m_journal->before = state;
    }
}

// An operation that asks nobody: part of the journal of the walk that it came into.
void LiveRows::note(RowStep step) {
    if (!m_walk) return;
    remember();
    m_walk->m_journal->inner.push_back(std::move(step));
}

void LiveRows::emptyWalks() {
    for (RowWalk* walk = m_walk; walk; walk = walk->m_outer) {
        walk->journal() = {};
        walk->m_journal->emptied = true;
    }
}

void LiveRows::windowWent() {
    for (RowWalk* walk = m_walk; walk; walk = walk->m_outer) walk->m_windowWent = true;
    m_settling = false;
    takeCount(0);
    m_dirty.fold(m_layout);
    m_layout = {};
    m_layoutIsStale = true;
}

// A walk in no other one, in which nothing came in between, acts at once.
void LiveRows::commit(RowWalk& walk, RowStep step) {
    if (walk.gone() || walk.emptied()) return;
    ++m_changes;
    if (walk.m_outer || walk.m_journal) {
        remember();
        walk.m_journal->own.push_back(step);
    }
    if (!walk.disturbed()) return apply(step);
    playJournal(*walk.m_journal, true, nullptr);
}

void LiveRows::apply(const RowStep& step) {
    switch (step.kind) {
        case RowStep::Kind::append:
            return append(step.mapIndex, step.now);
        case RowStep::Kind::give:
            return;
        case RowStep::Kind::retest: {
            auto* const row = reinterpret_cast<CFilterListBaseData*>(m_store.dataAt(step.mapIndex));
            retest(*m_store.numbersOf(row), step.passes);
            return;
        }
        case RowStep::Kind::replace:
            if (std::exchange(m_toldAhead, false)) return m_display.assignTold(*step.rows);
            return m_display.assign(*step.rows, true);
        case RowStep::Kind::order:
            m_display.assign(*step.rows, false);
            return m_pending.findDeletes(*step.rows,
                                         [this](std::int32_t mapIndex) { return m_store.isTombstone(mapIndex); });
        case RowStep::Kind::compact:
            if (!batchIsOpen()) return;
            break;
        default:
            break;
    }
    ++m_changes;
    DisplayState state = *displayState();
    state.take(step, nullptr);
    takeState(std::move(state));
    if (step.kind == RowStep::Kind::compact) tellDisplayCount();
}

// What an unfinished walk committed is taken back. Asks nobody: it runs while exceptions pass.
void LiveRows::leaveWalk(RowWalk& walk, bool finished) {
    m_walk = walk.m_outer;
    if (!walk.m_journal || walk.m_journal->emptied || walk.m_windowWent) return;
    RowWalk::Journal& journal = *walk.m_journal;
    if (!finished && !journal.own.empty()) {
        playJournal(journal, false, nullptr);
        journal.own.clear();
    }
    if (!walk.m_outer) return;
    auto& steps = walk.m_outer->journal().inner;
    steps.insert(steps.end(), journal.own.begin(), journal.own.end());
    steps.insert(steps.end(), journal.inner.begin(), journal.inner.end());
}

// The display as it was when the walk began, its commits, then what came in between. The first order that did not know
// every row is the result.
std::function<void()> LiveRows::playJournal(RowWalk::Journal& journal, bool withOwn, BatchSelection* selection) {
    settleTicks();
    DisplayState state = *journal.before;
    std::function<void()> again;
    const auto take = [&](RowStep& step) {
        if (!state.take(step, step.selectionMoved ? nullptr : selection) && !again) again = step.again;
        if (selection) step.selectionMoved = true;
    };
    if (withOwn) std::for_each(journal.own.begin(), journal.own.end(), take);
    std::for_each(journal.inner.begin(), journal.inner.end(), take);
    ++m_changes;
    takeState(std::move(state));
    tellDisplayCount();
    m_port.invalidateAll();
    return again;
}

// Of an outermost walk, while it still runs: what comes in meanwhile is in its journal, and an exception takes its
// commits back. Batches that ended inside it move the selection now, and rows that came into the display behind an
// inner sort are sorted in.
void LiveRows::finishJournal(RowWalk& walk) {
    const auto batchEnded = [&walk] {
        const std::vector<RowStep>& inner = walk.m_journal->inner;
        return std::any_of(inner.begin(), inner.end(), [](const RowStep& step) {
            return step.kind == RowStep::Kind::compact && !step.selectionMoved;
        });
    };
    const std::vector<RowStep>& inner = walk.m_journal->inner;
    const bool sorted =
        std::any_of(inner.begin(), inner.end(), [](const RowStep& step) { return step.again != nullptr; });
    std::function<void()> again;
    if (sorted) again = playJournal(*walk.m_journal, true, nullptr);
    while (batchEnded()) {
        moveSelectionInJournal(walk);
        if (walk.gone() || walk.emptied()) return;
    }
    if (again) again();
}

void LiveRows::moveSelectionInJournal(RowWalk& walk) {
    BatchSelection selection;
    selection.mark = m_port.selectionMark();
    m_port.collectSelected(selection.selected);
    if (walk.gone() || walk.emptied()) return;
    const std::vector<int> former = selection.selected;
    playJournal(*walk.m_journal, true, &selection);
    settle();
    if (!walk.gone()) moveSelectionTo(walk, former, selection);
}

void LiveRows::takeState(DisplayState state) {
    m_pending = state.pending;
    // Rows of classic mode that went, and of opti-data mode that were emptied, cannot be here: their steps took them.
    std::erase_if(state.order, [this](std::int32_t mapIndex) { return !m_store.holds(mapIndex); });
    m_display.assign(std::move(state.order), true);
}

}  // namespace quor::grid
