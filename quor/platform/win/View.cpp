#include "quor/platform/win/WndInternal.h"

IMPLEMENT_DYNAMIC(CView, CWnd)
IMPLEMENT_DYNAMIC(CScrollView, CView)
IMPLEMENT_DYNAMIC(CFormView, CScrollView)

// --- CView ---------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CView, CWnd)
    ON_WM_DESTROY()
    ON_WM_PAINT()
    ON_WM_MOUSEACTIVATE()
    ON_MESSAGE(WM_INITIALUPDATE, &CView::OnInitialUpdateMessage)
    ON_COMMAND_EX(ID_WINDOW_SPLIT, &CView::OnSplitCmd)
    ON_UPDATE_COMMAND_UI(ID_WINDOW_SPLIT, &CView::OnUpdateSplitCmd)
END_MESSAGE_MAP()

CView::CView() = default;
CView::~CView() = default;

BOOL CView::PreCreateWindow(CREATESTRUCT& cs) {
    if (!cs.lpszClass)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursorA(nullptr, IDC_ARROW),
                                           ::GetSysColorBrush(COLOR_WINDOW));
    return TRUE;
}

void CView::OnInitialUpdate() { OnUpdate(nullptr, 0, nullptr); }
void CView::OnUpdate(CView*, LPARAM, CObject*) { Invalidate(); }
void CView::OnPrepareDC(CDC*) {}

void CView::OnActivateView(BOOL bActivate, CView*, CView*) {
    const HWND focus = ::GetFocus();
    const bool hasFocus = focus && (focus == m_hWnd || ::IsChild(m_hWnd, focus));
    if (bActivate && !hasFocus && GetTopLevelParent()->m_hWnd == ::GetActiveWindow()) SetFocus();
}

void CView::PostNcDestroy() { delete this; }

void CView::OnDestroy() {
    CFrameWnd* frame = GetParentFrame();
    if (frame && frame->GetActiveView() == this) frame->SetActiveView(nullptr);
    CWnd::OnDestroy();
}

void CView::OnPaint() {
    CPaintDC dc(this);
    OnPrepareDC(&dc);
    OnDraw(&dc);
}

int CView::OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message) {
    const int answer = CWnd::OnMouseActivate(pDesktopWnd, nHitTest, message);
    if (answer == MA_NOACTIVATE || answer == MA_NOACTIVATEANDEAT) return answer;
    if (CFrameWnd* frame = GetParentFrame()) frame->SetActiveView(this);
    return answer;
}

LRESULT CView::OnInitialUpdateMessage(WPARAM, LPARAM) {
    OnInitialUpdate();
    return 0;
}

namespace {

CSplitterWnd* splitterAround(const CWnd& view) {
    for (HWND parent = ::GetParent(view); parent; parent = ::GetParent(parent))
        if (auto* splitter = dynamic_cast<CSplitterWnd*>(CWnd::FromHandlePermanent(parent))) return splitter;
    return nullptr;
}

}  // namespace

BOOL CView::OnSplitCmd(UINT) {
    CSplitterWnd* splitter = splitterAround(*this);
    return splitter && splitter->DoKeyboardSplit();
}

void CView::OnUpdateSplitCmd(CCmdUI* pCmdUI) { pCmdUI->Enable(splitterAround(*this) != nullptr); }

// --- CScrollView ---------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CScrollView, CView)
    ON_WM_SIZE()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

CScrollView::CScrollView() = default;
CScrollView::~CScrollView() = default;

void CScrollView::SetScrollSizes(int, SIZE sizeTotal, const SIZE& sizePage, const SIZE& sizeLine) {
    m_total = sizeTotal;
    m_page = CSize(sizePage.cx ? sizePage.cx : sizeTotal.cx / 10, sizePage.cy ? sizePage.cy : sizeTotal.cy / 10);
    m_line = CSize(sizeLine.cx ? sizeLine.cx : m_page.cx / 10, sizeLine.cy ? sizeLine.cy : m_page.cy / 10);
    if (m_hWnd) updateBars();
}

void CScrollView::updateBars() {
    if (m_total.cx == 0 && m_total.cy == 0) return;
    const CPoint before = GetScrollPosition();
    for (const int bar : {SB_HORZ, SB_VERT}) {
        CRect client;  // the other bar may have changed it
        GetClientRect(&client);
        SCROLLINFO info{};
        info.nMax = std::max(0, static_cast<int>(bar == SB_HORZ ? m_total.cx : m_total.cy) - 1);
        info.nPage = static_cast<UINT>(bar == SB_HORZ ? client.Width() : client.Height());
        info.cbSize = sizeof(info);
        info.fMask = SIF_RANGE | SIF_PAGE;
        ::SetScrollInfo(m_hWnd, bar, &info, TRUE);
    }
    const CPoint after = GetScrollPosition();
    if (before != after) ScrollWindow(before.x - after.x, before.y - after.y);
}

