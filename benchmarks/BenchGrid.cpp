// The live grid under workload W: the rows and the streams of changes of peers/common/workload.h, as every peer runs
// them. A tick is three cells of one random row rewritten by the host and then UpdateRow; batches of 1,000; messages
// are pumped when a flush is due; the last flush and its paint are part of the time.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/PrivateBytes.h"
#include "benchmarks/WorkloadGrid.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace {

constexpr int kBatchTicks = 1000;
constexpr long kTicksPerRepeat = 1'000'000;
constexpr int kRepeats = 5;
constexpr int kColumnCount = 20;

// The rows stand side by side, as every peer keeps them; what a churn adds comes into blocks of its own.
using Rows = std::vector<WorkloadRow>;

// What a cell of a double has to show.
void cents(double value, char (&buffer)[40]) {
    *std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 2).ptr = 0;
}

// A frame with one grid at a time in it.
class Bench {
public:
    ~Bench() { closeGrid(); }

    // A new grid with `count` rows of the workload.
    WorkloadGrid& open(unsigned count) {
        closeGrid();
        grid = m_window.makeGrid();
        fill(count);
        settle();
        return *grid;
    }

    void closeGrid() {
        if (grid) grid->DestroyWindow();
        grid.reset();
        live.clear();
        added.clear();
        Rows().swap(rows);
    }

    void settle() {
        pumpMessages();
        grid->flushNow();
        pumpMessages();
    }

    // Rows of the workload that no grid knows yet.
    void makeRows(unsigned count) {
        rows.reserve(count);
        workload::makeRows(count, [this](std::uint32_t, const workload::Row& raw) { rows.emplace_back(raw); });
        for (WorkloadRow& row : rows) live.push_back(&row);
    }

    std::unique_ptr<WorkloadGrid> grid;
    Rows rows;
    std::deque<WorkloadRow> added;
    std::vector<WorkloadRow*> live;  // what the grid shows, in any order

private:
    void fill(unsigned count) {
        makeRows(count);
        for (WorkloadRow& row : rows) grid->AddRow(&row, false);
        processEndofBatchUpdates();
        check(grid->GetDisplayCount() == static_cast<int>(count), "rows are missing after the fill");
    }

    WorkloadWindow m_window;
};

