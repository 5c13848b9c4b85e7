// Every window message of the library's own: numbers sent to parents, and ids registered by text.
//
// A registered id is asked for once, when QuorControls.dll is loaded, and shared by the whole process as data of that
// library: a text has one id, whoever includes this header. The variables bear the names of their texts.
#pragma once

#include "quor/platform/Framework.h"

// To the parent of a list, wParam its control id.
inline constexpr UINT WM_LIST_COLUMNS_REBUILT = WM_USER + 123;  // lParam: 1 after an import, else 0
inline constexpr UINT WM_LIST_ROWS_REORDERED = WM_USER + 500;   // a market watch was sorted, or a row was dropped

// To a holder view. The first two are forwarded to its notify window as they come; the third's wParam is the colour
// that its title takes.
inline constexpr UINT WM_HOLDER_FIRST = WM_USER + 100;
inline constexpr UINT WM_HOLDER_SECOND = WM_USER + 200;
inline constexpr UINT WM_HOLDER_TITLE_COLOR = WM_USER + 222;
// From a holder view to its notify window: a check list's click with its arguments; the client size of a plain view.
inline constexpr UINT WM_HOLDER_CHECK_CLICKED = WM_USER + 300;
inline constexpr UINT WM_HOLDER_SIZED = WM_USER + 1115;

// From the column dialog to the host's grid.
extern QUOR_CONTROLS_API const UINT WM_FGRID_LOCK_SORT_ON_REPOS_COLUMN;
extern QUOR_CONTROLS_API const UINT WM_FGRID_SORT_ORDER_ON_REPOS_COLUMN;
extern QUOR_CONTROLS_API const UINT WM_FILTERGRID_BUILD_SORT_ORDER;
extern QUOR_CONTROLS_API const UINT WM_FILTERGRID_SAVE_SORT_ORDER_PROFILE;
extern QUOR_CONTROLS_API const UINT WM_FILTER_GRID_ON_SAVE_MULTI_SORT;
extern QUOR_CONTROLS_API const UINT WM_FILTERGRID_REMOVE_SORT_ALERT;
// From the user column dialog to the host's grid.
extern QUOR_CONTROLS_API const UINT WM_MOD_FILTERGRID_CUSTOM_CELL;
// From a dialog to itself.
extern QUOR_CONTROLS_API const UINT WM_ZTD_DELAYED_SETFOCUS;
// From the check list to its parent. The last one is registered only.
extern QUOR_CONTROLS_API const UINT WM_XLISTCTRL_CHECKBOX_CLICKED;
extern QUOR_CONTROLS_API const UINT WM_XLISTCTRL_COLORBOX_CLICKED;
extern QUOR_CONTROLS_API const UINT WM_XLISTCTRL_COMBO_SELECTION;
// Texts shared with the host's grid. The library neither sends nor handles them.
extern QUOR_CONTROLS_API const UINT FILTER_GRID_RIGHT_CLICK;
extern QUOR_CONTROLS_API const UINT FILTER_GRID_CELL_FIRST_BTN_CLICK;
extern QUOR_CONTROLS_API const UINT FILTER_GRID_CELL_SECOND_BTN_CLICK;
extern QUOR_CONTROLS_API const UINT FILTER_GRID_PROCESS_PENDING_UPDATES;
extern QUOR_CONTROLS_API const UINT FGM_ON_GRID_ITEM_CHANGED;
extern QUOR_CONTROLS_API const UINT FGM_ON_DRAG_DROP_SUCCESS;
extern QUOR_CONTROLS_API const UINT FGM_ON_SORT_SUCCESS;
extern QUOR_CONTROLS_API const UINT FGM_ON_ROW_POST_CHECKBOX_CLICKED;
