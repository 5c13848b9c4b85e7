// Tool tips of cells, as far as they need no window: whether a cell shows its text whole, and where a tip stands. A
// cell is measured in its list's client area, a tip is placed on a screen.
#pragma once

#include "quor/foundation/core/ColumnRecords.h"

namespace quor::list {

// Pixels between a cell's text and the edge that it is aligned to.
inline constexpr int kCellInset = 3;

// What of a cell's label its text is painted into; `format` is a ColumnFormat.
RECT cellTextArea(RECT label, int format);

struct TextCell {
    RECT area{};         // cellTextArea
    RECT view{};         // of the list, what shows rows
    SIZE text{};         // of all lines of the text
    int lineHeight = 0;  // of one; a single line stands in its cell, however high it is
    int format = kFormatLeft;
};
// Where the whole text would stand. One that is wider than its area begins at the area's left.
RECT wholeText(const TextCell& cell);
// Whether a part of that is not seen, in the cell or in the view.
bool isClipped(const TextCell& cell);

// The corner of a tip that wants to stand at `corner`, moved into the screen. Of a tip that is larger the beginning
// shows.
POINT cornerOnScreen(POINT corner, SIZE tip, const RECT& screen);
// The corner of a tip that leaves its cell free: below, else above, from the mouse on.
POINT cornerBesideCell(const RECT& cell, int mouse, SIZE tip, const RECT& screen);

}  // namespace quor::list
