// CCustomTabCtrl: a strip of overlapping tabs with scroll buttons and, by style (core/TabStyles.h), a close button, a
// menu of all tabs, tabs that are dragged to a new place or copied, and several highlighted at once. Tabs are renamed
// in place. Its window class "CCustomTabCtrl" can stand in a dialog's template.
//
// Indexes run from 0. A bad index changes nothing; it gives -1, FALSE, 0 or an empty text. Calls of the host send
// nothing, but for MoveItem, CopyItem and EditLabel. A host may do anything from a notification, destroying the control
// included.
//
// Everything is measured from the strip's height; about 22 to 26 pixels suit a plain screen. A parent that lays out its
// children by WM_SIZEPARENT (RepositionBars) keeps that height: above its content, below it with CTS_TOP; a vertical
// strip stands left of it, or right.
//
// Keys: arrows, Home and End choose, Ctrl+Tab goes round, F2 renames, Delete asks to close, Esc ends a drag.
#pragma once

#include "quor/bars/core/TabStyles.h"
#include "quor/platform/Framework.h"

#include <memory>

// Codes of WM_NOTIFY, besides NM_CLICK, NM_RCLICK and NM_RDBLCLK with what was hit.
enum eTabNotify {
    kTabCopyFailed = -1,
    kTabChosen = 0,     // by the user: another tab is selected
    kTabHighlight = 1,  // its highlight changed
    kTabMoved = 2,
    kTabCopied = 3,  // the item is the copy
    kTabLabel = 4,   // before renaming, when an answer other than 0 refuses it, and when it ended
    kTabClose = 5,   // the user asks to close it; the control does nothing by itself
};

struct sTabNotify {
    NMHDR hdr;
    int nItem;        // a tab or a hit code; of kTabMoved (old index & 255) << 8 | (new index & 255)
    char szText[31];  // the tab's, cut. From here on the fields are a tab's, zero for a hit code
    LPARAM lParam;
    RECT rectText;  // in the client area, buttons not regarded; empty for a tab that is scrolled out
    POINT point;    // of the mouse, in the client area
    int fSelected;
    int fHighlighted;
};

namespace quor::bars {
class TabPainter;
}

class QUOR_CONTROLS_API CCustomTabCtrl : public CWnd {
    DECLARE_DYNAMIC(CCustomTabCtrl)

public:
    CCustomTabCtrl();
    ~CCustomTabCtrl() override;

    // Style: the window's bits and those of CTS_.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetItemCount() const;
    // Before the tab that has this index, or at the end; its index, or -1.
    int InsertItem(int index, LPCTSTR text, LPARAM data = 0, BOOL select = FALSE);
    // If it was selected, the next tab is, else the one before.
    BOOL DeleteItem(int index);
    void DeleteAllItems();
    // `to` is the tab's index afterwards. Notifies kTabMoved.
    BOOL MoveItem(int from, int to);
    // Inserts a copy under a text of its own at `to` and selects it; its index, or -1. Notifies kTabCopied or
    // kTabCopyFailed.
    int CopyItem(int from, int to);

    int GetCurSel() const;
    // Brings it into view; -1 selects none.
    BOOL SetCurSel(int index);
    BOOL IsItemHighlighted(int index) const;
    BOOL HighlightItem(int index, BOOL highlight = TRUE);

    LPARAM GetItemData(int index) const;
    BOOL SetItemData(int index, LPARAM data);
    CString GetItemText(int index) const;
    BOOL SetItemText(int index, LPCTSTR text);
    // In the client area, buttons not regarded; empty for a tab that is scrolled out.
    BOOL GetItemRect(int index, RECT& rect) const;
    // Shown while the mouse is over its text; without one a text that is cut shows in full.
    BOOL SetItemTooltipText(int index, LPCTSTR text);

    // They stay the caller's. A drag of either kind needs its cursor.
    void SetDragCursors(HCURSOR move, HCURSOR copy);
    // The selected tab's text is bold.
    void SetControlFont(const LOGFONT& font, BOOL redraw = TRUE);
    // A tab, or a CTS_HIT_ code. The selected tab lies over its neighbours.
    int HitTest(CPoint point) const;
    // Selects the tab and lets the user change its text; returns when that is over, TRUE if it changed. Enter and a
    // click elsewhere take the text, Esc and losing the activation leave the old one.
    BOOL EditLabel(int index);
    BOOL IsVertical() const;

    BOOL PreTranslateMessage(MSG* message) override;
    void PreSubclassWindow() override;

protected:
    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnPaint();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnDestroy();
    afx_msg void OnStyleChanged(int which, LPSTYLESTRUCT styles);
    afx_msg LRESULT OnThemeChanged();
    afx_msg void OnSysColorChange();
    afx_msg void OnEnable(BOOL enable);
    afx_msg LRESULT OnSetFont(WPARAM font, LPARAM redraw);
    afx_msg LRESULT OnGetFont(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnSizeParent(WPARAM wParam, LPARAM layout);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonUp(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnRButtonDown(UINT flags, CPoint point);
    afx_msg void OnRButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnMButtonDown(UINT flags, CPoint point);
    afx_msg void OnMButtonUp(UINT flags, CPoint point);
    afx_msg void OnMouseMove(UINT flags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg void OnCaptureChanged(CWnd* window);
    afx_msg void OnTimer(UINT_PTR timer);
    afx_msg void OnSetFocus(CWnd* former);
    afx_msg void OnKillFocus(CWnd* next);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnKeyUp(UINT key, UINT repeat, UINT flags);
    afx_msg LRESULT OnGetDialogCode(WPARAM key, LPARAM message);
    afx_msg void OnUpdateEdit();
    afx_msg void OnKillFocusEdit();
    DECLARE_MESSAGE_MAP()

private:
    struct Parts;

    // The owner's answer. Afterwards the control may be gone.
    LRESULT notify(int code, int item, CPoint point, int tab);
    LRESULT notify(int code, int item, CPoint point = CPoint()) { return notify(code, item, point, item); }
    CPoint stripPoint(CPoint point) const;
    CRect clientRect(const CRect& rect) const;
    void layoutChanged();
    void ComputeRgn();
    void RecalcEditResized();

    void ProcessLButtonDown(int code, UINT flags, CPoint point);
    void pressTab(int index, UINT flags, CPoint point);
    bool toggleOrChoose(int index, UINT flags, CPoint point);
    bool choose(int index, CPoint point);
    void awaitDrag(int index, bool copies);
    void startDrag();
    void dragTo(CPoint point);
    void scrollDrag();
    void drop(int from, int to, bool copies);
    void endPress();
    void cancelPress();
    void askClose(int index, CPoint point);
    void showList();
    int trackList(CMenu& menu);
    CPoint mousePoint() const;
    void noteHot(int code);

    bool openEditor(int index);
    void runEditor();
    void endEditor(bool keep);
    BOOL closeEditor();
    void dropEditor();

    void tellTips();
    void Draw(CDC& dc, const CRect& client);
    void drawTab(quor::bars::TabPainter& painter, int index);
    void drawMarks(quor::bars::TabPainter& painter);
    void drawButtons(quor::bars::TabPainter& painter);

    std::unique_ptr<Parts> m_parts;
};
