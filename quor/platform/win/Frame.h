// CFrameWnd: a top-level (or nested) window with a menu, accelerators, a view and control bars. It routes commands to
// its active view, then to itself, then to the application, and keeps menu items up to date when a menu opens.
//
// Frames are made with new: PostNcDestroy deletes the object.
#pragma once

#include "quor/platform/win/Wnd.h"

class CView;

// What a frame gives its first view. All members may be null.
struct CCreateContext {
    CRuntimeClass* m_pNewViewClass = nullptr;
    CView* m_pLastView = nullptr;
    CFrameWnd* m_pCurrentFrame = nullptr;
};

// lParam of WM_SIZEPARENT: a child takes its part of `rect` and defers its move into `hDWP` (null: only measure).
struct AFX_SIZEPARENTPARAMS {
    HDWP hDWP;
    RECT rect;
    SIZE sizeTotal;
    BOOL bStretch;
};

class QUOR_FRAMEWORK_API CFrameWnd : public CWnd {
    DECLARE_DYNCREATE(CFrameWnd)
public:
    CFrameWnd();
    ~CFrameWnd() override;

    // A null class name: the framework's frame class (arrow, window background). `lpszMenuName` names a menu resource.
    virtual BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle = WS_OVERLAPPEDWINDOW,
                        const RECT& rect = rectDefault, CWnd* pParentWnd = nullptr, LPCSTR lpszMenuName = nullptr,
                        DWORD dwExStyle = 0, CCreateContext* pContext = nullptr);
    // Title (string), menu, accelerators and icon are the resources with this id; absent ones are left out.
    virtual BOOL LoadFrame(UINT nIDResource, DWORD dwDefaultStyle = WS_OVERLAPPEDWINDOW, CWnd* pParentWnd = nullptr,
                           CCreateContext* pContext = nullptr);
    // FALSE if a table is loaded already or there is no such resource.
    BOOL LoadAccelTable(LPCSTR lpszResourceName);
    HACCEL m_hAccelTable = nullptr;  // freed by the destructor

    // The system chooses place and size.
    static const CRect rectDefault;

    CView* GetActiveView() const { return m_pViewActive; }
    // Tells both views (OnActivateView). Null: none.
    void SetActiveView(CView* pViewNew, BOOL bNotify = TRUE);
    // A new view of the context's class as a child of the frame; null if it could not be made.
    CWnd* CreateView(CCreateContext* pContext, UINT nID = AFX_IDW_PANE_FIRST);
    // Lays out control bars and gives the rest to the view.
    virtual void RecalcLayout(BOOL bNotify = TRUE);
    virtual void ActivateFrame(int nCmdShow = -1);
    // Sends WM_INITIALUPDATE to all children, then makes the frame visible.
    void InitialUpdateFrame(BOOL bMakeVisible = TRUE);
    void SetTitle(LPCSTR lpszTitle) { m_strTitle = lpszTitle; }
    CString GetTitle() const { return m_strTitle; }
    // The text of a menu command for the status bar: its string resource up to the line end.
    virtual void GetMessageString(UINT nID, CString& rMessage) const;

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;
    BOOL IsFrameWnd() const override { return TRUE; }

protected:
    // Makes the client: the context's view, unless overridden.
    virtual BOOL OnCreateClient(LPCREATESTRUCT lpcs, CCreateContext* pContext);
    void PostNcDestroy() override;

    afx_msg int OnCreate(LPCREATESTRUCT lpcs);
    afx_msg void OnClose();
    afx_msg void OnDestroy();
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnInitMenuPopup(CMenu* pMenu, UINT nIndex, BOOL bSysMenu);
    DECLARE_MESSAGE_MAP()

    BOOL m_bAutoMenuEnable = TRUE;  // items without a handler are disabled
    CString m_strTitle;
    CView* m_pViewActive = nullptr;
};
