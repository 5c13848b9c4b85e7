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

TEST(Keywords, TheFirstOfTheTableCounts) {
    CStringArray table;
    for (const char* keyword : {"ABC", "aB",
                                "\xE4"
                                "B",
                                "Q"})
        table.Add(keyword);
    Keywords keywords;
    keywords.follow(&table);
    const struct {
        const char* text;
        int held, equal;
    } rows[] = {{"xxabcab", 0, -1},
                {"aB", 1, 1},
                {"", -1, -1},
                {"q", 3, 3},
                {"a b c", -1, -1},
                {"\xE4"
                 "b",
                 2, 2},
                {"\xC4"
                 "b",
                 -1, -1},
                {"abcq", 0, -1}};
    for (const auto& row : rows) {
        EXPECT_EQ(keywords.firstIn(row.text), row.held) << row.text;
        EXPECT_EQ(keywords.indexOf(row.text), row.equal) << row.text;
    }
    table[0].SetAt(0, 'X');  // in its own buffer, unless a copy holds it
    table.RemoveAt(3);
    table.Add("");
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

}  // namespace
