// The stand-in's attachment and what it answers in the header's place: style, layout, items, mouse.
//
// The caption stays the header's own business. Its default procedure is given everything above the bar and is made to
// believe, by the size of the window, that it is a higher header.
#include "quor/platform/win/FilterBarInternal.h"

#include <unordered_map>
#include <windowsx.h>

namespace quor {

namespace {

// Never destroyed: headers may outlive this module's statics.
std::unordered_map<HWND, std::shared_ptr<FilterBar>>& bars() {
    static auto& table = *new std::unordered_map<HWND, std::shared_ptr<FilterBar>>;
    return table;
}

LRESULT CALLBACK headerProc(HWND header, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<FilterBar> bar = FilterBar::of(header);  // a notification may end the window meanwhile
    if (!bar) return ::DefWindowProcW(header, message, wParam, lParam);
    if (message == WM_NCDESTROY) bars().erase(header);
    return bar->handle(message, wParam, lParam);
}

// A header that could not be asked keeps what it has: two bars would be worse than none.
bool systemLacksFilterBar() {
    static HeaderClassProbe probe(WC_HEADERA);
    return probe.answer() == BarAnswer::none;
}

bool isListView(HWND window) {
    char name[32] = "";
    ::GetClassNameA(window, name, sizeof(name));
    return std::strcmp(name, WC_LISTVIEWA) == 0;
}

// For the time of a call to the header's default procedure, which does not know filters.
class WithoutFilterMask {
public:
    explicit WithoutFilterMask(HDITEMW& item) : m_item(item), m_mask(item.mask) { item.mask &= ~UINT{HDI_FILTER}; }
    ~WithoutFilterMask() { m_item.mask = m_mask; }
    WithoutFilterMask(const WithoutFilterMask&) = delete;
    WithoutFilterMask& operator=(const WithoutFilterMask&) = delete;

private:
    HDITEMW& m_item;
    UINT m_mask;
};

POINT clientPoint(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

}  // namespace

void attachFilterBar(HWND header) {
    if (!header || bars().count(header) || !systemLacksFilterBar()) return;
    const auto former = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(header, GWLP_WNDPROC));
    bars().emplace(header, std::make_shared<FilterBar>(header, former));
    ::SetWindowLongPtrW(header, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&headerProc));
}

void attachFilterBarOfList(HWND list) { attachFilterBar(::FindWindowExA(list, nullptr, WC_HEADERA, nullptr)); }

std::shared_ptr<FilterBar> FilterBar::of(HWND header) {
    const auto found = bars().find(header);
    return found == bars().end() ? nullptr : found->second;
}

FilterBar::FilterBar(HWND window, WNDPROC former)
    : m_header(window), m_former(former), m_on((::GetWindowLongPtrA(window, GWL_STYLE) & HDS_FILTERBAR) != 0) {
    measure();
}

LRESULT FilterBar::header(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::CallWindowProcW(m_former, m_header, message, wParam, lParam);
}

// What the bar does not answer is the header's; the bar then follows what has changed.
LRESULT FilterBar::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const Answer answer = answerAboutItems(message, wParam, lParam)) return *answer;
    if (const Answer answer = answerAboutFilters(message, wParam, lParam)) return *answer;
    if (message == WM_COMMAND && m_edit && reinterpret_cast<HWND>(lParam) == m_edit) {
        if (HIWORD(wParam) == EN_CHANGE) onTyped();
        return 0;
    }
    if (message == WM_DESTROY) {
        m_edit = nullptr;  // it ends as the header's child; what was typed is dropped
        m_editItem = -1;
    }
    if (m_on) {
        if (const Answer answer = answerInBar(message, wParam, lParam)) return *answer;
    }
    const LRESULT result = header(message, wParam, lParam);
    followHeader(message, wParam);
    return result;
}

FilterBar::Answer FilterBar::answerAboutItems(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case HDM_LAYOUT:
            return onLayout(lParam);
        case HDM_INSERTITEMA:
        case HDM_INSERTITEMW:
            return onInsertItem(message, wParam, lParam);
        case HDM_DELETEITEM:
            return onDeleteItem(wParam, lParam);
        case HDM_SETITEMA:
        case HDM_SETITEMW:
            return onSetItem(message, wParam, lParam);
        case HDM_GETITEMA:
        case HDM_GETITEMW:
            return onGetItem(message, wParam, lParam);
        case HDM_GETIMAGELIST:
            if (m_pictures) return m_pictures;
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

FilterBar::Answer FilterBar::answerAboutFilters(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case HDM_CLEARFILTER:
            return clear(static_cast<int>(wParam));
        case HDM_EDITFILTER:
            return openField(static_cast<int>(wParam), LOWORD(lParam) != FALSE);
        case HDM_SETFILTERCHANGETIMEOUT:
            return static_cast<LRESULT>(std::exchange(m_timeout, static_cast<DWORD>(lParam)));
        default:
            return std::nullopt;
    }
}

