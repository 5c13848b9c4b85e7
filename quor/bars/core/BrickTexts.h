// The texts of a brick bar: a brick's title, and what the settings keep of a brick.
#pragma once

#include "quor/platform/Base.h"

#include <array>
#include <optional>

namespace quor::bars {

// ---- Titles: caption, separator, value.

// A title with another caption: the old caption and the separator give way to the new ones wherever they stand. An
// empty title becomes caption and separator.
CString recaptioned(CString title, const CString& oldCaption, const CString& newCaption, const CString& separator);
// Without any separator; the caption stays. An empty separator takes nothing.
CString withoutSeparator(CString title, const CString& separator);

// ---- Settings: width, colour and font, joined by the byte 0xA7; the font's fields by commas.

// The fields of a font's description in their order, the face apart.
struct BrickFont {
    static constexpr std::size_t kNumbers = 13;
    std::array<int, kNumbers> numbers{};
    CString face;
};

struct BrickRecord {
    int width = 0;
    COLORREF color = 0;
    BrickFont font;
};
CString formatBrick(const BrickRecord& brick);

// What a stored text says: fields that are empty say nothing.
struct StoredBrick {
    std::optional<int> width;  // not below 0
    std::optional<COLORREF> color;
    std::optional<BrickFont> font;
    bool complete = true;  // false: the text ends too early, and so does the reading of the whole bar
};
// An empty text, and that of a missing setting, are complete and say nothing.
StoredBrick parseBrick(const CString& text);

}  // namespace quor::bars
