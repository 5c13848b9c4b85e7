#include "quor/list/core/ColumnArrays.h"

#include <algorithm>
#include <cstddef>

namespace quor::list {

bool isColumnGap(const sQuorColInfo& column) {
    return !column.szColumnName[0] && column.csExpression.IsEmpty() && column.csToolTip.IsEmpty();
}

std::vector<int> defaultPlaces(int columnCount, const int* shown, int shownCount) {
    std::vector<int> places;
    for (int column = 0; column < columnCount; ++column) {
        const int* end = shown + shownCount;
        const int* found = std::find(shown, end, column);
        places.push_back(found == end ? -1 : static_cast<int>(found - shown));
    }
    return places;
}

int columnAtPlace(const CArray<sVisibleColumn, sVisibleColumn>& visible, int place) {
    for (INT_PTR i = 0; i < visible.GetCount(); ++i) {
        const sVisibleColumn column = visible.GetAt(i);
        if (column.iVisiblePosition == place) return column.iColumnIndex;
    }
    return -1;
}

std::vector<int> movedColumns(const std::vector<CString>& former, const std::vector<CString>& now) {
    std::vector<int> moved(former.size(), -1);
    std::vector<bool> taken(now.size());
    const auto take = [&](std::size_t from, std::size_t to) {
        moved[from] = static_cast<int>(to);
        taken[to] = true;
    };
    for (std::size_t i = 0; i < former.size() && i < now.size(); ++i)
        if (former[i] == now[i]) take(i, i);
    for (std::size_t i = 0; i < former.size(); ++i) {
        if (moved[i] != -1) continue;
        std::size_t found = 0;
        while (found < now.size() && (taken[found] || now[found] != former[i])) ++found;
        if (found < now.size()) take(i, found);
    }
    return moved;
}

int movedColumn(const std::vector<int>& moved, int columnIndex) {
    const auto index = static_cast<std::size_t>(columnIndex);
    return columnIndex >= 0 && index < moved.size() ? moved[index] : -1;
}

void addVisibleColumn(CArray<sVisibleColumn, sVisibleColumn>& visible, sVisibleColumn column) {
    if (column.iVisiblePosition == 0) {
        visible.InsertAt(0, column);
    } else {
        visible.Add(column);
    }
}

ShownColumns showColumns(int columnCount, const std::vector<int>& columns, const std::vector<int>& widths) {
    ShownColumns shown;
    shown.order.assign(static_cast<std::size_t>(columnCount), -1);
    shown.widths.assign(static_cast<std::size_t>(columnCount), 0);
    for (std::size_t given = 0; given < columns.size(); ++given) {
        const int column = columns[given];
        if (column < 0 || column >= columnCount || shown.order[static_cast<std::size_t>(column)] != -1) continue;
        shown.order[static_cast<std::size_t>(column)] = static_cast<int>(shown.bySequence.size());
        shown.widths[static_cast<std::size_t>(column)] = given < widths.size() ? widths[given] : 0;
        shown.bySequence.push_back(column);
    }
    for (int column = 0; column < columnCount; ++column) {
        const int place = shown.order[static_cast<std::size_t>(column)];
        if (place != -1) shown.visible.emplace_back(place, column);
    }
    return shown;
}

}  // namespace quor::list
