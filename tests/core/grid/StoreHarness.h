// What the tests of the row store share: rows as a host makes them, and the store beside a pretended control, doing
// with each result what the grid does.
#pragma once

#include "tests/core/grid/NaiveGrid.h"
#include "src/grid/core/RowStore.h"

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

// A key of a grid: any address that is no other grid's. The store compares it and never follows it.
inline CFilterListCtrl* gridKey(int number) {
    static char keys[64];
    return reinterpret_cast<CFilterListCtrl*>(&keys[number]);
}

class StoreHarness {
public:
    explicit StoreHarness(int number) : store(gridKey(number)) {
        store.enterOptiData();
        store.onSettled = [this](const LaterChanges& changes) { follow(changes); };
    }
    ~StoreHarness() { store.clear(); }

    int addRow(TestRow* row, bool now) { return carryOut(store.add(row, now, test)); }
    int updateRow(TestRow* row) { return carryOut(store.update(row, test)); }
    // As the grid does it: places and repaints follow where that is allowed.
    int updateRowLater(TestRow* row) {
        const bool later = store.canUpdateLater(layout.topIndex + layout.countPerPage);
        return later ? store.updateLater(row, test) : updateRow(row);
    }
    int deleteRow(TestRow* row, bool now) { return carryOut(store.remove(row, now)); }
    void rebuild() {
        store.rebuild(test);
        native.setCount(store.displayCount());
    }

    void endBatch() {
        if (!store.batchIsOpen()) return;
        BatchSelection selection;
        selection.mark = native.selectionMark();
        for (int visual = native.nextSelected(-1); visual != -1; visual = native.nextSelected(visual))
            selection.selected.push_back(visual);
        native.setState(-1, 0, 3);
        const StoreChange change = store.endBatch(selection);
        native.setCount(store.displayCount());
        for (const int visual : selection.selected) {
            const unsigned state = selection.mark == -1 || visual == selection.mark ? 3 : 2;
            native.setState(visual, state, state);
        }
        markDirty(change);
    }

    void setLayout(const RowLayout& next) {
        dirty.fold(layout);
        layout = next;
    }
    RECT dirtyRect() const {
        DirtyArea copy = dirty;
        return copy.flush(layout);
    }

    RowStore store;
    PretendedControl native;
    RowLayout layout;
    DirtyArea dirty;
    RowTest test;

private:
    void follow(const LaterChanges& changes) {
        native.setCount(changes.lowestCount);
        native.setCount(store.displayCount());
        for (const int visual : {changes.firstRepaint, changes.lastRepaint})
            if (changes.firstRepaint <= changes.lastRepaint) dirty.addRow(layout, visual);
        dirty.addToPageEnd(layout, std::max(layout.topIndex, changes.firstMoved), store.displayCount());
    }
    int carryOut(const StoreChange& change) {
        if (change.countChanged) native.setCount(store.displayCount());
        markDirty(change);
        return change.result;
    }
    void markDirty(const StoreChange& change) {
        if (change.dirtyRow != -1) dirty.addRow(layout, change.dirtyRow);
        if (change.dirtyFrom == -1) return;
        const int top = layout.topIndex;
        dirty.addToPageEnd(layout, change.dirtyMayStartAbove ? std::max(top, change.dirtyFrom) : change.dirtyFrom,
                           store.displayCount());
    }
};
