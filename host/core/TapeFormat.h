// What a tape's format is to the reader: something that turns one line into one tick.
#pragma once

#include "host/core/MarketData.h"

#include <memory>
#include <string>
#include <string_view>

namespace terminal {

// Why a line is bad. `found` points into the line.
struct LineFault {
    std::string what;  // the field, "price" or "size of ask 2"
    std::string_view found;
    const char* expected = "";
};

class TapeFormat {
public:
    virtual ~TapeFormat() = default;
    // Parses a line that is not empty, the header not among them, into `tick`, which comes empty. False: the line is
    // bad and `fault` says why; `tick` may hold a part and is thrown away, and no further line comes.
    virtual bool parse(std::string_view line, Tick& tick, LineFault& fault) = 0;
};

// Cuts the text before the next `separator` off the front of `rest`. `more` tells whether the separator was there, so
// that an empty last field is not lost.
std::string_view takeField(std::string_view& rest, char separator, bool& more);

// The header lines that name the formats; letter case and blanks count.
inline constexpr std::string_view kQuorTapeHeader = "quor-tape 1";
inline constexpr std::string_view kTradesTapeHeader = "Time,Price,Volume";
// A snapshot tape has no header: its first line must look like one of its lines.
bool looksLikeSnapshot(std::string_view line);

std::unique_ptr<TapeFormat> makeQuorTape();
std::unique_ptr<TapeFormat> makeTradesTape(const std::string& symbol);
std::unique_ptr<TapeFormat> makeSnapshotTape(const std::string& symbol);

// Appends one event as the project's own tape writes it, a ';' before it. The reverse of the parser of makeQuorTape().
void appendEvent(std::string& line, const FeedEvent& event);

}  // namespace terminal
