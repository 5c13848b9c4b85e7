// A question to the control is a message and an answer to it a repaint, and a tick can afford neither. So its layout is
// remembered until something may have changed it, and what it has to hear waits until somebody could see a difference.
#include "quor/grid/core/LiveRows.h"

#include <algorithm>
#include <utility>

namespace quor::grid {

// ---- Layout

const RowLayout& LiveRows::layout() {
    static const RowLayout kNoLayout;
    if (m_layoutIsStale) {
        const RowWalk walk(*this);
        readLayout();
        if (walk.rowsWent()) return kNoLayout;
    } else if (m_visibilityIsStale) {
        readVisibility();
    }
    return m_layout;
}

// Ticks that are noted belong to the layout in force.
void LiveRows::forgetLayout() {
    settleTicks();
    m_layoutIsStale = true;
}

void LiveRows::forgetVisibility() {
    settleTicks();
    m_visibilityIsStale = true;
}

// The dirty area counts in rows of the layout in force. What was dirty on a page that has scrolled since lies
// elsewhere.
void LiveRows::readLayout() {
    const RowWalk walk(*this);
    settle();
    if (walk.rowsWent()) return;
    m_dirty.fold(m_layout);
    const RowLayout former = m_layout;
    m_layoutIsStale = false;
    m_layout = m_port.readLayout();
    readVisibility();
    if (former.topIndex != m_layout.topIndex || former.horizontalScroll != m_layout.horizontalScroll)
        m_dirty.pageScrolled(m_layout);
}

void LiveRows::readVisibility() {
    m_visibilityIsStale = false;
    m_layout.visible = m_port.isVisible();
}

// ---- Count

void LiveRows::tellDisplayCount() {
    const int count = displayCount();
    m_wanted = count;
    m_lowest = std::min(m_lowest, count);
    m_dirty.fold(m_layout);
    const int formerTop = m_layout.topIndex;
    m_layout.countFellTo(count);
    if (m_layout.topIndex != formerTop) m_dirty.addPage(m_layout, count);
    if (m_layout.rowHeight == 0) m_layoutIsStale = true;  // read while there was no row to measure
}

void LiveRows::settle() {
    settleTicks();
    if (m_settling || (m_told == m_wanted && m_lowest == m_wanted)) return;
    // Rows that lose selection or focus are told to the host, who may come back, throw, or end the list.
    RowWalk walk(*this);
    m_settling = true;
    const int lowest = m_lowest, wanted = m_wanted;
    m_lowest = wanted;
    try {
        if (lowest < wanted && lowest < m_told && m_port.fallingMatters(lowest)) tellCount(lowest);
        if (!walk.gone() && m_told != wanted) tellCount(wanted);
    } catch (...) {
        if (!walk.gone()) m_settling = false;
        throw;
    }
    if (walk.gone()) return;
    m_settling = false;
    walk.finish();
}

void LiveRows::settleScrollBar() {
    if (!m_settling && std::exchange(m_scrollBarIsBehind, false) && m_told == m_wanted) tellCount(m_wanted);
}

// A page that would end below the last row moves up; the control may leave its pixels where they were.
void LiveRows::tellCount(int count) {
    const bool mayMove = count < m_told;
    const int formerTop = mayMove ? m_port.readLayout().topIndex : 0;
    m_told = count;
    m_scrollBarIsBehind = false;
    m_layoutIsStale = true;
    const RowWalk walk(*this);
    m_port.tellCount(count);
    if (walk.gone()) return;
    if (mayMove && m_port.readLayout().topIndex != formerTop) m_port.invalidateAll();
}

// ---- The area to repaint

void LiveRows::markFrom(int visual) {
    const RowLayout& now = layout();
    m_dirty.addToPageEnd(now, std::max(now.topIndex, visual), displayCount());
}

// The layout is the one in force since before the first of these ticks, and the page stayed where it was.
void LiveRows::followTicks() {
    const SettledTicks done = m_display.settle(ReverseDisplay);
    for (const int slot : done.left) m_pending.slotLeft(slot);
    if (done.firstMoved != std::numeric_limits<int>::max()) {
        m_lowest = std::min(m_lowest, done.lowestCount);
        tellDisplayCount();
    }
    if (done.firstRepaint <= done.lastRepaint) {
        m_dirty.addRow(m_layout, done.firstRepaint);
        m_dirty.addRow(m_layout, done.lastRepaint);
    }
    m_dirty.addToPageEnd(m_layout, std::max(m_layout.topIndex, done.firstMoved), displayCount());
}

void LiveRows::flush() {
    const RowWalk walk(*this);
    settle();
    if (walk.gone()) return;
    const RowLayout& now = layout();
    if (!walk.gone()) m_port.invalidate(m_dirty.flush(now), false);
}

void LiveRows::paintComes() {
    forgetVisibility();  // a window that paints may have been hidden before
    const RowWalk walk(*this);
    settle();
    if (!walk.gone()) settleScrollBar();
    if (walk.gone()) return;
    const RowLayout& now = layout();
    if (walk.gone()) return;
    if (std::exchange(m_movedUntold, false)) m_dirty.addForPaint({0, 0, now.clientWidth, now.clientHeight});
    if (const RECT fresh = m_dirty.takeFresh(now); !DirtyArea::isEmpty(fresh)) m_port.invalidate(fresh, false);
}

}  // namespace quor::grid
