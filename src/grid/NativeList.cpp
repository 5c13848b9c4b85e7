#include "src/grid/NativeList.h"

namespace quor::grid {

namespace {

constexpr LPARAM kKeepPixelsAndScroll = LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL;

// Messages during which the count is nobody's business: the pointer moves over the window, the control comes or goes,
// or the header paints itself.
bool isBlindToCount(UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr WPARAM anyButton = MK_LBUTTON | MK_RBUTTON | MK_MBUTTON;
    switch (message) {
        case WM_NCHITTEST:
        case WM_SETCURSOR:
        case WM_NCMOUSEMOVE:
        case WM_NCCREATE:
        case WM_CREATE:
        case WM_DESTROY:
            return true;
        case WM_MOUSEMOVE:
            return (wParam & anyButton) == 0;
        case WM_NOTIFY:
            return reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(NM_CUSTOMDRAW);
        default:
            return false;
    }
}

bool leavesLayoutAlone(UINT message) {
    switch (message) {
        case WM_PAINT:
        case WM_NCPAINT:
        case WM_ERASEBKGND:
        case WM_MOUSEMOVE:
            return true;
        default:
            return false;
    }
}

// For its life the control draws no scroll bar; then its frame is drawn with the next paint. Under Wine a visible
// control that hears a row count draws the bar at once, more than once, and longer than a filter of 100,000 rows takes.
//
// What hides the control from itself here (the default handling of WM_SETREDRAW, which the control's own does not see)
// also takes what was to be painted off it and its children: they get it back.
class UndrawnScrollBar {
public:
    explicit UndrawnScrollBar(HWND list) {
        if (!(::GetWindowLongPtrA(list, GWL_STYLE) & WS_VISIBLE)) return;
        m_list = list;
        remember(list);
        ::EnumChildWindows(
            list, [](HWND child, LPARAM self) { return reinterpret_cast<UndrawnScrollBar*>(self)->remember(child); },
            reinterpret_cast<LPARAM>(this));
        ::DefWindowProcA(list, WM_SETREDRAW, FALSE, 0);
    }
    ~UndrawnScrollBar() {
        if (!m_list) return;
        ::DefWindowProcA(m_list, WM_SETREDRAW, TRUE, 0);
        for (const ToPaint& part : m_toPaint) {
            ::InvalidateRgn(part.window, part.region, TRUE);
            ::DeleteObject(part.region);
        }
        invalidateFrame();
    }
    UndrawnScrollBar(const UndrawnScrollBar&) = delete;
    UndrawnScrollBar& operator=(const UndrawnScrollBar&) = delete;

private:
    struct ToPaint {
        HWND window;
        HRGN region;
    };

    BOOL remember(HWND window) {
        const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
        if (::GetUpdateRgn(window, region, FALSE) > NULLREGION) {
            m_toPaint.push_back({window, region});
        } else {
            ::DeleteObject(region);
        }
        return TRUE;
    }

    void invalidateFrame() const {
        RECT window{}, client{};
        ::GetWindowRect(m_list, &window);
        ::MapWindowPoints(nullptr, m_list, reinterpret_cast<POINT*>(&window), 2);
        ::GetClientRect(m_list, &client);
        const HRGN frame = ::CreateRectRgnIndirect(&window), inside = ::CreateRectRgnIndirect(&client);
        if (::CombineRgn(frame, frame, inside, RGN_DIFF) > NULLREGION)
            ::RedrawWindow(m_list, nullptr, frame, RDW_INVALIDATE | RDW_FRAME | RDW_NOCHILDREN);
        ::DeleteObject(inside);
        ::DeleteObject(frame);
    }

    HWND m_list = nullptr;
    std::vector<ToPaint> m_toPaint;
};

}  // namespace

bool NativeList::changesCount(UINT message) {
    switch (message) {
        case LVM_SETITEMCOUNT:
        case LVM_INSERTITEMA:
        case LVM_INSERTITEMW:
        case LVM_DELETEITEM:
        case LVM_DELETEALLITEMS:
            return true;
        default:
            return false;
    }
}

LRESULT NativeList::send(UINT message, INT_PTR wParam, LPARAM lParam) {
    return m_list.m_hWnd ? m_list.DefWindowProc(message, static_cast<WPARAM>(wParam), lParam) : 0;
}

void NativeList::beforeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    m_settleTicks();
    if (message == WM_NCDESTROY) return forgetWindow();
    if (!m_measuring) m_labels.clear();
    if (message == WM_PAINT) m_visibilityIsStale = true;  // a window that paints may have been hidden before
    if (isBlindToCount(message, wParam, lParam)) return;
    if (!leavesLayoutAlone(message)) m_layoutIsStale = true;
    if (message == WM_SETREDRAW) m_redrawIsOff = wParam == 0;
    settle();
}

void NativeList::forgetWindow() {
    m_told = m_wanted = m_lowest = 0;
    m_dirty.fold(m_layout);
    m_layout = {};
    m_layoutIsStale = true;
    m_redrawIsOff = false;
}

void NativeList::setCount(int count) {
    m_wanted = count;
    m_lowest = std::min(m_lowest, count);
    m_dirty.fold(m_layout);
    m_layout.countFellTo(count);
    if (m_layout.rowHeight == 0) m_layoutIsStale = true;  // read while there was no row to measure
}

