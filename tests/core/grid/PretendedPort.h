// The port of a list on a pretended control: what it is told is there to be read, what it answers to be set.
#pragma once

#include "quor/grid/core/LiveRows.h"
#include "tests/core/grid/NaiveGrid.h"

#include <functional>

using namespace quor::grid;

class PretendedPort : public RowPort {
public:
    RowLayout readLayout() override { return layout; }
    bool isVisible() override { return layout.visible; }
    void tellCount(int count) override {
        control.setCount(count);
        layout.countFellTo(count);
    }
    bool fallingMatters(int lowest) override {
        return control.nextSelected(lowest - 1) != -1 || control.focus >= lowest ||
               (layout.topIndex > 0 && layout.topIndex + layout.countPerPage > lowest);
    }
    int selectionMark() override { return control.mark; }
    int focusedRow() override { return control.focus; }
    void collectSelected(std::vector<int>& rows) override {
        for (int visual = control.nextSelected(-1); visual != -1; visual = control.nextSelected(visual))
            rows.push_back(visual);
    }
    void setState(int visual, unsigned state, unsigned mask) override {
        control.setState(visual, state, mask);
        if (onState) onState();
    }
    void scrollRows(int rows) override { layout.topIndex += rows; }
    void invalidate(const RECT&, bool) override {}
    void invalidateAll() override {}

    PretendedControl control;
    RowLayout layout;
    std::function<void()> onState;  // the host hears of the row's state
};
