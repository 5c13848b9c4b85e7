// NativeList: the one way from the grid to its native control. It holds
//   - the layout record, read anew after any message that may have changed it, so that a tick sends no message;
//   - the native row count, which may lag behind what the grid told: telling the control costs a millisecond, and
//     nobody sees the count until a message asks for it. The grid's window procedure reports every message beforehand.
// If the count fell and rose again in between, the control hears the lowest value too when that matters to it (rows
// beyond it lose selection and focus, the page moves up), so that it ends as if it had heard every value.
//
// Its own calls go past the grid's window procedure to the control's. Visual indices: see FilterListBaseData.h.
// Not owned: the list, which must outlive this object. Without a window every call does nothing and answers 0 or -1.
#pragma once

#include "src/grid/core/RowLayout.h"

#include <functional>
#include <vector>

namespace quor::grid {

class QUOR_CONTROLS_API NativeList {
public:
    // The dirty area counts in rows of the present layout and is folded before that changes. Both outlive this object.
    // `settleTicks` is called before the layout changes and before the control is told a count: ticks that the grid has
    // not followed up yet belong to the present one. While the layout is in force nothing else needs to ask for them.
    NativeList(CWnd& list, DirtyArea& dirty, std::function<void()> settleTicks)
        : m_list(list), m_dirty(dirty), m_settleTicks(std::move(settleTicks)) {}
    NativeList(const NativeList&) = delete;
    NativeList& operator=(const NativeList&) = delete;

    // ---- What the window procedure reports, around every message of the control.
    void beforeMessage(UINT message, WPARAM wParam, LPARAM lParam);
    // The control was told a count or rows by somebody else: true for the messages that do so.
    static bool changesCount(UINT message);
    void takeCountFromControl() { m_told = m_wanted = m_lowest = nativeCount(); }

    // ---- Layout
    const RowLayout& layout() {
        if (m_layoutIsStale) {
            readLayout();
        } else if (m_visibilityIsStale) {
            readVisibility();
        }
        return m_layout;
    }
    // The record as it was read last, if nothing has happened since; else null.
    const RowLayout* layoutInForce() const { return m_layoutIsStale || m_visibilityIsStale ? nullptr : &m_layout; }
    // Hiding a parent sends the list nothing: called once per batch.
    void forgetVisibility() {
        m_settleTicks();
        m_visibilityIsStale = true;
    }

    // ---- Count
    // The control shall have this many rows; it neither repaints nor scrolls. It hears it in settle.
    void setCount(int count);
    void settle();
    int nativeCount() { return static_cast<int>(send(LVM_GETITEMCOUNT)); }  // does not settle

    // ---- Selection and focus. States are LVIS_SELECTED and LVIS_FOCUSED.
    int selectionMark() { return m_list.m_hWnd ? static_cast<int>(send(LVM_GETSELECTIONMARK)) : -1; }
    int nextItem(int after, UINT flags) {
        return m_list.m_hWnd ? static_cast<int>(send(LVM_GETNEXTITEM, after, flags)) : -1;
    }
    // All selected rows, in the control's order.
    void collectSelected(std::vector<int>& rows);
    // Takes selection and focus from the given rows and from the row with the focus.
    void clearSelection(const std::vector<int>& selected);
    void setState(int visual, UINT state, UINT mask);
    // Overlay, state image and selection bits as the mask says, with what the grid answers to LVN_GETDISPINFO.
    UINT itemState(int visual, UINT mask);

    // ---- Rows and rectangles
    void insertRow(int visual);  // moves the native selection
    void deleteAllRows();
    void ensureVisible(int visual);
    // A cell's label. Asked of the control once per column and paint: in a report view all rows are alike.
    bool labelRect(int visual, int place, RECT& rect);
    // The control wants a text only to find a rectangle: any will do.
    bool isMeasuring() const { return m_measuring; }
    void invalidate(const RECT& rect, bool erase);
    void invalidateAll();  // with erase

    // ---- The rest
    void setRedraw(bool on);
    bool redrawIsOff() const { return m_redrawIsOff; }
    DWORD extendedStyle() { return static_cast<DWORD>(send(LVM_GETEXTENDEDLISTVIEWSTYLE)); }
    void setExtendedStyle(DWORD style) { send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style)); }
    int columnWidth(int place) { return static_cast<int>(send(LVM_GETCOLUMNWIDTH, place)); }
    void setColumnWidth(int place, int width);
    COLORREF textColor() { return static_cast<COLORREF>(send(LVM_GETTEXTCOLOR)); }
    COLORREF backColor() { return static_cast<COLORREF>(send(LVM_GETBKCOLOR)); }
    HIMAGELIST imageList(int kind) { return reinterpret_cast<HIMAGELIST>(send(LVM_GETIMAGELIST, kind)); }

private:
    LRESULT send(UINT message, INT_PTR wParam = 0, LPARAM lParam = 0);
    void forgetLayout() {
        m_settleTicks();
        m_layoutIsStale = true;
    }
    void readLayout();
    void readVisibility();
    void forgetWindow();
    bool lowestMatters();
    void tellCount(int count);

    CWnd& m_list;
    DirtyArea& m_dirty;
    std::function<void()> m_settleTicks;
    RowLayout m_layout;
    bool m_layoutIsStale = true;
    bool m_visibilityIsStale = true;
    bool m_settling = false;
    bool m_redrawIsOff = false;
    bool m_measuring = false;
    std::vector<RECT> m_labels;  // by place, as in row 0 at the top of the list; inverted: not asked yet
    int m_told = 0;              // what the control knows
    int m_wanted = 0;            // what it shall know
    int m_lowest = 0;            // the lowest value since it was told
};

}  // namespace quor::grid
