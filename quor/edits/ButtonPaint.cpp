#include "quor/edits/ButtonPaintInternal.h"
#include "quor/edits/core/ButtonLayout.h"
#include "quor/edits/core/Colours.h"

#include <vsstyle.h>
#include <vssym32.h>

namespace quor::edits {

using platform::scaled;

namespace {

constexpr DWORD kTypeMask = BS_TYPEMASK;
constexpr int kTextMargin = 4;
constexpr double kFrameContrast = 7;
constexpr int kFocusMargin = 3;  // from a button's edge to its focus rectangle

int themedState(const ButtonState& state) {
    if (!state.enabled) return PBS_DISABLED;
    if (state.pressed) return PBS_PRESSED;
    return state.isDefault ? PBS_DEFAULTED : PBS_NORMAL;
}

}  // namespace

ButtonState stateOf(const DRAWITEMSTRUCT& item, bool isDefault) {
    const UINT bits = item.itemState;
    ButtonState state;
    state.pressed = (bits & ODS_SELECTED) != 0;
    state.focused = (bits & ODS_FOCUS) != 0 && (bits & ODS_NOFOCUSRECT) == 0;
    state.enabled = (bits & ODS_DISABLED) == 0;
    state.isDefault = isDefault && state.enabled;
    state.keysShow = (bits & ODS_NOACCEL) == 0;
    return state;
}

bool makeOwnerDrawn(HWND button) {
    const auto type = static_cast<DWORD>(::GetWindowLongPtrA(button, GWL_STYLE)) & kTypeMask;
    if (type != BS_OWNERDRAW) ::SendMessageA(button, BM_SETSTYLE, BS_OWNERDRAW, FALSE);
    return type == BS_DEFPUSHBUTTON;
}

bool makeOwnerDrawn(CREATESTRUCT& create) {
    const bool isDefault = (static_cast<DWORD>(create.style) & kTypeMask) == BS_DEFPUSHBUTTON;
    create.style = static_cast<LONG>((static_cast<DWORD>(create.style) & ~kTypeMask) | BS_OWNERDRAW);
    return isDefault;
}

LRESULT dialogCode(bool isDefault) { return DLGC_BUTTON | (isDefault ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON); }

WPARAM takeStyle(WPARAM style, bool& isDefault) {
    const auto type = static_cast<DWORD>(style & kTypeMask);
    if (type == BS_DEFPUSHBUTTON || type == BS_PUSHBUTTON) isDefault = type == BS_DEFPUSHBUTTON;
    return (style & ~static_cast<WPARAM>(kTypeMask)) | BS_OWNERDRAW;
}

bool paintThemedFace(CThemeUtil& theme, HWND button, CDC& dc, const CRect& area, const ButtonState& state) {
    if (!theme.KeepThemeData(button, L"BUTTON")) return false;
    dc.FillSolidRect(area, ::GetSysColor(COLOR_BTNFACE));
    theme.DrawThemeParentBackground(button, dc, area);
    return theme.DrawThemeBackground(dc, BP_PUSHBUTTON, themedState(state), area);
}

COLORREF themedText(const CThemeUtil& theme, const ButtonState& state, COLORREF color) {
    theme.GetThemeColor(BP_PUSHBUTTON, themedState(state), TMT_TEXTCOLOR, color);
    return color;
}

CRect paintDefaultFrame(HWND button, CDC& dc, const CRect& area) {
    CRect inside = area;
    inside.DeflateRect(scaled(button, 1), scaled(button, 1));
    const DcStateScope state(dc);
    dc.ExcludeClipRect(inside);
    // A pale scheme's own frame would be one shadow more.
    dc.FillSolidRect(area, readableOn(::GetSysColor(COLOR_BTNFACE), ::GetSysColor(COLOR_WINDOWFRAME), kFrameContrast));
    return inside;
}

void paintText(HWND button, CDC& dc, const CRect& inside, const ButtonText& text) {
    const UINT keys = text.keysShow ? 0 : DT_HIDEPREFIX;
    CRect line(0, 0, 0, 0);
    dc.DrawText(text.text, line, DT_SINGLELINE | DT_CALCRECT | keys);
    CRect place = textPlace(inside, line.Width(), scaled(button, kTextMargin));
    UINT format = DT_SINGLELINE | DT_CENTER | DT_VCENTER;
    if (line.Width() > place.Width()) {
        CRect lines(0, 0, place.Width(), 0);
        dc.DrawText(text.text, lines, DT_WORDBREAK | DT_CALCRECT | keys);
        if (lines.Width() <= place.Width() && lines.Height() <= place.Height()) {
            place.top += (place.Height() - lines.Height()) / 2;
            format = DT_WORDBREAK | DT_CENTER;
        } else {
            format |= DT_END_ELLIPSIS;
        }
    }
    // A line higher than its place keeps its letters: what hangs over is the air above and below them.
    if (line.Height() > place.Height()) format |= DT_NOCLIP;
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(text.color);
    dc.DrawText(text.text, place, format | keys);
}

void paintFocus(HWND button, CDC& dc, CRect inside) {
    inside.DeflateRect(scaled(button, kFocusMargin), scaled(button, kFocusMargin));
    if (inside.Width() <= 0 || inside.Height() <= 0) return;
    dc.SetTextColor(0);
    dc.SetBkColor(0xFFFFFF);
    dc.DrawFocusRect(inside);
}

}  // namespace quor::edits
