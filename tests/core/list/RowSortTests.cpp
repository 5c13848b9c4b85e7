#include "quor/list/core/MergeSort.h"
#include "quor/list/core/NaturalCompare.h"
#include "quor/list/core/RowSort.h"
#include "quor/list/core/SortTexts.h"
#include "quor/platform/tools/QuorTools.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <tuple>
#include <vector>

using namespace quor::list;

namespace {

constexpr SortRule kSingle = SortRule::singleColumn;
constexpr SortRule kLevels = SortRule::levels;

int sign(long long value) { return value < 0 ? -1 : value > 0; }

TEST(SortRules, IntegerDifferencesAreReturnedAndWrap) {
    EXPECT_EQ(compareSortTexts("3", "10", 4, -1, kLevels), -7);
    EXPECT_EQ(compareSortTexts("-2", "2147483647", 1, 1, kSingle), -2147483647);
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
        " -",  "1,000", "z",          "no date",    "",   "-",    "NA",         "0",          "00",
        "-1",  "1",     "1.5",        "-1.5",       "10", "9",    "a",          "A",          "a1",
        "a01", "a10",   "1e3",        "abc",        " 4", "4 ",   "2024-01-02", "2023-12-31", "02/01/2024",
        "x-1", "-x",    "2147483647", "2147483646", "3b", "\xE9", "09:15:00",   "09:15:00.5", "31-12-2023 09:15:00"};
    return texts;
}

TEST(SortRules, AllPairsAsTheOracleSays) {
    for (const SortRule rule : {kSingle, kLevels})
        for (int type = -1; type <= 10; ++type)
            for (const int order : {-1, 1}) {
                SortKeys keys(type, order, rule);
                for (const std::string& text : cellTexts()) keys.add(text.c_str());
                for (std::size_t i = 0; i < cellTexts().size(); ++i)
                    for (std::size_t j = 0; j < cellTexts().size(); ++j) {
                        const std::string &a = cellTexts()[i], &b = cellTexts()[j];
                        ASSERT_EQ(keys.compare(i, j), oracle(a, b, type, order, rule))
                            << type << " " << order << " " << a << " | " << b;
                    }
            }
}

SortKeys level(int type, int order, std::initializer_list<const char*> texts) {
    SortKeys keys(type, order, kLevels);
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
    EXPECT_TRUE(RowSort(0).positions().empty());
}

TEST(RowSort, SortsAsAStableSortByTheOracle) {
    const unsigned seed = test::anySeed();
    std::mt19937 random(seed);
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
        EXPECT_EQ(sort.sortedRows(), expected) << type << " QUOR_SEED=" << seed;
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

TEST(SortLockText, ParsesAndFormats) {
    const std::tuple<const char*, bool, int, int> cases[] = {
        {"True,3,-1", true, 3, -1},     {"True,0,1,9", true, 0, 1},
        {"True,x,1", true, 0, 1},       {"True,,4,1", true, 4, 1},
        {"False,3,1", false, -1, 0},    {"true,3,1", false, -1, 0},
        {"True,3", false, -1, 0},       {"", false, -1, 0},
        {"True,-1,1", false, -1, 0},    {"True,4096,1", false, -1, 0},
        {"True,4095,7", true, 4095, 7}, {" True,3,1", false, -1, 0}};
    for (const auto& [text, locked, column, order] : cases) {
        const SortLock lock = parseSortLock(text);
        EXPECT_EQ(std::tie(lock.locked, lock.columnIndex, lock.order), std::tie(locked, column, order)) << text;
    }
    EXPECT_EQ(formatSortLock({true, 3, -1}), "True,3,-1");
    EXPECT_EQ(formatSortLock({false, 3, -1}), "False,-1,0");
}

std::string picture(const SortLevelsText& text) {
    std::string result;
    for (const SortLevelText& level : text.levels) {
        result += "[" + std::string(level.heading.GetString()) + " " + std::to_string(level.order) + "]";
    }
    return result + (!text.hasFlag ? " -" : text.active ? " on" : " off");
}

TEST(SortLevelsText, Parses) {
    const std::pair<const char*, const char*> cases[] = {
        {"Price->1,Qty->-1#1", "[Price 1][Qty -1] on"},
        {"Price->1,Qty->-1#0", "[Price 1][Qty -1] off"},
        {"Price->1", "[Price 1] -"},
        {" Last Price -> -1 ,,Qty->x#2", "[Last Price -1][Qty 0] off"},
        {"a-b->1#1x", "[a-b 1] on"},
        {"Price#1", " on"},
        {"->1#1", "[ 1] on"},
        {"Price->1#", "[Price 1] -"},
        {"P#0->1,Q->1#1", "[Q 1] on"},  // a heading with "#" is lost
        {"#1", " on"},
        {"", " -"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(picture(parseSortLevels(text)), expected) << text;
}

TEST(SortLevelsText, Formats) {
    EXPECT_EQ(formatSortLevels({{"A b", 1}, {"Qty", -1}}, true), "A b->1,Qty->-1#1");
    EXPECT_EQ(formatSortLevels({{"Price", 1}}, false), "Price->1#0");
    EXPECT_EQ(formatSortLevels({}, true), "");
}

}  // namespace
