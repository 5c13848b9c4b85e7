// The tab control without its window: tabs, selection, layout, what a point hits, scrolling, where a drag lands.
//
// All lengths are pixels in strip coordinates: x along the strip, y across it. A vertical control swaps both, and
// nobody here knows. Every operation that changes something lays the strip out by itself, in time linear in the tabs;
// texts are measured once per font (TabMeasure) and then remembered.
//
// Tabs are trapezoids with slopes half as wide as the strip is high; neighbours overlap by one slope, and each lies
// under its right neighbour, the selected one on top of both. Of the tabs that are scrolled out, the last shows its
// right slope (a sliver).
#pragma once

#include "quor/bars/core/TabStyles.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quor::bars {

// TabItem::m_bState.
inline constexpr BYTE kTabHidden = 0;
inline constexpr BYTE kTabSelectedSliver = 1;
inline constexpr BYTE kTabSliver = 2;
inline constexpr BYTE kTabOnTop = 3;  // shown whole: the selected or the last
inline constexpr BYTE kTabUnder = 4;  // shown, its right slope partly under the neighbour

// The states of a button.
inline constexpr int kButtonHidden = 0;
inline constexpr int kButtonShown = 1;
inline constexpr int kButtonPressed = 3;

inline constexpr DWORD kTabRepeatDelay = 250;  // milliseconds between two steps of a scroll button that is held

// One tab; a shell may add its own by deriving.
struct TabItem {
    virtual ~TabItem() = default;

    CString m_strText;
    LPARAM m_lParam = 0;
    CRect m_rect;      // its whole shape; of a hidden one it says nothing
    CRect m_rectText;  // empty for hidden ones and slivers
    BYTE m_bState = kTabHidden;
    int m_fSelected = 0;
    int m_fHighlighted = 0;
    int m_fHighlightChanged = 0;  // and nobody was told yet

    unsigned number = 0;   // its own: another tab never gets it, though it may stand at the same address
    CString tip;           // the host's; empty: the text, where it is clipped
    int normalWidth = -1;  // of the text in either font; -1: not measured
    int selectedWidth = -1;
};

// The width of a text in the font of selected tabs, or of the others.
using TabMeasure = std::function<int(const CString& text, bool selected)>;

// What a layout does besides laying out.
enum class TabAction {
    scrollBack = 0,
    scrollOn = 1,
    bringIntoView = 2,  // the tab that is named: the selected one
    scrollFirst = 4,
    scrollLast = 5,
    placeEditor = 6,
    none = 7,
    closeGap = 8,  // pulls tabs back into blank space at the end
};

enum class TabStep { previous, next, first, last, cycleBack, cycleOn };

class TabStrip {
public:
    explicit TabStrip(TabMeasure measure);

    // ---- Tabs. Indexes run from 0; -1 is none. A bad index changes nothing and gets false or -1.
    int count() const { return static_cast<int>(m_aItems.size()); }
    bool has(int index) const { return index >= 0 && index < count(); }
    TabItem& item(int index) { return *m_aItems[static_cast<std::size_t>(index)]; }
    const TabItem& item(int index) const { return *m_aItems[static_cast<std::size_t>(index)]; }
    // By its number; -1 if it is gone.
    int find(unsigned number) const;
    // At `index`, up to the count; its index. The tab that showed first goes on to, where there are tabs before it.
    int insert(int index, std::unique_ptr<TabItem> item, bool select);
    // The neighbour behind takes over the selection, else the one before.
    bool remove(int index);
    void removeAll();
    bool move(int from, int to);
    // A text for a copy that no tab has: "Watch (2)" for "Watch", "Watch(3)" for "Watch(2)".
    CString copyText(const CString& text) const;
    // Its width is no longer known.
    void setText(int index, const CString& text);

    int selected() const { return m_nItemSelected; }
    // Brings it into view; -1 selects none.
    bool select(int index);
    // The tab that a key chooses; -1 where it leads nowhere.
    int stepTarget(TabStep step) const;

