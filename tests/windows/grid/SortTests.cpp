// The grid's sort on real windows: header clicks, the locked sort, checked rows first.
#include "windows/grid/GridFixture.h"

#include <memory>

namespace grid_tests {
namespace {

// A value by columnIndex 1 for each letter.
using Values = std::vector<std::pair<char, const char*>>;

class Sort : public GridFixture {
protected:
    enum Mode { opti, classic };

    // Columns: name (texts), value (of a type), other.
    void open(Mode mode = opti, bool reverse = false, int valueType = 1) {
        open(mode, std::make_unique<CFilterListCtrl>(), reverse, valueType);
    }
    void open(Mode mode, std::unique_ptr<CFilterListCtrl> made, bool reverse = false, int valueType = 1) {
        m_grid = std::move(made);  // an older one takes its window along
        create(grid(), {{"name", 60, 0, 3}, {"value", 60, kFormatRight, valueType}, {"other", 60, 0, 3}},
               CRect(0, 0, 300, 200), kGridStyle & ~static_cast<DWORD>(LVS_NOSORTHEADER));
        grid().SetUseFilter(TRUE);
        grid().SetReverseDisplay(reverse);
        if (mode == opti) grid().SetOptiDataMode(true);
    }
    void add(const Values& values) {
        for (const auto& [name, value] : values) {
            Row* const made = row({name});
            made->cells[1] = value;
            if (grid().GetOptiDataMode()) {
                grid().AddRow(made, false);
            } else {
                grid().InsertItem(0, "");
                grid().SetItemData(0, dataOf(made));
            }
        }
        processEndofBatchUpdates();
    }
    void click(int place) {
        CHeaderCtrl* const header = grid().GetHeaderCtrl();
        CRect item;
        header->GetItemRect(place, &item);
        const POINT point{(item.left + item.right) / 2, item.Height() / 2};
        const LPARAM where = MAKELPARAM(point.x, point.y);
        header->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, where);
        header->SendMessage(WM_LBUTTONUP, 0, where);
    }
    HDITEM arrow(int place) {
        HDITEM item{};
        item.mask = HDI_FORMAT | HDI_IMAGE;
        grid().GetHeaderCtrl()->GetItem(place, &item);
        return item;
    }
    std::string caption(int place) {
        char text[100] = {};
        HDITEM item{};
        item.mask = HDI_TEXT;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        grid().GetHeaderCtrl()->GetItem(place, &item);
        return text;
    }
    // Empty when every displayed row says its own visual index.
    std::string wrongNumbers() {
        for (int visual = 0; visual < grid().GetDisplayCount(); ++visual) {
            Row* const shown = rowOf(grid().GetItemData(visual));
            int mapIndex, told;
            CFilterListCtrl::getRowIndices(shown, &grid(), mapIndex, told);
            if (told != visual || grid().GetMapItemData(static_cast<unsigned>(mapIndex)) != dataOf(shown))
                return shown->name + " says " + std::to_string(told);
        }
        return {};
    }
    bool isDirty() { return grid().GetUpdateRect(nullptr) != 0; }

