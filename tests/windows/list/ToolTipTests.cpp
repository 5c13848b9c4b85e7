#include "ListFixture.h"
#include "support/Input.h"

namespace {

using namespace list_tests;

struct HeaderToolTips : ListFixture {
    void SetUp() override {
        addColumns(list, {"Symbol", "Price", "Qty"});
        giveWindow(list);
        list.InsertColumnsForList(nullptr);
    }
    void TearDown() override {
        list.DestroyWindow();
        ListFixture::TearDown();
    }
    // "text left..right" of each tool, in the order of the header items.
    std::string tools() {
        std::string picture;
        for (int place = 0; place < list.GetHeaderCtrl()->GetItemCount(); ++place) {
            char text[80] = "";
            TOOLINFO info{};
            info.lpszText = text;
            const auto id = static_cast<UINT_PTR>(place) + 1;
            if (!list.m_ToolTip.GetToolInfo(info, list.GetHeaderCtrl(), id)) text[0] = '?';
            picture += (place ? ", " : "") + std::string(text) + " " + std::to_string(info.rect.left) + ".." +
                       std::to_string(info.rect.right);
        }
        return picture;
    }

    TestList list;
};

using HeaderToolTipsOnEachRoad = test::OnEachRoad<HeaderToolTips>;
INSTANTIATE_TEST_SUITE_P(, HeaderToolTipsOnEachRoad, test::eachRoad, test::roadName);

TEST_P(HeaderToolTipsOnEachRoad, CoverTheirColumns) {
    EXPECT_EQ(tools(), "Symbol 0..80, Price 80..160, Qty 160..240");
    EXPECT_EQ(list.m_ToolTip.GetToolCount(), 3);
}

TEST_F(HeaderToolTips, FollowAChangedWidth) {
    list.SetColumnWidth(0, 30);
    EXPECT_EQ(tools(), "Symbol 0..30, Price 30..110, Qty 110..190");
}

TEST_F(HeaderToolTips, FollowAChangedOrder) {
    int order[] = {2, 0, 1};
    list.SetColumnOrderArray(3, order);
    list.SetColumnWidth(2, 40);
    EXPECT_EQ(tools(), "Symbol 40..120, Price 120..200, Qty 0..40");
}

TEST_F(HeaderToolTips, StayOverTheirColumnsWhenTheListIsScrolled) {
    list.SetColumnWidth(0, 600);
    list.Scroll(CSize(100, 0));
    list.SetColumnWidth(1, 70);
    EXPECT_EQ(tools(), "Symbol 0..600, Price 600..670, Qty 670..750");
}

TEST_F(HeaderToolTips, MoveDownWhenAColumnGoes) {
    list.AddHeaderToolTip(2, "how many");
    EXPECT_TRUE(list.DeleteColumn(0));
    EXPECT_EQ(tools(), "Price 0..80, how many 80..160");
    EXPECT_EQ(list.m_ToolTip.GetToolCount(), 2);
    EXPECT_FALSE(list.DeleteColumn(7));
    EXPECT_EQ(list.m_ToolTip.GetToolCount(), 2);
}

TEST_F(HeaderToolTips, AreRefusedWhereThereIsNoHeaderItem) {
    EXPECT_EQ(list.AddHeaderToolTip(3, "beyond"), 0);
    EXPECT_EQ(list.AddHeaderToolTip(-1, "before"), 0);
    EXPECT_EQ(list.AddHeaderToolTip(1, nullptr), 1);
    list.ModifyStyle(LVS_TYPEMASK, LVS_LIST);
    EXPECT_EQ(list.AddHeaderToolTip(1, "no report"), 0);
}

TEST_F(HeaderToolTips, AreLeftOutOnRequest) {
    list.m_bHeaderToolTips = 0;
    list.InsertColumn(3, "new", 0, 50);
    EXPECT_EQ(list.m_ToolTip.GetToolCount(), 3);
}

// The tip itself: the pump offers the header's messages to the list, which relays them.
TEST_F(HeaderToolTips, ShowWhenTheMouseRestsOnTheHeader) {
    CHeaderCtrl* header = list.GetHeaderCtrl();
    list.m_ToolTip.SetDelayTime(TTDT_INITIAL, 1);
    POINT mouse{100, 5};
    header->ClientToScreen(&mouse);
    ::SetCursorPos(mouse.x, mouse.y);
    header->PostMessage(WM_MOUSEMOVE, 0, MAKELPARAM(100, 5));
    EXPECT_TRUE(pumpFor([&] { return list.m_ToolTip.IsWindowVisible() != 0; }));
    TOOLINFO shown{};
    shown.cbSize = TTTOOLINFOA_V1_SIZE;
    ASSERT_TRUE(list.m_ToolTip.SendMessage(TTM_GETCURRENTTOOLA, 0, reinterpret_cast<LPARAM>(&shown)));
    EXPECT_EQ(shown.uId, 2u);
}

// A column is dragged behind the last one with the mouse.
TEST_P(HeaderToolTipsOnEachRoad, FollowAColumnThatIsDragged) {
    CHeaderCtrl* header = list.GetHeaderCtrl();
    test::sendDrag(header->m_hWnd, CPoint(40, 5), CPoint(230, 5));
    pumpUntilIdle();
    int order[3] = {};
    header->GetOrderArray(order, 3);
    ASSERT_EQ(order[2], 0);
    test::sendMouseMove(header->m_hWnd, CPoint(20, 5));
    pumpUntilIdle();
    EXPECT_EQ(tools(), "Symbol 160..240, Price 0..80, Qty 80..160");
}

}  // namespace
