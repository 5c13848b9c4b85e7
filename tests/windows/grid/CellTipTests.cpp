// Tool tips of a grid's cells: rows that tick, move and go while a tip shows, and texts as the grid paints them.
#include "support/CellTip.h"
#include "windows/grid/GridFixture.h"

#include <algorithm>

namespace grid_tests {
namespace {

using test::lookAgain;
using test::restAt;
using test::restOn;
using test::shownTip;
using test::tipText;

const std::string kLong = "a text that is longer than its cell";

// Where on the screen something is drawn in a part of a window, on the ground that its corner shows.
CRect inkIn(HWND window, const CRect& area) {
    WindowPicture picture;
    quorCaptureClientArea(window, picture);
    const auto pixel = [&](int x, int y) { return picture.pixels[static_cast<std::size_t>(y * picture.width + x)]; };
    CRect ink;
    for (int y = area.top; y < std::min<int>(area.bottom, picture.height); ++y)
        for (int x = area.left; x < std::min<int>(area.right, picture.width); ++x)
            if (pixel(x, y) != pixel(area.left, area.top)) ink.UnionRect(ink, CRect(x, y, x + 1, y + 1));
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&ink), 2);
    return ink;
}

struct GridCellTips : GridFixture {
    void SetUp() override {
        grid = std::make_unique<CFilterListCtrl>();
        createOpti(*grid, {{"name"}, {"text"}, {"number", 60, kFormatRight, 2}, {"icon", 60, kFormatHeaderImage}});
        grid->m_bCellToolTips = 1;
    }
    // Rows by name; the text of each is long, and starts with the name.
    void fill(const std::string& names) {
        for (const char name : names) row({name})->cells[1] = name + kLong;
        GridFixture::fill(*grid, names);
        pumpUntilIdle();
    }
    void TearDown() override {
        grid.reset();
        GridFixture::TearDown();
    }
    void endBatch() {
        processEndofBatchUpdates();
        lookAgain(*grid);
    }
    std::unique_ptr<CFilterListCtrl> grid;
};

TEST_F(GridCellTips, FollowTheCellUnderTheMouse) {
    fill("abcdef");
    const auto under = [&] { return rowOf(grid->GetItemData(2)); };
    ASSERT_EQ(restOn(*grid, 2, 1), under()->cells[1]);
    const CRect before = test::tipRect();
    under()->cells[1] = "a tick brought a text that is still longer than its cell, and than the one before";
    grid->UpdateRow(under());
    EXPECT_TRUE(pumpFor([&] { return tipText() == under()->cells[1]; })) << "by itself";
    EXPECT_EQ(test::tipRect().TopLeft(), before.TopLeft());
    EXPECT_GT(test::tipRect().Width(), before.Width());
    under()->cells[1] = std::string(2000, 'x');
    grid->UpdateRow(under());
    endBatch();
    EXPECT_EQ(test::tipRect().top, before.top) << "a text that is longer than the longest tip";
    grid->DeleteRow(under(), false);
    endBatch();
    EXPECT_EQ(tipText(), "d" + kLong) << "of the row that is there now";
    grid->DeleteAllItems();
    lookAgain(*grid);
    EXPECT_EQ(shownTip(), nullptr) << "no row is left";
}

TEST_F(GridCellTips, StayWhileTheGridKeepsItsRowsInView) {
    grid->SetReverseDisplay(true);
    grid->AnchorView(true);
    fill("abcdefghijklmnopqrstuvwxyz");
    grid->EnsureVisible(25, FALSE);
    ASSERT_EQ(restOn(*grid, 20, 1), "f" + kLong);
    GridFixture::fill(*grid, "123");
    endBatch();
    EXPECT_EQ(tipText(), "f" + kLong);
}

TEST_F(GridCellTips, SayWhatTheGridPaints) {
    fill("ab");
    row("a")->cells[2] = "123456789012345.25";
    row("a")->cells[3] = kLong;
    row("b")->cells[1] = "two\nlines";
    EXPECT_EQ(restOn(*grid, 0, 2), "123,456,789,012,345.25");
    EXPECT_EQ(restOn(*grid, 0, 3), "") << "a column of icons shows no text";
    EXPECT_EQ(restOn(*grid, 1, 1), "two\nlines");
    grid->SetNoOfLinesPerRow(2);
    grid->SetFont(grid->GetFont());
    EXPECT_EQ(restOn(*grid, 1, 1), "") << "the row has room for both";
}

// Each text is painted whole at first.
TEST_F(GridCellTips, ShowTheTextWhereTheCellDoes) {
    row("a")->cells[1] = "a word and another";
    row("a")->cells[2] = "1234567.25";
    GridFixture::fill(*grid, "a");
    constexpr struct {
        const char* what;
        int place, width, window, scrolled;
    } kCases[] = {
        {"cut by its column", 1, 60, 560, 0},
        {"cut by the window's right edge", 1, 240, 120, 0},
        {"at the right of its cell, cut by the window's edge", 2, 180, 450, 0},
        {"cut by the window's left edge", 1, 240, 300, 70},
    };
    for (const auto& [face, height] : {std::pair("Tahoma", 12), std::pair("Tahoma", 24), std::pair("Arial", 19)}) {
        LOGFONT description{};
        description.lfHeight = -height;
        ::lstrcpyA(description.lfFaceName, face);
        CFont font;
        font.CreateFontIndirect(&description);
        grid->SetFont(&font);
        for (const auto& [what, place, width, window, scrolled] : kCases) {
            SCOPED_TRACE(std::string(what) + ", " + face + " " + std::to_string(height));
            grid->MoveWindow(0, 0, 560, 200);
            grid->SetColumnWidth(1, 240);
            grid->SetColumnWidth(2, 180);
            restAt(*grid, {20, 150});
            CRect label;
            grid->GetSubItemRect(0, place, LVIR_LABEL, label);
            const CRect painted = inkIn(*grid, label);
            grid->SetColumnWidth(place, width);
            grid->MoveWindow(0, 0, window, 200);
            grid->Scroll({scrolled, 0});
            ASSERT_NE(restAt(*grid, {std::max(label.left - scrolled, 0L) + 20, label.CenterPoint().y}), "");
            EXPECT_EQ(inkIn(shownTip(), CRect(0, 0, 1000, 1000)).left, painted.left - scrolled);
            grid->Scroll({-scrolled, 0});
        }
    }
}

TEST_F(GridCellTips, AHostThatIsAskedMayEndTheGrid) {
    fill("ab");
    ASSERT_NE(restOn(*grid, 0, 1), "");
    owner.onText = [this](DWORD_PTR, int) { grid.reset(); };
    lookAgain(*grid);
    EXPECT_EQ(shownTip(), nullptr);
    EXPECT_EQ(grid, nullptr);
    owner.onText = nullptr;
}

}  // namespace
}  // namespace grid_tests
