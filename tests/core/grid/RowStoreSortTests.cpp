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
    std::string shown() {
        std::string text;
        for (int visual = 0; visual < grid.store.displayCount(); ++visual)
            text += rowOf(grid.store.dataOfVisual(visual))->name;
        return text;
    }
    std::vector<std::unique_ptr<TestRow>> rows;
    StoreHarness grid;
};

TEST_F(StoreSort, ANewMapOrderTakesChecksAndTombstonesAlong) {
    fill(4);
    grid.store.setCheckOfMapIndex(3, 1);
    grid.deleteRow(rows[1].get(), true);
    RowWalk walk(grid.store);
    grid.store.reorderMap(walk, {3, 1, 2, 0});
    EXPECT_EQ(grid.store.displayCount(), 0);
    grid.rebuild();
    EXPECT_EQ(shown(), "dca");
    EXPECT_EQ(grid.store.checkOfMapIndexUnchecked(0), 1);
    EXPECT_EQ(grid.store.Check(), "");
}

}  // namespace
