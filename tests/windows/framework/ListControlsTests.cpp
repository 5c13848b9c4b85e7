// CListCtrl and CHeaderCtrl over real controls.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "platform/Framework.h"
#include "support/Input.h"
#include "support/WindowFixture.h"

namespace {

// A visible parent window with one report list in it.
class ListControls : public test::WindowFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(
            parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 400, 300), nullptr, 0));
    }
    void create(CListCtrl& list, DWORD style = 0) {
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT | style, CRect(0, 0, 400, 300), &parent, 7));
    }
    void addColumns(CListCtrl& list, int count) {
        for (int column = 0; column < count; ++column) {
            CString heading;
            heading.Format("c%d", column);
            EXPECT_EQ(list.InsertColumn(column, heading, LVCFMT_LEFT, 60 + column, column), column);
        }
    }
    void addRows(CListCtrl& list, int count) {
        for (int row = 0; row < count; ++row) {
            CString text;
            text.Format("r%d", row);
            EXPECT_EQ(list.InsertItem(row, text), row);
            list.SetItemData(row, static_cast<DWORD_PTR>(100 + row));
        }
    }

    CWnd parent;
};

std::vector<int> selectedRows(const CListCtrl& list) {
    std::vector<int> rows;
    for (POSITION position = list.GetFirstSelectedItemPosition(); position;)
        rows.push_back(list.GetNextSelectedItem(position));
    return rows;
}

std::vector<std::string> firstColumn(const CListCtrl& list) {
    std::vector<std::string> texts;
    for (int row = 0; row < list.GetItemCount(); ++row) texts.push_back(list.GetItemText(row, 0).GetString());
    return texts;
}

TEST_F(ListControls, RowsColumnsAndTextsReadBack) {
    CListCtrl list;
    create(list);
    addColumns(list, 3);
    addRows(list, 4);
    EXPECT_TRUE(list.SetItemText(2, 1, "two/one"));
    EXPECT_TRUE(list.SetItem(3, 2, LVIF_TEXT, "three/two", 0, 0, 0, 0));
    EXPECT_TRUE(list.DeleteItem(0));
    EXPECT_EQ(list.GetItemCount(), 3);
    EXPECT_EQ(list.GetItemText(1, 1), "two/one");
    EXPECT_EQ(list.GetItemText(2, 2), "three/two");
    EXPECT_EQ(list.GetItemData(2), 103u);
    EXPECT_EQ(list.GetItemData(9), 0u);
    EXPECT_EQ(list.GetColumnWidth(2), 62);
    EXPECT_TRUE(list.SetColumnWidth(2, 81));
    EXPECT_EQ(list.GetColumnWidth(2), 81);
    EXPECT_EQ(list.InsertItem(LVIF_TEXT | LVIF_PARAM | LVIF_STATE, 0, "first", LVIS_SELECTED, LVIS_SELECTED, 0, 5), 0);
    EXPECT_EQ(list.GetItemData(0), 5u);
    EXPECT_EQ(list.GetItemState(0, LVIS_SELECTED), static_cast<UINT>(LVIS_SELECTED));
    LVFINDINFO find{};
    find.flags = LVFI_PARAM;
    find.lParam = 102;
    EXPECT_EQ(list.FindItem(&find), 2);
    EXPECT_TRUE(list.DeleteColumn(0));
    EXPECT_EQ(list.GetHeaderCtrl()->GetItemCount(), 2);
    EXPECT_TRUE(list.DeleteAllItems());
    EXPECT_EQ(list.GetItemCount(), 0);
}

TEST_F(ListControls, TextsOfAnyLengthComeBackWhole) {
    CListCtrl list;
    create(list);
    addColumns(list, 1);
    list.InsertItem(0, "");
    for (const int length : {0, 1, 126, 127, 128, 129, 255, 256, 259, 5000}) {
        const CString text('x', length);
        list.SetItemText(0, 0, text);
        EXPECT_EQ(list.GetItemText(0, 0), text) << length;
    }
}

