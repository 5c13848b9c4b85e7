// Dark scroll bars. A system whose theme has dark ones (DarkMode_Explorer) is told to use them. On any other, bars of
// the terminal's own cover the window's: siblings right above it, with thumb and track but without arrows, so that the
// system goes on drawing where nobody sees it, and nothing flickers.
#pragma once

#include "quor/platform/Framework.h"

#include <functional>

namespace terminal {

// Scrolls a window along SB_VERT or SB_HORZ by so many of that bar's positions: lines of a list, pixels across it.
using ScrollBy = std::function<void(int bar, int positions)>;

// `window` is a child, and has WS_VSCROLL and WS_HSCROLL whenever the bar shows.
void darkenScrollBars(HWND window, ScrollBy scrollBy);
void darkenScrollBars(CListCtrl& list);

}  // namespace terminal
