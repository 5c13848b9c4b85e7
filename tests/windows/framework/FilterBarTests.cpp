// The filter bar of a list's header, driven by keys and mouse. Where the system brings its own bar, these tests hold
// the stand-in's contract against it.
#include "platform/win/FilterBar.h"
#include "platform/win/HeaderCaption.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "platform/Framework.h"
#include "support/CallRecorder.h"
#include "support/Input.h"
#include "platform/proving/WindowCapture.h"
#include "support/WindowFixture.h"

namespace {

constexpr int kColumns = 3;
constexpr int kWidth = 120;

// Sees what its header tells it, and Tab before the field does.
class BarList : public CListCtrl {
public:
    test::CallRecorder told;
    LRESULT buttonAnswer = FALSE;
    RECT buttonPlace = {};
    bool eatsTab = true;

    BOOL PreTranslateMessage(MSG* message) override {
        if (message->message == WM_KEYDOWN && message->wParam == VK_TAB) {
            told.record("tab");
            if (eatsTab) return TRUE;
        }
        return CListCtrl::PreTranslateMessage(message);
    }

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override {
        auto* const header = reinterpret_cast<NMHDR*>(lParam);
        if (header->code == static_cast<UINT>(HDN_FILTERCHANGE))
            told.record("change", reinterpret_cast<NMHEADERA*>(lParam)->iItem);
        if (header->code == static_cast<UINT>(HDN_FILTERBTNCLICK)) {
            const auto* const click = reinterpret_cast<NMHDFILTERBTNCLICK*>(lParam);
            told.record("button", click->iItem);
            buttonPlace = click->rc;
            *result = buttonAnswer;
            return TRUE;
        }
        return CListCtrl::OnNotify(wParam, lParam, result);
    }
};

class FilterBarOfAList : public test::WindowFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, client(), &frame(), 7));
        list.SetExtendedStyle(LVS_EX_HEADERDRAGDROP);
        for (int column = 0; column < kColumns; ++column) list.InsertColumn(column, "Column", LVCFMT_LEFT, kWidth);
        for (int row = 0; row < 40; ++row) list.InsertItem(row, "row");
        header = list.GetHeaderCtrl()->m_hWnd;
        plainHeight = height();
        showBar(true);
        pumpUntilIdle();
        list.told.clear();
    }
    void TearDown() override {
        list.DestroyWindow();
        WindowFixture::TearDown();
    }

    void showBar(bool show) {
        CWnd::FromHandle(header)->ModifyStyle(show ? 0 : HDS_FILTERBAR, show ? HDS_FILTERBAR : 0);
    }
    int height() const {
        CRect rect;
        ::GetWindowRect(header, rect);
        return rect.Height();
    }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageA(header, message, wParam, lParam);
    }
    LRESULT edit(int column, bool discard = false) {
        const LRESULT answer = send(HDM_EDITFILTER, static_cast<WPARAM>(column), MAKELPARAM(discard, 0));
        pumpUntilIdle();
        return answer;
    }
    LRESULT set(int column, std::string text, int size = 64) {
        HD_TEXTFILTERA filter = {text.data(), size};
        HDITEMA item{};
        item.mask = HDI_FILTER;
        item.type = HDFT_ISSTRING;
        item.pvFilter = &filter;
        return send(HDM_SETITEMA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
    }
    std::string get(int column, int size = 64) {
        std::string text(static_cast<std::size_t>(size), '#');
        HD_TEXTFILTERA filter = {text.data(), size};
        HDITEMA item{};
        item.mask = HDI_FILTER;
        item.type = HDFT_ISSTRING;
        item.pvFilter = &filter;
        if (!send(HDM_GETITEMA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item))) return "(none)";
        return text.c_str();
    }
    CRect itemRect(int column) {
        CRect rect;
        send(HDM_GETITEMRECT, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&rect));
        return rect;
    }
    // Points in the header's client area.
    CPoint inField(int column) { return {itemRect(column).left + 20, (plainHeight + height()) / 2}; }
    CPoint inButton(int column) { return {itemRect(column).right - 8, (plainHeight + height()) / 2}; }
    HWND field() const { return ::GetWindow(header, GW_CHILD); }
    CRect fieldRect() const {
        CRect rect;
        ::GetWindowRect(field(), rect);
        ::MapWindowPoints(nullptr, header, reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }
    void type(const std::string& text) {
        test::sendText(text);
        pumpUntilIdle();
    }
    void press(WORD key) {
        test::sendKeys({key});
        pumpUntilIdle();
    }
    void click(CPoint point) {
        test::sendClick(header, point);
        pumpUntilIdle();
    }

    BarList list;
    HWND header = nullptr;
    int plainHeight = 0;
};

