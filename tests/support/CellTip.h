// Tool tips of cells as a user has them: the mouse comes to rest by the system's input. The wait is cut short by the
// list's own timer, but for tests of the wait.
#pragma once

#include "quor/foundation/TimerIds.h"
#include "quor/list/CommonListCtrl.h"
#include "quor/platform/proving/UserInput.h"
#include "support/WindowFixture.h"

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

// Its text on the screen, without what stands around.
inline CRect tipRect() {
    CRect rect;
    const HWND tip = shownTip();
    ::GetWindowRect(tip, &rect);
    ::SendMessageA(tip, TTM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(static_cast<RECT*>(&rect)));
    return rect;
}

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
