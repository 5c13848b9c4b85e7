// CZTTimer: the host's one tick, passed on to many windows, each with its own period, so that the process needs one
// system timer and not one per window.
#pragma once

#include "quor/foundation/core/TimerTable.h"

class QUOR_CONTROLS_API CZTTimer {
public:
    CZTTimer();
    ~CZTTimer();

    // From now on the window gets WM_USER + messageOffset (wParam and lParam 0) whenever `interval` has gathered; see
    // TimerTable for the exact rule. Registering twice sends twice. The window must outlive this object or its last
    // tick: nothing takes an entry back. Always 1.
    int register_timer(CWnd* window, int interval, unsigned long messageOffset);
    // Does nothing and returns 1; the entry goes on firing. Hosts rely on it.
    int unregister_timer(CWnd* window, int interval, unsigned long messageOffset);
    // The host's tick, with the time since the last one. The handlers run inside this call. Always 1.
    int timer_action(unsigned long elapsed);

private:
    quor::foundation::TimerTable m_entries;
};
