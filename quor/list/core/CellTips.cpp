#include "quor/list/core/CellTips.h"

#include <algorithm>

namespace quor::list {

namespace {

LONG widthOf(const RECT& rect) { return rect.right - rect.left; }
LONG heightOf(const RECT& rect) { return rect.bottom - rect.top; }

bool fitsCell(const TextCell& cell) {
    return cell.text.cx <= widthOf(cell.area) &&
           (cell.text.cy <= cell.lineHeight || cell.text.cy <= heightOf(cell.area));
}

}  // namespace

RECT cellTextArea(RECT label, int format) {
    if (format == kFormatLeft) label.left += kCellInset;
    if (format == kFormatRight) label.right -= kCellInset;
    return label;
}

RECT wholeText(const TextCell& cell) {
    const LONG room = std::max<LONG>(widthOf(cell.area) - cell.text.cx, 0);
    LONG left = cell.area.left;
    if (cell.format == kFormatRight) {
        left += room;
    } else if (cell.format != kFormatLeft) {
        left += room / 2;
    }
    return {left, cell.area.top, left + cell.text.cx, cell.area.top + cell.text.cy};
}

bool isClipped(const TextCell& cell) {
    if (!fitsCell(cell)) return true;
    const RECT whole = wholeText(cell);
    return whole.left < cell.view.left || whole.right > cell.view.right || whole.top < cell.view.top ||
           std::min(whole.bottom, cell.area.bottom) > cell.view.bottom;
}

POINT cornerOnScreen(POINT corner, SIZE tip, const RECT& screen) {
    return {std::max(std::min(corner.x, screen.right - tip.cx), screen.left),
            std::max(std::min(corner.y, screen.bottom - tip.cy), screen.top)};
}

POINT cornerBesideCell(const RECT& cell, int mouse, SIZE tip, const RECT& screen) {
    const bool below = cell.bottom + tip.cy <= screen.bottom;
    return cornerOnScreen({mouse, below ? cell.bottom : cell.top - tip.cy}, tip, screen);
}

}  // namespace quor::list
