// Columns that survive, on real lists: the host's store, files, the factory, and hosts that refuse. What a text means
// is tested in the core.
#include "ListFixture.h"
#include "platform/tools/QuorTools.h"
#include "support/EveryMoment.h"

#include <filesystem>

namespace {

using namespace list_tests;

constexpr DWORD kGridLineStyle = LVS_EX_GRIDLINES;

// A list as it ships, with what is protected made callable.
class PlainList : public CCommonListCtrl {
public:
    test::CallRecorder calls;
    bool isMarketWatch = false;

protected:
    bool ExportMarketWatch(const CString& name, const CString&) override {
        if (isMarketWatch) calls.record("export watch", name.GetString());
        return isMarketWatch;
    }
    bool ImportMarketWatch(const CString&) override {
        if (isMarketWatch) calls.record("import watch");
        return isMarketWatch;
    }
    void OnColumnsImported() override { calls.record("imported"); }
};

struct Profiles : ListFixture {
    Profiles() {
        char folder[MAX_PATH];
        ::GetTempPathA(MAX_PATH, folder);
        file.Format("%sprofile_tests_%u.ini", folder, static_cast<unsigned>(::GetCurrentProcessId()));
        ::DeleteFileA(file);
    }
    ~Profiles() override { ::DeleteFileA(file); }

    static std::string& stored(const char* key) { return fakeHost().settings[{"orders", key}]; }

    void start(CCommonListCtrl& list, std::initializer_list<const char*> names = {"Symbol", "Price", "Qty"}) {
        list.m_csListName = "orders";
        addColumns(list, names);
        create(list);
        list.InsertColumnsForList(nullptr);
    }
    // Starts a list with these columns, shows it and takes it away again.
    std::string afterRestart(std::initializer_list<const char*> names = {"Symbol", "Price", "Qty"}) {
        PlainList list;
        start(list, names);
        const std::string shown = header(list) + " | " + ints(list.m_arrOrder);
        list.DestroyWindow();
        return shown;
    }
    void writeFile(const char* text) {
        CString value = text, error;
        ASSERT_TRUE(quoru_appdata_ini_file_operations(1, "orders", "COLUMNPROFILE", value, file, error)) << error;
    }
    std::string fileText() {
        CString value, error;
        quoru_appdata_ini_file_operations(0, "orders", "COLUMNPROFILE", value, file, error);
        return value.GetString();
    }

