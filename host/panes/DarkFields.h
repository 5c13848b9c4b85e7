// Edit fields and lists of combo boxes in the terminal's colours.
#pragma once

#include "quor/platform/Framework.h"

namespace terminal {

// Those that are children of `parent`, now or later: an edit control and a combo box ask their parent for colours, and
// the fields of a header's filter bar ask the header. It answers nothing else.
void darkenFields(HWND parent);

// Where the theme has a dark combo box, its button is dark too.
void darkenCombo(HWND combo);

}  // namespace terminal
