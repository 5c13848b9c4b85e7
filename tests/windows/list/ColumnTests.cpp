// The column set on a real header, its tool tips, and columns that survive: the host's store, files, the factory, and
// hosts that refuse. Which columns come and what a text means is tested in the core.
#include "ListFixture.h"
#include "quor/list/ListCommands.h"
#include "quor/platform/tools/QuorTools.h"
#include "support/CellTip.h"
#include "support/EveryMoment.h"
#include "support/MessageBoxAnswerer.h"

#include <filesystem>

using namespace quor::list;

namespace {

using namespace list_tests;

using Columns = ListFixture;
using ColumnsOnEachRoad = test::OnEachRoad<Columns>;
INSTANTIATE_TEST_SUITE_P(, ColumnsOnEachRoad, test::eachRoad, test::roadName);

TEST_P(ColumnsOnEachRoad, ASetIsReplacedAndTheDialogIsTold) {
    stored("COLUMNPROFILE") = "0,0,50";
    list.m_bUseColumnProfile = 0;
    start(list);
    EXPECT_EQ(header(list), "Symbol:80 Price:80 Qty:80") << "without a profile";
    const int shown[] = {1, 0};
    EXPECT_EQ(list.SetDefaultCols(2, shown), 1);
    EXPECT_EQ(list.SetDefaultCols(0, shown), 0);
    list.InsertColumnsForList(nullptr);
    EXPECT_EQ(header(list), "Price:80 Symbol:80");
    CArray<int, int> one;
    one.Add(2);
    list.SetDefaultCols(one);
    list.InsertColumnsForList(nullptr);
    EXPECT_EQ(header(list), "Qty:80");
    owner.calls.clear();
    loadHeaders(list, {2, 0});
    EXPECT_EQ(columns(list), "Qty:40 Symbol:41 | 1 -1 0");
    EXPECT_EQ(ints(list.m_arrWidth), "41 0 40");
    EXPECT_EQ(list.m_nFirstColumn, 2);
    EXPECT_EQ(list.GetOriginalColumnPosition(1), 0);
    EXPECT_EQ(owner.calls.take(), Calls{"rebuilt 1001 0"});
}

// --- Tool tips of the headings

struct HeaderToolTips : ListFixture {
    static constexpr DWORD kLongEnough = 50;  // ms, for a tip that waits for 1
    void SetUp() override { start(list); }
    // "text left..right" of each tool, by header item.
    std::string tools() {
        std::string picture;
        for (int item = 0; item < list.GetHeaderCtrl()->GetItemCount(); ++item) {
            char text[80] = "";
            TOOLINFO info{};
            info.lpszText = text;
            const auto id = static_cast<UINT_PTR>(item) + 1;
            list.m_ToolTip.GetToolInfo(info, list.GetHeaderCtrl(), id);
            picture += (item ? ", " : "") + std::string(text) + " " + std::to_string(info.rect.left) + ".." +
                       std::to_string(info.rect.right);
        }
        return picture;
    }
};

using HeaderToolTipsOnEachRoad = test::OnEachRoad<HeaderToolTips>;
INSTANTIATE_TEST_SUITE_P(, HeaderToolTipsOnEachRoad, test::eachRoad, test::roadName);

TEST_P(HeaderToolTipsOnEachRoad, CoverTheirColumnsWhateverMovesThem) {
    EXPECT_EQ(tools(), "Symbol 0..80, Price 80..160, Qty 160..240");
    const HWND control = list.GetHeaderCtrl()->m_hWnd;
    quor::sendDrag(control, CPoint(40, 5), CPoint(230, 5));
    pumpUntilIdle();
    quor::sendMouseMove(control, CPoint(20, 5));
    pumpUntilIdle();
    EXPECT_EQ(tools(), "Symbol 160..240, Price 0..80, Qty 80..160");
    list.SetColumnWidth(1, 30);
    EXPECT_EQ(tools(), "Symbol 110..190, Price 0..30, Qty 30..110");
    int order[] = {2, 0, 1};
    list.SetColumnOrderArray(3, order);
    list.SetColumnWidth(0, 600);
    list.Scroll({100, 0});
    EXPECT_EQ(tools(), "Symbol 80..680, Price 680..710, Qty 0..80");
    EXPECT_EQ(list.AddHeaderToolTip(2, "how many"), 1);
    EXPECT_TRUE(list.DeleteColumn(0));
    EXPECT_EQ(tools(), "Price 80..110, how many 0..80") << "they move down when a column goes";
    list.InsertColumn(0, "Side", kFormatLeft, 40);
    EXPECT_EQ(tools(), "Side 0..40, Price 120..150, how many 40..120") << "and up when one comes";
    for (const int nowhere : {-1, 3}) EXPECT_EQ(list.AddHeaderToolTip(nowhere, "no item"), 0);
    list.ModifyStyle(LVS_TYPEMASK, LVS_LIST);
    EXPECT_EQ(list.AddHeaderToolTip(1, "no report"), 0);
}

// The tip itself: the pump offers the header's messages to the list, which relays them. A heading that shows whole is
// not told again.
TEST_F(HeaderToolTips, ShowWhenTheMouseRestsOnAHeadingThatIsCutOrExplained) {
    list.m_ToolTip.SetDelayTime(TTDT_INITIAL, 1);
    list.AddHeaderToolTip(2, "how many");
    int whole = 0;
    {
        CClientDC dc(list.GetHeaderCtrl());
        const SelectScope font(&dc, list.GetHeaderCtrl()->GetFont());
        whole = dc.GetTextExtent("Price").cx + 2 * list.GetHeaderCtrl()->GetBitmapMargin();
    }
    const struct {
        const char* what;
        int item, width;
        const char* tip;
    } cases[] = {
        {"cut by a pixel", 1, whole - 1, "Price"}, {"whole", 1, whole, ""},  {"whole", 0, 80, ""},
        {"of another text", 2, 80, "how many"},    {"cut", 0, 20, "Symbol"},
    };
    for (const auto& [what, item, width, tip] : cases) {
        list.SetColumnWidth(item, width);
        CRect rect;
        list.GetHeaderCtrl()->GetItemRect(item, &rect);
        quor::sendMouseMove(list, CPoint(20, 100));
        pumpUntilIdle();
        quor::sendMouseMove(*list.GetHeaderCtrl(), rect.CenterPoint());
        pumpUntilIdle();
        if (*tip) {
            EXPECT_TRUE(pumpFor([&] { return test::tipText() == tip; })) << what;
        } else {
            EXPECT_FALSE(pumpFor([] { return test::shownTip() != nullptr; }, kLongEnough)) << what;
        }
    }
}

// --- What survives

const char* const kWithUserColumn = "0,1,50,1,-1,0,2,0,70,3,2,60,Ratio#F#T";

struct Profiles : ListFixture {
    Profiles() {
        char folder[MAX_PATH];
        ::GetTempPathA(MAX_PATH, folder);
        file.Format("%sprofile_tests_%u.ini", folder, static_cast<unsigned>(::GetCurrentProcessId()));
        ::DeleteFileA(file);
    }
    ~Profiles() override { ::DeleteFileA(file); }

