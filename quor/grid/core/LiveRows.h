// LiveRows: the rows of one list, without a window: the store in order of arrival, the rows that are displayed, the
// open batch, the area to repaint, and what the control has been told. A tick goes down one road and never back up:
//
//   LiveRows::update -> the row test -> DisplayedRows -> DirtyArea ... flush -> RowPort -> the control paints
//
// The control hears a new row count when something could see it, not when it changes: telling it costs a millisecond.
// If the count fell and rose again in between, it hears the lowest value too when that matters to it (rows beyond it
// lose selection and focus, the page moves up), so that it ends as if it had heard every value. The layout record is
// read once and stays in force until a message may have changed it, so that a tick sends none.
//
// Row numbers (mapIndex, slot, visual): see FilterListBaseData.h. Knows no text: whether a row is displayed is decided
// by the RowTest that the caller passes. The test is the host's and may do anything: see RowWalk.h.
//
// Owns the row slots; the row objects are the host's, the port is borrowed.
#pragma once

#include "quor/grid/core/DisplayedRows.h"
#include "quor/grid/core/RowPort.h"
#include "quor/grid/core/RowStore.h"
#include "quor/grid/core/RowWalk.h"
#include "quor/grid/core/TrendStore.h"

#include <string>
#include <vector>

namespace quor::grid {

// Decides whether a row is displayed. Empty: every row is, at the cost of one comparison.
struct RowTest {
    bool (*function)(const void* context, RowData data) = nullptr;
    const void* context = nullptr;

    bool passes(RowData data) const { return function == nullptr || function(context, data); }
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
    RowData former = 0;  // of setItemData: what the row had
};

class LiveRows {
public:
    explicit LiveRows(RowPort& port) : m_port(port) {}
    LiveRows(const LiveRows&) = delete;
    LiveRows& operator=(const LiveRows&) = delete;
    ~LiveRows();  // the rows are not told; the owner empties the store while its rows live

    // ---- Sizes and numbers. They count what was told, the control may not know it yet.
    int itemCount() const { return m_store.count(); }  // tombstones included
    int displayCount() const { return m_display.size(); }
    bool optiData() const { return m_store.optiData(); }
    void enterOptiData() { m_store.enterOptiData(); }  // there is no way back
    bool reverse() const { return ReverseDisplay; }
    void setReverse(bool on);
    // Room for n rows. Throws std::length_error("vector too long") for a number that no store can hold, or below 0.
    void reserve(int n);
    // Rises with every change of the store or the display.
    unsigned changes() const { return m_changes; }

    // Its own inverse. The number need not be in range.
    int mirrored(int number) const { return ReverseDisplay ? displayCount() - 1 - number : number; }
    // -1 when out of range, or when the row is not displayed or not here.
    int mapIndexOfSlot(int slot);
    int mapIndexOfVisual(int visual) { return mapIndexOfSlot(mirrored(visual)); }
    int slotOf(const CFilterListBaseData* row);
    int slotOfMapIndex(int mapIndex);  // walks through a plain display
    // Both -1 when the row is not here; the visual index -1 when it is not displayed.
    void numbersOf(const CFilterListBaseData* row, int& mapIndex, int& visual);
    // 0 when out of range, for a tombstone, and for a row without data.
    RowData dataOfVisual(int visual) { return dataOfMapIndex(mapIndexOfVisual(visual)); }
    RowData dataOfMapIndex(int mapIndex) const { return m_store.dataOf(mapIndex); }
    // Whether some row has this data. Reads the whole store and touches no row.
    bool holdsData(RowData data) const { return m_store.holdsData(data); }
    RowData dataOfMapIndexUnchecked(std::size_t mapIndex) const { return m_store.dataAt(static_cast<int>(mapIndex)); }
    std::vector<std::int32_t> displayOrder();  // map indices by slot
    // The same rows by rising map index: as they mostly lie in memory, where a million of them are read several times
    // faster than in display order.
    std::vector<std::int32_t> displayedInMapOrder();

