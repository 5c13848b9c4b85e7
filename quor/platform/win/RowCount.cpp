// A visible list view that hears a row count may draw its scroll bar on the spot, more than once, and longer than a
// filter of 100,000 rows takes (Wine: 4 to 5 ms). Then it hears the count as if it were hidden, and what it would have
// invalidated is invalidated here. Whether that pays and is right is asked of a list outside the screen, once a
// process; where the control is quick, or invalidates in another way, or cannot be asked, its own way runs.
#include "quor/platform/Framework.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace quor::platform {

namespace {

constexpr LPARAM kKeepPixelsAndScroll = LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL;

// What decides where rows stand.
struct Place {
    int count = 0;
    int top = 0;
    RECT client{};
    RECT topRow{};  // empty: the control cannot tell
};

class Region {
public:
    Region() : m_handle(::CreateRectRgn(0, 0, 0, 0)) {}
    Region(const Region&) = delete;
    Region& operator=(const Region&) = delete;
    ~Region() { ::DeleteObject(m_handle); }
    operator HRGN() const { return m_handle; }

private:
    HRGN m_handle;
};

LRESULT ask(CWnd& list, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return list.DefWindowProc(message, wParam, lParam);
}

Place placeOf(CWnd& list) {
    Place place;
    place.count = static_cast<int>(ask(list, LVM_GETITEMCOUNT));
    place.top = static_cast<int>(ask(list, LVM_GETTOPINDEX));
    ::GetClientRect(list.m_hWnd, &place.client);
    place.topRow.left = LVIR_BOUNDS;
    if (!ask(list, LVM_GETITEMRECT, static_cast<WPARAM>(place.top), reinterpret_cast<LPARAM>(&place.topRow)))
        place.topRow = {};
    return place;
}

// The part of the client area whose rows came or went, down to its end.
RECT uncovered(const Place& before, const Place& after) {
    const Place& known = before.count > after.count ? before : after;
    RECT area = after.client;
    if (known.topRow.bottom == known.topRow.top) return area;
    const LONGLONG height = known.topRow.bottom - known.topRow.top;
    const LONGLONG first = std::min(before.count, after.count) - known.top;
    area.top = static_cast<LONG>(std::clamp<LONGLONG>(known.topRow.top + first * height, 0, area.bottom));
    return area;
}

// For its life the control takes itself for hidden (the default handling of WM_SETREDRAW, which the control's own does
// not see). That also takes what was to be painted off it and its children: they get it back. What was to be erased is
// erased first, so that nothing is erased twice.
class HiddenFromItself {
public:
    explicit HiddenFromItself(HWND list) : m_list(list) {
        remember(list);
        ::EnumChildWindows(
            list, [](HWND child, LPARAM self) { return reinterpret_cast<HiddenFromItself*>(self)->remember(child); },
            reinterpret_cast<LPARAM>(this));
        ::DefWindowProcA(list, WM_SETREDRAW, FALSE, 0);
    }
    HiddenFromItself(const HiddenFromItself&) = delete;
    HiddenFromItself& operator=(const HiddenFromItself&) = delete;
    ~HiddenFromItself() {
        ::DefWindowProcA(m_list, WM_SETREDRAW, TRUE, 0);
        for (const ToPaint& part : m_toPaint) {
            ::InvalidateRgn(part.window, part.region, FALSE);
            ::DeleteObject(part.region);
        }
    }

private:
    struct ToPaint {
        HWND window;
        HRGN region;
    };

    BOOL remember(HWND window) {
        const HRGN region = ::CreateRectRgn(0, 0, 0, 0);
        if (::GetUpdateRgn(window, region, TRUE) > NULLREGION) {
            m_toPaint.push_back({window, region});
        } else {
            ::DeleteObject(region);
        }
        return TRUE;
    }

