// What a market watch looks like: fonts, colours, what no row covers, widths, the check box, and who is painted when.
#include "MarketWatchFixture.h"
#include "quor/list/ListCommands.h"
#include "support/Canvas.h"
#include "support/CellTip.h"
#include "windows/list/PictureMix.h"

namespace {

using namespace watch_tests;

constexpr COLORREF kMark = RGB(255, 0, 0), kBack = RGB(0, 0, 128);

struct MarketWatchLooks : MarketWatch {
    void SetUp() override {
        open();
        addRow("A", 1);
    }
    CRect row(int number) const {
        CRect bounds;
        list->GetItemRect(number, bounds, LVIR_BOUNDS);
        return bounds;
    }
};

TEST_F(MarketWatchLooks, FontsFollowSizeAndStyle) {
    using Case = std::tuple<const char*, const char*, int, const char*>;
    const int perInch = CClientDC(list.get()).GetDeviceCaps(LOGPIXELSY);
    for (const auto& [face, size, style, expected] :
         {Case{"Tahoma", "9", 1, "Tahoma 9 700 0"}, Case{"Arial", "12", 2, "Arial 12 400 1"},
          Case{"", "8", 0, "Arial 12 400 1"},  // nothing changes
          Case{"A face whose name is longer than a font's may be", "7", 9,
               "A face whose name is longer tha 7 400 0"}}) {
        list->SetListFont(face, size, style);
        LOGFONT font{};
        list->GetFont()->GetLogFont(&font);
        CString shown;
        shown.Format("%s %d %d %d", font.lfFaceName, ::MulDiv(-font.lfHeight, 72, perInch),
                     static_cast<int>(font.lfWeight), font.lfItalic != 0);
        EXPECT_STREQ(shown, expected);
    }
}

TEST_F(MarketWatchLooks, TheListErasesWhatNoRowCovers) {
    list->SetBkColor(kBack);
    list->MoveWindow(0, 0, 500, 200);
    CRect client;
    list->GetClientRect(&client);
    EXPECT_EQ(list->ClientRect, client);
    // The share of an area that is filled with the ground.
    const auto erased = [&](const CRect& area) {
        test::Canvas canvas(*list, client.Size(), kMark);
        EXPECT_EQ(list->SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.dc.m_hDC)), 1);
        return canvas.count(area, kBack) / (1.0 * area.Width() * area.Height());
    };
    const CRect cells = row(0), below(0, cells.bottom, client.right, client.bottom);
    EXPECT_EQ(erased(cells), 0);
    EXPECT_EQ(erased({cells.right, cells.top, client.right, cells.bottom}), 1);
    EXPECT_EQ(erased(below), 1);
    list->m_bGridLines = 1;
    EXPECT_EQ(erased(client), 0);
}

TEST_F(MarketWatchLooks, TipsSayTheHostsTexts) {
    addRow("A symbol that is longer than its column", 1);
    list->m_bCellToolTips = 1;
    EXPECT_EQ(test::restOn(*list, 0, 0), "") << "it shows whole";
    EXPECT_EQ(test::restOn(*list, 1, 0), "A symbol that is longer than its column/0");
    rows[1].symbol = "Another that is longer than its column";
    test::lookAgain(*list);
    EXPECT_EQ(test::tipText(), "Another that is longer than its column/0");
    rows[1].symbol = "B";
    test::lookAgain(*list);
    EXPECT_EQ(test::shownTip(), nullptr);
}

// The control has no texts of its own to measure.
TEST_F(MarketWatchLooks, WidthsFitTheHostsTexts) {
    addRow("A symbol of some length", 1);
    for (int i = 0; i < 60; ++i) addRow("B", 1);
    addRow("The longest symbol of all, and out of view", 1);
    const auto fits = [&](const char* symbol) {
        CClientDC dc(list.get());
        const SelectScope selected(&dc, list->GetFont());
        const int text = dc.GetTextExtent(symbol + CString("/0")).cx, width = list->GetColumnWidth(0);
        return width >= text && width <= text + 20;
    };
    list->SendMessage(WM_COMMAND, kFitColumnsToData);
    EXPECT_TRUE(fits("The longest symbol of all, and out of view"));
    EXPECT_EQ(list->GetColumnWidth(2), 50) << "\"0\" takes the least width";
    CRect item;
    list->GetHeaderCtrl()->GetItemRect(0, &item);
    list->GetHeaderCtrl()->SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(item.right - 1, 5));
    EXPECT_TRUE(fits("A symbol of some length")) << "a double click on the divider looks at the rows in view";
}

// Columns c3 (20 pixels), c0, c1, c2 (60 each) on screen.
TEST_F(MarketWatchLooks, PointsFindRowAndColumnAsTheyStand) {
    addRow("B", 1);
    int order[] = {3, 0, 1, 2};
    list->SetColumnOrderArray(4, order);
    list->SetColumnWidth(3, 20);
    const auto hit = [&](int x, int y) {
        int item = -1, place = -1;
        CPoint point(x, y);
        return list->HitTestEx(point, &item, &place) ? std::to_string(item) + "/" + std::to_string(place) : "none";
    };
    const int first = row(0).top + 1, second = row(1).top + 1;
    std::string hits;
    for (const int x : {-1, 0, 19, 20, 79, 80, 199, 200}) hits += hit(x, first) + " ";
    EXPECT_EQ(hits + hit(19, second), "none 0/0 0/0 0/1 0/1 0/2 0/3 none 1/0");
    EXPECT_EQ(hit(25, second + 60), "none");
    list->SetColumnWidth(0, 700);
    list->Scroll(CSize(30, 0));
    EXPECT_EQ(hit(5, first), "0/1") << "scrolled by 30";
}

