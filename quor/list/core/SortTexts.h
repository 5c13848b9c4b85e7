// The stored texts of a list's sort: the locked column and the levels of a multi-column sort.
#pragma once

#include "quor/foundation/core/ColumnRecords.h"

#include <vector>

namespace quor::list {

// --- Lock: "True,<columnIndex>,<order>", or "False,-1,0" while nothing is locked.

struct SortLock {
    bool locked = false;
    int columnIndex = -1;
    int order = 0;  // -1 rising, 1 falling
};

CString formatSortLock(const SortLock& lock);
// Empty fields are skipped. Locked only with "True", in this case of letters, and both numbers; a number that is none
// is 0. An index that no column array can reach (ColumnRecords' cap is 4095) leaves unlocked.
SortLock parseSortLock(const CString& text);

// --- Levels: "<heading>-><order>,<heading>-><order>#<1 if active, else 0>"; no level at all: an empty text.

struct SortLevelText {
    CString heading;
    int order = 0;
};

struct SortLevelsText {
    std::vector<SortLevelText> levels;
    bool hasFlag = false;  // without one, whether the sort is active stays as it was
    bool active = false;
};

// Headings are not escaped: one that holds ",", "#" or "->" does not come back.
CString formatSortLevels(const std::vector<SortLevelText>& levels, bool active);
// Empty fields are skipped, and so is a field without "->". Blanks around heading and order are dropped; an order that
// is no number is 0. A "#" in any field cuts it, and what follows the last is the flag: active if its number is 1.
SortLevelsText parseSortLevels(const CString& text);

}  // namespace quor::list
