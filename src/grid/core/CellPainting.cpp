#include "src/grid/core/CellPainting.h"

#include <cstdlib>
#include <cstring>

namespace quor::grid {

RowColors startingColors(const RowLook& look, int visual) {
    RowColors colors;
    if (look.alternateRows) colors = {0, visual % 2 == 0 ? look.evenRows : look.oddRows};
    if (look.greyedOut) colors.background = kColorGreyedOut;
    return colors;
}

RowColors finalColors(const RowLook& look, RowColors asked) {
    if (asked.text == kColorUnset) asked.text = look.listDefaults.text;
    if (asked.background == kColorUnset) asked.background = look.listDefaults.background;
    if (look.checkedStandsOut) asked.background = kColorCheckedRow;
    if (look.greyedOut) asked.background = kColorGreyedOut;
    return asked;
}

CellAlign cellAlign(int format) {
    switch (format) {
        case 0:
            return CellAlign::left;
        case 1:
            return CellAlign::right;
        case 2048:
            return CellAlign::icon;
        default:
            return CellAlign::centre;
    }
}

bool isNumericType(int dataType) {
    switch (dataType) {
        case 1:
        case 2:
        case 4:
        case 5:
        case 7:
        case 9:
            return true;
        default:
            return false;
    }
}

bool wantsGrouping(int dataType, const char* text) {
    return dataType == 2 && *text != '\0' && text[std::strspn(text, "0123456789.-")] == '\0';
}

int iconEdge(int cellHeight) { return cellHeight < 14 ? cellHeight / 2 : 14; }

int rowHeightFor(std::int32_t fontHeight, int linesPerRow) { return (std::abs(fontHeight) + 4) * linesPerRow; }

}  // namespace quor::grid
