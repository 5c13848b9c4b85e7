#include "host/core/ScrollThumb.h"

#include <gtest/gtest.h>

using namespace terminal;

namespace {

TEST(ScrollThumb, LiesOnItsTrackAsTheRowsInViewAmongAll) {
    constexpr int kShortest = 20;
    const struct {
        ScrollRange range;
        int track;
        Thumb thumb;
    } table[] = {
        {{0, 99, 10, 0}, 200, {0, 20}},
        {{0, 99, 10, 90}, 200, {180, 20}},
        {{0, 99, 10, 45}, 200, {90, 20}},
        {{0, 99, 50, 25}, 200, {50, 100}},
        {{10, 109, 50, 35}, 200, {50, 100}},
        {{0, 99'999, 10, 99'990}, 200, {180, 20}},
        {{0, 99, 10, 500}, 200, {180, 20}},
        {{0, 9, 10, 0}, 200, {}},
        {{0, 0, 0, 0}, 200, {}},
        {{0, 99, 10, 0}, 20, {}},
        {{0, 2'147'483'646, 1, 0}, 9, {}},
        {{0, 2'147'483'646, 1, 2'147'483'646}, 100, {80, 20}},
    };
    for (const auto& row : table) {
        const Thumb thumb = thumbOf(row.range, row.track, kShortest);
        EXPECT_EQ(thumb, row.thumb) << row.range.position << " of " << row.range.most << ": " << thumb.begin << ", "
                                    << thumb.length;
    }
}

TEST(ScrollThumb, DraggedAnywhereItStandsForWhatItWouldShow) {
    const ScrollRange range{5, 64, 20, 5};
    EXPECT_EQ(positionOfThumb(range, 300, 20, -50), 5);
    EXPECT_EQ(positionOfThumb(range, 300, 20, 900), 45);
    EXPECT_EQ(positionOfThumb({0, 9, 20, 3}, 300, 20, 50), 3) << "nothing to drag";
    for (ScrollRange at = range; at.position <= lastPosition(range); ++at.position)
        EXPECT_EQ(positionOfThumb(range, 300, 20, thumbOf(at, 300, 20).begin), at.position);
}

}  // namespace
