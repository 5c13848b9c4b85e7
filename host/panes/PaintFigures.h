// What the terminal knows about its own painting: how often, how long after a tick, and when for the first time.
//
// A row is stamped when a tick reaches it and read when a paint has drawn it; the time in between is the tick-to-paint
// latency, the grid's own delay included. A row that already waits keeps its first stamp. Stamps of rows that the user
// scrolled away from are void: the grid starts a new generation then.
#pragma once

#include "host/core/Feed.h"
#include "host/core/Statistics.h"

#include <cstdint>
#include <optional>

namespace terminal {

// Part of a row. 0 micros: no tick waits to be painted.
struct PaintStamp {
    std::int64_t micros = 0;
    std::uint32_t generation = 0;
};

// Counts for all lists of the frame. Lives as long as they do.
class PaintFigures {
public:
    explicit PaintFigures(Clock& clock) : m_clock(clock) {}

    std::int64_t now() { return m_clock.nowMicros(); }

    // At the end of one paint of a list that drew at least one row, or none.
    void paintEnded(std::int64_t now, bool drewRows);
    void addLatency(std::int64_t micros) {
        m_latency.add(micros);
        m_recent.add(micros);
    }

    std::int64_t repaints() const { return m_repaints; }
    double repaintsPerSecond() { return m_rate.perSecond(now()); }
    const Percentiles& latency() const { return m_latency; }
    // Median in microseconds of what was painted since the last call; 0 if nothing was.
    std::int64_t takeRecentMedian();
    // Milliseconds from the start of the process to the end of the first paint with a row.
    std::optional<double> firstRowMs() const { return m_firstRowMs; }

private:
    Clock& m_clock;
    Percentiles m_latency;
    Percentiles m_recent;
    RateCounter m_rate;
    std::int64_t m_repaints = 0;
    std::optional<double> m_firstRowMs;
};

// Milliseconds since the system made this process.
double millisecondsSinceProcessStart();

}  // namespace terminal