    CFilterListCtrl& grid() { return *m_grid; }
    const Values ties{{'a', "2"}, {'b', "1"}, {'c', "2"}, {'d', "10"}};

private:
    std::unique_ptr<CFilterListCtrl> m_grid;
};

using SortOnEachRoad = test::OnEachRoad<Sort>;
INSTANTIATE_TEST_SUITE_P(, SortOnEachRoad, test::eachRoad, test::roadName);

TEST_P(SortOnEachRoad, ClicksEndInThePictureOfTheTable) {
    struct Case {
        const char* fact;
        Mode mode;
        bool reverse;
        std::vector<int> clicks;
        const char* picture;
    };
    const Case table[] = {
        {"rising: the newer first among equals", opti, false, {1}, "bcad"},
        {"classic mode", classic, false, {1}, "bcad"},
        {"classic mode, reverse display", classic, true, {1, 1}, "dacb"},
    };
    for (const Case& c : table) {
        SCOPED_TRACE(c.fact);
        open(c.mode, c.reverse);
        add(ties);
        for (const int place : c.clicks) click(place);
        EXPECT_EQ(picture(grid()), c.picture);
        if (c.mode == opti) {
            EXPECT_EQ(wrongNumbers(), "");
        }
        EXPECT_TRUE(grid().m_bSorted);
        EXPECT_EQ(grid().g_SortingList, &grid());
    }
}

TEST_F(Sort, TheGridThatSortedLastIsForgottenWhenItGoes) {
    open();
    add(ties);
    click(1);
    EXPECT_EQ(CFilterListCtrl::g_SortingList, &grid());
    open();
    EXPECT_EQ(CFilterListCtrl::g_SortingList, nullptr);
}

// The base list's handler runs behind the grid's own and turns the order once more.
TEST_F(Sort, AutoSortStepsTakeTurns) {
    open();
    add(ties);
    click(1);
    EXPECT_EQ(grid().SortOnVisibleIndex(1, 1), 1);
    EXPECT_EQ(picture(grid()), "bcad");
    EXPECT_EQ(grid().m_nSortOrder, -1) << "auto-sort is off: no step";
    grid().m_bAutoSort = 1;
    for (const char* const rows : {"bcad", "dacb", "bcad"}) {
        grid().SortOnVisibleIndex(1, 1);
        EXPECT_EQ(picture(grid()), rows);
        EXPECT_EQ(wrongNumbers(), "");
    }
}

TEST_F(Sort, AColumnOfEqualTextsMovesAndRepaintsNothing) {
    open();
    add({{'a', "7"}, {'b', "7"}});
    grid().ValidateRect(nullptr);
    click(1);
    EXPECT_EQ(picture(grid()), "ab");
    EXPECT_FALSE(isDirty());
    EXPECT_TRUE(grid().m_bSorted);
    row("b")->cells[1] = "07";  // the same number in another text
    click(1);
    click(1);
    EXPECT_EQ(picture(grid()), "ba");
    EXPECT_TRUE(isDirty());
}

TEST_F(Sort, SelectionStaysWhereItIsOnScreen) {
    open();
    add(ties);
    grid().SetItemState(0, LVIS_SELECTED, LVIS_SELECTED);
    click(1);
    EXPECT_EQ(picture(grid()), "b*cad");
}

TEST_P(SortOnEachRoad, TheOldArrowLosesImageAndAlignment) {
    open();
    add(ties);
    constexpr int formats = HDF_STRING | HDF_BITMAP_ON_RIGHT | HDF_IMAGE;
    click(1);
    EXPECT_EQ(arrow(1).fmt & ~HDF_OWNERDRAW, formats);
    EXPECT_EQ(arrow(1).iImage, 0);
    click(1);
    EXPECT_EQ(arrow(1).iImage, 1);
    click(2);
    EXPECT_EQ(arrow(1).fmt & ~HDF_OWNERDRAW, HDF_STRING);
    EXPECT_EQ(arrow(2).fmt & ~HDF_OWNERDRAW, formats);
    EXPECT_EQ(arrow(2).iImage, 0);
}

// Not all rows are asked for, and not in the control's way: it would know neither heading nor arrow.
TEST_F(Sort, ADoubleClickOnADividerFitsTheRowsInViewTheHeadingAndTheArrow) {
    constexpr int margins = 12, headingMargins = 11, arrow = 16;
    int heard = 0;
    owner.onNotify = [&](const NMHDR& news) { heard += news.code == static_cast<UINT>(HDN_DIVIDERDBLCLICKA); };
    open(opti, false, 2);
    for (int i = 0; i < 100; ++i) grid().AddRow(row("row " + std::to_string(i)), false);
    processEndofBatchUpdates();
    grid().UpdateWindow();
    CHeaderCtrl* const header = grid().GetHeaderCtrl();
    const auto doubleClick = [&] {
        CRect item;
        header->GetItemRect(1, &item);
        owner.asked = 0;
        header->SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(item.right - 1, 5));
        EXPECT_LE(owner.asked, grid().GetCountPerPage() + 1);
        return grid().GetColumnWidth(1);
    };
    row("row 99")->cells[1] = std::string(60, '8');
    EXPECT_EQ(doubleClick(), grid().GetStringWidth("value") + headingMargins);
    click(1);
    const int arrowRoom = arrow + 2 * header->GetBitmapMargin();
    EXPECT_EQ(doubleClick(), grid().GetStringWidth("value") + headingMargins + arrowRoom);
    Row* const shown = rowOf(grid().GetItemData(0));
    shown->cells[1] = "123456789.25";
    EXPECT_EQ(doubleClick(), grid().GetStringWidth("123,456,789.25") + margins) << "as it is painted";
    EXPECT_EQ(heard, 3);
}

// Counts what would sort; nothing is invalidated here.
class LockedElsewhere : public CFilterListCtrl {
public:
    int sorts = 0;
    void SortByLastColumnWithLock() override { ++sorts; }
};

// A locked sort repaints the list by itself; where it has nothing to do, the rebuild does it.
TEST_F(Sort, ARebuildLeavesTheRepaintToALockedSortThatRuns) {
    static const struct {
        const char* name;
        bool locked, shown, rows, invalidates;
    } cases[] = {{"no lock", false, true, true, true},
                 {"a lock in force", true, true, true, false},
                 {"its column is hidden", true, false, true, true},
                 {"no row", true, true, false, true}};
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.name);
        auto made = std::make_unique<LockedElsewhere>();
        LockedElsewhere& locked = *made;
        open(opti, std::move(made));
        if (expected.rows) add({{'a', "3"}, {'b', "1"}});
        grid().m_bLockSortEnabled = grid().m_bSorted = grid().m_bSortLocked = expected.locked;
        grid().m_nLockSortColumn = 1;
        if (!expected.shown) grid().m_arrOrder.SetAt(1, -1);
        grid().UpdateWindow();
        ::ValidateRect(grid().m_hWnd, nullptr);
        grid().PopulateList();
        EXPECT_EQ(::GetUpdateRect(grid().m_hWnd, nullptr, FALSE) != FALSE, expected.invalidates);
        EXPECT_EQ(locked.sorts, expected.locked ? 1 : 0);
    }
}

