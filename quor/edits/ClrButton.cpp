#include "quor/edits/ClrButton.h"

#include "quor/edits/ButtonPaintInternal.h"
#include "quor/edits/core/Colours.h"

using namespace quor::edits;
using quor::platform::scaled;

namespace {

constexpr int kFrameLines = 2;  // of two colours each: an outer and an inner one

const char* styleName(eFontStyle style) {
    switch (style) {
        case kFontBold:
            return "Bold";
        case kFontItalic:
            return "Italic";
        case kFontBoldItalic:
            return "Bold Italic";
        default:
            return "Regular";
    }
}

}  // namespace

IMPLEMENT_DYNAMIC(CClrButton, CButton)

BEGIN_MESSAGE_MAP(CClrButton, CButton)
    ON_WM_SYSCOLORCHANGE()
    ON_WM_THEMECHANGED()
    ON_WM_LBUTTONDBLCLK()
    ON_MESSAGE(WM_GETDLGCODE, &CClrButton::OnGetDialogCode)
    ON_MESSAGE(BM_SETSTYLE, &CClrButton::OnSetStyle)
END_MESSAGE_MAP()

CClrButton::CClrButton() { takeSystemColours(); }

BOOL CClrButton::PreCreateWindow(CREATESTRUCT& create) {
    m_isDefault = makeOwnerDrawn(create);
    return CButton::PreCreateWindow(create);
}

void CClrButton::PreSubclassWindow() {
    CButton::PreSubclassWindow();
    if (makeOwnerDrawn(m_hWnd)) m_isDefault = true;
}

// ---- Colours

void CClrButton::takeSystemColours() {
    if (!m_faceSet) {
        m_clrText = ::GetSysColor(COLOR_BTNTEXT);
        m_clrFace = ::GetSysColor(COLOR_BTNFACE);
    }
    if (!m_disabledSet) m_clrDisabled = ::GetSysColor(COLOR_BTNFACE);
    m_clrLight = ::GetSysColor(COLOR_3DLIGHT);
    m_clrHighlight = ::GetSysColor(COLOR_3DHIGHLIGHT);
    m_clrShadow = ::GetSysColor(COLOR_3DSHADOW);
    m_clrDarkShadow = ::GetSysColor(COLOR_3DDKSHADOW);
}

void CClrButton::SetColour(DWORD text, DWORD face) {
    SetColour(text, face, ::GetSysColor(COLOR_BTNFACE));
    m_disabledSet = false;
}

void CClrButton::SetColour(DWORD text, DWORD face, DWORD disabled) {
    m_clrText = text;
    m_clrFace = face;
    m_clrDisabled = disabled;
    m_faceSet = m_disabledSet = true;
    if (m_hWnd) Invalidate(FALSE);
}

void CClrButton::ResetColour() {
    m_faceSet = m_disabledSet = false;
    takeSystemColours();
    if (m_hWnd) Invalidate();
}

void CClrButton::OnSysColorChange() {
    CButton::OnSysColorChange();
    takeSystemColours();
    Invalidate();
}

LRESULT CClrButton::OnThemeChanged() {
    m_theme.CloseThemeData();
    Invalidate();
    return 0;
}

// ---- Font

void CClrButton::DisplayFont(CString font, CString size, eFontStyle style) {
    CString text = font + " (";
    if (style != kFontStyleNotShown) text += CString(styleName(style)) + " , ";
    text += size + ")";
    SetWindowText(text);
    SetFont(font);
    SetSize(size);
    SetFontStyle(style);
}

// ---- A push button to its dialog and its user

LRESULT CClrButton::OnGetDialogCode(WPARAM, LPARAM) { return dialogCode(m_isDefault); }

LRESULT CClrButton::OnSetStyle(WPARAM style, LPARAM redraw) {
    return DefWindowProc(BM_SETSTYLE, takeStyle(style, m_isDefault), redraw);
}

// The second of two quick presses is a press: the system makes it something else for owner-drawn buttons.
void CClrButton::OnLButtonDblClk(UINT flags, CPoint point) {
    SendMessage(WM_LBUTTONDOWN, flags, MAKELPARAM(point.x, point.y));
}

// ---- Drawing

int CClrButton::lineWidth() const { return std::max(scaled(m_hWnd, 1), 1); }

void CClrButton::DrawItem(LPDRAWITEMSTRUCT item) {
    CDC& dc = *CDC::FromHandle(item->hDC);
    const DcStateScope restored(dc);
    const ButtonState state = stateOf(*item, m_isDefault);
    const COLORREF face = state.enabled ? m_clrFace : m_clrDisabled;
    CRect area = item->rcItem;
    COLORREF color = state.enabled ? m_clrText : readableOn(face, ::GetSysColor(COLOR_GRAYTEXT), kDisabledContrast);
    if (!m_faceSet && paintThemedFace(m_theme, m_hWnd, dc, area, state)) {
        if (state.enabled) color = themedText(m_theme, state, color);
    } else {
        if (state.isDefault) area = paintDefaultFrame(m_hWnd, dc, area);
        DrawFilledRect(&dc, area, face);
        DrawFrame(&dc, area, static_cast<int>(item->itemState));
    }
    CString text;
    GetWindowText(text);
    CRect inside = area;
    inside.DeflateRect(lineWidth(), lineWidth());
    if (state.pressed) inside.OffsetRect(lineWidth(), lineWidth());
    m_keysShow = state.keysShow;
    DrawButtonText(&dc, inside, text, color);
    if (state.focused) paintFocus(m_hWnd, dc, area);
}

void CClrButton::DrawFrame(CDC* dc, CRect area, int state) {
    const bool sunken = (state & ODS_SELECTED) != 0;
    const COLORREF colours[kFrameLines][2] = {
        {sunken ? m_clrDarkShadow : m_clrHighlight, sunken ? m_clrHighlight : m_clrDarkShadow},
        {sunken ? m_clrShadow : m_clrLight, sunken ? m_clrLight : m_clrShadow},
    };
    for (const auto& [upper, lower] : colours) {
        for (int line = lineWidth(); line > 0 && area.Width() > 1 && area.Height() > 1; --line) {
            const long right = area.right - 1, bottom = area.bottom - 1;
            DrawLine(dc, area.left, area.top, right, area.top, upper);
            DrawLine(dc, area.left, area.top, area.left, bottom, upper);
            DrawLine(dc, area.left, bottom, right + 1, bottom, lower);
            DrawLine(dc, right, area.top, right, bottom, lower);
            area.DeflateRect(1, 1);
        }
    }
}

void CClrButton::DrawFilledRect(CDC* dc, CRect area, DWORD color) { dc->FillSolidRect(area, color); }

void CClrButton::DrawLine(CDC* dc, long left, long top, long right, long bottom, DWORD color) {
    CPen pen(PS_SOLID, 1, color);
    const SelectScope selected(*dc, pen);
    dc->MoveTo(left, top);
    dc->LineTo(right, bottom);
}

void CClrButton::DrawButtonText(CDC* dc, CRect area, const char* text, DWORD color) {
    paintText(m_hWnd, *dc, area, {text, color, m_keysShow});
}
