// 50,000 values chosen in the filter's pop-up: how long it takes to make them one filter once their texts are read. The
// same values are then chosen in the pop-up itself, for a grid and without a clock, and both filters are compared with
// the rule.
//
// The values are prices, of which many stand inside others: those are left out.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/WorkloadGrid.h"
#include "quor/grid/FilterText.h"
#include "quor/grid/core/FilterValues.h"

#include <cstdio>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

constexpr int kValueCount = 50'000;
constexpr int kRepeats = 7;

void fill(CListBox& values) {
    values.SetRedraw(FALSE);
    values.ResetContent();
    char text[16];
    for (int cents = 0; cents < kValueCount; ++cents) {
        std::snprintf(text, sizeof text, "%d.%02d", cents / 100, cents % 100);
        values.AddString(text);
    }
    values.SelItemRange(TRUE, 0, kValueCount - 1);
    check(values.GetSelCount() == kValueCount, "the values could not be chosen");
}

std::vector<CString> readValues(CListBox& values) {
    std::vector<int> chosen(static_cast<std::size_t>(values.GetSelCount()));
    values.GetSelItems(static_cast<int>(chosen.size()), chosen.data());
    std::vector<CString> texts(chosen.size());
    for (std::size_t i = 0; i < chosen.size(); ++i) values.GetText(chosen[i], texts[i]);
    return texts;
}

// All have a point and two decimals, so one stands inside the filter so far if it ends a value that is in it.
std::string expectedFilter(const std::vector<CString>& values) {
    std::unordered_set<std::string> ends;
    std::string filter;
    for (const CString& value : values) {
        const std::string text = value.GetString();
        if (ends.count(text) != 0) continue;
        if (!filter.empty()) filter += '~';
        filter += text;
        for (std::size_t from = 0; from < text.size(); ++from) ends.insert(text.substr(from));
    }
    return filter;
}

// The filter that the grid's header gets; its bar has to be there.
std::string pickedFilter(CFilterText& popup, WorkloadGrid& grid) {
    grid.PutListFilter();
    popup.SetFilterlist(&grid, kWorkloadNumberColumn);
    popup.OnLbnDblclkFilterlist();
    CString filter;
    grid.GetHeaderText(kWorkloadNumberColumn, filter);
    return filter.GetString();
}

}  // namespace

void benchFilterPick(Figures& figures) {
    WorkloadWindow window;
    const std::unique_ptr<WorkloadGrid> grid = window.makeGrid();
    CFilterText* const popup = CFilterText::shared(grid.get());
    check(popup != nullptr, "the pop-up could not be made");
    fill(popup->values());
    const std::vector<CString> texts = readValues(popup->values());
    std::vector<double> joins;
    std::string joined;
    for (int i = 0; i < kRepeats; ++i) {
        auto next = texts.begin();
        const double start = microseconds();
        joined = quor::grid::joinFilterValues([&](CString& value) {
            if (next == texts.end()) return false;
            value = *next++;
            return true;
        });
        joins.push_back((microseconds() - start) / 1000);
    }
    const std::string expected = expectedFilter(texts);
    check(joined == expected, "the joined values became another filter");
    check(pickedFilter(*popup, *grid) == expected, "the chosen values became another filter");
    grid->DestroyWindow();
    char note[64];
    std::snprintf(note, sizeof note, "%zu bytes of filter", expected.size());
    figures.push_back({"filter_pick_ms_50k", median(joins), "ms", note, 100, 25});
}
