#include "host/panes/Theme.h"

#include "quor/foundation/core/Globals.h"

namespace terminal {

namespace {
// What a grid lays over a selected row, with the focus and without.
struct Shade {
    COLORREF from, to;
    bool operator==(const Shade&) const = default;
};
constexpr Shade kGridSelection{0xE17B52, 0xFFA63C}, kGridSelectionIdle{0x7E7E7E, 0};
}  // namespace

void setAppearance() {
    cCustomizedAppearanceSettings appearance = Get_Apperance_setting();
    appearance.crBackground = palette::kBackground;
    appearance.crText = palette::kText;
    appearance.csFontName = "Tahoma";
    appearance.csFontSize = "9";
    Set_Apperance_setting(appearance);
}

int scaled(const CDC& dc, int length) { return quor::platform::scaled(::WindowFromDC(dc.GetSafeHdc()), length); }

void fillShade(CDC& dc, const RECT& area, COLORREF from, COLORREF to) {
    const Shade asked{from, to};
    const bool active = asked == kGridSelection;
    if (!active && asked != kGridSelectionIdle) return fillGradient(dc, area, from, to);
    dc.FillSolidRect(&area, active ? palette::kSelection : palette::kSelectionIdle);
}

void fillGradient(CDC& dc, const RECT& area, COLORREF from, COLORREF to) {
    const int height = area.bottom - area.top;
    if (height <= 0 || area.right <= area.left) return;
    if (from == to) {
        dc.FillSolidRect(&area, from);
        return;
    }
    // A row of a list is a score of lines high: a loop is as good as the system's gradient and has no end to miss.
    const int steps = height > 1 ? height - 1 : 1;
    const auto blend = [steps](int a, int b, int i) { return a + (b - a) * i / steps; };
    for (int i = 0; i < height; ++i) {
        const RECT line{area.left, area.top + i, area.right, area.top + i + 1};
        dc.FillSolidRect(&line, RGB(blend(GetRValue(from), GetRValue(to), i), blend(GetGValue(from), GetGValue(to), i),
                                    blend(GetBValue(from), GetBValue(to), i)));
    }
}

namespace {
// `draw` is one of the system's two calls.
template <class Draw, class Char>
void drawInside(Draw* draw, CDC& dc, const Char* text, int length, const RECT& cell, int format, Padding padding) {
    RECT area{cell.left + padding.left, cell.top, cell.right - padding.right, cell.bottom};
    if (area.right <= area.left || length <= 0) return;
    // The ellipsis keeps the text inside; clipping would only cut glyphs that lean over their own width.
    const UINT align = format == 1 ? DT_RIGHT : format == 2 ? DT_CENTER : DT_LEFT;
    draw(dc.GetSafeHdc(), text, length, &area,
         align | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS | DT_NOCLIP);
}
}  // namespace

Padding cellPadding(const CDC& dc) { return {scaled(dc, kCellPadding), scaled(dc, kCellPadding)}; }

void drawCellText(CDC& dc, const char* text, int length, const RECT& cell, int format) {
    drawInside(&::DrawTextA, dc, text, length, cell, format, cellPadding(dc));
}

void drawCellText(CDC& dc, std::wstring_view text, const RECT& cell, int format) {
    drawInside(&::DrawTextW, dc, text.data(), static_cast<int>(text.size()), cell, format, cellPadding(dc));
}

namespace {
// A small triangle at the right edge of a header cell; returns the width that it takes.
int drawSortArrow(CDC& dc, const RECT& cell, bool rising, int padding) {
    constexpr int kHalf = 4;
    const int half = scaled(dc, kHalf);
    const int middle = (cell.top + cell.bottom) / 2;
    const int centre = cell.right - padding - half;
    for (int i = 0; i < half; ++i) {
        const int y = rising ? middle + half / 2 - i : middle - half / 2 + i;
        const RECT line{centre - (half - 1 - i), y, centre + (half - i), y + 1};
        dc.FillSolidRect(&line, palette::kSymbol);
    }
    return 2 * half + padding;
}
}  // namespace

void drawHeaderCell(CDC& dc, const RECT& cell, const char* text, int format, int sortImage, Padding padding) {
    dc.FillSolidRect(&cell, palette::kSurface);
    constexpr int kLineInset = 3;
    const int inset = scaled(dc, kLineInset);
    const RECT line{cell.right - 1, cell.top + inset, cell.right, cell.bottom - inset};
    dc.FillSolidRect(&line, palette::kEdge);
    const RECT foot{cell.left, cell.bottom - 1, cell.right, cell.bottom};
    dc.FillSolidRect(&foot, palette::kEdge);
    RECT room = cell;
    if (sortImage == 0 || sortImage == 1) room.right -= drawSortArrow(dc, cell, sortImage == 0, padding.right);
    ::SetBkMode(dc.GetSafeHdc(), TRANSPARENT);
    ::SetTextColor(dc.GetSafeHdc(), palette::kDim);
    drawInside(&::DrawTextA, dc, text, ::lstrlenA(text), room, format, padding);
}

}  // namespace terminal
