// A picture in memory to draw on and to look at pixel by pixel, as deep as a window's own.
#pragma once

#include "quor/platform/Framework.h"

namespace test {

class Canvas {
public:
    Canvas(CWnd& window, CSize size, COLORREF ground) {
        CClientDC screen(&window);
        dc.CreateCompatibleDC(&screen);
        m_bitmap.CreateCompatibleBitmap(&screen, size.cx, size.cy);
        m_former = ::SelectObject(dc.m_hDC, m_bitmap.m_hObject);
        dc.FillSolidRect(CRect(CPoint(), size), ground);
    }
    ~Canvas() { ::SelectObject(dc.m_hDC, m_former); }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    // How many pixels of a rectangle have a colour.
    int count(const CRect& area, COLORREF color) {
        int found = 0;
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x) found += dc.GetPixel(x, y) == color;
        return found;
    }

    CDC dc;

private:
    CBitmap m_bitmap;
    HGDIOBJ m_former;
};

}  // namespace test
