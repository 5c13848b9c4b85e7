// One column of a stored profile: what a text says of it, before anybody decided whether that fits the list
// (ColumnSetPlan does).
#pragma once

#include "quor/foundation/core/ColumnRecords.h"

namespace quor::list {

// In the order of the text.
struct ProfileEntry {
    int columnIndex = 0;
    int place = -1;  // -1 hidden
    int width = 0;   // pixels
    // The user part, which only entries at or beyond the built-in columns carry.
    bool isUserColumn = false;
    CString name, expression, toolTip;
};

}  // namespace quor::list
