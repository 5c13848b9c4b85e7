#include "quor/foundation/core/AppearanceRecords.h"
#include "quor/list/core/DialogFold.h"
#include "quor/list/core/KeywordRows.h"

#include <gtest/gtest.h>

using namespace quor::list;

namespace {

constexpr auto kNone = std::nullopt;

struct KeywordRowsOfRecords : ::testing::Test {
    ~KeywordRowsOfRecords() override {
        record.freeKeywordArrays();
        read.freeKeywordArrays();
    }
    static std::string text(const std::vector<KeywordRow>& rows) {
        CString all;
        for (const KeywordRow& row : rows)
            all.AppendFormat("%s/%d/%d ", row.keyword.GetString(), row.text ? static_cast<int>(*row.text) : -1,
                             row.back ? static_cast<int>(*row.back) : -1);
        return all.GetString();
    }
    cCustomizedAppearanceSettings record, read;
};

TEST_F(KeywordRowsOfRecords, TheCustomiseLevelDropsRowsWithoutAColour) {
    record.bKeywordsEnabled = 1;
    const CString tail =
        takeKeywords(record, 2, {{"buy\xE4", 0, kNone}, {"none", kNone, kNone}, {"Sell", 0xFF, kNone}});
    EXPECT_STREQ(tail, "2,BUY\xE4,0,SELL,FF,");
    EXPECT_EQ(text(keywordRows(record)), "BUY\xE4/0/-1 SELL/255/-1 ");
    EXPECT_STREQ(appearanceText(record, tail), "0,FF00,MS Shell Dlg 2,8,2,BUY\xE4,0,SELL,FF,");
    quor::foundation::parseAppearanceRecord(appearanceText(record, tail), read);
    EXPECT_EQ(text(keywordRows(read)), text(keywordRows(record)));
    EXPECT_STREQ(takeKeywords(record, 0, {}), "0,");
    EXPECT_EQ(text(keywordRows(record)), "");
    EXPECT_STREQ(appearanceText(record, ""), "0,FF00,MS Shell Dlg 2,8");
}

TEST_F(KeywordRowsOfRecords, AnEmptyBoxOfTheUserLevelIsWrittenAsTheOneAbove) {
    EXPECT_TRUE(takeUserKeywords(record, {}).IsEmpty());
    EXPECT_EQ(record.pUserKeywords, nullptr);
    const CString tail = takeUserKeywords(record, {{"a", kNone, 1}, {"b", 2, kNone}, {"c", kNone, 3}});
    EXPECT_STREQ(tail, "A,FFFFFFFF,1,B,2,1,C,2,3,");
    EXPECT_EQ(text(userKeywordRows(record)), "A/2/1 B/-1/3 C/-1/-1 ") << "the arrays drift apart";
    delete record.pUserBackColors;
    record.pUserBackColors = nullptr;
    EXPECT_EQ(text(userKeywordRows(record)), "") << "one array is missing";
}

// Under the address sanitizer an array that is lost or freed twice fails the run.
TEST_F(KeywordRowsOfRecords, AnOwnerTakesARecordOverWithArraysOfItsOwn) {
    takeKeywords(record, 1, {{"old", 1, kNone}});
    takeUserKeywords(record, {{"user", 1, 2}});
    takeKeywords(read, 3, {{"new", 5, kNone}});
    replaceAppearance(record, read);
    EXPECT_EQ(text(keywordRows(record)) + text(userKeywordRows(record)), "NEW/5/-1 USER/1/2 ");
    EXPECT_NE(record.pKeywords, read.pKeywords);
    replaceAppearance(record, record);
    EXPECT_EQ(text(keywordRows(record)), "NEW/5/-1 ");
}

TEST(DialogFold, NothingMovesTwice) {
    const FoldHeights heights{138, 197};
    const struct {
        int frame;
        bool shown;
        int step;
    } rows[] = {{197, true, 0},  {197, false, -138}, {59, false, 0},
                {59, true, 138}, {60, true, 138},    {196, false, -138}};
    for (const auto& row : rows) EXPECT_EQ(foldStep(heights, row.frame, row.shown), row.step) << row.frame;
}

TEST(DialogFold, TheEndStaysInTheWorkArea) {
    const struct {
        int top, height, outcome;
    } rows[] = {{400, 300, 400}, {401, 300, 400}, {20, 681, 20}, {20, 700, 20}, {-50, 300, -50}};
    for (const auto& row : rows) EXPECT_EQ(unfoldedTop(row.top, row.height, 20, 700), row.outcome) << row.height;
}

}  // namespace
