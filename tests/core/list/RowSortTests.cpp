#include "src/list/core/RowSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "platform/tools/QuorTools.h"
#include "src/list/core/MergeSort.h"
#include "src/list/core/NaturalCompare.h"

using namespace quor::list;

namespace {

constexpr SortRule kSingle = SortRule::singleColumn;
constexpr SortRule kLevels = SortRule::levels;

int sign(long long value) { return value < 0 ? -1 : value > 0; }

struct RuleCase {
    int type;
    const char* a;
    const char* b;
    int single;  // sign of the result of a rising sort
    int levels;
};

TEST(SortRules, RisingOrder) {
    const RuleCase cases[] = {
        {1, "2", "10", -1, -1},
        {1, " 7x", "7", 0, 0},
        {1, "-", "-1", 1, 1},  // only the decimal types know "-"
        {2, "2.5", "10", -1, -1},
        {2, "1,000", "2", -1, -1},  // a comma ends the number
        {2, "1e400", "1e500", 0, 0},
        {2, "-", "-0.5", -1, 1},  // -1, or 0 in a level
        {5, "NA", "-0.5", -1, 1},
        {2, "na", "-0.5", 1, 1},
        {2, " -", "-0.5", 1, 1},
        {7, "1", "2", -1, 0},
        {9, "NA", "0", -1, 0},
        {3, "a9", "a10", -1, -1},
        {3, "a01", "a1", -1, -1},
        {4, "-3", "2", -1, -1},
        {8, "B", "a", -1, 0},
        {8, "a", "ab", -1, 0},
        {8, "\xE9", "z", 1, 0},  // unsigned, unlike natural order
        {6, "2024-01-02", "2024-01-03", -1, 1},
        {6, "no date", "2024-01-03", -1, 1},
        {6, "?", "!", 0, 0},
        {0, "a", "b", 0, 0},
        {10, "a", "b", 0, 0},
        {-1, "1", "2", 0, 0},
    };
    for (const RuleCase& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.type << ": " << c.a << " | " << c.b);
        EXPECT_EQ(sign(compareSortTexts(c.a, c.b, c.type, -1, kSingle)), c.single);
        EXPECT_EQ(sign(compareSortTexts(c.a, c.b, c.type, 1, kSingle)), -c.single);
        EXPECT_EQ(sign(compareSortTexts(c.a, c.b, c.type, -1, kLevels)), c.levels);
        EXPECT_EQ(sign(compareSortTexts(c.a, c.b, c.type, 1, kLevels)), -c.levels);
    }
}

TEST(SortRules, IntegerDifferencesAreReturnedAndWrap) {
    EXPECT_EQ(compareSortTexts("3", "10", 1, 1, kSingle), 7);
    EXPECT_EQ(compareSortTexts("3", "10", 4, -1, kLevels), -7);
    EXPECT_EQ(compareSortTexts("-2", "2147483647", 1, 1, kSingle), -2147483647);
    // The readers saturate.
    EXPECT_EQ(compareSortTexts("99999999999", "2147483647", 1, 1, kSingle), 0);
    // Exactly 2^31 apart: each goes before the other.
    EXPECT_LT(compareSortTexts("-2147483648", "0", 1, 1, kSingle), 0);
    EXPECT_LT(compareSortTexts("0", "-2147483648", 1, 1, kSingle), 0);
}

// A second statement of the rule, text by text and with the C library's readers.
int oracle(const std::string& a, const std::string& b, int type, int s, SortRule rule) {
    const bool single = rule == kSingle;
    const auto number = [&](const std::string& text) {
        return single && (text == "-" || text == "NA") ? -1.0 : std::strtod(text.c_str(), nullptr);
    };
    switch (type) {
        case 1:
        case 4:
            return static_cast<int>(s * (std::strtoll(b.c_str(), nullptr, 10) - std::strtoll(a.c_str(), nullptr, 10)));
        case 2:
        case 5:
        case 7:
        case 9: {
            if (!single && type > 5) return 0;
            const double d = s * (number(b) - number(a));
            return d > 0 ? 1 : d == 0 ? 0 : -1;
        }
        case 3:
            return s * naturalCompare(b.c_str(), a.c_str());
        case 6: {
            std::string first = a;
            std::string second = b;
            const int result = CompareDateTime(first.data(), second.data(), s);
            return single ? -result : result;
        }
        case 8:
            return single ? s * sign(std::strcmp(b.c_str(), a.c_str())) : 0;
        default:
            return 0;
    }
}

const std::vector<std::string>& cellTexts() {
    static const std::vector<std::string> texts = {
        "",     "-",          "NA",         "0",  "00",         "-1",         "1",          "1.5",
        "-1.5", "10",         "9",          "a",  "A",          "a1",         "a01",        "a10",
        "1e3",  "abc",        " 4",         "4 ", "2024-01-02", "2023-12-31", "02/01/2024", "x-1",
        "-x",   "2147483647", "2147483646", "3b", "\xE9",       "09:15:00",   "09:15:00.5", "31-12-2023 09:15:00"};
    return texts;
}

TEST(SortRules, AllPairsAsTheOracleSays) {
    for (const SortRule rule : {kSingle, kLevels}) {
        for (int type = -1; type <= 10; ++type) {
            for (const int order : {-1, 1}) {
                for (const std::string& a : cellTexts()) {
                    for (const std::string& b : cellTexts()) {
                        ASSERT_EQ(compareSortTexts(a.c_str(), b.c_str(), type, order, rule),
                                  oracle(a, b, type, order, rule))
                            << type << " " << order << " " << a << " | " << b;
                    }
                }
            }
        }
    }
}

