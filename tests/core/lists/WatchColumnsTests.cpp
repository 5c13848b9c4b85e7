#include "quor/lists/core/WatchColumns.h"
#include "quor/lists/core/WatchTexts.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

using namespace quor::watch;

namespace {

std::string text(const std::vector<int>& numbers) {
    std::string all;
    for (const int number : numbers) all += (all.empty() ? "" : " ") + std::to_string(number);
    return all;
}

// A watch of 112 built-in columns and `user` user columns, whose first built-in columns stand as told.
struct Watch {
    explicit Watch(int user, std::vector<int> first) {
        input.recordWidths.assign(static_cast<std::size_t>(kMarketWatchColumns + user), 70);
        input.lastColumn = kMarketWatchColumns - 1 + user;
        input.arrays.order.assign(kMarketWatchColumns, -1);
        input.arrays.widths.assign(kMarketWatchColumns, 50);
        std::copy(first.begin(), first.end(), input.arrays.order.begin());
    }
    Watch& user(int place, int width) {
        input.arrays.order.push_back(place);
        input.arrays.widths.push_back(width);
        return *this;
    }
    WatchPlan plan() const { return planWatchColumns(input); }
    std::string sequence() const { return text(plan().bySequence); }

    WatchPlanInput input;
};

TEST(WatchColumns, PlacesMeetTheColumns) {
    EXPECT_EQ(Watch(0, {9, 0, -1, 1}).sequence(), "1 3 0") << "gaps close up";
    EXPECT_EQ(Watch(0, {0, 1, 1}).sequence(), "0 2") << "the later of two stays";
    EXPECT_EQ(Watch(0, {0, 300, 1}).sequence(), "0 2") << "a place that no column can have";
    EXPECT_EQ(Watch(1, {1, 2}).user(0, 33).sequence(), "112 0 1");
    EXPECT_EQ(Watch(1, {0, 1}).user(-1, 33).sequence(), "0 1 112") << "a hidden user column comes back";
    EXPECT_EQ(Watch(1, {0, 1}).user(0, 33).sequence(), "0 1 112") << "its place is taken";
    EXPECT_EQ(Watch(2, {0, 1}).sequence(), "0 1 112 113") << "new user columns";
    EXPECT_EQ(Watch(0, {0, 2, 3}).user(1, 33).sequence(), "0 1 2") << "a user column that is gone";
}

TEST(WatchColumns, ProfilesThatDoNotFitAreLeft) {
    for (const char* stored : {"", "4096,0,1", "-1,0,1", "0,4096,1", "0,-2,1", "0,0,1,0,1,1", "0,-1,0,1,-1,0"}) {
        WatchArrays arrays;
        EXPECT_FALSE(placeByProfile(parseWatchProfile(stored), 112, arrays)) << stored;
        EXPECT_TRUE(arrays.order.empty());
    }
    WatchArrays arrays;
    EXPECT_TRUE(placeByProfile(parseWatchProfile("2,0,30,0,1,40"), 112, arrays));
    EXPECT_EQ(text(arrays.order), "1 -1 0");
    EXPECT_EQ(text(arrays.widths), "40 100 30");
}

std::vector<sQuorColInfo> records(std::initializer_list<const char*> names) {
    std::vector<sQuorColInfo> made;
    for (const char* name : names) {
        setColumnName(made.emplace_back(), name);
        made.back().iWidth = 70;
    }
    return made;
}

TEST(WatchColumns, ImportsKnowColumnsByName) {
    const auto builtIn = records({"Symbol", "Last", "Bid"});
    const struct {
        const char* stored;
        const char* order;
        const char* widths;
    } cases[] = {
        {"", "0 1 2", "70 70 70"},
        {"0,1,10,Symbol,1,0,20,Last,2,2,30,Bid,CUSTOMCOLUMN,", "1 0 2", "10 20 30"},
        {"5,0,10,Bid,CUSTOMCOLUMN,", "-1 -1 0", "100 100 10"},  // moved; the others hide
        {"0,0,10,Renamed,1,1,20,Last,CUSTOMCOLUMN,", "-1 1 -1", "100 20 100"},
        {"2,0,10,Bid", "0 1 0", "70 70 10"},                                  // no marker: nothing hides
        {"0,0,10,Symbol,4096,1,20,Last,CUSTOMCOLUMN,", "0 1 2", "70 70 70"},  // does not fit
    };
    for (const auto& expected : cases) {
        const WatchImport made = importWatch(expected.stored, builtIn);
        EXPECT_EQ(text(made.arrays.order), expected.order) << expected.stored;
        EXPECT_EQ(text(made.arrays.widths), expected.widths) << expected.stored;
        EXPECT_TRUE(made.userColumns.empty());
    }
    const char* const user = "0,0,10,Symbol,CUSTOMCOLUMN,500\2471\24760\247Twice\247i\247d";
    const WatchImport made = importWatch(user, records({"Symbol"}));
    ASSERT_EQ(made.userColumns.size(), 1u);
    EXPECT_EQ(text(made.arrays.order) + ", " + text(made.arrays.widths), "0 1, 10 60") << "numbered anew";
}

// "number,place,width,name,id,display" of each column, with blanks between.
std::string shown(const std::vector<WatchColumn>& columns) {
    std::string all;
    for (const WatchColumn& c : columns)
        all += (all.empty() ? "" : " ") + std::to_string(c.columnIndex) + "," + std::to_string(c.place) + "," +
               std::to_string(c.width) + "," + c.name.GetString() + "," + c.idForm.GetString() + "," +
               c.displayForm.GetString();
    return all;
}

const std::vector<WatchColumn> kColumns = {{0, 1, 80, "Symbol", {}, {}},
                                           {1, -1, 0, "Last", {}, {}},
                                           {112, 0, 60, "Twice", "\"1\" * 2", "\"Last\" * 2"},
                                           {113, 2, 90, "X", "1", "2"}};

TEST(WatchTexts, AreWrittenByteForByteAndComeBack) {
    const WatchColumn userWithoutName{112, -1, 0, "", "", ""};
    const CString user = "112\247Twice\247\"1\" * 2\247\"Last\" * 2";
    EXPECT_STREQ(formatWatchProfile(kColumns), "0,1,80,1,-1,0,112,0,60,113,2,90");
    EXPECT_STREQ(formatWatchUserColumns({kColumns[2], kColumns[3]}), user + "\247113\247X\2471\2472");
    EXPECT_EQ(shown(parseWatchUserColumns(user)), "112,-1,0,Twice,\"1\" * 2,\"Last\" * 2");
    EXPECT_STREQ(formatWatchExport({kColumns[0], userWithoutName}), "0,1,80,Symbol,CUSTOMCOLUMN,");
    EXPECT_STREQ(formatWatchUserColumns({kColumns[0], userWithoutName}), "") << "no column of the user's";
    const CString text = formatWatchExport(kColumns);
    EXPECT_STREQ(text,
                 "0,1,80,Symbol,1,-1,0,Last,CUSTOMCOLUMN,"
                 "112\2470\24760\247Twice\247\"1\" * 2\247\"Last\" * 2\247113\2472\24790\247X\2471\2472");
    const WatchExport made = parseWatchExport(text);
    EXPECT_TRUE(made.hasMarker);
    EXPECT_EQ(shown(made.builtIn), shown({kColumns[0], kColumns[1]}));
    EXPECT_EQ(shown(made.user), shown({kColumns[2], kColumns[3]}));
}

TEST(WatchTexts, CutOnesGiveWhatTheyHold) {
    const std::pair<const char*, const char*> profiles[] = {
        {"", ""}, {"0,1", ""}, {"0,1,2,3,4", "0,1,2,,,"}, {"x,,-1,y", "0,-1,0,,,"}};
    for (const auto& [text, columns] : profiles) EXPECT_EQ(shown(parseWatchProfile(text)), columns) << text;
    EXPECT_EQ(shown(parseWatchUserColumns("112\247A\247i")), "");
    EXPECT_EQ(shown(parseWatchUserColumns("5\247A\247\247i\247d\247")), "5,-1,0,A,i,d");
    EXPECT_EQ(shown(parseWatchExport("3").builtIn), "3,-1,0,,,") << "a missing place is hidden";
    EXPECT_FALSE(parseWatchExport("3,1,2,N,").hasMarker);
    EXPECT_EQ(shown(parseWatchExport("CUSTOMCOLUMN,112\2471\2472\247N\247i").user), "");
}

}  // namespace
