// Filters under the rows of workload W: the time from the first call until the display is right, on 100,000 rows in
// opti-data mode that are told their slots within it. Hidden grid; the "paint" figures on a visible one until it has
// painted. What a row must do to pass is computed from its raw values, and every row's answer is compared.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/WorkloadGrid.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr unsigned kRowCount = 100'000;
constexpr int kRepeats = 9;
constexpr int kSymbolColumn = 0;

double milliseconds() { return microseconds() / 1000; }

struct Task {
    int column;
    std::string filter;
    std::function<bool(const workload::Row&)> passes;
};

class FilterBench {
public:
    explicit FilterBench(bool visible) : m_visible(visible), m_window(visible), m_grid(m_window.makeGrid()) {
        m_rows.reserve(kRowCount);
        workload::makeRows(kRowCount, [this](std::uint32_t, const workload::Row& raw) { m_rows.emplace_back(raw); });
        for (WorkloadRow& row : m_rows) m_grid->AddRow(&row, false);
        processEndofBatchUpdates();
        pumpMessages();
    }
    ~FilterBench() {
        m_grid->DestroyWindow();
        m_grid.reset();
    }

    // The median; every run starts from the unfiltered display.
    double run(const Task& task) {
        std::vector<double> times;
        for (int i = 0; i <= kRepeats; ++i) {
            clear();
            CString text = task.filter.c_str();
            const double start = milliseconds();
            m_grid->SetVisibleColumnFilter(task.column, text, 0);
            if (m_grid->GetFilterCount() == 0) m_grid->AddToFilteredCols(task.column, text);  // no bar, so no notice
            m_grid->PopulateList();
            if (m_visible) m_grid->UpdateWindow();
            if (i > 0) times.push_back(milliseconds() - start);  // the first run warms up
            verify(task);
        }
        return median(times);
    }

    // What an unchanged grid takes anyway: a full repaint, and the same after the native control was told a row count,
    // which makes it draw its scroll bar.
    double repaint(bool tellCount) {
        std::vector<double> times;
        clear();
        for (int i = 0; i < kRepeats; ++i) {
            const double start = milliseconds();
            if (tellCount) m_grid->SendMessage(LVM_SETITEMCOUNT, kRowCount, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
            m_grid->Invalidate();
            m_grid->UpdateWindow();
            times.push_back(milliseconds() - start);
        }
        return median(times);
    }

    const std::vector<WorkloadRow>& rows() const { return m_rows; }

private:
    void clear() {
        m_grid->RemoveAllFilters();
        m_grid->PopulateList();
        check(m_grid->GetDisplayCount() == static_cast<int>(kRowCount), "rows are missing without a filter");
        pumpMessages();
        m_grid->UpdateWindow();
    }

    void verify(const Task& task) {
        int slot = 0;
        for (WorkloadRow& row : m_rows) {
            const int expected = task.passes(row.raw) ? slot++ : -1;
            int mapIndex, visual;
            CFilterListCtrl::getRowIndices(&row, m_grid.get(), mapIndex, visual);
            if (visual != expected) fail(task, row, expected, visual);
        }
        check(m_grid->GetDisplayCount() == slot, "the count is wrong after a filter");
        check(slot > 0 && slot < static_cast<int>(kRowCount), "a filter has nothing to do");
        check(static_cast<int>(m_grid->SendMessage(LVM_GETITEMCOUNT)) == slot, "the native count is wrong");
    }

    [[noreturn]] void fail(const Task& task, const WorkloadRow& row, int expected, int visual) const {
        throw std::runtime_error(task.filter.substr(0, 40) + ": " + row.raw.symbol + " stands at " +
                                 std::to_string(visual) + ", not at " + std::to_string(expected) + "; " +
                                 std::to_string(m_grid->GetDisplayCount()) + " rows are displayed");
    }

    bool m_visible;
    WorkloadWindow m_window;
    std::unique_ptr<WorkloadGrid> m_grid;
    std::vector<WorkloadRow> m_rows;
};

const Task prefix{kSymbolColumn, "SYM0001",
                  [](const workload::Row& row) { return std::strncmp(row.symbol, "SYM0001", 7) == 0; }};
const Task contained{kSymbolColumn, "*99*",
                     [](const workload::Row& row) { return std::strstr(row.symbol, "99") != nullptr; }};
const Task number{kWorkloadNumberColumn, ">500", [](const workload::Row& row) { return row.d[0] > 500; }};

// As many symbols as the longest filter holds; half of them are those of rows.
Task manyValues() {
    constexpr unsigned kValues = 104'857;
    Task task{kSymbolColumn, "", [](const workload::Row& row) { return std::atoi(row.symbol + 3) % 2 == 0; }};
    char token[16];
    for (unsigned i = 0; i < kValues; ++i) {
        std::snprintf(token, sizeof token, "SYM%06u", 2 * i);
        if (i > 0) task.filter += '~';
        task.filter += token;
    }
    return task;
}

}  // namespace

void benchFilter(Figures& figures) {
    {
        FilterBench hidden(false);
        figures.push_back({"w2_prefix_ms_100k", hidden.run(prefix), "ms", prefix.filter, 5, 2});
        figures.push_back({"w2_contains_ms_100k", hidden.run(contained), "ms", contained.filter, 5, 3});
        figures.push_back({"w2_number_ms_100k", hidden.run(number), "ms", number.filter, 20, 6});
        const Task many = manyValues();
        const std::string note = std::to_string(many.filter.size()) + " bytes of filter";
        figures.push_back({"w2_manyvalues_ms_100k", hidden.run(many), "ms", note, 150, 40});
    }
    FilterBench visible(true);
    char note[128];
    std::snprintf(note, sizeof note, "unchanged grid: repaint %.2f ms, with its row count told again %.2f ms",
                  visible.repaint(false), visible.repaint(true));
    figures.push_back({"w2_prefix_paint_ms_100k", visible.run(prefix), "ms", note, 16, 8});
    figures.push_back({"w2_number_paint_ms_100k", visible.run(number), "ms", note, 24, 11});
}
