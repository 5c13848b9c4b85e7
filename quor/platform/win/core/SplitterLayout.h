// Where the panes of a splitter stand along one axis. All lengths are pixels; bars lie between neighbours, also beside
// a pane that is closed, and belong to none of them.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/WinTypes.h"

#include <vector>

namespace quor {

struct SplitterPart {
    int ideal = 0;  // what was asked for
    int least = 0;  // a part that would get less is closed
    int size = 0;   // what it has; 0: closed
};

// Gives the parts their sizes, from the first on: each what was asked for, at most what is left. The last one that
// shows takes the rest; where none does, the last one. `room` is without the bars.
QUOR_FRAMEWORK_API void layOutParts(std::vector<SplitterPart>& parts, int room);

// The edge of the bar behind part `bar` where that one's size would be `size`: the neighbour behind it gives or takes.
// Either is closed where it would fall below its least. The others stay.
QUOR_FRAMEWORK_API void moveBar(std::vector<SplitterPart>& parts, int bar, int size);

// Where part `index` begins.
QUOR_FRAMEWORK_API int partStart(const std::vector<SplitterPart>& parts, int index, int barWidth);

}  // namespace quor
