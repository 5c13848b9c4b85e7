// Message boxes of the framework.
#pragma once

#include "quor/platform/base/Export.h"
#include "quor/platform/base/WinTypes.h"

// Shows a text under the application's name, owned by the active popup of the main window (without one, by the active
// window), whose input is blocked meanwhile. Without an icon in `nType` a warning icon is shown, a question mark with
// MB_YESNO. Returns the button (IDOK...), 0 on failure.
QUOR_FRAMEWORK_API int AfxMessageBox(LPCSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
// The same with a string resource; an unknown id shows an empty text.
QUOR_FRAMEWORK_API int AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = static_cast<UINT>(-1));
