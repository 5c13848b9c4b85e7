// The stored texts of a column set: the profile of a list, its exchange form, the factory's columns. docs/formats.md
// shows each byte by byte.
//
// Parsing never fails and checks no range: it gives what the text holds, and a plan decides whether that fits (it must
// see an index that does not). Numbers are read by their digits, a field that is no number is 0. Empty fields do not
// exist for a reader: it skips them, and the next field takes their place. Nothing is escaped, so a comma or a '#' in a
// name breaks its own record.
#pragma once

#include "quor/list/core/ProfileEntry.h"

#include <vector>

namespace quor::list {

// No text may ask for more columns or places than this.
inline constexpr int kMaxColumns = 4096;

// Whether an entry keeps to the range that stored texts may use: index 0..4095, place -1..4095.
bool fitsColumnRange(int columnIndex, int place);

// The profile of one list: triples, and the user part behind those at or beyond `builtInCount`. The reading ends at the
// end of the text inside an entry, which is dropped if a number is missing, and given without a user part if only that
// is cut.
std::vector<ProfileEntry> parseColumnProfile(const CString& text, int builtInCount);
// Writes `index`, `place` and `width` of each entry and the user part of user columns; other names are not written.
CString formatColumnProfile(const std::vector<ProfileEntry>& entries);

// The user part alone, the comma in front of it included.
void appendUserPart(CString& text, const ProfileEntry& entry);

// The exchange form names every column. Built-in entries carry their heading in `name` and stand before the marker, the
// user columns behind it.
struct ExchangeProfile {
    std::vector<ProfileEntry> builtIn;
    std::vector<ProfileEntry> user;
    bool hasMarker = false;  // the text speaks of user columns, so it names all columns of its list
};

ExchangeProfile parseExchangeProfile(const CString& text);
// In the order of `entries`; the marker stands before the first user column. Ends with a comma.
CString formatExchangeProfile(const std::vector<ProfileEntry>& entries);

// What the factory wants shown, by place. A number missing at the end of the text is the one before it; a place that
// the text skips shows column 0. Both are empty if the text holds no place or does not keep to the range.
struct FactoryColumns {
    std::vector<int> columns;
    std::vector<int> widths;
};

FactoryColumns parseFactoryProfile(const CString& text);

}  // namespace quor::list
