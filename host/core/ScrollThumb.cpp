#include "host/core/ScrollThumb.h"

#include <algorithm>
#include <cstdint>

namespace terminal {

namespace {
int scaledRounded(std::int64_t value, std::int64_t by, std::int64_t of) {
    return static_cast<int>((value * by + of / 2) / of);
}
}  // namespace

int lastPosition(const ScrollRange& range) {
    const std::int64_t last = std::int64_t{range.most} - (std::max)(range.page, 1) + 1;
    return static_cast<int>((std::max)(last, std::int64_t{range.least}));
}

Thumb thumbOf(const ScrollRange& range, int track, int shortest) {
    const int steps = lastPosition(range) - range.least;
    if (steps <= 0 || track <= shortest) return {};
    const std::int64_t lines = std::int64_t{range.most} - range.least + 1;
    const int length = (std::max)(shortest, scaledRounded(track, (std::max)(range.page, 1), lines));
    const int done = std::clamp(range.position - range.least, 0, steps);
    return {scaledRounded(track - length, done, steps), length};
}

int positionOfThumb(const ScrollRange& range, int track, int shortest, int begin) {
    const int length = thumbOf(range, track, shortest).length;
    const int room = track - length;
    if (length == 0 || room <= 0) return range.position;
    return range.least + scaledRounded(std::clamp(begin, 0, room), lastPosition(range) - range.least, room);
}

}  // namespace terminal
