// The filter bar of a list's header, driven by keys and mouse. Where the system brings its own bar, these tests hold
// the stand-in's contract against it.
#include "quor/platform/proving/UserInput.h"
#include "quor/platform/win/FilterBar.h"
#include "support/CallRecorder.h"
#include "support/Canvas.h"
#include "support/WindowFixture.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr int kColumns = 3;
constexpr int kWidth = 120;

// Sees what its header tells it, and Tab before the field does.
class BarList : public CListCtrl {
public:
    test::CallRecorder told;
    LRESULT buttonAnswer = FALSE;
    RECT buttonPlace = {};

    BOOL PreTranslateMessage(MSG* message) override {
        if (message->message == WM_KEYDOWN && message->wParam == VK_TAB) told.record("tab");
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
    int topOfRows() const {
        CRect row;
        list.GetItemRect(0, row, LVIR_BOUNDS);
        return row.top;
    }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageA(header, message, wParam, lParam);
    }
    LRESULT edit(int column, bool discard = false) {
        const LRESULT answer = send(HDM_EDITFILTER, static_cast<WPARAM>(column), MAKELPARAM(discard, 0));
        pumpUntilIdle();
        return answer;
    }
    LRESULT exchange(UINT message, int column, std::string& text, int size) {
        HD_TEXTFILTERA filter = {text.data(), size};
        HDITEMA item{};
        item.mask = HDI_FILTER;
        item.type = HDFT_ISSTRING;
        item.pvFilter = &filter;
        return send(message, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
    }
    LRESULT set(int column, std::string text, int size = 64) { return exchange(HDM_SETITEMA, column, text, size); }
    std::string get(int column, int size = 64) {
        std::string text(static_cast<std::size_t>(size), '#');
        return exchange(HDM_GETITEMA, column, text, size) ? text.c_str() : "(none)";
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
        quor::sendText(text);
        pumpUntilIdle();
    }
    void press(WORD key) {
        quor::sendKeys({key});
        pumpUntilIdle();
    }
    void click(CPoint point) {
        quor::sendClick(header, point);
        pumpUntilIdle();
    }

    BarList list;
    HWND header = nullptr;
    int plainHeight = 0;
};

// Who is told of them, and when, the mix on a real grid tells, and its tests and proofs what is told by itself.
TEST_F(FilterBarOfAList, TextsReadBackAndStayWithTheirColumn) {
    set(1, "", 4);  // the record limits what can be typed
    click(inField(1));
    list.told.clear();
    type("abcdef");
    EXPECT_EQ(list.told.take(), test::Calls{}) << "not told yet";
    press(VK_RETURN);
    EXPECT_EQ(get(1), "abc");
    list.told.clear();
    press(VK_RETURN);
    EXPECT_EQ(list.told.take(), test::Calls{}) << "nothing new";
    ASSERT_TRUE(set(1, "ab\xE9"));
    EXPECT_EQ(get(1), "ab\xE9");
    EXPECT_EQ(get(1, 3), "ab");
    EXPECT_EQ(get(kColumns), "(none)");
    EXPECT_FALSE(set(kColumns, "x"));
    EXPECT_FALSE(send(HDM_CLEARFILTER, kColumns));
    list.InsertColumn(1, "New", LVCFMT_LEFT, 50);
    EXPECT_EQ(get(1) + " " + get(2), " ab\xE9");
    list.DeleteColumn(0);
    EXPECT_EQ(get(1), "ab\xE9");
}

TEST_F(FilterBarOfAList, WhatBecomesOfATypedText) {
    send(HDM_SETFILTERCHANGETIMEOUT, 0, 60000);
    list.buttonAnswer = TRUE;
    const test::Calls change{"change 1"};
    const struct {
        const char* what;
        std::function<void()> act;
        test::Calls told;
        const char* text;
        bool open;  // a field, which then has the focus; else the list has it
    } rows[] = {
        {"Enter tells it", [&] { press(VK_RETURN); }, change, "x", true},
        {"Esc drops it", [&] { press(VK_ESCAPE); }, {}, "kept", false},
        {"Tab is the owner's, or nobody's", [&] { press(VK_TAB); }, {"tab"}, "kept", true},
        {"the list gets the focus", [&] { list.SetFocus(); }, change, "x", false},
        {"another field is opened", [&] { EXPECT_TRUE(edit(2)); }, change, "x", true},
        {"it is discarded", [&] { EXPECT_TRUE(edit(2, true)); }, {}, "kept", true},
        {"there is no such field", [&] { EXPECT_FALSE(edit(kColumns)); }, {}, "kept", true},
        {"its field is closed", [&] { EXPECT_TRUE(edit(-1)); }, change, "x", false},
        {"a funnel asks the owner, who changes a filter",
         [&] { click(inButton(2)); },
         {"change 1", "button 2", "change 2"},
         "x",
         true},
        {"the bar goes", [&] { showBar(false); }, change, "x", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        list.SetFocus();
        set(1, "kept");
        click(inField(1));  // marks the old text
        type("x");
        list.told.clear();
        row.act();
        EXPECT_EQ(list.told.take(), row.told);
        EXPECT_EQ(get(1), row.text);
        EXPECT_EQ(field() != nullptr, row.open);
        EXPECT_EQ(::GetFocus(), row.open ? field() : list.m_hWnd);
    }
    EXPECT_EQ(height(), plainHeight);
    EXPECT_EQ(topOfRows(), plainHeight) << "the rows follow";
    EXPECT_FALSE(edit(0)) << "no bar, no field";
    showBar(true);
    EXPECT_TRUE(::PtInRect(&list.buttonPlace, inButton(2)));
    EXPECT_FALSE(::PtInRect(&list.buttonPlace, inField(2)));
}

// In a dialog Enter and Esc are the field's, not those of the default and cancel buttons.
TEST_F(FilterBarOfAList, ADialogLeavesEnterAndEscToTheField) {
    std::vector<WORD> commands;
    frame().onMessage = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        if (message == WM_COMMAND) commands.push_back(LOWORD(wParam));
        return false;
    };
    const auto pressInDialog = [&](HWND window, WPARAM key) {
        MSG message{window, WM_KEYDOWN, key, 1, 0, {}};
        EXPECT_TRUE(::IsDialogMessageA(frame().m_hWnd, &message));
        pumpUntilIdle();
        return commands.size();
    };
    edit(1);
    type("a");
    EXPECT_EQ(pressInDialog(field(), VK_RETURN), 0u);
    EXPECT_EQ(get(1), "a");
    EXPECT_EQ(pressInDialog(field(), VK_ESCAPE), 0u);
    EXPECT_EQ(field(), nullptr);
    EXPECT_EQ(pressInDialog(list.m_hWnd, VK_RETURN), 1u) << "the keys do reach a dialog elsewhere";
}

// The mouse moves and resizes columns by captions and dividers, and not in the bar.
TEST_F(FilterBarOfAList, TheFieldFillsItsPlaceAndFollowsTheColumn) {
    edit(1);
    type("kept");
    const int left = fieldRect().left - itemRect(1).left, missing = kWidth - fieldRect().Width();
    const int fieldHeight = fieldRect().Height();
    EXPECT_GE(left, 0);
    EXPECT_LT(missing, 25);
    const auto dragInBar = [&](int from, int to) {
        quor::sendDrag(header, {from, height() - 3}, {to, height() - 3});
        edit(1);
    };
    int order[] = {1, 0, 2};
    CFont large;
    large.CreatePointFont(240, "Arial");
    const struct {
        const char* what;
        std::function<void()> act;
        int column, width;  // then, of the field's
    } rows[] = {
        {"the column before it is wider", [&] { list.SetColumnWidth(0, kWidth + 30); }, kWidth + 30, kWidth},
        {"wider itself", [&] { list.SetColumnWidth(1, kWidth + 7); }, kWidth + 30, kWidth + 7},
        {"another order", [&] { list.SetColumnOrderArray(kColumns, order); }, 0, kWidth + 7},
        {"no divider", [&] { dragInBar(kWidth + 7, kWidth); }, 0, kWidth + 7},
        {"no caption", [&] { dragInBar(kWidth / 2, kWidth * 2); }, 0, kWidth + 7},
        {"a larger font", [&] { list.SetFont(&large); }, 0, kWidth + 7},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        row.act();
        pumpUntilIdle();
        EXPECT_EQ(itemRect(1).left, row.column);
        EXPECT_EQ(list.GetColumnWidth(1), row.width);
        EXPECT_EQ(fieldRect().left, row.column + left);
        EXPECT_EQ(fieldRect().Width(), row.width - missing);
        EXPECT_GE(fieldRect().top, plainHeight);
        EXPECT_LE(fieldRect().bottom, height());
        EXPECT_EQ(topOfRows(), height());
        EXPECT_EQ(::SendMessageA(field(), WM_GETFONT, 0, 0), send(WM_GETFONT));
    }
    EXPECT_GT(fieldRect().Height(), fieldHeight);
    list.SetFont(nullptr);
    press(VK_RETURN);
    EXPECT_EQ(get(0) + get(1) + get(2), "kept");
}

// By a key; hosts that come back end it from the filters that they set.
TEST_F(FilterBarOfAList, AnOwnerMayEndTheListFromANotification) {
    class Ending : public CListCtrl {
        BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override {
            if (reinterpret_cast<NMHDR*>(lParam)->code == static_cast<UINT>(HDN_FILTERCHANGE)) DestroyWindow();
            return m_hWnd ? CListCtrl::OnNotify(wParam, lParam, result) : FALSE;
        }
    };
    Ending ending;
    ASSERT_TRUE(ending.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, CRect(0, 0, 300, 100), &frame(), 8));
    ending.InsertColumn(0, "Only", LVCFMT_LEFT, 100);
    header = ending.GetHeaderCtrl()->m_hWnd;
    showBar(true);
    ASSERT_TRUE(edit(0));
    type("a");
    press(VK_RETURN);
    EXPECT_EQ(ending.m_hWnd, nullptr);
}

