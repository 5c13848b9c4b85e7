#include "Probe.h"

#include <gtest/gtest-spi.h>
#include <stdexcept>

namespace {

test::CallRecorder calls;

// Says that it was offered a key; eats it on request.
template <class Base>
class Translating : public Base {
public:
    using Base::Base;
    std::string name;
    bool eats = false;

    BOOL PreTranslateMessage(MSG* message) override {
        if (message->message == WM_KEYDOWN) {
            calls.record(name);
            if (eats) return TRUE;
        }
        return Base::PreTranslateMessage(message);
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_KEYDOWN) calls.record(name, "key");
        return Base::WindowProc(message, wParam, lParam);
    }
};

class Pump : public test::WindowFixture {
protected:
    void SetUp() override { calls.clear(); }
};

// The frame owns the top-level window and is the main window, but is not above it.
TEST_F(Pump, KeysAreOfferedFromTheirWindowUpToTheTopLevelWindow) {
    Translating<CWnd> popup, child;
    Translating<CEdit> inner;
    auto* const owner = new Translating<test::TestFrame>;
    owner->name = "owner";
    popup.name = "popup";
    child.name = "child";
    inner.name = "inner";
    ASSERT_TRUE(owner->Create(nullptr, "owner", WS_POPUP, CRect(0, 0, 9, 9)));
    ASSERT_TRUE(popup.CWnd::CreateEx(0, AfxRegisterWndClass(0), "p", WS_POPUP, CRect(0, 0, 90, 90), &frame(), 0));
    ::SetWindowLongPtrA(popup, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner->m_hWnd));
    ASSERT_TRUE(child.CWnd::Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 90, 90), &popup, 2));
    ASSERT_TRUE(inner.CEdit::Create(WS_CHILD, CRect(0, 0, 90, 20), &child, 3));
    const auto press = [&] {
        inner.PostMessage(WM_KEYDOWN, VK_RIGHT);
        pumpUntilIdle();
        return calls.take();
    };
    EXPECT_EQ(press(), (test::Calls{"inner", "child", "popup", "inner key"}));
    child.eats = true;
    EXPECT_EQ(press(), (test::Calls{"inner", "child"}));
    owner->DestroyWindow();
}

TEST_F(Pump, ExceptionsComeOutOfTheCallThatSentTheMessage) {
    Probe child(calls);
    ASSERT_TRUE(child.createIn(frame()));
    frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT& answer) -> bool {
        if (message == WM_APP) throw std::length_error("from a handler");
        if (message == WM_APP + 1) AfxThrowInvalidArgException();
        if (message != WM_APP + 2) return false;
        try {
            child.GetParent()->SendMessage(WM_APP);  // through the system and the handler between
        } catch (const std::length_error&) {
            answer = 17;
        }
        return true;
    };
    EXPECT_THROW(frame().SendMessage(WM_APP), std::length_error);
    frame().PostMessage(WM_APP);
    EXPECT_THROW(pumpUntilIdle(), std::length_error);
    EXPECT_EQ(frame().SendMessage(WM_APP + 2), 17);
    bool caught = false;
    try {
        frame().SendMessage(WM_APP + 1);
    } catch (CInvalidArgException* e) {  // the framework's come by pointer, from another module
        caught = true;
        e->Delete();
    }
    EXPECT_TRUE(caught);
    EXPECT_EQ(frame().SendMessage(WM_NULL), 0) << "nothing is left over";
}

// An application object for one test.
class TestApp : public CWinApp {
public:
    TestApp() : CWinApp("TestApp") {}
    std::vector<LONG> idleTurns;
    BOOL OnIdle(LONG count) override {
        idleTurns.push_back(count);
        if (count == 1 && m_pMainWnd) m_pMainWnd->PostMessage(WM_COMMAND, ID_APP_EXIT);
        return CWinApp::OnIdle(count);
    }
};

TEST_F(Pump, WithAnApplicationExceptionsOfTheFrameworkAreShown) {
    TestApp app;
    EXPECT_EQ(AfxGetApp(), &app);
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
    EXPECT_FALSE(answerer.boxes()[0].text.empty());
}

TEST_F(Pump, ApplicationEndsWithItsMainWindow) {
    TestApp app;
    auto* mainWindow = new test::TestFrame;
    ASSERT_TRUE(mainWindow->Create(nullptr, "main"));
    app.m_pMainWnd = mainWindow;
    EXPECT_EQ(AfxGetMainWnd(), mainWindow);
    EXPECT_EQ(app.Run(), 0);  // the second idle turn ends it
    EXPECT_EQ(app.m_pMainWnd, nullptr);
    ASSERT_GE(app.idleTurns.size(), 2u);
    EXPECT_EQ(app.idleTurns[0], 0);
    EXPECT_EQ(app.idleTurns[1], 1);
    AfxPostQuitMessage(5);
    EXPECT_EQ(app.Run(), 5);
}

TEST_F(Pump, MessageBoxesAreSeenAndUnexpectedOnesFailTheTest) {
    int result = 0;
    EXPECT_NONFATAL_FAILURE(result = AfxMessageBox("Nobody asked", MB_YESNOCANCEL), "Nobody asked");
    EXPECT_EQ(result, IDCANCEL);
    test::MessageBoxAnswerer answerer({IDYES});
    EXPECT_NONFATAL_FAILURE(result = AfxMessageBox("No such button", MB_OK), "has no button 6");
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(BCGPMessageBox(frame(), "text", "caption", MB_YESNO), IDYES);
    EXPECT_EQ(BCGPMessageBox(frame(), "text", nullptr, MB_YESNO), IDYES);
    EXPECT_EQ(answerer.boxes()[1], (test::MessageBoxSeen{"text", "caption"}));
    EXPECT_EQ(answerer.boxes()[2].caption, "framework_tests") << "the application's name";
}

}  // namespace
