#include "quor/platform/win/WndInternal.h"

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
    ON_WM_CREATE()
    ON_WM_CLOSE()
    ON_WM_DESTROY()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_ERASEBKGND()
    ON_WM_INITMENUPOPUP()
END_MESSAGE_MAP()

const CRect CFrameWnd::rectDefault(CW_USEDEFAULT, CW_USEDEFAULT, 0, 0);

CFrameWnd::CFrameWnd() = default;

CFrameWnd::~CFrameWnd() {
    if (m_hAccelTable) ::DestroyAcceleratorTable(m_hAccelTable);
}

BOOL CFrameWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                       LPCSTR lpszMenuName, DWORD dwExStyle, CCreateContext* pContext) {
    HMENU menu = nullptr;
    if (lpszMenuName) {
        menu = ::LoadMenuA(AfxFindResourceHandle(lpszMenuName, RT_MENU), lpszMenuName);
        if (!menu) {
            PostNcDestroy();
            return FALSE;
        }
    }
    m_strTitle = lpszWindowName;
    const bool anywhere = rect.left == CW_USEDEFAULT;
    const int width = anywhere ? CW_USEDEFAULT : rect.right - rect.left;
    const int height = anywhere ? CW_USEDEFAULT : rect.bottom - rect.top;
    const HWND parent = pParentWnd ? pParentWnd->m_hWnd : nullptr;
    const BOOL created = CWnd::CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, width,
                                        height, parent, menu, pContext);
    if (!created && menu) ::DestroyMenu(menu);
    return created;
}

BOOL CFrameWnd::LoadFrame(UINT nIDResource, DWORD dwDefaultStyle, CWnd* pParentWnd, CCreateContext* pContext) {
    const LPCSTR name = MAKEINTRESOURCEA(nIDResource);
    char title[256] = "";
    ::LoadStringA(AfxGetResourceHandle(), nIDResource, title, sizeof(title));
    const bool hasMenu = ::FindResourceA(AfxFindResourceHandle(name, RT_MENU), name, RT_MENU);
    if (!Create(nullptr, title, dwDefaultStyle, rectDefault, pParentWnd, hasMenu ? name : nullptr, 0, pContext))
        return FALSE;
    LoadAccelTable(name);
    if (const HICON icon = ::LoadIconA(AfxFindResourceHandle(name, RT_GROUP_ICON), name)) SetIcon(icon, TRUE);
    InitialUpdateFrame(FALSE);
    return TRUE;
}

BOOL CFrameWnd::LoadAccelTable(LPCSTR lpszResourceName) {
    if (m_hAccelTable) return FALSE;
    m_hAccelTable = ::LoadAcceleratorsA(AfxFindResourceHandle(lpszResourceName, RT_ACCELERATOR), lpszResourceName);
    return m_hAccelTable != nullptr;
}

BOOL CFrameWnd::PreCreateWindow(CREATESTRUCT& cs) {
    if (!cs.lpszClass)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursorA(nullptr, IDC_ARROW),
                                           ::GetSysColorBrush(COLOR_WINDOW), ::LoadIconA(nullptr, IDI_APPLICATION));
    return TRUE;
}

BOOL CFrameWnd::PreTranslateMessage(MSG* pMsg) {
    if (CWnd::PreTranslateMessage(pMsg)) return TRUE;
    const bool key = pMsg->message >= WM_KEYFIRST && pMsg->message <= WM_KEYLAST;
    return key && m_hAccelTable && ::TranslateAcceleratorA(m_hWnd, m_hAccelTable, pMsg);
}

// --- Commands: the view, the frame, the application. ---

BOOL CFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    if (m_pViewActive && m_pViewActive->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) return TRUE;
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) return TRUE;
    return AfxGetApp() && AfxGetApp()->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CFrameWnd::OnInitMenuPopup(CMenu* pMenu, UINT, BOOL bSysMenu) {
    if (bSysMenu) return;
    CCmdUI state;
    state.m_pMenu = pMenu;
    state.m_nIndexMax = static_cast<UINT>(::GetMenuItemCount(*pMenu));
    for (state.m_nIndex = 0; state.m_nIndex < state.m_nIndexMax; ++state.m_nIndex) {
        state.m_nID = ::GetMenuItemID(*pMenu, static_cast<int>(state.m_nIndex));
        const bool opensMenu = state.m_nID == static_cast<UINT>(-1);
        if (state.m_nID == 0 || opensMenu) continue;  // separators and submenus keep their look
        state.DoUpdate(this, m_bAutoMenuEnable && state.m_nID < 0xF000);
    }
}

