// What a market watch looks like: fonts, colours, what no row covers, widths, the check box, and who is painted when.
#include "MarketWatchFixture.h"
#include "src/list/ListCommands.h"
#include "support/Canvas.h"

#include <string>

namespace {

using namespace watch_tests;

constexpr COLORREF kMark = RGB(255, 0, 0), kBack = RGB(0, 0, 128);

struct MarketWatchLooks : MarketWatch {
    LOGFONT font() const {
        LOGFONT font{};
        list->GetFont()->GetLogFont(&font);
        return font;
    }
    CRect row(int number) const {
        CRect bounds;
        list->GetItemRect(number, bounds, LVIR_BOUNDS);
        return bounds;
    }
    int textWidth(const CString& text) const {
        CClientDC dc(list.get());
        const SelectScope selected(&dc, list->GetFont());
        return dc.GetTextExtent(text).cx;
    }
};

TEST_F(MarketWatchLooks, FontsFollowSizeAndStyle) {
    open();
    addRow("A", 1);
    const struct {
        const char* face;
        const char* size;
        int style;
        LONG points, weight;
        BYTE italic;
        const char* shown;
    } cases[] = {
        {"Tahoma", "15", 0, 15, 400, 0, "Tahoma"},
        {"Tahoma", "9", 1, 9, 700, 0, "Tahoma"},
        {"Arial", "12", 2, 12, 400, 1, "Arial"},
        {"Arial", "20", 3, 20, 700, 1, "Arial"},
        {"", "8", 0, 20, 700, 1, "Arial"},  // nothing changes
        {"Tahoma", "", 0, 20, 700, 1, "Arial"},
        {"A face whose name is longer than a font's may be", "7", 9, 7, 400, 0, "A face whose name is longer tha"},
    };
    const int perInch = CClientDC(list.get()).GetDeviceCaps(LOGPIXELSY);
    for (const auto& expected : cases) {
        list->SetListFont(expected.face, expected.size, expected.style);
        const LOGFONT now = font();
        EXPECT_EQ(now.lfHeight, -::MulDiv(expected.points, perInch, 72)) << expected.face << expected.size;
        EXPECT_EQ(now.lfWeight, expected.weight) << expected.size;
        EXPECT_EQ(now.lfItalic != 0, expected.italic != 0) << expected.size;
        EXPECT_STREQ(now.lfFaceName, expected.shown);
        CClientDC dc(list.get());
        const SelectScope selected(&dc, list->GetFont());
        TEXTMETRIC metric{};
        dc.GetTextMetrics(&metric);
        EXPECT_EQ(row(0).Height(), metric.tmHeight + metric.tmExternalLeading + 1) << "rows are measured again";
    }
}

TEST_F(MarketWatchLooks, ColoursAreKeptAndShownAtOnce) {
    open();
    addRow("A", 1);
    pumpUntilIdle();
    owner.drawn = 0;
    list->SetBkColor(kBack);
    EXPECT_EQ(owner.drawn, 1) << "the row is painted before the call returns";
    EXPECT_EQ(list->ListBkColor, kBack);
    EXPECT_EQ(list->GetBkColor(), kBack);
    list->SetTextColor(kMark);
    list->UpdateWindow();
    EXPECT_EQ(owner.drawn, 2);
    EXPECT_EQ(list->ListTextColor, kMark);
    EXPECT_EQ(list->GetTextColor(), kMark);
}

TEST_F(MarketWatchLooks, TheListErasesWhatNoRowCovers) {
    open();
    list->SetBkColor(kBack);
    CRect client;
    list->GetClientRect(&client);
    EXPECT_EQ(list->ClientRect, client);
    const auto erased = [&](int rowCount, bool gridLines) {
        while (list->GetItemCount() > rowCount) list->DeleteItem(0);
        while (list->GetItemCount() < rowCount) addRow("A", 1);
        list->m_bGridLines = gridLines;
        test::Canvas canvas(*list, client.Size(), kMark);
        EXPECT_EQ(list->SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(canvas.dc.m_hDC)), 1);
        if (!rowCount)
            return std::string(canvas.count(client, kBack) > client.Width() * client.Height() / 2 ? "all" : "");
        const CRect first = row(0), last = row(rowCount - 1);
        std::string told;
        const auto look = [&](const char* name, int x, int y) {
            const COLORREF color = canvas.dc.GetPixel(x, y);
            if (color != kMark) told += (told.empty() ? "" : " ") + std::string(color == kBack ? name : "wrong");
        };
        look("rows", first.left + 2, first.top);
        look("rows", first.right - 1, last.bottom - 1);
        look("right", first.right, first.top);
        look("right", client.right - 1, last.bottom - 1);
        look("below", client.left, last.bottom);
        look("below", client.right - 1, client.bottom - 1);
        return told;
    };
    EXPECT_EQ(erased(2, false), "right right below below");
    EXPECT_EQ(erased(2, true), "");
    EXPECT_EQ(erased(0, false), "all");
    owner.SetWindowPos(nullptr, 0, 0, 700, 400, SWP_NOZORDER);
    list->MoveWindow(0, 0, 500, 200);
    list->GetClientRect(&client);
    EXPECT_EQ(list->ClientRect, client);
    EXPECT_EQ(erased(2, false), "right right below below");
}

