// Filters on real grids: the store and the rebuild, the pop-up of values, the combo box, the tint of the header. Rows
// have the columns name, group and price.
#include "src/grid/FilterText.h"
#include "src/resource/resource.h"
#include "support/Input.h"
#include "windows/grid/GridFixture.h"

#include <random>

#include "core/grid/NaiveFilter.h"

namespace grid_tests {
namespace {

class GridFilter : public GridFixture {
protected:
    void begin(bool reverse = false) {
        create(grid, {{"name"}, {"group"}, {"price", 60, 1, 1}});
        grid.SetUseFilter(TRUE);
        grid.SetReverseDisplay(reverse);
        grid.SetOptiDataMode(true);
    }
    void add(const std::string& name, const std::string& group, const std::string& price) {
        Row* const made = row(name);
        made->cells = {{1, group}, {2, price}};
        grid.AddRow(made, false);
        processEndofBatchUpdates();
    }
    void addSix() {
        add("a", "X", "1");
        add("b", "Y", "2");
        add("c", "X", "3");
        add("d", "XY", "12abc");
        add("e", "", "");
        add("f", "x", "-5");
    }
    std::string filtered(std::initializer_list<std::pair<int, const char*>> filters) {
        CArray<int, int> columns;
        CArray<CString, CString> texts;
        grid.GetFileteredCols(columns, texts);
        for (INT_PTR i = 0; i < columns.GetSize(); ++i) grid.AddToFilteredCols(columns.GetAt(i), "");
        for (const auto& [column, text] : filters) grid.AddToFilteredCols(column, text);
        grid.PopulateList();
        return picture(grid);
    }
    std::vector<std::string> entries(CWnd& list, UINT count, UINT text) {
        std::vector<std::string> result;
        for (LRESULT i = 0; i < list.SendMessage(count); ++i) {
            char buffer[64] = "";
            list.SendMessage(text, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(buffer));
            result.push_back(buffer);
        }
        return result;
    }
    void clickFunnel(int place) {
        NMHDFILTERBTNCLICK click{};
        CHeaderCtrl& header = *grid.GetHeaderCtrl();
        click.hdr = {header.m_hWnd, 0, static_cast<UINT>(HDN_FILTERBTNCLICK)};
        click.iItem = place;
        header.GetItemRect(place, &click.rc);
        grid.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
    }

