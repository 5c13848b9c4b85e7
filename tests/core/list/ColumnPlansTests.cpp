// The columns that come on screen, of a stored profile and of another list's export.
#include "core/list/RandomColumnSet.h"
#include "quor/list/core/ColumnArrays.h"
#include "quor/list/core/ColumnImport.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace quor::list;

namespace {

using Ints = std::vector<int>;

// "column:width" for each insert, a star on user columns; then the order array.
std::string picture(const ColumnSetPlan& plan) {
    std::string text;
    for (const auto& insert : plan.inserts)
        text += std::to_string(insert.columnIndex) + ":" + std::to_string(insert.width) +
                (insert.isUserColumn ? "* " : " ");
    text += "|";
    for (const int place : plan.order) text += " " + std::to_string(place);
    return text;
}

// A list of columns that are 80, 90, 70 wide. A null profile: none is stored.
ColumnSetPlan planned(int columns, const Ints& defaults, const char* profile) {
    constexpr int widths[] = {80, 90, 70};
    ColumnSetInput input;
    input.widths.assign(widths, widths + columns);
    input.defaultPlaces = defaults;
    input.hasProfile = profile != nullptr;
    input.profile = parseColumnProfile(profile ? profile : "", columns);
    return planColumnSet(input);
}

TEST(ColumnSetPlan, ComesOutAs) {
    const struct {
        int columns;
        Ints defaults;
        const char *profile, *picture;
    } cases[] = {
        {2, {}, nullptr, "0:80 1:90 | 0 1"},
        {3, {1, 0}, nullptr, "1:90 0:80 | 1 0 -1"},          // older than the columns
        {3, {0, -1, 2}, nullptr, "0:80 1:90 2:70 | 0 1 2"},  // a gap
        {2, {-1, -1}, nullptr, "0:80 1:90 | 0 1"},           // they would show nothing
        {3, {}, "0,1,60,1,-1,0,2,0,33", "2:33 0:60 | 1 -1 0"},
        {2, {0, -1}, "0,1,60,1,0,60", "1:60 0:60 | 1 0"},  // before the defaults
        {3, {}, "0,0,60,1,1,60", "0:60 1:60 | 0 1 -1"},    // a column added since stays hidden
        {2, {}, "0,0,60,1,-1,0,2,1,60,Ratio#F#T", "0:60 2:60* | 0 -1 1"},
        {2, {}, "0,1,60,1,0,60,2,2,60", "1:60 0:60 | 1 0"},  // one too many, which is no user column
        {3, {}, "0,0,60,1,1,60,1,2,60", "0:80 1:90 2:70 | 0 1 2"},
        {3, {}, "0,0,60,1,2,60,2,2,60", "0:80 1:90 2:70 | 0 1 2"},  // a gap: all, or the defaults
        {3, {-1, 0, -1}, "0,0,60,1,2,60,2,2,60", "1:90 | -1 0 -1"},
        {3, {}, "0,-1,60,1,0,60,2,2,60", "1:60 0:60 2:60 | -1 0 2"},  // but hidden column 0 shows in it
        {3, {}, "0,0,60,1,1,60,2,1,60", "0:60 2:60 | 0 1 1"},  // of two at one place the later shows, both keep it
        {2, {}, "0,-1,60,1,1,60", "0:80 1:90 | 0 1"},          // nothing at place 0
        {1, {}, "", "0:80 | 0"},
        {1, {}, "0,0,60,4096,1,60,Far#F#T", "0:80 | 0"},
        {2, {}, "0,0,60,1,3,60,2,-1,60,Ratio#F#T", "0:80 1:90 2:80 | 0 1 2"},  // what was read before a gap stays
        {3, {}, "0,0,60,1,1,60,2,2,60,Old#F#T", "0:60 1:60 2:60 | 0 1 2"},     // the host grew over a user column
    };
    for (const auto& c : cases)
        EXPECT_EQ(picture(planned(c.columns, c.defaults, c.profile)), c.picture) << (c.profile ? c.profile : "none");
}

TEST(ColumnSetPlan, RefusedRangesForgetUserColumnsAndOtherFaultsKeepThem) {
    EXPECT_TRUE(planned(1, {}, "1,1,60,Ratio#F#T,0,-2,60").userColumns.empty());
    EXPECT_EQ(planned(2, {}, "0,1,50,1,0,50,4096,2,60,Far#F#T").widths, (Ints{80, 90}));
    const auto gap = planned(1, {}, "0,3,60,1,0,60,Ratio#F#T");
    ASSERT_EQ(gap.userColumns.size(), 1u);
    EXPECT_EQ(gap.userColumns[0].first, 1);
    EXPECT_STREQ(gap.userColumns[0].second.szColumnName, "Ratio");
    EXPECT_TRUE(planned(2, {}, "0,1,60,1,0,60").readsSortOrder);
    EXPECT_TRUE(planned(3, {1, -1, 0}, nullptr).readsSortOrder);
    EXPECT_FALSE(planned(2, {}, nullptr).readsSortOrder);
}

const std::vector<ImportColumn> kThreeColumns{{"Symbol", 80}, {"Price", 90}, {"Qty", 70}};

TEST(ColumnImport, ComesOutAs) {
    const char* const unchanged = "0:80 1:90 2:70 | 0 1 2";
    const struct {
        const char *text, *picture;
    } cases[] = {
        {"0,1,50,Symbol,1,-1,0,Price,2,0,60,Qty,", "2:60 0:50 | 1 -1 0"},
        {"1,1,50,Symbol,0,0,40,Price,2,-1,0,Qty,", "1:40 0:50 | 1 0 -1"},  // columns that moved keep their settings
        {"0,0,50,Symbol,1,1,60,Gone,CUSTOMCOLUMN,", "0:50 | 0 -1 -1"},
        {"0,0,50,Symbol,1,1,60,Old,2,2,70,Qty,", "0:50 2:70 | 0 1 2"},  // without the marker nothing hides
        {"0,0,50,Symbol,CUSTOMCOLUMN,9,1,60,R,R#F#T,5,2,61,S,S#F#T,", "0:50 3:60* 4:61* | 0 -1 -1 1 2"},
        {"0,0,50,Symbol,1,1,51,Price,2,1,52,Qty,", "0:50 2:52 | 0 1 1"},
        {"0,0,50,Symbol,0,1,51,Symbol,1,2,52,Price,CUSTOMCOLUMN,", "0:51 1:52 | 1 2 -1"},      // column 0 shows once,
        {"0,0,50,Symbol,1,1,51,Price,1,2,52,Price,CUSTOMCOLUMN,", "0:50 1:52 1:52 | 0 2 -1"},  // another twice
        {"0,0,50,Symbol,1,4,51,Price,2,2,52,Qty,", "0:50 2:52 1:51 | 0 4 2"},
        {"0,-1,0,Symbol,1,2,51,Price,2,4,52,Qty,", "0:0 1:51 2:52 | -1 2 4"},  // a gap shows hidden column 0 once
        {"0,-1,0,Symbol,1,-1,0,Price,2,-1,0,Qty,", unchanged},
        {"", unchanged},
        {"0,0,50,Symbol,1,4096,60,Price,", unchanged},
        {"0,0,50,Symbol,CUSTOMCOLUMN,3,1,60,R,R#F#T,4096,2,61,S,S#F#T,", unchanged},
        {"0,0,50,Symbol,CUSTOMCOLUMN,3,1,60,R,R#F", "0:50 | 0 -1 -1"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(picture(planColumnImport(kThreeColumns, parseExchangeProfile(c.text))), c.picture) << c.text;
    std::string text = "0,0,50,Symbol,CUSTOMCOLUMN,";
    for (int i = 0; i < kMaxColumns; ++i) text += "3,-1,0,R,R#F#T,";
    EXPECT_EQ(picture(planColumnImport(kThreeColumns, parseExchangeProfile(text.c_str()))), unchanged);
}

TEST(ColumnArrays, NumbersFollowTheHeadingsOfTheirColumns) {
    const struct {
        const char *former, *now;  // a letter a heading
        std::vector<int> moved;
    } cases[] = {
        {"abc", "abc", {0, 1, 2}}, {"abc", "cab", {1, 2, 0}},      {"abc", "ab", {0, 1, -1}},
        {"ab", "xab", {1, 2}},     {"axbx", "axx", {0, 1, -1, 2}}, {"axx", "ax", {0, 1, -1}},
    };
    const auto headings = [](std::string_view letters) {
        std::vector<CString> all;
        for (const char letter : letters) all.emplace_back(letter);
        return all;
    };
    for (const auto& c : cases) EXPECT_EQ(movedColumns(headings(c.former), headings(c.now)), c.moved) << c.now;
    for (const int none : {-1, 2}) EXPECT_EQ(movedColumn({1, 0}, none), -1);
}

// A list that exports its columns and a list of the same columns in another order that imports them look alike.
TEST(ColumnImport, RandomSetsLookTheSameInAListWithOtherIndices) {
    RandomColumnSets random;
    for (long round = random.rounds(); round > 0; --round) {
        const std::vector<ProfileEntry> set = random.next();
        std::vector<ImportColumn> target;
        for (const ProfileEntry& entry : set)
            if (!entry.isUserColumn) target.push_back({entry.name, 33});
        std::shuffle(target.begin(), target.end(), random.engine);
        const ColumnSetPlan plan = planColumnImport(target, parseExchangeProfile(formatExchangeProfile(set)));
        ASSERT_EQ(plan.order.size(), set.size());
        ASSERT_EQ(plan.firstColumn, plan.inserts.at(0).columnIndex);
        for (const ProfileEntry& entry : set) {
            if (entry.place == -1) continue;
            const auto& insert = plan.inserts.at(static_cast<std::size_t>(entry.place));
            const auto column = static_cast<std::size_t>(insert.columnIndex);
            ASSERT_EQ(plan.order[column], entry.place);
            ASSERT_EQ(plan.widths[column], entry.width);
            ASSERT_EQ(insert.width, entry.width);
            ASSERT_EQ(insert.isUserColumn, entry.isUserColumn);
            if (!insert.isUserColumn) {
                ASSERT_EQ(target[column].heading, entry.name);
                continue;
            }
            const auto& [index, record] = plan.userColumns.at(column - target.size());
            ASSERT_EQ(index, insert.columnIndex);
            ASSERT_EQ(CString(record.szColumnName) + record.csExpression + record.csToolTip,
                      entry.name + entry.expression + entry.toolTip);
            ASSERT_EQ(record.iWidth, entry.width);
            ASSERT_EQ(record.iFormat, kFormatRight);
        }
    }
}

}  // namespace
