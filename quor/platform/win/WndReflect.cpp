// How a parent hands messages back to the controls that caused them.
#include "quor/platform/win/WndInternal.h"

bool quor::reflect(HWND child, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    CWnd* control = CWnd::FromHandlePermanent(child);
    return control && control->OnChildNotify(message, wParam, lParam, result);
}

namespace {

// The id in WM_COMMAND has 16 bits; a control knows its whole one.
UINT wholeId(WPARAM wParam, HWND control) {
    const auto whole = static_cast<UINT>(::GetDlgCtrlID(control));
    return LOWORD(whole) == LOWORD(wParam) ? whole : LOWORD(wParam);
}

// Says whether a command that came from a menu or a key may run.
class EnabledTest : public CCmdUI {
public:
    void Enable(BOOL bOn) override { enabled = bOn; }
    void SetCheck(int) override {}
    void SetRadio(BOOL) override {}
    void SetText(LPCSTR) override {}
    BOOL enabled = TRUE;
};

// The child with this id; inside CreateWindow the system may not know it by its parent yet.
CWnd* childById(HWND parent, UINT id) {
    if (const HWND child = ::GetDlgItem(parent, static_cast<int>(id)))
        if (CWnd* object = CWnd::FromHandlePermanent(child)) return object;
    const auto& creations = quor::windowState().creations;
    for (auto creation = creations.rbegin(); creation != creations.rend(); ++creation)
        if (creation->parent == parent && creation->id == id && creation->window->m_hWnd) return creation->window;
    return nullptr;
}

}  // namespace

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const auto control = reinterpret_cast<HWND>(lParam);
    if (!control) {
        const UINT id = LOWORD(wParam);
        if (id == 0) return FALSE;
        EnabledTest test;
        test.m_nID = id;
        OnCmdMsg(id, CN_UPDATE_COMMAND_UI, &test, nullptr);
        return !test.enabled || OnCmdMsg(id, CN_COMMAND, nullptr, nullptr);
    }
    LRESULT ignored = 0;
    if (quor::reflect(control, WM_COMMAND, wParam, lParam, &ignored)) return TRUE;
    const UINT id = wholeId(wParam, control);
    return id != 0 && OnCmdMsg(id, HIWORD(wParam), nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    auto* header = reinterpret_cast<NMHDR*>(lParam);
    if (quor::reflect(header->hwndFrom, WM_NOTIFY, wParam, lParam, pResult)) return TRUE;
    const UINT id =
        header->hwndFrom ? static_cast<UINT>(::GetDlgCtrlID(header->hwndFrom)) : static_cast<UINT>(header->idFrom);
    AFX_NOTIFY notify = {pResult, header};
    return OnCmdMsg(id, MAKELONG(header->code, WM_NOTIFY), &notify, nullptr);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    return ReflectChildNotify(message, wParam, lParam, pResult);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    LRESULT ignored = 0;
    LRESULT* result = pResult ? pResult : &ignored;
    switch (message) {
        case WM_COMMAND:
            if (!OnCmdMsg(0, MAKELONG(HIWORD(wParam), WM_REFLECT_BASE + WM_COMMAND), nullptr, nullptr)) return FALSE;
            *result = 1;
            return TRUE;
        case WM_NOTIFY: {
            auto* header = reinterpret_cast<NMHDR*>(lParam);
            AFX_NOTIFY notify = {result, header};
            return OnCmdMsg(0, MAKELONG(header->code, WM_REFLECT_BASE + WM_NOTIFY), &notify, nullptr);
        }
        default:  // by number; the window's own handling of commands is not asked
            return CWnd::OnWndMsg(WM_REFLECT_BASE + message, wParam, lParam, result);
    }
}

BOOL CWnd::SendChildNotifyLastMsg(LRESULT* pResult) {
    const MSG current = quor::windowState().current;
    return OnChildNotify(current.message, current.wParam, current.lParam, pResult);
}

BOOL CWnd::ReflectLastMsg(HWND hWndChild, LRESULT* pResult) {
    const MSG current = quor::windowState().current;
    return quor::reflect(hWndChild, current.message, current.wParam, current.lParam, pResult);
}

void CWnd::OnParentNotify(UINT message, LPARAM lParam) {
    if ((LOWORD(message) == WM_CREATE || LOWORD(message) == WM_DESTROY) &&
        ReflectLastMsg(reinterpret_cast<HWND>(lParam)))
        return;
    Default();
}

void CWnd::OnHScroll(UINT, UINT, CScrollBar* pScrollBar) {
    if (!pScrollBar || !ReflectLastMsg(reinterpret_cast<CWnd*>(pScrollBar)->m_hWnd)) Default();
}

void CWnd::OnVScroll(UINT, UINT, CScrollBar* pScrollBar) {
    if (!pScrollBar || !ReflectLastMsg(reinterpret_cast<CWnd*>(pScrollBar)->m_hWnd)) Default();
}

void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT lpDrawItemStruct) {
    if (lpDrawItemStruct->CtlType == ODT_MENU || !ReflectLastMsg(lpDrawItemStruct->hwndItem)) Default();
}

void CWnd::OnMeasureItem(int, LPMEASUREITEMSTRUCT lpMeasureItemStruct) {
    if (lpMeasureItemStruct->CtlType != ODT_MENU) {
        CWnd* child = childById(m_hWnd, lpMeasureItemStruct->CtlID);
        if (child && child->SendChildNotifyLastMsg()) return;
    }
    Default();
}

void CWnd::OnDeleteItem(int, LPDELETEITEMSTRUCT lpDeleteItemStruct) {
    if (!ReflectLastMsg(lpDeleteItemStruct->hwndItem)) Default();
}

int CWnd::OnCompareItem(int, LPCOMPAREITEMSTRUCT lpCompareItemStruct) {
    LRESULT result = 0;
    return static_cast<int>(ReflectLastMsg(lpCompareItemStruct->hwndItem, &result) ? result : Default());
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd* pWnd, UINT) {
    LRESULT result = 0;
    if (pWnd && pWnd->SendChildNotifyLastMsg(&result)) return reinterpret_cast<HBRUSH>(result);
    return reinterpret_cast<HBRUSH>(Default());
}

// --- For the unpackers of message maps -----------------------------------------------------------------------------

CDC* quor::dcFromParam(WPARAM hdc) { return CDC::FromHandle(reinterpret_cast<HDC>(hdc)); }
CMenu* quor::menuFromParam(WPARAM hmenu) { return CMenu::FromHandle(reinterpret_cast<HMENU>(hmenu)); }
// Any control that sends scroll messages; handlers compare the pointer or cast it to what they know it to be.
CScrollBar* quor::scrollBarFromParam(LPARAM hwnd) {
    return static_cast<CScrollBar*>(CWnd::FromHandle(reinterpret_cast<HWND>(hwnd)));
}
LRESULT quor::brushResult(HBRUSH brush) { return reinterpret_cast<LRESULT>(brush); }
