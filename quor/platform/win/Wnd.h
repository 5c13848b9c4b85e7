// CWnd: a C++ object for a window, the base of every control, dialog, view and frame.
//
// Attached objects are permanent: one object to a handle, found by FromHandlePermanent, FromHandle, GetParent,
// GetOwner. For a foreign handle FromHandle makes a temporary object, valid until the message loop is idle again: use
// it at once, never keep it. An object attaches inside CreateWindow, before the window's first message (a hook), or by
// SubclassWindow/SubclassDlgItem; then every message runs through WindowProc:
//
//     WindowProc -> OnWndMsg -> OnCommand | OnNotify | message map -> DefWindowProc (the control's own procedure)
//
// A parent offers WM_NOTIFY and WM_COMMAND to the control that sent them first (OnChildNotify). WM_DRAWITEM,
// WM_MEASUREITEM, WM_COMPAREITEM, WM_DELETEITEM, WM_HSCROLL, WM_VSCROLL and WM_CTLCOLOR go to the parent's own map
// first; the handlers of CWnd (OnDrawItem and so on) hand them to the control.
//
// A destructor destroys the window that is still attached. One GUI thread: nothing here is locked. An exception that
// leaves a handler cannot cross the system's frames: it is kept and thrown again from the CWnd call, or the turn of the
// pump, that sent the message (a CException goes to CWinApp::ProcessWndProcException if there is an application).
#pragma once

#include "quor/platform/base/Geometry.h"
#include "quor/platform/base/Strings.h"
#include "quor/platform/win/CmdTarget.h"

#include <commctrl.h>

#undef GetNextWindow  // a macro of the system's header that would eat the member

class CBitmap;
class CDataExchange;
class CDC;
class CFont;
class CFrameWnd;
class CMenu;
class CRgn;
class CScrollBar;
class CWnd;
struct CCreateContext;
namespace quor {
struct WindowCore;
}

// Bits of CWnd::m_nFlags.
constexpr UINT WF_TOOLTIPS = 0x0001;       // EnableToolTips is on
constexpr UINT WF_MODALLOOP = 0x0008;      // inside RunModalLoop
constexpr UINT WF_CONTINUEMODAL = 0x0010;  // the loop goes on
constexpr UINT WF_TEMPORARY = 0x0100;      // made by FromHandle

// Flags of RunModalLoop.
constexpr DWORD MLF_SHOWONIDLE = 0x0002;

// Sent to a control bar's parent chain by the layout of a frame; lParam is an AFX_SIZEPARENTPARAMS.
constexpr UINT WM_SIZEPARENT = 0x0361;
constexpr UINT WM_IDLEUPDATECMDUI = 0x0363;
constexpr UINT WM_KICKIDLE = 0x036A;
constexpr UINT WM_INITIALUPDATE = 0x0364;

// Ids of a frame's own children.
constexpr UINT AFX_IDW_CONTROLBAR_FIRST = 0xE800;
constexpr UINT AFX_IDW_STATUS_BAR = 0xE801;
constexpr UINT AFX_IDW_CONTROLBAR_LAST = 0xE8FF;
constexpr UINT AFX_IDW_PANE_FIRST = 0xE900;
constexpr UINT AFX_IDW_PANE_LAST = 0xE9FF;

// A window class with these attributes and the system's default procedure, registered at first use; the name is kept
// for the life of the process. Throws CResourceException if the class cannot be registered.
QUOR_FRAMEWORK_API LPCSTR AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor = nullptr,
                                              HBRUSH hbrBackground = nullptr, HICON hIcon = nullptr);
// Registers a class and remembers it; TRUE also if it is registered already.
QUOR_FRAMEWORK_API BOOL AfxRegisterClass(WNDCLASSA* lpWndClass);
// The next window created on this thread is `pWnd`'s. Unhook says whether it took its window.
QUOR_FRAMEWORK_API void AfxHookWindowCreate(CWnd* pWnd);
QUOR_FRAMEWORK_API BOOL AfxUnhookWindowCreate();
// The window procedure of every attached window.
QUOR_FRAMEWORK_API LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);

class QUOR_FRAMEWORK_API CWnd : public CCmdTarget {
    DECLARE_DYNCREATE(CWnd)
public:
    CWnd();
    ~CWnd() override;

    HWND m_hWnd = nullptr;  // first data member; null without a window
    UINT m_nFlags = 0;      // WF_ bits

