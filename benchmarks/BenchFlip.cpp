// Ticks under a filter that half of them flip: workload W1b of the peers, on the row store and without a window. Each
// tick rewrites three cells of a random row and tests it anew; the store answers with the rows to repaint, exactly, and
// the batch ends as the grid ends it. The test is `> 500` on the first of the ticking columns, as the host's
// number (the _typed figures) or read back from the text of two decimals that the grid shows.
#include "benchmarks/Bench.h"
#include "benchmarks/peers/common/workload.h"
#include "quor/grid/core/LiveRows.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>

using namespace quor::grid;

namespace {

constexpr int kBatchTicks = 1000;
constexpr long kTicksPerRepeat = 1'000'000;
constexpr unsigned kRepeats = 5;
constexpr double kLimit = 500;

struct FlipRow : public CFilterListBaseData {
    explicit FlipRow(const workload::Row& values) : raw(values) {}
    workload::Row raw;
};

const FlipRow& rowOf(RowData data) {
    return *static_cast<const FlipRow*>(reinterpret_cast<const CFilterListBaseData*>(data));
}

bool numberIsAbove(const void*, RowData data) { return rowOf(data).raw.d[0] > kLimit; }

bool textIsAbove(const void*, RowData data) {
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, rowOf(data).raw.d[0], std::chars_format::fixed, 2).ptr;
    double number = 0;
    std::from_chars(text, end, number);
    return number > kLimit;
}

void check(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

// A control of 43 rows a page that hears nothing.
class DeafControl : public RowPort {
public:
    RowLayout readLayout() override {
        RowLayout layout;
        layout.countPerPage = 43;
        layout.rowHeight = 20;
        layout.totalWidth = 1520;
        return layout;
    }
    bool isVisible() override { return true; }
    void tellCount(int) override {}
    bool fallingMatters(int) override { return false; }
    int selectionMark() override { return -1; }
    int focusedRow() override { return -1; }
    void collectSelected(std::vector<int>& rows) override { rows.clear(); }
    void setState(int, unsigned, unsigned) override {}
    void scrollRows(int) override {}
    void invalidate(const RECT&, bool) override {}
    void invalidateAll() override {}
};

class FlipBench {
public:
    FlipBench(unsigned count, RowTest test) : m_test(test) {
        m_store.enterOptiData();
        m_rows.reserve(count);
        workload::makeRows(count, [this](std::uint32_t, const workload::Row& raw) { m_rows.emplace_back(raw); });
        for (FlipRow& row : m_rows) m_store.add(&row, false, m_test);
        m_store.endBatch();
    }
    ~FlipBench() { m_store.clear(); }
    FlipBench(const FlipBench&) = delete;
    FlipBench& operator=(const FlipBench&) = delete;

    // ns a tick.
    double run(std::uint32_t seed) {
        workload::Random random(seed);
        const auto count = static_cast<std::uint32_t>(m_rows.size());
        m_flips = 0;
        const auto start = std::chrono::steady_clock::now();
        for (long done = 0; done < kTicksPerRepeat; done += kBatchTicks) {
            for (int i = 0; i < kBatchTicks; ++i) tick(workload::nextTick(random, count));
            m_store.endBatch();
            m_store.flush();
        }
        const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - start;
        return taken.count() / kTicksPerRepeat;
    }

    double flipShare() const { return static_cast<double>(m_flips) / kTicksPerRepeat; }

    // Every row that passes is displayed where it says, and no other.
    void checkResult() {
        check(flipShare() > 0.45 && flipShare() < 0.55, "half of the ticks should flip their row");
        const std::string fault = m_store.Check();
        check(fault.empty(), fault.c_str());
        int displayed = 0;
        for (const FlipRow& row : m_rows) {
            const int slot = m_store.slotOf(&row);
            check((slot != -1) == (row.raw.d[0] > kLimit), "a row is displayed that does not pass, or the reverse");
            if (slot == -1) continue;
            ++displayed;
            check(&rowOf(m_store.dataOfVisual(slot)) == &row, "a row says another slot");
        }
        check(displayed == m_store.displayCount(), "the display holds a row too many");
    }

private:
    void tick(const workload::Tick& tick) {
        FlipRow& row = m_rows[tick.row];
        row.raw.d[0] = tick.d0;
        row.raw.d[5] = tick.d5;
        row.raw.n[0] = tick.n0;
        m_flips += m_store.update(&row, m_test) != 0;
    }

    std::vector<FlipRow> m_rows;
    DeafControl m_control;
    LiveRows m_store{m_control};
    RowTest m_test;
    long m_flips = 0;
};

void measure(const char* key, unsigned rows, RowTest test, Figures& figures) {
    FlipBench bench(rows, test);
    std::vector<double> times;
    for (unsigned i = 0; i < kRepeats; ++i) times.push_back(bench.run(workload::operationSeed + i));
    bench.checkResult();
    std::sort(times.begin(), times.end());
    char note[80];
    std::snprintf(note, sizeof note, "row store alone; %.1f %% of the ticks flip", bench.flipShare() * 100);
    figures.push_back({key, times[times.size() / 2], "ns", note});
}

}  // namespace

void benchFlip(Figures& figures) {
    measure("store_flip_ns_10k", 10'000, {textIsAbove, nullptr}, figures);
    measure("store_flip_ns_100k", 100'000, {textIsAbove, nullptr}, figures);
    measure("store_flip_ns_1m", 1'000'000, {textIsAbove, nullptr}, figures);
    measure("store_flip_typed_ns_10k", 10'000, {numberIsAbove, nullptr}, figures);
    measure("store_flip_typed_ns_100k", 100'000, {numberIsAbove, nullptr}, figures);
    measure("store_flip_typed_ns_1m", 1'000'000, {numberIsAbove, nullptr}, figures);
}
