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

// A row that is selected, in the list that has the focus and in any other.
inline constexpr COLORREF kSelection = RGB(44, 94, 146);
inline constexpr COLORREF kSelectionIdle = RGB(62, 70, 82);
inline constexpr COLORREF kSelectedText = RGB(255, 255, 255);
inline constexpr COLORREF kGridLine = RGB(40, 48, 58);

inline constexpr COLORREF kTrack = RGB(20, 26, 34);  // of scroll bars
inline constexpr COLORREF kThumb = RGB(72, 82, 95);
}  // namespace palette

// Every list starts in the terminal's colours and font; a user's own choice for a list wins.
void setAppearance();

// Text inside a cell keeps this from both edges, on a screen of 96 dots an inch.
inline constexpr int kCellPadding = 5;

// A length on a screen of 96 dots an inch in those of the device.
int scaled(const CDC& dc, int length);

// The ground of a selected row.
inline COLORREF selectionColour(const CWnd& list) {
    return ::GetFocus() == list.m_hWnd ? palette::kSelection : palette::kSelectionIdle;
}

// A shade as the library asks for it. What it lays over a selected row is in the terminal's own colours.
void fillShade(CDC& dc, const RECT& area, COLORREF from, COLORREF to);

// Fills `area` from the colour `from` at the top to `to` at the bottom. An empty area draws nothing.
void fillGradient(CDC& dc, const RECT& area, COLORREF from, COLORREF to);

// Draws one line of text into `cell`: `format` is a list column's (0 left, 1 right, 2 centred), cut with an ellipsis.
void drawCellText(CDC& dc, const char* text, int length, const RECT& cell, int format);
void drawCellText(CDC& dc, std::wstring_view text, const RECT& cell, int format);

// What text keeps from the edges of its cell, in pixels: that of drawCellText, and that of a grid's own cells, whose
// first column has a margin besides.
struct Padding {
    int left = 0, right = 0;
};
Padding cellPadding(const CDC& dc);
inline constexpr Padding kFirstGridCell{5, 3}, kGridCell{3, 3};

// Paints one cell of a list's header: flat, dark, its text aligned as the column's. `sortImage` is the library's header
// image (0 rising, 1 falling; any other draws no arrow).
void drawHeaderCell(CDC& dc, const RECT& cell, const char* text, int format, int sortImage, Padding padding);

}  // namespace terminal
