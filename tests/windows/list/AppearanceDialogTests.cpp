// The shared dialogs, with real keys. What rows make of a record is decided in the core; here: what the two dialogs of
// a list's looks show and hand over, and that none of them, that of trends included, touches what is dead.
#include "ListFixture.h"
#include "quor/edits/ClrButton.h"
#include "quor/edits/XListCtrl.h"
#include "quor/framework/ZTDialog.h"
#include "quor/grid/FilterListCtrl.h"
#include "quor/list/ListCommands.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/tools/QuorTools.h"
#include "quor/resource/resource.h"
#include "support/HandleCounts.h"
#include "support/ModalAnswer.h"
#include "support/PictureOracle.h"
#include "support/TestFile.h"

namespace {

using namespace list_tests;

// What opens each, and a button that asks for a colour.
constexpr std::pair<int, int> kShared[] = {{kCustomizeAppearance, IDC_PROPERTY_COLOR},
                                           {kUserCustomize, IDC_BACKGROUND_COLOR},
                                           {kCommandSetTrendColumns, IDC_RISE_COLOR}};

// A letter for each control that may be disabled.
constexpr std::pair<int, char> kControls[] = {
    {IDC_PROPERTY, 'P'},    {IDC_PROPERTY_COLOR, 'C'}, {IDC_KEYWORD_COLUMN, 'K'}, {IDC_CHANGE_KEYWORD_COLUMN, 'D'},
    {IDC_NEW_KEYWORD, 'N'}, {IDC_ADD_KEYWORD, 'A'},    {IDC_KEYWORDS, 'L'},       {IDC_LIST_FONT, 'F'}};

struct AppearanceDialogs : ListFixture {
    AppearanceDialogs() {
        char path[MAX_PATH]{};
        ::GetFullPathNameA(recovery.name.c_str(), sizeof(path), path, nullptr);
        CCommonListCtrl::SetRecoveryFiles(path, "");
    }
    void TearDown() override {
        if (grid.m_hWnd) grid.DestroyWindow();
        if (list.m_hWnd) list.DestroyWindow();
        while (!CZTDialog::AllDlgArray.IsEmpty()) CZTDialog::AllDlgArray[0]->DestroyWindow();
        CCommonListCtrl::SetRecoveryFiles("", "");
        ListFixture::TearDown();
    }
    // The dialog that the command opens, by its title.
    void open(int command, CCommonListCtrl& on) {
        on.SendMessage(WM_COMMAND, static_cast<WPARAM>(command));
        pumpUntilIdle();
        dialog = nullptr;
        const CString name = on.m_csListName + " ";
        const CString title = command == kCustomizeAppearance ? "Customize Appearance :" + name
                              : command == kUserCustomize     ? "User Customize Appearance :" + name
                                                              : CString("Trend Settings");
        for (INT_PTR i = 0; i < CZTDialog::AllDlgArray.GetCount(); ++i) {
            CString text;
            CZTDialog::AllDlgArray[i]->GetWindowText(text);
            if (text == title) dialog = CZTDialog::AllDlgArray[i];
        }
        ASSERT_TRUE(dialog && dialog->IsWindowVisible());
    }
    void startWithKeywords() {
        CStringArray words;
        CArray<DWORD, DWORD> colors;
        for (const char* word : {"HOLD", "BUY"}) words.Add(word);
        colors.Add(0xFF);  // one too few
        start(list);
        list.SetDefaultAttributes(1, &words, &colors);
        list.m_Appearance.bKeywordsEnabled = 1;
    }

