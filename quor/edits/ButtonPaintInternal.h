// What the two owner-drawn buttons share. Private to quor/edits.
#pragma once

#include "quor/edits/ThemeUtil.h"

namespace quor::edits {

// Contrast that a disabled text keeps with its ground: less than a text that matters has, enough to be read.
inline constexpr double kDisabledContrast = 3;

struct ButtonState {
    bool pressed = false;
    bool focused = false;  // and the focus shows
    bool isDefault = false;
    bool enabled = true;
    bool keysShow = true;  // the underline of the mnemonic
};
ButtonState stateOf(const DRAWITEMSTRUCT& item, bool isDefault);

// Makes a button owner-drawn, whatever kind it was. True: it was its dialog's default.
bool makeOwnerDrawn(HWND button);
bool makeOwnerDrawn(CREATESTRUCT& create);

// An owner-drawn button has no default state of the system's. The dialog manager asks by WM_GETDLGCODE and tells by
// BM_SETSTYLE; these answer it, so that the dialog's default stays one button and Enter presses the one that has the
// focus.
LRESULT dialogCode(bool isDefault);
// Takes a push button's two styles out of a BM_SETSTYLE for the mark, and gives the style to pass on.
WPARAM takeStyle(WPARAM style, bool& isDefault);

// The theme's push button, with what shows through it. False: none is on.
bool paintThemedFace(CThemeUtil& theme, HWND button, CDC& dc, const CRect& area, const ButtonState& state);
// The theme's colour of its text, else `color`.
COLORREF themedText(const CThemeUtil& theme, const ButtonState& state, COLORREF color);
// A frame of the default button; what is left of the area.
CRect paintDefaultFrame(HWND button, CDC& dc, const CRect& area);

struct ButtonText {
    CString text;
    COLORREF color = 0;
    bool keysShow = true;
};
// Centred in one line; in several where one is too narrow and several fit; else it ends in an ellipsis. In the font
// that the context has.
void paintText(HWND button, CDC& dc, const CRect& inside, const ButtonText& text);
void paintFocus(HWND button, CDC& dc, CRect inside);

}  // namespace quor::edits