TEST_F(FilterBarOfAList, TheStyleBitSwitchesTheHeightAndTheRowsFollow) {
    const auto topOfRows = [&] {
        CRect row;
        list.GetItemRect(0, row, LVIR_BOUNDS);
        return row.top;
    };
    EXPECT_GT(height(), plainHeight);
    EXPECT_EQ(topOfRows(), height());
    const int page = list.GetCountPerPage();
    ::SetWindowLongPtrA(header, GWL_STYLE, ::GetWindowLongPtrA(header, GWL_STYLE) & ~LONG_PTR{HDS_FILTERBAR});
    EXPECT_EQ(height(), plainHeight);
    EXPECT_EQ(topOfRows(), plainHeight);
    EXPECT_GT(list.GetCountPerPage(), page);
    showBar(true);
    list.MoveWindow(CRect(0, 0, 300, 200));
    EXPECT_GT(height(), plainHeight);
    EXPECT_EQ(topOfRows(), height());
}

TEST_F(FilterBarOfAList, TextsReadBackInBothForms) {
    ASSERT_TRUE(set(1, "ab\xE9"));
    EXPECT_EQ(get(1), "ab\xE9");
    EXPECT_EQ(get(1, 3), "ab");
    wchar_t text[8] = L"";
    HD_TEXTFILTERW filter = {text, 8};
    HDITEMW item{};
    item.mask = HDI_FILTER | HDI_WIDTH;
    item.pvFilter = &filter;
    ASSERT_TRUE(send(HDM_GETITEMW, 1, reinterpret_cast<LPARAM>(&item)));
    EXPECT_STREQ(text, L"ab\u00E9");
    EXPECT_EQ(item.cxy, kWidth);
    wchar_t other[] = L"\u20AC\u4E2D";
    filter.pszText = other;
    item.mask = HDI_FILTER;
    ASSERT_TRUE(send(HDM_SETITEMW, 2, reinterpret_cast<LPARAM>(&item)));
    filter.pszText = text;
    ASSERT_TRUE(send(HDM_GETITEMW, 2, reinterpret_cast<LPARAM>(&item)));
    EXPECT_STREQ(text, other);
    EXPECT_EQ(get(0), "");
    EXPECT_EQ(get(kColumns), "(none)");
    EXPECT_FALSE(set(kColumns, "x"));
}

// The record's other types. A type that is refused changes and tells nothing.
TEST_F(FilterBarOfAList, NumbersAreFiltersAndDatesAreRefused) {
    if (quor::probeFilterBar(WC_HEADERA) == quor::BarAnswer::own) GTEST_SKIP() << "the system's own bar may know dates";
    SYSTEMTIME date{};
    date.wYear = 2024;
    int number = -42;
    struct Case {
        UINT type;
        void* filter;
        LRESULT result;
        const char* text;  // afterwards, read as text
    };
    const Case table[] = {
        {HDFT_ISDATE, &date, FALSE, "before"},
        {HDFT_ISDATE | HDFT_HASNOVALUE, nullptr, FALSE, "before"},
        {0xF, &number, FALSE, "before"},
        {HDFT_ISNUMBER, &number, TRUE, "(none)"},
        {HDFT_ISNUMBER | HDFT_HASNOVALUE, nullptr, TRUE, "(none)"},
        {HDFT_ISSTRING | HDFT_HASNOVALUE, nullptr, TRUE, ""},
    };
    for (const Case& c : table) {
        SCOPED_TRACE(c.type);
        set(1, "before");
        list.told.clear();
        HDITEMA item{};
        item.mask = HDI_FILTER;
        item.type = c.type;
        item.pvFilter = c.filter;
        EXPECT_EQ(send(HDM_SETITEMA, 1, reinterpret_cast<LPARAM>(&item)), c.result);
        EXPECT_EQ(list.told.count("change 1"), c.result);
        EXPECT_EQ(get(1), c.text);
        int readBack = 0;
        item.type = HDFT_ISNUMBER;
        item.pvFilter = &readBack;
        const bool isNumber = c.result && (c.type & HDFT_ISNUMBER);
        EXPECT_EQ(send(HDM_GETITEMA, 1, reinterpret_cast<LPARAM>(&item)), isNumber);
        EXPECT_EQ(readBack, c.type == HDFT_ISNUMBER ? number : 0);
        item.type = HDFT_ISDATE;
        item.pvFilter = &date;
        EXPECT_FALSE(send(HDM_GETITEMA, 1, reinterpret_cast<LPARAM>(&item)));
        EXPECT_EQ(date.wYear, 2024);
    }
}

