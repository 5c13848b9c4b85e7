// Opti-data mode on a real window: what the host may call when, what batches show, and what reaches the control.
#include "windows/grid/GridFixture.h"

#include <climits>
#include <stdexcept>

namespace grid_tests {
namespace {

class Opti : public GridFixture {};

using OptiOnEachRoad = test::OnEachRoad<Opti>;
INSTANTIATE_TEST_SUITE_P(, OptiOnEachRoad, test::eachRoad, test::roadName);

TEST_P(OptiOnEachRoad, BatchesKeepSelectionAndFocusOnTheirRows) {
    const struct {
        const char* fact;
        bool reverse;
        const char* before;
        const char* deleted;
        const char* added;
        const char* after;
    } table[] = {
        {"rows below a deleted one move up", false, "abc*!d", "a", "", "bc*!d"},
        {"a deleted row leaves the selection", false, "ab*!cd*", "b", "", "acd*!"},
        {"rows on top push the selection down", true, "ab*!c", "", "de", "edcb*!a"},
        {"rows on top and rows gone", true, "ab*!cd*", "a", "e", "ed*cb*!"},
        {"all gone", false, "a*!b", "ab", "", ""},
    };
    for (const auto& batch : table) {
        SCOPED_TRACE(batch.fact);
        CFilterListCtrl grid;
        createOpti(grid, batch.reverse);
        fill(grid, batch.before);
        const std::string focused = batch.before;
        int mapIndex, visual;
        if (const auto at = focused.find('!'); at != std::string::npos) {
            CFilterListCtrl::getRowIndices(row({focused[at - 2]}), &grid, mapIndex, visual);
            grid.SetSelectionMark(visual);
        }
        for (const char* name = batch.deleted; *name; ++name) grid.DeleteRow(row({*name}), false);
        for (const char* name = batch.added; *name; ++name) grid.AddRow(row({*name}), false);
        processEndofBatchUpdates();
        EXPECT_EQ(picture(grid), batch.after);
    }
}

TEST_F(Opti, TheVoidPointerOfARowIsThatOfItsGridPart) {
    CFilterListCtrl grid;
    createOpti(grid);
    Row* const a = row("a");
    ASSERT_NE(static_cast<void*>(a), static_cast<void*>(static_cast<CFilterListBaseData*>(a)));
    EXPECT_EQ(grid.AddRow(static_cast<void*>(static_cast<CFilterListBaseData*>(a)), true), 0);
    EXPECT_EQ(grid.UpdateRow(a), 0);  // the overload converts
    EXPECT_EQ(grid.GetItemText(0, 0), "a");
    EXPECT_EQ(grid.DeleteRow(a, true), 0);
    EXPECT_EQ(grid.DeleteRow(a, true), -1);
}

TEST_F(Opti, OperationsRefuseWhatTheModeOrAMissingCallbackForbids) {
    struct Results {
        int add, update, remove;
        bool operator==(const Results&) const = default;
    };
    const auto tryAll = [this](CFilterListCtrl& grid, Row* aRow) {
        const int added = grid.AddRow(aRow, true);
        return Results{added, grid.UpdateRow(aRow), grid.DeleteRow(aRow, true)};
    };
    CFilterListCtrl plain, classic, silent, opti;
    create(plain);
    createClassic(classic);
    create(silent);
    silent.InitColumnTextRtn(static_cast<ColumnTextMemberCallback>(nullptr));
    silent.SetUseFilter(TRUE);
    silent.SetOptiDataMode(true);
    createOpti(opti);
    const Results refused{-1, 0, -1};
    EXPECT_EQ(tryAll(plain, row("a")), refused);
    EXPECT_EQ(tryAll(classic, row("a")), refused);
    EXPECT_EQ(tryAll(silent, row("a")), (Results{0, 0, 0}));
    EXPECT_EQ(tryAll(opti, nullptr), refused);
    EXPECT_EQ(tryAll(opti, row("a")), (Results{0, 0, 0}));
    EXPECT_EQ(opti.GetItemText(0, 0), "");
}

TEST_F(Opti, ClassicCallsAreRefusedWithABoxAndLeaveTheStore) {
    CFilterListCtrl grid;
    createOpti(grid);
    fill(grid, "ab");
    test::MessageBoxAnswerer boxes;
    EXPECT_EQ(grid.InsertItem(0, "x"), -1);
    EXPECT_EQ(grid.SetItemData(0, 5), 0);
    EXPECT_EQ(boxes.texts(),
              (std::vector<std::string>{"Unexpected Error : InsertItem Should not be called in OptiMode",
                                        "Unexpected Error : SetItemData Should not be called in OptiMode"}));
    EXPECT_EQ(picture(grid), "ab");
    EXPECT_EQ(grid.GetItemCount(), 2);
}

TEST_F(Opti, TheModeIsEnteredOnceAndForGood) {
    CFilterListCtrl grid;
    create(grid);
    grid.SetUseFilter(TRUE);
    const INT_PTR before = CFilterListCtrl::g_OptiDataFilterLists.GetCount();
    grid.SetOptiDataMode(false);
    EXPECT_FALSE(grid.GetOptiDataMode());
    grid.SetOptiDataMode(true);
    grid.SetOptiDataMode(true);
    grid.SetOptiDataMode(false);
    EXPECT_TRUE(grid.GetOptiDataMode());
    EXPECT_EQ(CFilterListCtrl::g_OptiDataFilterLists.GetCount(), before + 1);
    EXPECT_TRUE(grid.GetExtendedStyle() & LVS_EX_DOUBLEBUFFER);
}

TEST_F(Opti, ReserveRefusesWhatNoStoreCanHold) {
    CFilterListCtrl grid;
    createOpti(grid);
    try {
        grid.reserveForItems(-1);
        FAIL() << "no exception";
    } catch (const std::length_error& error) {
        EXPECT_STREQ(error.what(), "vector too long");
    }
    grid.reserveForItems(1000);
    fill(grid, "ab");
    EXPECT_EQ(picture(grid), "ab");
}

// ---- Batches over all grids

TEST_F(Opti, ADestroyedGridLeavesTheRegistryAndItsRows) {
    const INT_PTR before = CFilterListCtrl::g_OptiDataFilterLists.GetCount();
    CFilterListCtrl other;
    createOpti(other);
    {
        CFilterListCtrl grid;
        createOpti(grid);
        fill(grid, "ab");
        grid.DeleteRow(row("a"), false);
    }
    EXPECT_EQ(CFilterListCtrl::g_OptiDataFilterLists.GetCount(), before + 1);
    fill(other, "ba");  // the rows are free for other grids
    EXPECT_EQ(picture(other), "ba");
}

TEST_F(Opti, AGridWithoutAWindowIsPassedOver) {
    CFilterListCtrl windowless, grid;
    createOpti(windowless);
    createOpti(grid);
    windowless.AddRow(row("x"), false);
    windowless.DestroyWindow();
    windowless.AddRow(row("y"), false);
    fill(grid, "a");
    EXPECT_EQ(picture(grid), "a");
    EXPECT_EQ(windowless.GetDisplayCount(), 2);
}

// A host may close a window while a batch end tells it that the selection moved.
TEST_F(Opti, AGridMayGoWhileTheBatchOfAnotherEnds) {
    auto first = std::make_unique<CFilterListCtrl>();
    CFilterListCtrl second, third;
    createOpti(*first);
    createOpti(second);
    createOpti(third);
    fill(second, "a*!b");
    owner.onNotify = [&](const NMHDR& header) {
        if (header.code == static_cast<UINT>(LVN_ITEMCHANGED)) first.reset();
    };
    second.DeleteRow(row("b"), false);
    third.AddRow(row("c"), false);
    processEndofBatchUpdates();
    EXPECT_FALSE(first);
    EXPECT_EQ(picture(second), "a*!");
    EXPECT_EQ(picture(third), "c");
}

// ---- From the tick to the screen

class Flush : public Opti {
protected:
    void SetUp() override {
        createOpti(grid);
        fill(grid, "abcdefgh");
        grid.SendMessage(WM_TIMER, 4001);  // the flush of the rows just added
        pumpUntilIdle();
    }
    CRect dirty() {
        CRect rect;
        grid.GetUpdateRect(&rect);
        return rect;
    }
    CFilterListCtrl grid;
};

TEST_F(Flush, OneTimerPerGridCarriesAllTicksOfItsTime) {
    grid.UpdateRow(row("b"));
    pumpUntilIdle();
    EXPECT_TRUE(dirty().IsRectEmpty()) << "no batch was closed";
    processEndofBatchUpdates();
    grid.UpdateRow(row("d"));
    processEndofBatchUpdates();
    EXPECT_TRUE(dirty().IsRectEmpty()) << "before the timer";
    owner.asked = 0;
    ASSERT_TRUE(pumpFor([this] { return owner.asked >= 3; }, 1000));
    pumpUntilIdle();
    EXPECT_FALSE(::KillTimer(grid, 4001)) << "one shot";
}

// Rectangles only grow, so each case has a grid without a past: filled while hidden.
TEST_F(Flush, ATickMarksTheRowsThatChangedWhereTheyStand) {
    struct Case {
        const char* fact;
        CSize scroll;
        int first, last;
    };
    for (const Case& look : {Case{"at the top", {0, 0}, 1, 3}, Case{"after scrolling down", {0, 200}, 15, 16},
                             Case{"after scrolling right", {40, 0}, 0, 0}}) {
        SCOPED_TRACE(look.fact);
        CFilterListCtrl fresh;
        create(fresh, {{"name", 200}, {"other", 200}});
        fresh.SetUseFilter(TRUE);
        fresh.SetOptiDataMode(true);
        fresh.ShowWindow(SW_HIDE);
        for (int i = 0; i < 60; ++i) fresh.AddRow(row("row " + std::to_string(i)), false);
        processEndofBatchUpdates();
        fresh.ShowWindow(SW_SHOW);
        fresh.UpdateWindow();
        fresh.SendMessage(WM_NULL);
        processEndofBatchUpdates();
        fresh.Scroll(look.scroll);
        fresh.UpdateWindow();
        fresh.UpdateRow(row("row " + std::to_string(look.last)));
        fresh.UpdateRow(row("row " + std::to_string(look.first)));
        fresh.SendMessage(WM_TIMER, 4001);
        CRect dirtyRect, client, header, first, last;
        fresh.GetUpdateRect(&dirtyRect);
        fresh.GetClientRect(&client);
        fresh.GetItemRect(look.first, &first, LVIR_BOUNDS);
        fresh.GetItemRect(look.last, &last, LVIR_BOUNDS);
        EXPECT_EQ(dirtyRect, CRect(first.left, first.top, first.right, last.bottom) & client);
        fresh.DeleteAllItems();
    }
}

// Hiding a parent sends the list nothing, and showing it again nothing but paint.
TEST_F(Flush, ATickAfterAHiddenParentCameBackIsSeen) {
    owner.ShowWindow(SW_HIDE);
    grid.SendMessage(WM_NULL);
    grid.UpdateRow(row("a"));  // finds the window hidden
    processEndofBatchUpdates();
    owner.ShowWindow(SW_SHOW);
    pumpUntilIdle();
    owner.asked = 0;
    grid.UpdateRow(row("c"));
    processEndofBatchUpdates();
    EXPECT_TRUE(pumpFor([this] { return owner.asked > 0; }, 1000));
}

}  // namespace
}  // namespace grid_tests
