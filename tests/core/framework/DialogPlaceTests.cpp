#include "quor/framework/core/MonitorPlacement.h"
#include "quor/framework/core/PositionRecord.h"

#include <gtest/gtest.h>
#include <limits>

using namespace quor::framework;

namespace {

// The placement of every case: 100 by 50 at (7, 5).
DialogPlacement standing() { return {{7, 5, 107, 55}, {1, 2}, {3, 4}, kShowMaximized}; }

TEST(PositionRecord, IsLaidOverThePlacement) {
    const struct {
        const char* record;
        RecordFault fault;
        const char* sizable;  // the outcome, as a record
        const char* fixed;
    } cases[] = {
        {"10,20,30,40,-1,-1,-1,-1,1", RecordFault::none, "10,20,30,40,-1,-1,-1,-1,1", "10,20,60,120,-1,-1,-1,-1,1"},
        {"10,20,30,40,1,2,3,4", RecordFault::none, "10,20,30,40,1,2,3,4,3", "10,20,60,120,1,2,3,4,3"},
        {",,10,,20,30,40,1,2,3,4,2,", RecordFault::none, "10,20,30,40,1,2,3,4,2", "10,20,60,120,1,2,3,4,2"},
        {"-,-7,0,0,0,0,0,0,1,x", RecordFault::none, "0,-7,0,0,0,0,0,0,1", "0,-7,50,93,0,0,0,0,1"},
        {"1,2,3,4,5,6,7,8,0", RecordFault::none, "1,2,3,4,5,6,7,8,1", "1,2,51,102,5,6,7,8,1"},
        {"1,2,3,4,5,6,7,8,4", RecordFault::none, "1,2,3,4,5,6,7,8,1", "1,2,51,102,5,6,7,8,1"},
        {"1,99999999999999999999,3,4,5,6,7,-3000000000,1", RecordFault::none, "1,2147483647,3,4,5,6,7,-2147483648,1",
         "1,2147483647,51,2147483647,5,6,7,-2147483648,1"},
        {"10,20,30,40,-1,-1,-1", RecordFault::tooShort, nullptr, nullptr},
        {"", RecordFault::tooShort, nullptr, nullptr},
        {"10,20,30,40,-1,-1,1-,-1,1", RecordFault::badCharacter, nullptr, nullptr},
        {"10,20,30,40,-1,-1,--1,-1,1", RecordFault::badCharacter, nullptr, nullptr},
        {"10, 20,30,40,-1,-1,-1,-1,1", RecordFault::badCharacter, nullptr, nullptr},
        {"+10", RecordFault::badCharacter, nullptr, nullptr},
    };
    for (const auto& each : cases) {
        for (const bool sizable : {true, false}) {
            DialogPlacement placement = standing();
            EXPECT_EQ(applyPositionRecord(each.record, sizable, placement), each.fault) << each.record;
            const char* const outcome = sizable ? each.sizable : each.fixed;
            EXPECT_EQ(positionRecord(placement), outcome ? CString(outcome) : positionRecord(standing()))
                << each.record;
        }
    }
}

TEST(MonitorPlacement, AShownDialogMeetsItsMonitor) {
    const struct {
        ShowFacts facts;
        ShowPlace place;
    } cases[] = {
        {{kShowNormal, true, false}, ShowPlace::rectangle},    {{kShowNormal, true, true}, ShowPlace::rectangle},
        {{kShowNormal, false, true}, ShowPlace::centre},       {{kShowMaximized, false, false}, ShowPlace::placement},
        {{kShowMinimized, true, false}, ShowPlace::placement}, {{kShowMaximized, true, true}, ShowPlace::asItIs},
    };
    for (const auto& each : cases) EXPECT_EQ(showPlace(each.facts), each.place) << each.facts.showCmd;
    EXPECT_EQ(occupiedTop({0, -900, 1000, 0}, {0, -870, 1000, 0}), 30);
    EXPECT_EQ(occupiedTop({0, 0, 1000, 900}, {0, 0, 1000, 870}), 0);
    EXPECT_EQ(belowOccupiedTop({1, 2, 3, 4}, 30), CRect(1, 32, 3, 34));
    constexpr int kMost = std::numeric_limits<int>::max();
    EXPECT_EQ(belowOccupiedTop({1, 2, 3, kMost}, 30), CRect(1, 32, 3, kMost));
}

}  // namespace
