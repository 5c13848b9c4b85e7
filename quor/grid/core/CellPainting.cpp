// Each rule may override the one before it, so their order is what counts: stripes, then the host, then defaults for
// what nobody set, then check, and grey over all.
#include "quor/grid/core/CellPainting.h"

#include "quor/foundation/core/ColumnRecords.h"

#include <cstdlib>
#include <cstring>

namespace quor::grid {

namespace {

constexpr int kIconEdge = 14;
constexpr int kRowPadding = 4;  // above and below the text together

}  // namespace

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
        case kFormatLeft:
            return CellAlign::left;
        case kFormatRight:
            return CellAlign::right;
        case kFormatHeaderImage:
            return CellAlign::icon;
        default:
            return CellAlign::centre;
    }
}

bool isNumericType(int dataType) {
    switch (dataType) {
        case kTypeInteger:
        case kTypeDecimal:
        case kTypeLongInteger:
        case kTypePlainDecimal:
        case kTypeWatchDecimal:
        case kTypeTrendDecimal:
            return true;
        default:
            return false;
    }
}

bool wantsGrouping(int dataType, const char* text) {
    return dataType == kTypeDecimal && *text != '\0' && text[std::strspn(text, "0123456789.-")] == '\0';
}

int iconEdge(int cellHeight) { return cellHeight < kIconEdge ? cellHeight / 2 : kIconEdge; }

int rowHeightFor(std::int32_t fontHeight, int linesPerRow) {
    return (std::abs(fontHeight) + kRowPadding) * linesPerRow;
}

}  // namespace quor::grid
