// Filters on real grids: the store and the rebuild, the pop-up of values, the combo box, the tint of the header. Rows
// have the columns name, group and price.
#include "quor/grid/FilterText.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/resource/resource.h"
#include "windows/grid/GridFixture.h"

using namespace quor::grid;

namespace grid_tests {
namespace {

class GridFilter : public GridFixture {
protected:
    void begin(DWORD style = kGridStyle) {
        create(grid, {{"name"}, {"group"}, {"price", 60, 1, 1}}, CRect(0, 0, 300, 200), style);
        grid.SetUseFilter(TRUE);
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
    std::string filtered(int columnIndex, const char* text) {
        grid.AddToFilteredCols(columnIndex, text);
        grid.PopulateList();
        return picture(grid);
    }

    CFilterListCtrl grid;
};

using GridFilterOnEachRoad = test::OnEachRoad<GridFilter>;
INSTANTIATE_TEST_SUITE_P(, GridFilterOnEachRoad, test::eachRoad, test::roadName);

// A control that was hidden makes its header late, which then comes without a bar.
TEST_P(GridFilterOnEachRoad, AGridThatWasCreatedHiddenFiltersToo) {
    const auto barIsOn = [&] { return (grid.GetHeaderCtrl()->GetStyle() & HDS_FILTERBAR) != 0; };
    grid.SetUseFilter(TRUE);  // no window yet
    for (const bool again : {false, true}) {
        if (again) grid.DestroyWindow();
        begin((kGridStyle | LVS_OWNERDRAWFIXED) & ~WS_VISIBLE);
        EXPECT_TRUE(grid.GetHeaderCtrl()->IsKindOf(RUNTIME_CLASS(CColorHeaderCtrl)));
        EXPECT_FALSE(barIsOn());
        grid.PutListFilter();
        EXPECT_TRUE(barIsOn()) << "the first call shows it";
    }
    EXPECT_GE(fakeHost().calls.count("quoru_call_LoadLibrary UxTheme.dll"), 1) << "for its header's theme";
    addSix();
    EXPECT_EQ(filtered(1, "x"), "acdf");
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
    ::DeleteFileA(file);
}

TEST_F(GridFilter, FieldsFollowTheirColumnsAndTheOwnerHearsOfAFilterThatEnds) {
    begin();
    sQuorColInfo user;
    setColumnName(user, "user");
    user.csToolTip = "T";
    grid.m_arrColumns.Add(user);
    grid.AddToFilteredCols(1, "x");
    int told = 0;
    owner.onNotify = [&](const NMHDR& header) { told += header.code == static_cast<UINT>(HDN_FILTERCHANGE); };
    CArray<int, int> columns, widths;
    for (const int column : {2, 1}) columns.Add(column), widths.Add(60);
    grid.LoadHeaders(&columns, &widths);
    CString field;
    grid.GetHeaderText(1, field);
    EXPECT_EQ(field, "x");
    EXPECT_EQ(told, 0);
    grid.RemoveMapColumnFilter(1);
    EXPECT_EQ(grid.GetFilterCount(), 0);
    EXPECT_EQ(told, 1);
    grid.AddToFilteredCols(3, "x");
    grid.ImportColumns("no such file.ini");
    EXPECT_EQ(told, 1) << "a list without a name";
    grid.ImportColumnsFromFile("no such file.ini");  // user columns go with it
    EXPECT_EQ(grid.GetFilterCount(), 0);
    EXPECT_EQ(told, 2);
}

TEST_F(GridFilter, TheComboBoxOffersWhatTheRowsShow) {
    begin();
    addSix();
    filtered(2, ">0");
    CComboBox combo;
    combo.Create(WS_CHILD | CBS_DROPDOWNLIST | CBS_SORT, CRect(0, 200, 100, 400), &owner, 9);
    combo.AddString("old");
    EXPECT_EQ(grid.PopulateComboBoxWithUniques(&combo, 1), 1);
    CString offered, text;
    for (int i = 0; i < combo.GetCount(); ++i, offered += text + " ") combo.GetLBText(i, text);
    EXPECT_EQ(offered, "--ALL-- X XY Y ");
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
    CHeaderCtrl& header = *grid.GetHeaderCtrl();
    const auto seen = [&](int place) {
        CRect item;
        header.GetItemRect(place, item);
        header.UpdateWindow();
        CClientDC dc(&header);
        return dc.GetPixel(item.right - 4, item.top + 3);
    };
    const COLORREF plain = seen(0);
    grid.AddToFilteredCols(1, "x");
    EXPECT_EQ(seen(0), 0x82DDEEu);
    EXPECT_EQ(seen(1), 0x20A5DAu);
    grid.ResetFilterStore();
    EXPECT_EQ(seen(0), plain);
}

// Forwards by Tab in the proof of finding.
TEST_P(GridFilterOnEachRoad, CtrlFShowsAndHidesTheBarAndShiftTabWrapsToTheLastField) {
    begin();
    CHeaderCtrl& header = *grid.GetHeaderCtrl();
    const auto barIsOn = [&] { return (header.GetStyle() & HDS_FILTERBAR) != 0; };
    const auto press = [&](std::initializer_list<WORD> keys) {
        quor::sendKeys(keys);
        pumpUntilIdle();
    };
    const int width = grid.GetColumnWidth(0);
    grid.SetFocus();
    press({VK_CONTROL, 'F'});
    EXPECT_TRUE(barIsOn());
    EXPECT_EQ(CWnd::GetFocus()->GetParent(), &header) << "the first field is open";
    press({VK_SHIFT, VK_TAB});
    quor::sendText("5");
    ASSERT_TRUE(pumpFor([&] { return grid.GetFilterCount() == 1; }));
    CString field;
    grid.GetHeaderText(2, field);
    EXPECT_EQ(field, "5");
    press({VK_CONTROL, 'F'});
    EXPECT_FALSE(barIsOn());
    EXPECT_EQ(::GetFocus(), grid.m_hWnd);
    EXPECT_EQ(grid.GetColumnWidth(0), width);
    EXPECT_EQ(header.SetFilterChangeTimeout(500), 500);
    grid.FilterUiEnabled = false;
    press({VK_CONTROL, 'F'});
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

TEST_F(GridFilterBar, DoFilterZeroSwallowsEverythingAndALongFilterIsCutToTheBuffer) {
    grid.SetDoFilter(0);
    setOne(1, "x");
    EXPECT_EQ(store(), "(0)");
    EXPECT_EQ(field(1), "x");
    CString text('x', 1'100'000);
    grid.SetVisibleColumnFilter(1, text, 0);
    CString back;
    EXPECT_EQ(grid.GetHeaderText(1, back), 1'048'575);
}

// What it offers, and that it filters, is in the proof of finding.
TEST_F(GridFilterBar, ChosenValuesBecomeTheFilter) {
    add("g", "XYZ", "7");
    int forwarded = 0;
    owner.onNotify = [&, onChange = owner.onNotify](const NMHDR& news) {
        forwarded += news.code == static_cast<UINT>(HDN_FILTERBTNCLICK) && news.idFrom == kGridId;
        onChange(news);
    };
    const auto clickFunnel = [this] {
        NMHDFILTERBTNCLICK click{};
        click.hdr = {grid.GetHeaderCtrl()->m_hWnd, 0, static_cast<UINT>(HDN_FILTERBTNCLICK)};
        click.iItem = 1;
        grid.SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
    };
    clickFunnel();
    EXPECT_EQ(forwarded, 1);
    CFilterText& popup = *CFilterText::shared(&grid);
    popup.OnLbnDblclkFilterlist();
    EXPECT_EQ(store(), "(0)") << "nothing chosen";
    EXPECT_TRUE(popup.IsWindowVisible());
    popup.values().SetSel(3);
    popup.values().SetSel(4);  // "Y" stands inside "XYZ": left out
    popup.OnLbnDblclkFilterlist();
    EXPECT_EQ(store(), "1=XYZ (1)");
    EXPECT_EQ(field(1), "XYZ");
    clickFunnel();
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

}  // namespace
}  // namespace grid_tests
