// Mouse, keys, drag and the menu of all tabs. Every notification may change the tabs or end the control: a tab is found
// again by its number, and nothing is touched once the window is gone.
#include "quor/bars/CustomTabCtrlParts.h"
#include "quor/foundation/TimerIds.h"

using namespace quor::bars;

namespace {

bool isControlDown() { return ::GetKeyState(VK_CONTROL) < 0; }

bool isLeftDown() { return ::GetKeyState(VK_LBUTTON) < 0; }

bool isScrollButton(int code) { return code <= CTS_HIT_FIRST && code >= CTS_HIT_LAST; }

}  // namespace

// ---- Press

void CCustomTabCtrl::OnLButtonDown(UINT flags, CPoint point) {
    const HWND self = m_hWnd;
    const bool wasDown = isLeftDown();
    int code = HitTest(point);
    const unsigned tab = code >= 0 ? m_parts->strip.item(code).number : 0;
    notify(static_cast<int>(NM_CLICK), code, point);
    if (!::IsWindow(self)) return;
    if (tab && (code = m_parts->strip.find(tab)) < 0) return;
    ProcessLButtonDown(code, flags, point);
    // Whoever was told may have shown a box, and the button came up where nobody here heard of it.
    if (::IsWindow(self) && wasDown && !isLeftDown()) cancelPress();
}

void CCustomTabCtrl::ProcessLButtonDown(int code, UINT flags, CPoint point) {
    if (code == CTS_HIT_LIST) return showList();
    SetCapture();
    m_parts->strip.press(code, ::GetTickCount());
    if (code >= 0) return pressTab(code, flags, point);
    if (isScrollButton(code)) SetTimer(kTabRepeatTimer, kTabRepeatPeriod);
    if (code != CTS_HIT_NOTHING) layoutChanged();
}

void CCustomTabCtrl::pressTab(int index, UINT flags, CPoint point) {
    const HWND self = m_hWnd;
    const unsigned tab = m_parts->strip.item(index).number;
    SetFocus();
    if (!::IsWindow(self)) return;
    index = m_parts->strip.find(tab);
    if (index < 0 || !toggleOrChoose(index, flags, point)) return;
    // Whoever was told may have ended the press by other tabs.
    if (m_parts->strip.down() >= 0) awaitDrag(m_parts->strip.down(), (flags & MK_CONTROL) != 0);
}

// False: the control is gone.
bool CCustomTabCtrl::toggleOrChoose(int index, UINT flags, CPoint point) {
    const HWND self = m_hWnd;
    TabStrip& strip = m_parts->strip;
    const bool marks = (GetStyle() & CTS_MULTIHIGHLIGHT) != 0;
    if (marks && (flags & MK_CONTROL)) {
        strip.highlight(index, !strip.item(index).m_fHighlighted);
    } else {
        if (marks) strip.clearHighlights();
        if (index != strip.selected() && !choose(index, point)) return false;
    }
    layoutChanged();
    for (int changed = strip.takeHighlightChange(); changed >= 0; changed = strip.takeHighlightChange()) {
        notify(kTabHighlight, changed, point);
        if (!::IsWindow(self)) return false;
    }
    return true;
}

// As the user does: the owner hears of it. False: the control is gone.
bool CCustomTabCtrl::choose(int index, CPoint point) {
    const HWND self = m_hWnd;
    SetCurSel(index);
    notify(kTabChosen, index, point);
    return ::IsWindow(self) != FALSE;
}

void CCustomTabCtrl::OnLButtonUp(UINT, CPoint point) {
    const bool copies = isControlDown();  // as it is now, not when the mouse moved last
    const int code = m_parts->strip.down(), to = m_parts->dropPlace(stripPoint(point), copies);
    cancelPress();
    if (to >= 0) return drop(code, to, copies);
    if (code == CTS_HIT_CLOSE && HitTest(point) == code) askClose(GetCurSel(), point);
}

void CCustomTabCtrl::endPress() {
    if (m_parts->strip.down() == CTS_HIT_NOTHING && !m_parts->dragging) return;
    for (const UINT timer : {kTabRepeatTimer, kTabDragTimer, kTabDragScrollTimer}) KillTimer(timer);
    m_parts->dragging = m_parts->scrollsDrag = false;
    if (m_parts->strip.release() != CTS_HIT_NOTHING) layoutChanged();
}

void CCustomTabCtrl::cancelPress() {
    endPress();
    if (GetCapture() == this) ::ReleaseCapture();
}

void CCustomTabCtrl::OnCaptureChanged(CWnd*) { endPress(); }

