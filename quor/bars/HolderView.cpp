// What a holder shows and where its child stands; its commands are in HolderViewCommands.cpp.
#include "quor/bars/HolderView.h"

#include "quor/foundation/ControlBlock.h"

#include <bit>

using quor::platform::scaled;

IMPLEMENT_DYNCREATE(CHolderView, CView)

BEGIN_MESSAGE_MAP(CHolderView, CView)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_ERASEBKGND()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_KEYDOWN()
    ON_WM_CONTEXTMENU()
    ON_WM_SYSCOLORCHANGE()
    ON_REGISTERED_MESSAGE(WM_XLISTCTRL_CHECKBOX_CLICKED, &CHolderView::OnCheckClick)
END_MESSAGE_MAP()

namespace {

constexpr COLORREF kMiddleGrey = RGB(0x7E, 0x7E, 0x7E);
constexpr COLORREF kWhite = RGB(255, 255, 255), kBlack = RGB(0, 0, 0);
constexpr int kTitleHeight = 17;
constexpr int kCloseBoxWidth = 15;
constexpr int kCloseBoxOverlap = 2;  // its frame goes beyond the strip's edges
constexpr DWORD kCloseBoxStyle = 0x50000F0B;
constexpr char kCloseBoxFont[] = "Trebuchet MS", kCloseBoxSize[] = "10";
constexpr int kCloseBoxPoints = 8;
constexpr UINT kRedrawChild = RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW;
// A name may have an ampersand.
constexpr UINT kTitleFormat = DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
constexpr int kBrickFrame = 1;
constexpr int kFocusMargin = 2;
// A paint that has not come by then (milliseconds) is asked for again: somebody may have called the window valid.
constexpr DWORD kPaintPatience = 250;

// Stock fonts are made for plain screens.
void takeTitleFont(HWND window, CFont& font) {
    LOGFONT plain{};
    ::GetObjectA(::GetStockObject(ANSI_VAR_FONT), sizeof plain, &plain);
    plain.lfHeight = scaled(window, plain.lfHeight);
    plain.lfWidth = 0;
    font.CreateFontIndirect(&plain);
}

using GradientCall = decltype(::GradientFill)*;

// Null where the host's loader has none. The library stays once it is there.
GradientCall gradientCall() {
    static GradientCall found = nullptr;
    if (found) return found;
    const auto load = g_pControlBlock ? g_pControlBlock->quoru_call_LoadLibrary : nullptr;
    const HMODULE library = load ? load("msimg32.dll") : nullptr;
    found = library ? std::bit_cast<GradientCall>(::GetProcAddress(library, "GradientFill")) : nullptr;
    return found;
}

TRIVERTEX corner(LONG x, LONG y, COLORREF color) {
    const auto wide = [](int part) { return static_cast<COLOR16>(part << 8); };
    return {x, y, wide(GetRValue(color)), wide(GetGValue(color)), wide(GetBValue(color)), 0};
}

}  // namespace

// ---- Other windows

void CHolderView::Other::set(CWnd* other) {
    object = other;
    window = other ? other->m_hWnd : nullptr;
}

CWnd* CHolderView::Other::get() const {
    return object && window && FromHandlePermanent(window) == object ? object : nullptr;
}

CHolderView::CHolderView()
    : m_clrGradientFrom(kMiddleGrey),
      m_clrGradientTo(::GetSysColor(COLOR_BTNSHADOW)),
      m_nTitleHeight(scaled(nullptr, kTitleHeight)) {}

CHolderView::~CHolderView() = default;

int CHolderView::OnCreate(LPCREATESTRUCT create) {
    EnableToolTips();
    return CView::OnCreate(create);
}

CWnd* CHolderView::GetCtrlWnd() const { return m_pCtrlWnd.get(); }
CWnd* CHolderView::GetNotifyWindow() const { return m_pNotifyWnd.get(); }
void CHolderView::setNotifyWindow(CWnd* window) { m_pNotifyWnd.set(window); }

CFlatSplitterWnd* CHolderView::splitter() const {
    return m_hWnd ? dynamic_cast<CFlatSplitterWnd*>(FromHandlePermanent(::GetParent(m_hWnd))) : nullptr;
}

// ---- Title

// A tick comes more often than a paint: one that waits is enough.
void CHolderView::invalidateTitle() {
    if (!m_hWnd) return;
    const DWORD now = ::GetTickCount();
    if (m_waiting && now - m_waitingSince < kPaintPatience) return;
    m_waiting = true;
    m_waitingSince = now;
    Invalidate();
}

void CHolderView::SetTitle(CString title, DWORD color) {
    m_strTitle = ' ';
    m_strTitle += title;
    m_clrTitle = color;
    invalidateTitle();
}

void CHolderView::SetTitleSplit(int length) {
    if (m_titleSplit == length) return;
    m_titleSplit = length;
    invalidateTitle();
}

void CHolderView::SetTitleColor(DWORD color) {
    m_clrTitle = color;
    if (m_hWnd) Invalidate();
}

