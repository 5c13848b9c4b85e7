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

TEST_P(ClassicOnEachRoad, StepsEndInThePictureOfTheTable) {
    struct Step {
        const char* fact;
        bool reverse;
        const char* rows;
        std::function<int(CFilterListCtrl&)> operation;
        int result;
        const char* picture;
    };
    const auto data = [this](const char* name) { return dataOf(row(name)); };
    const Step table[] = {
        {"an insertion in the middle", false, "abc",
         [&](auto& grid) {
             const int mapIndex = grid.InsertItem(1, "");
             grid.SetItemData(1, data("x"));
             return mapIndex;
         },
         1, "axbc"},
        {"data beyond the rows", false, "ab", [&](auto& grid) { return grid.SetItemData(7, data("x")); }, 0, "ab"},
        {"delete by visual index", true, "abc", [](auto& grid) { return grid.DeleteItem(0); }, 1, "ba"},
        {"delete beyond the rows", false, "ab", [](auto& grid) { return grid.DeleteItem(2); }, 0, "ab"},
        {"delete by map index", true, "abc", [](auto& grid) { return grid.DeleteMapItem(0); }, 1, "cb"},
        {"delete by a map index out of range", false, "ab", [](auto& grid) { return grid.DeleteMapItem(-1); }, 0, "ab"},
        {"repaint a shown row", false, "ab", [](auto& grid) { return grid.RepaintMapItem(1); }, 0, "ab"},
        {"repaint beyond the rows", false, "ab", [](auto& grid) { return grid.RepaintDisplayItem(2); }, 0, "ab"},
        {"repaint by data", false, "ab",
         [&](auto& grid) { return grid.InvalidateSetItemData(reinterpret_cast<void*>(data("b"))); }, 1, "ab"},
        {"repaint by data that no row has", false, "ab",
         [&](auto& grid) { return grid.InvalidateSetItemData(reinterpret_cast<void*>(data("z"))); }, 0, "ab"},
        {"a text is the host's", false, "ab", [](auto& grid) { return grid.SetItemText(0, 0, "other"); }, 1, "ab"},
        {"opti calls are refused", false, "ab", [this](auto& grid) { return grid.AddRow(row("x"), true); }, -1, "ab"},
        {"a rebuild", true, "abc",
         [](auto& grid) {
             grid.PopulateList();
             return grid.GetItemCount();
         },
         3, "cba"},
        {"emptying", false, "abc", [](auto& grid) { return grid.DeleteAllItems(); }, 1, ""},
    };
    for (const Step& step : table) {
        SCOPED_TRACE(step.fact);
        CFilterListCtrl grid;
        createClassic(grid, step.reverse);
        append(grid, step.rows);
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

// The repaint timer has the auto-sort timer's id, and is over after one shot.
TEST_F(Classic, ADeletedRowRepaintsTheWholeAreaAfterHalfASecond) {
    CFilterListCtrl grid;
    createClassic(grid);
    append(grid, "abc");
    grid.SendMessage(WM_TIMER, 1);
    pumpUntilIdle();
    grid.DeleteItem(2);
    pumpUntilIdle();
    owner.asked = 0;
    EXPECT_TRUE(pumpFor([this] { return owner.asked >= 2; }, 2000));
    EXPECT_FALSE(::KillTimer(grid, 1));
}

TEST_F(Classic, TypingFindsTheMarkedRow) {
    CFilterListCtrl grid;
    createClassic(grid);
    append(grid, "abc");
    grid.SetSelectionMark(1);
    LVFINDINFO find{};
    find.flags = LVFI_STRING;
    find.psz = "c";
    EXPECT_EQ(grid.FindItem(&find), 1);
}

TEST_F(Classic, TheControlIsAnsweredWithTextAndStateImage) {
    CFilterListCtrl grid;
    createClassic(grid);
    append(grid, "a");
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
}

TEST_F(Classic, LeavingTheStoreEmptiesItAndGivesTheControlBack) {
    CFilterListCtrl grid;
    createClassic(grid);
    append(grid, "abc");
    grid.SetUseFilter(FALSE);
    EXPECT_EQ(grid.GetUseFilter(), 0);
    EXPECT_EQ(grid.GetItemCount(), 0);
    EXPECT_EQ(grid.GetDisplayCount(), 0);
}

TEST_F(Classic, WithoutAStoreTheGridIsAPlainList) {
    CFilterListCtrl grid;
    create(grid, {{"name"}, {"other"}}, CRect(0, 0, 300, 200), WS_CHILD | WS_VISIBLE | LVS_REPORT);
    EXPECT_EQ(grid.InsertItem(0, "first"), 0);
    EXPECT_EQ(grid.InsertItem(1, "second"), 1);
    EXPECT_TRUE(grid.SetItemData(1, 42));
    EXPECT_TRUE(grid.SetItemText(1, 1, "cell"));
    EXPECT_EQ(grid.GetItemData(1), 42u);
    EXPECT_EQ(grid.GetItemText(1, 1), "cell");
    EXPECT_EQ(grid.GetItemCount(), 2);
    EXPECT_EQ(grid.GetDisplayCount(), 0);
    owner.draws = true;
    grid.RedrawWindow();
    EXPECT_EQ(owner.drawItems, 2);
    EXPECT_TRUE(grid.DeleteItem(0));
    EXPECT_EQ(grid.GetItemText(0, 0), "second");
    EXPECT_TRUE(grid.DeleteAllItems());
    EXPECT_EQ(grid.GetItemCount(), 0);
}

// ---- Texts and columns

TEST_F(Classic, TextsComeByColumnWhereverItStands) {
    CFilterListCtrl grid;
    create(grid, {{"name"}, {"bid"}, {"ask"}});
    grid.SetUseFilter(TRUE);
    append(grid, "a");
    row("a")->cells = {{1, "bid text"}, {2, "ask text"}};
    CArray<int, int> places, widths;  // bid first, then name; ask hidden
    for (const int columnIndex : {1, 0}) places.Add(columnIndex), widths.Add(50);
    grid.LoadHeaders(&places, &widths);
    EXPECT_EQ(grid.GetItemText(0, 0), "bid text");
    EXPECT_EQ(grid.GetItemText(0, 1), "a");
    EXPECT_EQ(grid.GetItemText(0, 2, true, false), "ask text");
    EXPECT_EQ(grid.GetItemText(1, 0), "");
    EXPECT_EQ(grid.GetItemText(-1, 0), "");
    EXPECT_EQ(grid.GetOriginalColNo(0), 1);
    EXPECT_EQ(grid.GetOriginalColNo(7), 1);
    EXPECT_EQ(grid.GetOriginalColNo(1), 0);
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
}

TEST_P(ClassicOnEachRoad, TheFilterBarGoesOnAndOff) {
    CFilterListCtrl grid;
    createClassic(grid);
    const auto bar = [&] { return (grid.GetHeaderCtrl()->GetStyle() & HDS_FILTERBAR) != 0; };
    EXPECT_FALSE(bar());
    const int width = grid.GetColumnWidth(0);
    const auto height = [&] {
        CRect rect;
        grid.GetHeaderCtrl()->GetWindowRect(rect);
        return rect.Height();
    };
    const int plainHeight = height();
    grid.PutListFilter();
    EXPECT_TRUE(bar());
    EXPECT_GT(height(), plainHeight);
    pumpUntilIdle();
    EXPECT_EQ(CWnd::GetFocus()->GetParent()->m_hWnd, grid.GetHeaderCtrl()->m_hWnd) << "the first field is open";
    EXPECT_EQ(grid.GetHeaderCtrl()->SetFilterChangeTimeout(500), 500);
    grid.PutListFilter();
    EXPECT_FALSE(bar());
    EXPECT_EQ(height(), plainHeight);
    EXPECT_EQ(grid.GetColumnWidth(0), width);
}

TEST_P(ClassicOnEachRoad, TheHeaderIsTheGridsOwnFromTheStart) {
    CFilterListCtrl grid;
    createClassic(grid);
    EXPECT_TRUE(grid.GetHeaderCtrl()->IsKindOf(RUNTIME_CLASS(CColorHeaderCtrl)));
    EXPECT_EQ(grid.SubclassHeader(), 0);
    CFilterListCtrl windowless;
    windowless.SetUseFilter(TRUE);
    windowless.PutListFilter();
    EXPECT_EQ(fakeHost().count("quoru_call_LoadLibrary UxTheme.dll"), 1);
}

// Both run by timer 1.
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
        append(grid, "a");
        change();
        grid.timers = 0;
        EXPECT_TRUE(pumpFor([&] { return grid.timers > 0; }, 2 * kRepaintDelay)) << &change - cases;
        EXPECT_FALSE(dirty(grid).IsRectEmpty()) << &change - cases;
    }
}

}  // namespace
}  // namespace grid_tests
