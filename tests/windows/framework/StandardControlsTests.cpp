// The remaining controls, tool tips and the system's dialogs.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/Framework.h"
#include "support/WindowFixture.h"

namespace {

// A parent that notes the commands of its children as id and code.
class CommandParent : public CWnd {
public:
    std::vector<std::pair<UINT, UINT>> commands;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        commands.emplace_back(LOWORD(wParam), HIWORD(wParam));
        return CWnd::OnCommand(wParam, lParam);
    }
};

class StandardControls : public test::WindowFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(
            parent.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 300, 300), nullptr, 0));
    }
    static constexpr DWORD child = WS_CHILD | WS_VISIBLE;
    CommandParent parent;
};

TEST_F(StandardControls, AButtonIsCheckedClickedAndReports) {
    CButton button;
    ASSERT_TRUE(button.Create("Check", child | BS_AUTO3STATE, CRect(0, 0, 80, 20), &parent, 21));
    EXPECT_EQ(button.GetCheck(), BST_UNCHECKED);
    button.SetCheck(BST_INDETERMINATE);
    EXPECT_EQ(button.GetCheck(), BST_INDETERMINATE);
    button.Click();
    EXPECT_EQ(button.GetCheck(), BST_UNCHECKED);
    EXPECT_EQ(parent.commands.back(), (std::pair<UINT, UINT>(21, BN_CLICKED)));
    EXPECT_EQ(button.GetButtonStyle() & BS_TYPEMASK, static_cast<UINT>(BS_AUTO3STATE));
}

class DrawnButton : public CButton {
public:
    int drawn = 0;
    void DrawItem(LPDRAWITEMSTRUCT item) override { drawn += item->CtlType == ODT_BUTTON; }
};

TEST_F(StandardControls, AnOwnerDrawnButtonDrawsItself) {
    DrawnButton button;
    ASSERT_TRUE(button.Create("x", child | BS_OWNERDRAW, CRect(0, 0, 80, 20), &parent, 22));
    button.UpdateWindow();
    EXPECT_GE(button.drawn, 1);
}

TEST_F(StandardControls, AnEditSelectsReplacesLimitsAndReadsLines) {
    CEdit edit;
    ASSERT_TRUE(edit.Create(child | ES_MULTILINE | ES_AUTOVSCROLL, CRect(0, 0, 200, 100), &parent, 23));
    edit.SetWindowText("first\r\nsecond\r\nthird");
    EXPECT_EQ(edit.GetLineCount(), 3);
    char line[32] = "";
    const int length = edit.GetLine(1, line, sizeof(line) - 1);
    EXPECT_EQ(std::string(line, static_cast<std::size_t>(length)), "second");
    EXPECT_EQ(edit.LineLength(1), 6);
    EXPECT_EQ(edit.LineFromChar(edit.LineIndex(2)), 2);
    edit.SetSel(7, 13);
    int start = 0;
    int end = 0;
    edit.GetSel(start, end);
    EXPECT_EQ(start, 7);
    EXPECT_EQ(end, 13);
    EXPECT_EQ(edit.GetSel(), static_cast<DWORD>(MAKELONG(7, 13)));
    edit.ReplaceSel("2nd");
    CString text;
    edit.GetWindowText(text);
    EXPECT_EQ(text, "first\r\n2nd\r\nthird");
    EXPECT_TRUE(edit.GetModify());
    edit.SetLimitText(20);
    EXPECT_EQ(edit.GetLimitText(), 20u);
    edit.SetSel(0, -1);
    edit.GetSel(start, end);
    EXPECT_EQ(end, text.GetLength());
    edit.Clear();
    EXPECT_EQ(edit.GetWindowTextLength(), 0);
}

TEST_F(StandardControls, AComboBoxHoldsTextsAndData) {
    CComboBox combo;
    ASSERT_TRUE(combo.Create(child | CBS_DROPDOWNLIST, CRect(0, 0, 100, 100), &parent, 24));
    for (const char* text : {"NSE", "BSE", "MCX"}) combo.AddString(text);
    EXPECT_EQ(combo.InsertString(1, "NCDEX"), 1);
    EXPECT_EQ(combo.GetCount(), 4);
    CString text;
    combo.GetLBText(1, text);
    EXPECT_EQ(text, "NCDEX");
    text = "left over";
    combo.GetLBText(9, text);
    EXPECT_EQ(text, "");
    combo.SetItemData(3, 42);
    EXPECT_EQ(combo.GetItemData(3), 42u);
    EXPECT_EQ(combo.FindStringExact(-1, "mcx"), 3);
    EXPECT_EQ(combo.SelectString(-1, "B"), 2);
    EXPECT_EQ(combo.GetCurSel(), 2);
    EXPECT_EQ(combo.SetCurSel(-1), CB_ERR);
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.DeleteString(0), 3);
    combo.ResetContent();
    EXPECT_EQ(combo.GetCount(), 0);
}

