#include "quor/platform/win/ControlsInternal.h"

IMPLEMENT_DYNAMIC(CToolTipCtrl, CWnd)

namespace {

constexpr int kLongestTip = 1024;

// Id 0 means the window itself, which is then reported by its parent.
TOOLINFO toolOf(const CWnd* window, UINT_PTR id) {
    TOOLINFO info{};
    info.cbSize = TTTOOLINFOA_V1_SIZE;
    info.hwnd = id ? window->m_hWnd : ::GetParent(window->m_hWnd);
    info.uId = id ? id : reinterpret_cast<UINT_PTR>(window->m_hWnd);
    info.uFlags = id ? 0 : TTF_IDISHWND;
    return info;
}

CString resourceText(UINT id) {
    CString text;
    const int length = ::LoadString(AfxGetResourceHandle(), id, text.GetBuffer(kLongestTip), kLongestTip);
    text.ReleaseBuffer(length);
    return text;
}

LPTSTR writable(LPCTSTR text) { return const_cast<LPTSTR>(text); }

}  // namespace

BOOL CToolTipCtrl::Create(CWnd* parent, DWORD style) {
    registerCommonControls();
    const RECT anywhere = {CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT};
    return CWnd::CreateEx(0, TOOLTIPS_CLASS, nullptr, WS_POPUP | style, anywhere, parent, 0);
}

BOOL CToolTipCtrl::AddTool(CWnd* window, LPCTSTR text, LPCRECT rect, UINT_PTR id) {
    TOOLINFO info = toolOf(window, id);
    if (rect) info.rect = *rect;
    info.lpszText = writable(text);
    return static_cast<BOOL>(send(this, TTM_ADDTOOL, 0, pointerParam(&info)));
}

BOOL CToolTipCtrl::AddTool(CWnd* window, UINT textId, LPCRECT rect, UINT_PTR id) {
    return AddTool(window, resourceText(textId), rect, id);
}

void CToolTipCtrl::DelTool(CWnd* window, UINT_PTR id) {
    TOOLINFO info = toolOf(window, id);
    send(this, TTM_DELTOOL, 0, pointerParam(&info));
}

int CToolTipCtrl::GetToolCount() const { return static_cast<int>(send(this, TTM_GETTOOLCOUNT)); }

void CToolTipCtrl::SetToolRect(CWnd* window, UINT_PTR id, LPCRECT rect) {
    TOOLINFO info = toolOf(window, id);
    info.rect = *rect;
    send(this, TTM_NEWTOOLRECT, 0, pointerParam(&info));
}

void CToolTipCtrl::UpdateTipText(LPCTSTR text, CWnd* window, UINT_PTR id) {
    TOOLINFO info = toolOf(window, id);
    info.lpszText = writable(text);
    send(this, TTM_UPDATETIPTEXT, 0, pointerParam(&info));
}

void CToolTipCtrl::UpdateTipText(UINT textId, CWnd* window, UINT_PTR id) {
    UpdateTipText(resourceText(textId), window, id);
}

void CToolTipCtrl::GetText(CString& text, CWnd* window, UINT_PTR id) const {
    TOOLINFO info = toolOf(window, id);
    info.lpszText = text.GetBuffer(kLongestTip);
    info.lpszText[0] = '\0';
    send(this, TTM_GETTEXT, kLongestTip, pointerParam(&info));
    text.ReleaseBuffer();
}

BOOL CToolTipCtrl::GetToolInfo(TOOLINFO& info, CWnd* window, UINT_PTR id) const {
    const LPTSTR text = info.lpszText;
    info = toolOf(window, id);
    info.lpszText = text;
    return static_cast<BOOL>(send(this, TTM_GETTOOLINFO, 0, pointerParam(&info)));
}

void CToolTipCtrl::SetToolInfo(LPTOOLINFO info) { send(this, TTM_SETTOOLINFO, 0, pointerParam(info)); }

BOOL CToolTipCtrl::HitTest(CWnd* window, POINT point, LPTOOLINFO info) const {
    TTHITTESTINFO test{};
    test.hwnd = window->m_hWnd;
    test.pt = point;
    test.ti.cbSize = TTTOOLINFOA_V1_SIZE;
    if (!send(this, TTM_HITTEST, 0, pointerParam(&test))) return FALSE;
    *info = test.ti;
    return TRUE;
}

void CToolTipCtrl::Activate(BOOL activate) { send(this, TTM_ACTIVATE, static_cast<WPARAM>(activate)); }
void CToolTipCtrl::RelayEvent(LPMSG message) { send(this, TTM_RELAYEVENT, 0, pointerParam(message)); }
void CToolTipCtrl::Pop() { send(this, TTM_POP); }
void CToolTipCtrl::Update() { send(this, TTM_UPDATE); }
void CToolTipCtrl::SetDelayTime(DWORD which, int time) { send(this, TTM_SETDELAYTIME, which, MAKELPARAM(time, 0)); }
int CToolTipCtrl::GetDelayTime(DWORD which) const { return static_cast<int>(send(this, TTM_GETDELAYTIME, which)); }
int CToolTipCtrl::SetMaxTipWidth(int width) { return static_cast<int>(send(this, TTM_SETMAXTIPWIDTH, 0, width)); }
int CToolTipCtrl::GetMaxTipWidth() const { return static_cast<int>(send(this, TTM_GETMAXTIPWIDTH)); }
void CToolTipCtrl::SetTipBkColor(COLORREF color) { send(this, TTM_SETTIPBKCOLOR, color); }
COLORREF CToolTipCtrl::GetTipBkColor() const { return static_cast<COLORREF>(send(this, TTM_GETTIPBKCOLOR)); }
void CToolTipCtrl::SetTipTextColor(COLORREF color) { send(this, TTM_SETTIPTEXTCOLOR, color); }
COLORREF CToolTipCtrl::GetTipTextColor() const { return static_cast<COLORREF>(send(this, TTM_GETTIPTEXTCOLOR)); }
void CToolTipCtrl::SetMargin(LPRECT rect) { send(this, TTM_SETMARGIN, 0, pointerParam(rect)); }

BOOL CToolTipCtrl::SetTitle(UINT icon, LPCTSTR title) {
    return static_cast<BOOL>(send(this, TTM_SETTITLE, icon, pointerParam(title)));
}