    CString file;
};

const char* const kWithUserColumn = "0,1,50,1,-1,0,2,0,70,3,2,60,Ratio#F#T";

TEST_F(Profiles, SavedOnDestroyAndRestoredOnStart) {
    stored("COLUMNPROFILE") = kWithUserColumn;
    PlainList list;
    start(list);
    EXPECT_EQ(header(list), "Qty:70 Symbol:50 Ratio:60");
    list.CListCtrl::SetColumnWidth(1, 55);
    list.DestroyWindow();
    EXPECT_EQ(stored("COLUMNPROFILE"), "0,1,55,1,-1,0,2,0,70,3,2,60,Ratio#F#T");
    EXPECT_EQ(afterRestart(), "Qty:70 Symbol:55 Ratio:60 | 1 -1 0 2");
    EXPECT_EQ(stored("COLUMNPROFILE"), "0,1,55,1,-1,0,2,0,70,3,2,60,Ratio#F#T");
}

TEST_F(Profiles, AnotherVersionOfTheColumnSet) {
    stored("COLUMNPROFILE") = "0,1,50,1,0,60";
    EXPECT_EQ(afterRestart(), "Price:60 Symbol:50 | 1 0 -1");  // added columns stay hidden
    stored("COLUMNPROFILE") = kWithUserColumn;
    EXPECT_EQ(afterRestart({"Symbol", "Price", "Qty", "Time"}), "Qty:70 Symbol:50 Time:60 | 1 -1 0 2");
    // A built-in column that went: what stands behind its numbers is read as a name.
    stored("COLUMNPROFILE") = kWithUserColumn;
    EXPECT_EQ(afterRestart({"Symbol", "Price"}), "3,2,60,Ratio:70 Symbol:50 | 1 -1 0");
    stored("COLUMNPROFILE") = "0,1,50,1,-1,0,2,0,70";
    EXPECT_EQ(afterRestart({"Symbol", "Price"}), "Symbol:80 Price:80 | 0 1");
    EXPECT_EQ(stored("COLUMNPROFILE"), "0,0,80,1,1,80");  // the next save repairs the text
}

// The numbers of user columns stay, since their formulas speak of them; a number that no column has is not stored.
TEST_F(Profiles, AGapBetweenUserColumnsSwallowsNone) {
    stored("COLUMNPROFILE") = "0,0,50,1,1,50,2,2,50,4,3,60,Ratio#F#T,7,4,70,Next#G#U";
    const char* const shown = "Symbol:50 Price:50 Qty:50 Ratio:60 Next:70 | 0 1 2 -1 3 -1 -1 4";
    for (int start = 0; start < 3; ++start) EXPECT_EQ(afterRestart(), shown) << "start " << start;
}

TEST_F(Profiles, NoEndAtAnyMomentLosesAStoredLayout) {
    stored("COLUMNPROFILE") = kWithUserColumn;
    stored("SortLockInfo") = "True,3,1";
    stored("COLUMN_SORT_ORDER_PROFILE") = "Qty->1#0";
    stored("AutoSortTicked") = stored("GridLine") = "true";
    stored("AutoSort") = "2";
    stored("AutoSortOrder") = "1";
    stored("PROFILENAMES") = "dealslip_day";
    stored("dealslip_day") = "0,1,1,-1,2,0";

    PlainList* list = nullptr;
    bool ends = false;
    std::unique_ptr<test::EveryMoment> moments;
    const auto life = [&] {
        if (!owner.m_hWnd) owner.create(frame());
        PlainList itself;
        list = &itself;
        ends = false;
        itself.m_bLockSortEnabled = itself.m_bMultiSortEnabled = 1;
        itself.m_csListName = "orders";
        addColumns(itself, {"Symbol", "Price", "Qty"});
        create(itself);
        CArray<int, int> columns, widths;
        for (const int column : {3, 1, 0}) columns.Add(column), widths.Add(40 + column);
        const std::function<void()> steps[] = {[&] { itself.InsertColumnsForList(nullptr); },
                                               [&] { itself.CListCtrl::SetColumnWidth(1, 55); },
                                               [&] { itself.LoadHeaders(&columns, &widths); },
                                               [&] { itself.OnLockUnlockSortCheck(); },
                                               [&] { itself.SaveState(); },
                                               [&] { itself.GridLines(); },
                                               [&] { itself.KillAutoSortTimer(); },
                                               [&] { ends = true; }};
        for (const auto& step : steps) {
            moments->moment(itself);
            if (itself.m_hWnd) step();
        }
        if (itself.m_hWnd) itself.DestroyWindow();
    };
    moments = std::make_unique<test::EveryMoment>(life);
    moments->disturbWindowsAndWrites([&] { return ends ? nullptr : list; }, owner);
    EXPECT_GT(moments->moments(), 20);
}

TEST_F(Profiles, GroupListsWriteNoUserPart) {
    stored("COLUMNPROFILE") = kWithUserColumn;
    PlainList list;
    list.m_bGroupList = 1;
    start(list);
    list.SaveColumnProfile();
    EXPECT_EQ(stored("COLUMNPROFILE"), "0,1,50,1,-1,0,2,0,70,3,2,60");
    list.ExportColumnToFile(file);
    EXPECT_EQ(fileText(), "0,1,50,Symbol,1,-1,0,Price,2,0,70,Qty,3,2,60,Ratio,");
    list.m_bUseColumnProfile = 0;
    stored("COLUMNPROFILE") = "kept";
    list.DestroyWindow();
    EXPECT_EQ(stored("COLUMNPROFILE"), "kept");
}

TEST_F(Profiles, RefusedWritesAreToldInFixedWords) {
    PlainList list;
    start(list);
    const std::string shown = header(list);
    CStringArray names;
    const test::MessageBoxAnswerer boxes;
    fakeHost().refuseWrites = true;
    list.SaveColumnProfile();
    list.SaveColumnProfileDealSlipReport("day");
    list.DeleteProfile("day");
    list.SaveLastInvokedProfile("day");
    list.SaveDefaultProfile("day");
    list.SaveDealSlipReportProfileNames(names);
    list.SaveGridLineStatus();  // silent
    list.ExportColumnToFile("Z:\\no such folder\\profile.ini");
    EXPECT_EQ(boxes.texts(), (std::vector<std::string>{
                                 "Error while saving column profile", "Error while saving column profile",
                                 "Error while saving column profile", "Error while saving the last invoked profile.",
                                 "Error while saving default profile.", "Error while saving profile names"}));
    EXPECT_EQ(header(list), shown);
    EXPECT_EQ(ints(list.m_arrOrder), "0 1 2");
    fakeHost().refuseWrites = false;
    list.DestroyWindow();
}

TEST_F(Profiles, ExportAndImportThroughAFile) {
    stored("COLUMNPROFILE") = kWithUserColumn;
    {
        PlainList list;
        start(list);
        list.ExportColumns("not used", file);
        EXPECT_EQ(fileText(), "0,1,50,Symbol,1,-1,0,Price,2,0,70,Qty,CUSTOMCOLUMN,3,2,60,Ratio,Ratio#F#T,");
        list.DestroyWindow();
    }
    fakeHost().settings.clear();
    PlainList other;
    start(other, {"Qty", "Time", "Price", "Symbol"});
    owner.calls.take();
    other.ImportColumns(file);
    EXPECT_EQ(header(other), "Qty:70 Symbol:50 Ratio:60");
    EXPECT_EQ(ints(other.m_arrOrder), "0 -1 -1 1 2");
    EXPECT_EQ(ints(other.m_arrWidth), "70 100 0 50 60");
    EXPECT_EQ(other.m_nFirstColumn, 0);
    EXPECT_EQ(other.GetOriginalColumnPosition(1), 3);
    ASSERT_EQ(other.m_arrColumns.GetCount(), 5);
    EXPECT_EQ(other.m_arrColumns[4].csExpression, "F");
    CString tip;
    other.m_ToolTip.GetText(tip, other.GetHeaderCtrl(), 3);
    EXPECT_EQ(tip, "T");
    EXPECT_EQ(owner.calls.take(), test::Calls{"rebuilt 1001 1"});
    EXPECT_EQ(other.calls.take(), test::Calls{"imported"});
    other.ImportColumns(file);  // the user columns of before are replaced
    EXPECT_EQ(other.m_arrColumns.GetCount(), 5);
    EXPECT_EQ(header(other), "Qty:70 Symbol:50 Ratio:60");
    other.DestroyWindow();
}

// User columns get new numbers by an import: lock and levels stay with their headings, or end with their columns.
TEST_F(Profiles, TheSortFollowsItsColumnsThroughAnImport) {
    const struct {
        const char* file;
        const char* lock;
        int levelColumn;  // -1: it ended
        const char* stored;
    } cases[] = {
        {"0,0,50,Symbol,CUSTOMCOLUMN,3,1,60,Ratio,Ratio#F#T,", "1 3 1", 3, "True,3,1"},
        {"0,0,50,Symbol,CUSTOMCOLUMN,3,1,60,New,New#G#U,4,2,60,Ratio,Ratio#F#T,", "1 4 1", 4, "True,4,1"},
        {"0,0,50,Symbol,CUSTOMCOLUMN,3,1,60,New,New#G#U,", "0 -1 0", -1, "False,-1,0"},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.file);
        stored("COLUMNPROFILE") = kWithUserColumn;
        stored("SortLockInfo") = "True,3,1";
        stored("COLUMN_SORT_ORDER_PROFILE") = "Ratio->-1#0";
        writeFile(expected.file);
        PlainList list;
        list.m_bLockSortEnabled = list.m_bMultiSortEnabled = 1;
        start(list);
        ASSERT_EQ(list.m_arrSortOrder.GetCount(), 1);
        list.ImportColumnsFromFile(file);
        CString lock;
        lock.Format("%d %d %d", list.m_bSortLocked, list.m_nLockSortColumn, list.m_nLockSortOrder);
        EXPECT_STREQ(lock, expected.lock);
        EXPECT_EQ(list.m_arrSortOrder.IsEmpty() ? -1 : list.m_arrSortOrder[0].iColumnIndex, expected.levelColumn);
        list.DestroyWindow();
        EXPECT_EQ(stored("SortLockInfo"), expected.stored);
    }
}

