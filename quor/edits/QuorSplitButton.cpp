#include "quor/edits/QuorSplitButton.h"

#include "quor/edits/ButtonPaintInternal.h"
#include "quor/edits/core/ButtonLayout.h"
#include "quor/edits/core/Colours.h"

using namespace quor::edits;
using quor::platform::scaled;

namespace {

constexpr int kStripWidth = 16;
constexpr int kArrowWidth = 7;
constexpr int kLeastCommand = 2;  // what a menu may send: 0 is none, 1 would be OK
constexpr UINT kMenuFlags = TPM_NONOTIFY | TPM_RETURNCMD;

}  // namespace

IMPLEMENT_DYNAMIC(CQuorSplitButton, CButton)

BEGIN_MESSAGE_MAP(CQuorSplitButton, CButton)
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_MOUSEMOVE()
    ON_WM_CAPTURECHANGED()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_KEYDOWN()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_THEMECHANGED()
    ON_MESSAGE(WM_GETDLGCODE, &CQuorSplitButton::OnGetDialogCode)
    ON_MESSAGE(BM_SETSTYLE, &CQuorSplitButton::OnSetStyle)
    ON_MESSAGE(BM_CLICK, &CQuorSplitButton::OnClick)
END_MESSAGE_MAP()

CQuorSplitButton::CQuorSplitButton() : m_nMenuStripWidth(scaled(nullptr, kStripWidth)) { m_menu.CreatePopupMenu(); }

BOOL CQuorSplitButton::PreCreateWindow(CREATESTRUCT& create) {
    if (makeOwnerDrawn(create)) m_bDefaultButton = 1;
    return CButton::PreCreateWindow(create);
}

void CQuorSplitButton::PreSubclassWindow() {
    CButton::PreSubclassWindow();
    if (makeOwnerDrawn(m_hWnd)) m_bDefaultButton = 1;
}

// ---- Menu and parent

bool CQuorSplitButton::hasMenu() const { return static_cast<int>(m_menu.GetMenuItemCount()) > 0; }

UINT CQuorSplitButton::EnableMenuItem(UINT id, CString, UINT flags) {
    const UINT result = m_menu.EnableMenuItem(id, flags);
    m_nMenuFlags |= static_cast<int>(result);
    return result;
}

BOOL CQuorSplitButton::RemoveMenuItem(UINT id, CString, UINT flags) {
    const BOOL result = m_menu.RemoveMenu(id, flags);
    m_nMenuFlags |= result;
    if (m_hWnd) Invalidate(FALSE);  // the last item takes the strip along
    return result;
}

UINT CQuorSplitButton::ChangeMenuFlags(UINT id, UINT flags) { return m_menu.CheckMenuItem(id, flags); }

void CQuorSplitButton::RegisterParentDlg(CWnd* parent) {
    if (parent) m_pParentDlg = parent;
}

// The dialog tells its former default button and this one by BM_SETSTYLE.
void CQuorSplitButton::SetDefaultButton(int isDefault) {
    m_bDefaultButton = isDefault;
    if (!m_hWnd) return;
    CWnd* const dialog = GetParent();
    const LRESULT present = dialog ? dialog->SendMessage(DM_GETDEFID) : 0;
    const auto id = static_cast<WPARAM>(GetDlgCtrlID());
    const bool isPresent = HIWORD(present) == DC_HASDEFID && LOWORD(present) == LOWORD(id);
    if (dialog && isPresent != (isDefault != 0)) dialog->SendMessage(DM_SETDEFID, isDefault ? id : 0);
    m_bDefaultButton = isDefault;
    Invalidate(FALSE);
}

// ---- Mouse

BOOL CQuorSplitButton::HitMenuBtn(CPoint point) {
    if (!hasMenu()) return FALSE;
    if (!m_bMenuPushed) SendMessage(WM_CANCELMODE);
    CRect strip;
    GetWindowRect(strip);
    strip.left = strip.right - m_nMenuStripWidth;
    ClientToScreen(&point);
    return strip.PtInRect(point);
}

