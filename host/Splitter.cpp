#include "host/Splitter.h"

#include "host/panes/Theme.h"

#include <algorithm>

namespace terminal {

namespace {
constexpr int kBarWidth = 5;
constexpr int kSmallestPane = 60;  // a pane never gets narrower by dragging
}  // namespace

BEGIN_MESSAGE_MAP(CPaneSplitter, CWnd)
    ON_WM_SIZE()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_SETCURSOR()
END_MESSAGE_MAP()

CPaneSplitter::CPaneSplitter(Axis axis, double share) : m_axis(axis), m_share(std::clamp(share, 0.0, 1.0)) {}

BOOL CPaneSplitter::CreatePane(CWnd* parent, UINT id) {
    const CRect none(0, 0, 0, 0);
    return Create(AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), "",
                  WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, none, parent, id);
}

void CPaneSplitter::SetPanes(CWnd* first, CWnd* second) {
    m_first = first;
    m_second = second;
    layOut();
}

void CPaneSplitter::setShare(double share) {
    m_share = std::clamp(share, 0.0, 1.0);
    layOut();
}

void CPaneSplitter::showSecond(bool show) {
    m_secondShown = show;
    if (m_second) m_second->ShowWindow(show ? SW_SHOW : SW_HIDE);
    layOut();
}

int CPaneSplitter::barWidth() const { return quor::platform::scaled(m_hWnd, kBarWidth); }

int CPaneSplitter::extent() const {
    CRect area;
    GetClientRect(&area);
    return m_axis == Axis::Columns ? area.Width() : area.Height();
}

RECT CPaneSplitter::barRect() const {
    CRect area;
    GetClientRect(&area);
    const int at = static_cast<int>((std::max)(0, extent() - barWidth()) * m_share + 0.5);
    if (m_axis == Axis::Columns) return CRect(at, 0, at + barWidth(), area.bottom);
    return CRect(0, at, area.right, at + barWidth());
}

void CPaneSplitter::layOut() {
    if (!GetSafeHwnd()) return;
    CRect area;
    GetClientRect(&area);
    const bool both = m_first && m_second && m_secondShown;
    if (!both) {
        CWnd* const only = m_first ? m_first : m_second;
        if (only) only->MoveWindow(&area);
        return;
    }
    const CRect bar(barRect());
    CRect first(area), second(area);
    if (m_axis == Axis::Columns) {
        first.right = bar.left;
        second.left = bar.right;
    } else {
        first.bottom = bar.top;
        second.top = bar.bottom;
    }
    m_first->MoveWindow(&first);
    m_second->MoveWindow(&second);
    Invalidate(FALSE);
}

void CPaneSplitter::moveBarTo(CPoint point) {
    const int room = extent() - barWidth();
    const int smallest = quor::platform::scaled(m_hWnd, kSmallestPane);
    if (room <= 2 * smallest) return;
    const int at = (m_axis == Axis::Columns ? point.x : point.y) - barWidth() / 2;
    setShare(static_cast<double>(std::clamp(at, smallest, room - smallest)) / room);
}

void CPaneSplitter::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    layOut();
}

void CPaneSplitter::OnPaint() {
    CPaintDC dc(this);
    const RECT bar = barRect();
    dc.FillSolidRect(&bar, palette::kSurface);
}

BOOL CPaneSplitter::OnEraseBkgnd(CDC*) { return TRUE; }

void CPaneSplitter::OnLButtonDown(UINT, CPoint) {
    m_dragging = true;
    SetCapture();
}

void CPaneSplitter::OnLButtonUp(UINT, CPoint) {
    if (!m_dragging) return;
    m_dragging = false;
    ::ReleaseCapture();
}

void CPaneSplitter::OnMouseMove(UINT, CPoint point) {
    if (m_dragging) moveBarTo(point);
}

BOOL CPaneSplitter::OnSetCursor(CWnd* wnd, UINT hitTest, UINT message) {
    if (wnd != this || hitTest != HTCLIENT) return CWnd::OnSetCursor(wnd, hitTest, message);
    ::SetCursor(::LoadCursor(nullptr, m_axis == Axis::Columns ? IDC_SIZEWE : IDC_SIZENS));
    return TRUE;
}

}  // namespace terminal
