// Panes that keep their shares of a splitter whose size changes.
#pragma once

#include "quor/platform/Base.h"

#include <vector>

namespace quor::bars {

// `room` divided as the shares are to each other, in whole pixels that add up to it; each edge lies at the nearest
// pixel, so that no run of changes drifts. Shares below 0 count as 0; where all are, the last pane gets all.
std::vector<int> sharedOut(const std::vector<int>& shares, int room);

}  // namespace quor::bars
