// Grid lines in a colour of the palette. A control draws its own in the colour of the system's buttons, which glares
// between dark rows: it never gets the style, and the pane draws lines over what the list has painted.
#pragma once

#include "quor/platform/Framework.h"

#include <utility>

class CCommonListCtrl;

namespace terminal {

bool showsGridLines(const CListCtrl& list);
// Right of each column and below each row, those that no item fills included.
void drawGridLines(CCommonListCtrl& list, CDC& dc);

// A list whose grid lines are its pane's to draw. It tells the style as it was set.
template <class List>
class Lined : public List {
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == LVM_SETEXTENDEDLISTVIEWSTYLE && (wParam == 0 || (wParam & LVS_EX_GRIDLINES))) {
            const bool former = std::exchange(m_lined, (lParam & LVS_EX_GRIDLINES) != 0);
            if (former != m_lined) this->Invalidate();
            lParam &= ~static_cast<LPARAM>(LVS_EX_GRIDLINES);
        }
        const LRESULT result = List::WindowProc(message, wParam, lParam);
        const bool tells = message == LVM_GETEXTENDEDLISTVIEWSTYLE && m_lined;
        return tells ? result | LVS_EX_GRIDLINES : result;
    }

private:
    bool m_lined = false;
};

}  // namespace terminal
