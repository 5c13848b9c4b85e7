// The ground for tests on real windows: a desktop of the process's own (so that test programs can run side by side), a
// visible frame window to put controls into, and the framework's pump. Nothing sleeps: pumpFor waits for messages.
#pragma once

#include "quor/platform/Framework.h"
#include "support/MessageBoxAnswerer.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace test {

// Makes the desktop once. Called by main() before anything else; harmless afterwards.
void useOwnDesktop();

// Prints where a crash happened and ends the process; nobody waits for a debugger.
void endOnCrash();

// A frame whose messages a test can see before it does.
class TestFrame : public CFrameWnd {
public:
    // True: the message is handled, the last argument is the answer.
    std::function<bool(UINT, WPARAM, LPARAM, LRESULT&)> onMessage;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

// Empties the message queue, idle turns included. Fails the test if that takes more than five seconds.
void pumpUntilIdle();
// Pumps until the condition holds; false when the limit (milliseconds) has passed without it.
bool pumpFor(const std::function<bool()>& condition, DWORD limit = 5000);

class WindowFixture : public ::testing::Test {
protected:
    WindowFixture();
    ~WindowFixture() override;
    // Destroys the frame and what is in it. A derived fixture calls it last.
    void TearDown() override;

    // 800 by 600, shown; the main window of the test.
    TestFrame& frame() const { return *m_frame; }
    CRect client() const;

    static void pumpUntilIdle() { test::pumpUntilIdle(); }
    static bool pumpFor(const std::function<bool()>& condition, DWORD limit = 5000) {
        return test::pumpFor(condition, limit);
    }

private:
    TestFrame* m_frame;  // deletes itself with its window
};

}  // namespace test
