// Natural order of texts: runs of digits count as numbers, so that "a9" stands before "a10".
#pragma once

#include "quor/platform/Base.h"

namespace quor::list {

// Compares two texts the way mixed columns sort: -1, 0 or 1. Null counts as empty.
//
// Texts are walked together, byte by byte. A digit stands before any other character; other characters compare as
// signed bytes; runs of digits compare by their value, and of two runs of one value the longer, the one with more
// leading zeros, stands first. A value that saturates is 9223372036854775807.
//
// `mode` 0 compares as it stands, 1 folds A to Z. Any other gives 0: all texts equal.
//
// The order is not transitive: if either run's value is 2147483647, the two first digits alone decide, and the
// comparison ends there even if they are equal. So "2147483647" equals "2" and "20", though "2" stands before "20".
// Sort by it only with a routine that bears this (see MergeSort.h).
QUOR_CONTROLS_API int naturalCompare(const char* x, const char* y, int mode = 0);

}  // namespace quor::list
