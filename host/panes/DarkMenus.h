// Menus in the terminal's colours, drawn by their owner: items keep texts, ids and states, and are the system's own
// again once their menu has closed. Items that somebody else draws stay theirs.
#pragma once

#include "quor/platform/Framework.h"

namespace terminal {

// The menus that `owner` tracks, and its menu bar if it has one by now.
void darkenMenus(HWND owner);

}  // namespace terminal
