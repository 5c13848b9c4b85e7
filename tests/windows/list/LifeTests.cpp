// Both roads to a window, the registries, and the end.
#include "ListFixture.h"
#include "platform/proving/WindowCapture.h"
#include "support/HandleCounts.h"

namespace {

using namespace list_tests;

INT_PTR entries(const CArray<CCommonListCtrl*, CCommonListCtrl*>& registry, const CCommonListCtrl& list) {
    INT_PTR count = 0;
    for (INT_PTR i = 0; i < registry.GetCount(); ++i) count += registry.GetAt(i) == &list;
    return count;
}

enum class Road { create, createEx, subclass, subclassOwnerDrawn };

struct Roads : ListFixture, testing::WithParamInterface<Road> {
    void take(CCommonListCtrl& list, Road by) {
        switch (by) {
            case Road::create:
                return create(list);
            case Road::createEx:
                return createEx(list);
            case Road::subclassOwnerDrawn:
                owner.GetDlgItem(kListId)->ModifyStyle(0, LVS_OWNERDRAWFIXED);
                [[fallthrough]];
            case Road::subclass:
                return subclass(list);
        }
    }
    void show(CCommonListCtrl& list, Road by) {
        list.m_csListName = "orders";
        addColumns(list, {"Symbol", "Price", "Qty"});
        take(list, by);
        list.InsertColumnsForList(nullptr);
        addRows(list, 6);
        pumpUntilIdle();
    }
};

TEST_P(Roads, EndOnALivingControl) {
    TestList list;
    show(list, GetParam());
    ASSERT_TRUE(::IsWindow(list.m_hWnd));
    EXPECT_TRUE(list.GetStyle() & LVS_OWNERDRAWFIXED);
    EXPECT_EQ(list.GetExtendedStyle() & 0x30, 0x30u);
    EXPECT_EQ(list.GetTextColor(), 65280u);
    EXPECT_EQ(list.GetBkColor(), 0u);
    EXPECT_EQ(list.GetTextBkColor(), 0u);
    EXPECT_EQ(list.m_nSortOrder, -1);
    EXPECT_EQ(list.m_nLastSortCol, 0);
    EXPECT_EQ(entries(CCommonListCtrl::g_listRegistry, list), 1);
    EXPECT_EQ(entries(CCommonListCtrl::g_groupListRegistry, list), 0);
    CImageList* images = list.GetHeaderCtrl()->GetImageList();
    ASSERT_NE(images, nullptr);
    EXPECT_EQ(images->GetImageCount(), 3);
    EXPECT_GE(owner.drawn, 6);
}

TEST_P(Roads, LookAlike) {
    WindowPicture first, second;
    CRect row;
    {
        TestList list;
        show(list, Road::subclass);
        list.UpdateWindow();
        ASSERT_TRUE(quorCaptureClientArea(list.m_hWnd, first));
        list.GetItemRect(0, row, LVIR_BOUNDS);
    }
    owner.DestroyWindow();
    ASSERT_TRUE(owner.create(frame()));
    TestList list;
    show(list, GetParam());
    list.UpdateWindow();
    ASSERT_TRUE(quorCaptureClientArea(list.m_hWnd, second));
    CRect secondRow;
    list.GetItemRect(0, secondRow, LVIR_BOUNDS);
    EXPECT_EQ(row.Height(), secondRow.Height());
    EXPECT_EQ(first.width, second.width);
    EXPECT_TRUE(first.pixels == second.pixels);
}

// Height of the font, its external leading, and one. What the owner adds to the answer shows that the control asked.
TEST_P(Roads, RowsAreAsHighAsTheirFont) {
    const auto measured = [this](CCommonListCtrl& list) {
        TEXTMETRIC metrics{};
        CClientDC dc(&list);
        const SelectScope font(&dc, list.GetFont());
        dc.GetTextMetrics(&metrics);
        return static_cast<int>(metrics.tmHeight + metrics.tmExternalLeading + 1 + owner.extraRowHeight);
    };
    const auto rowHeight = [](CCommonListCtrl& list) {
        CRect row;
        list.GetItemRect(0, row, LVIR_BOUNDS);
        return row.Height();
    };
    owner.extraRowHeight = 7;
    TestList list;
    show(list, GetParam());
    EXPECT_EQ(rowHeight(list), measured(list));
    CFont tall;
    tall.CreatePointFont(300, "Tahoma");
    list.SetFont(&tall);
    EXPECT_EQ(rowHeight(list), measured(list));
    list.DestroyWindow();
}

const char* nameOf(const testing::TestParamInfo<Road>& row) {
    constexpr const char* kNames[] = {"Create", "CreateEx", "Subclass", "SubclassOwnerDrawn"};
    return kNames[static_cast<int>(row.param)];
}

INSTANTIATE_TEST_SUITE_P(All, Roads,
                         testing::Values(Road::create, Road::createEx, Road::subclass, Road::subclassOwnerDrawn),
                         nameOf);

struct Life : ListFixture {};

TEST_F(Life, CreateGivesZeroWithoutAWindowToo) {
    TestList list;
    EXPECT_EQ(list.Create(WS_CHILD | LVS_REPORT, kListRect, nullptr, kListId), 0);
    EXPECT_EQ(list.CreateEx(0, WS_CHILD | LVS_REPORT, kListRect, nullptr, kListId), 0);
    EXPECT_EQ(list.m_hWnd, nullptr);
    EXPECT_EQ(entries(CCommonListCtrl::g_listRegistry, list), 0);
}

TEST_F(Life, InitialisationRunsOncePerWindow) {
    TestList list;
    subclass(list);
    list.SetTextColor(1);
    list.CommonInitList();
    EXPECT_EQ(list.GetTextColor(), 1u);
    list.DestroyWindow();
    create(list);
    EXPECT_EQ(list.GetTextColor(), 65280u);
    EXPECT_EQ(entries(CCommonListCtrl::g_listRegistry, list), 1);
}

TEST_F(Life, WhereAListIsRegistered) {
    struct {
        const char* name;
        int group, customize;
        bool customisableParent;
        int inList, inGroup;
    } const cases[] = {
        {"plain", 0, 1, true, 1, 0},
        {"not customised", 0, 0, true, 0, 0},
        {"group", 1, 1, true, 0, 1},
        {"no customisable parent", 0, 1, false, 0, 0},
        {"group without customisable parent", 1, 1, false, 0, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TestList list;
        list.m_bGroupList = static_cast<BYTE>(c.group);
        list.m_bCustomizeEnabled = c.customize;
        list.Create(kListStyle, kListRect, c.customisableParent ? static_cast<CWnd*>(&owner) : &frame(), 77);
        EXPECT_EQ(CCommonListCtrl::GetListCtrlDlgParent(&list), c.customisableParent ? &owner : nullptr);
        EXPECT_EQ(entries(CCommonListCtrl::g_listRegistry, list), c.inList);
        EXPECT_EQ(entries(CCommonListCtrl::g_groupListRegistry, list), c.inGroup);
    }
    EXPECT_EQ(CCommonListCtrl::g_listRegistry.GetCount(), 0);
    EXPECT_EQ(CCommonListCtrl::g_groupListRegistry.GetCount(), 0);
}

TEST_F(Life, DestroyingSavesBeforeTheColumnsAreGone) {
    TestList list;
    addColumns(list, {"a", "b"});
    subclass(list);
    list.InsertColumnsForList(nullptr);
    list.DestroyWindow();
    EXPECT_EQ(list.calls.take(), test::Calls{"save 2"});
    EXPECT_EQ(list.m_arrColumns.GetCount(), 0);
    EXPECT_EQ(list.m_arrOrder.GetCount(), 0);
    EXPECT_EQ(list.m_arrWidth.GetCount(), 0);
    EXPECT_EQ(list.m_ToolTip.m_hWnd, nullptr);
}

TEST_F(Life, DestructorTakesTheWindowAndTheKeywordsWithIt) {
    HWND window;
    {
        TestList list;
        subclass(list);
        window = list.m_hWnd;
        CStringArray keywords;
        keywords.Add("BUY");
        list.SetDefaultAttributes(2, &keywords, nullptr);
        list.m_mapDealSlipProfiles.SetAt("p", new CArray<int, int>);
    }
    EXPECT_FALSE(::IsWindow(window));
}

// The reflected message would be forwarded to the owner, which reflects it, for ever.
TEST_F(Life, AnOwnerThatDoesNotPaintIsNoEndlessLoop) {
    TestList list;
    owner.paints = false;
    addColumns(list, {"a"});
    subclass(list);
    list.InsertColumnsForList(nullptr);
    addRows(list, 3);
    pumpUntilIdle();
    list.drawItems = 0;
    list.RedrawWindow();
    EXPECT_EQ(list.drawItems, 2 * 3);
}

TEST_F(Life, OpeningAndClosingGivesEverythingBack) {
    test::HandleCounts start;
    for (int round = 0; round < 30; ++round) {
        if (round == 10) start = test::countHandles();
        TestList list;
        addColumns(list, {"a", "b", "c"});
        create(list);
        list.InsertColumnsForList(nullptr);
        addRows(list, 5);
        pumpUntilIdle();
    }
    EXPECT_EQ(test::countHandles(), start);
}

}  // namespace
