// The steps of opti-data mode as tables. Rows are letters; a picture shows them from top to bottom as the user sees
// them: "_" a tombstone, "*" behind a selected row, "!" behind the one with the focus.
#include "tests/core/grid/StoreHarness.h"

#include <gtest/gtest.h>
#include <memory>
#include <sstream>

using namespace quor::grid;

namespace {

class Pictured {
public:
    explicit Pictured(bool reverse) { m_harness.store.setReverse(reverse); }

    // Words, one operation each: "+a" adds, "-a" deletes, both deferred, with "!" behind at once; "~a" updates,
    // "a=5" sets the value, "*a" selects, "^a" sets the mark, "<5" keeps rows below 5, "end" closes the batch.
    void run(const std::string& words) {
        std::istringstream stream(words);
        for (std::string word; stream >> word;) one(word);
    }

    std::string picture() {
        std::string text;
        m_harness.store.settle();
        LiveRows& store = m_harness.store;
        for (int visual = 0; visual < store.displayCount(); ++visual) {
            const RowData data = store.dataOfVisual(visual);
            text += data == 0 ? '_' : rowOf(data)->name;
            if (m_harness.native.selected.count(visual)) text += '*';
            if (m_harness.native.focus == visual) text += '!';
        }
        return text;
    }

    StoreHarness& harness() { return m_harness; }
    TestRow* row(char name) {
        for (auto& row : m_rows)
            if (row->name == name) return row.get();
        m_rows.push_back(std::make_unique<TestRow>(name, 0));
        return m_rows.back().get();
    }
    int lastResult() const { return m_lastResult; }

private:
    int visualOf(char name) {
        for (int visual = 0; visual < m_harness.store.displayCount(); ++visual)
            if (m_harness.store.dataOfVisual(visual) == dataOf(row(name))) return visual;
        return -1;
    }

    void one(const std::string& word) {
        if (word == "end") return m_harness.endBatch();
        if (word[0] == '<') return keepBelow(word[1] - '0');
        if (word.size() > 1 && word[1] == '=') {
            row(word[0])->value = word[2] - '0';
            return;
        }
        TestRow* const named = row(word[1]);
        const bool now = word.size() > 2;
        switch (word[0]) {
            case '+':
                m_lastResult = m_harness.addRow(named, now);
                break;
            case '-':
                m_lastResult = m_harness.deleteRow(named, now);
                break;
            case '~':
                m_lastResult = m_harness.updateRow(named);
                break;
            case '*':
                m_harness.native.setState(visualOf(word[1]), 2, 2);
                break;
            case '^':
                m_harness.native.mark = visualOf(word[1]);
                break;
            default:
                FAIL() << "no operation: " << word;
        }
    }

    void keepBelow(int limit) {
        m_limit = limit;
        m_harness.test.context = &m_limit;
        m_harness.test.function = [](const void* context, RowData data) {
            return rowOf(data)->value < *static_cast<const int*>(context);
        };
    }

