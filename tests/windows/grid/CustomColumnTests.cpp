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

// What has no value leaves the last reference that has a text.
TEST_F(CustomColumns, AReferenceThatLeadsNowhereFails) {
    static constexpr struct {
        const char* formula;
        const char* shown;
    } cases[] = {{" \"1\" + \"99\"", "10"},
                 {" \"1\" + \"-1\"", "10"},
                 {" \"2\" + \"5\"", "4"},
                 {" \"1\" + \"2\"", "14.00"},
                 {" \"1\" \"2\"", "4"}};
    CFilterListCtrl grid;
    open(grid, {cases[0].formula, cases[1].formula, cases[2].formula, cases[3].formula});
    grid.m_arrColumns.Add(makeUserColumn("user", cases[4].formula, "shown"));
    const test::MessageBoxAnswerer boxes;
    CString text;
    for (int i = 0; i < 5; ++i) {
        text = "before";
        grid.GetCustomColumnText(dataOf(row("a")), 3 + i, text);
        EXPECT_STREQ(text, cases[i].shown) << cases[i].formula;
    }
    EXPECT_EQ(boxes.texts(), std::vector<std::string>{"Invalid Expression,while calculating value"});
    owner.answers = false;
    for (const int columnIndex : {3, 2, 9}) grid.GetCustomColumnText(dataOf(row("a")), columnIndex, text);
    EXPECT_EQ(text, "4") << "a host without a text, a built-in column, no such column";
}

TEST_F(CustomColumns, AHostMayAskForAnotherRowMeanwhile) {
    CFilterListCtrl grid;
    open(grid, {" \"1\" + \"2\""});
    row("b")->cells = {{1, "7"}, {2, "1"}};
    CString inner, text = "before";
    owner.onText = [&](DWORD_PTR, int columnIndex) {
        if (columnIndex != 1) return;
        owner.onText = nullptr;
        grid.GetCustomColumnText(dataOf(row("b")), 3, inner);
    };
    grid.GetCustomColumnText(dataOf(row("a")), 3, text);
    EXPECT_EQ(inner, "8.00");
    EXPECT_EQ(text, "14.00");
}

}  // namespace

}  // namespace grid_tests
