// Trend columns on a visible grid: a tick of the fade over a million rows, most of what flashes out of view, and the
// paint of a page whose cells have all changed. Which cells are invalidated, and their colours, are read from the
// window.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "benchmarks/WorkloadGrid.h"
#include "quor/foundation/TimerIds.h"

#include <cstdio>
#include <ctime>
#include <utility>
#include <vector>

namespace {

constexpr int kHour = 3'600'000;     // ms: nothing ends by itself
constexpr int kTicks = 9;            // of the fade
constexpr int kGroups = kTicks + 1;  // of cells that flash in view: a tick ends one
constexpr int kGroupSize = 10;
constexpr int kInView = kGroups * kGroupSize;
constexpr int kOutOfView = 10'000;    // cells that flash there, at least
constexpr DWORD kBetweenGroups = 30;  // ms, more than the clock's step
constexpr int kRepaints = 15;
const std::vector<int> kFadeColumns{2, 3, 4};
const std::vector<int> kPaintColumns{2, 3, 4, 5, 6, 7};

class TrendBench {
public:
    explicit TrendBench(unsigned count) {
        m_rows.reserve(count);
        workload::makeRows(count, [this](std::uint32_t, const workload::Row& raw) { m_rows.emplace_back(raw); });
        grid = m_window.makeGrid();
        for (WorkloadRow& row : m_rows) grid->AddRow(&row, false);
        processEndofBatchUpdates();
        grid->flushNow();
        pumpMessages();
        grid->TrendInterval = kHour;
    }
    ~TrendBench() { grid->DestroyWindow(); }
    TrendBench(const TrendBench&) = delete;
    TrendBench& operator=(const TrendBench&) = delete;