    // --- Of the dialog that was opened last
    CWnd& item(int id) { return *dialog->GetDlgItem(id); }
    CXListCtrl& table(int id = IDC_KEYWORDS) { return static_cast<CXListCtrl&>(item(id)); }
    void press(int id) { item(id).SendMessage(BM_CLICK); }
    CString text(int id) {
        CString text;
        item(id).GetWindowText(text);
        return text;
    }
    void keys(int id, std::initializer_list<WORD> pressed) {
        dialog->SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(item(id).m_hWnd), TRUE);
        quor::sendKeys(pressed);
        pumpUntilIdle();
    }
    void choose(const char* property) {
        keys(IDC_PROPERTY, {static_cast<WORD>(*property)});
        EXPECT_EQ(text(IDC_PROPERTY), property);
    }
    void add(const char* keyword) {
        item(IDC_NEW_KEYWORD).SetFocus();
        quor::sendText(keyword);
        quor::sendKeys({VK_RETURN});
        pumpUntilIdle();
    }
    // Answers the system's dialog of colours that `act` opens.
    void pick(COLORREF color, const std::function<void()>& act) {
        const test::ModalAnswer answer(dialog->m_hWnd, [color](HWND box) { test::chooseColor(box, color); });
        act();
        pumpUntilIdle();
    }
    std::string rows(int id = IDC_KEYWORDS) {
        CString all;
        for (int row = 0; row < table(id).GetItemCount(); ++row) {
            all += (row ? " " : "") + table(id).GetItemText(row, 0);
            for (int column = 1; column < table(id).GetHeaderCtrl()->GetItemCount(); ++column)
                all.AppendFormat("/%d", static_cast<int>(table(id).GetColorboxColor(row, column)));
        }
        return all.GetString();
    }
    // Property, a letter for each control that is enabled, the keyword group, the column.
    std::string state() {
        std::string enabled;
        for (const auto& [id, letter] : kControls) enabled += item(id).IsWindowEnabled() ? letter : '-';
        const bool isShown = (item(IDC_KEYWORD_GROUP).GetStyle() & WS_VISIBLE) != 0;
        return text(IDC_PROPERTY).GetString() + (" " + enabled) + (isShown ? " shown " : " folded ") +
               text(IDC_KEYWORD_COLUMN).GetString();
    }
    // Names of columns, "*" behind those selected; the two boxes; the label.
    std::string trends() {
        auto& box = static_cast<CListBox&>(item(IDC_TREND_COLUMNS));
        CString name, all;
        for (int i = 0; i < box.GetCount(); ++i) {
            box.GetText(i, name);
            all += name + (box.GetSel(i) > 0 ? "* " : " ");
        }
        all.AppendFormat("%u%u ", dialog->IsDlgButtonChecked(IDC_TREND_BACKGROUND),
                         dialog->IsDlgButtonChecked(IDC_TREND_TEXT));
        return (all + text(IDC_TREND_TIME)).GetString();
    }
    std::string trendColumns() {
        CArray<int, int> inForce;
        grid.GetTrendColumns(inForce);
        return ints(inForce);
    }
    static std::string stored(const char* section) {
        CString value, file = CCommonListCtrl::m_csGetRecoveryFile, error;
        quoru_appdata_ini_file_operations(0, section, "orders-1001", value, file, error);
        return value.GetString();
    }

    CFilterListCtrl grid;
    CZTDialog* dialog = nullptr;
    const test::TestFile recovery;
};

TEST_F(AppearanceDialogs, ShowWhatTheListAllowsAndFoldTheRest) {
    const struct {
        bool colours, keywords;
        const char *opened, *withText;
    } cases[] = {
        {true, true, "Background PC-----F folded Price", "Text PC-DNALF shown Price"},
        {true, false, "Background PCK----F folded ", "Text PCKDNALF folded "},
        {false, true, "Background -------F folded Price", nullptr},
    };
    startWithKeywords();
    for (const auto& each : cases) {
        list.m_bUseColors = each.colours;
        list.m_Appearance.bKeywordsEnabled = each.keywords;
        open(kCustomizeAppearance, list);
        EXPECT_EQ(state(), each.opened);
        EXPECT_EQ(rows(), each.keywords ? "HOLD/255 BUY/-1" : "");
        EXPECT_EQ(text(IDC_LIST_FONT), "MS Shell Dlg 2 (8)");
        EXPECT_EQ(text(IDC_NEW_KEYWORD), "") << "typed for the list before";
        item(IDC_NEW_KEYWORD).SetWindowText("typed");
        EXPECT_EQ(LOWORD(dialog->SendMessage(DM_GETDEFID)), IDC_APPLY_APPEARANCE);
        EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), each.colours ? IDC_PROPERTY : IDC_LIST_FONT);
        CRect folded, again, below;
        dialog->GetWindowRect(&folded);
        list.GetWindowRect(&below);
        EXPECT_TRUE(folded.left == 0 || std::abs(folded.CenterPoint().x - below.CenterPoint().x) <= 1) << folded.left;
        for (int round = 0; each.withText && round < 2; ++round) {
            choose("Text");
            EXPECT_EQ(state(), each.withText);
            dialog->GetWindowRect(&again);
            EXPECT_EQ(again.Height() > folded.Height(), each.keywords);
            const CRect screen = quor::platform::screens().workArea();
            EXPECT_LE(again.bottom, std::max(screen.bottom, screen.top + again.Height())) << "the buttons are there";
            EXPECT_EQ(test::stalePixels(*dialog), "") << "nothing is left of the folded frame";
            choose("Background");
            dialog->GetWindowRect(&again);
            EXPECT_EQ(again.Size(), folded.Size());
        }
    }
}

