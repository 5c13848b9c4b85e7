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
    std::string buttons() const {
        std::string all;
        for (int code = CTS_HIT_FIRST; code >= CTS_HIT_LIST; --code) {
            const CRect place = buttonPlace(code);
            if (buttonState(code))
                all +=
                    std::to_string(code) + ":" + std::to_string(place.left) + "-" + std::to_string(place.right) + " ";
        }
        return all;
    }
};

TEST(TabStrip, ButtonsTakeTheirRoom) {
    const struct {
        DWORD style;
        const char* buttons;  // 17 wide
    } cases[] = {
        {0, "-2:0-18 -3:18-37 "},
        {CTS_FOURBUTTONS, "-1:0-18 -2:18-35 -3:35-53 -4:53-71 "},
        {CTS_CLOSEBUTTON | CTS_LISTBUTTON, "-2:34-52 -3:52-71 -5:0-18 -7:17-35 "},
        {CTS_BUTTONSAFTER, "-2:263-282 -3:282-300 "},
        {CTS_BUTTONSAFTER | CTS_FOURBUTTONS | CTS_CLOSEBUTTON,
         "-1:212-230 -2:230-248 -3:248-265 -4:265-283 -5:282-300 "},
        {CTS_AUTOHIDEBUTTONS | CTS_FOURBUTTONS, ""},
        {CTS_AUTOHIDEBUTTONS | CTS_LISTBUTTON, "-7:0-18 "},
    };
    for (const auto& each : cases) EXPECT_EQ(Tabs(each.style).fill("22").buttons(), each.buttons) << each.style;
    EXPECT_EQ(Tabs(CTS_AUTOHIDEBUTTONS, 30).fill("9").buttons(), "") << "one tab needs none, however long it is";
}

TEST(TabStrip, AHeldButtonRepeatsAfterAQuarterOfASecond) {
    Tabs tabs(0, 100);
    tabs.fill("33333");
    constexpr DWORD kStart = 0xFFFFFFF0;  // the system's count starts again every 49 days
    tabs.press(CTS_HIT_NEXT, kStart);
    EXPECT_EQ(tabs.firstVisible(), 1);
    EXPECT_FALSE(tabs.repeat(kStart + 5)) << "the clock goes round behind it";
    EXPECT_FALSE(tabs.repeat(kStart + 249));
    EXPECT_TRUE(tabs.repeat(kStart + 250));
    EXPECT_FALSE(tabs.repeat(kStart + 499));
    EXPECT_TRUE(tabs.repeat(kStart + 500));
    EXPECT_EQ(tabs.firstVisible(), 3);
    tabs.release();
    EXPECT_FALSE(tabs.repeat(kStart + 5000));
}

TEST(TabStrip, TextsAreCutAtTheRoom) {
    const struct {
        DWORD style;
        int length;
        CRect place;  // of the third text, which has 30 pixels; it is cut from length - 37 on
        bool clipped;
    } cases[] = {
        {0, 169, {98, 1, 132, 19}, false},
        {0, 167, {98, 1, 130, 19}, false},
        {0, 166, {98, 1, 129, 19}, true},
        {0, 135, {}, true},
        {CTS_FIXEDWIDTH, 325, {218, 1, 288, 19}, false},  // in the middle of 94
        {CTS_FIXEDWIDTH, 316, {218, 1, 279, 19}, true},
    };
    for (const auto& each : cases) {
        Tabs tabs(CTS_BUTTONSAFTER | each.style, each.length);
        tabs.fill(each.style ? "393" : "333");
        EXPECT_EQ(tabs.tipPlace(2), each.place) << each.length;
        EXPECT_EQ(tabs.clipped(2), each.clipped) << each.length;
    }
}

TEST(TabStrip, CopiesGetTextsOfTheirOwn) {
    const struct {
        const char *texts, *text, *copy;
    } cases[] = {
        {"Watch", "Watch", "Watch (2)"},           {"Watch|Watch (2)", "Watch (2)", "Watch (3)"},
        {"Watch(2)", "Watch(2)", "Watch(3)"},      {"Watch(5)", "Watch(5)", "Watch(2)"},
        {"Watch(0)", "Watch(0)", "Watch(0) (2)"},  {"Watch(12)", "Watch(12)", "Watch(12) (2)"},
        {"WATCH (2)|Watch", "Watch", "Watch (2)"}, {"(3)", "(3)", "(2)"},
    };
    for (const auto& each : cases) {
        Tabs tabs;
        int at = 0;
        for (CString all(each.texts), text; !(text = all.Tokenize("|", at)).IsEmpty();) tabs.add(text);
        EXPECT_STREQ(tabs.copyText(each.text), each.copy) << each.text;
    }
}

TEST(TabStrip, BadIndexesChangeNothing) {
    Tabs tabs;
    tabs.fill("123");
    EXPECT_EQ(tabs.add("n", 4), -1);
    EXPECT_FALSE(tabs.move(1, 3) || tabs.move(-1, 0) || tabs.remove(3) || tabs.select(3) || tabs.highlight(-1, true));
    EXPECT_EQ(tabs.count(), 3);
    const unsigned number = tabs.item(0).number;
    tabs.removeAll();
    tabs.add("n");
    EXPECT_EQ(tabs.find(number), -1) << "another tab, wherever it stands";
}

