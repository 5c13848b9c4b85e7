#include "support/CallRecorder.h"
#include "support/WindowFixture.h"

namespace {

UINT lateMessage = 0;  // registered only after the map was used

class Receiver : public CWnd {
public:
    test::CallRecorder calls;

protected:
    afx_msg BOOL OnMouseWheel(UINT flags, short delta, CPoint point) {
        calls.record("wheel", flags, delta, point.x, point.y);
        return TRUE;
    }
    afx_msg void OnVScroll(UINT code, UINT position, CScrollBar* bar) {
        calls.record("vscroll", code, position, bar != nullptr);
    }
    afx_msg void OnContextMenu(CWnd* window, CPoint point) { calls.record("menu", window == this, point.x, point.y); }
    afx_msg LRESULT OnNcHitTest(CPoint point) { return point.x; }
    afx_msg LRESULT OnUser(WPARAM w, LPARAM l) { return static_cast<LRESULT>(w) + l; }
    afx_msg LRESULT OnLate(WPARAM w, LPARAM) { return static_cast<LRESULT>(w) + 1; }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Receiver, CWnd)
    ON_WM_MOUSEWHEEL()
    ON_WM_VSCROLL()
    ON_WM_CONTEXTMENU()
    ON_WM_NCHITTEST()
    ON_MESSAGE(WM_APP + 1, &Receiver::OnUser)
    ON_REGISTERED_MESSAGE(lateMessage, &Receiver::OnLate)
END_MESSAGE_MAP()

class MessageMap : public test::WindowFixture {
protected:
    void make(CWnd& window) {
        ASSERT_TRUE(window.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 40, 40), &frame(), 9));
    }
};

// A registered message may get its number after the map was used.
TEST_F(MessageMap, ArgumentsAreUnpackedAndResultsComeBack) {
    Receiver window;
    make(window);
    window.SendMessage(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 99));
    window.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window.m_hWnd), MAKELPARAM(-1, -1));
    EXPECT_EQ(window.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, 0xFF88), MAKELPARAM(10, -20)), TRUE);
    EXPECT_EQ(window.calls.take(), (test::Calls{"vscroll 5 99 0", "menu 1 -1 -1", "wheel 4 -120 10 -20"}));
    EXPECT_EQ(window.SendMessage(WM_NCHITTEST, 0, MAKELPARAM(-4, 0)), -4);
    EXPECT_EQ(window.SendMessage(WM_APP + 1, 40, 2), 42);
    EXPECT_EQ(window.SendMessage(WM_COMMAND, 999), 0);
    const UINT number = ::RegisterWindowMessageA("framework_tests late message");
    lateMessage = 0;
    EXPECT_EQ(window.SendMessage(number, 5), 0);
    lateMessage = number;
    EXPECT_EQ(window.SendMessage(number, 5), 6);
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
    make(window);
    window.SendMessage(WM_TIMER, 12);
    EXPECT_EQ(window.seen, 12u);
}

// A parent whose button's id has the low word of IDOK.
class Parent : public CWnd {
public:
    static constexpr UINT kLargeId = 131073;
    test::CallRecorder calls;

protected:
    afx_msg void OnLargeClick() { calls.record("large click"); }
    afx_msg void OnOk() { calls.record("ok"); }
    afx_msg void OnNotify1(NMHDR* header, LRESULT* result) {
        calls.record("notify", header->idFrom);
        *result = 22;
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Parent, CWnd)
    ON_BN_CLICKED(IDOK, &Parent::OnOk)
    ON_BN_CLICKED(kLargeId, &Parent::OnLargeClick)
    ON_NOTIFY(NM_CLICK, kLargeId, &Parent::OnNotify1)
END_MESSAGE_MAP()

TEST_F(MessageMap, ControlIdsAreComparedWhole) {
    Parent parent;
    CButton button;
    make(parent);
    ASSERT_TRUE(button.Create("b", WS_CHILD | WS_VISIBLE, CRect(0, 0, 60, 20), &parent, Parent::kLargeId));
    button.SendMessage(BM_CLICK);
    NMHDR header{button, Parent::kLargeId, static_cast<UINT>(NM_CLICK)};
    EXPECT_EQ(parent.SendMessage(WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header)), 22);
    EXPECT_EQ(parent.calls.take(), (test::Calls{"large click", "notify 131073"}));
}

}  // namespace
