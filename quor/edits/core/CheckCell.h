// A cell of the check list without its window: what it holds, as the one number that the control keeps with an item's
// image, and where its parts lie.
#pragma once

#include "quor/platform/Base.h"

namespace quor::edits {

inline constexpr int kNoCheck = -1, kUnchecked = 0, kChecked = 1;
// Of a whole column: some are, some are not.
inline constexpr int kMixed = 2;

struct CheckCell {
    int check = kNoCheck;
    bool colour = false;  // a colour box, empty or filled
    bool enabled = true;

    bool operator==(const CheckCell&) const = default;
};

// 0 is a plain cell of text: what a fresh item has.
int packCell(const CheckCell& cell);
// Any number gives a cell.
CheckCell unpackCell(int number);

// What one click makes of a column whose boxes say this: all off where all are on, else all on.
constexpr int toggled(int check) { return check == kChecked ? kUnchecked : kChecked; }
// What a column says whose boxes so far said `column`, one more box asked; kNoCheck on either side counts for nothing.
int joined(int column, int check);

// The parts of a cell, from left to right: check box, then colour box or text. A part that is not there is empty; all
// stay inside the cell.
struct CellPlaces {
    RECT check{};
    RECT colour{};
    RECT text{};
};
struct CellMetrics {
    int margin = 0;   // at the cell's sides and between the parts
    int boxSize = 0;  // of a check box; a lower cell has a smaller one
};
CellPlaces cellPlaces(const CheckCell& cell, const RECT& area, const CellMetrics& metrics);

}  // namespace quor::edits
