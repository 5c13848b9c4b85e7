// Colours of the small controls: whether a text can be read on its ground, and the form in which tools read a colour.
#pragma once

#include "quor/platform/Base.h"

namespace quor::edits {

// No colour at all, which black (0) is not.
inline constexpr COLORREF kNoColour = 0xFFFFFFFF;

// From 1 (equal) to 21 (black and white): the contrast ratio of the Web Content Accessibility Guidelines 2.1.
double contrast(COLORREF one, COLORREF other);

// So many sixteenths of the way from one colour to another.
COLORREF between(COLORREF from, COLORREF to, int sixteenths);

// `wanted`, moved towards black or white, whichever is further from the ground, until it has the contrast `least`. A
// contrast that no colour reaches gives black or white.
COLORREF readableOn(COLORREF ground, COLORREF wanted, double least);

// "#RRGGBB" in capitals; empty for kNoColour.
std::string formatColour(COLORREF colour);
// The reverse, small letters too; kNoColour for any other text.
COLORREF parseColour(std::string_view text);

}  // namespace quor::edits
