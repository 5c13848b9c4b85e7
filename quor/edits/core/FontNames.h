// What the font combo decides without a window: which names stand on top, and which name typed letters mean.
#pragma once

#include "quor/platform/Base.h"

#include <string>
#include <vector>

namespace quor::edits {

struct FontFace {
    std::string name;
    bool symbol = false;  // its letters are pictures
};
// Sorted by name without regard to case, each name once; a face that comes with several character sets is a symbol face
// only if all of them are. Names that begin with "@" (turned for vertical writing) and empty ones go.
void tidyFaces(std::vector<FontFace>& faces);

// The points that a text names: a whole number from kLeastPoints to kMostPoints, blanks around it allowed. Else 0.
inline constexpr int kLeastPoints = 4, kMostPoints = 72;
int pointsOf(std::string_view text);

// The names used last, the newest first, each once, at most five.
class RecentNames {
public:
    static constexpr std::size_t kMost = 5;

    // An empty name is none.
    void use(const std::string& name);
    const std::vector<std::string>& names() const { return m_names; }

private:
    std::vector<std::string> m_names;
};

// Letters that follow each other within a second are one beginning; one that comes later begins anew.
class TypeAhead {
public:
    static constexpr unsigned kPause = 1000;  // milliseconds

    // The beginning looked for now. `time` counts milliseconds and may wrap.
    const std::string& type(char letter, unsigned time);

private:
    std::string m_text;
    unsigned m_last = 0;
};

}  // namespace quor::edits
