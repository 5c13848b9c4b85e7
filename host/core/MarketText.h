// Prices, quantities and times as text, both ways: the tapes' fields and the cells' texts. No locale, no allocation.
#pragma once

#include "host/core/MarketData.h"
#include "quor/platform/Base.h"

#include <optional>
#include <string>
#include <string_view>

namespace terminal {

// Room for any text of this header. The views returned below point into it.
struct TextBuffer {
    char text[40];
};

// The price with at least 2 decimals and as many as it needs up to 8: "220.51", "-0.50", "1.08345". kNoPrice is "".
std::string_view formatPrice(Price price, TextBuffer& buffer);
// Rounded half away from zero to `decimals` (0 to 8): for columns whose cells shall line up.
std::string_view formatPrice(Price price, int decimals, TextBuffer& buffer);
// A difference of prices: a rise has its sign too, "+0.15".
std::string_view formatChange(Price change, int decimals, TextBuffer& buffer);
std::string_view formatQuantity(Quantity quantity, TextBuffer& buffer);  // "1234567"
std::string_view formatDateTime(MarketTime time, TextBuffer& buffer);    // "2012-06-21 09:30:00.017460000"
std::string_view formatTimeOfDay(MarketTime time, TextBuffer& buffer);   // "09:30:00.017", cut, not rounded

// A number's text as it is shown: what has been rounded to zero has no sign. Any other text as it is.
std::string_view withoutZeroSign(std::string_view number);

// Decimals that show every multiple of a tick size: 0.05 gives 2, 0.00005 gives 5; at least 2; 0 gives 2.
int decimalsOf(Price tickSize);

// The whole text must be the number; no blanks, no '+' sign. Empty: it is not, or it is beyond the largest.
std::optional<Price> parseDecimalPrice(std::string_view text);  // as it stands, up to 8 decimals that are not 0
std::optional<Price> parseScaledPrice(std::string_view text);   // an integer of 1/10,000
std::optional<Quantity> parseQuantity(std::string_view text);   // 0 to kLargestQuantity
std::optional<std::uint64_t> parseNumber(std::string_view text, std::uint64_t largest);
// "2012-06-21 09:30:00[.f]" (or 'T' between), "09:30:00[.f]", or seconds since midnight "34200[.f]"; up to 9 decimals;
// years 1970 to 2261; real days only; a leap second is refused.
std::optional<MarketTime> parseTime(std::string_view text);

std::string counted(std::int64_t count, const char* what);  // "1 row", "2 rows"

// As printf writes it, cut to 127 characters.
std::string formatted(const char* format, ...) QUOR_PRINTF(1, 2);

// `text` in quotes for a message: bytes that are not plain ASCII as \xNN, cut to 40 bytes with "..." after it.
std::string quoteForMessage(std::string_view text);

}  // namespace terminal
