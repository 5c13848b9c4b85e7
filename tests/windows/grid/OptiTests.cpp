// Opti-data mode on a real window: what the host may call when, what batches show, and what reaches the control.
#include "quor/foundation/TimerIds.h"
#include "windows/grid/GridFixture.h"

#include <stdexcept>

namespace grid_tests {
namespace {

using Opti = GridFixture;

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

    void* const part = static_cast<CFilterListBaseData*>(row("b"));
    ASSERT_NE(static_cast<void*>(row("b")), part);
    opti.AddRow(part, true);
    EXPECT_EQ(picture(opti), "b") << "the void pointer of a row is that of its grid part";
    EXPECT_EQ(opti.UpdateRow(part), 0);
    EXPECT_EQ(opti.DeleteRow(part, true), 1);
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
}

TEST_F(Opti, TheModeIsEnteredOnceAndForGoodAndReservesWhatAStoreCanHold) {
    CFilterListCtrl grid;
    create(grid);
    grid.SetUseFilter(TRUE);
    const INT_PTR before = CFilterListCtrl::g_OptiDataFilterLists.GetCount();
    for (const bool asked : {true, true, false}) grid.SetOptiDataMode(asked);
    EXPECT_TRUE(grid.GetOptiDataMode());
    EXPECT_EQ(CFilterListCtrl::g_OptiDataFilterLists.GetCount(), before + 1);
    EXPECT_TRUE(grid.GetExtendedStyle() & LVS_EX_DOUBLEBUFFER);
    EXPECT_THROW(grid.reserveForItems(-1), std::length_error);
    grid.reserveForItems(1000);
}

// ---- Batches over all grids

TEST_F(Opti, AGridWithoutAWindowIsPassedOver) {
    CFilterListCtrl windowless, grid;
    createOpti(windowless);
    createOpti(grid);
    windowless.DestroyWindow();
    windowless.AddRow(row("y"), false);
    fill(grid, "a");
    EXPECT_EQ(picture(grid), "a");
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

// Hiding a parent sends the list nothing, and showing it again nothing but paint.
TEST_F(Opti, OneTimerPerGridCarriesAllTicksOfItsTimeAlsoAfterAHiddenParentCameBack) {
    CFilterListCtrl grid;
    createOpti(grid);
    fill(grid, "abcdefgh");
    grid.SendMessage(WM_TIMER, kFlushTimer);  // the flush of the rows just added
    for (const bool wasHidden : {false, true}) {
        SCOPED_TRACE(wasHidden);
        if (wasHidden) {
            owner.ShowWindow(SW_HIDE);
            grid.SendMessage(WM_NULL);
            grid.UpdateRow(row("a"));  // finds the window hidden
            processEndofBatchUpdates();
            owner.ShowWindow(SW_SHOW);
        }
        pumpUntilIdle();
        grid.UpdateRow(row("b"));
        pumpUntilIdle();
        EXPECT_FALSE(grid.GetUpdateRect(nullptr)) << "no batch was closed";
        processEndofBatchUpdates();
        grid.UpdateRow(row("d"));
        processEndofBatchUpdates();
        EXPECT_FALSE(grid.GetUpdateRect(nullptr)) << "before the timer";
        owner.asked = 0;
        ASSERT_TRUE(pumpFor([this] { return owner.asked >= 3; }, 1000));
        pumpUntilIdle();
        EXPECT_FALSE(::KillTimer(grid, kFlushTimer)) << "one shot";
    }
}

}  // namespace
}  // namespace grid_tests