void CQuorSplitButton::OnLButtonDown(UINT flags, CPoint point) {
    if (m_bMenuPushed) {
        m_bMenuPushed = 0;
        Invalidate();
        return;
    }
    if (HitMenuBtn(point)) {
        const HWND self = m_hWnd;
        m_bMenuPushed = 1;
        SetFocus();
        Invalidate();
        OnShowMenu();
        if (!::IsWindow(self)) return;
        m_bMenuPushed = 0;
    } else {
        m_bPushed = 1;
    }
    Invalidate();
    if (m_bPushed) CButton::OnLButtonDown(flags, point);
}

// The capture goes before the base sees the release, so that the base sends no command of its own.
void CQuorSplitButton::OnLButtonUp(UINT flags, CPoint point) {
    const bool pressed = m_bPushed != 0;
    m_bPushed = 0;
    if (pressed) {
        ::ReleaseCapture();
        Invalidate();
    }
    if (!m_pParentDlg) return;
    if (pressed) pressMainPart();
    CButton::OnLButtonUp(flags, point);
}

void CQuorSplitButton::pressMainPart() {
    m_nLastCommand = kMainPart;
    if (m_pParentDlg) m_pParentDlg->PostMessage(WM_COMMAND, LOWORD(GetDlgCtrlID()), reinterpret_cast<LPARAM>(m_hWnd));
}

// The second of two quick presses is a press.
void CQuorSplitButton::OnLButtonDblClk(UINT flags, CPoint point) {
    SendMessage(WM_LBUTTONDOWN, flags, MAKELPARAM(point.x, point.y));
}

void CQuorSplitButton::OnMouseMove(UINT flags, CPoint point) {
    if (m_bPushed) {
        CPoint onScreen = point;
        ClientToScreen(&onScreen);
        if (::WindowFromPoint(onScreen) != m_hWnd) {
            m_bPushed = 0;
            ::ReleaseCapture();
            Invalidate();
        }
    }
    CButton::OnMouseMove(flags, point);
}

// A press that something else ended sends nothing.
void CQuorSplitButton::OnCaptureChanged(CWnd* window) {
    if (m_bPushed && window != this) {
        m_bPushed = 0;
        Invalidate();
    }
    CButton::OnCaptureChanged(window);
}

// ---- Keyboard and dialog

void CQuorSplitButton::OnSetFocus(CWnd* former) {
    CButton::OnSetFocus(former);
    Invalidate();
}

void CQuorSplitButton::OnKillFocus(CWnd* next) {
    CButton::OnKillFocus(next);
    Invalidate();
}

void CQuorSplitButton::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    switch (key) {
        case VK_SPACE:
        case VK_DOWN:
            return OnShowMenu();
        case VK_RETURN:  // outside a dialog; there the dialog takes it
            return pressMainPart();
        default:
            CButton::OnKeyDown(key, repeat, flags);
    }
}

// Down is the menu's; the other arrows stay the dialog's.
LRESULT CQuorSplitButton::OnGetDialogCode(WPARAM, LPARAM message) {
    const auto* const key = reinterpret_cast<const MSG*>(message);
    const bool isDown = key && key->message == WM_KEYDOWN && key->wParam == VK_DOWN;
    return dialogCode(m_bDefaultButton != 0) | (isDown ? DLGC_WANTMESSAGE : 0);
}

LRESULT CQuorSplitButton::OnSetStyle(WPARAM style, LPARAM redraw) {
    bool isDefault = m_bDefaultButton != 0;
    const WPARAM kept = takeStyle(style, isDefault);
    m_bDefaultButton = isDefault;
    return DefWindowProc(BM_SETSTYLE, kept, redraw);
}

LRESULT CQuorSplitButton::OnClick(WPARAM, LPARAM) {
    if (IsWindowEnabled()) pressMainPart();
    return 0;
}

