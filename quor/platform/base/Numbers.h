// Numbers read from and written to text: the C library's rules, without its locale, its `long` of two widths and the
// gaps of an old runtime DLL. Every reader skips the C locale's blanks, takes one sign and then the longest text that
// is a number; what follows is ignored, and a text that begins with no number is 0. A null text is an empty one.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/Strings.h"

#include <cstddef>
#include <cstdint>

namespace quor {

// Decimal integers; a value outside the result's range becomes its nearest end.
QUOR_FRAMEWORK_API std::int32_t atoi(const char* text) noexcept;
QUOR_FRAMEWORK_API std::int32_t atol(const char* text) noexcept;
QUOR_FRAMEWORK_API std::int64_t atoi64(const char* text) noexcept;

// The number in a cell or a setting: digits, point, e-exponent and nothing else ("INFY", "NAN" and "0x10" are 0),
// correctly rounded. Beyond the range: infinity of that sign, or 0.
QUOR_FRAMEWORK_API double atof(const char* text) noexcept;

// C99's strtod, correctly rounded: decimal, hexadecimal ("0x1.8p3"), "inf", "infinity", "nan", "nan(...)", in any case
// of letters. `end`, if given, receives where the number ended; the text itself if there was none. errno is left alone.
QUOR_FRAMEWORK_API double strtod(const char* text, const char** end = nullptr) noexcept;

// printf's "%.*lf". A negative precision counts as 6. Not a number is "nan" with either sign; infinities are "inf" and
// "-inf".
QUOR_FRAMEWORK_API CString formatDouble(double value, int precision);

}  // namespace quor
