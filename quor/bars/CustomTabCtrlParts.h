// What stands behind a CCustomTabCtrl. Only its sources include this.
#pragma once

#include "quor/bars/CustomTabCtrl.h"
#include "quor/bars/core/TabStrip.h"
#include "quor/edits/ThemeUtil.h"

inline constexpr UINT kTabEditId = 1;

// A tab with what the window draws it by.
class CCustomTabCtrlItem : public quor::bars::TabItem {
public:
    // From six points of the client area; the same ones cost nothing.
    void ComputeRgn(const std::array<CPoint, 6>& points) {
        if (m_rgn.m_hObject && points == m_points) return;
        dropRgn();
        m_points = points;
        m_rgn.CreatePolygonRgn(m_points.data(), static_cast<int>(m_points.size()), WINDING);
    }
    void dropRgn() {
        if (m_rgn.m_hObject) m_rgn.DeleteObject();
    }

    CRgn m_rgn;

private:
    std::array<CPoint, 6> m_points;
};

struct CCustomTabCtrl::Parts {
    Parts();
    int measure(const CString& text, bool selected);
    int lineHeight();
    void setFont(LOGFONT font);
    CCustomTabCtrlItem& item(int index) { return static_cast<CCustomTabCtrlItem&>(strip.item(index)); }
    // Null: there is no such drag of this tab.
    HCURSOR dragCursor(int index, bool copies) const {
        return strip.canDrag(index, copies) ? (copies ? m_hCursorCopy : m_hCursorMove) : nullptr;
    }
    bool drags() const { return dragging && strip.down() >= 0; }
    // In strip coordinates; CTS_HIT_NOTHING without a drag of this kind.
    int dropPlace(CPoint point, bool copies) const {
        return drags() && dragCursor(strip.down(), copies) ? strip.dropPlace(point, copies) : CTS_HIT_NOTHING;
    }

    quor::bars::TabStrip strip;
    CFont m_fontNormal, m_fontSelected;
    CThemeUtil theme;

    HCURSOR m_hCursorMove = nullptr, m_hCursorCopy = nullptr;
    int m_nItemDragDest = 0;
    bool dragging = false;
    bool scrollsDrag = false;   // its timer runs
    unsigned middleDown = 0;    // the number of the tab
    int hot = CTS_HIT_NOTHING;  // what the mouse is over
    bool tracksMouse = false;

    CToolTipCtrl m_wndToolTip;
    std::vector<UINT_PTR> tools;
    bool tipsStale = true;

    CEdit m_ctrlEdit;
    unsigned edited = 0;   // the number of the tab
    bool editing = false;  // its loop is to go on
    bool keepsText = false;
};
