#include "host/core/Statistics.h"
#include "host/core/Summary.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

using namespace terminal;

namespace {

TEST(Percentiles, AnswersAreWithinTheirBucketOfTheTruth) {
    Percentiles percentiles;
    std::vector<std::int64_t> values;
    std::uint64_t draw = 12'345;
    for (int i = 0; i < 20'000; ++i) {
        draw = draw * 6'364'136'223'846'793'005u + 1;
        values.push_back(static_cast<std::int64_t>(draw >> (20 + i % 43)));
        percentiles.add(values.back());
    }
    std::sort(values.begin(), values.end());
    for (const double percent : {0.0, 1.0, 50.0, 90.0, 99.0, 99.9, 100.0}) {
        const auto rank = static_cast<std::size_t>(percent / 100 * 20'000 + 0.999999);
        const std::int64_t truth = values[std::max<std::size_t>(rank, 1) - 1], answer = percentiles.percentile(percent);
        EXPECT_GE(answer, truth) << percent;
        EXPECT_LE(static_cast<double>(answer), static_cast<double>(truth) * 1.032) << percent;
    }
    EXPECT_EQ(percentiles.largest(), values.back());
    percentiles.clear();
    percentiles.add(-5);
    EXPECT_EQ(percentiles.median(), 0);
    percentiles.add(std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(percentiles.percentile(100), std::numeric_limits<std::int64_t>::max());
    percentiles.clear();
    for (const std::int64_t value : {63, 64, 65, 127, 128}) percentiles.add(value);
    EXPECT_EQ(percentiles.percentile(20), 63);
    EXPECT_EQ(percentiles.percentile(100), 128);
}

TEST(RateCounter, CountsTheLastFullSecondOrWhatHasPassedOfIt) {
    RateCounter rate, young;
    std::int64_t now = 5'000'000;
    for (int i = 0; i < 200; ++i, now += 10'000) rate.add(now, 3);
    for (const auto& [later, perSecond] : {std::pair(0, 300), {500'000, 150}, {2'000'000, 0}})
        EXPECT_DOUBLE_EQ(rate.perSecond(now + later), perSecond);
    young.add(1'000'000, 10);
    for (const auto& [later, perSecond] : {std::pair(50'000, 0), {100'000, 100}, {200'000, 50}})
        EXPECT_DOUBLE_EQ(young.perSecond(1'000'000 + later), perSecond);
}

TEST(HalfMaxima, TheMiddleIsFoundAtTheEnd) {
    HalfMaxima maxima;
    EXPECT_EQ(maxima.halves().first + maxima.halves().second, 0);
    // A value each 10 ms, for ever longer runs: the first third is worth 5, the last one 9, and one value stands out.
    for (const int count : {10, 1'000, 50'000}) {
        maxima = {};
        for (int i = 0; i < count; ++i)
            maxima.add(7'000'000 + i * 10'000, i < count / 3 ? 5 : i > count * 2 / 3 ? 9 : i == count * 2 / 5 ? 70 : 1);
        const bool wholeInOneSlot = count == 10;
        EXPECT_EQ(maxima.halves().first, 70) << count;
        EXPECT_EQ(maxima.halves().second, wholeInOneSlot ? 0 : 9) << count;
    }
}

TEST(Summary, OneLineTellsTheRun) {
    RunSummary run{.instruments = 500, .rows = 1'234, .ticks = 300'000, .seconds = 15, .repaints = 75};
    run.tickToPaintMedianMs = 31.24, run.firstRowMs = 420, run.watchWaiting = 3;
    run.proofs = {{"find_checks", 18, 19}, {"layouts_restored"}};
    run.ending = "time is up";
    EXPECT_EQ(summaryLine(run),
              "summary: instruments=500 rows=1234 ticks=300000 ticks_per_second=20000 repaints=75 "
              "tick_to_paint_ms_median=31.2 tick_to_paint_ms_p99=none first_row_ms=420 options_priced=0 "
              "feed_behind_ms=none feed_behind_ms_max_first_half=none feed_behind_ms_max_second_half=none "
              "watch_rows_waiting=3 find_checks=18/19 layouts_restored=none ending=\"time is up\"");
}

}  // namespace
