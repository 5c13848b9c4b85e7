// Renaming in place, and tool tips: what the control does before its messages are dispatched.
//
// The editor runs a loop of its own, on the pump. A click anywhere else ends it before that click is handled; so does
// whatever takes the focus away.
#include "quor/bars/CustomTabCtrlParts.h"

using namespace quor::bars;

namespace {

constexpr int kEditIndent = 2;  // as that of a text

bool isPress(UINT message) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
        case WM_MBUTTONDOWN:
        case WM_MBUTTONDBLCLK:
        case WM_NCLBUTTONDOWN:
        case WM_NCLBUTTONDBLCLK:
        case WM_NCRBUTTONDOWN:
        case WM_NCRBUTTONDBLCLK:
        case WM_NCMBUTTONDOWN:
        case WM_NCMBUTTONDBLCLK:
            return true;
        default:
            return false;
    }
}

bool isMouse(const MSG& message) { return message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST; }

const struct {
    int code;
    const char* text;
} kButtonTips[] = {
    {CTS_HIT_FIRST, "First tab"}, {CTS_HIT_PREVIOUS, "Previous tab"}, {CTS_HIT_NEXT, "Next tab"},
    {CTS_HIT_LAST, "Last tab"},   {CTS_HIT_CLOSE, "Close tab"},       {CTS_HIT_LIST, "All tabs"},
};

}  // namespace

BOOL CCustomTabCtrl::PreTranslateMessage(MSG* message) {
    const HWND editor = m_parts->m_ctrlEdit.m_hWnd;
    if (editor && message->hwnd == editor && message->message == WM_KEYDOWN) {
        const WPARAM key = message->wParam;
        if (key == VK_RETURN || key == VK_TAB || key == VK_ESCAPE) {
            endEditor(key != VK_ESCAPE);
            return TRUE;
        }
    }
    if (message->hwnd == m_hWnd && isMouse(*message)) {
        tellTips();
        m_parts->m_wndToolTip.RelayEvent(message);
    }
    return CWnd::PreTranslateMessage(message);
}

// ---- Renaming

BOOL CCustomTabCtrl::EditLabel(int index) {
    TabStrip& strip = m_parts->strip;
    if (!m_hWnd || !strip.has(index) || m_parts->m_ctrlEdit.m_hWnd) return FALSE;
    const HWND self = m_hWnd;
    SetCurSel(index);  // wherever it was scrolled to
    const unsigned tab = strip.item(index).number;
    if (notify(kTabLabel, index) != 0 || !::IsWindow(self) || (index = strip.find(tab)) < 0) return FALSE;
    // Whatever a message throws, the field does not outlive its loop.
    struct Leave {
        HWND window;
        CCustomTabCtrl& tabs;
        ~Leave() {
            if (::IsWindow(window)) tabs.dropEditor();
        }
    } leave{self, *this};
    if (!openEditor(index)) return FALSE;
    runEditor();
    return ::IsWindow(self) ? closeEditor() : FALSE;
}

// False: it did not get the focus, and nothing could end it; or the control is gone.
bool CCustomTabCtrl::openEditor(int index) {
    const HWND self = m_hWnd;
    CEdit& edit = m_parts->m_ctrlEdit;
    const CString text = m_parts->strip.item(index).m_strText;
    if (!edit.Create(WS_CHILD | ES_AUTOHSCROLL, CRect(), this, kTabEditId)) return false;
    m_parts->edited = m_parts->strip.item(index).number;
    m_parts->editing = true;
    m_parts->keepsText = false;
    edit.SetFont(&m_parts->m_fontSelected);
    edit.SetMargins(0, 0);
    edit.SetWindowText(text);
    edit.SetSel(0, -1);
    layoutChanged();
    edit.ShowWindow(SW_SHOW);
    edit.SetFocus();  // whoever loses it may do anything
    return ::IsWindow(self) && edit.m_hWnd && ::GetFocus() == edit.m_hWnd && m_parts->editing;
}

void CCustomTabCtrl::runEditor() {
    const HWND self = m_hWnd;
    const auto goesOn = [&] { return ::IsWindow(self) && m_parts->editing; };
    while (goesOn()) {
        MSG next;
        for (LONG idle = 0; goesOn() && !::PeekMessageA(&next, nullptr, 0, 0, PM_NOREMOVE);)
            if (!AfxOnIdle(idle++)) ::WaitMessage();
        if (!goesOn()) return;
        if (isPress(next.message) && next.hwnd != m_parts->m_ctrlEdit.m_hWnd) return endEditor(true);
        if (AfxPumpMessage()) continue;
        AfxPostQuitMessage(next.message == WM_QUIT ? static_cast<int>(next.wParam) : 0);
        if (::IsWindow(self)) endEditor(false);
        return;
    }
}

