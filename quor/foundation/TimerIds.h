// Every timer id of the library, with its period in milliseconds. A timer id is known per window, so only ids of one
// class family must differ. Two of them do not: in the list family id 1 is the auto-sort of CCommonListCtrl and the
// one-shot repaint of its descendant CFilterListCtrl. Hosts rely on both numbers. A grid that starts its repaint timer
// therefore replaces a running auto-sort timer, and its handler kills timer 1: a grid sorts itself once, when auto-sort
// begins. The other way round, a repaint that is pending when the auto-sort timer is set or killed is started again.
#pragma once

// CCommonListCtrl.
inline constexpr unsigned kAutoSortTimer = 1;
inline constexpr unsigned kAutoSortPeriod = 5000;
inline constexpr unsigned kAutoSortPeriodWhenEmpty = 1000;  // started while the list has no rows
inline constexpr unsigned kDragScrollTimer = 2;
inline constexpr unsigned kDragScrollPeriod = 100;
inline constexpr unsigned kCellTipTimer = 4002;  // until a tip shows once, after the system's delay
inline constexpr unsigned kCellTipPeriod = 200;  // while it shows

// CFilterListCtrl.
inline constexpr unsigned kRepaintTimer = 1;  // one shot; the same number as kAutoSortTimer, see above
inline constexpr unsigned kRepaintDelay = 500;
inline constexpr unsigned kTrendFadeTimer = 4000;
inline constexpr unsigned kTrendFadePeriod = 250;
inline constexpr unsigned kFlushTimer = 4001;  // one shot; its delay is a field of the grid, 200 by default

// CCustomTabCtrl.
inline constexpr unsigned kTabRepeatTimer = 1;  // looks whether a scroll button that is held repeats
inline constexpr unsigned kTabRepeatPeriod = 100;
inline constexpr unsigned kTabDragTimer = 2;  // one shot
inline constexpr unsigned kTabDragDelay = 200;
inline constexpr unsigned kTabDragCursorDelay = 10;
inline constexpr unsigned kTabDragScrollTimer = 3;
inline constexpr unsigned kTabDragScrollPeriod = 100;
