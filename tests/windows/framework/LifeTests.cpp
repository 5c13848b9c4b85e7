// How windows and their objects find each other, live and end. That many of them leave nothing behind, grids and lists
// tell as well.
#include "FrameworkTestsIds.h"
#include "support/HandleCounts.h"
#include "support/WindowFixture.h"

#include <stdexcept>

namespace {

class Life : public test::WindowFixture {
protected:
    // A window of the system's, without an object.
    HWND foreignEdit() {
        return ::CreateWindowExA(0, "EDIT", "foreign", WS_CHILD, 0, 0, 50, 20, frame(), nullptr, nullptr, nullptr);
    }
};

class Refuser : public CWnd {
public:
    enum class At { preCreate, create, throwing, nowhere };
    explicit Refuser(At where) : m_where(where) {}

    BOOL createIn(CWnd& parent, LPCSTR windowClass = nullptr) {
        return CWnd::Create(windowClass, "refuser", WS_CHILD, CRect(), &parent, 7);
    }
    int ends = 0;

protected:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override { return m_where != At::preCreate && CWnd::PreCreateWindow(cs); }
    void PostNcDestroy() override { ++ends; }
    afx_msg int OnCreate(LPCREATESTRUCT) {
        if (m_where == At::throwing) throw std::runtime_error("from OnCreate");
        return m_where == At::create ? -1 : 0;
    }
    DECLARE_MESSAGE_MAP()

private:
    At m_where;
};
BEGIN_MESSAGE_MAP(Refuser, CWnd)
    ON_WM_CREATE()
END_MESSAGE_MAP()

TEST_F(Life, RefusedWindowsAreEndedOnceAndLeaveTheObjectEmpty) {
    const std::pair<Refuser::At, LPCSTR> cases[] = {
        {Refuser::At::preCreate, nullptr}, {Refuser::At::create, nullptr}, {Refuser::At::nowhere, "NoSuchClass"}};
    for (const auto& [where, windowClass] : cases) {
        Refuser refuser(where);
        EXPECT_FALSE(refuser.createIn(frame(), windowClass));
        EXPECT_EQ(refuser.ends, 1);
        EXPECT_EQ(refuser.m_hWnd, nullptr);
    }
    Refuser thrower(Refuser::At::throwing);
    EXPECT_THROW(thrower.createIn(frame()), std::runtime_error);
    EXPECT_EQ(thrower.m_hWnd, nullptr);
}

TEST_F(Life, TemporaryObjectsOutliveALoopInsideTheHandlerThatHoldsThem) {
    const HWND edit = foreignEdit();
    bool same = false;
    frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message != WM_APP) return false;
        const CWnd* const held = CWnd::FromHandle(edit);
        pumpUntilIdle();
        same = CWnd::FromHandle(edit) == held && held->m_hWnd == edit && (held->m_nFlags & WF_TEMPORARY);
        return true;
    };
    frame().SendMessage(WM_APP);
    EXPECT_TRUE(same);
    pumpUntilIdle();
    EXPECT_TRUE(::IsWindow(edit)) << "it goes with an idle turn, its window does not";
    EXPECT_EQ(CWnd::FromHandlePermanent(edit), nullptr);
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
}

TEST_F(Life, AHandleHasOneObjectAndGetsItsProcedureBack) {
    const HWND edit = foreignEdit();
    const auto itsOwn = ::GetWindowLongPtrA(edit, GWLP_WNDPROC);
    CWnd first, second;
    EXPECT_TRUE(first.SubclassWindow(edit));
    EXPECT_FALSE(second.Attach(edit));
    EXPECT_FALSE(second.Attach(nullptr));
    CString text;
    first.GetWindowText(text);
    EXPECT_STREQ(text, "foreign") << "the edit's own procedure still answers";
    EXPECT_EQ(first.UnsubclassWindow(), edit);
    EXPECT_EQ(::GetWindowLongPtrA(edit, GWLP_WNDPROC), itsOwn);
    EXPECT_EQ(CWnd::FromHandlePermanent(edit), nullptr);
}

// ---- Handles go back to where they were

TEST_F(Life, CountingSeesALeak) {
    const test::HandleCounts before = test::countHandles();
    const HBRUSH brush = ::CreateSolidBrush(RGB(1, 2, 3));
    const HMENU menu = ::CreateMenu();
    const HWND window = foreignEdit();
    EXPECT_EQ(test::countHandles(), (test::HandleCounts{before.gdi + 1, before.windows + 1, before.menus + 1}));
    ::DestroyWindow(window);
    ::DestroyMenu(menu);
    ::DeleteObject(brush);
    EXPECT_EQ(test::countHandles(), before);
}

TEST_F(Life, DialogsAndFramesWithMenusLeaveNothingBehind) {
    test::HandleCounts before;
    for (int round = 0; round < 25; ++round) {
        if (round == 5) before = test::countHandles();
        CDialog dialog(IDD_MODAL);
        frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
            if (message == WM_APP) dialog.EndDialog(IDOK);
            return false;
        };
        frame().PostMessage(WM_APP);
        EXPECT_EQ(dialog.DoModal(), IDOK);
        auto* const window = new CFrameWnd;
        window->Create(nullptr, "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 200, 100));
        CMenu menu;
        menu.CreateMenu();
        menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(::CreatePopupMenu()), "sub");
        window->SetMenu(&menu);
        menu.Detach();  // the window's now
        window->DestroyWindow();
        pumpUntilIdle();
    }
    EXPECT_EQ(test::countHandles(), before);
}

}  // namespace