// Sorted by length, by the control's own virtual function.
class ByLength : public CListBox {
public:
    int CompareItem(LPCOMPAREITEMSTRUCT item) override { return order(item->itemData1) - order(item->itemData2); }

private:
    static int order(ULONG_PTR text) { return static_cast<int>(std::strlen(reinterpret_cast<const char*>(text))); }
};

TEST_F(StandardControls, AnOwnerDrawnListBoxSortsByItself) {
    ByLength box;
    ASSERT_TRUE(box.Create(child | LBS_OWNERDRAWFIXED | LBS_SORT, CRect(0, 0, 100, 100), &parent, 25));
    const char* const texts[] = {"ccc", "a", "bb"};
    for (const char* text : texts) box.AddString(text);
    EXPECT_EQ(box.GetItemData(0), reinterpret_cast<DWORD_PTR>(texts[1]));
    EXPECT_EQ(box.GetItemData(2), reinterpret_cast<DWORD_PTR>(texts[0]));
}

TEST_F(StandardControls, AListBoxSelectsMany) {
    CListBox box;
    ASSERT_TRUE(box.Create(child | LBS_EXTENDEDSEL, CRect(0, 0, 100, 100), &parent, 26));
    for (const char* text : {"a", "b", "c", "d"}) box.AddString(text);
    box.SetSel(3);
    box.SetSel(1);
    int rows[4] = {};
    ASSERT_EQ(box.GetSelItems(4, rows), 2);
    EXPECT_EQ(rows[0], 1);
    EXPECT_EQ(rows[1], 3);
    CString text;
    box.GetText(rows[1], text);
    EXPECT_EQ(text, "d");
    CRect rect;
    box.GetItemRect(2, &rect);
    BOOL outside = TRUE;
    EXPECT_EQ(box.ItemFromPoint(rect.CenterPoint(), outside), 2u);
    EXPECT_FALSE(outside);
}

TEST_F(StandardControls, RangesAndPositions) {
    CSliderCtrl slider;
    ASSERT_TRUE(slider.Create(child, CRect(0, 0, 100, 20), &parent, 31));
    slider.SetRange(-5, 50);
    slider.SetPos(60);
    EXPECT_EQ(slider.GetPos(), 50);
    EXPECT_EQ(slider.GetRangeMin(), -5);

    CProgressCtrl progress;
    ASSERT_TRUE(progress.Create(child, CRect(0, 30, 100, 50), &parent, 32));
    progress.SetRange32(0, 100000);
    progress.SetPos(70000);
    EXPECT_EQ(progress.OffsetPos(5), 70000);
    EXPECT_EQ(progress.GetPos(), 70005);

    CEdit buddy;
    CSpinButtonCtrl spin;
    ASSERT_TRUE(buddy.Create(child, CRect(0, 60, 80, 80), &parent, 33));
    ASSERT_TRUE(spin.Create(child | UDS_SETBUDDYINT | UDS_NOTHOUSANDS, CRect(80, 60, 100, 80), &parent, 34));
    spin.SetBuddy(&buddy);
    spin.SetRange32(0, 1000);
    spin.SetPos(321);
    CString text;
    buddy.GetWindowText(text);
    EXPECT_EQ(spin.GetBuddy(), &buddy);
    EXPECT_EQ(text, "321");

    CScrollBar bar;
    ASSERT_TRUE(bar.Create(child | SBS_HORZ, CRect(0, 90, 100, 110), &parent, 35));
    bar.SetScrollRange(0, 40);
    bar.SetScrollPos(7);
    SCROLLINFO info{};
    bar.GetScrollInfo(&info);
    EXPECT_EQ(info.nMax, 40);
    EXPECT_EQ(info.nPos, 7);
}

