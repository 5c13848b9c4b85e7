// From a message or a command to its handler, and on to whoever else may have one.
#include "support/CallRecorder.h"
#include "support/WindowFixture.h"

namespace {

test::CallRecorder calls;
UINT lateMessage = 0;  // registered only after the map was used

class Receiver : public CWnd {
public:
    WPARAM timerSeen = 0;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_TIMER) timerSeen = wParam;
        return CWnd::DefWindowProc(message, wParam, lParam);
    }

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
    afx_msg void OnTimer(UINT_PTR) {
        SendMessage(WM_APP);  // an inner message must not replace the outer one
        CWnd::OnTimer(999);   // default processing gets the original arguments
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Receiver, CWnd)
    ON_WM_MOUSEWHEEL()
    ON_WM_VSCROLL()
    ON_WM_CONTEXTMENU()
    ON_WM_NCHITTEST()
    ON_WM_TIMER()
    ON_MESSAGE(WM_APP + 1, &Receiver::OnUser)
    ON_REGISTERED_MESSAGE(lateMessage, &Receiver::OnUser)
END_MESSAGE_MAP()

using MessageMap = test::WindowFixture;

// A registered message may get its number after the map was used.
TEST_F(MessageMap, ArgumentsAreUnpackedAndResultsComeBack) {
    Receiver window;
    ASSERT_TRUE(window.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 40, 40), &frame(), 9));
    window.SendMessage(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 99));
    window.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window.m_hWnd), MAKELPARAM(-1, -1));
    EXPECT_EQ(window.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(MK_SHIFT, 0xFF88), MAKELPARAM(10, -20)), TRUE);
    EXPECT_EQ(calls.take(), (test::Calls{"vscroll 5 99 0", "menu 1 -1 -1", "wheel 4 -120 10 -20"}));
    EXPECT_EQ(window.SendMessage(WM_NCHITTEST, 0, MAKELPARAM(-4, 0)), -4);
    EXPECT_EQ(window.SendMessage(WM_APP + 1, 40, 2), 42);
    EXPECT_EQ(window.SendMessage(WM_COMMAND, 999), 0);
    window.SendMessage(WM_TIMER, 12);
    EXPECT_EQ(window.timerSeen, 12u);
    const UINT number = ::RegisterWindowMessageA("framework_tests late message");
    lateMessage = 0;
    EXPECT_EQ(window.SendMessage(number, 5), 0);
    lateMessage = number;
    EXPECT_EQ(window.SendMessage(number, 5, 1), 6);
}

// ---- Commands

class TestView : public CView {
    DECLARE_DYNCREATE(TestView)
public:
    ~TestView() override { calls.record("view deleted"); }

protected:
    void OnDraw(CDC*) override {}
    afx_msg void OnHere() { calls.record("view command"); }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNCREATE(TestView, CView)
BEGIN_MESSAGE_MAP(TestView, CView)
    ON_COMMAND(11, &TestView::OnHere)
END_MESSAGE_MAP()

class CommandFrame : public CFrameWnd {
public:
    static constexpr UINT kLargeId = 131073;  // its low word is that of IDOK
    BOOL enabled = TRUE;

protected:
    afx_msg void OnTwo() { calls.record("frame command"); }
    afx_msg void OnUpdateTwo(CCmdUI* ui) {
        ui->Enable(enabled);
        ui->SetCheck(1);
        ui->SetText(CString('2', 300));
    }
    afx_msg void OnLargeClick() { calls.record("large click"); }
    afx_msg void OnLargeNotify(NMHDR*, LRESULT* result) { *result = 22; }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CommandFrame, CFrameWnd)
    ON_COMMAND(11, &CommandFrame::OnTwo)
    ON_COMMAND(12, &CommandFrame::OnTwo)
    ON_UPDATE_COMMAND_UI(12, &CommandFrame::OnUpdateTwo)
    ON_BN_CLICKED(IDOK, &CommandFrame::OnTwo)
    ON_BN_CLICKED(kLargeId, &CommandFrame::OnLargeClick)
    ON_NOTIFY(NM_CLICK, kLargeId, &CommandFrame::OnLargeNotify)
END_MESSAGE_MAP()

class CommandApp : public CWinApp {
protected:
    afx_msg void OnThree() { calls.record("app command"); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CommandApp, CWinApp)
    ON_COMMAND(13, &CommandApp::OnThree)
END_MESSAGE_MAP()

TEST_F(MessageMap, CommandsAndMenusGoToViewFrameAndApplicationByTheWholeId) {
    CommandApp app;
    auto* const window = new CommandFrame;
    CCreateContext context;
    context.m_pNewViewClass = RUNTIME_CLASS(TestView);
    ASSERT_TRUE(
        window->Create(nullptr, "frame", WS_OVERLAPPEDWINDOW, CRect(0, 0, 400, 300), nullptr, nullptr, 0, &context));
    window->InitialUpdateFrame();
    ASSERT_NE(window->GetActiveView(), nullptr);
    for (const UINT id : {11u, 12u, 13u, 14u}) window->SendMessage(WM_COMMAND, id);
    EXPECT_EQ(calls.take(), (test::Calls{"view command", "frame command", "app command"}));

    CButton button;
    ASSERT_TRUE(button.Create("b", WS_CHILD | WS_VISIBLE, CRect(0, 0, 60, 20), window, CommandFrame::kLargeId));
    button.SendMessage(BM_CLICK);
    NMHDR header{button, CommandFrame::kLargeId, static_cast<UINT>(NM_CLICK)};
    EXPECT_EQ(window->SendMessage(WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header)), 22);
    EXPECT_EQ(calls.take(), test::Calls{"large click"});

    CMenu menu;
    menu.CreatePopupMenu();
    for (const UINT id : {11u, 12u, 14u}) menu.AppendMenu(MF_STRING, id, "item");
    window->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu.m_hMenu), MAKELPARAM(0, FALSE));
    const auto state = [&](UINT id) { return ::GetMenuState(menu, id, MF_BYCOMMAND); };
    EXPECT_EQ(state(11) & MF_GRAYED, 0u);
    EXPECT_EQ(state(12) & (MF_GRAYED | MF_CHECKED), static_cast<UINT>(MF_CHECKED));
    EXPECT_NE(state(14) & MF_GRAYED, 0u);  // nobody handles it
    CString text;
    menu.GetMenuString(12, text, MF_BYCOMMAND);
    EXPECT_EQ(text, CString('2', 300));

    window->enabled = FALSE;  // a disabled command does not run by its key either
    window->SendMessage(WM_COMMAND, MAKEWPARAM(12, 1));
    EXPECT_EQ(calls.take(), test::Calls{});
    window->DestroyWindow();
    EXPECT_EQ(calls.take(), test::Calls{"view deleted"});
}

}  // namespace
