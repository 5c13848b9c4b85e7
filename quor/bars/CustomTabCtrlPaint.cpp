// Painting, in strip coordinates: a vertical strip swaps x and y on the way to the context.
#include "quor/bars/CustomTabCtrlParts.h"
#include "quor/edits/core/Colours.h"

#include <vsstyle.h>
#include <vssym32.h>

using namespace quor::bars;
using quor::edits::between;
using quor::edits::readableOn;
using quor::platform::scaled;

namespace {

constexpr double kTextContrast = 4.5, kDisabledContrast = 3;
constexpr int kTextIndent = 2;
constexpr int kButtonGap = 2;     // before buttons at the far end
constexpr int kAroundButton = 3;  // above and below a button
constexpr int kDownwards = 2700;  // tenths of a degree

struct TabColours {
    COLORREF face, text;
};

// In sixteenths, from one system colour to another.
COLORREF mixed(int from, int to, int sixteenths) { return between(::GetSysColor(from), ::GetSysColor(to), sixteenths); }

COLORREF edgeColour() { return mixed(COLOR_BTNFACE, COLOR_BTNTEXT, 7); }

TabColours coloursOf(const TabItem& tab, bool hot, bool enabled) {
    COLORREF face = tab.m_fSelected ? ::GetSysColor(COLOR_WINDOW) : mixed(COLOR_BTNFACE, COLOR_BTNSHADOW, 4);
    if (tab.m_fHighlighted)
        face = between(face, ::GetSysColor(COLOR_HIGHLIGHT), tab.m_fSelected ? 4 : 7);
    else if (hot && !tab.m_fSelected)
        face = between(face, ::GetSysColor(COLOR_WINDOW), 8);
    const COLORREF text = ::GetSysColor(!enabled ? COLOR_GRAYTEXT : tab.m_fSelected ? COLOR_WINDOWTEXT : COLOR_BTNTEXT);
    return {face, readableOn(face, text, enabled ? kTextContrast : kDisabledContrast)};
}

}  // namespace

namespace quor::bars {

class TabPainter {
public:
    TabPainter(CDC& dc, const TabStrip& strip, HWND window, bool vertical)
        : m_dc(dc), m_strip(strip), m_window(window), m_vertical(vertical) {}

    CPoint at(CPoint point) const { return m_vertical ? CPoint(point.y, point.x) : point; }
    CRect area(const CRect& rect) const { return {at(rect.TopLeft()), at(rect.BottomRight())}; }
    void fill(const CRect& rect, COLORREF color) { m_dc.FillSolidRect(area(rect), color); }
    int line() const { return scaled(m_window, 1); }
    CDC& dc() { return m_dc; }

    // The wide edges stand on it.
    void baseLine(int from, int to) {
        const int y = m_strip.isTop() ? 0 : m_strip.height() - line();
        fill({from, y, to, y + line()}, edgeColour());
    }
    void shape(int index, CRgn& region, COLORREF face) {
        CBrush brush(face);
        m_dc.FillRgn(&region, &brush);
        const TabItem& tab = m_strip.item(index);
        // Nothing shows below the selected tab but its content.
        if (tab.m_fSelected && m_strip.isTop()) fill({tab.m_rect.left, 0, tab.m_rect.right, line()}, face);
        if (tab.m_fSelected && !m_strip.isTop())
            fill({tab.m_rect.left, tab.m_rect.bottom, tab.m_rect.right, m_strip.height()}, face);
        outline(index);
    }
    void text(int index, HFONT font, COLORREF color);
    void triangle(CPoint middle, int half, int direction, COLORREF color);
    void bar(CPoint middle, int half, COLORREF color) {
        fill({middle.x, middle.y - half, middle.x + 2 * line(), middle.y + half + 1}, color);
    }
    void cross(CPoint middle, int half, COLORREF color);
    void downTriangle(CPoint middle, int half, COLORREF color) {
        for (int i = 0; i <= half; ++i)
            fill({middle.x - half + i, middle.y - half / 2 + i, middle.x + half - i + 1, middle.y - half / 2 + i + 1},
                 color);
    }
    void dropMark(int x, COLORREF color);

private:
    void outline(int index);
    static void turn(HFONT font, CFont& turned);
    // Cut to the width, with an ellipsis; empty where no letter has room.
    CString fitted(const CString& text, int width);

