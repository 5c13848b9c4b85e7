#include "quor/list/core/MergeSort.h"
#include "quor/list/core/NaturalCompare.h"
#include "quor/list/core/RowSort.h"
#include "quor/list/core/SortTexts.h"
#include "quor/platform/tools/QuorTools.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace quor::list;

namespace {

constexpr SortRule kSingle = SortRule::singleColumn;
constexpr SortRule kLevels = SortRule::levels;

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
            return single ? s * ((b > a) - (b < a)) : 0;
        default:
            return 0;
    }
}

const std::string kCellTexts[] = {
    " -",  "1,000", "z",          "no date",    "",   "-",    "NA",         "0",          "00",
    "-1",  "1",     "1.5",        "-1.5",       "10", "9",    "a",          "A",          "a1",
    "a01", "a10",   "1e3",        "abc",        " 4", "4 ",   "2024-01-02", "2023-12-31", "02/01/2024",
    "x-1", "-x",    "2147483647", "2147483646", "3b", "\xE9", "09:15:00",   "09:15:00.5", "31-12-2023 09:15:00"};

TEST(SortRules, AllPairsAsTheOracleSays) {
    EXPECT_EQ(compareSortTexts("3", "10", 4, -1, kLevels), -7) << "a difference of integers is returned";
    EXPECT_LT(compareSortTexts("-2147483648", "0", 1, 1, kSingle), 0) << "and wraps: each goes before the other";
    EXPECT_LT(compareSortTexts("0", "-2147483648", 1, 1, kSingle), 0);
    for (const SortRule rule : {kSingle, kLevels})
        for (int type = -1; type <= 10; ++type)
            for (const int order : {-1, 1}) {
                SortKeys keys(type, order, rule);
                for (const std::string& text : kCellTexts) keys.add(text.c_str());
                for (std::size_t i = 0; i < std::size(kCellTexts); ++i)
                    for (std::size_t j = 0; j < std::size(kCellTexts); ++j) {
                        const std::string &a = kCellTexts[i], &b = kCellTexts[j];
                        ASSERT_EQ(keys.compare(i, j), oracle(a, b, type, order, rule))
                            << type << " " << order << " " << a << " | " << b;
                    }
            }
}

using Rows = std::vector<std::uint32_t>;

TEST(RowSort, LaterLevelsDecideTiesAndTheRestKeepsItsOrder) {
    RowSort sort(5);
    const auto addLevel = [&sort](int type, int order, std::initializer_list<const char*> texts) {
        SortKeys keys(type, order, kLevels);
        for (const char* text : texts) keys.add(text);
        sort.addLevel(std::move(keys));
    };
    addLevel(1, -1, {"2", "1", "2", "1", "2"});
    addLevel(8, -1, {"x", "a", "b", "c", "d"});  // text does not compare in a level
    EXPECT_EQ(sort.sortedRows(), (Rows{1, 3, 0, 2, 4}));
    addLevel(2, 1, {"1", "1", "3", "1", "2"});
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
        std::iota(expected.begin(), expected.end(), 0u);
        std::sort(expected.begin(), expected.end(), [&](std::uint32_t a, std::uint32_t b) {
            const int order = oracle(texts[a], texts[b], type, -1, kSingle);
            return order ? order < 0 : a < b;
        });
        EXPECT_EQ(sort.sortedRows(), expected) << type << " QUOR_SEED=" << seed;
    }
}

TEST(SortLockText, ParsesAndFormats) {
    const std::pair<const char*, const char*> locks[] = {{"True,3,-1", "True,3,-1"}, {"True,0,1,9", "True,0,1"},
                                                         {"True,x,1", "True,0,1"},   {"True,,4,1", "True,4,1"},
                                                         {"true,3,1", ""},           {"True,3", ""},
                                                         {"True,-1,1", ""},          {"True,4096,1", ""},
                                                         {"False,3,1", ""},          {"True,4095,7", "True,4095,7"},
                                                         {" True,3,1", ""},          {"", ""}};
    for (const auto& [text, again] : locks) {
        const SortLock lock = parseSortLock(text);
        EXPECT_EQ(lock.locked, *again != '\0') << text;
        EXPECT_EQ(formatSortLock(lock), lock.locked ? again : "False,-1,0") << text;
    }
    EXPECT_EQ(parseSortLock("True,3,-1").columnIndex, 3);
    EXPECT_EQ(formatSortLock({false, 3, -1}), "False,-1,0");
}

TEST(SortLevelsText, ParsesAndFormats) {
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
        {"", " -"},
    };
    for (const auto& [text, expected] : cases) {
        const SortLevelsText read = parseSortLevels(text);
        std::string picture;
        for (const SortLevelText& level : read.levels)
            picture += "[" + std::string(level.heading.GetString()) + " " + std::to_string(level.order) + "]";
        EXPECT_EQ(picture + (!read.hasFlag ? " -" : read.active ? " on" : " off"), expected) << text;
    }
    EXPECT_EQ(formatSortLevels({{"A b", 1}, {"Qty", -1}}, true), "A b->1,Qty->-1#1");
    EXPECT_EQ(formatSortLevels({{"Price", 1}}, false), "Price->1#0");
    EXPECT_EQ(formatSortLevels({}, true), "");
}

}  // namespace
