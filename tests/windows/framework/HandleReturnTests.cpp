// Windows, menus and GDI objects go back to where they were after many rounds of making and ending.
#include "Probe.h"
#include "support/DialogTemplate.h"
#include "support/HandleCounts.h"
#include "support/Input.h"

namespace {

class HandleReturn : public test::WindowFixture {
protected:
    void expectSteady(const std::function<void()>& round, int warmUp = 5, int rounds = 50) {
        for (int i = 0; i < warmUp; ++i) round();
        pumpUntilIdle();
        const test::HandleCounts before = test::countHandles();
        for (int i = 0; i < rounds; ++i) round();
        pumpUntilIdle();
        EXPECT_EQ(test::countHandles(), before);
    }
};

TEST_F(HandleReturn, CountingSeesALeak) {
    const test::HandleCounts before = test::countHandles();
    const HBRUSH brush = ::CreateSolidBrush(RGB(1, 2, 3));
    const HMENU menu = ::CreateMenu();
    const HWND window = ::CreateWindowExA(0, "STATIC", "", WS_CHILD, 0, 0, 1, 1, frame(), nullptr, nullptr, nullptr);
    test::HandleCounts expected = before;
    ++expected.gdi;
    ++expected.menus;
    ++expected.windows;
    EXPECT_EQ(test::countHandles(), expected);
    ::DestroyWindow(window);
    ::DestroyMenu(menu);
    ::DeleteObject(brush);
    EXPECT_EQ(test::countHandles(), before);
}

TEST_F(HandleReturn, Controls) {
    test::CallRecorder calls;
    expectSteady([&] {
        Probe parent(calls);
        parent.createIn(frame());
        CListCtrl list;
        list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, CRect(0, 0, 90, 40), &parent, 1);
        list.InsertColumn(0, "column", LVCFMT_LEFT, 50);
        CFont font;
        font.CreatePointFont(90, "Arial");
        list.SetFont(&font);
        list.RedrawWindow();
    });
}

TEST_F(HandleReturn, Dialogs) {
    test::DialogTemplate form;
    form.addEdit(5).addButton(IDOK, "OK", BS_DEFPUSHBUTTON);
    expectSteady(
        [&] {
            CDialog dialog;
            dialog.InitModalIndirect(form.get());
            frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
                if (message == WM_APP) dialog.EndDialog(IDOK);
                return false;
            };
            frame().PostMessage(WM_APP);
            EXPECT_EQ(dialog.DoModal(), IDOK);
        },
        3, 20);
}

TEST_F(HandleReturn, FramesWithMenus) {
    expectSteady(
        [&] {
            auto* window = new CFrameWnd;
            window->Create(nullptr, "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 200, 100));
            CMenu menu;
            menu.CreateMenu();
            menu.AppendMenu(MF_STRING, 1, "item");
            window->SetMenu(&menu);
            menu.Detach();  // the window's now
            window->DestroyWindow();
        },
        3, 20);
}

// A window with one tool, under the left half of it.
class Tipped : public CWnd {
public:
    INT_PTR OnToolHitTest(CPoint point, TOOLINFO* tool) const override {
        if (point.x >= 50) return -1;
        tool->uId = 12;
        tool->rect = CRect(0, 0, 50, 50);
        tool->lpszText = const_cast<LPSTR>("tip of the left half");
        return 12;
    }
};

TEST_F(HandleReturn, TipFollowsTheMouseAndDiesWithItsTopLevelWindow) {
    auto* top = new test::TestFrame;
    ASSERT_TRUE(top->Create(nullptr, "top", WS_POPUP | WS_VISIBLE, CRect(100, 100, 400, 300)));
    Tipped window;
    ASSERT_TRUE(window.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 50), top, 1));
    window.EnableToolTips();
    pumpUntilIdle();
    const auto tip = [] { return ::FindWindowA(TOOLTIPS_CLASSA, nullptr); };
    const auto tools = [&] { return ::SendMessageA(tip(), TTM_GETTOOLCOUNT, 0, 0); };
    test::sendMouseMove(window, {20, 20});
    pumpUntilIdle();
    ASSERT_NE(tip(), nullptr);
    EXPECT_EQ(tools(), 1);
    EXPECT_TRUE(pumpFor([&] { return ::IsWindowVisible(tip()) != FALSE; }));
    test::sendMouseMove(window, {80, 20});
    pumpUntilIdle();
    EXPECT_EQ(tools(), 0);
    top->DestroyWindow();
    EXPECT_EQ(tip(), nullptr);
}

}  // namespace
