// Operations that the list calls where they belong and that are not filled in yet. Each says what it will do.
#include "src/list/CommonListCtrlInternal.h"

// Will sort by m_nLockSortColumn and m_nLockSortOrder again and show the arrow.
void CCommonListCtrl::SortByLastColumnWithLock() {}

// Will write the levels of m_arrSortOrder under "COLUMN_SORT_ORDER_PROFILE".
void CCommonListCtrl::SaveSortOrderProfile() {}

// Will read the levels into m_arrSortOrder and set m_bMultiSortActive.
void CCommonListCtrl::ReadSortOrderProfile() {}

// Stays empty here: lists with a multi-column sort of their own override it.
void CCommonListCtrl::SortListOnMultiplelevel() {}

// Will read "AutoSortTicked", "AutoSort" and "AutoSortOrder"; 1, or -1 if the stored column is gone.
int CCommonListCtrl::ReadAutoSort() { return 1; }

// Will start kAutoSortTimer if auto-sort is on, and kill it otherwise.
void CCommonListCtrl::InitializeAutoSort() {}

// Will write the three values that ReadAutoSort reads.
void CCommonListCtrl::SaveAutoSort() {}

// Will show the check box of header item 0.
void CCommonListCtrl::SetHeaderCheckbox() {}

// Will blank the images of all header items and give the sort levels theirs.
void CCommonListCtrl::DrawHeaderSortImageForMultiSortMode(int, bool) {}

// Will read "SortLockInfo" into the lock state.
void CCommonListCtrl::ReadSortLockInfo() {}

// Stays empty here: on a category list it makes a user column read-only.
void CCommonListCtrl::SetUserColumnReadOnly(int) {}
