// Medians, and the clock of the benchmarks without windows.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

// The median of `repeats` runs of `work`, in seconds.
template <typename Work>
double medianSeconds(int repeats, Work work) {
    std::vector<double> seconds;
    for (int i = 0; i < repeats; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    std::nth_element(seconds.begin(), seconds.begin() + repeats / 2, seconds.end());
    return seconds[static_cast<std::size_t>(repeats / 2)];
}

// The upper of the two in the middle for an even count; at least one value.
inline double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}