TEST_F(Sort, ALockColumnOutsideTheListThrows) {
    open();
    add(ties);
    grid().m_nLockSortColumn = 9;
    EXPECT_ANY_THROW(grid().SortByLastColumnWithLock());
    click(1);  // the next run is not in its way
    EXPECT_EQ(picture(grid()), "bcad");
}

// Two clicks on a list that is sorted already, as the base list counts them: a new column falls.
TEST_F(Sort, WithoutAStoreSortOnIsTheBaseLists) {
    CFilterListCtrl plain;
    create(plain, {{"name", 60, 0, 3}, {"value", 60, 0, 1}}, CRect(0, 0, 300, 200),
           kGridStyle & ~static_cast<DWORD>(LVS_OWNERDATA));
    for (int i = 0; i < 3; ++i) {
        plain.InsertItem(i, "");
        plain.SetItemText(i, 1, std::to_string(i).c_str());
    }
    const auto values = [&] {
        std::string text;
        for (int i = 0; i < 3; ++i) text += plain.GetItemText(i, 1).GetString();
        return text;
    };
    plain.SortOn(1, 1);
    EXPECT_EQ(values(), "210");
    plain.SortOn(1, 1);
    EXPECT_EQ(values(), "012") << "the opposite of what was asked for";
    plain.SortOn(1, 0);
    EXPECT_EQ(values(), "210");
}

TEST_F(Sort, ARowDragListSortsItsMap) {
    for (const bool reverse : {false, true}) {
        open(classic, reverse);
        grid().m_bRowDragEnabled = 1;
        add({{'a', "2"}, {'b', "1"}, {'c', "3"}});
        click(1);
        EXPECT_EQ(picture(grid()), "bac") << reverse;
        grid().PopulateList();
        EXPECT_EQ(picture(grid()), "bac") << "the map itself is in this order";
        grid().m_bLockSortEnabled = grid().m_bSortLocked = 1;
        row("a")->cells[1] = "9";
        grid().PopulateList();
        EXPECT_EQ(picture(grid()), "bca") << "a locked sort of the map ends";
        grid().m_bSortLocked = 0;
    }
}

TEST_F(Sort, CheckedRowsComeFirstWithTheirCounts) {
    open(classic);
    add({{'b', "1"}, {'d', "1"}, {'a', "1"}, {'c', "1"}});
    grid().m_nSortOrder = -1;
    grid().SetCheck(0, 1);
    grid().SetCheck(1, 1);
    grid().SetSelectionMark(3);
    grid().SortOnChecked();
    EXPECT_EQ(picture(grid()), "bdac*!");
    EXPECT_EQ(caption(0), "name (2 / 4)");
    EXPECT_EQ(grid().GetSelectionMark(), 3);
    grid().SetCheck(3, 1);
    grid().SortOnCheckedFlag = true;
    click(1);
    EXPECT_EQ(caption(0), "name (3 / 4)");
    EXPECT_EQ(grid().GetItemData(1), dataOf(row("c")));
    EXPECT_EQ(grid().GetItemData(3), dataOf(row("a")));
    EXPECT_EQ(grid().GetSelectionMark(), 1);
}

// The counts stand in the heading of the first place, and a column's width is saved by its heading.
TEST_F(Sort, AColumnUnderTheCountsKeepsItsWidthInTheProfile) {
    struct Case {
        std::vector<int> shown;
        const char* profile;
    };
    const Case table[] = {
        {{0, 1, 2}, "0,0,81,1,1,82,2,2,83"},
        {{2, 0}, "0,1,82,1,-1,0,2,0,81"},
    };
    for (const Case& c : table) {
        open(classic);
        add(ties);
        grid().m_csListName = "sorted";
        CArray<int, int> columns, widths;
        for (const int columnIndex : c.shown) {
            widths.Add(81 + static_cast<int>(columns.GetCount()));
            columns.Add(columnIndex);
        }
        grid().LoadHeaders(&columns, &widths);
        for (const int checked : {1, 0}) {
            grid().SetCheck(0, checked);
            grid().SortOnChecked();
            grid().SaveColumnProfile();
            EXPECT_EQ((fakeHost().settings[{"sorted", "COLUMNPROFILE"}]), c.profile) << caption(0);
        }
    }
}

}  // namespace
}  // namespace grid_tests
