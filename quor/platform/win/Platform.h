// What the framework layer offers beyond the framework that it is written after: where the system's controls leave
// something to do. Each has a one-line form for a build on the vendor's framework and the system's own controls
// (QUOR_VENDOR_FRAMEWORK; prepared for, not tried).
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/win/Wnd.h"

#include <commctrl.h>

namespace quor::platform {

// Captions of a column header, for those who paint them in custom draw. The record that custom draw brings covers a
// whole item; in a header with a filter bar the item's filter field is part of that, and belongs to the header.
#ifdef QUOR_VENDOR_FRAMEWORK
inline RECT headerCaption(const NMCUSTOMDRAW& draw) { return draw.rc; }
inline LRESULT headerCaptionPainted(const NMCUSTOMDRAW&) { return CDRF_SKIPDEFAULT; }
#else
// The caption in draw.rc, in the coordinates of draw.hdc: all of it, without the field where a filter bar shows. At
// CDDS_ITEMPREPAINT.
QUOR_FRAMEWORK_API RECT headerCaption(const NMCUSTOMDRAW& draw);
// The answer to CDDS_ITEMPREPAINT once the caption is painted. The header still draws what else an item has: its field,
// where the system's own filter bar shows. It cannot paint over the caption any more.
QUOR_FRAMEWORK_API LRESULT headerCaptionPainted(const NMCUSTOMDRAW& draw);
#endif

// Tells a list view with owner data, in report view, how many rows it has. The control keeps its selection and does not
// scroll beyond what the count asks for; what the news uncover is invalidated, and no more (LVSICF_NOINVALIDATEALL,
// LVSICF_NOSCROLL). The call goes past the window procedure of `list` to the control's own.
#ifdef QUOR_VENDOR_FRAMEWORK
inline void tellRowCount(CWnd& list, int count) {
    list.SendMessage(LVM_SETITEMCOUNT, static_cast<WPARAM>(count), LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
}
#else
QUOR_FRAMEWORK_API void tellRowCount(CWnd& list, int count);
#endif

// Lengths in this tree are those of a screen of 96 dots an inch; what is drawn or placed takes them through here.
inline constexpr int kDotsPerInch = 96;
// `value` in pixels of the screen that `window` is on, rounded, a negative one like its positive; null: the main
// screen. That is the system's resolution, which a process keeps for its life: 96 in one that does not say that it is
// dpiAware.
QUOR_FRAMEWORK_API int scaled(HWND window, int value);
// lfHeight of a font of so many points there: negative, the height of its characters.
QUOR_FRAMEWORK_API int fontHeight(HWND window, int points);

}  // namespace quor::platform
