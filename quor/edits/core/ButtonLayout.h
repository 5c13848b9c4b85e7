// Where the parts of a button lie, in pixels.
#pragma once

#include "quor/platform/Base.h"

namespace quor::edits {

// The text's place in `inside` (what the frame leaves): less `margin` at both sides, or as much of that as a text of
// this width can spare. Never inverted.
RECT textPlace(const RECT& inside, int textWidth, int margin);

// A triangle that points down: `rows` lines, the first `2 * rows - 1` pixels wide, each one pixel shorter at both ends.
struct ArrowPlace {
    int left = 0;
    int top = 0;
    int rows = 0;
};
// In the middle of `strip`, at most `width` wide and with a pixel of air around; no rows where there is no room.
ArrowPlace arrowIn(const RECT& strip, int width);

// A split button's two parts. A strip that leaves nothing for the main part takes all; without a strip the main part is
// the whole.
struct SplitParts {
    RECT main{};
    RECT strip{};
};
SplitParts splitParts(const RECT& whole, int stripWidth);

}  // namespace quor::edits
