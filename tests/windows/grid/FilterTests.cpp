// Filters on real grids: the store and the rebuild, the pop-up of values, the combo box, the tint of the header. Rows
// have the columns name, group and price.
#include "quor/grid/FilterText.h"
#include "quor/resource/resource.h"
#include "support/Input.h"
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
    addSix();
    EXPECT_EQ(filtered({{1, "x"}}), "acdf");
    EXPECT_EQ(grid.GetDisplayCount(), 4);
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
    EXPECT_EQ(grid.SetMapColumnFilter(&columns, &texts, 0), 0);
    columns.Add(-1);
    texts.Add("a");
    texts.Add("b");
    EXPECT_EQ(grid.SetMapColumnFilter(&columns, &texts, 0), 0);
    CString text = "y";
    EXPECT_EQ(grid.SetVisibleColumnFilter(-1, text, 0), 0);
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
    create(grid, {{"name", 20}, {"price", 160, 1, 1}, {"middle", 160, 2, 1}});
    grid.SetUseFilter(TRUE);
    grid.SetOptiDataMode(true);
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
        for (const int place : {1, 2}) {
            NMLISTVIEW click{};
            click.iSubItem = place;
            LRESULT result = 0;
            grid.OnLvnColumnclick(&click.hdr, &result);
            EXPECT_GT(firstLetter(place), place == 1 ? 10 : -50) << filtered;
            EXPECT_LT(firstLetter(place), place == 1 ? 60 : 0) << filtered;
        }
    }
}

TEST_P(GridFilterOnEachRoad, CtrlFShowsTheBarUnlessTheFilterIsNotOffered) {
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
    std::string populated() {
        grid.PopulateList();
        return picture(grid);
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
    CClientDC screen(&header);
    CDC dc;
    dc.CreateCompatibleDC(&screen);
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(&screen, item.right, item.bottom);
    const SelectScope selected(dc, bitmap);
    dc.FillSolidRect(0, 0, item.right, item.bottom, untouched);
    NMCUSTOMDRAW draw{};
    draw.hdr = {header.m_hWnd, 0, static_cast<UINT>(NM_CUSTOMDRAW)};
    draw.dwDrawStage = CDDS_ITEMPREPAINT;
    draw.hdc = dc;
    draw.rc = item;
    draw.dwItemSpec = 1;
    grid.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&draw));
    const int fieldTop = item.bottom / 2;
    EXPECT_EQ(dc.GetPixel(item.right - 4, 3), 0x20A5DAu);
    for (int y = fieldTop; y < item.bottom; ++y) EXPECT_EQ(dc.GetPixel(item.right - 4, y), untouched) << y;
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

TEST_P(GridFilterBarOnEachRoad, ChosenValuesBecomeTheFilter) {
    add("g", "XYZ", "7");
    clickFunnel(1);
    CFilterText& popup = *CFilterText::shared(&grid);
    ASSERT_EQ(entries(popup.values(), LB_GETCOUNT, LB_GETTEXT), (std::vector<std::string>{"x", "X", "XY", "XYZ", "Y"}));
    store();
    popup.OnLbnDblclkFilterlist();
    EXPECT_EQ(store(), "(0)");  // nothing chosen
    EXPECT_TRUE(popup.IsWindowVisible());
    popup.values().SetSel(3);
    popup.values().SetSel(4);  // "Y" stands inside "XYZ": left out
    MSG enter{popup.values().m_hWnd, WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    popup.PreTranslateMessage(&enter);
    EXPECT_EQ(store(), "1=XYZ (1)");
    EXPECT_FALSE(popup.IsWindowVisible());
    EXPECT_EQ(field(1), "XYZ");
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
    test::sendDrag(header.m_hWnd, {first.CenterPoint().x, 4}, {last.right - 5, 4});
    pumpUntilIdle();
    EXPECT_EQ(header.OrderToIndex(0), 1);
    EXPECT_EQ(grid.m_arrOrder.GetAt(0), 0);
    test::sendClick(header.m_hWnd, {first.left + 15, first.bottom - 5});
    pumpUntilIdle();
    test::sendText("x");
    test::sendKeys({VK_RETURN});
    pumpUntilIdle();
    EXPECT_EQ(store(), "0=a 1=x (1)");
    EXPECT_EQ(populated(), "a");
    EXPECT_EQ(grid.RemoveMapColumnFilter(0), 1);
    EXPECT_EQ(store(), "1=x (1)");
}

TEST_P(GridFilterBarOnEachRoad, TabWalksThroughTheFieldsAndWraps) {
    const auto fieldWithFocus = [&] {
        const HWND focus = ::GetFocus();
        CHeaderCtrl& header = *grid.GetHeaderCtrl();
        if (!focus || ::GetParent(focus) != header.m_hWnd) return -1;
        CRect edit;
        ::GetWindowRect(focus, edit);
        header.ScreenToClient(edit);
        HDHITTESTINFO hit{};
        hit.pt = CPoint(edit.CenterPoint().x, 2);
        return header.HitTest(&hit);
    };
    const auto reaches = [&](int place) { return pumpFor([&] { return fieldWithFocus() == place; }, 2000); };
    grid.SetFocus();
    grid.GetHeaderCtrl()->EditFilter(0, FALSE);
    ASSERT_TRUE(reaches(0));
    test::sendKeys({VK_TAB});
    EXPECT_TRUE(reaches(1));
    test::sendKeys({VK_TAB});
    EXPECT_TRUE(reaches(2));
    test::sendKeys({VK_TAB});
    EXPECT_TRUE(reaches(0));
    test::sendKeys({VK_SHIFT, VK_TAB});
    EXPECT_TRUE(reaches(2));
    test::sendText("5");
    ASSERT_TRUE(pumpFor([&] { return grid.GetFilterCount() == 1; }));
    EXPECT_EQ(store(), "2=5 (1)");
    test::sendKeys({VK_CONTROL, 'F'});
    EXPECT_TRUE(pumpFor([&] { return ::GetFocus() == grid.m_hWnd; }));
}

}  // namespace
}  // namespace grid_tests
