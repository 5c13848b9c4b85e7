// User columns on a real grid.
#include "GridFixture.h"

namespace grid_tests {

namespace {

class CustomGrid : public CFilterListCtrl {
public:
    using CFilterListCtrl::GetCustomColumnText;
};

struct CustomColumns : GridFixture {
    // Three built-in columns and one row; then user columns from index 3 on, all shown at their index.
    void open(CustomGrid& grid, std::initializer_list<const char*> formulas) {
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
    CustomGrid grid;
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
    CustomGrid grid;
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
    CustomGrid grid;
    open(grid, {});
    grid.m_arrColumns.Add(makeUserColumn("user", " \"1\" \"2\"", "shown"));
    CString text;
    test::MessageBoxAnswerer answerer;
    grid.GetCustomColumnText(dataOf(row("a")), 3, text);
    EXPECT_EQ(answerer.texts(), (std::vector<std::string>{"Invalid Expression,while calculating value"}));
    EXPECT_EQ(text, "4") << "the last reference stays";
}

}  // namespace

}  // namespace grid_tests
