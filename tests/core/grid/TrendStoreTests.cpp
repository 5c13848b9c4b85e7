// Trends of cells: each rule by hand, and long mixes of everything against records kept one by one.
#include "quor/grid/core/TrendStore.h"
#include "support/Rounds.h"

#include <gtest/gtest.h>
#include <map>
#include <optional>
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
    const struct {
        const char* text;
        std::vector<int> columns;
    } table[] = {{"4 12 ", {4, 12}}, {"  7   x 9z", {7, 0, 9}}, {"", {}}, {"   ", {}}, {"99999999999", {INT32_MAX}}};
    for (const auto& row : table) EXPECT_EQ(parseTrendColumns(row.text), row.columns) << row.text;
}

// ---- The mix

struct NaiveCell {
    double last = 0;
    int trend = 0;
    std::optional<std::int32_t> since;
};

class NaiveTrends {
public:
    std::map<int, std::vector<std::optional<NaiveCell>>> columns;

    TrendPaint paint(int column, int row, double value, const TrendTime& time) {
        const auto found = columns.find(column);
        if (found == columns.end()) return kPlain;
        if (row >= static_cast<int>(found->second.size()) || !found->second[static_cast<std::size_t>(row)])
            return TrendPaint::unchanged;
        NaiveCell& cell = *found->second[static_cast<std::size_t>(row)];
        const double last = std::exchange(cell.last, value);
        if (std::exchange(cell.trend, cell.trend ? cell.trend : 3) == 0) return kPlain;
        if (value != last) {
            cell.trend = value > last ? 1 : 2;
            cell.since = time.now;
        }
        if (cell.since && value == last && time.now - *cell.since >= time.interval) cell.since.reset();
        if (!cell.since) return kPlain;
        return cell.trend == 1 ? kUp : kDown;
    }
    std::vector<std::int32_t> fade(int column, const TrendTime& time) {
        std::vector<std::int32_t> ended;
        auto& cells = columns[column];
        for (std::size_t row = 0; row < cells.size(); ++row) {
            if (!cells[row] || !cells[row]->since || time.now - *cells[row]->since < time.interval) continue;
            cells[row]->since.reset();
            ended.push_back(static_cast<std::int32_t>(row));
        }
        return ended;
    }
};

TEST(TrendStore, ARandomMixEndsAsRecordsKeptOneByOne) {
    const unsigned seed = test::anySeed();
    SCOPED_TRACE("QUOR_SEED=" + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&](std::size_t n) { return n == 0 ? 0 : static_cast<int>(random() % n); };
    const std::vector<int> columns{1, 4, 6};
    TrendStore store;
    NaiveTrends naive;
    std::size_t count = 20;
    TrendTime time{1, 40};
    for (long step = test::rounds("QUOR_TREND_STEPS", 200'000), painted = 0; step > 0; --step) {
        const int row = below(count), action = below(200);
        time.now += below(3);
        if (painted == 0 || action == 0) {
            store.set(columns, 7, static_cast<int>(count));
            for (const int column : columns) naive.columns[column].assign(count, NaiveCell{});
        } else if (action == 1) {
            store.clearRows();
            for (auto& [column, cells] : naive.columns) cells.clear();
            count = 0;
        } else if (action < 8) {
            store.insertRow(row);
            for (auto& [column, cells] : naive.columns) cells.insert(cells.begin() + row, NaiveCell{});
            ++count;
        } else if (action < 13 && count > 0) {
            store.eraseRow(row);
            for (auto& [column, cells] : naive.columns) cells.erase(cells.begin() + row);
            --count;
        } else if (action < 15 && count > 0) {
            store.forgetRow(row);
            for (auto& [column, cells] : naive.columns) cells[static_cast<std::size_t>(row)].reset();
        } else if (action < 16) {
            count += static_cast<std::size_t>(below(3));
            store.extend(static_cast<int>(count));
            for (auto& [column, cells] : naive.columns) cells.resize(count, NaiveCell{});
        } else if (action < 17) {
            std::vector<std::int32_t> order(count);
            for (std::size_t i = 0; i < count; ++i) order[i] = static_cast<std::int32_t>(i);
            std::shuffle(order.begin(), order.end(), random);
            store.reorderRows(order);
            for (auto& [column, cells] : naive.columns) {
                auto former = cells;
                for (std::size_t i = 0; i < count; ++i) cells[i] = former[static_cast<std::size_t>(order[i])];
            }
        } else if (action < 30) {
            const int column = columns[static_cast<std::size_t>(below(2))];  // the last one is hidden: it never fades
            std::vector<std::int32_t> ended;
            store.fade(column, time, ended);
            std::sort(ended.begin(), ended.end());
            ASSERT_EQ(ended, naive.fade(column, time)) << step;
        } else {
            const int column = below(8), value = below(3);
            ASSERT_EQ(store.paint(column, row, std::to_string(value).c_str(), time),
                      naive.paint(column, row, value, time))
                << step << " column " << column << " row " << row;
        }
        ++painted;
    }
}

}  // namespace