    CDC& m_dc;
    const TabStrip& m_strip;
    HWND m_window;
    bool m_vertical;
};

// Slopes and the narrow edge. Right and lower edges are outside; a pen reaches half its width over its points.
void TabPainter::outline(int index) {
    auto points = m_strip.outline(index);
    const TabItem& tab = m_strip.item(index);
    const bool sliver = tab.m_bState == kTabSelectedSliver || tab.m_bState == kTabSliver;
    const bool covered = tab.m_bState == kTabSliver || tab.m_bState == kTabUnder;
    const int inwards = 1 + (line() - 1) / 2;
    for (CPoint& point : points) {
        if (point.x > tab.m_rect.left + m_strip.slope()) point.x -= inwards;
        if (point.y == (m_strip.isTop() ? tab.m_rect.bottom : -1)) point.y -= inwards;
        point = at(point);
    }
    CPen pen(PS_SOLID, line(), edgeColour());
    const SelectScope selected(m_dc, pen);
    const int first = sliver ? 1 : 0, last = covered ? 3 : 4;
    m_dc.Polyline(points.data() + first, last - first + 1);
}

CString TabPainter::fitted(const CString& text, int width) {
    constexpr int kEllipsisRoom = 4;
    std::vector<char> letters(text.GetString(), text.GetString() + text.GetLength() + 1);
    letters.resize(letters.size() + kEllipsisRoom);
    CRect place(0, 0, width, m_strip.height());
    m_dc.DrawTextEx(letters.data(), text.GetLength(), place,
                    DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS | DT_MODIFYSTRING | DT_CALCRECT, nullptr);
    return letters[0] == text[0] ? letters.data() : "";
}

// Only outlines turn.
void TabPainter::turn(HFONT font, CFont& turned) {
    LOGFONT description;
    ::GetObjectA(font, sizeof description, &description);
    description.lfEscapement = description.lfOrientation = kDownwards;
    description.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    turned.CreateFontIndirect(&description);
}

void TabPainter::text(int index, HFONT font, COLORREF color) {
    const CRect place = m_strip.tipPlace(index);
    const TabItem& tab = m_strip.item(index);
    if (place.IsRectEmpty() || tab.m_strText.IsEmpty()) return;
    const DcStateScope restored(m_dc);
    const bool cut = m_strip.clipped(index);
    CString shown = tab.m_strText;
    int high;
    {
        const SelectScope upright(m_dc, font);
        if (cut) shown = fitted(shown, place.Width() - 2 * kTextIndent);
        high = m_dc.GetTextExtent(shown).cy;
    }
    CFont turned;
    if (m_vertical) turn(font, turned);
    const SelectScope selected(m_dc, m_vertical ? static_cast<HFONT>(turned) : font);
    m_dc.SetBkMode(TRANSPARENT);
    m_dc.SetTextColor(color);
    m_dc.SetTextAlign(TA_LEFT | TA_TOP);
    // Letters that are turned have their tops to the right.
    const int top = (place.top + place.bottom + (m_vertical ? high : -high)) / 2;
    const CPoint start = at({cut ? tab.m_rectText.left + kTextIndent : m_strip.textPlace(index).left, top});
    m_dc.IntersectClipRect(area(place));
    m_dc.TextOut(start.x, start.y, shown);
}

void TabPainter::triangle(CPoint middle, int half, int direction, COLORREF color) {
    for (int i = 0; i <= half; ++i) {
        const int x = middle.x + direction * (half / 2 - i);
        fill({x, middle.y - i, x + 1, middle.y + i + 1}, color);
    }
}

void TabPainter::cross(CPoint middle, int half, COLORREF color) {
    const int width = 2 * line();
    for (int i = -half; i <= half; ++i) {
        const int left = middle.x - width / 2;
        fill({left + i, middle.y + i, left + i + width, middle.y + i + 1}, color);
        fill({left - i, middle.y + i, left - i + width, middle.y + i + 1}, color);
    }
}

void TabPainter::dropMark(int x, COLORREF color) {
    const int width = 2 * line(), arrow = scaled(m_window, 4);
    fill({x - width / 2, 0, x + (width + 1) / 2, m_strip.height()}, color);
    for (int i = 0; i < arrow; ++i) {
        const int half = arrow - i;
        fill({x - half, i, x + half, i + 1}, color);
        fill({x - half, m_strip.height() - i - 1, x + half, m_strip.height() - i}, color);
    }
}

}  // namespace quor::bars