    HWND m_list;
    std::vector<ToPaint> m_toPaint;
};

void invalidateFrame(HWND list) {
    RECT window{}, client{};
    ::GetWindowRect(list, &window);
    ::MapWindowPoints(nullptr, list, reinterpret_cast<POINT*>(&window), 2);
    ::GetClientRect(list, &client);
    const Region frame, inside;
    ::SetRectRgn(frame, window.left, window.top, window.right, window.bottom);
    ::SetRectRgn(inside, client.left, client.top, client.right, client.bottom);
    if (::CombineRgn(frame, frame, inside, RGN_DIFF) > NULLREGION)
        ::RedrawWindow(list, nullptr, frame, RDW_INVALIDATE | RDW_FRAME | RDW_NOCHILDREN);
}

void tellHidden(CWnd& list, int count) {
    const Place before = placeOf(list);
    {
        const HiddenFromItself hidden(list.m_hWnd);
        ask(list, LVM_SETITEMCOUNT, static_cast<WPARAM>(count), kKeepPixelsAndScroll);
    }
    const Place after = placeOf(list);
    if (!::EqualRect(&before.client, &after.client)) {
        // A scroll bar came or went, and the header is as wide as what it left.
        ::RedrawWindow(list.m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
        return;
    }
    const bool scrolled = before.top != after.top || before.topRow.left != after.topRow.left;
    const RECT area = scrolled ? after.client : uncovered(before, after);
    if (area.top < area.bottom) ::InvalidateRect(list.m_hWnd, &area, TRUE);
    invalidateFrame(list.m_hWnd);
}

// Rows of a visible list outside the screen. Owner data only: it asks nobody for a text before it paints.
class ProbedList : public CWnd {
public:
    ProbedList() {
        constexpr DWORD kStyle = WS_POPUP | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA;
        m_window = ::CreateWindowExA(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, WC_LISTVIEWA, "", kStyle, -4000, -4000, 200,
                                     200, nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
        if (!m_window) return;
        LVCOLUMNA column{};
        column.mask = LVCF_WIDTH;
        column.cx = 100;
        ::SendMessageA(m_window, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    }
    ~ProbedList() override {
        if (m_window) ::DestroyWindow(m_window);
    }

    bool pays() {
        using Clock = std::chrono::steady_clock;
        constexpr std::chrono::microseconds kSlow{1000};
        if (!m_window || !::IsWindowVisible(m_window)) return false;
        tell(5);
        if (!uncoversRows(3, 5)) return false;
        auto quickest = Clock::duration::max();
        for (int round = 0; round < 3; ++round) {
            tell(5);
            const auto start = Clock::now();
            tell(1000);
            quickest = std::min(quickest, Clock::now() - start);
        }
        return quickest > kSlow;
    }

private:
    void tell(int count) {
        ::SendMessageA(m_window, LVM_SETITEMCOUNT, static_cast<WPARAM>(count), kKeepPixelsAndScroll);
    }
    // A count that falls invalidates the rows that went and not the ones above them.
    bool uncoversRows(int from, int to) {
        ::ValidateRect(m_window, nullptr);
        RECT row{LVIR_BOUNDS, 0, 0, 0};
        ::SendMessageA(m_window, LVM_GETITEMRECT, static_cast<WPARAM>(from), reinterpret_cast<LPARAM>(&row));
        tell(from);
        RECT update{};
        ::GetUpdateRect(m_window, &update, FALSE);
        return update.top == row.top && update.bottom >= row.top + (to - from) * (row.bottom - row.top);
    }

    HWND m_window;
};

bool hidingPays() {
    static const bool pays = ProbedList().pays();
    return pays;
}

}  // namespace

void tellRowCount(CWnd& list, int count) {
    const bool drawsAtOnce = (::GetWindowLongPtrA(list.m_hWnd, GWL_STYLE) & WS_VISIBLE) != 0;
    if (drawsAtOnce && ::IsWindowVisible(list.m_hWnd) && hidingPays()) return tellHidden(list, count);
    ask(list, LVM_SETITEMCOUNT, static_cast<WPARAM>(count), kKeepPixelsAndScroll);
}

}  // namespace quor::platform
