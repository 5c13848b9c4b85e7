#include "quor/framework/ZTDialog.h"

#include "quor/foundation/HostServices.h"
#include "quor/foundation/Messages.h"
#include "quor/framework/FocusStackInternal.h"
#include "quor/framework/core/ScaleFactors.h"

namespace {

constexpr UINT kMultiMonitorItem = 65;
constexpr const char* kMultiMonitorText = "Run in &MultiMonitor Mode";
constexpr const char* kRegistryPath = "Software\\Zorvane Technologies\\QUOR Trader\\%s\\%s\\";

// Events of the watcher.
constexpr int kDialogGone = 0;
constexpr int kDialogMade = 1;

constexpr int kFontHeight = 20;
constexpr DWORD kDragStyles = WS_CLIPSIBLINGS | WS_CLIPCHILDREN;

}  // namespace

CArray<CZTDialog*, CZTDialog*> CZTDialog::AllDlgArray;
bool CZTDialog::m_bFocusStatus = false;
bool CZTDialog::m_bGlobalMmmMode = false;
CWnd* CZTDialog::m_pDgBar = nullptr;
CWatcher* CZTDialog::pWatcherr = nullptr;

IMPLEMENT_DYNAMIC(CZTDialog, CZTBCGPDialog)

BEGIN_MESSAGE_MAP(CZTDialog, CZTBCGPDialog)
    // Life and place.
    ON_WM_DESTROY()
    ON_WM_SHOWWINDOW()
    ON_WM_WINDOWPOSCHANGED()
    ON_WM_SIZE()
    ON_WM_SYSCOMMAND()
    ON_WM_EXITSIZEMOVE()
    ON_WM_ENTERSIZEMOVE()
    ON_WM_SYSCOLORCHANGE()
    // Scroll bars.
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    // Focus.
    ON_WM_ACTIVATE()
    ON_REGISTERED_MESSAGE(WM_ZTD_DELAYED_SETFOCUS, &CZTDialog::OnDelayedSetFocus)
END_MESSAGE_MAP()

// --- Life ----------------------------------------------------------------------------------------------------------

CZTDialog::CZTDialog() { takeScreenMetrics(); }

CZTDialog::CZTDialog(UINT nIDTemplate, CWnd* pParent) : CZTBCGPDialog(nIDTemplate, pParent) {
    m_strDialogKey.Format("%d", nIDTemplate);
    takeScreenMetrics();
}

CZTDialog::CZTDialog(const char* lpszTemplateName, CWnd* pParent)
    : CZTBCGPDialog(lpszTemplateName, pParent), m_strDialogKey(lpszTemplateName) {
    takeScreenMetrics();
}

// Here, so that the place is still stored. What a watcher throws cannot leave; the base ends the window then.
CZTDialog::~CZTDialog() {
    try {
        if (m_hWnd) CZTDialog::DestroyWindow();
    } catch (...) {
        m_windowEnded = true;
    }
}

void CZTDialog::takeScreenMetrics() {
    CWnd::GetDesktopWindow()->GetWindowRect(&m_rcDesktop);
    m_nHScrollBarHeight = ::GetSystemMetrics(SM_CYHSCROLL);
    m_nVScrollBarWidth = ::GetSystemMetrics(SM_CXVSCROLL);
    const CRect workArea = quor::platform::screens().workArea();
    m_nWorkAreaWidth = workArea.Width();
    m_nWorkAreaHeight = workArea.Height();
}

BOOL CZTDialog::OnInitDialog() {
    CZTBCGPDialog::OnInitDialog();
    AllDlgArray.Add(this);
    tellWatcher(kDialogMade);
    if (!m_hWnd) return TRUE;
    SendMessage(WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(g_pControlBlock->pu_get_application_iCon()));
    CString registryPath;
    registryPath.Format(kRegistryPath, quor::foundation::appdataHashCode().GetString(), m_strDialogKey.GetString());
    GetWindowPos();
    m_font.DeleteObject();
    m_font.CreateFont(kFontHeight, 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                      CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, "Trebuchet MS");
    SetFont(&m_font);
    addSystemMenuItem();
    CalculateXYScaleFactor(m_dXScale, m_dYScale, quor::framework::kTrebuchetFontKind);
    EnableLoadWindowPlacement(TRUE, registryPath);
    return TRUE;
}