TEST_F(MarketWatchLooks, TheCheckBoxIsDrawn) {
    constexpr COLORREF kTick = 1284864, kWhite = 0xFFFFFF;
    test::Canvas canvas(*list, CSize(60, 20), kMark);
    CRect cell(10, 0, 50, 17), box;
    list->DrawCheckbox(0, 0, &canvas.dc, 0, 0, cell, &box, 1);
    EXPECT_EQ(box, CRect(14, 0, 30, 16));
    EXPECT_EQ(canvas.count(box, kTick), 21) << "seven strokes of three pixels";
    EXPECT_NE(canvas.dc.GetPixel(box.TopLeft()), kWhite) << "a sunken edge";
    list->DrawCheckbox(0, 0, &canvas.dc, 0, 0, cell, nullptr, 0);
    EXPECT_EQ(canvas.count(box, kTick), 0);
    EXPECT_EQ(canvas.count(CRect(0, 0, 60, 20), kMark), 60 * 20 - 16 * 16) << "nothing beside the box";
}

TEST_F(MarketWatchLooks, RepaintingRowsLeavesTheHeaderAlone) {
    for (int i = 0; i < 20; ++i) addRow("A", i);
    pumpUntilIdle();
    const struct {
        const char* name;
        std::function<void()> repaint;
        bool headerToo;
    } cases[] = {{"all of the list", [&] { list->Invalidate(); }, false},
                 {"the colour", [&] { list->SetTextColor(kMark); }, false},
                 {"the ground", [&] { list->SetBkColor(kBack); }, false},
                 {"a sort, whose arrow moves", [&] { list->SortOn(1, 1); }, true}};
    for (const auto& repainted : cases) {
        list->headerPaints = owner.drawn = 0;
        repainted.repaint();
        if (&repainted != &cases[2]) list->UpdateWindow();  // the ground paints before it returns
        EXPECT_GE(owner.drawn, 10) << repainted.name;
        pumpUntilIdle();
        EXPECT_EQ(list->headerPaints > 0, repainted.headerToo) << repainted.name;
    }
    EXPECT_EQ(list->ListTextColor, kMark);
    EXPECT_EQ(list->ListBkColor, kBack);
    EXPECT_EQ(owner.calls.take(), (Calls{"reordered 1001 0", "reordered 1001 0"})) << "of the two clicks of the sort";
}

// Not once a cell; and what an owner changes while it draws shows at once.
TEST_F(MarketWatchLooks, APaintAsksForARowsDataOnce) {
    addRow("B", 2);
    addRow("C", 3);
    pumpUntilIdle();
    std::string seen;
    const auto see = [&](int item, int place) {
        seen += list->GetItemText(item, place).GetString() + std::string(" ");
    };
    owner.paintsRow = [&](const DRAWITEMSTRUCT& item) {
        for (const int place : {0, 1, 3}) see(static_cast<int>(item.itemID), place);
        EXPECT_EQ(list->GetItemText(-1, 0), "");
    };
    list->asked = 0;
    list->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(seen, "A/0 1.00 A/3 B/0 2.00 B/3 C/0 3.00 C/3 ");
    EXPECT_LE(list->asked, 2 * 3) << "of each row, and of row -1 after it";

    seen.clear();
    owner.paintsRow = [&](const DRAWITEMSTRUCT& item) {
        if (item.itemID != 0) return;
        see(0, 1);
        list->SetItemData(0, reinterpret_cast<DWORD_PTR>(&rows[2]));
        see(0, 1);
    };
    list->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_TRUE(seen.starts_with("1.00 3.00 ")) << seen;
}

// --- After anything that user and owner do

struct WatchPictures : MarketWatch, ::testing::WithParamInterface<unsigned> {
    WatchPictures() {
        owner.paintsRow = [this](const DRAWITEMSTRUCT& item) { list_tests::paintRow(*list, item); };
        open([](CMrktWatchListCtrl& watch) {
            watch.MoveWindow(0, 0, 400, 200);
            watch.m_bGridLines = GetParam() % 2;
            watch.SetExtendedStyle(watch.GetExtendedStyle() | (GetParam() % 2 ? LVS_EX_GRIDLINES : 0));
        });
        for (int i = 0; i < 5; ++i) addRow("row", i);
    }
    void insert(int row) {
        insertRow(row, "row", static_cast<double>(rows.size()));
        list->RedrawItems(row, row);
    }
    // A tick.
    void change(int row) {
        reinterpret_cast<HostRow*>(list->GetItemData(row))->price += 1;
        list->RedrawItems(row, row);
    }
};

TEST_P(WatchPictures, AreThoseOfAFullRepaint) {
    const auto onInsert = [this](int row) { insert(row); };
    const auto onChange = [this](int row) { change(row); };
    EXPECT_EQ(list_tests::PictureMix(*list, {.insert = onInsert, .change = onChange}, GetParam()).run(), "");
}

INSTANTIATE_TEST_SUITE_P(, WatchPictures, ::testing::Range(0u, 4u));

}  // namespace
