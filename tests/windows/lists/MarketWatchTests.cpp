// A market watch on real windows: a watch of 112 built-in columns whose host answers "<symbol>/<columnIndex>".
#include "src/foundation/core/Globals.h"
#include "src/lists/MrktWatchListCtrl.h"
#include "support/CallRecorder.h"
#include "support/FakeHost.h"
#include "support/WindowFixture.h"

#include <cstring>
#include <deque>
#include <memory>
#include <string>

namespace {

constexpr int kWatchId = 900;

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

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_DRAWITEM) {
            ++drawn;
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            CDC::FromHandle(item.hDC)->FillSolidRect(&item.rcItem, RGB(0, 0, 90));
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
        CMrktWatchListCtrl::g_nMarketWatchesBuilt = 0;
        iMrktInfoColCount = 111;
        iNewDataArrCnt = 0;
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
        const CString windowClass = AfxRegisterWndClass(0, nullptr, nullptr, nullptr);
        owner.Create(windowClass, "Banks", WS_CHILD | WS_VISIBLE, CRect(0, 0, 700, 400), &frame(), 50);
    }
    void TearDown() override {
        list.reset();
        owner.DestroyWindow();
        WindowFixture::TearDown();
    }

    void open() {
        list = std::make_unique<CMrktWatchListCtrl>();
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
        list->Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, CRect(0, 0, 600, 300), &owner, kWatchId);
        list->InsertColumnsForList(nullptr);
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

TEST_F(MarketWatch, CellsComeFromTheHostByColumnIndex) {
    open();
    addRow("A", 10);
    list->InsertItem(1, "");
    EXPECT_EQ(list->GetItemText(0, 0), "A/0");
    EXPECT_EQ(list->GetItemText(0, 3), "A/3");
    EXPECT_EQ(list->GetItemText(0, 4), "") << "no column stands there";
    EXPECT_EQ(list->GetItemText(1, 0), "") << "a row without a record";
    std::strcpy(reinterpret_cast<char*>(&rows[0]) + 266, "TRD");
    std::strcpy(reinterpret_cast<char*>(&rows[0]) + 401, "SYM");
    EXPECT_EQ(list->GetTradingSymbolOrSymbol(true, 0), "TRD");
    EXPECT_EQ(list->GetTradingSymbolOrSymbol(false, 0), "SYM");
    EXPECT_EQ(list->GetTradingSymbolOrSymbol(false, 1), "");
}

TEST_F(MarketWatch, ColumnsSurviveARestartWithTheUsersDrag) {
    fakeHost().marketWatchColumns["MarketWatch"] =
        "112\xA7Twice\xA7 \"1\" * 2\xA7 \"c1\" * 2\xA7"
        "5\xA7no\xA7"
        "1\xA7"
        "1";
    open();
    EXPECT_EQ(header(), "c0:60 c1:60 c2:60 c3:60 Twice:80");
    EXPECT_EQ(iMrktInfoColCount, 112);
    int order[] = {4, 1, 0, 2, 3};
    list->GetHeaderCtrl()->SetOrderArray(5, order);
    list->SetColumnWidth(2, 44);
    close();
    const auto& stored = fakeHost().settings[{"MarketWatchNew_Banks", "COLUMNPROFILE"}];
    EXPECT_EQ(stored.substr(0, 31), "0,2,60,1,1,60,2,3,44,3,4,60,4,-");
    EXPECT_EQ(stored.substr(stored.size() - 9), ",112,0,80");
    EXPECT_EQ(fakeHost().marketWatchColumns["MarketWatch"], "112\xA7Twice\xA7 \"1\" * 2\xA7 \"c1\" * 2");
    EXPECT_EQ((fakeHost().settings[{"MarketWatchNew_Banks", "GridLine"}]), "false");
    open();
    EXPECT_EQ(header(), "Twice:80 c1:60 c0:60 c2:44 c3:60");
    EXPECT_EQ(iMrktInfoColCount, 112) << "the second watch only reads";
    addRow("A", 10.5);
    EXPECT_EQ(list->GetItemText(0, 0), "21.00");
}

TEST_F(MarketWatch, ARefusedProfileIsSaidAndTheRestGoesOn) {
    open();
    fakeHost().refuseWrites = true;
    fakeHost().calls.clear();
    test::MessageBoxAnswerer answerer;
    list->SaveColumnProfile("Banks");
    EXPECT_EQ(answerer.texts(), (std::vector<std::string>{"Error while saving column profile"}));
    EXPECT_EQ(fakeHost().count("UserSettingMWColumns 1 MarketWatch"), 1);
    EXPECT_EQ(fakeHost().count("UserSetting 1 MarketWatchNew_Banks GridLine"), 1);
    fakeHost().refuseWrites = false;
}

TEST_F(MarketWatch, FormulasUseTheHostsTexts) {
    open();
    addRow("A", 10);
    const auto formula = [&](const char* idForm) {
        list->m_arrColumns.SetSize(112);
        sQuorColInfo record;
        setExpressions(record, ListFamily::marketWatch, idForm, "shown");
        list->m_arrColumns.Add(record);
        return list->GetCustomColumnText(reinterpret_cast<sMWStruct*>(&rows[0]), 112, m_text);
    };
    EXPECT_EQ(formula(" \"1\" / 4"), 1);
    EXPECT_EQ(m_text, "2.50");
    EXPECT_EQ(formula(" \"1\" / \"2\""), 1);
    EXPECT_EQ(m_text, "Divided by ZERO error");
    EXPECT_EQ(formula(" \"0\" + 1"), 1) << "a text counts as zero";
    EXPECT_EQ(m_text, "1.00");
    m_text = "before";
    EXPECT_EQ(list->GetCustomColumnText(nullptr, 111, m_text), 1) << "a built-in column";
    EXPECT_EQ(m_text, "before");
    test::MessageBoxAnswerer answerer;
    EXPECT_EQ(formula(" \"1\" \"1\""), 0);
    EXPECT_EQ(answerer.boxes().size(), 1u);
}

