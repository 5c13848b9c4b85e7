// The tab control's parts that need no window: a text is as many tens of pixels wide as it has letters, and two more
// where it is selected.
#include "core/bars/PlainTabs.h"
#include "quor/bars/core/TabStrip.h"
#include "support/Rounds.h"

#include <gtest/gtest.h>

using namespace quor::bars;

namespace {

int widthOf(const CString& text, bool selected) { return text.GetLength() * 10 + (selected ? 2 : 0); }

class Tabs : public TabStrip {
public:
    explicit Tabs(DWORD style = 0, int length = 300, int height = 20) : TabStrip(&widthOf) {
        setStyle(style);
        setSize(length, height);
    }
    int add(const char* text, int index = -1, bool select = false) {
        auto tab = std::make_unique<TabItem>();
        tab->m_strText = text;
        return insert(index < 0 ? count() : index, std::move(tab), select);
    }
    Tabs& fill(const std::string& letters) {
        for (const char letter : letters) add(std::string(static_cast<std::size_t>(letter - '0'), 'x').c_str());
        return *this;
    }
    std::string texts() const {
        std::string all;
        for (int i = 0; i < count(); ++i) all.append(item(i).m_strText).append(i == selected() ? "* " : " ");
        return all;
    }
    // Left edge and state of each tab that shows.
    std::string shown() const {
        std::string all;
        for (int i = 0; i < count(); ++i)
            if (item(i).m_bState)
                all += std::to_string(item(i).m_rect.left) + "/" + std::to_string(item(i).m_bState) + " ";
        return all;
    }
    std::string buttons() const {
        std::string all;
        for (const int code :
             {CTS_HIT_CLOSE, CTS_HIT_LIST, CTS_HIT_FIRST, CTS_HIT_PREVIOUS, CTS_HIT_NEXT, CTS_HIT_LAST}) {
            const CRect place = buttonPlace(code);
            if (buttonState(code))
                all +=
                    std::to_string(code) + ":" + std::to_string(place.left) + "-" + std::to_string(place.right) + " ";
        }
        return all;
    }
};

TEST(TabStrip, PlacesAreMeasuredFromTheHeight) {
    Tabs below, hanging(CTS_TOP), fixed(CTS_FIXEDWIDTH);
    below.fill("30");
    EXPECT_EQ(below.item(0).m_rect, CRect(37, 1, 37 + 54, 19)) << "two buttons of 17, and 3";
    EXPECT_EQ(below.item(0).m_rectText, CRect(47, 1, 47 + 34, 19));
    EXPECT_EQ(below.item(1).m_rect, CRect(37 + 44, 1, 37 + 44 + 24, 19)) << "no text has no width";
    hanging.fill("3");
    EXPECT_EQ(hanging.item(0).m_rect, CRect(37, 0, 91, 18));
    EXPECT_EQ(hanging.item(0).m_rectText, CRect(47, 0, 81, 18));
    fixed.fill("13");
    EXPECT_EQ(fixed.item(0).m_rect.Width(), 54);
}

TEST(TabStrip, ButtonsTakeTheirRoom) {
    const struct {
        DWORD style;
        const char* buttons;  // b is 17
        const char* shown;
    } cases[] = {
        {0, "-2:0-18 -3:18-37 ", "37/4 71/3 "},
        {CTS_FOURBUTTONS, "-1:0-18 -2:18-35 -3:35-53 -4:53-71 ", "71/4 105/3 "},
        {CTS_CLOSEBUTTON, "-5:0-18 -2:17-35 -3:35-54 ", "54/4 88/3 "},
        {CTS_CLOSEBUTTON | CTS_LISTBUTTON, "-5:0-18 -7:17-35 -2:34-52 -3:52-71 ", "71/4 105/3 "},
        {CTS_BUTTONSAFTER, "-2:263-281 -3:281-300 ", "0/4 34/3 "},
        {CTS_BUTTONSAFTER | CTS_FOURBUTTONS | CTS_CLOSEBUTTON,
         "-5:282-300 -1:212-230 -2:230-247 -3:247-265 -4:265-283 ", "0/4 34/3 "},
        {CTS_AUTOHIDEBUTTONS | CTS_FOURBUTTONS, "", "0/4 34/3 "},
        {CTS_AUTOHIDEBUTTONS | CTS_LISTBUTTON, "-7:0-18 ", "17/4 51/3 "},
    };
    for (const auto& each : cases) {
        Tabs tabs(each.style);
        tabs.fill("22");
        EXPECT_EQ(tabs.buttons(), each.buttons) << each.style;
        EXPECT_EQ(tabs.shown(), each.shown) << each.style;
    }
    Tabs one(CTS_AUTOHIDEBUTTONS, 30);
    EXPECT_EQ(one.fill("9").buttons(), "") << "one tab needs no scrolling however long it is";
    EXPECT_EQ(one.fill("1").buttons(), "-2:0-18 -3:18-37 ");
}

// Tabs of 54 that start every 44 pixels, behind buttons of 37.
TEST(TabStrip, Scrolls) {
    Tabs tabs(0, 200);
    tabs.fill("33333");
    const struct {
        int code;
        const char* shown;
    } steps[] = {
        {CTS_HIT_PREVIOUS, "37/4 81/4 125/4 169/4 213/3 "},
        {CTS_HIT_NEXT, "37/2 37/4 81/4 125/4 169/3 "},
        {CTS_HIT_NEXT, "37/2 37/4 81/4 125/3 "},
        {CTS_HIT_NEXT, "37/2 37/4 81/4 125/3 "},
        {CTS_HIT_FIRST, "37/4 81/4 125/4 169/4 213/3 "},
        {CTS_HIT_LAST, "37/2 37/4 81/4 125/3 "},
        {CTS_HIT_PREVIOUS, "37/2 37/4 81/4 125/4 169/3 "},
    };
    for (const auto& step : steps) {
        tabs.press(step.code, 0);
        EXPECT_EQ(tabs.release(), step.code);
        EXPECT_EQ(tabs.shown(), step.shown) << step.code;
    }
    tabs.press(CTS_HIT_LAST, 0);
    tabs.setSize(244, 20);
    EXPECT_EQ(tabs.shown(), "37/2 37/4 81/4 125/4 169/3 ") << "a wider strip has no gap at its end";
    tabs.select(1);
    EXPECT_EQ(tabs.shown(), "37/2 37/3 83/4 127/4 171/3 ");
    EXPECT_EQ(tabs.firstVisible(), 1);
    tabs.setSize(200, 20);
    tabs.press(CTS_HIT_NEXT, 0);
    EXPECT_EQ(tabs.shown().substr(0, 5), "37/1 ") << "the selected one may be scrolled out";
    EXPECT_FALSE(tabs.select(5));
    EXPECT_TRUE(tabs.select(-1));
}

TEST(TabStrip, AHeldButtonRepeatsAfterAQuarterOfASecond) {
    Tabs tabs(0, 100);
    tabs.fill("33333");
    constexpr DWORD kStart = 0xFFFFFFF0;  // the system's count starts again every 49 days
    tabs.press(CTS_HIT_NEXT, kStart);
    EXPECT_EQ(tabs.firstVisible(), 1);
    EXPECT_FALSE(tabs.repeat(kStart + 5));
    EXPECT_FALSE(tabs.repeat(kStart + 249));
    EXPECT_TRUE(tabs.repeat(kStart + 250));
    EXPECT_FALSE(tabs.repeat(kStart + 499));
    EXPECT_TRUE(tabs.repeat(kStart + 500));
    EXPECT_EQ(tabs.firstVisible(), 3);
    tabs.release();
    EXPECT_FALSE(tabs.repeat(kStart + 5000));
}

// Rows of a strip of three tabs, the middle one selected: what each third pixel hits.
TEST(TabStrip, WhatIsOnTopIsHit) {
    Tabs tabs(CTS_AUTOHIDEBUTTONS);
    tabs.fill("111");
    tabs.select(1);
    const auto row = [&](int y) {
        std::string all;
        for (int x = 1; x < 90; x += 3) {
            const int hit = tabs.hitTest({x, y});
            all += hit == CTS_HIT_NOTHING ? '.' : static_cast<char>('0' + hit);
        }
        return all;
    };
    EXPECT_EQ(row(0), std::string(30, '.'));
    EXPECT_EQ(row(2), "...00000...111111...22222.....");
    EXPECT_EQ(row(18), "0000000011111111111122222222..");
    EXPECT_EQ(row(19), std::string(30, '.'));
    tabs.setStyle(CTS_AUTOHIDEBUTTONS | CTS_TOP);
    EXPECT_EQ(row(17), "...00000...111111...22222.....");
    EXPECT_EQ(tabs.hitTest({-1, 5}), CTS_HIT_NOTHING);
}

TEST(TabStrip, TextsAreCutAtTheRoom) {
    Tabs tabs(CTS_BUTTONSAFTER, 150);
    tabs.fill("333");  // texts at 10, 54 and 98, the room from 113 on
    EXPECT_EQ(tabs.tipPlace(1), CRect(54, 1, 88, 19));
    EXPECT_FALSE(tabs.clipped(1));
    EXPECT_EQ(tabs.tipPlace(2), CRect(98, 1, 113, 19));
    EXPECT_TRUE(tabs.clipped(2));
    tabs.setSize(130, 20);
    EXPECT_EQ(tabs.tipPlace(2), CRect());
    tabs.press(CTS_HIT_NEXT, 0);
    EXPECT_EQ(tabs.tipPlace(0), CRect()) << "a sliver";
}

TEST(TabStrip, CopiesGetTextsOfTheirOwn) {
    const struct {
        const char* texts;  // of one letter or more, between blanks
        const char* text;
        const char* copy;
    } cases[] = {
        {"Watch", "Watch", "Watch (2)"},
        {"Watch|Watch (2)", "Watch", "Watch (3)"},
        {"Watch|Watch (2)", "Watch (2)", "Watch (3)"},
        {"Watch(2)", "Watch(2)", "Watch(3)"},
        {"Watch(5)", "Watch(5)", "Watch(2)"},
        {"Watch(0)", "Watch(0)", "Watch(0) (2)"},
        {"Watch(12)", "Watch(12)", "Watch(12) (2)"},
        {"WATCH (2)|Watch", "Watch", "Watch (2)"},
        {"(3)", "(3)", "(2)"},
        {"", "", " (2)"},
    };
    for (const auto& each : cases) {
        Tabs tabs;
        CString text;
        int at = 0;
        const CString all(each.texts);
        for (text = all.Tokenize("|", at); !text.IsEmpty(); text = all.Tokenize("|", at)) tabs.add(text);
        EXPECT_STREQ(tabs.copyText(each.text), each.copy) << each.text;
    }
}

TEST(TabStrip, SelectionStaysOnItsTab) {
    const struct {
        std::function<void(Tabs&)> act;
        const char* texts;
    } cases[] = {
        {[](Tabs& t) { t.add("n", 0); }, "n a b c* d "},
        {[](Tabs& t) { t.add("n", 3); }, "a b c* n d "},
        {[](Tabs& t) { t.add("n", 4, true); }, "a b c d n* "},
        {[](Tabs& t) { EXPECT_EQ(t.add("n", 5), -1); }, "a b c* d "},
        {[](Tabs& t) { t.move(2, 0); }, "c* a b d "},
        {[](Tabs& t) { t.move(0, 3); }, "b c* d a "},
        {[](Tabs& t) { t.move(3, 1); }, "a d b c* "},
        {[](Tabs& t) { EXPECT_FALSE(t.move(1, 4)); }, "a b c* d "},
        {[](Tabs& t) { t.remove(0); }, "b c* d "},
        {[](Tabs& t) { t.remove(2); }, "a b d* "},
        {[](Tabs& t) { t.remove(3), t.remove(2); }, "a b* "},
        {[](Tabs& t) { EXPECT_FALSE(t.remove(-1)); }, "a b c* d "},
        {[](Tabs& t) { t.removeAll(), t.add("z"); }, "z "},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        Tabs tabs;
        for (const char* text : {"a", "b", "c", "d"}) tabs.add(text);
        tabs.select(2);
        cases[i].act(tabs);
        EXPECT_EQ(tabs.texts(), cases[i].texts) << i;
    }
}

TEST(TabStrip, KeysStepAndHighlightsAreToldOnce) {
    const struct {
        TabStep step;
        int fromNone, fromFirst, fromLast;
    } cases[] = {
        {TabStep::previous, 2, -1, 1}, {TabStep::next, 0, 1, -1},     {TabStep::first, 0, -1, 0},
        {TabStep::last, 2, 2, -1},     {TabStep::cycleBack, 2, 2, 1}, {TabStep::cycleOn, 0, 1, 0},
    };
    Tabs tabs;
    tabs.fill("123");
    for (const auto& each : cases) {
        const std::pair<int, int> answers[] = {{-1, each.fromNone}, {0, each.fromFirst}, {2, each.fromLast}};
        for (const auto& [from, target] : answers) {
            tabs.select(from);
            EXPECT_EQ(tabs.stepTarget(each.step), target) << static_cast<int>(each.step) << " from " << from;
        }
    }
    tabs.highlight(2, true);
    tabs.highlight(0, false);
    EXPECT_EQ(tabs.takeHighlightChange(), 2);
    EXPECT_EQ(tabs.takeHighlightChange(), -1);
    tabs.clearHighlights();
    EXPECT_EQ(tabs.takeHighlightChange(), 2);
}

TEST(TabStrip, ADragLandsOnTheTabUnderThePointer) {
    Tabs tabs(CTS_DRAGMOVE | CTS_DRAGCOPY, 200);
    tabs.fill("33333");
    tabs.select(4);
    EXPECT_FALSE(tabs.canDrag(4, false)) << "the last stays";
    tabs.select(2);
    EXPECT_TRUE(tabs.canDrag(2, true));
    EXPECT_FALSE(tabs.canDrag(1, false));
    tabs.press(CTS_HIT_FIRST, 0);  // from 37 on, every 44 pixels; the selected one is 2 wider
    const struct {
        CPoint point;
        int move, copy, mark;  // the mark of a move of tab 2
    } cases[] = {
        {{0, 10}, 0, 0, 42},    {{60, 10}, 0, 0, 42},   {{90, -20}, 1, 1, 86},
        {{199, 39}, 3, 3, 220}, {{90, -21}, -6, -6, 0}, {{90, 40}, -6, -6, 0},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(tabs.dropPlace(each.point, false), each.move) << each.point.x;
        EXPECT_EQ(tabs.dropPlace(each.point, true), each.copy) << each.point.x;
        if (each.move >= 0) {
            EXPECT_EQ(tabs.dropMark(2, each.move, false), each.mark) << each.point.x;
        }
    }
    EXPECT_FALSE(tabs.dragScroll({40, 10}));
    EXPECT_EQ(tabs.dragScroll({195, 10}), TabAction::scrollOn);
    tabs.press(CTS_HIT_LAST, 0);
    EXPECT_EQ(tabs.dragScroll({40, 10}), TabAction::scrollBack);
    tabs.setSize(400, 20);
    EXPECT_EQ(tabs.dropPlace({390, 10}, false), 4);
    EXPECT_EQ(tabs.dropPlace({390, 10}, true), 5);
    EXPECT_EQ(tabs.dropMark(2, 5, true), tabs.item(4).m_rect.right - 5);
}

// ---- Random, against the plain reading

class TabMix {
public:
    explicit TabMix(unsigned seed) : m_random(seed) {}