TEST_F(Profiles, AUserColumnWithoutAToolTipIsNotRemovedByAnImport) {
    stored("COLUMNPROFILE") = kWithUserColumn;
    PlainList list;
    start(list);
    list.m_arrColumns[3].csToolTip.Empty();
    writeFile("0,0,50,Symbol,3,1,61,Ratio,CUSTOMCOLUMN,");
    list.ImportColumnsFromFile(file);
    EXPECT_EQ(header(list), "Symbol:50 Ratio:61");
    EXPECT_EQ(ints(list.m_arrOrder), "0 -1 -1 1");
    list.DestroyWindow();
}

TEST_F(Profiles, AFailedImportLeavesTheScreenAndDefaultsInTheArrays) {
    stored("COLUMNPROFILE") = kWithUserColumn;
    PlainList list;
    start(list);
    owner.calls.take();
    list.ImportColumnsFromFile(file);
    EXPECT_EQ(header(list), "Qty:70 Symbol:50 Ratio:60");
    EXPECT_EQ(ints(list.m_arrOrder), "0 1 2");
    EXPECT_EQ(list.m_arrColumns.GetCount(), 3);
    EXPECT_EQ(list.m_arrVisible.GetCount(), 3);
    EXPECT_TRUE(owner.calls.take().empty());
    list.DestroyWindow();
    EXPECT_EQ(stored("COLUMNPROFILE"), "0,0,50,1,1,0,2,2,70");
}

