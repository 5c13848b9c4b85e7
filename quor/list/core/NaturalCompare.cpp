// One walk over both texts without a copy of either: a sort of mixed texts comes by here for every pair.
#include "quor/list/core/NaturalCompare.h"

#include <cstdint>
#include <limits>

namespace quor::list {

namespace {

// A value that is compared by its first digit only: older terminals could not tell it from an overflow, and lists must
// keep the order that their users know.
constexpr std::int64_t kOverflowMark = 2147483647;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

int sign(std::int64_t left, std::int64_t right) { return left < right ? -1 : left > right ? 1 : 0; }

struct DigitRun {
    std::int64_t value = 0;  // saturates
    const char* end = nullptr;
};

DigitRun readRun(const char* text) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    DigitRun run;
    for (; isDigit(*text); ++text) {
        const int digit = *text - '0';
        run.value = run.value > (kMost - digit) / 10 ? kMost : run.value * 10 + digit;
    }
    run.end = text;
    return run;
}

signed char folded(char c, bool fold) {
    return static_cast<signed char>(fold && c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

}  // namespace

int naturalCompare(const char* x, const char* y, int mode) {
    if (mode != 0 && mode != 1) return 0;
    if (!x) x = "";
    if (!y) y = "";
    for (;;) {
        if (!*x) return *y ? -1 : 0;
        if (!*y) return 1;
        if (isDigit(*x) != isDigit(*y)) return isDigit(*x) ? -1 : 1;
        if (!isDigit(*x)) {
            if (const int order = sign(folded(*x, mode == 1), folded(*y, mode == 1))) return order;
            ++x;
            ++y;
            continue;
        }
        const DigitRun left = readRun(x);
        const DigitRun right = readRun(y);
        if (left.value == kOverflowMark || right.value == kOverflowMark) return sign(*x, *y);
        if (const int order = sign(left.value, right.value)) return order;
        if (left.end - x != right.end - y) return left.end - x > right.end - y ? -1 : 1;
        x = left.end;
        y = right.end;
    }
}

}  // namespace quor::list
