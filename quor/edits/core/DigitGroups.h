// Thousands separators in the text of a number, for lists, bricks and price fields.
#pragma once

#include "quor/platform/Base.h"

namespace quor::edits {

// An integer's text with a comma before each group of three characters, counted from its end. Commas that stand there
// already are replaced; a sign in front belongs to no group. The text is not checked to be a number.
CString groupedWhole(CString whole);

// The same for the part before the last point; point and decimals stay as they are. Of several minus signs in front
// one is kept.
CString groupedNumber(const CString& number);

}  // namespace quor::edits
