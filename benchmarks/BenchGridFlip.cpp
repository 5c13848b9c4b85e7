// Ticks under a filter that half of them flip: workload W1b on a visible grid, as a host drives it. The filter `>500`
// stands on the column of the first of the three cells that a tick rewrites, and is tested on the text that the host's
// callback gives. The clock covers ticks, batch ends, flushes and their paints, at most one every 200 ms.
//
// Every answer of a grid has to be exact. Runs without a clock, before and after the timed ones, compare the result of
// each tick, and every so often the places of rows, with a plain array that is moved by the rule; at the end they
// compare the whole display. A timed run is checked for the rows that it must and must not show.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/WorkloadGrid.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int kBatchTicks = 1000;
constexpr long kTicksPerRepeat = 1'000'000;
constexpr unsigned kRepeats = 5;
constexpr int kTicksPerSpot = 37;
constexpr double kLimit = 500;
constexpr double kFlushPeriod = 200'000;  // us

class FlipGrid {
public:
    FlipGrid(WorkloadWindow& window, unsigned count) : m_grid(window.makeGrid()) {
        m_rows.reserve(count);
        workload::makeRows(count, [this](std::uint32_t, const workload::Row& raw) { m_rows.emplace_back(raw); });
        for (WorkloadRow& row : m_rows) m_grid->AddRow(&row, false);
        processEndofBatchUpdates();
        CString filter = ">500";
        m_grid->SetVisibleColumnFilter(kWorkloadNumberColumn, filter, 0);
        if (m_grid->GetFilterCount() == 0) m_grid->AddToFilteredCols(kWorkloadNumberColumn, filter);
        m_grid->PopulateList();
        pumpMessages();
        m_grid->flushNow();
        checkRows();
    }
    FlipGrid(const FlipGrid&) = delete;
    FlipGrid& operator=(const FlipGrid&) = delete;
    ~FlipGrid() { m_grid->DestroyWindow(); }

    // ns a tick.
    double run(std::uint32_t seed) {
        workload::Random random(seed);
        m_flips = 0;
        m_grid->paints = 0;
        const double start = microseconds();
        double lastPump = start;
        for (long done = 0; done < kTicksPerRepeat; done += kBatchTicks) {
            for (int i = 0; i < kBatchTicks; ++i) m_flips += update(tick(random)) != 0;
            processEndofBatchUpdates();
            const double now = microseconds();
            if (now - lastPump < kFlushPeriod) continue;
            pumpMessages();
            lastPump = now;
        }
        m_grid->flushNow();
        const double taken = microseconds() - start;
        check(m_grid->paints > 0, "a run of ticks did not end with a paint");
        check(flipShare() > 0.45 && flipShare() < 0.55, "half of the ticks should flip their row");
        checkRows();
        return taken * 1000 / kTicksPerRepeat;
    }

    double flipShare() const { return static_cast<double>(m_flips) / kTicksPerRepeat; }

    void checkedRun(std::uint32_t seed, int ticks) {
        std::vector<int> display(static_cast<std::size_t>(m_grid->GetDisplayCount()));
        for (std::size_t slot = 0; slot < display.size(); ++slot)
            display[slot] = m_grid->GetMapIndexFromDisplayIndex(static_cast<int>(slot));
        workload::Random random(seed);
        for (int i = 0; i < ticks; ++i) {
            const std::uint32_t row = tick(random);
            const int expected = naiveUpdate(display, static_cast<int>(row));
            check(update(row) == expected, "a tick gave another result");
            check(m_grid->GetDisplayCount() == static_cast<int>(display.size()), "the count is wrong after a tick");
            if (i % kBatchTicks == kBatchTicks - 1) processEndofBatchUpdates();
            if (i % kTicksPerSpot != 0) continue;
            checkPlace(display, row);
            checkPlace(display, static_cast<std::uint32_t>(random.below(count())));
        }
        for (std::size_t slot = 0; slot < display.size(); ++slot)
            check(m_grid->GetMapIndexFromDisplayIndex(static_cast<int>(slot)) == display[slot],
                  "the display stands in another order");
        pumpMessages();
        m_grid->flushNow();
        checkRows();
    }

private:
    std::uint32_t count() const { return static_cast<std::uint32_t>(m_rows.size()); }
    bool passes(std::uint32_t row) const { return m_rows[row].raw.d[0] > kLimit; }
    int update(std::uint32_t row) { return m_grid->UpdateRow(&m_rows[row]); }

