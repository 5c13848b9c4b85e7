// The stored texts of market watches: the profile of a named watch, the user columns that all watches share, and the
// exported watch. docs/formats.md shows them byte by byte.
//
// Parsing never fails: it gives what the text holds, and WatchColumns.h decides whether that fits. Numbers are read by
// their digits, a field that is no number is 0. Empty fields do not exist for a reader. The byte 0xA7, which parts the
// fields of a user column, cannot occur in a name or a formula.
#pragma once

#include "quor/foundation/core/ColumnRecords.h"

#include <vector>

namespace quor::watch {

// Built-in columns of every market watch; the first user column has this number.
inline constexpr int kMarketWatchColumns = 112;
inline constexpr char kWatchDelimiter = '\xA7';

struct WatchColumn {
    int columnIndex = 0;
    int place = -1;               // -1 hidden
    int width = 0;                // pixels; 0: the record's own
    CString name;                 // not in a profile
    CString idForm, displayForm;  // user columns only
};

// From index 112 on and with a formula. Numbers between user columns that none has read as records without one: they
// are no columns of the user's and are not written.
bool isWatchUserColumn(const WatchColumn& column);

// "0,2,80,1,-1,0": number, place and width of each column. A triple that the end of the text cuts is dropped.
std::vector<WatchColumn> parseWatchProfile(const CString& text);
CString formatWatchProfile(const std::vector<WatchColumn>& columns);

// Number, name, id form, display form of each user column; others are passed over. A record that the end of the text
// cuts is dropped.
std::vector<WatchColumn> parseWatchUserColumns(const CString& text);
CString formatWatchUserColumns(const std::vector<WatchColumn>& columns);

// Built-in columns with number, place, width and name, parted by commas; ",CUSTOMCOLUMN,"; then user columns with
// number, place, width, name, id form, display form.
struct WatchExport {
    std::vector<WatchColumn> builtIn;
    std::vector<WatchColumn> user;
    bool hasMarker = false;  // the text names all columns of its watch
};

WatchExport parseWatchExport(const CString& text);
// Built-in columns are those below kMarketWatchColumns. The marker is always written.
CString formatWatchExport(const std::vector<WatchColumn>& columns);

}  // namespace quor::watch
