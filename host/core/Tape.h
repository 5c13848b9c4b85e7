// Tapes: recorded market data in a text file, replayed line by line. docs/formats.md tells the three formats. The
// format is recognised from the first lines. A tape is read as a stream: the memory it takes does not depend on its
// length.
#pragma once

#include "host/core/Feed.h"

#include <string>

namespace terminal {

struct TapeName {
    std::string file;    // as the user gave it, in UTF-8: opened and shown in messages under this name
    std::string symbol;  // of the one instrument of a tape that names none; the project's own tape brings its symbols
};

// No line is longer than this, its end not counted; a longer one is a bad line.
inline constexpr std::size_t kLongestTapeLine = 1 << 20;
// Lines that checkTape reads: an error among them is found before any window opens.
inline constexpr int kCheckedTapeLines = 1'000;

// Reads the first lines as the feed will and forgets them. Returns "" if they are good, else the message: the file
// cannot be opened, is empty, is none of the formats, or "FILE: line N: what: found ..., expected ...".
std::string checkTape(const TapeName& name);

// A source over the whole tape. A file that cannot be opened, or a bad line anywhere, makes next() answer `failed`
// there with the message checkTape would give; all lines before it have been handed out. One line is one tick; header
// lines and empty lines are none.
std::unique_ptr<TickSource> openTape(const TapeName& name);

}  // namespace terminal
