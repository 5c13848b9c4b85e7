// Operations that are empty in the base: derived lists have them.
#include "src/list/CommonListCtrlInternal.h"

// Lists with a multi-column sort of their own override it.
void CCommonListCtrl::SortListOnMultiplelevel() {}

// On a category list it makes a user column read-only.
void CCommonListCtrl::SetUserColumnReadOnly(int) {}