    operator HWND() const { return m_hWnd; }
    BOOL operator==(const CWnd& wnd) const { return m_hWnd == wnd.m_hWnd; }
    // Not to be called on a null pointer.
    HWND GetSafeHwnd() const { return m_hWnd; }

    // --- Handles and objects. ---
    static CWnd* FromHandle(HWND hWnd);  // null for null
    static CWnd* FromHandlePermanent(HWND hWnd);
    // Frees the temporary objects. The pump calls it when idle at its outermost level.
    static void DeleteTempMap();
    // Makes this the permanent object of `hWnd`; FALSE for a null handle, or if either side is taken. Messages are not
    // taken over: that is what SubclassWindow does.
    BOOL Attach(HWND hWnd);
    HWND Detach();
    // Attaches and takes over the messages. FALSE if it cannot be attached.
    BOOL SubclassWindow(HWND hWnd);
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    // Gives the messages back and detaches; the window lives on.
    HWND UnsubclassWindow();

    // --- Creation and end. ---
    virtual BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                        UINT nID, CCreateContext* pContext = nullptr);
    virtual BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                          CWnd* pParentWnd, UINT nID, LPVOID lpParam = nullptr);
    virtual BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, int x, int y,
                          int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam = nullptr);
    // FALSE ends the creation. May replace class and styles; a null class name becomes the framework's own class.
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);
    // Runs when the object has its handle and before it takes over the messages: inside Create the control does not
    // answer yet.
    virtual void PreSubclassWindow();
    virtual BOOL DestroyWindow();
    // The last call on an object whose window is gone; may `delete this`.
    virtual void PostNcDestroy();

    // --- Messages. ---
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // Default processing of the message being handled, with its original arguments.
    LRESULT Default();
    // The message being handled (all zero outside); its time and point are filled on request.
    static const MSG* GetCurrentMessage();
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    // TRUE when the message was eaten by a PreTranslateMessage between its window and `hWndStop` (or a top-level one).
    static BOOL WalkPreTranslateTree(HWND hWndStop, MSG* pMsg);
    // What a parent hands back to this control; TRUE ends it. `pResult` is the message's answer.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    BOOL SendChildNotifyLastMsg(LRESULT* pResult = nullptr);
    static BOOL ReflectLastMsg(HWND hWndChild, LRESULT* pResult = nullptr);
    BOOL ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::PostMessageA(m_hWnd, message, wParam, lParam);
    }
    BOOL SendNotifyMessage(UINT message, WPARAM wParam, LPARAM lParam) {
        return ::SendNotifyMessageA(m_hWnd, message, wParam, lParam);
    }
    void SendMessageToDescendants(UINT message, WPARAM wParam = 0, LPARAM lParam = 0, BOOL bDeep = TRUE,
                                  BOOL bOnlyPerm = FALSE);

    // Runs the pump until EndModalLoop; returns its argument, -1 when the application quits.
    int RunModalLoop(DWORD dwFlags = 0);
    virtual void EndModalLoop(int nResult);
    virtual BOOL ContinueModal();

    // --- Text. ---
    void SetWindowText(LPCSTR lpszString);
    int GetWindowText(LPSTR lpszString, int nMaxCount) const { return ::GetWindowTextA(m_hWnd, lpszString, nMaxCount); }
    void GetWindowText(CString& rString) const;
    int GetWindowTextLength() const { return ::GetWindowTextLengthA(m_hWnd); }
    void SetFont(CFont* pFont, BOOL bRedraw = TRUE);
    CFont* GetFont() const;

    // --- State, style, place. ---
    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongPtrA(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongPtrA(m_hWnd, GWL_EXSTYLE)); }
    // TRUE if something changed; with nFlags a SetWindowPos without move, size or order follows.
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    BOOL ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    BOOL IsIconic() const { return ::IsIconic(m_hWnd); }
    BOOL IsZoomed() const { return ::IsZoomed(m_hWnd); }
    BOOL IsChild(const CWnd* pWnd) const { return ::IsChild(m_hWnd, pWnd->m_hWnd); }
    BOOL ShowWindow(int nCmdShow);
    BOOL EnableWindow(BOOL bEnable = TRUE);
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE);
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);
    void BringWindowToTop() { ::BringWindowToTop(m_hWnd); }
    void GetClientRect(LPRECT lpRect) const { ::GetClientRect(m_hWnd, lpRect); }
    void GetWindowRect(LPRECT lpRect) const { ::GetWindowRect(m_hWnd, lpRect); }
    BOOL GetWindowPlacement(WINDOWPLACEMENT* lpwndpl) const;
    BOOL SetWindowPlacement(const WINDOWPLACEMENT* lpwndpl) { return ::SetWindowPlacement(m_hWnd, lpwndpl); }
    int SetWindowRgn(HRGN hRgn, BOOL bRedraw) { return ::SetWindowRgn(m_hWnd, hRgn, bRedraw); }
    void ClientToScreen(LPPOINT lpPoint) const { ::ClientToScreen(m_hWnd, lpPoint); }
    void ClientToScreen(LPRECT lpRect) const {
        ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<POINT*>(lpRect), 2);
    }
    void ScreenToClient(LPPOINT lpPoint) const { ::ScreenToClient(m_hWnd, lpPoint); }
    void ScreenToClient(LPRECT lpRect) const {
        ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(lpRect), 2);
    }
    void MapWindowPoints(CWnd* pWndTo, LPPOINT lpPoint, UINT nCount) const;
    void MapWindowPoints(CWnd* pWndTo, LPRECT lpRect) const;
    // Over the given window, its owner (a popup) or its parent; the monitor's work area where there is neither.
    void CenterWindow(CWnd* pAlternateOwner = nullptr);
    HICON SetIcon(HICON hIcon, BOOL bBigIcon);
    HICON GetIcon(BOOL bBigIcon) const;

    // --- Painting. ---
    void Invalidate(BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, bErase); }
    void InvalidateRect(LPCRECT lpRect, BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, lpRect, bErase); }
    void ValidateRect(LPCRECT lpRect) { ::ValidateRect(m_hWnd, lpRect); }
    BOOL GetUpdateRect(LPRECT lpRect, BOOL bErase = FALSE) { return ::GetUpdateRect(m_hWnd, lpRect, bErase); }
    void UpdateWindow();
    BOOL RedrawWindow(LPCRECT lpRectUpdate = nullptr, CRgn* prgnUpdate = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
    void SetRedraw(BOOL bRedraw = TRUE) { ::SendMessageA(m_hWnd, WM_SETREDRAW, static_cast<WPARAM>(bRedraw), 0); }
    // Temporary or permanent; each Get needs its ReleaseDC.
    CDC* GetDC();
    CDC* GetWindowDC();
    int ReleaseDC(CDC* pDC);
    CDC* BeginPaint(LPPAINTSTRUCT lpPaint);
    void EndPaint(LPPAINTSTRUCT lpPaint) { ::EndPaint(m_hWnd, lpPaint); }
    BOOL LockWindowUpdate() { return ::LockWindowUpdate(m_hWnd); }
    static void UnlockWindowUpdate() { ::LockWindowUpdate(nullptr); }

    // --- Family. ---
    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    CWnd* SetParent(CWnd* pWndNewParent);
    // The owner that was set, else the parent. It receives the commands of a window.
    CWnd* GetOwner() const;
    void SetOwner(CWnd* pOwnerWnd);
    // The topmost parent (through owners), or this window if it has none.
    CWnd* GetTopLevelParent() const;
    // The topmost window that is not a child of another, without going through owners.
    CWnd* GetTopLevelOwner() const;
    CFrameWnd* GetParentFrame() const;
    CFrameWnd* GetTopLevelFrame() const;
    CWnd* GetLastActivePopup() const { return FromHandle(::GetLastActivePopup(m_hWnd)); }
    CWnd* GetTopWindow() const { return FromHandle(::GetTopWindow(m_hWnd)); }
    CWnd* GetWindow(UINT nCmd) const { return FromHandle(::GetWindow(m_hWnd, nCmd)); }
    CWnd* GetNextWindow(UINT nFlag = GW_HWNDNEXT) const { return FromHandle(::GetWindow(m_hWnd, nFlag)); }
    CWnd* ChildWindowFromPoint(POINT point) const { return FromHandle(::ChildWindowFromPoint(m_hWnd, point)); }
    CWnd* ChildWindowFromPoint(POINT point, UINT nFlags) const {
        return FromHandle(::ChildWindowFromPointEx(m_hWnd, point, nFlags));
    }
    // Searches the children first, then theirs. With bOnlyPerm only permanent objects count.
    CWnd* GetDescendantWindow(int nID, BOOL bOnlyPerm = FALSE) const;
    // Who should own a dialog: the top-level window of `pParent` (or of the main window), or its active popup.
    static CWnd* GetSafeOwner(CWnd* pParent = nullptr);
    static CWnd* GetDesktopWindow() { return FromHandle(::GetDesktopWindow()); }
    static CWnd* GetForegroundWindow() { return FromHandle(::GetForegroundWindow()); }
    BOOL SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }
    static CWnd* GetActiveWindow() { return FromHandle(::GetActiveWindow()); }
    CWnd* SetActiveWindow() { return FromHandle(::SetActiveWindow(m_hWnd)); }
    static CWnd* FindWindow(LPCSTR lpszClassName, LPCSTR lpszWindowName) {
        return FromHandle(::FindWindowA(lpszClassName, lpszWindowName));
    }
    static CWnd* WindowFromPoint(POINT point) { return FromHandle(::WindowFromPoint(point)); }

    // --- Focus, capture, timers. ---
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetCapture() { return FromHandle(::GetCapture()); }
    CWnd* SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
    UINT_PTR SetTimer(UINT_PTR nIDEvent, UINT nElapse, TIMERPROC lpfnTimer = nullptr) {
        return ::SetTimer(m_hWnd, nIDEvent, nElapse, lpfnTimer);
    }
    BOOL KillTimer(UINT_PTR nIDEvent) { return ::KillTimer(m_hWnd, nIDEvent); }
    void CreateCaret(CBitmap* pBitmap);
    void CreateSolidCaret(int nWidth, int nHeight) { ::CreateCaret(m_hWnd, nullptr, nWidth, nHeight); }
    static void SetCaretPos(POINT point) { ::SetCaretPos(point.x, point.y); }
    void ShowCaret() { ::ShowCaret(m_hWnd); }
    void HideCaret() { ::HideCaret(m_hWnd); }
    BOOL OpenClipboard() { return ::OpenClipboard(m_hWnd); }

    // --- Scrolling. ---
    BOOL GetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL);
    BOOL SetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE);
    int GetScrollPos(int nBar) const { return ::GetScrollPos(m_hWnd, nBar); }
    int SetScrollPos(int nBar, int nPos, BOOL bRedraw = TRUE) { return ::SetScrollPos(m_hWnd, nBar, nPos, bRedraw); }
    void GetScrollRange(int nBar, LPINT lpMinPos, LPINT lpMaxPos) const {
        ::GetScrollRange(m_hWnd, nBar, lpMinPos, lpMaxPos);
    }
    void SetScrollRange(int nBar, int nMinPos, int nMaxPos, BOOL bRedraw = TRUE) {
        ::SetScrollRange(m_hWnd, nBar, nMinPos, nMaxPos, bRedraw);
    }
    int GetScrollLimit(int nBar);
    void ShowScrollBar(UINT nBar, BOOL bShow = TRUE) { ::ShowScrollBar(m_hWnd, static_cast<int>(nBar), bShow); }
    BOOL EnableScrollBarCtrl(int nBar, BOOL bEnable = TRUE);
    void ScrollWindow(int xAmount, int yAmount, LPCRECT lpRect = nullptr, LPCRECT lpClipRect = nullptr) {
        ::ScrollWindow(m_hWnd, xAmount, yAmount, lpRect, lpClipRect);
    }
    // The scroll bar control with this place, for windows that have one of their own; null here.
    virtual CScrollBar* GetScrollBarCtrl(int nBar) const;

    // --- Menus. Temporary or permanent objects. ---
    CMenu* GetMenu() const;
    BOOL SetMenu(CMenu* pMenu);
    CMenu* GetSystemMenu(BOOL bRevert) const;
    void DrawMenuBar() { ::DrawMenuBar(m_hWnd); }
    int MessageBox(LPCSTR lpszText, LPCSTR lpszCaption = nullptr, UINT nType = MB_OK);

    // --- Dialog items. ---
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    int SetDlgCtrlID(int nID) { return static_cast<int>(::SetWindowLongPtrA(m_hWnd, GWLP_ID, nID)); }
    CWnd* GetDlgItem(int nID) const { return FromHandle(::GetDlgItem(m_hWnd, nID)); }
    void GetDlgItem(int nID, HWND* phWnd) const { *phWnd = ::GetDlgItem(m_hWnd, nID); }
    UINT GetDlgItemInt(int nID, BOOL* lpTrans = nullptr, BOOL bSigned = TRUE) const {
        return ::GetDlgItemInt(m_hWnd, nID, lpTrans, bSigned);
    }
    void SetDlgItemInt(int nID, UINT nValue, BOOL bSigned = TRUE) { ::SetDlgItemInt(m_hWnd, nID, nValue, bSigned); }
    int GetDlgItemText(int nID, LPSTR lpStr, int nMaxCount) const {
        return static_cast<int>(::GetDlgItemTextA(m_hWnd, nID, lpStr, nMaxCount));
    }
    int GetDlgItemText(int nID, CString& rString) const;
    void SetDlgItemText(int nID, LPCSTR lpszString) { ::SetDlgItemTextA(m_hWnd, nID, lpszString); }
    LRESULT SendDlgItemMessage(int nID, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendDlgItemMessageA(m_hWnd, nID, message, wParam, lParam);
    }
    void CheckDlgButton(int nIDButton, UINT nCheck) { ::CheckDlgButton(m_hWnd, nIDButton, nCheck); }
    void CheckRadioButton(int nIDFirstButton, int nIDLastButton, int nIDCheckButton) {
        ::CheckRadioButton(m_hWnd, nIDFirstButton, nIDLastButton, nIDCheckButton);
    }
    UINT IsDlgButtonChecked(int nIDButton) const { return ::IsDlgButtonChecked(m_hWnd, nIDButton); }
    CWnd* GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const;
    BOOL IsDialogMessage(LPMSG lpMsg) { return ::IsDialogMessageA(m_hWnd, lpMsg); }
    // Moves data between controls and members through DoDataExchange. FALSE if it failed (the user has been told).
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

    // --- Tool tips. ---
    // The window's PreTranslateMessage then asks OnToolHitTest at each mouse move; an LPSTR_TEXTCALLBACK text is asked
    // with TTN_NEEDTEXT.
    BOOL EnableToolTips(BOOL bEnable = TRUE);
    static void CancelToolTips(BOOL bKeys = FALSE);
    // Fills `pTI` for the tool under the point and returns its number, or -1. The base finds child windows.
    virtual INT_PTR OnToolHitTest(CPoint point, TOOLINFO* pTI) const;
    // For PreTranslateMessage of a window that relays mouse messages by itself.
    void FilterToolTipMessage(MSG* pMsg);

    // --- Layout of a frame's inside. ---
    // Gives each child with an id in the range, but nIDLeftOver, a chance to take its place (WM_SIZEPARENT); the rest
    // goes to nIDLeftOver.
    void RepositionBars(UINT nIDFirst, UINT nIDLast, UINT nIDLeftOver);

    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;
    // Whether this object is a frame (dialogs and child windows look for one).
    virtual BOOL IsFrameWnd() const;

