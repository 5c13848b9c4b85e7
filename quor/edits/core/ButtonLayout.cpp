#include "quor/edits/core/ButtonLayout.h"

#include <algorithm>

namespace quor::edits {

RECT textPlace(const RECT& inside, int textWidth, int margin) {
    const LONG spare = std::max<LONG>(inside.right - inside.left - textWidth, 0);
    const LONG taken = std::min<LONG>(margin, spare / 2);
    return {inside.left + taken, inside.top, std::max(inside.right - taken, inside.left + taken), inside.bottom};
}

ArrowPlace arrowIn(const RECT& strip, int width) {
    const int room = static_cast<int>(strip.right - strip.left), height = static_cast<int>(strip.bottom - strip.top);
    const int rows = std::min((std::min(width, room - 2) + 1) / 2, height - 2);
    if (rows <= 0) return {};
    return {static_cast<int>(strip.left) + (room - (2 * rows - 1)) / 2,
            static_cast<int>(strip.top) + (height - rows) / 2, rows};
}

SplitParts splitParts(const RECT& whole, int stripWidth) {
    const LONG edge = std::clamp<LONG>(whole.right - stripWidth, whole.left, whole.right);
    return {{whole.left, whole.top, edge, whole.bottom}, {edge, whole.top, whole.right, whole.bottom}};
}

}  // namespace quor::edits
