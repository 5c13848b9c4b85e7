// The scroll bars of a dialog that is larger than the screen leaves room for: which ones, how large the window is
// then, and where a scroll command leads. All in pixels.
#pragma once

#include "quor/platform/Base.h"

namespace quor::framework {

struct ScrollMetrics {
    CSize workArea;     // what the screen leaves to windows
    int barWidth = 0;   // of a vertical bar
    int barHeight = 0;  // of a horizontal bar
};

struct ScrollPlan {
    bool horizontal = false;
    bool vertical = false;
    CSize visible;  // cx counts with the horizontal bar, cy with the vertical one
    CSize page;     // likewise
    CSize window;   // the size that the window takes
};

// `content` is the size that the dialog wants, `window` the same less the bars that were taken off.
ScrollPlan planScrollBars(CSize content, CSize window, const ScrollMetrics& metrics);

// One direction of a dialog that has a bar for it.
struct ScrollAxis {
    int content = 0;
    int visible = 0;
    int position = 0;
    int otherBar = 0;  // thickness of the other bar if that is on as well
};

enum class ScrollCommand { lineBack, lineForward, pageBack, pageForward, thumb };

// The last position.
int scrollRange(const ScrollAxis& axis);
// Where the command leads, never outside 0 and the range. `thumb` is the place of the thumb, for that command only.
// The position itself where the end is reached.
int scrollTarget(const ScrollAxis& axis, ScrollCommand command, int thumb);

}  // namespace quor::framework
