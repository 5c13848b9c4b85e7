#include "quor/foundation/ZTTimer.h"
#include "support/WindowFixture.h"

namespace {

using ZTTimer = test::WindowFixture;

TEST_F(ZTTimer, SendsToTheWindowInsideTheTick) {
    int sent = 0;
    frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT&) { return message == WM_USER + 77 && ++sent > 0; };
    CZTTimer timer;
    EXPECT_EQ(timer.register_timer(&frame(), 100, 77), 1);
    EXPECT_EQ(timer.timer_action(60), 1);
    EXPECT_EQ(sent, 0);
    timer.timer_action(60);
    EXPECT_EQ(sent, 1);
    EXPECT_EQ(timer.unregister_timer(&frame(), 100, 77), 1);
    for (int tick = 0; tick < 2; ++tick) timer.timer_action(60);
    EXPECT_EQ(sent, 2) << "unregistering changes nothing";
}

}  // namespace
