// Filters on real grids: the store and the rebuild, the pop-up of values, the combo box, the tint of the header. Rows
// have the columns name, group and price.
#include "quor/grid/FilterText.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/resource/resource.h"
#include "support/Canvas.h"
#include "windows/grid/GridFixture.h"

using namespace quor::grid;

namespace grid_tests {
namespace {

class GridFilter : public GridFixture {
protected:
    void begin(bool reverse = false, DWORD style = kGridStyle) {
        create(grid, {{"name"}, {"group"}, {"price", 60, 1, 1}}, CRect(0, 0, 300, 200), style);
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

using GridFilterOnEachRoad = test::OnEachRoad<GridFilter>;
INSTANTIATE_TEST_SUITE_P(, GridFilterOnEachRoad, test::eachRoad, test::roadName);

// Such a control makes its header late.
TEST_P(GridFilterOnEachRoad, AGridThatWasCreatedHiddenFiltersToo) {
    begin(false, (kGridStyle | LVS_OWNERDRAWFIXED) & ~WS_VISIBLE);
    EXPECT_TRUE(grid.GetHeaderCtrl()->IsKindOf(RUNTIME_CLASS(CColorHeaderCtrl)));
    EXPECT_GE(fakeHost().calls.count("quoru_call_LoadLibrary UxTheme.dll"), 1) << "for its header's theme";
    addSix();
    EXPECT_EQ(filtered({{1, "x"}}), "acdf");
}

TEST_P(GridFilterOnEachRoad, AHeaderThatComesLaterComesWithoutABar) {
    const auto barIsOn = [&] { return (grid.GetHeaderCtrl()->GetStyle() & HDS_FILTERBAR) != 0; };
    grid.SetUseFilter(TRUE);  // no window yet
    for (int window = 0; window < 2; ++window) {
        create(grid);
        EXPECT_FALSE(barIsOn());
        grid.PutListFilter();
        EXPECT_TRUE(barIsOn()) << "the first call shows it";
        grid.DestroyWindow();
    }
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

TEST_F(GridFilter, BadArgumentsOfTheArrayFormChangeNothing) {
    begin();
    grid.AddToFilteredCols(1, "x");
    CArray<int, int> columns;
    CArray<CString, CString> texts;
    columns.Add(0);
    EXPECT_EQ(grid.SetMapColumnFilter(&columns, &texts, 0), 0) << "a column without a text";
    texts.Add("a");
    texts.Add("b");
    columns.Add(-1);
    EXPECT_EQ(grid.SetMapColumnFilter(&columns, &texts, 0), 0) << "no such column";
    EXPECT_EQ(grid.GetFilterCount(), 1);
}

TEST_F(GridFilter, AnImportOfColumnsRebuildsTheRows) {
    char file[MAX_PATH];
    ::GetTempPathA(MAX_PATH, file);
    ::strcat(file, ("grid_import_" + std::to_string(::GetCurrentProcessId()) + ".ini").c_str());
    begin();
    addSix();
    grid.m_csListName = "orders";
    grid.ExportColumnToFile(file);
    grid.AddToFilteredCols(1, "x");
    EXPECT_EQ(picture(grid), "abcdef");
    grid.ImportColumns(file);
    EXPECT_EQ(picture(grid), "acdf");
    EXPECT_EQ(grid.GetHeaderCtrl()->GetItemCount(), 3);
    grid.AddToFilteredCols(1, "");
    ::DeleteFileA(file);
    grid.ImportColumns(file);
    EXPECT_EQ(picture(grid), "acdf") << "nothing came from a file";
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

TEST_P(GridFilterOnEachRoad, AFilterTintsTheWholeHeader) {
    begin();
    auto& header = *static_cast<CColorHeaderCtrl*>(grid.GetHeaderCtrl());
    const auto seen = [&](int place) {
        CRect item;
        header.GetItemRect(place, item);
        header.UpdateWindow();
        CClientDC dc(&header);
        return dc.GetPixel(item.right - 4, item.top + 3);
    };
    const COLORREF plain = seen(0);
    EXPECT_EQ(header.groundOf(0), ::GetSysColor(COLOR_BTNFACE));
    grid.AddToFilteredCols(1, "x");
    EXPECT_EQ(header.groundOf(0), 0x82DDEEu);
    EXPECT_EQ(header.groundOf(1), 0x20A5DAu);
    if (seen(0) == CLR_INVALID) GTEST_SKIP() << "no pixels can be read from this display";
    EXPECT_EQ(seen(0), 0x82DDEEu);
    EXPECT_EQ(seen(1), 0x20A5DAu);
    grid.ResetFilterStore();
    EXPECT_EQ(seen(0), plain);
}

// A heading gives up its item's alignment for the arrow.
TEST_P(GridFilterOnEachRoad, ACaptionStandsAsItsColumnBesideAnArrow) {
    createOpti(grid, false, {{"name", 20}, {"price", 160, 1, 1}, {"middle", 160, 2, 1}});
    addSix();
    CHeaderCtrl& header = *grid.GetHeaderCtrl();
    // Of the heading's letters, from the middle of the item; the arrow is lighter.
    const auto firstLetter = [&](int place) {
        CRect item;
        header.GetItemRect(place, item);
        header.UpdateWindow();
        CClientDC dc(&header);
        int x = item.left + 3;
        while (x < item.right && dc.GetPixel(x, item.CenterPoint().y) != 0) ++x;
        return x - item.CenterPoint().x;
    };
    for (const bool filtered : {false, true}) {
        if (filtered) grid.AddToFilteredCols(0, "a");
        for (const auto& [place, least, most] : {std::tuple{1, 11, 59}, {2, -49, -1}}) {
            grid.SortOn(place, 1);
            EXPECT_GE(firstLetter(place), least) << filtered;
            EXPECT_LE(firstLetter(place), most) << filtered;
        }
    }
}

TEST_P(GridFilterOnEachRoad, CtrlFShowsTheBarUnlessTheFilterIsNotOffered) {
    begin();
    CHeaderCtrl& header = *grid.GetHeaderCtrl();
    const auto barIsOn = [&] { return (header.GetStyle() & HDS_FILTERBAR) != 0; };
    const int width = grid.GetColumnWidth(0);
    for (const bool shown : {true, false}) {
        grid.SetFocus();
        quor::sendKeys({VK_CONTROL, 'F'});
        EXPECT_TRUE(pumpFor([&] { return barIsOn() == shown; }));
        pumpUntilIdle();
        EXPECT_EQ(CWnd::GetFocus()->GetParent() == &header, shown) << "the first field is open";
        EXPECT_EQ(grid.GetColumnWidth(0), width);
    }
    EXPECT_EQ(header.SetFilterChangeTimeout(500), 500);
    grid.FilterUiEnabled = false;
    quor::sendKeys({VK_CONTROL, 'F'});
    pumpUntilIdle();
    EXPECT_FALSE(barIsOn());
}

// ---- Through the header's fields. The owner answers a change as a host does: with one message to itself.

class GridFilterBar : public GridFilter {
protected:
    void SetUp() override {
        begin();
        grid.PutListFilter();
        addSix();
        owner.onNotify = [this](const NMHDR& news) {
            if (news.code != static_cast<UINT>(HDN_FILTERCHANGE)) return;
            ++changes;
            EXPECT_EQ(news.idFrom, static_cast<UINT_PTR>(kGridId));
        };
    }
    // The filters as the store has them, and how often the owner heard of them since.
    std::string store() {
        CArray<int, int> columns;
        CArray<CString, CString> texts;
        grid.GetFileteredCols(columns, texts);
        std::string text;
        for (INT_PTR i = 0; i < columns.GetSize(); ++i)
            text += std::to_string(columns.GetAt(i)) + "=" + texts.GetAt(i).GetString() + " ";
        return text + "(" + std::to_string(std::exchange(changes, 0)) + ")";
    }
    std::string field(int place) {
        CString text;
        const int length = grid.GetHeaderText(place, text);
        EXPECT_EQ(length, text.GetLength());
        return text.GetString();
    }
    int setOne(int columnIndex, const char* text, int exact = 0) {
        CString filter = text;
        return grid.SetMapColumnFilter(columnIndex, filter, exact);
    }
    int changes = 0;
};

using GridFilterBarOnEachRoad = test::OnEachRoad<GridFilterBar>;
INSTANTIATE_TEST_SUITE_P(, GridFilterBarOnEachRoad, test::eachRoad, test::roadName);

// Custom draw brings the whole item; what lies below its caption is the header's.
TEST_F(GridFilterBar, ATintedItemIsPaintedInItsCaptionAlone) {
    constexpr COLORREF untouched = 0xFF00FF;
    setOne(1, "x");
    CHeaderCtrl& header = *grid.GetHeaderCtrl();
    CRect item;
    header.GetItemRect(1, item);
    test::Canvas canvas(header, {item.right, item.bottom}, untouched);
    NMCUSTOMDRAW draw{};
    draw.hdr = {header.m_hWnd, 0, static_cast<UINT>(NM_CUSTOMDRAW)};
    draw.dwDrawStage = CDDS_ITEMPREPAINT;
    draw.hdc = canvas.dc;
    draw.rc = item;
    draw.dwItemSpec = 1;
    grid.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&draw));
    const CRect bar(item.left, item.bottom / 2, item.right, item.bottom);
    EXPECT_EQ(canvas.dc.GetPixel(item.right - 4, 3), 0x20A5DAu);
    EXPECT_EQ(canvas.count(bar, untouched), bar.Width() * bar.Height());
}

TEST_F(GridFilterBar, DoFilterZeroSwallowsEverything) {
    grid.SetDoFilter(0);
    setOne(1, "x");
    EXPECT_EQ(store(), "(0)");
    EXPECT_EQ(field(1), "x");
}

TEST_F(GridFilterBar, ALongFilterIsCutToTheBuffer) {
    CString text('x', 1'100'000);
    grid.SetVisibleColumnFilter(1, text, 0);
    CString back;
    EXPECT_EQ(grid.GetHeaderText(1, back), 1'048'575);
}

// More of the pop-up is in the proof of finding.
TEST_P(GridFilterBarOnEachRoad, ChosenValuesBecomeTheFilter) {
    add("g", "XYZ", "7");
    add("h", "hidden", "-9");
    filtered({{2, ">-6"}});
    store();
    int forwarded = 0;
    owner.onNotify = [&, onChange = owner.onNotify](const NMHDR& news) {
        forwarded += news.code == static_cast<UINT>(HDN_FILTERBTNCLICK) && news.idFrom == kGridId;
        onChange(news);
    };
    clickFunnel(1);
    EXPECT_EQ(forwarded, 1);
    CFilterText& popup = *CFilterText::shared(&grid);
    ASSERT_EQ(entries(popup.values(), LB_GETCOUNT, LB_GETTEXT), (std::vector<std::string>{"x", "X", "XY", "XYZ", "Y"}));
    EXPECT_EQ(popup.values().GetHorizontalExtent(), 500);
    POINT cursor;
    ::GetCursorPos(&cursor);
    CRect area;
    popup.GetWindowRect(area);
    EXPECT_EQ(area.TopLeft(), CPoint(cursor));
    popup.OnLbnDblclkFilterlist();
    EXPECT_EQ(store(), "2=>-6 (0)") << "nothing chosen";
    EXPECT_TRUE(popup.IsWindowVisible());
    popup.values().SetSel(3);
    popup.values().SetSel(4);  // "Y" stands inside "XYZ": left out
    MSG enter{popup.values().m_hWnd, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    popup.PreTranslateMessage(&enter);
    EXPECT_EQ(store(), "2=>-6 1=XYZ (1)");
    EXPECT_FALSE(popup.IsWindowVisible());
    EXPECT_EQ(field(1), "XYZ");
    clickFunnel(1);
    frame().SetActiveWindow();
    EXPECT_FALSE(popup.IsWindowVisible());
}

// On screen the first field is then that of the second column; places and order array stay.
TEST_P(GridFilterBarOnEachRoad, AColumnDraggedByTheMouseKeepsItsFilter) {
    setOne(0, "a");
    store();
    CHeaderCtrl& header = *grid.GetHeaderCtrl();
    header.ModifyStyle(0, HDS_BUTTONS);
    CRect first, last;
    header.GetItemRect(0, first);
    header.GetItemRect(2, last);
    quor::sendDrag(header.m_hWnd, {first.CenterPoint().x, 4}, {last.right - 5, 4});
    pumpUntilIdle();
    EXPECT_EQ(header.OrderToIndex(0), 1);
    EXPECT_EQ(grid.m_arrOrder.GetAt(0), 0);
    quor::sendClick(header.m_hWnd, {first.left + 15, first.bottom - 5});
    pumpUntilIdle();
    quor::sendText("x");
    quor::sendKeys({VK_RETURN});
    pumpUntilIdle();
    EXPECT_EQ(store(), "0=a 1=x (1)");
    EXPECT_EQ(grid.RemoveMapColumnFilter(0), 1);
    EXPECT_EQ(store(), "1=x (1)");
}

// Forwards in the proof of finding.
TEST_P(GridFilterBarOnEachRoad, ShiftTabWrapsToTheLastFieldAndCtrlFGivesTheFocusBack) {
    grid.SetFocus();
    grid.GetHeaderCtrl()->EditFilter(0, FALSE);
    pumpUntilIdle();
    quor::sendKeys({VK_SHIFT, VK_TAB});
    pumpUntilIdle();
    quor::sendText("5");
    ASSERT_TRUE(pumpFor([&] { return grid.GetFilterCount() == 1; }));
    EXPECT_EQ(store(), "2=5 (1)");
    quor::sendKeys({VK_CONTROL, 'F'});
    EXPECT_TRUE(pumpFor([&] { return ::GetFocus() == grid.m_hWnd; }));
}

}  // namespace
}  // namespace grid_tests
