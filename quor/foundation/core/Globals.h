// The library's exported globals.
#pragma once

#include "quor/foundation/core/ColumnRecords.h"

// Highest column index of the market watches: the last built-in one, plus one for each user column loaded. Column 112
// is the first that counts as a user column.
extern QUOR_CONTROLS_API int iMrktInfoColCount;
// How many user columns the market watches have; moves in step with iMrktInfoColCount.
extern QUOR_CONTROLS_API int iNewDataArrCnt;

// The application-wide appearance. The copy that Get returns shares the global's keyword arrays; Set assigns, so that
// the global gets arrays of its own, and returns true.
QUOR_CONTROLS_API cCustomizedAppearanceSettings Get_Apperance_setting();
QUOR_CONTROLS_API bool Set_Apperance_setting(cCustomizedAppearanceSettings settings);
