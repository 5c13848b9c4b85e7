// Columns, cells, levels and stored texts of a market watch.
#include "MarketWatchFixture.h"
#include "quor/platform/tools/QuorTools.h"
#include "support/EveryMoment.h"
#include "support/MessageBoxAnswerer.h"

#include <cstring>
#include <vector>

using namespace quor::list;

namespace {

using namespace watch_tests;
using Texts = std::vector<std::string>;

// A user column with number and formula, as the store and as a watch's file has it.
std::string user(const std::string& number, const std::string& name, const std::string& formula) {
    return number + "\xA7" + name + "\xA7" + formula + "\xA7 \"c1\" * 2";
}
std::string inFile(const std::string& number, const std::string& name, const std::string& formula) {
    return "0,0,60,c0,CUSTOMCOLUMN," + user(number + "\xA7" + "1\xA7" + "60", name, formula);
}
const std::string kTwice = user("112", "Twice", " \"1\" * 2");

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
    {
        CMrktWatchListCtrl later;
        EXPECT_EQ(CMrktWatchListCtrl::g_pLastMarketWatch, &later);
    }
    EXPECT_EQ(CMrktWatchListCtrl::g_pLastMarketWatch, nullptr);
}

TEST_F(MarketWatch, WhatAFormulaAnswers) {
    const struct {
        const char* formula;
        int result;
        const char* shown;
    } columns[] = {
        {" \"1\" / 3", 1, "3.33"},
        {" \"112\" * 3", 1, "9.99"},       // another user column, with the two decimals that it shows
        {" \"1\" + \"200\"", 0, "10.00"},  // nowhere: the last text that was found
        {" \"1\" \"1\"", 0, "10.00"},      // leftover
    };
    for (int number = 112; const auto& column : columns)
        userColumns() += (number > 112 ? "\xA7" : "") + user(std::to_string(number), "U", column.formula), ++number;
    open();
    addRow("A", 10);
    auto* const record = reinterpret_cast<sMWStruct*>(&rows[0]);
    CString text;
    const test::MessageBoxAnswerer answerer;
    for (int number = 112; const auto& column : columns) {
        EXPECT_EQ(list->GetCustomColumnText(record, number++, text), column.result) << column.formula;
        EXPECT_EQ(text, column.shown) << column.formula;
    }
    EXPECT_EQ(answerer.texts(), Texts{"Invalid Expression,while calculating value"});
    EXPECT_EQ(list->GetCustomColumnText(record, 111, text), 1) << "a built-in column has none";
    EXPECT_EQ(list->GetCustomColumnText(record, 116, text), 0) << "no such column";
    EXPECT_EQ(text, "10.00");
    fakeHost().marketCell = [this](CWnd*, void*, int, CString& cell) {
        list.reset();
        cell = "5";
    };
    EXPECT_EQ(list->GetCustomColumnText(record, 114, text), 0);
    EXPECT_EQ(text, "5") << "the host ended the list: nothing was asked for afterwards";
}

TEST_F(MarketWatch, ColumnsAreAddedOneByOne) {
    open();
    EXPECT_EQ(list->InsertMrktColumn(1, "New", 1, 44, 1), 112);
    EXPECT_EQ(list->InsertMrktColumn(0, "Hidden", 1, 30, -1), 113);
    EXPECT_EQ(header(*list), "c0:60 New:44 c1:60 c2:60 c3:60");
    list->m_nSortCol = list->m_nLastSortCol = 1;
    list->InsertMrktColumn(0, "First", 1, 20, 0);
    EXPECT_EQ(list->m_nFirstColumn, 114);
    EXPECT_EQ(std::pair(list->m_nSortCol, list->m_nLastSortCol), std::pair(2, 2));
    addRow("A", 1);
    EXPECT_EQ(list->GetItemText(0, 5), "A/3") << "cells follow";
}