// One run of ticks; the time in ns a tick. Without the grid it is the host's own part: the tick made and written.
double runTicks(Bench& bench, std::uint32_t seed, bool tellGrid = true) {
    workload::Random random(seed);
    CFilterListCtrl& grid = *bench.grid;
    const auto count = static_cast<std::uint32_t>(bench.rows.size());
    const double start = microseconds();
    double lastPump = start;
    for (long done = 0; done < kTicksPerRepeat; done += kBatchTicks) {
        for (int i = 0; i < kBatchTicks; ++i) {
            const workload::Tick tick = workload::nextTick(random, count);
            WorkloadRow& row = bench.rows[tick.row];
            row.raw.d[0] = tick.d0;
            row.raw.d[5] = tick.d5;
            row.raw.n[0] = tick.n0;
            if (tellGrid) grid.UpdateRow(&row);
        }
        if (tellGrid) processEndofBatchUpdates();
        const double now = microseconds();
        if (now - lastPump < 200'000) continue;
        pumpMessages();
        lastPump = now;
    }
    if (tellGrid) bench.grid->flushNow();
    return (microseconds() - start) * 1000 / kTicksPerRepeat;
}

// The same changes applied to bare records: what the rows must hold afterwards.
void checkTicks(const Bench& bench, std::uint32_t seeds, int runs) {
    const auto count = static_cast<std::uint32_t>(bench.rows.size());
    std::vector<std::pair<double, int>> expected(count, {-1.0, -1});
    for (int run = 0; run < runs; ++run) {
        workload::Random random(seeds + static_cast<std::uint32_t>(run));
        for (long i = 0; i < kTicksPerRepeat; ++i) {
            const workload::Tick tick = workload::nextTick(random, count);
            expected[tick.row] = {tick.d0, tick.n0};
        }
    }
    char buffer[40];
    for (std::uint32_t i = 0; i < count; ++i) {
        if (expected[i].second < 0) continue;
        check(bench.rows[i].raw.n[0] == expected[i].second, "a row lost a tick");
        if (i % 997 != 0) continue;  // and some through the grid's own answer
        cents(expected[i].first, buffer);
        check(bench.grid->GetItemText(static_cast<int>(i), 2) == buffer, "the grid shows another text");
    }
}

void benchTicks(Bench& bench, Figures& figures) {
    static const struct {
        unsigned rows;
        const char* key;
        double must, goal;
    } sizes[] = {{10'000, "w1_tick_ns_10k", 60, 25},
                 {100'000, "w1_tick_ns_100k", 80, 40},
                 {1'000'000, "w1_tick_ns_1m", 200, 90}};
    for (const auto& size : sizes) {
        WorkloadGrid& grid = bench.open(size.rows);
        std::vector<double> times, withoutGrid;
        for (int i = 0; i < kRepeats; ++i)
            withoutGrid.push_back(
                runTicks(bench, workload::operationSeed + kRepeats + static_cast<unsigned>(i), false));
        grid.paints = 0;
        for (int i = 0; i < kRepeats; ++i)
            times.push_back(runTicks(bench, workload::operationSeed + static_cast<unsigned>(i)));
        check(grid.paints >= kRepeats, "a run of ticks did not end with a paint");
        checkTicks(bench, workload::operationSeed, kRepeats);
        char note[120];
        std::snprintf(note, sizeof note, "the host's part %.1f ns; %.1f M ticks/s, %d paints in %d runs",
                      median(withoutGrid), 1000 / median(times), grid.paints, kRepeats);
        figures.push_back({size.key, median(times), "ns", note, size.must, size.goal});
    }
}

struct ChurnTimes {
    double right = 0;    // count and selection right
    double painted = 0;  // and on screen
};

std::set<const CFilterListBaseData*> selectedRows(CFilterListCtrl& grid) {
    std::set<const CFilterListBaseData*> rows;
    for (int i = -1; (i = grid.GetNextItem(i, LVNI_SELECTED)) != -1;)
        rows.insert(reinterpret_cast<const CFilterListBaseData*>(grid.GetItemData(i)));
    return rows;
}

// 10,000 random rows leave, 10,000 new ones come, in one batch; 100 rows are selected before.
ChurnTimes runChurn(Bench& bench, std::uint32_t seed) {
    CFilterListCtrl& grid = *bench.grid;
    workload::Random random(seed);
    const auto count = static_cast<std::uint32_t>(bench.live.size());
    grid.SetItemState(-1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    for (const std::uint32_t row : workload::selectedRows(count))
        grid.SetItemState(static_cast<int>(row), LVIS_SELECTED, LVIS_SELECTED);
    std::set<const CFilterListBaseData*> expected = selectedRows(grid);
    check(expected.size() == 100, "100 rows could not be selected");
    const workload::Churn churn = workload::makeChurn(count, random);
    std::vector<WorkloadRow*> coming, leaving;
    for (const workload::Row& raw : churn.coming) coming.push_back(&bench.added.emplace_back(raw));
    for (const std::uint32_t row : churn.leaving) {
        leaving.push_back(std::exchange(bench.live[row], nullptr));
        expected.erase(leaving.back());
    }
    std::erase(bench.live, nullptr);
    bench.settle();
    ChurnTimes times;
    const double start = microseconds();
    for (WorkloadRow* row : leaving) grid.DeleteRow(row, false);
    for (WorkloadRow* row : coming) grid.AddRow(row, false);
    processEndofBatchUpdates();
    times.right = (microseconds() - start) / 1000;
    bench.grid->flushNow();
    times.painted = (microseconds() - start) / 1000;
    bench.live.insert(bench.live.end(), coming.begin(), coming.end());
    check(grid.GetDisplayCount() == static_cast<int>(bench.live.size()), "the count is wrong after the churn");
    check(static_cast<int>(::SendMessage(grid.m_hWnd, LVM_GETITEMCOUNT, 0, 0)) == grid.GetDisplayCount(),
          "the native count is wrong after the churn");
    check(selectedRows(grid) == expected, "the selection is wrong after the churn");
    return times;
}

void benchChurn(Bench& bench, Figures& figures) {
    bench.open(100'000);
    std::vector<double> right, painted;
    runChurn(bench, workload::operationSeed + 99);  // warm
    for (int i = 0; i < kRepeats; ++i) {
        const ChurnTimes times = runChurn(bench, workload::operationSeed + static_cast<unsigned>(i));
        right.push_back(times.right);
        painted.push_back(times.painted);
    }
    char note[80];
    std::snprintf(note, sizeof note, "10k adds + 10k deletes, 100 selected; with repaint %.2f ms", median(painted));
    figures.push_back({"w4_churn_ms_100k", median(right), "ms", note, 12, 6.5});
}

// What the grid adds to a plain row: its own allocations and the part of the row that is CFilterListBaseData.
void benchBytes(Bench& bench, Figures& figures) {
    constexpr unsigned kCount = 1'000'000;
    bench.open(0);
    bench.makeRows(kCount);
    const long long before = privateBytes();
    for (WorkloadRow& row : bench.rows) bench.grid->AddRow(&row, false);
    processEndofBatchUpdates();
    const double inside = static_cast<double>(sizeof(WorkloadRow)) - static_cast<double>(sizeof(workload::Row));
    const double allocated = static_cast<double>(privateBytes() - before) / kCount;
    check(bench.grid->GetDisplayCount() == static_cast<int>(kCount), "rows are missing in the memory run");
    check(allocated >= sizeof(void*), "the process seems to have no room for the store");
    char note[80];
    std::snprintf(note, sizeof note, "%.1f allocated by the grid + %.0f inside the row", allocated, inside);
    figures.push_back({"w5_bytes_per_row_1m", allocated + inside, "B/row", note, 100, 72});
}

void benchRepaint(Bench& bench, Figures& figures) {
    WorkloadGrid& grid = bench.open(100'000);
    std::vector<double> times;
    for (int i = 0; i < 4 * kRepeats; ++i) {
        grid.paints = 0;
        const double start = microseconds();
        grid.Invalidate(FALSE);
        grid.UpdateWindow();
        times.push_back((microseconds() - start) / 1000);
        check(grid.paints == 1, "a repaint did not paint");
    }
    char note[80];
    std::snprintf(note, sizeof note, "%d rows x %d columns by DrawItem", grid.GetCountPerPage(), kColumnCount);
    figures.push_back({"repaint_ms_43x20", median(times), "ms", note});
}

}  // namespace

void benchGrid(Figures& figures) {
    Bench bench;
    benchTicks(bench, figures);
    benchChurn(bench, figures);
    benchBytes(bench, figures);
    benchRepaint(bench, figures);
}
