// How a dialog that is shown meets the monitors: what a bar at the top of its monitor does to its rectangle, and where
// it goes when the monitor of its rectangle has gone.
#pragma once

#include "quor/framework/core/PositionRecord.h"

namespace quor::framework {

// The height that something takes from the top of a monitor, 0 if nothing does.
int occupiedTop(const CRect& monitor, const CRect& workArea);

// Moves the rectangle down by that height. Done on every show but the first, and it adds up: the rectangle is in
// coordinates that begin below the bar, the window's in those of the screen.
CRect belowOccupiedTop(CRect normal, int occupiedTop);

enum class ShowPlace {
    rectangle,  // to the normal rectangle
    centre,     // the rectangle is on no monitor
    placement,  // minimised or maximised: the whole placement
    asItIs,
};

struct ShowFacts {
    int showCmd = kShowNormal;  // of the last known placement
    bool onMonitor = false;     // some monitor shows the normal rectangle
    bool closedByCancel = false;
};

ShowPlace showPlace(const ShowFacts& facts);

}  // namespace quor::framework