// Every type but 1 and 4 is antisymmetric on all texts; those are on values less than 2^31 apart, where all types but 3
// are transitive, too.
TEST(SortRules, AntisymmetricAndTransitiveWhereTheyShouldBe) {
    for (const SortRule rule : {kSingle, kLevels}) {
        for (int type = 0; type <= 9; ++type) {
            const auto compare = [&](const std::string& a, const std::string& b) {
                return compareSortTexts(a.c_str(), b.c_str(), type, -1, rule);
            };
            for (const std::string& a : cellTexts()) {
                for (const std::string& b : cellTexts()) {
                    if (a.size() > 9 || b.size() > 9) continue;
                    ASSERT_EQ(sign(compare(a, b)), -sign(compare(b, a))) << type << " " << a << " | " << b;
                    if (type == 3 || compare(a, b) > 0) continue;
                    for (const std::string& c : cellTexts()) {
                        if (c.size() > 9 || compare(b, c) > 0) continue;
                        ASSERT_LE(compare(a, c), 0) << type << " " << a << " | " << b << " | " << c;
                    }
                }
            }
        }
    }
}

TEST(SortRules, TheWrapBreaksTransitivity) {
    const auto rising = [](const char* a, const char* b) { return compareSortTexts(a, b, 1, -1, kSingle); };
    EXPECT_LT(rising("-2000000000", "0"), 0);
    EXPECT_LT(rising("0", "2000000000"), 0);
    EXPECT_GT(rising("-2000000000", "2000000000"), 0);
}

TEST(SortKeys, CompareAsTheTextsDo) {
    for (const SortRule rule : {kSingle, kLevels}) {
        for (int type = 0; type <= 9; ++type) {
            SortKeys keys(type, 1, rule);
            if (!keys.readsTexts()) continue;
            for (const std::string& text : cellTexts()) keys.add(text.c_str());
            for (std::size_t a = 0; a < cellTexts().size(); ++a) {
                for (std::size_t b = 0; b < cellTexts().size(); ++b) {
                    ASSERT_EQ(keys.compare(a, b), oracle(cellTexts()[a], cellTexts()[b], type, 1, rule))
                        << type << " " << cellTexts()[a] << " | " << cellTexts()[b];
                }
            }
        }
    }
}

SortKeys level(int type, int order, std::initializer_list<const char*> texts, SortRule rule = kLevels) {
    SortKeys keys(type, order, rule);
    for (const char* text : texts) keys.add(text);
    return keys;
}

using Rows = std::vector<std::uint32_t>;

TEST(RowSort, LaterLevelsDecideTiesAndTheRestKeepsItsOrder) {
    RowSort sort(5);
    sort.addLevel(level(1, -1, {"2", "1", "2", "1", "2"}));
    sort.addLevel(level(8, -1, {"x", "a", "b", "c", "d"}));  // text does not compare in a level
    EXPECT_EQ(sort.sortedRows(), (Rows{1, 3, 0, 2, 4}));
    sort.addLevel(level(2, 1, {"1", "1", "3", "1", "2"}));
    EXPECT_EQ(sort.sortedRows(), (Rows{1, 3, 2, 4, 0}));
    EXPECT_EQ(sort.positions(), (Rows{4, 0, 2, 1, 3}));
}

TEST(RowSort, ALoneTextLevelLeavesTheRowsAlone) {
    RowSort sort(3);
    sort.addLevel(level(8, -1, {"c", "b", "a"}));
    EXPECT_EQ(sort.sortedRows(), (Rows{0, 1, 2}));
    EXPECT_TRUE(RowSort(0).positions().empty());
}

TEST(RowSort, SortsAsAStableSortByTheOracle) {
    std::mt19937 random(7);
    for (const int type : {1, 2, 8}) {
        std::vector<std::string> texts;
        SortKeys keys(type, -1, kSingle);
        for (int row = 0; row < 1000; ++row) {
            texts.push_back(std::to_string(static_cast<int>(random() % 400) - 200) + (row % 2 ? ".5" : ""));
            keys.add(texts.back().c_str());
        }
        RowSort sort(texts.size());
        sort.addLevel(keys);
        Rows expected(texts.size());
        for (std::uint32_t row = 0; row < expected.size(); ++row) expected[row] = row;
        std::sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
            const int order = oracle(texts[a], texts[b], type, -1, kSingle);
            return order ? order < 0 : a < b;
        });
        EXPECT_EQ(sort.sortedRows(), expected) << type;
    }
}

// Whatever the comparator says, every element comes out once.
TEST(MergeSort, AnyComparatorGivesAPermutation) {
    std::mt19937 random(3);
    for (std::size_t count = 0; count < 70; ++count) {
        Rows elements(count);
        for (std::uint32_t i = 0; i < count; ++i) elements[i] = i;
        const Rows all = elements;
        for (int kind = 0; kind < 4; ++kind) {
            stableMergeSort(elements, [&](std::uint32_t, std::uint32_t) {
                return kind == 3 ? static_cast<int>(random() % 3) - 1 : kind - 1;
            });
            Rows sorted = elements;
            std::sort(sorted.begin(), sorted.end());
            ASSERT_EQ(sorted, all) << count << " " << kind;
        }
    }
}

}  // namespace