TEST_F(AppearanceDialogs, KeywordsComeAndGoByKeysAndAreApplied) {
    startWithKeywords();
    open(kCustomizeAppearance, list);
    choose("Text");
    for (const char* keyword : {"ab", "abcd", "abc"}) add(keyword);
    EXPECT_EQ(rows(), "abcd/65280 HOLD/255 abc/65280 BUY/-1 ab/65280");
    {
        test::MessageBoxAnswerer boxes;
        keys(IDC_NEW_KEYWORD, {VK_RETURN});
        EXPECT_EQ(boxes.texts(), Calls{"Enter text to add a new keyword to list"});
    }
    for (const int row : {1, 2}) table().SetItemState(row, LVIS_SELECTED, LVIS_SELECTED);
    keys(IDC_KEYWORDS, {VK_DELETE});
    EXPECT_EQ(rows(), "abcd/65280 abc/65280 ab/65280") << "the second number names another row by then";
    table().SetItemState(0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    keys(IDC_KEYWORDS, {VK_RIGHT});
    pick(RGB(1, 2, 3), [] { quor::sendKeys({VK_SPACE}); });
    choose("Background");
    pick(RGB(7, 8, 9), [&] { press(IDC_PROPERTY_COLOR); });
    {
        const test::ModalAnswer answer(dialog->m_hWnd, [](HWND box) {
            ::SetDlgItemTextA(box, IDC_FONT_SIZE, "12");
            ::PostMessageA(box, WM_COMMAND, IDOK, 0);
        });
        press(IDC_LIST_FONT);
        EXPECT_EQ(text(IDC_LIST_FONT), "MS Shell Dlg 2 (12)");
    }
    EXPECT_FALSE(list.m_bCustomized);
    keys(IDC_PROPERTY, {VK_RETURN});
    EXPECT_TRUE(dialog->IsWindowVisible()) << "Enter closes nothing";
    EXPECT_EQ(stored("CUSTOMIZE_LISTS"), "90807,FF00,MS Shell Dlg 2,12,1,ABCD,30201,ABC,FF00,AB,FF00,");
    EXPECT_EQ(list.m_Appearance.pKeywords->GetAt(1), "ABC");
    EXPECT_EQ(list.GetBkColor(), RGB(7, 8, 9));
    EXPECT_TRUE(list.m_bCustomized);
}

TEST_F(AppearanceDialogs, TheUsersOwnAreStoredApart) {
    start(list);
    open(kUserCustomize, list);
    add("a");
    add("bc");
    EXPECT_EQ(rows(IDC_USER_KEYWORDS), "bc/65280/0 a/65280/0");
    table(IDC_USER_KEYWORDS).SetColorboxColor(1, 2, 5);
    pick(RGB(7, 8, 9), [&] { press(IDC_BACKGROUND_COLOR); });
    list.SetTextColor(0x123456);
    keys(IDC_USER_KEYWORDS, {VK_RETURN});
    EXPECT_EQ(stored("USER_CUSTOMIZE_LISTS"), "90807,FF00,MS Shell Dlg 2,8,BC,FF00,0,A,FF00,5,");
    EXPECT_EQ(list.GetTextBkColor(), RGB(7, 8, 9));
    EXPECT_EQ(list.GetTextColor(), 0x123456u) << "is not this dialog's";
    EXPECT_FALSE(list.m_bCustomized);
    list.marketWatch = true;
    press(IDCANCEL);
    for (const int command : {kUserCustomize, kCustomizeAppearance})
        list.SendMessage(WM_COMMAND, static_cast<WPARAM>(command));
    EXPECT_FALSE(dialog->IsWindowVisible()) << "a market watch has neither";
}

TEST_F(AppearanceDialogs, TheKeywordColumnIsFollowedByItsName) {
    startWithKeywords();
    open(kCustomizeAppearance, list);
    choose("Text");
    press(IDC_CHANGE_KEYWORD_COLUMN);
    keys(IDC_KEYWORD_COLUMN, {'Q'});
    EXPECT_EQ(rows(), "") << "they were another column's";
    add("x");
    const auto applied = [&](std::initializer_list<int> shown) {
        loadHeaders(list, shown);
        press(IDC_APPLY_APPEARANCE);
        return state() + ": " + stored("CUSTOMIZE_LISTS");
    };
    sQuorColInfo first;
    setColumnName(first, "First");
    list.m_arrColumns.InsertAt(0, first);
    EXPECT_EQ(applied({0, 3}), "Text PCKDNALF shown Qty: 0,FF00,MS Shell Dlg 2,8,3,X,FF00,");
    list.m_arrColumns.RemoveAt(3);
    EXPECT_EQ(applied({0, 2}), "Text PCKDNALF shown : 0,FF00,MS Shell Dlg 2,8") << "no column, no keywords";
}

TEST_F(AppearanceDialogs, TrendsAreShownChosenAndFollowedByTheirNames) {
    start(grid, {"name", "last", "count", "when", "change"});
    const int types[] = {8, 5, 1, 6, 9};
    for (int i = 0; i < 5; ++i) grid.m_arrColumns[i].iDataType = types[i];
    CArray<int, int> wanted;
    for (const int column : {4, 0}) wanted.Add(column);
    grid.SetTrendColumns(&wanted);
    grid.TrendInterval = 3500;
    open(kCommandSetTrendColumns, grid);
    EXPECT_EQ(trends(), "change* count last 10 4 Sec");
    CRect thumb, slider;
    item(IDC_TREND_INTERVAL).SendMessage(TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
    item(IDC_TREND_INTERVAL).GetClientRect(&slider);
    EXPECT_EQ(thumb & slider, thumb);
    EXPECT_EQ(static_cast<CClrButton&>(item(IDC_RISE_COLOR)).GetColor(), kDefaultRiseColor);
    keys(IDC_TREND_INTERVAL, {VK_HOME});
    keys(IDC_TREND_COLUMNS, {VK_SPACE, VK_DOWN, VK_SPACE, VK_DOWN, VK_SPACE});
    press(IDC_TREND_TEXT);
    EXPECT_EQ(trends(), "change count* last* 01 1 Secs");
    pick(RGB(1, 2, 3), [&] { press(IDC_FALL_COLOR); });
    EXPECT_EQ(trendColumns(), "4 0") << "nothing before OK";
    keys(IDC_TREND_INTERVAL, {VK_RETURN});
    EXPECT_FALSE(dialog->IsWindowVisible());
    EXPECT_EQ(trendColumns(), "1 2");
    EXPECT_EQ(std::pair(grid.NegColor, grid.PosColor), std::pair(RGB(1, 2, 3), kDefaultRiseColor));
    EXPECT_EQ(grid.TrendInterval, 0);
    EXPECT_FALSE(grid.TrendBackground);

    open(kCommandSetTrendColumns, grid);
    press(IDC_TREND_TEXT);
    EXPECT_EQ(trends(), "change count* last* 00 1 Sec");
    sQuorColInfo first;
    setColumnName(first, "another");
    first.iDataType = kTypeInteger;
    grid.m_arrColumns.InsertAt(0, first);
    grid.m_arrColumns.RemoveAt(3);
    loadHeaders(grid, {0, 1, 2, 3, 4});
    EXPECT_EQ(trends(), "another change last* 00 1 Sec");
    press(IDOK);
    EXPECT_EQ(trendColumns(), "2");
    EXPECT_TRUE(grid.TrendBackground) << "neither box counts as background";
}

// The list, its pane and its top-level window, each by itself, while the dialog waits and while a colour is chosen. The
// last one takes the dialog's window along.
TEST_F(AppearanceDialogs, ADialogForgetsAListThatGoes) {
    for (int run = 0; run < 18; ++run) {
        SCOPED_TRACE(run);
        const auto& [command, colorButton] = kShared[run / 6];
        const int what = run % 3;
        auto* const top = new test::TestFrame;
        top->Create(nullptr, "Top", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 500, 400));
        Owner pane;
        pane.create(*top);
        CFilterListCtrl mortal;
        mortal.m_csListName = "mortal";
        addColumns(mortal, {"Symbol"});
        mortal.Create(kListStyle, kListRect, &pane, kListId);
        mortal.InsertColumnsForList(nullptr);
        open(command, mortal);
        CWnd* const ends[] = {&mortal, &pane, top};
        const HWND window = dialog->m_hWnd;
        if (run % 6 < 3) {
            ends[what]->DestroyWindow();
        } else {
            const test::ModalAnswer answer(window, [&](HWND box) {
                ends[what]->DestroyWindow();
                if (::IsWindow(box)) test::chooseColor(box, 0x123456);
            });
            press(colorButton);
        }
        pumpUntilIdle();
        EXPECT_FALSE(::IsWindowVisible(window));
        for (HWND child = ::GetWindow(window, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
            ::SendMessageA(child, BM_CLICK, 0, 0);
        EXPECT_EQ(::IsWindow(window) != 0, what < 2);
        EXPECT_EQ(mortal.PosColor, kDefaultRiseColor);
        if (what < 2) top->DestroyWindow();
        pumpUntilIdle();
    }
}

TEST_F(AppearanceDialogs, HandlesReturnToTheirStart) {
    start(grid);
    test::expectHandlesReturn(200, [&](int round) {
        for (const auto& [command, colorButton] : kShared) {
            open(command, grid);
            if (round % 10 == 0) press(command == kCommandSetTrendColumns ? IDOK : IDC_APPLY_APPEARANCE);
            press(IDCANCEL);
            EXPECT_FALSE(dialog->IsWindowVisible());
            if (round % 20 == 0) dialog->DestroyWindow();
        }
    });
}

}  // namespace
