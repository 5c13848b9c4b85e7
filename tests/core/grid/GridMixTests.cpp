// The windowless part of the grid - row store, filter store, sort - under random mixes, beside the model that tells it
// when to rebuild and when to sort.
#include "quor/grid/core/FilterStore.h"
#include "quor/grid/core/GridSort.h"
#include "quor/platform/tools/QuorTools.h"
#include "tests/core/grid/GridMix.h"
#include "tests/core/grid/PretendedPort.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace quor::grid;

namespace grid_mix {
namespace {

constexpr int kTookAStranger = -100;  // no result of any operation

// Null for none.
Row* rowOf(RowData data) { return static_cast<Row*>(reinterpret_cast<CFilterListBaseData*>(data)); }  // NOLINT

struct ModelsControl {
    PretendedControl control;
};

// A store beside the model.
class Store : public Subject, private ModelsControl, public GridModel {
public:
    Store() : GridModel({0, 1, 2, 3, 4, 5, 6}, ModelsControl::control) {
        m_store.enterOptiData();
        for (LiveRows& other : m_others) other.enterOptiData();
    }
    ~Store() override { clear(); }

    GridModel& model() override { return *this; }
    int apply(const Action& action) override {
        switch (action.kind) {
            case Action::addRow:
                return add(action.row, action.value != 0);
            case Action::updateRow:
                return m_store.update(action.row, test());
            case Action::deleteRow:
                return remove(action.row, action.value != 0);
            case Action::updateVisual:
                return update(m_store.dataOfVisual(action.number));
            case Action::updateMap:
                return update(m_store.dataOfMapIndex(action.number));
            case Action::deleteVisual:
                return remove(rowOf(m_store.dataOfVisual(action.number)), false);
            case Action::deleteMap:
                return remove(rowOf(m_store.dataOfMapIndex(action.number)), false);
            case Action::checkVisual:
                return m_store.setCheckOfVisual(action.number, action.value);
            case Action::checkMap:
                return m_store.setCheckOfMapIndex(action.number, action.value);
            case Action::resetChecks:
                return m_store.resetChecks(), 0;
            case Action::toggleReverse:
                return m_store.setReverse(!m_store.reverse()), 0;
            case Action::deleteAll:
                clear();
                return m_store.tellDisplayCount(), 1;
            case Action::select:
                return select(action), 0;
            case Action::scroll:
                return scroll(action), 0;
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
        if (m_store.checkedCount() != checkedCount()) return "the numbers of checked rows differ";
        for (LiveRows* list : {&m_store, &m_others[0], &m_others[1], &m_others[2]})
            if (std::string fault = list->Check(); !fault.empty()) return fault;
        m_store.settle();
        if (!(m_port.control == ModelsControl::control)) return "selection, focus, mark or native count differ";
        DirtyArea area = m_store.dirty();
        if (const CRect is = area.flush(m_port.layout); !grid.dirtIsOpen && !is.EqualRect(grid.dirty))
            return "the dirty rectangle is " + told(is) + ", not " + told(grid.dirty);
        if (!grid.dirtIsOpen && m_store.hasNews() != grid.dirtyNews) return "the dirty flags differ";
        // Rectangles only grow: they would soon hide every difference.
        if (!grid.dirtIsOpen && ++m_looks % 3 != 0) return {};
        m_store.forgetDirt();
        grid.forgetDirt();
        return compareTrends();
    }

protected:
    void onRebuild() override {
        RowWalk walk(m_store);
        m_store.rebuild(walk, test());
        m_store.tellDisplayCount();
        walk.finish();
    }
    void onEndBatch() override { m_store.endBatch(); }
    void onMark(int visual) override {
        m_store.tellDisplayCount();
        m_store.settle();
        m_port.control.mark = visual;
        m_port.control.setState(visual, 3, 3);
    }
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
    static std::string told(const RECT& rect) {
        std::string text;
        for (const LONG side : {rect.left, rect.top, rect.right, rect.bottom}) text += std::to_string(side) + " ";
        return text;
    }
    // A row's number is its value for ever: one that seems to change shows the trend of another.
    std::string compareTrends() {
        TrendStore& trends = m_store.trends();
        if (m_looks % 8 == 0) trends.set({0}, 1, m_store.itemCount());
        for (int mapIndex = 0; mapIndex < m_store.itemCount(); ++mapIndex) {
            const Row* const row = rowOf(m_store.dataOfMapIndex(mapIndex));
            if (!row) continue;
            const TrendPaint paint = trends.paint(0, mapIndex, std::to_string(row->number).c_str(), {});
            if (paint != TrendPaint::normal && paint != TrendPaint::unchanged) return "a row shows another's trend";
        }
        return {};
    }
    int update(RowData data) { return data ? m_store.update(rowOf(data), test()) : 0; }
    // A row stands in up to three other lists too, before or behind this one in its own memory.
    template <class Act>
    void inOthers(const Row& row, bool before, Act act) {
        for (int i = 0; i < row.number % 4; ++i)
            if ((row.number / 4 % 2 == i % 2) == before) act(m_others[i]);
    }
    int add(Row* row, bool now) {
        const auto enter = [row](LiveRows& list) { list.add(row, true, {}); };
        inOthers(*row, true, enter);
        const int mapIndex = m_store.add(row, now, test());
        inOthers(*row, false, enter);
        return mapIndex;
    }
    int remove(Row* row, bool now) {
        if (!row) return 0;
        const auto leave = [row](LiveRows& list) { list.remove(row, true); };
        inOthers(*row, false, leave);
        Row stranger(*row);
        *row = stranger;  // stays where it is
        if (m_store.remove(&stranger, now) != -1 || m_store.update(&stranger, test()) != 0) return kTookAStranger;
        const int mapIndex = m_store.remove(row, now);
        inOthers(*row, true, leave);
        for (LiveRows* list : {&m_store, &m_others[0], &m_others[1], &m_others[2]})
            if (list->remove(row, true) != -1) return kTookAStranger;
        return mapIndex;
    }
    void clear() {
        m_store.clear();
        for (LiveRows& other : m_others) other.clear();
    }
    void select(const Action& action) {
        m_store.settle();  // as before any message of the control
        if (action.number < m_port.control.count)
            m_port.control.setState(action.number, static_cast<unsigned>(action.value), 3);
        m_port.control.mark = action.mark;
    }
    void scroll(const Action& action) {
        m_store.settle();
        RowLayout next{.rowHeight = 16, .topIndex = action.number, .countPerPage = action.value};
        next.horizontalScroll = action.number % 100;
        next.totalWidth = 400;
        next.headerHeight = 17;
        next.visible = action.number % 8 != 0;
        next.countFellTo(m_port.control.count);
        m_store.forgetLayout();
        m_port.layout = grid.layout = next;
        m_store.layout();
    }
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
        return sortedMapIndices(keys, {sortOrder, false, &CompareDateTime});
    }
    void show(std::vector<std::int32_t> rows) {
        if (m_store.reverse()) std::reverse(rows.begin(), rows.end());
        RowWalk walk(m_store);
        m_store.reorder(walk, std::move(rows), nullptr);
        walk.finish();
    }

