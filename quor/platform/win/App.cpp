// The application object and the message pump.
#include "quor/platform/win/WndInternal.h"

IMPLEMENT_DYNAMIC(CWinApp, CCmdTarget)

using quor::windowState;

BEGIN_MESSAGE_MAP(CWinApp, CCmdTarget)
    ON_COMMAND(ID_APP_EXIT, &CWinApp::OnAppExit)
END_MESSAGE_MAP()

namespace {

// The module whose image holds the object: its DLL if it is a static one there. Objects elsewhere (stack, heap) are the
// executable's.
HINSTANCE moduleAround(const void* object) {
    HMODULE module = nullptr;
    constexpr DWORD kFlags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (::GetModuleHandleExA(kFlags, static_cast<LPCSTR>(object), &module)) return module;
    return ::GetModuleHandleA(nullptr);
}

}  // namespace

CWinApp::CWinApp(LPCSTR lpszAppName) : m_hInstance(moduleAround(this)), m_appName(lpszAppName) {
    if (lpszAppName) m_pszAppName = m_appName;
    if (m_hInstance != ::GetModuleHandleA(nullptr))
        windowState().libraryApps.push_back(this);
    else if (!windowState().app)
        windowState().app = this;
}

CWinApp::~CWinApp() {
    std::erase(windowState().libraryApps, this);
    if (windowState().app == this) windowState().app = nullptr;
}

BOOL CWinApp::InitInstance() { return TRUE; }

int CWinApp::Run() {
    for (;;) {
        LONG count = 0;
        quor::idleUntilMessage(count);
        if (!PumpMessage()) return ExitInstance();
    }
}

// The exit code is the one that was posted with the quit message.
int CWinApp::ExitInstance() { return static_cast<int>(windowState().exitCode); }

BOOL CWinApp::OnIdle(LONG lCount) { return quor::idle(lCount); }
BOOL CWinApp::PumpMessage() { return quor::pump(); }

BOOL CWinApp::PreTranslateMessage(MSG* pMsg) {
    const CWnd* mainWindow = AfxGetMainWnd();
    return CWnd::WalkPreTranslateTree(mainWindow ? mainWindow->m_hWnd : nullptr, pMsg);
}

LRESULT CWinApp::ProcessWndProcException(CException* e, const MSG* pMsg) {
    char text[512] = "";
    if (!dynamic_cast<CUserException*>(e) && e->GetErrorMessage(text, sizeof(text))) AfxMessageBox(text, MB_ICONSTOP);
    if (pMsg->message == WM_PAINT) ::ValidateRect(pMsg->hwnd, nullptr);
    if (pMsg->message == WM_CREATE) return -1;
    return pMsg->message == WM_COMMAND;  // a failed command is still handled
}

int CWinApp::DoMessageBox(LPCSTR lpszPrompt, UINT nType, UINT) { return quor::showMessageBox(lpszPrompt, nType); }

// Without an icon: a warning for messages and questions.
int quor::showMessageBox(LPCSTR text, UINT nType) {
    const UINT buttons = nType & MB_TYPEMASK;
    if (!(nType & MB_ICONMASK) && buttons != MB_ABORTRETRYIGNORE && buttons != MB_RETRYCANCEL)
        nType |= MB_ICONEXCLAMATION;
    const CWnd* owner = CWnd::GetSafeOwner();
    const HWND window = owner ? owner->m_hWnd : ::GetActiveWindow();
    return ::MessageBoxA(window, text, AfxGetAppName(), nType);
}

HICON CWinApp::LoadIcon(UINT nIDResource) const {
    const LPCSTR name = MAKEINTRESOURCEA(nIDResource);
    return ::LoadIconA(AfxFindResourceHandle(name, RT_GROUP_ICON), name);
}

HCURSOR CWinApp::LoadCursor(UINT nIDResource) const {
    const LPCSTR name = MAKEINTRESOURCEA(nIDResource);
    return ::LoadCursorA(AfxFindResourceHandle(name, RT_GROUP_CURSOR), name);
}

void CWinApp::OnAppExit() {
    if (m_pMainWnd) m_pMainWnd->SendMessage(WM_CLOSE);
}

// --- What belongs to the process -----------------------------------------------------------------------------------

CWinApp* AfxGetApp() { return windowState().app; }

CWinApp* quorGetLibraryApp(HINSTANCE hInstance) {
    for (CWinApp* app : windowState().libraryApps)
        if (app->m_hInstance == hInstance) return app;
    return nullptr;
}