    void play() {
        newSize();
        for (int step = 0; step < 60 && !::testing::Test::HasFailure(); ++step) {
            const bool selects = act();
            comparePlaces();
            if (selects) expectInView();
            expectHits();
        }
    }

private:
    int any(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(std::max(below, 1))); }
    void newSize() {
        m_tabs.setSize(m_plain.length = 60 + any(400), m_plain.height = 8 + any(40));
        m_plain.closeGap();
    }
    // True: the selected tab must now be in view.
    bool act() {
        const int n = m_plain.count();
        switch (any(8)) {
            case 0:
                newSize();
                return false;
            case 1:
                m_tabs.setStyle(m_plain.style = m_random() & 0x7EF);
                m_plain.closeGap();
                return false;
            case 2:
                m_tabs.remove(n ? any(n) : 0);
                readBack();
                return false;
            case 3:
                if (n < 2) return false;
                m_tabs.move(any(n), any(n));
                readBack();
                return m_plain.selected >= 0;
            case 4:
                m_plain.selected = any(n + 1) - 1;
                m_plain.select(m_plain.selected);
                m_tabs.select(m_plain.selected);
                return m_plain.selected >= 0;
            case 5:
            case 6: {
                const int code = -1 - any(4);
                m_tabs.press(code, 0);
                m_tabs.release();
                m_plain.scroll(code);
                return false;
            }
            default: {
                const bool select = any(2) == 0;
                m_tabs.add(std::string(static_cast<std::size_t>(any(12)), 'x').c_str(), any(n + 1), select);
                readBack();
                return select;
            }
        }
    }
    // Order and selection are other tests'; here they are given.
    void readBack() {
        m_plain.tabs.clear();
        for (int i = 0; i < m_tabs.count(); ++i) {
            const int width = m_tabs.item(i).m_strText.GetLength() * 10;
            m_plain.tabs.push_back({width, width ? width + 2 : 0});
        }
        m_plain.selected = m_tabs.selected();
        m_plain.first = m_tabs.firstVisible();
    }
    void comparePlaces() {
        ASSERT_EQ(m_tabs.firstVisible(), m_plain.first);
        int former = m_plain.left();
        for (int i = 0; i < m_tabs.count(); ++i) {
            const TabItem& tab = m_tabs.item(i);
            const auto place = m_plain.place(i);
            ASSERT_EQ(tab.m_bState, place.state) << i;
            ASSERT_EQ(tab.m_rectText, place.text) << i;
            if (place.state == 0) continue;
            ASSERT_EQ(tab.m_rect, place.shape) << i;
            ASSERT_GE(tab.m_rect.left, former) << "left edges never fall";
            former = tab.m_rect.left;
        }
    }
    void expectInView() {
        const TabItem& tab = m_tabs.item(m_tabs.selected());
        EXPECT_EQ(tab.m_bState, kTabOnTop);
        EXPECT_TRUE(tab.m_rect.right <= m_plain.right() || tab.m_rect.left == m_plain.left());
    }
    // Neighbouring buttons lie over each other, and the first tab, by a pixel.
    void expectHits() {
        for (int i = 0; i < m_tabs.count(); ++i)
            if (const CRect place = m_tabs.tipPlace(i); place.Width() > 2) {
                ASSERT_EQ(m_tabs.hitTest(place.CenterPoint()), i);
            }
        for (int i = 0; i < 30; ++i) {
            const CPoint point(any(m_plain.length), any(m_plain.height));
            const int hit = m_tabs.hitTest(point);
            if (hit < 0) continue;
            ASSERT_NE(m_tabs.item(hit).m_bState, kTabHidden);
            ASSERT_TRUE(m_tabs.item(hit).m_rect.PtInRect(point));
            ASSERT_TRUE(point.x >= m_plain.left() && point.x < m_plain.right());
        }
    }

    std::mt19937 m_random;
    Tabs m_tabs{0, 100, 20};
    test::PlainTabs m_plain;
};

TEST(TabStrip, EveryMixIsLaidOutAsReadPlainly) {
    const unsigned seed = test::anySeed();
    for (long round = 0; round < test::rounds("QUOR_TAB_MIXES", 4000) && !HasFailure(); ++round) {
        SCOPED_TRACE("QUOR_SEED=" + std::to_string(seed) + ", round " + std::to_string(round));
        TabMix(seed + static_cast<unsigned>(round)).play();
    }
}

}  // namespace
