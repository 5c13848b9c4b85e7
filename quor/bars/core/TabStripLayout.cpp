// Layout: rectangles from x = 0, then shifted so that the first visible tab stands at the room's left edge.
#include "quor/bars/core/TabStrip.h"

#include <algorithm>

namespace quor::bars {

namespace {

constexpr int kTextMargin = 4;
constexpr int kStripEdge = 3;  // what the strip of buttons has besides its buttons

}  // namespace

void TabStrip::setStyle(DWORD style) {
    m_style = style;
    recalcLayout(TabAction::closeGap);
}

void TabStrip::setSize(int length, int height) {
    m_length = length;
    m_height = height;
    recalcLayout(TabAction::closeGap);
}

void TabStrip::forgetWidths() {
    for (const auto& item : m_aItems) item->normalWidth = item->selectedWidth = -1;
    recalcLayout(TabAction::closeGap);
}

int TabStrip::textWidth(TabItem& item) const {
    int& width = item.m_fSelected ? item.selectedWidth : item.normalWidth;
    if (width < 0) width = item.m_strText.IsEmpty() ? 0 : m_measure(item.m_strText, item.m_fSelected != 0);
    return width;
}

// The right edge of the last tab.
int TabStrip::recalcRectangles() {
    int widest = 0;
    if (styled(CTS_FIXEDWIDTH))
        for (const auto& item : m_aItems) widest = std::max(widest, textWidth(*item));
    const int top = isTop() ? 0 : 1, bottom = top + m_height - 2;
    int x = 0, edge = 0;
    for (const auto& item : m_aItems) {
        const int width = styled(CTS_FIXEDWIDTH) ? widest : textWidth(*item);
        item->m_rect = CRect(x, top, x + width + m_height + kTextMargin, bottom);
        item->m_rectText = CRect(x + slope(), top, x + width + slope() + kTextMargin, bottom);
        edge = item->m_rect.right;
        x = edge - slope();
    }
    return edge;
}

void TabStrip::recalcOffset(int offset) {
    if (styled(CTS_BUTTONSAFTER)) offset = 0;
    const int edge = offset, last = count() - 1;
    for (int i = 0; i <= last; ++i) {
        TabItem& tab = item(i);
        if (i >= m_nFirstVisible) {
            tab.m_bState = tab.m_fSelected || i == last ? kTabOnTop : kTabUnder;
            tab.m_rect.OffsetRect(offset, 0);
            tab.m_rectText.OffsetRect(offset, 0);
            continue;
        }
        offset += slope() - tab.m_rect.Width();
        tab.m_rectText.SetRectEmpty();
        tab.m_bState = kTabHidden;
        if (i < m_nFirstVisible - 1) continue;
        tab.m_bState = tab.m_fSelected ? kTabSelectedSliver : kTabSliver;
        tab.m_rect = CRect(edge, 1, edge + slope(), m_height - 1);
    }
}

void TabStrip::recalculate() {
    recalcRectangles();
    recalcOffset(m_room);
}

int TabStrip::fixedRoom() const {
    return side() * ((styled(CTS_CLOSEBUTTON) ? 1 : 0) + (styled(CTS_LISTBUTTON) ? 1 : 0));
}

void TabStrip::showFixedButtons() {
    const auto show = [this](int code, bool shown) {
        int& state = stateOf(code);
        state = !shown ? kButtonHidden : state ? state : kButtonShown;
    };
    show(CTS_HIT_CLOSE, styled(CTS_CLOSEBUTTON));
    show(CTS_HIT_LIST, styled(CTS_LISTBUTTON));
}

void TabStrip::showScrollButtons(bool shown) {
    for (const int code : {CTS_HIT_FIRST, CTS_HIT_PREVIOUS, CTS_HIT_NEXT, CTS_HIT_LAST}) {
        const bool isOuter = code == CTS_HIT_FIRST || code == CTS_HIT_LAST;
        int& state = stateOf(code);
        state = !shown || (isOuter && !styled(CTS_FOURBUTTONS)) ? kButtonHidden : state ? state : kButtonShown;
    }
    m_room = fixedRoom() + (shown ? scrollButtons() * side() + kStripEdge : 0);
}

void TabStrip::recalcLayout(TabAction action, int index) {
    showFixedButtons();
    const int edge = recalcRectangles();
    if (styled(CTS_AUTOHIDEBUTTONS) && (count() < 2 || edge <= m_length - fixedRoom())) {
        showScrollButtons(false);
        m_nFirstVisible = 0;
        recalcOffset(m_room);
        return;
    }
    showScrollButtons(true);
    if (count() > 0) act(action, index);
}

void TabStrip::act(TabAction action, int index) {
    const int last = count() - 1;
    recalcOffset(m_room);
    switch (action) {
        case TabAction::scrollBack:
            if (m_nFirstVisible == 0) return;
            --m_nFirstVisible;
            return recalculate();
        case TabAction::scrollOn:
            if (item(last).m_rect.right <= right() || m_nFirstVisible >= last) return;
            ++m_nFirstVisible;
            return recalculate();
        case TabAction::bringIntoView:
            return bringIntoView(index);
        case TabAction::scrollFirst:
            m_nFirstVisible = 0;
            return recalculate();
        case TabAction::scrollLast:
            m_nFirstVisible = last;
            recalculate();
            return closeGap();
        case TabAction::closeGap:
            return closeGap();
        case TabAction::placeEditor:
        case TabAction::none:
            return;
    }
}

// Far to the left is select()'s; here the sliver and what stands to the right.
void TabStrip::bringIntoView(int index) {
    if (!has(index)) return;
    const TabItem& tab = item(index);
    if (tab.m_bState == kTabSelectedSliver || tab.m_bState == kTabSliver) {
        --m_nFirstVisible;
        return recalculate();
    }
    while (m_nFirstVisible < index && tab.m_bState == kTabOnTop && tab.m_rect.right > right() &&
           tab.m_rect.left > left()) {
        ++m_nFirstVisible;
        recalculate();
    }
}

void TabStrip::closeGap() {
    const int former = m_nFirstVisible;
    while (m_nFirstVisible >= 0 && item(count() - 1).m_rect.right < right()) {
        --m_nFirstVisible;
        recalculate();
    }
    if (m_nFirstVisible == former) return;
    ++m_nFirstVisible;
    recalculate();
}

// ---- Shapes

std::array<CPoint, 6> TabStrip::outline(int index) const {
    const TabItem& tab = item(index);
    const CRect& whole = tab.m_rect;
    const bool sliver = tab.m_bState == kTabSelectedSliver || tab.m_bState == kTabSliver;
    const bool covered = tab.m_bState == kTabSliver || tab.m_bState == kTabUnder;
    const int wide = isTop() ? whole.top : whole.bottom, narrow = isTop() ? whole.bottom : whole.top;
    const int left = whole.left, right = whole.right;
    return {CPoint(left, wide),
            CPoint(sliver ? left : left + slope(), narrow),
            CPoint(right - slope(), narrow),
            CPoint(right - slope() / 2, (wide + narrow) / 2),
            CPoint(covered ? right - slope() : right, wide),
            CPoint(left, wide)};
}

CRect TabStrip::tipPlace(int index) const {
    const CRect& text = item(index).m_rectText;
    CRect shown(std::max<int>(text.left, left()), text.top, std::min<int>(text.right, right()), text.bottom);
    if (shown.IsRectEmpty()) shown.SetRectEmpty();
    return shown;
}

CRect TabStrip::textPlace(int index) const {
    CRect place = item(index).m_rectText;
    if (place.IsRectEmpty()) return {};
    const int width = item(index).m_fSelected ? item(index).selectedWidth : item(index).normalWidth;
    place.left += (place.Width() - width) / 2;
    place.right = place.left + width;
    return place;
}

bool TabStrip::clipped(int index) const { return textPlace(index).right > right(); }

// ---- Buttons

int TabStrip::buttonState(int code) const {
    return code < 0 && code >= CTS_HIT_LIST ? m_states[static_cast<std::size_t>(-code - 1)] : kButtonHidden;
}

// Close and list stand at the strip's end, the scroll buttons between them and the tabs, always from first to last. At
// the far end all gaps are mirrored.
CRect TabStrip::buttonPlace(int code) const {
    if (buttonState(code) == kButtonHidden) return {};
    const int b = side(), c = fixedRoom(), buttons = scrollButtons();
    const bool after = styled(CTS_BUTTONSAFTER);
    CRect place(0, 0, b + 1, m_height);
    if (code == CTS_HIT_LIST && styled(CTS_CLOSEBUTTON)) place.OffsetRect(b, 0);
    if (code >= CTS_HIT_LAST) {
        const int fromLeft = buttons == 4 ? CTS_HIT_FIRST - code : CTS_HIT_PREVIOUS - code;
        const int edgesOfFour[] = {0, b + 1, 2 * b + 1, 3 * b + 2, 4 * b + kStripEdge};
        const int edgesOfTwo[] = {0, b + 1, 2 * b + kStripEdge};
        const int* const edge = (buttons == 4 ? edgesOfFour : edgesOfTwo) + (after ? buttons - 1 - fromLeft : fromLeft);
        place = CRect(c + edge[0], 0, c + edge[1], m_height);
    }
    return after ? CRect(m_length - place.right, 0, m_length - place.left, m_height) : place;
}

bool TabStrip::buttonLeads(int code) const {
    switch (code) {
        case CTS_HIT_FIRST:
        case CTS_HIT_PREVIOUS:
            return m_nFirstVisible > 0;
        case CTS_HIT_NEXT:
        case CTS_HIT_LAST:
            return count() > 0 && m_nFirstVisible < count() - 1 && item(count() - 1).m_rect.right > right();
        case CTS_HIT_CLOSE:
            return m_nItemSelected >= 0;
        default:
            return count() > 0;
    }
}

}  // namespace quor::bars