// What one window reads of the store is what all have; a number that nobody has makes no column.
TEST_F(MarketWatch, NumbersThatTheStoreLeavesOutAreNoColumns) {
    const std::string column = user("114", "Twice", " 7");
    userColumns() = column + "\xA7" + user("5", "no", "1");
    for (int round = 0; round < 2; ++round) {
        startProcess();
        open();
        EXPECT_EQ(header(*list), "c0:60 c1:60 c2:60 c3:60 Twice:80");
        EXPECT_EQ(list->m_arrWidth.GetCount(), 115) << "the arrays are in step";
        EXPECT_EQ(list->GetOriginalColumnPosition(4), 114);
        EXPECT_EQ(iMrktInfoColCount, 114);
        CString tip;
        list->m_ToolTip.GetText(tip, list->GetHeaderCtrl(), 5);
        EXPECT_EQ(tip, " \"c1\" * 2") << "the header explains it by headings";
        close();
        EXPECT_EQ(userColumns(), column);
    }
}

// ---- The store of user columns, and files

struct WatchStore : MarketWatch {
    // The title of the frame names the watch.
    void SetUp() override { frame().SetWindowText("Desk"); }
    ~WatchStore() override { ::DeleteFileA(file); }
    void addFormula(const char* name) {
        list_tests::addColumns(*list, {name});
        sQuorColInfo& column = list->m_arrColumns[list->m_arrColumns.GetUpperBound()];
        column.csExpression = " \"c1\" * 2";
        column.csToolTip = " 7";
    }
    void importFrom(const std::string& text) {
        CString value = text.c_str(), error;
        ASSERT_TRUE(quoru_appdata_ini_file_operations(1, "MarketWatch", "MW:Desk", value, file, error)) << error;
        list->ImportColumnsFromFile(file);
    }

    CString file = "watch_store_test.ini";
};

TEST_F(WatchStore, IsNeverReplacedByWhatCouldNotBeRead) {
    const std::string unfit = user("5000", "Twice", " 7"), changed = user("113", "New", " 7");
    const struct {
        const char* name;
        std::string stored;
        std::function<void()> life;
    } cases[] = {
        {"refused", kTwice,
         [&] {
             fakeHost().onStore = [](int operation) { return operation == 1; };
             open();
         }},
        {"a text that does not fit", unfit, [&] { open(); }},
        {"an import without a file", kTwice, [&] { open(), list->ImportColumnsFromFile("no such file.ini"); }},
        {"an import cut short", kTwice, [&] { open(), importFrom("0,0,60,c0,1,1,60,c1"); }},
        {"another watch that was changed meanwhile", changed,
         [&] {
             userColumns() = kTwice;
             open();
             userColumns() = changed;
         }},
    };
    for (const auto& step : cases) {
        SCOPED_TRACE(step.name);
        startProcess();
        userColumns() = step.stored;
        step.life();
        close();
        fakeHost().onStore = {};
        EXPECT_EQ(userColumns(), step.stored);
    }
}

TEST_F(WatchStore, TakesWhatTheUserAddedDeletedOrImported) {
    open();  // nothing is stored: the host refuses to read
    addFormula("First");
    close();
    EXPECT_EQ(userColumns(), user("112", "First", " 7"));
    startProcess();
    open();
    EXPECT_EQ(header(*list), "c0:60 c1:60 c2:60 c3:60 First:80");
    const std::pair<std::function<void()>, std::string> changes[] = {
        {[&] { setColumnName(list->m_arrColumns[112], "Edited"); }, user("112", "Edited", " 7")},
        {[&] { list->m_arrColumns.RemoveAt(112); }, ""},
        {[&] { importFrom(inFile("500", "Imported", " 7")); }, user("112", "Imported", " 7")},
        {[&] { importFrom("0,0,60,c0,CUSTOMCOLUMN,"); }, ""},
    };
    for (const auto& [change, expected] : changes) {
        change();
        list->SaveState();
        EXPECT_EQ(userColumns(), expected);
    }
}

