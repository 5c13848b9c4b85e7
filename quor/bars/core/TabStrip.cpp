#include "quor/bars/core/TabStrip.h"

#include <algorithm>

namespace quor::bars {

TabStrip::TabStrip(TabMeasure measure) : m_measure(std::move(measure)) {}

// ---- Tabs

int TabStrip::find(unsigned number) const {
    const auto found =
        std::find_if(m_aItems.begin(), m_aItems.end(), [number](const auto& each) { return each->number == number; });
    return found == m_aItems.end() ? -1 : static_cast<int>(found - m_aItems.begin());
}

int TabStrip::insert(int index, std::unique_ptr<TabItem> item, bool select) {
    if (index < 0 || index > count() || !item) return -1;
    item->m_fSelected = 0;
    item->number = ++m_lastNumber;
    m_aItems.insert(m_aItems.begin() + index, std::move(item));
    forgetTabDown();
    if (m_nItemSelected >= index) ++m_nItemSelected;
    if (m_nFirstVisible > index) ++m_nFirstVisible;
    if (select)
        this->select(index);
    else
        recalcLayout(TabAction::closeGap);
    return index;
}

bool TabStrip::remove(int index) {
    if (!has(index)) return false;
    const bool wasSelected = index == m_nItemSelected;
    m_aItems.erase(m_aItems.begin() + index);
    if (m_nItemSelected > index || m_nItemSelected == count()) --m_nItemSelected;
    if (m_nFirstVisible > index) --m_nFirstVisible;
    keepFirstVisible();
    forgetTabDown();
    recalcLayout(TabAction::closeGap);
    if (wasSelected) select(m_nItemSelected);
    return true;
}

void TabStrip::removeAll() {
    m_aItems.clear();
    m_nItemSelected = -1;
    m_nFirstVisible = 0;
    forgetTabDown();
    recalcLayout(TabAction::none);
}

// Tabs took new numbers, and what is held down may be one of them.
void TabStrip::forgetTabDown() {
    if (m_nButtonIDDown >= 0) m_nButtonIDDown = CTS_HIT_NOTHING;
}

void TabStrip::keepFirstVisible() { m_nFirstVisible = std::clamp(m_nFirstVisible, 0, std::max(count() - 1, 0)); }

bool TabStrip::move(int from, int to) {
    if (!has(from) || !has(to)) return false;
    const unsigned chosen = has(m_nItemSelected) ? item(m_nItemSelected).number : 0;
    const auto begin = m_aItems.begin();
    forgetTabDown();
    if (from < to)
        std::rotate(begin + from, begin + from + 1, begin + to + 1);
    else
        std::rotate(begin + to, begin + from, begin + from + 1);
    if (chosen)
        select(find(chosen));
    else
        recalcLayout(TabAction::none);
    return true;
}

// A number that the text ends in is counted on from, without regard to how high it is.
CString TabStrip::copyText(const CString& text) const {
    constexpr int kBracketLength = 3;
    const int length = text.GetLength();
    const bool isNumbered = length >= kBracketLength && text[length - 3] == '(' && text[length - 2] >= '1' &&
                            text[length - 2] <= '9' && text[length - 1] == ')';
    const CString stem = isNumbered ? text.Left(length - kBracketLength) : text + " ";
    CString copy;
    for (int number = 2;; ++number) {
        copy.Format("%s(%d)", stem.GetString(), number);
        const bool taken =
            std::any_of(m_aItems.begin(), m_aItems.end(), [&](const auto& item) { return item->m_strText == copy; });
        if (!taken) return copy;
    }
}

void TabStrip::setText(int index, const CString& text) {
    item(index).m_strText = text;
    item(index).normalWidth = item(index).selectedWidth = -1;
    recalcLayout(TabAction::closeGap);
}

// ---- Selection and highlight

bool TabStrip::select(int index) {
    if (index != -1 && !has(index)) return false;
    for (const auto& each : m_aItems) each->m_fSelected = 0;
    m_nItemSelected = index;
    if (index == -1) {
        recalcLayout(TabAction::none);
        return true;
    }
    item(index).m_fSelected = 1;
    if (index < m_nFirstVisible - 1) m_nFirstVisible = index;
    recalcLayout(TabAction::bringIntoView, index);
    return true;
}

int TabStrip::stepTarget(TabStep step) const {
    const int last = count() - 1;
    if (last < 0) return -1;
    int target = m_nItemSelected;
    switch (step) {
        case TabStep::previous:
            target = target < 0 ? last : target - 1;
            break;
        case TabStep::next:
            ++target;
            break;
        case TabStep::cycleBack:
            target = target <= 0 ? last : target - 1;
            break;
        case TabStep::cycleOn:
            target = target == last ? 0 : target + 1;
            break;
        case TabStep::first:
            target = 0;
            break;
        case TabStep::last:
            target = last;
            break;
    }
    return has(target) && target != m_nItemSelected ? target : -1;
}

bool TabStrip::highlight(int index, bool on) {
    if (!has(index)) return false;
    TabItem& tab = item(index);
    if ((tab.m_fHighlighted != 0) != on) tab.m_fHighlightChanged = 1;
    tab.m_fHighlighted = on;
    return true;
}

void TabStrip::clearHighlights() {
    for (int i = 0; i < count(); ++i) highlight(i, false);
}

int TabStrip::takeHighlightChange() {
    for (int i = 0; i < count(); ++i) {
        if (!item(i).m_fHighlightChanged) continue;
        item(i).m_fHighlightChanged = 0;
        return i;
    }
    return -1;
}

// ---- Mouse

namespace {

// Whether a pixel lies inside: its middle, so that it is never on an edge that two tabs share twice.
bool contains(const std::array<CPoint, 6>& outline, CPoint pixel) {
    const int x = 2 * pixel.x + 1, y = 2 * pixel.y + 1;
    bool inside = false;
    for (std::size_t i = 0; i + 1 < outline.size(); ++i) {
        const int fromX = 2 * outline[i].x, fromY = 2 * outline[i].y;
        const int toX = 2 * outline[i + 1].x, toY = 2 * outline[i + 1].y;
        if ((fromY > y) == (toY > y)) continue;
        const int cross = (x - fromX) * (toY - fromY) - (y - fromY) * (toX - fromX);
        if ((cross < 0) == (toY > fromY)) inside = !inside;
    }
    return inside;
}

constexpr int kScrollCodes[] = {CTS_HIT_FIRST, CTS_HIT_PREVIOUS, CTS_HIT_NEXT, CTS_HIT_LAST};

std::optional<TabAction> actionOf(int code) {
    switch (code) {
        case CTS_HIT_FIRST:
            return TabAction::scrollFirst;
        case CTS_HIT_PREVIOUS:
            return TabAction::scrollBack;
        case CTS_HIT_NEXT:
            return TabAction::scrollOn;
        case CTS_HIT_LAST:
            return TabAction::scrollLast;
        default:
            return std::nullopt;
    }
}

}  // namespace

int TabStrip::hitTest(CPoint point) const {
    for (int code = CTS_HIT_FIRST; code >= CTS_HIT_LIST; --code)
        if (buttonPlace(code).PtInRect(point)) return code;
    if (point.x < left() || point.x >= right()) return CTS_HIT_NOTHING;
    const auto isHit = [&](int i) { return item(i).m_bState != kTabHidden && contains(outline(i), point); };
    if (has(m_nItemSelected) && isHit(m_nItemSelected)) return m_nItemSelected;
    for (int i = std::max(m_nFirstVisible - 1, 0); i < count() && item(i).m_rect.left < right(); ++i)
        if (isHit(i)) return i;
    return CTS_HIT_NOTHING;
}

void TabStrip::press(int code, DWORD now) {
    m_nButtonIDDown = code;
    if (code >= 0 || code == CTS_HIT_NOTHING) return;
    stateOf(code) = kButtonPressed;
    m_dwLastRepeatTime = now;
    recalcLayout(actionOf(code).value_or(TabAction::none));
}

bool TabStrip::repeat(DWORD now) {
    if (now - m_dwLastRepeatTime < kTabRepeatDelay) return false;
    for (const int code : kScrollCodes) {
        if (buttonState(code) != kButtonPressed) continue;
        m_dwLastRepeatTime = now;
        recalcLayout(*actionOf(code));
        return true;
    }
    return false;
}

int TabStrip::release() {
    const int code = std::exchange(m_nButtonIDDown, CTS_HIT_NOTHING);
    for (int& state : m_states)
        if (state == kButtonPressed) state = kButtonShown;
    return code;
}

// ---- Drag

bool TabStrip::canDrag(int index, bool copies) const {
    return has(index) && index == m_nItemSelected && index != count() - 1 &&
           styled(copies ? CTS_DRAGCOPY : CTS_DRAGMOVE);
}

// The tab that shows at x, its left slope included; the count behind the last.
int TabStrip::tabAt(int x) const {
    int found = std::max(m_nFirstVisible - 1, 0);
    for (int i = found; i < count() && item(i).m_rect.left <= x; ++i) found = i;
    return found == count() - 1 && x >= item(found).m_rect.right ? count() : found;
}

int TabStrip::dropPlace(CPoint point, bool copies) const {
    if (count() == 0 || point.y < -m_height || point.y >= 2 * m_height) return CTS_HIT_NOTHING;
    const int x = std::clamp<int>(point.x, left(), std::max(right() - 1, left()));
    if (!copies && has(down()) && item(down()).m_bState != kTabHidden) {
        const CRect& own = item(down()).m_rect;  // both its slopes, which lie over the neighbours'
        if (x >= own.left && x < own.right) return down();
    }
    const int place = tabAt(x);
    return copies ? place : std::min(place, count() - 1);
}

int TabStrip::dropMark(int from, int place, bool copies) const {
    if (!copies && place > from) return item(place).m_rect.right - slope() / 2;
    return place < count() ? item(place).m_rect.left + slope() / 2 : item(count() - 1).m_rect.right - slope() / 2;
}

std::optional<TabAction> TabStrip::dragScroll(CPoint point) const {
    if (point.x < left() + slope() && buttonLeads(CTS_HIT_PREVIOUS)) return TabAction::scrollBack;
    if (point.x >= right() - slope() && buttonLeads(CTS_HIT_NEXT)) return TabAction::scrollOn;
    return std::nullopt;
}

}  // namespace quor::bars
