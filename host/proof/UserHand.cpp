#include "host/proof/UserHand.h"

namespace terminal {

namespace {
constexpr UINT kMenuPatience = 5'000;
}  // namespace

bool pumpUntil(const std::function<bool()>& condition, ULONGLONG milliseconds) {
    const ULONGLONG end = ::GetTickCount64() + milliseconds;
    while (!condition()) {
        MSG message;
        if (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE))
            AfxPumpMessage();
        else if (::GetTickCount64() >= end)
            return false;
        else
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}

void pumpAll() {
    MSG message;
    pumpUntil([&message] { return !::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE); });
}

void bringToFront(CFrameWnd& frame) {
    frame.ShowWindow(SW_SHOWNORMAL);
    frame.BringWindowToTop();
    frame.SetForegroundWindow();
    frame.UpdateWindow();
    pumpAll();
}

void click(HWND window, POINT point, quor::MouseButton button) {
    quor::sendClick(window, point, button);
    pumpAll();
}

void press(std::initializer_list<WORD> keys) {
    quor::sendKeys(keys);
    pumpAll();
}

void type(const std::string& text) {
    quor::sendText(text);
    pumpAll();
}

// The letter waits behind the click and finds the menu open. A menu that does not take it is closed after a while.
void chooseInMenu(HWND window, POINT point, WORD letter) {
    const UINT_PTR guard = ::SetTimer(nullptr, 0, kMenuPatience, [](HWND, UINT, UINT_PTR, DWORD) { ::EndMenu(); });
    quor::sendClick(window, point, quor::MouseButton::right);
    quor::sendKeys({letter});
    pumpAll();
    ::KillTimer(nullptr, guard);
}

}  // namespace terminal