TEST_F(ListControls, TheSelectionIsWalkedFromAbove) {
    CListCtrl list;
    create(list);
    addColumns(list, 1);
    addRows(list, 8);
    EXPECT_EQ(selectedRows(list), std::vector<int>{});
    for (const int row : {6, 0, 3}) list.SetItemState(row, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(selectedRows(list), (std::vector<int>{0, 3, 6}));
    EXPECT_EQ(list.GetSelectedCount(), 3u);
    list.SetItemState(-1, 0, LVIS_SELECTED);
    EXPECT_EQ(selectedRows(list), std::vector<int>{});
    list.SetItemState(7, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    EXPECT_EQ(selectedRows(list), std::vector<int>{7});
    EXPECT_EQ(list.GetNextItem(-1, LVNI_FOCUSED), 7);
    list.SetSelectionMark(2);
    EXPECT_EQ(list.SetSelectionMark(5), 2);
    EXPECT_EQ(list.GetSelectionMark(), 5);
}

int CALLBACK falling(LPARAM left, LPARAM right, LPARAM sign) { return static_cast<int>((left - right) * sign); }

TEST_F(ListControls, RowsSortByTheirDataWithTheCallersArgument) {
    CListCtrl list;
    create(list);
    addColumns(list, 1);
    addRows(list, 4);
    EXPECT_TRUE(list.SortItems(&falling, static_cast<DWORD_PTR>(-1)));
    EXPECT_EQ(firstColumn(list), (std::vector<std::string>{"r3", "r2", "r1", "r0"}));
    EXPECT_TRUE(list.SortItems(&falling, 1));
    EXPECT_EQ(firstColumn(list), (std::vector<std::string>{"r0", "r1", "r2", "r3"}));
}

TEST_F(ListControls, PointsAndRectanglesAgree) {
    CListCtrl list;
    create(list);
    addColumns(list, 3);
    addRows(list, 5);
    for (int row = 0; row < 5; ++row) {
        for (int column = 0; column < 3; ++column) {
            CRect cell;
            ASSERT_TRUE(list.GetSubItemRect(row, column, LVIR_LABEL, cell));
            LVHITTESTINFO info{};
            info.pt = cell.CenterPoint();
            EXPECT_EQ(list.SubItemHitTest(&info), row);
            EXPECT_EQ(info.iSubItem, column);
        }
    }
    CRect bounds;
    ASSERT_TRUE(list.GetItemRect(1, &bounds, LVIR_BOUNDS));
    UINT flags = 0;
    EXPECT_EQ(list.HitTest(CPoint(bounds.left + 8, bounds.top + 2), &flags), 1);
    EXPECT_NE(flags & LVHT_ONITEM, 0u);
    EXPECT_EQ(list.HitTest(CPoint(10, 290), &flags), -1);
    EXPECT_EQ(flags, static_cast<UINT>(LVHT_NOWHERE));
    EXPECT_EQ(list.GetTopIndex(), 0);
    EXPECT_GT(list.GetCountPerPage(), 5);
}

TEST_F(ListControls, CheckBoxesStandInTheRowsState) {
    CListCtrl list;
    create(list);
    list.SetExtendedStyle(LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
    EXPECT_EQ(list.GetExtendedStyle(), static_cast<DWORD>(LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT));
    addColumns(list, 1);
    addRows(list, 2);
    EXPECT_FALSE(list.GetCheck(1));
    EXPECT_TRUE(list.SetCheck(1));
    EXPECT_TRUE(list.GetCheck(1));
    EXPECT_FALSE(list.GetCheck(0));
    EXPECT_TRUE(list.SetCheck(1, FALSE));
    EXPECT_FALSE(list.GetCheck(1));
}

TEST_F(ListControls, ColumnOrderMovesTheCells) {
    CListCtrl list;
    create(list);
    addColumns(list, 3);
    addRows(list, 1);
    int order[3] = {2, 0, 1};
    ASSERT_TRUE(list.SetColumnOrderArray(3, order));
    int back[3] = {};
    ASSERT_TRUE(list.GetColumnOrderArray(back));
    EXPECT_TRUE(std::equal(order, order + 3, back));
    EXPECT_EQ(list.GetHeaderCtrl()->OrderToIndex(0), 2);
    CRect first;
    CRect second;
    list.GetSubItemRect(0, 2, LVIR_BOUNDS, first);
    list.GetSubItemRect(0, 1, LVIR_BOUNDS, second);
    EXPECT_LT(first.left, second.left);
}

TEST_F(ListControls, AnOwnerDataListTakesItsCountAndKeepsItsPlace) {
    CListCtrl list;
    create(list, LVS_OWNERDATA);
    addColumns(list, 1);
    EXPECT_TRUE(list.SetItemCountEx(1000));
    EXPECT_EQ(list.GetItemCount(), 1000);
    EXPECT_TRUE(list.EnsureVisible(700, FALSE));
    const int top = list.GetTopIndex();
    EXPECT_EQ(top + list.GetCountPerPage(), 701);
    EXPECT_TRUE(list.SetItemCountEx(2000, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL));
    EXPECT_EQ(list.GetTopIndex(), top);
    CRect row;
    list.GetItemRect(top, &row, LVIR_BOUNDS);
    EXPECT_TRUE(list.Scroll(CSize(0, -3 * row.Height())));
    EXPECT_EQ(list.GetTopIndex(), top - 3);
}

TEST_F(ListControls, ADragPictureIsTheCallersObject) {
    CListCtrl list;
    create(list);
    addColumns(list, 1);
    addRows(list, 2);
    CPoint corner(-1, -1);
    const std::unique_ptr<CImageList> picture(list.CreateDragImage(1, &corner));
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(CImageList::FromHandlePermanent(*picture), picture.get());
    EXPECT_EQ(picture->GetImageCount(), 1);
    EXPECT_EQ(list.CreateDragImage(99, &corner), nullptr);
}

// --- Owner drawing ---------------------------------------------------------------------------------------------------

class DrawnList : public CListCtrl {
public:
    struct Drawn {
        int row;
        UINT id;
        bool ownContext;
    };
    std::vector<Drawn> drawn;
    int measured = 0;

    void DrawItem(LPDRAWITEMSTRUCT item) override {
        const CDC* const dc = CDC::FromHandle(item->hDC);
        drawn.push_back({static_cast<int>(item->itemID), item->CtlID, dc->m_hDC == item->hDC});
    }

protected:
    afx_msg void MeasureItem(LPMEASUREITEMSTRUCT item) {
        ++measured;
        item->itemHeight = 31;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DrawnList, CListCtrl)
    ON_WM_MEASUREITEM_REFLECT()
END_MESSAGE_MAP()

TEST_F(ListControls, RequestsToDrawAndMeasureReachTheListItself) {
    DrawnList list;
    create(list, LVS_OWNERDRAWFIXED | LVS_OWNERDATA);
    EXPECT_GE(list.measured, 1) << "asked while the control is being created";
    addColumns(list, 1);
    list.SetItemCountEx(3, 0);
    list.UpdateWindow();
    ASSERT_GE(list.drawn.size(), 3u);
    EXPECT_EQ(list.drawn[0].row, 0);
    EXPECT_EQ(list.drawn[2].row, 2);
    EXPECT_EQ(list.drawn[0].id, 7u);
    EXPECT_TRUE(list.drawn[0].ownContext);
    CRect row;
    list.GetItemRect(0, &row, LVIR_BOUNDS);
    EXPECT_EQ(row.Height(), 31);
}

// --- Header ----------------------------------------------------------------------------------------------------------

// Counts what its header is told and asked.
class OwnHeader : public CHeaderCtrl {
public:
    int inserted = 0;
    int heightAdded = 20;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == HDM_INSERTITEMA || message == HDM_INSERTITEMW) ++inserted;
        const LRESULT result = CHeaderCtrl::WindowProc(message, wParam, lParam);
        if (message == HDM_LAYOUT) {
            const auto* layout = reinterpret_cast<HDLAYOUT*>(lParam);
            layout->pwpos->cy += heightAdded;
            layout->prc->top += heightAdded;
        }
        return result;
    }
};

// Attaches its header before any column and notes the notifications that come from it.
class ListWithHeader : public CListCtrl {
public:
    OwnHeader header;
    std::vector<UINT> codes;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override {
        const auto* const note = reinterpret_cast<NMHDR*>(lParam);
        if (header.m_hWnd && note->hwndFrom == header.m_hWnd) codes.push_back(note->code);
        return CListCtrl::OnNotify(wParam, lParam, result);
    }
};

bool anyOf(const std::vector<UINT>& codes, UINT ansi, UINT wide) {
    return std::any_of(codes.begin(), codes.end(), [=](UINT code) { return code == ansi || code == wide; });
}

TEST_F(ListControls, AHeaderObjectAttachedFirstIsTheListsHeader) {
    ListWithHeader list;
    create(list);
    CHeaderCtrl* const foreign = list.GetHeaderCtrl();
    ASSERT_NE(foreign, nullptr);
    EXPECT_NE(foreign, &list.header);
    ASSERT_TRUE(list.header.SubclassWindow(foreign->m_hWnd));
    EXPECT_EQ(list.GetHeaderCtrl(), &list.header);

    addColumns(list, 3);
    addRows(list, 1);
    EXPECT_EQ(list.header.inserted, 3) << "the header's own procedure sees every column";
    CRect header;
    CRect row;
    list.header.GetWindowRect(&header);
    list.GetItemRect(0, &row, LVIR_BOUNDS);
    EXPECT_EQ(row.top, header.Height()) << "rows begin below the taller header";

    char text[16] = "";
    HDITEM item{};
    item.mask = HDI_TEXT | HDI_WIDTH;
    item.pszText = text;
    item.cchTextMax = sizeof(text);
    ASSERT_TRUE(list.header.GetItem(1, &item));
    EXPECT_STREQ(text, "c1");
    EXPECT_EQ(item.cxy, 61);
    EXPECT_FALSE(list.header.GetItem(3, &item));
}

TEST_F(ListControls, HeaderNotificationsReachTheListItself) {
    ListWithHeader list;
    create(list);
    list.header.SubclassWindow(list.GetHeaderCtrl()->m_hWnd);
    addColumns(list, 2);
    list.codes.clear();
    HDITEM item{};
    item.mask = HDI_WIDTH;
    item.cxy = 99;
    ASSERT_TRUE(list.header.SetItem(1, &item));
    EXPECT_TRUE(anyOf(list.codes, HDN_ITEMCHANGINGA, HDN_ITEMCHANGINGW));
    EXPECT_TRUE(anyOf(list.codes, HDN_ITEMCHANGEDA, HDN_ITEMCHANGEDW));
    EXPECT_EQ(list.GetColumnWidth(1), 99);

    CRect divider;
    list.header.GetItemRect(0, &divider);
    list.header.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(divider.right - 1, 5));
    EXPECT_TRUE(anyOf(list.codes, HDN_DIVIDERDBLCLICKA, HDN_DIVIDERDBLCLICKW));
}

// Where the system puts back black under the picture that is dragged, the whole window is painted again. A display that
// shows nothing at all counts as such a one.
TEST_F(ListControls, ADraggedHeadingLeavesTheScreenAsTheWindowsAre) {
    parent.ShowWindow(SW_HIDE);  // it would be in front
    CListCtrl list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, CRect(20, 40, 420, 240), &frame(), 7));
    list.SetExtendedStyle(LVS_EX_HEADERDRAGDROP);
    addColumns(list, 3);
    pumpUntilIdle();
    int painted = 0;
    frame().onMessage = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
        painted += message == WM_NCPAINT;
        return false;
    };
    const auto screenIsRight = [&] {
        CWindowDC screen(nullptr), window(&frame());
        CRect place;
        frame().GetWindowRect(place);
        return screen.GetPixel(place.left + 5, place.top + 5) == window.GetPixel(5, 5);
    };
    const HWND header = list.GetHeaderCtrl()->m_hWnd;
    test::sendClick(header, {150, 5});
    pumpUntilIdle();
    EXPECT_EQ(painted, 0);
    test::sendDrag(header, {20, 5}, {230, 5});
    pumpUntilIdle();
    ASSERT_EQ(list.GetHeaderCtrl()->OrderToIndex(0), 1);
    EXPECT_TRUE(painted > 0 || screenIsRight());
    list.DestroyWindow();
}