TEST(TabStrip, KeysStep) {
    const struct {
        TabStep step;
        int fromNone, fromFirst, fromLast;
    } cases[] = {
        {TabStep::previous, 2, -1, 1}, {TabStep::next, 0, 1, -1},     {TabStep::first, 0, -1, 0},
        {TabStep::last, 2, 2, -1},     {TabStep::cycleBack, 2, 2, 1}, {TabStep::cycleOn, 0, 1, 0},
    };
    Tabs tabs;
    tabs.fill("123");
    const auto target = [&](int from, TabStep step) {
        tabs.select(from);
        return tabs.stepTarget(step);
    };
    for (const auto& [step, fromNone, fromFirst, fromLast] : cases) {
        EXPECT_EQ(target(-1, step), fromNone) << static_cast<int>(step);
        EXPECT_EQ(target(0, step), fromFirst) << static_cast<int>(step);
        EXPECT_EQ(target(2, step), fromLast) << static_cast<int>(step);
    }
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
    tabs.press(2, 0);              // from 125 to 181
    const struct {
        CPoint point;
        int move, copy, mark;  // the mark of a move of tab 2
    } cases[] = {
        {{0, 10}, 0, 0, 42},    {{60, 10}, 0, 0, 42},   {{90, -20}, 1, 1, 86},  {{124, 10}, 1, 1, 86},
        {{125, 10}, 2, 2, 130}, {{180, 10}, 2, 3, 130}, {{181, 10}, 3, 3, 220}, {{199, 39}, 3, 3, 220},
        {{90, -21}, -6, -6, 0}, {{90, 40}, -6, -6, 0},
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
            if (selects && m_plain.selected >= 0) expectInView();
            for (int i = 0; i < 30; ++i) expectHit({any(m_plain.length), any(m_plain.height)});
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
                if (n > 0) remove(any(n));
                return false;
            case 3:
                if (n > 0) move(any(n), any(n));
                return true;
            case 4:
                m_plain.select(any(n + 1) - 1);
                m_tabs.select(m_plain.selected);
                return true;
            case 5:
            case 6: {
                const int code = -1 - any(4);
                m_tabs.press(code, 0);
                m_tabs.release();
                m_plain.scroll(code);
                return false;
            }
            default:
                return insert(any(n + 1), any(12), any(2) == 0);
        }
    }
    bool insert(int index, int letters, bool select) {
        m_tabs.add(std::string(static_cast<std::size_t>(letters), 'x').c_str(), index, select);
        m_plain.tabs.insert(m_plain.tabs.begin() + index, {letters * 10, letters ? letters * 10 + 2 : 0});
        m_plain.selected += m_plain.selected >= index;
        m_plain.first += m_plain.first > index;
        select ? m_plain.select(index) : m_plain.closeGap();
        return select;
    }
    void remove(int index) {
        m_tabs.remove(index);
        m_plain.tabs.erase(m_plain.tabs.begin() + index);
        const bool wasSelected = index == m_plain.selected;
        m_plain.selected = wasSelected ? -1 : m_plain.selected - (m_plain.selected > index);
        m_plain.first -= m_plain.first > index || m_plain.first == m_plain.count();
        m_plain.closeGap();
        if (wasSelected) m_plain.select(std::min(index, m_plain.count() - 1));
    }
    void move(int from, int to) {
        m_tabs.move(from, to);
        const test::PlainTabs::Tab moved = m_plain.tabs[static_cast<std::size_t>(from)];
        m_plain.tabs.erase(m_plain.tabs.begin() + from);
        m_plain.tabs.insert(m_plain.tabs.begin() + to, moved);
        int& selected = m_plain.selected;
        selected = selected == from
                       ? to
                       : selected + (selected >= to && selected < from) - (selected > from && selected <= to);
        m_plain.select(selected);
    }
    void comparePlaces() {
        ASSERT_EQ(m_tabs.firstVisible(), m_plain.first);
        ASSERT_EQ(m_tabs.selected(), m_plain.selected);
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
    // Whether a trapezoid, wider by so much on both sides, has the middle of this pixel.
    bool inside(int index, CPoint pixel, int wider) const {
        const auto [state, shape, text] = m_plain.place(index);
        if (state == 0 || pixel.y < shape.top || pixel.y >= shape.bottom) return false;
        const int rows = m_plain.has(CTS_TOP) ? pixel.y - shape.top : shape.bottom - 1 - pixel.y;
        const double slope = (rows + 0.5) / shape.Height() * (m_plain.height / 2), x = pixel.x + 0.5;
        return x > shape.left + (state < 3 ? 0 : slope) - wider && x < shape.right - slope + wider;
    }
    int topmost(CPoint pixel, int wider) const {
        if (pixel.x < m_plain.left() || pixel.x >= m_plain.right()) return CTS_HIT_NOTHING;
        if (m_plain.selected >= 0 && inside(m_plain.selected, pixel, wider)) return m_plain.selected;
        int i = m_plain.count() - 1;
        while (i >= 0 && !inside(i, pixel, wider)) --i;
        return i < 0 ? CTS_HIT_NOTHING : i;
    }
    // At the edges themselves it is the outlines that count.
    void expectHit(CPoint pixel) {
        const int hit = m_tabs.hitTest(pixel), sure = topmost(pixel, -2);
        const bool isButton = hit < 0 && hit != CTS_HIT_NOTHING;
        if (isButton || sure != topmost(pixel, 2)) return;
        ASSERT_EQ(hit, sure) << pixel.x << ", " << pixel.y;
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