void CHolderView::SetTitleFont(CFont* font) {
    m_pTitleFont = font;
    if (m_hWnd) Invalidate();
}

void CHolderView::SetStyleZT(DWORD style) {
    m_dwStyleZT = style;
    if (m_hWnd) Invalidate();
}

int CHolderView::GetTopOffset() const {
    const bool strip = !(m_dwStyleZT & HV_PLAIN) && (m_dwStyleZT & (HV_TITLE | HV_TITLE_CLOSE));
    return strip ? m_nTitleHeight : 0;
}

void CHolderView::SetTitleHeight(int height) {
    m_nTitleHeight = height;
    if (!m_hWnd) return;
    placeChild();
    Invalidate();
}

// ---- The child and the close box

void CHolderView::setWnd(CWnd* child) {
    m_pCtrlWnd.set(child);
    m_pCloseButton.reset();
    if (!m_hWnd || !m_pCtrlWnd.get()) return;
    CRect room;
    GetClientRect(&room);
    room.top = std::min(room.top + m_nTitleHeight, room.bottom);
    const HWND self = m_hWnd;
    child->MoveWindow(room);
    if (FromHandlePermanent(self) == this && m_dwStyleZT & HV_TITLE_CLOSE) makeCloseBox();
}

CRect CHolderView::closeBoxPlace() const {
    CRect client;
    GetClientRect(&client);
    const int overlap = scaled(m_hWnd, kCloseBoxOverlap);
    return CRect(client.right - scaled(m_hWnd, kCloseBoxWidth), client.top - overlap, client.right + overlap,
                 m_nTitleHeight);
}

void CHolderView::makeCloseBox() {
    m_pCloseButton = std::make_unique<CClrButton>();
    if (!m_pCloseButton->Create("", kCloseBoxStyle, closeBoxPlace(), this, kCommandCloseHolder)) return;
    m_pCloseButton->SetFont(kCloseBoxFont);
    m_pCloseButton->SetSize(kCloseBoxSize);
    if (!m_closeFont.m_hObject) m_closeFont.CreatePointFont(10 * kCloseBoxPoints, kCloseBoxFont);
    m_pCloseButton->CWnd::SetFont(&m_closeFont);
    m_pCloseButton->SetWindowText("x");
    m_pCloseButton->ShowWindow(SW_SHOW);
    m_pCloseButton->RedrawWindow();
}

// HV_TITLE alone leaves the strip no room: the child covers it.
void CHolderView::placeChild() {
    CRect room;
    GetClientRect(&room);
    if (m_dwStyleZT & HV_TITLE_CLOSE) room.top = std::min(room.top + m_nTitleHeight, room.bottom);
    const HWND self = m_hWnd;
    if (CWnd* child = GetCtrlWnd()) child->MoveWindow(room);
    if (FromHandlePermanent(self) != this || !m_pCloseButton || !m_pCloseButton->m_hWnd) return;
    m_pCloseButton->MoveWindow(closeBoxPlace());
    m_pCloseButton->Invalidate();
}

void CHolderView::OnSize(UINT type, int cx, int cy) {
    CView::OnSize(type, cx, cy);
    if (!(m_dwStyleZT & HV_PLAIN)) return placeChild();
    if (CWnd* notify = GetNotifyWindow())
        notify->SendMessage(WM_HOLDER_SIZED, static_cast<WPARAM>(cx), static_cast<LPARAM>(cy));
}

// The system tells top-level windows only: who gets it passes it on.
void CHolderView::OnSysColorChange() {
    CView::OnSysColorChange();
    m_clrGradientTo = ::GetSysColor(COLOR_BTNSHADOW);
    if (m_pCloseButton && m_pCloseButton->m_hWnd) m_pCloseButton->SendMessage(WM_SYSCOLORCHANGE);
    Invalidate();
}

// ---- Painting

// OnDraw covers all of it.
BOOL CHolderView::OnEraseBkgnd(CDC*) { return TRUE; }

void CHolderView::OnDraw(CDC* dc) {
    m_waiting = false;
    CRect client;
    GetClientRect(&client);
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    if (m_dwStyleZT & HV_PLAIN) return dc->FillSolidRect(client, face);
    CRect drawn = client;
    if (!(m_dwStyleZT & HV_BRICK)) drawn.bottom = std::min<LONG>(client.bottom, GetTopOffset());
    {
        PaintBufferScope buffer(*dc, drawn);
        if (GetTopOffset() > 0) DrawTitleLable(&buffer.dc());
        if (m_dwStyleZT & HV_BRICK) DrawBrickRect(&buffer.dc());
    }
    dc->FillSolidRect(CRect(client.left, drawn.bottom, client.right, client.bottom), face);
    if (CWnd* child = GetCtrlWnd()) child->RedrawWindow(nullptr, nullptr, kRedrawChild);
}

