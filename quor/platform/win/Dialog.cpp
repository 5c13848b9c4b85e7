#include "quor/platform/win/WndInternal.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_COMMAND(IDOK, &CDialog::OnOK)
    ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
    ON_MESSAGE(WM_INITDIALOG, &CDialog::HandleInitDialog)
    ON_MESSAGE(WM_SETFONT, &CDialog::HandleSetFont)
END_MESSAGE_MAP()

// --- Templates -----------------------------------------------------------------------------------------------------

namespace {

// A form without controls, in the dialogs' font (it is drawn by whoever fills it).
#pragma pack(push, 2)
struct alignas(4) EmptyForm {
    DLGTEMPLATE head = {WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | DS_CONTROL | DS_SETFONT, 0, 0, 0, 0, 100, 100};
    WORD menu = 0;
    WORD windowClass = 0;
    WCHAR title[1] = {0};
    WORD points = 8;
    WCHAR face[13] = L"MS Shell Dlg";
};
#pragma pack(pop)

struct TemplateHead {
    DWORD style;
    int x;
    int y;
};

// The old form begins with the style, the extended one with 1 and the signature 0xFFFF.
TemplateHead headOf(LPCDLGTEMPLATE dialogTemplate) {
    const auto* words = reinterpret_cast<const WORD*>(dialogTemplate);
    const bool extended = words[0] == 1 && words[1] == 0xFFFF;
    const WORD* style = words + (extended ? 6 : 0);
    const WORD* place = words + (extended ? 9 : 5);
    return {MAKELONG(style[0], style[1]) | 0u, static_cast<short>(place[0]), static_cast<short>(place[1])};
}

// All messages come through the window's own object; the dialog manager has nothing left to ask.
INT_PTR CALLBACK dialogProcedure(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

}  // namespace

LPCDLGTEMPLATE quor::dialogTemplate(HINSTANCE module, LPCSTR name) {
    static const EmptyForm empty;
    if (!name) return &empty.head;
    const HRSRC resource = ::FindResourceA(module, name, RT_DIALOG);
    const HGLOBAL data = resource ? ::LoadResource(module, resource) : nullptr;
    return data ? static_cast<LPCDLGTEMPLATE>(::LockResource(data)) : nullptr;
}

bool quor::createFromTemplate(CWnd& window, LPCDLGTEMPLATE dialogTemplate, CWnd* parent, HINSTANCE module) {
    if (!dialogTemplate || window.m_hWnd) return false;
    AfxHookWindowCreate(&window);
    const HWND created =
        ::CreateDialogIndirectParamA(module, dialogTemplate, parent ? parent->m_hWnd : nullptr, &dialogProcedure, 0);
    if (!AfxUnhookWindowCreate()) WindowCore::endWithoutWindow(window);
    throwKeptException();
    return created != nullptr;
}

bool quor::isInput(const MSG& message) {
    return (message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST) ||
           (message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST);
}

// --- Construction --------------------------------------------------------------------------------------------------

CDialog::CDialog() = default;

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog() {
    m_lpszTemplateName = MAKEINTRESOURCEA(nIDTemplate);
    m_pParentWnd = pParentWnd;
}

CDialog::CDialog(LPCSTR lpszTemplateName, CWnd* pParentWnd) : CDialog() {
    m_templateName = lpszTemplateName;
    m_lpszTemplateName = m_templateName;
    m_pParentWnd = pParentWnd;
}

CDialog::~CDialog() {
    if (m_hWnd) DestroyWindow();
}

// --- Modeless ------------------------------------------------------------------------------------------------------

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd) { return Create(MAKEINTRESOURCEA(nIDTemplate), pParentWnd); }

BOOL CDialog::Create(LPCSTR lpszTemplateName, CWnd* pParentWnd) {
    m_lpszTemplateName = lpszTemplateName;
    if (!IS_INTRESOURCE(lpszTemplateName)) {
        m_templateName = lpszTemplateName;
        m_lpszTemplateName = m_templateName;
    }
    const HINSTANCE module = AfxFindResourceHandle(m_lpszTemplateName, RT_DIALOG);
    if (!m_lpszTemplateName) return FALSE;
    return createDialog(quor::dialogTemplate(module, m_lpszTemplateName), pParentWnd, module);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void*) {
    return createDialog(lpDialogTemplate, pParentWnd, AfxGetResourceHandle());
}

BOOL CDialog::createDialog(LPCDLGTEMPLATE dialogTemplate, CWnd* parent, HINSTANCE module) {
    if (!dialogTemplate) return FALSE;
    const TemplateHead head = headOf(dialogTemplate);
    m_centre = !(head.style & (WS_CHILD | DS_ABSALIGN | DS_CENTER | DS_CENTERMOUSE)) && head.x == 0 && head.y == 0;
    return quor::createFromTemplate(*this, dialogTemplate, parent ? parent : AfxGetMainWnd(), module);
}

