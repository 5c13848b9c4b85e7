// A market watch on real windows: a watch of 112 built-in columns, of which four show, in a window called Banks. The
// host answers "<symbol>/<columnIndex>", except for column 1, which is a price, column 2, which is "0", and user
// columns.
#pragma once

#include "src/foundation/core/Globals.h"
#include "src/lists/MrktWatchListCtrl.h"
#include "support/CallRecorder.h"
#include "support/FakeHost.h"
#include "support/WindowFixture.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>

namespace watch_tests {

inline constexpr int kWatchId = 900;

// The host's row: the pair stands first, and its record is the row itself.
struct HostRow {
    MrktWatchRowData pair;
    char bytes[512] = {};
    std::string symbol;
    double price = 0;
};

class WatchWindow : public CWnd {
public:
    test::CallRecorder calls;
    int drawn = 0;
    std::function<void(int row)> onDraw;
    std::function<void(const DRAWITEMSTRUCT&)> paintsRow;  // in place of a fill

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_DRAWITEM) {
            ++drawn;
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (paintsRow) {
                paintsRow(item);
            } else {
                CDC::FromHandle(item.hDC)->FillSolidRect(&item.rcItem, RGB(0, 0, 90));
            }
            if (onDraw) onDraw(static_cast<int>(item.itemID));
            return TRUE;
        }
        if (message == WM_USER + 123) calls.record("rebuilt", wParam, lParam);
        if (message == WM_USER + 500) calls.record("reordered", wParam, lParam);
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

class CountingHeader : public CHeaderCtrl {
public:
    int paints = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        paints += message == WM_PAINT;
        return CHeaderCtrl::WindowProc(message, wParam, lParam);
    }
};

struct MarketWatch : test::WindowFixture {
    MarketWatch() {
        resetFakeHost();
        startProcess();
        fakeHost().marketCell = [this](CWnd*, void* data, int columnIndex, CString& text) {
            auto* row = static_cast<HostRow*>(data);
            if (columnIndex >= 112) {
                list->GetCustomColumnText(reinterpret_cast<sMWStruct*>(row), columnIndex, text);
            } else if (columnIndex == 1) {
                text.Format("%.2f", row->price);
            } else if (columnIndex == 2) {
                text = "0";
            } else {
                text.Format("%s/%d", row->symbol.c_str(), columnIndex);
            }
        };
        createOwner();
    }
    // What the watches of a process share, as it is before the first of them.
    static void startProcess() {
        CMrktWatchListCtrl::g_nMarketWatchesBuilt = 0;
        iMrktInfoColCount = 111;
        iNewDataArrCnt = 0;
    }
    void createOwner() {
        const CString windowClass = AfxRegisterWndClass(0, nullptr, nullptr, nullptr);
        owner.Create(windowClass, "Banks", WS_CHILD | WS_VISIBLE, CRect(0, 0, 700, 400), &frame(), 50);
    }
    void TearDown() override {
        list.reset();
        if (owner.m_hWnd) owner.DestroyWindow();
        WindowFixture::TearDown();
    }

    // `prepare` runs before the columns are built.
    void open(const std::function<void(CMrktWatchListCtrl&)>& prepare = {}) {
        list = std::make_unique<CMrktWatchListCtrl>();
        fill();
        list->Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, CRect(0, 0, 600, 300), &owner, kWatchId);
        if (prepare) prepare(*list);
        list->InsertColumnsForList(nullptr);
    }
    void fill() {
        list->m_csListName = "watch";
        for (int i = 0; i < 112; ++i) {
            sQuorColInfo column;
            std::snprintf(column.szColumnName, sizeof column.szColumnName, "c%d", i);
            column.iWidth = 60;
            column.iDataType = 2;
            list->m_arrColumns.Add(column);
        }
        const int shown[] = {0, 1, 2, 3};
        list->SetDefaultCols(4, shown);
    }
    void close() {
        list->DestroyWindow();
        list.reset();
    }
    void addRow(const char* symbol, double price) {
        HostRow& row = rows.emplace_back();
        row.pair.pRecord = reinterpret_cast<sMWStruct*>(&row);
        row.symbol = symbol;
        row.price = price;
        const int item = list->InsertItem(list->GetItemCount(), "");
        list->SetItemData(item, reinterpret_cast<DWORD_PTR>(&row));
    }
    std::string column(int place) {
        std::string all;
        for (int row = 0; row < list->GetItemCount(); ++row)
            all += (row ? " " : "") + std::string(list->GetItemText(row, place).GetString());
        return all;
    }
    // "name:width" in the order on screen.
    std::string header() {
        std::string all;
        for (int i = 0; i < list->GetHeaderCtrl()->GetItemCount(); ++i) {
            const int item = list->GetHeaderCtrl()->OrderToIndex(i);
            char name[80] = "";
            LVCOLUMN column{};
            column.mask = LVCF_TEXT | LVCF_WIDTH;
            column.pszText = name;
            column.cchTextMax = sizeof name;
            list->GetColumn(item, &column);
            all += (i ? " " : "") + std::string(name) + ":" + std::to_string(column.cx);
        }
        return all;
    }

    CString m_text;
    WatchWindow owner;
    std::deque<HostRow> rows;
    std::unique_ptr<CMrktWatchListCtrl> list;
};

}  // namespace watch_tests
