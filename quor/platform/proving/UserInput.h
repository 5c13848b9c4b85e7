// Mouse and keyboard through the system's own input queue, for tests and for the proofs of a headless run. Presses and
// releases go in one batch: a control that tracks the mouse in a loop of its own would otherwise wait for the release
// for ever. Pump afterwards. Whatever window is in front or under the point gets it: a program that does this wants a
// desktop of its own.
#pragma once

#include "quor/platform/base/WinTypes.h"

#include <initializer_list>
#include <string>

namespace quor {

enum class MouseButton { left, right };

// Points are in the window's client area.
void sendMouseMove(HWND window, POINT point);
void sendClick(HWND window, POINT point, MouseButton button = MouseButton::left, int times = 1);
void sendDrag(HWND window, POINT from, POINT to);
// A drag of a control that waits before it begins: press, wait and pump, then release. No loop of its own may run.
void sendPress(HWND window, POINT point);
void sendRelease(HWND window, POINT point);
// Virtual keys; all are pressed in order and released in reverse: {VK_CONTROL, 'A'}.
void sendKeys(std::initializer_list<WORD> keys);
// Letters, digits and signs as typed.
void sendText(const std::string& text);

// Gives the calling thread a desktop of this process alone, so that programs that send input can run side by side.
// Before its first window. False: the system refused (GetLastError).
bool useOwnDesktop(const char* name);

}  // namespace quor
