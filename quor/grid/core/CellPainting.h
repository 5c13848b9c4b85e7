// What the grid's painting decides before it draws: the colours of a row, the form of a cell's text, where it stands.
// Windowless; the shell turns the answers into GDI calls. Row numbers: see FilterListBaseData.h.
#pragma once

#include "quor/platform/Base.h"

#include <cstdint>

namespace quor::grid {

inline constexpr COLORREF kColorUnset = 0xFFFFFFFF;  // a callback that leaves a colour alone
inline constexpr COLORREF kColorGreyedOut = 0x00DCDCDC;
inline constexpr COLORREF kColorCheckedRow = 0x00400040;
inline constexpr COLORREF kColorSelectedText = 0x00FFFFFF;
inline constexpr COLORREF kColorShadeEnd = 0x00FFFFFF;  // every shaded fill ends in white

// A fill from one colour to another, as the selection has it. Custom draw uses the first alone.
struct GradientColors {
    COLORREF from;
    COLORREF to;
};
inline constexpr GradientColors kSelectionWithFocus{0x00E17B52, 0x00FFA63C};
inline constexpr GradientColors kSelectionWithoutFocus{0x007E7E7E, 0x00000000};

struct RowColors {
    COLORREF text = kColorUnset;
    COLORREF background = kColorUnset;
};

// What the host says of a cell.
struct CellAnswer {
    CString text;
    RowColors colors;
    int icon = -1;
};

// What weighs on the colours of a row, all owned by the control.
struct RowLook {
    bool alternateRows = false;
    COLORREF evenRows = 0;
    COLORREF oddRows = 0;
    bool greyedOut = false;
    bool checkedStandsOut = false;  // a checked row while checked rows come first
    RowColors listDefaults;
};

// What a row starts with, before the host is asked: stripes, then grey. The rest stays unset.
RowColors startingColors(const RowLook& look, int visual);
// What the row is painted in, after host and keywords had their say: defaults for what is unset, then check, then grey.
RowColors finalColors(const RowLook& look, RowColors asked);

enum class CellAlign { left, right, centre, icon };
// From a column's ColumnFormat: what is neither left, right nor a header image is centred.
CellAlign cellAlign(int format);
// Whether a ColumnDataType is one of numbers: their icon is a handle, that of other types an image number.
bool isNumericType(int dataType);
// Whether the text is one of a kTypeDecimal column that is to be grouped by thousands: digits, points and minus
// signs alone. The empty text is not.
bool wantsGrouping(int dataType, const char* text);

inline constexpr int kMarginOfFirstCell = 4;  // the most that stands left of its text

// The edge length of an icon in a cell: 14, or half the cell's height where the cell is lower.
int iconEdge(int cellHeight);

// Row height: the absolute font height plus 4, times the lines per row. No font counts as 0.
int rowHeightFor(std::int32_t fontHeight, int linesPerRow);

}  // namespace quor::grid
