// NativeList: the one way from the grid to its native control, and the port through which the rows speak to it. Its
// calls go past the grid's window procedure to the control's. Visual indices: see FilterListBaseData.h. Not owned: the
// list, which must outlive this object. Without a window every call does nothing and answers 0 or -1.
#pragma once

#include "quor/grid/core/RowPort.h"
#include "quor/platform/Framework.h"

namespace quor::grid {

// What the grid does around a message of the control.
enum class MessageKind {
    blind,    // the row count is nobody's business, and the layout stays
    paint,    // the control paints: what is dirty goes along
    quiet,    // may look at the count and leaves the layout alone
    counts,   // the control is told a count or rows by somebody else
    general,  // may look at everything and change the layout
};
MessageKind messageKind(UINT message, WPARAM wParam, LPARAM lParam);

// A cell of the control: visual index and place.
struct CellPlace {
    int visual;
    int place;
    auto operator<=>(const CellPlace&) const = default;
};

class NativeList : public RowPort {
public:
    explicit NativeList(CWnd& list) : m_list(list) {}
    NativeList(const NativeList&) = delete;
    NativeList& operator=(const NativeList&) = delete;

    // ---- What the window procedure reports, before every message of the control.
    void beforeMessage(UINT message, WPARAM wParam);

    // ---- The port of the rows
    RowLayout readLayout() override;
    bool isVisible() override { return ::IsWindowVisible(m_list.m_hWnd) != FALSE; }
    void tellCount(int count) override;
    bool fallingMatters(int lowest) override;
    int selectionMark() override { return m_list.m_hWnd ? static_cast<int>(send(LVM_GETSELECTIONMARK)) : -1; }
    int focusedRow() override { return nextItem(-1, LVNI_FOCUSED); }
    void collectSelected(std::vector<int>& rows) override;
    void setState(int visual, unsigned state, unsigned mask) override;
    void scrollRows(int rows) override;
    void invalidate(const RECT& rect, bool erase) override;
    void invalidateAll() override;  // with erase
    // Before a paint: rows are painted from their edge on, the control marks those that change their state from the
    // text on.
    void widenUpdate(const RowLayout& layout);

    // ---- What the grid asks besides
    int topIndex() { return static_cast<int>(send(LVM_GETTOPINDEX)); }
    int nativeCount() { return static_cast<int>(send(LVM_GETITEMCOUNT)); }
    int nextItem(int after, UINT flags) {
        return m_list.m_hWnd ? static_cast<int>(send(LVM_GETNEXTITEM, after, flags)) : -1;
    }
    // Overlay, state image and selection bits as the mask says, with what the grid answers to LVN_GETDISPINFO.
    UINT itemState(int visual, UINT mask);
    void insertRow(int visual);  // moves the native selection
    void deleteAllRows() { send(LVM_DELETEALLITEMS); }
    void ensureVisible(int visual) { send(LVM_ENSUREVISIBLE, visual); }
    // A cell's label. Asked of the control once per column and paint: in a report view all rows are alike.
    bool labelRect(const RowLayout& layout, int visual, int place, RECT& rect);
    // Both -1 where no cell is.
    CellPlace cellAt(POINT point);
    // All at once, without erase: a call to the system costs more than to find a cell.
    void invalidateCells(std::vector<CellPlace> cells);
    // The control wants a text only to find a place: any will do.
    bool isMeasuring() const { return m_measuring; }
    void setRedraw(bool on);
    bool redrawIsOff() const { return m_redrawIsOff; }
    DWORD extendedStyle() { return static_cast<DWORD>(send(LVM_GETEXTENDEDLISTVIEWSTYLE)); }
    void setExtendedStyle(DWORD style) { send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style)); }
    int columnWidth(int place) { return static_cast<int>(send(LVM_GETCOLUMNWIDTH, place)); }
    void setColumnWidth(int place, int width) { send(LVM_SETCOLUMNWIDTH, place, MAKELPARAM(width, 0)); }
    COLORREF textColor() { return static_cast<COLORREF>(send(LVM_GETTEXTCOLOR)); }
    COLORREF backColor() { return static_cast<COLORREF>(send(LVM_GETBKCOLOR)); }
    HIMAGELIST imageList(int kind) { return reinterpret_cast<HIMAGELIST>(send(LVM_GETIMAGELIST, kind)); }

private:
    bool subItemRect(int visual, int place, int part, RECT& rect);
    LRESULT send(UINT message, INT_PTR wParam = 0, LPARAM lParam = 0);

    CWnd& m_list;
    bool m_redrawIsOff = false;
    bool m_measuring = false;
    std::vector<RECT> m_labels;  // by place, as in row 0 at the top of the list; inverted: not asked yet
};

}  // namespace quor::grid
