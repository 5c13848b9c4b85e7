#include "quor/platform/win/HeaderDrag.h"

#include <algorithm>

namespace quor {

namespace {

constexpr int kSamples = 32;

// A copy of a part of the screen: reading the screen itself is slow, and as slow for a pixel as for all.
class ScreenCopy {
public:
    explicit ScreenCopy(const CRect& part) : m_origin(part.TopLeft()) {
        CWindowDC screen(nullptr);
        m_bitmap.CreateCompatibleBitmap(&screen, part.Width(), part.Height());
        m_dc.CreateCompatibleDC(&screen);
        m_former = ::SelectObject(m_dc, m_bitmap);
        m_dc.BitBlt(0, 0, part.Width(), part.Height(), &screen, part.left, part.top, SRCCOPY);
    }
    ~ScreenCopy() { ::SelectObject(m_dc, m_former); }
    ScreenCopy(const ScreenCopy&) = delete;
    ScreenCopy& operator=(const ScreenCopy&) = delete;
    COLORREF pixel(CPoint point) const { return m_dc.GetPixel(point.x - m_origin.x, point.y - m_origin.y); }

private:
    CPoint m_origin;
    CBitmap m_bitmap;
    CDC m_dc;
    HGDIOBJ m_former = nullptr;
};

// What the window in front at this point holds; CLR_INVALID if it is not one of this top-level window.
COLORREF heldPixel(HWND root, CPoint point) {
    const HWND window = ::WindowFromPoint(point);
    if (!window || ::GetAncestor(window, GA_ROOT) != root) return CLR_INVALID;
    CRect place;
    ::GetWindowRect(window, place);
    const HDC dc = ::GetWindowDC(window);
    const COLORREF color = ::GetPixel(dc, point.x - place.left, point.y - place.top);
    ::ReleaseDC(window, dc);
    return color;
}

// From the window's corner to the pointer, as far as that is over the header.
CRect crossedPart(HWND root, HWND header) {
    CRect window, strip;
    ::GetWindowRect(root, window);
    ::GetWindowRect(header, strip);
    POINT pointer;
    ::GetCursorPos(&pointer);
    return {window.left, window.top, std::clamp(pointer.x, strip.left, strip.right), strip.bottom};
}

bool isDamaged(HWND root, const CRect& part) {
    if (part.IsRectEmpty()) return false;
    const ScreenCopy screen(part);
    for (int i = 0; i < kSamples; ++i) {
        const CPoint point(part.left + part.Width() * i / kSamples, part.top + part.Height() * i / kSamples);
        const COLORREF held = heldPixel(root, point);
        if (held != CLR_INVALID && held != screen.pixel(point)) return true;
    }
    return false;
}

}  // namespace

void repairAfterHeaderDrag(HWND header) {
    const HWND root = ::GetAncestor(header, GA_ROOT);
    if (isDamaged(root, crossedPart(root, header)))
        ::RedrawWindow(root, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

}  // namespace quor
