#include "quor/expression/core/CustomColumnDependents.h"
#include "quor/list/core/ColumnArrays.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <utility>
#include <vector>

using namespace quor::list;
using namespace quor::expression;

namespace {

// Two built-in columns, then user columns that build on each other: D on C on B on A; E on the built-in Rate alone; of
// a damaged profile, X and Y on each other.
struct Columns {
    explicit Columns(ListFamily kind) : family(kind) {
        const std::pair<const char*, const char*> all[] = {{"Rate", ""},
                                                           {"Qty", ""},
                                                           {"A", " \"Rate\" * 2"},
                                                           {"B", " \"A\" + 1"},
                                                           {"C", " \"B\" / \"A\""},
                                                           {"D", " 2 * \"C\""},
                                                           {"E", " \"Rate\" + 1"},
                                                           {"X", " \"Y\""},
                                                           {"Y", " \"X\" + \"Y\""}};
        for (const auto& [name, display] : all) {
            sQuorColInfo column;
            setColumnName(column, name);
            setExpressions(column, family, "id", display);
            if (columns.GetCount() >= 2) names.Add(name);
            columns.Add(column);
        }
    }
    CustomColumnScope scope() const { return {columns, names, family, 2}; }
    std::vector<int> dependentsOf(const char* column) const {
        std::vector<int> dependents;
        std::set<int> seen;
        RemoveCustColRecursively(scope(), column, dependents, seen);
        return dependents;
    }

    ListFamily family;
    CArray<sQuorColInfo, sQuorColInfo> columns;
    CStringArray names;
};

TEST(CustomColumnDependents, AColumnReachesWhatItsFormulasNameAndTheDeepestComesFirst) {
    const struct {
        const char *name, *selected;
        bool depends;
    } cases[] = {{"A", "A", true},        {"B", "A", true},  {"D", "A", true},     {"A", "D", false},
                 {"X", "A", false},       {"E", "A", false}, {"Rate", "A", false}, {"B", "Rate", true},
                 {"Rate", "Rate", false}, {"X", "Y", true}};
    for (const ListFamily family : {ListFamily::grid, ListFamily::marketWatch}) {
        const Columns columns(family);
        for (const auto& expected : cases)
            EXPECT_EQ(CheckBaseColRecursively(columns.scope(), expected.selected, expected.name), expected.depends)
                << expected.name << " on " << expected.selected;
        EXPECT_EQ(columns.dependentsOf("\"A\""), (std::vector<int>{5, 4, 3}));  // D, C, B
        EXPECT_TRUE(columns.dependentsOf("\"D\"").empty());
        std::vector<int> cycle = columns.dependentsOf("\"X\"");
        std::sort(cycle.begin(), cycle.end());
        EXPECT_EQ(cycle, (std::vector<int>{7, 8}));
    }
}

std::vector<int> numbers(const CArray<int, int>& array) {
    return {array.GetData(), array.GetData() + array.GetCount()};
}

TEST(CustomColumnDependents, DeletedColumnsCloseThePlacesUp) {
    Columns lists(ListFamily::grid);
    lists.columns.SetSize(7);
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
