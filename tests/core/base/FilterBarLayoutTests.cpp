#include "platform/base/FilterBarLayout.h"

#include <gtest/gtest.h>

#include <algorithm>

using quor::FilterBarMetrics;
using quor::filterBarMetrics;
using quor::FilterBarPlaces;
using quor::filterBarPlaces;
using quor::hasOwnFilterBar;
using quor::HeaderAnswers;

namespace {

TEST(FilterBarLayout, MetricsGrowWithTheScreen) {
    struct Case {
        int dpi, lineHeight, barHeight, buttonWidth, funnelSize;
    };
    const Case cases[] = {
        {96, 13, 20, 15, 9},    // the usual font
        {96, 30, 37, 15, 9},    // a high one
        {96, 4, 16, 15, 9},     // room for the glyph
        {96, -5, 16, 15, 9},    //
        {0, 13, 20, 15, 9},     // no such screen
        {120, 16, 24, 19, 11},  // 125 %
        {144, 20, 32, 25, 15},  // 150 %: a glyph of 14 becomes odd
        {192, 26, 40, 31, 19},  // 200 %
    };
    for (const Case& expected : cases) {
        SCOPED_TRACE(::testing::Message() << expected.dpi << " dpi, line " << expected.lineHeight);
        const FilterBarMetrics metrics = filterBarMetrics(expected.dpi, expected.lineHeight);
        EXPECT_EQ(metrics.barHeight, expected.barHeight);
        EXPECT_EQ(metrics.buttonWidth, expected.buttonWidth);
        EXPECT_EQ(metrics.funnelSize, expected.funnelSize);
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

TEST(FilterBarLayout, OnlyAHeaderThatShowsAndKeepsAFilterHasABar) {
    struct Case {
        const char* header;
        HeaderAnswers answers;
        bool has;
    };
    const Case cases[] = {
        {"the real one", {17, 37, true, true}, true},
        {"knows no filters", {17, 17, false, true}, false},
        {"keeps texts but shows nothing", {17, 17, true, true}, false},
        {"grows but forgets", {17, 37, false, true}, false},
        {"cannot clear", {17, 37, true, false}, false},
        {"answers nothing at all", {}, false},
    };
    for (const Case& each : cases) EXPECT_EQ(hasOwnFilterBar(each.answers), each.has) << each.header;
}

}  // namespace