// ---- Buttons

namespace {

struct ButtonLook {
    bool pressed, hot, enabled;
};

int themedState(const ButtonLook& look) {
    if (!look.enabled) return PBS_DISABLED;
    if (look.pressed) return PBS_PRESSED;
    return look.hot ? PBS_HOT : PBS_NORMAL;
}

void paintFace(TabPainter& painter, CThemeUtil& theme, HWND window, const CRect& face, const ButtonLook& look) {
    CRect place = painter.area(face);
    if (theme.KeepThemeData(window, L"BUTTON") &&
        theme.DrawThemeBackground(painter.dc(), BP_PUSHBUTTON, themedState(look), place))
        return;
    painter.dc().DrawFrameControl(place, DFC_BUTTON,
                                  static_cast<UINT>(DFCS_BUTTONPUSH | (look.pressed ? DFCS_PUSHED : 0)));
}

COLORREF glyphColour(const CThemeUtil& theme, const ButtonLook& look) {
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    if (!look.enabled) return readableOn(face, ::GetSysColor(COLOR_GRAYTEXT), kDisabledContrast);
    COLORREF ink = readableOn(face, ::GetSysColor(COLOR_BTNTEXT), kTextContrast);
    theme.GetThemeColor(BP_PUSHBUTTON, themedState(look), TMT_TEXTCOLOR, ink);
    return ink;
}

void paintGlyph(TabPainter& painter, CPoint middle, int half, int code, COLORREF ink) {
    const int aside = half / 2 + 2 * painter.line();
    switch (code) {
        case CTS_HIT_FIRST:
            painter.bar(middle - CSize(aside, 0), half, ink);
            return painter.triangle(middle + CSize(painter.line(), 0), half, -1, ink);
        case CTS_HIT_PREVIOUS:
            return painter.triangle(middle, half, -1, ink);
        case CTS_HIT_NEXT:
            return painter.triangle(middle, half, 1, ink);
        case CTS_HIT_LAST:
            painter.bar(middle + CSize(aside - painter.line(), 0), half, ink);
            return painter.triangle(middle - CSize(painter.line(), 0), half, 1, ink);
        case CTS_HIT_CLOSE:
            return painter.cross(middle, half, ink);
        default:
            return painter.downTriangle(middle, half, ink);
    }
}

}  // namespace

BOOL CCustomTabCtrl::OnEraseBkgnd(CDC*) { return TRUE; }

LRESULT CCustomTabCtrl::OnThemeChanged() {
    m_parts->theme.CloseThemeData();
    Invalidate(FALSE);
    return 0;
}

void CCustomTabCtrl::OnSysColorChange() {
    CWnd::OnSysColorChange();
    Invalidate(FALSE);
}

void CCustomTabCtrl::OnEnable(BOOL enable) {
    CWnd::OnEnable(enable);
    Invalidate(FALSE);
}