    void writeFile(const char* text) {
        CString value = text, error;
        ASSERT_TRUE(quoru_appdata_ini_file_operations(1, "orders", "COLUMNPROFILE", value, file, error)) << error;
    }
    std::string fileText(const char* section = "orders") {
        CString value, error;
        const int read = quoru_appdata_ini_file_operations(0, section, "COLUMNPROFILE", value, file, error);
        return read ? value.GetString() : "none";
    }
    std::string headerTip(int place) {
        CString tip;
        list.m_ToolTip.GetText(tip, list.GetHeaderCtrl(), static_cast<UINT_PTR>(place) + 1);
        return tip.GetString();
    }

    CString file;
};

// That a layout comes back, the proof of the layouts tells.
TEST_F(Profiles, NoEndAtAnyMomentLosesAStoredLayout) {
    stored("COLUMNPROFILE") = kWithUserColumn;
    stored("SortLockInfo") = "True,3,1";
    stored("COLUMN_SORT_ORDER_PROFILE") = "Qty->1#0";
    stored("AutoSortTicked") = stored("GridLine") = "true";
    stored("AutoSort") = "2";
    stored("AutoSortOrder") = "1";
    stored("PROFILENAMES") = "dealslip_day";
    stored("dealslip_day") = "0,1,1,-1,2,0";

    CCommonListCtrl* living = nullptr;
    bool ends = false;
    std::unique_ptr<test::EveryMoment> moments;
    const auto shown = {3, 1, 0};
    const auto life = [&] {
        if (!owner.m_hWnd) owner.create(frame());
        CCommonListCtrl itself;
        living = &itself;
        ends = false;
        itself.m_bLockSortEnabled = itself.m_bMultiSortEnabled = 1;
        itself.m_csListName = "orders";
        addColumns(itself, {"Symbol", "Price", "Qty"});
        create(itself);
        const std::function<void()> steps[] = {[&] { itself.InsertColumnsForList(nullptr); },
                                               [&] { itself.CListCtrl::SetColumnWidth(1, 55); },
                                               [&] { loadHeaders(itself, shown); },
                                               [&] { itself.OnLockUnlockSortCheck(); },
                                               [&] { itself.SaveState(); },
                                               [&] { itself.GridLines(); },
                                               [&] { itself.KillAutoSortTimer(); },
                                               [&] { ends = true; }};
        for (const auto& step : steps) {
            moments->moment(itself);
            if (itself.m_hWnd) step();
        }
    };
    moments = std::make_unique<test::EveryMoment>(life);
    moments->disturbWindowsAndWrites([&] { return ends ? nullptr : living; }, owner);
    EXPECT_GT(moments->moments(), 20);
}

TEST_F(Profiles, GroupListsWriteNoUserPart) {
    stored("COLUMNPROFILE") = kWithUserColumn;
    list.m_bGroupList = 1;
    start(list);
    list.SaveColumnProfile();
    EXPECT_EQ(stored("COLUMNPROFILE"), "0,1,50,1,-1,0,2,0,70,3,2,60");
    list.ExportColumnToFile(file);
    EXPECT_EQ(fileText(), "0,1,50,Symbol,1,-1,0,Price,2,0,70,Qty,3,2,60,Ratio,");
    list.ImportColumnsFromFile(file);
    EXPECT_EQ(owner.calls.take(), Calls{"rebuilt 1001 0"});
    EXPECT_TRUE(list.calls.take().empty());
    list.m_bUseColumnProfile = 0;
    stored("COLUMNPROFILE") = "kept";
    list.DestroyWindow();
    EXPECT_EQ(stored("COLUMNPROFILE"), "kept");
}

// User columns get new numbers by an import: lock, levels and keyword column stay with their headings, or end with
// their columns.
TEST_F(Profiles, TheSortFollowsItsColumnsThroughAnImport) {
    const struct {
        const char* file;
        const char* lock;
        int levelColumn;             // -1: it ended
        std::pair<int, int> places;  // sorted, sorted last
        const char* stored;
    } cases[] = {
        {"0,0,50,Symbol,CUSTOMCOLUMN,3,2,60,New,New#G#U,4,1,60,Ratio,Ratio#F#T,", "1 4 1", 4, {1, 1}, "True,4,1"},
        {"0,0,50,Symbol,CUSTOMCOLUMN,3,1,60,New,New#G#U,", "0 -1 0", -1, {0, -1}, "False,-1,0"},
        {nullptr, "0 -1 0", -1, {2, 2}, "True,3,1"},  // the header is what it was
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.lock);
        stored("COLUMNPROFILE") = kWithUserColumn;
        stored("SortLockInfo") = "True,3,1";
        stored("COLUMN_SORT_ORDER_PROFILE") = "Ratio->-1#0";
        if (expected.file) writeFile(expected.file);
        TestList locked;
        locked.m_bLockSortEnabled = locked.m_bMultiSortEnabled = 1;
        start(locked);
        ASSERT_EQ(locked.m_arrSortOrder.GetCount(), 1);
        locked.m_Appearance.iKeywordColumn = 3;
        locked.m_nSortCol = locked.m_nLastSortCol = 2;
        locked.ImportColumnsFromFile(expected.file ? file : "no such file.ini");
        EXPECT_EQ(std::pair(locked.m_nSortCol, locked.m_nLastSortCol), expected.places);
        EXPECT_EQ(lock(locked), expected.lock);
        EXPECT_EQ(locked.m_Appearance.iKeywordColumn, expected.levelColumn);
        EXPECT_EQ(locked.m_arrSortOrder.IsEmpty() ? -1 : locked.m_arrSortOrder[0].iColumnIndex, expected.levelColumn);
        locked.DestroyWindow();
        EXPECT_EQ(stored("SortLockInfo"), expected.stored);
    }
}