void CFrameWnd::GetMessageString(UINT nID, CString& rMessage) const {
    char text[512] = "";
    ::LoadStringA(AfxGetResourceHandle(), nID, text, sizeof(text));
    rMessage = text;
    const int end = rMessage.Find('\n');
    if (end >= 0) rMessage.Truncate(end);
}

// --- Views and layout ---

void CFrameWnd::SetActiveView(CView* pViewNew, BOOL bNotify) {
    CView* former = m_pViewActive;
    if (pViewNew == former) return;
    m_pViewActive = nullptr;
    if (former && bNotify) former->OnActivateView(FALSE, pViewNew, former);
    if (m_pViewActive) return;  // the former view chose another
    m_pViewActive = pViewNew;
    if (pViewNew && bNotify) pViewNew->OnActivateView(TRUE, pViewNew, former);
}

CWnd* CFrameWnd::CreateView(CCreateContext* pContext, UINT nID) {
    CObject* object = pContext && pContext->m_pNewViewClass ? pContext->m_pNewViewClass->CreateObject() : nullptr;
    auto* view = dynamic_cast<CWnd*>(object);
    if (!view) {
        delete object;
        return nullptr;
    }
    if (!view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, CRect(0, 0, 0, 0), this, nID,
                      pContext))
        return nullptr;  // deleted itself
    return view;
}

BOOL CFrameWnd::OnCreateClient(LPCREATESTRUCT, CCreateContext* pContext) {
    return !pContext || !pContext->m_pNewViewClass || CreateView(pContext);
}

void CFrameWnd::RecalcLayout(BOOL) {
    if (!IsIconic()) RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST);
}

void CFrameWnd::ActivateFrame(int nCmdShow) {
    if (nCmdShow == -1) nCmdShow = !IsWindowVisible() ? SW_SHOWNORMAL : IsIconic() ? SW_RESTORE : -1;
    if (nCmdShow == -1) return;
    BringWindowToTop();
    ShowWindow(nCmdShow);
    BringWindowToTop();
}

void CFrameWnd::InitialUpdateFrame(BOOL bMakeVisible) {
    if (!m_pViewActive)
        SetActiveView(dynamic_cast<CView*>(FromHandlePermanent(::GetDlgItem(m_hWnd, AFX_IDW_PANE_FIRST))), FALSE);
    SendMessageToDescendants(WM_INITIALUPDATE, 0, 0, TRUE, TRUE);
    if (bMakeVisible) {
        ActivateFrame(AfxGetApp() && AfxGetApp()->m_pMainWnd == this ? AfxGetApp()->m_nCmdShow : -1);
        if (m_pViewActive) m_pViewActive->OnActivateView(TRUE, m_pViewActive, m_pViewActive);
    }
}

// --- Messages ---

int CFrameWnd::OnCreate(LPCREATESTRUCT lpcs) {
    if (CWnd::OnCreate(lpcs) == -1) return -1;
    // Children of other frames get their parameters from elsewhere.
    auto* context = GetStyle() & WS_CHILD ? nullptr : static_cast<CCreateContext*>(lpcs->lpCreateParams);
    if (!OnCreateClient(lpcs, context)) return -1;
    RecalcLayout();
    return 0;
}

void CFrameWnd::OnClose() { DestroyWindow(); }

void CFrameWnd::OnDestroy() {
    m_pViewActive = nullptr;
    CWnd::OnDestroy();
}

void CFrameWnd::OnSize(UINT nType, int cx, int cy) {
    CWnd::OnSize(nType, cx, cy);
    if (nType != SIZE_MINIMIZED) RecalcLayout();
}

void CFrameWnd::OnSetFocus(CWnd* pOldWnd) {
    if (m_pViewActive)
        m_pViewActive->SetFocus();
    else
        CWnd::OnSetFocus(pOldWnd);
}

// The view covers the client area; erasing it would flicker.
BOOL CFrameWnd::OnEraseBkgnd(CDC* pDC) { return m_pViewActive ? TRUE : CWnd::OnEraseBkgnd(pDC); }

void CFrameWnd::PostNcDestroy() { delete this; }
