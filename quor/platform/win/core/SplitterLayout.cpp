#include "quor/platform/win/core/SplitterLayout.h"

#include <algorithm>

namespace quor {

void layOutParts(std::vector<SplitterPart>& parts, int room) {
    if (parts.empty()) return;
    int left = std::max(room, 0);
    SplitterPart* shown = &parts.back();
    for (SplitterPart& part : parts) {
        part.size = std::clamp(part.ideal, 0, left);
        if (part.size < part.least) part.size = 0;
        left -= part.size;
        if (part.size > 0) shown = &part;
    }
    shown->size += left;
}

void moveBar(std::vector<SplitterPart>& parts, int bar, int size) {
    SplitterPart& before = parts[static_cast<std::size_t>(bar)];
    SplitterPart& behind = parts[static_cast<std::size_t>(bar) + 1];
    const int both = before.size + behind.size;
    int first = std::clamp(size, 0, both);
    if (first < before.least) first = 0;
    if (both - first < behind.least) first = both;
    before.ideal = before.size = first;
    behind.ideal = behind.size = both - first;
}

int partStart(const std::vector<SplitterPart>& parts, int index, int barWidth) {
    int start = 0;
    for (int i = 0; i < index; ++i) start += parts[static_cast<std::size_t>(i)].size + barWidth;
    return start;
}

}  // namespace quor
