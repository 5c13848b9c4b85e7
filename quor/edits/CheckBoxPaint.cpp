#include "quor/edits/CheckBoxPaintInternal.h"
#include "quor/edits/core/CheckCell.h"

#include <vsstyle.h>

namespace quor::edits {

namespace {

constexpr int kPlainSize = 13;

int themedState(const CheckBoxLook& look) {
    switch (look.check) {
        case kChecked:
            return look.enabled ? CBS_CHECKEDNORMAL : CBS_CHECKEDDISABLED;
        case kMixed:
            return look.enabled ? CBS_MIXEDNORMAL : CBS_MIXEDDISABLED;
        default:
            return look.enabled ? CBS_UNCHECKEDNORMAL : CBS_UNCHECKEDDISABLED;
    }
}

UINT plainState(const CheckBoxLook& look) {
    const UINT kind = look.check == kMixed ? DFCS_BUTTON3STATE : DFCS_BUTTONCHECK;
    return kind | (look.check == kUnchecked ? 0u : DFCS_CHECKED) | (look.enabled ? 0u : DFCS_INACTIVE) | DFCS_FLAT;
}

}  // namespace

UINT drawFormat(int format) {
    switch (format & LVCFMT_JUSTIFYMASK) {
        case LVCFMT_RIGHT:
            return DT_RIGHT;
        case LVCFMT_CENTER:
            return DT_CENTER;
        default:
            return DT_LEFT;
    }
}

// A theme may have sizes for a plain screen only.
int checkBoxSize(CThemeUtil& theme, HWND window) {
    SIZE size = {0, 0};
    theme.KeepThemeData(nullptr, L"BUTTON");
    theme.GetThemePartSize(nullptr, BP_CHECKBOX, CBS_UNCHECKEDNORMAL, size);
    return std::max(static_cast<int>(size.cx), platform::scaled(window, kPlainSize));
}

void paintCheckBox(CThemeUtil& theme, CDC& dc, const CRect& box, const CheckBoxLook& look) {
    if (box.IsRectEmpty()) return;
    theme.KeepThemeData(nullptr, L"BUTTON");
    if (theme.DrawThemeBackground(dc, BP_CHECKBOX, themedState(look), box)) return;
    CRect place = box;
    dc.DrawFrameControl(place, DFC_BUTTON, plainState(look));
}

}  // namespace quor::edits
