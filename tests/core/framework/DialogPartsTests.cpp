#include "quor/framework/core/DialogScroll.h"
#include "quor/framework/core/FocusRecords.h"
#include "quor/framework/core/MonitorPlacement.h"
#include "quor/framework/core/PositionRecord.h"
#include "quor/framework/core/ScaleFactors.h"
#include "quor/framework/core/TitleTexts.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

using namespace quor::framework;

namespace {

// ---- Focus stack

// Windows are letters; those in `living` live. A step is two characters: "a0" and "a1" add with a flag, "-a" removes
// the topmost record, "!a" all, "?." asks for the top and "<." for the one below.
std::string played(const std::string& steps, const std::string& living) {
    static const char windows[] = "abcdefgh";
    FocusRecords records;
    std::string answers;
    const auto lives = [&](const FocusRecord& record) {
        return living.find(*static_cast<const char*>(record.window)) != std::string::npos;
    };
    for (std::size_t at = 0; at < steps.size(); at += 2) {
        const char first = steps[at], second = steps[at + 1];
        if (first == '?' || first == '<') {
            const FocusRecord* const record = first == '?' ? records.top(lives) : records.previous(lives);
            answers += record ? *static_cast<const char*>(record->window) : '-';
            answers += record ? static_cast<char>('0' + record->flag) : '-';
        } else if (first == '-') {
            records.remove(&windows[second - 'a']);
        } else if (first == '!') {
            records.removeAll(&windows[second - 'a']);
        } else {
            records.push({&windows[first - 'a'], nullptr, second - '0'});
        }
    }
    return answers + "=" + std::to_string(records.size());
}

TEST(FocusRecords, AnswerInTheirOrder) {
    const struct {
        const char *steps, *living, *outcome;
    } cases[] = {
        {"?.<.", "ab", "----=0"},
        {"a0b1?.<.", "ab", "b1a0=2"},
        {"a0a0a0", "a", "=3"},
        {"a0a0a1", "a", "=2"},         // the second of two neighbours is passed over
        {"a0a0a0b0a0a1", "ab", "=3"},  // the first, the third and the last went
        {"a0b0c0?.<.?.", "ab", "b0a0b0=2"},
        {"a0b0c0?.<.", "ac", "c0--=3"},
        {"a0b0a0-a?.", "ab", "b0=2"},
        {"a0b0a0!a?.", "ab", "b0=1"},
    };
    for (const auto& each : cases) EXPECT_EQ(played(each.steps, each.living), each.outcome) << each.steps;
}

// ---- Scroll bars

TEST(DialogScroll, BarsComeWhereTheWorkAreaEnds) {
    const ScrollMetrics metrics{{1000, 700}, 17, 15};
    const struct {
        CSize content, window;
        bool horizontal, vertical;
        CSize outcome, page;
    } cases[] = {
        {{1000, 700}, {1000, 700}, false, false, {1000, 700}, {}},
        {{983, 701}, {983, 701}, false, true, {1000, 700}, {0, 700}},
        {{984, 701}, {984, 701}, true, true, {1000, 700}, {983, 685}},
        {{1001, 600}, {1001, 600}, true, false, {1000, 615}, {1000, 0}},
        {{1001, 686}, {1001, 686}, true, true, {1000, 700}, {983, 685}},
        {{600, 701}, {583, 701}, false, true, {600, 700}, {0, 700}},  // a bar was taken off before
    };
    for (const auto& [content, window, horizontal, vertical, outcome, page] : cases) {
        const ScrollPlan plan = planScrollBars(content, window, metrics);
        EXPECT_TRUE(plan.horizontal == horizontal && plan.vertical == vertical) << content.cx;
        EXPECT_EQ(plan.window, outcome) << content.cx << " " << content.cy;
        EXPECT_TRUE((!horizontal || plan.page.cx == page.cx) && (!vertical || plan.page.cy == page.cy)) << content.cx;
    }
}

TEST(DialogScroll, CommandsStayInTheRange) {
    using enum ScrollCommand;
    const struct {
        ScrollAxis axis;
        ScrollCommand command;
        int thumb, outcome;
    } cases[] = {
        {{899, 700, 0, 0}, lineForward, 0, 10},    {{899, 700, 0, 0}, pageForward, 0, 20},
        {{899, 700, 195, 0}, lineForward, 0, 200}, {{899, 700, 7, 0}, lineBack, 0, 0},
        {{899, 700, 50, 0}, pageBack, 0, 30},      {{709, 700, 0, 0}, lineForward, 0, 5},
        {{899, 700, 0, 20}, lineForward, 0, 11},   {{899, 700, 3, 0}, thumb, 9999, 200},
        {{899, 700, 3, 0}, thumb, -4, 0},
    };
    for (const auto& each : cases)
        EXPECT_EQ(scrollTarget(each.axis, each.command, each.thumb), each.outcome) << each.axis.position;
}

// ---- Texts and scale

const CString kThirty('n', 30);
const CString kThirtyOne('n', 31);
const CString kBlanks(' ', 21);

TEST(TitleTexts, HaveTheClientsName) {
    const struct {
        CString title, name, details, outcome;
    } detailed[] = {
        {"Order", "Asha", "NSE", "Order - Asha( NSE )"},
        {"Order NSE", "Asha", "NSE", "Order NSE - Asha"},
        {"Order - Asha", "Asha", "NSE", "Order - Asha"},
        {"Modifying 7", "Asha", "NSE", "Modifying 7"},
        {"Order", "", "NSE", "Order"},
        {"Order", kThirty, "", "Order - " + kThirty},
        {"Order", kThirtyOne, "", "Order - " + kThirty + ".."},
        {"Order - " + kThirty + "..", kThirtyOne, "", "Order - " + kThirty + ".."},
    };
    for (const auto& each : detailed)
        EXPECT_EQ(titleWithDetails(each.title, each.name, each.details), each.outcome) << each.title;
    const struct {
        CString name, selection, named;  // without selection and blanks
    } chosen[] = {
        {"Asha", "NIFTY", "T - Asha"},
        {"", "NIFTY", "T"},
        {kThirtyOne, CString('x', 18), "T - " + kThirtyOne},
        {kThirtyOne, CString('x', 19), "T - " + kThirty + ".."},
        {"", CString('x', 19), "T - "},
        {kThirtyOne, CString('X', 15) + "x", "T - " + kThirtyOne},
        {kThirtyOne, CString('X', 16), "T - " + kThirty + ".."},
    };
    for (const auto& each : chosen)
        EXPECT_EQ(titleWithSelection("T", each.name, each.selection), each.named + kBlanks + each.selection);
    EXPECT_EQ(titleWithSelection("T", "Asha", ""), "T - Asha");
}

TEST(ScaleFactors, GoByTheKindOfFont) {
    const struct {
        const char* face;
        int otherwise;
        double x, y;
    } cases[] = {{"MS Shell Dlg 2", 0, 10.0 / 6, 20.0 / 13},
                 {"Trebuchet MS", 1, 10.0 / 6, 20.0 / 16},
                 {"Arial", 2, 10.0 / 6, 20.0 / 16},
                 {"Arial", 3, 1.5, 2.5}};
    for (const auto& each : cases) {
        double x = 1.5, y = 2.5;
        scaleFactors(fontKind(each.face, each.otherwise), 26 * 19, 20, x, y);
        EXPECT_DOUBLE_EQ(x, each.x) << each.face;
        EXPECT_DOUBLE_EQ(y, each.y) << each.face;
    }
}

// ---- Place

// The placement of every case: 100 by 50 at (7, 5).
DialogPlacement standing() { return {{7, 5, 107, 55}, {1, 2}, {3, 4}, kShowMaximized}; }

TEST(PositionRecord, IsLaidOverThePlacement) {
    using enum RecordFault;
    const struct {
        const char* record;
        RecordFault fault;
        const char *sizable, *fixed;  // the outcome, as a record
    } cases[] = {
        {"10,20,30,40,-1,-1,-1,-1,1", none, "10,20,30,40,-1,-1,-1,-1,1", "10,20,60,120,-1,-1,-1,-1,1"},
        {",,10,,20,30,40,1,2,3,4,", none, "10,20,30,40,1,2,3,4,3", "10,20,60,120,1,2,3,4,3"},
        {"-,-7,0,0,0,0,0,0,2,x", none, "0,-7,0,0,0,0,0,0,2", "0,-7,50,93,0,0,0,0,2"},
        {"1,2,3,4,5,6,7,8,0", none, "1,2,3,4,5,6,7,8,1", "1,2,51,102,5,6,7,8,1"},
        {"1,2,3,4,5,6,7,8,4", none, "1,2,3,4,5,6,7,8,1", "1,2,51,102,5,6,7,8,1"},
        {"1,99999999999999999999,3,4,5,6,7,-3000000000,1", none, "1,2147483647,3,4,5,6,7,-2147483648,1",
         "1,2147483647,51,2147483647,5,6,7,-2147483648,1"},
        {"10,20,30,40,-1,-1,-1", tooShort, nullptr, nullptr},
        {"10,20,30,40,-1,-1,--1,-1,1", badCharacter, nullptr, nullptr},
        {"10, 20,30,40,-1,-1,-1,-1,1", badCharacter, nullptr, nullptr},
        {"+10", badCharacter, nullptr, nullptr},
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
    const std::pair<ShowFacts, ShowPlace> cases[] = {{{kShowNormal, true, false}, ShowPlace::rectangle},
                                                     {{kShowNormal, false, true}, ShowPlace::centre},
                                                     {{kShowMaximized, false, false}, ShowPlace::placement},
                                                     {{kShowMinimized, true, false}, ShowPlace::placement},
                                                     {{kShowMaximized, true, true}, ShowPlace::asItIs}};
    for (const auto& [facts, place] : cases) EXPECT_EQ(showPlace(facts), place) << facts.showCmd;
    EXPECT_EQ(occupiedTop({0, -900, 1000, 0}, {0, -870, 1000, 0}), 30);
    EXPECT_EQ(occupiedTop({0, 0, 1000, 900}, {0, 0, 1000, 870}), 0);
    EXPECT_EQ(belowOccupiedTop({1, 2, 3, 4}, 30), CRect(1, 32, 3, 34));
    constexpr int kMost = std::numeric_limits<int>::max();
    EXPECT_EQ(belowOccupiedTop({1, 2, 3, kMost}, 30), CRect(1, 32, 3, kMost));
}

}  // namespace
