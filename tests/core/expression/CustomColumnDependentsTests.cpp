#include "quor/expression/core/CustomColumnDependents.h"
#include "quor/list/core/ColumnArrays.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace quor::list;
using namespace quor::expression;

namespace {

struct Definition {
    const char* name;
    const char* display = "";
};

// Two built-in columns, then user columns that build on each other: D on C on B on A; E on the built-in Rate alone.
class Columns {
public:
    explicit Columns(ListFamily family = ListFamily::grid, std::vector<Definition> more = {}) : m_family(family) {
        std::vector<Definition> all = {{"Rate"},
                                       {"Qty"},
                                       {"A", " \"Rate\" * 2"},
                                       {"B", " \"A\" + 1"},
                                       {"C", " \"B\" / \"A\""},
                                       {"D", " 2 * \"C\""},
                                       {"E", " \"Rate\" + 1"}};
        all.insert(all.end(), more.begin(), more.end());
        for (const Definition& definition : all) {
            sQuorColInfo column;
            setColumnName(column, definition.name);
            setExpressions(column, family, "id", definition.display);
            if (columns.GetCount() >= 2) names.Add(definition.name);
            columns.Add(column);
        }
    }
    CustomColumnScope scope() const { return {columns, names, m_family, 2}; }

    CArray<sQuorColInfo, sQuorColInfo> columns;
    CStringArray names;

private:
    ListFamily m_family;
};

TEST(CustomColumnDependents, AColumnReachesWhatItsFormulasName) {
    const struct {
        const char *name, *selected;
        bool depends;
    } cases[] = {{"A", "A", true},  {"B", "A", true},     {"D", "A", true},    {"A", "D", false},
                 {"E", "A", false}, {"Rate", "A", false}, {"B", "Rate", true}, {"Rate", "Rate", false}};
    for (const ListFamily family : {ListFamily::grid, ListFamily::marketWatch}) {
        const Columns columns(family);
        for (const auto& expected : cases)
            EXPECT_EQ(CheckBaseColRecursively(columns.scope(), expected.selected, expected.name), expected.depends)
                << expected.name << " on " << expected.selected;
    }
}

std::vector<int> dependentsOf(const Columns& columns, const char* column) {
    std::vector<int> dependents;
    std::set<int> seen;
    RemoveCustColRecursively(columns.scope(), column, dependents, seen);
    return dependents;
}

TEST(CustomColumnDependents, TheDeepestComeFirstAndEachOnce) {
    for (const ListFamily family : {ListFamily::grid, ListFamily::marketWatch}) {
        const Columns columns(family);
        EXPECT_EQ(dependentsOf(columns, "\"A\""), (std::vector<int>{5, 4, 3}));  // D, C, B
        EXPECT_TRUE(dependentsOf(columns, "\"D\"").empty());
    }
}

TEST(CustomColumnDependents, CyclesOfADamagedProfileEnd) {
    const Columns columns(ListFamily::grid, {{"X", " \"Y\""}, {"Y", " \"X\" + \"Y\""}});
    EXPECT_FALSE(CheckBaseColRecursively(columns.scope(), "A", "X"));
    EXPECT_TRUE(CheckBaseColRecursively(columns.scope(), "Y", "X"));
    std::vector<int> dependents = dependentsOf(columns, "\"X\"");
    std::sort(dependents.begin(), dependents.end());
    EXPECT_EQ(dependents, (std::vector<int>{7, 8}));
}

std::vector<int> numbers(const CArray<int, int>& array) {
    return {array.GetData(), array.GetData() + array.GetCount()};
}

TEST(CustomColumnDependents, DeletedColumnsCloseThePlacesUp) {
    Columns lists;
    CArray<int, int> order, widths;
    for (const int place : {0, 4, 1, -1, 2, 3, 5}) order.Add(place);
    for (const int width : {10, 11, 12, 13, 14, 15, 16}) widths.Add(width);
    const ListColumnArrays arrays{lists.columns, order, &widths};
    EXPECT_EQ(removeColumnRecord(arrays, 5), 3);
    EXPECT_EQ(removeColumnRecord(arrays, 3), -1) << "a hidden column has no place to leave";
    EXPECT_EQ(removeColumnRecord(arrays, 2), 1);
    EXPECT_EQ(removeColumnRecord(arrays, 9), -1);
    EXPECT_EQ(numbers(order), (std::vector<int>{0, 2, 1, 3}));
    EXPECT_EQ(numbers(widths), (std::vector<int>{10, 11, 13, 14, 16})) << "the width of the hidden column stays";
    EXPECT_EQ(lists.columns.GetCount(), 4);
    EXPECT_STREQ(lists.columns.GetAt(2).szColumnName, "C");
    CArray<sVisibleColumn, sVisibleColumn> visible;
    rebuildVisible(order, visible);
    EXPECT_EQ(visible.GetCount(), 4);
    EXPECT_EQ(columnAtPlace(visible, 1), 2);
}

}  // namespace
