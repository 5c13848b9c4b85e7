#include "host/ListMenu.h"

#include "src/grid/FilterListCtrl.h"
#include "src/list/ListCommands.h"

namespace terminal {

namespace {

// Ids of the menu's own, above those of the library.
constexpr int kToggleFilterBar = 0xE000;
constexpr int kFirstColumn = 0xE100;
constexpr int kResetFilters = 33757;
constexpr int kMatchFilterExactly = 33815;

UINT ticked(bool on) { return on ? MF_STRING | MF_CHECKED : static_cast<UINT>(MF_STRING); }

void appendColumns(CMenu& menu, CCommonListCtrl& list) {
    CMenu columns;
    columns.CreatePopupMenu();
    for (int i = 0; i < list.m_arrColumns.GetCount() && i < list.m_arrOrder.GetCount(); ++i)
        columns.AppendMenu(ticked(list.m_arrOrder[i] >= 0) | (i % 30 == 0 && i ? MF_MENUBARBREAK : 0u),
                           static_cast<UINT_PTR>(kFirstColumn + i), list.m_arrColumns[i].szColumnName);
    menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(columns.Detach()), "Columns");
}

void appendFilters(CMenu& menu, const CFilterListCtrl& grid) {
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_STRING, kToggleFilterBar, "Filter Bar\tCtrl+F");
    menu.AppendMenu(MF_STRING | (grid.GetFilterCount() ? 0u : static_cast<UINT>(MF_GRAYED)), kResetFilters,
                    "&Reset Filters");
    menu.AppendMenu(MF_STRING, kMatchFilterExactly, "Match Filter Exactly");
}

// A shown column goes, a hidden one comes back as the last.
void toggleColumn(CCommonListCtrl& list, int columnIndex) {
    CArray<int, int> columns, widths;
    bool wasShown = false;
    for (int place = 0; list.GetOriginalColumnPosition(place) >= 0; ++place) {
        const int shown = list.GetOriginalColumnPosition(place);
        if (shown == columnIndex) {
            wasShown = true;
            continue;
        }
        columns.Add(shown);
        widths.Add(list.GetColumnWidth(place));
    }
    if (wasShown) {
        int asked = 0;
        if (columns.IsEmpty()) return;
        if (!list.AlertUserOnRemovalOfSortColumns(list.m_arrColumns[columnIndex].szColumnName, &asked)) return;
    } else {
        columns.Add(columnIndex);
        widths.Add(list.m_arrColumns[columnIndex].iWidth);
    }
    list.LoadHeaders(&columns, &widths);
    if (wasShown) list.RemoveNonVisibleColumnsFromSortOrder();
    list.Invalidate();
}

}  // namespace

void showListMenu(CCommonListCtrl& list, CPoint point) {
    if (point.x == -1 && point.y == -1) {
        point = CPoint(0, 0);
        list.ClientToScreen(&point);
    }
    const auto grid = dynamic_cast<CFilterListCtrl*>(&list);
    CMenu menu;
    menu.CreatePopupMenu();
    appendColumns(menu, list);
    menu.AppendMenu(MF_STRING, kFitColumnsToData, "Fit to Data");
    menu.AppendMenu(MF_STRING, kFitColumnsToHeader, "Fit to Header");
    menu.AppendMenu(MF_STRING, kFitColumnsToWindow, "Fit to Window");
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(ticked(list.m_bGridLines != 0), kGridLines, "Draw Grid Lines");
    if (list.m_bLockSortEnabled) menu.AppendMenu(ticked(list.m_bSortLocked != 0), kLockSorting, "&Lock Sorting");
    menu.AppendMenu(MF_STRING, kCopyToClipboard, "Copy to Clip Board\tCtrl+C");
    if (grid) appendFilters(menu, *grid);
    const int chosen = menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, point.x, point.y, &list);
    if (chosen >= kFirstColumn) {
        toggleColumn(list, chosen - kFirstColumn);
    } else if (chosen == kToggleFilterBar) {
        if (grid) grid->PutListFilter();
    } else if (chosen != 0) {
        list.PostMessage(WM_COMMAND, static_cast<WPARAM>(chosen), 0);  // posted: some are taken before the dispatch
    }
}

}  // namespace terminal
