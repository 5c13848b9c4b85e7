// A window that divides its client area between two child windows and lets the user move the bar between them.
//
// Owns nothing: the two children are windows whose parent is this one (another splitter may be among them), made and
// destroyed by the framework's rules. The position is a share of the free space, so a resize keeps the proportions.
#pragma once

#include "quor/platform/Framework.h"

namespace terminal {

class CPaneSplitter : public CWnd {
public:
    enum class Axis {
        Columns,  // side by side, a vertical bar
        Rows      // one above the other, a horizontal bar
    };

    // `share` in 0..1: the part of the free space that the first pane gets at the start.
    CPaneSplitter(Axis axis, double share);

    // Makes the window, visible, empty, as a child of `parent`. Gives FALSE when the system refuses.
    BOOL CreatePane(CWnd* parent, UINT id);

    // Names the two children and lays them out. Either may be null: the other then fills the area.
    void SetPanes(CWnd* first, CWnd* second);

    // The present share of the first pane; setting it lays the panes out again. Values outside 0..1 are cut.
    double share() const { return m_share; }
    void setShare(double share);

    // Shows or hides the second pane; hidden, the first one fills the area.
    void showSecond(bool show);

private:
    void layOut();
    int barWidth() const;
    int extent() const;
    RECT barRect() const;
    void moveBarTo(CPoint point);

    void OnSize(UINT type, int width, int height);
    void OnPaint();
    BOOL OnEraseBkgnd(CDC* dc);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    BOOL OnSetCursor(CWnd* wnd, UINT hitTest, UINT message);

    Axis m_axis;
    double m_share;
    CWnd* m_first = nullptr;
    CWnd* m_second = nullptr;
    bool m_secondShown = true;
    bool m_dragging = false;

    DECLARE_MESSAGE_MAP()
};

}  // namespace terminal
