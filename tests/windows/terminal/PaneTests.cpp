// The panes in a window of the test's own: the market watch with its two watches and the levels chosen in its menu, and
// the pump between a scripted feed and the panes that it fills, the looks that all lists share, and the flashes.
#include "host/FeedPump.h"
#include "host/panes/ChainPane.h"
#include "host/panes/HostEntries.h"
#include "host/panes/LevelsMenu.h"
#include "host/panes/ListMenu.h"
#include "host/panes/PaneHolder.h"
#include "host/panes/Theme.h"
#include "host/resource/resource.h"
#include "quor/edits/core/Colours.h"
#include "quor/foundation/ControlBlock.h"
#include "quor/foundation/core/Globals.h"
#include "quor/platform/proving/WindowCapture.h"
#include "support/WindowFixture.h"
#include "tests/core/host/HostTestTools.h"

namespace terminal {
namespace {

constexpr const char* market = "MarketWatchNew_Market";
constexpr const char* futures = "MarketWatchNew_Futures";
constexpr const char* levelsKey = "COLUMN_SORT_ORDER_PROFILE";

struct PaneTest : ::test::WindowFixture {
    PaneTest() {
        useSettings(&settings);
        setAppearance();
    }
    void TearDown() override {
        WindowFixture::TearDown();
        useSettings(nullptr);
        Set_Apperance_setting({});
    }

    test::SetClock clock;
    PaintFigures figures{clock};
    quor::Disk device;  // never asked: nothing is saved
    SettingsFile settings{device, ""};
};

struct WatchPaneTest : PaneTest {
    WatchPaneTest() {
        CMrktWatchListCtrl::g_nMarketWatchesBuilt = 0;
        iMrktInfoColCount = kWatchBuiltInColumns - 1;
        iNewDataArrCnt = 0;
        open();
    }
    // A pane over the settings, with eight instruments: A to H, every second one a future, prices that repeat.
    void open() {
        pane = new CWatchPane(figures);
        ASSERT_TRUE(pane->CreatePane(&frame(), IDC_PANE_WATCH));
        pane->MoveWindow(0, 0, 780, 400);
        for (InstrumentId id = 0; id < 8; ++id) {
            add(id, static_cast<char>('A' + id), id % 2 ? "FUT" : "EQ");
            pane->quote({.instrument = id, .fields = quoteLast, .time = 1, .last = (id / 2 % 2 + 1) * kPriceOne});
        }
        pane->showChanged();
    }
    void add(InstrumentId id, char symbol, const char* series) {
        pane->addInstrument(
            {.id = id, .symbol = {symbol}, .series = series, .tickSize = kPriceOne / 100, .bookLevels = 0});
    }
    void restart() {
        pane->DestroyWindow();  // a view: it goes with its window
        open();
    }
    CWatchList& list() { return pane->list(); }
    // The symbols from top to bottom.
    std::string rows() {
        std::string all;
        for (int row = 0; row < list().GetItemCount(); ++row) all += pane->record(row)->symbol;
        return all;
    }
    std::string headingOf(int item) { return list().m_arrColumns[list().GetOriginalColumnPosition(item)].szColumnName; }
    // The first headings from left to right.
    std::string columns() {
        std::string all;
        for (int i = 0; i < 5; ++i) all += headingOf(list().GetHeaderCtrl()->OrderToIndex(i)) + " ";
        return all;
    }
    // Headings with an arrow.
    std::string arrows() {
        std::string all;
        for (int item = 0; item < list().GetHeaderCtrl()->GetItemCount(); ++item) {
            HDITEM record{};
            record.mask = HDI_FORMAT | HDI_IMAGE;
            list().GetHeaderCtrl()->GetItem(item, &record);
            if (!(record.fmt & HDF_IMAGE) || record.iImage > 1) continue;
            all += headingOf(item) + (record.iImage == 0 ? "+ " : "- ");
        }
        return all;
    }
    std::string stored(const char* section, const char* key) {
        return std::string(settings.get(section, key).value_or("nothing"));
    }
    // Chooses an item of the levels' menu by its captions, each one's beginning; false: it is not offered.
    bool chooseItem(std::vector<std::string> path) {
        path.insert(path.begin(), "Sort Levels");
        CMenu menu;
        menu.CreatePopupMenu();
        appendLevels(menu, list());
        HMENU at = menu.m_hMenu;
        for (std::size_t step = 0;; ++step) {
            int place = 0;
            char caption[80] = "";
            do {
                if (place >= ::GetMenuItemCount(at)) return false;
                ::GetMenuStringA(at, static_cast<UINT>(place), caption, sizeof caption, MF_BYPOSITION);
            } while (!std::string(caption).starts_with(path[step]) && ++place);
            if (::GetMenuState(at, static_cast<UINT>(place), MF_BYPOSITION) & MF_GRAYED) return false;
            if (step + 1 == path.size()) {
                runLevelItem(list(), static_cast<int>(::GetMenuItemID(at, place)));
                return true;
            }
            at = ::GetSubMenu(at, place);
        }
    }

