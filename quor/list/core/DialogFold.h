// A dialog that folds a group of controls away: the frame around the group, what stands below it and the dialog itself
// give way by the group's height.
#pragma once

namespace quor::list {

// Pixels, taken while the group shows.
struct FoldHeights {
    int group = 0;
    int frame = 0;  // around the group
};

// By how much everything is to move down (negative: up) so that the group's room is there or is not. 0 where the
// frame's present height shows that it is so already: asked twice, nothing moves twice.
constexpr int foldStep(const FoldHeights& heights, int presentFrame, bool shown) {
    const bool isOpen = 2 * (heights.frame - presentFrame) < heights.group;
    if (shown == isOpen) return 0;
    return shown ? heights.group : -heights.group;
}

// Where a dialog that has grown to `height` begins so that the work area shows its end, or else its beginning.
constexpr int unfoldedTop(int top, int height, int workTop, int workBottom) {
    const int highest = workBottom - height < workTop ? workTop : workBottom - height;
    return top > highest ? highest : top;
}

}  // namespace quor::list
