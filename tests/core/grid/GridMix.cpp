#include "tests/core/grid/GridMix.h"

#include <random>

namespace grid_mix {

namespace {

constexpr int kFlipColumn = 1;

constexpr int kCellsPerColumn = 10;
constexpr std::size_t kMostlyEqualColumn = 4;
// By data type, in the order of the columns: ties, other texts of one value, what is no number, what 32 bits cut.
constexpr std::array<std::array<const char*, kCellsPerColumn>, kColumns> kCells{{
    {"alpha", "Beta", "b10", "b9", "b09", "", "12", "*x", "b9", "gamma 7"},
    {"5", "-3", "", "12abc", "5000000000", "6000000000", "007", "7", "none", "-9000000000"},
    {"1.5", "-2.25", "1e3", "", "INFY", "0x10", "3", "3.0", ".5", "-"},
    {"x1", "x01", "x1", "X", "7", "", "a", "ab", "AB", "b"},
    {"1", "1", "1", "1", "1", "1", "1", "1", "01", "-2147483648"},
    {"2024-01-05", "2024-03-01 10:00:00", "2024-03-01 09:59:59", "", "junk", "2023-12-31", "2024-01-05", "2025-01-01",
     "1999-09-09", "2024-01-06"},
    {"z", "y", "x", "b", "a", "", "7", "8", "9", "12"},
}};
constexpr std::array<const char*, 16> kFilters{"",  "",  "1", "b",     "*1",  "*a*", ">2", "<5~>10",
                                               "~", "*", "7", "be~12", ">-4", "x",   "20", "5~AB~*9"};

// How often an action comes, out of all of them: in a mix of everything, and in one of rows that come and go.
struct Kind {
    Action::Kind kind;
    const char* name;
    int weight;
    int weightOfFlips = 0;
};
constexpr Kind kKinds[] = {
    {Action::addRow, "AddRow", 40, 10},
    {Action::updateRow, "UpdateRow", 60, 350},
    {Action::deleteRow, "DeleteRow", 24, 10},
    {Action::updateVisual, "RepaintDisplayItem", 8, 6},
    {Action::updateMap, "RepaintMapItem", 8},
    {Action::deleteVisual, "DeleteItem", 6},
    {Action::deleteMap, "DeleteMapItem", 4},
    {Action::changeSilently, "change a cell, untold", 14},
    {Action::endBatch, "end the batch", 26, 10},
    {Action::populate, "PopulateList", 20, 1},
    {Action::storeFilter, "AddToFilteredCols", 6},
    {Action::setFilter, "SetMapColumnFilter", 20},
    {Action::setFilters, "SetMapColumnFilter of several", 10},
    {Action::removeFilter, "RemoveMapColumnFilter", 6},
    {Action::removeAllFilters, "RemoveAllFilters", 4},
    {Action::toggleExact, "toggle exact matching", 3},
    {Action::click, "click", 24, 1},
    {Action::sortOn, "SortOn", 10},
    {Action::applyLock, "SortByLastColumnWithLock", 10},
    {Action::toggleLock, "toggle the lock", 9},
    {Action::checkVisual, "SetCheck", 10},
    {Action::checkMap, "SetMapItemCheck", 5},
    {Action::resetChecks, "ResetCheckedItems", 1},
    {Action::toggleCheckedFirst, "toggle checked first", 4},
    {Action::sortOnChecked, "SortOnChecked", 5},
    {Action::toggleReverse, "toggle reverse display", 3},
    {Action::deleteAll, "DeleteAllItems", 1},
    {Action::select, "select", 24, 10},
    {Action::scroll, "scroll", 16, 3},
};

std::string described(const Action& action) {
    std::string text;
    for (const Kind& one : kKinds)
        if (one.kind == action.kind) text = one.name;
    if (action.row) text += " row " + std::to_string(action.row->number);
    text += " (" + std::to_string(action.number) + ", " + std::to_string(action.value) + ")";
    if (!action.text.empty()) text += " '" + action.text + "'";
    for (const auto& [column, filter] : action.filters) text += " " + std::to_string(column) + "='" + filter + "'";
    return text;
}

class Run {
public:
    Run(const MakeSubject& make, const Form& form) : m_form(form), m_subject(make()) {}