// The control has no texts of its own to measure.
TEST_F(MarketWatchLooks, WidthsFitTheHostsTexts) {
    open();
    addRow("A symbol of some length", 1);
    addRow("B", 123456);
    list->SendMessage(WM_COMMAND, kFitColumnsToData);
    const int text = textWidth("A symbol of some length/0");
    EXPECT_GE(list->GetColumnWidth(0), text);
    EXPECT_LE(list->GetColumnWidth(0), text + 20);
    EXPECT_EQ(list->GetColumnWidth(2), 50) << "\"0\" takes the least width";
    LVCOLUMN column{};
    column.mask = LVCF_TEXT;
    char heading[] = "A heading that is longer than fifty pixels";
    column.pszText = heading;
    list->SetColumn(2, &column);
    list->SendMessage(WM_COMMAND, kFitColumnsToHeader);
    EXPECT_GE(list->GetColumnWidth(2), textWidth(heading));
    EXPECT_EQ(list->GetColumnWidth(0), 50);
}

TEST_F(MarketWatchLooks, ADoubleClickOnADividerFitsTheRowsInView) {
    open();
    addRow("A symbol of some length", 1);
    for (int i = 0; i < 60; ++i) addRow("B", 1);
    addRow("The longest symbol of all, and out of view", 1);
    CHeaderCtrl* const header = list->GetHeaderCtrl();
    CRect item;
    header->GetItemRect(0, &item);
    header->SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(item.right - 1, 5));
    const int text = textWidth("A symbol of some length/0");
    EXPECT_GE(list->GetColumnWidth(0), text);
    EXPECT_LE(list->GetColumnWidth(0), text + 20);
}

// Columns c3 (20 pixels), c0, c1, c2 (60 each) on screen.
TEST_F(MarketWatchLooks, PointsFindRowAndColumnAsTheyStand) {
    open();
    addRow("A", 1);
    addRow("B", 1);
    int order[] = {3, 0, 1, 2};
    list->SetColumnOrderArray(4, order);
    list->SetColumnWidth(3, 20);
    const auto hit = [&](int x, int y) {
        int row = -1, place = -1;
        CPoint point(x, y);
        return list->HitTestEx(point, &row, &place) ? std::to_string(row) + "/" + std::to_string(place) : "none";
    };
    const int first = row(0).top + 1, second = row(1).top + 1;
    const struct {
        int x, y;
        const char* cell;
    } cases[] = {{0, first, "0/0"},    {19, second, "1/0"}, {20, first, "0/1"},
                 {79, first, "0/1"},   {80, second, "1/2"}, {199, first, "0/3"},
                 {200, first, "none"}, {-1, first, "none"}, {25, second + 60, "none"}};
    for (const auto& expected : cases) EXPECT_EQ(hit(expected.x, expected.y), expected.cell) << expected.x;
    list->SetColumnWidth(0, 700);
    list->Scroll(CSize(30, 0));
    EXPECT_EQ(hit(5, first), "0/1") << "scrolled by 30";
    int number = 0;
    CPoint point(5, first);
    EXPECT_FALSE(list->HitTestEx(point, nullptr, &number));
    EXPECT_FALSE(list->HitTestEx(point, &number, nullptr));
    list->ModifyStyle(LVS_TYPEMASK, LVS_LIST);
    EXPECT_EQ(hit(5, first), "none") << "no report view";
}

