// What the trend dialog offers: which columns may have a trend, and the interval as a position of its slider.
#pragma once

#include "quor/platform/Base.h"

namespace quor::grid {

// Whether a column's data type (ColumnDataType) is one of the numeric ones.
bool mayHaveTrend(int dataType);

// Positions of the slider. Each is a second of the interval; the label says one more than is meant, as it always did.
inline constexpr int kLastTrendPosition = 9;
int trendPosition(int interval);  // of milliseconds; seconds that were begun do not count
int trendInterval(int position);
// The label when the dialog opens, and once the slider was moved.
CString openedTrendLabel(int position);
CString movedTrendLabel(int position);

}  // namespace quor::grid
