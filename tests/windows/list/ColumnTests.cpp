// The column set on a real header. Which columns come is decided and tested in the core.
#include "ListFixture.h"

using namespace quor::list;

namespace {

using namespace list_tests;

struct Columns : ListFixture {
    void SetUp() override {
        list.m_csListName = "orders";
        addColumns(list, {"Symbol", "Price", "Qty"});
        giveWindow(list);
    }
    void TearDown() override {
        list.DestroyWindow();
        ListFixture::TearDown();
    }
    HDITEM headerItem(int place) {
        HDITEM item{};
        item.mask = HDI_FORMAT | HDI_IMAGE;
        list.GetHeaderCtrl()->GetItem(place, &item);
        return item;
    }
    static std::string& stored() { return fakeHost().settings[{"orders", "COLUMNPROFILE"}]; }
    static int timesRead() { return fakeHost().count("UserSetting 0 orders COLUMNPROFILE"); }

    TestList list;
};

using ColumnsOnEachRoad = test::OnEachRoad<Columns>;
INSTANTIATE_TEST_SUITE_P(, ColumnsOnEachRoad, test::eachRoad, test::roadName);

TEST_F(Columns, NothingStoredShowsAllAndReadsNoSortOrder) {
    list.InsertColumnsForList(nullptr);
    EXPECT_EQ(timesRead(), 1);
    EXPECT_EQ(header(list), "Symbol:80 Price:80 Qty:80");
    EXPECT_EQ(list.m_nBaseColumnCount, 3);
    EXPECT_TRUE(list.calls.take().empty());
}

TEST_P(ColumnsOnEachRoad, StoredProfileIsShownAndItsUserColumnAppended) {
    stored() = "0,1,50,1,-1,0,2,0,70,3,2,60,Ratio#F#T";
    list.InsertColumnsForList(nullptr);
    EXPECT_EQ(header(list), "Qty:70 Symbol:50 Ratio:60");
    EXPECT_EQ(ints(list.m_arrOrder), "1 -1 0 2");
    EXPECT_EQ(ints(list.m_arrWidth), "50 0 70 60");
    EXPECT_EQ(list.m_nFirstColumn, 2);
    EXPECT_EQ(list.m_nBaseColumnCount, 3);
    ASSERT_EQ(list.m_arrColumns.GetCount(), 4);
    EXPECT_EQ(list.m_arrColumns[3].csExpression, "F");
    EXPECT_EQ(list.GetOriginalColumnPosition(1), 0);
    EXPECT_EQ(list.GetOriginalColumnPosition(3), -1);
    CString tip;
    list.m_ToolTip.GetText(tip, list.GetHeaderCtrl(), 3);
    EXPECT_EQ(tip, "T");
    EXPECT_EQ(list.calls.take(), test::Calls{"read sort order"});
    EXPECT_EQ(list.m_bUseColumnProfile, 1);
}

TEST_F(Columns, AProfileThatDoesNotFitGivesDefaultsAndStaysInUse) {
    stored() = "0,0,50,1,2,50,2,2,50";
    const int shown[] = {1, 0};
    EXPECT_EQ(list.SetDefaultCols(2, shown), 1);
    EXPECT_EQ(list.SetDefaultCols(0, shown), 0);
    list.InsertColumnsForList(nullptr);
    EXPECT_EQ(header(list), "Price:80 Symbol:80");
    EXPECT_EQ(list.m_bUseColumnProfile, 1);
}

TEST_F(Columns, ProfileIsNotAskedForWhenItIsOff) {
    stored() = "0,0,50";
    list.m_bUseColumnProfile = 0;
    CArray<int, int> shown;
    shown.Add(2);
    list.SetDefaultCols(shown);
    list.InsertColumnsForList(nullptr);
    EXPECT_EQ(timesRead(), 0);
    EXPECT_EQ(header(list), "Qty:80");
}

TEST_F(Columns, BuildingTwiceReplacesTheFirstSet) {
    list.InsertColumnsForList(nullptr);
    list.InsertColumnsForList(nullptr);
    EXPECT_EQ(header(list), "Symbol:80 Price:80 Qty:80");
}

TEST_F(Columns, FormatsReachTheHeader) {
    EXPECT_EQ(list.InsertColumn(0, "left", kFormatLeft, 50), 0);
    EXPECT_EQ(list.InsertColumn(1, "right", kFormatRight, 50), 1);
    EXPECT_EQ(list.InsertColumn(2, "image", kFormatHeaderImage, 50), 2);
    EXPECT_EQ(headerItem(1).fmt & HDF_JUSTIFYMASK, HDF_RIGHT);
    EXPECT_EQ(headerItem(1).fmt & HDF_IMAGE, 0);
    EXPECT_EQ(headerItem(2).fmt & 0x5800, 0x5800);
    EXPECT_EQ(headerItem(2).iImage, 2);
}

TEST_P(ColumnsOnEachRoad, LoadHeadersReplacesTheSetAndTellsTheDialog) {
    list.InsertColumnsForList(nullptr);
    CArray<int, int> columns, widths;
    for (const int column : {2, 0}) columns.Add(column);
    for (const int width : {33, 44}) widths.Add(width);
    list.LoadHeaders(&columns, &widths);
    EXPECT_EQ(header(list), "Qty:33 Symbol:44");
    EXPECT_EQ(ints(list.m_arrOrder), "1 -1 0");
    EXPECT_EQ(ints(list.m_arrWidth), "44 0 33");
    EXPECT_EQ(list.m_nFirstColumn, 2);
    EXPECT_EQ(list.GetOriginalColumnPosition(1), 0);
    EXPECT_EQ(owner.calls.take(), test::Calls{"rebuilt 1001 0"});
}

TEST_F(Columns, WhoHearsOfLoadHeaders) {
    CArray<int, int> none;
    test::CallRecorder frameCalls;
    frame().onMessage = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        if (message == WM_USER + 123) frameCalls.record("rebuilt", wParam);
        return false;
    };
    TestList inFrame;
    inFrame.Create(kListStyle, kListRect, &frame(), 55);
    inFrame.LoadHeaders(&none, &none);
    EXPECT_TRUE(frameCalls.take().empty());  // no dialog above
    inFrame.m_bGroupList = 1;
    inFrame.LoadHeaders(&none, &none);
    EXPECT_EQ(frameCalls.take(), test::Calls{"rebuilt 55"});
    inFrame.DestroyWindow();
    inFrame.LoadHeaders(&none, &none);  // no window at all
}

// Headings are short in column 0 and long in column 1; the last column may be widened to fill the window.
TEST_F(Columns, AutoSizeFollowsDataHeadingOrWindow) {
    list.InsertColumn(0, "ab", kFormatLeft, 10);
    list.InsertColumn(1, "a heading that is a good deal wider than fifty pixels", kFormatLeft, 10);
    list.InsertColumn(2, "last", kFormatLeft, 10);
    addRows(list, 1);
    list.SetItemText(0, 2, "a text that is a good deal wider than fifty pixels");
    list.ColFitToContent();
    EXPECT_EQ(list.GetColumnWidth(0), 50);
    EXPECT_EQ(list.GetColumnWidth(1), 50);
    EXPECT_GT(list.GetColumnWidth(2), 100);
    list.ColFitToHeader();
    EXPECT_EQ(list.GetColumnWidth(0), 50);
    EXPECT_GT(list.GetColumnWidth(1), 100);
    list.ColFitToWindow();
    CRect area;
    list.GetClientRect(&area);
    for (int place = 0; place < 3; ++place) EXPECT_EQ(list.GetColumnWidth(place), area.Width() / 3);
    EXPECT_EQ(list.m_bRedrawEnabled, 1);
}

}  // namespace
