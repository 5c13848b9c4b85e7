// Classic mode on a real window, and the grid without a store.
#include "quor/foundation/TimerIds.h"
#include "windows/grid/GridFixture.h"

namespace grid_tests {
namespace {

class Classic : public GridFixture {
protected:
    // The host's idiom: a slot, then its data.
    void append(CFilterListCtrl& grid, const std::string& names) {
        for (const char name : names) {
            grid.InsertItem(0, "");
            grid.SetItemData(0, dataOf(row({name})));
        }
    }
};

using ClassicOnEachRoad = test::OnEachRoad<Classic>;
INSTANTIATE_TEST_SUITE_P(, ClassicOnEachRoad, test::eachRoad, test::roadName);

// What rows and map make of the calls is the store's, and the mixes'.
TEST_P(ClassicOnEachRoad, CallsTellWhetherTheyFoundTheirRow) {
    CFilterListCtrl grid;
    createClassic(grid);
    append(grid, "ab");
    const auto repaint = [&](const char* name) {
        return grid.InvalidateSetItemData(reinterpret_cast<void*>(dataOf(row(name))));
    };
    EXPECT_EQ(grid.InsertItem(1, ""), 1);
    grid.SetItemData(1, dataOf(row("x")));
    EXPECT_EQ(grid.DeleteMapItem(-1), 0);
    EXPECT_EQ(grid.RepaintMapItem(1), 0);
    EXPECT_EQ(repaint("b"), 1);
    EXPECT_EQ(repaint("z"), 0);
    EXPECT_EQ(grid.SetItemText(0, 0, "the host's own"), 1);
    const test::MessageBoxAnswerer boxes;
    EXPECT_EQ(grid.DeleteItem(-1), 0);
    EXPECT_EQ(boxes.texts(), std::vector<std::string>{"Delete item: Item not found"});
    EXPECT_EQ(picture(grid), "axb");

    grid.InitColumnTextRtn(static_cast<ColumnTextMemberCallback>(nullptr));
    EXPECT_EQ(grid.InsertItem(0, "") + grid.SetItemData(0, 1) + grid.SetItemText(0, 0, ""), 0);
    EXPECT_EQ(grid.GetItemText(0, 0), "no data descriptor initialised");
    EXPECT_EQ(grid.DeleteItem(0), 0);
    EXPECT_EQ(picture(grid), "axb") << "without a callback nothing is stored";
    owner.draws = true;
    grid.RedrawWindow();
    EXPECT_EQ(owner.drawItems, 3) << "and the owner paints";
}

TEST_F(Classic, TheControlIsAnsweredWithTextImageAndForTypingTheMarkedRow) {
    CFilterListCtrl grid;
    createClassic(grid);
    append(grid, "ab");
    row("a")->cells[0] = "a long text";
    char text[7];
    LVITEM item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    ASSERT_TRUE(grid.GetItem(&item));
    EXPECT_STREQ(item.pszText, "a long");
    EXPECT_EQ(item.iImage, 0);
    grid.SetSelectionMark(1);
    LVFINDINFO find{};
    find.flags = LVFI_STRING;
    find.psz = "c";
    EXPECT_EQ(grid.FindItem(&find), 1);
}

TEST_F(Classic, WithoutAStoreTheGridIsAPlainList) {
    CFilterListCtrl left, grid;
    createClassic(left);
    append(left, "abc");
    left.SetUseFilter(FALSE);
    EXPECT_EQ(left.GetItemCount() + left.GetDisplayCount(), 0);

    create(grid, {{"name"}, {"value", 60, 0, 1}}, CRect(0, 0, 300, 200), WS_CHILD | WS_VISIBLE | LVS_REPORT);
    grid.InsertItem(0, "first");
    EXPECT_EQ(grid.InsertItem(1, "second"), 1);
    EXPECT_TRUE(grid.SetItemData(1, 42));
    EXPECT_TRUE(grid.SetItemText(1, 1, "7"));
    EXPECT_EQ(grid.GetItemData(1), 42u);
    EXPECT_EQ(grid.GetItemText(1, 1), "7");
    grid.SortOn(1, 1);
    EXPECT_EQ(grid.GetItemText(0, 0), "second") << "the base list's sort, where a new column falls";
    owner.draws = true;
    grid.RedrawWindow();
    EXPECT_EQ(owner.drawItems, 2);
    EXPECT_TRUE(grid.DeleteItem(0));
    EXPECT_EQ(grid.GetItemText(0, 0), "first");
}

int plainText(DWORD_PTR, int columnIndex, CString& text, COLORREF&, COLORREF&, int&) {
    text.Format("plain %d", columnIndex);
    return 1;
}

TEST_F(Classic, CallbacksWinInTheirOrder) {
    CFilterListCtrl grid;
    createClassic(grid);
    append(grid, "a");
    grid.InitColumnTextRtn(&plainText);
    EXPECT_EQ(grid.GetItemText(0, 0), "a") << "the member wins";
    EXPECT_EQ(grid.GetItemText(0, 0, true, true), "a") << "no export callback";
    grid.InitColumnTextRtnForExcel(static_cast<ExportTextMemberCallback>(&Owner::exportText));
    EXPECT_EQ(grid.GetItemText(0, 0, true, true), "export a");
    EXPECT_EQ(grid.GetItemText(0, 0, true, false), "a");
    EXPECT_EQ(grid.GetItemText(0, 5, true, false), "") << "a user column has no formula yet";
    grid.InitColumnTextRtn(static_cast<ColumnTextMemberCallback>(nullptr));
    EXPECT_EQ(grid.GetItemText(0, 0), "plain 0");
    EXPECT_EQ(grid.CheckForFilteredData(dataOf(row("a"))), 1);
    EXPECT_EQ(grid.GetOriginalColNo(0), 0);
    EXPECT_EQ(grid.GetOriginalColNo(7), 1) << "not on screen";
    EXPECT_EQ(grid.GetItemText(1, 0), "") << "no such row";
}

// Both run by timer 1. The repaint is asked for by a row that comes, or goes, and is over after one shot.
TEST_F(Classic, AutoSortLeavesAPendingRepaintPending) {
    struct TimedGrid : CFilterListCtrl {
        int timers = 0;
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            timers += message == WM_TIMER && wParam == kRepaintTimer;
            return CFilterListCtrl::WindowProc(message, wParam, lParam);
        }
    } grid;
    createClassic(grid);
    const std::function<void()> cases[] = {[&] { grid.KillAutoSortTimer(); }, [&] { grid.InitializeAutoSort(); },
                                           [&] { grid.m_bAutoSort = 1, grid.InitializeAutoSort(); },
                                           [&] { grid.KillAutoSortTimer(); }};
    for (const auto& change : cases) {
        grid.GetDisplayCount() == 0 ? append(grid, "a") : static_cast<void>(grid.DeleteItem(0));
        change();
        grid.timers = 0;
        EXPECT_TRUE(pumpFor([&] { return grid.timers > 0; }, 2 * kRepaintDelay)) << &change - cases;
        EXPECT_TRUE(grid.GetUpdateRect(nullptr)) << &change - cases;
    }
    EXPECT_FALSE(grid.KillTimer(kRepaintTimer));
}

}  // namespace
}  // namespace grid_tests
