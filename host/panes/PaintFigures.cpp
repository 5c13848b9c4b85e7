#include "host/panes/PaintFigures.h"

#include "quor/platform/Framework.h"

namespace terminal {

void PaintFigures::paintEnded(std::int64_t now, bool drewRows) {
    ++m_repaints;
    m_rate.add(now);
    if (drewRows && !m_firstRowMs) m_firstRowMs = millisecondsSinceProcessStart();
}

std::int64_t PaintFigures::takeRecentMedian() {
    const std::int64_t median = m_recent.median();
    m_recent.clear();
    return median;
}

double millisecondsSinceProcessStart() {
    FILETIME created, ended, kernel, user, now;
    if (!::GetProcessTimes(::GetCurrentProcess(), &created, &ended, &kernel, &user)) return 0;
    ::GetSystemTimeAsFileTime(&now);
    const auto ticks = [](const FILETIME& t) {
        return static_cast<std::int64_t>((static_cast<std::uint64_t>(t.dwHighDateTime) << 32) | t.dwLowDateTime);
    };
    return static_cast<double>(ticks(now) - ticks(created)) / 10'000;  // of 100 ns
}

}  // namespace terminal
