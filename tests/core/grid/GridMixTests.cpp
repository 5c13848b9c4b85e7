// The windowless part of the grid - row store, filter store, sort - under random mixes, beside the model that tells it
// when to rebuild and when to sort.
#include "quor/grid/core/FilterStore.h"
#include "quor/grid/core/GridSort.h"
#include "quor/platform/tools/QuorTools.h"
#include "tests/core/grid/GridMix.h"
#include "tests/core/grid/StoreHarness.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace quor::grid;

namespace grid_mix {
namespace {

Row* rowOf(RowData data) { return static_cast<Row*>(reinterpret_cast<CFilterListBaseData*>(data)); }  // NOLINT

// A store beside the model. `fault` breaks one rule on purpose.
class Store : public Subject, public GridModel {
public:
    explicit Store(bool fault) : GridModel({0, 1, 2, 3, 4, 5, 6}), m_fault(fault) { m_store.enterOptiData(); }
    ~Store() override { m_store.clear(); }

    GridModel& model() override { return *this; }
    int apply(const Action& action) override {
        switch (action.kind) {
            case Action::addRow:
                return m_store.add(action.row, action.value != 0, test());
            case Action::updateRow:
                return m_store.update(action.row, test());
            case Action::deleteRow:
                return m_store.remove(action.row, action.value != 0);
            case Action::updateVisual:
                return update(m_store.dataOfVisual(action.number));
            case Action::updateMap:
                return update(m_store.dataOfMapIndex(action.number));
            case Action::deleteVisual:
                return remove(m_store.dataOfVisual(action.number));
            case Action::deleteMap:
                return remove(m_store.dataOfMapIndex(action.number));
            case Action::checkVisual:
                return m_store.setCheckOfVisual(action.number, action.value);
            case Action::checkMap:
                return m_store.setCheckOfMapIndex(action.number, action.value);
            case Action::resetChecks:
                return m_store.resetChecks(), 0;
            case Action::toggleReverse:
                return m_store.setReverse(!m_store.reverse()), 0;
            case Action::deleteAll:
                return m_store.clear(), 1;
            case Action::setFilter:
            case Action::setFilters:
            case Action::removeFilter:
            case Action::removeAllFilters:
            case Action::sortOn:
                return 1;
            default:
                return 0;
        }
    }

    int displayCount() override { return m_store.displayCount(); }
    int itemCount() override { return m_store.itemCount(); }
    DWORD_PTR dataOfVisual(int visual) override { return m_store.dataOfVisual(visual); }
    int mapIndexOfSlot(int slot) override { return m_store.mapIndexOfSlot(slot); }
    int checkOfVisual(int visual) override { return m_store.checkOfVisual(visual); }
    // The store knows its rows' slots; that the rows know their map indices is what Check verifies.
    std::pair<int, int> numbersOf(Row& row) override {
        const int slot = m_store.slotOf(&row);
        return {grid.numbers.at(static_cast<CFilterListBaseData*>(&row)).mapIndex,
                slot == -1 ? -1 : m_store.mirrored(slot)};
    }
    Filters filters() override {
        Filters all;
        for (int i = 0; i < m_filters.count(); ++i)
            all.emplace_back(m_filters.columnAt(i), m_filters.textAt(i).GetString());
        return all;
    }
    std::string compareRest() override {
        return m_store.checkedCount() == checkedCount() ? m_store.Check() : "the numbers of checked rows differ";
    }

protected:
    void onRebuild() override {
        RowWalk walk(m_store);
        m_store.rebuild(walk, test());
        walk.finish();
    }
    void onEndBatch() override { m_store.endBatch(); }
    void onStoreFilter(int columnIndex, const std::string& text) override { m_filters.set(columnIndex, text.c_str()); }
    void onSort(int columnIndex, bool narrow) override {
        show(sorted(m_store.displayOrder(), columnIndex, narrow ? SortIntegers::narrow : SortIntegers::wide));
    }
    void onSortOnChecked() override {
        std::vector<std::int32_t> order = m_store.displayOrder(), parts[2];
        for (std::size_t i = 0; i < order.size(); ++i)
            parts[m_store.checkOfVisual(static_cast<int>(i)) ? 0 : 1].push_back(order[i]);
        order = sorted(parts[0], 0, SortIntegers::wide);
        for (const std::int32_t mapIndex : sorted(parts[1], 0, SortIntegers::wide)) order.push_back(mapIndex);
        show(std::move(order));
    }

private:
    int update(RowData data) { return data ? m_store.update(rowOf(data), test()) : 0; }
    int remove(RowData data) { return data ? m_store.remove(rowOf(data), false) : 0; }
    RowTest test() {
        if (m_filters.isEmpty()) return {};
        return {[](const void* store, RowData data) {
                    return const_cast<Store*>(static_cast<const Store*>(store))->passesFilters(*rowOf(data));
                },
                this};
    }
    bool passesFilters(const Row& row) {
        for (int i = 0; i < m_filters.count(); ++i) {
            const CString cell = row.cells[static_cast<std::size_t>(m_filters.columnAt(i))].c_str();
            if (!m_filters.tokensAt(i, isExact()).passes(cell)) return false;
        }
        return true;
    }
    std::vector<std::int32_t> sorted(const std::vector<std::int32_t>& rows, int columnIndex, SortIntegers integers) {
        const auto column = static_cast<std::size_t>(columnIndex);
        SortKeys keys(kDataTypes[column], integers, rows.size());
        for (const std::int32_t mapIndex : rows)
            keys.add(mapIndex, rowOf(m_store.dataOfMapIndex(mapIndex))->cells[column].c_str());
        return sortedMapIndices(keys, {m_fault ? -sortOrder : sortOrder, false, &CompareDateTime});
    }
    void show(std::vector<std::int32_t> rows) {
        if (m_store.reverse()) std::reverse(rows.begin(), rows.end());
        RowWalk walk(m_store);
        m_store.reorder(walk, std::move(rows), nullptr);
        walk.finish();
    }

    bool m_fault;
    PretendedPort m_port;
    LiveRows m_store{m_port};
    FilterStore m_filters;
};

MakeSubject makeStore(bool fault) {
    return [fault] { return std::make_unique<Store>(fault); };
}

TEST(GridMix, RowsFiltersAndSortsEndAsTheModelSays) {
    for (unsigned seed = 1; seed <= 24; ++seed) ASSERT_EQ(runMix(makeStore(false), seed, 1000), "");
}

TEST(GridMix, AFaultIsReportedWithItsSeedAndFewActions) {
    const std::string report = runMix(makeStore(true), 5, 1000);
    EXPECT_EQ(report.find("seed 5, step "), 0u) << report;
    EXPECT_NE(report.find("another row stands"), std::string::npos) << report;
    EXPECT_LE(std::count(report.begin(), report.end(), '\n'), 8) << report;
}

}  // namespace
}  // namespace grid_mix