protected:
    // TRUE: handled, *pResult is the answer.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual void DoDataExchange(CDataExchange* pDX);

    // --- Base handlers: default processing, unless said otherwise. ---
    afx_msg int OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
    afx_msg BOOL OnNcCreate(LPCREATESTRUCT) { return static_cast<BOOL>(Default()); }
    afx_msg void OnDestroy() { Default(); }
    // Detaches, gives the window its own procedure back, and calls PostNcDestroy as its last act.
    afx_msg void OnNcDestroy();
    afx_msg void OnClose() { Default(); }
    afx_msg BOOL OnQueryEndSession() { return static_cast<BOOL>(Default()); }
    afx_msg void OnEndSession(BOOL) { Default(); }
    afx_msg void OnSize(UINT, int, int) { Default(); }
    afx_msg void OnSizing(UINT, LPRECT) { Default(); }
    afx_msg void OnMove(int, int) { Default(); }
    afx_msg void OnMoving(UINT, LPRECT) { Default(); }
    afx_msg void OnEnterSizeMove() { Default(); }
    afx_msg void OnExitSizeMove() { Default(); }
    afx_msg void OnPaint() { Default(); }
    afx_msg void OnNcPaint() { Default(); }
    afx_msg BOOL OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
    afx_msg void OnTimer(UINT_PTR) { Default(); }
    afx_msg void OnSetFocus(CWnd*) { Default(); }
    afx_msg void OnKillFocus(CWnd*) { Default(); }
    afx_msg void OnCaptureChanged(CWnd*) { Default(); }
    afx_msg void OnCancelMode() { Default(); }
    afx_msg void OnActivate(UINT, CWnd*, BOOL) { Default(); }
    afx_msg BOOL OnNcActivate(BOOL) { return static_cast<BOOL>(Default()); }
    afx_msg void OnActivateApp(BOOL, DWORD) { Default(); }
    afx_msg int OnMouseActivate(CWnd*, UINT, UINT) { return static_cast<int>(Default()); }
    afx_msg void OnMouseMove(UINT, CPoint) { Default(); }
    afx_msg void OnMouseLeave() { Default(); }
    afx_msg BOOL OnMouseWheel(UINT, short, CPoint) { return static_cast<BOOL>(Default()); }
    afx_msg void OnLButtonDown(UINT, CPoint) { Default(); }
    afx_msg void OnLButtonUp(UINT, CPoint) { Default(); }
    afx_msg void OnLButtonDblClk(UINT, CPoint) { Default(); }
    afx_msg void OnRButtonDown(UINT, CPoint) { Default(); }
    afx_msg void OnRButtonUp(UINT, CPoint) { Default(); }
    afx_msg void OnRButtonDblClk(UINT, CPoint) { Default(); }
    afx_msg void OnMButtonDown(UINT, CPoint) { Default(); }
    afx_msg void OnMButtonUp(UINT, CPoint) { Default(); }
    afx_msg void OnMButtonDblClk(UINT, CPoint) { Default(); }
    afx_msg void OnNcLButtonDown(UINT, CPoint) { Default(); }
    afx_msg void OnNcLButtonUp(UINT, CPoint) { Default(); }
    afx_msg void OnNcMouseMove(UINT, CPoint) { Default(); }
    afx_msg LRESULT OnNcHitTest(CPoint) { return Default(); }
    afx_msg void OnNcCalcSize(BOOL, NCCALCSIZE_PARAMS*) { Default(); }
    afx_msg void OnKeyDown(UINT, UINT, UINT) { Default(); }
    afx_msg void OnKeyUp(UINT, UINT, UINT) { Default(); }
    afx_msg void OnChar(UINT, UINT, UINT) { Default(); }
    afx_msg void OnSysKeyDown(UINT, UINT, UINT) { Default(); }
    afx_msg void OnSysKeyUp(UINT, UINT, UINT) { Default(); }
    afx_msg void OnSysChar(UINT, UINT, UINT) { Default(); }
    afx_msg void OnSysCommand(UINT, LPARAM) { Default(); }
    afx_msg UINT OnGetDlgCode() { return static_cast<UINT>(Default()); }
    afx_msg void OnContextMenu(CWnd*, CPoint) { Default(); }
    afx_msg void OnShowWindow(BOOL, UINT) { Default(); }
    afx_msg void OnEnable(BOOL) { Default(); }
    afx_msg BOOL OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
    afx_msg void OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
    afx_msg void OnWindowPosChanging(WINDOWPOS*) { Default(); }
    afx_msg void OnWindowPosChanged(WINDOWPOS*) { Default(); }
    afx_msg void OnStyleChanged(int, LPSTYLESTRUCT) { Default(); }
    afx_msg void OnStyleChanging(int, LPSTYLESTRUCT) { Default(); }
    afx_msg void OnSysColorChange() { Default(); }
    afx_msg void OnSettingChange(UINT, LPCSTR) { Default(); }
    afx_msg void OnInitMenu(CMenu*) { Default(); }
    afx_msg void OnInitMenuPopup(CMenu*, UINT, BOOL) { Default(); }
    // These offer the message to the control that it is about, then do the default processing.
    afx_msg void OnParentNotify(UINT message, LPARAM lParam);
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnDrawItem(int nIDCtl, LPDRAWITEMSTRUCT lpDrawItemStruct);
    afx_msg void OnMeasureItem(int nIDCtl, LPMEASUREITEMSTRUCT lpMeasureItemStruct);
    afx_msg void OnDeleteItem(int nIDCtl, LPDELETEITEMSTRUCT lpDeleteItemStruct);
    afx_msg int OnCompareItem(int nIDCtl, LPCOMPAREITEMSTRUCT lpCompareItemStruct);
    afx_msg HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);

    DECLARE_MESSAGE_MAP()

    HWND m_hWndOwner = nullptr;    // set by SetOwner
    WNDPROC m_pfnSuper = nullptr;  // the window's own procedure while attached; null: the system's default
    int m_nModalResult = 0;

private:
    friend struct quor::WindowCore;
};