    void setColumns(const std::vector<int>& columns) {
        CArray<int, int> wanted;
        for (const int column : columns) wanted.Add(column);
        grid->SetTrendColumns(&wanted);
        grid->KillTimer(kTrendFadeTimer);  // the ticks are the benchmark's
        repaint();
    }
    void repaint() {
        grid->Invalidate(FALSE);
        grid->UpdateWindow();
    }
    void rise(int row, int column) { m_rows[static_cast<std::size_t>(row)].raw.d[column - kWorkloadNumberColumn] += 1; }
    void risePage(const std::vector<int>& columns) {
        const int top = grid->GetTopIndex();
        for (int row = top; row < top + grid->GetCountPerPage(); ++row)
            for (const int column : columns) rise(row, column);
    }
    void scrollPages(int pages) {
        RECT row{.left = LVIR_BOUNDS, .top = 0, .right = 0, .bottom = 0};
        grid->SendMessage(LVM_GETITEMRECT, static_cast<WPARAM>(grid->GetTopIndex()), reinterpret_cast<LPARAM>(&row));
        grid->SendMessage(LVM_SCROLL, 0, static_cast<LPARAM>(pages) * grid->GetCountPerPage() * (row.bottom - row.top));
        repaint();
    }
    // Cells of the page that show a rise.
    int flashing(const std::vector<int>& columns) {
        CClientDC dc(grid.get());
        int found = 0;
        const int top = grid->GetTopIndex();
        for (int row = top; row < top + grid->GetCountPerPage(); ++row)
            for (const int column : columns) {
                CRect cell;
                grid->GetSubItemRect(row, column, LVIR_LABEL, cell);
                found += ::GetPixel(dc, cell.left, cell.top) == grid->PosColor;
            }
        return found;
    }
    // Pixels that wait for their paint.
    long pixelsToPaint() {
        CRgn region;
        region.CreateRectRgn(0, 0, 0, 0);
        ::GetUpdateRgn(grid->m_hWnd, region, FALSE);
        const DWORD bytes = ::GetRegionData(region, 0, nullptr);
        std::vector<char> data(bytes);
        auto& list = *reinterpret_cast<RGNDATA*>(data.data());
        if (!::GetRegionData(region, bytes, &list)) return 0;
        long pixels = 0;
        for (DWORD i = 0; i < list.rdh.nCount; ++i) {
            const RECT& rect = reinterpret_cast<const RECT*>(list.Buffer)[i];
            pixels += (rect.right - rect.left) * (rect.bottom - rect.top);
        }
        return pixels;
    }

private:
    std::vector<WorkloadRow> m_rows;
    WorkloadWindow m_window;

public:
    std::unique_ptr<WorkloadGrid> grid;  // goes before its rows and its window
};

// The cells of a group begin to flash. Result: when they had.
std::clock_t flashGroup(TrendBench& bench, int group) {
    const int columnCount = static_cast<int>(kFadeColumns.size());
    for (int cell = group * kGroupSize; cell < (group + 1) * kGroupSize; ++cell)
        bench.rise(cell / columnCount, kFadeColumns[static_cast<std::size_t>(cell % columnCount)]);
    bench.repaint();
    const std::clock_t begun = std::clock();
    ::Sleep(kBetweenGroups);
    return begun;
}

// Pages below begin to flash: painted once, changed, painted again.
int flashOutOfView(TrendBench& bench) {
    int flashing = 0, pages = 0;
    while (flashing < kOutOfView) {
        bench.scrollPages(1);
        ++pages;
        bench.risePage(kFadeColumns);
        bench.repaint();
        flashing += bench.grid->GetCountPerPage() * static_cast<int>(kFadeColumns.size());
    }
    const int page = bench.grid->GetCountPerPage() * static_cast<int>(kFadeColumns.size());
    check(bench.flashing(kFadeColumns) == page, "a page out of view does not flash");
    bench.scrollPages(-pages);
    return flashing;
}

// Each tick ends the group that flashes longest; then that one flashes again.
void benchFade(Figures& figures) {
    TrendBench bench(1'000'000);
    WorkloadGrid& grid = *bench.grid;
    bench.setColumns(kFadeColumns);
    std::vector<std::clock_t> begun;
    for (int group = 0; group < kGroups; ++group) begun.push_back(flashGroup(bench, group));
    const int outOfView = flashOutOfView(bench);
    CRect cell;
    grid.GetSubItemRect(0, kFadeColumns[0], LVIR_BOUNDS, cell);
    std::vector<double> times;
    for (int tick = 0; tick < kTicks; ++tick) {
        check(bench.flashing(kFadeColumns) == kInView, "the page does not flash as it should");
        grid.ValidateRect(nullptr);
        grid.TrendInterval = static_cast<int>(std::clock() - begun[static_cast<std::size_t>(tick)]);
        const double start = microseconds();
        grid.SendMessage(WM_TIMER, kTrendFadeTimer);
        times.push_back(microseconds() - start);
        check(bench.pixelsToPaint() == long{kGroupSize} * cell.Width() * cell.Height(),
              "other cells are to be painted");
        grid.TrendInterval = kHour;
        grid.UpdateWindow();
        check(bench.flashing(kFadeColumns) == kInView - kGroupSize, "a tick of the fade ended other cells");
        flashGroup(bench, tick);
    }
    char note[96];
    std::snprintf(note, sizeof note, "%d cells flash in view, of which %d end, and %d out of view", kInView, kGroupSize,
                  outOfView);
    figures.push_back({"trend_fade_us_1m", median(times), "us", note, 400, 120});
}

void benchPaint(Figures& figures) {
    TrendBench bench(100'000);
    bench.setColumns(kPaintColumns);
    const auto repaint = [&](bool withTrends) {
        bench.risePage(kPaintColumns);
        bench.grid->TrendEnabled = withTrends;
        bench.grid->paints = 0;
        const double start = microseconds();
        bench.repaint();
        const double time = (microseconds() - start) / 1000;
        check(bench.grid->paints == 1, "a repaint did not paint");
        const int all = bench.grid->GetCountPerPage() * static_cast<int>(kPaintColumns.size());
        check(bench.flashing(kPaintColumns) == (withTrends ? all : 0), "the cells have other colours");
        return time;
    };
    std::vector<double> with, without;
    for (int i = 0; i < kRepaints; ++i) {
        without.push_back(repaint(false));
        with.push_back(repaint(true));
    }
    char note[96];
    std::snprintf(note, sizeof note, "%.2f ms with 6 trend columns, every cell of them changed; %.2f ms without",
                  median(with), median(without));
    figures.push_back({"trend_paint_ratio", median(with) / median(without), "", note, 1.4, 1.15});
}

}  // namespace

void benchTrend(Figures& figures) {
    benchFade(figures);
    benchPaint(figures);
}
