// What the benchmarks of the live grid share: the rows of workload W as the grid's rows, the texts that a host gives
// for them, and a window with one grid in it.
#pragma once

#include "benchmarks/peers/common/workload.h"
#include "quor/grid/FilterListCtrl.h"

#include <memory>
#include <string>

struct WorkloadRow : public CFilterListBaseData {
    explicit WorkloadRow(const workload::Row& values) : raw(values) {}
    workload::Row raw;
};

inline constexpr int kWorkloadNumberColumn = 2;  // the first double, which every tick rewrites

// Microseconds of a clock that only goes forward.
double microseconds();
// Throws std::runtime_error.
void check(bool holds, const std::string& what);

// The text callback of a host, two decimals for the doubles, as every peer shows them.
int workloadText(DWORD_PTR data, int column, CString& text, COLORREF& textColor, COLORREF& background, int& icon);

// Counts its paints; the texts come from the rows.
class WorkloadGrid : public CFilterListCtrl {
public:
    int paints = 0;

    // The flush that timer 4001 would bring, now, and its paint.
    void flushNow();

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

// Messages that wait, the flush timer's among them.
void pumpMessages();

// A frame of 1600 x 900, on screen or hidden: 43 rows of 20 pixels and 20 columns of 76.
class WorkloadWindow {
public:
    explicit WorkloadWindow(bool visible = true);
    WorkloadWindow(const WorkloadWindow&) = delete;
    WorkloadWindow& operator=(const WorkloadWindow&) = delete;
    ~WorkloadWindow();

    // A grid in opti-data mode without rows, visible as the frame is. To be destroyed before the window and before its
    // rows.
    std::unique_ptr<WorkloadGrid> makeGrid();

private:
    DWORD m_visible;  // WS_VISIBLE or 0
    CWnd m_frame;
    CFont m_font;
};