TEST_F(Profiles, DoesColumnExistFindsAColumnThatMoved) {
    PlainList list;
    start(list, {"Symbol", "Price", "Price"});
    struct {
        const char* heading;
        int index;
        int found;
    } const cases[] = {{"Price", 2, 2}, {"Price", 0, 1}, {"Gone", 1, -1}, {"Symbol", 3, -1}, {"Symbol", -1, -1}};
    CArray<int, int> seen;
    for (const auto& row : cases) {
        int index = row.index, found = -1;
        EXPECT_EQ(list.DoesColumnExist(row.heading, &index, &found, &seen), row.found != -1) << row.heading;
        EXPECT_EQ(found, row.found) << row.heading;
    }
    EXPECT_EQ(ints(seen), "2 1");
    list.DestroyWindow();
}

TEST_F(Profiles, RecoveryRunsOverBothRegistries) {
    PlainList plain, group, nameless, elsewhere;
    start(plain);
    const auto startIn = [&](PlainList& list, CWnd& parent, UINT id, const char* name) {
        list.m_csListName = name;
        addColumns(list, {"Symbol", "Price"});
        list.Create(kListStyle, kListRect, &parent, id);
        list.InsertColumnsForList(nullptr);
    };
    startIn(nameless, owner, 2, "");
    startIn(elsewhere, frame(), 3, "elsewhere");  // in no registry
    group.m_bGroupList = 1;
    group.isMarketWatch = true;
    startIn(group, frame(), 4, "watch");
    frame().SetWindowText("before");

    CCommonListCtrl::RecoverColumnProfile(false, "Mine", file);
    EXPECT_EQ(fileText(), "0,0,80,Symbol,1,1,80,Price,2,2,80,Qty,");
    EXPECT_EQ(group.calls.take(), test::Calls{"export watch Mine"});
    CString title, value, error;
    frame().GetWindowText(title);
    EXPECT_EQ(title, "Mine");
    EXPECT_FALSE(quoru_appdata_ini_file_operations(0, "elsewhere", "COLUMNPROFILE", value, file, error));

    writeFile("0,1,50,Symbol,1,0,60,Price,CUSTOMCOLUMN,");
    frame().SetWindowText("before");
    CCommonListCtrl::RecoverColumnProfile(true, "Mine", file);
    EXPECT_EQ(header(plain), "Price:60 Symbol:50");
    EXPECT_EQ(header(nameless), "Symbol:80 Price:80");
    EXPECT_EQ(header(elsewhere), "Symbol:80 Price:80");
    EXPECT_EQ(group.calls.take(), test::Calls{"import watch"});
    frame().GetWindowText(title);
    EXPECT_EQ(title, "before");

    plain.DestroyWindow();  // still registered, without a window
    CCommonListCtrl::RecoverColumnProfile(false, "Mine", file);
    EXPECT_EQ(fileText(), "0,1,50,Symbol,1,0,60,Price,CUSTOMCOLUMN,");
    for (PlainList* list : {&group, &nameless, &elsewhere}) list->DestroyWindow();
}

