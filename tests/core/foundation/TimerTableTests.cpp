#include "src/foundation/core/TimerTable.h"

#include <gtest/gtest.h>

#include <vector>

using namespace quor::foundation;

namespace {

struct TimerCase {
    const char* name;
    int interval;
    std::vector<std::uint32_t> ticks;
    std::vector<int> firesOn;  // tick numbers from 1
};

class TimerRule : public testing::TestWithParam<TimerCase> {};

TEST_P(TimerRule, FiresOnTheseTicks) {
    TimerTable table;
    table.add(nullptr, GetParam().interval, 5);
    std::vector<int> fired;
    int tick = 0;
    for (const std::uint32_t elapsed : GetParam().ticks) {
        ++tick;
        table.tick(elapsed, [&](const tTimerStruct& entry) {
            EXPECT_EQ(entry.dwMessageOffset, 5u);
            fired.push_back(tick);
        });
    }
    EXPECT_EQ(fired, GetParam().firesOn);
}

INSTANTIATE_TEST_SUITE_P(Table, TimerRule,
                         testing::Values(TimerCase{"Sixties", 100, {60, 60, 60, 60, 60}, {2, 4}},
                                         TimerCase{"NeverUnderTwoTicks", 1, {60, 60, 60, 60, 60, 60}, {2, 4, 6}},
                                         TimerCase{"Gathers", 100, {30, 30, 30, 30, 30, 30, 30, 30}, {4, 8}},
                                         TimerCase{"ExactlyDue", 100, {50, 50}, {2}},
                                         TimerCase{"EmptyTicksDoNotLoad", 10, {0, 0, 60, 60}, {4}},
                                         TimerCase{"SumsWrap", 100, {0x7FFFFFFFu, 1u, 60u}, {}}),
                         [](const auto& row) { return row.param.name; });

TEST(TimerTable, ServesTwoRegistrationsOfOneWindowInOrder) {
    TimerTable table;
    table.add(nullptr, 1, 10);
    table.add(nullptr, 1, 20);
    std::vector<std::uint32_t> sent;
    for (int i = 0; i < 2; ++i)
        table.tick(1, [&](const tTimerStruct& entry) { sent.push_back(entry.dwMessageOffset); });
    EXPECT_EQ(sent, (std::vector<std::uint32_t>{10, 20}));
}

TEST(TimerTable, EntriesAddedByAHandlerStartWithTheNextTick) {
    TimerTable table;
    table.add(nullptr, 1, 1);
    std::vector<std::uint32_t> sent;
    const auto send = [&](const tTimerStruct& entry) {
        sent.push_back(entry.dwMessageOffset);
        if (entry.dwMessageOffset == 1) {
            for (int i = 0; i < 20; ++i) table.add(nullptr, 1, 2);  // the array moves under the walk
        }
    };
    table.tick(1, send);
    table.tick(1, send);
    EXPECT_EQ(sent, (std::vector<std::uint32_t>{1}));
    table.tick(1, send);
    table.tick(1, send);
    EXPECT_EQ(sent.size(), 1u + 1u + 20u);
}

}  // namespace
