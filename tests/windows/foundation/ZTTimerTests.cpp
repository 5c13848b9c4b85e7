#include "quor/foundation/ZTTimer.h"
#include "support/CallRecorder.h"
#include "support/WindowFixture.h"

namespace {

struct ZTTimer : test::WindowFixture {
    ZTTimer() {
        frame().onMessage = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT&) {
            if (message != WM_USER + 77) return false;
            calls.record(wParam, lParam);
            return true;
        };
    }
    test::CallRecorder calls;
    CZTTimer timer;
};

TEST_F(ZTTimer, SendsToTheWindowInsideTheTick) {
    EXPECT_EQ(timer.register_timer(&frame(), 100, 77), 1);
    EXPECT_EQ(timer.timer_action(60), 1);
    EXPECT_TRUE(calls.take().empty());
    timer.timer_action(60);
    EXPECT_EQ(calls.take(), test::Calls{"0 0"});
    EXPECT_EQ(timer.unregister_timer(&frame(), 100, 77), 1);
    for (int tick = 0; tick < 2; ++tick) timer.timer_action(60);
    EXPECT_EQ(calls.take(), test::Calls{"0 0"}) << "unregistering changes nothing";
}

}  // namespace
