#include "tests/core/grid/PretendedPort.h"

#include <gtest/gtest.h>

namespace {

// The display is empty then, until it is rebuilt.
TEST(RowStore, ANewMapOrderTakesChecksAndTombstonesAlong) {
    CFilterListBaseData rows[4];
    PretendedPort port;
    LiveRows store(port);
    store.enterOptiData();
    for (CFilterListBaseData& row : rows) store.add(&row, true, {});
    store.setCheckOfMapIndex(3, 1);
    store.remove(&rows[1], true);
    RowWalk walk(store);
    store.reorderMap(walk, {3, 1, 2, 0});
    EXPECT_EQ(store.displayCount(), 0);
    store.rebuild(walk, {});
    walk.finish();
    EXPECT_EQ(store.displayOrder(), (std::vector<std::int32_t>{0, 2, 3}));
    EXPECT_EQ(store.slotOf(&rows[3]), 0);
    EXPECT_EQ(store.checkOfMapIndexUnchecked(0), 1);
    EXPECT_EQ(store.Check(), "");
    store.clear();
}

}  // namespace
