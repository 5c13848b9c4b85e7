// Sorts of workload W on a created, hidden grid in opti-data mode: from SortOn until every row knows its slot. The
// first sort of a run finds the rows as the sort before left them; the note tells what turning the column round takes.
#include "benchmarks/Bench.h"
#include "benchmarks/Hundredths.h"
#include "benchmarks/Median.h"
#include "benchmarks/peers/common/workload.h"
#include "quor/grid/FilterListCtrl.h"
#include "quor/list/core/NaturalCompare.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string>

using namespace quor::list;

namespace {

constexpr int kRepeats = 5;
constexpr int kSymbolColumn = 0;
constexpr int kDoubleColumn = 1;
constexpr int kIntegerColumn = 2;

struct SortRow : public CFilterListBaseData {
    explicit SortRow(const workload::Row& values) : raw(values) {}
    workload::Row raw;
};

double milliseconds() {
    LARGE_INTEGER frequency, now;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) * 1e3 / static_cast<double>(frequency.QuadPart);
}

void check(bool holds, const std::string& what) {
    if (!holds) throw std::runtime_error(what);
}

const SortRow& rowOf(DWORD_PTR data) {
    return *static_cast<const SortRow*>(reinterpret_cast<const CFilterListBaseData*>(data));
}

int cellText(DWORD_PTR data, int column, CString& text, COLORREF&, COLORREF&, int&) {
    const workload::Row& row = rowOf(data).raw;
    char buffer[40];
    if (column == kSymbolColumn) {
        text = row.symbol;
    } else if (column == kDoubleColumn) {
        text = hundredths(row.d[0], buffer);
    } else {
        *std::to_chars(buffer, buffer + sizeof buffer, row.n[0]).ptr = 0;
        text = buffer;
    }
    return 1;
}

bool valuesRise(const SortRow& a, const SortRow& b, int column, bool& equal) {
    const workload::Row &left = a.raw, &right = b.raw;
    const int order = column == kSymbolColumn   ? naturalCompare(left.symbol, right.symbol)
                      : column == kDoubleColumn ? (left.d[0] > right.d[0]) - (left.d[0] < right.d[0])
                                                : (left.n[0] > right.n[0]) - (left.n[0] < right.n[0]);
    equal = order == 0;
    return order <= 0;
}

// Every row stands once, in order, the newer one first among equals or with a falling order the older one.
void checkOrder(CFilterListCtrl& grid, const std::vector<SortRow>& rows, int column, bool rising) {
    const auto count = static_cast<int>(rows.size());
    check(grid.GetDisplayCount() == count, "the sort lost rows");
    const SortRow* before = nullptr;
    for (int visual = 0; visual < count; ++visual) {
        const SortRow& row = rowOf(grid.GetItemData(visual));
        int mapIndex, told;
        CFilterListCtrl::getRowIndices(const_cast<SortRow*>(&row), &grid, mapIndex, told);
        check(told == visual && &row == &rows[static_cast<std::size_t>(mapIndex)], "a row says another slot");
        if (before) {
            bool equal;
            const bool inOrder =
                rising ? valuesRise(*before, row, column, equal) : valuesRise(row, *before, column, equal);
            check(inOrder && (!equal || (rising ? before > &row : before < &row)),
                  "two rows stand the wrong way round");
        }
        before = &row;
    }
}

class Bench {
public:
    explicit Bench(unsigned count) {
        const CString windowClass = AfxRegisterWndClass(0);
        m_frame.CreateEx(0, windowClass, "bench", WS_POPUP, CRect(0, 0, 1600, 900), nullptr, 0);
        static const struct {
            const char* name;
            int dataType;
        } columns[] = {{"symbol", 3}, {"price", 2}, {"volume", 1}};
        for (const auto& described : columns) {
            sQuorColInfo column;
            setColumnName(column, described.name);
            column.iWidth = 76;
            column.iDataType = described.dataType;
            grid.m_arrColumns.Add(column);
        }
        grid.m_csListName = "sort bench";
        grid.Create(WS_CHILD | LVS_REPORT | LVS_OWNERDATA, CRect(0, 0, 1600, 877), &m_frame, 100);
        check(grid.GetSafeHwnd() != nullptr, "the grid has no window");
        grid.SetUseFilter(TRUE);
        grid.InitColumnTextRtn(cellText);
        grid.SetOptiDataMode(true);
        grid.InsertColumnsForList(nullptr);
        rows.reserve(count);
        workload::makeRows(count, [this](std::uint32_t, const workload::Row& raw) { rows.emplace_back(raw); });
        for (SortRow& row : rows) grid.AddRow(&row, false);
        processEndofBatchUpdates();
        check(grid.GetDisplayCount() == static_cast<int>(count), "rows are missing after the fill");
    }
    ~Bench() {
        grid.DestroyWindow();
        m_frame.DestroyWindow();
    }

    double timedSort(int column) {
        const double start = milliseconds();
        grid.SortOn(column, 1);
        return milliseconds() - start;
    }

    std::vector<SortRow> rows;  // outlive the grid
    CFilterListCtrl grid;

private:
    CWnd m_frame;
};

Figure measure(Bench& bench, int column, const Figure& limits) {
    std::vector<double> first, second;
    for (int i = 0; i < kRepeats; ++i) {
        bench.grid.m_nLastSortCol = -1;
        first.push_back(bench.timedSort(column));
        if (i == 0) checkOrder(bench.grid, bench.rows, column, true);
        second.push_back(bench.timedSort(column));
        if (i + 1 == kRepeats) checkOrder(bench.grid, bench.rows, column, false);
    }
    Figure figure = limits;
    figure.value = median(first);
    char note[80];
    std::snprintf(note, sizeof note, "%.1f ms for the other direction after it", median(second));
    figure.note = note;
    return figure;
}

}  // namespace

void benchGridSort(Figures& figures) {
    static const struct {
        unsigned rows;
        struct {
            int column;
            const char* key;
            double must, goal;
        } sorts[3];
    } sizes[] = {{100'000,
                  {{kDoubleColumn, "w3_double_ms_100k", 20, 8},
                   {kIntegerColumn, "w3_integer_ms_100k", 20, 8},
                   {kSymbolColumn, "w3_natural_ms_100k", 60, 25}}},
                 {1'000'000,
                  {{kDoubleColumn, "w3_double_ms_1m", 250, 90},
                   {kIntegerColumn, "w3_integer_ms_1m", 250, 90},
                   {kSymbolColumn, "w3_natural_ms_1m", 1200, 600}}}};
    for (const auto& size : sizes) {
        Bench bench(size.rows);
        for (const auto& sort : size.sorts)
            figures.push_back(
                measure(bench, sort.column,
                        {.key = sort.key, .value = 0, .unit = "ms", .note = "", .must = sort.must, .goal = sort.goal}));
    }
}
