// Widths and rectangles of a list: the arithmetic behind column sizing, header tool tips and erasing.
#pragma once

#include "quor/platform/Base.h"

#include <vector>

namespace quor::list {

inline constexpr int kMinColumnWidth = 50;

// What a column could be as wide as, in pixels.
struct ColumnMeasure {
    int data = 0;    // its widest cell
    int header = 0;  // its heading
    int client = 0;  // the window's client area
    int columnCount = 0;
};

// What columns are made to fit.
enum class FitTo { dataAndHeader, data, header, window };

// The width that a column gets. Data and heading never make it narrower than kMinColumnWidth; an even share of the
// window may, and where there is no share to be had the result is kMinColumnWidth.
int fittedColumnWidth(FitTo fit, const ColumnMeasure& measure);

// What has to be measured for it.
bool fitReadsData(FitTo fit);
bool fitReadsHeadings(FitTo fit);

// Where a header item stands along the list: from the widths left of it on screen, less the horizontal scroll. `widths`
// is by header item, `sequence` the items in the order in which they stand; an item that is not in it gets nothing.
struct Span {
    int left = 0;
    int right = 0;
};
Span headerItemSpan(const std::vector<int>& widths, const std::vector<int>& sequence, int item, int scroll);

// The parts of a client area that no cell covers: above, right of and below the cells. Empty parts are left out; an
// empty `cells` leaves the whole client area.
std::vector<RECT> areaOutsideCells(RECT client, RECT cells);

// A number's text with a comma before each group of three digits of its integer part. Commas that stand there already
// are replaced; a sign in front and whatever follows the first point stay as they are.
CString withThousandsSeparators(const CString& number);

}  // namespace quor::list