    bool highlight(int index, bool on);
    void clearHighlights();
    // The next tab whose highlight changed since it was last given; -1: no more.
    int takeHighlightChange();

    // ---- Layout.
    void setStyle(DWORD style);
    void setSize(int length, int height);
    // The fonts changed.
    void forgetWidths();
    void recalcLayout(TabAction action, int index = -1);

    int height() const { return m_height; }
    int slope() const { return m_height / 2; }
    int firstVisible() const { return m_nFirstVisible; }
    bool styled(DWORD style) const { return (m_style & style) != 0; }
    bool isTop() const { return styled(CTS_TOP); }
    // What the buttons leave for the tabs: drawn and hit are only points from `left` to before `right`.
    int left() const { return styled(CTS_BUTTONSAFTER) ? 0 : m_room; }
    int right() const { return m_length - (styled(CTS_BUTTONSAFTER) ? m_room : 0); }
    // Six points around a tab as far as it is not covered: from its wide edge up the left slope, along the narrow edge,
    // down half of the right slope, then to the wide edge; the last closes the outline. A sliver starts upright.
    std::array<CPoint, 6> outline(int index) const;
    // A tab's text rectangle as far as the buttons let it show; empty if nothing shows.
    CRect tipPlace(int index) const;
    // Where its letters stand, shown or not: a tab of fixed width has them in its middle. Empty for a sliver.
    CRect textPlace(int index) const;
    // Whether some of them are cut at the room.
    bool clipped(int index) const;

    // ---- Buttons, by hit code.
    int buttonState(int code) const;
    CRect buttonPlace(int code) const;  // empty while it is hidden
    // Whether a scroll button has somewhere to go; true for the others.
    bool buttonLeads(int code) const;

    // ---- Mouse. Times are ticks of the system, in milliseconds.
    int hitTest(CPoint point) const;
    // Notes what went down, and does a scroll button's first step.
    void press(int code, DWORD now);
    // The next step of a scroll button that is held, if it is time. True: something may have moved.
    bool repeat(DWORD now);
    // What was down; a pressed button comes up.
    int release();
    // A tab that is held down is forgotten when tabs come, go or move.
    int down() const { return m_nButtonIDDown; }

    // Whether a press on this tab may become a drag: the selected one, and not the last.
    bool canDrag(int index, bool copies) const;
    // Where the tab that is dragged would land: its new index, that of the copy, or CTS_HIT_NOTHING far from the strip.
    // Over itself it stays.
    int dropPlace(CPoint point, bool copies) const;
    // x of the edge where it would land.
    int dropMark(int from, int place, bool copies) const;
    // The way to scroll for a drag at an end of the strip.
    std::optional<TabAction> dragScroll(CPoint point) const;

private:
    int side() const { return m_height > 3 ? m_height - 3 : 0; }
    // Of the close and the list button, which no scrolling needs.
    int fixedRoom() const;
    int scrollButtons() const { return styled(CTS_FOURBUTTONS) ? 4 : 2; }
    int textWidth(TabItem& item) const;
    int recalcRectangles();
    void recalcOffset(int offset);
    void recalculate();
    void showFixedButtons();
    void showScrollButtons(bool show);
    void act(TabAction action, int index);
    void bringIntoView(int index);
    void closeGap();
    void keepFirstVisible();
    void forgetTabDown();
    int& stateOf(int code) { return m_states[static_cast<std::size_t>(-code - 1)]; }
    int tabAt(int x) const;

    TabMeasure m_measure;
    std::vector<std::unique_ptr<TabItem>> m_aItems;
    DWORD m_style = 0;
    int m_length = 0;
    int m_height = 0;
    int m_room = 0;  // the buttons'
    int m_nItemSelected = -1;
    int m_nFirstVisible = 0;
    unsigned m_lastNumber = 0;
    std::array<int, 7> m_states{};  // by hit code; the one of "nothing" stays hidden
    int m_nButtonIDDown = CTS_HIT_NOTHING;
    DWORD m_dwLastRepeatTime = 0;
};

}  // namespace quor::bars