TEST_F(ListControls, AHeaderStandsAlone) {
    CHeaderCtrl header;
    ASSERT_TRUE(header.Create(WS_CHILD | WS_VISIBLE | HDS_HORZ, CRect(0, 0, 300, 20), &parent, 9));
    HDITEM item{};
    item.mask = HDI_TEXT | HDI_WIDTH;
    item.cxy = 50;
    for (const char* text : {"a", "b", "c"}) {
        item.pszText = const_cast<char*>(text);
        header.InsertItem(99, &item);
    }
    EXPECT_EQ(header.GetItemCount(), 3);
    int order[3] = {1, 2, 0};
    EXPECT_TRUE(header.SetOrderArray(3, order));
    EXPECT_EQ(header.OrderToIndex(2), 0);
    CRect rect;
    header.GetItemRect(0, &rect);
    EXPECT_EQ(rect.left, 100);
    HDHITTESTINFO hit{};
    hit.pt = CPoint(75, 8);
    EXPECT_EQ(header.HitTest(&hit), 2);
    CImageList images;
    images.Create(8, 8, ILC_COLOR32, 1, 1);
    EXPECT_EQ(header.SetImageList(&images), nullptr);
    EXPECT_EQ(header.GetImageList(), &images);
    EXPECT_TRUE(header.DeleteItem(1));
    EXPECT_EQ(header.GetItemCount(), 2);
}

// A list that came with a dialog or was made elsewhere may be used through the class without an object of its own.
TEST_F(ListControls, AForeignListIsUsedThroughATemporaryObject) {
    const HWND bare = ::CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD | LVS_REPORT, 0, 0, 100, 100, parent.m_hWnd,
                                        reinterpret_cast<HMENU>(12), nullptr, nullptr);
    auto* const list = static_cast<CListCtrl*>(parent.GetDlgItem(12));
    ASSERT_EQ(list->m_hWnd, bare);
    addColumns(*list, 2);
    addRows(*list, 2);
    EXPECT_EQ(list->GetHeaderCtrl()->GetItemCount(), 2);
    EXPECT_EQ(list->GetItemText(1, 0), "r1");
}

}  // namespace
