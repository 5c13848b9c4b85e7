#include "quor/platform/proving/UserInput.h"

#include <vector>

namespace quor {

namespace {

INPUT mouseInput(DWORD flags) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    return input;
}

// Absolute coordinates run from 0 to 65535 over the screen.
INPUT moveTo(HWND window, POINT point) {
    ::ClientToScreen(window, &point);
    const int width = ::GetSystemMetrics(SM_CXSCREEN) - 1;
    const int height = ::GetSystemMetrics(SM_CYSCREEN) - 1;
    INPUT input = mouseInput(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
    input.mi.dx = (point.x * 65535 + width / 2) / width;
    input.mi.dy = (point.y * 65535 + height / 2) / height;
    return input;
}

INPUT keyInput(WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = flags;
    return input;
}

void send(std::vector<INPUT>& batch) { ::SendInput(static_cast<UINT>(batch.size()), batch.data(), sizeof(INPUT)); }

}  // namespace

void sendMouseMove(HWND window, POINT point) {
    std::vector<INPUT> batch{moveTo(window, point)};
    send(batch);
}

void sendClick(HWND window, POINT point, MouseButton button, int times) {
    const bool left = button == MouseButton::left;
    std::vector<INPUT> batch{moveTo(window, point)};
    for (int time = 0; time < times; ++time) {
        batch.push_back(mouseInput(left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN));
        batch.push_back(mouseInput(left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP));
    }
    send(batch);
}

void sendDrag(HWND window, POINT from, POINT to) {
    constexpr int kSteps = 4;
    std::vector<INPUT> batch{moveTo(window, from), mouseInput(MOUSEEVENTF_LEFTDOWN)};
    for (int step = 1; step <= kSteps; ++step)
        batch.push_back(
            moveTo(window, {from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps}));
    batch.push_back(mouseInput(MOUSEEVENTF_LEFTUP));
    send(batch);
}

void sendPress(HWND window, POINT point) {
    std::vector<INPUT> batch{moveTo(window, point), mouseInput(MOUSEEVENTF_LEFTDOWN)};
    send(batch);
}

void sendRelease(HWND window, POINT point) {
    std::vector<INPUT> batch{moveTo(window, point), mouseInput(MOUSEEVENTF_LEFTUP)};
    send(batch);
}

void sendKeys(std::initializer_list<WORD> keys) {
    std::vector<INPUT> batch;
    for (const WORD key : keys) batch.push_back(keyInput(key, 0));
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) batch.push_back(keyInput(*key, KEYEVENTF_KEYUP));
    send(batch);
}

void sendText(const std::string& text) {
    std::vector<INPUT> batch;
    for (const char character : text) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wScan = static_cast<BYTE>(character);
        input.ki.dwFlags = KEYEVENTF_UNICODE;
        batch.push_back(input);
        input.ki.dwFlags |= KEYEVENTF_KEYUP;
        batch.push_back(input);
    }
    send(batch);
}

bool useOwnDesktop(const char* name) {
    const std::string own = name + ("-" + std::to_string(::GetCurrentProcessId()));
    const HDESK desktop = ::CreateDesktopA(own.c_str(), nullptr, nullptr, 0, GENERIC_ALL, nullptr);
    return desktop && ::SetThreadDesktop(desktop);
}

}  // namespace quor
