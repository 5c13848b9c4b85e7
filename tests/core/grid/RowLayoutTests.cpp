#include "quor/grid/core/RowLayout.h"

#include <climits>
#include <gtest/gtest.h>

using namespace quor::grid;

namespace {

RowLayout scrolled() {
    RowLayout layout{.rowHeight = 16, .topIndex = 100, .countPerPage = 10, .horizontalScroll = 30, .totalWidth = 400};
    layout.headerHeight = 20;
    layout.visible = true;
    return layout;
}

TEST(RowLayout, ARowFarAwayHasARectangleThatDoesNotWrap) {
    RowLayout layout = scrolled();
    EXPECT_GT(layout.rowRect(INT_MAX).top, 1000);
    layout.topIndex = INT_MAX;
    EXPECT_LT(layout.rowRect(0).bottom, -1000);
}

TEST(RowLayout, AFallingCountPullsThePageUp) {
    const struct { int count, top; } table[] = {{1000, 100}, {110, 100}, {109, 99}, {10, 0}, {3, 0}};
    for (const auto& row : table) {
        RowLayout layout = scrolled();
        layout.countFellTo(row.count);
        EXPECT_EQ(layout.topIndex, row.top) << row.count;
    }
}

TEST(DirtyArea, AFlushKeepsTheRectangleAndForgetsTheNews) {
    const RowLayout layout = scrolled();
    DirtyArea dirty;
    dirty.addRow(layout, 101);
    dirty.flush(layout);
    EXPECT_FALSE(dirty.hasNews());
    dirty.addRow(layout, 104);
    EXPECT_TRUE(dirty.hasNews());
    const RECT rect = dirty.flush(layout);
    EXPECT_EQ(rect.top, 36);
    EXPECT_EQ(rect.bottom, 100);
}

}  // namespace
