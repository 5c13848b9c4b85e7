// The list view. Rows and columns count from 0; -1 stands for "none" in results and for "all rows" where the control
// takes it. Widths and points are pixels of the client area. Texts are copied; a text pointer of LPSTR_TEXTCALLBACK
// makes the control ask its parent (LVN_GETDISPINFO). Structures say by their mask what is read or written.
//
// The class adds no data to CWnd: a pointer from GetDlgItem may be used through it.
#pragma once

#include "quor/platform/base/List.h"
#include "quor/platform/base/Strings.h"
#include "quor/platform/win/HeaderCtrl.h"
#include "quor/platform/win/Wnd.h"

#include <commctrl.h>

class CEdit;
class CImageList;
class CToolTipCtrl;

class QUOR_FRAMEWORK_API CListCtrl : public CWnd {
    DECLARE_DYNCREATE(CListCtrl)
public:
    CListCtrl() = default;
    // Style LVS_... with the window styles; the rectangle is in the parent's client area.
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    virtual BOOL CreateEx(DWORD exStyle, DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // --- Rows -------------------------------------------------------------------------------------------------------
    int GetItemCount() const { return intFrom(LVM_GETITEMCOUNT); }
    // Room for so many rows; with LVS_OWNERDATA the number of rows itself.
    void SetItemCount(int count) { send(LVM_SETITEMCOUNT, count); }
    // Flags LVSICF_NOINVALIDATEALL, LVSICF_NOSCROLL; only with LVS_OWNERDATA.
    BOOL SetItemCountEx(int count, DWORD flags = LVSICF_NOINVALIDATEALL) {
        return boolFrom(LVM_SETITEMCOUNT, count, static_cast<LPARAM>(flags));
    }
    // The new row's index, or -1.
    int InsertItem(const LVITEM* item) { return intFrom(LVM_INSERTITEM, 0, param(item)); }
    int InsertItem(int row, LPCTSTR text);
    int InsertItem(int row, LPCTSTR text, int image);
    int InsertItem(UINT mask, int row, LPCTSTR text, UINT state, UINT stateMask, int image, LPARAM data);
    BOOL DeleteItem(int row) { return boolFrom(LVM_DELETEITEM, row); }
    BOOL DeleteAllItems() { return boolFrom(LVM_DELETEALLITEMS); }
    BOOL GetItem(LVITEM* item) const { return boolFrom(LVM_GETITEM, 0, param(item)); }
    BOOL SetItem(const LVITEM* item) { return boolFrom(LVM_SETITEM, 0, param(item)); }
    BOOL SetItem(int row, int subItem, UINT mask, LPCTSTR text, int image, UINT state, UINT stateMask, LPARAM data);
    BOOL SetItem(int row, int subItem, UINT mask, LPCTSTR text, int image, UINT state, UINT stateMask, LPARAM data,
                 int indent);

    // Any length of text; the second form copies at most length - 1 characters and returns the number copied.
    CString GetItemText(int row, int subItem) const;
    int GetItemText(int row, int subItem, LPTSTR text, int length) const;
    BOOL SetItemText(int row, int subItem, LPCTSTR text);
    DWORD_PTR GetItemData(int row) const;
    BOOL SetItemData(int row, DWORD_PTR data);
    // LVIS_... bits.
    UINT GetItemState(int row, UINT mask) const {
        return static_cast<UINT>(send(LVM_GETITEMSTATE, row, static_cast<LPARAM>(mask)));
    }
    BOOL SetItemState(int row, LVITEM* item) { return boolFrom(LVM_SETITEMSTATE, row, param(item)); }
    BOOL SetItemState(int row, UINT state, UINT mask);
    // The check box of LVS_EX_CHECKBOXES (state image 2 is checked).
    BOOL GetCheck(int row) const;
    BOOL SetCheck(int row, BOOL check = TRUE);

    // Flags LVNI_...; start with -1 to include row 0.
    int GetNextItem(int row, int flags) const { return intFrom(LVM_GETNEXTITEM, row, MAKELPARAM(flags, 0)); }
    int FindItem(LVFINDINFO* find, int start = -1) const { return intFrom(LVM_FINDITEM, start, param(find)); }
    // comparison(data of one, data of the other, argument) < 0 where the first row goes first.
    BOOL SortItems(PFNLVCOMPARE comparison, DWORD_PTR argument) {
        return boolFrom(LVM_SORTITEMS, static_cast<INT_PTR>(argument), reinterpret_cast<LPARAM>(comparison));
    }
    // The same with row indexes in place of the rows' data.
    BOOL SortItemsEx(PFNLVCOMPARE comparison, DWORD_PTR argument) {
        return boolFrom(LVM_SORTITEMSEX, static_cast<INT_PTR>(argument), reinterpret_cast<LPARAM>(comparison));
    }

    // --- Selection --------------------------------------------------------------------------------------------------
    UINT GetSelectedCount() const { return static_cast<UINT>(send(LVM_GETSELECTEDCOUNT)); }
    // Walks the selected rows from above: GetFirst gives null when none is selected; GetNext gives the row and moves
    // on.
    POSITION GetFirstSelectedItemPosition() const;
    int GetNextSelectedItem(POSITION& position) const;
    // Where a range selection with Shift starts; setting returns the former mark.
    int GetSelectionMark() const { return intFrom(LVM_GETSELECTIONMARK); }
    int SetSelectionMark(int row) { return intFrom(LVM_SETSELECTIONMARK, 0, row); }
    int GetHotItem() const { return intFrom(LVM_GETHOTITEM); }
    int SetHotItem(int row) { return intFrom(LVM_SETHOTITEM, row); }

    // --- Columns ----------------------------------------------------------------------------------------------------
    // The new column's index, or -1. Format LVCFMT_...; a subItem of -1 leaves the number to the control.
    int InsertColumn(int column, const LVCOLUMN* record) { return intFrom(LVM_INSERTCOLUMN, column, param(record)); }
    int InsertColumn(int column, LPCTSTR heading, int format = LVCFMT_LEFT, int width = -1, int subItem = -1);
    BOOL DeleteColumn(int column) { return boolFrom(LVM_DELETECOLUMN, column); }
    BOOL GetColumn(int column, LVCOLUMN* record) const { return boolFrom(LVM_GETCOLUMN, column, param(record)); }
    BOOL SetColumn(int column, const LVCOLUMN* record) { return boolFrom(LVM_SETCOLUMN, column, param(record)); }
    int GetColumnWidth(int column) const { return intFrom(LVM_GETCOLUMNWIDTH, column); }
    // LVSCW_AUTOSIZE reads every row's text, of an owner-data list too.
    BOOL SetColumnWidth(int column, int width) { return boolFrom(LVM_SETCOLUMNWIDTH, column, MAKELPARAM(width, 0)); }
    // order[place] = column; a count of -1 means all columns.
    BOOL GetColumnOrderArray(LPINT order, int count = -1) const;
    BOOL SetColumnOrderArray(int count, LPINT order) { return boolFrom(LVM_SETCOLUMNORDERARRAY, count, param(order)); }
    // The object that subclassed this list's header, else a temporary one; null without a header.
    CHeaderCtrl* GetHeaderCtrl() const;

    // --- Geometry ---------------------------------------------------------------------------------------------------
    // Area LVIR_BOUNDS, LVIR_ICON, LVIR_LABEL or LVIR_SELECTBOUNDS.
    BOOL GetItemRect(int row, LPRECT rect, UINT area) const;
    // For subitem 0 LVIR_BOUNDS is the whole row.
    BOOL GetSubItemRect(int row, int subItem, int area, CRect& rect) const;
    BOOL GetItemPosition(int row, LPPOINT point) const { return boolFrom(LVM_GETITEMPOSITION, row, param(point)); }
    BOOL SetItemPosition(int row, POINT point) { return boolFrom(LVM_SETITEMPOSITION32, row, param(&point)); }
    // The row at a client point, or -1; flags LVHT_...
    int HitTest(LVHITTESTINFO* info) const { return intFrom(LVM_HITTEST, 0, param(info)); }
    int HitTest(POINT point, UINT* flags = nullptr) const;
    // The same, with info->iSubItem the column.
    int SubItemHitTest(LPLVHITTESTINFO info) { return intFrom(LVM_SUBITEMHITTEST, 0, param(info)); }
    int GetTopIndex() const { return intFrom(LVM_GETTOPINDEX); }
    // Rows that fit wholly.
    int GetCountPerPage() const { return intFrom(LVM_GETCOUNTPERPAGE); }
    BOOL EnsureVisible(int row, BOOL partialOk) { return boolFrom(LVM_ENSUREVISIBLE, row, MAKELPARAM(partialOk, 0)); }
    // By pixels.
    BOOL Scroll(SIZE size) { return boolFrom(LVM_SCROLL, size.cx, size.cy); }
    BOOL RedrawItems(int first, int last) { return boolFrom(LVM_REDRAWITEMS, first, last); }
    BOOL Update(int row) { return boolFrom(LVM_UPDATE, row); }
    BOOL Arrange(UINT code) { return boolFrom(LVM_ARRANGE, static_cast<INT_PTR>(code)); }
    BOOL GetViewRect(LPRECT rect) const { return boolFrom(LVM_GETVIEWRECT, 0, param(rect)); }
    BOOL GetOrigin(LPPOINT point) const { return boolFrom(LVM_GETORIGIN, 0, param(point)); }
    int GetStringWidth(LPCTSTR text) const { return intFrom(LVM_GETSTRINGWIDTH, 0, param(text)); }
    CSize ApproximateViewRect(CSize size = CSize(-1, -1), int count = -1) const;

    // --- Appearance -------------------------------------------------------------------------------------------------
    COLORREF GetBkColor() const { return static_cast<COLORREF>(send(LVM_GETBKCOLOR)); }
    BOOL SetBkColor(COLORREF color) { return boolFrom(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(color)); }
    COLORREF GetTextColor() const { return static_cast<COLORREF>(send(LVM_GETTEXTCOLOR)); }
    BOOL SetTextColor(COLORREF color) { return boolFrom(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(color)); }
    COLORREF GetTextBkColor() const { return static_cast<COLORREF>(send(LVM_GETTEXTBKCOLOR)); }
    BOOL SetTextBkColor(COLORREF color) { return boolFrom(LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(color)); }
    // LVS_EX_...; setting returns the former style.
    DWORD GetExtendedStyle() const { return static_cast<DWORD>(send(LVM_GETEXTENDEDLISTVIEWSTYLE)); }
    DWORD SetExtendedStyle(DWORD style) {
        return static_cast<DWORD>(send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style)));
    }
    DWORD GetView() const { return static_cast<DWORD>(send(LVM_GETVIEW)); }
    DWORD SetView(int view) { return static_cast<DWORD>(send(LVM_SETVIEW, view)); }
    // Kind LVSIL_NORMAL, LVSIL_SMALL or LVSIL_STATE. The control destroys its lists unless LVS_SHAREIMAGELISTS is set.
    CImageList* GetImageList(int kind) const;
    CImageList* SetImageList(CImageList* list, int kind);
    // A new object with the picture of a row for dragging; the caller deletes it. Null on failure. point receives the
    // upper left corner of the row's picture in the list.
    CImageList* CreateDragImage(int row, LPPOINT point);
    CToolTipCtrl* GetToolTips() const;
    CToolTipCtrl* SetToolTips(CToolTipCtrl* toolTip);
    // Label editing; null if it could not begin.
    CEdit* EditLabel(int row);
    CEdit* GetEditControl() const;

    // A row of an LVS_OWNERDRAWFIXED list wants to be painted. Does nothing here.
    virtual void DrawItem(LPDRAWITEMSTRUCT drawItem);

    // The list's header gets a filter bar where the system has none (see FilterBar.h), as soon as there is a header.
    void PreSubclassWindow() override;

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    // Mends the screen after a heading was dragged, where that is necessary.
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    afx_msg void OnParentNotify(UINT message, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    LRESULT send(UINT message, INT_PTR wParam = 0, LPARAM lParam = 0) const {
        return CWnd::SendMessage(message, static_cast<WPARAM>(wParam), lParam);
    }
    int intFrom(UINT message, INT_PTR wParam = 0, LPARAM lParam = 0) const {
        return static_cast<int>(send(message, wParam, lParam));
    }
    BOOL boolFrom(UINT message, INT_PTR wParam = 0, LPARAM lParam = 0) const {
        return static_cast<BOOL>(send(message, wParam, lParam));
    }
    static LPARAM param(const void* pointer) { return reinterpret_cast<LPARAM>(pointer); }
};
