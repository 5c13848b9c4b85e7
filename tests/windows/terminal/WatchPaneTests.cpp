// The market watch pane in a window of the test's own: its two watches, levels chosen in its menu, and what comes back.
#include "host/HostEntries.h"
#include "host/panes/LevelsMenu.h"
#include "host/panes/ListMenu.h"
#include "host/panes/WatchPane.h"
#include "host/resource.h"
#include "src/foundation/ControlBlock.h"
#include "src/foundation/TimerIds.h"
#include "src/foundation/core/Globals.h"
#include "support/WindowFixture.h"
#include "tests/windows/terminal/NoDisk.h"

namespace terminal {
namespace {

constexpr const char* market = "MarketWatchNew_Market";
constexpr const char* futures = "MarketWatchNew_Futures";
constexpr const char* levelsKey = "COLUMN_SORT_ORDER_PROFILE";

struct WatchPaneTest : test::WindowFixture {
    WatchPaneTest() {
        CMrktWatchListCtrl::g_nMarketWatchesBuilt = 0;
        iMrktInfoColCount = watchBuiltInColumns - 1;
        iNewDataArrCnt = 0;
        useSettings(&settings);
        open();
    }
    void TearDown() override {
        close();
        useSettings(nullptr);
        WindowFixture::TearDown();
    }
    // A pane over the settings, with eight instruments: A to H, every second one a future, prices that repeat.
    void open() {
        pane = new CWatchPane(figures);
        ASSERT_TRUE(pane->CreatePane(&frame(), IDC_PANE_WATCH));
        pane->MoveWindow(0, 0, 780, 400);
        for (InstrumentId id = 0; id < 8; ++id) {
            const char* const series = id % 2 ? "FUT" : "EQ";
            pane->addInstrument({.id = id,
                                 .symbol = std::string(1, static_cast<char>('A' + id)),
                                 .series = series,
                                 .tickSize = priceOne / 100,
                                 .bookLevels = 0});
            pane->quote({.instrument = id, .fields = quoteLast, .time = 1, .last = (id / 2 % 2 + 1) * priceOne});
        }
        pane->showChanged();
    }
    void close() {
        if (pane) pane->DestroyWindow();  // a view: it goes with its window
        pane = nullptr;
    }
    void restart() {
        close();
        open();
    }
    CWatchList& list() { return pane->list(); }
    // As a user's choice in the combo.
    void choose(int watch) {
        CWnd* const combo = pane->GetDlgItem(IDC_WATCH_NAMES);
        combo->SendMessage(CB_SETCURSEL, static_cast<WPARAM>(watch));
        pane->SendMessage(WM_COMMAND, MAKEWPARAM(IDC_WATCH_NAMES, CBN_SELCHANGE),
                          reinterpret_cast<LPARAM>(combo->GetSafeHwnd()));
    }
    // The symbols from top to bottom.
    std::string rows() {
        std::string all;
        for (int row = 0; row < list().GetItemCount(); ++row) all += pane->record(row)->symbol;
        return all;
    }
    // The first headings from left to right.
    std::string columns(int count = 5) {
        std::string all;
        for (int i = 0; i < count; ++i)
            all +=
                std::string(list()
                                .m_arrColumns[list().GetOriginalColumnPosition(list().GetHeaderCtrl()->OrderToIndex(i))]
                                .szColumnName) +
                " ";
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
            all += list().m_arrColumns[list().GetOriginalColumnPosition(item)].szColumnName;
            all += record.iImage == 0 ? "+ " : "- ";
        }
        return all;
    }
    std::string stored(const char* section, const char* key) {
        const auto text = settings.get(section, key);
        return text ? std::string(*text) : "nothing";
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

    SteadyClock clock;
    PaintFigures figures{clock};
    quor::Disk device;  // never asked: nothing is saved
    SettingsFile settings{device, ""};
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
        {{"Sort by"}, false, "ABCDEFGH", "nothing", ""},
        {{"Level 1", "Series"}, true, "ABCDEFGH", "Series->-1#0", ""},
        {{"Sort by"}, false, "ABCDEFGH", "Series->-1#0", ""},  // two are the least
        {{"Level 2", "Last"}, true, "ABCDEFGH", "Series->-1,Last->-1#0", ""},
        {{"Sort by"}, true, "AECGBFDH", "Series->-1,Last->-1#1", "Series+ Last+ "},
        {{"Level 2", "Falling"}, true, "CGAEDHBF", "Series->-1,Last->1#1", "Series+ Last- "},
        {{"Level 3", "Symbol"}, true, "CGAEDHBF", "Series->-1,Last->1,Symbol->-1#1", "Symbol+ Series+ Last- "},
        {{"Level 3", "Falling"}, true, "GCEAHDFB", "Series->-1,Last->1,Symbol->1#1", "Symbol- Series+ Last- "},
        {{"Level 1", "Last"}, true, "FBEAHDGC", "Last->-1,Series->1,Symbol->1#1", "Symbol- Series- Last+ "},
        {{"Level 2", "None"}, true, "", "Last->-1,Symbol->1#1", "Symbol- Last+ "},
        {{"Level 2", "None"}, true, "", "Last->-1#0", ""},  // too few: no longer active
        {{"Clear"}, true, "", "", ""},
        {{"Clear"}, false, "", "", ""},
    };
    for (const auto& step : steps) {
        const std::string what = step.choice[0] + " " + step.stored;
        EXPECT_EQ(chooseItem(step.choice), step.offered) << what;
        if (*step.rows) {
            EXPECT_EQ(rows(), step.rows) << what;
        }
        EXPECT_EQ(stored(market, levelsKey), step.stored) << what;
        EXPECT_EQ(arrows(), step.arrows) << what;
    }
}

TEST_F(WatchPaneTest, TheComboShowsAWatchWithColumnsAndSortOfItsOwn) {
    showOrHideColumn(list(), static_cast<int>(WatchColumn::lastSize));
    setLevels(list(), {{"Last", 1}, {"Symbol", 1}}, true);
    const std::string marketRows = "HGDCFEBA", marketColumns = "Symbol Series Last Change Change % ";
    EXPECT_EQ(rows(), marketRows);

    choose(1);
    CString title;
    pane->GetWindowText(title);
    EXPECT_EQ(title, "Futures");
    EXPECT_NE(stored(market, "COLUMNPROFILE"), "nothing") << "the watch before is saved";
    EXPECT_EQ(stored(futures, "COLUMNPROFILE"), "nothing");
    EXPECT_EQ(rows(), "BDFH");
    EXPECT_EQ(pane->remark(), "4 instruments");
    EXPECT_EQ(columns(), "Symbol Series Last LTQ Change ");
    EXPECT_EQ(list().m_bMultiSortActive, 0) << "nobody has sorted this one";
    EXPECT_EQ(arrows(), "");
    showOrHideColumn(list(), static_cast<int>(WatchColumn::series));
    setLevels(list(), {{"Last", -1}, {"Symbol", 1}}, true);
    EXPECT_EQ(rows(), "FBHD");

    for (int round = 0; round < 2; ++round) {
        choose(0);
        EXPECT_EQ(rows(), marketRows);
        EXPECT_EQ(columns(), marketColumns);
        EXPECT_EQ(arrows(), "Symbol- Last- ");
        choose(1);
        EXPECT_EQ(rows(), "FBHD");
        EXPECT_EQ(columns(), "Symbol Last LTQ Change Change % ");
        EXPECT_EQ(arrows(), "Symbol- Last+ ");
    }
    restart();
    EXPECT_EQ(rows(), marketRows) << "the first watch is shown, as it was left";
    EXPECT_EQ(columns(), marketColumns);
}

TEST_F(WatchPaneTest, LevelsThatAreNotActiveComeBackSo) {
    setLevels(list(), {{"Last", 1}, {"Symbol", 1}}, false);
    restart();
    EXPECT_EQ(levelsOf(list()), (SortLevels{{"Last", 1}, {"Symbol", 1}}));
    EXPECT_EQ(rows(), "ABCDEFGH");
    EXPECT_TRUE(chooseItem({"Sort by"}));
    EXPECT_EQ(rows(), "HGDCFEBA");
}

TEST_F(WatchPaneTest, RowsThatComeInTakeTheirPlacesInTheLevels) {
    setLevels(list(), {{"Series", 1}, {"Symbol", 1}}, true);
    pane->addInstrument({.id = 8, .symbol = "E", .series = "EQ", .tickSize = 1, .bookLevels = 0});
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

TEST_F(WatchPaneTest, AutoSortFollowsItsColumnThroughADrag) {
    list().SortOn(static_cast<int>(WatchColumn::last), 1);
    EXPECT_EQ(rows(), "CDGHABEF") << "falling";
    switchAutoSort(list(), true);
    int order[] = {2, 0, 1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17};
    ASSERT_EQ(list().GetHeaderCtrl()->GetItemCount(), 18);
    list().GetHeaderCtrl()->SetOrderArray(18, order);
    restart();
    EXPECT_EQ(columns(3), "Last Symbol Series ");
    list().SendMessage(WM_TIMER, kAutoSortTimer);
    EXPECT_EQ(arrows(), "Last- ");
    EXPECT_EQ(rows(), "CDGHABEF");
    choose(1);
    EXPECT_EQ(list().m_bAutoSort, 0) << "it belongs to the other watch";
    EXPECT_EQ(rows(), "BDFH");
}

TEST_F(WatchPaneTest, HidingALevelsColumnAsksAndStoresWhatIsLeft) {
    setLevels(list(), {{"Last", 1}, {"Symbol", 1}, {"Series", 1}}, true);
    {
        test::MessageBoxAnswerer boxes({IDNO, IDYES});
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
    const auto expected = [this](int row) {
        CRect area(0, 0, 0, 0);
        if (row >= 0) list().GetItemRect(row, &area, LVIR_BOUNDS);
        CPoint point(row < 0 ? CPoint(0, 0) : CPoint((std::max)(LONG{0}, area.left), area.bottom));
        list().ClientToScreen(&point);
        return point;
    };
    EXPECT_EQ(keyboardMenuPoint(list()), expected(-1)) << "no row has the focus";
    list().SetItemState(3, LVIS_FOCUSED, LVIS_FOCUSED);
    EXPECT_EQ(keyboardMenuPoint(list()), expected(3));
    pane->MoveWindow(0, 0, 780, 100);
    list().EnsureVisible(7, FALSE);
    ASSERT_GT(list().GetTopIndex(), 3);
    EXPECT_EQ(keyboardMenuPoint(list()), expected(-1)) << "the focused row is out of view";
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

}  // namespace
}  // namespace terminal