void CCustomTabCtrl::OnLButtonDblClk(UINT flags, CPoint point) {
    const int code = HitTest(point);
    if (code < 0 || code != GetCurSel()) return OnLButtonDown(flags, point);
    EditLabel(code);
}

void CCustomTabCtrl::OnRButtonDown(UINT, CPoint point) {
    const bool dragged = m_parts->drags();
    cancelPress();
    if (!dragged) notify(static_cast<int>(NM_RCLICK), HitTest(point), point);
}

void CCustomTabCtrl::OnRButtonDblClk(UINT, CPoint point) {
    notify(static_cast<int>(NM_RDBLCLK), HitTest(point), point);
}

void CCustomTabCtrl::OnMButtonDown(UINT, CPoint point) {
    const int code = HitTest(point);
    m_parts->middleDown = code >= 0 ? m_parts->strip.item(code).number : 0;
}

void CCustomTabCtrl::OnMButtonUp(UINT, CPoint point) {
    const int index = m_parts->strip.find(std::exchange(m_parts->middleDown, 0u));
    if (index >= 0 && HitTest(point) == index) askClose(index, point);
}

void CCustomTabCtrl::askClose(int index, CPoint point) {
    if (m_parts->strip.has(index)) notify(kTabClose, index, point);
}

// ---- Drag

void CCustomTabCtrl::awaitDrag(int index, bool copies) {
    if (!m_parts->dragCursor(index, copies)) {
        m_parts->strip.release();
        return;
    }
    m_parts->m_nItemDragDest = CTS_HIT_NOTHING;
    SetTimer(kTabDragTimer, kTabDragDelay);
}

void CCustomTabCtrl::startDrag() {
    KillTimer(kTabDragTimer);
    const int tab = m_parts->strip.down();
    if (tab < 0) return;
    if (!m_parts->dragging) {
        m_parts->dragging = true;
        m_parts->m_nItemDragDest = tab;
        SetTimer(kTabDragTimer, kTabDragCursorDelay);
    }
    const HCURSOR cursor = m_parts->dragCursor(tab, isControlDown());
    if (!cursor) return cancelPress();
    ::SetCursor(cursor);
    Invalidate(FALSE);
}

void CCustomTabCtrl::dragTo(CPoint point) {
    const bool copies = isControlDown();
    m_parts->m_nItemDragDest = m_parts->dropPlace(stripPoint(point), copies);
    ::SetCursor(m_parts->m_nItemDragDest >= 0 ? m_parts->dragCursor(m_parts->strip.down(), copies)
                                              : ::LoadCursorA(nullptr, IDC_NO));
    if (!m_parts->scrollsDrag && m_parts->strip.dragScroll(stripPoint(point))) {
        m_parts->scrollsDrag = true;
        SetTimer(kTabDragScrollTimer, kTabDragScrollPeriod);
    }
    Invalidate(FALSE);
}

void CCustomTabCtrl::scrollDrag() {
    const CPoint point = mousePoint();
    const auto action = m_parts->drags() ? m_parts->strip.dragScroll(stripPoint(point)) : std::nullopt;
    if (!action) {
        KillTimer(kTabDragScrollTimer);
        m_parts->scrollsDrag = false;
        return;
    }
    m_parts->strip.recalcLayout(*action);
    layoutChanged();
    dragTo(point);
}

void CCustomTabCtrl::drop(int from, int to, bool copies) {
    if (copies)
        CopyItem(from, to);
    else if (from != to)
        MoveItem(from, to);
}

void CCustomTabCtrl::OnTimer(UINT_PTR timer) {
    switch (timer) {
        case kTabRepeatTimer:
            if (m_parts->strip.repeat(::GetTickCount())) layoutChanged();
            return;
        case kTabDragTimer:
            return startDrag();
        case kTabDragScrollTimer:
            return scrollDrag();
        default:
            CWnd::OnTimer(timer);
    }
}

// ---- Movement

void CCustomTabCtrl::OnMouseMove(UINT, CPoint point) {
    if (m_parts->drags()) return dragTo(point);
    noteHot(HitTest(point));
    if (m_parts->tracksMouse) return;
    TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE, m_hWnd, 0};
    m_parts->tracksMouse = ::TrackMouseEvent(&track) != FALSE;
}

void CCustomTabCtrl::OnMouseLeave() {
    m_parts->tracksMouse = false;
    noteHot(CTS_HIT_NOTHING);
}

CPoint CCustomTabCtrl::mousePoint() const {
    CPoint point;
    ::GetCursorPos(&point);
    ::ScreenToClient(m_hWnd, &point);
    return point;
}

void CCustomTabCtrl::noteHot(int code) {
    if (code == m_parts->hot) return;
    m_parts->hot = code;
    Invalidate(FALSE);
}

