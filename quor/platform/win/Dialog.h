// CDialog: a modal or modeless dialog from a template, which is a resource (by id or name) or lies in memory. Modal
// dialogs run on the same pump as everything else. CDataExchange and the DDX_ functions move values between controls
// and members.
//
// A modal dialog lives on the stack of its caller; a modeless one lives where its owner keeps it, and is not deleted.
#pragma once

#include "quor/platform/win/Wnd.h"

class QUOR_FRAMEWORK_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog();
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    explicit CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    // --- Modeless. FALSE if there is no template or OnInitDialog's window could not be made. ---
    virtual BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    virtual BOOL Create(LPCSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    // The template stays the caller's and need not outlive the call.
    virtual BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr,
                                void* lpDialogInit = nullptr);

    // --- Modal. ---
    // Gives a default-constructed dialog its template, which must outlive DoModal.
    BOOL InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr, void* lpDialogInit = nullptr);
    // Returns the argument of EndDialog, -1 if the dialog could not be made. The owner is disabled meanwhile.
    virtual INT_PTR DoModal();
    void EndDialog(int nResult);

    // TRUE: the system gives the focus to the first control.
    virtual BOOL OnInitDialog();
    virtual void OnSetFont(CFont* pFont);

    void MapDialogRect(LPRECT lpRect) const { ::MapDialogRect(m_hWnd, lpRect); }
    void NextDlgCtrl() const { ::PostMessageA(m_hWnd, WM_NEXTDLGCTL, 0, 0); }
    void PrevDlgCtrl() const { ::PostMessageA(m_hWnd, WM_NEXTDLGCTL, 1, 0); }
    void GotoDlgCtrl(CWnd* pWndCtrl);
    void SetDefID(UINT nID) { ::SendMessageA(m_hWnd, DM_SETDEFID, nID, 0); }
    DWORD GetDefID() const { return static_cast<DWORD>(::SendMessageA(m_hWnd, DM_GETDEFID, 0, 0)); }

    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) override;

protected:
    // Save the data (OnOK) and end a modal dialog with IDOK or IDCANCEL; a modeless one is only hidden by EndDialog and
    // destroyed by its owner.
    virtual void OnOK();
    virtual void OnCancel();

    afx_msg LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT HandleSetFont(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    LPCSTR m_lpszTemplateName = nullptr;  // an id or a name
    CWnd* m_pParentWnd = nullptr;         // for DoModal
    LPCDLGTEMPLATE m_lpDialogTemplate = nullptr;

private:
    BOOL createDialog(LPCDLGTEMPLATE dialogTemplate, CWnd* parent, HINSTANCE module);

    CString m_templateName;  // holds a name given by text
    bool m_centre = false;   // the template leaves the place open
};

// One transfer between a window's controls and its members.
class QUOR_FRAMEWORK_API CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);

    BOOL m_bSaveAndValidate;  // TRUE: from the controls to the members
    CWnd* m_pDlgWnd;
    HWND m_hWndLastControl = nullptr;
    BOOL m_bEditLastControl = FALSE;

    // The control, remembered for Fail. Throws CNotSupportedException if there is none.
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC);
    // Gives the last control the focus and throws CUserException.
    [[noreturn]] void Fail();
};

// Subclasses the control with the object, once.
QUOR_FRAMEWORK_API void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);
// Numbers: the control's text must be one, or the user is told and the transfer fails.
QUOR_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
QUOR_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, int& value);
QUOR_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
QUOR_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, long& value);
QUOR_FRAMEWORK_API void DDX_Text(CDataExchange* pDX, int nIDC, double& value);
// 0, 1, or 2 for undetermined.
QUOR_FRAMEWORK_API void DDX_Check(CDataExchange* pDX, int nIDC, int& value);
// Index in the group that begins with nIDC, -1 for none.
QUOR_FRAMEWORK_API void DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
QUOR_FRAMEWORK_API void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
QUOR_FRAMEWORK_API void DDX_CBString(CDataExchange* pDX, int nIDC, CString& value);
QUOR_FRAMEWORK_API void DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
QUOR_FRAMEWORK_API void DDX_LBString(CDataExchange* pDX, int nIDC, CString& value);
// Checks of the value just transferred; a breach tells the user and fails.
QUOR_FRAMEWORK_API void DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal);
QUOR_FRAMEWORK_API void DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);
