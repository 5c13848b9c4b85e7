// The two dialogs of a list's looks, with real keys. What rows make of a record is decided in the core; here: what the
// dialogs show and hand over, and that nothing dead is touched.
#include "ListFixture.h"
#include "quor/list/CustomizedAppearance.h"
#include "quor/list/ListCommands.h"
#include "quor/list/UserCusomize.h"
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/proving/WindowCapture.h"
#include "quor/platform/tools/QuorTools.h"
#include "quor/resource/resource.h"
#include "support/HandleCounts.h"
#include "support/ModalAnswer.h"
#include "support/TestFile.h"

namespace {

using namespace list_tests;
using quor::list::AppearanceDialog;

// In the order of the letters below.
constexpr int kControls[] = {IDC_PROPERTY,    IDC_PROPERTY_COLOR, IDC_KEYWORD_COLUMN, IDC_CHANGE_KEYWORD_COLUMN,
                             IDC_NEW_KEYWORD, IDC_ADD_KEYWORD,    IDC_KEYWORDS,       IDC_LIST_FONT};
constexpr char kLetters[] = "PCKDNALF";

struct AppearanceDialogs : ListFixture {
    AppearanceDialogs() {
        char path[MAX_PATH]{};
        ::GetFullPathNameA(recovery.name.c_str(), sizeof(path), path, nullptr);
        CCommonListCtrl::SetRecoveryFiles(path, "");
    }
    void TearDown() override {
        if (list.m_hWnd) list.DestroyWindow();
        for (CWnd* dialog : {dialogOf(kCustomizeAppearance), dialogOf(kUserCustomize)})
            if (dialog) dialog->DestroyWindow();
        CCommonListCtrl::SetRecoveryFiles("", "");
        ListFixture::TearDown();
    }
    // The dialog that has a window, or null.
    static CWnd* dialogOf(int command) {
        const char* title = command == kCustomizeAppearance ? "Customize Appearance :" : "User Customize Appearance :";
        CWnd* found = nullptr;
        for (INT_PTR i = 0; i < CZTDialog::AllDlgArray.GetCount(); ++i) {
            CString text;
            CZTDialog::AllDlgArray[i]->GetWindowText(text);
            if (text.Find(title) == 0) found = CZTDialog::AllDlgArray[i];
        }
        return found;
    }
    CWnd& open(int command, CCommonListCtrl& on) {
        on.SendMessage(WM_COMMAND, static_cast<WPARAM>(command));
        pumpUntilIdle();
        CWnd* const dialog = dialogOf(command);
        EXPECT_TRUE(dialog && dialog->IsWindowVisible());
        return *dialog;
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

    static CWnd& item(CWnd& dialog, int id) { return *dialog.GetDlgItem(id); }
    static void press(CWnd& dialog, int id) { item(dialog, id).SendMessage(BM_CLICK); }
    static bool shows(CWnd& dialog, int id) { return (item(dialog, id).GetStyle() & WS_VISIBLE) != 0; }
    static CString text(CWnd& dialog, int id) {
        CString text;
        item(dialog, id).GetWindowText(text);
        return text;
    }
    void keys(CWnd& dialog, int id, std::initializer_list<WORD> pressed) {
        dialog.SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(item(dialog, id).m_hWnd), TRUE);
        quor::sendKeys(pressed);
        pumpUntilIdle();
    }
    void choose(CWnd& dialog, const char* property) {
        keys(dialog, IDC_PROPERTY, {static_cast<WORD>(*property)});
        EXPECT_EQ(text(dialog, IDC_PROPERTY), property);
    }
    void add(CWnd& dialog, const char* keyword) {
        item(dialog, IDC_NEW_KEYWORD).SetFocus();
        quor::sendText(keyword);
        quor::sendKeys({VK_RETURN});
        pumpUntilIdle();
    }
    static std::string rows(CWnd& dialog, int id = IDC_KEYWORDS) {
        const auto& table = static_cast<CXListCtrl&>(item(dialog, id));
        CString all;
        for (int row = 0; row < table.GetItemCount(); ++row) {
            all += (row ? " " : "") + table.GetItemText(row, 0);
            for (int column = 1; column < table.GetHeaderCtrl()->GetItemCount(); ++column)
                all.AppendFormat("/%d", static_cast<int>(table.GetColorboxColor(row, column)));
        }
        return all.GetString();
    }
    // Property, a letter for each control that is enabled, the keyword group, the column.
    static std::string state(CWnd& dialog) {
        std::string enabled;
        for (std::size_t i = 0; i < std::size(kControls); ++i)
            enabled += item(dialog, kControls[i]).IsWindowEnabled() ? kLetters[i] : '-';
        const std::string group = shows(dialog, IDC_KEYWORD_GROUP) ? " shown " : " folded ";
        return text(dialog, IDC_PROPERTY).GetString() + (" " + enabled) + group +
               text(dialog, IDC_KEYWORD_COLUMN).GetString();
    }
    // Whether a whole repaint changes nothing.
    static bool isPainted(CWnd& dialog) {
        WindowPicture seen, whole;
        pumpUntilIdle();
        dialog.UpdateWindow();
        quorCaptureClientArea(dialog.m_hWnd, seen);
        dialog.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        quorCaptureClientArea(dialog.m_hWnd, whole);
        return seen.pixels == whole.pixels;
    }
    static std::string stored(const char* section) {
        CString value, file = CCommonListCtrl::m_csGetRecoveryFile, error;
        quoru_appdata_ini_file_operations(0, section, "orders-1001", value, file, error);
        return value.GetString();
    }
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
        CWnd& dialog = open(kCustomizeAppearance, list);
        EXPECT_EQ(state(dialog), each.opened);
        EXPECT_EQ(rows(dialog), each.keywords ? "HOLD/255 BUY/-1" : "");
        CString title;
        dialog.GetWindowText(title);
        EXPECT_STREQ(title, "Customize Appearance :orders ");
        EXPECT_EQ(text(dialog, IDC_LIST_FONT), "MS Shell Dlg 2 (8)");
        EXPECT_EQ(text(dialog, IDC_NEW_KEYWORD), "") << "typed for the list before";
        item(dialog, IDC_NEW_KEYWORD).SetWindowText("typed");
        EXPECT_EQ(LOWORD(dialog.SendMessage(DM_GETDEFID)), IDC_APPLY_APPEARANCE);
        EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), each.colours ? IDC_PROPERTY : IDC_LIST_FONT);
        CRect folded, again;
        dialog.GetWindowRect(&folded);
        for (int round = 0; each.withText && round < 2; ++round) {
            choose(dialog, "Text");
            EXPECT_EQ(state(dialog), each.withText);
            dialog.GetWindowRect(&again);
            EXPECT_EQ(again.Height() > folded.Height(), each.keywords);
            const CRect screen = quor::platform::screens().workArea();
            EXPECT_LE(again.bottom, std::max(screen.bottom, screen.top + again.Height())) << "the buttons are there";
            EXPECT_TRUE(isPainted(dialog)) << "nothing is left of the folded frame";
            choose(dialog, "Background");
            dialog.GetWindowRect(&again);
            EXPECT_EQ(again.Size(), folded.Size());
        }
    }
}