// ---- Keys

void CCustomTabCtrl::OnSetFocus(CWnd* former) {
    CWnd::OnSetFocus(former);
    Invalidate(FALSE);
}

void CCustomTabCtrl::OnKillFocus(CWnd* next) {
    CWnd::OnKillFocus(next);
    Invalidate(FALSE);
}

void CCustomTabCtrl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    const auto step = [this](TabStep way) {
        if (const int target = m_parts->strip.stepTarget(way); target >= 0) choose(target, CPoint());
    };
    switch (key) {
        case VK_LEFT:
        case VK_UP:
            return step(TabStep::previous);
        case VK_RIGHT:
        case VK_DOWN:
            return step(TabStep::next);
        case VK_HOME:
            return step(TabStep::first);
        case VK_END:
            return step(TabStep::last);
        case VK_TAB:
            if (isControlDown()) step(::GetKeyState(VK_SHIFT) < 0 ? TabStep::cycleBack : TabStep::cycleOn);
            return;
        case VK_F2:
            EditLabel(GetCurSel());
            return;
        case VK_DELETE:
            return askClose(GetCurSel(), CPoint());
        case VK_ESCAPE:
            return cancelPress();
        case VK_CONTROL:
            if (m_parts->drags()) dragTo(mousePoint());
            return;
        default:
            CWnd::OnKeyDown(key, repeat, flags);
    }
}

// A drag copies while Ctrl is down.
void CCustomTabCtrl::OnKeyUp(UINT key, UINT repeat, UINT flags) {
    if (key == VK_CONTROL && m_parts->drags()) return dragTo(mousePoint());
    CWnd::OnKeyUp(key, repeat, flags);
}

// Of a dialog's own keys the arrows and Ctrl+Tab, and Esc while a drag goes on.
LRESULT CCustomTabCtrl::OnGetDialogCode(WPARAM, LPARAM lParam) {
    const auto* const message = reinterpret_cast<const MSG*>(lParam);
    const bool isKey = message && message->message == WM_KEYDOWN;
    const bool isOurs =
        isKey && ((message->wParam == VK_TAB && isControlDown()) || (message->wParam == VK_ESCAPE && m_parts->drags()));
    return DLGC_WANTARROWS | (isOurs ? DLGC_WANTMESSAGE : 0);
}

// ---- The menu of all tabs

void CCustomTabCtrl::showList() {
    const HWND self = m_hWnd;
    const TabStrip& strip = m_parts->strip;
    CMenu menu;
    menu.CreatePopupMenu();
    std::vector<unsigned> tabs;
    for (int i = 0; i < strip.count(); ++i) {
        CString text = strip.item(i).m_strText;
        text.Replace("&", "&&");
        tabs.push_back(strip.item(i).number);
        menu.AppendMenu(MF_STRING, tabs.size(), text);
    }
    if (GetCurSel() >= 0)
        menu.CheckMenuRadioItem(0, static_cast<UINT>(strip.count() - 1), static_cast<UINT>(GetCurSel()), MF_BYPOSITION);
    const int chosen = trackList(menu);
    if (!::IsWindow(self)) return;
    const int index = chosen > 0 ? strip.find(tabs[static_cast<std::size_t>(chosen) - 1]) : -1;
    if (index >= 0 && index != GetCurSel()) choose(index, CPoint());
}

// Over the content, beside the button, which is down meanwhile. The number of the line, from 1.
int CCustomTabCtrl::trackList(CMenu& menu) {
    struct Pressed {
        explicit Pressed(CCustomTabCtrl& control) : tabs(control), window(control.m_hWnd) {
            tabs.m_parts->strip.press(CTS_HIT_LIST, ::GetTickCount());
            tabs.layoutChanged();
            tabs.UpdateWindow();
        }
        ~Pressed() {
            if (!::IsWindow(window)) return;
            tabs.m_parts->strip.release();
            tabs.layoutChanged();
        }
        CCustomTabCtrl& tabs;
        HWND window;
    } const pressed(*this);
    CRect place = clientRect(m_parts->strip.buttonPlace(CTS_HIT_LIST));
    ClientToScreen(place);
    const bool atEnd = m_parts->strip.isTop();
    UINT flags = TPM_RETURNCMD | TPM_NONOTIFY;
    CPoint corner = IsVertical() ? CPoint(place.right, place.top) : CPoint(place.left, place.bottom);
    if (atEnd) {
        corner = place.TopLeft();
        flags |= IsVertical() ? TPM_RIGHTALIGN : TPM_BOTTOMALIGN;
    }
    return menu.TrackPopupMenu(flags, corner.x, corner.y, this);
}
