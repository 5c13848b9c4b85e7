#include "quor/platform/win/core/FilterBarLayout.h"

#include <algorithm>
#include <gtest/gtest.h>

using quor::FilterBarMetrics;
using quor::filterBarMetrics;
using quor::FilterBarPlaces;
using quor::filterBarPlaces;

namespace {

TEST(FilterBarLayout, MetricsGrowWithTheScreen) {
    const struct {
        int dpi, lineHeight, bar, button, funnel;
    } cases[] = {{96, 13, 20, 15, 9},     // the usual font
                 {96, -5, 16, 15, 9},     // room for the glyph
                 {0, 13, 20, 15, 9},      // no such screen
                 {144, 20, 32, 25, 15}};  // 150 %: a glyph of 14 becomes odd
    for (const auto& c : cases) {
        const FilterBarMetrics made = filterBarMetrics(c.dpi, c.lineHeight);
        EXPECT_EQ(made.barHeight, c.bar) << c.dpi << " " << c.lineHeight;
        EXPECT_EQ(made.buttonWidth, c.button) << c.dpi;
        EXPECT_EQ(made.funnelSize, c.funnel) << c.dpi;
    }
}

TEST(FilterBarLayout, FieldAndButtonShareTheItemAndAreNeverInverted) {
    const FilterBarMetrics metrics = filterBarMetrics(96, 13);
    for (int width = 0; width < 60; ++width) {
        SCOPED_TRACE(width);
        const FilterBarPlaces places = filterBarPlaces(metrics, 100, 100 + width, 17);
        EXPECT_LE(places.field.left, places.field.right);
        EXPECT_EQ(places.field.right, places.button.left);
        EXPECT_LE(places.button.left, places.button.right);
        EXPECT_LE(places.button.right, std::max(101, 100 + width - 1));
        EXPECT_EQ(places.field.top, 18);
        EXPECT_EQ(places.button.bottom, 17 + 20 - 1);
        // The button is the last to go.
        EXPECT_TRUE(places.field.right == places.field.left || places.button.right - places.button.left == 15);
    }
}

}  // namespace
