// What a user waits for after a command: columns fitted on a visible grid of 100,000 rows and 20 columns, and the
// filter text of 50,000 values chosen in the pop-up, their texts already read. The widths and the text are checked, the
// text against the plain loop.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/WorkloadGrid.h"
#include "src/grid/core/FilterValues.h"
#include "src/list/ListCommands.h"

#include <algorithm>
#include <cstdio>
#include <random>

namespace {

constexpr unsigned kRows = 100'000;
constexpr std::size_t kValues = 50'000;
constexpr int kRepeats = 11;

double fit(WorkloadGrid& grid, int command) {
    std::vector<double> times;
    for (int i = 0; i < kRepeats; ++i) {
        const double start = microseconds();
        grid.AutoSizeColumns(command);
        times.push_back((microseconds() - start) / 1e3);
        grid.UpdateWindow();
    }
    return median(times);
}

void benchFits(Figures& figures) {
    std::vector<WorkloadRow> rows;
    rows.reserve(kRows);
    WorkloadWindow window;
    const std::unique_ptr<WorkloadGrid> grid = window.makeGrid();
    workload::makeRows(kRows, [&](std::uint32_t, const workload::Row& raw) { rows.emplace_back(raw); });
    for (WorkloadRow& row : rows) grid->AddRow(&row, false);
    processEndofBatchUpdates();
    pumpMessages();
    const double header = fit(*grid, kFitColumnsToHeader), data = fit(*grid, kFitColumnsToData);
    check(grid->GetColumnWidth(0) == std::max(50, grid->WidestCellInView(0)), "a column does not fit its cells");
    Figure figure{"fit_window_ms_100k", fit(*grid, kFitColumnsToWindow), "ms", "", 60, 20};
    CRect client;
    grid->GetClientRect(&client);
    const int columns = grid->GetHeaderCtrl()->GetItemCount();
    check(grid->GetColumnWidth(columns - 1) == client.Width() / columns, "a column does not have its share");
    char note[80];
    std::snprintf(note, sizeof note, "to the headings %.1f ms, to the data %.1f ms", header, data);
    figure.note = note;
    figures.push_back(figure);
}

// Prices and symbols, sorted as text: some stand inside others.
std::vector<CString> chosenValues() {
    std::mt19937 random(1);
    std::vector<CString> values;
    for (std::size_t i = 0; i < kValues; ++i) {
        CString value;
        const auto number = static_cast<unsigned>(random() % 1'000'000);
        if (i % 2) {
            value.Format("%u.%02u", number / 100, number % 100);
        } else {
            value.Format("SYM%u", number);
        }
        values.push_back(value);
    }
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
}

std::string plainJoin(const std::vector<CString>& values) {
    std::string text;
    for (const CString& value : values) {
        if (text.empty()) {
            text = value;
        } else if (text.find(value.GetString()) == std::string::npos) {
            text.append("~").append(value);
        }
    }
    return text;
}

void benchPopup(Figures& figures) {
    const std::vector<CString> values = chosenValues();
    std::string text;
    std::vector<double> times;
    for (int i = 0; i < kRepeats; ++i) {
        auto next = values.begin();
        const double start = microseconds();
        text = quor::grid::joinFilterValues([&](CString& value) {
            if (next == values.end()) return false;
            value = *next++;
            return true;
        });
        times.push_back((microseconds() - start) / 1e3);
    }
    const double start = microseconds();
    check(text == plainJoin(values), "the filter text is not that of the plain loop");
    char note[80];
    std::snprintf(note, sizeof note, "%u bytes; the plain loop takes %.0f ms", static_cast<unsigned>(text.size()),
                  (microseconds() - start) / 1e3);
    figures.push_back({"popup_join_ms_50k", median(times), "ms", note, 100, 25});
}

}  // namespace

void benchCommands(Figures& figures) {
    benchFits(figures);
    benchPopup(figures);
}
