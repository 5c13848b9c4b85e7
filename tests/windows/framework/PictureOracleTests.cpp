// The picture oracle sees one wrong pixel, wherever it stands.
#include "support/PictureOracle.h"
#include "support/WindowFixture.h"

namespace {

struct PictureOracle : test::WindowFixture {
    PictureOracle() {
        list.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | LVS_REPORT | LVS_NOSORTHEADER, CRect(10, 10, 210, 110),
                    &frame(), 1);
        list.InsertColumn(0, "name", LVCFMT_LEFT, 80);
        for (int row = 0; row < 40; ++row) list.InsertItem(row, "text");
        pumpUntilIdle();
    }
    void TearDown() override {
        list.DestroyWindow();
        WindowFixture::TearDown();
    }
    // Puts one pixel on the screen behind the control's back, in coordinates of the window and its frame.
    static void spoil(CWnd& window, CPoint at) {
        CWindowDC dc(&window);
        dc.SetPixel(at.x, at.y, dc.GetPixel(at) ^ 0x010101);
    }

    CListCtrl list;
};

TEST_F(PictureOracle, TellsTheWindowAndTheRowOfAWrongPixel) {
    EXPECT_EQ(test::stalePixels(list), "");
    CRect row, window;
    list.GetItemRect(2, row, LVIR_BOUNDS);
    list.GetWindowRect(&window);
    const struct {
        const char* name;
        CWnd* window;
        CPoint at;
        const char* told;
    } cases[] = {
        {"a row", &list, {row.left + 5, row.top + 5}, "SysListView32: 1 pixels differ in (4,"},
        {"its number", &list, {row.left + 5, row.top + 5}, ", rows 2 to 2;"},
        {"beside it", &list, {row.right + 20, row.top + 5}, ", rows 2 to 2, right of the last column;"},
        {"the scroll bar", &list, {window.Width() - 5, 50}, ", in the frame;"},
        {"the frame", &list, {0, 50}, "(-1,49)-(0,50), in the frame;"},
        {"the header", list.GetHeaderCtrl(), {50, 5}, "SysHeader32: 1 pixels differ in (50,5)-(51,6);"},
    };
    for (const auto& spoilt : cases) {
        spoil(*spoilt.window, spoilt.at);
        EXPECT_NE(test::stalePixels(list).find(spoilt.told), std::string::npos)
            << spoilt.name << ": " << (spoil(*spoilt.window, spoilt.at), test::stalePixels(list));
        EXPECT_EQ(test::stalePixels(list), "") << spoilt.name << ", repainted";
    }
}

// What lies outside the parent's client area is of other windows.
TEST_F(PictureOracle, SeesAHeaderOnlyWhereItsListShowsIt) {
    list.SetColumnWidth(0, 500);
    list.Scroll(CSize(100, 0));
    frame().RedrawWindow(nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const auto shots = test::takeShots(list);
    ASSERT_EQ(shots.size(), 2u);
    CRect client;
    list.GetClientRect(&client);
    EXPECT_EQ(shots[0].picture.width, client.Width());
    EXPECT_EQ(test::stalePixels(list), "");
}

}  // namespace