TEST_F(FilterBarOfAList, FiltersStayWithTheirColumnWhenOthersComeAndGo) {
    set(1, "one");
    set(2, "two");
    list.InsertColumn(1, "New", LVCFMT_LEFT, 50);
    EXPECT_EQ(get(1), "");
    EXPECT_EQ(get(2), "one");
    list.DeleteColumn(0);
    EXPECT_EQ(get(1), "one");
    EXPECT_EQ(get(2), "two");
}

TEST_F(FilterBarOfAList, WritingAndClearingNotifyBeforeTheyReturn) {
    set(1, "x");
    EXPECT_EQ(list.told.take(), (test::Calls{"change 1"}));
    set(1, "x");
    EXPECT_EQ(list.told.take(), (test::Calls{"change 1"})) << "the same text again";
    EXPECT_TRUE(send(HDM_CLEARFILTER, 1));
    EXPECT_EQ(list.told.take(), (test::Calls{"change 1"}));
    EXPECT_EQ(get(1), "");
    EXPECT_FALSE(send(HDM_CLEARFILTER, kColumns));
    EXPECT_EQ(list.told.take(), test::Calls{});
}

TEST_F(FilterBarOfAList, ClearingAllNotifiesOnceForEachTextOrOnceForNone) {
    set(0, "a");
    set(2, "b");
    list.told.clear();
    send(HDM_CLEARFILTER, static_cast<WPARAM>(-1));
    EXPECT_EQ(list.told.take(), (test::Calls{"change 0", "change 2"}));
    EXPECT_EQ(get(0) + get(2), "");
    send(HDM_CLEARFILTER, static_cast<WPARAM>(-1));
    EXPECT_EQ(list.told.take(), (test::Calls{"change -1"}));
}

TEST_F(FilterBarOfAList, TypingWaitsForTheTimeoutAndEnterDoesNot) {
    EXPECT_EQ(send(HDM_SETFILTERCHANGETIMEOUT, 0, 150), 1000);
    EXPECT_EQ(send(HDM_SETFILTERCHANGETIMEOUT, 0, 200), 150);
    click(inField(1));
    type("abc");
    EXPECT_EQ(list.told.take(), test::Calls{});
    EXPECT_EQ(get(1), "") << "not told yet";
    const DWORD start = ::GetTickCount();
    EXPECT_TRUE(pumpFor([&] { return list.told.count("change 1") == 1; }));
    EXPECT_LT(::GetTickCount() - start, 2000u);
    EXPECT_EQ(get(1), "abc");
    send(HDM_SETFILTERCHANGETIMEOUT, 0, 60000);
    list.told.clear();
    type("d");
    press(VK_RETURN);
    EXPECT_EQ(list.told.take(), (test::Calls{"change 1"}));
    EXPECT_EQ(get(1), "abcd");
    EXPECT_EQ(::GetFocus(), field());
    press(VK_RETURN);
    EXPECT_EQ(list.told.take(), test::Calls{}) << "nothing new";
}

TEST_F(FilterBarOfAList, EscDropsWhatWasTypedAndGivesTheFocusToTheList) {
    set(1, "kept");
    list.told.clear();
    click(inField(1));
    type("x");
    press(VK_ESCAPE);
    EXPECT_EQ(get(1), "kept");
    EXPECT_EQ(list.told.take(), test::Calls{});
    EXPECT_EQ(field(), nullptr);
    EXPECT_EQ(::GetFocus(), list.m_hWnd);
}

