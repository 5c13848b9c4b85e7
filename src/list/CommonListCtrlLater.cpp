// Operations that the list calls where they belong and that are not filled in yet. Each says what it will do.
#include "src/list/CommonListCtrlInternal.h"

// Will write index, place and width of each column under "COLUMNPROFILE", and say so if the host refuses.
void CCommonListCtrl::SaveColumnProfile() {}

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

// Will read "GridLine" and flip the style if it says "true".
void CCommonListCtrl::ReadGridLineStatus() {}

// Will write "GridLine" from m_bGridLines.
void CCommonListCtrl::SaveGridLineStatus() {}

// Will show the check box of header item 0.
void CCommonListCtrl::SetHeaderCheckbox() {}

// Will blank the images of all header items and give the sort levels theirs.
void CCommonListCtrl::DrawHeaderSortImageForMultiSortMode(int, bool) {}

// Will read "PROFILENAMES" and, if it is there, the deal slip profiles.
void CCommonListCtrl::ReadDealSlipState() {}

// Will read "SortLockInfo" into the lock state.
void CCommonListCtrl::ReadSortLockInfo() {}

// On a category list: will make a user column read-only.
void CCommonListCtrl::SetUserColumnReadOnly(int) {}

// Will take colours, font and keywords of a "CUSTOMIZE_LISTS" record into m_Appearance.
void CCommonListCtrl::ReadCustomizeRecord(const CString&) {}

// Will write m_Appearance under "CUSTOMIZE_LISTS".
void CCommonListCtrl::WriteCustomizeRecord() {}

// Will take colours, font and keywords of a "USER_CUSTOMIZE_LISTS" record into m_Appearance.
void CCommonListCtrl::ReadUserCustomizeRecord(const CString&) {}

// On a market watch: will save the column profile under the parent window's title, and answer true.
bool CCommonListCtrl::SaveMarketWatchProfile() { return false; }