    int m_limit = 0;
    int m_lastResult = 0;
    std::vector<std::unique_ptr<TestRow>> m_rows;
    StoreHarness m_harness;
};

struct Steps {
    const char* fact;
    bool reverse;
    const char* words;
    const char* picture;
    int result = 0;
};

const Steps stepTable[] = {
    {"a row added at once stands last", false, "+a +b +c!", "abc", 2},
    {"reverse display puts the newest on top", true, "+a +b +c end", "cba", 2},
    {"a deferred delete leaves a tombstone", false, "+a +b +c end -b", "a_c", 1},
    {"the batch end closes it", false, "+a +b +c end -b end", "ac", 1},
    {"a row added and deleted in one batch leaves nothing", false, "+a end +b -b end", "a", 1},
    {"a delete at once takes earlier tombstones behind it along", false, "+a +b +c +d end -c -a -b!", "_d", 1},
    {"a delete of an unknown row is refused", false, "+a end -b", "a", -1},
    {"a row deleted twice is refused the second time", false, "+a +b end -a -a", "_b", -1},
    {"an update that changes nothing gives 0", false, "+a +b end ~a", "ab", 0},
    {"an update of an unknown row gives 0", false, "+a end ~z", "a", 0},
    {"a row that fails no longer leaves", false, "+a +b +c end <5 b=7 ~b", "ac", -1},
    {"a row that fails stays unseen", false, "<5 a=7 +a +b end ~a", "b", 0},
    {"a row that comes back stands at the end", false, "<5 +a +b +c end b=7 ~b b=1 ~b", "acb", 1},
    {"in reverse display that is the top", true, "<5 +a +b +c end b=7 ~b b=1 ~b", "bca", 1},
    {"a row deleted unseen takes nothing along", false, "<5 +a b=7 +b end -b end", "a", 1},
    {"a row that leaves above a tombstone does not lose it", false, "<5 +a +b +c +d end -c a=7 ~a end", "bd", -1},
};

TEST(RowStore, StepsEndInThePictureOfTheTable) {
    for (const Steps& steps : stepTable) {
        SCOPED_TRACE(steps.fact);
        Pictured grid(steps.reverse);
        grid.run(steps.words);
        EXPECT_EQ(grid.picture(), steps.picture);
        EXPECT_EQ(grid.lastResult(), steps.result);
        EXPECT_EQ(grid.harness().store.Check(), "");
    }
}

struct SelectionSteps {
    const char* fact;
    bool reverse;
    const char* words;
    const char* picture;
};

const SelectionSteps selectionTable[] = {
    {"the deleted row leaves the selection, rows below move up", false, "+a +b +c +d end *b *d ^d -b end", "acd*!"},
    {"in reverse display as well", true, "+a +b +c +d end *b *d ^b -d end", "cb*!a"},
    {"in reverse display rows above it stay", true, "+a +b +c +d end *c *a ^c -a end", "dc*!b"},
    {"rows added on top push the selection down", true, "+a +b end *a ^a +c +d end", "dcba*!"},
    {"rows added below leave it", false, "+a +b end *a ^a +c end", "a*!bc"},
    {"adds and deletes together", true, "+a +b +c end *a *c ^c +d -b +e end", "edc*!a*"},
    {"the deleted mark is -1: every entry takes the focus, the last keeps it", false,
     "+a +b +c +d end *a *b *d ^b -b end", "a*cd*!"},
    {"a mark outside the selection gives nobody the focus", false, "+a +b +c end *a ^c -b end", "a*c"},
    {"in reverse display a missing mark grows and may meet a row", true, "+a +b end *b +c +d end", "dcb*a"},
    {"all selected rows deleted", false, "+a +b +c end *a *b ^a -a -b end", "c"},
    {"a row that leaves does not move the selection", false, "<5 +a +b +c end *b a=7 ~a", "bc*"},
    {"nothing pending, nothing moved", false, "+a +b end *a ^b end", "a*b"},
};

TEST(RowStore, TheBatchEndKeepsTheSelectionOnItsRows) {
    for (const SelectionSteps& steps : selectionTable) {
        SCOPED_TRACE(steps.fact);
        Pictured grid(steps.reverse);
        grid.run(steps.words);
        EXPECT_EQ(grid.picture(), steps.picture);
    }
}

struct DirtySteps {
    const char* fact;
    bool reverse;
    int topIndex;
    const char* words;  // on ten rows a..j that are already there
    int firstRow;       // of the dirty rectangle, visual; -1 for none
    int lastRow;
};

// Four rows a page.
const DirtySteps dirtyTable[] = {
    {"an update marks its row", false, 0, "~c", 2, 2},
    {"two updates mark what lies between", false, 0, "~d ~b", 1, 3},
    {"a row out of view is marked all the same", false, 5, "~b", 1, 1},
    {"in reverse display the row's visual place", true, 0, "~c", 7, 7},
    {"a row that leaves marks the rest of what is in view", false, 2, "<5 d=7 ~d", 3, 6},
    {"a row that leaves above marks the page", false, 4, "<5 a=7 ~a", 4, 8},
    {"a row that leaves below marks nothing", false, 0, "<5 h=7 ~h", -1, -1},
    {"a row added in view marks itself", false, 7, "+k!", 10, 10},
    {"a row added out of view marks nothing", false, 0, "+k!", -1, -1},
    {"in reverse display a row added at the top marks what is in view", true, 0, "+k!", 0, 4},
    {"scrolled away from the top it marks that from there", true, 3, "+k!", 3, 7},
    {"a delete at once marks the rest of the page", false, 1, "-c!", 2, 5},
    {"a deferred delete marks nothing yet", false, 0, "-c", -1, -1},
    {"the batch end marks from the lowest deleted row", false, 0, "-d -b end", 1, 4},
    {"with an add from the top", false, 1, "-d +k end", 1, 5},
    {"in reverse display from the row deleted topmost", true, 0, "-h -d end", 2, 4},
    {"in reverse display rows deleted below mark nothing", true, 0, "-b end", -1, -1},
};

TEST(RowStore, EveryOperationMarksTheRowsOfTheTable) {
    for (const DirtySteps& steps : dirtyTable) {
        SCOPED_TRACE(steps.fact);
        Pictured grid(steps.reverse);
        grid.run("+a +b +c +d +e +f +g +h +i +j end");
        StoreHarness& harness = grid.harness();
        RowLayout layout{.rowHeight = 10, .topIndex = steps.topIndex, .countPerPage = 4, .totalWidth = 100};
        layout.visible = true;
        harness.setLayout(layout);
        grid.run(steps.words);
        EXPECT_EQ(harness.store.hasNews(), steps.firstRow != -1);
        const RECT rect = harness.dirtyRect();
        if (steps.firstRow == -1) continue;
        EXPECT_EQ(rect.top, (steps.firstRow - steps.topIndex) * 10);
        EXPECT_EQ(rect.bottom, (steps.lastRow + 1 - steps.topIndex) * 10);
    }
}

TEST(RowStore, AHiddenWindowIsNeverDirty) {
    Pictured grid(false);
    grid.harness().setLayout({.rowHeight = 10, .countPerPage = 4, .totalWidth = 100});
    grid.run("+a +b! ~a -a end");
    EXPECT_FALSE(grid.harness().store.hasNews());
}

// The fourth grid is the second one outside the row; grids leave in an order that empties both places.
TEST(FilterListBaseData, ARowFindsItsNumbersInAnyNumberOfGrids) {
    TestRow row('r', 0);
    StoreHarness grids[4];
    for (StoreHarness& grid : grids) grid.addRow(&row, true);
    for (const int leaving : {0, 2, 3, 1}) {
        EXPECT_EQ(grids[leaving].deleteRow(&row, true), 0);
        for (StoreHarness& grid : grids) EXPECT_EQ(grid.store.Check(), "");
        EXPECT_EQ(grids[leaving].deleteRow(&row, true), -1);
    }
}

TEST(FilterListBaseData, ACopyBelongsToNoGridAndAnAssignmentLeavesTheRowInPlace) {
    Pictured grid(false);
    grid.run("+a +b end");
    TestRow copy(*grid.row('a'));
    EXPECT_EQ(grid.harness().deleteRow(&copy, false), -1);
    TestRow* const second = grid.row('b');
    *second = copy;
    EXPECT_EQ(grid.harness().store.Check(), "");
    EXPECT_EQ(grid.harness().deleteRow(second, true), 1);
}

}  // namespace
