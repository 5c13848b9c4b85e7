// Time, memory and the report of the peers that run on Linux: one JSON line a figure, README.md tells the fields.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace workload {

inline double wallSeconds() {
    timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

inline double cpuSeconds() {
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

inline double residentBytes() {
    long size = 0, resident = 0;
    if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%ld %ld", &size, &resident) != 2) resident = 0;
        std::fclose(file);
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

struct Sample {
    double wall, cpu;  // seconds
};

class Timer {
public:
    Sample stop() const { return {wallSeconds() - m_wall, cpuSeconds() - m_cpu}; }
    double wall() const { return wallSeconds() - m_wall; }

private:
    double m_wall = wallSeconds();
    double m_cpu = cpuSeconds();
};

// What a figure belongs to.
struct Work {
    const char* peer;
    const char* w;
    std::uint32_t rows;
    const char* variant;
};

// A time: medians over the repeats. `count`: operations in each repeat, 0 if the whole action is the figure.
inline void report(const Work& work, double count, const std::vector<Sample>& samples, const std::string& note = "") {
    std::vector<double> wall, cpu;
    for (const Sample& sample : samples) {
        wall.push_back(sample.wall);
        cpu.push_back(sample.cpu);
    }
    std::sort(wall.begin(), wall.end());
    std::sort(cpu.begin(), cpu.end());
    std::printf(
        "{\"peer\":\"%s\",\"w\":\"%s\",\"rows\":%u,\"variant\":\"%s\",\"count\":%.0f,\"reps\":%zu,"
        "\"wall_med\":%.6f,\"wall_min\":%.6f,\"wall_max\":%.6f,\"cpu_med\":%.6f,\"note\":\"%s\"}\n",
        work.peer, work.w, work.rows, work.variant, count, wall.size(), wall[wall.size() / 2], wall.front(),
        wall.back(), cpu[cpu.size() / 2], note.c_str());
    std::fflush(stdout);
}

// Anything but a time.
inline void reportValue(const Work& work, double value, const char* unit) {
    std::printf("{\"peer\":\"%s\",\"w\":\"%s\",\"rows\":%u,\"variant\":\"%s\",\"value\":%.3f,\"unit\":\"%s\"}\n",
                work.peer, work.w, work.rows, work.variant, value, unit);
    std::fflush(stdout);
}

inline void reportVersion(const char* peer, const std::string& version) {
    std::printf("{\"peer\":\"%s\",\"version\":\"%s\"}\n", peer, version.c_str());
    std::fflush(stdout);
}

// A peer whose result is wrong has no figures: it says so and ends.
[[noreturn]] inline void wrong(const char* peer, const char* what) {
    std::printf("{\"peer\":\"%s\",\"error\":\"%s\"}\n", peer, what);
    std::fflush(stdout);
    std::_Exit(1);
}

}  // namespace workload
