// The live grid as a whole, written down rule by rule: what its rows, filters, sort, lock, check states and header say
// after each action. NaiveGrid has the two orders and the batches; here is what acts on them. Slow and plain on
// purpose.
#pragma once

#include "quor/grid/core/FilterListBaseData.h"
#include "tests/core/grid/NaiveGrid.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

using namespace quor::grid;

namespace grid_mix {

// The columns of every grid here, by columnIndex: the data types differ. The first shows in the caption of the counts.
inline constexpr std::array<int, 7> kDataTypes{3, 1, 2, 3, 4, 6, 8};
inline constexpr int kColumns = static_cast<int>(kDataTypes.size());
inline constexpr int kFirstTextColumn = 0;
using Places = std::array<int, kColumns>;  // by columnIndex, -1 hidden
using Filters = std::vector<std::pair<int, std::string>>;

std::string columnName(int columnIndex);

// The grid's part of a row may lie behind a polymorphic base.
struct Polymorphic {
    virtual ~Polymorphic() = default;
};

struct Row : Polymorphic, CFilterListBaseData {
    int number = 0;
    std::array<std::string, kColumns> cells;
};

struct Action {
    enum Kind {
        addRow,
        updateRow,
        deleteRow,
        updateVisual,
        updateMap,
        deleteVisual,
        deleteMap,
        changeSilently,
        endBatch,
        populate,
        storeFilter,
        setFilter,
        setFilters,
        removeFilter,
        removeAllFilters,
        toggleExact,
        click,
        sortOn,
        applyLock,
        toggleLock,
        checkVisual,
        checkMap,
        resetChecks,
        toggleCheckedFirst,
        sortOnChecked,
        toggleReverse,
        deleteAll,
        select,
        scroll,
        kinds
    };
    Kind kind = changeSilently;  // without a row: nothing
    Row* row = nullptr;
    int number = 0;  // visual index, map index, place, columnIndex or top index
    int mark = -1;   // of select
    int value = 0;   // order, check state, exact, item state, page, or whether the native side follows at once
    std::string text;
    Filters filters;
};

class GridModel {
public:
    GridModel(const Places& shownPlaces, NativeControl& control);
    virtual ~GridModel() = default;
    GridModel(const GridModel&) = delete;
    GridModel& operator=(const GridModel&) = delete;

    // The result of the operation that the action stands for; 0 for one that has none.
    int apply(const Action& action);

    int columnAt(int place) const;
    int visibleColumns() const;
    Row* rowAt(int slot) const;
    bool isExact() const { return exact != 0 || exactSticky; }
    int checkedCount() const;

    Places places;
    NativeControl& native;
    NaiveGrid grid;

    Filters filters;
    std::vector<std::string> fields;  // of the header, by place
    int changes = 0;                  // notifications of the header that the owner heard
    int exact = 0;
    bool exactSticky = false;

    std::vector<int> checks;  // by map index
    bool checkedFirst = false;
    std::string firstCaption;

    int sortPlace = 0;
    int lastSortPlace = 0;  // a new list is as if sorted by its first place, without an order to keep
    int sortOrder = -1;
    int lockColumn = -1;
    int lockOrder = 0;
    bool sorted = false;
    bool locked = false;
    std::vector<int> arrows;  // by place: the header's image, -1 none

protected:
    // What a store beside the model has to do.
    virtual void onRebuild() {}
    virtual void onSort(int /*columnIndex*/, bool /*narrow*/) {}
    virtual void onSortOnChecked() {}
    virtual void onEndBatch() {}
    virtual void onMark(int /*visual*/) {}
    virtual void onStoreFilter(int /*columnIndex*/, const std::string& /*text*/) {}

private:
    bool passes(NaiveGrid::Row row) const;
    Row* rowOfMap(int mapIndex) const;
    Row* rowOfVisual(int visual) const;
    int add(Row* row, bool now);
    int remove(Row* row, bool now);
    int update(Row* row);
    void endBatch();
    void deleteAll();
    void populate();

    void store(int columnIndex, const std::string& text);
    void writeField(int place, const std::string& text, int exactFlag, bool heard = true);
    void setFilter(int columnIndex, const std::string& text, int exactFlag);
    void setFilters(const Filters& all, int exactFlag);
    void removeFilter(int columnIndex);
    void clearFilters(bool heard);
    void toggleExact();

    void click(int place);
    void sortOn(int columnIndex, int order);
    void applyLock();
    void sortDisplay(int columnIndex, bool narrow);
    void sortOnChecked();
    void select(const Action& action);
    void moveMarkTo(Row* row);
    bool allTextsEqual(int columnIndex) const;
    std::vector<int> sortedRows(std::vector<int> mapIndices, int dataType, int columnIndex, bool narrow) const;
    void show(std::vector<int> sortedMapIndices);
};

}  // namespace grid_mix
