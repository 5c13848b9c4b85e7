#include "Probe.h"

namespace {

UINT lateMessage = 0;  // registered only after the map was used

class Receiver : public CWnd {
public:
    test::CallRecorder calls;

protected:
    afx_msg void OnSize(UINT kind, int cx, int cy) { calls.record("size", kind, cx, cy); }
    afx_msg void OnMove(int x, int y) { calls.record("move", x, y); }
    afx_msg void OnTimer(UINT_PTR id) { calls.record("timer", id); }
    afx_msg void OnLButtonDown(UINT flags, CPoint point) { calls.record("down", flags, point.x, point.y); }
    afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint point) {
        calls.record("wheel", flags, delta, point.x, point.y);
        return TRUE;
    }
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags) { calls.record("key", key, repeat, flags); }
    afx_msg void OnShowWindow(BOOL show, UINT status) { calls.record("show", show, status); }
    afx_msg void OnActivate(UINT state, CWnd* other, BOOL minimized) {
        calls.record("activate", state, other == this, minimized);
    }
    afx_msg void OnVScroll(UINT code, UINT position, CScrollBar* bar) {
        calls.record("vscroll", code, position, bar != nullptr);
    }
    afx_msg void OnContextMenu(CWnd* window, CPoint point) { calls.record("menu", window == this, point.x, point.y); }
    afx_msg UINT OnGetDlgCode() { return DLGC_WANTTAB; }
    afx_msg LRESULT OnNcHitTest(CPoint point) { return point.x; }
    afx_msg LRESULT OnUser(WPARAM w, LPARAM l) { return static_cast<LRESULT>(w) + l; }
    afx_msg LRESULT OnLate(WPARAM w, LPARAM) { return static_cast<LRESULT>(w) + 1; }
    afx_msg void OnOne() { calls.record("one"); }
    afx_msg void OnRange(UINT id) { calls.record("range", id); }
    afx_msg BOOL OnEx(UINT id) {
        calls.record("ex", id);
        return id == 300;
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Receiver, CWnd)
    ON_WM_SIZE()
    ON_WM_MOVE()
    ON_WM_TIMER()
    ON_WM_LBUTTONDOWN()
    ON_WM_MOUSEWHEEL()
    ON_WM_KEYDOWN()
    ON_WM_SHOWWINDOW()
    ON_WM_ACTIVATE()
    ON_WM_VSCROLL()
    ON_WM_CONTEXTMENU()
    ON_WM_GETDLGCODE()
    ON_WM_NCHITTEST()
    ON_MESSAGE(WM_APP + 1, &Receiver::OnUser)
    ON_REGISTERED_MESSAGE(lateMessage, &Receiver::OnLate)
    ON_COMMAND(100, &Receiver::OnOne)
    ON_COMMAND_RANGE(200, 210, &Receiver::OnRange)
    ON_COMMAND_EX(300, &Receiver::OnEx)
    ON_COMMAND_EX(301, &Receiver::OnEx)
END_MESSAGE_MAP()

// Overrides one handler and inherits the rest.
class Heir : public Receiver {
protected:
    afx_msg void OnTimer(UINT_PTR id) { calls.record("heir", id); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Heir, Receiver)
    ON_WM_TIMER()
END_MESSAGE_MAP()

class MessageMap : public test::WindowFixture {
protected:
    template <class Window>
    void make(Window& window) {
        ASSERT_TRUE(window.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 40, 40), &frame(), 9));
        window.calls.clear();
    }
};

