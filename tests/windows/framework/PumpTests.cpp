#include "support/WindowFixture.h"

#include <gtest/gtest-spi.h>
#include <stdexcept>

namespace {

using Pump = test::WindowFixture;

// From any depth they come out of grids' calls, as the hosts that throw there show.
TEST_F(Pump, ExceptionsComeOutOfTheCallThatSentTheMessage) {
    frame().onMessage = [](UINT message, WPARAM, LPARAM, LRESULT&) -> bool {
        if (message == WM_APP) throw std::length_error("from a handler");
        if (message == WM_APP + 1) AfxThrowInvalidArgException();
        return false;
    };
    EXPECT_THROW(frame().SendMessage(WM_APP), std::length_error);
    frame().PostMessage(WM_APP);
    EXPECT_THROW(pumpUntilIdle(), std::length_error);
    try {
        frame().SendMessage(WM_APP + 1);
        ADD_FAILURE() << "no exception";
    } catch (CInvalidArgException* e) {  // the framework's come by pointer, from another module
        e->Delete();
    }
    EXPECT_EQ(frame().SendMessage(WM_NULL), 0) << "nothing is left over";
}

TEST_F(Pump, WithAnApplicationExceptionsOfTheFrameworkAreShown) {
    CWinApp app("TestApp");
    test::MessageBoxAnswerer answerer;
    frame().onMessage = [](UINT message, WPARAM, LPARAM, LRESULT&) -> bool {
        if (message == WM_APP) AfxThrowInvalidArgException();
        if (message == WM_APP + 1) AfxThrowUserException();
        return false;
    };
    frame().SendMessage(WM_APP);
    frame().SendMessage(WM_APP + 1);  // the user has been told already
    ASSERT_EQ(answerer.boxes().size(), 1u);
    EXPECT_EQ(answerer.boxes()[0].caption, "TestApp");
}

TEST_F(Pump, MessageBoxesAreSeenAndUnexpectedOnesFailTheTest) {
    int result = 0;
    EXPECT_NONFATAL_FAILURE(result = AfxMessageBox("Nobody asked", MB_YESNOCANCEL), "Nobody asked");
    EXPECT_EQ(result, IDCANCEL);
    test::MessageBoxAnswerer answerer({IDYES});
    EXPECT_EQ(BCGPMessageBox(frame(), "text", "caption", MB_YESNO), IDYES);
    EXPECT_EQ(BCGPMessageBox(frame(), "text", nullptr, MB_YESNO), IDYES);
    EXPECT_EQ(answerer.boxes()[0], (test::MessageBoxSeen{"text", "caption"}));
    EXPECT_EQ(answerer.boxes()[1].caption, "framework_tests") << "the application's name";
}

}  // namespace
