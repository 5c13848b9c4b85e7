// Monitors that a test says: while this lives, windows that ask about monitors and the work area see these and not the
// system's. The first one is the primary; a test may let them come and go.
#pragma once

#include "quor/platform/Framework.h"

#include <vector>

namespace test {

class PretendedScreens {
public:
    struct Monitor {
        CRect area, work;
    };

    explicit PretendedScreens(std::vector<Monitor> monitors)
        : m_former(quor::platform::useScreens({&fromRect, &fromWindow, &describe, &workArea})) {
        show(std::move(monitors));
    }
    ~PretendedScreens() { quor::platform::useScreens(m_former); }
    PretendedScreens(const PretendedScreens&) = delete;
    PretendedScreens& operator=(const PretendedScreens&) = delete;

    void show(std::vector<Monitor> monitors) { s_monitors = std::move(monitors); }

private:
    // A monitor's handle is its number, from 1.
    static HMONITOR fromRect(const RECT& rect) {
        CRect common;
        for (std::size_t at = 0; at < s_monitors.size(); ++at)
            if (common.IntersectRect(&rect, s_monitors[at].area)) return reinterpret_cast<HMONITOR>(at + 1);
        return nullptr;
    }
    static HMONITOR fromWindow(HWND window) {
        CRect rect;
        ::GetWindowRect(window, &rect);
        const HMONITOR found = fromRect(rect);
        return found ? found : reinterpret_cast<HMONITOR>(std::size_t{1});
    }
    static bool describe(HMONITOR monitor, MONITORINFO& info) {
        const auto number = reinterpret_cast<std::size_t>(monitor);
        if (number == 0 || number > s_monitors.size()) return false;
        info.rcMonitor = s_monitors[number - 1].area;
        info.rcWork = s_monitors[number - 1].work;
        return true;
    }
    static CRect workArea() { return s_monitors.front().work; }

    inline static std::vector<Monitor> s_monitors;
    quor::platform::Screens m_former;
};

}  // namespace test
