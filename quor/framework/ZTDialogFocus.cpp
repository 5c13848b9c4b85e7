// Who gets the focus when a dialog closes, and the control that gets it when a dialog is activated.
//
// The click that closes may destroy the dialog, the object included. So whatever is needed behind it is settled before
// it, by handles, and no member is touched afterwards until the object was seen to live.
#include "quor/foundation/Messages.h"
#include "quor/framework/FocusStack.h"
#include "quor/framework/ZTDialog.h"

namespace {

// Bars that float in a mini frame and count as the application's own, in the order in which they are looked for.
constexpr UINT kFloatingBars[] = {6075, 10000};

CString captionOf(HWND control) {
    CString text;
    CWnd::FromHandle(control)->GetWindowText(text);
    text.Remove('&');
    return text;
}

bool closes(HWND control) {
    const CString caption = captionOf(control);
    return caption == "Cancel" || caption == "OK";
}

HWND mainWindow() {
    const CWnd* const main = AfxGetMainWnd();
    return main ? main->m_hWnd : nullptr;
}

bool runsModalLoop(HWND window) {
    const CWnd* const object = CWnd::FromHandlePermanent(window);
    return object && (object->m_nFlags & WF_MODALLOOP);
}

bool isMiniFrame(HWND window) { return dynamic_cast<CBCGPMiniFrameWnd*>(CWnd::FromHandlePermanent(window)) != nullptr; }

bool holdsFloatingBar() {
    for (const UINT bar : kFloatingBars)
        if (CBCGPMiniFrameWnd::FindFloatingBarByID(bar)) return true;
    return false;
}

// Between the windows of a program stand many that nobody sees (tool tips, input methods), and other programs'.
bool isSeenHere(HWND window) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    return process == ::GetCurrentProcessId() && ::IsWindowVisible(window);
}

// The window that was last active among those of the control's or dialog's top-level window; null if there is none.
HWND lastPopupOf(const CWnd& window) {
    const CWnd* const top = window.GetTopLevelParent();
    const CWnd* const popup = top ? top->GetLastActivePopup() : nullptr;
    return popup ? popup->m_hWnd : nullptr;
}

void activate(HWND window) {
    if (!isMiniFrame(window)) ::BringWindowToTop(window);
}

// What stands behind a window: the first that may take the focus, or that runs a modal loop. Null: neither.
HWND windowBehind(CZTDialog& dialog, HWND window) {
    for (HWND next = ::GetWindow(window, GW_HWNDNEXT); next; next = ::GetWindow(next, GW_HWNDNEXT)) {
        if (runsModalLoop(next)) return next;
        if (isSeenHere(next) && dialog.CheckforMultiMonitor(CWnd::FromHandle(next))) return next;
    }
    return nullptr;
}

}  // namespace

void CZTDialog::ResetBWLDlgPtr() { m_pDgBar = nullptr; }

void CZTDialog::SetLayoutWatcher(CWatcher* pWatcher) { pWatcherr = pWatcher; }

int CZTDialog::CheckforMultiMonitor(CWnd* pWnd) {
    const auto* const dialog = dynamic_cast<const CZTDialog*>(pWnd);
    return !dialog || !m_bGlobalMmmMode || !dialog->m_bMmmMode;
}

// --- OK and Cancel -------------------------------------------------------------------------------------------------

BOOL CZTDialog::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (HIWORD(wParam) != 0) return CZTBCGPDialog::OnCommand(wParam, lParam);
    const auto button = reinterpret_cast<HWND>(lParam);
    if (!::IsWindow(button)) {
        if (m_pDgBar) m_bFocusStatus = true;
        return CZTBCGPDialog::OnCommand(wParam, lParam);
    }
    if (!closes(button)) return CZTBCGPDialog::OnCommand(wParam, lParam);
    RemoveFocusWnd(this);
    int flag = 0;
    CWnd* const waiting = GetFocusWnd(flag);
    if (waiting && flag != 0) return closeToFocusWindow(waiting, wParam, lParam);
    if (m_pDgBar && m_bReturnFocusToBar) return closeToBar(button, wParam, lParam);
    return closeToNextWindow(button, wParam, lParam);
}

BOOL CZTDialog::closeToFocusWindow(CWnd* window, WPARAM wParam, LPARAM lParam) {
    const HWND handle = window->m_hWnd;
    CZTBCGPDialog::OnCommand(wParam, lParam);
    ::SetFocus(handle);
    RemoveFocusWnd(window);
    return TRUE;
}