TEST_F(Profiles, AFailedImportLeavesTheScreenAndDefaultsInTheArrays) {
    for (const bool explained : {true, false}) {
        stored("COLUMNPROFILE") = kWithUserColumn;
        start(list);
        if (!explained) list.m_arrColumns[3].csToolTip.Empty();  // then it counts as built in
        list.ImportColumnsFromFile(file);
        EXPECT_EQ(columns(list), "Qty:70 Symbol:50 Ratio:60 | 0 1 2" + std::string(explained ? "" : " 3"));
        EXPECT_TRUE(owner.calls.take().empty());
        list.DestroyWindow();
        EXPECT_EQ(stored("COLUMNPROFILE").substr(0, 20), "0,0,50,1,1,0,2,2,70" + std::string(explained ? "" : ","));
    }
}

TEST_F(Profiles, RecoveryRunsOverBothRegistries) {
    TestList group, nameless, elsewhere;
    const auto startIn = [&](CWnd& parent, TestList& some, const char* name) {
        some.m_csListName = name;
        addColumns(some, {"Symbol", "Price"});
        some.Create(kListStyle, kListRect, &parent, 2);
        some.InsertColumnsForList(nullptr);
    };
    stored("COLUMNPROFILE") = kWithUserColumn;
    start(list);
    startIn(owner, nameless, "");
    startIn(frame(), elsewhere, "elsewhere");  // in no registry
    group.m_bGroupList = group.marketWatch = 1;
    startIn(frame(), group, "watch");
    CCommonListCtrl::RecoverColumnProfile(false, "Mine", file);
    EXPECT_EQ(fileText(), "0,1,50,Symbol,1,-1,0,Price,2,0,70,Qty,CUSTOMCOLUMN,3,2,60,Ratio,Ratio#F#T,");
    EXPECT_EQ(fileText("elsewhere"), "none");
    EXPECT_EQ(group.calls.take(), Calls{"exported Mine"});
    list.DestroyWindow();  // still registered, without a window
    fakeHost().settings.clear();
    start(list, {"Qty", "Time", "Price", "Symbol"});
    for (int round = 0; round < 2; ++round) {  // the user columns of before are replaced
        CCommonListCtrl::RecoverColumnProfile(true, "Not mine", file);
        EXPECT_EQ(columns(list), "Qty:70 Symbol:50 Ratio:60 | 0 -1 -1 1 2");
        EXPECT_EQ(ints(list.m_arrWidth), "70 100 0 50 60");
        ASSERT_EQ(list.m_arrColumns.GetCount(), 5);
        EXPECT_EQ(list.m_arrColumns[4].csExpression, "F");
        EXPECT_EQ(headerTip(2), "T");
        EXPECT_EQ(owner.calls.take(), Calls{"rebuilt 1001 1"});
        EXPECT_EQ(list.calls.take(), Calls{"imported"});
        EXPECT_EQ(group.calls.take(), Calls{"imported watch"});
    }
    EXPECT_EQ(header(nameless) + " " + header(elsewhere), "Symbol:80 Price:80 Symbol:80 Price:80");
}

