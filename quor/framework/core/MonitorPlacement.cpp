#include "quor/framework/core/MonitorPlacement.h"

#include <algorithm>
#include <limits>

namespace quor::framework {

int occupiedTop(const CRect& monitor, const CRect& workArea) {
    return std::max(0, static_cast<int>(workArea.top - monitor.top));
}

// A stored rectangle may lie at the end of all numbers.
CRect belowOccupiedTop(CRect normal, int occupiedTop) {
    const int lowest = std::numeric_limits<int>::max() - occupiedTop;
    normal.top = std::min<int>(normal.top, lowest) + occupiedTop;
    normal.bottom = std::min<int>(normal.bottom, lowest) + occupiedTop;
    return normal;
}

ShowPlace showPlace(const ShowFacts& facts) {
    if (facts.showCmd == kShowNormal) return facts.onMonitor ? ShowPlace::rectangle : ShowPlace::centre;
    return facts.closedByCancel ? ShowPlace::asItIs : ShowPlace::placement;
}

}  // namespace quor::framework
