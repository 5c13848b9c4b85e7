// Tool tips of cells as a user has them: the mouse comes to rest by the system's input. The wait is cut short by the
// list's own timer, but for tests of the wait.
#pragma once

#include "quor/foundation/TimerIds.h"
#include "quor/list/CommonListCtrl.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/proving/WindowCapture.h"
#include "support/WindowFixture.h"

#include <algorithm>
#include <string>

namespace test {

// The visible tip of this thread, null if there is none.
inline HWND shownTip() {
    HWND tip = nullptr;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM found) -> BOOL {
            char name[32] = "";
            ::GetClassNameA(window, name, sizeof name);
            const bool isIt = ::lstrcmpiA(name, TOOLTIPS_CLASSA) == 0 && ::IsWindowVisible(window);
            if (isIt) *reinterpret_cast<HWND*>(found) = window;
            return !isIt;
        },
        reinterpret_cast<LPARAM>(&tip));
    return tip;
}

// What it says; empty without one.
inline std::string tipText() {
    char text[1024] = "";
    if (const HWND tip = shownTip()) ::GetWindowTextA(tip, text, sizeof text);
    return text;
}

inline CRect tipRect() {
    CRect rect;
    ::GetWindowRect(shownTip(), &rect);
    return rect;
}

// Where on the screen what is drawn in a part of a window begins, on the ground that its corner shows.
inline CPoint inkCorner(HWND window, const CRect& area) {
    WindowPicture picture;
    quorCaptureClientArea(window, picture);
    const auto pixel = [&](int x, int y) { return picture.pixels[static_cast<std::size_t>(y * picture.width + x)]; };
    CPoint corner = area.BottomRight();
    for (int y = area.top; y < std::min<int>(area.bottom, picture.height); ++y) {
        for (int x = area.left; x < std::min<int>(area.right, picture.width); ++x) {
            if (pixel(x, y) == pixel(area.left, area.top)) continue;
            corner = CPoint(std::min<int>(corner.x, x), std::min<int>(corner.y, y));
        }
    }
    ::ClientToScreen(window, &corner);
    return corner;
}
inline CPoint tipInk() { return inkCorner(shownTip(), CRect(0, 0, 1000, 1000)); }

inline CPoint middleOf(CListCtrl& list, int row, int place) {
    CRect label;
    list.GetSubItemRect(row, place, LVIR_LABEL, label);
    return label.CenterPoint();
}

inline void lookAgain(CWnd& list) { list.SendMessage(WM_TIMER, kCellTipTimer); }

// The text of the tip that then shows.
inline std::string restAt(CWnd& list, CPoint point) {
    quor::sendMouseMove(list, point);
    pumpUntilIdle();
    lookAgain(list);
    return tipText();
}
inline std::string restOn(CListCtrl& list, int row, int place) { return restAt(list, middleOf(list, row, place)); }

}  // namespace test