    int m_looks = 0;
    PretendedPort m_port, m_portOfOthers;
    LiveRows m_store{m_port};
    LiveRows m_others[3]{LiveRows(m_portOfOthers), LiveRows(m_portOfOthers), LiveRows(m_portOfOthers)};
    FilterStore m_filters;
};

std::unique_ptr<Subject> makeStore() { return std::make_unique<Store>(); }

TEST(GridMix, RowsFiltersAndSortsEndAsTheModelSays) {
    const unsigned first = test::anySeed();
    for (long i = 0; i < test::rounds("QUOR_GRID_MIXES", 240); ++i)
        for (const int looks : {1, 4})
            ASSERT_EQ(runMix(makeStore, first + static_cast<unsigned>(i), 1000, {.looks = looks}), "") << looks;
}

// Displays of up to several blocks; ticks wait for one another while nobody asks for a place.
TEST(GridMix, RowsThatComeAndGoEndAsTheModelSays) {
    const unsigned first = test::anySeed();
    for (long i = 0; i < test::rounds("QUOR_GRID_FLIPS", 40); ++i)
        for (const int rows : {40, 700, 3000}) {
            const Form form{.fewRows = rows - rows / 20, .manyRows = rows + rows / 20, .looks = 20, .flips = true};
            ASSERT_EQ(runMix(makeStore, first + static_cast<unsigned>(i), rows + 2000, form), "") << rows;
        }
}

}  // namespace
}  // namespace grid_mix
