// CListTrendSetting: which columns of a grid show trends, their colours, and how long. One modeless dialog serves all
// grids of the process: CFilterListCtrl::OnSetTrendColumns opens it. OK hands the choices to the grid, whose trends
// begin anew; they are stored with the grid's columns. A grid that goes is forgotten, and the dialog hides.
#pragma once

#include "quor/edits/ClrButton.h"
#include "quor/foundation/core/ColumnRecords.h"
#include "quor/framework/ZTDialog.h"

#include <map>

class CFilterListCtrl;

class QUOR_CONTROLS_API CListTrendSetting : public CZTDialog {
    DECLARE_DYNAMIC(CListTrendSetting)

public:
    explicit CListTrendSetting(CWnd* parent = nullptr);
    ~CListTrendSetting() override;

    // The process's dialog, with a window; `grid` counts when that is made. Null if it could not be.
    static CListTrendSetting* shared(CFilterListCtrl& grid);
    // To every dialog of the process: the grid dies, or its columns were built anew.
    static void forgetGrid(const CFilterListCtrl* grid);
    static void columnsRebuilt(const CFilterListCtrl* grid);

    // Filled and shown on a grid, in front.
    void openOn(CFilterListCtrl& grid);

    // The steps of filling, in this order. The columns that may have a trend are kept: those with numbers. Always 1;
    // null changes nothing.
    int SetTrendColumns(CArray<sQuorColInfo, sQuorColInfo>* columns);
    void SetFilterList(CFilterListCtrl* grid) { m_pFilterList = grid; }
    // Nothing is selected afterwards.
    void DisplayTrendColumns();
    void ReadDlgValues();
    void ShowSelectedTrendColumns();

    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    afx_msg void OnHScroll(UINT code, UINT position, CScrollBar* bar);
    afx_msg void OnBnClickedBackground();
    afx_msg void OnBnClickedText();
    afx_msg void OnRiseColor();
    afx_msg void OnFallColor();
    afx_msg void OnSliderReleased(NMHDR* header, LRESULT* result);
    afx_msg void OnBnClickedOk();
    DECLARE_MESSAGE_MAP()

private:
    CListBox& columnBox() const;
    CSliderCtrl& slider() const;
    void fitThumb();
    void addToolTips();
    std::map<int, CString> selectedColumns() const;
    void pickColor(CClrButton& button);
    void forget();

    CFilterListCtrl* m_pFilterList = nullptr;
    // Each columnIndex with its heading.
    std::map<int, CString> m_mapColumns;
    std::map<int, CString> m_mapSelected;
    CClrButton m_riseButton;
    CClrButton m_fallButton;
    CToolTipCtrl m_toolTip;
};
