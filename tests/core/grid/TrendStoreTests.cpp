// Trends of cells, each rule by hand. Long mixes of everything that happens to rows are those of the grid.
#include "quor/grid/core/TrendChoices.h"
#include "quor/grid/core/TrendStore.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>

using namespace quor::grid;

namespace {

constexpr int kInterval = 1000;
constexpr auto kPlain = TrendPaint::normal, kUp = TrendPaint::positive, kDown = TrendPaint::negative;

// Steps are "time=text" for a paint and "time!" for a tick of the fade; told are the paint (. + -) and how many ended.
std::string shown(int interval, const char* steps) {
    TrendStore store;
    store.set({3}, 4, 1);
    std::istringstream input(steps);
    std::string told, step;
    while (input >> step) {
        const std::size_t end = step.find_first_of("=!");
        const TrendTime time{static_cast<std::int32_t>(std::stoll(step)), interval};
        std::vector<std::int32_t> ended;
        if (step[end] == '=') {
            told += "?.+-"[static_cast<int>(store.paint(3, 0, step.c_str() + end + 1, time))];
        } else {
            store.fade(3, time, ended);
            told += std::to_string(ended.size());
        }
    }
    return told;
}

TEST(TrendStore, ACellShowsItsChangeForTheInterval) {
    const struct {
        const char* fact;
        int interval;
        const char *steps, *told;
    } table[] = {
        {"the first value has no colour", 1000, "5=7 6=7 7=8 8=7.5", "..+-"},
        {"a change begins the interval anew", 1000, "5=1 10=2 900=3 1500! 1899=3 1900! 1900=3", ".++0+1."},
        {"or a paint ends it", 1000, "5=1 10=2 1009=2 1010=2 1010!", ".++.0"},
        {"no interval: until the next tick", 0, "5=1 9=2 9! 9=2", ".+1."},
        {"a blank is 0, and falls", 1000, "5=3 6= 7=text 8=-1", ".---"},
        {"two changes at one time end once", 1000, "5=1 9=2 9=1 1009!", ".+-1"},
        {"a change at time 0", 10, "-1=1 0=2 5=2 11!", ".++1"},
        {"a clock that wraps", 1000, "2147483647=1 2147483647=2 -2147482748=2 -2147482650! -2147482649!", ".++01"},
    };
    for (const auto& row : table) EXPECT_EQ(shown(row.interval, row.steps), row.told) << row.fact;
}

TEST(TrendStore, ColumnsOutsideTheListAreKeptByNameAndMoveWithTheirColumn) {
    TrendStore store;
    store.set({7, 2, 2, -1, 5000, 0}, 8, 1);
    EXPECT_EQ(store.columns(), (std::vector<int>{7, 2, -1, 5000, 0}));
    EXPECT_EQ(store.paint(5000, 0, "1", {}), kPlain);
    EXPECT_EQ(store.paint(1, 0, "1", {}), kPlain);
    store.paint(7, 0, "1", {1, kInterval});
    store.moveColumns({0, 1, -1, 2, 3, 4, 5, 6}, 9);
    EXPECT_EQ(store.columns(), (std::vector<int>{6, -1, 5000, 0}));
    EXPECT_EQ(store.paint(6, 0, "2", {2, kInterval}), kUp) << "its record came along";
    store.moveColumns({-1, -1, -1, -1, -1, -1, -1, 0, 1}, 5001);
    EXPECT_EQ(store.columns(), (std::vector<int>{-1})) << "another column has that number now";
}

TEST(TrendStore, StoredColumnsAreNumbersBetweenBlanks) {
    EXPECT_STREQ(formatTrendColumns({4, 12, 5000}), "4 12 5000 ");
    EXPECT_EQ(parseTrendColumns("  7   x 9z 99999999999"), (std::vector<int>{7, 0, 9, INT32_MAX}));
    EXPECT_TRUE(parseTrendColumns("   ").empty());
}

// ---- Rows

// Four rows, of which the first and the third show a change, and a column that never fades beside.
struct ChangedRows {
    ChangedRows() {
        store.set({1, 4}, 5, 4);
        for (const int row : {0, 1, 2, 3}) paint(row, 0, 10);
        paint(0, 5, 11), paint(2, 5, 12);
    }
    TrendPaint paint(int row, int value, int now) {
        store.paint(4, row, std::to_string(value).c_str(), {now, kInterval});
        return store.paint(1, row, std::to_string(value).c_str(), {now, kInterval});
    }
    // The rows whose change ends, in order.
    std::vector<std::int32_t> fade(int now) {
        std::vector<std::int32_t> ended;
        store.fade(1, {now, kInterval}, ended);
        std::sort(ended.begin(), ended.end());
        return ended;
    }
    TrendStore store;
};

// The same rows of a grid are held against all that can happen to them by the mix of its store.
TEST(TrendStore, RowsTakeTheirChangesAlong) {
    using Rows = std::vector<std::int32_t>;
    const struct {
        std::function<void(TrendStore&)> act;
        Rows ended;
    } cases[] = {{[](TrendStore& store) { store.insertRow(1); }, {0, 3}},
                 {[](TrendStore& store) { store.eraseRow(0); }, {1}},
                 {[](TrendStore& store) { store.eraseRow(1); }, {0, 1}},
                 {[](TrendStore& store) { store.forgetRow(2); }, {0}},
                 {[](TrendStore& store) { store.clearRows(); }, {}},
                 {[](TrendStore& store) { store.set({1}, 5, 4); }, {}},
                 {[](TrendStore& store) {
                      store.reorderRows({1, 2, 3, 0});
                  },
                  {1, 3}},
                 {[](TrendStore& store) { store.extend(6); }, {0, 2}},
                 {[](TrendStore& store) { store.insertRow(0), store.eraseRow(1), store.insertRow(4); }, {2}}};
    for (const auto& each : cases) {
        ChangedRows rows;
        each.act(rows.store);
        EXPECT_EQ(rows.fade(1010), Rows()) << &each - cases;
        EXPECT_EQ(rows.fade(1012), each.ended) << &each - cases;
        EXPECT_EQ(rows.fade(9000), Rows()) << &each - cases;
    }
    ChangedRows rows;
    rows.store.forgetRow(2);
    EXPECT_EQ(rows.paint(2, 9, 20), TrendPaint::unchanged);
    rows.store.insertRow(2);
    EXPECT_EQ(rows.paint(2, 9, 20), kPlain) << "seen for the first time";
    EXPECT_EQ(rows.paint(5, 9, 20), TrendPaint::unchanged);
    rows.store.extend(6);
    EXPECT_EQ(rows.paint(5, 9, 20), kPlain);
}

TEST(TrendStore, CellsThatChangeOftenEndOnceEach) {
    ChangedRows rows;
    for (int now = 20; now < 20'000; ++now) rows.paint(now % 3, now, now);
    EXPECT_EQ(rows.fade(20'998), (std::vector<std::int32_t>{0, 2}));
    EXPECT_EQ(rows.fade(20'999), (std::vector<std::int32_t>{1}));
    EXPECT_EQ(rows.paint(1, 19'999, 21'000), kPlain);
}

// ---- The dialog's choices

TEST(TrendChoices, NumbersMayHaveATrend) {
    std::string types;
    for (int type = -1; type <= 10; ++type) types += mayHaveTrend(type) ? std::to_string(type) + " " : "";
    EXPECT_EQ(types, "1 2 4 5 9 ");
}

TEST(TrendChoices, TheLabelSaysOneSecondMoreThanIsMeant) {
    for (const auto& [interval, position] : {std::pair{-5000, 0}, {1999, 1}, {9000, 9}, {60'000, 9}})
        EXPECT_EQ(trendPosition(interval), position) << interval;
    EXPECT_EQ(trendInterval(9), 9000);
    EXPECT_STREQ(openedTrendLabel(0), "1 Sec");
    EXPECT_STREQ(movedTrendLabel(9), "10 Secs");
}

}  // namespace
