#include "src/list/core/ColumnArrays.h"

#include <gtest/gtest.h>

using namespace quor::list;

namespace {

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
    addVisibleColumn(visible, {2, 5});
    addVisibleColumn(visible, {0, 7});
    addVisibleColumn(visible, {1, 3});
    addVisibleColumn(visible, {2, 9});
    EXPECT_EQ(visible.GetAt(0).iColumnIndex, 7);
    EXPECT_EQ(columnAtPlace(visible, 0), 7);
    EXPECT_EQ(columnAtPlace(visible, 2), 5);
    EXPECT_EQ(columnAtPlace(visible, 3), -1);
    addVisibleColumn(visible, {0, 1});
    EXPECT_EQ(columnAtPlace(visible, 0), 1);
}

TEST(ShowColumns, PutsTheArraysInStep) {
    const ShownColumns shown = showColumns(4, {3, 1}, {70, 60});
    EXPECT_EQ(shown.order, (Ints{-1, 1, -1, 0}));
    EXPECT_EQ(shown.widths, (Ints{0, 60, 0, 70}));
    EXPECT_EQ(shown.bySequence, (Ints{3, 1}));
    ASSERT_EQ(shown.visible.size(), 2u);
    EXPECT_EQ(shown.visible[0].iColumnIndex, 1);
    EXPECT_EQ(shown.visible[0].iVisiblePosition, 1);
}

TEST(ShowColumns, PassesOverStrangersAndRepeatsAndClosesUp) {
    const ShownColumns shown = showColumns(3, {1, 0, 0, 8, -1, 2}, {10, 20});
    EXPECT_EQ(shown.bySequence, (Ints{1, 0, 2}));
    EXPECT_EQ(shown.order, (Ints{1, 0, 2}));
    EXPECT_EQ(shown.widths, (Ints{20, 10, 0}));
}

TEST(SeedWhenEmpty, LeavesStoredValuesAlone) {
    CStringArray array, defaults;
    defaults.Add("BUY");
    EXPECT_TRUE(seedWhenEmpty(array, defaults));
    defaults.SetAt(0, "SELL");
    EXPECT_FALSE(seedWhenEmpty(array, defaults));
    EXPECT_EQ(array.GetAt(0), "BUY");
    EXPECT_EQ(array.GetCount(), 1);
}

}  // namespace
