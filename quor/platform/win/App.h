// CWinApp, the application object, and the one message pump of the process. Both work alike with and without an
// application object: a program whose main() only makes windows uses AfxPumpMessage and AfxOnIdle.
#pragma once

#include "quor/platform/base/Exception.h"
#include "quor/platform/base/Strings.h"
#include "quor/platform/win/CmdTarget.h"

class CWnd;

class QUOR_FRAMEWORK_API CWinApp : public CCmdTarget {
    DECLARE_DYNAMIC(CWinApp)
public:
    // The program's object becomes AfxGetApp(); at most one lives at a time. A static object of a DLL is that library's
    // own: m_hInstance is the DLL, InitInstance and ExitInstance run when it is loaded and unloaded (by its DllMain,
    // which calls quorGetLibraryApp), and AfxGetApp() does not see it.
    explicit CWinApp(LPCSTR lpszAppName = nullptr);
    ~CWinApp() override;

    CWnd* m_pMainWnd = nullptr;       // its end ends the application: WM_QUIT is posted when it is destroyed
    HINSTANCE m_hInstance = nullptr;  // the executable, or the DLL of a library's object
    LPCSTR m_pszAppName = nullptr;    // caption of AfxMessageBox; the executable's name if none was given
    LPSTR m_lpCmdLine = nullptr;
    int m_nCmdShow = SW_SHOWNORMAL;

    // Makes the main window. FALSE ends the program without a message loop.
    virtual BOOL InitInstance();
    // The loop: pump while there is something, OnIdle while there is not. Returns ExitInstance().
    virtual int Run();
    // Returns the exit code.
    virtual int ExitInstance();
    // lCount counts the calls of one idle time; FALSE when there is nothing left to do.
    virtual BOOL OnIdle(LONG lCount);
    // One message: fetched (waiting for it), offered to PreTranslateMessage, dispatched. FALSE at WM_QUIT.
    virtual BOOL PumpMessage();
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    virtual CWnd* GetMainWnd() { return m_pMainWnd; }
    // An exception left a handler; shows its text, and returns the message's answer.
    virtual LRESULT ProcessWndProcException(CException* e, const MSG* pMsg);
    virtual int DoMessageBox(LPCSTR lpszPrompt, UINT nType, UINT nIDPrompt);

    HICON LoadIcon(UINT nIDResource) const;
    HICON LoadStandardIcon(LPCSTR lpszIconName) const { return ::LoadIconA(nullptr, lpszIconName); }
    HCURSOR LoadCursor(UINT nIDResource) const;
    HCURSOR LoadStandardCursor(LPCSTR lpszCursorName) const { return ::LoadCursorA(nullptr, lpszCursorName); }

protected:
    afx_msg void OnAppExit();  // closes the main window
    DECLARE_MESSAGE_MAP()

private:
    CString m_appName;
};

// The application object, or null.
QUOR_FRAMEWORK_API CWinApp* AfxGetApp();
// The object of a DLL, or null. For its DllMain; libraries know their own object.
QUOR_FRAMEWORK_API CWinApp* quorGetLibraryApp(HINSTANCE hInstance);
// The application's main window; without an application the one given to AfxSetMainWnd.
QUOR_FRAMEWORK_API CWnd* AfxGetMainWnd();
// For programs without an application object. WM_QUIT is not posted at its end.
QUOR_FRAMEWORK_API void AfxSetMainWnd(CWnd* pMainWnd);
QUOR_FRAMEWORK_API HINSTANCE AfxGetInstanceHandle();
// Where dialogs, menus, bitmaps and strings come from: the executable until it is set.
QUOR_FRAMEWORK_API HINSTANCE AfxGetResourceHandle();
QUOR_FRAMEWORK_API void AfxSetResourceHandle(HINSTANCE hInstance);
// The module that holds a resource: the resource handle's, else the executable.
QUOR_FRAMEWORK_API HINSTANCE AfxFindResourceHandle(LPCSTR lpszName, LPCSTR lpszType);
QUOR_FRAMEWORK_API LPCSTR AfxGetAppName();

// CWinApp::PumpMessage where there is an application, else the same work.
QUOR_FRAMEWORK_API BOOL AfxPumpMessage();
// One idle turn of the pump: CWinApp::OnIdle, or the framework's own part of it. Temporary objects die in it, unless a
// message is being handled further up the stack.
QUOR_FRAMEWORK_API BOOL AfxOnIdle(LONG lCount);
QUOR_FRAMEWORK_API BOOL AfxPreTranslateMessage(MSG* pMsg);
QUOR_FRAMEWORK_API void AfxPostQuitMessage(int nExitCode);

// The standard start of a program: InitInstance, Run, ExitInstance of the application object. Returns the exit code.
QUOR_FRAMEWORK_API int AfxWinMain(HINSTANCE hInstance, LPSTR lpCmdLine, int nCmdShow);

// Command ids of the framework.
constexpr UINT ID_APP_EXIT = 0xE141;
constexpr UINT ID_APP_ABOUT = 0xE140;
constexpr UINT ID_SEPARATOR = 0;