// ---- A system's own bar

constexpr RECT kOwnItem = {0, 0, 40, 37};
constexpr int kOwnCaption = 17;

// A header that has a bar.
LRESULT CALLBACK ownHeaderProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    static std::string kept;
    const bool bar = (::GetWindowLongPtrA(window, GWL_STYLE) & HDS_FILTERBAR) != 0;
    const auto filter = [lParam] {
        return static_cast<HD_TEXTFILTERA*>(reinterpret_cast<HDITEMA*>(lParam)->pvFilter)->pszText;
    };
    switch (message) {
        case HDM_LAYOUT:
            reinterpret_cast<HDLAYOUT*>(lParam)->pwpos->cy = bar ? kOwnItem.bottom : kOwnCaption;
            return TRUE;
        case HDM_SETITEMA:
            kept = filter();
            return TRUE;
        case HDM_GETITEMA:
            std::strcpy(filter(), kept.c_str());
            return TRUE;
        case HDM_CLEARFILTER:
            kept.clear();
            return TRUE;
        case HDM_GETITEMRECT:
            *reinterpret_cast<RECT*>(lParam) = kOwnItem;
            return TRUE;
        case HDM_HITTEST: {
            auto& hit = *reinterpret_cast<HDHITTESTINFO*>(lParam);
            hit.flags = hit.pt.y < kOwnCaption ? HHT_ONHEADER : HHT_ONFILTER;
            return hit.iItem = 0;
        }
        default:
            return ::DefWindowProcA(window, message, wParam, lParam);
    }
}

