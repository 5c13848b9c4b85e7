#include "host/core/Summary.h"

#include <cstdio>

namespace terminal {
namespace {

std::string number(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string orNone(std::optional<double> value, int decimals) { return value ? number(*value, decimals) : "none"; }

}  // namespace

std::string summaryLine(const RunSummary& s) {
    const double rate = s.seconds > 0 ? static_cast<double>(s.ticks) / s.seconds : 0;
    std::string line = "summary:";
    auto put = [&](const char* name, const std::string& value) { line.append(" ").append(name) += "=" + value; };
    put("instruments", std::to_string(s.instruments));
    put("rows", std::to_string(s.rows));
    put("ticks", std::to_string(s.ticks));
    put("ticks_per_second", number(rate, 0));
    put("repaints", std::to_string(s.repaints));
    put("tick_to_paint_ms_median", orNone(s.tickToPaintMedianMs, 1));
    put("tick_to_paint_ms_p99", orNone(s.tickToPaintP99Ms, 1));
    put("first_row_ms", orNone(s.firstRowMs, 0));
    put("options_priced", std::to_string(s.optionsPriced));
    put("feed_behind_ms", orNone(s.feedBehindMs, 1));
    put("feed_behind_ms_max_first_half", orNone(s.behindFirstHalfMs, 1));
    put("feed_behind_ms_max_second_half", orNone(s.behindSecondHalfMs, 1));
    put("watch_rows_waiting", std::to_string(s.watchWaiting));
    for (const ProofFigure& proof : s.proofs)
        put(proof.field.c_str(), proof.tried ? std::to_string(proof.held) + "/" + std::to_string(proof.tried) : "none");
    put("ending", "\"" + s.ending + "\"");
    return line;
}

}  // namespace terminal
