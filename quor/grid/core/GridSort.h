// The grid's own sort: puts the rows of one run in order by their keys.
//
// Two rows compare by their keys, and then by map index, so that no two rows are ever equal: with a rising order the
// row with the greater map index, the newer one, stands first among equals, with a falling order the older one.
#pragma once

#include "quor/grid/core/SortKeys.h"

namespace quor::grid {

// Compares two dates as texts; the sign follows the order given (CompareDateTime of the tools library).
using DateComparison = int (*)(char* first, char* second, int order);

struct SortRule {
    int order = -1;        // below 0 rising, above 0 falling; 0 leaves the rows as they came
    bool negated = false;  // the keys compare the other way round, the map indices do not
    DateComparison compareDates = nullptr;
};

// The comparison of two rows of the run, by position: below 0 when the first stands before the second. For mixed texts
// (naturalCompare) and dates it may contradict itself from pair to pair.
int compareRows(const SortKeys& keys, const SortRule& rule, std::size_t first, std::size_t second);

// The map indices of the run in sorted order: always every one of them once, whatever the comparison says. Where the
// comparison is an order, the result is the one that compareRows makes.
std::vector<std::int32_t> sortedMapIndices(const SortKeys& keys, const SortRule& rule);

}  // namespace quor::grid
