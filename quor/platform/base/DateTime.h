// A point in time read from the text of a date column, as a key that orders: a sort reads each text once and compares
// keys afterwards.
#pragma once

#include "quor/platform/base/Export.h"

#include <compare>
#include <cstdint>

namespace quor {

// Texts: `YYYY-MM-DD`, `DD-MM-YYYY`, each with or without ` HH:MM:SS` behind it, and `HH:MM:SS` alone; seconds may have
// a fraction, of which nine digits count. Blanks around the text are skipped. All else, days that the calendar does not
// have included, cannot be read.
//
// Order: what cannot be read, then times without a date, then dates.
struct DateTime {
    std::int32_t day = kUnreadable;  // days since the first of March of year 0 of the Gregorian calendar
    std::int64_t nanosecond = 0;     // of that day

    static constexpr std::int32_t kUnreadable = -2;
    static constexpr std::int32_t kTimeOnly = -1;

    auto operator<=>(const DateTime&) const = default;
};

QUOR_FRAMEWORK_API DateTime readDateTime(const char* text) noexcept;

}  // namespace quor
