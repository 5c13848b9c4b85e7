// The check boxes of the check list and of its header. Private to quor/edits.
#pragma once

#include "quor/edits/ThemeUtil.h"

namespace quor::edits {

// The side of a box, in pixels. The theme is opened when it is asked first; no window is tied to it, since a list shows
// its own class's theme too.
int checkBoxSize(CThemeUtil& theme, HWND window);

struct CheckBoxLook {
    int check = 0;  // kUnchecked, kChecked or kMixed
    bool enabled = true;
};
void paintCheckBox(CThemeUtil& theme, CDC& dc, const CRect& box, const CheckBoxLook& look);

// The alignment of a column or heading, as DrawText takes it.
UINT drawFormat(int format);

}  // namespace quor::edits
