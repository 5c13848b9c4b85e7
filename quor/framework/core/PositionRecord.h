// The stored place of a dialog: nine decimal numbers with commas between, "top,left,bottom,right" of the normal
// rectangle, the maximised and the minimised corner (x, y each), and the show command.
#pragma once

#include "quor/platform/Base.h"

namespace quor::framework {

// Show commands that a record may hold; any other counts as the first.
inline constexpr int kShowNormal = 1;
inline constexpr int kShowMinimized = 2;
inline constexpr int kShowMaximized = 3;

struct DialogPlacement {
    CRect normal;
    CPoint maximized;
    CPoint minimized;
    int showCmd = kShowNormal;
};

enum class RecordFault {
    none,
    badCharacter,  // neither digit nor comma, nor a "-" in front of a number
    tooShort,      // fewer than eight numbers
};

// Lays a record over the placement that a dialog has now. A sizable dialog takes all; any other keeps the size of its
// normal rectangle. Empty pieces vanish, "-" alone is 0, numbers beyond 32 bits saturate, what stands behind the ninth
// is ignored. Eight numbers do: the show command then stays as it was. A fault leaves the placement alone.
RecordFault applyPositionRecord(const CString& record, bool sizable, DialogPlacement& placement);

CString positionRecord(const DialogPlacement& placement);

}  // namespace quor::framework
