#include "host/core/MarketText.h"

#include <charconv>
#include <chrono>
#include <cstdarg>
#include <cstdio>

namespace terminal {
namespace {

constexpr int kPriceDecimals = 8;
constexpr Price kScaledPriceOne = kPriceOne / 10'000;  // a tape's integer of 1/10,000
constexpr std::int64_t kSecond = 1'000'000'000;
constexpr std::int64_t kDay = 86'400 * kSecond;
constexpr std::uint64_t kPowerOfTen[] = {1,       10,        100,        1'000,       10'000,
                                         100'000, 1'000'000, 10'000'000, 100'000'000, 1'000'000'000};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Writes `digits` decimal digits of `value` that end before `end`; returns where they begin.
char* writeDigits(char* end, std::uint64_t value, int digits) {
    for (int i = 0; i < digits; ++i, value /= 10) *--end = static_cast<char>('0' + value % 10);
    return end;
}

char* writeWhole(char* end, std::uint64_t value) {
    do *--end = static_cast<char>('0' + value % 10);
    while ((value /= 10) != 0);
    return end;
}

std::uint64_t magnitude(std::int64_t value) {
    const auto bits = static_cast<std::uint64_t>(value);
    return value < 0 ? 0 - bits : bits;
}

// Digits after a decimal point, at least one and as many as `places` that are not 0; the result counts `places` digits.
std::optional<std::uint64_t> parseFraction(std::string_view digits, int places) {
    if (digits.empty()) return {};
    std::uint64_t value = 0;
    int read = 0;
    for (const char c : digits) {
        if (!isDigit(c)) return {};
        if (read < places) {
            value = value * 10 + static_cast<std::uint64_t>(c - '0');
            ++read;
        } else if (c != '0') {
            return {};  // more than can be kept: refused rather than cut
        }
    }
    return value * kPowerOfTen[places - read];
}

// Exactly `count` digits at the front of `text`, which are taken off it.
std::optional<int> takeDigits(std::string_view& text, std::size_t count) {
    if (text.size() < count) return {};
    int value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (!isDigit(text[i])) return {};
        value = value * 10 + (text[i] - '0');
    }
    text.remove_prefix(count);
    return value;
}

bool takeByte(std::string_view& text, char byte) {
    if (text.empty() || text.front() != byte) return false;
    text.remove_prefix(1);
    return true;
}

// "" or ".f": nanoseconds.
std::optional<std::int64_t> parseTail(std::string_view text) {
    if (text.empty()) return 0;
    if (!takeByte(text, '.')) return {};
    const auto fraction = parseFraction(text, 9);
    if (!fraction) return {};
    return static_cast<std::int64_t>(*fraction);
}

// "2012-06-21" off the front: nanoseconds of its midnight.
std::optional<std::int64_t> takeDate(std::string_view& text) {
    const auto year = takeDigits(text, 4);
    if (!year || *year < 1970 || *year > 2261 || !takeByte(text, '-')) return {};
    const auto month = takeDigits(text, 2);
    if (!month || !takeByte(text, '-')) return {};
    const auto dayOfMonth = takeDigits(text, 2);
    if (!dayOfMonth) return {};
    const std::chrono::year_month_day date{std::chrono::year{*year}, std::chrono::month{static_cast<unsigned>(*month)},
                                           std::chrono::day{static_cast<unsigned>(*dayOfMonth)}};
    if (!date.ok()) return {};
    return std::chrono::sys_days{date}.time_since_epoch().count() * kDay;
}

std::optional<std::int64_t> parseClock(std::string_view text) {
    const auto hours = takeDigits(text, 2);
    if (!hours || *hours > 23 || !takeByte(text, ':')) return {};
    const auto minutes = takeDigits(text, 2);
    if (!minutes || *minutes > 59 || !takeByte(text, ':')) return {};
    const auto seconds = takeDigits(text, 2);
    if (!seconds || *seconds > 59) return {};
    const auto tail = parseTail(text);
    if (!tail) return {};
    return ((*hours * 60 + *minutes) * 60 + *seconds) * kSecond + *tail;
}

std::optional<std::int64_t> parseSecondsOfDay(std::string_view text) {
    const std::size_t digits = std::min(text.find('.'), text.size());
    const auto seconds = parseNumber(text.substr(0, digits), 86'399);
    const auto tail = parseTail(text.substr(digits));
    if (!seconds || !tail) return {};
    return static_cast<std::int64_t>(*seconds) * kSecond + *tail;
}

// "-1" before a price's digits; price texts share it.
bool takeMinus(std::string_view& text) { return takeByte(text, '-'); }

std::optional<Price> signedPrice(std::uint64_t value, bool negative) {
    if (value > static_cast<std::uint64_t>(kLargestPrice)) return {};
    const auto price = static_cast<Price>(value);
    return negative ? -price : price;
}

}  // namespace

std::string_view formatPrice(Price price, TextBuffer& buffer) {
    int decimals = kPriceDecimals;
    for (std::uint64_t rest = magnitude(price); decimals > 2 && rest % 10 == 0; rest /= 10) --decimals;
    return formatPrice(price, decimals, buffer);
}

std::string_view formatPrice(Price price, int decimals, TextBuffer& buffer) {
    if (price == kNoPrice) return {};
    const std::uint64_t unit = kPowerOfTen[kPriceDecimals - decimals];
    const std::uint64_t scaled = (magnitude(price) + unit / 2) / unit;
    char* const end = std::end(buffer.text);
    char* begin = end;
    if (decimals > 0) {
        begin = writeDigits(begin, scaled, decimals);
        *--begin = '.';
    }
    begin = writeWhole(begin, scaled / kPowerOfTen[decimals]);
    if (price < 0 && scaled != 0) *--begin = '-';
    return {begin, static_cast<std::size_t>(end - begin)};
}

std::string_view formatChange(Price change, int decimals, TextBuffer& buffer) {
    const std::string_view text = formatPrice(change, decimals, buffer);
    if (change <= 0) return text;
    char* const begin = buffer.text + (text.data() - buffer.text) - 1;
    *begin = '+';
    return withoutZeroSign({begin, text.size() + 1});
}

std::string_view formatQuantity(Quantity quantity, TextBuffer& buffer) {
    char* const end = std::end(buffer.text);
    char* begin = writeWhole(end, magnitude(quantity));
    if (quantity < 0) *--begin = '-';
    return {begin, static_cast<std::size_t>(end - begin)};
}

namespace {

char* writeClock(char* end, std::int64_t ofDay, int decimals) {
    const auto nanos = static_cast<std::uint64_t>(ofDay % kSecond);
    const auto seconds = static_cast<std::uint64_t>(ofDay / kSecond);
    end = writeDigits(end, nanos / kPowerOfTen[9 - decimals], decimals);
    *--end = '.';
    end = writeDigits(end, seconds % 60, 2);
    *--end = ':';
    end = writeDigits(end, seconds / 60 % 60, 2);
    *--end = ':';
    return writeDigits(end, seconds / 3'600, 2);
}

// Days and the rest of the day, the rest never negative.
std::int64_t dayOf(MarketTime time) { return time / kDay - (time % kDay < 0 ? 1 : 0); }

}  // namespace

std::string_view formatDateTime(MarketTime time, TextBuffer& buffer) {
    const std::int64_t days = dayOf(time);
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{static_cast<int>(days)}}};
    char* const end = std::end(buffer.text);
    char* begin = writeClock(end, time - days * kDay, 9);
    *--begin = ' ';
    begin = writeDigits(begin, unsigned{date.day()}, 2);
    *--begin = '-';
    begin = writeDigits(begin, unsigned{date.month()}, 2);
    *--begin = '-';
    begin = writeDigits(begin, static_cast<std::uint64_t>(int{date.year()}), 4);
    return {begin, static_cast<std::size_t>(end - begin)};
}

