// What stands on the screen, pixel by pixel where it matters. The host's shaded fill paints its first colour flat.
#include "support/HandleCounts.h"
#include "windows/grid/GridFixture.h"

using namespace quor::grid;

namespace grid_tests {
namespace {

constexpr COLORREF listBack = 0x000000, listText = 0x00FF00;

class Paint : public GridFixture {
protected:
    void createGrid(std::vector<Column> columns = {{"name"}}) { createOpti(grid, std::move(columns)); }
    void redraw() {
        pumpUntilIdle();
        fakeHost().calls.clear();
        owner.asked = owner.drawItems = 0;
        grid.RedrawWindow();
    }
    CRect bounds(int visual) {
        CRect rect;
        grid.GetItemRect(visual, &rect, LVIR_BOUNDS);
        return rect;
    }
    CRect cell(int visual, int place) {
        CRect rect;
        grid.GetSubItemRect(visual, place, LVIR_LABEL, rect);
        return rect;
    }
    COLORREF pixel(int x, int y) {
        CClientDC dc(&grid);
        return ::GetPixel(dc, x, y);
    }
    // Its last pixel before the right edge: beyond every text of these tests.
    static COLORREF ground(CFilterListCtrl& of, int visual) {
        CRect rect;
        of.GetItemRect(visual, &rect, LVIR_BOUNDS);
        return ::GetPixel(CClientDC(&of), rect.right - 1, rect.bottom - 1);
    }
    COLORREF ground(int visual) { return ground(grid, visual); }
    // First and last x of a rectangle with pixels of this colour; -1 without any.
    std::pair<int, int> inked(const CRect& rect, COLORREF color) {
        CClientDC dc(&grid);
        int first = -1, last = -1;
        for (int x = rect.left; x < rect.right; ++x)
            for (int y = rect.top; y < rect.bottom; ++y)
                if (::GetPixel(dc, x, y) == color) last = x, first = first == -1 ? x : first;
        return {first, last};
    }
    // Images of 16 by 17 in these colours.
    void addImages(CImageList& images, std::initializer_list<COLORREF> colors) {
        images.Create(16, 17, ILC_COLOR32, 1, 1);
        for (const COLORREF color : colors) {
            CClientDC dc(&grid);
            CDC memory;
            memory.CreateCompatibleDC(&dc);
            CBitmap bitmap;
            bitmap.CreateCompatibleBitmap(&dc, 16, 17);
            {
                const SelectScope selected(memory, bitmap);
                memory.FillSolidRect(0, 0, 16, 17, color);
            }
            images.Add(&bitmap, static_cast<CBitmap*>(nullptr));
        }
    }
    bool hasInk(const CRect& rect, COLORREF color) { return inked(rect, color).first != -1; }

