// Both roads to a window, the registries, the clipboard, and the end.
#include "ListFixture.h"
#include "quor/list/ListCommands.h"
#include "quor/platform/proving/WindowCapture.h"
#include "support/HandleCounts.h"

#include <algorithm>

using namespace quor::list;

namespace {

using namespace list_tests;

// How often a list stands in the registry of lists, and in that of group lists.
std::string registered(const CCommonListCtrl& list) {
    const auto count = [&](const CArray<CCommonListCtrl*, CCommonListCtrl*>& registry) {
        return std::to_string(std::count(registry.GetData(), registry.GetData() + registry.GetCount(), &list));
    };
    return count(CCommonListCtrl::g_listRegistry) + " " + count(CCommonListCtrl::g_groupListRegistry);
}

using Life = ListFixture;

TEST_F(Life, EveryRoadEndsOnTheSameLivingControl) {
    const std::function<void(CCommonListCtrl&)> roads[] = {
        [&](CCommonListCtrl& made) { create(made); },
        [&](CCommonListCtrl& made) { EXPECT_EQ(made.CreateEx(0, kListStyle, kListRect, &owner, kListId), 0); },
        [&](CCommonListCtrl& taken) { subclass(taken); },
        [&](CCommonListCtrl& taken) { subclass(taken, kListStyle | LVS_OWNERDRAWFIXED); },
    };
    WindowPicture first;
    for (const auto& take : roads) {
        SCOPED_TRACE(&take - roads);
        CFont tall;
        tall.CreatePointFont(300, "Tahoma");
        TestList shown;
        addColumns(shown, {"Symbol", "Price", "Qty"});
        take(shown);
        shown.InsertColumnsForList(nullptr);
        addRows(shown, 6);
        owner.drawn = 0;
        pumpUntilIdle();
        EXPECT_GE(owner.drawn, 6);
        EXPECT_EQ(shown.GetExtendedStyle() & 0x30, 0x30u);
        EXPECT_EQ(registered(shown), "1 0");
        const CImageList* const images = shown.GetHeaderCtrl()->GetImageList();
        EXPECT_EQ(images ? images->GetImageCount() : 0, 3);
        WindowPicture picture;
        ASSERT_TRUE(quorCaptureClientArea(shown.m_hWnd, picture));
        if (first.pixels.empty()) first = picture;
        EXPECT_TRUE(picture.pixels == first.pixels);
        CRect plain, row;
        shown.SetFont(&tall);
        shown.GetItemRect(0, plain, LVIR_BOUNDS);
        owner.extraRowHeight = 7;  // shows that the control asks its owner
        shown.SetFont(&tall);
        shown.GetItemRect(0, row, LVIR_BOUNDS);
        EXPECT_EQ(row.Height(), plain.Height() + std::exchange(owner.extraRowHeight, 0u));
    }
}

TEST_F(Life, StartRunsOncePerWindowAndItsEndEmptiesTheList) {
    EXPECT_EQ(list.Create(WS_CHILD | LVS_REPORT, kListRect, nullptr, kListId), 0) << "without a window, too";
    EXPECT_EQ(registered(list), "0 0");
    start(list);
    list.SetTextColor(1);
    list.CommonInitList();
    EXPECT_EQ(list.GetTextColor(), 1u);
    list.DestroyWindow();
    EXPECT_EQ(list.m_arrColumns.GetCount() + list.m_arrOrder.GetCount() + list.m_arrWidth.GetCount(), 0);
    create(list);
    EXPECT_EQ(list.GetTextColor(), 65280u);
}

TEST_F(Life, SelectedRowsGoToTheClipboardWithTheirTrailingTabs) {
    const auto clipboard = [] {
        if (!::OpenClipboard(nullptr)) return std::string("not open");
        const HANDLE block = ::GetClipboardData(CF_TEXT);
        const std::string text = block ? static_cast<const char*>(::GlobalLock(block)) : "no text";
        if (block) ::GlobalUnlock(block);
        ::CloseClipboard();
        return text;
    };
    start(list, {"Symbol", "Price"});
    addRows(list, 40);
    list.SetItemText(39, 1, "39.5");
    list.SetItemState(2, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(list.SetRowFocus(39), 1);
    EXPECT_GT(list.GetTopIndex(), 0) << "the focused row is in view";
    list.SendMessage(WM_COMMAND, kCopyToClipboard);
    EXPECT_EQ(clipboard(), "r2\t\t\r\nr39\t39.5\t\r\n");
    list.SetItemState(-1, 0, LVIS_SELECTED);
    list.BuildTable();
    EXPECT_EQ(clipboard(), "") << "no selection puts an empty text there";
    ASSERT_TRUE(::OpenClipboard(frame().m_hWnd));
    EXPECT_EQ(list.CopyToClipboard(), 0) << "another window holds it";
    ::CloseClipboard();
    EXPECT_EQ(list.CopyToClipboard(), 1);
}

// The reflected message would be forwarded to the owner, which reflects it, for ever.
TEST_F(Life, AnOwnerThatDoesNotPaintIsNoEndlessLoop) {
    owner.paintsRow = nullptr;
    start(list);
    addRows(list, 3);
    pumpUntilIdle();
    owner.drawn = 0;
    list.RedrawWindow();
    EXPECT_EQ(owner.drawn, 2 * 3);
}

// On all heaps of the process.
std::size_t bytesAllocated() {
    HANDLE heaps[64];
    const DWORD count = std::min<DWORD>(::GetProcessHeaps(64, heaps), 64);
    std::size_t bytes = 0;
    for (DWORD i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY entry{};
        while (::HeapWalk(heaps[i], &entry)) bytes += entry.wFlags & PROCESS_HEAP_ENTRY_BUSY ? entry.cbData : 0;
    }
    return bytes;
}

TEST_F(Life, OpeningAndClosingGivesEverythingBack) {
    constexpr int kMany = 50'000;  // so that an array that stays outweighs all else
    CStringArray keywords;
    CArray<DWORD, DWORD> colours;
    keywords.SetSize(kMany);
    colours.SetSize(kMany);
    test::HandleCounts handles;
    std::size_t bytes = 0;
    for (int round = 0; round < 30; ++round) {
        if (round == 10) handles = test::countHandles(), bytes = bytesAllocated();
        TestList opened;
        start(opened);
        addRows(opened, 5);
        opened.SetDefaultAttributes(2, &keywords, &colours);
        opened.SetDefaultProperties(&keywords, &colours, &colours);
        auto* const places = new CArray<int, int>;
        places->SetSize(kMany);
        opened.m_mapDealSlipProfiles.SetAt("p", places);
        pumpUntilIdle();
    }
    EXPECT_EQ(test::countHandles(), handles);
    EXPECT_LT(bytesAllocated(), bytes + kMany * sizeof(DWORD));
}

}  // namespace