TEST_F(FilterBarOfAList, LeavingTheFieldTellsWhatWasTyped) {
    click(inField(0));
    type("a");
    list.SetFocus();
    EXPECT_EQ(list.told.take(), (test::Calls{"change 0"}));
    EXPECT_EQ(field(), nullptr);
    click(inField(0));
    type("b");
    click(inField(2));
    EXPECT_EQ(list.told.take(), (test::Calls{"change 0"}));
    EXPECT_EQ(get(0), "b") << "the click marked the old text";
    type("c");
    showBar(false);
    EXPECT_EQ(list.told.take(), (test::Calls{"change 2"}));
    EXPECT_EQ(::GetFocus(), list.m_hWnd);
    EXPECT_EQ(get(2), "c");
}

TEST_F(FilterBarOfAList, EditFilterOpensAFieldAndMayDiscardTheFormer) {
    EXPECT_TRUE(edit(0));
    EXPECT_EQ(::GetFocus(), field());
    type("a");
    EXPECT_TRUE(edit(1, true));
    EXPECT_EQ(get(0), "");
    type("b");
    EXPECT_TRUE(edit(2));
    EXPECT_EQ(get(1), "b");
    EXPECT_EQ(list.told.take(), (test::Calls{"change 1"}));
    EXPECT_FALSE(edit(kColumns));
    EXPECT_TRUE(edit(-1));
    EXPECT_EQ(field(), nullptr);
    showBar(false);
    EXPECT_FALSE(edit(0)) << "no bar, no field";
}

TEST_F(FilterBarOfAList, TheOwnerSeesTabAndTheFieldKeepsItsText) {
    click(inField(1));
    type("a");
    press(VK_TAB);
    list.eatsTab = false;
    press(VK_TAB);
    press(VK_RETURN);
    EXPECT_EQ(list.told.take(), (test::Calls{"tab", "tab", "change 1"}));
    EXPECT_EQ(get(1), "a");
    EXPECT_EQ(::GetFocus(), field());
}

// In a dialog Enter and Esc are the field's, not those of the default and cancel buttons; Tab is the dialog's.
TEST_F(FilterBarOfAList, ADialogLeavesEnterAndEscToTheField) {
    std::vector<WORD> commands;
    frame().onMessage = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        if (message == WM_COMMAND) commands.push_back(LOWORD(wParam));
        return false;
    };
    const auto wanted = [&](WPARAM key) {
        MSG message{field(), WM_KEYDOWN, key, 1, 0, {}};
        return (::SendMessageA(field(), WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&message)) & DLGC_WANTMESSAGE) !=
               0;
    };
    const auto pressInDialog = [&](HWND window, WPARAM key) {
        MSG message{window, WM_KEYDOWN, key, 1, 0, {}};
        EXPECT_TRUE(::IsDialogMessageA(frame().m_hWnd, &message));
        pumpUntilIdle();
        return std::exchange(commands, {});
    };
    edit(1);
    EXPECT_TRUE(wanted(VK_RETURN));
    EXPECT_TRUE(wanted(VK_ESCAPE));
    EXPECT_FALSE(wanted(VK_TAB));
    EXPECT_FALSE(wanted('A'));
    EXPECT_FALSE(::SendMessageA(field(), WM_GETDLGCODE, 0, 0) & DLGC_WANTMESSAGE);
    type("a");
    EXPECT_TRUE(pressInDialog(field(), VK_RETURN).empty());
    EXPECT_EQ(list.told.take(), (test::Calls{"change 1"}));
    type("b");
    EXPECT_TRUE(pressInDialog(field(), VK_ESCAPE).empty());
    EXPECT_EQ(get(1), "a");
    EXPECT_EQ(field(), nullptr);
    EXPECT_EQ(pressInDialog(list.m_hWnd, VK_RETURN), std::vector<WORD>{IDOK}) << "the keys do reach a dialog elsewhere";
    EXPECT_EQ(pressInDialog(list.m_hWnd, VK_ESCAPE), std::vector<WORD>{IDCANCEL});
    frame().onMessage = nullptr;
}

TEST_F(FilterBarOfAList, TheRecordLimitsWhatCanBeTyped) {
    set(1, "", 4);
    click(inField(1));
    type("abcdef");
    press(VK_RETURN);
    EXPECT_EQ(get(1), "abc");
    set(1, "longer", 4);
    EXPECT_EQ(get(1), "lon");
}