    // ---- Opti-data mode. Rows must not be null; `now` false holds the control back to the end of the batch.
    // The new map index; -1 when the list went meanwhile.
    int add(CFilterListBaseData* row, bool now, RowTest test);
    // Tests a changed row anew. 1: it entered the display, -1: it left, 0: neither, or unknown.
    int update(CFilterListBaseData* row, RowTest test);
    // The row may be freed on return. Its map index, -1 when it is not here.
    int remove(CFilterListBaseData* row, bool now);
    bool batchIsOpen() const { return m_pending.isOpen(); }
    // Applies what is pending; selection and focus move along with their rows.
    void endBatch();
    void endBatch(RowWalk& walk);  // as a part of the walk, which is the innermost one
    // While the page is scrolled away from its top, the rows in view stay in view at the end of a batch.
    void setAnchored(bool on) { m_anchored = on; }

    // ---- Both modes. The walk's owner goes on only if it is not gone.
    // Displays all rows that pass, in map order. Pending work stays pending.
    void rebuild(RowWalk& walk, RowTest test);
    // The displayed rows in another order, by slot; `again` as in RowStep. A row that went meanwhile stays away.
    void reorder(RowWalk& walk, std::vector<std::int32_t> mapIndices, std::function<void()> again);
    // Puts every slot, each named once, into a new map order, check states with them. The display is empty afterwards:
    // rebuild it.
    void reorderMap(RowWalk& walk, std::vector<std::int32_t> mapIndices);
    // Takes every row out of the display and leaves it in the store.
    void clearDisplay();
    // Forgets every row and tells it so. What a batch has pending stays pending; it finds nothing to do.
    void clear();

    // ---- Classic mode
    // A new slot without data, displayed. 0 and everything past the end append. done, refused for a negative item, or
    // corrupt: then the caller empties the store.
    ClassicChange insertItem(int item);
    // Gives data to a displayed row; item 0 and everything past the end mean the last slot while that has none. shown,
    // left (the test failed; the row stays in the map) or refused.
    ClassicChange setItemData(int item, RowData data, RowTest test);
    // The row with this data has its former data again, if it is there.
    void takeBackData(RowData data, RowData former);
    // done, refused, unknown or corrupt.
    ClassicChange eraseVisual(int visual);
    // A row that is not displayed. done, or refused for a row out of range or displayed.
    ClassicChange eraseHidden(int mapIndex);
    // Tests a changed row anew: refused, shown, left, entered or keptOut. `visual` as before a row left and after it
    // entered.
    ClassicChange retestMapIndex(int mapIndex, RowTest test);
    ClassicChange retestVisual(int visual, RowTest test);

    // ---- Trends: what the cells were painted with last. Records follow their rows through every operation here.
    TrendStore& trends() { return m_trends; }
    const TrendStore& trends() const { return m_trends; }

    // ---- Check states
    int checkOfVisual(int visual);                // 0 when out of range
    bool setCheckOfVisual(int visual, int state)  // false when out of range
    {
        return setCheckOfMapIndex(mapIndexOfVisual(visual), state);
    }
    int checkOfMapIndexUnchecked(std::size_t mapIndex) const { return m_store.at(static_cast<int>(mapIndex)).check; }
    bool setCheckOfMapIndex(int mapIndex, int state);
    int checkedCount() const { return m_store.checkedCount(); }
    void resetChecks() { m_store.resetChecks(); }

    // ---- The control
    // The layout in force, read anew if a message may have changed it.
    const RowLayout& layout();
    void forgetLayout();
    // Hiding a parent sends the list nothing: called once a batch and before a paint.
    void forgetVisibility();
    // The control hears the row count, if it has not heard it. Called before everything that could notice.
    void settle();
    void tellDisplayCount();  // the control shall have displayCount() rows; it hears so in settle
    void tellCount(int count);
    // The control was told a count by somebody else.
    void takeCount(int count) { m_told = m_wanted = m_lowest = count; }
    // It counted a row that came to it; its scroll bar may follow only when it is told.
    void takeCountOfInsert(int count) {
        takeCount(count);
        m_scrollBarIsBehind = true;
    }
    // Before a paint or a message: not after each row of many.
    void settleScrollBar();
    // Its window went: walks hear of it.
    void windowWent();

