#include "host/panes/ListMenu.h"

#include "host/panes/LevelsMenu.h"
#include "quor/grid/FilterListCtrl.h"
#include "quor/list/ListCommands.h"
#include "quor/lists/MrktWatchListCtrl.h"

#include <algorithm>

namespace terminal {

namespace {

// Ids of the menu's own, above those of the library.
constexpr int kToggleFilterBar = 0xE000;
constexpr int kAutoSort = 0xE001;
constexpr int kFirstColumn = 0xE100;
constexpr int kLastColumn = 0xE3FF;
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

// What each list offers of its looks. A market watch has none of the library's dialogs for them.
void appendLooks(CMenu& menu, CCommonListCtrl& list) {
    menu.AppendMenu(MF_SEPARATOR);
    if (list.m_bGridLinesMenu) menu.AppendMenu(ticked(list.m_bGridLines != 0), kGridLines, "Draw Grid Lines\tShift+G");
    if (list.m_bCustomizeEnabled) menu.AppendMenu(MF_STRING, kCustomizeAppearance, "Customize \t Ctrl+Shift+C");
    if (list.m_bUserCustomizeEnabled) menu.AppendMenu(MF_STRING, kUserCustomize, "User Customize");
    const auto grid = dynamic_cast<CFilterListCtrl*>(&list);
    if (grid && grid->TrendEnabled) menu.AppendMenu(MF_STRING, kSetTrendColumns, "Set Trend Columns");
    if (!dynamic_cast<CMrktWatchListCtrl*>(&list)) return;
    menu.AppendMenu(MF_STRING, kWatchFont, "Font...");
    menu.AppendMenu(MF_STRING, kWatchBackground, "Background...");
    menu.AppendMenu(MF_STRING, kWatchTextColour, "Text Colour...");
}

void appendFilters(CMenu& menu, const CFilterListCtrl& grid) {
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_STRING, kToggleFilterBar, "Filter Bar\tCtrl+F");
    menu.AppendMenu(MF_STRING | (grid.GetFilterCount() ? 0u : static_cast<UINT>(MF_GRAYED)), kResetFilters,
                    "&Reset Filters");
    menu.AppendMenu(MF_STRING, kMatchFilterExactly, "Match Filter Exactly");
}

void appendSorts(CMenu& menu, CCommonListCtrl& list) {
    const UINT byLevels = list.m_bMultiSortActive ? MF_GRAYED : 0u;
    if (list.m_bLockSortEnabled)
        menu.AppendMenu(ticked(list.m_bSortLocked || list.m_bMultiSortActive) | byLevels, kLockSorting,
                        "&Lock Sorting");
    if (list.m_bMultiSortEnabled) appendLevels(menu, list);
    if (!dynamic_cast<CFilterListCtrl*>(&list))
        menu.AppendMenu(ticked(list.IsAutoSortEnabled() != 0) | byLevels, kAutoSort, "Auto Sort");
}

bool runLook(CMrktWatchListCtrl* watch, int chosen) {
    if (!watch) return false;
    if (chosen == kWatchFont) watch->ShowFontDlg();
    if (chosen == kWatchBackground) watch->SetBkColorFromDlg();
    if (chosen == kWatchTextColour) watch->SetTxtColorFromDlg();
    return chosen == kWatchFont || chosen == kWatchBackground || chosen == kWatchTextColour;
}

// Carries a chosen item out; what is none of the menu's own goes to the list.
void run(CCommonListCtrl& list, int chosen) {
    if (chosen >= kFirstColumn && chosen <= kLastColumn) return showOrHideColumn(list, chosen - kFirstColumn);
    if (chosen >= kFirstLevelItem && chosen <= kLastLevelItem) return runLevelItem(list, chosen);
    if (runLook(dynamic_cast<CMrktWatchListCtrl*>(&list), chosen)) return;
    if (chosen == kAutoSort) return switchAutoSort(list, !list.IsAutoSortEnabled());
    if (chosen == kToggleFilterBar) {
        if (const auto grid = dynamic_cast<CFilterListCtrl*>(&list)) grid->PutListFilter();
    } else if (chosen != 0) {
        list.PostMessage(WM_COMMAND, static_cast<WPARAM>(chosen), 0);  // posted: some are taken before the dispatch
    }
}

}  // namespace

void switchAutoSort(CCommonListCtrl& list, bool on) {
    if (on) {
        list.m_bAutoSort = 1;
        list.InitializeAutoSort();
    } else {
        list.KillAutoSortTimer();
    }
    list.SaveAutoSort();
}

void showOrHideColumn(CCommonListCtrl& list, int columnIndex) {
    CArray<int, int> columns, widths;
    bool wasShown = false;
    const CHeaderCtrl* const header = list.GetHeaderCtrl();
    for (int i = 0; header && i < header->GetItemCount(); ++i) {
        const int place = header->OrderToIndex(i);
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
    if (wasShown && list.RemoveNonVisibleColumnsFromSortOrder())
        setLevels(list, levelsOf(list), list.m_bMultiSortActive != 0);  // stored, or they would be missed at the start
    else if (list.m_bMultiSortActive)
        showLevels(list);
    else if (list.m_bSortLocked)  // a grid that was never sorted has no column to ask for
        list.SortByLastColumnWithLock();
    list.Invalidate();
}

CPoint keyboardMenuPoint(CCommonListCtrl& list) {
    CPoint point(0, 0);
    CRect row;
    const int focus = list.CListCtrl::GetNextItem(-1, LVNI_FOCUSED), top = list.GetTopIndex();
    const bool inView = focus >= top && focus < top + list.GetCountPerPage();
    if (inView && list.GetItemRect(focus, &row, LVIR_BOUNDS)) point = CPoint((std::max)(LONG{0}, row.left), row.bottom);
    list.ClientToScreen(&point);
    return point;
}

void showListMenu(CCommonListCtrl& list, CPoint point) {
    if (point.x == -1 && point.y == -1) point = keyboardMenuPoint(list);
    const auto grid = dynamic_cast<CFilterListCtrl*>(&list);
    CMenu menu;
    menu.CreatePopupMenu();
    appendColumns(menu, list);
    menu.AppendMenu(MF_STRING, kFitColumnsToData, "Fit to Data");
    menu.AppendMenu(MF_STRING, kFitColumnsToHeader, "Fit to Header");
    menu.AppendMenu(MF_STRING, kFitColumnsToWindow, "Fit to Window");
    appendLooks(menu, list);
    menu.AppendMenu(MF_SEPARATOR);
    appendSorts(menu, list);
    menu.AppendMenu(MF_STRING, kCopyToClipboard, "Copy to Clip Board\tCtrl+C");
    if (grid) appendFilters(menu, *grid);
    run(list, menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, point.x, point.y, &list));
}

}  // namespace terminal
