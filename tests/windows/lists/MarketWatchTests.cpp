// Columns, cells, levels and stored texts of a market watch.
#include "MarketWatchFixture.h"
#include "platform/tools/QuorTools.h"
#include "support/EveryMoment.h"
#include "support/MessageBoxAnswerer.h"

#include <cstring>
#include <vector>

using namespace quor::list;

namespace {

using namespace watch_tests;
using Texts = std::vector<std::string>;

const char* const kTwice = "112\xA7Twice\xA7 \"1\" * 2\xA7 \"c1\" * 2";

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
    EXPECT_EQ(fakeHost().marketWatchColumns["MarketWatch"], kTwice);
    EXPECT_EQ((fakeHost().settings[{"MarketWatchNew_Banks", "GridLine"}]), "false");
    open();
    EXPECT_EQ(header(), "Twice:80 c1:60 c0:60 c2:44 c3:60");
    EXPECT_EQ(iMrktInfoColCount, 112) << "the second watch only reads";
    addRow("A", 10.5);
    EXPECT_EQ(list->GetItemText(0, 0), "21.00");
}

TEST_F(MarketWatch, ARefusedProfileIsSaidAndTheRestGoesOn) {
    fakeHost().marketWatchColumns["MarketWatch"] = kTwice;
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

TEST_F(MarketWatch, WhatAFormulaAnswers) {
    fakeHost().marketWatchColumns["MarketWatch"] = "112\xA7Leftover\xA7 \"1\" \"1\"\xA7shown";
    open();
    addRow("A", 10);
    auto* const record = reinterpret_cast<sMWStruct*>(&rows[0]);
    m_text = "before";
    EXPECT_EQ(list->GetCustomColumnText(record, 111, m_text), 1) << "a built-in column has none";
    EXPECT_EQ(list->GetCustomColumnText(record, 113, m_text), 0) << "no such column";
    EXPECT_EQ(m_text, "before");
    test::MessageBoxAnswerer answerer;
    EXPECT_EQ(list->GetCustomColumnText(record, 112, m_text), 0);
    EXPECT_EQ(answerer.texts(), Texts{"Invalid Expression,while calculating value"});
    EXPECT_EQ(m_text, "10.00") << "the last value that was asked for";
}

TEST_F(MarketWatch, UserColumnsEnterOtherUserColumns) {
    const struct {
        const char* name;
        const char* idForm;
        const char* shown;
    } cases[] = {
        {"third", " \"1\" / 3", "3.33"},
        {"back", " \"112\" * 3", "9.99"},       // with the two decimals that it shows
        {"text", " \"0\" + \"113\"", "9.99"},   // a text is zero
        {"nothing", " \"2\" * \"3\"", "0.00"},  //
        {"zero", " \"112\" / \"115\"", "Divided by ZERO error"},
        {"error", " \"116\" + \"112\"", "3.33"},  // its words are a text, too
        {"late", " \"119\" + 1", "8.00"},         // one that stands behind
        {"last", " 7", "7.00"},
        {"nowhere", " \"1\" + \"200\"", "10.00"},  // the last text that was found
        {"itself", " \"1\" + \"121\"", "10.00"},
    };
    std::string& stored = fakeHost().marketWatchColumns["MarketWatch"];
    for (int number = 112; const auto& row : cases)
        stored += (stored.empty() ? "" : "\xA7") + std::to_string(number++) + "\xA7" + row.name + "\xA7" + row.idForm +
                  "\xA7shown";
    open();
    addRow("A", 10);
    int place = 4;
    for (const auto& row : cases) EXPECT_EQ(list->GetItemText(0, place++), row.shown) << row.name;
}

TEST_F(MarketWatch, AHostMayEndTheListWhileItGivesAText) {
    fakeHost().marketWatchColumns["MarketWatch"] = "112\xA7Sum\xA7 \"1\" + \"2\"\xA7shown";
    open();
    addRow("A", 10);
    fakeHost().marketCell = [this](CWnd*, void*, int, CString& text) {
        list.reset();
        text = "5";
    };
    EXPECT_EQ(list->GetCustomColumnText(reinterpret_cast<sMWStruct*>(&rows[0]), 112, m_text), 0);
    EXPECT_EQ(m_text, "5") << "nothing was asked for afterwards";
}

// Which string of a record is what: the header's tip is the display form.
TEST_F(MarketWatch, TheHeaderExplainsAUserColumnByHeadings) {
    fakeHost().marketWatchColumns["MarketWatch"] = kTwice;
    open();
    char text[80] = "";
    TOOLINFO info{};
    info.lpszText = text;
    ASSERT_TRUE(list->m_ToolTip.GetToolInfo(info, list->GetHeaderCtrl(), 5));
    EXPECT_STREQ(text, " \"c1\" * 2");
}

TEST_F(MarketWatch, AStoredLockIsTakenIfItFits) {
    fakeHost().marketWatchColumns["MarketWatch"] = kTwice;
    const struct {
        const char* stored;
        int enabled, locked, columnIndex, order;
    } cases[] = {{"True,2,1", 1, 1, 2, 1},   {"True,112,-1", 1, 1, 112, -1},
                 {"True,2,1", 0, 0, -1, 0},  {"True,113,1", 1, 0, -1, 0},
                 {"True,2", 1, 0, -1, 0},    {"False,-1,0", 1, 0, -1, 0},
                 {"false,2,1", 1, 0, -1, 0}, {"", 1, 0, -1, 0}};
    for (const auto& expected : cases) {
        fakeHost().settings[{"watch", "SortLockInfo"}] = expected.stored;
        open([&](CMrktWatchListCtrl& watch) { watch.m_bLockSortEnabled = static_cast<BYTE>(expected.enabled); });
        EXPECT_EQ(list->m_bSortLocked, expected.locked) << expected.stored;
        EXPECT_EQ(list->m_bSorted, expected.locked) << expected.stored;
        if (expected.locked) {
            EXPECT_EQ(list->m_nLockSortColumn, expected.columnIndex);
            EXPECT_EQ(list->m_nLockSortOrder, expected.order);
        }
        close();
    }
}

TEST_F(MarketWatch, ColumnsAreAddedOneByOne) {
    open();
    EXPECT_EQ(list->InsertMrktColumn(1, "New", 1, 44, 1), 112);
    EXPECT_EQ(list->InsertMrktColumn(0, "Hidden", 1, 30, -1), 113);
    EXPECT_EQ(header(), "c0:60 New:44 c1:60 c2:60 c3:60");
    const int columnAt[] = {0, 112, 1, 2, 3, -1};
    for (int place = 0; place < 6; ++place) EXPECT_EQ(list->GetOriginalColumnPosition(place), columnAt[place]);
    EXPECT_EQ(list->m_arrOrder.GetAt(113), -1);
    EXPECT_EQ(list->m_arrWidth.GetAt(112), 44);
    addRow("A", 1);
    EXPECT_EQ(list->GetItemText(0, 4), "A/3") << "cells follow";
    close();
    open([](CMrktWatchListCtrl& watch) {
        EXPECT_EQ(watch.InsertMrktColumn(0, "First", 1, 44, 0), 112);
        EXPECT_EQ(watch.m_arrOrder.GetAt(0), -1) << "a column that stood in no array yet is hidden";
        EXPECT_EQ(watch.m_arrVisible.GetCount(), 1);
    });
}

// What one window reads of the store is what all have; a number that nobody has makes no column.
TEST_F(MarketWatch, NumbersThatTheStoreLeavesOutAreNoColumns) {
    const std::string stored = "114\xA7Twice\xA7 \"1\" * 2\xA7 \"c1\" * 2";
    fakeHost().marketWatchColumns["MarketWatch"] = stored;
    for (int start = 0; start < 2; ++start) {
        open();
        EXPECT_EQ(header(), "c0:60 c1:60 c2:60 c3:60 Twice:80");
        EXPECT_EQ(list->m_arrOrder.GetCount(), 115) << "the arrays are in step";
        EXPECT_EQ(list->m_arrWidth.GetCount(), 115);
        EXPECT_EQ(list->GetOriginalColumnPosition(4), 114);
        EXPECT_EQ(iMrktInfoColCount, 114);
        close();
        EXPECT_EQ(fakeHost().marketWatchColumns["MarketWatch"], stored);
        startProcess();
    }
}

// ---- The store of user columns

struct WatchStore : MarketWatch {
    static std::string& stored() { return fakeHost().marketWatchColumns["MarketWatch"]; }
    static sQuorColInfo formula(const char* name) {
        sQuorColInfo column;
        setColumnName(column, name);
        column.iWidth = 80;
        column.csExpression = column.csToolTip = " 7";
        return column;
    }
    void importFrom(const char* text) {
        const CString file = "watch_store_test.ini";
        CString value = text, path = file, error;
        frame().SetWindowText("Desk");
        if (text) {
            ASSERT_TRUE(quoru_appdata_ini_file_operations(1, "MarketWatch", "MW:Desk", value, path, error)) << error;
        }
        list->ImportColumnsFromFile(text ? file : "no such file.ini");
    }
};

TEST_F(WatchStore, IsNeverReplacedByWhatCouldNotBeRead) {
    const struct {
        const char* name;
        const char* stored;
        std::function<void()> life;
    } cases[] = {
        {"never built", kTwice,
         [&] {
             list = std::make_unique<CMrktWatchListCtrl>();
             fill();
             list->Create(WS_CHILD, CRect(0, 0, 600, 300), &owner, kWatchId);
         }},
        {"refused", kTwice,
         [&] {
             fakeHost().onStore = [](int operation) { return operation == 1; };
             open();
         }},
        {"a text that does not fit",
         "5000\xA7Twice\xA7i\xA7"
         "d",
         [&] { open(); }},
        {"an import without a file", kTwice,
         [&] {
             open();
             importFrom(nullptr);
         }},
        {"an import that does not fit", kTwice,
         [&] {
             open();
             importFrom("9999,0,60,c0,CUSTOMCOLUMN,");
         }},
        {"an import cut short", kTwice,
         [&] {
             open();
             importFrom("0,0,60,c0,1,1,60,c1");
         }},
        {"another watch that was changed meanwhile",
         "113\xA7New\xA7i\xA7"
         "d",
         [&] {
             const std::string changed = std::exchange(stored(), kTwice);
             open();
             stored() = changed;
         }},
    };
    for (const auto& step : cases) {
        SCOPED_TRACE(step.name);
        startProcess();
        stored() = step.stored;
        step.life();
        close();
        fakeHost().onStore = {};
        EXPECT_EQ(stored(), step.stored);
    }
}

TEST_F(WatchStore, TakesWhatTheUserAddedDeletedOrImported) {
    open();  // nothing is stored: the host refuses to read
    list->m_arrColumns.Add(formula("First"));
    close();
    EXPECT_EQ(stored(),
              "112\xA7"
              "First\xA7 7\xA7 7");
    startProcess();
    open();
    EXPECT_EQ(header(), "c0:60 c1:60 c2:60 c3:60 First:80");
    setColumnName(list->m_arrColumns[112], "Edited");
    list->SaveState();
    EXPECT_EQ(stored(),
              "112\xA7"
              "Edited\xA7 7\xA7 7");
    list->m_arrColumns.RemoveAt(112);
    list->SaveState();
    EXPECT_EQ(stored(), "");
    importFrom(
        "0,0,60,c0,CUSTOMCOLUMN,112\xA7"
        "1\xA7"
        "60\xA7"
        "Imported\xA7 7\xA7 7");
    list->SaveState();
    EXPECT_EQ(stored(),
              "112\xA7"
              "Imported\xA7 7\xA7 7");
    importFrom("0,0,60,c0,CUSTOMCOLUMN,");
    close();
    EXPECT_EQ(stored(), "");
}

TEST_F(WatchStore, NoEndAtAnyMomentLosesAStoredLayout) {
    stored() = kTwice;
    open();
    list->SetColumnWidth(0, 33);
    list->GridLines();
    close();
    std::unique_ptr<test::EveryMoment> moments;
    bool ends = false;
    const auto life = [&] {
        startProcess();
        ends = false;
        if (!owner.m_hWnd) createOwner();
        open([&](CMrktWatchListCtrl& watch) { moments->moment(watch); });
        int order[] = {4, 1, 0, 2, 3};
        CArray<int, int> columns, widths;
        for (const int column : {0, 112, 2}) columns.Add(column), widths.Add(40);
        const std::function<void()> steps[] = {[&] { list->GetHeaderCtrl()->SetOrderArray(5, order); },
                                               [&] { list->SaveState(); },
                                               [&] { list->m_arrColumns.Add(formula("New")); },
                                               [&] { list->LoadHeaders(&columns, &widths); },
                                               [&] { list->GridLines(); },
                                               [&] { ends = true; }};
        for (const auto& step : steps) {
            moments->moment(*list);
            if (list->m_hWnd && list->GetHeaderCtrl()) step();
        }
        ends = true;
        list.reset();
    };
    moments = std::make_unique<test::EveryMoment>(life);
    moments->disturbWindowsAndWrites([&] { return ends ? nullptr : list.get(); }, owner);
    EXPECT_GT(moments->moments(), 15);
}

TEST_F(MarketWatch, TheWatchMadeLastIsKnownUntilItGoes) {
    open();
    EXPECT_EQ(CMrktWatchListCtrl::g_pLastMarketWatch, list.get());
    {
        CMrktWatchListCtrl later;
        EXPECT_EQ(CMrktWatchListCtrl::g_pLastMarketWatch, &later);
    }
    EXPECT_EQ(CMrktWatchListCtrl::g_pLastMarketWatch, nullptr);
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

TEST_F(MarketWatch, LevelsAreReadUnderTheNameInTheCombo) {
    open();
    CComboBox combo;
    combo.Create(WS_CHILD | CBS_DROPDOWN, CRect(0, 310, 200, 400), &owner, 901);
    combo.SetWindowText("Metals");
    list->SortProfileCombo = &combo;
    list->m_bMultiSortEnabled = 1;
    auto& stored = fakeHost().settings[{"MarketWatchNew_Metals", "COLUMN_SORT_ORDER_PROFILE"}];
    const auto logged = [] {
        return fakeHost().count(
            "AddToTabbedLog Few columns in the multi sort order are hidden in Metals, resave the multicolumn sort to "
            "update the setting 0 0");
    };
    stored = "c1->1,c9->-1#1";
    {
        test::MessageBoxAnswerer answerer;
        list->ReadSortOrderProfile();
        EXPECT_EQ(answerer.texts(), Texts{"Please select columns that are visible in the list for sorting"});
    }
    EXPECT_EQ(logged(), 1) << "the watch's name, without its section's";
    EXPECT_EQ(list->m_arrSortOrder.GetCount(), 1);
    LevelsAsChooser chooser(list->m_arrSortOrder);
    list->SetSortOrderChooser(&chooser);
    list->SaveSortOrderProfile();
    EXPECT_EQ(stored, "c1->1#1");
    {
        test::MessageBoxAnswerer answerer;
        fakeHost().refuseWrites = true;
        list->SaveSortOrderProfile();
        fakeHost().refuseWrites = false;
        EXPECT_EQ(answerer.texts(), Texts{"Error while saving sort column profile"});
    }
    for (const char* nothing : {"", ",", ",,"}) {
        stored = nothing;
        list->m_bMultiSortActive = 1;
        list->ReadSortOrderProfile();
        EXPECT_FALSE(list->m_bMultiSortActive) << nothing;
    }
    combo.DestroyWindow();
    stored = "c1->1#1";
    list->ReadSortOrderProfile();
    EXPECT_FALSE(list->m_bMultiSortActive) << "no combo, no name";
}

TEST_F(MarketWatch, AnImportRebuildsARunningWatch) {
    fakeHost().marketWatchColumns["MarketWatch"] = kTwice;
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
    EXPECT_EQ(header(), "c0:60 c1:60 c2:60 c3:60 Twice:80");
    EXPECT_EQ(iMrktInfoColCount, 112);
    EXPECT_EQ(iNewDataArrCnt, 1);
    EXPECT_EQ(owner.calls.take(), test::Calls{"rebuilt 900 0"});
    frame().SetWindowText("Elsewhere");
    list->ImportColumnsFromFile(file);
    EXPECT_EQ(list->m_arrVisible.GetCount(), 112);
    ASSERT_EQ(list->GetHeaderCtrl()->GetItemCount(), 112) << "each heading stands over its own texts";
    EXPECT_EQ(iMrktInfoColCount, 112);
    EXPECT_TRUE(owner.calls.take().empty());
}

TEST_F(MarketWatch, ALockStaysWithItsUserColumnThroughAnImport) {
    std::string& stored = fakeHost().marketWatchColumns["MarketWatch"];
    const CString file = "watch_lock_test.ini";
    frame().SetWindowText("Desk");
    stored = kTwice;
    open();
    list->ExportColumnToFile("Desk", file);
    close();
    startProcess();
    stored =
        "112\xA7"
        "Other\xA7 7\xA7 7\xA7"
        "113" +
        stored.substr(3);
    fakeHost().settings[{"watch", "SortLockInfo"}] = "True,113,1";
    open([](CMrktWatchListCtrl& watch) { watch.m_bLockSortEnabled = 1; });
    list->ImportColumnsFromFile(file);
    EXPECT_EQ(list->m_bSortLocked, 1);
    EXPECT_EQ(list->m_nLockSortColumn, 112);
    close();
    EXPECT_EQ((fakeHost().settings[{"watch", "SortLockInfo"}]), "True,112,1");
}

}  // namespace
