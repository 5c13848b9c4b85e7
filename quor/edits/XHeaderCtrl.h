// CXHeaderCtrl: the header of a check list, which attaches it by itself. A heading may have a check box for its whole
// column: it says what the column's boxes say, half ticked when they differ. A click on the heading is the list's
// (CXListCtrl::OnColumnClick). Headings begin where the texts of their cells do; one with an image, an arrow or a
// painter of its own is the system's.
#pragma once

#include "quor/edits/ThemeUtil.h"

class QUOR_CONTROLS_API CXHeaderCtrl : public CHeaderCtrl {
    DECLARE_DYNAMIC(CXHeaderCtrl)

public:
    CXHeaderCtrl() = default;

    // A column's box goes with the column; FALSE if there is no such column.
    BOOL ShowCheckbox(int column, BOOL show);
    BOOL HasCheckbox(int column) const;

protected:
    afx_msg void OnCustomDraw(NMHDR* header, LRESULT* result);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg LRESULT OnThemeChanged();
    DECLARE_MESSAGE_MAP()

private:
    bool isOurs(int column) const;
    void paintHeading(CDC& dc, CRect area, int column, bool pressed);

    CThemeUtil m_theme;
    CThemeUtil m_boxTheme;
};
