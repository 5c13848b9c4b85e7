#include "core/list/PlanPicture.h"
#include "src/list/core/ColumnImport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "ColumnTextTools.h"

using namespace quor::list;

namespace {

const std::vector<ImportColumn> kThreeColumns{{"Symbol", 80}, {"Price", 90}, {"Qty", 70}};

struct ImportCase {
    const char* name;
    const char* text;
    const char* picture;
};

class ColumnImport : public testing::TestWithParam<ImportCase> {};

TEST_P(ColumnImport, ComesOutAs) {
    EXPECT_EQ(picture(planColumnImport(kThreeColumns, parseExchangeProfile(GetParam().text))), GetParam().picture);
}

INSTANTIATE_TEST_SUITE_P(
    SymbolPriceQty, ColumnImport,
    testing::Values(
        ImportCase{"OwnText", "0,1,50,Symbol,1,-1,0,Price,2,0,60,Qty,", "2:60 0:50 | 1 -1 0"},
        ImportCase{"AColumnThatMovedKeepsItsSettings", "1,1,50,Symbol,0,0,40,Price,2,-1,0,Qty,", "1:40 0:50 | 1 0 -1"},
        ImportCase{"UnknownColumnIsDropped", "0,0,50,Symbol,1,1,60,Gone,CUSTOMCOLUMN,", "0:50 | 0 -1 -1"},
        ImportCase{"IndexBeyondTheColumnsIsDropped", "0,0,50,Symbol,7,1,60,Price,CUSTOMCOLUMN,", "0:50 | 0 -1 -1"},
        ImportCase{"RenamedColumnKeepsItsPlaceWithoutTheMarker", "0,0,50,Symbol,1,1,60,Old,2,2,70,Qty,",
                   "0:50 2:70 | 0 1 2"},
        ImportCase{"WithoutTheMarkerPlacesCollide", "0,1,50,Symbol,2,0,60,Qty,", "2:60 0:50 | 1 1 0"},
        ImportCase{"UserColumnsAreAppended", "0,0,50,Symbol,CUSTOMCOLUMN,9,1,60,R,R#F#T,5,2,61,S,S#F#T,",
                   "0:50 3:60* 4:61* | 0 -1 -1 1 2"},
        ImportCase{"OfTwoAtOnePlaceTheLaterShowsAndBothKeepIt", "0,0,50,Symbol,1,1,51,Price,2,1,52,Qty,",
                   "0:50 2:52 | 0 1 1"},
        ImportCase{"TwoAtPlaceZero", "0,0,50,Symbol,1,0,51,Price,2,1,52,Qty,", "1:51 2:52 | 0 0 1"},
        ImportCase{"OneColumnTwice", "0,0,50,Symbol,0,1,51,Symbol,1,2,52,Price,CUSTOMCOLUMN,", "0:51 1:52 | 1 2 -1"},
        ImportCase{"AnotherColumnTwice", "0,0,50,Symbol,1,1,51,Price,1,2,52,Price,CUSTOMCOLUMN,",
                   "0:50 1:52 1:52 | 0 2 -1"},
        ImportCase{"AGapShiftsNothingBack", "0,0,50,Symbol,1,4,51,Price,2,2,52,Qty,", "0:50 2:52 1:51 | 0 4 2"},
        ImportCase{"AGapShowsAHiddenColumnZeroOnce", "0,-1,0,Symbol,1,2,51,Price,2,4,52,Qty,",
                   "0:0 1:51 2:52 | -1 2 4"},
        ImportCase{"NothingPlaced", "0,-1,0,Symbol,1,-1,0,Price,2,-1,0,Qty,", "0:80 1:90 2:70 | 0 1 2"},
        ImportCase{"Empty", "", "0:80 1:90 2:70 | 0 1 2"}, ImportCase{"Words", "hello,world", "0:80 1:90 2:70 | 0 1 2"},
        ImportCase{"PlaceBeyondTheCap", "0,0,50,Symbol,1,4096,60,Price,", "0:80 1:90 2:70 | 0 1 2"},
        ImportCase{"PlaceBelowHidden", "0,0,50,Symbol,1,-2,60,Price,", "0:80 1:90 2:70 | 0 1 2"},
        ImportCase{"UserIndexBeyondTheCapForgetsAll", "0,0,50,Symbol,CUSTOMCOLUMN,3,1,60,R,R#F#T,4096,2,61,S,S#F#T,",
                   "0:80 1:90 2:70 | 0 1 2"},
        ImportCase{"CutInsideAUserPart", "0,0,50,Symbol,CUSTOMCOLUMN,3,1,60,R,R#F", "0:50 | 0 -1 -1"}),
    [](const auto& row) { return row.param.name; });

TEST(ColumnImport, UserColumnsCarryTheirFormulaAndWidth) {
    const auto plan = planColumnImport(kThreeColumns, parseExchangeProfile("CUSTOMCOLUMN,3,0,61,R,Ratio#F#T,"));
    ASSERT_EQ(plan.userColumns.size(), 1u);
    EXPECT_EQ(plan.userColumns[0].first, 3);
    const sQuorColInfo& column = plan.userColumns[0].second;
    EXPECT_STREQ(column.szColumnName, "Ratio");
    EXPECT_EQ(column.csExpression, "F");
    EXPECT_EQ(column.csToolTip, "T");
    EXPECT_EQ(column.iWidth, 61);
    EXPECT_EQ(column.iFormat, kFormatRight);
    EXPECT_EQ(plan.firstColumn, 3);
    EXPECT_EQ(plan.widths, (std::vector<int>{100, 100, 100, 61}));
}

TEST(ColumnImport, MoreUserColumnsThanIndicesDoNotFit) {
    std::string text = "0,0,50,Symbol,CUSTOMCOLUMN,";
    for (int i = 0; i < kMaxColumns; ++i) text += "3,-1,0,R,R#F#T,";
    EXPECT_TRUE(planColumnImport(kThreeColumns, parseExchangeProfile(text.c_str())).userColumns.empty());
}

// A list that exports its columns and a list of the same columns in another order that imports them look alike.
TEST(ColumnImport, RandomSetsLookTheSameInAListWithOtherIndices) {
    std::mt19937 random(20251121);
    for (int round = 0; round < 2000; ++round) {
        const std::vector<ProfileEntry> set = column_texts::randomColumnSet(random);
        std::vector<ImportColumn> target;
        for (const ProfileEntry& entry : set) {
            if (!entry.isUserColumn) target.push_back({entry.name, 33});
        }
        std::shuffle(target.begin(), target.end(), random);
        const ColumnSetPlan plan = planColumnImport(target, parseExchangeProfile(formatExchangeProfile(set)));
        ASSERT_EQ(plan.order.size(), set.size()) << round;
        for (const ProfileEntry& entry : set) {
            if (entry.place == -1) continue;
            ASSERT_LT(static_cast<std::size_t>(entry.place), plan.inserts.size()) << round;
            const auto& insert = plan.inserts[static_cast<std::size_t>(entry.place)];
            const auto column = static_cast<std::size_t>(insert.columnIndex);
            EXPECT_EQ(plan.order[column], entry.place);
            EXPECT_EQ(insert.width, entry.width);
            EXPECT_EQ(insert.isUserColumn, entry.isUserColumn);
            const CString heading = insert.isUserColumn
                                        ? CString(plan.userColumns[column - target.size()].second.szColumnName)
                                        : target[column].heading;
            EXPECT_EQ(heading, entry.name) << round;
        }
    }
}

}  // namespace
