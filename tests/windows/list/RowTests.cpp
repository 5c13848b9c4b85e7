// Rows: texts, data, focus, clipboard, the area without rows.
#include "ListFixture.h"
#include "support/Canvas.h"

namespace {

using namespace list_tests;

struct Rows : ListFixture {
    Rows() {
        addColumns(list, {"Symbol", "Price"});
        subclass(list);
        list.InsertColumnsForList(nullptr);
        addRows(list, 40);
        for (int row = 0; row < 40; ++row) {
            CString price;
            price.Format("%d.5", row);
            list.SetItemText(row, 1, price);
            list.SetItemData(row, static_cast<DWORD_PTR>(1000 + row));
        }
    }
    void TearDown() override {
        list.DestroyWindow();
        ListFixture::TearDown();
    }
    static std::string clipboardText() {
        std::string text = "no text";
        if (!::OpenClipboard(nullptr)) return "not open";
        if (const HANDLE block = ::GetClipboardData(CF_TEXT)) {
            text = static_cast<const char*>(::GlobalLock(block));
            ::GlobalUnlock(block);
        }
        ::CloseClipboard();
        return text;
    }

    TestList list;
};

TEST_F(Rows, AllFormsOfGetItemTextReadTheItem) {
    char buffer[4] = "";
    EXPECT_EQ(list.GetItemText(12, 1), "12.5");
    EXPECT_EQ(list.GetItemText(12, 1, true, false), "12.5");
    EXPECT_EQ(list.GetItemText(12, 1, buffer, sizeof buffer), 3);
    EXPECT_STREQ(buffer, "12.");
}

TEST_F(Rows, DataComeFromTheSortWhileItHoldsThem) {
    EXPECT_EQ(list.GetItemData(1), 1001u);
    for (const DWORD_PTR data : {7u, 8u}) list.m_arrSavedItemData.Add(data);
    EXPECT_EQ(list.GetItemData(1), 8u);
    EXPECT_EQ(list.GetItemData(2), 1002u);
    EXPECT_EQ(list.GetItemData(-1), 0u);
}

TEST_F(Rows, FocusSelectsShowsAndDeselectsNothing) {
    list.SetItemState(3, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(list.SetRowFocus(39), 1);
    EXPECT_EQ(list.GetSelectedCount(), 2u);
    EXPECT_EQ(list.GetItemState(39, LVIS_FOCUSED | LVIS_SELECTED), static_cast<UINT>(LVIS_FOCUSED | LVIS_SELECTED));
    EXPECT_GT(list.GetTopIndex(), 0);
}

TEST_F(Rows, SelectedRowsGoToTheClipboardWithTheirTrailingTabs) {
    for (const int row : {2, 5}) list.SetItemState(row, LVIS_SELECTED, LVIS_SELECTED);
    list.BuildTable();
    EXPECT_EQ(clipboardText(), "r2\t2.5\t\r\nr5\t5.5\t\r\n");
    EXPECT_EQ(list.m_csClipboard, "r2\t2.5\t\r\nr5\t5.5\t\r\n");
}

TEST_F(Rows, NoSelectionPutsAnEmptyTextOnTheClipboard) {
    list.m_csClipboard = "old";
    EXPECT_EQ(list.CopyToClipboard(), 1);
    EXPECT_EQ(clipboardText(), "old");
    list.BuildTable();
    EXPECT_EQ(clipboardText(), "");
}

TEST_F(Rows, ABusyClipboardIsReported) {
    // Another window's hold on it keeps this one out.
    HWND other = ::CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    ASSERT_TRUE(::OpenClipboard(other));
    EXPECT_EQ(list.CopyToClipboard(), 0);
    ::CloseClipboard();
    ::DestroyWindow(other);
    EXPECT_EQ(list.CopyToClipboard(), 1);
}

TEST_F(Rows, EmptyAreaIsFilledAroundTheRowsOnly) {
    constexpr COLORREF kMark = RGB(255, 0, 0);
    constexpr COLORREF kBack = RGB(0, 0, 128);
    while (list.GetItemCount() > 2) list.DeleteItem(2);
    list.SetBkColor(kBack);
    list.m_bFillEmptyArea = 1;
    CRect area, row;
    list.GetClientRect(&area);
    list.GetItemRect(1, row, LVIR_BOUNDS);
    test::Canvas canvas(list, area.Size(), kMark);
    CDC& dc = canvas.dc;
    EXPECT_EQ(list.OnEraseBkgnd(&dc), 0);
    EXPECT_EQ(dc.GetPixel(row.CenterPoint()), kMark);
    EXPECT_EQ(dc.GetPixel(row.right + 2, row.top + 2), kBack);
    EXPECT_EQ(dc.GetPixel(row.left + 2, row.bottom + 1), kBack);
    EXPECT_EQ(dc.GetPixel(row.left + 2, row.bottom - 1), kMark);
}

}  // namespace