TEST_F(StandardControls, ADateFieldKeepsItsTime) {
    CDateTimeCtrl field;
    ASSERT_TRUE(field.Create(child | DTS_SHOWNONE, CRect(0, 0, 150, 20), &parent, 36));
    SYSTEMTIME time{};
    time.wYear = 2012;
    time.wMonth = 6;
    time.wDay = 21;
    ASSERT_TRUE(field.SetTime(&time));
    SYSTEMTIME back{};
    EXPECT_EQ(field.GetTime(&back), static_cast<DWORD>(GDT_VALID));
    EXPECT_EQ(back.wDay, 21);
    field.SetTime();
    EXPECT_EQ(field.GetTime(&back), static_cast<DWORD>(GDT_NONE));
}

TEST_F(StandardControls, PanesOfAStatusBarAndTabs) {
    CStatusBarCtrl bar;
    ASSERT_TRUE(bar.Create(child, CRect(0, 0, 0, 0), &parent, 37));
    int edges[3] = {100, 200, -1};
    ASSERT_TRUE(bar.SetParts(3, edges));
    int back[3] = {};
    EXPECT_EQ(bar.GetParts(3, back), 3);
    EXPECT_EQ(back[1], 200);
    bar.SetText("12,345 ticks/s", 1, 0);
    EXPECT_EQ(bar.GetText(1), "12,345 ticks/s");
    EXPECT_EQ(bar.GetText(2), "");

    CTabCtrl tabs;
    ASSERT_TRUE(tabs.Create(child, CRect(0, 100, 200, 200), &parent, 38));
    EXPECT_EQ(tabs.InsertItem(0, "one"), 0);
    EXPECT_EQ(tabs.InsertItem(1, "two"), 1);
    tabs.SetCurSel(1);
    EXPECT_EQ(tabs.GetCurSel(), 1);
    tabs.DeleteItem(0);
    EXPECT_EQ(tabs.GetItemCount(), 1);
}

TEST_F(StandardControls, ToolsOfATipAreAddedMovedAndDeleted) {
    CToolTipCtrl tip;
    CStatic label;
    ASSERT_TRUE(tip.Create(&parent, TTS_ALWAYSTIP));
    ASSERT_TRUE(label.Create("label", child, CRect(0, 0, 50, 20), &parent, 41));
    ASSERT_TRUE(tip.AddTool(&label, "of the label"));
    ASSERT_TRUE(tip.AddTool(&parent, "left", CRect(0, 50, 50, 70), 1));
    ASSERT_TRUE(tip.AddTool(&parent, "right", CRect(50, 50, 100, 70), 2));
    EXPECT_EQ(tip.GetToolCount(), 3);

    const struct {
        CWnd* window;
        UINT_PTR id;
        const char* text;
    } tools[] = {{&label, 0, "of the label"}, {&parent, 1, "left"}, {&parent, 2, "right"}};
    CString text;
    for (const auto& tool : tools) {
        tip.GetText(text, tool.window, tool.id);
        EXPECT_EQ(text, tool.text);
    }
    tip.SetToolRect(&parent, 2, CRect(60, 50, 90, 70));
    TOOLINFO info{};
    ASSERT_TRUE(tip.GetToolInfo(info, &parent, 2));
    EXPECT_EQ(CRect(info.rect), CRect(60, 50, 90, 70));
    EXPECT_TRUE(tip.HitTest(&parent, CPoint(65, 55), &info));
    EXPECT_FALSE(tip.HitTest(&parent, CPoint(55, 55), &info)) << "the old rectangle";
    ASSERT_TRUE(tip.HitTest(&label, CPoint(3, 3), &info)) << "a tool that is a whole window";
    EXPECT_EQ(info.uId, reinterpret_cast<UINT_PTR>(label.m_hWnd));
    tip.UpdateTipText("changed", &parent, 1);
    tip.GetText(text, &parent, 1);
    EXPECT_EQ(text, "changed");
    tip.DelTool(&parent, 1);
    EXPECT_EQ(tip.GetToolCount(), 2);
    EXPECT_FALSE(tip.GetToolInfo(info, &parent, 1));
    tip.SetDelayTime(TTDT_INITIAL, 123);
    EXPECT_EQ(tip.GetDelayTime(TTDT_INITIAL), 123);
}

// --- Dialogs of the system ------------------------------------------------------------------------------------------

