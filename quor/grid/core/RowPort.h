// RowPort: the control that shows the rows, as much of it as their store needs. NativeList is the port on a window, the
// tests have one without. Visual indices: see FilterListBaseData.h.
#pragma once

#include "quor/grid/core/RowLayout.h"

#include <vector>

namespace quor::grid {

// States of a row, as the list view numbers them.
enum RowState : unsigned { kRowFocused = 1, kRowSelected = 2 };

class RowPort {
public:
    virtual ~RowPort() = default;

    // All but `visible`; a control without a window gives an empty record. It asks nothing back.
    virtual RowLayout readLayout() = 0;
    virtual bool isVisible() = 0;

    // The control shall have this many rows. Repaints what the news uncover and no more; does not scroll on its own.
    virtual void tellCount(int count) = 0;
    // Whether a count that falls to `lowest` and rises again would leave a mark: on the selection, focus or page.
    virtual bool fallingMatters(int lowest) = 0;

    virtual int selectionMark() = 0;                           // -1 none
    virtual int focusedRow() = 0;                              // -1 none
    virtual void collectSelected(std::vector<int>& rows) = 0;  // in the control's order
    // Hosts hear of it, and may do anything meanwhile. Row -1: all rows.
    virtual void setState(int visual, unsigned state, unsigned mask) = 0;
    virtual void scrollRows(int rows) = 0;

    virtual void invalidate(const RECT& rect, bool erase) = 0;
    virtual void invalidateAll() = 0;  // with erase

protected:
    RowPort() = default;
    RowPort(const RowPort&) = default;
    RowPort& operator=(const RowPort&) = default;
};

}  // namespace quor::grid