// The dialog's own command, of Enter.
BOOL CQuorSplitButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED && !m_inMenuCommand) m_nLastCommand = kMainPart;
    return CButton::OnChildNotify(message, wParam, lParam, result);
}

void CQuorSplitButton::OnShowMenu() {
    const HWND self = m_hWnd;
    CRect place;
    GetWindowRect(place);
    m_nLastCommand = 0;
    const int command = m_menu.TrackPopupMenu(kMenuFlags, place.left, place.bottom, this);
    if (!::IsWindow(self)) return;
    m_nLastCommand = command;
    if (command < kLeastCommand || !m_pParentDlg) return;
    m_inMenuCommand = true;
    m_pParentDlg->SendMessage(WM_COMMAND, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(self));
    if (::IsWindow(self)) m_inMenuCommand = false;
}

// ---- Drawing

void CQuorSplitButton::OnSysColorChange() {
    CButton::OnSysColorChange();
    Invalidate();
}

LRESULT CQuorSplitButton::OnThemeChanged() {
    m_theme.CloseThemeData();
    Invalidate();
    return 0;
}

void CQuorSplitButton::DrawItem(LPDRAWITEMSTRUCT item) {
    CDC& dc = *CDC::FromHandle(item->hDC);
    const DcStateScope restored(dc);
    const ButtonState state = stateOf(*item, m_bDefaultButton != 0);
    const auto [mainPlace, strip] = splitParts(item->rcItem, hasMenu() ? m_nMenuStripWidth : 0);
    CRect main = mainPlace;
    paintPart(dc, main, m_bPushed != 0, *item);
    const COLORREF ground = ::GetSysColor(COLOR_BTNFACE);
    const COLORREF disabled = readableOn(ground, ::GetSysColor(COLOR_GRAYTEXT), kDisabledContrast);
    const auto colorOf = [&](bool pressed) {
        ButtonState part = state;
        part.pressed = pressed;
        return state.enabled ? themedText(m_theme, part, ::GetSysColor(COLOR_BTNTEXT)) : disabled;
    };
    if (strip.right > strip.left) {
        paintPart(dc, strip, m_bMenuPushed != 0, *item);
        CRect arrow = strip;
        if (m_bMenuPushed) arrow.OffsetRect(scaled(m_hWnd, 1), scaled(m_hWnd, 1));
        dc.SetTextColor(colorOf(m_bMenuPushed != 0));
        DrawArrow(&dc, arrow);
    }
    CString text;
    GetWindowText(text);
    CRect inside = main;
    if (m_bPushed) inside.OffsetRect(scaled(m_hWnd, 1), scaled(m_hWnd, 1));
    paintText(m_hWnd, dc, inside, {text, colorOf(m_bPushed != 0), state.keysShow});
    if (state.focused) paintFocus(m_hWnd, dc, main);
}

void CQuorSplitButton::paintPart(CDC& dc, const CRect& area, bool pressed, const DRAWITEMSTRUCT& item) {
    ButtonState state = stateOf(item, m_bDefaultButton != 0);
    state.pressed = pressed;
    if (paintThemedFace(m_theme, m_hWnd, dc, area, state)) return;
    CRect frame = state.isDefault ? paintDefaultFrame(m_hWnd, dc, area) : area;
    dc.DrawFrameControl(
        frame, DFC_BUTTON,
        static_cast<UINT>(DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0) | (state.enabled ? 0 : DFCS_INACTIVE)));
}

// In the context's text colour.
void CQuorSplitButton::DrawArrow(CDC* dc, CRect strip) {
    const ArrowPlace arrow = arrowIn(strip, scaled(m_hWnd, kArrowWidth));
    const COLORREF color = dc->GetTextColor();
    for (int row = 0; row < arrow.rows; ++row)
        dc->FillSolidRect(arrow.left + row, arrow.top + row, 2 * (arrow.rows - row) - 1, 1, color);
}
