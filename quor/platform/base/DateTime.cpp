// The texts have fixed places, so digits are taken by count and a text is told by its third character. Days are counted
// in one number, whose order is that of the calendar: a comparison of dates is one of integers.
#include "quor/platform/base/DateTime.h"

namespace quor {

namespace {

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

const char* skipBlanks(const char* p) {
    while (isBlank(*p)) ++p;
    return p;
}

// Exactly `count` digits at p, which then moves behind them; -1 where there are fewer.
int takeDigits(const char*& p, int count) {
    int value = 0;
    for (int i = 0; i < count; ++i) {
        if (p[i] < '0' || p[i] > '9') return -1;
        value = value * 10 + (p[i] - '0');
    }
    p += count;
    return value;
}

bool take(const char*& p, char c) {
    if (*p != c) return false;
    ++p;
    return true;
}

bool isLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int daysIn(int month, int year) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : kDays[month - 1];
}

// Years are counted from March, so that the leap day is the last of its year. January and February of year 0 would come
// out below zero, where the two special days are: there is no year 0 here.
std::int32_t dayNumber(int year, int month, int day) {
    if (year < 1 || month < 1 || month > 12 || day < 1 || day > daysIn(month, year)) return DateTime::kUnreadable;
    const int fromMarch = month > 2 ? month - 3 : month + 9;
    const int marchYear = month > 2 ? year : year - 1;
    return marchYear * 365 + marchYear / 4 - marchYear / 100 + marchYear / 400 + (fromMarch * 153 + 2) / 5 + day - 1;
}

bool readDate(const char*& p, std::int32_t& result) {
    const bool yearFirst = p[0] != '\0' && p[1] != '\0' && p[2] != '-';
    const int first = takeDigits(p, yearFirst ? 4 : 2);
    if (first < 0 || !take(p, '-')) return false;
    const int month = takeDigits(p, 2);
    if (month < 0 || !take(p, '-')) return false;
    const int last = takeDigits(p, yearFirst ? 2 : 4);
    if (last < 0) return false;
    result = yearFirst ? dayNumber(first, month, last) : dayNumber(last, month, first);
    return result != DateTime::kUnreadable;
}

bool readFraction(const char*& p, std::int64_t& nanoseconds) {
    if (!take(p, '.')) return true;
    if (*p < '0' || *p > '9') return false;
    std::int64_t unit = 100'000'000;
    for (; *p >= '0' && *p <= '9'; ++p, unit /= 10) nanoseconds += (*p - '0') * unit;
    return true;
}

bool readTime(const char*& p, std::int64_t& result) {
    const int hour = takeDigits(p, 2);
    if (hour < 0 || hour > 23 || !take(p, ':')) return false;
    const int minute = takeDigits(p, 2);
    if (minute < 0 || minute > 59 || !take(p, ':')) return false;
    const int second = takeDigits(p, 2);
    if (second < 0 || second > 59) return false;
    result = ((hour * 60 + minute) * 60 + second) * std::int64_t{1'000'000'000};
    return readFraction(p, result);
}

bool isTime(const char* p) { return p[0] != '\0' && p[1] != '\0' && p[2] == ':'; }

}  // namespace

DateTime readDateTime(const char* text) noexcept {
    DateTime read{DateTime::kTimeOnly, 0};
    if (text == nullptr) return {};
    const char* p = skipBlanks(text);
    const bool timeOnly = isTime(p);
    if (!timeOnly) {
        if (!readDate(p, read.day)) return {};
        const char* const behindDate = p;
        p = skipBlanks(p);
        if (*p == '\0') return read;
        if (p == behindDate) return {};
    }
    if (!readTime(p, read.nanosecond) || *skipBlanks(p) != '\0') return {};
    return read;
}

}  // namespace quor
