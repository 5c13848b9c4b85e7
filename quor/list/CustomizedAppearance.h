// CCustomizedAppearance: colours, font and keyword colours of one list, by its user. One modeless dialog serves all
// lists of the process: CCommonListCtrl::OnCustomize opens it. Applied settings are stored under CUSTOMIZE_LISTS.
//
// The keyword controls show while the property "Text" is chosen and the list's record has keywords enabled; else the
// dialog folds their room away.
#pragma once

#include "quor/list/AppearanceDialog.h"

class QUOR_CONTROLS_API CCustomizedAppearance : public quor::list::AppearanceDialog {
    DECLARE_DYNAMIC(CCustomizedAppearance)

public:
    explicit CCustomizedAppearance(CWnd* parent = nullptr);

    // The process's dialog, with a window; `list` counts when that is made. Null if it could not be.
    static CCustomizedAppearance* shared(CCommonListCtrl& list);

    // Enables the keyword controls, and shows or folds them.
    void EnableAttributeColorWindow(bool enable);

    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    void fill() override;
    void fillColumns() override;
    void applyColors(CCommonListCtrl& list) override;
    CString takeRows(const std::vector<quor::list::KeywordRow>& rows) override;
    void applied(CCommonListCtrl& list) override;
    quor::list::KeywordRow newRow(const CString& keyword) const override;

    afx_msg void OnPropertyChange();
    afx_msg void OnPropertyColor();
    afx_msg void OnChangeKeywordColumn();
    afx_msg void OnKeywordColumnChange();
    DECLARE_MESSAGE_MAP()

private:
    CComboBox& property() const;
    CComboBox& keywordColumn() const;
    void listColumns(int selected);
    void enable(std::initializer_list<int> ids, bool on);
    void addToolTips();
    void showKeywordGroup(bool shown);
    int topInView(int top, int height) const;
    void moveBelowKeywords(int step);

    CClrButton m_colorButton;
    CToolTipCtrl m_toolTip;
    int m_groupHeight = 0;  // of the keyword group
    int m_frameHeight = 0;  // of the frame around it, while it shows
};
