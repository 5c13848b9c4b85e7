// Mouse and keyboard through the system's own input queue. Presses and releases go in one batch: a control that tracks
// the mouse in a loop of its own would otherwise wait for the release for ever. Pump afterwards.
#pragma once

#include "platform/Framework.h"

#include <initializer_list>
#include <string>

namespace test {

enum class MouseButton { left, right };

// Points are in the window's client area.
void sendMouseMove(HWND window, POINT point);
void sendClick(HWND window, POINT point, MouseButton button = MouseButton::left, int times = 1);
void sendDrag(HWND window, POINT from, POINT to);
// Virtual keys; all are pressed in order and released in reverse: {VK_CONTROL, 'A'}.
void sendKeys(std::initializer_list<WORD> keys);
// Letters, digits and blanks as typed.
void sendText(const std::string& text);

}  // namespace test