void CZTDialog::tellWatcher(int event) {
    if (pWatcherr) pWatcherr->OnUpdate(event, CString(), reinterpret_cast<sUpdateData*>(this), 0);
}

BOOL CZTDialog::DestroyWindow() {
    const HWND window = m_hWnd;
    if (window) endWindow();
    // The watcher may have destroyed it, or the whole dialog.
    return CWnd::FromHandlePermanent(window) == this && CZTBCGPDialog::DestroyWindow();
}

void CZTDialog::OnDestroy() {
    endWindow();
    m_windowEnded = false;
    CZTBCGPDialog::OnDestroy();
}

// What is done once when a window ends, on whichever road.
void CZTDialog::endWindow() {
    if (m_windowEnded) return;
    m_windowEnded = true;
    quor::framework::forgetFocusWindow(this);
    SaveWindowPos();
    for (INT_PTR at = 0; at < AllDlgArray.GetCount(); ++at) {
        if (AllDlgArray[at] != this) continue;
        AllDlgArray.RemoveAt(at);
        break;
    }
    tellWatcher(kDialogGone);
}

BOOL CZTDialog::ShowWindow(int nCmdShow) {
    if (nCmdShow == SW_SHOW && m_wpPlacement.showCmd == SW_SHOWMINIMIZED) CZTBCGPDialog::ShowWindow(SW_RESTORE);
    return CZTBCGPDialog::ShowWindow(nCmdShow);
}

void CZTDialog::OnOK() {
    m_bFocusStatus = true;
    CZTBCGPDialog::OnOK();
}

void CZTDialog::OnCancel() {
    const HWND window = m_hWnd;
    GetWindowPlacement(&m_wpPlacement);
    m_bFocusStatus = true;
    CZTBCGPDialog::OnCancel();
    if (CWnd::FromHandlePermanent(window) != this) return;
    m_bClosedByCancel = true;
    if (m_pDgBar && m_bReturnFocusToBar) m_pDgBar->SetFocus();
}

// Windows tells top-level windows alone; controls whose colours nobody set follow it too.
void CZTDialog::OnSysColorChange() {
    CZTBCGPDialog::OnSysColorChange();
    SendMessageToDescendants(WM_SYSCOLORCHANGE);
}

// --- System menu, move and size ------------------------------------------------------------------------------------

void CZTDialog::addSystemMenuItem() {
    CMenu* const menu = GetSystemMenu(FALSE);
    if (!menu) return;
    menu->AppendMenu(MF_SEPARATOR);
    menu->AppendMenu(MF_STRING, kMultiMonitorItem, kMultiMonitorText);
    if (m_bMmmMode) checkSystemMenuItem();
}

void CZTDialog::checkSystemMenuItem() {
    if (CMenu* const menu = GetSystemMenu(FALSE))
        menu->CheckMenuItem(kMultiMonitorItem, m_bMmmMode ? MF_CHECKED : MF_UNCHECKED);
}

void CZTDialog::OnSysCommand(UINT nID, LPARAM lParam) {
    if (nID != kMultiMonitorItem) return CZTBCGPDialog::OnSysCommand(nID, lParam);
    m_bMmmMode = !m_bMmmMode;
    checkSystemMenuItem();
}

void CZTDialog::OnSize(UINT nType, int cx, int cy) {
    if (m_pDgBar) m_bFocusStatus = true;
    CZTBCGPDialog::OnSize(nType, cx, cy);
    GetWindowPlacement(&m_wpPlacement);
}

// Children do not flicker while the dialog is dragged; all is painted once at the end.
void CZTDialog::OnEnterSizeMove() {
    ModifyStyle(0, kDragStyles);
    CZTBCGPDialog::OnEnterSizeMove();
}

void CZTDialog::OnExitSizeMove() {
    ModifyStyle(kDragStyles, 0);
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    CZTBCGPDialog::OnExitSizeMove();
}