    CFilterListCtrl grid;
};

using PaintOnEachRoad = test::OnEachRoad<Paint>;
INSTANTIATE_TEST_SUITE_P(, PaintOnEachRoad, test::eachRoad, test::roadName);

TEST_P(PaintOnEachRoad, TheGroundOfARowFollowsTheFlags) {
    struct Case {
        const char* fact;
        std::function<void(CFilterListCtrl&, Row&)> set;
        COLORREF first, second;  // ground of rows 0 and 1
        bool shaded = false;
    };
    const Case table[] = {
        {"the list's own colour", [](auto&, auto&) {}, listBack, listBack},
        {"stripes", [](auto& g, auto&) { g.AlternateRows = true; }, 16381936, 16443110},
        {"grey over all", [](auto& g, auto& r) { g.GreyedOut = true, r.background = 0x123456; }, 0xDCDCDC, 0xDCDCDC},
        {"a checked row", [](auto& g, auto&) { g.SortOnCheckedFlag = true, g.SetCheck(0, 1); }, 0x400040, listBack},
        {"a check without the flag", [](auto& g, auto&) { g.SetCheck(0, 1); }, listBack, listBack},
        {"shades", [](auto& g, auto& r) { g.SetDrawShades(true), r.background = 0x123456; }, 0x123456, listBack, true},
    };
    for (const Case& look : table) {
        SCOPED_TRACE(look.fact);
        CFilterListCtrl own;
        createOpti(own);
        fill(own, "ab");
        row("a")->background = kColorUnset;
        look.set(own, *row("a"));
        pumpUntilIdle();
        fakeHost().calls.clear();
        own.RedrawWindow();
        EXPECT_EQ(ground(own, 0), look.first);
        EXPECT_EQ(ground(own, 1), look.second);
        const std::string shade = "FillShadeRect " + std::to_string(look.first) + " 16777215 0";
        EXPECT_EQ(fakeHost().calls.count(shade) > 0, look.shaded);
        own.DeleteAllItems();
    }
}

TEST_P(PaintOnEachRoad, TheSelectionLooksDifferentWithTheFocus) {
    createGrid();
    fill(grid, "ab*c");
    ::SetFocus(owner);
    redraw();
    EXPECT_EQ(ground(1), 0x7E7E7Eu);
    EXPECT_TRUE(hasInk(cell(1, 0), 0xFFFFFF));
    grid.SetFocus();
    redraw();
    EXPECT_EQ(fakeHost().calls.count("FillShadeRect 14777170 16754236 0"), 1);  // 0xE17B52 to 0xFFA63C
    EXPECT_EQ(ground(1), 0xE17B52u);
    EXPECT_EQ(ground(0), listBack);
    grid.NoSelectionPaint = true;
    redraw();
    EXPECT_EQ(ground(1), listBack);
    EXPECT_TRUE(hasInk(cell(1, 0), listText));
    EXPECT_EQ(fakeHost().calls.take(), test::Calls{});
}

TEST_F(Paint, ADeletedRowIsBlankAndBlankWhenSelected) {
    createGrid();
    fill(grid, "ab*c");
    grid.SetBkColor(0x202020);
    redraw();
    grid.DeleteRow(row("a"), false);
    grid.DeleteRow(row("b"), false);
    redraw();
    EXPECT_EQ(inked(bounds(0), 0x202020), std::pair(int(bounds(0).left), int(bounds(0).right - 1)));
    EXPECT_FALSE(hasInk(bounds(0), listText));
    EXPECT_NE(ground(1), 0x202020u);
    EXPECT_FALSE(hasInk(cell(1, 0), 0xFFFFFF));
    EXPECT_TRUE(hasInk(cell(2, 0), listText));
}

// Which texts are grouped is tested in the core: a grouped one is longer.
TEST_F(Paint, TextsStandAtTheEdgeOfTheirAlignmentInsideTheirCells) {
    createGrid({{"narrow", 30}, {"left", 60}, {"right", 70, 1, 2}, {"centre", 60, 2}, {"none", 60, 5, 2}});
    row("a")->cells = {{0, std::string(300, 'W')}, {1, "IIII"}, {2, "1111"}, {3, "IIII"}, {4, "1111"}};
    fill(grid, "a");
    redraw();
    EXPECT_TRUE(hasInk(cell(0, 0), listText));
    const int left = inked(cell(0, 1), listText).first;
    EXPECT_GE(left, cell(0, 1).left + 3);
    EXPECT_LE(left, cell(0, 1).left + 6);
    const auto [rightFirst, rightLast] = inked(cell(0, 2), listText);
    EXPECT_LT(rightLast, cell(0, 2).right - 3);
    EXPECT_GE(rightLast, cell(0, 2).right - 7);
    {
        CClientDC dc(&grid);
        const SelectScope font(&dc, grid.GetFont());
        EXPECT_GT(rightLast - rightFirst, dc.GetTextExtent("1111").cx);
    }
    for (const int place : {3, 4}) {
        const auto [first, last] = inked(cell(0, place), listText);
        const int slack = (first - cell(0, place).left) - (cell(0, place).right - 1 - last);
        EXPECT_LE(std::abs(slack), 8) << place;  // a text of about 30 in a cell of 60
    }
}

TEST_F(Paint, IconsAndImagesStandInTheirCells) {
    createGrid({{"name", 40}, {"icon", 60, 2048, 1}, {"image", 60, 2048, 8}});
    CImageList images;
    addImages(images, {0x0000FF});
    grid.SetImageList(&images, LVSIL_NORMAL);
    fill(grid, "ab");
    row("a")->icon = 0;  // an image; as an icon handle it cannot be drawn
    redraw();
    EXPECT_TRUE(hasInk(cell(0, 1), listText)) << "says that the icon failed";
    EXPECT_TRUE(hasInk(cell(0, 2), 0x0000FF));
    EXPECT_FALSE(hasInk(bounds(1), 0x0000FF));
    const HICON icon = ::LoadIcon(nullptr, IDI_ERROR);
    row("a")->icon = static_cast<int>(reinterpret_cast<INT_PTR>(icon));
    redraw();
    EXPECT_FALSE(hasInk(cell(0, 1), listText));
    grid.SetImageList(nullptr, LVSIL_NORMAL);
}

// The control keeps no state of a row but selection and focus; it asks the grid for the state image.
TEST_P(PaintOnEachRoad, ACheckImageStandsAtTheLeftOfItsRow) {
    constexpr COLORREF unchecked = 0x0000FF, checked = 0x00FF00;
    createGrid({{"name", 80, 1}});
    CImageList images;
    addImages(images, {unchecked, checked});
    grid.SetImageList(&images, LVSIL_STATE);
    fill(grid, "ab");
    grid.SetCheck(1, 1);
    redraw();
    EXPECT_EQ(pixel(15, bounds(0).bottom - 1), unchecked);
    EXPECT_EQ(pixel(0, bounds(1).top), checked);
    EXPECT_EQ(grid.CListCtrl::GetItemState(0, LVIS_STATEIMAGEMASK), UINT{INDEXTOSTATEIMAGEMASK(2)});
    grid.SetImageList(nullptr, LVSIL_STATE);
}

TEST_F(Paint, WithoutATextOrItsFirstColumnARowStaysAsItWas) {
    createGrid();
    fill(grid, "a");
    redraw();
    row("a")->background = 0x303030;
    for (const int place : {0, 1}) {
        owner.answers = place == 1;
        grid.m_arrOrder.SetAt(0, place);
        grid.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_NOERASE | RDW_UPDATENOW);
        EXPECT_TRUE(hasInk(cell(0, 0), listText) && ground(0) == listBack) << place;
    }
}

TEST_P(PaintOnEachRoad, RowsAreAsHighAsTheirFontAndLinesAskAndRepaintWhereAColumnIsSized) {
    createGrid();
    fill(grid, "ab");
    CFont font;
    font.CreateFont(-20, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, "Arial");
    NMHEADERW drag{};
    drag.hdr.hwndFrom = *grid.GetHeaderCtrl();
    for (const auto& [lines, height] : {std::pair{1, 24}, {2, 48}, {-3, 24}}) {
        grid.SetNoOfLinesPerRow(lines);
        grid.SetFont(&font);
        EXPECT_EQ(bounds(0).Height(), height);
        for (const int code : {HDN_ENDTRACKA, HDN_ENDTRACKW}) {
            drag.hdr.code = static_cast<UINT>(code);
            grid.ValidateRect(nullptr);
            grid.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&drag));
            EXPECT_EQ(grid.GetUpdateRect(nullptr) != FALSE, lines == 2) << code;
        }
    }
    grid.SetFont(nullptr);
}

