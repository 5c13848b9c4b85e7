// A fault on purpose (--self-test-fault): shows that the self-check of a run finds one.
#pragma once

#include "host/FeedPump.h"

namespace terminal {

// Takes one row that the feed has told out of its list, by the list's own calls: of the orders, else the newest trade,
// else of the watch. False: there is none. Only between batches; leaves none open.
bool plantFault(const Panes& panes);

}  // namespace terminal
