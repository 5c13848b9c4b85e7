#include "quor/grid/core/FilterTokens.h"
#include "tests/core/grid/NaiveFilter.h"
#include "tests/fuzz/Fuzz.h"

#include <cstdio>
#include <cstdlib>

using namespace quor::grid;

// The first line is the filter; every other line is a cell.
void fuzzFilter(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const auto line = [&rest] {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const CString text(rest.data(), static_cast<int>(end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        return text;
    };
    const CString filter(line().GetString());  // up to a NUL
    const FilterTokens compiled[] = {FilterTokens(filter.GetString(), false), FilterTokens(filter.GetString(), true)};
    do {
        const CString cell = line();
        for (const bool exact : {false, true}) {
            if (compiled[exact].passes(cell) == naive_filter::passes(cell, filter, exact)) continue;
            std::fprintf(stderr, "filter '%s', cell '%s', exact %d: compiled and literal reading differ\n",
                         filter.GetString(), cell.GetString(), exact);
            std::abort();
        }
    } while (!rest.empty());
}