    CWatchPane* pane = nullptr;
};

TEST_F(WatchPaneTest, LevelsAreChosenInTheMenuAndStoredAtOnce) {
    const struct {
        std::vector<std::string> choice;
        bool offered;
        const char* rows;
        const char* stored;
        const char* arrows;
    } steps[] = {
        {{"Level 2"}, false, "ABCDEFGH", "nothing", ""},
        {{"Level 1", "Series"}, true, "ABCDEFGH", "Series->-1#0", ""},
        {{"Sort by"}, false, "ABCDEFGH", "Series->-1#0", ""},  // two are the least
        {{"Level 2", "Last"}, true, "ABCDEFGH", "Series->-1,Last->-1#0", ""},
        {{"Sort by"}, true, "AECGBFDH", "Series->-1,Last->-1#1", "Series+ Last+ "},
        {{"Level 2", "Falling"}, true, "CGAEDHBF", "Series->-1,Last->1#1", "Series+ Last- "},
        {{"Level 3", "Symbol"}, true, "CGAEDHBF", "Series->-1,Last->1,Symbol->-1#1", "Symbol+ Series+ Last- "},
        {{"Level 3", "Falling"}, true, "GCEAHDFB", "Series->-1,Last->1,Symbol->1#1", "Symbol- Series+ Last- "},
        {{"Level 1", "Last"}, true, "FBEAHDGC", "Last->-1,Series->1,Symbol->1#1", "Symbol- Series- Last+ "},
        {{"Level 2", "None"}, true, "FEBAHGDC", "Last->-1,Symbol->1#1", "Symbol- Last+ "},
        {{"Level 2", "None"}, true, "FEBAHGDC", "Last->-1#0", ""},  // too few: no longer active
        {{"Clear"}, true, "FEBAHGDC", "", ""},
        {{"Clear"}, false, "FEBAHGDC", "", ""},
    };
    for (const auto& step : steps) {
        const std::string what = step.choice[0] + " " + step.stored;
        EXPECT_EQ(chooseItem(step.choice), step.offered) << what;
        EXPECT_EQ(rows(), step.rows) << what;
        EXPECT_EQ(stored(market, levelsKey), step.stored) << what;
        EXPECT_EQ(arrows(), step.arrows) << what;
    }
}

// What else a watch keeps for itself is held against a restart by the proof of the layouts.
TEST_F(WatchPaneTest, AnotherWatchHasRowsColumnsAndSortOfItsOwn) {
    showOrHideColumn(list(), static_cast<int>(WatchColumn::lastSize));
    setLevels(list(), {{"Last", 1}, {"Symbol", 1}}, true);
    pane->showWatch(1);
    CString title;
    pane->GetWindowText(title);
    EXPECT_EQ(title, "Futures");
    EXPECT_EQ(stored(futures, "COLUMNPROFILE"), "nothing");
    EXPECT_EQ(rows() + ", " + pane->remark() + ", " + columns() + arrows(),
              "BDFH, 4 instruments, Symbol Series Last LTQ Change ");
    setLevels(list(), {{"Last", -1}, {"Symbol", 1}}, true);
    pane->showWatch(0);
    EXPECT_EQ(rows() + ", " + columns() + arrows(), "HGDCFEBA, Symbol Series Last Change Change % Symbol- Last- ");
    pane->showWatch(1);
    EXPECT_EQ(rows(), "FBHD");
}

TEST_F(WatchPaneTest, LevelsComeBackActiveOrNotAndTakeInRowsThatCome) {
    setLevels(list(), {{"Last", 1}, {"Symbol", 1}}, false);
    restart();
    EXPECT_EQ(levelsOf(list()), (SortLevels{{"Last", 1}, {"Symbol", 1}}));
    EXPECT_EQ(rows(), "ABCDEFGH");
    EXPECT_TRUE(chooseItem({"Sort by"}));
    EXPECT_EQ(rows(), "HGDCFEBA");
    setLevels(list(), {{"Series", 1}, {"Symbol", 1}}, true);
    add(8, 'E', "EQ");
    pane->showChanged();
    EXPECT_EQ(rows(), "HFDBGEECA");
}

TEST_F(WatchPaneTest, LevelsEndALockAndAutoSort) {
    list().SortOn(static_cast<int>(WatchColumn::last), 1);
    list().OnLockUnlockSortCheck();
    EXPECT_FALSE(chooseItem({"Level 1", "Last"})) << "nothing is offered while the sort is locked";
    switchAutoSort(list(), true);
    setLevels(list(), {{"Last", 1}, {"Symbol", 1}}, true);
    EXPECT_EQ(list().m_bSortLocked + list().m_bAutoSort, 0);
    EXPECT_EQ(stored(market, "AutoSortTicked"), "false");
    restart();
    EXPECT_EQ(rows(), "HGDCFEBA") << "the stored lock gives way";
    EXPECT_EQ(list().m_bSortLocked, 0);
}

TEST_F(WatchPaneTest, HidingALevelsColumnAsksAndStoresWhatIsLeft) {
    setLevels(list(), {{"Last", 1}, {"Symbol", 1}, {"Series", 1}}, true);
    {
        ::test::MessageBoxAnswerer boxes({IDNO, IDYES});
        showOrHideColumn(list(), static_cast<int>(WatchColumn::last));
        EXPECT_EQ(stored(market, levelsKey), "Last->1,Symbol->1,Series->1#1");
        showOrHideColumn(list(), static_cast<int>(WatchColumn::last));
        EXPECT_EQ(boxes.boxes().size(), 2u);
    }
    EXPECT_EQ(stored(market, levelsKey), "Symbol->1,Series->1#0");
    restart();  // a level without its column would show a box here
    EXPECT_EQ(levelsOf(list()).size(), 2u);
}

TEST_F(WatchPaneTest, TheMenuKeyOpensTheMenuBelowTheFocusedRow) {
    CPoint corner(0, 0);
    list().ClientToScreen(&corner);
    EXPECT_EQ(keyboardMenuPoint(list()), corner) << "no row has the focus";
    list().SetItemState(3, LVIS_FOCUSED, LVIS_FOCUSED);
    CRect row;
    list().GetItemRect(3, &row, LVIR_BOUNDS);
    EXPECT_EQ(keyboardMenuPoint(list()), CPoint(corner.x, corner.y + row.bottom));
    pane->MoveWindow(0, 0, 780, 100);
    list().EnsureVisible(7, FALSE);
    ASSERT_GT(list().GetTopIndex(), 3);
    EXPECT_EQ(keyboardMenuPoint(list()), corner) << "the focused row is out of view";
}

TEST_F(WatchPaneTest, TheStoreOfTheListsRefusesTextsWithANul) {
    CString cut("a\0b", 3), kept("kept");
    ASSERT_EQ(g_pControlBlock->UserSetting(1, "list", kept, "key"), 1);
    EXPECT_EQ(g_pControlBlock->UserSetting(1, "list", cut, "key"), 0);
    EXPECT_EQ(g_pControlBlock->UserSetting(1, cut, kept, "key"), 0);
    EXPECT_EQ(g_pControlBlock->UserSetting(1, "list", kept, cut), 0);
    EXPECT_EQ(g_pControlBlock->UserSettingMWColumns(1, "list", cut), 0);
    EXPECT_EQ(settings.text(), "[list]\r\nkey=kept\r\n");
}

// A tick a millisecond, each one a new order at a higher price than all before it.
struct RisingOrders final : test::ListedTicks {
    RisingOrders() : ListedTicks({1'000'000, 2'000'000, 3'000'000, 4'000'000}) {}
    Next next(Tick& tick) override {
        if (const Next came = ListedTicks::next(tick); came != Next::tick) return came;
        const auto id = static_cast<OrderId>(tick.time / 1'000'000);
        if (id == 1) tick.events.push_back(Instrument{.id = 0, .symbol = "A", .series = "EQ"});
        const auto price = static_cast<Price>(id) * kPriceOne;
        tick.events.push_back(OrderEvent{OrderAction::add, {.id = id, .price = price, .quantity = 1}});
        return Next::tick;
    }
};

TEST_F(PaneTest, APauseLeavesTheOrdersInTheirLockedOrder) {
    const Panes panes{new CWatchPane(figures), new COrdersPane(figures), new CTradesPane(figures, 100),
                      new CPositionsPane(figures, 1)};
    panes.watch->CreatePane(&frame(), IDC_PANE_WATCH);
    panes.orders->CreatePane(&frame(), IDC_PANE_ORDERS);
    panes.trades->CreatePane(&frame(), IDC_PANE_TRADES);
    panes.positions->CreatePane(&frame(), IDC_PANE_POSITIONS);
    const auto shown = [&panes] {
        std::vector<OrderId> ids;
        CLiveGrid& grid = panes.orders->grid();
        for (int visual = 0; visual < grid.GetDisplayCount(); ++visual)
            ids.push_back(static_cast<const OrderRow*>(grid.rowAt(visual))->order.id);
        return ids;
    };
    constexpr std::int64_t millisecond = 1'000;
    Feed feed(std::make_unique<RisingOrders>(), {});
    FeedPump pump(feed, {}, clock, panes);
    clock.now = 1'000 * millisecond;
    pump.slice();
    clock.now += 2 * millisecond;  // too soon for a sort of its own
    pump.slice();
    ASSERT_EQ(shown(), (std::vector<OrderId>{1, 2, 3}));
    pump.pause(true);
    EXPECT_EQ(shown(), (std::vector<OrderId>{3, 2, 1}));
}

COLORREF pixel(CWnd& window, CPoint at) {
    window.RedrawWindow();
    return ::GetPixel(CClientDC(&window), at.x, at.y);
}

// Right of the text of a row's first cell, and on the lines right of it and below it.
struct RowPoints {
    CPoint ground, column, foot;
};
RowPoints pointsOf(CCommonListCtrl& list, int row) {
    CRect bounds;
    list.GetItemRect(row, &bounds, LVIR_BOUNDS);
    const int right = list.GetColumnWidth(0);
    return {{right - 4, bounds.top + 1}, {right - 1, bounds.top + 1}, {right - 4, bounds.bottom - 1}};
}

TEST_F(WatchPaneTest, ListsShareFontRowHeightSelectionAndGridLines) {
    auto* const orders = new COrdersPane(figures);
    auto* const chain = new CChainPane(figures, *pane);
    orders->CreatePane(&frame(), IDC_PANE_ORDERS);
    chain->CreatePane(&frame(), IDC_PANE_CHAIN);
    CListPane* const panes[] = {orders, chain, pane};
    for (CListPane* one : panes) one->MoveWindow(0, 0, 780, 400);
    orders->instrument({.id = 0, .symbol = "A", .tickSize = kPriceOne});
    orders->order({OrderAction::add, {.id = 1, .price = kPriceOne, .quantity = 1}}, 1);
    processEndofBatchUpdates();
    chain->update(1);

    CRect first, row, client;
    LOGFONT font{}, other{};
    orders->list().GetItemRect(0, &first, LVIR_BOUNDS);
    orders->list().GetFont()->GetLogFont(&font);
    for (CListPane* one : panes) {
        SCOPED_TRACE(one->title());
        CCommonListCtrl& shown = one->list();
        one->BringWindowToTop();
        ASSERT_TRUE(shown.GetItemRect(0, &row, LVIR_BOUNDS));
        shown.GetFont()->GetLogFont(&other);
        EXPECT_EQ(row.Height(), first.Height());
        EXPECT_EQ(std::string(other.lfFaceName) + std::to_string(other.lfHeight),
                  std::string(font.lfFaceName) + std::to_string(font.lfHeight));
        shown.GetClientRect(&client);
        EXPECT_EQ(pixel(shown, {3, client.bottom - 3}), palette::kBackground) << "below the rows";
        const RowPoints points = pointsOf(shown, 0);
        shown.SetItemState(0, LVIS_SELECTED, LVIS_SELECTED);
        shown.SetFocus();
        EXPECT_EQ(pixel(shown, points.ground), palette::kSelection);
        frame().SetFocus();
        EXPECT_EQ(pixel(shown, points.ground), palette::kSelectionIdle);
        for (const bool lined : {true, false}) {
            shown.GridLines();
            EXPECT_EQ((shown.GetExtendedStyle() & LVS_EX_GRIDLINES) != 0, lined);
            for (const CPoint at : {points.column, points.foot})
                EXPECT_EQ(pixel(shown, at) == palette::kGridLine, lined) << at.x << "," << at.y;
        }
    }
    for (const COLORREF ground : {palette::kSelection, palette::kSelectionIdle})
        EXPECT_GE(quor::edits::contrast(ground, palette::kSelectedText), 4.5);
}

TEST_F(WatchPaneTest, ARemarkNeverReachesWhatStandsLeftOfIt) {
    auto* const holder = new CPaneHolder;  // a view: it goes with its window
    ASSERT_TRUE(holder->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(), &frame(), IDC_SPLIT));
    auto* const held = new CWatchPane(figures);
    ASSERT_TRUE(held->CreatePane(holder, IDC_PANE_WATCH));
    const auto left = [&](int width) {
        WindowPicture picture;
        holder->MoveWindow(0, 0, width, 100);
        holder->RedrawWindow();
        EXPECT_TRUE(quorCaptureClientArea(*holder, picture));
        std::vector<std::uint32_t> strip;
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < (std::min)(width, 260); ++x)
                strip.push_back(picture.pixels[static_cast<std::size_t>(y * picture.width + x)]);
        return strip;
    };
    for (const int width : {780, 300, 275, 200, 60}) {
        held->setRemark("");
        const auto plain = left(width);
        held->setRemark(std::string(200, 'W'));
        EXPECT_TRUE(left(width) == plain) << width;
    }
}

