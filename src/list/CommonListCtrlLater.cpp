// Operations that the list calls where they belong and that are not filled in yet. Each says what it will do.
#include "src/list/CommonListCtrlInternal.h"

// Will write index, place and width of each column under "COLUMNPROFILE", and say so if the host refuses.
void CCommonListCtrl::SaveColumnProfile() {}

// Stays empty here: lists with a multi-column sort of their own override it.
void CCommonListCtrl::SortListOnMultiplelevel() {}

// Will read "GridLine" and flip the style if it says "true".
void CCommonListCtrl::ReadGridLineStatus() {}

// Will write "GridLine" from m_bGridLines.
void CCommonListCtrl::SaveGridLineStatus() {}

// Will read "PROFILENAMES" and, if it is there, the deal slip profiles.
void CCommonListCtrl::ReadDealSlipState() {}

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
