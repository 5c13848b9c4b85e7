#include "Probe.h"

#include <stdexcept>

namespace {

class Creation : public test::WindowFixture {
protected:
    test::CallRecorder calls;
};

TEST_F(Creation, ObjectIsAttachedBeforeTheFirstMessage) {
    for (const LPCSTR windowClass : {LPCSTR(nullptr), "EDIT", WC_LISTVIEWA}) {
        calls.clear();
        Probe probe(calls);
        probe.watchAll = true;
        ASSERT_TRUE(probe.createIn(frame(), 7, windowClass));
        ASSERT_GE(calls.calls().size(), 2u);
        EXPECT_EQ(calls.calls()[0], "pre 1");
        const UINT first = (probe.GetStyle() & WS_CHILD) ? WM_NCCREATE : WM_GETMINMAXINFO;
        EXPECT_EQ(calls.calls()[1], "proc " + std::to_string(first));
        EXPECT_EQ(calls.count("proc " + std::to_string(WM_CREATE)), 1);
        EXPECT_EQ(CWnd::FromHandle(probe.m_hWnd), &probe);
    }
}

TEST_F(Creation, ChildrenThatAControlMakesAreNotTakenForIt) {
    Probe combo(calls);
    ASSERT_TRUE(combo.createIn(frame(), 7, "COMBOBOX", WS_CHILD | CBS_DROPDOWN));
    char name[32] = "";
    ::GetClassNameA(combo, name, sizeof(name));
    EXPECT_EQ(::lstrcmpiA(name, "ComboBox"), 0);
    EXPECT_EQ(CWnd::FromHandlePermanent(::GetTopWindow(combo)), nullptr);
}

// Makes its own child while it is being made.
class Nest : public CWnd {
public:
    CEdit inner;

protected:
    afx_msg int OnCreate(LPCREATESTRUCT cs) {
        if (CWnd::OnCreate(cs) == -1) return -1;
        return inner.Create(WS_CHILD, CRect(0, 0, 10, 10), this, 3) ? 0 : -1;
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Nest, CWnd)
    ON_WM_CREATE()
END_MESSAGE_MAP()

TEST_F(Creation, ControlsAreMadeInsideOnCreate) {
    Nest nest;
    ASSERT_TRUE(nest.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 9, 9), &frame(), 1));
    EXPECT_EQ(nest.inner.GetParent(), &nest);
    EXPECT_EQ(nest.GetDlgItem(3), &nest.inner);
}

class Refuser : public Probe {
public:
    enum class At { preCreate, create, throwing };
    Refuser(test::CallRecorder& recorder, At where) : Probe(recorder), m_where(where) {}

protected:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override { return m_where != At::preCreate && Probe::PreCreateWindow(cs); }
    afx_msg int OnCreate(LPCREATESTRUCT) {
        if (m_where == At::throwing) throw std::runtime_error("from OnCreate");
        return -1;
    }
    DECLARE_MESSAGE_MAP()

private:
    At m_where;
};
BEGIN_MESSAGE_MAP(Refuser, CWnd)
    ON_WM_CREATE()
END_MESSAGE_MAP()

TEST_F(Creation, RefusedWindowsAreEndedOnceAndLeaveTheObjectEmpty) {
    for (const auto where : {Refuser::At::preCreate, Refuser::At::create}) {
        calls.clear();
        Refuser refuser(calls, where);
        EXPECT_FALSE(refuser.createIn(frame()));
        EXPECT_EQ(calls.count("end 0"), 1);
        EXPECT_EQ(refuser.m_hWnd, nullptr);
    }
}

TEST_F(Creation, ExceptionOfOnCreateComesOutOfCreate) {
    Refuser refuser(calls, Refuser::At::throwing);
    EXPECT_THROW(refuser.createIn(frame()), std::runtime_error);
    EXPECT_EQ(refuser.m_hWnd, nullptr);
    Probe next(calls);
    EXPECT_TRUE(next.createIn(frame()));
}

TEST_F(Creation, UnknownWindowClassFails) {
    Probe probe(calls);
    EXPECT_FALSE(probe.createIn(frame(), 7, "NoSuchClass"));
    EXPECT_EQ(calls.take(), test::Calls{"end 0"});
    Probe next(calls);
    EXPECT_TRUE(next.createIn(frame()));
}

// The list asks for its row height while it is being made; the answer must reach it then.
class TallList : public CListCtrl {
public:
    int asked = 0;

protected:
    afx_msg void MeasureItem(LPMEASUREITEMSTRUCT item) {
        ++asked;
        item->itemHeight = 40;
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(TallList, CListCtrl)
    ON_WM_MEASUREITEM_REFLECT()
END_MESSAGE_MAP()

TEST_F(Creation, RowHeightIsAskedInsideCreate) {
    for (const UINT id : {5u, 70001u}) {
        TallList list;
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDRAWFIXED | LVS_OWNERDATA,
                                CRect(0, 0, 200, 200), &frame(), id));
        EXPECT_EQ(list.asked, 1);
        list.InsertColumn(0, "column", LVCFMT_LEFT, 80);
        list.SetItemCount(3);
        CRect row;
        list.GetItemRect(0, &row, LVIR_BOUNDS);
        EXPECT_EQ(row.Height(), 40);
    }
}

TEST_F(Creation, WindowClassesAreSharedByTheirAttributes) {
    const HCURSOR arrow = ::LoadCursorA(nullptr, IDC_ARROW);
    const LPCSTR name = AfxRegisterWndClass(CS_DBLCLKS, arrow);
    EXPECT_STREQ(AfxRegisterWndClass(CS_DBLCLKS, arrow), name);
    EXPECT_STRNE(AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_WAIT)), name);
    WNDCLASSA description{};
    EXPECT_TRUE(::GetClassInfoA(AfxGetInstanceHandle(), name, &description));
}

}  // namespace