    // ---- Repainting
    bool hasNews() {
        settleTicks();
        return m_dirty.hasNews();
    }
    // The control has not heard the count, too: a last row that left leaves nothing else to repaint.
    bool needsFlush() { return hasNews() || m_told != m_wanted || m_lowest != m_wanted; }
    // Invalidates all that has become dirty so far.
    void flush();
    // A paint takes what is dirty along, so that rows of two moments never stand on the screen together.
    void paintComes();
    const DirtyArea& dirty() const { return m_dirty; }
    void forgetDirt() { m_dirty = {}; }

    // The operation that asks the host now, null when none does.
    const RowWalk* innermostWalk() const { return m_walk; }

    // Empty when every invariant holds, else the first one that does not. Reads every live row.
    std::string Check();

private:
    friend class RowWalk;

    static RowData dataOf(CFilterListBaseData* row) { return reinterpret_cast<RowData>(row); }
    bool slotIsValid(int slot) const { return slot >= 0 && slot < displayCount(); }
    const RowLayout* layoutInForce() const { return m_layoutIsStale || m_visibilityIsStale ? nullptr : &m_layout; }
    bool layoutAllowsNotes() const;

    // Before anything reads a place: what is ahead of the display, or behind it, comes together again.
    void settleTicks() {
        if (m_display.hasNotes()) followTicks();
        if (m_toldAhead) takeBackTold();
    }
    void takeBackTold();
    void followTicks();
    void markRow(int visual) { m_dirty.addRow(layout(), visual); }
    void markFrom(int visual);

    class AddScope;
    class ToldAhead;
    void takeBack(int mapIndex, CFilterListBaseData* row);
    int updateSlowly(RowWalk& walk, int mapIndex, bool passes);
    void append(int mapIndex, bool now);
    int retest(sFilterListRowIndex& numbers, bool passes);
    void bury(const sFilterListRowIndex& had, bool now);
    void endInnerBatch();
    int compact(BatchSelection& selection);
    void restoreSelection(const RowWalk& walk, const BatchSelection& selection);
    void takeSelectionOff(const RowWalk& walk, const std::vector<int>& selected);
    void moveSelectionTo(const RowWalk& walk, const std::vector<int>& former, const BatchSelection& selection);
    int rowsAbove(int top, int topInserts, int formerCount) const;
    void keepPage(const RowWalk& walk, int top, int focused);
    int shownAt(const RowWalk& walk, int mapIndex, int slot);
    ClassicChange judge(RowWalk& walk, int mapIndex, int slot, bool passes);
    bool closeDisplayGap(int mapIndex);

    // Walks
    std::shared_ptr<const DisplayState> displayState() const;
    void remember();
    void note(RowStep step);
    void commit(RowWalk& walk, RowStep step);
    void apply(const RowStep& step);
    void leaveWalk(RowWalk& walk, bool finished);
    std::function<void()> playJournal(RowWalk::Journal& journal, bool withOwn, BatchSelection* selection);
    void finishJournal(RowWalk& walk);
    void moveSelectionInJournal(RowWalk& walk);
    void takeState(DisplayState state);
    void emptyWalks();

    void readLayout();
    void readVisibility();
    std::string checkNumbers();

    RowPort& m_port;
    RowStore m_store;
    DisplayedRows m_display{m_store};
    PendingBatch m_pending;
    TrendStore m_trends;
    bool ReverseDisplay = false;
    bool m_anchored = false;
    bool m_toldAhead = false;  // rows know their places in a display that a rebuild has not committed
    unsigned m_changes = 0;
    RowWalk* m_walk = nullptr;  // the innermost one
    std::vector<int> m_erasedSlots;

    RowLayout m_layout;
    DirtyArea m_dirty;
    bool m_layoutIsStale = true;
    bool m_visibilityIsStale = true;
    bool m_settling = false;
    bool m_scrollBarIsBehind = false;
    bool m_movedUntold = false;  // rows in view have other places, and nothing is dirty before the batch ends
    int m_told = 0;              // what the control knows
    int m_wanted = 0;            // what it shall know
    int m_lowest = 0;            // the lowest value since it was told
};

}  // namespace quor::grid
