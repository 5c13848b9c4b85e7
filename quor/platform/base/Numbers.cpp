// Decimal numbers go a short road where the answer is exact: a significand below 2^53 times or over a power of ten up
// to 10^22, both of which a double holds, is one correctly rounded operation. All others go to std::from_chars.

#include "quor/platform/base/Numbers.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace quor {

namespace {

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// The text behind blanks and sign.
struct Signed {
    const char* text;
    bool negative;
};

Signed skipSign(const char* text) {
    if (text == nullptr) text = "";
    while (isBlank(*text)) ++text;
    const bool negative = *text == '-';
    if (negative || *text == '+') ++text;
    return {text, negative};
}

template <class Integer>
Integer readInteger(const char* text) {
    using Limits = std::numeric_limits<Integer>;
    const Signed number = skipSign(text);
    const std::uint64_t most = static_cast<std::uint64_t>(Limits::max()) + (number.negative ? 1u : 0u);
    std::uint64_t value = 0;
    for (const char* p = number.text; isDigit(*p); ++p) {
        const unsigned digit = static_cast<unsigned>(*p - '0');
        if (value > (most - digit) / 10) return number.negative ? Limits::min() : Limits::max();
        value = value * 10 + digit;
    }
    return static_cast<Integer>(number.negative ? 0 - value : value);
}

// A decimal number as it stands in the text, sign not included.
struct Decimal {
    const char* end = nullptr;      // behind the last byte; null: no number here
    std::uint64_t significand = 0;  // of the first 19 significant digits
    std::int64_t digits = 0;        // without leading zeros where there are more than 19
    std::int64_t pointShift = 0;    // digits that stand behind the point
    std::int64_t exponent = 0;      // as written behind the e; beyond any use it stops growing
};

constexpr std::int64_t kSafeDigits = 19;  // that many always fit in 64 bits

const char* readDigits(const char* p, std::uint64_t& significand) {
    for (; isDigit(*p); ++p) significand = significand * 10 + static_cast<unsigned>(*p - '0');
    return p;
}

// A second pass over a long text, where the first one overflowed or counted zeros that do not matter.
void recount(const char* text, Decimal& number) {
    number.significand = 0;
    number.digits = 0;
    for (const char* p = text; p != number.end; ++p) {
        if (*p == '.' || (number.digits == 0 && *p == '0')) continue;
        if (number.digits < kSafeDigits) number.significand = number.significand * 10 + static_cast<unsigned>(*p - '0');
        ++number.digits;
    }
}

// An e belongs to the number only if digits follow it.
const char* readExponent(const char* p, Decimal& number) {
    const char* q = p + 1;
    const bool negative = *q == '-';
    if (negative || *q == '+') ++q;
    if (!isDigit(*q)) return p;
    std::int64_t exponent = 0;
    for (; isDigit(*q); ++q) {
        if (exponent < 1'000'000'000'000) exponent = exponent * 10 + (*q - '0');
    }
    number.exponent = negative ? -exponent : exponent;
    return q;
}

Decimal scanDecimal(const char* text) {
    Decimal number;
    const char* const whole = readDigits(text, number.significand);
    number.end = whole;
    if (*whole == '.') {
        number.end = readDigits(whole + 1, number.significand);
        number.pointShift = number.end - (whole + 1);
    }
    number.digits = whole - text + number.pointShift;
    if (number.digits == 0) {
        number.end = nullptr;
        return number;
    }
    if (number.digits > kSafeDigits) recount(text, number);
    if (*number.end == 'e' || *number.end == 'E') number.end = readExponent(number.end, number);
    return number;
}

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double valueOf(const Decimal& number, const char* text) {
    if (number.significand == 0) return 0.0;
    const std::int64_t power = number.exponent - number.pointShift;
    if (number.digits <= kSafeDigits && number.significand < (std::uint64_t{1} << 53) && power >= -22 && power <= 22) {
        const double significand = static_cast<double>(number.significand);
        return power < 0 ? significand / kPowersOfTen[-power] : significand * kPowersOfTen[power];
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(text, number.end, value);
    if (error == std::errc::result_out_of_range)
        return power + number.digits > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return value;
}

double withSign(double value, bool negative) { return negative ? -value : value; }

// How many bytes of the text are `word` in any case: all of it, or 0.
std::size_t wordLength(const char* text, const char* word) {
    std::size_t length = 0;
    for (; word[length] != '\0'; ++length) {
        if (lower(text[length]) != word[length]) return 0;
    }
    return length;
}

// "nan" may be followed by letters, digits and underscores in parentheses, which mean nothing here.
const char* nanEnd(const char* text) {
    const char* const word = text + 3;
    if (*word != '(') return word;
    const char* p = word + 1;
    while (isDigit(*p) || *p == '_' || (lower(*p) >= 'a' && lower(*p) <= 'z')) ++p;
    return *p == ')' ? p + 1 : word;
}

int hexDigit(char c) {
    if (isDigit(c)) return c - '0';
    const char letter = lower(c);
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

// A hexadecimal number, behind its 0x: 64 significant bits, the last of which also stands for all that were lost, then
// one rounding by ldexp. Null end: no digit, so that only the 0 in front of the x is a number.
struct Hexadecimal {
    const char* end = nullptr;
    std::uint64_t significand = 0;
    std::int64_t exponent = 0;
};

const char* readHexDigits(const char* p, Hexadecimal& number, bool behindPoint) {
    for (int digit = hexDigit(*p); digit >= 0; digit = hexDigit(*++p)) {
        if (number.significand >> 60 == 0) {
            number.significand = number.significand << 4 | static_cast<unsigned>(digit);
            if (behindPoint) number.exponent -= 4;
        } else {
            if (digit != 0) number.significand |= 1;
            if (!behindPoint) number.exponent += 4;
        }
    }
    return p;
}

Hexadecimal scanHexadecimal(const char* text) {
    Hexadecimal number;
    const char* p = readHexDigits(text, number, false);
    bool any = p != text;
    if (*p == '.') {
        const char* const end = readHexDigits(p + 1, number, true);
        any = any || end != p + 1;
        p = end;
    }
    if (!any) return number;
    if (*p == 'p' || *p == 'P') {
        Decimal exponent;
        p = readExponent(p, exponent);
        number.exponent += exponent.exponent;
    }
    number.end = p;
    return number;
}

double valueOf(const Hexadecimal& number) {
    if (number.significand == 0) return 0.0;
    const int leading = 63 - std::countl_zero(number.significand);
    const std::int64_t top = number.exponent + leading;  // 2^top <= value < 2^(top + 1)
    if (top > 1024) return std::numeric_limits<double>::infinity();
    if (top < -1080) return 0.0;
    // Bits that the result cannot hold (fewer below the normal range) become one sticky bit before ldexp rounds.
    const std::int64_t lowest = top < -1022 ? -1074 : top - 52;
    const std::int64_t dropped = lowest - number.exponent;
    if (dropped <= 0) return std::ldexp(static_cast<double>(number.significand), static_cast<int>(number.exponent));
    const std::uint64_t kept = dropped < 64 ? number.significand >> dropped : 0;
    const std::uint64_t rest =
        dropped < 64 ? number.significand & ((std::uint64_t{1} << dropped) - 1) : number.significand;
    const bool overHalf = dropped <= 64 && rest > std::uint64_t{1} << (dropped - 1);
    const bool half = dropped <= 64 && rest == std::uint64_t{1} << (dropped - 1);
    const std::uint64_t rounded = kept + (overHalf || (half && (kept & 1) != 0) ? 1 : 0);
    return std::ldexp(static_cast<double>(rounded), static_cast<int>(lowest));
}

}  // namespace

std::int32_t atoi(const char* text) noexcept { return readInteger<std::int32_t>(text); }
std::int32_t atol(const char* text) noexcept { return readInteger<std::int32_t>(text); }
std::int64_t atoi64(const char* text) noexcept { return readInteger<std::int64_t>(text); }

double atof(const char* text) noexcept {
    const Signed number = skipSign(text);
    const Decimal decimal = scanDecimal(number.text);
    return decimal.end != nullptr ? withSign(valueOf(decimal, number.text), number.negative) : 0.0;
}

double strtod(const char* text, const char** end) noexcept {
    const Signed number = skipSign(text);
    const char* const start = number.text;
    const char* numberEnd = text;
    double value = 0.0;
    if (start[0] == '0' && lower(start[1]) == 'x') {
        const Hexadecimal hexadecimal = scanHexadecimal(start + 2);
        numberEnd = hexadecimal.end != nullptr ? hexadecimal.end : start + 1;
        value = withSign(hexadecimal.end != nullptr ? valueOf(hexadecimal) : 0.0, number.negative);
    } else if (const Decimal decimal = scanDecimal(start); decimal.end != nullptr) {
        numberEnd = decimal.end;
        value = withSign(valueOf(decimal, start), number.negative);
    } else if (const std::size_t infinity = wordLength(start, "inf"); infinity != 0) {
        const std::size_t whole = wordLength(start, "infinity");
        numberEnd = start + (whole != 0 ? whole : infinity);
        value = withSign(std::numeric_limits<double>::infinity(), number.negative);
    } else if (wordLength(start, "nan") != 0) {
        numberEnd = nanEnd(start);
        value = withSign(std::numeric_limits<double>::quiet_NaN(), number.negative);
    }
    if (end != nullptr) *end = numberEnd;
    return value;
}

CString formatDouble(double value, int precision) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    if (precision < 0) precision = 6;
    char shortText[128];
    const auto [end, error] =
        std::to_chars(shortText, shortText + sizeof shortText, value, std::chars_format::fixed, precision);
    if (error == std::errc()) return CString(shortText, static_cast<int>(end - shortText));
    CString longText;
    longText.Format("%.*f", precision, value);
    return longText;
}

}  // namespace quor