// The factory's file stands beside the executable.
TEST_F(Profiles, TheFactoryBringsRegisteredListsBackAndAFailedReadingIsTold) {
    char path[MAX_PATH];
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    const auto factory = std::filesystem::path(path).parent_path() / "FactorySetting.ini";
    TestList group;
    group.m_bGroupList = 1;
    start(group);
    start(list);
    std::filesystem::remove(factory);
    const test::MessageBoxAnswerer boxes;
    CCommonListCtrl::ApplyColumnProfile();
    ASSERT_EQ(boxes.texts().size(), 1u);
    EXPECT_NE(boxes.texts()[0].find("FactorySetting.ini"), std::string::npos) << boxes.texts()[0];
    CString value = "2,0,70,0,1,50,1,-1,0", error, name = "FactorySetting.ini";
    EXPECT_TRUE(quoru_ini_file_operations(1, "COLUMN PROFILE", "orders", value, name, error)) << error;
    CCommonListCtrl::ApplyColumnProfile();
    EXPECT_EQ(columns(list), "Qty:70 Symbol:50 | 1 -1 0");
    EXPECT_EQ(columns(group), "Symbol:80 Price:80 Qty:80 | 0 1 2");
    EXPECT_EQ(owner.calls.take(), Calls{"rebuilt 1001 0"});
    std::filesystem::remove(factory);
}

