// Fit to Window on a visible grid of 100,000 rows and 20 columns, until the window has painted.
// Every column must then have its share of the window.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/WorkloadGrid.h"

#include <cstdio>
#include <vector>

namespace {

constexpr unsigned kRowCount = 100'000;
constexpr int kRepeats = 9;
constexpr double kLongEnough = 3000;  // ms: no further repeat after that
constexpr int kColumnWidth = 90;      // before the command, so that it has work to do

void setWidths(WorkloadGrid& grid) {
    const int columns = grid.GetHeaderCtrl()->GetItemCount();
    for (int place = 0; place < columns; ++place) grid.SetColumnWidth(place, kColumnWidth);
    pumpMessages();
    grid.UpdateWindow();
}

void checkWidths(WorkloadGrid& grid) {
    CRect client;
    grid.GetClientRect(&client);
    const int columns = grid.GetHeaderCtrl()->GetItemCount();
    for (int place = 0; place < columns; ++place)
        check(grid.GetColumnWidth(place) == client.Width() / columns, "a column does not have its share of the window");
}

}  // namespace

void benchFit(Figures& figures) {
    std::vector<WorkloadRow> rows;
    rows.reserve(kRowCount);
    workload::makeRows(kRowCount, [&rows](std::uint32_t, const workload::Row& raw) { rows.emplace_back(raw); });
    WorkloadWindow window;
    const std::unique_ptr<WorkloadGrid> grid = window.makeGrid();
    for (WorkloadRow& row : rows) grid->AddRow(&row, false);
    processEndofBatchUpdates();
    grid->flushNow();
    std::vector<double> fits, paints;
    double total = 0;
    for (int i = 0; i < kRepeats && total < kLongEnough; ++i) {
        setWidths(*grid);
        grid->paints = 0;
        const double start = microseconds();
        grid->ColFitToWindow();
        const double fitted = microseconds();
        grid->UpdateWindow();
        total += fits.emplace_back((microseconds() - start) / 1000);
        paints.push_back((microseconds() - fitted) / 1000);
        check(grid->paints > 0, "the fitted columns were not painted");
        checkWidths(*grid);
    }
    grid->DestroyWindow();
    char note[64];
    std::snprintf(note, sizeof note, "20 columns; %.2f ms of it are the paint", median(paints));
    figures.push_back({"fit_window_ms_100k", median(fits), "ms", note, 60, 20});
}
