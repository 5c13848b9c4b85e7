#include "quor/platform/win/Screens.h"

#include <utility>

namespace quor::platform {

namespace {

HMONITOR systemMonitorFromRect(const RECT& rect) { return ::MonitorFromRect(&rect, MONITOR_DEFAULTTONULL); }

HMONITOR systemMonitorFromWindow(HWND window) { return ::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST); }

bool systemDescribe(HMONITOR monitor, MONITORINFO& info) {
    info.cbSize = sizeof(info);
    return ::GetMonitorInfoA(monitor, &info);
}

CRect systemWorkArea() {
    CRect area;
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

Screens g_screens = {&systemMonitorFromRect, &systemMonitorFromWindow, &systemDescribe, &systemWorkArea};

}  // namespace

const Screens& screens() { return g_screens; }

Screens useScreens(const Screens& answers) { return std::exchange(g_screens, answers); }

}  // namespace quor::platform