// --- Modal ---------------------------------------------------------------------------------------------------------

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void*) {
    m_lpDialogTemplate = lpDialogTemplate;
    if (pParentWnd) m_pParentWnd = pParentWnd;
    return lpDialogTemplate != nullptr;
}

namespace {

// The owner takes no input meanwhile, and is active again before the dialog goes: else another program would be.
class ModalOwner {
public:
    explicit ModalOwner(const CWnd* owner) : m_owner(owner ? owner->m_hWnd : nullptr) {
        m_disabled = m_owner && m_owner != ::GetDesktopWindow() && ::IsWindowEnabled(m_owner);
        if (m_disabled) ::EnableWindow(m_owner, FALSE);
    }
    ~ModalOwner() { release(nullptr); }
    ModalOwner(const ModalOwner&) = delete;
    ModalOwner& operator=(const ModalOwner&) = delete;

    HWND window() const { return m_owner; }
    void release(HWND dialog) {
        if (m_disabled) ::EnableWindow(m_owner, TRUE);
        m_disabled = false;
        if (dialog && m_owner && ::GetActiveWindow() == dialog) ::SetActiveWindow(m_owner);
    }

private:
    HWND m_owner;
    bool m_disabled = false;
};

}  // namespace

INT_PTR CDialog::DoModal() {
    const HINSTANCE module =
        m_lpDialogTemplate ? AfxGetResourceHandle() : AfxFindResourceHandle(m_lpszTemplateName, RT_DIALOG);
    const LPCDLGTEMPLATE dialogTemplate = m_lpDialogTemplate || !m_lpszTemplateName
                                              ? m_lpDialogTemplate
                                              : quor::dialogTemplate(module, m_lpszTemplateName);
    if (!dialogTemplate || m_hWnd) return -1;

    ModalOwner owner(GetSafeOwner(m_pParentWnd));
    m_nModalResult = -1;
    m_nFlags |= WF_CONTINUEMODAL;  // OnInitDialog may already end the dialog
    const auto end = [this, &owner] {
        m_nFlags &= ~(WF_MODALLOOP | WF_CONTINUEMODAL);
        if (m_hWnd)
            ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                           SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
        owner.release(m_hWnd);
        DestroyWindow();
    };
    try {
        if (createDialog(dialogTemplate, FromHandle(owner.window()), module) && (m_nFlags & WF_CONTINUEMODAL))
            m_nModalResult = RunModalLoop(MLF_SHOWONIDLE);
    } catch (...) {
        end();
        throw;
    }
    end();
    return m_nModalResult;
}

void CDialog::EndDialog(int nResult) {
    if (m_nFlags & (WF_MODALLOOP | WF_CONTINUEMODAL)) EndModalLoop(nResult);
    ::EndDialog(m_hWnd, nResult);
}

// --- Messages ------------------------------------------------------------------------------------------------------

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM) {
    CRect before;
    GetWindowRect(&before);
    const BOOL focus = OnInitDialog();
    CRect after;
    if (m_hWnd) GetWindowRect(&after);
    if (m_centre && m_hWnd && before == after && !IsWindowVisible()) CenterWindow();
    return focus;
}

LRESULT CDialog::HandleSetFont(WPARAM wParam, LPARAM) {
    OnSetFont(CFont::FromHandle(reinterpret_cast<HFONT>(wParam)));
    return 0;
}

void CDialog::OnSetFont(CFont*) { Default(); }

BOOL CDialog::OnInitDialog() {
    if (UpdateData(FALSE)) return TRUE;
    EndDialog(-1);
    return FALSE;
}

void CDialog::OnOK() {
    if (UpdateData(TRUE)) EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

void CDialog::GotoDlgCtrl(CWnd* pWndCtrl) {
    ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(pWndCtrl->m_hWnd), 1);
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg) {
    if (CWnd::PreTranslateMessage(pMsg)) return TRUE;
    return quor::isInput(*pMsg) && IsDialogMessage(pMsg);
}

// Menu commands that the dialog does not know go to its owner and to the application.
BOOL CDialog::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo) {
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) return TRUE;
    const bool command = nCode == CN_COMMAND || nCode == CN_UPDATE_COMMAND_UI;
    if (!command || nID < 0x8000 || nID >= 0xF000) return FALSE;
    CWnd* owner = GetParent();
    if (owner && owner->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo)) return TRUE;
    return AfxGetApp() && AfxGetApp()->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}
