// The picture oracle sees one wrong pixel, wherever it stands.
#include "support/PictureOracle.h"
#include "support/WindowFixture.h"

namespace {

using PictureOracle = test::WindowFixture;

// Puts one pixel on the screen behind the control's back, in coordinates of the window and its frame.
void spoil(CWnd& window, CPoint at) {
    CWindowDC dc(&window);
    dc.SetPixel(at.x, at.y, dc.GetPixel(at) ^ 0x010101);
}

TEST_F(PictureOracle, TellsTheWindowAndPlaceOfAWrongPixel) {
    CListCtrl list;
    list.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | LVS_REPORT | LVS_NOSORTHEADER, CRect(10, 10, 210, 110), &frame(),
                1);
    list.InsertColumn(0, "name", LVCFMT_LEFT, 80);
    for (int row = 0; row < 40; ++row) list.InsertItem(row, "text");
    pumpUntilIdle();
    EXPECT_EQ(test::stalePixels(list), "");
    CRect row, window;
    list.GetItemRect(2, row, LVIR_BOUNDS);
    list.GetWindowRect(&window);
    const struct {
        CWnd& window;
        CPoint at;
        std::string told;
    } cases[] = {
        {list, {row.left + 5, row.top + 5}, "SysListView32: 1 pixels differ in (4," + std::to_string(row.top + 4)},
        {list, {window.Width() - 5, 50}, "(" + std::to_string(window.Width() - 6) + ",49)"},
        {list, {0, 50}, "(-1,49)-(0,50)"},
        {*list.GetHeaderCtrl(), {50, 5}, "SysHeader32: 1 pixels differ in (50,5)-(51,6);"},
    };
    for (const auto& spoilt : cases) {
        spoil(spoilt.window, spoilt.at);
        const std::string told = test::stalePixels(list);
        EXPECT_NE(told.find(spoilt.told), std::string::npos) << told << " is not " << spoilt.told;
        EXPECT_EQ(test::stalePixels(list), "") << spoilt.told << ", repainted";
    }
    list.DestroyWindow();
}

}  // namespace
