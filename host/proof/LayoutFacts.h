// How a list stands, as facts with a name: columns from left to right, widths, user columns, levels and whether they
// are active, lock, auto-sort, arrows, and the order of the rows.
#pragma once

#include "quor/list/CommonListCtrl.h"

#include <string>
#include <vector>

namespace terminal {

struct LayoutFact {
    std::string name, value;
    bool operator==(const LayoutFact&) const = default;
};

// One list, or one watch of the market watch.
struct ListLayout {
    std::string list;
    std::vector<LayoutFact> facts;
};

// What the user did last to the rows of a list.
enum class LastSort { levels, autoSort, lock, click };

struct Subject {
    std::string name;
    CCommonListCtrl& list;
    LastSort sort;
    int sortColumn;  // columnIndex; of levels, the one that decides last but one
};

// How the list stands, and as it has to come back.
ListLayout layoutOf(const Subject& subject);

// A line for each fact that is not as it was left. Empty: all are.
std::vector<std::string> differences(const ListLayout& left, const ListLayout& found);

// Header items from left to right, as they stand on screen.
std::vector<int> itemsOf(CCommonListCtrl& list);

// Of the control.
int rowsOf(const CCommonListCtrl& list);

struct SortBy {
    int columnIndex;
    int order;  // -1 rising, 1 falling
};

// Whether the rows really stand as the sort says ("in order"), and what they show there.
std::string rowsBy(CCommonListCtrl& list, const std::vector<SortBy>& by, bool withTexts);

}  // namespace terminal
