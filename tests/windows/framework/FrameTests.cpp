#include "support/CallRecorder.h"
#include "support/WindowFixture.h"

namespace {

test::CallRecorder calls;

class TestView : public CView {
    DECLARE_DYNCREATE(TestView)
public:
    ~TestView() override { calls.record("view deleted"); }

protected:
    void OnDraw(CDC*) override {}
    void OnInitialUpdate() override {
        calls.record("initial update");
        CView::OnInitialUpdate();
    }
    afx_msg void OnHere() { calls.record("view command"); }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNCREATE(TestView, CView)
BEGIN_MESSAGE_MAP(TestView, CView)
    ON_COMMAND(1, &TestView::OnHere)
END_MESSAGE_MAP()

class CommandFrame : public CFrameWnd {
public:
    ~CommandFrame() override { calls.record("frame deleted"); }

protected:
    afx_msg void OnTwo() { calls.record("frame command"); }
    afx_msg void OnUpdateTwo(CCmdUI* ui) {
        ui->Enable(enabled);
        ui->SetCheck(1);
        ui->SetText("Two!");
    }
    DECLARE_MESSAGE_MAP()

public:
    BOOL enabled = TRUE;
};
BEGIN_MESSAGE_MAP(CommandFrame, CFrameWnd)
    ON_COMMAND(1, &CommandFrame::OnTwo)
    ON_COMMAND(2, &CommandFrame::OnTwo)
    ON_UPDATE_COMMAND_UI(2, &CommandFrame::OnUpdateTwo)
END_MESSAGE_MAP()

class CommandApp : public CWinApp {
protected:
    afx_msg void OnThree() { calls.record("app command"); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CommandApp, CWinApp)
    ON_COMMAND(3, &CommandApp::OnThree)
END_MESSAGE_MAP()

class Frame : public test::WindowFixture {
protected:
    CommandApp app;
    CommandFrame* window = new CommandFrame;

    void SetUp() override {
        CCreateContext context;
        context.m_pNewViewClass = RUNTIME_CLASS(TestView);
        ASSERT_TRUE(window->Create(nullptr, "frame", WS_OVERLAPPEDWINDOW, CRect(0, 0, 400, 300), nullptr, nullptr, 0,
                                   &context));
        window->InitialUpdateFrame();
        pumpUntilIdle();
    }
    void TearDown() override {
        if (window) window->DestroyWindow();
        WindowFixture::TearDown();
        calls.clear();
    }
};

TEST_F(Frame, ViewIsMadeUpdatedAndDeletedWithTheFrame) {
    ASSERT_NE(window->GetActiveView(), nullptr);
    EXPECT_EQ(calls.count("initial update"), 1);
    calls.clear();
    window->DestroyWindow();
    window = nullptr;
    EXPECT_EQ(calls.take(), (test::Calls{"view deleted", "frame deleted"}));
}

TEST_F(Frame, CommandsGoToViewFrameAndApplication) {
    const struct {
        UINT id;
        test::Calls expected;
    } cases[] = {{1, {"view command"}}, {2, {"frame command"}}, {3, {"app command"}}, {4, {}}};
    for (const auto& each : cases) {
        calls.clear();
        window->SendMessage(WM_COMMAND, each.id);
        EXPECT_EQ(calls.take(), each.expected) << each.id;
    }
    window->enabled = FALSE;  // a disabled command does not run by its key either
    window->SendMessage(WM_COMMAND, MAKEWPARAM(2, 1));
    EXPECT_EQ(calls.take(), test::Calls{});
}

TEST_F(Frame, MenuItemsAreBroughtUpToDateWhenTheirMenuOpens) {
    CMenu menu;
    menu.CreatePopupMenu();
    for (const UINT id : {1u, 2u, 4u}) menu.AppendMenu(MF_STRING, id, "item");
    window->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu.m_hMenu), MAKELPARAM(0, FALSE));
    const auto state = [&](UINT id) { return ::GetMenuState(menu, id, MF_BYCOMMAND); };
    EXPECT_EQ(state(1) & MF_GRAYED, 0u);
    EXPECT_EQ(state(2) & (MF_GRAYED | MF_CHECKED), static_cast<UINT>(MF_CHECKED));
    EXPECT_NE(state(4) & MF_GRAYED, 0u);  // nobody handles it
    char text[16] = "";
    ::GetMenuStringA(menu, 2, text, sizeof(text), MF_BYCOMMAND);
    EXPECT_STREQ(text, "Two!");
}

}  // namespace
