// How the rows of the filter and sort benchmarks write a price, as a host with fixed decimals would. std::to_chars of a
// double takes some 50 ns more, which would be most of the time per row.
#pragma once

#include <charconv>

// All doubles of the workload are whole hundredths below 1000.
inline const char* hundredths(double value, char (&buffer)[40]) {
    const int all = static_cast<int>(value * 100 + 0.5);
    char* end = std::to_chars(buffer, buffer + 16, all / 100).ptr;
    *end++ = '.';
    *end++ = static_cast<char>('0' + all / 10 % 10);
    *end++ = static_cast<char>('0' + all % 10);
    *end = 0;
    return buffer;
}
