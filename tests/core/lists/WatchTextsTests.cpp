#include "src/lists/core/WatchTexts.h"

#include <gtest/gtest.h>

#include <string>

using namespace quor::watch;

namespace {

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

TEST(WatchTexts, AreWrittenByteForByte) {
    EXPECT_STREQ(formatWatchProfile(kColumns), "0,1,80,1,-1,0,112,0,60,113,2,90");
    EXPECT_STREQ(formatWatchUserColumns({kColumns[2], kColumns[3]}),
                 "112\xA7Twice\xA7\"1\" * 2\xA7\"Last\" * 2\xA7"
                 "113\xA7X\xA7"
                 "1\xA7"
                 "2");
    EXPECT_STREQ(formatWatchExport(kColumns),
                 "0,1,80,Symbol,1,-1,0,Last,CUSTOMCOLUMN,"
                 "112\xA7"
                 "0\xA7"
                 "60\xA7Twice\xA7\"1\" * 2\xA7\"Last\" * 2\xA7"
                 "113\xA7"
                 "2\xA7"
                 "90\xA7X\xA7"
                 "1\xA7"
                 "2");
    EXPECT_STREQ(formatWatchExport({kColumns[0]}), "0,1,80,Symbol,CUSTOMCOLUMN,");
    EXPECT_STREQ(formatWatchExport({kColumns[0], {112, -1, 0, "", "", ""}}), "0,1,80,Symbol,CUSTOMCOLUMN,");
    EXPECT_STREQ(formatWatchUserColumns({kColumns[0], {112, -1, 0, "", "", ""}}), "") << "no column of the user's";
}

TEST(WatchTexts, ComeBackAsWritten) {
    const WatchExport made = parseWatchExport(formatWatchExport(kColumns));
    EXPECT_TRUE(made.hasMarker);
    EXPECT_EQ(shown(made.builtIn), shown({kColumns[0], kColumns[1]}));
    EXPECT_EQ(shown(made.user), shown({kColumns[2], kColumns[3]}));
    EXPECT_EQ(shown(parseWatchUserColumns(formatWatchUserColumns({kColumns[2]}))),
              "112,-1,0,Twice,\"1\" * 2,\"Last\" * 2");
}

TEST(WatchTexts, CutAndOddTextsGiveWhatTheyHold) {
    EXPECT_EQ(shown(parseWatchProfile("")), "");
    EXPECT_EQ(shown(parseWatchProfile("0,1")), "");
    EXPECT_EQ(shown(parseWatchProfile("0,1,2,3,4")), "0,1,2,,,");
    EXPECT_EQ(shown(parseWatchProfile("x,,-1,y")), "0,-1,0,,,") << "empty fields do not exist, words are 0";
    EXPECT_EQ(shown(parseWatchUserColumns("112\xA7"
                                          "A\xA7i")),
              "");
    EXPECT_EQ(shown(parseWatchUserColumns("5\xA7"
                                          "A\xA7\xA7i\xA7"
                                          "d\xA7")),
              "5,-1,0,A,i,d");
    EXPECT_EQ(shown(parseWatchExport("3").builtIn), "3,-1,0,,,") << "a missing place is hidden";
    EXPECT_FALSE(parseWatchExport("3,1,2,N,").hasMarker);
    EXPECT_TRUE(parseWatchExport("CUSTOMCOLUMN").hasMarker);
    EXPECT_EQ(shown(parseWatchExport("CUSTOMCOLUMN,112\xA7"
                                     "1\xA7"
                                     "2\xA7N\xA7i")
                        .user),
              "");
}

}  // namespace
