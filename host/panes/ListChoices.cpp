#include "host/panes/ListChoices.h"

#include "quor/grid/FilterListCtrl.h"

#include <algorithm>

namespace terminal {

namespace {

constexpr int kFalling = 1;
constexpr int kMostClicks = 3;  // until a column stands in the order that is wanted

bool isPlainlySorted(const CCommonListCtrl& list) {
    return list.m_bSorted && !list.m_bSortLocked && !list.m_bAutoSort && !list.m_bMultiSortActive;
}

std::vector<int> columnsOnScreen(CCommonListCtrl& list) {
    std::vector<int> columns;
    const CHeaderCtrl* const header = list.GetHeaderCtrl();
    for (int i = 0; header && i < header->GetItemCount(); ++i)
        columns.push_back(list.GetOriginalColumnPosition(header->OrderToIndex(i)));
    return columns;
}

void arrangeColumns(CCommonListCtrl& list, const std::vector<int>& wanted) {
    std::vector<int> present = columnsOnScreen(list), order;
    if (wanted.empty() || wanted == present) return;
    const auto take = [&](int column) {
        const auto found = std::ranges::find(present, column);
        if (found == present.end()) return;
        order.push_back(list.m_arrOrder[column]);
        present.erase(found);
    };
    for (const int column : wanted) take(column);
    for (const int column : std::vector<int>(present)) take(column);
    list.SetColumnOrderArray(static_cast<int>(order.size()), order.data());
    list.Invalidate();
}

void applySort(CCommonListCtrl& list, const ListChoice& choice) {
    const bool shown = choice.sortColumn >= 0 && choice.sortColumn < list.m_arrOrder.GetCount() &&
                       list.m_arrOrder[choice.sortColumn] >= 0;
    if (!shown || list.GetItemCount() == 0 || list.m_bSortLocked || list.m_bAutoSort || list.m_bMultiSortActive) return;
    const auto stands = [&] {
        return isPlainlySorted(list) && list.GetOriginalColumnPosition(list.m_nSortCol) == choice.sortColumn &&
               (list.m_nSortOrder == kFalling) == choice.falling;
    };
    const int order = choice.falling ? kFalling : -kFalling;
    const auto grid = dynamic_cast<CFilterListCtrl*>(&list);
    for (int click = 0; click < kMostClicks && !stands(); ++click) {
        if (grid)
            grid->SortOn(choice.sortColumn, order);
        else
            list.SortOn(choice.sortColumn, -order);  // it ends in the other one
    }
}

std::vector<std::pair<int, std::string>> filtersOf(CFilterListCtrl& grid) {
    CArray<int, int> columns;
    CArray<CString, CString> texts;
    grid.GetFileteredCols(columns, texts);
    std::vector<std::pair<int, std::string>> filters;
    for (INT_PTR i = 0; i < columns.GetCount(); ++i) filters.emplace_back(columns[i], texts[i].GetString());
    return filters;
}

void applyFilters(CFilterListCtrl& grid, const std::vector<std::pair<int, std::string>>& filters) {
    if (filters == filtersOf(grid)) return;
    CArray<int, int> columns;
    CArray<CString, CString> texts;
    for (const auto& [column, text] : filters) {
        if (column < 0 || column >= grid.m_arrColumns.GetCount()) continue;
        columns.Add(column);
        texts.Add(text.c_str());
    }
    grid.RemoveAllFilters();
    if (!columns.IsEmpty()) grid.SetMapColumnFilter(&columns, &texts, 0);
}

}  // namespace

ListChoice choiceOf(CListPane& pane) {
    CCommonListCtrl& list = pane.list();
    ListChoice choice{pane.title(), columnsOnScreen(list), -1, false, {}};
    if (isPlainlySorted(list)) {
        choice.sortColumn = list.GetOriginalColumnPosition(list.m_nSortCol);
        choice.falling = list.m_nSortOrder == kFalling;
    }
    if (const auto grid = dynamic_cast<CFilterListCtrl*>(&list)) choice.filters = filtersOf(*grid);
    return choice;
}

void applyChoice(CListPane& pane, const ListChoice& choice) {
    CCommonListCtrl& list = pane.list();
    arrangeColumns(list, choice.order);
    if (const auto grid = dynamic_cast<CFilterListCtrl*>(&list)) applyFilters(*grid, choice.filters);
    applySort(list, choice);
}

}  // namespace terminal
