// Sorting: real clicks on the header, the lock, auto-sort, the levels of a multi-column sort, and what is stored.
#include "ListFixture.h"
#include "quor/foundation/TimerIds.h"
#include "quor/list/ListCommands.h"
#include "quor/platform/proving/UserInput.h"
#include "support/MessageBoxAnswerer.h"

#include <vector>

using namespace quor::list;

namespace {

using namespace list_tests;
using Texts = std::vector<std::string>;

constexpr const char* kCells[5][5] = {{"delta", "10", "a10", "02-01-2024", "1"},
                                      {"alpha", "-", "a9", "01-01-2024", "2"},
                                      {"echo", "9.5", "a01", "", "3"},
                                      {"bravo", "NA", "a1", "03-02-2024", "4"},
                                      {"Charlie", "-0.5", "b", "01-03-2023", "5"}};

struct Sorts : ListFixture {
    // Name (text), Price (decimal), Mixed, Date, Note (no type): five rows whose data are 1000 + row.
    void open(bool rows = true) {
        list.m_csListName = "orders";
        addColumns(list, {"Name", "Price", "Mixed", "Date", "Note"}, 70);
        const int types[] = {8, 2, 3, 6, 0}, shown[] = {0, 1, 2, 3, 4};
        for (const int each : shown) list.m_arrColumns[each].iDataType = types[each];
        list.m_arrColumns[0].iFormat = kFormatHeaderImage;  // which an arrow takes over
        list.m_arrColumns[1].iFormat = kFormatRight;
        list.SetDefaultCols(5, shown);
        giveWindow(list);
        list.InsertColumnsForList(nullptr);
        if (rows) addFive();
        pumpUntilIdle();
        list.onText = [this](int) { ++textsRead; };
    }
    void addFive() {
        for (int row = 0; row < 5; ++row) {
            list.InsertItem(row, "");
            for (int place = 0; place < 5; ++place) list.SetItemText(row, place, kCells[row][place]);
            list.SetItemData(row, static_cast<DWORD_PTR>(1000 + row));
        }
    }
    // The rows' data less 1000, from the top.
    std::string rows() {
        std::string text;
        for (int row = 0; row < list.GetItemCount(); ++row)
            text += std::to_string(list.CListCtrl::GetItemData(row) - 1000);
        return text;
    }
    // The rows after a click on the header.
    std::string click(int place) {
        quor::sendClick(owner.m_hWnd, {2, 2});  // else a second click on one item is a double click
        CRect item;
        list.GetHeaderCtrl()->GetItemRect(place, &item);
        quor::sendClick(list.GetHeaderCtrl()->m_hWnd, item.CenterPoint());
        pumpUntilIdle();
        return rows();
    }
    std::string press(std::initializer_list<WORD> keys) {
        list.SetFocus();
        quor::sendKeys(keys);
        pumpUntilIdle();
        return rows();
    }
    void command(int id) { list.SendMessage(WM_COMMAND, static_cast<WPARAM>(id), 0); }
    // "image/format" of the first two header items; "-" without an image.
    std::string arrows() {
        std::string text;
        for (const int place : {0, 1}) {
            HDITEM item{};
            item.mask = HDI_FORMAT | HDI_IMAGE;
            list.GetHeaderCtrl()->GetItem(place, &item);
            char arrow[32] = "-";
            if (item.fmt & HDF_IMAGE) std::snprintf(arrow, sizeof arrow, "%d/%x", item.iImage, unsigned(item.fmt));
            text += (place ? " " : "") + std::string(arrow);
        }
        return text;
    }

