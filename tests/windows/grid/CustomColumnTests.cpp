// User columns on a real grid. What their formulas give is tested in the core.
#include "GridFixture.h"

namespace grid_tests {
namespace {

using CustomColumns = GridFixture;

// Columns name, bid and ask; then user columns from index 3 on. What has no value leaves the last reference that has a
// text.
TEST_F(CustomColumns, CellsShowWhatTheirFormulasGive) {
    static constexpr std::pair<const char*, const char*> cases[] = {{" \"1\" + \"2\"", "14.00"},
                                                                    {" \"3\" * 2", "28.00"},
                                                                    {" \"1\" / \"0\"", "Divided by ZERO error"},
                                                                    {" \"2\" + \"99\"", "4"},
                                                                    {" \"1\" \"2\"", "4"}};
    CFilterListCtrl grid;
    createClassic(grid, {{"name"}, {"bid"}, {"ask"}});
    row("a")->cells = {{1, "10"}, {2, "4"}};
    row("b")->cells = {{1, "7"}, {2, "1"}};
    grid.InsertItem(0, "");
    grid.SetItemData(0, dataOf(row("a")));
    CArray<int, int> columns, widths;
    for (const auto& each : cases) grid.m_arrColumns.Add(makeUserColumn("user", each.first, "shown"));
    for (int i = 0; i < grid.m_arrColumns.GetCount(); ++i) columns.Add(i), widths.Add(30);
    grid.LoadHeaders(&columns, &widths);
    const test::MessageBoxAnswerer boxes;
    CString text;
    for (int columnIndex = 3; const auto& [formula, shown] : cases) {
        grid.GetCustomColumnText(dataOf(row("a")), columnIndex, text);
        EXPECT_EQ(text, shown) << formula;
        EXPECT_EQ(grid.CListCtrl::GetItemText(0, columnIndex++), shown) << formula << " in the control";
    }
    EXPECT_EQ(boxes.texts(), std::vector<std::string>(2, "Invalid Expression,while calculating value"));

    CString inner;
    owner.onText = [&](DWORD_PTR, int columnIndex) {
        if (columnIndex != 1) return;
        owner.onText = nullptr;
        grid.GetCustomColumnText(dataOf(row("b")), 3, inner);
    };
    grid.GetCustomColumnText(dataOf(row("a")), 3, text);
    EXPECT_EQ(inner + " " + text, "8.00 14.00") << "a host that asks for another row meanwhile";
    owner.answers = false;
    for (const int columnIndex : {3, 2, 9}) grid.GetCustomColumnText(dataOf(row("a")), columnIndex, text);
    EXPECT_EQ(text, "14.00") << "a host without a text, a built-in column, no such column";
}

}  // namespace
}  // namespace grid_tests
