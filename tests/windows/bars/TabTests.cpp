// The tab control on a real window: what it tells its owner on each road, drag, renaming, and what an owner may do
// meanwhile. Where tabs lie and what a point hits is tests/core/bars'.
#include "quor/bars/CustomTabCtrl.h"
#include "quor/foundation/TimerIds.h"
#include "quor/platform/proving/UserInput.h"
#include "support/FakeHost.h"
#include "support/HandleCounts.h"
#include "support/WindowFixture.h"

#include <optional>

namespace {

constexpr UINT kTabsId = 77;
constexpr DWORD kDragStyles = CTS_DRAGMOVE | CTS_DRAGCOPY | CTS_AUTOHIDEBUTTONS;

class TabWindow : public test::WindowFixture {
protected:
    struct Road {
        const char* name;
        std::function<void()> act;
        const char* told;  // code, item and text of each notification
        const char* texts;
    };

    TabWindow() { resetFakeHost(); }
    void TearDown() override {
        tabs.reset();
        WindowFixture::TearDown();
    }
    // "ab" makes two tabs, the first one selected.
    void make(DWORD style, const char* letters = "abcd", CRect place = CRect(10, 10, 410, 34)) {
        frame().onMessage = nullptr;
        tabs.emplace();
        ASSERT_TRUE(tabs->Create(WS_CHILD | WS_VISIBLE | style, place, &frame(), kTabsId));
        const HCURSOR arrow = ::LoadCursorA(nullptr, IDC_ARROW);
        tabs->SetDragCursors(arrow, arrow);
        for (int i = 0; letters[i]; ++i) tabs->InsertItem(i, CString(letters[i], 1), letters[i]);
        tabs->SetCurSel(0);
        told.clear();
        frame().onMessage = [this](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
            if (message == WM_KILLFOCUS && onFocusLost) std::exchange(onFocusLost, nullptr)();
            if (message == WM_APP && onPosted) onPosted();
            if (message != WM_NOTIFY || wParam != kTabsId) return message == WM_APP;
            const auto& record = *reinterpret_cast<const sTabNotify*>(lParam);
            const int code = static_cast<int>(record.hdr.code);
            if (code >= static_cast<int>(NM_RDBLCLK) && code <= kTabClose)
                told += std::to_string(code) + ":" + std::to_string(record.nItem) + record.szText + " ";
            if (onNotify) result = onNotify(record);
            return true;
        };
    }
    // Each on a control of its own.
    template <std::size_t count>
    void take(const Road (&roads)[count], DWORD style) {
        for (const Road& road : roads) {
            make(style);
            road.act();
            std::string texts;
            for (int i = 0; i < tabs->GetItemCount(); ++i)
                texts.append(tabs->GetItemText(i)).append(i == tabs->GetCurSel() ? "* " : " ");
            EXPECT_EQ(told, road.told) << road.name;
            EXPECT_EQ(texts, road.texts) << road.name;
            EXPECT_EQ(::GetCapture(), nullptr) << road.name;
        }
    }
    CPoint middle(int index) {
        CRect rect;
        tabs->GetItemRect(index, rect);
        return rect.CenterPoint();
    }
    CPoint pointOf(int button) {
        CPoint point(2, 10);
        while (point.x < 400 && tabs->HitTest(point) != button) ++point.x;
        return point + CSize(2, 0);
    }
    void mouse(UINT message, CPoint at, WPARAM flags = 0) { tabs->SendMessage(message, flags, MAKELPARAM(at.x, at.y)); }
    void press(int index, WPARAM flags = 0) {
        mouse(WM_LBUTTONDOWN, middle(index), MK_LBUTTON | flags);
        mouse(WM_LBUTTONUP, middle(index), flags);
    }
    void click(int button) {
        quor::sendClick(*tabs, pointOf(button));
        pumpUntilIdle();
    }
    void key(WORD code) { tabs->SendMessage(WM_KEYDOWN, code); }
    void startDrag(int index) {
        mouse(WM_LBUTTONDOWN, middle(index), MK_LBUTTON);
        tabs->SendMessage(WM_TIMER, kTabDragTimer);
    }
    void drag(int from, CPoint to) { startDrag(from), mouse(WM_MOUSEMOVE, to), mouse(WM_LBUTTONUP, to); }
    // While `act` runs Ctrl is down.
    static void withControl(const std::function<void()>& act) {
        BYTE keys[256];
        for (const BYTE state : {BYTE{0x80}, BYTE{0}}) {
            ::GetKeyboardState(keys);
            keys[VK_CONTROL] = keys[VK_LCONTROL] = state;
            ::SetKeyboardState(keys);
            if (state) act();
        }
    }

