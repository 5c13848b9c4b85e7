// RowWalk: an operation on rows that asks the host while it runs. The host may answer by changing the same rows, by
// pumping messages that do, by throwing, or by destroying the list.
//
// A walk reads, and changes nothing before it has its answers. What comes in between - inner operations - acts at once,
// so that its own answers are right, and is written into the walk's journal. When the walk commits and its journal is
// empty, which is nearly always, the commit acts directly. Otherwise the display goes back to what it was when the walk
// began, takes the commit, and then the inner operations again from the journal, without asking anybody: so the outcome
// is that of the same operations one after the other. A walk that ends without its last commit, by an exception, leaves
// what its inner operations alone have made.
//
// Walks lie on the stack; LiveRows knows the innermost one. Whoever holds a walk asks gone() after every call that can
// reach the host: if the rows or their window went, nothing may be touched any more.
#pragma once

#include "quor/platform/Base.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quor::grid {

class LiveRows;

// What an open batch holds back.
struct PendingBatch {
    bool PendingDelete = false;
    bool PendingInsert = false;
    std::uint32_t PendingTopInserts = 0;
    std::int32_t FirstPendingDelete = -1;
    std::int32_t LastPendingDelete = -1;

    bool isOpen() const { return PendingDelete || PendingInsert; }
    void noteDelete(int slot);
    // The rows stand in another order, deleted ones among them.
    template <class IsTombstone>
    void findDeletes(const std::vector<std::int32_t>& order, IsTombstone isTombstone) {
        if (!PendingDelete) return;
        FirstPendingDelete = LastPendingDelete = -1;
        for (std::size_t slot = 0; slot < order.size(); ++slot)
            if (isTombstone(order[slot])) noteDelete(static_cast<int>(slot));
        PendingDelete = FirstPendingDelete != -1;
    }
    void slotLeft(int slot) {
        if (FirstPendingDelete > slot) --FirstPendingDelete;
        if (LastPendingDelete > slot) --LastPendingDelete;
    }
};

// The selection at the end of a batch: visual indices, in the order in which the control returned them.
struct BatchSelection {
    std::vector<int> selected;
    int mark = -1;
};

// Moves the entries along with their rows when rows leave. `erasedSlots` rises; -1 entries go.
void moveSelection(BatchSelection& selection, const std::vector<int>& erasedSlots, int formerCount, bool reverse);

// One change of the display, as it can be made once more. Map indices are those at the time of the change.
struct RowStep {
    enum class Kind {
        append,   // a row that passes was added
        retest,   // a row was tested anew: it enters, leaves or stays
        bury,     // a row was deleted
        compact,  // the batch ended
        replace,  // `rows` are displayed and no others
        order,    // the displayed rows stand in the order of `rows`
        insert,   // classic mode: a row without data came in
        erase,    // classic mode: a row went, those behind moved
        give,     // classic mode: a row got data; the display stays
        judge,    // classic mode: a row was tested anew: it enters before the next map index, leaves or stays
    };
    Kind kind;
    int mapIndex = -1;
    bool passes = false;
    bool now = false;  // the control hears of it at once, and not at the end of the batch; of insert: at the very end
    bool selectionMoved = false;  // of compact: the control's selection has followed
    std::shared_ptr<const std::vector<std::int32_t>> rows{};
    // Puts rows in order that an `order` does not know, since they were not displayed when it was made.
    std::function<void()> again{};
};

// The display as plain data: what a journal goes back to.
struct DisplayState {
    std::vector<std::int32_t> order;
    std::vector<std::int32_t> tombstones;  // those in the order, rising
    PendingBatch pending;
    bool reverse = false;

    // Makes the step once more. `selection`, if not null, moves along at the end of a batch. False: rows are displayed
    // that the step's order does not know; they stand last.
    bool take(const RowStep& step, BatchSelection* selection);

private:
    void bury(const RowStep& step);
    void compact(BatchSelection* selection);
    bool isTombstone(std::int32_t mapIndex) const;
};

class RowWalk {
public:
    explicit RowWalk(LiveRows& rows);
    RowWalk(const RowWalk&) = delete;
    RowWalk& operator=(const RowWalk&) = delete;
    ~RowWalk();

    bool gone() const { return m_rows == nullptr || m_windowWent; }
    bool rowsWent() const { return m_rows == nullptr; }
    // Something was changed since the walk began, by somebody else.
    bool disturbed() const { return m_journal != nullptr && (!m_journal->inner.empty() || m_journal->emptied); }
    // The rows went out of the store, or were numbered anew: there is nothing left to commit.
    bool emptied() const { return m_journal != nullptr && m_journal->emptied; }
    // Where the row with this map index at the walk's beginning stands in the store now, -1 nowhere.
    int present(int mapIndex) const { return m_journal == nullptr ? mapIndex : presentByJournal(mapIndex); }
    // That row got other data since, by somebody else.
    bool wasGivenData(int mapIndex) const;
    // Before a commit that others will follow: an exception between them takes the first back.
    void expectMore();
    // The last word: what was committed stays. It may reach the host, and nothing may be touched after it. Without a
    // commit it is not needed.
    void finish();

private:
    friend class LiveRows;
    struct Journal {
        std::shared_ptr<const DisplayState> before;
        std::vector<RowStep> own, inner;
        bool emptied = false;
    };

    Journal& journal() {
        if (!m_journal) m_journal = std::make_unique<Journal>();
        return *m_journal;
    }

    int presentByJournal(int mapIndex) const;
    static int movedBy(const RowStep& step, int mapIndex);

    LiveRows* m_rows;  // null once they went, or the walk was finished
    RowWalk* m_outer;
    std::unique_ptr<Journal> m_journal;
    bool m_windowWent = false;
};

}  // namespace quor::grid
