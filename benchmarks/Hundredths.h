// How the rows of the filter and sort benchmarks write a price, as a host with fixed decimals would. std::to_chars of a
// double takes some 50 ns more, which would be most of the time per row.
#pragma once

#include <charconv>

// Without a terminator; all doubles of the workload are whole hundredths below 1000. The end of the text.
inline char* putHundredths(double value, char* to) {
    const int all = static_cast<int>(value * 100 + 0.5);
    char* end = std::to_chars(to, to + 16, all / 100).ptr;
    *end++ = '.';
    *end++ = static_cast<char>('0' + all / 10 % 10);
    *end++ = static_cast<char>('0' + all % 10);
    return end;
}

inline const char* hundredths(double value, char (&buffer)[40]) {
    *putHundredths(value, buffer) = 0;
    return buffer;
}