TEST_F(FilterBarOfAList, AMegabyteOfTextReadsBack) {
    constexpr int size = 1048576;
    const std::string longest(size - 1, 'q');
    ASSERT_TRUE(set(1, longest + "more", size));
    EXPECT_TRUE(get(1, size) == longest);
    EXPECT_EQ(get(1, 524288).size(), 524287u);
    edit(1);
    type("!");  // replaces the marked text
    press(VK_RETURN);
    EXPECT_EQ(get(1, size), "!");
}

TEST_F(FilterBarOfAList, TheFunnelAsksTheOwnerAndTrueIsFollowedByAChange) {
    click(inButton(2));
    EXPECT_EQ(list.told.take(), (test::Calls{"button 2"}));
    EXPECT_TRUE(::PtInRect(&list.buttonPlace, inButton(2)));
    EXPECT_FALSE(::PtInRect(&list.buttonPlace, inField(2)));
    list.buttonAnswer = TRUE;
    click(inField(0));
    type("a");
    list.told.clear();
    click(inButton(2));
    EXPECT_EQ(list.told.take(), (test::Calls{"change 0", "button 2", "change 2"})) << "what was typed comes first";
}

TEST_F(FilterBarOfAList, TheFieldFillsItsPlaceAndFollowsTheColumn) {
    edit(1);
    EXPECT_EQ(::GetParent(field()), header);
    const CRect before = fieldRect();
    EXPECT_GE(before.left, itemRect(1).left);
    EXPECT_GT(before.Width(), kWidth - 25);
    EXPECT_GE(before.top, plainHeight);
    EXPECT_LE(before.bottom, height());
    list.SetColumnWidth(0, kWidth + 30);
    EXPECT_EQ(fieldRect().left, before.left + 30);
    list.SetColumnWidth(1, kWidth + 7);
    EXPECT_EQ(fieldRect().Width(), before.Width() + 7);
    int order[] = {1, 0, 2};
    list.SetColumnOrderArray(kColumns, order);
    EXPECT_EQ(fieldRect().left, itemRect(1).left + (before.left - kWidth));
}

// Where the first character stands tells whether the text was scrolled while the field was still narrow.
TEST_F(FilterBarOfAList, AnOpenedFieldShowsItsTextFromTheStart) {
    const auto start = [&] { return static_cast<short>(LOWORD(::SendMessageA(field(), EM_POSFROMCHAR, 0, 0))); };
    edit(2);
    type("1234567890");
    const short typed = start();
    press(VK_ESCAPE);
    set(0, "1234567890");
    edit(0);
    EXPECT_EQ(start(), typed) << "a field made anew";
    list.SetColumnWidth(1, 40);
    set(2, "1234567890");
    edit(1);
    edit(2);
    EXPECT_EQ(start(), typed) << "a field that came from a narrower column";
}

TEST_F(FilterBarOfAList, DraggingADividerMovesTheFieldAndTheBarIsNoDivider) {
    edit(1);
    const CRect before = fieldRect();
    test::sendDrag(header, {kWidth, plainHeight / 2}, {kWidth + 40, plainHeight / 2});
    pumpUntilIdle();
    EXPECT_EQ(list.GetColumnWidth(0), kWidth + 40);
    EXPECT_EQ(fieldRect().left, before.left + 40);
    test::sendDrag(header, {kWidth + 40, height() - 3}, {kWidth + 80, height() - 3});
    pumpUntilIdle();
    EXPECT_EQ(list.GetColumnWidth(0), kWidth + 40);
}

TEST_F(FilterBarOfAList, DraggingACaptionMovesTheFieldAndTheBarIsNoCaption) {
    const auto order = [&] {
        int places[kColumns] = {};
        list.GetColumnOrderArray(places, kColumns);
        return std::vector<int>(places, places + kColumns);
    };
    set(0, "zero");
    edit(1);
    type("one");
    const CRect before = fieldRect();
    const int caption = plainHeight / 2, bar = height() - 3;
    test::sendDrag(header, {kWidth / 2, bar}, {kWidth * 5 / 2, bar});
    pumpUntilIdle();
    EXPECT_EQ(order(), (std::vector<int>{0, 1, 2}));
    edit(1);
    test::sendDrag(header, {kWidth / 2, caption}, {kWidth * 5 / 2 + 30, caption});
    pumpUntilIdle();
    EXPECT_EQ(order(), (std::vector<int>{1, 2, 0}));
    EXPECT_EQ(fieldRect(), CRect(before - CPoint(kWidth, 0)));
    press(VK_RETURN);
    EXPECT_EQ(get(0) + get(1) + get(2), "zeroone");
    click({itemRect(0).left + 20, bar});
    EXPECT_GE(fieldRect().left, 2 * kWidth) << "the field of the column that was dragged";
}