TEST_F(MarketWatchLooks, TheCheckBoxIsDrawn) {
    constexpr COLORREF kTick = 1284864, kWhite = 0xFFFFFF;
    open();
    test::Canvas canvas(*list, CSize(60, 20), kMark);
    CDC& dc = canvas.dc;
    CRect cell(10, 0, 50, 17), box;
    list->DrawCheckbox(0, 0, &dc, 0, 0, cell, &box, 1);
    EXPECT_EQ(box, CRect(14, 0, 30, 16));
    // Seven strokes of three pixels from the right: four each one lower, three each one higher.
    const int tops[] = {3, 4, 5, 6, 5, 4, 3};
    for (int stroke = 0; stroke < 7; ++stroke)
        EXPECT_EQ(canvas.count(CRect(CPoint(24 - stroke, tops[stroke]), CSize(1, 3)), kTick), 3) << stroke;
    EXPECT_EQ(canvas.count(box, kTick), 21);
    EXPECT_EQ(canvas.count(box, kMark), 0);
    EXPECT_NE(dc.GetPixel(box.TopLeft()), kWhite) << "a sunken edge";
    list->DrawCheckbox(0, 0, &dc, 0, 0, cell, nullptr, 0);
    EXPECT_EQ(canvas.count(box, kTick), 0);
    EXPECT_EQ(dc.GetPixel(24, 4), kWhite);
    EXPECT_EQ(canvas.count(CRect(0, 0, 14, 20), kMark) + canvas.count(CRect(30, 0, 60, 20), kMark), (14 + 30) * 20)
        << "nothing beside the box";
}

TEST_F(MarketWatchLooks, RepaintingRowsLeavesTheHeaderAlone) {
    open();
    CountingHeader header;
    header.SubclassWindow(list->GetHeaderCtrl()->m_hWnd);
    for (int i = 0; i < 20; ++i) addRow("A", i);
    pumpUntilIdle();
    const struct {
        const char* name;
        std::function<void()> repaint;
        int leastRows;
        bool headerToo;
    } cases[] = {{"all of the list", [&] { list->Invalidate(); }, 10, false},
                 {"three rows", [&] { list->RedrawItems(2, 4); }, 3, false},
                 {"the rectangle of a row", [&] { list->InvalidateRect(row(5)); }, 1, false},
                 {"the colour", [&] { list->SetTextColor(kMark); }, 10, false},
                 {"the ground", [&] { list->SetBkColor(kBack); }, 10, false},
                 {"a sort, whose arrow moves", [&] { list->SortOn(1, 1); }, 10, true}};
    for (const auto& repainted : cases) {
        header.paints = owner.drawn = 0;
        repainted.repaint();
        list->UpdateWindow();
        pumpUntilIdle();
        EXPECT_GE(owner.drawn, repainted.leastRows) << repainted.name;
        EXPECT_EQ(header.paints > 0, repainted.headerToo) << repainted.name;
    }
    header.UnsubclassWindow();
}

// One message a row, not one a cell; and what an owner changes while it draws shows at once.
TEST_F(MarketWatchLooks, APaintAsksTheControlOnceForEachRow) {
    open();
    for (int i = 0; i < 3; ++i) addRow("A", i);
    addRow("B", 9);
    pumpUntilIdle();
    static WNDPROC below;
    static int asked;
    below = reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(list->m_hWnd, GWLP_WNDPROC));
    const WNDPROC counting = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        asked += message == LVM_GETITEMA;
        return ::CallWindowProcA(below, window, message, wParam, lParam);
    };
    ::SetWindowLongPtrA(list->m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(counting));
    std::string seen;
    owner.onDraw = [&](int row) {
        if (row == 3) return;
        for (const int place : {0, 1, 3}) seen += std::string(list->GetItemText(row, place).GetString()) + " ";
        EXPECT_EQ(list->GetItemText(-1, 0), "");
    };
    asked = 0;
    list->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(seen, "A/0 0.00 A/3 A/0 1.00 A/3 A/0 2.00 A/3 ");
    EXPECT_LE(asked, 2 * 3) << "of each row, and of row -1 after it";

    seen.clear();
    owner.onDraw = [&](int row) {
        if (row != 0) return;
        seen += std::string(list->GetItemText(0, 1).GetString()) + " ";
        const DWORD_PTR last = list->GetItemData(3);
        list->SetItemData(0, last);
        seen += std::string(list->GetItemText(0, 1).GetString()) + " ";
    };
    list->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_TRUE(seen.starts_with("0.00 9.00 ")) << seen;
    owner.onDraw = nullptr;
    ::SetWindowLongPtrA(list->m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(below));
}

}  // namespace
