// A stored column profile, split into its entries, and a seam: a list reads its profile from the host's store unless it
// was given another source.
#pragma once

#include <vector>

#include "src/foundation/core/ColumnRecords.h"

namespace quor::list {

// One entry of a stored profile, in the order of the text.
struct ProfileEntry {
    int columnIndex = 0;
    int place = -1;  // -1 hidden
    int width = 0;   // pixels
    // The user part, which only entries at or beyond the built-in columns carry.
    bool isUserColumn = false;
    CString name, expression, toolTip;
};

class ProfileSource {
public:
    virtual ~ProfileSource() = default;

    // Reads the column profile of a list. `builtInCount` is the number of columns that the list has before reading:
    // entries from that index on are user columns. False if nothing is stored; then `entries` is left alone. Entries
    // are not checked here: ColumnSetPlan decides whether they fit.
    virtual bool readColumnProfile(const CString& listName, int builtInCount, std::vector<ProfileEntry>& entries) = 0;
};

}  // namespace quor::list