TEST_F(AppearanceDialogs, KeywordsComeAndGoByKeysAndAreApplied) {
    startWithKeywords();
    CWnd& dialog = open(kCustomizeAppearance, list);
    choose(dialog, "Text");
    for (const char* keyword : {"ab", "abcd", "abc"}) add(dialog, keyword);
    EXPECT_EQ(rows(dialog), "abcd/65280 HOLD/255 abc/65280 BUY/-1 ab/65280");
    const CRect cell = static_cast<CXListCtrl&>(item(dialog, IDC_KEYWORDS)).GetCellRect(4, 0);
    CClientDC dc(&item(dialog, IDC_KEYWORDS));
    EXPECT_EQ(::GetPixel(dc, cell.right - 1, cell.top), ::GetSysColor(COLOR_WINDOW));
    {
        test::MessageBoxAnswerer boxes;
        keys(dialog, IDC_NEW_KEYWORD, {VK_RETURN});
        EXPECT_EQ(boxes.texts(), Calls{"Enter text to add a new keyword to list"});
    }
    auto& table = static_cast<CListCtrl&>(item(dialog, IDC_KEYWORDS));
    for (const int row : {1, 2}) table.SetItemState(row, LVIS_SELECTED, LVIS_SELECTED);
    keys(dialog, IDC_KEYWORDS, {VK_DELETE});
    EXPECT_EQ(rows(dialog), "abcd/65280 abc/65280 ab/65280") << "the second number names another row by then";
    {
        table.SetItemState(0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        const test::ModalAnswer answer(dialog.m_hWnd, [](HWND box) { test::chooseColor(box, RGB(1, 2, 3)); });
        keys(dialog, IDC_KEYWORDS, {VK_RIGHT});
        quor::sendKeys({VK_SPACE});
        pumpUntilIdle();
    }
    choose(dialog, "Background");
    {
        const test::ModalAnswer answer(dialog.m_hWnd, [](HWND box) { test::chooseColor(box, RGB(7, 8, 9)); });
        press(dialog, IDC_PROPERTY_COLOR);
    }
    {
        const test::ModalAnswer answer(dialog.m_hWnd, [](HWND box) {
            ::SetDlgItemTextA(box, IDC_FONT_SIZE, "12");
            ::PostMessageA(box, WM_COMMAND, IDOK, 0);
        });
        press(dialog, IDC_LIST_FONT);
        EXPECT_EQ(text(dialog, IDC_LIST_FONT), "MS Shell Dlg 2 (12)");
    }
    EXPECT_FALSE(list.m_bCustomized);
    keys(dialog, IDC_PROPERTY, {VK_RETURN});
    EXPECT_TRUE(dialog.IsWindowVisible()) << "Enter closes nothing";
    EXPECT_EQ(stored("CUSTOMIZE_LISTS"), "90807,FF00,MS Shell Dlg 2,12,1,ABCD,30201,ABC,FF00,AB,FF00,");
    EXPECT_EQ(list.m_Appearance.pKeywords->GetAt(1), "ABC");
    EXPECT_EQ(list.GetBkColor(), RGB(7, 8, 9));
    EXPECT_TRUE(list.m_bCustomized);
    list.DestroyWindow();
    TestList next;
    start(next);
    EXPECT_EQ(next.m_Appearance.pKeywordColors->GetAt(0), RGB(1, 2, 3)) << "and read again";
    EXPECT_EQ(next.m_Appearance.iKeywordColumn, 1);
}

TEST_F(AppearanceDialogs, TheUsersOwnAreStoredApart) {
    start(list);
    CWnd& dialog = open(kUserCustomize, list);
    add(dialog, "a");
    add(dialog, "bc");
    auto& table = static_cast<CXListCtrl&>(item(dialog, IDC_USER_KEYWORDS));
    EXPECT_EQ(rows(dialog, IDC_USER_KEYWORDS), "bc/65280/0 a/65280/0");
    table.SetColorboxColor(1, 1, CXListCtrl::kNoColor);
    table.SetColorboxColor(1, 2, 5);
    {
        const test::ModalAnswer answer(dialog.m_hWnd, [](HWND box) { test::chooseColor(box, RGB(7, 8, 9)); });
        press(dialog, IDC_BACKGROUND_COLOR);
    }
    list.SetTextColor(0x123456);
    keys(dialog, IDC_USER_KEYWORDS, {VK_RETURN});
    EXPECT_EQ(stored("USER_CUSTOMIZE_LISTS"), "90807,FF00,MS Shell Dlg 2,8,BC,FF00,0,A,FF00,5,");
    EXPECT_EQ(list.m_Appearance.pUserTextColors->GetCount(), 1);
    EXPECT_EQ(list.GetTextBkColor(), RGB(7, 8, 9));
    EXPECT_EQ(list.GetTextColor(), 0x123456u) << "is not this dialog's";
    EXPECT_FALSE(list.m_bCustomized);
    list.marketWatch = true;
    press(dialog, IDCANCEL);
    for (const int command : {kUserCustomize, kCustomizeAppearance})
        list.SendMessage(WM_COMMAND, static_cast<WPARAM>(command));
    EXPECT_FALSE(dialog.IsWindowVisible()) << "a market watch has neither";
}

TEST_F(AppearanceDialogs, TheKeywordColumnIsFollowedByItsName) {
    startWithKeywords();
    CWnd& dialog = open(kCustomizeAppearance, list);
    choose(dialog, "Text");
    press(dialog, IDC_CHANGE_KEYWORD_COLUMN);
    keys(dialog, IDC_KEYWORD_COLUMN, {'Q'});
    EXPECT_EQ(rows(dialog), "") << "they were another column's";
    add(dialog, "x");
    sQuorColInfo first;
    setColumnName(first, "First");
    list.m_arrColumns.InsertAt(0, first);
    loadHeaders(list, {0, 3});
    EXPECT_EQ(state(dialog), "Text PCKDNALF shown Qty");
    press(dialog, IDC_APPLY_APPEARANCE);
    EXPECT_EQ(stored("CUSTOMIZE_LISTS"), "0,FF00,MS Shell Dlg 2,8,3,X,FF00,");
    list.m_arrColumns.RemoveAt(3);
    loadHeaders(list, {0, 2});
    EXPECT_EQ(state(dialog), "Text PCKDNALF shown ");
    press(dialog, IDC_APPLY_APPEARANCE);
    EXPECT_EQ(stored("CUSTOMIZE_LISTS"), "0,FF00,MS Shell Dlg 2,8") << "no column, no keywords";
}

// The list, its pane and its top-level window, each by itself; the last one takes the dialog's window along.
TEST_F(AppearanceDialogs, ADialogForgetsAListThatGoes) {
    for (const int command : {kCustomizeAppearance, kUserCustomize}) {
        for (const bool choosing : {false, true}) {
            for (int what = 0; what < 3; ++what) {
                auto* const top = new test::TestFrame;
                top->Create(nullptr, "Top", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 500, 400));
                Owner pane;
                pane.create(*top);
                TestList mortal;
                mortal.m_csListName = "mortal";
                addColumns(mortal, {"Symbol"});
                mortal.Create(kListStyle, kListRect, &pane, kListId);
                mortal.InsertColumnsForList(nullptr);
                CWnd& dialog = open(command, mortal);
                CWnd* const ends[] = {&mortal, &pane, top};
                const HWND window = dialog.m_hWnd;
                if (choosing) {
                    const int button = command == kCustomizeAppearance ? IDC_PROPERTY_COLOR : IDC_BACKGROUND_COLOR;
                    const test::ModalAnswer answer(window, [&](HWND box) {
                        ends[what]->DestroyWindow();
                        if (::IsWindow(box)) test::chooseColor(box, 0x123456);
                    });
                    press(dialog, button);
                } else {
                    ends[what]->DestroyWindow();
                }
                pumpUntilIdle();
                EXPECT_FALSE(::IsWindowVisible(window)) << what;
                for (HWND child = ::GetWindow(window, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
                    ::SendMessageA(child, BM_CLICK, 0, 0);
                EXPECT_EQ(::IsWindow(window) != 0, what < 2);
                if (what < 2) top->DestroyWindow();
                pumpUntilIdle();
            }
        }
    }
}

TEST_F(AppearanceDialogs, HandlesReturnToTheirStart) {
    startWithKeywords();
    test::expectHandlesReturn(200, [&](int round) {
        for (const int command : {kCustomizeAppearance, kUserCustomize}) {
            CWnd& dialog = open(command, list);
            if (round % 10 == 0) press(dialog, IDC_APPLY_APPEARANCE);
            press(dialog, IDCANCEL);
            EXPECT_FALSE(dialog.IsWindowVisible());
            if (round % 20 == 0) dialog.DestroyWindow();
        }
    });
}

}  // namespace