using OwnFilterBar = test::WindowFixture;

// Only an answer of its class is kept. Painters of captions are told where the system's own fields begin, and the
// header may go on to draw those.
TEST_F(OwnFilterBar, IsFoundAndBeginsWhereTheCaptionEnds) {
    WNDCLASSA description{};
    description.lpfnWndProc = &ownHeaderProc;
    description.hInstance = ::GetModuleHandleA(nullptr);
    description.lpszClassName = "HeaderWithABar";
    quor::HeaderClassProbe probe(description.lpszClassName);
    EXPECT_EQ(probe.answer(), quor::BarAnswer::unknown) << "the class is not there yet";
    ASSERT_TRUE(::RegisterClassA(&description));
    EXPECT_EQ(probe.answer(), quor::BarAnswer::own);
    for (const bool bar : {false, true}) {
        const HWND header = ::CreateWindowExA(0, description.lpszClassName, "", WS_CHILD | (bar ? HDS_FILTERBAR : 0), 0,
                                              0, 40, 37, HWND_MESSAGE, nullptr, nullptr, nullptr);
        test::Canvas canvas(frame(), {40, 37}, 0);
        NMCUSTOMDRAW draw{};
        draw.hdr.hwndFrom = header;
        draw.hdc = canvas.dc;
        draw.rc = kOwnItem;
        const CRect caption = quor::platform::headerCaption(draw);
        EXPECT_EQ(caption, CRect(0, 0, 40, bar ? kOwnCaption : 37));
        canvas.dc.FillSolidRect(caption, 1);
        EXPECT_EQ(quor::platform::headerCaptionPainted(draw) & CDRF_SKIPDEFAULT, bar ? 0 : CDRF_SKIPDEFAULT);
        canvas.dc.FillSolidRect(&kOwnItem, 2);  // as the header would
        EXPECT_EQ(canvas.dc.GetPixel(20, kOwnCaption - 1), bar ? 1u : 2u);
        EXPECT_EQ(canvas.dc.GetPixel(20, kOwnCaption), 2u);
        ::DestroyWindow(header);
    }
    ::UnregisterClassA(description.lpszClassName, description.hInstance);
}

}  // namespace
