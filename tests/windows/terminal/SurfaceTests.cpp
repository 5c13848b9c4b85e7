// What lies around the rows: scroll bars, menus and fields in the terminal's colours, columns that fill their pane, the
// log's view, and the whole frame at several sizes.
#include "host/MainFrame.h"
#include "host/TerminalRun.h"
#include "host/core/Simulator.h"
#include "host/panes/HostEntries.h"
#include "host/panes/Theme.h"
#include "host/resource/resource.h"
#include "quor/foundation/core/Globals.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/proving/WindowCapture.h"
#include "support/HandleCounts.h"
#include "support/PictureOracle.h"
#include "support/WindowFixture.h"
#include "tests/core/host/HostTestTools.h"

#include <cstdlib>

namespace terminal {
namespace {

using quor::platform::scaled;

COLORREF colourAt(HWND window, CPoint at) {
    ::RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    CWindowDC dc(CWnd::FromHandle(window));  // with its children, as it is not said to clip them
    return ::GetPixel(dc, at.x, at.y);
}

// With QUOR_PICTURES, a folder, what is tested there can be looked at.
void keepPicture(HWND window, const std::string& name) {
    const char* const folder = std::getenv("QUOR_PICTURES");
    WindowPicture picture;
    const std::string dots = std::to_string(scaled(nullptr, quor::platform::kDotsPerInch));
    if (folder && quorCaptureWindow(window, picture))
        quorSavePng(picture, (folder + ("/" + name + "-" + dots) + ".png").c_str());
}

struct SurfaceTest : ::test::WindowFixture {
    SurfaceTest() {
        CMrktWatchListCtrl::g_nMarketWatchesBuilt = 0;
        iMrktInfoColCount = kWatchBuiltInColumns - 1;
        iNewDataArrCnt = 0;
        useSettings(&run.settings);
        setAppearance();
    }
    void TearDown() override {
        WindowFixture::TearDown();
        useSettings(nullptr);
        Set_Apperance_setting({});
    }
    static Options options() {
        Options headless;
        headless.headless = true;
        return headless;
    }
    // A pane of orders in the test's frame, with rows that need a bar.
    COrdersPane* makeOrders(int rows) {
        auto* const pane = new COrdersPane(run.figures);
        EXPECT_TRUE(pane->CreatePane(&frame(), IDC_PANE_ORDERS));
        pane->ModifyStyle(WS_CLIPCHILDREN, 0);
        pane->instrument({.id = 0, .symbol = "A", .tickSize = kPriceOne});
        for (int id = 1; id <= rows; ++id)
            pane->order({OrderAction::add, {.id = static_cast<OrderId>(id), .price = kPriceOne, .quantity = 1}}, 1);
        processEndofBatchUpdates();
        pane->MoveWindow(0, 0, 700, 300);
        pumpUntilIdle();
        return pane;
    }

