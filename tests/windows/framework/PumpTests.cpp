#include "Probe.h"
#include "support/Input.h"

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

TEST_F(Pump, KeysAreOfferedFromTheirWindowUpwards) {
    Translating<CWnd> outer;
    Translating<CWnd> middle;
    Translating<CEdit> inner;
    outer.name = "outer";
    middle.name = "middle";
    inner.name = "inner";
    ASSERT_TRUE(outer.CWnd::Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 90, 90), &frame(), 1));
    ASSERT_TRUE(middle.CWnd::Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 90, 90), &outer, 2));
    ASSERT_TRUE(inner.CEdit::Create(WS_CHILD, CRect(0, 0, 90, 20), &middle, 3));
    const auto press = [&] {
        inner.PostMessage(WM_KEYDOWN, VK_RIGHT);
        pumpUntilIdle();
        return calls.take();
    };
    EXPECT_EQ(press(), (test::Calls{"inner", "middle", "outer", "inner key"}));
    middle.eats = true;
    EXPECT_EQ(press(), (test::Calls{"inner", "middle"}));
}

TEST_F(Pump, OffersStopAtATopLevelWindow) {
    Translating<CWnd> popup;
    Translating<CWnd> child;
    popup.name = "popup";
    child.name = "child";
    // The frame owns the popup and is the main window, but is not above it.
    ASSERT_TRUE(popup.CWnd::CreateEx(0, AfxRegisterWndClass(0), "p", WS_POPUP, CRect(0, 0, 90, 90), &frame(), 0));
    ASSERT_TRUE(child.CWnd::Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 90, 90), &popup, 2));
    Translating<test::TestFrame>* owner = new Translating<test::TestFrame>;
    owner->name = "owner";
    ASSERT_TRUE(owner->Create(nullptr, "owner", WS_POPUP, CRect(0, 0, 9, 9)));
    ::SetWindowLongPtrA(popup, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner->m_hWnd));
    child.PostMessage(WM_KEYDOWN, VK_RIGHT);
    pumpUntilIdle();
    EXPECT_EQ(calls.take(), (test::Calls{"child", "popup", "child key"}));
    owner->DestroyWindow();
}

TEST_F(Pump, ExceptionsComeOutOfTheCallThatSentTheMessage) {
    frame().onMessage = [](UINT message, WPARAM, LPARAM, LRESULT&) -> bool {
        if (message == WM_APP) throw std::length_error("from a handler");
        return false;
    };
    EXPECT_THROW(frame().SendMessage(WM_APP), std::length_error);
    frame().PostMessage(WM_APP);
    EXPECT_THROW(pumpUntilIdle(), std::length_error);
    EXPECT_EQ(frame().SendMessage(WM_NULL), 0);  // nothing is left over
}

TEST_F(Pump, ExceptionPassesThroughTheSystemAndTheHandlersBetween) {
    Probe child(calls);
    ASSERT_TRUE(child.createIn(frame()));
    frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT& answer) -> bool {
        if (message == WM_APP + 1) throw std::runtime_error("inner");
        if (message != WM_APP) return false;
        try {
            child.GetParent()->SendMessage(WM_APP + 1);
        } catch (const std::runtime_error&) {
            answer = 17;
        }
        return true;
    };
    EXPECT_EQ(frame().SendMessage(WM_APP), 17);
}

TEST_F(Pump, FrameworkExceptionsAreThrownByPointerAndCaughtInAnotherModule) {
    frame().onMessage = [](UINT message, WPARAM, LPARAM, LRESULT&) -> bool {
        if (message == WM_APP) AfxThrowInvalidArgException();
        return false;
    };
    bool caught = false;
    try {
        frame().SendMessage(WM_APP);
    } catch (CInvalidArgException* e) {
        caught = true;
        e->Delete();
    }
    EXPECT_TRUE(caught);
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
}

TEST_F(Pump, QuitCodeIsTheResultOfRun) {
    TestApp app;
    AfxPostQuitMessage(5);
    EXPECT_EQ(app.Run(), 5);
}

TEST_F(Pump, TimersReachTheirWindow) {
    int ticks = 0;
    frame().onMessage = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        ticks += message == WM_TIMER && wParam == 77;
        return false;
    };
    EXPECT_NE(frame().SetTimer(77, 10), 0u);
    EXPECT_TRUE(pumpFor([&] { return ticks >= 2; }));
    EXPECT_TRUE(frame().KillTimer(77));
    EXPECT_FALSE(frame().KillTimer(77));
}

TEST_F(Pump, AcceleratorsOfTheFrameWorkInItsChildren) {
    ACCEL keys[] = {{FVIRTKEY | FCONTROL, 'K', 321}};
    frame().m_hAccelTable = ::CreateAcceleratorTableA(keys, 1);
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &frame(), 3));
    edit.SetFocus();
    frame().onMessage = [](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        if (message == WM_COMMAND) calls.record("command", LOWORD(wParam));
        return false;
    };
    test::sendKeys({VK_CONTROL, 'K'});
    pumpUntilIdle();
    EXPECT_EQ(calls.count("command 321"), 1);
}

TEST_F(Pump, UnexpectedMessageBoxIsClosedAndFailsTheTest) {
    int result = 0;
    EXPECT_NONFATAL_FAILURE(result = AfxMessageBox("Nobody asked", MB_YESNOCANCEL), "Nobody asked");
    EXPECT_EQ(result, IDCANCEL);
    test::MessageBoxAnswerer answerer({IDYES});
    EXPECT_NONFATAL_FAILURE(result = AfxMessageBox("No such button", MB_OK), "has no button 6");
    EXPECT_EQ(result, IDOK);
}

TEST_F(Pump, MessageBoxesBelongToTheMainWindow) {
    test::MessageBoxAnswerer answerer({IDNO, IDOK});
    EXPECT_EQ(AfxMessageBox("Delete it?", MB_YESNO), IDNO);
    EXPECT_EQ(AfxMessageBox("Done"), IDOK);
    EXPECT_EQ(answerer.texts(), (std::vector<std::string>{"Delete it?", "Done"}));
    EXPECT_TRUE(frame().IsWindowEnabled());
}

}  // namespace
