// Holds what the windows show against the feed's own account.
//
// Three things are compared for each pane: the count of rows, the row pointers in visual order together with the values
// in them, and the texts that the last paint really drew. The tally never saw a row, and the rows never saw the tally.
#pragma once

#include "host/FeedPump.h"
#include "host/core/Tally.h"

#include <string>
#include <vector>

namespace terminal {

// What differs, one line each; empty: everything holds. Call it after the panes are settled and painted in full.
// `keep` is the number of trades that the trades pane keeps.
std::vector<std::string> selfCheck(const Tally& tally, const Panes& panes, int keep);

}  // namespace terminal
