// Figures can be compared only while every build and every peer works on the same streams: these are their first draws.
#include "benchmarks/peers/common/workload.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace {

TEST(Workload, RowsAndTicksAreTheSameEverywhereAndAChurnTakesEachRowOnce) {
    std::vector<workload::Row> rows;
    workload::makeRows(1'000, [&](std::uint32_t, const workload::Row& row) { rows.push_back(row); });
    EXPECT_EQ(std::string(rows[0].symbol), "SYM000535");
    EXPECT_EQ(rows[999].n[2], 7'522);
    workload::Random random(workload::operationSeed);
    workload::Tick tick{};
    for (int i = 0; i < 1'000; ++i) tick = workload::nextTick(random, 100'000);
    EXPECT_EQ(tick.row, 74'302u);
    EXPECT_EQ(tick.d5, 725.2);
    const workload::Churn churn = workload::makeChurn(100'000, random);
    EXPECT_EQ(churn.leaving.size(), 10'000u);
    EXPECT_TRUE(std::is_sorted(churn.leaving.begin(), churn.leaving.end(), std::less_equal<>()));
    EXPECT_EQ(churn.coming.size(), 10'000u);
    EXPECT_EQ(std::string(churn.coming[9'999].symbol), "SYM109999");
}

}  // namespace
