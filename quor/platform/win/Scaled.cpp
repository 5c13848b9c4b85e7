// The one place that asks a device for its resolution.
#include "quor/platform/win/ControlsInternal.h"

namespace {

constexpr int kPointsPerInch = 72;

int systemDotsPerInch() {
    static const int dots = [] {
        const HDC screen = ::GetDC(nullptr);
        const int answer = dotsPerInch(screen);
        ::ReleaseDC(nullptr, screen);
        return answer > 0 ? answer : quor::platform::kDotsPerInch;
    }();
    return dots;
}

}  // namespace

int dotsPerInch(HDC device) { return ::GetDeviceCaps(device, LOGPIXELSY); }

int quor::platform::scaled(HWND, int value) { return ::MulDiv(value, systemDotsPerInch(), kDotsPerInch); }

int quor::platform::fontHeight(HWND window, int points) {
    return -::MulDiv(points, scaled(window, kDotsPerInch), kPointsPerInch);
}
