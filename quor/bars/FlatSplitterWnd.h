// CFlatSplitterWnd: a splitter with thin flat bars, whose panes follow a bar while it moves. A double click on a bar
// fits the pane before it, if that one says how large it would be. Panes may keep their shares when the window changes
// its size; else the last one that shows gives or takes.
#pragma once

#include "quor/platform/Framework.h"

#include <vector>

// A pane that knows the size at which all of it shows, in pixels; a length of 0: it does not know. Asked by a double
// click on the bar behind it.
class QUOR_CONTROLS_API CFittingPane {
public:
    virtual CSize GetFittingSize() = 0;

protected:
    CFittingPane();
    virtual ~CFittingPane();
};

class QUOR_CONTROLS_API CFlatSplitterWnd : public CSplitterWnd {
    DECLARE_DYNCREATE(CFlatSplitterWnd)

public:
    CFlatSplitterWnd();
    ~CFlatSplitterWnd() override;

    // Whether the user may move the bars; from the start they may.
    void SetResizable(int resizable) { m_resizable = resizable != 0; }
    int IsResizable() const { return m_resizable; }

    // From now on a new size of the window divides anew as the panes stand. Off at the start.
    void SetKeepShares(int keep);
    // The panes' shares in any unit, 0 for a closed pane; they count at once if the window has a size, else with its
    // first. Too few or too many are refused: FALSE.
    BOOL SetColumnShares(const std::vector<int>& shares);
    BOOL SetRowShares(const std::vector<int>& shares);
    // As they stand, in pixels.
    std::vector<int> GetColumnShares() const;
    std::vector<int> GetRowShares() const;

    void RecalcLayout() override;
    BOOL DoKeyboardSplit() override;

protected:
    int HitTest(CPoint point) const override;
    void OnDrawSplitter(CDC* dc, const CRect& bar) override;
    void OnInvertTracker(const CRect& bar) override;
    void StopTracking(BOOL accept) override;

    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    void divide();
    void takeShares();
    void settleShares();

    bool m_resizable = true;
    bool m_keepShares = false;
    bool m_dividing = false;  // the layout under way follows the shares and does not make them
    std::vector<int> m_columnShares, m_rowShares;
};
