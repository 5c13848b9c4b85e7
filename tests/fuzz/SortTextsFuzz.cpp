#include "quor/list/core/SortTexts.h"
#include "tests/fuzz/Fuzz.h"

using namespace quor::list;

namespace {

bool isPlain(const CString& heading) {
    return heading.FindOneOf(",#") < 0 && heading.Find("->") < 0 && !heading.IsEmpty();
}

void checkLock(const CString& text) {
    const SortLock lock = parseSortLock(text);
    if (lock.locked) require(lock.columnIndex <= 4095, "a lock on a column that no list can have");
    const SortLock again = parseSortLock(formatSortLock(lock));
    require(again.locked == lock.locked, "a lock does not come back");
    if (lock.locked)
        require(again.columnIndex == lock.columnIndex && again.order == lock.order, "a lock comes back as another");
}

void checkLevels(const CString& text) {
    const SortLevelsText read = parseSortLevels(text);
    for (const SortLevelText& level : read.levels)
        if (!isPlain(level.heading)) return;
    if (read.levels.empty()) return;
    const SortLevelsText again = parseSortLevels(formatSortLevels(read.levels, read.active));
    require(again.hasFlag && again.active == read.active, "the active flag does not come back");
    require(again.levels.size() == read.levels.size(), "levels are lost");
    for (std::size_t i = 0; i < read.levels.size(); ++i)
        require(again.levels[i].heading == read.levels[i].heading && again.levels[i].order == read.levels[i].order,
                "a level comes back as another");
}

}  // namespace

void fuzzSortTexts(const std::uint8_t* data, std::size_t size) {
    const CString text = textOf(data, size);
    checkLock(text);
    checkLevels(text);
}
