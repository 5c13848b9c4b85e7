#include "quor/grid/core/TrendChoices.h"

#include <gtest/gtest.h>

using namespace quor::grid;

namespace {

TEST(TrendChoices, NumbersMayHaveATrend) {
    std::string types;
    for (int type = -1; type <= 10; ++type) types += mayHaveTrend(type) ? std::to_string(type) + " " : "";
    EXPECT_EQ(types, "1 2 4 5 9 ");
}

TEST(TrendChoices, TheLabelSaysOneSecondMoreThanIsMeant) {
    const struct {
        int interval, position, stored;
        const char *opened, *moved;
    } rows[] = {{-5000, 0, 0, "1 Sec", "1 Secs"},
                {0, 0, 0, "1 Sec", "1 Secs"},
                {1999, 1, 1000, "2 Sec", "2 Secs"},
                {9000, 9, 9000, "10 Sec", "10 Secs"},
                {60'000, 9, 9000, "10 Sec", "10 Secs"}};
    for (const auto& row : rows) {
        const int position = trendPosition(row.interval);
        EXPECT_EQ(position, row.position) << row.interval;
        EXPECT_EQ(trendInterval(position), row.stored);
        EXPECT_STREQ(openedTrendLabel(position), row.opened);
        EXPECT_STREQ(movedTrendLabel(position), row.moved);
    }
}

}  // namespace
