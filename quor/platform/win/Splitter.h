// CSplitterWnd: panes in rows and columns with bars between them that the user moves, by mouse or, after
// ID_WINDOW_SPLIT, by keys: arrows move a bar (with Ctrl by single pixels), Tab goes to the next one, Enter keeps and
// Esc undoes. A bar moves between its two neighbours; a pane that would fall below its least size closes, and its bars
// stay, so that it can be drawn open again.
//
// Panes are children with the ids that IdFromRowCol gives, made by CreateView or by anybody. Their commands and
// notifications, where the splitter itself does not handle them, go to its parent. The window is the object's owner's:
// a splitter is mostly a member of its frame. There is no dynamic splitting and no shared scroll bars.
#pragma once

#include "quor/platform/win/Wnd.h"

#include <memory>

struct CCreateContext;

constexpr UINT ID_WINDOW_SPLIT = 0xE135;

class QUOR_FRAMEWORK_API CSplitterWnd : public CWnd {
    DECLARE_DYNCREATE(CSplitterWnd)
public:
    CSplitterWnd();
    ~CSplitterWnd() override;

    // 1 to 16 rows and columns; FALSE for other counts.
    virtual BOOL CreateStatic(CWnd* pParentWnd, int nRows, int nCols, DWORD dwStyle = WS_CHILD | WS_VISIBLE,
                              UINT nID = AFX_IDW_PANE_FIRST);
    // A new window of the class as this pane; its size is asked for as SetRowInfo and SetColumnInfo do. FALSE where the
    // pane is taken or the window could not be made.
    virtual BOOL CreateView(int row, int col, CRuntimeClass* pViewClass, SIZE sizeInit, CCreateContext* pContext);

    int GetRowCount() const;
    int GetColumnCount() const;
    // Current: as laid out. Ideal: what the next RecalcLayout gives it if there is room; a pane that would get less
    // than its minimum is closed. A number out of range throws the invalid-argument exception.
    void GetRowInfo(int row, int& cyCur, int& cyMin) const;
    void SetRowInfo(int row, int cyIdeal, int cyMin);
    void GetColumnInfo(int col, int& cxCur, int& cxMin) const;
    void SetColumnInfo(int col, int cxIdeal, int cxMin);
    // Null where the pane has no window.
    CWnd* GetPane(int row, int col) const;
    // Whether the window is a pane, and which; either pointer may be null.
    BOOL IsChildPane(const CWnd* pWnd, int* pRow, int* pCol) const;
    int IdFromRowCol(int row, int col) const;

    // Lays the panes out, from the left and from the top: each gets its ideal size, the last one shown takes the rest.
    // A window without an area keeps its layout.
    virtual void RecalcLayout();
    // Begins to move bars by keys. FALSE: there is none, or they do not move.
    virtual BOOL DoKeyboardSplit();
    // Gives the focus to the next pane that shows, round the corner too.
    virtual void ActivateNext(BOOL bPrev = FALSE);

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    // Codes of HitTest: the bar behind column or row 0, and so on up.
    enum HitCode { kNoBar = 0, kColumnBar = 101, kRowBar = 201 };
    virtual int HitTest(CPoint pt) const;
    // Of a bar, in client coordinates.
    CRect barRect(int hit) const;
    virtual void OnDrawSplitter(CDC* pDC, const CRect& rect);
    // Shows where the tracked bar would go, or takes that away again: both are one inversion. A move of the mouse or a
    // key calls it for the former place and for the new one.
    virtual void OnInvertTracker(const CRect& rect);
    // A bar's left or upper edge would stand here: sets what its two neighbours ask for. RecalcLayout follows.
    virtual void TrackColumnSize(int x, int col);
    virtual void TrackRowSize(int y, int row);
    virtual void StartTracking(int ht);
    virtual void StopTracking(BOOL bAccept);
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg void OnCancelMode();
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg UINT OnGetDlgCode();
    DECLARE_MESSAGE_MAP()

    int m_cxSplitter;          // width of a bar between columns
    int m_cySplitter;          // height of one between rows
    BOOL m_bTracking = FALSE;  // a bar is being moved
    int m_htTrack = kNoBar;    // which
    CRect m_rectTracker;       // where it stands meanwhile

private:
    struct Parts;

    void moveTracker(int position);
    void trackKey(UINT key);
    void nextBar(int step);

    std::unique_ptr<Parts> m_parts;
};