TEST_F(Profiles, AGroupListTellsItsDirectParent) {
    PlainList list;
    list.m_csListName = "orders";
    list.m_bGroupList = 1;
    addColumns(list, {"Symbol", "Price"});
    list.Create(kListStyle, kListRect, &frame(), 55);
    list.InsertColumnsForList(nullptr);
    test::CallRecorder heard;
    frame().onMessage = [&](UINT message, WPARAM wParam, LPARAM lParam, LRESULT&) {
        if (message == WM_USER + 123) heard.record("rebuilt", wParam, lParam);
        return false;
    };
    writeFile("0,1,50,Symbol,1,0,60,Price,");
    list.ImportColumnsFromFile(file);
    EXPECT_EQ(heard.take(), test::Calls{"rebuilt 55 0"});
    EXPECT_TRUE(list.calls.take().empty());
    list.DestroyWindow();
}

// The factory's file stands beside the executable.
struct Factory : Profiles {
    Factory() { remove(); }
    ~Factory() override { remove(); }
    static void remove() {
        char path[MAX_PATH];
        ::GetModuleFileNameA(nullptr, path, MAX_PATH);
        ::DeleteFileA((std::filesystem::path(path).parent_path() / "FactorySetting.ini").string().c_str());
    }
    static void write(const char* text) {
        CString value = text, error, name = "FactorySetting.ini";
        ASSERT_TRUE(quoru_ini_file_operations(1, "COLUMN PROFILE", "orders", value, name, error)) << error;
    }
};

TEST_F(Factory, BringsRegisteredListsBack) {
    PlainList list;
    start(list);
    owner.calls.take();
    write("2,0,70,0,1,50,1,-1,0");
    CCommonListCtrl::ApplyColumnProfile();
    EXPECT_EQ(header(list), "Qty:70 Symbol:50");
    EXPECT_EQ(ints(list.m_arrOrder), "1 -1 0");
    EXPECT_EQ(owner.calls.take(), test::Calls{"rebuilt 1001 0"});
    for (const char* text : {"", "0,-1,50", "0,0,50,4096,1,60"}) {
        write(text);
        CCommonListCtrl::ApplyColumnProfile();
        EXPECT_EQ(header(list), "Qty:70 Symbol:50") << text;
    }
    EXPECT_TRUE(owner.calls.take().empty());
    list.DestroyWindow();
}

TEST_F(Factory, AFailedReadingIsToldAndGroupListsArePassedBy) {
    PlainList list, group;
    start(list);
    group.m_bGroupList = 1;
    group.m_csListName = "orders";
    addColumns(group, {"Symbol", "Price", "Qty"});
    group.Create(kListStyle, kListRect, &owner, 2);
    group.InsertColumnsForList(nullptr);
    {
        const test::MessageBoxAnswerer boxes;
        CCommonListCtrl::ApplyColumnProfile();
        ASSERT_EQ(boxes.texts().size(), 1u);
        EXPECT_NE(boxes.texts()[0].find("FactorySetting.ini"), std::string::npos) << boxes.texts()[0];
    }
    EXPECT_EQ(header(list), "Symbol:80 Price:80 Qty:80");
    write("1,0,60");
    CCommonListCtrl::ApplyColumnProfile();
    EXPECT_EQ(header(list), "Price:60");
    EXPECT_EQ(header(group), "Symbol:80 Price:80 Qty:80");
    list.DestroyWindow();
    group.DestroyWindow();
}

