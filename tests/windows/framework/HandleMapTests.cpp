#include "Probe.h"

namespace {

class HandleMap : public test::WindowFixture {
protected:
    test::CallRecorder calls;

    // A window of the system's, without an object.
    HWND foreignEdit() {
        return ::CreateWindowExA(0, "EDIT", "foreign", WS_CHILD, 0, 0, 50, 20, frame(), nullptr, nullptr, nullptr);
    }
};

TEST_F(HandleMap, FamilyQuestionsGiveThePermanentObject) {
    Probe child(calls);
    Probe grandchild(calls);
    ASSERT_TRUE(child.createIn(frame()));
    ASSERT_TRUE(grandchild.createIn(child, 8));

    EXPECT_EQ(grandchild.GetParent(), &child);
    EXPECT_EQ(grandchild.GetOwner(), &child);
    grandchild.SetOwner(&frame());
    EXPECT_EQ(grandchild.GetOwner(), &frame());
    EXPECT_EQ(grandchild.GetParent(), &child);
    grandchild.SetOwner(nullptr);
    EXPECT_EQ(grandchild.GetOwner(), &child);
    EXPECT_EQ(grandchild.GetTopLevelParent(), &frame());
    EXPECT_EQ(grandchild.GetParentFrame(), &frame());
    EXPECT_EQ(child.GetDlgItem(8), &grandchild);
    EXPECT_EQ(frame().GetDescendantWindow(8, TRUE), &grandchild);
}

TEST_F(HandleMap, ForeignWindowsHaveTemporaryObjectsUntilIdle) {
    const HWND edit = foreignEdit();
    CWnd* object = CWnd::FromHandle(edit);
    EXPECT_EQ(CWnd::FromHandlePermanent(edit), nullptr);
    EXPECT_EQ(CWnd::FromHandle(edit), object);
    EXPECT_TRUE(object->m_nFlags & WF_TEMPORARY);
    pumpUntilIdle();
    EXPECT_TRUE(::IsWindow(edit));
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
}

TEST_F(HandleMap, TemporaryObjectsOutliveALoopInsideTheHandlerThatHoldsThem) {
    const HWND edit = foreignEdit();
    bool same = false;
    frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        if (message != WM_APP) return false;
        CWnd* held = CWnd::FromHandle(edit);
        pumpUntilIdle();
        same = CWnd::FromHandle(edit) == held && held->m_hWnd == edit;
        return true;
    };
    frame().SendMessage(WM_APP);
    EXPECT_TRUE(same);
}

TEST_F(HandleMap, OneObjectToAHandleAndOneHandleToAnObject) {
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

TEST_F(HandleMap, SubclassingTakesMessagesOverAndGivesThemBack) {
    const HWND edit = foreignEdit();
    const auto itsOwn = ::GetWindowLongPtrA(edit, GWLP_WNDPROC);
    Probe probe(calls);
    ASSERT_TRUE(probe.SubclassWindow(edit));
    EXPECT_EQ(calls.take(), test::Calls{"pre 1"});
    probe.watchAll = true;
    CString text;
    probe.GetWindowText(text);  // the edit's own procedure still answers
    EXPECT_STREQ(text, "foreign");
    EXPECT_GE(calls.count("proc " + std::to_string(WM_GETTEXT)), 1);

    calls.clear();
    EXPECT_EQ(probe.UnsubclassWindow(), edit);
    ::SendMessageA(edit, WM_APP, 0, 0);
    EXPECT_TRUE(calls.calls().empty());
    EXPECT_EQ(::GetWindowLongPtrA(edit, GWLP_WNDPROC), itsOwn);
}

TEST_F(HandleMap, ASubclassedWindowThatDiesLeavesTheObjectEmpty) {
    Probe probe(calls);
    ASSERT_TRUE(probe.SubclassWindow(foreignEdit()));
    EXPECT_TRUE(probe.DestroyWindow());
    EXPECT_EQ(calls.take(), (test::Calls{"pre 1", "end 0"}));
    EXPECT_EQ(probe.m_hWnd, nullptr);
    EXPECT_TRUE(probe.createIn(frame()));  // and ready for another
}

TEST_F(HandleMap, DestructorEndsTheWindow) {
    HWND window = nullptr;
    {
        Probe probe(calls);
        ASSERT_TRUE(probe.createIn(frame()));
        window = probe;
    }
    EXPECT_FALSE(::IsWindow(window));
    EXPECT_EQ(CWnd::FromHandlePermanent(window), nullptr);
}

}  // namespace
