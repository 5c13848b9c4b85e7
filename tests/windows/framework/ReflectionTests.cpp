#include "Probe.h"

namespace {

test::CallRecorder calls;

// What a control does with a notification that comes back to it.
class Button : public CButton {
public:
    void DrawItem(LPDRAWITEMSTRUCT) override { calls.record("child draw"); }

protected:
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Button, CButton)
END_MESSAGE_MAP()

class Keeping : public Button {
protected:
    afx_msg void OnClicked() { calls.record("child click"); }
    afx_msg void OnNotify1(NMHDR* header, LRESULT* result) {
        calls.record("child notify", header->code);
        *result = 11;
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Keeping, Button)
    ON_CONTROL_REFLECT(BN_CLICKED, &Keeping::OnClicked)
    ON_NOTIFY_REFLECT(NM_CLICK, &Keeping::OnNotify1)
END_MESSAGE_MAP()

class Sharing : public Button {
protected:
    afx_msg BOOL OnClicked() {
        calls.record("child click");
        return FALSE;
    }
    afx_msg BOOL OnNotify1(NMHDR* header, LRESULT*) {
        calls.record("child notify", header->code);
        return FALSE;
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Sharing, Button)
    ON_CONTROL_REFLECT_EX(BN_CLICKED, &Sharing::OnClicked)
    ON_NOTIFY_REFLECT_EX(NM_CLICK, &Sharing::OnNotify1)
END_MESSAGE_MAP()

class Coloured : public Button {
public:
    HBRUSH brush = nullptr;

protected:
    afx_msg HBRUSH CtlColor(CDC*, UINT kind) {
        calls.record("child colour", kind);
        return brush;
    }
    afx_msg void HScroll(UINT code, UINT position) { calls.record("child hscroll", code, position); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Coloured, Button)
    ON_WM_CTLCOLOR_REFLECT()
    ON_WM_HSCROLL_REFLECT()
END_MESSAGE_MAP()

constexpr UINT smallId = 5;
constexpr UINT largeId = 131073;  // its low word is IDOK

class Parent : public CWnd {
public:
    bool paints = false;  // draws items itself instead of handing them on

protected:
    afx_msg void OnClick() { calls.record("parent click"); }
    afx_msg void OnLargeClick() { calls.record("parent large click"); }
    afx_msg void OnOk() { calls.record("parent ok"); }
    afx_msg void OnNotify1(NMHDR* header, LRESULT* result) {
        calls.record("parent notify", header->idFrom);
        *result = 22;
    }
    afx_msg void OnDrawItem(int id, LPDRAWITEMSTRUCT item) {
        calls.record("parent draw", id);
        if (!paints) CWnd::OnDrawItem(id, item);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Parent, CWnd)
    ON_BN_CLICKED(smallId, &Parent::OnClick)
    ON_BN_CLICKED(largeId, &Parent::OnLargeClick)
    ON_BN_CLICKED(IDOK, &Parent::OnOk)
    ON_NOTIFY(NM_CLICK, smallId, &Parent::OnNotify1)
    ON_NOTIFY(NM_CLICK, largeId, &Parent::OnNotify1)
    ON_WM_DRAWITEM()
END_MESSAGE_MAP()

class Reflection : public test::WindowFixture {
protected:
    Parent parent;

    void SetUp() override {
        ASSERT_TRUE(parent.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, client(), &frame(), 1));
        calls.clear();
    }
    void TearDown() override {
        parent.DestroyWindow();
        WindowFixture::TearDown();
    }
    void put(Button& button, UINT id = smallId, DWORD style = BS_PUSHBUTTON) {
        ASSERT_TRUE(button.Create("button", WS_CHILD | WS_VISIBLE | style, CRect(0, 0, 60, 20), &parent, id));
        pumpUntilIdle();
        calls.clear();
    }
    void click(CWnd& button) { button.SendMessage(BM_CLICK); }
    LRESULT notify(CWnd& button) {
        NMHDR header{button, static_cast<UINT_PTR>(button.GetDlgCtrlID()), static_cast<UINT>(NM_CLICK)};
        return parent.SendMessage(WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
    }
    LRESULT draw(CWnd& button) {
        DRAWITEMSTRUCT item{};
        item.CtlType = ODT_BUTTON;
        item.CtlID = static_cast<UINT>(button.GetDlgCtrlID());
        item.hwndItem = button;
        return parent.SendMessage(WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
    }
};

TEST_F(Reflection, CommandsAndNotificationsGoToTheChildFirst) {
    Button plain;
    Keeping keeping;
    Sharing sharing;
    const std::string code = std::to_string(static_cast<UINT>(NM_CLICK));
    const struct {
        Button& child;
        test::Calls onClick;
        test::Calls onNotify;
        LRESULT answer;
    } cases[] = {
        {plain, {"parent click"}, {"parent notify 5"}, 22},
        {keeping, {"child click"}, {"child notify " + code}, 11},
        {sharing, {"child click", "parent click"}, {"child notify " + code, "parent notify 5"}, 22},
    };
    for (const auto& each : cases) {
        put(each.child);
        click(each.child);
        EXPECT_EQ(calls.take(), each.onClick);
        EXPECT_EQ(notify(each.child), each.answer);
        EXPECT_EQ(calls.take(), each.onNotify);
        each.child.DestroyWindow();
    }
}

TEST_F(Reflection, OwnerDrawGoesToTheParentsMapFirst) {
    Button button;
    put(button, smallId, BS_OWNERDRAW);
    draw(button);
    EXPECT_EQ(calls.take(), (test::Calls{"parent draw 5", "child draw"}));
    parent.paints = true;
    draw(button);
    EXPECT_EQ(calls.take(), test::Calls{"parent draw 5"});
}

TEST_F(Reflection, ParentWithoutAHandlerHandsTheItemOn) {
    Button button;
    ASSERT_TRUE(button.Create("b", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, CRect(0, 0, 60, 20), &frame(), smallId));
    calls.clear();
    button.RedrawWindow();
    EXPECT_EQ(calls.take(), test::Calls{"child draw"});
}

TEST_F(Reflection, ColoursAndScrollingReachTheControl) {
    Coloured button;
    put(button);
    const auto colour = [&] {
        CClientDC dc(&button);
        return parent.SendMessage(WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(dc.m_hDC),
                                  reinterpret_cast<LPARAM>(button.m_hWnd));
    };
    const LRESULT standard = colour();
    EXPECT_NE(standard, 0);  // no brush of its own: the default one
    button.brush = static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH));
    EXPECT_EQ(colour(), reinterpret_cast<LRESULT>(button.brush));
    EXPECT_EQ(calls.take(), (test::Calls{"child colour 3", "child colour 3"}));
    parent.SendMessage(WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, 31), reinterpret_cast<LPARAM>(button.m_hWnd));
    EXPECT_EQ(calls.take(), test::Calls{"child hscroll 5 31"});
}

TEST_F(Reflection, ControlIdsAreComparedWhole) {
    Button button;
    put(button, largeId);
    click(button);
    EXPECT_EQ(calls.take(), test::Calls{"parent large click"});
    notify(button);
    EXPECT_EQ(calls.take(), test::Calls{"parent notify 131073"});
}

}  // namespace