// Stripes go on below the rows from the top of the page.
TEST_F(Paint, WhatNoRowCoversIsErasedAndRowsAreLeftToThemselves) {
    createGrid();
    grid.AlternateRows = true;
    fill(grid, "ab");
    redraw();
    for (int line = 0; line < 3; ++line)
        EXPECT_EQ(pixel(200, bounds(0).top + line * bounds(0).Height() + 1), line % 2 ? 16443110u : 16381936u) << line;
    grid.AlternateRows = false;
    grid.m_bFillEmptyArea = 1;
    grid.SetBkColor(0x404040);
    redraw();
    EXPECT_EQ(pixel(200, bounds(0).top + 1), 0x404040u);
    EXPECT_EQ(pixel(5, bounds(1).bottom + 20), 0x404040u);
    grid.SetDrawShades(true);
    redraw();
    EXPECT_GT(fakeHost().calls.count("FillShadeRect 4210752 16777215 0"), 2);
}

TEST_F(Paint, CustomDrawPaintsCellsWithBothFlagsAloneAndSelectedOnesFlat) {
    createGrid({{"name", 80, 0}, {"number", 80, 1, 2}});
    grid.ModifyStyle(LVS_OWNERDRAWFIXED, 0);
    row("a")->cells = {{1, "1234567"}};
    fill(grid, "ab*c");
    const auto edge = [&](int visual, int place) {
        return pixel(cell(visual, place).left + 2, cell(visual, place).top + 1);
    };
    row("a")->background = 0x123456;
    ::SetFocus(owner);
    for (const bool mode : {false, true}) {
        for (const int flag : {0, 1}) {
            grid.CustomDrawMode = mode;
            grid.m_bCustomDraw = flag;
            redraw();
            EXPECT_EQ(edge(0, 1) == 0x123456u, mode && flag) << mode << flag;
        }
    }
    EXPECT_EQ(edge(1, 1), 0x7E7E7Eu);
    EXPECT_TRUE(hasInk(cell(1, 0), 0xFFFFFF));
    grid.SetFocus();
    redraw();
    EXPECT_EQ(edge(1, 1), 0xE17B52u);
    EXPECT_EQ(pixel(cell(1, 0).left - 1, cell(1, 0).top + 1), 0xE17B52u) << "the margin of the first cell";
    EXPECT_EQ(fakeHost().calls.take(), test::Calls{}) << "no gradient";
    EXPECT_GE(inked(cell(0, 1), listText).second, cell(0, 1).right - 7);
}

TEST_F(Paint, OpeningAndClosingGridsGivesEverythingBack) {
    CFont font;
    font.CreatePointFont(90, "Arial");
    test::HandleCounts before;
    for (int round = 0; round < 220; ++round) {
        if (round == 20) before = test::countHandles();
        CFilterListCtrl own;
        createOpti(own);
        own.SetFont(&font);
        own.AlternateRows = true;
        fill(own, "ab*!c");
        own.RedrawWindow();
        own.PutListFilter();
        own.DeleteRow(row("b"), false);
        processEndofBatchUpdates();
        own.RedrawWindow();
        own.DeleteAllItems();
        own.DestroyWindow();
        pumpUntilIdle();
    }
    EXPECT_EQ(test::countHandles(), before);
}

}  // namespace
}  // namespace grid_tests
