// The arithmetic of a scroll bar without arrows: a thumb on a track.
#pragma once

namespace terminal {

// As the system counts: `most` is the last line or pixel that there is, `page` how many show, `position` the first.
struct ScrollRange {
    int least = 0, most = 0, page = 0, position = 0;
    bool operator==(const ScrollRange&) const = default;
};

// The position at which the end shows; `least` if all does.
int lastPosition(const ScrollRange& range);

struct Thumb {
    int begin = 0, length = 0;  // no length: all shows, or there is no room
    bool operator==(const Thumb&) const = default;
};

// Where the thumb lies on a track of so many pixels. It is never shorter than `shortest`.
Thumb thumbOf(const ScrollRange& range, int track, int shortest);

// What position a thumb that begins there stands for; beyond an end of the track, that end.
int positionOfThumb(const ScrollRange& range, int track, int shortest, int begin);

}  // namespace terminal
