// Tool tips of a grid's cells: rows that tick, move and go while a tip shows, and texts as the grid paints them.
#include "support/CellTip.h"
#include "windows/grid/GridFixture.h"

namespace grid_tests {
namespace {

using test::lookAgain;
using test::restAt;
using test::restOn;
using test::shownTip;
using test::tipText;

const std::string kLong = "a text that is longer than its cell";

// Rows a to f; column 1 is long in all, and starts with the row's name.
struct GridCellTips : GridFixture {
    void SetUp() override {
        grid = std::make_unique<CFilterListCtrl>();
        createOpti(*grid, {{"name"}, {"text"}, {"number", 60, 1, 2}, {"icon", 60, kFormatHeaderImage}});
        grid->m_bCellToolTips = 1;
    }
    void fill(const std::string& names) {
        for (const char name : names) row({name})->cells[1] = name + kLong;
        GridFixture::fill(*grid, names);
        pumpUntilIdle();
    }
    void TearDown() override {
        if (grid && grid->m_hWnd) grid->DestroyWindow();
        GridFixture::TearDown();
    }
    void endBatch() {
        processEndofBatchUpdates();
        lookAgain(*grid);
    }
    // So that a cell is looked at anew.
    void leave() { restOn(*grid, 0, 0); }

    std::unique_ptr<CFilterListCtrl> grid;
};

TEST_F(GridCellTips, FollowTheCellUnderTheMouse) {
    for (const bool reverse : {false, true}) {
        SCOPED_TRACE(reverse);
        grid->DeleteAllItems();
        grid->SetReverseDisplay(reverse);
        fill("abcdef");
        const auto under = [&] { return rowOf(grid->GetItemData(2)); };
        leave();
        ASSERT_EQ(restOn(*grid, 2, 1), under()->cells[1]);
        const CRect before = test::tipRect();
        under()->cells[1] = "a tick brought a text that is still longer than its cell, and than the one before";
        grid->UpdateRow(under());
        endBatch();
        EXPECT_EQ(tipText(), under()->cells[1]);
        const CRect after = test::tipRect();
        EXPECT_EQ(after.TopLeft(), before.TopLeft());
        EXPECT_GT(after.Width(), before.Width());
        EXPECT_TRUE(pumpFor([&] {
            under()->cells[1] = "by itself it follows too, " + kLong;
            grid->UpdateRow(under());
            return tipText() == under()->cells[1];
        }));

        const Row* const former = under();
        grid->DeleteRow(under(), false);
        endBatch();
        ASSERT_NE(under(), former);
        EXPECT_EQ(tipText(), under()->cells[1]) << "of the row that is there now";
        row("x")->cells[1] = "short";
        grid->AddRow(row("x"), false);
        grid->AddRow(row("y"), false);
        grid->AddRow(row("z"), false);
        endBatch();
        EXPECT_EQ(shownTip() == nullptr, reverse) << "the new rows, without long texts, came under the mouse";
        leave();
        ASSERT_NE(restOn(*grid, reverse ? 3 : 2, 1), "");
        grid->DeleteAllItems();
        lookAgain(*grid);
        EXPECT_EQ(shownTip(), nullptr) << "no row is left";
    }
}

TEST_F(GridCellTips, SayWhatTheGridPaints) {
    fill("ab");
    row("a")->cells[2] = "123456789012345.25";
    row("a")->cells[3] = kLong;
    row("b")->cells[2] = "12";
    EXPECT_EQ(restOn(*grid, 0, 2), "123,456,789,012,345.25");
    EXPECT_EQ(restOn(*grid, 1, 2), "") << "it shows whole";
    EXPECT_EQ(restOn(*grid, 0, 3), "") << "a column of icons shows no text";
    int order[] = {1, 0, 2, 3};
    grid->SetColumnOrderArray(4, order);
    EXPECT_EQ(restAt(*grid, {30, test::middleOf(*grid, 0, 1).y}), "a" + kLong) << "the column was dragged to the left";
    EXPECT_LT(test::tipInk().x, grid->GetColumnWidth(1));
    row("b")->cells[1] = "two\nlines";
    EXPECT_EQ(restOn(*grid, 1, 1), "two\nlines");
    grid->SetNoOfLinesPerRow(2);
    grid->SetFont(grid->GetFont());
    EXPECT_EQ(restOn(*grid, 1, 1), "") << "the row has room for both";
    grid->MoveWindow(0, 0, 500, 200);
    grid->SetColumnWidth(2, 250);
    EXPECT_EQ(restOn(*grid, 0, 2), "");
    grid->MoveWindow(0, 0, 60 + 60 + 240, 200);
    EXPECT_EQ(restOn(*grid, 0, 2), "123,456,789,012,345.25") << "it ends behind the window";
}

TEST_F(GridCellTips, ShowTheTextWhereTheCellDoes) {
    fill("a");
    CRect label;
    grid->GetSubItemRect(0, 1, LVIR_LABEL, label);
    const CPoint painted = test::inkCorner(*grid, label);
    ASSERT_NE(restAt(*grid, label.CenterPoint()), "");
    EXPECT_EQ(test::tipInk(), painted);
}

TEST_F(GridCellTips, AHostThatIsAskedMayEndTheGrid) {
    fill("ab");
    quor::sendMouseMove(*grid, test::middleOf(*grid, 0, 1));
    pumpUntilIdle();
    owner.asked = 0;
    owner.onText = [this](DWORD_PTR, int) { grid->DestroyWindow(); };
    lookAgain(*grid);
    EXPECT_EQ(owner.asked, 1);
    EXPECT_EQ(shownTip(), nullptr);
    EXPECT_EQ(grid->m_hWnd, nullptr);
    owner.onText = nullptr;
    SetUp();
    fill("ab");
    ASSERT_NE(restOn(*grid, 0, 1), "");
    owner.onText = [this](DWORD_PTR, int) { grid.reset(); };  // while the tip shows
    const HWND window = *grid;
    ::SendMessageA(window, WM_TIMER, kCellTipTimer, 0);
    EXPECT_EQ(shownTip(), nullptr);
    EXPECT_EQ(grid, nullptr);
    owner.onText = nullptr;
}

}  // namespace
}  // namespace grid_tests