TEST_F(FilterBarOfAList, AFontOfAnotherSizeReachesTheOpenField) {
    edit(1);
    type("kept");
    const CRect before = fieldRect();
    const int heightBefore = height();
    for (const int points : {240, 80}) {
        CFont font;
        font.CreatePointFont(points, "Arial");
        list.SetFont(&font);
        pumpUntilIdle();
        EXPECT_EQ(::SendMessageA(field(), WM_GETFONT, 0, 0), send(WM_GETFONT));
        EXPECT_EQ(reinterpret_cast<HFONT>(send(WM_GETFONT)), static_cast<HFONT>(font));
        EXPECT_EQ(height() > heightBefore, points == 240);
        EXPECT_EQ(fieldRect().Height() > before.Height(), points == 240);
        EXPECT_LE(fieldRect().bottom, height());
        EXPECT_EQ(::GetFocus(), field());
        CRect row;
        list.GetItemRect(0, row, LVIR_BOUNDS);
        EXPECT_EQ(row.top, height());
        list.SetFont(nullptr);
    }
    press(VK_RETURN);
    EXPECT_EQ(get(1), "kept");
}

TEST_F(FilterBarOfAList, ScrollingTakesTheFieldAlong) {
    list.MoveWindow(CRect(0, 0, 200, 200));
    edit(1);
    CRect before, after;
    ::GetWindowRect(field(), before);
    list.Scroll(CSize(50, 0));
    pumpUntilIdle();
    ::GetWindowRect(field(), after);
    EXPECT_EQ(after.left, before.left - 50);
}

TEST_F(FilterBarOfAList, HitTestsTellFieldButtonAndCaptionApart) {
    const auto hit = [&](CPoint point) {
        HDHITTESTINFO info = {point, 0, -1};
        send(HDM_HITTEST, 0, reinterpret_cast<LPARAM>(&info));
        return std::pair(info.iItem, info.flags);
    };
    EXPECT_EQ(hit(inField(1)), std::pair(1, UINT{HHT_ONFILTER}));
    EXPECT_EQ(hit(inButton(1)), std::pair(1, UINT{HHT_ONFILTERBUTTON}));
    EXPECT_EQ(hit({kWidth * 3 / 2, plainHeight / 2}), std::pair(1, UINT{HHT_ONHEADER}));
}

TEST_F(FilterBarOfAList, AnOwnerMayEndTheListFromANotification) {
    class Ending : public BarList {
        BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override {
            if (reinterpret_cast<NMHDR*>(lParam)->code == static_cast<UINT>(HDN_FILTERCHANGE)) DestroyWindow();
            return m_hWnd ? BarList::OnNotify(wParam, lParam, result) : FALSE;
        }
    };
    for (const WORD key : {WORD{VK_RETURN}, WORD{0}}) {
        Ending ending;
        ASSERT_TRUE(ending.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, CRect(0, 0, 300, 100), &frame(), 8));
        ending.InsertColumn(0, "Only", LVCFMT_LEFT, 100);
        CHeaderCtrl* const bar = ending.GetHeaderCtrl();
        bar->ModifyStyle(0, HDS_FILTERBAR);
        ASSERT_TRUE(bar->EditFilter(0, FALSE));
        type("a");
        if (key)
            press(key);
        else
            ::SendMessageA(::GetParent(::GetFocus()), HDM_CLEARFILTER, static_cast<WPARAM>(-1), 0);
        EXPECT_EQ(ending.m_hWnd, nullptr);
    }
}

