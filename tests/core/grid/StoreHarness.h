// What the tests of the row store share: rows as a host makes them, and the store beside a pretended control, doing
// with each result what the grid does.
#pragma once

#include "quor/grid/core/LiveRows.h"
#include "tests/core/grid/NaiveGrid.h"

#include <functional>
#include <string>

using namespace quor::grid;

// A row whose CFilterListBaseData part lies behind a second, polymorphic base.
struct Priced {
    virtual ~Priced() = default;
    virtual int price() const = 0;
};

struct TestRow : Priced, CFilterListBaseData {
    TestRow(char rowName, int rowValue) : name(rowName), value(rowValue) {}
    int price() const override { return value; }

    char name;
    int value;
};

inline RowData dataOf(TestRow* row) { return reinterpret_cast<RowData>(static_cast<CFilterListBaseData*>(row)); }
inline TestRow* rowOf(RowData data) { return static_cast<TestRow*>(reinterpret_cast<CFilterListBaseData*>(data)); }

// The port of a list on a pretended control.
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
    void invalidate(const RECT& rect, bool) override { invalidated = rect; }
    void invalidateAll() override { ++wholeRepaints; }

    PretendedControl control;
    RowLayout layout;
    RECT invalidated{};
    int wholeRepaints = 0;
    std::function<void()> onState;  // the host hears of the row's state
};

// The rows of a grid in opti-data mode beside a pretended control.
class StoreHarness {
public:
    StoreHarness() { store.enterOptiData(); }
    StoreHarness(const StoreHarness&) = delete;
    StoreHarness& operator=(const StoreHarness&) = delete;
    ~StoreHarness() { store.clear(); }

    int addRow(TestRow* row, bool now) { return store.add(row, now, test); }
    int updateRow(TestRow* row) { return store.update(row, test); }
    int deleteRow(TestRow* row, bool now) { return store.remove(row, now); }
    void endBatch() { store.endBatch(); }
    void rebuild() {
        RowWalk walk(store);
        store.rebuild(walk, test);
        store.tellDisplayCount();
        walk.finish();
    }
    void reorder(std::vector<std::int32_t> mapIndices) {
        RowWalk walk(store);
        store.reorder(walk, std::move(mapIndices), nullptr);
        walk.finish();
    }
    void empty() {
        store.clear();
        store.tellDisplayCount();
    }

    void setLayout(const RowLayout& next) {
        store.forgetLayout();
        port.layout = next;
        store.layout();
    }
    RECT dirtyRect() {
        store.settle();
        DirtyArea copy = store.dirty();
        return copy.flush(port.layout);
    }

    PretendedPort port;
    PretendedControl& native = port.control;
    LiveRows store{port};
    RowTest test;
};