TEST(PaneTexts, NumbersAreGroupedBehindTheirSign) {
    CFilterListCtrl list;
    const std::pair<const char*, const char*> table[] = {{"+324473.75", "+324,473.75"},
                                                         {"-1382.50", "-1,382.50"},
                                                         {"17897.00", "17,897.00"},
                                                         {"1000", "1,000"},
                                                         {"999.999", "999.999"},
                                                         {"+0.15", "+0.15"},
                                                         {"2024-03-28", "2024-03-28"},
                                                         {"25.89%", "25.89%"},
                                                         {"-", "-"},
                                                         {"", ""}};
    for (const auto& [text, shown] : table) EXPECT_EQ(grouped(list, text), shown);
}

TEST_F(PaneTest, RowsThatStreamInFlashAndLeaveTheOthersFlashing) {
    auto* const pane = new COrdersPane(figures);
    ASSERT_TRUE(pane->CreatePane(&frame(), IDC_PANE_ORDERS));
    pane->MoveWindow(0, 0, 780, 300);
    CLiveGrid& grid = pane->grid();
    CArray<int, int> columns;
    columns.Add(static_cast<int>(OrderColumn::quantity));
    grid.SetTrendColumns(&columns);
    grid.PosColor = palette::kRiseFlash;
    grid.TrendInterval = 60'000;
    pane->instrument({.id = 0, .symbol = "A", .tickSize = kPriceOne});
    const auto tell = [&](OrderAction action, OrderId id, Quantity quantity) {
        pane->order({action, {.id = id, .price = kPriceOne, .quantity = quantity}}, 1);
        processEndofBatchUpdates();
        grid.batchClosed();
        grid.RedrawWindow();
    };
    const auto flashes = [&](int visual) {
        CRect cell;
        grid.GetSubItemRect(visual, static_cast<int>(OrderColumn::quantity), LVIR_LABEL, cell);
        return pixel(grid, {cell.left + 1, cell.top + 1}) == palette::kRiseFlash;
    };
    for (const OrderId id : {1, 2}) {
        tell(OrderAction::add, id, 1);
        EXPECT_FALSE(flashes(static_cast<int>(id) - 1));
        tell(OrderAction::change, id, 2);
        for (int visual = 0; visual < static_cast<int>(id); ++visual) EXPECT_TRUE(flashes(visual)) << id << visual;
    }
}

