#include "host/panes/Theme.h"

namespace terminal {

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
void drawInside(Draw* draw, CDC& dc, const Char* text, int length, const RECT& cell, int format) {
    RECT area{cell.left + kCellPadding, cell.top, cell.right - kCellPadding, cell.bottom};
    if (area.right <= area.left || length <= 0) return;
    // The ellipsis keeps the text inside; clipping would only cut glyphs that lean over their own width.
    const UINT align = format == 1 ? DT_RIGHT : format == 2 ? DT_CENTER : DT_LEFT;
    draw(dc.GetSafeHdc(), text, length, &area,
         align | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS | DT_NOCLIP);
}
}  // namespace

void drawCellText(CDC& dc, const char* text, int length, const RECT& cell, int format) {
    drawInside(&::DrawTextA, dc, text, length, cell, format);
}

void drawCellText(CDC& dc, std::wstring_view text, const RECT& cell, int format) {
    drawInside(&::DrawTextW, dc, text.data(), static_cast<int>(text.size()), cell, format);
}

namespace {
// A small triangle at the right edge of a header cell; returns the width that it takes.
int drawSortArrow(CDC& dc, const RECT& cell, bool rising) {
    constexpr int kHalf = 4;
    const int middle = (cell.top + cell.bottom) / 2;
    const int centre = cell.right - kCellPadding - kHalf;
    for (int i = 0; i < kHalf; ++i) {
        const int y = rising ? middle + kHalf / 2 - i : middle - kHalf / 2 + i;
        const RECT line{centre - (kHalf - 1 - i), y, centre + (kHalf - i), y + 1};
        dc.FillSolidRect(&line, palette::kSymbol);
    }
    return 2 * kHalf + kCellPadding;
}
}  // namespace

void drawHeaderCell(CDC& dc, const RECT& cell, const char* text, int format, int sortImage) {
    dc.FillSolidRect(&cell, palette::kSurface);
    const RECT line{cell.right - 1, cell.top + 3, cell.right, cell.bottom - 3};
    dc.FillSolidRect(&line, palette::kEdge);
    const RECT foot{cell.left, cell.bottom - 1, cell.right, cell.bottom};
    dc.FillSolidRect(&foot, palette::kEdge);
    RECT room = cell;
    if (sortImage == 0 || sortImage == 1) room.right -= drawSortArrow(dc, cell, sortImage == 0);
    ::SetBkMode(dc.GetSafeHdc(), TRANSPARENT);
    ::SetTextColor(dc.GetSafeHdc(), palette::kDim);
    drawCellText(dc, text, ::lstrlenA(text), room, format);
}

}  // namespace terminal