void CHolderView::fillStrip(CDC& dc, CRect strip) {
    const GradientCall fill = m_dwStyleZT & HV_GRADIENT ? gradientCall() : nullptr;
    if (!fill) return dc.FillSolidRect(strip, ::GetSysColor(COLOR_BTNFACE));
    TRIVERTEX corners[] = {corner(strip.left, strip.top, m_clrGradientFrom),
                           corner(strip.right, strip.bottom, m_clrGradientTo)};
    GRADIENT_RECT mesh = {0, 1};
    fill(dc, corners, 2, &mesh, 1, GRADIENT_FILL_RECT_H);
}

void CHolderView::DrawTitleLable(CDC* dc) {
    const DcStateScope state(dc);
    CFont font;
    takeTitleFont(m_hWnd, font);
    const SelectScope selected(dc, &font);
    CRect strip;
    GetClientRect(&strip);
    strip.bottom = strip.top + m_nTitleHeight;
    dc->FillSolidRect(strip, ::GetSysColor(COLOR_BTNFACE));  // what the close box and the inset leave
    if (m_dwStyleZT & HV_TITLE_CLOSE) strip.right -= scaled(m_hWnd, kCloseBoxWidth);
    const bool gradient = (m_dwStyleZT & HV_GRADIENT) != 0;
    if (gradient) strip.DeflateRect(0, 0, 1, 1);
    fillStrip(*dc, strip);
    dc->Draw3dRect(strip, ::GetSysColor(COLOR_BTNHIGHLIGHT), kMiddleGrey);
    dc->SetBkMode(TRANSPARENT);
    dc->SetTextColor(gradient ? kWhite : kBlack);
    dc->DrawText(m_strTitle, strip, kTitleFormat);
}

void CHolderView::DrawBrickRect(CDC* dc) {
    const DcStateScope state(dc);
    CRect area;
    GetClientRect(&area);
    dc->FillSolidRect(area, ::GetSysColor(COLOR_BTNFACE));
    dc->Draw3dRect(area, ::GetSysColor(COLOR_BTNHIGHLIGHT), ::GetSysColor(COLOR_BTNSHADOW));
    if (::GetFocus() == m_hWnd) {
        CRect ring = area;
        ring.DeflateRect(scaled(m_hWnd, kFocusMargin), scaled(m_hWnd, kFocusMargin));
        dc->SetTextColor(kBlack);
        dc->SetBkColor(kWhite);
        dc->DrawFocusRect(ring);
    }
    dc->SetBkMode(TRANSPARENT);
    dc->SetTextColor(m_clrTitle);
    const SelectScope selected(*dc, m_pTitleFont ? m_pTitleFont->m_hObject : nullptr);
    area.DeflateRect(kBrickFrame, kBrickFrame);
    if (m_titleSplit <= 0) {
        dc->DrawText(m_strTitle, area, kTitleFormat);
        return;
    }
    // The value is what matters where there is no room for both.
    const CString value = m_strTitle.Mid(1 + m_titleSplit) + ' ';
    CRect caption = area, right = area;
    right.left = std::max<LONG>(area.left, area.right - dc->GetTextExtent(value).cx);
    caption.right = right.left;
    const CString front = m_strTitle.Left(1 + m_titleSplit);
    // A caption that is cut stays clear of the value; at just the fitting width there is room for all.
    if (dc->GetTextExtent(front).cx > caption.Width()) caption.right -= dc->GetTextExtent(" ", 1).cx;
    if (caption.Width() > 0) dc->DrawText(front, caption, kTitleFormat | DT_END_ELLIPSIS);
    dc->DrawText(value, right, kTitleFormat);
}

int CHolderView::brickTextWidth() const {
    CClientDC dc(const_cast<CHolderView*>(this));
    const SelectScope selected(dc, m_pTitleFont ? m_pTitleFont->m_hObject : nullptr);
    return dc.GetTextExtent(m_strTitle + ' ').cx + 2 * kBrickFrame;
}

CSize CHolderView::GetFittingSize() {
    if (!m_hWnd) return {};
    if (m_dwStyleZT & HV_BRICK) return CSize(brickTextWidth(), 0);
    auto* child = dynamic_cast<CFittingPane*>(GetCtrlWnd());
    if (!child) return {};
    CSize size = child->GetFittingSize();
    if (size.cy > 0 && (m_dwStyleZT & HV_TITLE_CLOSE)) size.cy += m_nTitleHeight;
    return size;
}

INT_PTR CHolderView::OnToolHitTest(CPoint point, TOOLINFO* info) const {
    CRect client;
    GetClientRect(&client);
    const bool clipped = (m_dwStyleZT & HV_BRICK) && client.PtInRect(point) && brickTextWidth() > client.Width();
    if (!clipped) return CView::OnToolHitTest(point, info);
    if (info) {
        info->hwnd = m_hWnd;
        info->uId = kBrickTool;
        info->rect = client;
        info->lpszText = LPSTR_TEXTCALLBACKA;  // the text may have changed when the tip shows
    }
    return kBrickTool;
}