    CFilterListCtrl grid;
};

TEST_F(GridFilter, RowsPassAllColumnsAndFollowTheirUpdates) {
    begin();
    addSix();
    EXPECT_EQ(filtered({{1, "x"}}), "acdf");
    EXPECT_EQ(filtered({{1, "x"}, {2, ">1"}}), "cd");
    EXPECT_EQ(filtered({{1, "*y"}, {2, "<5~>10"}}), "bd");
    EXPECT_EQ(filtered({{1, "~"}}), "");
    EXPECT_EQ(filtered({}), "abcdef");
    EXPECT_EQ(filtered({{1, "X"}}), "acdf");
    row("b")->cells[1] = "xx";
    EXPECT_EQ(grid.UpdateRow(row("b")), 1);
    row("a")->cells[1] = "";
    EXPECT_EQ(grid.UpdateRow(row("a")), -1);
    add("g", "Y", "1");
    EXPECT_EQ(picture(grid), "bcdf");
}

TEST_F(GridFilter, TheHostIsAskedUpToTheFirstFilterThatFails) {
    begin();
    addSix();
    owner.asked = 0;
    grid.AddToFilteredCols(1, "Y");
    grid.AddToFilteredCols(2, ">1");
    EXPECT_EQ(grid.CheckForFilteredData(dataOf(row("a"))), 0);
    EXPECT_EQ(owner.asked, 1);
    EXPECT_EQ(grid.CheckForFilteredData(dataOf(row("b"))), 1);
    EXPECT_EQ(owner.asked, 3);
}

// A callback that writes no text leaves an empty cell, not that of the row before.
TEST_F(GridFilter, NoCellInheritsTheTextOfTheRowBefore) {
    begin();
    addSix();
    row("b")->cells.erase(1);
    EXPECT_EQ(filtered({{1, "x"}}), "acdf");
}

TEST_F(GridFilter, ReverseDisplayShowsTheNewestOnTop) {
    begin(true);
    addSix();
    EXPECT_EQ(filtered({{1, "x"}}), "fdca");
}

TEST_F(GridFilter, ArraysThatDifferLeaveTheListEmpty) {
    class Broken : public CFilterListCtrl {
    public:
        void breakStore() { static_cast<Store&>(m_filters).addColumn(); }

    private:
        struct Store : FilterStore {
            void addColumn() { FilteredCols.Add(1); }
        };
    } broken;
    createOpti(broken);
    broken.AddRow(row("a"), true);
    broken.breakStore();
    test::MessageBoxAnswerer answerer;
    broken.PopulateList();
    EXPECT_EQ(answerer.texts(), std::vector<std::string>{"Error occured while filtering"});
    EXPECT_EQ(broken.GetDisplayCount(), 0);
}

TEST_F(GridFilter, BadArgumentsOfTheArrayFormChangeNothing) {
    begin();
    grid.AddToFilteredCols(1, "x");
    CArray<int, int> columns;
    CArray<CString, CString> texts;
    columns.Add(0);
    EXPECT_EQ(grid.SetMapColumnFilter(&columns, &texts, 0), 0);
    columns.Add(-1);
    texts.Add("a");
    texts.Add("b");
    EXPECT_EQ(grid.SetMapColumnFilter(&columns, &texts, 0), 0);
    CString text = "y";
    EXPECT_EQ(grid.SetVisibleColumnFilter(-1, text, 0), 0);
    EXPECT_EQ(grid.GetFilterCount(), 1);
}

TEST_F(GridFilter, RandomFiltersAgreeWithTheLiteralReading) {
    static const char* const filters[] = {"", "x", "*1", "*x*", ">2", "<2~>4", "~", "*", "X~Y1", "y~*", "1"};
    static const char* const cells[] = {"", "x", "X1", "y1", "Y", "1", "2", "3.5", "-4", "5x", "xy"};
    begin();
    std::mt19937 random(7);
    const auto pick = [&random](auto& table) { return table[random() % std::size(table)]; };
    for (int i = 0; i < 60; ++i) add("r" + std::to_string(i) + " ", pick(cells), pick(cells));
    std::vector<const char*> inForce(3, "");
    for (int step = 0; step < 300; ++step) {
        if (step % 5 == 0) {
            const unsigned column = 1 + random() % 2;
            inForce[column] = pick(filters);
            grid.AddToFilteredCols(static_cast<int>(column), inForce[column]);
            grid.PopulateList();
        }
        Row* const changed = row("r" + std::to_string(random() % 60) + " ");
        changed->cells[1 + static_cast<int>(random() % 2)] = pick(cells);
        grid.UpdateRow(changed);
        std::string expected;
        for (int i = 0; i < 60; ++i) {
            Row* const one = row("r" + std::to_string(i) + " ");
            if (naive_filter::passes(one->cells[1].c_str(), inForce[1], false) &&
                naive_filter::passes(one->cells[2].c_str(), inForce[2], false))
                expected += one->name;
        }
        ASSERT_EQ(picture(grid), expected) << "step " << step;
    }
}

TEST_F(GridFilter, TheComboBoxOffersWhatTheRowsShow) {
    begin();
    addSix();
    filtered({{2, ">0"}});
    CComboBox combo;
    combo.Create(WS_CHILD | CBS_DROPDOWNLIST | CBS_SORT, CRect(0, 200, 100, 400), &owner, 9);
    combo.AddString("old");
    EXPECT_EQ(grid.PopulateComboBoxWithUniques(&combo, 1), 1);
    EXPECT_EQ(entries(combo, CB_GETCOUNT, CB_GETLBTEXT), (std::vector<std::string>{"--ALL--", "X", "XY", "Y"}));
    EXPECT_EQ(combo.GetCurSel(), 0);
}

TEST_F(GridFilter, ThePopUpOffersTheValuesOfPassingRowsSortedAsText) {
    begin();
    add("a", "X", "9");
    add("b", "X", "10");
    add("c", "Y", "1");
    add("d", "X", "9");
    filtered({{1, "X"}});
    int forwarded = 0;
    owner.onNotify = [&](const NMHDR& news) {
        forwarded += news.code == static_cast<UINT>(HDN_FILTERBTNCLICK) && news.idFrom == kGridId;
    };
    clickFunnel(2);
    EXPECT_EQ(forwarded, 1);
    CFilterText& popup = *CFilterText::shared(&grid);
    EXPECT_TRUE(popup.IsWindowVisible());
    EXPECT_EQ(entries(popup.values(), LB_GETCOUNT, LB_GETTEXT), (std::vector<std::string>{"10", "9"}));
    EXPECT_EQ(popup.values().GetHorizontalExtent(), 500);
    POINT cursor;
    ::GetCursorPos(&cursor);
    CRect area;
    popup.GetWindowRect(area);
    EXPECT_EQ(area.TopLeft(), CPoint(cursor));
    frame().SetActiveWindow();
    EXPECT_FALSE(popup.IsWindowVisible());
}

// What a dead grid's pop-up still offers goes nowhere.
TEST_F(GridFilter, ThePopUpOutlivesItsGrid) {
    {
        CFilterListCtrl other;
        createOpti(other);
        other.AddRow(row("a"), true);
        CFilterText::shared(&other)->SetFilterlist(&other, 0);
        CFilterText::shared(&other)->values().ResetContent();
        CFilterText::shared(&other)->values().AddString("a");
    }
    CFilterText& popup = *CFilterText::shared(&frame());
    popup.values().SetSel(0);
    popup.OnLbnDblclkFilterlist();
    EXPECT_FALSE(popup.IsWindowVisible());
}

TEST_F(GridFilter, AFilterTintsTheWholeHeader) {
    begin();
    auto& header = *static_cast<CColorHeaderCtrl*>(grid.GetHeaderCtrl());
    const auto seen = [&](int place) {
        CRect item;
        header.GetItemRect(place, item);
        header.RedrawWindow();
        CClientDC dc(&header);
        return dc.GetPixel(item.right - 4, item.top + 3);
    };
    EXPECT_EQ(header.groundOf(0), ::GetSysColor(COLOR_BTNFACE));
    grid.AddToFilteredCols(1, "x");
    EXPECT_EQ(header.groundOf(0), 0x82DDEEu);
    EXPECT_EQ(header.groundOf(1), 0x20A5DAu);
    if (seen(0) == CLR_INVALID) GTEST_SKIP() << "no pixels can be read from this display";
    EXPECT_EQ(seen(0), 0x82DDEEu);
    EXPECT_EQ(seen(1), 0x20A5DAu);
}

TEST_F(GridFilter, CtrlFShowsTheBarUnlessTheFilterIsNotOffered) {
    begin();
    const auto barIsOn = [&] { return (grid.GetHeaderCtrl()->GetStyle() & HDS_FILTERBAR) != 0; };
    grid.SetFocus();
    EXPECT_FALSE(barIsOn());
    test::sendKeys({VK_CONTROL, 'F'});
    EXPECT_TRUE(pumpFor(barIsOn));
    grid.SetFocus();
    test::sendKeys({VK_CONTROL, 'F'});
    EXPECT_TRUE(pumpFor([&] { return !barIsOn(); }));
    grid.FilterUiEnabled = false;
    test::sendKeys({VK_CONTROL, 'F'});
    pumpUntilIdle();
    EXPECT_FALSE(barIsOn());
}

}  // namespace
}  // namespace grid_tests
