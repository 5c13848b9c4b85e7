#include "quor/foundation/core/TimerTable.h"
#include "quor/foundation/core/Watchers.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

TEST(TimerTable, FiresOnTheseTicks) {
    const struct {
        const char* rule;
        int interval;
        std::vector<std::uint32_t> ticks;
        std::vector<int> firesOn;  // tick numbers from 1
    } cases[] = {{"never under two ticks", 1, {60, 60, 60, 60, 60}, {2, 4}},
                 {"gathers", 100, {30, 30, 30, 30, 30, 30, 30, 30}, {4, 8}},
                 {"exactly due", 100, {50, 50}, {2}},
                 {"empty ticks do not load", 10, {0, 0, 60, 60}, {4}},
                 {"sums wrap", 100, {0x7FFFFFFFu, 1u, 60u}, {}}};
    for (const auto& c : cases) {
        quor::foundation::TimerTable table;
        table.add(nullptr, c.interval, 5);
        std::vector<int> fired;
        int tick = 0;
        for (const std::uint32_t elapsed : c.ticks) {
            ++tick;
            table.tick(elapsed, [&](const tTimerStruct&) { fired.push_back(tick); });
        }
        EXPECT_EQ(fired, c.firesOn) << c.rule;
    }
}

// Two registrations of one window come in order; what a handler adds starts with the next tick.
TEST(TimerTable, AHandlerMayAddEntries) {
    quor::foundation::TimerTable table;
    for (const std::uint32_t offset : {1u, 3u}) table.add(nullptr, 1, offset);
    std::vector<std::uint32_t> sent;
    const auto send = [&](const tTimerStruct& entry) {
        sent.push_back(entry.dwMessageOffset);
        for (int i = 0; entry.dwMessageOffset == 1 && i < 20; ++i) table.add(nullptr, 1, 2);  // the array moves
    };
    for (int i = 0; i < 2; ++i) table.tick(1, send);
    EXPECT_EQ(sent, (std::vector<std::uint32_t>{1, 3}));
    for (int i = 0; i < 2; ++i) table.tick(1, send);
    EXPECT_EQ(sent.size(), 2u + 2u + 20u);
}

using Calls = std::vector<std::string>;
Calls calls;

struct Recorder : CWatcher {
    explicit Recorder(std::string name) : m_name(std::move(name)) {}
    void OnUpdate(int event, CString text, sUpdateData* data, int last) override {
        calls.push_back(m_name + " " + std::to_string(event) + " " + text.GetString() + (data ? " data " : " none ") +
                        std::to_string(last));
        if (leaves) leaves->RemoveWatcher(this);
    }
    void OnReserved() override { FAIL(); }

    CStore* leaves = nullptr;

private:
    std::string m_name;
};

TEST(Watchers, AreCalledOnceInTheirOrderAndOneThatLeavesMakesTheNextMissTheEvent) {
    CStore store;
    Recorder a{"a"}, b{"b"}, c{"c"};
    calls.clear();
    for (CWatcher* watcher : {&b, &a, &b, &c}) store.AddWatcher(watcher);
    int data = 0;
    store.NotifyWatcher(7, "tick", reinterpret_cast<sUpdateData*>(&data));
    EXPECT_EQ(calls, (Calls{"b 7 tick data 0", "a 7 tick data 0", "c 7 tick data 0"}));
    calls.clear();
    b.leaves = &store;
    for (int event : {1, 2}) store.NotifyWatcher(event, "x", nullptr);
    store.RemoveWatcher(&b);  // again: a stranger
    EXPECT_EQ(calls, (Calls{"b 1 x none 0", "c 1 x none 0", "a 2 x none 0", "c 2 x none 0"}));
}

}  // namespace