FilterBar::Answer FilterBar::answerInBar(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            if (wParam) break;
            onPaint();
            return 0;
        case WM_PRINTCLIENT:
            draw(reinterpret_cast<HDC>(wParam));
            return 0;
        case WM_ERASEBKGND:
            return TRUE;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            if (!isInBar(clientPoint(lParam))) break;
            press(clientPoint(lParam));
            return 0;
        case WM_SETCURSOR:
            if (reinterpret_cast<HWND>(wParam) == m_header && setCursor()) return TRUE;
            break;
        case HDM_HITTEST:
            return hitTest(*reinterpret_cast<HDHITTESTINFO*>(lParam));
        default:
            break;
    }
    return std::nullopt;
}

FilterBar::Answer FilterBar::hitTest(HDHITTESTINFO& info) const {
    if (!isInBar(info.pt)) return std::nullopt;
    info.iItem = hit(info.pt, info.flags);
    return info.iItem;
}

void FilterBar::followHeader(UINT message, WPARAM wParam) {
    if (message == WM_STYLECHANGED && wParam == static_cast<WPARAM>(GWL_STYLE)) onStyleChanged();
    if (message == WM_SETFONT) {
        measure();
        if (m_edit) ::SendMessageW(m_edit, WM_SETFONT, reinterpret_cast<WPARAM>(font()), TRUE);
    }
    if (m_edit && message != WM_KILLFOCUS && message != WM_SETFOCUS) placeField();
}

// ---- Size

HFONT FilterBar::font() const {
    const auto own = reinterpret_cast<HFONT>(header(WM_GETFONT));
    return own ? own : static_cast<HFONT>(::GetStockObject(SYSTEM_FONT));
}

void FilterBar::measure() {
    const HDC dc = ::GetDC(nullptr);
    const HGDIOBJ former = ::SelectObject(dc, font());
    TEXTMETRICA text{};
    ::GetTextMetricsA(dc, &text);
    m_lineHeight = text.tmHeight;
    m_metrics = filterBarMetrics(platform::scaled(m_header, platform::kDotsPerInch), m_lineHeight);
    ::SelectObject(dc, former);
    ::ReleaseDC(nullptr, dc);
}

LRESULT FilterBar::onLayout(LPARAM lParam) {
    const LRESULT result = header(HDM_LAYOUT, 0, lParam);
    const bool hidden = (::GetWindowLongPtrA(m_header, GWL_STYLE) & HDS_HIDDEN) != 0;
    if (!result || !m_on || hidden) return result;
    const auto& layout = *reinterpret_cast<HDLAYOUT*>(lParam);
    layout.pwpos->cy += m_metrics.barHeight;
    layout.prc->top += m_metrics.barHeight;
    return result;
}

void FilterBar::onStyleChanged() {
    const bool on = (::GetWindowLongPtrA(m_header, GWL_STYLE) & HDS_FILTERBAR) != 0;
    if (on == m_on) return;
    closeField(false);
    if (!isAlive()) return;
    m_on = on;
    measure();
    layOutParent();
    ::InvalidateRect(m_header, nullptr, TRUE);
}

// A list asks its header for the layout only when its own size changes: it is told of a change to the same size.
void FilterBar::layOutParent() const {
    const HWND parent = ::GetParent(m_header);
    if (!isListView(parent)) return;
    RECT rect;
    ::GetWindowRect(parent, &rect);
    WINDOWPOS place{};
    place.hwnd = parent;
    place.cx = rect.right - rect.left;
    place.cy = rect.bottom - rect.top;
    place.flags = SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE;
    ::SendMessageA(parent, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&place));
}

// ---- Items

FilterRecord& FilterBar::record(int item) {
    const auto index = static_cast<std::size_t>(item);
    if (m_records.size() <= index) m_records.resize(index + 1);
    return m_records[index];
}

LRESULT FilterBar::onInsertItem(UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const item = reinterpret_cast<HDITEMW*>(lParam);
    if (!item) return header(message, wParam, lParam);
    LRESULT index = -1;
    {
        const WithoutFilterMask mask(*item);
        index = header(message, wParam, lParam);
    }
    if (index < 0) return index;
    record(static_cast<int>(index));  // so that the place exists
    const auto place = m_records.insert(m_records.begin() + index, FilterRecord());
    if (item->mask & HDI_FILTER) writeFilter(*place, *item, message == HDM_INSERTITEMW);
    if (m_editItem >= index) ++m_editItem;
    placeField();
    return index;
}

LRESULT FilterBar::onDeleteItem(WPARAM wParam, LPARAM lParam) {
    const auto index = static_cast<int>(wParam);
    if (index == m_editItem) closeField(true);
    if (!header(HDM_DELETEITEM, wParam, lParam)) return FALSE;
    if (static_cast<std::size_t>(index) < m_records.size()) m_records.erase(m_records.begin() + index);
    if (m_editItem > index) --m_editItem;
    placeField();
    return TRUE;
}

