// CFilterText: the pop-up that offers a column's values as a filter. A grid fills its list box and shows it at the
// cursor; a double click or Enter makes the chosen values the column's filter. It hides when it loses activation.
//
// One for the whole process, made when a grid first needs it: only one can be open, and it belongs to the last grid.
#pragma once

#include "quor/framework/ZTBCGPDialog.h"

class CCommonListCtrl;
class CFilterListCtrl;

class QUOR_CONTROLS_API CFilterText : public CZTBCGPDialog {
    DECLARE_DYNAMIC(CFilterText)

public:
    explicit CFilterText(CWnd* parent);

    // The process's pop-up, with a window; `parent` counts when that is made. Null if it could not be.
    static CFilterText* shared(CWnd* parent);
    // The list dies: a choice made afterwards goes nowhere.
    static void forget(const CCommonListCtrl* list);

    // Where a choice goes: a list with a filter bar, borrowed until it dies, and its header item.
    void SetFilterlist(CCommonListCtrl* list, int column);
    // The chosen values, joined by "~" in the list box's order, become the filter. A value that occurs inside the text
    // so far is left out. Nothing without a selection.
    void OnLbnDblclkFilterlist();

    CListBox& values();

    BOOL PreTranslateMessage(MSG* message) override;
    BOOL OnInitDialog() override;

protected:
    afx_msg void OnActivate(UINT state, CWnd* other, BOOL minimized);
    DECLARE_MESSAGE_MAP()

private:
    CString chosenText();

    CFilterListCtrl* m_pFilterList = nullptr;
    int m_nColumn = 0;
};