TEST_F(MarketWatch, LevelsSortTheRowsData) {
    open();
    addRow("B", 2);
    addRow("A", 3);
    addRow("C", 1);
    list->m_bMultiSortEnabled = 1;
    fakeHost().settings[{"MarketWatchNew_Banks", "COLUMN_SORT_ORDER_PROFILE"}] = "c1->-1#1";
    list->m_bSortLocked = 1;
    list->ReadMultiSortOrderProfile("Banks");
    EXPECT_TRUE(list->m_bMultiSortActive);
    EXPECT_FALSE(list->m_bSortLocked);
    list->SortListOnMultiplelevel();
    EXPECT_EQ(column(0), "C/0 B/0 A/0");
    EXPECT_EQ(owner.calls.take(), test::Calls{"reordered 900 0"});
    list->m_bSortEnabled = 0;
    rows[0].price = 9;
    list->SortListOnMultiplelevel();
    EXPECT_EQ(column(0), "C/0 B/0 A/0");
    LevelsAsChooser chooser(list->m_arrSortOrder);
    list->SetSortOrderChooser(&chooser);
    list->SaveMultiSortOrderProfile("Other");
    EXPECT_EQ((fakeHost().settings[{"MarketWatchNew_Other", "COLUMN_SORT_ORDER_PROFILE"}]), "c1->-1#1");
}

TEST_F(MarketWatch, RepaintingRowsLeavesTheHeaderAlone) {
    open();
    CountingHeader header;
    header.SubclassWindow(list->GetHeaderCtrl()->m_hWnd);
    for (int i = 0; i < 20; ++i) addRow("A", i);
    pumpUntilIdle();
    const int paints = header.paints;
    owner.drawn = 0;
    list->Invalidate();
    list->UpdateWindow();
    pumpUntilIdle();
    EXPECT_GE(owner.drawn, 10);
    EXPECT_EQ(header.paints, paints);
    header.Invalidate();
    header.UpdateWindow();
    EXPECT_EQ(header.paints, paints + 1) << "the count works";
    header.UnsubclassWindow();
}

TEST_F(MarketWatch, PointsFindRowAndColumnAsTheyStand) {
    open();
    addRow("A", 1);
    int order[] = {3, 0, 1, 2};
    list->GetHeaderCtrl()->SetOrderArray(4, order);
    list->SetColumnWidth(3, 20);
    CRect bounds;
    list->GetItemRect(0, &bounds, LVIR_BOUNDS);
    int row = -1, place = -1;
    CPoint point(25, bounds.top + 1);
    EXPECT_TRUE(list->HitTestEx(point, &row, &place));
    EXPECT_EQ(row, 0);
    EXPECT_EQ(place, 1);
    point.x = bounds.right + 5;
    EXPECT_FALSE(list->HitTestEx(point, &row, &place));
    point = CPoint(25, bounds.bottom + 20);
    EXPECT_FALSE(list->HitTestEx(point, &row, &place));
    EXPECT_FALSE(list->HitTestEx(point, nullptr, &place));
}

TEST_F(MarketWatch, TheCheckBoxIsDrawn) {
    open();
    CClientDC screen(list.get());
    CDC dc;
    dc.CreateCompatibleDC(&screen);
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(&screen, 60, 20);
    const SelectScope drawing(dc, bitmap);
    CRect cell(10, 0, 50, 17), box;
    list->DrawCheckbox(0, 0, &dc, 0, 0, cell, &box, 1);
    EXPECT_EQ(box, CRect(14, 0, 30, 16));
    EXPECT_EQ(dc.GetPixel(24, 4), 1284864u) << "the first stroke";
    EXPECT_EQ(dc.GetPixel(21, 7), 1284864u) << "the lowest";
    EXPECT_EQ(dc.GetPixel(18, 4), 1284864u) << "the last";
    list->DrawCheckbox(0, 0, &dc, 0, 0, cell, nullptr, 0);
    EXPECT_EQ(dc.GetPixel(24, 4), 0xFFFFFFu);
}

TEST_F(MarketWatch, AnImportRebuildsARunningWatch) {
    open();
    const CString file = "watch_import_test.ini";
    frame().SetWindowText("Desk");
    list->ExportColumnToFile("Desk", file);
    list->SetColumnWidth(0, 33);
    const int shown[] = {5, 6};
    CArray<int, int> columns, widths;
    for (const int column : shown) columns.Add(column), widths.Add(20);
    list->LoadHeaders(&columns, &widths);
    owner.calls.take();
    list->ImportColumnsFromFile(file);
    EXPECT_EQ(header(), "c0:60 c1:60 c2:60 c3:60");
    EXPECT_EQ(owner.calls.take(), test::Calls{"rebuilt 900 0"});
    frame().SetWindowText("Elsewhere");
    list->ImportColumnsFromFile(file);
    EXPECT_EQ(header(), "c0:60 c1:60 c2:60 c3:60") << "the control stays";
    EXPECT_EQ(list->m_arrVisible.GetCount(), 112) << "the arrays are the built-in ones";
}

}  // namespace
