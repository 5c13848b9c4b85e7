// Sorting: real clicks on the header, the lock, auto-sort, the levels of a multi-column sort, and what is stored.
#include "ListFixture.h"
#include "src/foundation/Messages.h"
#include "src/foundation/TimerIds.h"
#include "src/list/ListCommands.h"
#include "support/Input.h"

#include <cstring>
#include <string>
#include <vector>

using namespace quor::list;

namespace {

using namespace list_tests;
using Texts = std::vector<std::string>;

constexpr const char* kHiddenLevel = "Please select columns that are visible in the list for sorting";
constexpr const char* kLogHidden =
    "AddToTabbedLog Few columns in the multi sort order are hidden in Sorts, resave the multicolumn sort to update the "
    "setting 0 0";

class SortedList : public CCommonListCtrl {
public:
    bool marketWatch = false;
    int multiSorts = 0;
    int textsRead = 0;
    bool dataHold = true;  // while a sort reads texts, GetItemData answers as before

    void SaveColumnProfile() override {}
    void SortListOnMultiplelevel() override { ++multiSorts; }
    CString GetItemText(int row, int place) override {
        ++textsRead;
        dataHold = dataHold && GetItemData(row) == 1000u + static_cast<DWORD_PTR>(row);
        return CCommonListCtrl::GetItemText(row, place);
    }
    using CCommonListCtrl::GetItemText;
    using CCommonListCtrl::OnTimer;

protected:
    bool IsMarketWatch() const override { return marketWatch; }
};

struct Sorts : ListFixture {
    Sorts() { list.m_csListName = "Sorts"; }
    void TearDown() override {
        if (list.m_hWnd) list.DestroyWindow();
        ListFixture::TearDown();
    }

    // Name (text), Price (decimal), Mixed, Date, Note (no type): five rows whose data are 1000 + row.
    void start(bool rows = true) {
        addColumns(list, {"Name", "Price", "Mixed", "Date", "Note"}, 70);
        const int types[] = {8, 2, 3, 6, 0};
        for (int column = 0; column < 5; ++column) list.m_arrColumns[column].iDataType = types[column];
        list.m_arrColumns[1].iFormat = kFormatRight;
        const int shown[] = {0, 1, 2, 3, 4};
        list.SetDefaultCols(5, shown);
        giveWindow(list);
        list.InsertColumnsForList(nullptr);
        if (rows) addFive();
        pumpUntilIdle();
    }
    void addFive() {
        const char* cells[5][5] = {{"delta", "10", "a10", "02-01-2024", "1"},
                                   {"alpha", "-", "a9", "01-01-2024", "2"},
                                   {"echo", "9.5", "a01", "", "3"},
                                   {"bravo", "NA", "a1", "03-02-2024", "4"},
                                   {"Charlie", "-0.5", "b", "01-03-2023", "5"}};
        for (int row = 0; row < 5; ++row) {
            list.InsertItem(row, cells[row][0]);
            for (int place = 1; place < 5; ++place) list.SetItemText(row, place, cells[row][place]);
            list.SetItemData(row, static_cast<DWORD_PTR>(1000 + row));
        }
        list.textsRead = 0;
    }
    void clickHeader(int place) {
        test::sendClick(owner.m_hWnd, {2, 2});  // else a second click on one item is a double click
        CRect item;
        list.GetHeaderCtrl()->GetItemRect(place, &item);
        test::sendClick(list.GetHeaderCtrl()->m_hWnd, item.CenterPoint());
        pumpUntilIdle();
    }
    // The rows' data less 1000, from the top; the cells are checked to have moved with them.
    std::string rows() {
        static const char* const names[] = {"delta", "alpha", "echo", "bravo", "Charlie"};
        std::string text;
        for (int row = 0; row < list.GetItemCount(); ++row) {
            const auto data = list.CListCtrl::GetItemData(row) - 1000;
            text += std::to_string(data);
            EXPECT_EQ(list.CListCtrl::GetItemText(row, 0), names[data % 5]);
        }
        return text;
    }
    // "image/format" of a header item; "-" without an image.
    std::string arrow(int place) {
        HDITEM item{};
        item.mask = HDI_FORMAT | HDI_IMAGE;
        list.GetHeaderCtrl()->GetItem(place, &item);
        if (!(item.fmt & HDF_IMAGE)) return "-";
        char text[32];
        std::snprintf(text, sizeof text, "%d/%x", item.iImage, static_cast<unsigned>(item.fmt));
        return text;
    }
    std::string stored(const char* key) {
        const auto found = fakeHost().settings.find({"Sorts", key});
        return found == fakeHost().settings.end() ? "nothing" : found->second;
    }
    void store(const char* key, const char* value) { fakeHost().settings[{"Sorts", key}] = value; }
    void command(int id) { list.SendMessage(WM_COMMAND, static_cast<WPARAM>(id), 0); }

