// The grid's sort on real windows: header clicks, the locked sort, checked rows first.
#include "windows/grid/GridFixture.h"

#include <memory>

namespace grid_tests {
namespace {

// A value by columnIndex 1 for each letter.
using Values = std::vector<std::pair<char, const char*>>;

class Sort : public GridFixture {
protected:
    enum Mode { opti, classic };

    // Columns: name (texts), value (numbers), other.
    void open(Mode mode = opti, bool reverse = false) {
        m_grid = std::make_unique<CFilterListCtrl>();  // an older one takes its window along
        create(grid(), {{"name", 60, 0, 3}, {"value", 60, kFormatRight, 1}, {"other", 60, 0, 3}}, CRect(0, 0, 300, 200),
               kGridStyle & ~static_cast<DWORD>(LVS_NOSORTHEADER));
        grid().SetUseFilter(TRUE);
        grid().SetReverseDisplay(reverse);
        if (mode == opti) grid().SetOptiDataMode(true);
    }
    void add(const Values& values) {
        for (const auto& [name, value] : values) {
            Row* const made = row({name});
            made->cells[1] = value;
            if (grid().GetOptiDataMode()) {
                grid().AddRow(made, false);
            } else {
                grid().InsertItem(0, "");
                grid().SetItemData(0, dataOf(made));
            }
        }
        processEndofBatchUpdates();
    }
    void click(int place) { clickHeading(grid(), place); }

    CFilterListCtrl& grid() { return *m_grid; }
    const Values ties{{'a', "2"}, {'b', "1"}, {'c', "2"}, {'d', "10"}};

private:
    std::unique_ptr<CFilterListCtrl> m_grid;
};

using SortOnEachRoad = test::OnEachRoad<Sort>;
INSTANTIATE_TEST_SUITE_P(, SortOnEachRoad, test::eachRoad, test::roadName);

// Without a store of its own order; in opti-data mode the mixes sort.
TEST_P(SortOnEachRoad, InClassicModeAClickSortsToo) {
    open(classic, true);
    add(ties);
    click(1);
    click(1);
    EXPECT_EQ(picture(grid()), "dacb") << "the older first among equals";
    EXPECT_TRUE(grid().m_bSorted);
}

TEST_F(Sort, TheGridThatSortedLastIsForgottenWhenItGoes) {
    open();
    add(ties);
    click(1);
    EXPECT_EQ(CFilterListCtrl::g_SortingList, &grid());
    open();
    EXPECT_EQ(CFilterListCtrl::g_SortingList, nullptr);
}

// The base list's handler runs behind the grid's own and turns the order once more.
TEST_F(Sort, AutoSortStepsTakeTurns) {
    open();
    add(ties);
    click(1);
    EXPECT_EQ(grid().SortOnVisibleIndex(1, 1), 1);
    EXPECT_EQ(picture(grid()), "bcad");
    EXPECT_EQ(grid().m_nSortOrder, -1) << "auto-sort is off: no step";
    grid().m_bAutoSort = 1;
    for (const char* const rows : {"bcad", "dacb", "bcad"}) {
        grid().SortOnVisibleIndex(1, 1);
        EXPECT_EQ(picture(grid()), rows);
    }
}

TEST_F(Sort, ALockColumnOutsideTheListThrows) {
    open();
    add(ties);
    grid().m_nLockSortColumn = 9;
    EXPECT_ANY_THROW(grid().SortByLastColumnWithLock());
    click(1);  // the next run is not in its way
    EXPECT_EQ(picture(grid()), "bcad");
}

TEST_F(Sort, ARowDragListSortsItsMap) {
    for (const bool reverse : {false, true}) {
        open(classic, reverse);
        grid().m_bRowDragEnabled = 1;
        add({{'a', "2"}, {'b', "1"}, {'c', "3"}});
        click(1);
        EXPECT_EQ(picture(grid()), "bac") << reverse;
        grid().PopulateList();
        EXPECT_EQ(picture(grid()), "bac") << "the map itself is in this order";
        grid().m_bLockSortEnabled = grid().m_bSortLocked = 1;
        row("a")->cells[1] = "9";
        grid().PopulateList();
        EXPECT_EQ(picture(grid()), "bca") << "a locked sort of the map ends";
        grid().m_bSortLocked = 0;
    }
}

// The counts stand in the heading of the first place, and a column's width is saved by its heading.
TEST_F(Sort, AColumnUnderTheCountsKeepsItsWidthInTheProfile) {
    open(classic);
    add(ties);
    grid().m_csListName = "sorted";
    CArray<int, int> columns, widths;
    for (const auto& [columnIndex, width] : {std::pair{2, 81}, {0, 82}}) columns.Add(columnIndex), widths.Add(width);
    grid().LoadHeaders(&columns, &widths);
    for (const int checked : {1, 0}) {
        grid().SetCheck(0, checked);
        grid().SortOnChecked();
        grid().SaveColumnProfile();
        EXPECT_EQ((fakeHost().settings[{"sorted", "COLUMNPROFILE"}]), "0,1,82,1,-1,0,2,0,81") << checked;
    }
}

}  // namespace
}  // namespace grid_tests