// Pictures: what the colours of a field's place are, not how they look together.
TEST_F(FilterBarOfAList, AFilterFillsTheFunnelAndReplacesTheGreyCue) {
    WindowPicture empty, filtered, cleared;
    const auto capture = [&](WindowPicture& picture) {
        pumpUntilIdle();
        ::UpdateWindow(header);
        return quorCaptureClientArea(header, picture);
    };
    const auto count = [&](const WindowPicture& picture, int column, COLORREF color, bool button) {
        const CRect item = itemRect(column);
        const std::uint32_t wanted = 0xFF000000u | static_cast<std::uint32_t>(GetRValue(color)) << 16 |
                                     static_cast<std::uint32_t>(GetGValue(color)) << 8 | GetBValue(color);
        int found = 0;
        for (int y = plainHeight + 2; y < picture.height - 2; ++y)
            for (int x = button ? item.right - 15 : item.left + 2; x < (button ? item.right - 3 : item.right - 17); ++x)
                found += picture.pixels[static_cast<std::size_t>(y * picture.width + x)] == wanted;
        return found;
    };
    ASSERT_TRUE(capture(empty));
    set(1, "MMMM");
    ASSERT_TRUE(capture(filtered));
    send(HDM_CLEARFILTER, 1);
    ASSERT_TRUE(capture(cleared));
    const COLORREF text = ::GetSysColor(COLOR_WINDOWTEXT);
    const COLORREF grey = ::GetSysColor(COLOR_GRAYTEXT);
    EXPECT_GT(count(filtered, 1, ::GetSysColor(COLOR_BTNTEXT), true),
              count(empty, 1, ::GetSysColor(COLOR_BTNTEXT), true));
    EXPECT_GT(count(filtered, 1, text, false), count(empty, 1, text, false));
    EXPECT_GT(count(empty, 1, grey, false), count(filtered, 1, grey, false));
    EXPECT_TRUE(cleared.pixels == empty.pixels);
    if (const char* path = std::getenv("FILTER_BAR_PICTURE")) {
        set(0, "INFY~TCS");
        edit(2);
        type("NSE");
        EXPECT_TRUE(quorSaveClientAreaPng(frame().m_hWnd, path));
    }
}

TEST_F(FilterBarOfAList, AHeaderOfItsOwnReportsToItsParent) {
    CHeaderCtrl own;
    std::vector<int> items;
    frame().onMessage = [&](UINT message, WPARAM, LPARAM lParam, LRESULT&) {
        if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == static_cast<UINT>(HDN_FILTERCHANGE))
            items.push_back(reinterpret_cast<NMHEADERA*>(lParam)->iItem);
        return false;
    };
    ASSERT_TRUE(own.Create(WS_CHILD | WS_VISIBLE | HDS_FILTERBAR, CRect(0, 0, 300, 40), &frame(), 9));
    char text[] = "start";
    HD_TEXTFILTERA filter = {text, sizeof(text)};
    HDITEMA item{};
    item.mask = HDI_WIDTH | HDI_FILTER;
    item.cxy = 80;
    item.pvFilter = &filter;
    ASSERT_EQ(own.InsertItem(0, &item), 0);
    EXPECT_TRUE(items.empty());
    const auto asked = [&] {
        RECT room = {0, 0, 300, 300};
        WINDOWPOS place{};
        HDLAYOUT layout = {&room, &place};
        EXPECT_TRUE(own.Layout(&layout));
        EXPECT_EQ(room.top, place.cy);
        return place.cy;
    };
    const int withBar = asked();
    own.ModifyStyle(HDS_FILTERBAR, 0);
    EXPECT_GE(withBar - asked(), 16);
    own.ModifyStyle(0, HDS_FILTERBAR);
    own.ClearAllFilters();
    EXPECT_EQ(items, std::vector<int>{0});
    frame().onMessage = nullptr;
}

// ---- The probe: a header of each kind

struct FakeHeader {
    bool grows = false;
    bool keeps = false;
    bool clears = false;
};
constexpr RECT kFakeItem = {0, 0, 40, 37};
constexpr int kFakeCaption = 17;
FakeHeader g_fake;
std::string g_fakeFilter;