CWnd* AfxGetMainWnd() {
    CWnd* mainWindow = windowState().app ? windowState().app->GetMainWnd() : nullptr;
    return mainWindow ? mainWindow : windowState().mainWindow;
}

void AfxSetMainWnd(CWnd* pMainWnd) { windowState().mainWindow = pMainWnd; }

HINSTANCE AfxGetInstanceHandle() { return ::GetModuleHandleA(nullptr); }

HINSTANCE AfxGetResourceHandle() { return windowState().resources ? windowState().resources : AfxGetInstanceHandle(); }

void AfxSetResourceHandle(HINSTANCE hInstance) { windowState().resources = hInstance; }

HINSTANCE AfxFindResourceHandle(LPCSTR lpszName, LPCSTR lpszType) {
    const HINSTANCE set = AfxGetResourceHandle();
    return ::FindResourceA(set, lpszName, lpszType) ? set : AfxGetInstanceHandle();
}

LPCSTR AfxGetAppName() {
    if (windowState().app && windowState().app->m_pszAppName) return windowState().app->m_pszAppName;
    static const CString executable = [] {
        char path[MAX_PATH] = "";
        ::GetModuleFileNameA(nullptr, path, sizeof(path));
        CString name(path);
        name = name.Mid(name.ReverseFind('\\') + 1);
        const int dot = name.ReverseFind('.');
        return dot < 0 ? name : name.Left(dot);
    }();
    return executable;
}

// --- The pump ------------------------------------------------------------------------------------------------------

BOOL quor::pump() {
    MSG message;
    if (!::GetMessageA(&message, nullptr, 0, 0)) {
        windowState().exitCode = message.wParam;
        return FALSE;
    }
    {
        const DepthScope depth;
        if (message.message != WM_KICKIDLE && !AfxPreTranslateMessage(&message)) {
            ::TranslateMessage(&message);
            ::DispatchMessageA(&message);
        }
    }
    throwKeptException();
    return TRUE;
}

BOOL quor::idle(LONG count) {
    if (count <= 0) {
        const CWnd* mainWindow = AfxGetMainWnd();
        if (mainWindow && mainWindow->m_hWnd && mainWindow->IsWindowVisible())
            mainWindow->SendMessage(WM_IDLEUPDATECMDUI, TRUE);
        return TRUE;
    }
    if (windowState().depth == 0) {
        CWnd::DeleteTempMap();
        quorFreeTemporaryGdiObjects();
    }
    return FALSE;
}

void quor::idleUntilMessage(LONG& count) {
    MSG message;
    while (!::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE))
        if (!AfxOnIdle(count++)) return;
}

BOOL AfxPumpMessage() { return AfxGetApp() ? AfxGetApp()->PumpMessage() : quor::pump(); }
BOOL AfxOnIdle(LONG lCount) { return AfxGetApp() ? AfxGetApp()->OnIdle(lCount) : quor::idle(lCount); }

BOOL AfxPreTranslateMessage(MSG* pMsg) {
    if (AfxGetApp()) return AfxGetApp()->PreTranslateMessage(pMsg);
    const CWnd* mainWindow = AfxGetMainWnd();
    return CWnd::WalkPreTranslateTree(mainWindow ? mainWindow->m_hWnd : nullptr, pMsg);
}

void AfxPostQuitMessage(int nExitCode) { ::PostQuitMessage(nExitCode); }

int AfxWinMain(HINSTANCE hInstance, LPSTR lpCmdLine, int nCmdShow) {
    CWinApp* app = AfxGetApp();
    if (!app) return -1;
    app->m_hInstance = hInstance;
    app->m_lpCmdLine = lpCmdLine;
    app->m_nCmdShow = nCmdShow;
    if (app->InitInstance()) return app->Run();
    if (app->m_pMainWnd) app->m_pMainWnd->DestroyWindow();
    return app->ExitInstance();
}

// --- Message boxes -------------------------------------------------------------------------------------------------

int AfxMessageBox(LPCSTR lpszText, UINT nType, UINT nIDHelp) {
    if (CWinApp* app = AfxGetApp()) return app->DoMessageBox(lpszText, nType, nIDHelp);
    return quor::showMessageBox(lpszText, nType);
}

int AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp) {
    char text[4096] = "";
    ::LoadStringA(AfxGetResourceHandle(), nIDPrompt, text, sizeof(text));
    return AfxMessageBox(text, nType, nIDHelp);
}
