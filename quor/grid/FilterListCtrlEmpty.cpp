// Operations that are empty: row drag. The grid calls each where it belongs, so that filling one in changes no caller.
// Each says what it will do.
#include "quor/grid/FilterListCtrl.h"

// Will end a row drag; until rows can be dragged, none is on.
void CFilterListCtrl::ResetDragOperation() {}
bool CFilterListCtrl::rowDragIsOn() const { return false; }