TEST_F(WatchStore, NoEndAtAnyMomentLosesAStoredLayout) {
    userColumns() = kTwice;
    open();
    list->SetColumnWidth(0, 33);
    list->GridLines();
    close();
    std::unique_ptr<test::EveryMoment> moments;
    bool ends = false;
    const auto life = [&] {
        startProcess();
        ends = false;
        if (!owner.m_hWnd) owner.create(frame());
        open([&](CMrktWatchListCtrl& watch) { moments->moment(watch); });
        int order[] = {4, 1, 0, 2, 3};
        const auto shown = {0, 112, 2};
        const std::function<void()> steps[] = {[&] { list->GetHeaderCtrl()->SetOrderArray(5, order); },
                                               [&] { list->SaveState(); },
                                               [&] { addFormula("New"); },
                                               [&] { list_tests::loadHeaders(*list, shown); },
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

TEST_F(WatchStore, AnImportRebuildsARunningWatch) {
    userColumns() = kTwice;
    open();
    list->ExportColumnToFile("Desk", file);
    list->SetColumnWidth(0, 33);
    list_tests::loadHeaders(*list, {5, 6});
    owner.calls.take();
    list->ImportColumnsFromFile(file);
    EXPECT_EQ(header(*list), "c0:60 c1:60 c2:60 c3:60 Twice:80");
    EXPECT_EQ(iMrktInfoColCount, 112);
    EXPECT_EQ(owner.calls.take(), Calls{"rebuilt 1001 0"});
    frame().SetWindowText("Elsewhere");
    list->ImportColumnsFromFile(file);
    EXPECT_EQ(list->GetHeaderCtrl()->GetItemCount(), 112) << "each heading stands over its own texts";
    EXPECT_TRUE(owner.calls.take().empty());
}

TEST_F(WatchStore, ALockStaysWithItsUserColumnThroughAnImport) {
    userColumns() = user("112", "Other", " 7") + "\xA7" + user("113", "Twice", " 7");
    stored("SortLockInfo") = "True,113,1";
    open([](CMrktWatchListCtrl& watch) { watch.m_bLockSortEnabled = 1; });
    list->m_Appearance.iKeywordColumn = 113;
    importFrom(inFile("113", "Twice", " 7"));
    EXPECT_EQ(list_tests::lock(*list), "1 112 1");
    EXPECT_EQ(list->m_Appearance.iKeywordColumn, 112);
    close();
    EXPECT_EQ(stored("SortLockInfo"), "True,112,1");
}

// ---- Levels

// Of levels that are chosen, sorted by and stored the panes of the terminal tell.
TEST_F(MarketWatch, LevelsAreReadUnderTheNameInTheComboAndHiddenOnesTold) {
    std::string& levels = fakeHost().settings[{"MarketWatchNew_Metals", "COLUMN_SORT_ORDER_PROFILE"}];
    levels = "c1->-1,c9->-1,c0->1#1";
    open();
    for (const char* symbol : {"B", "A", "C"}) addRow(symbol, symbol[0] == 'A' ? 3 : 1);
    list->m_arrColumns[0].iDataType = 3;
    list->m_bMultiSortEnabled = list->m_bSortLocked = 1;
    list->ReadSortOrderProfile();
    EXPECT_FALSE(list->m_bMultiSortActive) << "no combo, no name";
    CComboBox combo;
    combo.Create(WS_CHILD | CBS_DROPDOWN, CRect(0, 310, 200, 400), &owner, 901);
    combo.SetWindowText("Metals");
    list->SortProfileCombo = &combo;
    const test::MessageBoxAnswerer answerer;
    list->ReadSortOrderProfile();
    EXPECT_EQ(answerer.texts(), Texts{"Please select columns that are visible in the list for sorting"});
    EXPECT_EQ(fakeHost().calls.count("AddToTabbedLog Few columns in the multi sort order are hidden in Metals, resave "
                                     "the multicolumn sort to update the setting 0 0"),
              1)
        << "the watch's name, without its section's";
    EXPECT_FALSE(list->m_bSortLocked);
    list->SortListOnMultiplelevel();
    EXPECT_EQ(list_tests::column(*list, 0), "C/0 B/0 A/0");
    levels = ",,";
    list->ReadSortOrderProfile();
    EXPECT_FALSE(list->m_bMultiSortActive) << "nothing stored ends the sort";
}

}  // namespace
