#include "quor/grid/core/TrendChoices.h"

#include "quor/foundation/core/ColumnRecords.h"

#include <algorithm>

namespace quor::grid {

namespace {

constexpr int kMilliseconds = 1000;

}  // namespace

bool mayHaveTrend(int dataType) {
    switch (dataType) {
        case kTypeInteger:
        case kTypeDecimal:
        case kTypeLongInteger:
        case kTypePlainDecimal:
        case kTypeTrendDecimal:
            return true;
        default:
            return false;
    }
}

int trendPosition(int interval) { return std::clamp(interval / kMilliseconds, 0, kLastTrendPosition); }

int trendInterval(int position) { return position * kMilliseconds; }

CString openedTrendLabel(int position) {
    CString text;
    text.Format("%d Sec", position + 1);
    return text;
}

CString movedTrendLabel(int position) { return openedTrendLabel(position) + "s"; }

}  // namespace quor::grid
