// The monitors, as windows ask for them when they place themselves. One set of answers serves the whole process: the
// system's, until somebody who looks at windows from outside gives others.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/Geometry.h"

namespace quor::platform {

// All rectangles are in screen coordinates.
struct Screens {
    // A monitor that shows part of the rectangle, null if none does.
    HMONITOR (*monitorFromRect)(const RECT& rect);
    // The monitor that shows most of the window or, failing that, lies nearest.
    HMONITOR (*monitorFromWindow)(HWND window);
    // Its rectangles; false if the monitor has gone.
    bool (*describe)(HMONITOR monitor, MONITORINFO& info);
    // What the primary monitor leaves to windows.
    CRect (*workArea)();
};

QUOR_FRAMEWORK_API const Screens& screens();
// Gives other answers from now on; the former ones come back, for the caller to restore.
QUOR_FRAMEWORK_API Screens useScreens(const Screens& answers);

}  // namespace quor::platform