std::string_view formatTimeOfDay(MarketTime time, TextBuffer& buffer) {
    char* const end = std::end(buffer.text);
    char* const begin = writeClock(end, time - dayOf(time) * kDay, 3);
    return {begin, static_cast<std::size_t>(end - begin)};
}

std::string_view withoutZeroSign(std::string_view number) {
    const bool isSigned = number.starts_with("-0") || number.starts_with("+0");
    return isSigned && number.find_first_of("123456789") == std::string_view::npos ? number.substr(1) : number;
}

int decimalsOf(Price tickSize) {
    if (tickSize == 0) return 2;
    int decimals = kPriceDecimals;
    for (std::uint64_t rest = magnitude(tickSize); decimals > 2 && rest % 10 == 0; rest /= 10) --decimals;
    return decimals;
}

std::optional<std::uint64_t> parseNumber(std::string_view text, std::uint64_t largest) {
    if (text.empty() || !isDigit(text.front())) return {};
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value > largest) return {};
    return value;
}

std::optional<Quantity> parseQuantity(std::string_view text) {
    const auto value = parseNumber(text, static_cast<std::uint64_t>(kLargestQuantity));
    if (!value) return {};
    return static_cast<Quantity>(*value);
}

std::optional<Price> parseScaledPrice(std::string_view text) {
    const bool negative = takeMinus(text);
    const auto value = parseNumber(text, static_cast<std::uint64_t>(kLargestPrice / kScaledPriceOne));
    if (!value) return {};
    return signedPrice(*value * static_cast<std::uint64_t>(kScaledPriceOne), negative);
}

std::optional<Price> parseDecimalPrice(std::string_view text) {
    const bool negative = takeMinus(text);
    const std::size_t point = std::min(text.find('.'), text.size());
    const auto whole = parseNumber(text.substr(0, point), static_cast<std::uint64_t>(kLargestPrice / kPriceOne));
    if (!whole) return {};
    std::uint64_t value = *whole * static_cast<std::uint64_t>(kPriceOne);
    if (point < text.size()) {
        const auto fraction = parseFraction(text.substr(point + 1), kPriceDecimals);
        if (!fraction) return {};
        value += *fraction;
    }
    return signedPrice(value, negative);
}

std::optional<MarketTime> parseTime(std::string_view text) {
    if (text.size() > 2 && text[2] == ':') return parseClock(text);
    if (text.size() < 5 || text[4] != '-') return parseSecondsOfDay(text);
    const auto midnight = takeDate(text);
    if (!midnight || (!takeByte(text, ' ') && !takeByte(text, 'T'))) return {};
    const auto clock = parseClock(text);
    if (!clock) return {};
    return *midnight + *clock;
}

std::string counted(std::int64_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string formatted(const char* format, ...) {
    char text[128];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    return text;
}

std::string quoteForMessage(std::string_view text) {
    constexpr std::size_t kMostBytes = 40;
    constexpr char kHex[] = "0123456789ABCDEF";
    std::string quoted = "\"";
    for (const char c : text.substr(0, kMostBytes)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F) {
            quoted += c;
        } else {
            quoted += "\\x";
            quoted += kHex[byte >> 4];
            quoted += kHex[byte & 15];
        }
    }
    return quoted += text.size() > kMostBytes ? "\"..." : "\"";
}

}  // namespace terminal