CPoint CScrollView::GetScrollPosition() const { return CPoint(GetScrollPos(SB_HORZ), GetScrollPos(SB_VERT)); }

void CScrollView::ScrollToPosition(POINT pt) {
    const CPoint before = GetScrollPosition();
    SetScrollPos(SB_HORZ, pt.x);
    SetScrollPos(SB_VERT, pt.y);
    const CPoint after = GetScrollPosition();
    if (before != after) ScrollWindow(before.x - after.x, before.y - after.y);
}

void CScrollView::OnPrepareDC(CDC* pDC) {
    const CPoint position = GetScrollPosition();
    ::SetViewportOrgEx(pDC->m_hDC, -position.x, -position.y, nullptr);
}

void CScrollView::OnSize(UINT nType, int cx, int cy) {
    CView::OnSize(nType, cx, cy);
    updateBars();
}

void CScrollView::scrollBy(int bar, int code) {
    SCROLLINFO info{};
    GetScrollInfo(bar, &info);
    const bool horizontal = bar == SB_HORZ;
    const int line = std::max(1, static_cast<int>(horizontal ? m_line.cx : m_line.cy));
    const int page = std::max(1, static_cast<int>(horizontal ? m_page.cx : m_page.cy));
    int position = info.nPos;
    switch (code) {
        case SB_TOP:
            position = info.nMin;
            break;
        case SB_BOTTOM:
            position = info.nMax;
            break;
        case SB_LINEUP:
            position -= line;
            break;
        case SB_LINEDOWN:
            position += line;
            break;
        case SB_PAGEUP:
            position -= page;
            break;
        case SB_PAGEDOWN:
            position += page;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            position = info.nTrackPos;
            break;
        default:
            return;
    }
    CPoint target = GetScrollPosition();
    (horizontal ? target.x : target.y) = position;
    ScrollToPosition(target);
}

void CScrollView::OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar) {
    if (pScrollBar)
        CView::OnHScroll(nSBCode, nPos, pScrollBar);
    else
        scrollBy(SB_HORZ, static_cast<int>(nSBCode));
}

void CScrollView::OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar) {
    if (pScrollBar)
        CView::OnVScroll(nSBCode, nPos, pScrollBar);
    else
        scrollBy(SB_VERT, static_cast<int>(nSBCode));
}

BOOL CScrollView::OnMouseWheel(UINT nFlags, short zDelta, CPoint pt) {
    if (!(GetStyle() & WS_VSCROLL)) return CView::OnMouseWheel(nFlags, zDelta, pt);
    for (int step = 0; step < 3; ++step) scrollBy(SB_VERT, zDelta > 0 ? SB_LINEUP : SB_LINEDOWN);
    return TRUE;
}

// --- CFormView -----------------------------------------------------------------------------------------------------

CFormView::CFormView(LPCSTR lpszTemplateName) : m_lpszTemplateName(lpszTemplateName) {}
CFormView::CFormView(UINT nIDTemplate) : m_lpszTemplateName(MAKEINTRESOURCEA(nIDTemplate)) {}
CFormView::~CFormView() = default;

BOOL CFormView::Create(LPCSTR, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID,
                       CCreateContext*) {
    const HINSTANCE module = AfxFindResourceHandle(m_lpszTemplateName, RT_DIALOG);
    if (!quor::createFromTemplate(*this, quor::dialogTemplate(module, m_lpszTemplateName), pParentWnd, module))
        return FALSE;
    CRect natural;
    GetClientRect(&natural);
    if (m_lpszTemplateName) SetScrollSizes(MM_TEXT, natural.Size());
    SetDlgCtrlID(static_cast<int>(nID));
    ModifyStyle(WS_VISIBLE, dwStyle & ~static_cast<DWORD>(WS_VISIBLE));
    if (lpszWindowName) SetWindowText(lpszWindowName);
    const CRect place(rect);
    SetWindowPos(nullptr, place.left, place.top, place.Width(), place.Height(),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED | (dwStyle & WS_VISIBLE ? SWP_SHOWWINDOW : 0u));
    return TRUE;
}

void CFormView::OnDraw(CDC*) {}

void CFormView::OnInitialUpdate() {
    UpdateData(FALSE);
    CScrollView::OnInitialUpdate();
}

// The frames come first: the dialog keys would eat their accelerators.
BOOL CFormView::PreTranslateMessage(MSG* pMsg) {
    if (CScrollView::PreTranslateMessage(pMsg)) return TRUE;
    if (!quor::isInput(*pMsg)) return FALSE;
    for (CFrameWnd* frame = GetParentFrame(); frame; frame = frame->GetParentFrame())
        if (frame->PreTranslateMessage(pMsg)) return TRUE;
    return IsDialogMessage(pMsg);
}
