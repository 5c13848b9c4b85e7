#include "quor/framework/ZTBCGPDialog.h"

#include "quor/foundation/HostServices.h"

IMPLEMENT_DYNAMIC(CZTBCGPDialog, CBCGPDialog)

BEGIN_MESSAGE_MAP(CZTBCGPDialog, CBCGPDialog)
    ON_WM_SHOWWINDOW()
END_MESSAGE_MAP()

CZTBCGPDialog::CZTBCGPDialog() = default;
CZTBCGPDialog::CZTBCGPDialog(UINT nIDTemplate, CWnd* pParent) : CBCGPDialog(nIDTemplate, pParent) {}
CZTBCGPDialog::CZTBCGPDialog(const char* lpszTemplateName, CWnd* pParent) : CBCGPDialog(lpszTemplateName, pParent) {}

int CZTBCGPDialog::SetDisplayAffinity() { return quor::foundation::registerForDisplayAffinity(this); }

BOOL CZTBCGPDialog::OnInitDialog() {
    CBCGPDialog::OnInitDialog();
    return TRUE;
}

void CZTBCGPDialog::OnShowWindow(BOOL bShow, UINT nStatus) {
    if (bShow) SetDisplayAffinity();
    if (m_hWnd) CBCGPDialog::OnShowWindow(bShow, nStatus);
}

void CZTBCGPDialog::OnCancel() {
    quor::foundation::removeFromDisplayAffinity(this);
    if (m_hWnd) CBCGPDialog::OnCancel();
}