    std::optional<CCustomTabCtrl> tabs;
    std::string told;
    std::function<LRESULT(const sTabNotify&)> onNotify;
    std::function<void()> onPosted, onFocusLost;
};

TEST_F(TabWindow, EveryRoadTellsTheOwner) {
    const CPoint nowhere(395, 0);
    const Road roads[] = {
        {"click", [&] { press(2); }, "-2:2c 0:2c ", "a b c* d "},
        {"click on the chosen", [&] { press(0); }, "-2:0a ", "a* b c d "},
        {"second click elsewhere", [&] { mouse(WM_LBUTTONDBLCLK, middle(1)), mouse(WM_LBUTTONUP, middle(1)); },
         "-2:1b 0:1b ", "a b* c d "},
        {"Ctrl-click", [&] { press(2, MK_CONTROL), press(1); }, "-2:2c 1:2c -2:1b 0:1b 1:2c ", "a b* c d "},
        {"right", [&] { mouse(WM_RBUTTONDOWN, middle(1)), mouse(WM_RBUTTONDBLCLK, nowhere); }, "-5:1b -6:-6 ",
         "a* b c d "},
        {"nothing", [&] { mouse(WM_LBUTTONDOWN, nowhere), mouse(WM_LBUTTONUP, nowhere); }, "-2:-6 ", "a* b c d "},
        {"next button", [&] { click(CTS_HIT_NEXT); }, "-2:-3 ", "a* b c d "},
        {"close button", [&] { click(CTS_HIT_CLOSE); }, "-2:-5 5:0a ", "a* b c d "},
        {"close button left", [&] { mouse(WM_LBUTTONDOWN, pointOf(CTS_HIT_CLOSE)), mouse(WM_LBUTTONUP, middle(1)); },
         "-2:-5 ", "a* b c d "},
        {"middle", [&] { mouse(WM_MBUTTONDOWN, middle(3)), mouse(WM_MBUTTONUP, middle(3)); }, "5:3d ", "a* b c d "},
        {"keys", [&] { key(VK_RIGHT), key(VK_DOWN), key(VK_LEFT), key(VK_UP), key(VK_END), key(VK_HOME); },
         "0:1b 0:2c 0:1b 0:0a 0:3d 0:0a ", "a* b c d "},
        {"Ctrl+Tab", [&] { withControl([&] { key(VK_END), key(VK_TAB); }); }, "0:3d 0:0a ", "a* b c d "},
        {"delete", [&] { key(VK_DELETE); }, "5:0a ", "a* b c d "},
        {"list",
         [&] {
             for (const WORD menuKey : {VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN}) tabs->PostMessage(WM_KEYDOWN, menuKey);
             mouse(WM_LBUTTONDOWN, pointOf(CTS_HIT_LIST));
         },
         "-2:-7 0:2c ", "a b c* d "},
        {"host",
         [&] {
             tabs->SetCurSel(1), tabs->HighlightItem(3), tabs->SetItemText(2, "x"), tabs->InsertItem(4, "n", 0, TRUE);
             tabs->DeleteItem(0), tabs->MoveItem(0, 2), tabs->CopyItem(0, 1), tabs->CopyItem(0, 99);
         },
         "2:2b 3:1x (2) -1:-1 ", "x x (2)* d b n "},
    };
    take(roads, CTS_MULTIHIGHLIGHT | CTS_CLOSEBUTTON | CTS_LISTBUTTON);
}

TEST_F(TabWindow, ANotificationDescribesItsTab) {
    make(0, "ab");
    tabs->SetItemText(1, "A text of more than thirty letters");
    const CPoint point = middle(1);
    int seen = 0;
    onNotify = [&](const sTabNotify& record) -> LRESULT {
        EXPECT_EQ(CString(record.szText), "A text of more than thirty let");
        EXPECT_EQ(record.lParam, 'b');
        EXPECT_TRUE(CRect(record.rectText).PtInRect(point));
        EXPECT_EQ(CPoint(record.point), point);
        EXPECT_EQ(record.fSelected, seen++) << "selected only after the click was told";
        return 0;
    };
    mouse(WM_LBUTTONDOWN, point, MK_LBUTTON);
    EXPECT_EQ(seen, 2);
}

TEST_F(TabWindow, DragsEndWhereTheyAreDropped) {
    const auto started = [&] { startDrag(1), mouse(WM_MOUSEMOVE, middle(3)); };
    const auto released = [&] { mouse(WM_LBUTTONUP, middle(3)); };
    const CPoint behind(300, 10);
    const Road roads[] = {
        {"moved", [&] { drag(1, middle(3)); }, "2:259b ", "a c d b* "},
        {"copied", [&] { withControl([&] { drag(1, middle(0)); }); }, "3:0b (2) ", "b (2)* a b c d "},
        {"Ctrl let go at the end",
         [&] {
             withControl([&] { startDrag(1), mouse(WM_MOUSEMOVE, behind); });
             mouse(WM_LBUTTONUP, behind);
         },
         "2:259b ", "a c d b* "},
        {"on itself", [&] { drag(1, middle(1)); }, "", "a b* c d "},
        {"far away", [&] { drag(1, CPoint(20, 300)); }, "", "a b* c d "},
        {"the last", [&] { drag(3, middle(0)); }, "", "a b c d* "},
        {"too short", [&] { mouse(WM_LBUTTONDOWN, middle(1)), mouse(WM_MOUSEMOVE, middle(3)), released(); }, "",
         "a b* c d "},
        {"escape", [&] { started(), key(VK_ESCAPE), released(); }, "", "a b* c d "},
        {"right button", [&] { started(), mouse(WM_RBUTTONDOWN, middle(3)), released(); }, "", "a b* c d "},
        {"capture lost", [&] { started(), ::ReleaseCapture(), released(); }, "", "a b* c d "},
        {"tabs changed", [&] { started(), tabs->DeleteItem(0); }, "", "b* c d "},
        {"no cursor", [&] { tabs->SetDragCursors(nullptr, nullptr), drag(1, middle(3)); }, "", "a b* c d "},
    };
    onNotify = [this](const sTabNotify& record) -> LRESULT {
        if (record.hdr.code == NM_CLICK || record.hdr.code == kTabChosen) told.clear();
        return 0;
    };
    take(roads, kDragStyles);
}

TEST_F(TabWindow, AButtonThatComesUpInAnOwnersBoxHoldsNothing) {
    for (const UINT code : {NM_CLICK, static_cast<UINT>(kTabChosen)}) {
        make(kDragStyles);
        onNotify = [&](const sTabNotify& record) -> LRESULT {
            if (record.hdr.code != code) return 0;
            ::ReleaseCapture();
            quor::sendRelease(frame(), {600, 400});
            pumpUntilIdle();
            return 0;
        };
        quor::sendPress(*tabs, middle(1));
        pumpUntilIdle();
        EXPECT_EQ(tabs->GetCurSel(), 1) << static_cast<int>(code);
        EXPECT_EQ(::GetCapture(), nullptr) << static_cast<int>(code);
        onNotify = nullptr;
    }
}

TEST_F(TabWindow, ADragScrollsAtTheEnds) {
    make(CTS_DRAGMOVE | CTS_BUTTONSAFTER, "abcdefgh", CRect(10, 10, 160, 34));
    const CPoint end = pointOf(CTS_HIT_PREVIOUS) - CSize(6, 0);
    startDrag(0);
    quor::sendMouseMove(*tabs, end);
    pumpUntilIdle();
    for (int step = 0; step < 20; ++step) tabs->SendMessage(WM_TIMER, kTabDragScrollTimer);
    told.clear();
    mouse(WM_LBUTTONUP, end);
    EXPECT_EQ(told, "2:7a ");
}

TEST_F(TabWindow, RenamingEndsOnEveryRoad) {
    const auto typed = [](const char* text, WORD key) { quor::sendText(text), quor::sendKeys({key}); };
    const struct {
        const char* road;
        std::function<void()> act;  // when the owner is asked
        const char* text;           // of the second tab, afterwards
        BOOL changed;
    } cases[] = {
        {"enter", [&] { typed("new", VK_RETURN); }, "new", TRUE},
        {"escape", [&] { typed("new", VK_ESCAPE); }, "b", FALSE},
        {"empty", [&] { quor::sendKeys({VK_BACK}), quor::sendKeys({VK_RETURN}); }, "b", FALSE},
        {"equal", [&] { typed("b", VK_RETURN); }, "b", FALSE},
        {"click elsewhere",
         [&] {
             quor::sendText("other"), quor::sendClick(frame(), {600, 400});
         },
         "other", TRUE},
        {"another control", [&] { quor::sendText("kept"), frame().PostMessage(WM_APP); }, "kept", TRUE},
    };
    onPosted = [this] {
        pumpUntilIdle();
        frame().SetFocus();
    };
    for (const auto& each : cases) {
        make(CTS_AUTOHIDEBUTTONS);
        onNotify = [&](const sTabNotify& record) -> LRESULT {
            if (record.hdr.code == kTabLabel) each.act();
            onNotify = nullptr;
            return 0;
        };
        EXPECT_EQ(tabs->EditLabel(1), each.changed) << each.road;
        EXPECT_EQ(told, std::string("4:1b 4:1") + each.text + " ") << each.road;
        EXPECT_STREQ(tabs->GetItemText(1), each.text) << each.road;
        EXPECT_EQ(tabs->GetWindow(GW_CHILD), nullptr) << each.road;
        pumpUntilIdle();
    }
}

TEST_F(TabWindow, AnOwnerMayRefuseRenamingOrEndTheTabMeanwhile) {
    make(0);
    onNotify = [](const sTabNotify&) -> LRESULT { return 1; };
    EXPECT_FALSE(tabs->EditLabel(1));
    EXPECT_EQ(told, "4:1b ");
    onNotify = nullptr;
    const auto meanwhile = [&](std::function<void()> act) {
        make(0);
        onPosted = std::move(act);
        frame().PostMessage(WM_APP);
        return tabs->EditLabel(1);
    };
    EXPECT_FALSE(meanwhile([&] { tabs->DeleteItem(1); }));
    EXPECT_EQ(tabs->GetItemCount(), 3);
    CRect before, after;
    EXPECT_THROW(meanwhile([&] {
                     tabs->GetItemRect(2, before);
                     quor::sendText("longer"), pumpUntilIdle();
                     throw 1;
                 }),
                 int);
    EXPECT_EQ(tabs->GetWindow(GW_CHILD), nullptr);
    tabs->GetItemRect(2, after);
    EXPECT_LT(after.left, before.left) << "the tab is as wide as its text again";
    EXPECT_FALSE(meanwhile([&] { tabs->DestroyWindow(); }));
    EXPECT_FALSE(meanwhile([&] { tabs.reset(); }));
    EXPECT_FALSE(meanwhile([&] { ::PostQuitMessage(5); }));
    MSG quit{};
    EXPECT_TRUE(::PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(quit.wParam, 5u);
    frame().SetFocus();
    onFocusLost = [&] { tabs.reset(); };
    EXPECT_FALSE(tabs->EditLabel(1));
}

TEST_F(TabWindow, AnOwnerMayEndTheControlFromEachNotification) {
    const std::pair<UINT, std::function<void()>> cases[] = {
        {NM_CLICK, [&] { mouse(WM_LBUTTONDOWN, middle(1), MK_LBUTTON); }},
        {NM_RCLICK, [&] { mouse(WM_RBUTTONDOWN, middle(1)); }},
        {NM_RDBLCLK, [&] { mouse(WM_RBUTTONDBLCLK, middle(1)); }},
        {kTabChosen, [&] { mouse(WM_LBUTTONDOWN, middle(1)); }},
        {kTabHighlight, [&] { mouse(WM_LBUTTONDOWN, middle(1), MK_CONTROL); }},
        {kTabMoved, [&] { drag(1, middle(3)); }},
        {kTabCopied, [&] { tabs->CopyItem(0, 1); }},
        {static_cast<UINT>(kTabCopyFailed), [&] { tabs->CopyItem(0, 9); }},
        {kTabLabel, [&] { key(VK_F2); }},
        {kTabClose, [&] { key(VK_DELETE); }},
    };
    for (const bool whole : {false, true}) {
        for (const auto& [code, act] : cases) {
            make(kDragStyles | CTS_MULTIHIGHLIGHT);
            onNotify = [&, code = code](const sTabNotify& record) -> LRESULT {
                if (record.hdr.code != code || !tabs) return 0;
                whole ? tabs.reset() : static_cast<void>(tabs->DestroyWindow());
                return 0;
            };
            const HWND window = tabs->m_hWnd;
            act();
            EXPECT_FALSE(::IsWindow(window)) << code;
        }
    }
}

TEST_F(TabWindow, AFrameGivesTheStripItsPlace) {
    const struct {
        DWORD style;
        CRect place, rest;
    } cases[] = {
        {0, {0, 0, 300, 24}, {0, 24, 300, 200}},
        {CTS_TOP, {0, 176, 300, 200}, {0, 0, 300, 176}},
        {CTS_VERTICAL, {0, 0, 24, 200}, {24, 0, 300, 200}},
        {CTS_VERTICAL | CTS_TOP, {276, 0, 300, 200}, {0, 0, 276, 200}},
    };
    for (const auto& each : cases) {
        make(0, "ab", CRect(0, 0, 24, 24));
        tabs->ModifyStyle(0, each.style);
        AFX_SIZEPARENTPARAMS layout{::BeginDeferWindowPos(1), CRect(0, 0, 300, 200), {}, TRUE};
        tabs->SendMessage(WM_SIZEPARENT, 0, reinterpret_cast<LPARAM>(&layout));
        ::EndDeferWindowPos(layout.hDWP);
        CRect place;
        tabs->GetWindowRect(place);
        frame().ScreenToClient(place);
        EXPECT_EQ(place, each.place) << each.style;
        EXPECT_EQ(CRect(layout.rect), each.rest) << each.style;
        EXPECT_EQ(middle(1).y > middle(0).y, (each.style & CTS_VERTICAL) != 0) << each.style;
    }
}

TEST_F(TabWindow, ACutTextShowsAsATip) {
    make(CTS_BUTTONSAFTER, "a", CRect(10, 10, 130, 34));
    tabs->SetItemText(0, "A text that is too long for the strip");
    quor::sendMouseMove(*tabs, {60, 12});
    HWND tip = nullptr;
    ASSERT_TRUE(pumpFor([&] {
        tip = nullptr;
        while ((tip = ::FindWindowExA(nullptr, tip, TOOLTIPS_CLASSA, nullptr)))
            if (::IsWindowVisible(tip) && ::GetWindowThreadProcessId(tip, nullptr) == ::GetCurrentThreadId()) break;
        return tip != nullptr;
    }));
    char text[100];
    ::GetWindowTextA(tip, text, sizeof text);
    EXPECT_STREQ(text, "A text that is too long for the strip");
}

// What is drawn is what is hit: along a line near the wide edge the chosen tab's ground is the window colour.
TEST_F(TabWindow, TheChosenTabIsDrawnOnTop) {
    for (const DWORD style : {DWORD{0}, CTS_TOP, CTS_VERTICAL, CTS_VERTICAL | CTS_TOP}) {
        const bool vertical = (style & CTS_VERTICAL) != 0;
        make(style | CTS_AUTOHIDEBUTTONS, "abc", vertical ? CRect(10, 10, 40, 310) : CRect(10, 10, 310, 40));
        tabs->SetCurSel(1);
        pumpUntilIdle();
        CClientDC dc(&*tabs);
        int hits = 0, differing = 0;
        for (int along = 0; along < 300; ++along) {
            const int across = style & CTS_TOP ? 4 : 25;
            const CPoint point = vertical ? CPoint(across, along) : CPoint(along, across);
            const bool hit = tabs->HitTest(point) == 1;
            hits += hit;
            differing += hit != (dc.GetPixel(point) == ::GetSysColor(COLOR_WINDOW));
        }
        EXPECT_GT(hits, 20) << style;
        EXPECT_LE(differing, 6) << style << ": two edges";
    }
}

TEST_F(TabWindow, HandlesReturn) {
    test::expectHandlesReturn(200, [this](int round) {
        make(round % 2 ? kDragStyles : CTS_VERTICAL | CTS_FOURBUTTONS | CTS_CLOSEBUTTON, "abcdefgh");
        quor::sendMouseMove(*tabs, middle(1));
        pumpUntilIdle();
        startDrag(1);
        mouse(WM_MOUSEMOVE, middle(2));
        tabs->UpdateWindow();
        mouse(WM_LBUTTONUP, middle(2));
        quor::sendKeys({VK_ESCAPE});
        key(VK_F2);
        tabs.reset();
        pumpUntilIdle();
    });
}

}  // namespace