void CCustomTabCtrl::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    if (client.IsRectEmpty()) return;
    CDC memory;
    memory.CreateCompatibleDC(&dc);
    CBitmap picture;
    picture.CreateCompatibleBitmap(&dc, client.Width(), client.Height());
    const SelectScope selected(memory, picture);
    Draw(memory, client);
    dc.BitBlt(0, 0, client.Width(), client.Height(), &memory, 0, 0, SRCCOPY);
}

void CCustomTabCtrl::Draw(CDC& dc, const CRect& client) {
    const TabStrip& strip = m_parts->strip;
    TabPainter painter(dc, strip, m_hWnd, IsVertical());
    const CRect whole = clientRect(client);
    const int end = strip.right() - (strip.styled(CTS_BUTTONSAFTER) ? scaled(m_hWnd, kButtonGap) : 0);
    const CRect room = painter.area({strip.left(), 0, std::max(end, strip.left()), strip.height()});
    dc.FillSolidRect(client, ::GetSysColor(COLOR_BTNFACE));
    for (const bool selected : {false, true}) {
        if (selected) painter.baseLine(0, whole.right);
        const DcStateScope restored(dc);
        dc.IntersectClipRect(room);
        for (int i = 0; i < strip.count(); ++i)
            if ((i == strip.selected()) == selected) drawTab(painter, i);
        if (selected) drawMarks(painter);
    }
    drawButtons(painter);
}

void CCustomTabCtrl::drawTab(TabPainter& painter, int index) {
    CCustomTabCtrlItem& item = m_parts->item(index);
    if (!item.m_rgn.m_hObject) return;
    const TabColours colours = coloursOf(item, index == m_parts->hot, IsWindowEnabled());
    painter.shape(index, item.m_rgn, colours.face);
    if (item.number != m_parts->edited)
        painter.text(index, item.m_fSelected ? m_parts->m_fontSelected : m_parts->m_fontNormal, colours.text);
}

// The focus, and where a drag would land.
void CCustomTabCtrl::drawMarks(TabPainter& painter) {
    const TabStrip& strip = m_parts->strip;
    if (GetFocus() == this && strip.selected() >= 0) {
        CRect focus = strip.tipPlace(strip.selected());
        focus.DeflateRect(0, scaled(m_hWnd, 2));
        painter.dc().SetTextColor(0);
        painter.dc().SetBkColor(0xFFFFFF);
        if (!focus.IsRectEmpty()) painter.dc().DrawFocusRect(painter.area(focus));
    }
    const bool copies = ::GetKeyState(VK_CONTROL) < 0;
    const int from = strip.down(), to = m_parts->m_nItemDragDest;
    if (m_parts->drags() && to >= 0 && (copies || to != from))
        painter.dropMark(strip.dropMark(from, to, copies), ::GetSysColor(COLOR_HIGHLIGHT));
}

void CCustomTabCtrl::drawButtons(TabPainter& painter) {
    const TabStrip& strip = m_parts->strip;
    const int side = strip.height() - kAroundButton;
    for (int code = CTS_HIT_FIRST; code >= CTS_HIT_LIST; --code) {
        if (strip.buttonState(code) == kButtonHidden) continue;
        const CRect place = strip.buttonPlace(code);
        const ButtonLook look{strip.buttonState(code) == kButtonPressed, code == m_parts->hot,
                              IsWindowEnabled() && strip.buttonLeads(code)};
        const int left = strip.styled(CTS_BUTTONSAFTER) ? place.right - side : place.left;
        const CRect face(CPoint(left, 1), CSize(side, side));
        paintFace(painter, m_parts->theme, m_hWnd, face, look);
        const int push = look.pressed && !m_parts->theme.IsThemed() ? painter.line() : 0;
        paintGlyph(painter, face.CenterPoint() + CSize(push, push), std::max(2, side / 5), code,
                   glyphColour(m_parts->theme, look));
    }
}