    int textsRead = 0;
};

using SortsOnEachRoad = test::OnEachRoad<Sorts>;
INSTANTIATE_TEST_SUITE_P(, SortsOnEachRoad, test::eachRoad, test::roadName);

TEST_P(SortsOnEachRoad, AClickOnANewColumnRisesTheNextOneFalls) {
    open();
    list.SetRowFocus(2);
    EXPECT_EQ(click(1), "13420");  // "-" and "NA" are -1
    EXPECT_EQ(textsRead, 5) << "once a row";
    EXPECT_EQ(column(list, 0), "alpha bravo Charlie echo delta");
    EXPECT_EQ(list.GetItemState(3, LVIS_SELECTED | LVIS_FOCUSED), static_cast<UINT>(LVIS_SELECTED | LVIS_FOCUSED));
    EXPECT_EQ(arrows(), "2/5801 0/5801");
    EXPECT_EQ(click(1), "02413") << "equal rows keep their order";
    EXPECT_EQ(arrows(), "2/5801 1/5801");
    EXPECT_EQ(click(2), "23104");
    EXPECT_EQ(arrows(), "2/5801 2/5800");
    EXPECT_EQ(click(1), "31420");
    EXPECT_EQ(click(4), "31420") << "no type: all rows are equal";
    EXPECT_EQ(list.m_bSorted, 1);

    click(1);
    list.ClearSortIndicators();
    EXPECT_EQ(arrows(), "2/5801 0/5801") << "lock sort is not available";
    list.m_bLockSortEnabled = 1;
    list.ClearSortIndicators();
    EXPECT_EQ(arrows(), "2/5801 -");
    EXPECT_EQ(list.m_bSorted, 0);
    EXPECT_EQ(list.m_nLockSortColumn, -1);
}

// Of a hidden column nothing is left: the next click on any other one rises.
TEST_F(Sorts, TheSortedPlaceAndItsArrowFollowTheColumn) {
    open();
    click(1), click(1);
    const struct {
        std::initializer_list<int> shown;
        std::pair<int, int> places;  // sorted, sorted last
        const char* arrows;
    } steps[] = {{{1, 0}, {0, 0}, "1/5801 2/5800"}, {{2, 0, 1}, {2, 2}, "- 2/5800"}, {{0, 2}, {0, -1}, "2/5800 -"}};
    for (const auto& step : steps) {
        loadHeaders(list, step.shown);
        EXPECT_EQ(std::pair(list.m_nSortCol, list.m_nLastSortCol), step.places);
        EXPECT_EQ(arrows(), step.arrows);
    }
    click(0);
    EXPECT_EQ(list.m_nSortOrder, -1);
}

TEST_F(Sorts, RowsWithEqualDataSortToo) {
    open();
    const DWORD_PTR data[] = {7, 7, 0, ~DWORD_PTR{0}, 0};
    for (int row = 0; row < 5; ++row) list.SetItemData(row, data[row]);
    list.onText = [&](int row) { EXPECT_EQ(list.GetItemData(row), data[row]) << "while the list sorts"; };
    click(1);
    list.onText = nullptr;
    EXPECT_EQ(column(list, 4), "2 4 5 3 1");
    const int sorted[] = {1, 3, 4, 2, 0};
    for (int row = 0; row < 5; ++row) EXPECT_EQ(list.GetItemData(row), data[sorted[row]]);
    EXPECT_EQ(CCommonListCtrl::CompareRows(0, 1, 0), -1) << "no list";
    EXPECT_EQ(list.m_arrSavedItemData.GetCount(), 0);
    list.m_arrSavedItemData.Add(8);  // as while the items hold numbers
    EXPECT_EQ(list.GetItemData(0), 8u);
}

TEST_F(Sorts, SortOnClicksTwice) {
    open();
    EXPECT_EQ(list.SortOn(1, -1), 1);
    EXPECT_EQ(rows(), "02413");
    for (const int order : {1, 1, -1}) {
        const bool stays = list.m_nSortCol == 2;
        EXPECT_EQ(list.SortOn(2, order), 1);
        EXPECT_EQ(list.m_nSortOrder, stays ? -order : 1) << "a new column falls whatever the order says";
    }
    list.SortOn(99, 1);
    EXPECT_EQ(list.m_nSortCol, 0);
}

TEST_F(Sorts, TheCheckBoxOfTheFirstColumnSurvivesTheArrow) {
    list.m_bHeaderCheckBox = 1;
    open();
    EXPECT_TRUE(list.GetHeaderCtrl()->GetStyle() & HDS_CHECKBOXES);
    click(1);
    EXPECT_EQ(arrows(), "2/5841 0/5801");
    click(0);
    EXPECT_EQ(arrows(), "0/5840 2/5800");
}

// --- Lock

// That it holds clicks off and comes back, the proofs of the terminal tell.
TEST_F(Sorts, ALockNeedsASortIsAskedAboutAndTellsWhenItCannotBeStored) {
    open();
    {
        const test::MessageBoxAnswerer boxes;
        command(kLockSorting);
        EXPECT_EQ(boxes.texts(), Texts{"sort the coloumn before locking"});
    }
    click(1);
    for (const char* const told : {"True,1,-1", "False,-1,0", "True,1,-1"}) {
        command(kLockSorting);
        EXPECT_EQ(stored("SortLockInfo"), told);
    }
    // Hiding the locked column asks once; of the levels of a sort the panes of the terminal tell.
    int shown = 0;
    const auto alert = [&](const char* heading) {
        const test::MessageBoxAnswerer boxes({IDNO});
        const bool agreed = list.AlertUserOnRemovalOfSortColumns(heading, &shown);
        return (boxes.texts().empty() ? "" : boxes.texts()[0] + " ") + (agreed ? "yes" : "no");
    };
    EXPECT_EQ(alert("Name"), "yes");
    EXPECT_EQ(alert("Price"), "You are removing one or more sorted columns. Do you want to continue ? no");
    EXPECT_EQ(alert("Price"), "yes") << "asked once";
    command(kLockSorting);
    list.m_bSortDisabled = 1;
    EXPECT_EQ(click(0), "13420");
    fakeHost().refuseWrites = true;
    command(kLockSorting);
    EXPECT_EQ(list.m_bSortLocked, 1);
    EXPECT_EQ(fakeHost().calls.count("AddToTabbedLog Error while saving Lock profile 0 0"), 1);
}

TEST_P(SortsOnEachRoad, AStoredLockSortsAgainWithCtrlZero) {
    stored("SortLockInfo") = "True,1,1";
    list.m_bLockSortEnabled = 1;
    open();
    EXPECT_EQ(press({VK_CONTROL, '0'}), "02413");
    EXPECT_EQ(arrows(), "2/5800 1/5801") << "no other column is touched";
    list.m_nLockSortOrder = -1;
    EXPECT_EQ(press({'0'}), "02413") << "without Ctrl";
    EXPECT_EQ(press({VK_CONTROL, VK_NUMPAD0}), "13420");
    list.m_nLockSortOrder = 1;
    list.m_bMultiSortActive = 1;
    EXPECT_EQ(press({VK_CONTROL, '0'}), "13420");
    EXPECT_EQ(list.calls.take(), Calls{"levels sorted"}) << "which go first";
}

// --- Auto-sort

TEST_F(Sorts, AutoSortSortsAnEmptyListWithinTheShortPeriod) {
    stored("AutoSortTicked") = "true";
    stored("AutoSort") = stored("AutoSortOrder") = "1";
    open(false);
    addFive();
    EXPECT_EQ(list.m_nAutoSortTimer, kAutoSortTimer);
    EXPECT_TRUE(pumpFor([&] { return rows() == "02413"; }, 4000));
    const int texts = textsRead;
    EXPECT_TRUE(pumpFor([&] { return textsRead > texts; }, 4000)) << "the short period stays";
    EXPECT_EQ(rows(), "02413") << "the order stays";
}

TEST_F(Sorts, AutoSortReadsItsSettingsAndStepsOnlyThen) {
    open();
    EXPECT_EQ(list.SortOnVisibleIndex(1, 1), 1);
    EXPECT_EQ(rows(), "01234");
    stored("AutoSortTicked") = "true";
    stored("AutoSort") = "5";
    stored("AutoSortOrder") = "1";
    EXPECT_EQ(list.ReadAutoSort(), -1);
    EXPECT_EQ(list.m_nSortCol, 0);
    EXPECT_EQ(list.m_nSortOrder, -1) << "nothing is read behind a place that is gone";
    list.marketWatch = true;
    fakeHost().optimizedMarketWatch = 1;
    EXPECT_EQ(list.IsAutoSortEnabled(), 0);
    stored("AutoSort") = "2";
    EXPECT_EQ(list.ReadAutoSort(), 1);
    EXPECT_EQ(list.m_bAutoSort, 0);
    list.m_bAutoSort = 1;
    list.SortOnVisibleIndex(-3, 1);
    EXPECT_EQ(list.m_nSortCol, 0);
    EXPECT_EQ(owner.calls.take(), Calls{"reordered 1001 0"}) << "as a market watch it tells its parent";
}

// --- Levels

// Which are stored when they are chosen, the panes of the terminal tell.
TEST_P(SortsOnEachRoad, LevelsAreReadShownAndRefusedWritesTold) {
    stored("COLUMN_SORT_ORDER_PROFILE") = "Price->1, Name -> -1,Nowhere->1#1";
    list.m_bMultiSortEnabled = 1;
    list.m_bSortLocked = list.m_bSorted = 1;
    open();
    ASSERT_EQ(list.m_arrSortOrder.GetCount(), 2);
    EXPECT_EQ(list.m_bMultiSortActive, 1);
    EXPECT_EQ(list.m_bSortLocked + list.m_bSorted, 0);
    EXPECT_EQ(arrows(), "0/5800 1/5801");
    HDITEM item{};
    item.mask = HDI_FORMAT | HDI_IMAGE;
    item.fmt = HDF_STRING | HDF_IMAGE | HDF_SORTUP;
    list.GetHeaderCtrl()->SetItem(0, &item);
    list.DrawHeaderSortImageForMultiSortMode(1, false);
    EXPECT_EQ(arrows(), "2/5800 2/5801");
    EXPECT_FALSE(list.GetHeaderCtrl()->GetUpdateRect(nullptr)) << "it is painted at once";
    LevelsAsChooser chooser(list.m_arrSortOrder);
    list.SetSortOrderChooser(&chooser);
    fakeHost().refuseWrites = true;
    const test::MessageBoxAnswerer boxes;
    list.SaveSortOrderProfile();
    EXPECT_EQ(boxes.texts(), Texts{"Error while saving sort column profile"});
    list.SetSortOrderChooser(nullptr);
}

}  // namespace
