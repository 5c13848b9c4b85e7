#include "quor/foundation/core/AppearanceRecords.h"
#include "quor/list/core/DialogFold.h"
#include "quor/list/core/KeywordRows.h"
#include "quor/list/core/Keywords.h"
#include "support/Rounds.h"

#include <gtest/gtest.h>

using namespace quor::list;

namespace {

TEST(Keywords, TheLongestStandFirst) {
    std::vector<CString> table;
    for (const char* added : {"ab", "abcd", "abc", "xyz", "", "q"}) {
        std::vector<int> lengths;
        for (const CString& keyword : table) lengths.push_back(keyword.GetLength());
        table.insert(table.begin() + keywordPlace(lengths, CString(added).GetLength()), added);
    }
    EXPECT_EQ(table, (std::vector<CString>{"abcd", "xyz", "abc", "ab", "q", ""}));
    EXPECT_STREQ(foldedKeyword("a z\xE4\xFF{"), "A Z\xE4\xFF{");
}

// Letters beyond A to Z are not folded.
TEST(Keywords, TheFirstOfTheTableCounts) {
    CStringArray table;
    for (const char* keyword : {"ABC", "aB", "\xE4W", "Q"}) table.Add(keyword);
    Keywords keywords;
    keywords.follow(&table);
    const struct {
        const char* text;
        int held, equal;
    } rows[] = {{"xxabcab", 0, -1}, {"aB", 1, 1},    {"", -1, -1},      {"q", 3, 3},
                {"a b c", -1, -1},  {"\xE4w", 2, 2}, {"\xC4w", -1, -1}, {"abcq", 0, -1}};
    for (const auto& row : rows) {
        EXPECT_EQ(keywords.firstIn(row.text), row.held) << row.text;
        EXPECT_EQ(keywords.indexOf(row.text), row.equal) << row.text;
    }
    table[0].SetAt(0, 'X');  // in its own buffer, unless a copy holds it
    table.SetAt(3, "");
    keywords.follow(&table);
    EXPECT_EQ(keywords.firstIn("abc"), 1);
    EXPECT_EQ(keywords.firstIn("xbc"), 0);
    EXPECT_EQ(keywords.firstIn("q"), 3) << "the empty keyword is in every text";
    keywords.follow(nullptr);
    EXPECT_EQ(keywords.firstIn("abc"), -1);
}

TEST(Keywords, AgreeWithASearchOfEach) {
    const unsigned seed = test::anySeed();
    SCOPED_TRACE("QUOR_SEED=" + std::to_string(seed));
    std::mt19937 random(seed);
    const auto word = [&](std::size_t longest) {
        CString text;
        for (std::size_t left = random() % (longest + 1); left > 0; --left) text += "abAB c"[random() % 6];
        return text;
    };
    CStringArray table;
    Keywords keywords;
    for (long step = test::rounds("QUOR_KEYWORD_STEPS", 50'000); step > 0; --step) {
        if (table.GetSize() < 12) table.Add(foldedKeyword(word(5)) + "C");
        if (step % 7 == 0) table.SetAt(static_cast<INT_PTR>(random()) % table.GetSize(), foldedKeyword(word(6)) + "A");
        if (step % 90 == 0) table.RemoveAll();
        const CString text = word(20);
        CString folded = text;
        folded.MakeUpper();
        int expected = -1;
        for (int i = static_cast<int>(table.GetSize()) - 1; i >= 0; --i)
            if (folded.Find(table.GetAt(i)) != -1) expected = i;
        keywords.follow(&table);
        ASSERT_EQ(keywords.firstIn(text), expected) << text.GetString();
    }
}

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
    const int steps[][3] = {{197, 1, 0}, {197, 0, -138}, {59, 0, 0}, {59, 1, 138}, {196, 0, -138}};
    for (const auto& [frame, shown, step] : steps) EXPECT_EQ(foldStep(heights, frame, shown != 0), step) << frame;
}

TEST(DialogFold, TheEndStaysInTheWorkArea) {
    const int rows[][3] = {{400, 300, 400}, {401, 300, 400}, {20, 681, 20}, {20, 700, 20}, {-50, 300, -50}};
    for (const auto& [top, height, outcome] : rows) EXPECT_EQ(unfoldedTop(top, height, 20, 700), outcome) << height;
}

}  // namespace