BOOL CZTDialog::closeToBar(HWND button, WPARAM wParam, LPARAM lParam) {
    m_bFocusStatus = true;
    const HWND popup = lastPopupOf(*CWnd::FromHandle(button));
    const HWND target = popup ? windowBehind(*this, popup) : nullptr;
    if (!target) return CZTBCGPDialog::OnCommand(wParam, lParam);
    if (runsModalLoop(target)) return TRUE;
    if (target == mainWindow()) return closeAndActivateBar(wParam, lParam);
    if (isMiniFrame(target))
        return holdsFloatingBar() ? closeAndActivateBar(wParam, lParam) : CZTBCGPDialog::OnCommand(wParam, lParam);
    CZTBCGPDialog::OnCommand(wParam, lParam);
    if (!::IsWindow(button)) {  // else the dialog stays
        ::BringWindowToTop(target);
        ::SetFocus(target);
    }
    m_bFocusStatus = false;
    return TRUE;
}

BOOL CZTDialog::closeAndActivateBar(WPARAM wParam, LPARAM lParam) {
    const HWND window = m_hWnd;
    m_bFocusStatus = true;
    CZTBCGPDialog::OnCommand(wParam, lParam);
    if (CWnd::FromHandlePermanent(window) == this)
        ActivatePrevWindow(true);
    else if (m_pDgBar)
        m_pDgBar->SetFocus();
    return TRUE;
}

BOOL CZTDialog::closeToNextWindow(HWND button, WPARAM wParam, LPARAM lParam) {
    m_bFocusStatus = false;
    const HWND popup = lastPopupOf(*CWnd::FromHandle(button));
    const HWND target = popup ? windowBehind(*this, popup) : nullptr;
    if (!target) return CZTBCGPDialog::OnCommand(wParam, lParam);
    if (runsModalLoop(target)) return TRUE;
    CZTBCGPDialog::OnCommand(wParam, lParam);
    activate(target);
    return TRUE;
}

bool CZTDialog::ActivatePrevWindow(bool bCheckBar) {
    if (bCheckBar && m_pDgBar) {
        m_pDgBar->SetFocus();
        return false;
    }
    const CWnd* const top = GetTopLevelParent();
    const HWND last = top ? top->m_hWnd : nullptr;
    const HWND popup = lastPopupOf(*this);
    if (!popup) return false;
    for (HWND next = ::GetWindow(popup, GW_HWNDNEXT); next && next != last; next = ::GetWindow(next, GW_HWNDNEXT)) {
        if (next == mainWindow()) {
            ::SetFocus(next);
            return true;
        }
        if (!isSeenHere(next) || !CheckforMultiMonitor(CWnd::FromHandle(next))) continue;
        activate(next);
        return true;
    }
    return false;
}

// --- Focus inside --------------------------------------------------------------------------------------------------

void CZTDialog::SetFocus(int nCtrlId) { SetFocus(GetDlgItem(nCtrlId)); }

void CZTDialog::SetFocus(CWnd* pWnd) {
    if (pWnd) SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(pWnd->m_hWnd), TRUE);
}

void CZTDialog::ZTDGotoDlgCtrl(CWnd* pWnd) {
    m_pDelayedFocusCtrl = pWnd;
    m_delayedFocusWindow = pWnd ? pWnd->m_hWnd : nullptr;
}

void CZTDialog::OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized) {
    CZTBCGPDialog::OnActivate(nState, pWndOther, bMinimized);
    if ((nState != WA_ACTIVE && nState != WA_CLICKACTIVE) || !m_pDelayedFocusCtrl) return;
    // A control that had no window yet when it was named lives; of one that had, only the window is asked.
    const HWND control = m_delayedFocusWindow ? m_delayedFocusWindow : m_pDelayedFocusCtrl->m_hWnd;
    m_pDelayedFocusCtrl = nullptr;
    m_delayedFocusWindow = nullptr;
    if (::IsWindow(control)) PostMessage(WM_ZTD_DELAYED_SETFOCUS, reinterpret_cast<WPARAM>(control), 0);
}

LRESULT CZTDialog::OnDelayedSetFocus(WPARAM wParam, LPARAM) {
    if (::IsWindow(reinterpret_cast<HWND>(wParam)) && ::IsWindow(m_hWnd)) SendMessage(WM_NEXTDLGCTL, wParam, TRUE);
    return 0;
}
