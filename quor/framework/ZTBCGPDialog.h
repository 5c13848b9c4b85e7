// CZTBCGPDialog: a dialog that offers itself to the host's guard against screen capture whenever it is shown. For
// dialogs that need nothing more: pop-ups, and those that open over a modal CZTDialog (see there).
#pragma once

#include "quor/platform/Framework.h"

class QUOR_CONTROLS_API CZTBCGPDialog : public CBCGPDialog {
    DECLARE_DYNAMIC(CZTBCGPDialog)

public:
    CZTBCGPDialog();
    explicit CZTBCGPDialog(UINT nIDTemplate, CWnd* pParent = nullptr);
    explicit CZTBCGPDialog(const char* lpszTemplateName, CWnd* pParent = nullptr);

    // Registers the dialog with the host while screen sharing is off by default: the host's result. 1 where there is
    // nothing to do.
    int SetDisplayAffinity();

    // Always TRUE: the system gives the focus to the first control.
    BOOL OnInitDialog() override;

protected:
    // Tells the host that the dialog closes, then ends it.
    void OnCancel() override;
    afx_msg void OnShowWindow(BOOL bShow, UINT nStatus);
    DECLARE_MESSAGE_MAP()
};