    SortedList list;
};

using SortsOnEachRoad = test::OnEachRoad<Sorts>;
INSTANTIATE_TEST_SUITE_P(, SortsOnEachRoad, test::eachRoad, test::roadName);

TEST_P(SortsOnEachRoad, AClickOnANewColumnRisesTheNextOneFalls) {
    start();
    clickHeader(1);  // "-" and "NA" are -1
    EXPECT_EQ(rows(), "13420");
    EXPECT_EQ(arrow(1), "0/5801");
    EXPECT_EQ(arrow(0), "2/5801");
    clickHeader(1);
    EXPECT_EQ(rows(), "02413") << "equal rows keep their order";
    EXPECT_EQ(arrow(1), "1/5801");
    clickHeader(2);
    EXPECT_EQ(rows(), "23104");
    EXPECT_EQ(arrow(1) + " " + arrow(2), "2/5800 0/5800");
    clickHeader(1);
    EXPECT_EQ(rows(), "31420");
    EXPECT_EQ(list.m_bSorted, 1);
}

TEST_F(Sorts, EachTypeSortsRising) {
    start();
    EXPECT_EQ((clickHeader(3), rows()), "24103");
    EXPECT_EQ((clickHeader(0), rows()), "41302");
    EXPECT_EQ((clickHeader(4), rows()), "41302") << "no type: all rows are equal";
}

TEST_F(Sorts, TextsAreReadOncePerRowAndDataHoldMeanwhile) {
    start();
    clickHeader(1);
    EXPECT_EQ(list.textsRead, 5);
    EXPECT_TRUE(list.dataHold);
    EXPECT_EQ(list.m_arrSavedItemData.GetCount(), 0);
}

TEST_F(Sorts, RowsWithEqualDataSortToo) {
    start();
    const DWORD_PTR data[] = {7, 7, 0, ~DWORD_PTR{0}, 0};
    for (int row = 0; row < 5; ++row) list.SetItemData(row, data[row]);
    clickHeader(1);
    std::string texts;
    for (int row = 0; row < 5; ++row) {
        texts += list.CListCtrl::GetItemText(row, 4);
        EXPECT_EQ(list.GetItemData(row), data[texts[static_cast<std::size_t>(row)] - '1']);
    }
    EXPECT_EQ(texts, "24531");
    EXPECT_EQ(list.m_arrSavedItemData.GetCount(), 0);
}

TEST_F(Sorts, SelectionAndFocusStayWithTheirRow) {
    start();
    list.SetRowFocus(2);
    clickHeader(1);
    EXPECT_EQ(list.GetItemState(3, LVIS_SELECTED | LVIS_FOCUSED), static_cast<UINT>(LVIS_SELECTED | LVIS_FOCUSED));
    EXPECT_EQ(list.GetSelectedCount(), 1u);
}

TEST_F(Sorts, AMovedColumnSortsByItsOwnType) {
    start();
    CArray<int, int> columns, widths;
    for (const int column : {-1, 0, -1, 1, -1}) columns.Add(column);
    for (int column = 0; column < 5; ++column) widths.Add(70);
    list.LoadHeaders(&columns, &widths);
    // Whatever stands at place 0 now is the only column with that place.
    clickHeader(0);
    clickHeader(1);
    const int shown = list.GetOriginalColumnPosition(1);
    EXPECT_EQ(list.m_nSortDataType, list.m_arrColumns[shown].iDataType);
    EXPECT_EQ(list.m_nLockSortColumn, shown);
}

TEST_F(Sorts, ADisabledLockedOrMultiSortedListIgnoresClicks) {
    start();
    for (BYTE* flag : {&list.m_bSortLocked, &list.m_bMultiSortActive}) {
        *flag = 1;
        clickHeader(1);
        *flag = 0;
    }
    list.m_bSortDisabled = 1;
    clickHeader(1);
    EXPECT_EQ(rows(), "01234");
    EXPECT_EQ(arrow(1), "-");
}

TEST_F(Sorts, SortOnClicksTwice) {
    start();
    EXPECT_EQ(list.SortOn(1, -1), 1);
    EXPECT_EQ(list.m_nSortOrder, 1);
    EXPECT_EQ(rows(), "02413");
    EXPECT_EQ(list.SortOn(2, 1), 1);
    EXPECT_EQ(list.m_nSortOrder, 1) << "a new column falls whatever the order says";
    for (const int order : {1, -1}) {
        list.SortOn(2, order);
        EXPECT_EQ(list.m_nSortOrder, -order) << "the sorted column ends the other way round";
    }
    list.SortOn(99, 1);
    EXPECT_EQ(list.m_nSortCol, 0);
}

TEST_F(Sorts, TheRowsFollowCompareRows) {
    start();
    for (int place = 0; place < 4; ++place) {
        clickHeader(place);
        for (int row = 1; row < 5; ++row) {
            EXPECT_LE(CCommonListCtrl::CompareRows(row - 1, row, reinterpret_cast<LPARAM>(&list)), 0) << place;
        }
    }
    EXPECT_EQ(CCommonListCtrl::CompareRows(0, 1, 0), -1);
}

TEST_F(Sorts, OwnerDataRowsAreLeftAlone) {
    addColumns(list, {"Name", "Price"});
    create(list, kListStyle | LVS_OWNERDATA);
    list.InsertColumnsForList(nullptr);
    list.SetItemCountEx(50);
    clickHeader(1);
    EXPECT_EQ(list.textsRead, 0);
    EXPECT_EQ(arrow(1), "0/5800");
    EXPECT_EQ(list.m_nSortCol, 1);
}

TEST_F(Sorts, TheCheckBoxOfTheFirstColumnSurvivesTheArrow) {
    list.m_bHeaderCheckBox = 1;
    start();
    EXPECT_TRUE(list.GetHeaderCtrl()->GetStyle() & HDS_CHECKBOXES);
    clickHeader(1);
    EXPECT_EQ(arrow(0), "2/5841");
    clickHeader(0);
    EXPECT_EQ(arrow(0), "0/5840");
}

// --- Lock

TEST_F(Sorts, LockIsStoredAndHoldsClicksOff) {
    start();
    {
        test::MessageBoxAnswerer boxes;
        command(kLockSorting);
        EXPECT_EQ(boxes.texts(), Texts{"sort the coloumn before locking"});
    }
    clickHeader(1);
    command(kLockSorting);
    EXPECT_EQ(stored("SortLockInfo"), "True,1,-1");
    clickHeader(0);
    EXPECT_EQ(rows(), "13420");
    command(kLockSorting);
    EXPECT_EQ(stored("SortLockInfo"), "False,-1,0");
    clickHeader(0);
    EXPECT_EQ(rows(), "41302");
}

TEST_F(Sorts, ARefusedLockIsLogged) {
    start();
    clickHeader(1);
    fakeHost().refuseWrites = true;
    command(kLockSorting);
    EXPECT_EQ(list.m_bSortLocked, 1);
    EXPECT_EQ(fakeHost().count("AddToTabbedLog Error while saving Lock profile 0 0"), 1);
}

TEST_P(SortsOnEachRoad, AStoredLockSortsAgainWithCtrlZero) {
    store("SortLockInfo", "True,1,1");
    list.m_bLockSortEnabled = 1;
    start();
    EXPECT_EQ(rows(), "01234");
    list.SetFocus();
    test::sendKeys({VK_CONTROL, '0'});
    pumpUntilIdle();
    EXPECT_EQ(rows(), "02413");
    EXPECT_EQ(arrow(1), "1/5801");
    EXPECT_EQ(arrow(0), "-") << "no other column is touched";
    list.m_nLockSortOrder = -1;
    test::sendKeys({VK_CONTROL, VK_NUMPAD0});
    pumpUntilIdle();
    EXPECT_EQ(rows(), "13420");
    list.m_nLockSortOrder = 1;
    test::sendKeys({'0'});
    pumpUntilIdle();
    EXPECT_EQ(rows(), "13420") << "without Ctrl";
}

TEST_F(Sorts, ALockThatDoesNotFitLeavesTheListUnlocked) {
    for (const char* text : {"True,5,1", "True,-1,1", "True,1", "False,1,1", ""}) {
        SortedList other;
        other.m_csListName = "Sorts";
        other.m_bLockSortEnabled = 1;
        store("SortLockInfo", text);
        addColumns(other, {"A", "B", "C", "D", "E"});
        create(other);
        other.InsertColumnsForList(nullptr);
        EXPECT_EQ(other.m_bSortLocked, 0) << text;
        EXPECT_EQ(other.m_nLockSortColumn, -1) << text;
        other.SortByLastColumnWithLock();
        other.DestroyWindow();
    }
}

TEST_F(Sorts, ClearSortIndicatorsTakesTheArrow) {
    start();
    clickHeader(1);
    list.ClearSortIndicators();
    EXPECT_EQ(arrow(1), "0/5801") << "lock sort is not available";
    list.m_bLockSortEnabled = 1;
    list.ClearSortIndicators();
    EXPECT_EQ(arrow(1), "-");
    EXPECT_EQ(list.m_bSorted, 0);
    EXPECT_EQ(list.m_nLockSortColumn, -1);
}

TEST_F(Sorts, AMarketWatchTellsItsParent) {
    start();
    clickHeader(1);
    list.marketWatch = true;
    clickHeader(1);
    EXPECT_EQ(owner.calls.count("reordered 1001 0"), 1);
}

// --- Auto-sort

TEST_F(Sorts, AutoSortIsStoredWithTheListAndComesBack) {
    start();
    clickHeader(1);
    clickHeader(1);
    list.SaveAutoSort();
    EXPECT_EQ(stored("AutoSortTicked") + stored("AutoSort"), "falsenothing");
    list.m_bAutoSort = 1;
    list.DestroyWindow();
    EXPECT_EQ(stored("AutoSortTicked") + " " + stored("AutoSort") + " " + stored("AutoSortOrder"), "true 1 1");

    SortedList second;
    second.m_csListName = "Sorts";
    addColumns(second, {"Name", "Price"});
    second.m_arrColumns[1].iDataType = 2;
    create(second);
    second.InsertColumnsForList(nullptr);
    for (const char* price : {"1", "3", "2"}) second.SetItemText(second.InsertItem(0, price), 1, price);
    EXPECT_EQ(second.m_nAutoSortTimer, kAutoSortTimer);
    second.OnTimer(kAutoSortTimer);
    EXPECT_EQ(second.CListCtrl::GetItemText(0, 1), "3");
    second.OnTimer(kAutoSortTimer);
    EXPECT_EQ(second.CListCtrl::GetItemText(0, 1), "3") << "the order stays";
    second.DestroyWindow();
}

TEST_F(Sorts, AnEmptyListSortsWithinTheShortPeriod) {
    store("AutoSortTicked", "true");
    store("AutoSort", "1");
    start(false);
    const DWORD began = ::GetTickCount();
    addFive();
    EXPECT_TRUE(pumpFor([&] { return rows() == "13420"; }, 4000));
    EXPECT_LT(::GetTickCount() - began, 4000u);
    const int texts = list.textsRead;
    EXPECT_TRUE(pumpFor([&] { return list.textsRead > texts; }, 4000)) << "the short period stays";
    EXPECT_EQ(rows(), "13420");
    list.KillAutoSortTimer();
    EXPECT_EQ(list.m_bAutoSort, 0);
    EXPECT_FALSE(list.KillTimer(kAutoSortTimer)) << "no timer is left";
}

TEST_F(Sorts, AutoSortReadsItsSettings) {
    start();
    store("AutoSortTicked", "true");
    store("AutoSort", "5");
    store("AutoSortOrder", "1");
    list.m_nSortOrder = -1;
    EXPECT_EQ(list.ReadAutoSort(), -1);
    EXPECT_EQ(list.m_nSortCol, 0);
    EXPECT_EQ(list.m_nSortOrder, -1) << "nothing is read behind a place that is gone";
    list.marketWatch = true;
    fakeHost().optimizedMarketWatch = 1;
    EXPECT_EQ(list.IsAutoSortEnabled(), 0);
    store("AutoSort", "2");
    EXPECT_EQ(list.ReadAutoSort(), 1);
    EXPECT_EQ(list.m_bAutoSort, 0);
    EXPECT_EQ(list.m_nLastSortCol, 2);
}

TEST_F(Sorts, AutoSortOffDoesNothing) {
    start();
    EXPECT_EQ(list.SortOnVisibleIndex(1, 1), 1);
    EXPECT_EQ(rows(), "01234");
    list.m_bAutoSort = 1;
    EXPECT_EQ(list.SortOnVisibleIndex(1, 1), 1);
    EXPECT_EQ(rows(), "13420");
    list.SortOnVisibleIndex(-3, 1);
    EXPECT_EQ(list.m_nSortCol, 0);
}

// --- Levels

TEST_P(SortsOnEachRoad, LevelsAreReadShownAndStored) {
    store("COLUMN_SORT_ORDER_PROFILE", "Price->1, Name -> -1,Nowhere->1#1");
    list.m_bMultiSortEnabled = 1;
    list.m_bSortLocked = list.m_bSorted = 1;
    start();
    ASSERT_EQ(list.m_arrSortOrder.GetCount(), 2);
    EXPECT_EQ(list.m_bMultiSortActive, 1);
    EXPECT_EQ(list.m_bSortLocked + list.m_bSorted, 0);
    EXPECT_EQ(arrow(0) + " " + arrow(1) + " " + arrow(2), "0/5800 1/5801 -");
    list.DrawHeaderSortImageForMultiSortMode(1, false);
    EXPECT_EQ(arrow(0) + " " + arrow(1), "2/5800 2/5801");

    list.SaveSortOrderProfile();
    EXPECT_EQ(stored("COLUMN_SORT_ORDER_PROFILE"), "Price->1, Name -> -1,Nowhere->1#1")
        << "no chooser, nothing written";
    LevelsAsChooser chooser(list.m_arrSortOrder);
    list.SetSortOrderChooser(&chooser);
    list.m_mapSortOrderByName.RemoveKey("Name");
    list.m_mapSortOrderByName["Price"] = 1;
    list.SaveSortOrderProfile();
    EXPECT_EQ(stored("COLUMN_SORT_ORDER_PROFILE"), "Price->1,Name->-1#1");
    fakeHost().refuseWrites = true;
    test::MessageBoxAnswerer boxes;
    list.SaveSortOrderProfile();
    EXPECT_EQ(boxes.texts(), Texts{"Error while saving sort column profile"});
}

TEST_F(Sorts, AStoredLevelOfAHiddenColumnIsToldAndLogged) {
    list.m_bMultiSortEnabled = 1;
    const int shown[] = {0, 1};
    addColumns(list, {"Name", "Price", "Mixed"});
    list.SetDefaultCols(2, shown);
    store("COLUMN_SORT_ORDER_PROFILE", "Mixed->1,Price->-1#1");
    subclass(list);
    test::MessageBoxAnswerer boxes;
    list.InsertColumnsForList(nullptr);
    EXPECT_EQ(boxes.texts(), Texts{kHiddenLevel});
    EXPECT_EQ(fakeHost().count(kLogHidden), 1);
    ASSERT_EQ(list.m_arrSortOrder.GetCount(), 1);
    EXPECT_EQ(list.m_arrSortOrder[0].iColumnIndex, 1);
    int order = 0;
    EXPECT_FALSE(list.m_mapSortOrderByName.Lookup("Mixed", order));
}

TEST_F(Sorts, AnEmptyStoredTextEndsTheMultiSort) {
    start();
    list.m_bMultiSortEnabled = list.m_bMultiSortActive = 1;
    list.ReadSortOrderProfile();
    EXPECT_EQ(list.m_bMultiSortActive, 1) << "nothing stored changes nothing";
    store("COLUMN_SORT_ORDER_PROFILE", "");
    list.ReadSortOrderProfile();
    EXPECT_EQ(list.m_bMultiSortActive, 0);
}

TEST_F(Sorts, RowNumbersAreSortedByAllLevels) {
    start();
    list.m_bMultiSortActive = 1;
    EXPECT_EQ(list.BuildSortColumnOrderArray("Price", -1), 1);
    EXPECT_EQ(list.BuildSortColumnOrderArray("Mixed", 1), 1);
    int array[] = {-7, 0, 1, 2, 3, 4, -7};
    list.SendInfoForQSort(array + 1, 5, sizeof(int));
    // "-" and "NA" count as 0 here.
    EXPECT_EQ((std::vector<int>(array, array + 7)), (std::vector<int>{-7, 4, 1, 3, 2, 0, -7}));
    EXPECT_EQ(list.textsRead, 10);
    list.SendInfoForQSort(nullptr, 5, sizeof(int));
    list.SendInfoForQSort(array, 0, sizeof(int));
    EXPECT_EQ(array[0], -7);
}

TEST_F(Sorts, CtrlZeroRunsTheMultiSortFirst) {
    start();
    list.m_bMultiSortActive = list.m_bSortLocked = 1;
    list.SetFocus();
    test::sendKeys({VK_CONTROL, '0'});
    pumpUntilIdle();
    EXPECT_EQ(list.multiSorts, 1);
}

TEST_F(Sorts, HidingASortedColumnAsksOnce) {
    start();
    list.m_bMultiSortActive = 1;
    list.BuildSortColumnOrderArray("Price", 1);
    list.BuildSortColumnOrderArray("Name", 1);
    const Texts question = {
        "You are removing one or more sorted columns this will disable multi-level sorting, Do you want to continue ?"};
    int shown = 0;
    EXPECT_TRUE(list.AlertUserOnRemovalOfSortColumns("Note", &shown));
    {
        test::MessageBoxAnswerer boxes({IDNO});
        EXPECT_FALSE(list.AlertUserOnRemovalOfSortColumns("Price", &shown));
        EXPECT_TRUE(list.AlertUserOnRemovalOfSortColumns("Name", &shown)) << "asked once";
        EXPECT_EQ(boxes.texts(), question);
    }
    list.m_arrOrder[1] = -1;
    EXPECT_TRUE(list.RemoveNonVisibleColumnsFromSortOrder());
    EXPECT_EQ(list.m_bMultiSortActive, 1);
    shown = 0;
    {
        test::MessageBoxAnswerer boxes({IDYES});
        EXPECT_TRUE(list.AlertUserOnRemovalOfSortColumns("Name", &shown));
        EXPECT_EQ(boxes.texts(), question);
    }
    EXPECT_FALSE(list.RemoveNonVisibleColumnsFromSortOrder());
    EXPECT_EQ(list.m_bMultiSortActive, 0);
    ASSERT_EQ(list.m_arrSortOrder.GetCount(), 1);
    EXPECT_EQ(list.m_arrSortOrder[0].csColumnName, "Name");
}

TEST_F(Sorts, HidingTheLockedColumnAsks) {
    start();
    clickHeader(1);
    command(kLockSorting);
    int shown = 0;
    EXPECT_TRUE(list.AlertUserOnRemovalOfSortColumns("Name", &shown));
    test::MessageBoxAnswerer boxes({IDNO});
    EXPECT_FALSE(list.AlertUserOnRemovalOfSortColumns("Price", &shown));
    EXPECT_EQ(boxes.texts(), Texts{"You are removing one or more sorted columns. Do you want to continue ?"});
}

TEST_F(Sorts, TheMenusCommandsReachTheList) {
    start();
    command(kFitColumnsToHeader);
    EXPECT_EQ(list.GetColumnWidth(0), 50);
    list.SetRowFocus(0);
    command(kCopyToClipboard);
    EXPECT_EQ(list.m_csClipboard, "delta\t10\ta10\t02-01-2024\t1\t\r\n");
    command(kMultiColumnSorting);
}

}  // namespace