void NativeList::settle() {
    m_settleTicks();
    if (m_settling || (m_told == m_wanted && m_lowest == m_wanted) || !m_list.m_hWnd) return;
    m_settling = true;
    if (m_lowest < m_wanted && m_lowest < m_told && lowestMatters()) {
        const bool redrawWasOff = m_redrawIsOff;
        if (!redrawWasOff) setRedraw(false);
        tellCount(m_lowest);
        tellCount(m_wanted);
        if (!redrawWasOff) setRedraw(true);
    } else if (m_told != m_wanted) {
        tellCount(m_wanted);
    }
    m_lowest = m_wanted;
    m_settling = false;
}

bool NativeList::lowestMatters() {
    if (nextItem(m_lowest - 1, LVNI_SELECTED) != -1 || nextItem(-1, LVNI_FOCUSED) >= m_lowest) return true;
    const int top = static_cast<int>(send(LVM_GETTOPINDEX));
    return top > 0 && top + static_cast<int>(send(LVM_GETCOUNTPERPAGE)) > m_lowest;
}

void NativeList::tellCount(int count) {
    const UndrawnScrollBar undrawn(m_list.m_hWnd);
    send(LVM_SETITEMCOUNT, count, kKeepPixelsAndScroll);
    m_told = count;
    m_layoutIsStale = true;
}

void NativeList::readLayout() {
    settle();
    m_dirty.fold(m_layout);
    m_layoutIsStale = false;
    readVisibility();
    if (!m_list.m_hWnd) {
        m_layout = {};
        return;
    }
    RECT client{};
    ::GetClientRect(m_list.m_hWnd, &client);
    m_layout.clientWidth = client.right;
    m_layout.clientHeight = client.bottom;
    m_layout.topIndex = static_cast<int>(send(LVM_GETTOPINDEX));
    m_layout.countPerPage = static_cast<int>(send(LVM_GETCOUNTPERPAGE));
    RECT top{.left = LVIR_BOUNDS, .top = 0, .right = 0, .bottom = 0};
    if (!send(LVM_GETITEMRECT, m_layout.topIndex, reinterpret_cast<LPARAM>(&top))) {
        m_layout.rowHeight = 0;
        return;
    }
    m_layout.rowHeight = top.bottom - top.top;
    m_layout.headerHeight = top.top;
    m_layout.horizontalScroll = -top.left;
    m_layout.totalWidth = top.right - top.left;
}

void NativeList::readVisibility() {
    m_visibilityIsStale = false;
    m_layout.visible = ::IsWindowVisible(m_list.m_hWnd) != FALSE;
}

// The control walks row by row to the next selected one: not behind the last, and not at all when none is selected.
void NativeList::collectSelected(std::vector<int>& rows) {
    rows.clear();
    const auto count = static_cast<std::size_t>(send(LVM_GETSELECTEDCOUNT));
    for (int visual = -1; rows.size() < count;) {
        visual = nextItem(visual, LVNI_SELECTED);
        if (visual == -1) break;
        rows.push_back(visual);
    }
}

void NativeList::clearSelection(const std::vector<int>& selected) {
    for (const int visual : selected) setState(visual, 0, LVIS_SELECTED | LVIS_FOCUSED);
    const int focused = nextItem(-1, LVNI_FOCUSED);
    if (focused != -1) setState(focused, 0, LVIS_FOCUSED);
}

void NativeList::setState(int visual, UINT state, UINT mask) {
    LVITEMA item{};
    item.state = state;
    item.stateMask = mask;
    send(LVM_SETITEMSTATE, visual, reinterpret_cast<LPARAM>(&item));
}

UINT NativeList::itemState(int visual, UINT mask) {
    LVITEMA item{};
    item.mask = LVIF_IMAGE | LVIF_STATE;
    item.iItem = visual;
    item.stateMask = mask;
    return send(LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)) ? item.state : 0;
}

void NativeList::insertRow(int visual) {
    settle();
    char noText[] = "";
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = visual;
    item.pszText = noText;
    send(LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    m_layoutIsStale = true;
    takeCountFromControl();
}

void NativeList::ensureVisible(int visual) {
    settle();
    forgetLayout();
    send(LVM_ENSUREVISIBLE, visual);
}

void NativeList::deleteAllRows() {
    forgetLayout();
    send(LVM_DELETEALLITEMS);
    takeCountFromControl();
}

bool NativeList::labelRect(int visual, int place, RECT& rect) {
    const auto index = static_cast<std::size_t>(place);
    const int rowTop = layout().rowRect(visual).top;
    if (place < 0) return false;
    if (index >= m_labels.size()) m_labels.resize(index + 1, RECT{0, 0, 0, -1});
    RECT& label = m_labels[index];
    if (label.bottom < label.top) {
        rect = {.left = LVIR_LABEL, .top = place, .right = 0, .bottom = 0};
        m_measuring = true;
        const bool found = send(LVM_GETSUBITEMRECT, visual, reinterpret_cast<LPARAM>(&rect)) != 0;
        m_measuring = false;
        if (!found) return false;
        label = rect;
        ::OffsetRect(&label, 0, -rowTop);
    }
    rect = label;
    ::OffsetRect(&rect, 0, rowTop);
    return true;
}

void NativeList::invalidate(const RECT& rect, bool erase) {
    if (m_list.m_hWnd) ::InvalidateRect(m_list.m_hWnd, &rect, erase);
}

void NativeList::invalidateAll() {
    if (m_list.m_hWnd) ::InvalidateRect(m_list.m_hWnd, nullptr, TRUE);
}

void NativeList::setRedraw(bool on) {
    m_redrawIsOff = !on;
    send(WM_SETREDRAW, on);
}

void NativeList::setColumnWidth(int place, int width) {
    forgetLayout();
    send(LVM_SETCOLUMNWIDTH, place, MAKELPARAM(width, 0));
}

}  // namespace quor::grid
