// The context menu of a pane's list: what the library offers as commands, and a submenu to show and hide columns.
#pragma once

#include "quor/list/CommonListCtrl.h"

namespace terminal {

// A grid's command; and the items of a market watch, whose three operations the menu calls itself.
inline constexpr int kSetTrendColumns = 33500;
inline constexpr int kWatchFont = 0xE010;
inline constexpr int kWatchBackground = 0xE011;
inline constexpr int kWatchTextColour = 0xE012;

// Shows the menu at a screen point and has the chosen command carried out. A point of -1, -1 (the menu key) stands for
// keyboardMenuPoint. Hiding a column that the list is sorted by asks first; the last column cannot be hidden.
void showListMenu(CCommonListCtrl& list, CPoint point);

// Where a menu opened by keyboard stands on the screen: below the focused row, or at the list's top left if no focused
// row is in view.
CPoint keyboardMenuPoint(CCommonListCtrl& list);

// What the menu's own items do. A column that shows goes, a hidden one comes back as the last; the others stay as they
// stand on screen. Levels and a locked sort go on with what is left.
void showOrHideColumn(CCommonListCtrl& list, int columnIndex);
// Auto-sort by the column that was sorted last. Offered for lists that keep their rows in the control: a grid's step
// passes through two click handlers, and each one turns the order round.
void switchAutoSort(CCommonListCtrl& list, bool on);

}  // namespace terminal
