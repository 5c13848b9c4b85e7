// User columns on a real grid.
#include "GridFixture.h"

namespace grid_tests {

namespace {

struct CustomColumns : GridFixture {
    // Three built-in columns and one row; then user columns from index 3 on, all shown at their index.
    void open(CFilterListCtrl& grid, std::initializer_list<const char*> formulas) {
        create(grid, {{"name"}, {"bid"}, {"ask"}});
        grid.SetUseFilter(TRUE);
        row("a")->cells = {{1, "10"}, {2, "4"}};
        grid.InsertItem(0, "");
        grid.SetItemData(0, dataOf(row("a")));
        for (const char* formula : formulas) grid.m_arrColumns.Add(makeUserColumn("user", formula, "shown"));
        CArray<int, int> columns, widths;
        for (int i = 0; i < grid.m_arrColumns.GetCount(); ++i) columns.Add(i), widths.Add(30);
        grid.LoadHeaders(&columns, &widths);
    }
};

TEST_F(CustomColumns, CellsShowWhatTheirFormulasGive) {
    CFilterListCtrl grid;
    open(grid, {" \"1\" / \"2\"", " \"3\" * 2", " \"1\" / \"0\"", " \"0\" + 1", " 2+3"});
    const char* const shown[] = {"2.50", "5.00", "Divided by ZERO error", "1.00", "5.00"};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(grid.GetItemText(0, 3 + i), shown[i]) << i;
        char painted[64] = "";
        grid.CListCtrl::GetItemText(0, 3 + i, painted, sizeof painted);
        EXPECT_STREQ(painted, shown[i]) << i;
    }
}

TEST_F(CustomColumns, ARowWithoutTextsLeavesTheCell) {
    CFilterListCtrl grid;
    open(grid, {" \"1\" / \"2\""});
    owner.answers = false;
    CString text = "before";
    grid.GetCustomColumnText(dataOf(row("a")), 3, text);
    EXPECT_EQ(text, "before");
    owner.answers = true;
    grid.GetCustomColumnText(dataOf(row("a")), 2, text);
    EXPECT_EQ(text, "before") << "a built-in column";
    grid.GetCustomColumnText(dataOf(row("a")), 9, text);
    EXPECT_EQ(text, "before") << "no such column";
}

TEST_F(CustomColumns, ValuesThatRunTogetherAreSaidInABox) {
    CFilterListCtrl grid;
    open(grid, {});
    grid.m_arrColumns.Add(makeUserColumn("user", " \"1\" \"2\"", "shown"));
    CString text;
    test::MessageBoxAnswerer answerer;
    grid.GetCustomColumnText(dataOf(row("a")), 3, text);
    EXPECT_EQ(answerer.texts(), (std::vector<std::string>{"Invalid Expression,while calculating value"}));
    EXPECT_EQ(text, "4") << "the last reference stays";
}

TEST_F(CustomColumns, AReferenceThatLeadsNowhereFails) {
    static constexpr struct {
        const char* formula;
        const char* shown;  // the last reference that has a text
    } cases[] = {
        {" \"1\" + \"99\"", "10"}, {" \"1\" + \"-1\"", "10"}, {" \"2\" + \"5\"", "4"}, {" \"1\" + \"2\"", "14.00"}};
    CFilterListCtrl grid;
    open(grid, {cases[0].formula, cases[1].formula, cases[2].formula, cases[3].formula});
    for (int i = 0; i < 4; ++i) {
        CString text = "before";
        COLORREF none = 0;
        int icon = -1;
        EXPECT_EQ(grid.GetColumnText(dataOf(row("a")), 3 + i, text, none, none, icon, false), 1);
        EXPECT_STREQ(text, cases[i].shown) << cases[i].formula;
    }
}

TEST_F(CustomColumns, AHostMayAskForAnotherRowOrEndTheGridMeanwhile) {
    auto grid = std::make_unique<CFilterListCtrl>();
    open(*grid, {" \"1\" + \"2\""});
    row("b")->cells = {{1, "7"}, {2, "1"}};
    CString inner, text = "before";
    owner.onText = [&](DWORD_PTR, int columnIndex) {
        if (columnIndex != 1) return;
        owner.onText = nullptr;
        grid->GetCustomColumnText(dataOf(row("b")), 3, inner);
    };
    grid->GetCustomColumnText(dataOf(row("a")), 3, text);
    EXPECT_EQ(inner, "8.00");
    EXPECT_EQ(text, "14.00");
    owner.onText = [&](DWORD_PTR, int) { grid.reset(); };
    grid->GetCustomColumnText(dataOf(row("a")), 3, text);
    EXPECT_EQ(text, "10") << "nothing was asked of the grid that went";
    owner.onText = nullptr;
}

}  // namespace

}  // namespace grid_tests
