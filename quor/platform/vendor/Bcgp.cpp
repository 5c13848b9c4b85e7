#include "quor/platform/win/WndInternal.h"

#include <algorithm>
#include <memory>
#include <vector>

IMPLEMENT_DYNCREATE(CBCGPVisualManager, CObject)
IMPLEMENT_DYNCREATE(CBCGPVisualManagerXP, CBCGPVisualManager)
IMPLEMENT_DYNCREATE(CBCGPWinXPVisualManager, CBCGPVisualManager)
IMPLEMENT_DYNCREATE(CBCGPVisualManager2003, CBCGPVisualManager)
IMPLEMENT_DYNCREATE(CBCGPVisualManagerVS2005, CBCGPVisualManager)
IMPLEMENT_DYNCREATE(CBCGPVisualManager2007, CBCGPVisualManager)
IMPLEMENT_DYNAMIC(CBCGPDialog, CDialog)
IMPLEMENT_DYNAMIC(CBCGPFormView, CFormView)
IMPLEMENT_DYNCREATE(CBCGPDialogBar, CWnd)
IMPLEMENT_DYNCREATE(CBCGPMiniFrameWnd, CWnd)
IMPLEMENT_DYNAMIC(CBCGPButton, CButton)

UINT BCGM_CHANGEVISUALMANAGER = ::RegisterWindowMessageA("BCGM_CHANGEVISUALMANAGER");

// --- Visual managers -----------------------------------------------------------------------------------------------

namespace {
std::unique_ptr<CObject> currentManager;
CBCGPVisualManager2007::Style style2007 = CBCGPVisualManager2007::VS2007_LunaBlue;
}  // namespace

CBCGPVisualManager::CBCGPVisualManager() = default;
CBCGPVisualManager::~CBCGPVisualManager() = default;

CBCGPVisualManager* CBCGPVisualManager::GetInstance() { return static_cast<CBCGPVisualManager*>(currentManager.get()); }

void CBCGPVisualManager::SetDefaultManager(CRuntimeClass* pRTI) {
    std::unique_ptr<CObject> made(pRTI ? pRTI->CreateObject() : nullptr);
    if (made && !made->IsKindOf(RUNTIME_CLASS(CBCGPVisualManager))) made.reset();
    currentManager = std::move(made);
}

void CBCGPVisualManager::DestroyInstance() { currentManager.reset(); }

void CBCGPVisualManager2007::SetStyle(Style style) { style2007 = style; }
CBCGPVisualManager2007::Style CBCGPVisualManager2007::GetStyle() { return style2007; }

// --- Dialog --------------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CBCGPDialog, CDialog)
    ON_REGISTERED_MESSAGE(BCGM_CHANGEVISUALMANAGER, &CBCGPDialog::OnChangeVisualManager)
END_MESSAGE_MAP()

CBCGPDialog::CBCGPDialog() = default;
CBCGPDialog::CBCGPDialog(UINT nIDTemplate, CWnd* pParent) : CDialog(nIDTemplate, pParent) {}
CBCGPDialog::CBCGPDialog(LPCSTR lpszTemplateName, CWnd* pParent) : CDialog(lpszTemplateName, pParent) {}

CBCGPDialog::~CBCGPDialog() = default;

void CBCGPDialog::EnableLoadWindowPlacement(BOOL bEnable, LPCSTR lpszProfileSection) {
    m_loadPlacement = bEnable;
    if (lpszProfileSection) m_profileSection = lpszProfileSection;
}

LRESULT CBCGPDialog::OnChangeVisualManager(WPARAM, LPARAM) {
    if (IsWindowVisible()) RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    return 0;
}

// --- Form view -----------------------------------------------------------------------------------------------------

CBCGPFormView::CBCGPFormView(LPCSTR lpszTemplateName) : CFormView(lpszTemplateName) {}
CBCGPFormView::CBCGPFormView(UINT nIDTemplate) : CFormView(nIDTemplate) {}
CBCGPFormView::~CBCGPFormView() = default;

// --- Dialog bar ----------------------------------------------------------------------------------------------------

BEGIN_MESSAGE_MAP(CBCGPDialogBar, CWnd)
    ON_MESSAGE(WM_SIZEPARENT, &CBCGPDialogBar::OnSizeParent)
END_MESSAGE_MAP()

CBCGPDialogBar::CBCGPDialogBar() = default;
CBCGPDialogBar::~CBCGPDialogBar() {
    if (m_hWnd) DestroyWindow();
}

BOOL CBCGPDialogBar::Create(CWnd* pParentWnd, UINT nIDTemplate, UINT nStyle, UINT nID) {
    return Create(pParentWnd, MAKEINTRESOURCEA(nIDTemplate), nStyle, nID);
}

