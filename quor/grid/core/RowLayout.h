// Where the rows of a list stand on screen, by arithmetic: a record read once from the native control, so that a tick
// sends no message to find the rectangle it must repaint. And the area that the ticks made dirty.
// Row numbers: see FilterListBaseData.h. All sizes in pixels, client coordinates of the list.
#pragma once

#include "quor/platform/Base.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace quor::grid {

struct RowLayout {
    int rowHeight = 0;
    int topIndex = 0;  // visual index of the first row in view
    int countPerPage = 0;
    int horizontalScroll = 0;
    int totalWidth = 0;  // of all columns
    int headerHeight = 0;
    int clientWidth = 0;
    int clientHeight = 0;
    bool visible = false;  // the window, not a row: a row out of view has a rectangle like any other

    // Last visual index of the page, cut to the rows that exist; below topIndex when the page is empty.
    int pageEnd(int count) const { return std::min(topIndex + countPerPage, count) - 1; }
    // The same with the row that shows in part below the page.
    int lastInView(int count) const { return std::min(topIndex + countPerPage + 1, count) - 1; }

    // The bounds of a row. A row so far away that its distance does not fit stands at the limit.
    RECT rowRect(int visual) const {
        const std::int64_t top =
            headerHeight + (static_cast<std::int64_t>(visual) - topIndex) * static_cast<std::int64_t>(rowHeight);
        return {-horizontalScroll, clampTop(top), totalWidth - horizontalScroll, clampTop(top + rowHeight)};
    }

    // What the native control does when its count falls: the page moves up until the last row stands at its end.
    void countFellTo(int count) { topIndex = std::min(topIndex, std::max(0, count - countPerPage)); }

private:
    // Far beyond any window, and safe to add to.
    static constexpr std::int64_t kLimit = 1 << 30;
    static LONG clampTop(std::int64_t y) { return static_cast<LONG>(std::clamp(y, -kLimit, kLimit)); }
};

// The union of all that has to be repainted, and whether there is news since the last flush. The rectangle only grows:
// a later flush repaints at least what was dirty before. What came since the last paint or flush is kept apart, for a
// paint that comes before the next flush.
//
// Single rows, the common case of a tick, are kept as a range of visual indices and become a rectangle by fold: whoever
// changes the layout folds with the former one first.
class DirtyArea {
public:
    // One row of a visible window, wherever it stands.
    void noteRow(int visual) {
        m_firstRow = std::min(m_firstRow, visual);
        m_lastRow = std::max(m_lastRow, visual);
    }
    // The same; nothing while the window is hidden, since showing it paints everything.
    void addRow(const RowLayout& layout, int visual) {
        if (layout.visible) noteRow(visual);
    }

    // From a row to the end of what is in view. Nothing while the window is hidden, or when the row is out of view.
    void addToPageEnd(const RowLayout& layout, int first, int count) {
        const int last = layout.lastInView(count);
        if (!layout.visible || first < layout.topIndex || first > last) return;
        noteRow(first);
        noteRow(last);
    }
    void addPage(const RowLayout& layout, int count) { addToPageEnd(layout, layout.topIndex, count); }

    // What only the next paint has to know.
    void addForPaint(const RECT& area) { unite(m_fresh, area); }

    // The control has moved pixels since something became dirty: nobody knows where it lies now.
    void pageScrolled(const RowLayout& layout) {
        if (isEmpty(m_fresh)) return;
        m_fresh = {0, 0, layout.clientWidth, layout.clientHeight};
        unite(DirtyRect, m_fresh);
    }

    void fold(const RowLayout& layout) {
        if (m_firstRow > m_lastRow) return;
        RECT range = layout.rowRect(m_firstRow);
        range.bottom = layout.rowRect(m_lastRow).bottom;
        m_firstRow = kNoFirst;
        m_lastRow = kNoLast;
        DirtyFlag = true;
        unite(DirtyRect, range);
        unite(m_fresh, range);
    }

    bool hasNews() const { return DirtyFlag || m_firstRow <= m_lastRow; }
    // What to repaint now; the news are told.
    const RECT& flush(const RowLayout& layout) {
        takeFresh(layout);
        DirtyFlag = false;
        return DirtyRect;
    }
    // What came since the last paint or flush.
    RECT takeFresh(const RowLayout& layout) {
        fold(layout);
        return std::exchange(m_fresh, RECT{});
    }

    static bool isEmpty(const RECT& rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }

private:
    // An empty range; any row widens it.
    static constexpr int kNoFirst = std::numeric_limits<int>::max();
    static constexpr int kNoLast = std::numeric_limits<int>::min();

    static void unite(RECT& all, const RECT& rect) {
        if (isEmpty(rect)) return;
        if (isEmpty(all)) {
            all = rect;
            return;
        }
        all.left = std::min(all.left, rect.left);
        all.top = std::min(all.top, rect.top);
        all.right = std::max(all.right, rect.right);
        all.bottom = std::max(all.bottom, rect.bottom);
    }

    int m_firstRow = kNoFirst;
    int m_lastRow = kNoLast;
    RECT DirtyRect{};
    RECT m_fresh{};
    bool DirtyFlag = false;
};

}  // namespace quor::grid