TEST_F(Profiles, GridLinesAreSavedAndAStoredTrueFlipsThem) {
    const auto shown = [&] { return (list.GetExtendedStyle() & LVS_EX_GRIDLINES) != 0; };
    start(list);
    list.SendMessage(WM_COMMAND, kGridLines);
    list.DestroyWindow();
    EXPECT_EQ(stored("GridLine"), "true");
    start(list);
    EXPECT_TRUE(shown() && list.m_bGridLines);
    list.ReadGridLineStatus();
    EXPECT_TRUE(!shown() && list.m_bGridLines);
}

TEST_F(Profiles, DealSlipProfilesComeBackAndRefusedWritesAreTold) {
    stored("PROFILENAMES") = "dealslip_day,dealslip_gone,dealslip_empty";
    stored("LASTINVOKEDPROFILE") = "dealslip_day";
    stored("DEFAULTPROFILE") = "gone";
    stored("dealslip_day") = "0,1,1,-1,2,0";
    stored("dealslip_empty") = "";
    stored("COLUMNPROFILE") = kWithUserColumn;
    start(list);
    ASSERT_EQ(list.m_arrProfileNames.GetCount(), 3);
    EXPECT_EQ(list.m_arrProfileNames[0] + " " + list.m_csLastInvokedProfile + " " + list.m_csDefaultProfile,
              "day day gone");
    EXPECT_EQ(list.m_mapDealSlipProfiles.GetCount(), 1);
    CArray<int, int>* places = nullptr;
    ASSERT_TRUE(list.m_mapDealSlipProfiles.Lookup("day", places));
    EXPECT_EQ(ints(*places), "1 -1 0");

    CStringArray names;
    for (const char* name : {"day", "night"}) names.Add(name);
    const char* const notSaved = "Error while saving column profile";
    const struct {
        const char* key;
        std::function<void()> write;
        const char* value;
        const char* refused;
    } cases[] = {
        {"dealslip_day", [&] { list.SaveColumnProfileDealSlipReport("day"); }, "0,1,1,-1,2,0,3,-1,Ratio#F#T", notSaved},
        {"dealslip_new", [&] { list.SaveColumnProfileDealSlipReport("new"); }, "", notSaved},
        {"dealslip_day", [&] { list.DeleteProfile("day"); }, "", notSaved},
        {"LASTINVOKEDPROFILE", [&] { list.SaveLastInvokedProfile("night"); }, "dealslip_night",
         "Error while saving the last invoked profile."},
        {"DEFAULTPROFILE", [&] { list.SaveDefaultProfile(""); }, "dealslip_", "Error while saving default profile."},
        {"PROFILENAMES", [&] { list.SaveDealSlipReportProfileNames(names); }, "dealslip_day,dealslip_night",
         "Error while saving profile names"},
    };
    for (const auto& expected : cases) {
        stored(expected.key) = "before";
        expected.write();
        EXPECT_EQ(stored(expected.key), expected.value) << expected.key;
        const test::MessageBoxAnswerer boxes;
        fakeHost().refuseWrites = true;
        expected.write();
        fakeHost().refuseWrites = false;
        EXPECT_EQ(boxes.texts(), std::vector<std::string>{expected.refused}) << expected.key;
    }
}

}  // namespace
