// Tool tips of EnableToolTips: one tip window for the process, which follows the mouse from tool to tool.
#include "quor/platform/win/WndInternal.h"

namespace {

// The tip belongs to the top-level window that it was last used in, and dies with it.
class TipWindow : public CWnd {
public:
    BOOL createFor(HWND owner) {
        return CWnd::CreateEx(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                              CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr, nullptr);
    }

    void forget() {
        if (asker) ::SendMessageA(m_hWnd, TTM_DELTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
        asker = nullptr;
        number = -1;
    }

    void follow(CWnd* window, INT_PTR hit, const TOOLINFOA& hitTool) {
        forget();
        if (hit == -1) return;
        asker = window;
        number = hit;
        tool = hitTool;
        tool.cbSize = TTTOOLINFOA_V1_SIZE;
        if (!tool.hwnd) tool.hwnd = window->m_hWnd;
        ::SendMessageA(m_hWnd, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
        ::SendMessageA(m_hWnd, TTM_ACTIVATE, TRUE, 0);
    }

    CWnd* asker = nullptr;  // whose tool it is
    INT_PTR number = -1;
    TOOLINFOA tool{};

protected:
    void PostNcDestroy() override {
        if (quor::windowState().tip == this) quor::windowState().tip = nullptr;
        delete this;
    }
};

TipWindow* currentTip() { return static_cast<TipWindow*>(quor::windowState().tip); }

TipWindow* tipFor(const CWnd& window) {
    const HWND top = window.GetTopLevelParent()->m_hWnd;
    TipWindow* tip = currentTip();
    if (tip && ::GetWindow(tip->m_hWnd, GW_OWNER) == top) return tip;
    if (tip) tip->DestroyWindow();
    tip = new TipWindow;
    if (!tip->createFor(top)) return nullptr;  // deleted itself
    quor::windowState().tip = tip;
    return tip;
}

bool isMouseMove(UINT message) { return message == WM_MOUSEMOVE || message == WM_NCMOUSEMOVE; }

bool endsTip(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) || message == WM_LBUTTONDOWN ||
           message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN || message == WM_NCLBUTTONDOWN ||
           message == WM_NCRBUTTONDOWN || message == WM_MOUSEWHEEL;
}

// The window nearest to the mouse that wants tips answers for the message.
const CWnd* answering(HWND window) {
    for (; window; window = ::GetParent(window)) {
        const CWnd* object = CWnd::FromHandlePermanent(window);
        if (object && (object->m_nFlags & WF_TOOLTIPS)) return object;
    }
    return nullptr;
}

}  // namespace

void quor::forgetTipsOf(const CWnd& window) {
    if (currentTip() && currentTip()->asker == &window) currentTip()->forget();
}

BOOL CWnd::EnableToolTips(BOOL bEnable) {
    if (bEnable) {
        m_nFlags |= WF_TOOLTIPS;
    } else {
        m_nFlags &= ~WF_TOOLTIPS;
        quor::forgetTipsOf(*this);
    }
    return TRUE;
}

void CWnd::CancelToolTips(BOOL) {
    if (currentTip()) ::SendMessageA(currentTip()->m_hWnd, TTM_POP, 0, 0);
}

INT_PTR CWnd::OnToolHitTest(CPoint point, TOOLINFO* pTI) const {
    const HWND child = ::ChildWindowFromPointEx(m_hWnd, point, CWP_SKIPINVISIBLE);
    if (!child || child == m_hWnd) return -1;
    if (pTI) {
        pTI->hwnd = m_hWnd;
        pTI->uId = reinterpret_cast<UINT_PTR>(child);
        pTI->uFlags |= TTF_IDISHWND;
        pTI->lpszText = LPSTR_TEXTCALLBACKA;
    }
    const int id = ::GetDlgCtrlID(child);
    return id != 0 ? id : static_cast<INT_PTR>(reinterpret_cast<UINT_PTR>(child));
}

void CWnd::FilterToolTipMessage(MSG* pMsg) {
    if (!(m_nFlags & WF_TOOLTIPS)) return;
    if (endsTip(pMsg->message)) CancelToolTips();
    if (!isMouseMove(pMsg->message) || answering(pMsg->hwnd) != this) return;
    CPoint point(pMsg->pt);
    ScreenToClient(&point);
    TOOLINFOA tool{};
    const INT_PTR hit = OnToolHitTest(point, &tool);
    TipWindow* tip = hit == -1 ? currentTip() : tipFor(*this);
    if (!tip) return;
    if (tip->asker != this || tip->number != hit) tip->follow(this, hit, tool);
    if (hit == -1) return;
    MSG relayed = *pMsg;
    relayed.hwnd = tip->tool.uFlags & TTF_IDISHWND ? reinterpret_cast<HWND>(tip->tool.uId) : tip->tool.hwnd;
    if (relayed.message == WM_NCMOUSEMOVE || relayed.hwnd != pMsg->hwnd) {
        POINT client = pMsg->pt;
        ::ScreenToClient(relayed.hwnd, &client);
        relayed.message = WM_MOUSEMOVE;
        relayed.lParam = MAKELPARAM(client.x, client.y);
    }
    ::SendMessageA(tip->m_hWnd, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
}