LRESULT FilterBar::onSetItem(UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const item = reinterpret_cast<HDITEMW*>(lParam);
    const auto index = static_cast<int>(wParam);
    const bool filter = item && (item->mask & HDI_FILTER);
    LRESULT result = TRUE;
    if (!filter) {
        result = header(message, wParam, lParam);
    } else {
        if (!isItem(index)) return FALSE;
        const WithoutFilterMask mask(*item);
        if (item->mask) result = header(message, wParam, lParam);
        if (result) result = writeFilter(record(index), *item, message == HDM_SETITEMW);
    }
    placeField();
    if (!filter || !result) return result;
    if (index == m_editItem) showRecordInField();
    invalidateBar();
    notifyChange(index);
    return result;
}

LRESULT FilterBar::onGetItem(UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const item = reinterpret_cast<HDITEMW*>(lParam);
    const auto index = static_cast<int>(wParam);
    if (!item || !(item->mask & HDI_FILTER)) return header(message, wParam, lParam);
    if (!isItem(index)) return FALSE;
    const WithoutFilterMask mask(*item);
    if (item->mask && !header(message, wParam, lParam)) return FALSE;
    return readFilter(record(index), *item, message == HDM_GETITEMW);
}

LRESULT FilterBar::clear(int item) {
    if (item == -1) {
        clearAll();
        return TRUE;
    }
    if (!isItem(item)) return FALSE;
    record(item).text.clear();
    if (item == m_editItem) showRecordInField();
    invalidateBar();
    notifyChange(item);
    return TRUE;
}

void FilterBar::clearAll() {
    std::vector<int> cleared;
    for (int item = 0, count = itemCount(); item < count; ++item) {
        if (record(item).text.empty()) continue;
        record(item).text.clear();
        cleared.push_back(item);
    }
    if (m_edit) showRecordInField();
    invalidateBar();
    if (cleared.empty()) cleared.push_back(-1);
    for (const int item : cleared)
        if (isAlive()) notifyChange(item);
}

// ---- Places

int FilterBar::barTop() const {
    RECT client;
    ::GetClientRect(m_header, &client);
    return std::max<int>(0, client.bottom - m_metrics.barHeight);
}

RECT FilterBar::itemRect(int item) const {
    RECT rect{};
    header(HDM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

FilterBarPlaces FilterBar::places(int item) const {
    const RECT rect = itemRect(item);
    return filterBarPlaces(m_metrics, rect.left, rect.right, barTop());
}

bool FilterBar::isInBar(POINT point) const {
    RECT client;
    ::GetClientRect(m_header, &client);
    return ::PtInRect(&client, point) && point.y >= barTop();
}

int FilterBar::hit(POINT point, UINT& flags) const {
    for (int item = 0, count = itemCount(); item < count; ++item) {
        const FilterBarPlaces place = places(item);
        if (point.x < place.field.left || point.x >= place.button.right) continue;
        flags = point.x < place.button.left ? HHT_ONFILTER : HHT_ONFILTERBUTTON;
        return item;
    }
    flags = HHT_NOWHERE;
    return -1;
}

void FilterBar::invalidateBar() const {
    if (!m_on) return;
    RECT bar;
    ::GetClientRect(m_header, &bar);
    bar.top = barTop();
    ::InvalidateRect(m_header, &bar, FALSE);
}

// ---- Mouse

void FilterBar::press(POINT point) {
    UINT flags = 0;
    const int item = hit(point, flags);
    if (item < 0) return;
    if (flags == HHT_ONFILTER)
        openField(item, false);
    else
        pressButton(item);
}

// The answer to the click may come from a pop-up that the owner shows meanwhile.
void FilterBar::pressButton(int item) {
    finishTyping(false);
    if (!isAlive() || !isItem(item)) return;
    NMHDFILTERBTNCLICK click{};
    click.hdr = {m_header, static_cast<UINT_PTR>(::GetDlgCtrlID(m_header)), static_cast<UINT>(HDN_FILTERBTNCLICK)};
    click.iItem = item;
    click.rc = places(item).button;
    m_pressed = item;
    ::RedrawWindow(m_header, &click.rc, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const LRESULT changed =
        ::SendMessageA(::GetParent(m_header), WM_NOTIFY, click.hdr.idFrom, reinterpret_cast<LPARAM>(&click));
    m_pressed = -1;
    if (!isAlive()) return;
    invalidateBar();
    if (changed) notifyChange(item);
}

bool FilterBar::setCursor() const {
    POINT point;
    ::GetCursorPos(&point);
    ::ScreenToClient(m_header, &point);
    if (!isInBar(point)) return false;
    UINT flags = 0;
    hit(point, flags);
    ::SetCursor(::LoadCursorA(nullptr, flags == HHT_ONFILTER ? IDC_IBEAM : IDC_ARROW));
    return true;
}

LRESULT FilterBar::notifyItem(UINT code, int item) const {
    NMHEADERA notification{};
    notification.hdr = {m_header, static_cast<UINT_PTR>(::GetDlgCtrlID(m_header)), code};
    notification.iItem = item;
    return ::SendMessageA(::GetParent(m_header), WM_NOTIFY, notification.hdr.idFrom,
                          reinterpret_cast<LPARAM>(&notification));
}

}  // namespace quor
