// Opti-data mode on a real window: what the host may call when, what batches show, and what reaches the control.
#include "windows/grid/GridFixture.h"

#include <stdexcept>

namespace grid_tests {
namespace {

using Opti = GridFixture;

TEST_F(Opti, TheVoidPointerOfARowIsThatOfItsGridPart) {
    CFilterListCtrl grid;
    createOpti(grid);
    Row* const a = row("a");
    void* const part = static_cast<CFilterListBaseData*>(a);
    ASSERT_NE(static_cast<void*>(a), part);
    EXPECT_EQ(grid.AddRow(part, true), 0);
    EXPECT_EQ(grid.UpdateRow(part), 0);
    EXPECT_EQ(grid.GetItemText(0, 0), "a");
    EXPECT_EQ(grid.DeleteRow(part, true), 0);
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

// Rectangles only grow, so it takes a grid without a past: filled while hidden.
TEST_F(Flush, ATickMarksTheRowsThatChangedWhereTheyStandInAScrolledList) {
    CFilterListCtrl fresh;
    createOpti(fresh, false, {{"name", 200}, {"other", 200}});
    fresh.ShowWindow(SW_HIDE);
    for (int i = 0; i < 60; ++i) fresh.AddRow(row("row " + std::to_string(i)), false);
    processEndofBatchUpdates();
    fresh.ShowWindow(SW_SHOW);
    fresh.UpdateWindow();
    fresh.SendMessage(WM_NULL);
    processEndofBatchUpdates();
    fresh.Scroll({40, 200});
    fresh.UpdateWindow();
    for (const char* const name : {"row 16", "row 15"}) fresh.UpdateRow(row(name));
    fresh.SendMessage(WM_TIMER, 4001);
    CRect dirtyRect, client, first, last;
    fresh.GetUpdateRect(&dirtyRect);
    fresh.GetClientRect(&client);
    fresh.GetItemRect(15, &first, LVIR_BOUNDS);
    fresh.GetItemRect(16, &last, LVIR_BOUNDS);
    EXPECT_EQ(dirtyRect, CRect(first.left, first.top, last.right, last.bottom) & client);
    fresh.DeleteAllItems();
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
