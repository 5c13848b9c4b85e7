// The short road of the number readers, for what nearly all numbers of cells and formulas are: digits with at most one
// full stop, without a sign. Up to 15 of them make a whole number that a double holds exactly, and one division by an
// exact power of ten is correctly rounded, as quor::strtod is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace quor {

inline constexpr double kShortPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// How many characters the number has; 0, with `value` left alone, if it is of another kind. What follows it is the
// caller's to look at: an exponent, for one.
inline std::size_t readShortDecimal(const char* text, double& value) {
    constexpr std::size_t kLongest = std::size(kShortPowersOfTen) - 1;
    const auto digit = [](char c) { return static_cast<unsigned>(c) - '0'; };
    const char* at = text;
    std::uint64_t whole = 0;  // of a long number it is wrong, and not used
    for (; digit(*at) < 10; ++at) whole = whole * 10 + digit(*at);
    auto digits = static_cast<std::size_t>(at - text);
    std::size_t decimals = 0;
    if (*at == '.') {
        const char* const fraction = ++at;
        for (; digit(*at) < 10; ++at) whole = whole * 10 + digit(*at);
        decimals = static_cast<std::size_t>(at - fraction);
        digits += decimals;
    }
    if (digits == 0 || digits > kLongest) return 0;
    value = static_cast<double>(whole) / kShortPowersOfTen[decimals];
    return static_cast<std::size_t>(at - text);
}

}  // namespace quor
