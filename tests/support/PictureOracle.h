// The picture oracle: what stands on the screen must be what a full repaint of the same state puts there.
//
// A control that moves pixels, or that leaves a row alone because nothing of it changed, can leave a picture that no
// count and no text shows to be wrong. A picture is taken of the window's own device context, frame and scroll bars
// included, and of each visible child's (a list's header and the fields in it), so far as its parents show it.
//
// Before a look the test brings about what its control owes: batches ended, timers fired, no field with a blinking
// caret, and the pointer where nothing is hot.
#pragma once

#include "quor/platform/proving/WindowCapture.h"

#include <string>
#include <vector>

namespace test {

// What a window shows; positions in messages are in its client area.
struct WindowShot {
    HWND window = nullptr;
    POINT clientOrigin{};  // of the client area in the picture
    WindowPicture picture;
};

// The window's visible children, as they are stacked, and then the window, whose picture shows them too. Nothing is
// painted for it.
std::vector<WindowShot> takeShots(HWND window);

// Empty if they are equal, pixel by pixel; else which window differs where.
std::string difference(const std::vector<WindowShot>& shown, const std::vector<WindowShot>& repainted);

// Paints what is invalid, takes the pictures, invalidates all with frame and children, paints it, takes them again.
// The difference; with the environment variable QUOR_PICTURES (a folder) both pictures of it are kept there.
std::string stalePixels(HWND window);

}  // namespace test
