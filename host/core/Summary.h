// The line in which a run of the terminal is told.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace terminal {

// What a proof of a headless run comes to, in a field of its own: checks that held, of those that were tried.
struct ProofFigure {
    std::string field;
    int held = 0;
    int tried = 0;  // 0: it ran nothing
};

struct RunSummary {
    std::int64_t instruments = 0;
    std::int64_t rows = 0;  // of watch, orders and trades at the end
    std::int64_t ticks = 0;
    double seconds = 0;  // that the feed ran: ticks per second are counted over it
    std::int64_t repaints = 0;
    std::optional<double> tickToPaintMedianMs{}, tickToPaintP99Ms{};  // none: nothing was painted after a tick
    std::optional<double> firstRowMs{};    // from the program's start; none: no row was painted
    std::int64_t optionsPriced = 0;        // by the option chain, over all its recomputes
    std::optional<double> feedBehindMs{};  // how late the feed was at the end; none: it ran as fast as possible
    // The latest it ever was in either half of the run. A backlog that grows makes the second one the larger.
    std::optional<double> behindFirstHalfMs{}, behindSecondHalfMs{};
    // Rows of the watch in view whose news no paint had shown before the next news came, the most at any time in the
    // second half of the run.
    std::int64_t watchWaiting = 0;
    std::vector<ProofFigure> proofs{};  // a field each
    std::string ending{};  // "time is up", "end of tape", "window closed", "bad line", ...; no quotes, no line ends
};

// One line without its end, `name=value` with blanks between; a figure that there is not is "none":
// summary: instruments=500 rows=1234 ticks=300000 ticks_per_second=20000 repaints=75 tick_to_paint_ms_median=31.2
//   tick_to_paint_ms_p99=180.0 first_row_ms=420 options_priced=300 feed_behind_ms=0.0
//   feed_behind_ms_max_first_half=9.5 feed_behind_ms_max_second_half=0.0 watch_rows_waiting=0 find_checks=19/19
//   layouts_restored=6/6 ending="time is up"
std::string summaryLine(const RunSummary& summary);

}  // namespace terminal
