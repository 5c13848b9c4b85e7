// What the market watch finds in its settings when it starts for the first time: user columns and the watches.
#pragma once

#include "host/core/MarketData.h"

#include <string>
#include <string_view>
#include <vector>

namespace terminal {

class SettingsFile;

// A column that computes: its formula names the columns it reads in double quotes, by number (`byNumber`, which is what
// is computed) and by heading (`byHeading`, what the user sees). Both begin with a blank and hold no byte 0xA7.
struct UserColumn {
    int columnIndex;  // from kWatchBuiltInColumns on
    const char* heading;
    const char* byNumber;
    const char* byHeading;
};

// Those of a new store: the spread in basis points of the middle, and the distance from the day's high in per cent.
const std::vector<UserColumn>& firstUserColumns();

// As the library stores them: number, heading, formula by number, formula by heading, the byte 0xA7 between all.
std::string userColumnsText(const std::vector<UserColumn>& columns);

// Where the columns of all market watches stand in the settings; the library's call names the section only.
inline constexpr const char* kUserColumnsSection = "MarketWatch";
inline constexpr const char* kUserColumnsKey = "UserColumns";

// Puts the first user columns into a store that has none. A store whose text is empty keeps it: the user took them
// away.
void writeFirstUserColumns(SettingsFile& settings);

// A named list of instruments: those of a series, or all.
struct WatchList {
    std::string name;    // stands in the title of the watch's window and in the names of its settings
    std::string series;  // empty: every instrument
    bool holds(const Instrument& instrument) const { return series.empty() || instrument.series == series; }
};

// The terminal's two watches; the first one is shown at the start.
const std::vector<WatchList>& watchLists();

}  // namespace terminal