void CCustomTabCtrl::endEditor(bool keep) {
    if (!m_parts->editing) return;
    m_parts->editing = false;
    m_parts->keepsText = keep;
    ::PostThreadMessageA(::GetCurrentThreadId(), WM_NULL, 0, 0);  // so that the loop looks
}

BOOL CCustomTabCtrl::closeEditor() {
    const HWND self = m_hWnd;
    TabStrip& strip = m_parts->strip;
    CEdit& edit = m_parts->m_ctrlEdit;
    CString text;
    if (edit.m_hWnd) edit.GetWindowText(text);
    if (edit.m_hWnd && ::GetFocus() == edit.m_hWnd) SetFocus();  // first, so that it goes nowhere else
    if (!::IsWindow(self)) return FALSE;
    const unsigned tab = m_parts->edited;
    dropEditor();
    const int index = ::IsWindow(self) ? strip.find(tab) : -1;
    if (index < 0) return FALSE;
    const BOOL changes = m_parts->keepsText && !text.IsEmpty() && text != strip.item(index).m_strText;
    if (changes) SetItemText(index, text);
    notify(kTabLabel, index);
    return changes;
}

// The tab is as wide as its own text again.
void CCustomTabCtrl::dropEditor() {
    TabStrip& strip = m_parts->strip;
    m_parts->editing = false;
    if (const int index = strip.find(std::exchange(m_parts->edited, 0u)); index >= 0) {
        strip.setText(index, CString(strip.item(index).m_strText));
        layoutChanged();
    }
    if (m_parts->m_ctrlEdit.m_hWnd) ::DestroyWindow(m_parts->m_ctrlEdit.m_hWnd);
}

// The tab is as wide as what is typed.
void CCustomTabCtrl::OnUpdateEdit() {
    const int index = m_parts->strip.find(m_parts->edited);
    if (index < 0) return;
    CString text;
    m_parts->m_ctrlEdit.GetWindowText(text);
    m_parts->strip.item(index).selectedWidth = m_parts->measure(text + "  ", true);
    m_parts->strip.recalcLayout(TabAction::placeEditor, index);
    layoutChanged();
}

// Within its window any other control keeps the text; a window that is no longer active does not.
void CCustomTabCtrl::OnKillFocusEdit() {
    const HWND focus = ::GetFocus();
    endEditor(focus && ::GetAncestor(focus, GA_ROOT) == ::GetAncestor(m_hWnd, GA_ROOT));
}

void CCustomTabCtrl::RecalcEditResized() {
    CEdit& edit = m_parts->m_ctrlEdit;
    const int index = m_parts->strip.find(m_parts->edited);
    if (index < 0 || !edit.m_hWnd) return;
    CRect place = m_parts->strip.tipPlace(index);
    if (place.IsRectEmpty()) return endEditor(true);
    const int line = m_parts->lineHeight();
    if (IsVertical()) {  // letters stay upright in it
        place = CRect(0, 0, m_parts->strip.height(), line) + CPoint(0, (place.left + place.right - line) / 2);
    } else {
        place = CRect(CPoint(place.left + kEditIndent, (place.top + place.bottom - line) / 2),
                      CSize(std::max(place.Width() - kEditIndent, 0), line));
    }
    edit.MoveWindow(place);
}

// ---- Tool tips

// The system's control is told what shows only when the mouse comes, so that a layout costs nothing here.
void CCustomTabCtrl::tellTips() {
    CToolTipCtrl& tips = m_parts->m_wndToolTip;
    if (!tips.m_hWnd && !tips.Create(this, TTS_ALWAYSTIP | TTS_NOPREFIX)) return;
    if (!std::exchange(m_parts->tipsStale, false)) return;
    const TabStrip& strip = m_parts->strip;
    for (const UINT_PTR tool : m_parts->tools) tips.DelTool(this, tool);
    m_parts->tools.clear();
    const auto add = [&](const char* text, const CRect& place, int id) {
        tips.AddTool(this, text, clientRect(place), static_cast<UINT_PTR>(id));
        m_parts->tools.push_back(static_cast<UINT_PTR>(id));
    };
    for (const auto& [code, text] : kButtonTips)
        if (strip.buttonState(code) != kButtonHidden) add(text, strip.buttonPlace(code), code);
    for (int i = std::max(strip.firstVisible() - 1, 0); i < strip.count(); ++i) {
        const CRect place = strip.tipPlace(i);
        const TabItem& tab = strip.item(i);
        const CString& text = tab.tip.IsEmpty() && strip.clipped(i) ? tab.m_strText : tab.tip;
        if (!place.IsRectEmpty() && !text.IsEmpty()) add(text, place, i + 1);
    }
}