    // The fault that the action leaves behind, or empty.
    std::string take(std::uint32_t number) {
        m_random.seed(number);
        const Action action = makeAction(nextKind());
        m_told = described(action);
        const int expected = model().apply(action);
        const int result = m_subject->apply(action);
        if (isDeleted(action)) std::erase_if(m_rows, [&](const auto& row) { return !isInModel(row); });
        if (result != expected) return "the result is " + std::to_string(result) + ", not " + std::to_string(expected);
        return pick(m_form.looks) == 0 ? compare() : std::string();
    }
    const std::string& told() const { return m_told; }

private:
    GridModel& model() { return m_subject->model(); }
    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }
    template <class Table>
    auto pickFrom(const Table& table) {
        return table[static_cast<std::size_t>(pick(static_cast<int>(std::size(table))))];
    }

    Action::Kind nextKind() {
        const auto rows = static_cast<int>(m_rows.size());
        const bool areFew = rows<m_form.fewRows, areMany = rows> m_form.manyRows;
        if (m_form.flips) {
            if (model().filters.empty()) return Action::storeFilter;
            if (areFew || areMany) return areFew ? Action::addRow : Action::deleteRow;
        } else {
            if (areFew && pick(2) == 0) return Action::addRow;
            if (model().changes != m_changesAnswered && pick(4) == 0) {
                m_changesAnswered = model().changes;  // as owners do
                return Action::populate;
            }
            if (model().grid.count() < 3 && !areFew && pick(3) == 0)
                return model().filters.empty() ? Action::populate : Action::removeAllFilters;
            if (areMany && pick(2) == 0) return Action::deleteRow;
        }
        const auto weightOf = [this](const Kind& one) { return m_form.flips ? one.weightOfFlips : one.weight; };
        int all = 0;
        for (const Kind& one : kKinds) all += weightOf(one);
        int at = pick(all);
        const Kind* drawn = kKinds;
        while (at >= weightOf(*drawn)) at -= weightOf(*drawn++);
        return drawn->kind;
    }

    // Nothing at all where the state has no place for the step.
    Action makeAction(Action::Kind kind) {
        Action action;
        action.kind = kind;
        switch (kind) {
            case Action::addRow:
                action.row = newRow();
                action.value = pick(3) == 0;
                break;
            case Action::updateRow:
            case Action::changeSilently:
                action.row = anyRow();
                if (action.row && pick(4) != 0) change(*action.row);
                break;
            case Action::deleteRow:
                action.row = anyRow();
                action.value = pick(4) == 0;
                break;
            case Action::updateVisual:
            case Action::deleteVisual:
            case Action::checkVisual:
                action.number = pick(model().grid.count() + 1);
                action.value = pick(3);
                break;
            case Action::updateMap:
            case Action::deleteMap:
            case Action::checkMap:
                if (model().grid.map.empty()) return {};
                action.number = pick(static_cast<int>(model().grid.map.size()));
                action.value = pick(2);
                break;
            case Action::storeFilter:
            case Action::setFilter:
            case Action::removeFilter:
                action.number = m_form.flips ? kFlipColumn : anyColumn();
                action.text = m_form.flips ? ">2" : pickFrom(kFilters);
                action.value = pick(2);
                break;
            case Action::setFilters:
                for (int i = pick(5); i > 0; --i)
                    action.filters.emplace_back(pick(3) == 0 ? model().columnAt(0) : pick(kColumns),
                                                pickFrom(kFilters));
                action.value = pick(2);
                break;
            case Action::click:
                action.number = placeToClick();
                break;
            case Action::sortOn:
                action.number = pick(kColumns);
                action.value = pick(3) - 1;
                break;
            case Action::select:
                if (model().native.rowCount() == 0) return {};
                action.number = pick(model().native.rowCount());
                if (pick(2) == 0) action.number = model().native.rowCount() - 1;  // goes first when the count falls
                action.mark = pick(model().native.rowCount() + 1) - 1;
                action.value = pick(4);
                break;
            case Action::scroll:
                action.number = pick(m_form.manyRows);
                action.value = pick(3) == 0 ? m_form.manyRows : 1 + pick(m_form.manyRows / 4);
                break;
            case Action::applyLock:
                if (model().lockColumn == -1) return {};
                break;
            case Action::toggleLock:
                if (!model().sorted) return {};
                break;
            default:
                break;
        }
        const bool needsRow = action.kind == Action::updateRow || action.kind == Action::deleteRow;
        return needsRow && !action.row ? Action{} : action;
    }

