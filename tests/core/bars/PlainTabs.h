// The layout of a tab strip read plainly: sums of widths, and a search for the first tab. Shares nothing with the
// library's; tests and the benchmark compare every tab with it.
#pragma once

#include "quor/bars/core/TabStyles.h"

#include <vector>

namespace test {

struct PlainTabs {
    struct Tab {
        int width = 0;
        int selectedWidth = 0;
    };
    struct Place {
        int state = 0;
        CRect shape, text;  // empty where hidden, or without a text
    };

    std::vector<Tab> tabs;
    DWORD style = 0;
    int length = 0, height = 0, selected = -1, first = 0;

    bool has(DWORD bit) const { return (style & bit) != 0; }
    int count() const { return static_cast<int>(tabs.size()); }
    int side() const { return height - 3; }

    int ownWidth(int index) const {
        const Tab& tab = tabs[static_cast<std::size_t>(index)];
        return index == selected ? tab.selectedWidth : tab.width;
    }
    int textWidth(int index) const {
        if (!has(CTS_FIXEDWIDTH)) return ownWidth(index);
        int widest = 0;
        for (int i = 0; i < count(); ++i) widest = std::max(widest, ownWidth(i));
        return widest;
    }
    // Left edge of a tab in a strip that nothing is scrolled out of.
    int start(int index) const {
        int x = 0;
        if (has(CTS_FIXEDWIDTH)) return index * (textWidth(0) + height + 4 - height / 2);
        for (int i = 0; i < index; ++i) x += textWidth(i) + height + 4 - height / 2;
        return x;
    }
    int end(int index) const { return start(index) + textWidth(index) + height + 4; }

    int fixedRoom() const { return side() * (has(CTS_CLOSEBUTTON) + has(CTS_LISTBUTTON)); }
    bool allFit() const {
        return has(CTS_AUTOHIDEBUTTONS) && (count() < 2 || end(count() - 1) <= length - fixedRoom());
    }
    int room() const {
        const int buttons = (has(CTS_FOURBUTTONS) ? 4 : 2) + has(CTS_CLOSEBUTTON) + has(CTS_LISTBUTTON);
        return allFit() ? fixedRoom() : buttons * side() + 3;
    }
    int left() const { return has(CTS_BUTTONSAFTER) ? 0 : room(); }
    int right() const { return length - (has(CTS_BUTTONSAFTER) ? room() : 0); }
    int shift() const { return left() - (first > 0 ? start(first) : 0); }
    int lastEnd(int firstTab) const { return end(count() - 1) + left() - (firstTab > 0 ? start(firstTab) : 0); }

    Place place(int index) const {
        if (index < first - 1) return {};
        const bool onTop = index == selected;
        const int top = has(CTS_TOP) ? 0 : 1, x = start(index) + shift();
        if (index == first - 1) return {onTop ? 1 : 2, CRect(left(), 1, left() + height / 2, height - 1), CRect()};
        const int wide = textWidth(index);
        return {onTop || index == count() - 1 ? 3 : 4, CRect(x, top, x + wide + height + 4, top + height - 2),
                CRect(x + height / 2, top, x + wide + height / 2 + 4, top + height - 2)};
    }

    // ---- What moves the first tab.
    void settle() {
        if (allFit() || count() == 0) first = 0;
    }
    void closeGap() {
        settle();
        if (allFit() || count() == 0 || lastEnd(first) >= right()) return;
        while (first > 0 && lastEnd(first - 1) < right()) --first;
    }
    void scroll(int code) {
        settle();
        if (allFit() || count() == 0) return;
        if (code == CTS_HIT_FIRST) first = 0;
        if (code == CTS_HIT_PREVIOUS && first > 0) --first;
        if (code == CTS_HIT_NEXT && first < count() - 1 && lastEnd(first) > right()) ++first;
        if (code == CTS_HIT_LAST) {
            first = count() - 1;
            closeGap();
        }
    }
    void select(int index) {
        selected = index;
        settle();
        if (allFit() || index < 0) return;
        if (index < first) first = index;
        while (first < index && end(index) + shift() > right() && start(index) + shift() > left()) ++first;
    }
};

}  // namespace test
