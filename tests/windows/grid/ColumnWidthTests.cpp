// What the commands that size columns ask for, and what they make of it.
#include "GridFixture.h"
#include "quor/list/ListCommands.h"

namespace grid_tests {
namespace {

struct ColumnWidths : GridFixture {
    static constexpr int kDecimal = 2;

    ColumnWidths() {
        create(grid, {{"name"}, {"a heading of more than fifty pixels"}, {"sum", 60, 0, kDecimal}, {"last"}});
        grid.SetUseFilter(TRUE);
        grid.SetOptiDataMode(true);
        for (int i = 0; i < 1000; ++i) {
            rows.push_back(std::make_unique<Row>("row of a hundred pixels"));
            rows.back()->cells[2] = "123456789";
            grid.AddRow(rows.back().get(), false);
        }
        rows.back()->name = std::string(300, 'W');  // far out of view
        processEndofBatchUpdates();
        pumpUntilIdle();
    }
    std::string fit(int command) {
        owner.asked = 0;
        grid.SendMessage(WM_COMMAND, static_cast<WPARAM>(command));
        std::string widths;
        for (int place = 0; place < 4; ++place) widths += " " + std::to_string(grid.GetColumnWidth(place));
        return std::to_string(owner.asked) + " asked," + widths;
    }
    int textWidth(CWnd& window, const CString& text) const {
        CClientDC dc(&window);
        const SelectScope font(&dc, window.GetFont());
        return dc.GetTextExtent(text).cx;
    }

    std::vector<std::unique_ptr<Row>> rows;  // freed after the grid
    CFilterListCtrl grid;
};

TEST_F(ColumnWidths, OnlyTheCellsInViewAreAskedForAndOnlyWhereTheyCount) {
    CRect client;
    grid.GetClientRect(&client);
    const std::string share = std::to_string(client.Width() / 4);
    EXPECT_EQ(fit(kFitColumnsToWindow), "0 asked, " + share + " " + share + " " + share + " " + share);

    const int heading = textWidth(*grid.GetHeaderCtrl(), "a heading of more than fifty pixels") + 11;
    EXPECT_EQ(fit(kFitColumnsToHeader), "0 asked, 50 " + std::to_string(heading) + " 50 " +
                                            std::to_string(std::max(50, client.Width() - 100 - heading)));

    const int inView = grid.GetCountPerPage() + 1;
    grid.RedrawWindow();
    EXPECT_LE(owner.asked, 4 * inView) << "once a cell";
    const int name = textWidth(grid, "row of a hundred pixels") + 12, sum = textWidth(grid, "123,456,789") + 12;
    EXPECT_EQ(fit(kFitColumnsToData), std::to_string(4 * inView) + " asked, " + std::to_string(name) + " 50 " +
                                          std::to_string(std::max(sum, 50)) + " 50");
    EXPECT_EQ(grid.WidestCellInView(0), name);
    grid.EnsureVisible(999, FALSE);
    EXPECT_GT(grid.WidestCellInView(0), 10 * name);
}

// Not in the control's way: it would know neither heading nor arrow.
TEST_F(ColumnWidths, ADoubleClickOnADividerFitsTheRowsInViewTheHeadingAndTheArrow) {
    CHeaderCtrl& header = *grid.GetHeaderCtrl();
    const auto doubleClick = [&] {
        CRect item;
        header.GetItemRect(2, &item);
        owner.asked = 0;
        header.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(item.right - 1, 5));
        EXPECT_LE(owner.asked, grid.GetCountPerPage() + 1);
        return grid.GetColumnWidth(2);
    };
    EXPECT_EQ(doubleClick(), textWidth(grid, "123,456,789") + 12) << "as it is painted";
    for (const auto& each : rows) each->cells[2] = "";
    rows.back()->cells[2] = std::string(60, '8');
    EXPECT_EQ(doubleClick(), textWidth(header, "sum") + 11);
    grid.SortOn(2, -1);
    EXPECT_EQ(doubleClick(), textWidth(header, "sum") + 11 + 16 + 2 * header.GetBitmapMargin());
}

}  // namespace
}  // namespace grid_tests
