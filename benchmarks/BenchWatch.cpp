// One repaint of a market watch: 45 rows of 18 columns in view of 2,000, each cell drawn by the owner from GetItemText,
// as hosts do that draw their rows themselves.
#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "quor/lists/MrktWatchListCtrl.h"
#include "quor/lists/core/WatchTexts.h"
#include "support/FakeHost.h"

#include <cstdio>
#include <memory>
#include <string>

using namespace quor::watch;

namespace {

constexpr int kRows = 2000;
constexpr int kRowsInView = 45;
constexpr int kColumns = 18;
constexpr int kColumnWidth = 80;
constexpr int kRepaints = 51;
constexpr unsigned kListId = 100;

struct BenchRow {
    MrktWatchRowData pair;
    int number = 0;
};

// Draws as the demo does: rectangles from widths that it keeps, one text a cell.
class Owner : public CWnd {
public:
    CMrktWatchListCtrl* list = nullptr;
    long cells = 0;
    bool asksForTexts = true;  // else it draws the last one again
    CString last;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_DRAWITEM) return CWnd::WindowProc(message, wParam, lParam);
        draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    }

private:
    void draw(const DRAWITEMSTRUCT& item) {
        ::SetTextColor(item.hDC, RGB(220, 220, 220));
        ::SetBkColor(item.hDC, RGB(16, 20, 28));
        RECT cell = item.rcItem;
        for (int place = 0; place < kColumns; ++place) {
            cell.right = cell.left + kColumnWidth;
            if (asksForTexts) last = list->GetItemText(static_cast<int>(item.itemID), place);
            ::ExtTextOutA(item.hDC, cell.left + 4, cell.top + 1, ETO_OPAQUE | ETO_CLIPPED, &cell, last,
                          static_cast<UINT>(last.GetLength()), nullptr);
            cell.left = cell.right;
            ++cells;
        }
    }
};

void check(bool holds, const std::string& what) {
    if (!holds) throw std::runtime_error(what);
}

class Watch {
public:
    Watch() {
        const CString windowClass = AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW), nullptr, nullptr);
        owner.CreateEx(0, windowClass, "bench", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, CRect(0, 0, 1600, 1000),
                       nullptr, 0);
        owner.list = &list;
        fakeHost().marketCell = [](CWnd*, void* data, int columnIndex, CString& text) {
            char buffer[32];
            std::snprintf(buffer, sizeof buffer, "%d.%02d", static_cast<BenchRow*>(data)->number, columnIndex);
            text = buffer;
        };
        for (int i = 0; i < kMarketWatchColumns; ++i) {
            sQuorColInfo column;
            std::snprintf(column.szColumnName, sizeof column.szColumnName, "c%d", i);
            column.iWidth = kColumnWidth;
            list.m_arrColumns.Add(column);
        }
        int shown[kColumns];
        for (int i = 0; i < kColumns; ++i) shown[i] = i * 6;
        list.SetDefaultCols(kColumns, shown);
        list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SHOWSELALWAYS, CRect(0, 0, 1500, 900), &owner, kListId);
        m_font.CreateFont(-14, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "Tahoma");
        list.SetFont(&m_font);
        list.InsertColumnsForList(nullptr);
        fill();
        fitHeight();
    }
    ~Watch() {
        list.DestroyWindow();
        owner.DestroyWindow();
        fakeHost().marketCell = nullptr;
    }

    void repaint() {
        list.Invalidate();
        list.UpdateWindow();
    }

    Owner owner;
    CMrktWatchListCtrl list;

private:
    void fill() {
        m_rows.resize(kRows);
        for (int i = 0; i < kRows; ++i) {
            BenchRow& row = m_rows[static_cast<std::size_t>(i)];
            row.number = i;
            row.pair.pRecord = reinterpret_cast<sMWStruct*>(&row);
            list.InsertItem(i, "");
            list.SetItemData(i, reinterpret_cast<DWORD_PTR>(&row));
        }
    }
    // Exactly the rows of the figure, under the header.
    void fitHeight() {
        CRect row;
        list.GetItemRect(0, &row, LVIR_BOUNDS);
        CRect window, client;
        list.GetWindowRect(&window);
        list.GetClientRect(&client);
        const int frame = window.Height() - client.Height();
        list.SetWindowPos(nullptr, 0, 0, 1500, row.top + kRowsInView * row.Height() + frame,
                          SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        list.UpdateWindow();
        check(list.GetCountPerPage() == kRowsInView, "the watch does not show 45 rows");
    }

    CFont m_font;
    std::vector<BenchRow> m_rows;
};

}  // namespace

void benchWatch(Figures& figures) {
    Watch watch;
    watch.repaint();
    watch.owner.cells = 0;
    const double seconds = medianSeconds(kRepaints, [&] { watch.repaint(); });
    check(watch.owner.cells == static_cast<long>(kRepaints) * kRowsInView * kColumns,
          "repaints did not draw 45 x 18 cells each, but together " + std::to_string(watch.owner.cells));
    check(watch.owner.last == "44.102", "the last cell shows another text");
    watch.owner.asksForTexts = false;
    const double drawing = medianSeconds(kRepaints, [&] { watch.repaint(); });
    char note[120];
    std::snprintf(note, sizeof note, "45 rows x 18 columns, drawn by the owner; without asking for texts %.2f ms",
                  drawing * 1e3);
    figures.push_back({"repaint_watch_ms", seconds * 1e3, "ms", note, 3.5, 2});
}
