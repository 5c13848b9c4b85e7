#include "quor/bars/CustomTabCtrlParts.h"

using namespace quor::bars;

namespace {

constexpr char kClassName[] = "CCustomTabCtrl";
constexpr char kFace[] = "MS Shell Dlg 2";
constexpr int kPoints = 8;

void registerTabClass() {
    WNDCLASSA description{};
    description.style = CS_DBLCLKS | CS_GLOBALCLASS;
    description.lpfnWndProc = ::DefWindowProcA;
    description.hInstance = AfxGetInstanceHandle();
    description.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
    description.lpszClassName = kClassName;
    AfxRegisterClass(&description);
}

CRect swapped(const CRect& rect) { return {rect.top, rect.left, rect.bottom, rect.right}; }

}  // namespace

IMPLEMENT_DYNAMIC(CCustomTabCtrl, CWnd)

BEGIN_MESSAGE_MAP(CCustomTabCtrl, CWnd)
    ON_WM_ERASEBKGND()
    ON_WM_PAINT()
    ON_WM_SIZE()
    ON_WM_DESTROY()
    ON_WM_STYLECHANGED()
    ON_WM_THEMECHANGED()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_ENABLE()
    ON_MESSAGE(WM_SETFONT, &CCustomTabCtrl::OnSetFont)
    ON_MESSAGE(WM_GETFONT, &CCustomTabCtrl::OnGetFont)
    ON_MESSAGE(WM_SIZEPARENT, &CCustomTabCtrl::OnSizeParent)
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_RBUTTONDOWN()
    ON_WM_RBUTTONDBLCLK()
    ON_WM_MBUTTONDOWN()
    ON_WM_MBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
    ON_WM_CAPTURECHANGED()
    ON_WM_TIMER()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_KEYDOWN()
    ON_WM_KEYUP()
    ON_MESSAGE(WM_GETDLGCODE, &CCustomTabCtrl::OnGetDialogCode)
    ON_EN_UPDATE(kTabEditId, &CCustomTabCtrl::OnUpdateEdit)
    ON_EN_KILLFOCUS(kTabEditId, &CCustomTabCtrl::OnKillFocusEdit)
END_MESSAGE_MAP()

// ---- Parts

CCustomTabCtrl::Parts::Parts() : strip([this](const CString& text, bool selected) { return measure(text, selected); }) {
    LOGFONT font{};
    font.lfHeight = quor::platform::fontHeight(nullptr, kPoints);
    font.lfCharSet = DEFAULT_CHARSET;
    ::lstrcpynA(font.lfFaceName, kFace, LF_FACESIZE);
    setFont(font);
}

int CCustomTabCtrl::Parts::measure(const CString& text, bool selected) {
    CClientDC screen(nullptr);
    const SelectScope font(screen, selected ? m_fontSelected : m_fontNormal);
    CRect extent;
    screen.DrawText(text, extent, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    return extent.Width();
}

int CCustomTabCtrl::Parts::lineHeight() {
    CClientDC screen(nullptr);
    const SelectScope font(screen, m_fontSelected);
    TEXTMETRIC metrics;
    screen.GetTextMetrics(&metrics);
    return metrics.tmHeight;
}

void CCustomTabCtrl::Parts::setFont(LOGFONT font) {
    if (m_fontNormal.m_hObject) m_fontNormal.DeleteObject();
    if (m_fontSelected.m_hObject) m_fontSelected.DeleteObject();
    m_fontNormal.CreateFontIndirect(&font);
    font.lfWeight = FW_BOLD;
    m_fontSelected.CreateFontIndirect(&font);
    strip.forgetWidths();
}

// ---- Life

CCustomTabCtrl::CCustomTabCtrl() : m_parts(std::make_unique<Parts>()) { registerTabClass(); }

CCustomTabCtrl::~CCustomTabCtrl() {
    if (m_hWnd) DestroyWindow();  // while the parts are there
}

BOOL CCustomTabCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(kClassName, nullptr, style, rect, parent, id);
}

void CCustomTabCtrl::PreSubclassWindow() {
    CWnd::PreSubclassWindow();
    CRect client;
    GetClientRect(client);
    m_parts->strip.setStyle(GetStyle());
    OnSize(SIZE_RESTORED, client.Width(), client.Height());
}

// What the user was at ends with the window; the tabs stay.
void CCustomTabCtrl::OnDestroy() {
    endEditor(false);
    m_parts->edited = 0;
    endPress();
    m_parts->tracksMouse = false;
    m_parts->hot = CTS_HIT_NOTHING;
    if (m_parts->m_wndToolTip.m_hWnd) m_parts->m_wndToolTip.DestroyWindow();
    m_parts->tools.clear();
    CWnd::OnDestroy();
}

