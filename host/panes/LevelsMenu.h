// The part of a list's context menu by which its user sorts by several columns: for each level a submenu with the
// columns that show, rising or falling, and "none"; below them whether the list is sorted by the levels, "sort again"
// (rows do not move with the market) and "clear".
//
// Each choice is carried out and stored at once (CCommonListCtrl::SaveSortOrderProfile); the levels are the list's own.
#pragma once

#include "host/core/SortLevels.h"
#include "quor/list/CommonListCtrl.h"

namespace terminal {

// Ids of these items: kFirstLevelItem to kLastLevelItem.
inline constexpr int kFirstLevelItem = 0xE400;
inline constexpr int kLastLevelItem = 0xE7FF;

// The list's levels as they are now.
SortLevels levelsOf(const CCommonListCtrl& list);

// Gives the list these levels. `active`: it is sorted by them from now on, which ends a locked sort and auto-sort; with
// fewer levels than the list asks for it is not. Rows, header and store follow. Each heading's column shows.
void setLevels(CCommonListCtrl& list, const SortLevels& levels, bool active);

// For a list whose rows or columns are new: the rows in the order of its levels, if they are active, and the arrows.
void showLevels(CCommonListCtrl& list);

void appendLevels(CMenu& menu, CCommonListCtrl& list);
void runLevelItem(CCommonListCtrl& list, int item);

}  // namespace terminal