// Presses a button of the dialog of this thread as soon as there is one.
class DialogAnswer {
public:
    explicit DialogAnswer(int button) {
        s_button = button;
        m_timer = ::SetTimer(nullptr, 0, 20, &DialogAnswer::tick);
    }
    ~DialogAnswer() { ::KillTimer(nullptr, m_timer); }

private:
    static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &DialogAnswer::answer, 0);
    }
    static BOOL CALLBACK answer(HWND window, LPARAM) {
        char name[16] = "";
        ::GetClassNameA(window, name, sizeof(name));
        if (::lstrcmpA(name, "#32770") != 0 || !::IsWindowVisible(window)) return TRUE;
        ::PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(s_button), 0);
        return FALSE;
    }
    static int s_button;
    UINT_PTR m_timer;
};

int DialogAnswer::s_button = 0;

TEST_F(StandardControls, AColourIsKeptOrCancelled) {
    CColorDialog kept(RGB(10, 20, 30), 0, &parent);
    {
        const DialogAnswer ok(IDOK);
        EXPECT_EQ(kept.DoModal(), IDOK);
    }
    EXPECT_EQ(kept.GetColor(), RGB(10, 20, 30));
    CColorDialog cancelled(RGB(10, 20, 30), 0, &parent);
    const DialogAnswer cancel(IDCANCEL);
    EXPECT_EQ(cancelled.DoModal(), IDCANCEL);
    EXPECT_TRUE(parent.IsWindowEnabled());
}

// The dialog offers installed faces only: any scalable one will do.
int CALLBACK takeScalable(const LOGFONTA* font, const TEXTMETRICA*, DWORD kind, LPARAM face) {
    if (!(kind & TRUETYPE_FONTTYPE) || font->lfFaceName[0] == '@') return 1;
    *reinterpret_cast<CString*>(face) = font->lfFaceName;
    return 0;
}

TEST_F(StandardControls, AFontComesBackFromItsDialog) {
    LOGFONT font{};
    CString face;
    font.lfCharSet = DEFAULT_CHARSET;
    ::EnumFontFamiliesExA(CClientDC(nullptr), &font, &takeScalable, reinterpret_cast<LPARAM>(&face), 0);
    font.lfHeight = -16;
    ::lstrcpyA(font.lfFaceName, face);
    CFontDialog dialog(&font, CF_SCREENFONTS | CF_EFFECTS, nullptr, &parent);
    const DialogAnswer ok(IDOK);
    ASSERT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetFaceName(), face);
    LOGFONT back{};
    dialog.GetCurrentFont(&back);
    EXPECT_EQ(back.lfHeight, -16);
    EXPECT_FALSE(dialog.IsBold());
    EXPECT_EQ(dialog.GetSize(), ::MulDiv(160, 72, ::GetDeviceCaps(CClientDC(nullptr), LOGPIXELSY)));
}

TEST_F(StandardControls, ChosenPathsAreTakenApart) {
    CFileDialog one(FALSE, "csv", "C:\\out\\rows.2012.csv", 0, "Rows (*.csv)|*.csv||");
    EXPECT_EQ(one.GetPathName(), "C:\\out\\rows.2012.csv");
    EXPECT_EQ(one.GetFileName(), "rows.2012.csv");
    EXPECT_EQ(one.GetFileExt(), "csv");
    EXPECT_EQ(one.GetFileTitle(), "rows.2012");
    EXPECT_EQ(one.GetFolderPath(), "C:\\out");
    EXPECT_EQ(std::string(one.m_ofn.lpstrFilter, 20), std::string("Rows (*.csv)\0*.csv\0\0", 20));

    const struct {
        std::string result;
        std::vector<std::string> paths;
    } cases[] = {{std::string("\0\0", 2), {}},
                 {std::string("C:\\a.txt\0\0", 10), {"C:\\a.txt"}},
                 {std::string("C:\\d\0a.txt\0b.txt\0\0", 18), {"C:\\d\\a.txt", "C:\\d\\b.txt"}}};
    for (const auto& row : cases) {
        CFileDialog dialog(TRUE, nullptr, nullptr, OFN_ALLOWMULTISELECT);
        std::copy(row.result.begin(), row.result.end(), dialog.m_ofn.lpstrFile);
        std::vector<std::string> paths;
        for (POSITION position = dialog.GetStartPosition(); position;)
            paths.push_back(dialog.GetNextPathName(position).GetString());
        EXPECT_EQ(paths, row.paths);
    }
}

}  // namespace