void CCustomTabCtrl::OnSize(UINT, int width, int height) {
    m_parts->strip.setSize(IsVertical() ? height : width, IsVertical() ? width : height);
    layoutChanged();
}

void CCustomTabCtrl::OnStyleChanged(int which, LPSTYLESTRUCT styles) {
    CWnd::OnStyleChanged(which, styles);
    if (which != GWL_STYLE) return;
    CRect client;
    GetClientRect(client);
    m_parts->strip.setStyle(styles->styleNew);
    OnSize(SIZE_RESTORED, client.Width(), client.Height());
}

LRESULT CCustomTabCtrl::OnSetFont(WPARAM font, LPARAM redraw) {
    LOGFONT description;
    if (::GetObjectA(reinterpret_cast<HFONT>(font), sizeof description, &description))
        SetControlFont(description, LOWORD(redraw));
    return 0;
}

LRESULT CCustomTabCtrl::OnGetFont(WPARAM, LPARAM) {
    return reinterpret_cast<LRESULT>(m_parts->m_fontNormal.GetSafeHandle());
}

// A hidden strip takes no place.
LRESULT CCustomTabCtrl::OnSizeParent(WPARAM, LPARAM lParam) {
    if (!(GetStyle() & WS_VISIBLE)) return 0;
    auto& layout = *reinterpret_cast<AFX_SIZEPARENTPARAMS*>(lParam);
    CRect own;
    GetWindowRect(own);
    CRect place(layout.rect);
    const bool atEnd = m_parts->strip.isTop();
    if (IsVertical() && atEnd)
        layout.rect.right = place.left = place.right - own.Width();
    else if (IsVertical())
        layout.rect.left = place.right = place.left + own.Width();
    else if (atEnd)
        layout.rect.bottom = place.top = place.bottom - own.Height();
    else
        layout.rect.top = place.bottom = place.top + own.Height();
    if (layout.hDWP)
        layout.hDWP = ::DeferWindowPos(layout.hDWP, m_hWnd, nullptr, place.left, place.top, place.Width(),
                                       place.Height(), SWP_NOACTIVATE | SWP_NOZORDER);
    return 0;
}

// ---- Coordinates and layout

BOOL CCustomTabCtrl::IsVertical() const { return m_hWnd && (GetStyle() & CTS_VERTICAL); }

CPoint CCustomTabCtrl::stripPoint(CPoint point) const { return IsVertical() ? CPoint(point.y, point.x) : point; }

CRect CCustomTabCtrl::clientRect(const CRect& rect) const { return IsVertical() ? swapped(rect) : rect; }

void CCustomTabCtrl::layoutChanged() {
    m_parts->tipsStale = true;
    if (!m_hWnd) return;
    if (m_parts->dragging && !m_parts->drags()) cancelPress();  // its tab is gone or stands elsewhere
    if (m_parts->hot >= 0) m_parts->hot = HitTest(mousePoint());
    ComputeRgn();
    RecalcEditResized();
    Invalidate(FALSE);
}

// Tabs that cannot be seen need none.
void CCustomTabCtrl::ComputeRgn() {
    const TabStrip& strip = m_parts->strip;
    const bool vertical = IsVertical();
    for (int i = 0; i < strip.count(); ++i) {
        CCustomTabCtrlItem& tab = m_parts->item(i);
        if (tab.m_bState == kTabHidden || tab.m_rect.left >= strip.right()) {
            tab.dropRgn();
            continue;
        }
        auto points = strip.outline(i);
        if (vertical)
            for (CPoint& point : points) std::swap(point.x, point.y);
        tab.ComputeRgn(points);
    }
}

LRESULT CCustomTabCtrl::notify(int code, int item, CPoint point, int tab) {
    sTabNotify record{};
    record.hdr = {m_hWnd, static_cast<UINT_PTR>(GetDlgCtrlID()), static_cast<UINT>(code)};
    record.nItem = item;
    record.point = point;
    if (m_parts->strip.has(tab)) {
        const TabItem& shown = m_parts->strip.item(tab);
        ::lstrcpynA(record.szText, shown.m_strText, static_cast<int>(sizeof record.szText));
        record.lParam = shown.m_lParam;
        record.rectText = clientRect(shown.m_rectText);
        record.fSelected = shown.m_fSelected;
        record.fHighlighted = shown.m_fHighlighted;
    }
    CWnd* const parent = GetParent();
    return parent ? parent->SendMessage(WM_NOTIFY, record.hdr.idFrom, reinterpret_cast<LPARAM>(&record)) : 0;
}