    TerminalRun run{options()};
};

int widthOfAll(CCommonListCtrl& list) {
    int width = 0;
    for (int place = 0; place < list.GetHeaderCtrl()->GetItemCount(); ++place) width += list.GetColumnWidth(place);
    return width;
}

TEST_F(SurfaceTest, TheFrameIsWholeAtEverySizeItTakes) {
    SimulatorSettings market;
    market.instruments = 60;
    run.feed = std::make_unique<Feed>(makeSimulator(market), Speed{.max = true});
    test::EventLog seen;
    run.feed->take(run.clock, {.maxMicros = 60'000'000, .maxTicks = 4'000}, seen);
    auto* const terminal = new CMainFrame(run);
    ASSERT_TRUE(terminal->CreateRestored());
    terminal->ShowWindow(SW_SHOWNA);
    for (const CSize size : {CSize(1500, 900), CSize(640, 480), CSize(1000, 620), CSize(700, 900), CSize(1500, 900)}) {
        SCOPED_TRACE(std::to_string(size.cx) + " by " + std::to_string(size.cy));
        terminal->MoveWindow(0, 0, scaled(*terminal, size.cx), scaled(*terminal, size.cy));
        pumpUntilIdle();
        EXPECT_EQ(::test::stalePixels(*terminal), "");
        const ListPanes panes = terminal->panes();
        CListPane* const all[] = {&panes.watch, &panes.orders, &panes.trades, &panes.positions, &panes.chain};
        for (CListPane* pane : all) {
            SCOPED_TRACE(pane->title());
            CRect client;
            pane->list().GetClientRect(&client);
            EXPECT_GE(widthOfAll(pane->list()), client.Width());
            EXPECT_FALSE(pane->GetStyle() & (WS_HSCROLL | WS_VSCROLL)) << "beside the list's own";
        }
        keepPicture(*terminal, "frame-" + std::to_string(size.cx));
    }
    terminal->DestroyWindow();
}

TEST_F(SurfaceTest, TheLastColumnTakesTheRoomUntilTheUserSizesIt) {
    COrdersPane* pane = makeOrders(1);
    const auto last = [&] { return pane->list().GetHeaderCtrl()->GetItemCount() - 1; };
    const auto widthAt = [&](int width) {
        pane->MoveWindow(0, 0, width, 300);
        pumpUntilIdle();
        return pane->list().GetColumnWidth(last());
    };
    const int own = widthAt(10), others = widthOfAll(pane->list()) - own;
    const auto remake = [&] {
        pane->DestroyWindow();
        pane = makeOrders(1);
    };
    EXPECT_EQ(widthAt(others + own + 200), own + 200);
    EXPECT_EQ(widthAt(others + own + 1), own + 1);
    EXPECT_EQ(widthAt(10), own);
    widthAt(others + own + 300);
    remake();
    EXPECT_EQ(widthAt(others + own + 300), own + 300);
    EXPECT_EQ(widthAt(10), own) << "the list has stored what was on screen";

    widthAt(others + own + 50);
    pane->list().SetColumnWidth(0, pane->list().GetColumnWidth(0) - 30);
    pumpUntilIdle();
    EXPECT_EQ(pane->list().GetColumnWidth(last()), own + 80);
    pane->fitColumns();
    CRect divider;
    CHeaderCtrl& header = *pane->list().GetHeaderCtrl();
    header.GetItemRect(header.OrderToIndex(last()), &divider);
    quor::sendDrag(header, {divider.right - 1, 5}, {divider.right - 41, 5});
    pumpUntilIdle();
    const int users = widthOfAll(pane->list());
    for (const bool again : {false, true}) {
        if (again) remake();
        widthAt(others + own + 400);
        EXPECT_EQ(widthOfAll(pane->list()), users) << again;
    }
    pane->fitColumns();
    EXPECT_EQ(widthOfAll(pane->list()), others + own + 400);

    const int before = pane->list().GetColumnWidth(last());
    std::vector<int> order(static_cast<std::size_t>(last() + 1));
    for (int i = 0; i <= last(); ++i) order[static_cast<std::size_t>(i)] = (i + last()) % (last() + 1);
    pane->list().SetColumnOrderArray(last() + 1, order.data());
    pumpUntilIdle();
    EXPECT_LE(pane->list().GetColumnWidth(last()), before) << "it stands first now";
    EXPECT_EQ(widthOfAll(pane->list()), others + own + 400);
}

TEST_F(SurfaceTest, DarkBarsStandWhereTheSystemsAreAndScroll) {
    COrdersPane* const pane = makeOrders(200);
    CCommonListCtrl& list = pane->list();
    CRect client, whole;
    const auto look = [&] {
        list.GetClientRect(&client);
        pane->GetClientRect(&whole);
        return colourAt(*pane, {whole.right - 2, whole.bottom / 2});
    };
    const auto barAt = [&](CPoint at) { return ::ChildWindowFromPointEx(*pane, at, CWP_SKIPINVISIBLE); };
    EXPECT_EQ(look(), palette::kTrack);
    ASSERT_LT(client.right, whole.right);
    const HWND bar = barAt({whole.right - 2, 5});
    ASSERT_NE(bar, list.m_hWnd);
    const int middle = (whole.right - client.right) / 2;
    EXPECT_EQ(colourAt(bar, {middle, 3}), palette::kThumb);
    keepPicture(*pane, "bars");
    quor::sendDrag(bar, {middle, 3}, {middle, whole.bottom + 50});
    pumpUntilIdle();
    EXPECT_EQ(list.GetTopIndex() + list.GetCountPerPage(), 200) << "dragged to the end";
    quor::sendClick(bar, {middle, 3});
    pumpUntilIdle();
    EXPECT_EQ(list.GetTopIndex(), 200 - 2 * list.GetCountPerPage()) << "a page up";
    list.EnsureVisible(0, FALSE);
    EXPECT_EQ(colourAt(bar, {middle, 3}), palette::kDim) << "the list scrolled by itself, the pointer is on the thumb";

    pane->MoveWindow(0, 0, 200, 300);
    pumpUntilIdle();
    look();
    const HWND flat = barAt({5, whole.bottom - 2});
    ASSERT_NE(flat, list.m_hWnd);
    quor::sendDrag(flat, {5, middle}, {whole.right, middle});
    pumpUntilIdle();
    EXPECT_EQ(list.GetScrollPos(SB_HORZ), widthOfAll(list) - client.Width());
    EXPECT_EQ(::test::stalePixels(*pane), "");
    list.DeleteAllItems();
    pumpUntilIdle();
    EXPECT_EQ(barAt({whole.right - 2, 5}), list.m_hWnd) << "no rows, no bar";
}

TEST_F(SurfaceTest, WhatIsDarkGivesItsHandlesBack) {
    ::test::expectHandlesReturn(8, [this](int) { makeOrders(50)->DestroyWindow(); });
}

TEST_F(SurfaceTest, AMenuIsDarkAsLongAsItIsOpen) {
    CWnd& owner = makeOrders(1)->list();
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING | MF_CHECKED, 10, "&Checked");
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_STRING, 11, "Second &Item\tCtrl+I");
    menu.AppendMenu(MF_STRING | MF_GRAYED, 12, "&Grey");
    CMenu more;
    more.CreatePopupMenu();
    menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(more.Detach()), "&More");
    COLORREF ground = 0, marked = 0;
    const auto look = [&] {
        const HWND popup = ::FindWindowA(reinterpret_cast<LPCSTR>(0x8000), nullptr);
        RECT first{}, item{};
        if (!popup || !::GetMenuItemRect(nullptr, menu.m_hMenu, 2, &item)) return;
        ::GetWindowRect(popup, &first);
        const CPoint inside(item.left - first.left + 5, item.top - first.top + 3);
        if (!ground) {
            ground = colourAt(popup, inside);
            quor::sendKeys({VK_DOWN});
            quor::sendKeys({VK_DOWN});
        } else {
            marked = colourAt(popup, inside);
            keepPicture(popup, "menu");
            quor::sendText("i");
        }
    };
    static std::function<void()> s_look;
    s_look = look;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 50, [](HWND, UINT, UINT_PTR, DWORD) { s_look(); });
    const UINT_PTR guard = ::SetTimer(nullptr, 0, 5'000, [](HWND, UINT, UINT_PTR, DWORD) { ::EndMenu(); });
    const int chosen = menu.TrackPopupMenu(TPM_RETURNCMD, 50, 50, &owner);
    ::KillTimer(nullptr, timer);
    ::KillTimer(nullptr, guard);
    s_look = nullptr;
    EXPECT_EQ(chosen, 11) << "by its letter";
    EXPECT_EQ(ground, palette::kSurface);
    EXPECT_EQ(marked, palette::kSelection);
    for (UINT place = 0; place < 5; ++place)
        EXPECT_FALSE(::GetMenuState(menu.m_hMenu, place, MF_BYPOSITION) & MF_OWNERDRAW) << place;
}

TEST_F(SurfaceTest, FieldsOfTheFilterBarAreDark) {
    COrdersPane* const pane = makeOrders(3);
    CLiveGrid& grid = pane->grid();
    grid.PutListFilter();
    pumpUntilIdle();
    CRect header;
    grid.GetHeaderCtrl()->GetClientRect(&header);
    const CPoint inField(12, header.bottom - 6);
    EXPECT_EQ(colourAt(*grid.GetHeaderCtrl(), inField), palette::kBackground);
    quor::sendClick(*grid.GetHeaderCtrl(), inField);
    pumpUntilIdle();
    const HWND field = ::GetFocus();
    ASSERT_EQ(::GetParent(field), grid.GetHeaderCtrl()->m_hWnd);
    quor::sendText("12");
    pumpUntilIdle();
    ::HideCaret(field);
    CRect area;
    ::GetClientRect(field, &area);
    EXPECT_EQ(colourAt(field, {area.right - 2, area.bottom - 2}), palette::kBackground);
    keepPicture(*pane, "fields");
}

TEST_F(SurfaceTest, TheLogStaysAtItsEndUnlessTheUserHasScrolled) {
    CLogPane log;
    ASSERT_TRUE(log.CreatePane(&frame(), IDC_LOG));
    const HWND edit = ::GetWindow(log, GW_CHILD);
    const auto resize = [&](int width, int height) { log.MoveWindow(0, 0, width, height); };
    const auto atEnd = [&] {
        SCROLLINFO bar{};
        bar.cbSize = sizeof bar;
        bar.fMask = SIF_ALL;
        ::GetScrollInfo(edit, SB_VERT, &bar);
        return bar.nPos + static_cast<int>(bar.nPage) > bar.nMax;
    };
    const auto firstShown = [&] {
        const LRESULT top = ::SendMessageA(edit, EM_GETFIRSTVISIBLELINE, 0, 0);
        return ::SendMessageA(edit, EM_LINEINDEX, static_cast<WPARAM>(top), 0);
    };
    const auto add = [&](int lines) {
        for (int i = 0; i < lines; ++i) log.appendLine("line " + std::to_string(i) + std::string(60, 'x'));
    };
    resize(600, 120);
    add(40);
    EXPECT_TRUE(atEnd());
    for (const CSize size : {CSize(200, 60), CSize(600, 30), CSize(700, 200), CSize(300, 90)}) {
        resize(size.cx, size.cy);
        EXPECT_TRUE(atEnd()) << size.cx;
    }
    ::SendMessageA(edit, EM_LINESCROLL, 0, -30);
    ::SendMessageA(edit, EM_SETSEL, 7, 11);
    const LRESULT top = firstShown();
    add(5);
    EXPECT_EQ(firstShown(), top);
    EXPECT_EQ(::SendMessageA(edit, EM_GETSEL, 0, 0), MAKELRESULT(7, 11));
    resize(300, 130);
    EXPECT_EQ(firstShown(), top);
    ::SendMessageA(edit, WM_VSCROLL, SB_BOTTOM, 0);
    add(1);
    EXPECT_TRUE(atEnd());
    log.DestroyWindow();
}

}  // namespace
}  // namespace terminal
