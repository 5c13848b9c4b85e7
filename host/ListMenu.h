// The context menu of a pane's list: what the library offers as commands, and a submenu to show and hide columns.
#pragma once

#include "src/list/CommonListCtrl.h"

namespace terminal {

// Shows the menu at a screen point and has the chosen command carried out. A point of -1, -1 (the menu key) stands for
// the list's corner. Hiding a column that the list is sorted by asks first; the last column cannot be hidden.
void showListMenu(CCommonListCtrl& list, CPoint point);

}  // namespace terminal
