// The levels of a sort by several columns, as a user puts them together one choice at a time. No window.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace terminal {

struct SortLevel {
    std::string heading;
    int order = -1;  // -1 rising, 1 falling
    bool operator==(const SortLevel&) const = default;
};
using SortLevels = std::vector<SortLevel>;  // first level first; each column once

// As many as the terminal offers; a stored text may have more.
inline constexpr std::size_t kOfferedSortLevels = 3;

// Gives a level a column and keeps its order. A level behind the last one is added as the next, rising. A column that
// another level has changes place with this level's; without one here, it leaves that level.
void chooseColumn(SortLevels& levels, std::size_t level, const std::string& heading);
// Nothing for a level that there is not.
void chooseOrder(SortLevels& levels, std::size_t level, int order);
// The levels behind it move up.
void removeLevel(SortLevels& levels, std::size_t level);

}  // namespace terminal
