#include "quor/list/core/ColumnArrays.h"
#include "quor/list/core/ListLayout.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace quor::list;

namespace {

TEST(AreaOutsideCells, CoversEachPixelExactlyOnce) {
    const RECT client{0, 0, 12, 10};
    const RECT shapes[] = {{0, 2, 8, 6}, {0, 0, 12, 10}, {0, 0, 20, 3}, {0, 4, 5, 30}, {0, 0, 0, 0}, {-3, 2, 9, 5}};
    for (const RECT& cells : shapes) {
        const std::vector<RECT> parts = areaOutsideCells(client, cells);
        EXPECT_LE(parts.size(), 3u);
        for (int pixel = 0; pixel < 12 * 10; ++pixel) {
            const int x = pixel % 12, y = pixel / 12;
            const auto holds = [&](const RECT& r) { return x >= r.left && x < r.right && y >= r.top && y < r.bottom; };
            EXPECT_EQ(std::ranges::count_if(parts, holds), holds(cells) ? 0 : 1) << x << "," << y << " " << cells.right;
        }
    }
}

TEST(ThousandsSeparators, GroupTheIntegerPartOnly) {
    const char* const cases[][2] = {{"-1234567.50", "-1,234,567.50"},
                                    {"999", "999"},
                                    {"-100", "-100"},
                                    {"", ""},
                                    {"1,23,456", "123,456"},
                                    {"--12345", "-12,345"},
                                    {"1000", "1,000"},
                                    {"1234.5678.9", "1,234.5678.9"},
                                    {"-1-2345", "-12,345"}};
    for (const auto& c : cases) EXPECT_EQ(withThousandsSeparators(c[0]), c[1]) << c[0];
}

using Ints = std::vector<int>;

TEST(DefaultPlaces, AreThePositionInTheArgument) {
    const auto places = [](int count, const Ints& shown) {
        return defaultPlaces(count, shown.data(), static_cast<int>(shown.size()));
    };
    EXPECT_EQ(places(4, {2, 0}), (Ints{1, -1, 0, -1}));
    EXPECT_EQ(places(3, {1, 1, 9, 2}), (Ints{-1, 0, 3}));  // the first of two counts; strangers keep their position
    EXPECT_EQ(places(2, {}), (Ints{-1, -1}));
    EXPECT_EQ(places(0, {0}), Ints{});
}

TEST(VisibleArray, KeepsPlaceZeroInFrontAndFindsTheFirstRecord) {
    CArray<sVisibleColumn, sVisibleColumn> visible;
    EXPECT_EQ(columnAtPlace(visible, 0), -1);
    for (const sVisibleColumn& column : {sVisibleColumn{2, 5}, {0, 7}, {1, 3}, {2, 9}})
        addVisibleColumn(visible, column);
    EXPECT_EQ(visible.GetAt(0).iColumnIndex, 7);
    const std::pair<int, int> places[] = {{0, 7}, {2, 5}, {3, -1}};
    for (const auto& [place, column] : places) EXPECT_EQ(columnAtPlace(visible, place), column);
    addVisibleColumn(visible, {0, 1});
    EXPECT_EQ(columnAtPlace(visible, 0), 1);
}

TEST(ShowColumns, PutsTheArraysInStepWithoutStrangersAndRepeats) {
    const ShownColumns shown = showColumns(4, {3, 1}, {70, 60});
    EXPECT_EQ(shown.order, (Ints{-1, 1, -1, 0}));
    EXPECT_EQ(shown.widths, (Ints{0, 60, 0, 70}));
    EXPECT_EQ(shown.bySequence, (Ints{3, 1}));
    ASSERT_EQ(shown.visible.size(), 2u);
    EXPECT_EQ(shown.visible[0].iColumnIndex, 1);
    EXPECT_EQ(shown.visible[0].iVisiblePosition, 1);
    EXPECT_EQ(showColumns(3, {1, 0, 0, 8, -1, 2}, {10, 20}).bySequence, (Ints{1, 0, 2}));
    EXPECT_EQ(showColumns(3, {1, 0, 0, 8, -1, 2}, {10, 20}).widths, (Ints{20, 10, 0}));
}

}  // namespace
