#include "quor/platform/win/FilterBarInternal.h"
#include "quor/platform/win/Platform.h"

#include <algorithm>

namespace quor::platform {

namespace {

bool showsBar(HWND header) { return (::GetWindowLongPtrA(header, GWL_STYLE) & HDS_FILTERBAR) != 0; }

// Nothing tells how high the captions of a system's own bar are; but a hit test knows where its fields begin. Outside
// of the window it knows nothing: the last caption in view may reach beyond.
LONG captionHeight(HWND header, std::size_t item) {
    RECT rect{}, client{};
    ::SendMessageA(header, HDM_GETITEMRECT, item, reinterpret_cast<LPARAM>(&rect));
    ::GetClientRect(header, &client);
    HDHITTESTINFO info{};
    info.pt = {(rect.left + std::min(rect.right, client.right)) / 2, 0};
    for (; info.pt.y < rect.bottom; ++info.pt.y) {
        ::SendMessageA(header, HDM_HITTEST, 0, reinterpret_cast<LPARAM>(&info));
        if (info.flags & (HHT_ONFILTER | HHT_ONFILTERBUTTON)) break;
    }
    return info.pt.y;
}

}  // namespace

RECT headerCaption(const NMCUSTOMDRAW& draw) {
    RECT caption = draw.rc;
    const HWND header = draw.hdr.hwndFrom;
    if (!showsBar(header)) return caption;
    if (const auto bar = FilterBar::of(header)) caption.top += bar->captionOffset();
    caption.bottom = caption.top + captionHeight(header, draw.dwItemSpec);
    return caption;
}

LRESULT headerCaptionPainted(const NMCUSTOMDRAW& draw) {
    const HWND header = draw.hdr.hwndFrom;
    if (!showsBar(header)) return CDRF_SKIPDEFAULT;
    if (const auto bar = FilterBar::of(header)) {
        bar->keepCaption(static_cast<int>(draw.dwItemSpec));
        return CDRF_SKIPDEFAULT;
    }
    const RECT caption = headerCaption(draw);
    ::ExcludeClipRect(draw.hdc, caption.left, caption.top, caption.right, caption.bottom);
    return CDRF_NEWFONT;
}

}  // namespace quor::platform
