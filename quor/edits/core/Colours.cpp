#include "quor/edits/core/Colours.h"

#include <algorithm>
#include <cmath>

namespace quor::edits {

namespace {

constexpr int kSteps = 16;  // from a colour to black or white
constexpr COLORREF kBlack = 0, kWhite = 0xFFFFFF;

int channel(COLORREF colour, int index) { return static_cast<int>(colour >> (8 * index) & 0xFF); }

double linear(int value) {
    const double part = value / 255.0;
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(COLORREF colour) {
    return 0.2126 * linear(channel(colour, 0)) + 0.7152 * linear(channel(colour, 1)) +
           0.0722 * linear(channel(colour, 2));
}

// -1: no hexadecimal digit.
int digitOf(char letter) {
    if (letter >= '0' && letter <= '9') return letter - '0';
    const char small = static_cast<char>(letter | 0x20);
    return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

}  // namespace

double contrast(COLORREF one, COLORREF other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

COLORREF between(COLORREF from, COLORREF to, int sixteenths) {
    COLORREF result = 0;
    for (int index = 0; index < 3; ++index) {
        const int start = channel(from, index), distance = channel(to, index) - start;
        result |= static_cast<COLORREF>(start + distance * sixteenths / kSteps) << (8 * index);
    }
    return result;
}

COLORREF readableOn(COLORREF ground, COLORREF wanted, double least) {
    const COLORREF end = contrast(ground, kBlack) >= contrast(ground, kWhite) ? kBlack : kWhite;
    for (int step = 0; step < kSteps; ++step) {
        const COLORREF colour = between(wanted, end, step);
        if (contrast(ground, colour) >= least) return colour;
    }
    return end;
}

std::string formatColour(COLORREF colour) {
    if (colour == kNoColour) return {};
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "#";
    for (int index = 0; index < 3; ++index) {
        text += kDigits[channel(colour, index) >> 4];
        text += kDigits[channel(colour, index) & 0xF];
    }
    return text;
}

COLORREF parseColour(std::string_view text) {
    if (text.size() != 7 || text[0] != '#') return kNoColour;
    COLORREF colour = 0;
    for (std::size_t index = 0; index < 3; ++index) {
        const std::size_t place = 1 + 2 * index;
        const int high = digitOf(text[place]), low = digitOf(text[place + 1]);
        if (high < 0 || low < 0) return kNoColour;
        colour |= static_cast<COLORREF>(high * 16 + low) << (8 * index);
    }
    return colour;
}

}  // namespace quor::edits
