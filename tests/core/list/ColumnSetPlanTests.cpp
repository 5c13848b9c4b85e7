#include "core/list/PlanPicture.h"
#include "src/list/core/ColumnSetPlan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

using namespace quor::list;

namespace {

using Ints = std::vector<int>;

ProfileEntry entry(int index, int place, int width = 60) {
    ProfileEntry stored;
    stored.columnIndex = index;
    stored.place = place;
    stored.width = width;
    return stored;
}

ProfileEntry userEntry(int index, int place, const char* name) {
    ProfileEntry user = entry(index, place);
    user.isUserColumn = true;
    user.name = name;
    user.expression = "F";
    user.toolTip = "T";
    return user;
}

ColumnSetInput columns(Ints widths) {
    ColumnSetInput input;
    input.widths = std::move(widths);
    return input;
}

ColumnSetInput profiled(Ints widths, std::vector<ProfileEntry> profile) {
    ColumnSetInput input = columns(std::move(widths));
    input.hasProfile = true;
    input.profile = std::move(profile);
    return input;
}

struct PlanCase {
    const char* name;
    ColumnSetInput input;
    const char* picture;
};

class ColumnSet : public testing::TestWithParam<PlanCase> {};

TEST_P(ColumnSet, ComesOutAs) { EXPECT_EQ(picture(planColumnSet(GetParam().input)), GetParam().picture); }

ColumnSetInput withDefaults(ColumnSetInput input, Ints places) {
    input.defaultPlaces = std::move(places);
    return input;
}

INSTANTIATE_TEST_SUITE_P(
    Roads, ColumnSet,
    testing::Values(
        PlanCase{"NothingStored", columns({80, 90}), "0:80 1:90 | 0 1"}, PlanCase{"NoColumns", columns({}), "|"},
        PlanCase{"Defaults", withDefaults(columns({80, 90, 70}), {1, -1, 0}), "2:70 0:80 | 1 -1 0"},
        PlanCase{"DefaultsOlderThanTheColumns", withDefaults(columns({80, 90, 70}), {1, 0}), "1:90 0:80 | 1 0 -1"},
        PlanCase{"DefaultsWithAGap", withDefaults(columns({80, 90, 70}), {0, -1, 2}), "0:80 1:90 2:70 | 0 1 2"},
        PlanCase{"DefaultsThatShowNothing", withDefaults(columns({80, 90}), {-1, -1}), "0:80 1:90 | 0 1"},
        PlanCase{"ProfileMovesAndHides", profiled({80, 90, 70}, {entry(0, 1), entry(1, -1, 0), entry(2, 0, 33)}),
                 "2:33 0:60 | 1 -1 0"},
        PlanCase{"ProfileWinsOverDefaults", withDefaults(profiled({80, 90}, {entry(0, 1), entry(1, 0)}), {0, -1}),
                 "1:60 0:60 | 1 0"},
        PlanCase{"ColumnsAddedSinceStayHidden", profiled({80, 90, 70}, {entry(0, 0), entry(1, 1)}),
                 "0:60 1:60 | 0 1 -1"},
        PlanCase{"UserColumnsComeBack", profiled({80, 90}, {entry(0, 0), entry(1, -1, 0), userEntry(2, 1, "Ratio")}),
                 "0:60 2:60* | 0 -1 1"},
        PlanCase{"SurplusEntryWithoutAUserPartEndsTheReading",
                 profiled({80, 90}, {entry(0, 1), entry(1, 0), entry(2, 2), entry(0, 9)}), "1:60 0:60 | 1 0"},
        PlanCase{"MoreEntriesThanColumns",
                 withDefaults(profiled({80, 90}, {entry(0, 0), entry(1, 1), entry(1, 1)}), {1, 0}), "1:90 0:80 | 1 0"},
        PlanCase{"OneIndexTwice", profiled({80, 90, 70}, {entry(0, 0), entry(1, 1), entry(1, 2)}),
                 "0:80 1:90 2:70 | 0 1 2"},
        PlanCase{"GapFallsBackToAll", profiled({80, 90, 70}, {entry(0, 0), entry(1, 2), entry(2, 2)}),
                 "0:80 1:90 2:70 | 0 1 2"},
        PlanCase{"GapFallsBackToDefaults",
                 withDefaults(profiled({80, 90, 70}, {entry(0, 0), entry(1, 2), entry(2, 2)}), {-1, 0, -1}),
                 "1:90 | -1 0 -1"},
        PlanCase{"GapShowsAHiddenColumnZero", profiled({80, 90, 70}, {entry(0, -1), entry(1, 0), entry(2, 2)}),
                 "1:60 0:60 2:60 | -1 0 2"},
        PlanCase{"OfTwoAtOnePlaceTheLaterShowsAndBothKeepIt",
                 profiled({80, 90, 70}, {entry(0, 0), entry(1, 1), entry(2, 1)}), "0:60 2:60 | 0 1 1"},
        PlanCase{"TwoAtPlaceZero", profiled({80, 90, 70}, {entry(0, 0), entry(1, 0), entry(2, 1)}),
                 "1:60 2:60 | 0 0 1"},
        PlanCase{"NothingAtPlaceZero", profiled({80, 90}, {entry(0, -1), entry(1, 1)}), "0:80 1:90 | 0 1"},
        PlanCase{"EverythingHidden", profiled({80, 90}, {entry(0, -1), entry(1, -1)}), "0:80 1:90 | 0 1"},
        PlanCase{"EmptyProfile", profiled({80}, {}), "0:80 | 0"},
        PlanCase{"IndexOutOfRange", profiled({80}, {entry(0, 0), userEntry(4096, 1, "Far")}), "0:80 | 0"},
        PlanCase{"NegativeIndex", profiled({80, 90}, {entry(0, 0), entry(-1, 1)}), "0:80 1:90 | 0 1"},
        PlanCase{"PlaceOutOfRange", profiled({80, 90}, {entry(0, 0), entry(1, 4096)}), "0:80 1:90 | 0 1"},
        PlanCase{"UserColumnsReadBeforeAGapStay",
                 profiled({80, 90}, {entry(0, 0), entry(1, 3), userEntry(2, -1, "Ratio")}), "0:80 1:90 2:80 | 0 1 2"},
        PlanCase{"HostGrewOverAUserColumn", profiled({80, 90, 70}, {entry(0, 0), entry(1, 1), userEntry(2, 2, "Old")}),
                 "0:60 1:60 2:60 | 0 1 2"}),
    [](const auto& row) { return row.param.name; });

TEST(ColumnSetPlan, RefusedRangesForgetUserColumnsAndOtherFaultsKeepThem) {
    const auto far = planColumnSet(profiled({80}, {userEntry(1, 1, "Ratio"), entry(0, -2)}));
    EXPECT_TRUE(far.userColumns.empty());
    EXPECT_EQ(far.order, Ints{0});
    const auto gap = planColumnSet(profiled({80}, {entry(0, 3), userEntry(1, 0, "Ratio")}));
    ASSERT_EQ(gap.userColumns.size(), 1u);
    EXPECT_EQ(gap.userColumns[0].first, 1);
    EXPECT_STREQ(gap.userColumns[0].second.szColumnName, "Ratio");
}

TEST(ColumnSetPlan, ABuiltInColumnTakesThePlaceOfAnOldUserColumnWithoutItsRecord) {
    const auto plan = planColumnSet(profiled({80, 90}, {entry(0, 0), userEntry(1, 1, "Old")}));
    EXPECT_TRUE(plan.userColumns.empty());
}

TEST(ColumnSetPlan, FirstColumnAndSortOrderFollowTheRoad) {
    const auto stored = planColumnSet(profiled({80, 90}, {entry(0, 1), entry(1, 0)}));
    EXPECT_EQ(stored.firstColumn, 1);
    EXPECT_TRUE(stored.readsSortOrder);
    const auto defaults = planColumnSet(withDefaults(columns({80, 90, 70}), {1, -1, 0}));
    EXPECT_EQ(defaults.firstColumn, 2);
    EXPECT_TRUE(defaults.readsSortOrder);
    const auto all = planColumnSet(columns({80, 90}));
    EXPECT_EQ(all.firstColumn, 0);
    EXPECT_FALSE(all.readsSortOrder);
}

// Whatever a profile says, the arrays come out in step. Column 0 alone may show in a gap, at another place than its
// own.
TEST(ColumnSetPlan, AnyProfileLeavesTheArraysInStep) {
    const unsigned seed = 20240611;
    std::mt19937 random(seed);
    const auto between = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
    for (int round = 0; round < 20000; ++round) {
        const int count = between(1, 5);
        ColumnSetInput input = profiled(Ints(static_cast<std::size_t>(count), 80), {});
        for (int i = between(0, 7); i > 0; --i) {
            const int index = between(0, count + 1);
            input.profile.push_back(index < count ? entry(index, between(-1, 5))
                                                  : userEntry(index, between(-1, 5), "U"));
        }
        const ColumnSetPlan plan = planColumnSet(input);
        ASSERT_EQ(plan.order.size(), plan.widths.size()) << "seed " << seed << " round " << round;
        ASSERT_FALSE(plan.inserts.empty());
        EXPECT_EQ(plan.inserts[0].columnIndex, plan.firstColumn);
        ASSERT_EQ(plan.visible.size(), plan.inserts.size());
        for (std::size_t place = 0; place < plan.inserts.size(); ++place) {
            const int column = plan.inserts[place].columnIndex;
            const int order = plan.order[static_cast<std::size_t>(column)];
            EXPECT_TRUE(order == static_cast<int>(place) || column == 0) << "round " << round;
        }
        for (const int place : plan.order) EXPECT_LT(place, static_cast<int>(plan.inserts.size())) << "round " << round;
    }
}

}  // namespace
