// The picture oracle: what stands on the screen must be what a full repaint of the same state puts there.
//
// A control that moves pixels, or that leaves a row alone because nothing of it changed, can leave a picture that no
// count and no text shows to be wrong. A picture is taken of the window's own device context, frame and scroll bars
// included, and of each visible child's (a list's header and the fields in it), so far as its parents show it.
//
// Before a look the test brings about what its control owes: batches ended, timers fired, no field with a blinking
// caret, and the pointer where nothing is hot.
#pragma once

#include "quor/platform/Framework.h"

#include <string>

namespace test {

// Paints what is invalid, takes the pictures, invalidates all with frame and children, paints it, takes them again.
// Empty if they are equal, pixel by pixel; else which window differs where, in its client area. With the environment
// variable QUOR_PICTURES (a folder) both pictures are kept there.
std::string stalePixels(HWND window);

}  // namespace test
