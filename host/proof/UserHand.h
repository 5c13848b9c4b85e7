// A user's hand in a proof: keys and mouse through the system's own input queue, and the wait for what they do.
// Each call returns when the messages that the input made are dispatched.
#pragma once

#include "quor/platform/Framework.h"
#include "quor/platform/proving/UserInput.h"

#include <functional>
#include <initializer_list>
#include <string>

namespace terminal {

inline constexpr ULONGLONG kPatience = 10'000;   // milliseconds that a step may take on a busy machine
inline constexpr ULONGLONG kImpatience = 1'000;  // after a check that failed: others will, too

// Dispatches what comes until the condition holds. False: it did not within the time.
bool pumpUntil(const std::function<bool()>& condition, ULONGLONG milliseconds = kPatience);
void pumpAll();

void bringToFront(CFrameWnd& frame);

// The point is in the window's client area.
void click(HWND window, POINT point, quor::MouseButton button = quor::MouseButton::left);
// Virtual keys, pressed in order and released in reverse.
void press(std::initializer_list<WORD> keys);
void type(const std::string& text);

// Opens a menu by the right button and presses the letter of an item.
void chooseInMenu(HWND window, POINT point, WORD letter);
// The same by a click on the item with the command.
void clickInMenu(HWND window, POINT point, UINT command);

// Does `open`, which lets `owner` run a modal dialog, and `answer` once that dialog shows. What the answer sends is
// taken by the dialog; one that is still open after a while is cancelled. False: none came, or it was cancelled.
bool throughDialog(HWND owner, const std::function<void()>& open, const std::function<void(HWND dialog)>& answer);

// The same with the system's dialogs: a click on a basic colour, a size in points; then Enter.
struct ColourBox {
    int column, row;
};
bool throughColours(HWND owner, const std::function<void()>& open, ColourBox box);
bool throughFonts(HWND owner, const std::function<void()>& open, const char* points);

}  // namespace terminal