BOOL CBCGPDialogBar::Create(CWnd* pParentWnd, LPCSTR lpszTemplateName, UINT nStyle, UINT nID) {
    const HINSTANCE module = AfxFindResourceHandle(lpszTemplateName, RT_DIALOG);
    if (!quor::createFromTemplate(*this, quor::dialogTemplate(module, lpszTemplateName), pParentWnd, module))
        return FALSE;
    m_side = nStyle & (CBRS_LEFT | CBRS_TOP | CBRS_RIGHT | CBRS_BOTTOM);
    SetDlgCtrlID(static_cast<int>(nID));
    SetOwner(pParentWnd);
    if (nStyle & WS_VISIBLE) ShowWindow(SW_SHOWNA);
    return TRUE;
}

BOOL CBCGPDialogBar::PreTranslateMessage(MSG* pMsg) {
    if (CWnd::PreTranslateMessage(pMsg)) return TRUE;
    return quor::isInput(*pMsg) && IsDialogMessage(pMsg);
}

// Takes its strip off the frame's rectangle.
LRESULT CBCGPDialogBar::OnSizeParent(WPARAM, LPARAM lParam) {
    auto& layout = *reinterpret_cast<AFX_SIZEPARENTPARAMS*>(lParam);
    CRect own;
    GetWindowRect(&own);
    CRect place(layout.rect);
    switch (m_side) {
        case CBRS_LEFT:
            layout.rect.left = place.right = place.left + own.Width();
            break;
        case CBRS_RIGHT:
            layout.rect.right = place.left = place.right - own.Width();
            break;
        case CBRS_TOP:
            layout.rect.top = place.bottom = place.top + own.Height();
            break;
        case CBRS_BOTTOM:
            layout.rect.bottom = place.top = place.bottom - own.Height();
            break;
        default:
            return 0;
    }
    if (layout.hDWP)
        layout.hDWP = ::DeferWindowPos(layout.hDWP, m_hWnd, nullptr, place.left, place.top, place.Width(),
                                       place.Height(), SWP_NOACTIVATE | SWP_NOZORDER);
    return 0;
}

// --- Mini frame ----------------------------------------------------------------------------------------------------

namespace {
std::vector<CBCGPMiniFrameWnd*> miniFrames;  // those with a window
}

BEGIN_MESSAGE_MAP(CBCGPMiniFrameWnd, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CBCGPMiniFrameWnd::CBCGPMiniFrameWnd() = default;
CBCGPMiniFrameWnd::~CBCGPMiniFrameWnd() {
    if (m_hWnd) DestroyWindow();
}

BOOL CBCGPMiniFrameWnd::CreateEx(DWORD dwStyleEx, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                                 CWnd* pParentWnd) {
    const LPCSTR name =
        AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW), ::GetSysColorBrush(COLOR_BTNFACE));
    return CWnd::CreateEx(dwStyleEx | WS_EX_TOOLWINDOW, name, lpszWindowName, dwStyle | WS_POPUP | WS_CAPTION, rect,
                          pParentWnd, 0);
}

CWnd* CBCGPMiniFrameWnd::FindFloatingBarByID(UINT uBarID) {
    for (const CBCGPMiniFrameWnd* frame : miniFrames)
        if (CWnd* bar = frame->GetDescendantWindow(static_cast<int>(uBarID))) return bar;
    return nullptr;
}

int CBCGPMiniFrameWnd::OnCreate(LPCREATESTRUCT lpcs) {
    miniFrames.push_back(this);
    return CWnd::OnCreate(lpcs);
}

void CBCGPMiniFrameWnd::OnDestroy() {
    std::erase(miniFrames, this);
    CWnd::OnDestroy();
}

// --- Button and message box ----------------------------------------------------------------------------------------

CBCGPButton::CBCGPButton() = default;
CBCGPButton::~CBCGPButton() = default;

void CBCGPButton::SetTooltip(LPCSTR text) {
    m_tooltip = text;
    EnableToolTips(!m_tooltip.IsEmpty());
}

INT_PTR CBCGPButton::OnToolHitTest(CPoint point, TOOLINFO* pTI) const {
    CRect client;
    GetClientRect(&client);
    if (m_tooltip.IsEmpty() || !client.PtInRect(point)) return -1;
    if (pTI) {
        pTI->hwnd = m_hWnd;
        pTI->uId = 1;
        pTI->rect = client;
        pTI->lpszText = const_cast<LPSTR>(m_tooltip.GetString());
    }
    return 1;
}

int BCGPMessageBox(HWND hwndOwner, LPCSTR lpszText, LPCSTR lpszCaption, UINT uiFlags) {
    return ::MessageBoxA(hwndOwner, lpszText, lpszCaption ? lpszCaption : AfxGetAppName(), uiFlags);
}
