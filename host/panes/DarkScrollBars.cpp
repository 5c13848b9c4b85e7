#include "host/panes/DarkScrollBars.h"

#include "host/core/ScrollThumb.h"
#include "host/panes/Theme.h"
#include "host/panes/WindowWatch.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <uxtheme.h>

namespace terminal {

using quor::platform::scaled;

namespace {

constexpr wchar_t kDarkTheme[] = L"DarkMode_Explorer", kDarkBars[] = L"DarkMode_Explorer::ScrollBar";
constexpr int kShortestThumb = 24, kThumbInset = 4;
constexpr UINT_PTR kPageTimer = 1;
constexpr UINT kFirstPage = 300, kNextPage = 60;  // milliseconds that the button is held down for a further page

bool themeHasDarkBars(HWND window) {
    const HTHEME theme = ::OpenThemeData(window, kDarkBars);
    if (theme) ::CloseThemeData(theme);
    return theme != nullptr;
}

class CDarkBar : public CWnd {
public:
    CDarkBar(HWND scrolled, int bar, ScrollBy scrollBy)
        : m_scrolled(scrolled), m_bar(bar), m_scrollBy(std::move(scrollBy)) {
        Create(AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), "", WS_CHILD | WS_CLIPSIBLINGS,
               CRect(0, 0, 0, 0), CWnd::FromHandle(::GetParent(scrolled)), 0);
    }
    ~CDarkBar() override { DestroyWindow(); }

    // Looks where the system's bar is now, and how it stands.
    void follow();

private:
    bool isVertical() const { return m_bar == SB_VERT; }
    // The system's bar, in the coordinates of the parent of both; with the corner of both bars, if it lies flat.
    CRect systemBar() const;
    ScrollRange readRange() const;

    int along(CPoint point) const { return isVertical() ? point.y : point.x; }
    int track() const { return isVertical() ? m_place.Height() : m_place.Width() - m_corner; }
    int shortest() const { return scaled(m_hWnd, kShortestThumb); }
    Thumb thumb() const { return thumbOf(m_range, track(), shortest()); }
    void scrollTo(int position);
    void page();
    void setHot(bool hot);

    void OnPaint();
    BOOL OnEraseBkgnd(CDC*) { return TRUE; }
    void OnLButtonDown(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnMouseLeave() { setHot(false); }
    void OnCaptureChanged(CWnd* to);
    void OnTimer(UINT_PTR id);
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point);

    HWND m_scrolled;
    int m_bar;
    ScrollBy m_scrollBy;
    CRect m_place = CRect(0, 0, 0, 0);
    ScrollRange m_range;
    int m_corner = 0;  // how much of the length is no track
    CPoint m_pointer = CPoint(0, 0);
    int m_grip = 0;  // where in the thumb it is held
    bool m_shown = false, m_hot = false, m_dragging = false, m_paging = false;

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CDarkBar, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSELEAVE()
    ON_WM_CAPTURECHANGED()
    ON_WM_TIMER()
    ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

CRect CDarkBar::systemBar() const {
    const LONG_PTR style = ::GetWindowLongPtrA(m_scrolled, GWL_STYLE);
    if (!(style & (isVertical() ? WS_VSCROLL : WS_HSCROLL))) return CRect(0, 0, 0, 0);
    CRect client, window;
    ::GetClientRect(m_scrolled, &client);
    ::GetWindowRect(m_scrolled, &window);
    const HWND parent = ::GetParent(m_scrolled);
    ::MapWindowPoints(m_scrolled, parent, reinterpret_cast<POINT*>(&client), 2);
    ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&window), 2);
    CRect bar = isVertical() ? CRect(client.right, client.top, window.right, client.bottom)
                             : CRect(client.left, client.bottom, window.right, window.bottom);
    bar &= window;
    return bar;
}

ScrollRange CDarkBar::readRange() const {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    ::GetScrollInfo(m_scrolled, m_bar, &info);
    return {info.nMin, info.nMax, static_cast<int>(info.nPage), info.nPos};
}

