// The grid's sort against the plain reading of its comparison.
#include "quor/grid/core/GridSort.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

using namespace quor::grid;

namespace {

using Indices = std::vector<std::int32_t>;

SortKeys keysOf(int dataType, const std::vector<std::string>& texts) {
    SortKeys keys(dataType, SortIntegers::wide, texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) keys.add(static_cast<std::int32_t>(i), texts[i].c_str());
    return keys;
}

// Says neither the same twice nor the truth.
int nonsense(char* first, char* second, int) {
    static unsigned state = 1;
    state = state * 1664525 + 1013904223;
    return static_cast<int>(state >> 16 & 7) - 3 + first[0] - second[0];
}

// The order that the comparison asks for, by std::sort over all pairs.
Indices expectedOrder(const SortKeys& keys, const SortRule& rule) {
    std::vector<std::size_t> positions(keys.size());
    std::iota(positions.begin(), positions.end(), std::size_t{0});
    std::sort(positions.begin(), positions.end(),
              [&](std::size_t a, std::size_t b) { return compareRows(keys, rule, a, b) < 0; });
    Indices result;
    for (const std::size_t position : positions) result.push_back(keys.mapIndices()[position]);
    return result;
}

// What the comparison itself is to say; the random mix of the grid has its own reading of the plain cases.
TEST(GridSort, SmallListsByType) {
    const struct {
        const char* fact;
        int dataType;
        std::vector<std::string> texts;
        SortRule rule;
        Indices sorted;
    } table[] = {
        {"the ends of 64 bits", 1, {"9223372036854775807", "-9223372036854775808", "0"}, {.order = -1}, {1, 2, 0}},
        {"minus zero is zero", 2, {"0", "-0.0", "0.00"}, {.order = 1}, {0, 1, 2}},
        {"beyond every number", 2, {"1e999", "1", "-1e999"}, {.order = -1}, {2, 1, 0}},
        {"negated keys, ties as ever", 1, {"1", "2", "2"}, {.order = -1, .negated = true}, {2, 1, 0}},
        {"negated texts", 3, {"x1", "x2"}, {.order = -1, .negated = true}, {1, 0}},
        {"no direction", 1, {"2", "1"}, {.order = 0}, {0, 1}},
        // Its first digit decides.
        {"an overflow mark is like 20 there, the newer first", 3, {"2147483647", "20"}, {.order = -1}, {1, 0}},
        {"and the older first", 3, {"2147483647", "20"}, {.order = 1}, {0, 1}},
    };
    for (const auto& c : table) EXPECT_EQ(sortedMapIndices(keysOf(c.dataType, c.texts), c.rule), c.sorted) << c.fact;
}

// A source of cells; short alphabets make ties and near misses.
struct Cells {
    std::mt19937 random;
    int pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); }

    std::string number(int style) {
        switch (style) {
            case 0:
                return std::to_string(pick(100'000) / 100.0 - 300).substr(0, 6);
            case 1:
                return std::to_string(pick(2000) - 1000) + "e" + std::to_string(pick(600) - 300);
            case 2:
                return std::to_string(pick(1000)) + "." + std::to_string(random());
            default:
                return (pick(2) ? "" : "-") + std::to_string(std::uint64_t{random()} * random() >> pick(40));
        }
    }
    std::string text(bool ownManner = false) {
        static const char* const pieces[] = {"a",   "b",     "",      "0",    "00", "7", "07", "255",
                                             "256", "65535", "65536", "\xE4", " ",  "-", "~",  "\x01"};
        static const char* const numbers[] = {"9223372036854775806", "9223372036854775807", "92233720368547758070",
                                              "2147483646", "00000000000000000000000000000007"};
        std::string result;
        for (int i = pick(6); i > 0; --i) {
            result += pick(5) == 0 ? pickFrom(numbers) : pickFrom(pieces);
            if (ownManner && pick(20) == 0) result += "2147483647";
        }
        return result;
    }
    std::string odd() {
        static const char* const texts[] = {"-0",     "0",      "0.00",  "-0.0e5", "nan",    "inf",   "",
                                            " 7",     " 7.00 ", "7.001", "1e308",  "-1e308", "1e400", "-1e400",
                                            "1e-320", "0.1",    "0.10",  "INFY",   "+3",     "--3"};
        static const char* const ends[] = {"9223372036854775807", "-9223372036854775808"};
        return pick(10) == 0 ? pickFrom(ends) : pickFrom(texts);
    }
    template <class Table>
    const char* pickFrom(const Table& table) {
        return table[pick(static_cast<int>(std::size(table)))];
    }
};

// Few rows and many; in the order of their map indices, enough for key and position to share a word or just not to, and
// in any other.
TEST(GridSort, RandomListsStandAsTheComparisonSays) {
    Cells cells{std::mt19937(20)};
    const struct {
        const char* fact;
        int dataType;
        std::function<std::string()> cell;
    } lists[] = {
        {"hundredths", 2, [&] { return cells.number(0); }},
        {"numbers of every size", 2, [&] { return cells.number(1); }},
        {"long fractions", 2, [&] { return cells.number(2); }},
        {"odd numbers", 5, [&] { return cells.odd(); }},
        {"odd integers", 4, [&] { return cells.odd(); }},
        {"integers of every size", 1, [&] { return cells.number(3); }},
        {"integers of 54 bits", 1,
         [&] { return std::to_string((std::uint64_t{cells.random()} << 32 | cells.random()) >> 10); }},
        {"two values", 1, [&] { return std::to_string(cells.pick(2)); }},
        {"one value", 1, [] { return std::string("5"); }},
        {"symbols", 3, [&] { return "SYM" + std::to_string(cells.pick(100'000)); }},
        {"mixed texts", 3, [&] { return cells.text(); }},
        {"mixed texts with a beginning in common", 3, [&] { return "SHARED" + cells.text(); }},
    };
    for (int round = 0; round < 8; ++round)
        for (const auto& list : lists) {
            const int few = 1 + cells.pick(60), many = 512 + cells.pick(1500);
            Indices mapIndices(static_cast<std::size_t>(round % 2 == 0 ? few : many));
            std::iota(mapIndices.begin(), mapIndices.end(), 5);
            if (round % 4 > 1) std::shuffle(mapIndices.begin(), mapIndices.end(), cells.random);
            SortKeys keys(list.dataType, SortIntegers::wide, 0);
            for (const std::int32_t mapIndex : mapIndices) keys.add(mapIndex, list.cell().c_str());
            for (const int order : {-1, 1})
                for (const bool negated : {false, true}) {
                    const SortRule rule{.order = order, .negated = negated};
                    ASSERT_EQ(sortedMapIndices(keys, rule), expectedOrder(keys, rule)) << list.fact << order << negated;
                }
        }
}

// Where no order exists every row must still come out once, and the run must be the same each time.
TEST(GridSort, AComparisonThatContradictsItselfLosesNoRow) {
    Cells cells{std::mt19937(21)};
    for (int round = 0; round < 60; ++round) {
        const bool dates = round % 2 == 0;
        std::vector<std::string> texts(static_cast<std::size_t>(cells.pick(400)));
        for (std::string& text : texts) text = cells.text(true);
        const SortKeys keys = keysOf(dates ? 6 : 3, texts);
        const SortRule rule{.order = -1, .compareDates = nonsense};
        Indices sorted = sortedMapIndices(keys, rule);
        if (!dates) {
            EXPECT_EQ(sorted, sortedMapIndices(keys, rule));
        }
        std::sort(sorted.begin(), sorted.end());
        ASSERT_EQ(sorted, keys.mapIndices());
    }
}

}  // namespace
