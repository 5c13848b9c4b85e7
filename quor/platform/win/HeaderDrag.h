// What the drag of a heading leaves behind. Private to quor/platform/win.
#pragma once

#include "quor/platform/Framework.h"

namespace quor {

// At HDN_ENDDRAG. The picture that is dragged is drawn straight on the screen; a system that has no copy of what it
// covered puts back black, from the corner of the top-level window to the pointer, and knows nothing of it. Where the
// screen does not show what the windows hold, the top-level window is invalidated with all that is in it.
void repairAfterHeaderDrag(HWND header);

}  // namespace quor