void CDarkBar::follow() {
    if (!m_hWnd) return;
    const CRect place = systemBar();
    const bool shows = !place.IsRectEmpty();
    if (shows != m_shown || (shows && place != m_place)) {
        m_place = place;
        const bool both = ::GetWindowLongPtrA(m_scrolled, GWL_STYLE) & WS_VSCROLL;
        m_corner = both && !isVertical() ? ::GetSystemMetrics(SM_CXVSCROLL) : 0;
        m_shown = shows;
        ::SetWindowPos(m_hWnd, HWND_TOP, place.left, place.top, place.Width(), place.Height(),
                       SWP_NOACTIVATE | (shows ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
        Invalidate(FALSE);
    }
    if (!shows) return;
    const ScrollRange now = readRange();
    if (now == m_range) return;
    m_range = now;
    Invalidate(FALSE);
}

void CDarkBar::scrollTo(int position) {
    const int by = std::clamp(position, m_range.least, lastPosition(m_range)) - m_range.position;
    if (by) m_scrollBy(m_bar, by);
    follow();
}

// Towards the pointer, as long as it is beside the thumb.
void CDarkBar::page() {
    const Thumb now = thumb();
    const int at = along(m_pointer), step = std::max(1, m_range.page);
    if (now.length == 0 || (at >= now.begin && at < now.begin + now.length)) return;
    scrollTo(m_range.position + (at < now.begin ? -step : step));
}

void CDarkBar::setHot(bool hot) {
    if (hot == m_hot) return;
    m_hot = hot;
    Invalidate(FALSE);
}

void CDarkBar::OnPaint() {
    CPaintDC paint(this);
    CRect area;
    GetClientRect(&area);
    PaintBufferScope buffer(paint, area);
    buffer.dc().FillSolidRect(&area, palette::kTrack);
    const Thumb now = thumb();
    if (now.length == 0) return;
    const int inset = scaled(m_hWnd, kThumbInset), end = now.begin + now.length;
    const CRect place = isVertical() ? CRect(inset, now.begin, area.right - inset, end)
                                     : CRect(now.begin, inset, end, area.bottom - inset);
    buffer.dc().FillSolidRect(&place, m_hot || m_dragging ? palette::kDim : palette::kThumb);
}

void CDarkBar::OnLButtonDown(UINT, CPoint point) {
    m_pointer = point;
    const Thumb now = thumb();
    const int at = along(point) - now.begin;
    if (now.length == 0) return;
    SetCapture();
    m_dragging = at >= 0 && at < now.length;
    m_paging = !m_dragging;
    m_grip = at;
    Invalidate(FALSE);
    if (!m_paging) return;
    SetTimer(kPageTimer, kFirstPage);
    page();
}

void CDarkBar::OnMouseMove(UINT, CPoint point) {
    m_pointer = point;
    if (m_dragging) return scrollTo(positionOfThumb(m_range, track(), shortest(), along(point) - m_grip));
    TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, m_hWnd, 0};
    ::TrackMouseEvent(&leave);
    setHot(true);
}

void CDarkBar::OnLButtonUp(UINT, CPoint) {
    if (::GetCapture() == m_hWnd) ::ReleaseCapture();
}

void CDarkBar::OnCaptureChanged(CWnd*) {
    KillTimer(kPageTimer);
    m_dragging = m_paging = false;
    Invalidate(FALSE);
}

void CDarkBar::OnTimer(UINT_PTR id) {
    if (id != kPageTimer || !m_paging) return CWnd::OnTimer(id);
    SetTimer(kPageTimer, kNextPage);
    page();
}

BOOL CDarkBar::OnMouseWheel(UINT flags, short delta, CPoint point) {
    ::SendMessageA(m_scrolled, WM_MOUSEWHEEL, MAKEWPARAM(flags, delta), MAKELPARAM(point.x, point.y));
    return TRUE;
}

// What is asked of a list or a field moves no bar, and of that there is much with each tick.
bool movesBars(UINT message) {
    switch (message) {
        case WM_PAINT:
        case WM_NCPAINT:
        case WM_WINDOWPOSCHANGED:
        case WM_STYLECHANGED:
        case WM_SETTEXT:
        case WM_VSCROLL:
        case WM_HSCROLL:
        case WM_MOUSEWHEEL:
        case WM_KEYDOWN:
        case WM_CHAR:
        case LVM_SETITEMCOUNT:
        case LVM_INSERTITEMA:
        case LVM_INSERTITEMW:
        case LVM_DELETEITEM:
        case LVM_DELETEALLITEMS:
        case LVM_SETCOLUMNWIDTH:
        case LVM_SCROLL:
        case LVM_ENSUREVISIBLE:
        case EM_REPLACESEL:
        case EM_LINESCROLL:
        case EM_SCROLLCARET:
            return true;
        default:
            return false;
    }
}

// Both bars of a window.
struct DarkBars {
    DarkBars(HWND window, const ScrollBy& scrollBy)
        : vertical(window, SB_VERT, scrollBy), horizontal(window, SB_HORZ, scrollBy) {}

    CDarkBar vertical, horizontal;
    void follow() {
        vertical.follow();
        horizontal.follow();
    }
};

}  // namespace

void darkenScrollBars(HWND window, ScrollBy scrollBy) {
    if (!::IsWindow(window)) return;
    if (themeHasDarkBars(window)) {
        ::SetWindowTheme(window, kDarkTheme, nullptr);
        return;
    }
    ::SetWindowLongPtrA(window, GWL_STYLE, ::GetWindowLongPtrA(window, GWL_STYLE) | WS_CLIPSIBLINGS);
    const auto bars = std::make_shared<DarkBars>(window, scrollBy);
    bars->follow();
    watchWindow(window, [bars](const WindowMessage& message, const PassOn& passOn) {
        const LRESULT result = passOn();
        if (movesBars(message.message) && ::IsWindow(message.window)) bars->follow();
        return result;
    });
}

// In report view a position is a row down the list, and a pixel across it.
void darkenScrollBars(CListCtrl& list) {
    darkenScrollBars(list, [&list](int bar, int positions) {
        CRect row;
        if (bar == SB_HORZ)
            list.Scroll(CSize(positions, 0));
        else if (list.GetItemRect(list.GetTopIndex(), &row, LVIR_BOUNDS))
            list.Scroll(CSize(0, positions * row.Height()));
    });
}

}  // namespace terminal
