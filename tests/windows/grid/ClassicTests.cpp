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
    static CRect dirty(CFilterListCtrl& grid) {
        CRect rect;
        grid.GetUpdateRect(&rect);
        return rect;
    }
};

using ClassicOnEachRoad = test::OnEachRoad<Classic>;
INSTANTIATE_TEST_SUITE_P(, ClassicOnEachRoad, test::eachRoad, test::roadName);

// What each call answers; what rows and map make of it is the store's, and the mixes'.
TEST_P(ClassicOnEachRoad, StepsEndInThePictureOfTheTable) {
    struct Step {
        const char* fact;
        std::function<int(CFilterListCtrl&)> operation;
        int result;
        const char* picture;
    };
    const auto data = [this](const char* name) { return dataOf(row(name)); };
    const auto repaint = [&](auto& grid, const char* name) {
        return grid.InvalidateSetItemData(reinterpret_cast<void*>(data(name)));
    };
    const Step table[] = {
        {"an insertion in the middle",
         [&](auto& grid) {
             const int mapIndex = grid.InsertItem(1, "");
             grid.SetItemData(1, data("x"));
             return mapIndex;
         },
         1, "axb"},
        {"delete by a map index out of range", [](auto& grid) { return grid.DeleteMapItem(-1); }, 0, "ab"},
        {"repaint a shown row", [](auto& grid) { return grid.RepaintMapItem(1); }, 0, "ab"},
        {"repaint by data", [&](auto& grid) { return repaint(grid, "b"); }, 1, "ab"},
        {"repaint by data that no row has", [&](auto& grid) { return repaint(grid, "z"); }, 0, "ab"},
        {"a text is the host's", [](auto& grid) { return grid.SetItemText(0, 0, "other"); }, 1, "ab"},
    };
    for (const Step& step : table) {
        SCOPED_TRACE(step.fact);
        CFilterListCtrl grid;
        createClassic(grid);
        append(grid, "ab");
        EXPECT_EQ(step.operation(grid), step.result);
        EXPECT_EQ(picture(grid), step.picture);
    }
}

TEST_F(Classic, DeletingWhatIsNotThereSaysSo) {
    CFilterListCtrl grid;
    createClassic(grid);
    append(grid, "a");
    test::MessageBoxAnswerer boxes;
    EXPECT_EQ(grid.DeleteItem(-1), 0);
    EXPECT_EQ(boxes.texts(), std::vector<std::string>{"Delete item: Item not found"});
    EXPECT_EQ(picture(grid), "a");
}

TEST_F(Classic, WithoutACallbackNothingIsStored) {
    CFilterListCtrl grid;
    createClassic(grid);
    append(grid, "a");
    grid.InitColumnTextRtn(static_cast<ColumnTextMemberCallback>(nullptr));
    EXPECT_EQ(grid.InsertItem(0, ""), 0);
    EXPECT_EQ(grid.SetItemData(0, 1), 0);
    EXPECT_EQ(grid.SetItemText(0, 0, ""), 0);
    EXPECT_EQ(grid.GetItemText(0, 0), "no data descriptor initialised");
    EXPECT_EQ(grid.GetDisplayCount(), 1);
    EXPECT_EQ(grid.DeleteItem(0), 0);
}

TEST_F(Classic, TheControlIsAnsweredWithTextStateImageAndForTypingTheMarkedRow) {
    CFilterListCtrl grid;
    createClassic(grid);
    append(grid, "ab");
    row("a")->cells[0] = "a long text";
    char text[7];
    LVITEM item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_STATE;
    item.stateMask = LVIS_STATEIMAGEMASK;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    ASSERT_TRUE(grid.GetItem(&item));
    EXPECT_STREQ(item.pszText, "a long");
    EXPECT_EQ(item.iImage, 0);
    EXPECT_EQ(item.state, 8192u);
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
    EXPECT_EQ(grid.InsertItem(0, "first"), 0);
    EXPECT_EQ(grid.InsertItem(1, "second"), 1);
    EXPECT_TRUE(grid.SetItemData(1, 42));
    EXPECT_TRUE(grid.SetItemText(1, 1, "7"));
    EXPECT_EQ(grid.GetItemData(1), 42u);
    EXPECT_EQ(grid.GetItemText(1, 1), "7");
    EXPECT_EQ(grid.GetItemCount(), 2);
    EXPECT_EQ(grid.GetDisplayCount(), 0);
    grid.SortOn(1, 1);
    EXPECT_EQ(grid.GetItemText(0, 0), "second") << "the base list's sort, where a new column falls";
    owner.draws = true;
    grid.RedrawWindow();
    EXPECT_EQ(owner.drawItems, 2);
    EXPECT_TRUE(grid.DeleteItem(0));
    EXPECT_EQ(grid.GetItemText(0, 0), "first");
    EXPECT_TRUE(grid.DeleteAllItems());
    EXPECT_EQ(grid.GetItemCount(), 0);
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
        EXPECT_FALSE(dirty(grid).IsRectEmpty()) << &change - cases;
    }
    EXPECT_FALSE(grid.KillTimer(kRepaintTimer));
}

}  // namespace
}  // namespace grid_tests
