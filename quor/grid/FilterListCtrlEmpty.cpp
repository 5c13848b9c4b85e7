// Operations that are empty: row drag, trends and keywords. The grid calls each where it belongs, so that filling one
// in changes no caller. Each says what it will do.
#include "quor/grid/FilterListCtrl.h"

// Will end a row drag; until rows can be dragged, none is on.
void CFilterListCtrl::ResetDragOperation() {}
bool CFilterListCtrl::rowDragIsOn() const { return false; }

// Will keep one trend record per row and trend column: a new row gets its own, a deleted one loses it.
void CFilterListCtrl::InsertTrendValues(int) {}
void CFilterListCtrl::RemoveTrendValues(int) {}
void CFilterListCtrl::FreeTrendValues() {}

// Will end the colour of cells whose trend interval is over.
void CFilterListCtrl::FadeTrends() {}

// Will compare the cell with its last painted value and colour it.
void CFilterListCtrl::PaintTrend(CDC&, int, int, int, const CString&, COLORREF) {}

// Will look for the keywords of the appearance record in the keyword column's text and give the first hit's colour.
int CFilterListCtrl::GetTextColorForItem(DWORD_PTR, COLORREF&, int, int) { return 1; }
