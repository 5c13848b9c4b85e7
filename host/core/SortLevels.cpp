#include "host/core/SortLevels.h"

#include <algorithm>

namespace terminal {

void chooseColumn(SortLevels& levels, std::size_t level, const std::string& heading) {
    const auto other =
        std::find_if(levels.begin(), levels.end(), [&](const SortLevel& has) { return has.heading == heading; });
    if (level < levels.size()) {
        if (other != levels.end()) other->heading = levels[level].heading;
        levels[level].heading = heading;
        return;
    }
    if (other != levels.end()) levels.erase(other);
    levels.push_back({heading});
}

void chooseOrder(SortLevels& levels, std::size_t level, int order) {
    if (level < levels.size()) levels[level].order = order;
}

void removeLevel(SortLevels& levels, std::size_t level) {
    if (level < levels.size()) levels.erase(levels.begin() + static_cast<std::ptrdiff_t>(level));
}

}  // namespace terminal