    Row* newRow() {
        m_rows.push_back(std::make_unique<Row>());
        Row& row = *m_rows.back();
        row.number = ++m_lastNumber;
        for (std::size_t column = 0; column < kCells.size(); ++column) row.cells[column] = pickFrom(kCells[column]);
        return &row;
    }
    Row* anyRow() {
        return m_rows.empty() ? nullptr : m_rows[static_cast<std::size_t>(pick(static_cast<int>(m_rows.size())))].get();
    }
    void change(Row& row) {
        const auto column = static_cast<std::size_t>(m_form.flips ? kFlipColumn : anyColumn());
        row.cells[column] = pickFrom(kCells[column]);
    }
    // The one sorted last and the one of mostly equal texts more often.
    int placeToClick() {
        const int equal = model().places[kMostlyEqualColumn];
        if (equal >= 0 && pick(4) == 0) return equal;
        return pick(3) == 0 ? model().lastSortPlace : pick(model().visibleColumns());
    }
    // Those with a filter more often.
    int anyColumn() {
        const Filters& filters = model().filters;
        return filters.empty() || pick(2) == 0 ? pick(kColumns) : pickFrom(filters).first;
    }

    static bool isDeleted(const Action& action) {
        return action.kind == Action::deleteRow || action.kind == Action::deleteVisual ||
               action.kind == Action::deleteMap || action.kind == Action::deleteAll;
    }
    bool isInModel(const std::unique_ptr<Row>& row) {
        return model().grid.numbers.count(static_cast<CFilterListBaseData*>(row.get())) != 0;
    }

    std::string compare() {
        const NaiveGrid& grid = model().grid;
        if (m_subject->itemCount() != static_cast<int>(grid.map.size())) return "the item counts differ";
        if (m_subject->displayCount() != grid.count()) return "the display counts differ";
        for (int visual = 0; visual < grid.count(); ++visual) {
            const std::string place = " at visual index " + std::to_string(visual);
            const int slot = grid.visualOf(visual);
            Row* const row = model().rowAt(slot);
            const auto data = reinterpret_cast<DWORD_PTR>(static_cast<CFilterListBaseData*>(row));
            const int mapIndex = grid.display[static_cast<std::size_t>(slot)];
            if (m_subject->dataOfVisual(visual) != data) return "another row stands" + place;
            if (m_subject->mapIndexOfSlot(slot) != mapIndex) return "another map index stands" + place;
            if (m_subject->checkOfVisual(visual) != model().checks[static_cast<std::size_t>(mapIndex)])
                return "another check state stands" + place;
        }
        for (const std::unique_ptr<Row>& row : m_rows) {
            const NaiveGrid::Numbers own = grid.numbers.at(static_cast<CFilterListBaseData*>(row.get()));
            const int visual = own.slot == -1 ? -1 : grid.visualOf(own.slot);
            if (m_subject->numbersOf(*row) != std::pair(own.mapIndex, visual))
                return "row " + std::to_string(row->number) + " was told other numbers";
        }
        if (m_subject->filters() != model().filters) return "the filters differ";
        return pick(3) == 0 ? m_subject->compareRest() : std::string();
    }

    const Form m_form;
    std::mt19937 m_random;
    std::vector<std::unique_ptr<Row>> m_rows;  // die after the subject: declared before it
    int m_lastNumber = 0;
    int m_changesAnswered = 0;
    std::unique_ptr<Subject> m_subject;
    std::string m_told;
};

}  // namespace

std::string runMix(const MakeSubject& make, unsigned seed, int steps, const Form& form) {
    std::mt19937 random(seed);
    Run run(make, form);
    for (int step = 0; step < steps; ++step)
        if (const std::string fault = run.take(static_cast<std::uint32_t>(random())); !fault.empty())
            return "seed " + std::to_string(seed) + ", step " + std::to_string(step) + ", " + run.told() + ": " + fault;
    return {};
}

}  // namespace grid_mix
