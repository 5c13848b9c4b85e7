// How windows and their objects find each other, live and end: creation, the map of handles, and what many rounds of
// making and ending leave behind.
#include "FrameworkTestsIds.h"
#include "support/CallRecorder.h"
#include "support/HandleCounts.h"
#include "support/WindowFixture.h"

#include <stdexcept>

namespace {

// Records "pre", "proc <message>" for the watched messages and "end" (PostNcDestroy).
class Probe : public CWnd {
public:
    explicit Probe(test::CallRecorder& recorder) : m_recorder(recorder) {}

    BOOL createIn(CWnd& parent, UINT id = 7, LPCSTR windowClass = nullptr, DWORD style = WS_CHILD | WS_VISIBLE) {
        return CWnd::Create(windowClass, "probe", style, CRect(0, 0, 100, 50), &parent, id);
    }

    bool watchAll = false;

protected:
    void PreSubclassWindow() override { m_recorder.record("pre", m_hWnd != nullptr); }
    void PostNcDestroy() override { m_recorder.record("end", m_hWnd != nullptr); }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (watchAll) m_recorder.record("proc", message);
        return CWnd::WindowProc(message, wParam, lParam);
    }

    test::CallRecorder& m_recorder;
};

class Life : public test::WindowFixture {
protected:
    test::CallRecorder calls;

    // A window of the system's, without an object.
    HWND foreignEdit() {
        return ::CreateWindowExA(0, "EDIT", "foreign", WS_CHILD, 0, 0, 50, 20, frame(), nullptr, nullptr, nullptr);
    }
};

// ---- Creation

class Refuser : public Probe {
public:
    enum class At { preCreate, create, throwing, nowhere };
    Refuser(test::CallRecorder& recorder, At where) : Probe(recorder), m_where(where) {}

protected:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override { return m_where != At::preCreate && Probe::PreCreateWindow(cs); }
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
    const struct {
        Refuser::At where;
        LPCSTR windowClass;
    } cases[] = {
        {Refuser::At::preCreate, nullptr}, {Refuser::At::create, nullptr}, {Refuser::At::nowhere, "NoSuchClass"}};
    for (const auto& each : cases) {
        calls.clear();
        Refuser refuser(calls, each.where);
        EXPECT_FALSE(refuser.createIn(frame(), 7, each.windowClass));
        EXPECT_EQ(calls.count("end 0"), 1);
        EXPECT_EQ(refuser.m_hWnd, nullptr);
    }
    Refuser thrower(calls, Refuser::At::throwing);
    EXPECT_THROW(thrower.createIn(frame()), std::runtime_error);
    EXPECT_EQ(thrower.m_hWnd, nullptr);
    Probe next(calls);
    EXPECT_TRUE(next.createIn(frame()));
}

// ---- Objects and handles

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

TEST_F(Life, OneObjectToAHandleAndOneHandleToAnObject) {
    const HWND edit = foreignEdit();
    CWnd first;
    CWnd second;
    EXPECT_TRUE(first.Attach(edit));
    EXPECT_FALSE(second.Attach(edit));
    EXPECT_FALSE(first.Attach(foreignEdit()));
    EXPECT_FALSE(second.Attach(nullptr));
    EXPECT_EQ(CWnd::FromHandle(edit), &first);
    EXPECT_EQ(first.Detach(), edit);
    EXPECT_EQ(CWnd::FromHandlePermanent(edit), nullptr);
    EXPECT_TRUE(::IsWindow(edit));
}

TEST_F(Life, SubclassingTakesMessagesOverAndGivesThemBack) {
    const HWND edit = foreignEdit();
    const auto itsOwn = ::GetWindowLongPtrA(edit, GWLP_WNDPROC);
    Probe probe(calls);
    ASSERT_TRUE(probe.SubclassWindow(edit));
    EXPECT_EQ(calls.take(), test::Calls{"pre 1"});
    probe.watchAll = true;
    CString text;
    probe.GetWindowText(text);
    EXPECT_STREQ(text, "foreign") << "the edit's own procedure still answers";
    EXPECT_GE(calls.count("proc " + std::to_string(WM_GETTEXT)), 1);

    calls.clear();
    EXPECT_EQ(probe.UnsubclassWindow(), edit);
    ::SendMessageA(edit, WM_APP, 0, 0);
    EXPECT_TRUE(calls.calls().empty());
    EXPECT_EQ(::GetWindowLongPtrA(edit, GWLP_WNDPROC), itsOwn);
}

TEST_F(Life, AnObjectWhoseWindowDiedIsEmptyAndReadyForAnother) {
    HWND window = nullptr;
    {
        Probe probe(calls);
        ASSERT_TRUE(probe.SubclassWindow(foreignEdit()));
        EXPECT_TRUE(probe.DestroyWindow());
        EXPECT_EQ(calls.take(), (test::Calls{"pre 1", "end 0"}));
        EXPECT_EQ(probe.m_hWnd, nullptr);
        ASSERT_TRUE(probe.createIn(frame()));
        window = probe;
    }
    EXPECT_FALSE(::IsWindow(window)) << "the destructor ends the window";
    EXPECT_EQ(CWnd::FromHandlePermanent(window), nullptr);
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

TEST_F(Life, ManyRoundsLeaveNothingBehind) {
    const auto dialog = [&] {
        CDialog shown(IDD_MODAL);
        frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
            if (message == WM_APP) shown.EndDialog(IDOK);
            return false;
        };
        frame().PostMessage(WM_APP);
        EXPECT_EQ(shown.DoModal(), IDOK);
    };
    const auto frameWithMenu = [] {
        auto* const window = new CFrameWnd;
        window->Create(nullptr, "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 200, 100));
        CMenu menu;
        menu.CreateMenu();
        menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(::CreatePopupMenu()), "sub");
        window->SetMenu(&menu);
        menu.Detach();  // the window's now
        window->DestroyWindow();
    };
    // Selected and put back, through owners, temporaries and handles that were given away.
    const auto gdiObjects = [this] {
        CClientDC client(&frame());
        CWindowDC whole(&frame());
        CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
        CBrush brush(RGB(0, 0, 255));
        CFont font;
        font.CreatePointFont(80, "Arial");
        const DcStateScope state(client);
        const SelectScope penScope(client, pen);
        const SelectScope brushScope(client, brush);
        const SelectScope fontScope(client, font);
        CImageList images;
        images.Create(16, 16, ILC_COLOR32 | ILC_MASK, 2, 2);
        ::DeleteObject(CFont::FromHandle(::CreateFontA(8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"))->Detach());
    };
    const std::pair<const char*, std::function<void()>> kinds[] = {
        {"dialogs", dialog}, {"frames with menus", frameWithMenu}, {"GDI objects", gdiObjects}};
    for (const auto& [name, round] : kinds) {
        test::HandleCounts before;
        for (int i = 0; i < 25; ++i) {
            if (i == 5) before = test::countHandles();
            round();
            pumpUntilIdle();
        }
        EXPECT_EQ(test::countHandles(), before) << name;
    }
}

}  // namespace
