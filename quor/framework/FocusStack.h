// The focus stack: windows that want the focus back, the last one on top. One for the process. Every CZTDialog that
// shows is in it; hosts may put in what they like. Windows are borrowed, and one that has died counts as not there.
#pragma once

#include "quor/platform/Framework.h"

// Puts a window on top. With a flag other than 0 its former records go first, from the bottom up; of two neighbours the
// upper one is passed over. Without, they stay.
QUOR_CONTROLS_API void AddToFocusWnd(CWnd* pWnd, int flag);
// The topmost living window, with its flag; dead ones above it are dropped. Null, and the flag untouched: none.
QUOR_CONTROLS_API CWnd* GetFocusWnd(int& flag);
// The window below the top, null if there is none or it has died. Drops nothing.
QUOR_CONTROLS_API CWnd* GetPreviousFocusWnd();
// Drops the topmost record of a window; a stranger is ignored.
QUOR_CONTROLS_API void RemoveFocusWnd(CWnd* pWnd);
