#include "quor/foundation/ZTTimer.h"

// Here and not in the header: the table's code is inside this library alone.
CZTTimer::CZTTimer() = default;
CZTTimer::~CZTTimer() = default;

int CZTTimer::register_timer(CWnd* window, int interval, unsigned long messageOffset) {
    m_entries.add(window, interval, messageOffset);
    return 1;
}

int CZTTimer::unregister_timer(CWnd*, int, unsigned long) { return 1; }

int CZTTimer::timer_action(unsigned long elapsed) {
    m_entries.tick(elapsed, [](const tTimerStruct& entry) {
        ::SendMessageA(entry.pWnd->GetSafeHwnd(), WM_USER + entry.dwMessageOffset, 0, 0);
    });
    return 1;
}