LRESULT CALLBACK fakeHeaderProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case HDM_LAYOUT: {
            const bool bar = (::GetWindowLongPtrA(window, GWL_STYLE) & HDS_FILTERBAR) != 0;
            reinterpret_cast<HDLAYOUT*>(lParam)->pwpos->cy = g_fake.grows && bar ? 37 : 17;
            return TRUE;
        }
        case HDM_SETITEMA:
            if (g_fake.keeps)
                g_fakeFilter = static_cast<HD_TEXTFILTERA*>(reinterpret_cast<HDITEMA*>(lParam)->pvFilter)->pszText;
            return TRUE;
        case HDM_GETITEMA:
            std::strcpy(static_cast<HD_TEXTFILTERA*>(reinterpret_cast<HDITEMA*>(lParam)->pvFilter)->pszText,
                        g_fakeFilter.c_str());
            return TRUE;
        case HDM_CLEARFILTER:
            if (g_fake.clears) g_fakeFilter.clear();
            return TRUE;
        case HDM_GETITEMRECT:
            *reinterpret_cast<RECT*>(lParam) = kFakeItem;
            return TRUE;
        case HDM_HITTEST: {
            auto& hit = *reinterpret_cast<HDHITTESTINFO*>(lParam);
            hit.flags = hit.pt.y < kFakeCaption ? HHT_ONHEADER : HHT_ONFILTER;
            return hit.iItem = 0;
        }
        default:
            return ::DefWindowProcA(window, message, wParam, lParam);
    }
}

struct FakeHeaderClass {
    FakeHeaderClass() {
        WNDCLASSA description{};
        description.lpfnWndProc = &fakeHeaderProc;
        description.hInstance = ::GetModuleHandleA(nullptr);
        description.lpszClassName = "FakeHeader";
        EXPECT_TRUE(::RegisterClassA(&description));
    }
    ~FakeHeaderClass() { ::UnregisterClassA("FakeHeader", ::GetModuleHandleA(nullptr)); }
};

TEST(FilterBarProbe, AsksAHeaderOfEachKind) {
    const FakeHeaderClass registered;
    for (int kind = 0; kind < 8; ++kind) {
        g_fake = {(kind & 1) != 0, (kind & 2) != 0, (kind & 4) != 0};
        g_fakeFilter.clear();
        EXPECT_EQ(quor::probeFilterBar("FakeHeader"), kind == 7 ? quor::BarAnswer::own : quor::BarAnswer::none) << kind;
    }
}

TEST(FilterBarProbe, OnlyAnAnswerIsKept) {
    quor::HeaderClassProbe probe("FakeHeader");
    EXPECT_EQ(probe.answer(), quor::BarAnswer::unknown) << "the class is not there yet";
    {
        const FakeHeaderClass registered;
        g_fake = {true, true, true};
        EXPECT_EQ(probe.answer(), quor::BarAnswer::own);
    }
    EXPECT_EQ(probe.answer(), quor::BarAnswer::own);
}

// Painters of captions are told where the system's own fields begin, and the header may go on to draw those.
TEST(HeaderCaption, EndsWhereTheSystemsOwnFieldBegins) {
    const FakeHeaderClass registered;
    for (const DWORD style : {DWORD{0}, DWORD{HDS_FILTERBAR}}) {
        const HWND header = ::CreateWindowExA(0, "FakeHeader", "", WS_CHILD | style, 0, 0, 40, 37, HWND_MESSAGE,
                                              nullptr, nullptr, nullptr);
        CClientDC screen(nullptr);
        CDC dc;
        dc.CreateCompatibleDC(&screen);
        CBitmap bitmap;
        bitmap.CreateCompatibleBitmap(&screen, 40, 37);
        const SelectScope selected(dc, bitmap);
        NMCUSTOMDRAW draw{};
        draw.hdr.hwndFrom = header;
        draw.hdc = dc;
        draw.rc = kFakeItem;
        const bool bar = style != 0;
        const CRect caption = quor::headerCaption(draw);
        EXPECT_EQ(caption, CRect(0, 0, 40, bar ? kFakeCaption : 37));
        dc.FillSolidRect(caption, 1);
        EXPECT_EQ(quor::headerCaptionPainted(draw) & CDRF_SKIPDEFAULT, bar ? 0 : CDRF_SKIPDEFAULT);
        dc.FillSolidRect(&kFakeItem, 2);  // as the header would
        EXPECT_EQ(dc.GetPixel(20, kFakeCaption - 1), bar ? 1u : 2u);
        EXPECT_EQ(dc.GetPixel(20, kFakeCaption), 2u);
        ::DestroyWindow(header);
    }
}

}  // namespace
