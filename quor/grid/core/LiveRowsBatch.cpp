// The end of a batch. The control knows visual indices only: the selection is taken off, moved along with its rows, and
// put on again. Every call that changes a row's state tells the host, which may do anything meanwhile.
//
// Inside another walk only the display is compacted, so that counts and numbers are right at once; the selection
// follows when the journal of that walk is played.
#include "quor/grid/core/LiveRows.h"

#include <algorithm>

namespace quor::grid {

void LiveRows::endBatch() {
    forgetVisibility();
    if (m_walk) return endInnerBatch();
    if (!batchIsOpen()) return;
    RowWalk walk(*this);
    endBatch(walk);
    if (!walk.gone()) walk.finish();
}

// Rows may be pending by the time when the journal is played.
void LiveRows::endInnerBatch() {
    const RowStep step{.kind = RowStep::Kind::compact};
    note(step);
    apply(step);
}

// What comes after it in the walk may fail; the batch has ended all the same.
void LiveRows::endBatch(RowWalk& walk) {
    forgetVisibility();
    if (walk.m_outer) return endInnerBatch();
    if (!batchIsOpen()) return;
    settle();
    if (walk.gone() || walk.emptied()) return;
    BatchSelection selection;
    selection.mark = m_port.selectionMark();
    m_port.collectSelected(selection.selected);
    const int focused = m_port.focusedRow();
    const int top = layout().topIndex;
    takeSelectionOff(walk, selection.selected);
    if (walk.gone() || walk.emptied()) return;

    const int topInserts = static_cast<int>(m_pending.PendingTopInserts);
    const int formerCount = displayCount();
    int repaintFrom = 0, shift = 0;
    if (walk.m_journal) {
        std::vector<RowStep>& own = walk.m_journal->own;
        remember();
        own.push_back({.kind = RowStep::Kind::compact});
        playJournal(*walk.m_journal, true, &selection);
        walk.m_journal->inner.insert(walk.m_journal->inner.begin(), own.back());
        own.pop_back();
        settle();
    } else {
        ++m_changes;
        repaintFrom = compact(selection);
        tellDisplayCount();
        settle();
        shift = rowsAbove(top, topInserts, formerCount);
    }
    restoreSelection(walk, selection);
    if (walk.gone()) return;
    markFrom(std::max(0, repaintFrom));
    if (m_anchored && top > 0 && !walk.disturbed()) keepPage(walk, top + shift, focused);
}

// By how many rows the row at the top of the page moves: those that came in above it, less those that left.
int LiveRows::rowsAbove(int top, int topInserts, int formerCount) const {
    const auto isAbove = [&](int slot) { return (ReverseDisplay ? formerCount - 1 - slot : slot) < top + topInserts; };
    return topInserts - static_cast<int>(std::count_if(m_erasedSlots.begin(), m_erasedSlots.end(), isAbove));
}

// The same rows stay in view, and a focused row that no selection brought back keeps the focus.
void LiveRows::keepPage(const RowWalk& walk, int top, int focused) {
    const int now = layout().topIndex;
    if (top != now) {
        forgetLayout();
        m_port.scrollRows(top - now);
        if (walk.gone()) return;
        m_port.invalidateAll();
    }
    if (focused == -1 || m_port.focusedRow() != -1) return;
    const int row = focused + top - now;
    if (row >= 0 && row < displayCount()) m_port.setState(row, kRowFocused, kRowFocused);
}

// Deselecting touches only the rows that were selected and the focused one: the outcome is that of deselecting all, at
// a cost that does not grow with the list.
void LiveRows::takeSelectionOff(const RowWalk& walk, const std::vector<int>& selected) {
    for (const int visual : selected) {
        m_port.setState(visual, 0, kRowSelected | kRowFocused);
        if (walk.gone()) return;
    }
    if (const int focused = m_port.focusedRow(); focused != -1) m_port.setState(focused, 0, kRowFocused);
}

void LiveRows::moveSelectionTo(const RowWalk& walk, const std::vector<int>& former, const BatchSelection& selection) {
    takeSelectionOff(walk, former);
    if (!walk.gone()) restoreSelection(walk, selection);
}

// Selects the rows again; the marked one takes the focus. Without a mark every row takes it in turn: the first becomes
// the control's mark and the last keeps the focus, so those two calls bring about the same state. (Each call that moves
// the focus costs the control milliseconds.)
void LiveRows::restoreSelection(const RowWalk& walk, const BatchSelection& selection) {
    const std::vector<int>& rows = selection.selected;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool focused = selection.mark == -1 ? i == 0 || i + 1 == rows.size() : rows[i] == selection.mark;
        const unsigned state = focused ? kRowSelected | kRowFocused : kRowSelected;
        m_port.setState(rows[i], state, state);
        if (walk.gone()) return;
    }
}

// Result: the visual index from which the page repaints.
int LiveRows::compact(BatchSelection& selection) {
    const int topInserts = static_cast<int>(m_pending.PendingTopInserts);
    for (int& visual : selection.selected) visual += topInserts;
    selection.mark += topInserts;
    const int formerCount = displayCount();
    int repaintFrom = m_pending.FirstPendingDelete;
    if (m_pending.PendingInsert) {
        repaintFrom = 0;
    } else if (ReverseDisplay) {
        repaintFrom = formerCount - m_pending.LastPendingDelete - 1;
    }
    m_erasedSlots.clear();
    if (m_pending.FirstPendingDelete != -1) {
        m_display.eraseTombstones(m_pending.FirstPendingDelete, &m_erasedSlots);
        moveSelection(selection, m_erasedSlots, formerCount, ReverseDisplay);
    }
    m_pending = {};
    // A row that entered meanwhile has pushed the tombstones behind it.
    if (ReverseDisplay && !m_erasedSlots.empty())
        repaintFrom = std::min(repaintFrom, formerCount - 1 - m_erasedSlots.back());
    std::erase_if(selection.selected, [this](int visual) { return !slotIsValid(visual); });
    return ReverseDisplay ? std::min(repaintFrom, displayCount() - 1) : repaintFrom;
}

// The rule is told row by row: each tombstone, from the lowest slot up, drops the entry of its visual index and lowers
// every entry above it, and the mark likewise. Taken together, an entry falls by the number of tombstones whose former
// visual index lies below its own; in reverse display these are the ones in higher slots. (The mark stops moving once
// the list is empty; it then has no entry left to give the focus to, so that is not told apart here.)
void moveSelection(BatchSelection& selection, const std::vector<int>& erasedSlots, int formerCount, bool reverse) {
    const auto moved = [&](int visual) {
        const int formerSlot = reverse ? formerCount - 1 - visual : visual;
        const auto [at, after] = std::equal_range(erasedSlots.begin(), erasedSlots.end(), formerSlot);
        if (at != after) return -1;
        return visual - static_cast<int>(reverse ? erasedSlots.end() - after : at - erasedSlots.begin());
    };
    for (int& visual : selection.selected) visual = moved(visual);
    std::erase(selection.selected, -1);
    selection.mark = moved(selection.mark);  // -1 lies below every row and stays
}

void PendingBatch::noteDelete(int slot) {
    PendingDelete = true;
    FirstPendingDelete = FirstPendingDelete == -1 ? slot : std::min(FirstPendingDelete, slot);
    LastPendingDelete = std::max(LastPendingDelete, slot);
}

}  // namespace quor::grid
