// The filter bar of a column header, as far as it needs no window: how high it is, where field and button of a column
// lie, and whether a header has a bar of its own. All lengths are pixels.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/WinTypes.h"

namespace quor {

struct FilterBarMetrics {
    int barHeight = 0;    // what the bar adds to the header's height
    int buttonWidth = 0;  // the funnel's
    int border = 0;       // around a field
    int textMargin = 0;   // from the field's left edge to its text
    int funnelSize = 0;   // width and height of the glyph, odd, so that its stem has a middle
};

// For a screen of `dpi` dots an inch and a font whose lines are `lineHeight` high. A dpi below 1 counts as 96, a
// negative line height as 0. The bar always has room for the line, its border and the glyph.
QUOR_FRAMEWORK_API FilterBarMetrics filterBarMetrics(int dpi, int lineHeight);

struct FilterBarPlaces {
    RECT field = {};   // the edit fills it
    RECT button = {};  // right of the field, clickable
};

// The places of one column: `left` to `right` is its header item, `top` is where the caption ends. A column too narrow
// for both keeps the button and loses the field; rectangles are never inverted.
QUOR_FRAMEWORK_API FilterBarPlaces filterBarPlaces(const FilterBarMetrics& metrics, int left, int right, int top);

// What a header with the filter bar style said when it was tried out.
struct HeaderAnswers {
    int plainHeight = 0;        // the height it asks for without the style
    int barHeight = 0;          // and with it
    bool keepsFilter = false;   // a filter text that was set can be read back
    bool clearsFilter = false;  // and is gone after it was cleared
};

// True only for a header that does all of it: a bar that shows but forgets, or remembers but does not show, is none.
QUOR_FRAMEWORK_API bool hasOwnFilterBar(const HeaderAnswers& answers);

}  // namespace quor
