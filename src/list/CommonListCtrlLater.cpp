// Operations that the list calls where they belong and that are not filled in yet. Each says what it will do.
#include "src/list/CommonListCtrlInternal.h"

// Stays empty here: lists with a multi-column sort of their own override it.
void CCommonListCtrl::SortListOnMultiplelevel() {}

// Stays empty here: on a category list it makes a user column read-only.
void CCommonListCtrl::SetUserColumnReadOnly(int) {}