TEST_F(Profiles, GridLinesAreSavedAndAStoredTrueFlipsThem) {
    PlainList list;
    start(list);
    EXPECT_EQ(list.GetExtendedStyle() & kGridLineStyle, 0u);
    list.GridLines();
    EXPECT_EQ(list.GetExtendedStyle() & kGridLineStyle, kGridLineStyle);
    EXPECT_EQ(list.m_bGridLines, 1);
    list.DestroyWindow();
    EXPECT_EQ(stored("GridLine"), "true");
    PlainList next;
    start(next);
    EXPECT_EQ(next.GetExtendedStyle() & kGridLineStyle, kGridLineStyle);
    next.ReadGridLineStatus();
    EXPECT_EQ(next.GetExtendedStyle() & kGridLineStyle, 0u);
    EXPECT_EQ(next.m_bGridLines, 1);
    stored("GridLine") = "True";
    next.ReadGridLineStatus();
    EXPECT_EQ(next.m_bGridLines, 0);
    next.DestroyWindow();
    EXPECT_EQ(stored("GridLine"), "false");
}

TEST_F(Profiles, DealSlipProfilesComeBack) {
    stored("PROFILENAMES") = "dealslip_day,dealslip_gone,dealslip_empty";
    stored("LASTINVOKEDPROFILE") = "dealslip_day";
    stored("DEFAULTPROFILE") = "gone";
    stored("dealslip_day") = "0,1,1,-1,2,0";
    stored("dealslip_empty") = "";
    stored("COLUMNPROFILE") = "0,0,50,1,1,60,2,2,70,3,3,80,Ratio#F#T";
    PlainList list;
    start(list);
    list.InsertColumnsForList(nullptr);  // reading twice leaks and doubles nothing
    ASSERT_EQ(list.m_arrProfileNames.GetCount(), 3);
    EXPECT_EQ(list.m_arrProfileNames[0], "day");
    EXPECT_EQ(list.m_csLastInvokedProfile, "day");
    EXPECT_EQ(list.m_csDefaultProfile, "gone");
    EXPECT_EQ(list.m_mapDealSlipProfiles.GetCount(), 1);
    CArray<int, int>* places = nullptr;
    ASSERT_TRUE(list.m_mapDealSlipProfiles.Lookup("day", places));
    EXPECT_EQ(ints(*places), "1 -1 0");

    list.m_nBaseColumnCount = 3;
    list.SaveColumnProfileDealSlipReport("day");
    EXPECT_EQ(stored("dealslip_day"), "0,1,1,-1,2,0,3,-1,Ratio#F#T");
    list.SaveColumnProfileDealSlipReport("unknown");
    EXPECT_EQ(stored("dealslip_unknown"), "");
    list.DeleteProfile("day");
    EXPECT_EQ(stored("dealslip_day"), "");
    list.SaveLastInvokedProfile("night");
    EXPECT_EQ(stored("LASTINVOKEDPROFILE"), "dealslip_night");
    list.SaveDefaultProfile("");
    EXPECT_EQ(stored("DEFAULTPROFILE"), "dealslip_");
    CStringArray names;
    names.Add("day");
    names.Add("night");
    list.SaveDealSlipReportProfileNames(names);
    EXPECT_EQ(stored("PROFILENAMES"), "dealslip_day,dealslip_night");
    list.DestroyWindow();
}

TEST_F(Profiles, AppearanceRecordsReachTheControl) {
    const auto write = [&](const char* section, const char* text) {
        CString value = text, error;
        quoru_appdata_ini_file_operations(1, section, "orders-1001", value, file, error);
    };
    write("CUSTOMIZE_LISTS", "10,FF,Arial,9,1,buy,AA,");
    write("USER_CUSTOMIZE_LISTS", "20,EE,Tahoma,12,sell,1,2,");
    CCommonListCtrl::SetRecoveryFiles(file, "");
    PlainList list;
    start(list);
    EXPECT_EQ(list.m_bCustomized, 1);
    EXPECT_EQ(list.GetBkColor(), 0x20u);
    EXPECT_EQ(list.GetTextColor(), 0xEEu);
    LOGFONT font{};
    list.GetFont()->GetLogFont(&font);
    EXPECT_STREQ(font.lfFaceName, "Arial");
    EXPECT_EQ(list.m_Appearance.iKeywordColumn, 1);
    ASSERT_EQ(list.m_Appearance.pKeywords->GetCount(), 1);
    EXPECT_EQ(list.m_Appearance.pKeywords->GetAt(0), "BUY");
    EXPECT_EQ(list.m_Appearance.pUserBackColors->GetAt(0), 2u);
    list.DestroyWindow();
}

}  // namespace
