#include "benchmarks/WorkloadGrid.h"

#include "benchmarks/Hundredths.h"

#include <charconv>
#include <cstdio>
#include <stdexcept>

namespace {

constexpr int kColumnCount = 20;
constexpr unsigned kGridId = 100;

}  // namespace

double microseconds() {
    static const double perTick = [] {
        LARGE_INTEGER frequency;
        QueryPerformanceFrequency(&frequency);
        return 1e6 / static_cast<double>(frequency.QuadPart);
    }();
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) * perTick;
}

void check(bool holds, const std::string& what) {
    if (!holds) throw std::runtime_error(what);
}

// Numbers are written where the grid wants them, without a copy.
int workloadText(DWORD_PTR data, int column, CString& text, COLORREF&, COLORREF&, int&) {
    constexpr int kLongestNumber = 16;
    const workload::Row& row = static_cast<const WorkloadRow*>(reinterpret_cast<CFilterListBaseData*>(data))->raw;
    if (column == 0) {
        text = row.symbol;
    } else if (column == 1) {
        text = workload::exchanges[row.exchange];
    } else if (column < 19) {
        char* const to = text.GetBuffer(kLongestNumber);
        char* const end = column < 16 ? putHundredths(row.d[column - 2], to)
                                      : std::to_chars(to, to + kLongestNumber, row.n[column - 16]).ptr;
        text.ReleaseBuffer(static_cast<int>(end - to));
    } else {
        text = row.date;
    }
    return 1;
}

LRESULT WorkloadGrid::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PAINT) ++paints;
    return CFilterListCtrl::WindowProc(message, wParam, lParam);
}

void WorkloadGrid::flushNow() {
    SendMessage(WM_TIMER, 4001, 0);
    UpdateWindow();
}

void pumpMessages() {
    MSG message;
    while (::PeekMessage(&message, nullptr, 0, 0, PM_NOREMOVE)) AfxPumpMessage();
}

WorkloadWindow::WorkloadWindow(bool visible) : m_visible(visible ? WS_VISIBLE : 0) {
    const CString windowClass = AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW), nullptr, nullptr);
    m_frame.CreateEx(0, windowClass, "bench", WS_POPUP | m_visible | WS_CLIPCHILDREN, CRect(0, 0, 1600, 900), nullptr,
                     0);
    m_font.CreateFont(-16, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "Tahoma");
}

WorkloadWindow::~WorkloadWindow() { m_frame.DestroyWindow(); }

std::unique_ptr<WorkloadGrid> WorkloadWindow::makeGrid() {
    auto grid = std::make_unique<WorkloadGrid>();
    grid->m_csListName = "bench";
    for (int i = 0; i < kColumnCount; ++i) {
        sQuorColInfo column;
        std::snprintf(column.szColumnName, sizeof column.szColumnName, "c%d", i);
        column.iWidth = 76;
        column.iFormat = i >= 2 && i < 19 ? 1 : 0;
        column.iDataType = i < 2 ? 3 : 1;
        grid->m_arrColumns.Add(column);
    }
    grid->Create(WS_CHILD | m_visible | LVS_REPORT | LVS_OWNERDATA | LVS_OWNERDRAWFIXED | LVS_SHOWSELALWAYS,
                 CRect(0, 0, 1600, 877), &m_frame, kGridId);
    check(grid->GetSafeHwnd() != nullptr, "the grid has no window");
    grid->SetFont(&m_font);
    grid->SetUseFilter(TRUE);
    grid->InitColumnTextRtn(workloadText);
    grid->SetOptiDataMode(true);
    grid->InsertColumnsForList(nullptr);
    return grid;
}
