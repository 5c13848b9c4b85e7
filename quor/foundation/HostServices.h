// The host's entry points that may be missing, each with the rule for a host that lacks it. Entry points that a host
// must export are called through g_pControlBlock directly.
#pragma once

#include "quor/foundation/ControlBlock.h"

namespace quor::foundation {

// One line for the host's log; silent without AddToTabbedLog or before the block exists.
QUOR_CONTROLS_API void logToHost(const char* text);

// Whether market watches run in the host's optimised update mode; false without IsOptimizedMWUpdate.
QUOR_CONTROLS_API bool hostRunsOptimizedMarketWatch();

// Offers a dialog to the host's protection against screen capture. Returns the host's result; 1 where there is nothing
// to do: the default status is missing or its low byte says that sharing is allowed, or registration is missing.
QUOR_CONTROLS_API int registerForDisplayAffinity(CWnd* dialog);

// Tells the host that such a dialog closes; nothing without the entry.
QUOR_CONTROLS_API void removeFromDisplayAffinity(CWnd* dialog);

// The text that the host gives for the registry path of dialogs. Asked for while it is empty only.
QUOR_CONTROLS_API const CString& appdataHashCode();

}  // namespace quor::foundation
