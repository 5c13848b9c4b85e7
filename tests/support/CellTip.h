// Tool tips of cells as a user has them: the mouse comes to rest by the system's input. The wait is cut short by the
// list's own timer, but for tests of the wait.
#pragma once

#include "quor/foundation/TimerIds.h"
#include "quor/list/CommonListCtrl.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/proving/WindowCapture.h"
#include "support/WindowFixture.h"

#include <string>

namespace test {

inline HWND shownTip() { return quorShownToolTip(); }

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

inline void lookAgain(CWnd& list) { list.SendMessage(WM_TIMER, kCellTipTimer); }

// The text of the tip that then shows.
inline std::string restAt(CWnd& list, CPoint point) {
    quor::sendMouseMove(list, point);
    pumpUntilIdle();
    lookAgain(list);
    return tipText();
}
inline CPoint middleOf(CListCtrl& list, int row, int place) {
    CRect label;
    list.GetSubItemRect(row, place, LVIR_LABEL, label);
    return label.CenterPoint();
}
inline std::string restOn(CListCtrl& list, int row, int place) { return restAt(list, middleOf(list, row, place)); }

}  // namespace test
