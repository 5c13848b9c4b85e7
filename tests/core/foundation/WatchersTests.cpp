#include "src/foundation/core/Watchers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> calls;

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

struct Watchers : testing::Test {
    Watchers() { calls.clear(); }
    CStore store;
    Recorder a{"a"}, b{"b"}, c{"c"};
};

TEST_F(Watchers, AreCalledOnceInOrderOfRegistration) {
    for (CWatcher* watcher : {&b, &a, &b}) store.AddWatcher(watcher);
    int data = 0;
    store.NotifyWatcher(7, "tick", reinterpret_cast<sUpdateData*>(&data));
    EXPECT_EQ(calls, (std::vector<std::string>{"b 7 tick data 0", "a 7 tick data 0"}));
}

TEST_F(Watchers, RemovalKeepsTheOrderOfTheRestAndIgnoresStrangers) {
    for (CWatcher* watcher : {&a, &b, &c}) store.AddWatcher(watcher);
    store.RemoveWatcher(&b);
    store.RemoveWatcher(&b);
    store.NotifyWatcher(1, "", nullptr);
    EXPECT_EQ(calls, (std::vector<std::string>{"a 1  none 0", "c 1  none 0"}));
}

TEST_F(Watchers, OneThatRemovesItselfMakesTheNextMissTheEvent) {
    for (CWatcher* watcher : {&a, &b, &c}) store.AddWatcher(watcher);
    a.leaves = &store;
    store.NotifyWatcher(1, "x", nullptr);
    EXPECT_EQ(calls, (std::vector<std::string>{"a 1 x none 0", "c 1 x none 0"}));
    calls.clear();
    store.NotifyWatcher(2, "y", nullptr);
    EXPECT_EQ(calls, (std::vector<std::string>{"b 2 y none 0", "c 2 y none 0"}));
}

}  // namespace
