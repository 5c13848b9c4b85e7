// Painting. The header's own painting of captions, with custom draw, images and sort arrows, is used as it is: it takes
// the whole window for the caption and centres on its middle, so it is shifted up by half the bar and clipped where the
// caption ends. The edges that fall outside are drawn afterwards. Its pictures it draws on its window, whatever context
// it is given: it paints without them, and they are drawn here. Who paints captions in custom draw learns by
// headerCaption where they are now.
#include "quor/platform/win/FilterBarInternal.h"

#include <cwchar>
#include <uxtheme.h>

namespace quor {

namespace {

constexpr wchar_t kCue[] = L"Enter text here";
constexpr std::size_t kLongestShown = 512;  // characters of a filter that are worth drawing

class SavedDc {
public:
    explicit SavedDc(HDC dc) : m_dc(dc), m_state(::SaveDC(dc)) {}
    ~SavedDc() { ::RestoreDC(m_dc, m_state); }
    SavedDc(const SavedDc&) = delete;
    SavedDc& operator=(const SavedDc&) = delete;

private:
    HDC m_dc;
    int m_state;
};

void fill(HDC dc, const RECT& rect, int color) { ::FillRect(dc, &rect, ::GetSysColorBrush(color)); }

void frame(HDC dc, const RECT& rect, int color) { ::FrameRect(dc, &rect, ::GetSysColorBrush(color)); }

// Where a header puts a picture beside a text of this width.
LONG pictureLeft(const RECT& item, const HDITEMW& record, LONG textWidth, LONG width) {
    const LONG margin = 3 * ::GetSystemMetrics(SM_CXEDGE);
    switch (record.fmt & HDF_JUSTIFYMASK) {
        case HDF_RIGHT:
            return item.right - textWidth - 3 * margin - width;
        case HDF_CENTER:
            return (item.left + item.right + textWidth) / 2 + margin;
        default:
            return item.left + margin + ((record.fmt & HDF_BITMAP_ON_RIGHT) ? textWidth + 2 * margin : 0);
    }
}

bool isThemed(HWND window) { return ::GetWindowTheme(window) != nullptr; }

}  // namespace

FilterBar::Ground FilterBar::ground(HDC dc, UINT message) const {
    const SavedDc saved(dc);
    const HWND asking = m_edit ? m_edit : m_header;
    const LRESULT brush =
        ::SendMessageW(m_header, message, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(asking));
    return {reinterpret_cast<HBRUSH>(brush), ::GetTextColor(dc), ::GetBkColor(dc)};
}

void FilterBar::onPaint() {
    PAINTSTRUCT paint;
    const HDC dc = ::BeginPaint(m_header, &paint);
    if (m_edit) {
        placeField();
        const RECT field = places(m_editItem).field;
        ::ExcludeClipRect(dc, field.left, field.top, field.right, field.bottom);
    }
    RECT client;
    ::GetClientRect(m_header, &client);
    {
        PaintBufferScope buffer(dc, client);
        draw(buffer.dc());
    }
    ::EndPaint(m_header, &paint);
}

void FilterBar::draw(HDC dc) {
    RECT client;
    ::GetClientRect(m_header, &client);
    fill(dc, client, COLOR_BTNFACE);
    const RECT bar{0, barTop(), client.right, client.bottom};
    ::FillRect(dc, &bar, ground(dc, WM_CTLCOLORSTATIC).brush);
    drawCaptions(dc, {0, 0, client.right, barTop()});
    const SavedDc saved(dc);
    ::SelectObject(dc, font());
    ::SetBkMode(dc, TRANSPARENT);
    for (int item = 0, count = itemCount(); item < count; ++item) drawField(dc, item);
}

void FilterBar::drawCaptions(HDC dc, const RECT& caption) {
    const SavedDc saved(dc);
    ::IntersectClipRect(dc, caption.left, caption.top, caption.right, caption.bottom);
    m_keptCaptions.clear();
    m_captionOffset = m_metrics.barHeight / 2;
    {
        const SavedDc shifted(dc);
        ::OffsetViewportOrgEx(dc, 0, -m_captionOffset, nullptr);
        m_pictures = header(HDM_SETIMAGELIST);
        header(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
        header(HDM_SETIMAGELIST, 0, m_pictures);
    }
    m_captionOffset = 0;
    if (m_pictures) drawPictures(dc, caption);
    m_pictures = 0;
    drawCaptionEdges(dc, caption);
}

void FilterBar::drawPictures(HDC dc, const RECT& caption) const {
    const SavedDc saved(dc);
    ::SelectObject(dc, font());
    const auto pictures = reinterpret_cast<HIMAGELIST>(m_pictures);
    int width = 0, height = 0;
    ::ImageList_GetIconSize(pictures, &width, &height);
    for (int item = 0, count = itemCount(); item < count; ++item) {
        wchar_t text[kLongestShown] = L"";
        HDITEMW record{};
        record.mask = HDI_FORMAT | HDI_IMAGE | HDI_TEXT;
        record.pszText = text;
        record.cchTextMax = static_cast<int>(std::size(text));
        const bool kept = std::count(m_keptCaptions.begin(), m_keptCaptions.end(), item) != 0;
        if (kept || !header(HDM_GETITEMW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&record)) ||
            !(record.fmt & HDF_IMAGE))
            continue;
        SIZE size{};
        ::GetTextExtentPoint32W(dc, text, static_cast<int>(std::wcslen(text)), &size);
        const RECT place = itemRect(item);
        const SavedDc clipped(dc);
        ::IntersectClipRect(dc, place.left, caption.top, place.right, caption.bottom);
        ::ImageList_Draw(pictures, record.iImage, dc, static_cast<int>(pictureLeft(place, record, size.cx, width)),
                         (caption.top + caption.bottom - height) / 2, ILD_NORMAL);
    }
}

// Right of the last caption nobody is asked: whoever painted all that show painted there, too.
void FilterBar::drawCaptionEdges(HDC dc, const RECT& caption) const {
    bool anyIsOurs = m_keptCaptions.empty();
    for (int item = 0, count = itemCount(); item < count; ++item) {
        const RECT place = itemRect(item);
        if (std::count(m_keptCaptions.begin(), m_keptCaptions.end(), item) != 0)
            ::ExcludeClipRect(dc, place.left, caption.top, place.right, caption.bottom);
        else if (place.left < std::min(place.right, caption.right))
            anyIsOurs = true;
    }
    if (!anyIsOurs) return;
    if (isThemed(m_header)) {
        fill(dc, {0, caption.bottom - 1, caption.right, caption.bottom}, COLOR_3DLIGHT);
        return;
    }
    RECT edge = caption;
    ::DrawEdge(dc, &edge, EDGE_RAISED, BF_TOP | BF_BOTTOM | BF_SOFT);
}

void FilterBar::drawField(HDC dc, int item) const {
    const FilterBarPlaces place = places(item);
    const bool isFiltered =
        static_cast<std::size_t>(item) < m_records.size() && !m_records[static_cast<std::size_t>(item)].text.empty();
    const bool themed = isThemed(m_header);
    const Ground look = ground(dc, WM_CTLCOLOREDIT);
    ::FillRect(dc, &place.field, look.brush);
    if (place.field.right > place.field.left) {
        RECT around = place.field;
        ::InflateRect(&around, m_metrics.border, m_metrics.border);
        if (themed)
            frame(dc, around, COLOR_3DSHADOW);
        else
            ::DrawEdge(dc, &around, BDR_SUNKENOUTER, BF_RECT);
        drawText(dc, place.field, isFiltered ? m_records[static_cast<std::size_t>(item)].text : std::wstring(), look);
    }
    RECT button = place.button;
    if (!themed) ::DrawEdge(dc, &button, item == m_pressed ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
    if (item == m_pressed) ::OffsetRect(&button, 1, 1);
    drawFunnel(dc, button, look.back, isFiltered);
}

void FilterBar::drawText(HDC dc, RECT field, const std::wstring& text, const Ground& look) const {
    const std::wstring shown = text.empty() ? kCue : text.substr(0, kLongestShown);
    field.left += m_metrics.textMargin;
    field.right -= m_metrics.textMargin;
    field.top += textTop(field);
    if (field.right <= field.left) return;
    ::SetTextColor(dc, text.empty() ? ::GetSysColor(COLOR_GRAYTEXT) : look.text);
    ::DrawTextW(dc, shown.data(), static_cast<int>(shown.size()), &field,
                DT_LEFT | DT_TOP | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

// A cone over a stem.
void FilterBar::drawFunnel(HDC dc, const RECT& button, COLORREF inside, bool filled) const {
    const int size = m_metrics.funnelSize;
    if (button.right - button.left < size) return;
    const int half = size / 2;
    const int middle = (button.left + button.right - 1) / 2;
    const int top = (button.top + button.bottom - size) / 2;
    const int neck = top + half;
    const int stem = std::max(1, size / 9);
    const POINT outline[] = {{middle - half, top},
                             {middle + half, top},
                             {middle + stem, neck},
                             {middle + stem, top + size - 1},
                             {middle - stem, top + size - 1},
                             {middle - stem, neck}};
    const SavedDc saved(dc);
    ::SelectObject(dc, ::GetStockObject(DC_PEN));
    ::SelectObject(dc, ::GetStockObject(DC_BRUSH));
    const COLORREF line = filled ? ground(dc, WM_CTLCOLORSTATIC).text : ::GetSysColor(COLOR_3DSHADOW);
    ::SetDCPenColor(dc, line);
    ::SetDCBrushColor(dc, filled ? line : inside);
    ::Polygon(dc, outline, static_cast<int>(std::size(outline)));
}

}  // namespace quor
