// A market watch on real windows: a watch of 112 built-in columns, of which four show, in a window called Banks. The
// host answers "<symbol>/<columnIndex>", except for column 1, which is a price, column 2, which is "0", and user
// columns.
#pragma once

#include "quor/foundation/core/Globals.h"
#include "quor/lists/MrktWatchListCtrl.h"
#include "windows/list/ListFixture.h"

#include <deque>
#include <memory>

namespace watch_tests {

using list_tests::header;
using test::Calls;

// The host's row: the pair stands first, and its record is the row itself.
struct HostRow {
    MrktWatchRowData pair;
    char bytes[512] = {};
    std::string symbol;
    double price = 0;
};

// A watch that counts.
class CountingWatch : public CMrktWatchListCtrl {
public:
    int asked = 0, headerPaints = 0;

    DWORD_PTR GetItemData(int row) override {
        ++asked;
        return CMrktWatchListCtrl::GetItemData(row);
    }

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override {
        const auto& draw = *reinterpret_cast<const NMCUSTOMDRAW*>(lParam);
        headerPaints += draw.hdr.code == NM_CUSTOMDRAW && draw.dwDrawStage == CDDS_PREPAINT;
        return CMrktWatchListCtrl::OnNotify(wParam, lParam, result);
    }
};

struct MarketWatch : list_tests::ListFixture {
    MarketWatch() {
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
    }
    void TearDown() override {
        owner.paintsRow = nullptr;
        list.reset();
        ListFixture::TearDown();
    }
    // What the watches of a process share, as it is before the first of them.
    static void startProcess() {
        CMrktWatchListCtrl::g_nMarketWatchesBuilt = 0;
        iMrktInfoColCount = 111;
        iNewDataArrCnt = 0;
    }

    void make() {
        list = std::make_unique<CountingWatch>();
        list->m_csListName = "orders";
        for (int i = 0; i < 112; ++i) {
            list_tests::addColumns(*list, {("c" + std::to_string(i)).c_str()}, 60);
            list->m_arrColumns[i].iDataType = 2;
        }
        const int shown[] = {0, 1, 2, 3};
        list->SetDefaultCols(4, shown);
        list->Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, CRect(0, 0, 600, 300), &owner, list_tests::kListId);
    }
    // `prepare` runs before the columns are built.
    void open(const std::function<void(CMrktWatchListCtrl&)>& prepare = {}) {
        make();
        if (prepare) prepare(*list);
        list->InsertColumnsForList(nullptr);
    }
    void close() {
        list->DestroyWindow();
        list.reset();
    }
    void addRow(const char* symbol, double price) { insertRow(list->GetItemCount(), symbol, price); }
    void insertRow(int at, const char* symbol, double price) {
        HostRow& row = rows.emplace_back();
        row.pair.pRecord = reinterpret_cast<sMWStruct*>(&row);
        row.symbol = symbol;
        row.price = price;
        list->SetItemData(list->InsertItem(at, ""), reinterpret_cast<DWORD_PTR>(&row));
    }
    // The user columns that all watches share.
    static std::string& userColumns() { return fakeHost().settings[{"MarketWatch", FakeHost::sharedColumns}]; }

    std::deque<HostRow> rows;
    std::unique_ptr<CountingWatch> list;
};

}  // namespace watch_tests
