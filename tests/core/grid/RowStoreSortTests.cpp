// What a sort does to the store: both orders replaced, the rows told.
#include "tests/core/grid/StoreHarness.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

struct StoreSort : testing::Test {
    void fill(int count) {
        for (int i = 0; i < count; ++i) rows.push_back(std::make_unique<TestRow>(static_cast<char>('a' + i), i));
        for (auto& row : rows) grid.addRow(row.get(), true);
    }
    std::string shown() const {
        std::string text;
        for (int visual = 0; visual < grid.store.displayCount(); ++visual)
            text += rowOf(grid.store.dataOfVisual(visual))->name;
        return text;
    }
    std::vector<std::unique_ptr<TestRow>> rows;
    StoreHarness grid{0};
};

TEST_F(StoreSort, RowsKnowTheirSlotsAfterwards) {
    fill(4);
    grid.store.reorderDisplay({2, 0, 3, 1});
    EXPECT_EQ(shown(), "cadb");
    EXPECT_EQ(grid.store.displayOrder(), (std::vector<std::int32_t>{2, 0, 3, 1}));
    EXPECT_EQ(grid.store.displayedInMapOrder(), (std::vector<std::int32_t>{0, 1, 2, 3}));
    EXPECT_EQ(grid.store.Check(), "");
    EXPECT_EQ(grid.store.slotOf(rows[3].get()), 2);
}

TEST_F(StoreSort, RowsOutOfTheDisplayStayOut) {
    fill(4);
    grid.test.function = [](const void*, RowData data) { return rowOf(data)->value != 1; };
    grid.store.rebuild(grid.test);
    grid.store.reorderDisplay({3, 2, 0});
    EXPECT_EQ(shown(), "dca");
    EXPECT_EQ(grid.store.displayedInMapOrder(), (std::vector<std::int32_t>{0, 2, 3}));
    EXPECT_EQ(grid.store.Check(), "");
}

TEST_F(StoreSort, ANewMapOrderTakesChecksAndTombstonesAlong) {
    fill(4);
    grid.store.setCheckOfMapIndex(3, 1);
    grid.deleteRow(rows[1].get(), true);
    grid.store.reorderMap({3, 1, 2, 0});
    EXPECT_EQ(grid.store.displayCount(), 0);
    grid.store.rebuild({});
    EXPECT_EQ(shown(), "dca");
    EXPECT_EQ(grid.store.checkOfMapIndex(0), 1);
    EXPECT_EQ(grid.store.Check(), "");
}

}  // namespace