// ---- Tabs

int CCustomTabCtrl::GetItemCount() const { return m_parts->strip.count(); }

int CCustomTabCtrl::InsertItem(int index, LPCTSTR text, LPARAM data, BOOL select) {
    auto tab = std::make_unique<CCustomTabCtrlItem>();
    tab->m_strText = text;
    tab->m_lParam = data;
    const int place = m_parts->strip.insert(index, std::move(tab), select != FALSE);
    layoutChanged();
    return place;
}

BOOL CCustomTabCtrl::DeleteItem(int index) {
    TabStrip& strip = m_parts->strip;
    if (!strip.has(index)) return FALSE;
    if (strip.item(index).number == m_parts->edited) {
        m_parts->edited = 0;
        endEditor(false);
    }
    strip.remove(index);
    layoutChanged();
    return TRUE;
}

void CCustomTabCtrl::DeleteAllItems() {
    m_parts->edited = 0;
    endEditor(false);
    m_parts->strip.removeAll();
    layoutChanged();
}

BOOL CCustomTabCtrl::MoveItem(int from, int to) {
    if (!m_parts->strip.move(from, to)) return FALSE;
    layoutChanged();
    if (m_hWnd) notify(kTabMoved, (from & 0xFF) << 8 | (to & 0xFF), CPoint(), to);
    return TRUE;
}

int CCustomTabCtrl::CopyItem(int from, int to) {
    TabStrip& strip = m_parts->strip;
    if (!strip.has(from)) return -1;
    const int copy = InsertItem(to, strip.copyText(strip.item(from).m_strText), strip.item(from).m_lParam, TRUE);
    if (m_hWnd) notify(copy < 0 ? kTabCopyFailed : kTabCopied, copy);
    return copy;
}

int CCustomTabCtrl::GetCurSel() const { return m_parts->strip.selected(); }

BOOL CCustomTabCtrl::SetCurSel(int index) {
    if (!m_parts->strip.select(index)) return FALSE;
    layoutChanged();
    return TRUE;
}

BOOL CCustomTabCtrl::IsItemHighlighted(int index) const {
    return m_parts->strip.has(index) && m_parts->strip.item(index).m_fHighlighted;
}

BOOL CCustomTabCtrl::HighlightItem(int index, BOOL highlight) {
    if (!m_parts->strip.highlight(index, highlight != FALSE)) return FALSE;
    m_parts->strip.item(index).m_fHighlightChanged = 0;
    layoutChanged();
    return TRUE;
}

LPARAM CCustomTabCtrl::GetItemData(int index) const {
    return m_parts->strip.has(index) ? m_parts->strip.item(index).m_lParam : 0;
}

BOOL CCustomTabCtrl::SetItemData(int index, LPARAM data) {
    if (!m_parts->strip.has(index)) return FALSE;
    m_parts->strip.item(index).m_lParam = data;
    return TRUE;
}

CString CCustomTabCtrl::GetItemText(int index) const {
    return m_parts->strip.has(index) ? m_parts->strip.item(index).m_strText : CString();
}

BOOL CCustomTabCtrl::SetItemText(int index, LPCTSTR text) {
    if (!m_parts->strip.has(index)) return FALSE;
    m_parts->strip.setText(index, text);
    layoutChanged();
    return TRUE;
}

BOOL CCustomTabCtrl::GetItemRect(int index, RECT& rect) const {
    if (!m_parts->strip.has(index)) return FALSE;
    const TabItem& tab = m_parts->strip.item(index);
    rect = tab.m_bState == kTabHidden ? CRect() : clientRect(tab.m_rect);
    return TRUE;
}

BOOL CCustomTabCtrl::SetItemTooltipText(int index, LPCTSTR text) {
    if (!m_parts->strip.has(index)) return FALSE;
    m_parts->strip.item(index).tip = text;
    m_parts->tipsStale = true;
    return TRUE;
}

void CCustomTabCtrl::SetDragCursors(HCURSOR move, HCURSOR copy) {
    m_parts->m_hCursorMove = move;
    m_parts->m_hCursorCopy = copy;
}

void CCustomTabCtrl::SetControlFont(const LOGFONT& font, BOOL redraw) {
    m_parts->setFont(font);
    layoutChanged();
    if (m_parts->m_ctrlEdit.m_hWnd) m_parts->m_ctrlEdit.SetFont(&m_parts->m_fontSelected);
    if (redraw && m_hWnd) UpdateWindow();
}

int CCustomTabCtrl::HitTest(CPoint point) const { return m_parts->strip.hitTest(stripPoint(point)); }
