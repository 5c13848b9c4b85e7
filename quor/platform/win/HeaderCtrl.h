// The column header: items by index (order of insertion) or by order (place on screen), widths in pixels.
//
// A list's header exists from the list's creation on and reports to the list. A class that wants one object for it,
// with its own window procedure, subclasses GetHeaderCtrl()->m_hWnd before the first column is inserted; from then on
// CListCtrl::GetHeaderCtrl returns that object. Header notifications (HDN_...) reach the list's OnNotify, and may come
// in their A or W form whatever the header was created with: handle both.
//
// Like every control class of this framework it adds no data to CWnd, since GetDlgItem and the like hand out temporary
// windows that are used through a pointer of the control's class.
#pragma once

#include "quor/platform/win/Wnd.h"

#include <commctrl.h>

class CImageList;

class QUOR_FRAMEWORK_API CHeaderCtrl : public CWnd {
    DECLARE_DYNAMIC(CHeaderCtrl)
public:
    CHeaderCtrl() = default;
    virtual BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetItemCount() const;
    // An HDITEM says by its mask what is read or written. Texts are copied.
    BOOL GetItem(int index, HDITEM* item) const;
    BOOL SetItem(int index, HDITEM* item);
    // The new index, or -1. An index beyond the end appends.
    int InsertItem(int index, HDITEM* item);
    BOOL DeleteItem(int index);
    BOOL GetItemRect(int index, LPRECT rect) const;
    // Fills the position and rectangle that the header wants inside layout->prc.
    BOOL Layout(HDLAYOUT* layout);
    // The item under a client point, -1 without one; flags (HHT_...) may be null.
    int HitTest(LPHDHITTESTINFO info);

    // order[place] = index; count must be the item count.
    BOOL GetOrderArray(LPINT order, int count = -1) const;
    BOOL SetOrderArray(int count, LPINT order);
    int OrderToIndex(int order) const;

    CImageList* GetImageList() const;
    // The list stays the caller's. Returns the former one.
    CImageList* SetImageList(CImageList* list);
    int GetBitmapMargin() const;
    // Pixels beside a bitmap; returns the former margin.
    int SetBitmapMargin(int width);
    // A temporary object; the caller destroys its list (DeleteImageList).
    CImageList* CreateDragImage(int index);
    int SetHotDivider(POINT point);
    int SetHotDivider(int index);

    // The filter bar of a header with HDS_FILTERBAR.
    int EditFilter(int column, BOOL discardChanges);
    // -1 clears every column's filter.
    int ClearFilter(int column);
    int ClearAllFilters() { return ClearFilter(-1); }
    // Milliseconds between the last key and HDN_FILTERCHANGE; returns the former value.
    int SetFilterChangeTimeout(DWORD timeout);

    // Brings the filter bar where the system has none (see FilterBar.h).
    void PreSubclassWindow() override;

    // An item with HDF_OWNERDRAW wants to be painted. Does nothing here.
    virtual void DrawItem(LPDRAWITEMSTRUCT drawItem);

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};