TEST_F(MessageMap, ArgumentsAreUnpacked) {
    Receiver window;
    make(window);
    const auto self = reinterpret_cast<UINT_PTR>(window.m_hWnd);
    const struct {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        const char* expected;
    } cases[] = {
        {WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(300, 40000), "size 2 300 40000"},
        {WM_MOVE, 0, MAKELPARAM(-5, 7), "move -5 7"},
        {WM_TIMER, 4001, 0, "timer 4001"},
        {WM_LBUTTONDOWN, MK_CONTROL, MAKELPARAM(-2, -3), "down 8 -2 -3"},
        {WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, static_cast<WORD>(-120)), MAKELPARAM(10, -20), "wheel 4 -120 10 -20"},
        {WM_KEYDOWN, 'A', MAKELPARAM(3, 0x1E), "key 65 3 30"},
        {WM_SHOWWINDOW, TRUE, SW_PARENTOPENING, "show 1 3"},
        {WM_ACTIVATE, MAKEWPARAM(WA_CLICKACTIVE, 1), static_cast<LPARAM>(self), "activate 2 1 1"},
        {WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 99), 0, "vscroll 5 99 0"},
        {WM_CONTEXTMENU, self, MAKELPARAM(-1, -1), "menu 1 -1 -1"},
        {WM_COMMAND, 100, 0, "one"},
        {WM_COMMAND, MAKEWPARAM(205, 1), 0, "range 205"},
        {WM_COMMAND, 300, 0, "ex 300"},
    };
    for (const auto& each : cases) {
        window.SendMessage(each.message, each.wParam, each.lParam);
        EXPECT_EQ(window.calls.take(), test::Calls{each.expected}) << "message " << each.message;
    }
}

TEST_F(MessageMap, ResultsComeBack) {
    Receiver window;
    make(window);
    EXPECT_EQ(window.SendMessage(WM_GETDLGCODE), DLGC_WANTTAB);
    EXPECT_EQ(window.SendMessage(WM_NCHITTEST, 0, MAKELPARAM(-4, 0)), -4);
    EXPECT_EQ(window.SendMessage(WM_MOUSEWHEEL), TRUE);
    EXPECT_EQ(window.SendMessage(WM_APP + 1, 40, 2), 42);
    EXPECT_EQ(window.SendMessage(WM_COMMAND, 100), 1);
    EXPECT_EQ(window.SendMessage(WM_COMMAND, 999), 0);
    EXPECT_EQ(window.SendMessage(WM_COMMAND, 301), 0);  // the handler declined
}

TEST_F(MessageMap, RegisteredMessageMayGetItsNumberLate) {
    Receiver window;
    make(window);
    const UINT number = ::RegisterWindowMessageA("framework_tests late message");
    lateMessage = 0;
    EXPECT_EQ(window.SendMessage(number, 5), 0);
    lateMessage = number;
    EXPECT_EQ(window.SendMessage(number, 5), 6);
}

TEST_F(MessageMap, NearestClassWinsAndTheRestIsInherited) {
    Heir heir;
    make(heir);
    heir.SendMessage(WM_TIMER, 3);
    heir.SendMessage(WM_MOVE, 0, MAKELPARAM(1, 2));
    EXPECT_EQ(heir.calls.take(), (test::Calls{"heir 3", "move 1 2"}));
    Receiver plain;  // two classes with one message do not disturb each other
    make(plain);
    plain.SendMessage(WM_TIMER, 3);
    EXPECT_EQ(plain.calls.take(), test::Calls{"timer 3"});
}

// Counts what default processing was given.
class Defaulting : public CWnd {
public:
    WPARAM seen = 0;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_TIMER) seen = wParam;
        return CWnd::DefWindowProc(message, wParam, lParam);
    }

protected:
    afx_msg void OnTimer(UINT_PTR) {
        SendMessage(WM_APP);  // an inner message must not replace the outer one
        CWnd::OnTimer(999);   // default processing gets the original arguments
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Defaulting, CWnd)
    ON_WM_TIMER()
END_MESSAGE_MAP()

TEST_F(MessageMap, DefaultProcessingGetsTheOriginalMessage) {
    Defaulting window;
    ASSERT_TRUE(window.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 40, 40), &frame(), 9));
    window.SendMessage(WM_TIMER, 12);
    EXPECT_EQ(window.seen, 12u);
}

TEST(RuntimeClasses, AreOneAcrossModules) {
    CObject* list = RUNTIME_CLASS(CListCtrl)->CreateObject();
    EXPECT_TRUE(list->IsKindOf(RUNTIME_CLASS(CWnd)));
    EXPECT_TRUE(list->IsKindOf(RUNTIME_CLASS(CCmdTarget)));
    EXPECT_FALSE(list->IsKindOf(RUNTIME_CLASS(CDialog)));
    EXPECT_NE(dynamic_cast<CListCtrl*>(list), nullptr);
    delete list;
}

}  // namespace
