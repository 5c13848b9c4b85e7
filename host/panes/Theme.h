// The look of the demo terminal: one dark palette, and the few drawing helpers that every pane shares.
// Windowless data and plain GDI on a device context that the caller owns; nothing here keeps a handle.
#pragma once

#include "quor/platform/Framework.h"

#include <string_view>

namespace terminal {

namespace palette {
inline constexpr COLORREF kBackground = RGB(13, 17, 23);  // lists, log
inline constexpr COLORREF kStripe = RGB(18, 24, 32);      // every second row of the watch
inline constexpr COLORREF kSurface = RGB(28, 34, 43);     // captions, splitter bars, headers
inline constexpr COLORREF kEdge = RGB(48, 57, 69);        // lines between cells of a header or caption
inline constexpr COLORREF kText = RGB(214, 221, 229);     // plain text
inline constexpr COLORREF kDim = RGB(132, 144, 158);      // what changes rarely: headings, series, times
inline constexpr COLORREF kSymbol = RGB(240, 196, 90);    // names
inline constexpr COLORREF kUp = RGB(63, 205, 122);        // rising, buyers
inline constexpr COLORREF kDown = RGB(245, 92, 92);       // falling, sellers
inline constexpr COLORREF kUpBack = RGB(14, 36, 26);      // a buyer's row
inline constexpr COLORREF kDownBack = RGB(42, 20, 24);    // a seller's row
inline constexpr COLORREF kRiseFlash = RGB(20, 105, 60);  // a cell that has just risen, below plain text
inline constexpr COLORREF kFallFlash = RGB(120, 24, 32);  // or fallen: darker, so that no hue has to tell them apart
inline constexpr COLORREF kAtMoney = RGB(30, 58, 88);     // the option chain's row nearest to the price
inline constexpr COLORREF kSelection = RGB(38, 79, 120);  // a selected row of the watch
}  // namespace palette

// Text inside a cell keeps this many pixels from both edges.
inline constexpr int kCellPadding = 5;

// Fills `area` from the colour `from` at the top to `to` at the bottom. An empty area draws nothing.
void fillGradient(CDC& dc, const RECT& area, COLORREF from, COLORREF to);

// Draws one line of text into `cell`: `format` is a list column's (0 left, 1 right, 2 centred), cut with an ellipsis.
void drawCellText(CDC& dc, const char* text, int length, const RECT& cell, int format);
void drawCellText(CDC& dc, std::wstring_view text, const RECT& cell, int format);

// Paints one cell of a list's header: flat, dark, its text aligned as the column's. `sortImage` is the library's header
// image (0 rising, 1 falling; any other draws no arrow).
void drawHeaderCell(CDC& dc, const RECT& cell, const char* text, int format, int sortImage);

}  // namespace terminal
