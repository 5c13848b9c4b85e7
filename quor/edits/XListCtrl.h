// CXListCtrl: a list in report view whose cells hold a check box, a colour box, a text, or a check box with either.
//
// What a cell holds is kept by the control itself, in place of the item's image, so that it moves with its row and its
// column: images are the list's own here. A colour cell's item text is "#RRGGBB", or empty while the box has no colour;
// it is never painted, tools read it.
//
// Boxes answer mouse and Space. A check box turns, then the parent is sent WM_XLISTCTRL_CHECKBOX_CLICKED; of a colour
// box it is sent WM_XLISTCTRL_COLORBOX_CLICKED and opens what it likes. wParam is the row, -1 a heading whose click
// turned its column; lParam the column. Left and Right move between the cells of the focused row. The parent may change
// or destroy the list meanwhile.
#pragma once

#include "quor/edits/XHeaderCtrl.h"

class QUOR_CONTROLS_API CXListCtrl : public CListCtrl {
    DECLARE_DYNCREATE(CXListCtrl)

public:
    CXListCtrl();
    ~CXListCtrl() override;

    // Rows and columns that are not there: FALSE, and none. None of these sends a message to the parent.
    // -1 takes the box away, 0 and 1 give it.
    BOOL SetCheckbox(int row, int column, int check);
    // -1: no box.
    int GetCheckbox(int row, int column) const;
    // Gives the cell a colour box; kNoColor leaves it empty. The text of the cell goes.
    BOOL SetColorboxColor(int row, int column, COLORREF color);
    // kNoColor: the box is empty, or there is none. Black is a colour.
    COLORREF GetColorboxColor(int row, int column) const;
    // The boxes of a disabled cell do not answer, and its text is grey.
    BOOL SetEnabled(int row, int column, BOOL enabled);
    BOOL GetEnabled(int row, int column) const;

    // A check box for the column in its heading.
    BOOL SetHeaderCheckbox(int column, BOOL show);
    // -1: the column has none, 0, 1, or 2: some are ticked.
    int GetHeaderCheckbox(int column) const;

    // The column that Space acts on in the focused row.
    int GetFocusedColumn() const;
    // As the control paints it, in client coordinates, the part out of view included.
    CRect GetCellRect(int row, int column) const;

    enum : COLORREF { kNoColor = 0xFFFFFFFF };

    void PreSubclassWindow() override;

protected:
    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnParentNotify(UINT message, LPARAM lParam);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnChar(UINT character, UINT repeat, UINT flags);
    afx_msg void OnPaint();
    afx_msg void OnEnable(BOOL enabled);
    afx_msg void OnSysColorChange();
    afx_msg LRESULT OnThemeChanged();
    afx_msg void OnCustomDraw(NMHDR* header, LRESULT* result);
    afx_msg BOOL OnColumnClick(NMHDR* header, LRESULT* result);
    DECLARE_MESSAGE_MAP()

private:
    struct Parts;

    void prepare();
    void giveRowHeight();
    bool isCell(int row, int column) const;
    int cellNumber(int row, int column) const;
    BOOL setCellNumber(int row, int column, int number);
    void invalidateRow(int row);
    void moveFocus(int step);
    bool pressBox(int row, int column, bool colour);
    bool pressAt(CPoint point);
    void paintRow(CDC& dc, int row);
    void paintCell(CDC& dc, int row, int column, const CRect& area, COLORREF ground, COLORREF color);

    CXHeaderCtrl m_header;
    std::unique_ptr<Parts> m_parts;
};