TEST_F(PaneTest, PositionsFlashFromTheirFirstBatchOnAndKeepTheUsersTrends) {
    for (const COLORREF flash : {palette::kRiseFlash, palette::kFallFlash})
        EXPECT_GE(quor::edits::contrast(flash, palette::kText), 4.5);
    EXPECT_GE(quor::edits::contrast(palette::kRiseFlash, palette::kFallFlash), 1.4) << "in lightness too";
    for (const bool restarted : {false, true}) {
        SCOPED_TRACE(restarted);
        auto* const pane = new CPositionsPane(figures, 1);
        ASSERT_TRUE(pane->CreatePane(&frame(), IDC_PANE_POSITIONS));
        pane->MoveWindow(0, 0, 780, 300);
        const auto tell = [&](Price last) {
            pane->quote({.instrument = 0, .fields = quoteLast | quoteClose, .last = last, .close = 100 * kPriceOne}, 1);
            processEndofBatchUpdates();
            pane->grid().batchClosed();
            pane->showTotals();
            pane->grid().RedrawWindow();
        };
        const auto colourOf = [&](PositionColumn column) {
            CRect cell;
            pane->grid().GetSubItemRect(0, static_cast<int>(column), LVIR_LABEL, cell);
            return ::GetPixel(CClientDC(&pane->grid()), cell.left, cell.top);
        };
        const COLORREF ground = pane->grid().m_Appearance.crBackground;
        pane->instrument({.id = 0, .symbol = "A", .tickSize = kPriceOne});
        tell(100 * kPriceOne);
        EXPECT_EQ(colourOf(PositionColumn::last), ground);
        EXPECT_EQ(pane->remark().find("day 0.00 (0.00%)"), pane->remark().find("day ")) << pane->remark();
        tell(1100 * kPriceOne);
        EXPECT_EQ(colourOf(PositionColumn::last), restarted ? 0x123456u : palette::kRiseFlash);
        EXPECT_EQ(colourOf(PositionColumn::value), ground);
        const Position& position = pane->positions().all()[0];
        EXPECT_EQ(pane->list().GetItemText(0, static_cast<int>(PositionColumn::day)),
                  CString(formatted("%+.2f", 1000.0 * static_cast<double>(position.quantity)).c_str()));
        CFilterListBaseData* const row = pane->grid().rowAt(0);
        pane->grid().refill([&] { pane->grid().add(row); });
        tell(1100 * kPriceOne);
        tell(1000 * kPriceOne);
        EXPECT_EQ(colourOf(PositionColumn::last), palette::kFallFlash) << "refilled";
        pane->grid().PosColor = 0x123456;
        pane->DestroyWindow();
    }
}

}  // namespace
}  // namespace terminal
