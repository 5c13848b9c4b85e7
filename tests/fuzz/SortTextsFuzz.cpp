#include "quor/list/core/SortTexts.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>

using namespace quor::list;

// Compared by what is written again. Headings that hold a separator do not come back.
void fuzzSortTexts(const std::uint8_t* data, std::size_t size) {
    const CString text = textOf(data, size);
    const SortLock lock = parseSortLock(text);
    require(!lock.locked || lock.columnIndex <= 4095, "a lock on a column that no list can have");
    const CString written = formatSortLock(lock);
    require(formatSortLock(parseSortLock(written)) == written, "a lock comes back as another");

    const SortLevelsText read = parseSortLevels(text);
    const bool plain = std::ranges::all_of(read.levels, [](const SortLevelText& level) {
        return level.heading.FindOneOf(",#") < 0 && level.heading.Find("->") < 0 && !level.heading.IsEmpty();
    });
    if (!plain || read.levels.empty()) return;
    const CString levels = formatSortLevels(read.levels, read.active);
    const SortLevelsText again = parseSortLevels(levels);
    require(again.hasFlag && formatSortLevels(again.levels, again.active) == levels, "levels come back as others");
}
