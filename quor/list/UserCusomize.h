// CUserCusomize: the background and the keyword colours of one list as its user wants them. One modeless dialog serves
// all lists of the process: CCommonListCtrl::OnUserCustomize opens it. Applied settings are stored under
// USER_CUSTOMIZE_LISTS.
#pragma once

#include "quor/list/AppearanceDialog.h"

class QUOR_CONTROLS_API CUserCusomize : public quor::list::AppearanceDialog {
    DECLARE_DYNAMIC(CUserCusomize)

public:
    explicit CUserCusomize(CWnd* parent = nullptr);

    // The process's dialog, with a window; `list` counts when that is made. Null if it could not be.
    static CUserCusomize* shared(CCommonListCtrl& list);

    BOOL OnInitDialog() override;

protected:
    void fill() override;
    void applyColors(CCommonListCtrl& list) override;
    CString takeRows(const std::vector<quor::list::KeywordRow>& rows) override;
    quor::list::KeywordRow newRow(const CString& keyword) const override;

    afx_msg void OnBackgroundColor();
    DECLARE_MESSAGE_MAP()

private:
    CClrButton m_backgroundButton;
};
