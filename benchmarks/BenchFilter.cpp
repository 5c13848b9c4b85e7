// Filters under the rows of workload W: the time from the first call until the display is right, on 100,000 rows in
// opti-data mode that are told their slots within it. Hidden grid; the "paint" figures on a visible one until it has
// painted. What a row must do to pass is computed from its raw values, and every row's answer is compared.
#include "benchmarks/Bench.h"
#include "benchmarks/Hundredths.h"
#include "benchmarks/Median.h"
#include "benchmarks/peers/common/workload.h"
#include "src/grid/FilterListCtrl.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int columnCount = 20;
constexpr unsigned rowCount = 100'000;
constexpr int repeats = 9;
constexpr int symbolColumn = 0;
constexpr int numberColumn = 2;

struct FilterRow : public CFilterListBaseData {
    explicit FilterRow(const workload::Row& values) : raw(values) {}
    workload::Row raw;
};

int cellText(DWORD_PTR data, int column, CString& text, COLORREF&, COLORREF&, int&) {
    const workload::Row& row = static_cast<const FilterRow*>(reinterpret_cast<CFilterListBaseData*>(data))->raw;
    char buffer[40];
    if (column == 0) {
        text = row.symbol;
    } else if (column == 1) {
        text = workload::exchanges[row.exchange];
    } else if (column < 16) {
        text = hundredths(row.d[column - 2], buffer);
    } else if (column < 19) {
        *std::to_chars(buffer, buffer + sizeof buffer, row.n[column - 16]).ptr = 0;
        text = buffer;
    } else {
        text = row.date;
    }
    return 1;
}

void check(bool holds, const std::string& what) {
    if (!holds) throw std::runtime_error(what);
}

double milliseconds() {
    using Clock = std::chrono::steady_clock;
    return std::chrono::duration<double, std::milli>(Clock::now().time_since_epoch()).count();
}

struct Task {
    int column;
    std::string filter;
    std::function<bool(const workload::Row&)> passes;
};

class FilterBench {
public:
    explicit FilterBench(bool visible) : m_visible(visible) {
        const CString windowClass = AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW), nullptr, nullptr);
        m_frame.CreateEx(0, windowClass, "bench", WS_POPUP | WS_CLIPCHILDREN | (visible ? WS_VISIBLE : 0u),
                         CRect(0, 0, 1600, 900), nullptr, 0);
        m_font.CreateFont(-16, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "Tahoma");
        createGrid();
        m_rows.reserve(rowCount);
        workload::makeRows(rowCount, [this](std::uint32_t, const workload::Row& raw) { m_rows.emplace_back(raw); });
        for (FilterRow& row : m_rows) m_grid->AddRow(&row, false);
        processEndofBatchUpdates();
        pump();
    }
    ~FilterBench() {
        m_grid->DestroyWindow();
        m_grid.reset();
        m_frame.DestroyWindow();
    }

    // The median; every run starts from the unfiltered display.
    double run(const Task& task) {
        std::vector<double> times;
        for (int i = 0; i <= repeats; ++i) {
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
        for (int i = 0; i < repeats; ++i) {
            const double start = milliseconds();
            if (tellCount) m_grid->SendMessage(LVM_SETITEMCOUNT, rowCount, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
            m_grid->Invalidate();
            m_grid->UpdateWindow();
            times.push_back(milliseconds() - start);
        }
        return median(times);
    }

    const std::vector<FilterRow>& rows() const { return m_rows; }

private:
    void createGrid() {
        m_grid = std::make_unique<CFilterListCtrl>();
        m_grid->m_csListName = "bench";
        for (int i = 0; i < columnCount; ++i) {
            sQuorColInfo column;
            std::snprintf(column.szColumnName, sizeof column.szColumnName, "c%d", i);
            column.iWidth = 76;
            column.iFormat = i >= 2 && i < 19 ? 1 : 0;
            column.iDataType = i < 2 ? 3 : 1;
            m_grid->m_arrColumns.Add(column);
        }
        m_grid->Create((m_visible ? WS_VISIBLE : 0u) | WS_CHILD | LVS_REPORT | LVS_OWNERDATA | LVS_OWNERDRAWFIXED |
                           LVS_SHOWSELALWAYS,
                       CRect(0, 0, 1600, 877), &m_frame, 100);
        check(m_grid->GetSafeHwnd() != nullptr, "the grid has no window");
        m_grid->SetFont(&m_font);
        m_grid->SetUseFilter(TRUE);
        m_grid->InitColumnTextRtn(cellText);
        m_grid->SetOptiDataMode(true);
        m_grid->InsertColumnsForList(nullptr);
    }

    static void pump() {
        MSG message;
        while (::PeekMessage(&message, nullptr, 0, 0, PM_NOREMOVE)) AfxPumpMessage();
    }

    void clear() {
        m_grid->RemoveAllFilters();
        m_grid->PopulateList();
        check(m_grid->GetDisplayCount() == static_cast<int>(rowCount), "rows are missing without a filter");
        pump();
        m_grid->UpdateWindow();
    }

    void verify(const Task& task) {
        int slot = 0;
        for (FilterRow& row : m_rows) {
            const int expected = task.passes(row.raw) ? slot++ : -1;
            int mapIndex, visual;
            CFilterListCtrl::getRowIndices(&row, m_grid.get(), mapIndex, visual);
            if (visual != expected) fail(task, row, expected, visual);
        }
        check(m_grid->GetDisplayCount() == slot, "the count is wrong after a filter");
        check(slot > 0 && slot < static_cast<int>(rowCount), "a filter has nothing to do");
        check(static_cast<int>(m_grid->SendMessage(LVM_GETITEMCOUNT)) == slot, "the native count is wrong");
    }

    [[noreturn]] void fail(const Task& task, const FilterRow& row, int expected, int visual) const {
        throw std::runtime_error(task.filter.substr(0, 40) + ": " + row.raw.symbol + " stands at " +
                                 std::to_string(visual) + ", not at " + std::to_string(expected) + "; " +
                                 std::to_string(m_grid->GetDisplayCount()) + " rows are displayed");
    }

    bool m_visible;
    CWnd m_frame;
    CFont m_font;
    std::unique_ptr<CFilterListCtrl> m_grid;
    std::vector<FilterRow> m_rows;
};

const Task prefix{symbolColumn, "SYM0001",
                  [](const workload::Row& row) { return std::strncmp(row.symbol, "SYM0001", 7) == 0; }};
const Task contained{symbolColumn, "*99*",
                     [](const workload::Row& row) { return std::strstr(row.symbol, "99") != nullptr; }};
const Task number{numberColumn, ">500", [](const workload::Row& row) { return row.d[0] > 500; }};

// As many symbols as the longest filter holds; half of them are those of rows.
Task manyValues() {
    constexpr unsigned values = 104'857;
    Task task{symbolColumn, "", [](const workload::Row& row) { return std::atoi(row.symbol + 3) % 2 == 0; }};
    char token[16];
    for (unsigned i = 0; i < values; ++i) {
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
    figures.push_back({"w2_prefix_paint_ms_100k", visible.run(prefix), "ms", note, 12, 8});
    figures.push_back({"w2_number_paint_ms_100k", visible.run(number), "ms", note, 24, 11});
}