    // The host rewrites three cells of a row.
    std::uint32_t tick(workload::Random& random) {
        const workload::Tick tick = workload::nextTick(random, count());
        workload::Row& raw = m_rows[tick.row].raw;
        raw.d[0] = tick.d0;
        raw.d[5] = tick.d5;
        raw.n[0] = tick.n0;
        return tick.row;
    }

    // The rule, told on an array of map indices: rows came in the order of m_rows.
    int naiveUpdate(std::vector<int>& display, int row) const {
        const auto at = std::find(display.begin(), display.end(), row);
        const bool shown = at != display.end();
        if (shown == passes(static_cast<std::uint32_t>(row))) return 0;
        if (shown) {
            display.erase(at);
            return -1;
        }
        const auto larger = std::find_if(display.rbegin(), display.rend(), [&](int value) { return value > row; });
        display.insert(larger == display.rend() ? display.end() : larger.base(), row);
        return 1;
    }

    void checkPlace(const std::vector<int>& display, std::uint32_t row) {
        const auto at = std::find(display.begin(), display.end(), static_cast<int>(row));
        int mapIndex, visual;
        CFilterListCtrl::getRowIndices(&m_rows[row], m_grid.get(), mapIndex, visual);
        check(mapIndex == static_cast<int>(row), "a row says another map index");
        check(visual == (at == display.end() ? -1 : static_cast<int>(at - display.begin())), "a row says another slot");
    }

    // Every row that passes stands where it says, no other is shown, and the control knows how many these are.
    void checkRows() {
        int shown = 0;
        for (std::uint32_t row = 0; row < count(); ++row) {
            int mapIndex, visual;
            CFilterListCtrl::getRowIndices(&m_rows[row], m_grid.get(), mapIndex, visual);
            check((visual != -1) == passes(row), "a row is shown that does not pass, or the reverse");
            if (visual == -1) continue;
            ++shown;
            check(m_grid->GetItemData(visual) ==
                      reinterpret_cast<DWORD_PTR>(static_cast<CFilterListBaseData*>(&m_rows[row])),
                  "another row stands where a row says");
        }
        check(shown == m_grid->GetDisplayCount(), "the display holds a row too many");
        check(static_cast<int>(m_grid->SendMessage(LVM_GETITEMCOUNT)) == shown, "the native count is wrong");
    }

    std::vector<WorkloadRow> m_rows;  // outlive the grid
    std::unique_ptr<WorkloadGrid> m_grid;
    long m_flips = 0;
};

}  // namespace

void benchGridFlip(Figures& figures) {
    static const struct {
        unsigned rows;
        int checkedTicks;
        const char* key;
        double must, goal;
    } sizes[] = {{10'000, 50'000, "w1b_flip_ns_10k", 800, 125},
                 {100'000, 5'000, "w1b_flip_ns_100k", 1500, 170},
                 {1'000'000, 1'000, "w1b_flip_ns_1m", 5000, 400}};
    WorkloadWindow window;
    for (const auto& size : sizes) {
        FlipGrid bench(window, size.rows);
        bench.checkedRun(workload::operationSeed + 90, size.checkedTicks);
        std::vector<double> times;
        for (unsigned i = 0; i < kRepeats; ++i) times.push_back(bench.run(workload::operationSeed + i));
        bench.checkedRun(workload::operationSeed + 91, size.checkedTicks);
        char note[96];
        std::snprintf(note, sizeof note, "%.2f M ticks/s, visible grid, %.1f %% of the ticks flip, text callback",
                      1000 / median(times), bench.flipShare() * 100);
        figures.push_back({size.key, median(times), "ns", note, size.must, size.goal});
    }
}
