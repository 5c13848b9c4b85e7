// For the dialogs of this folder.
#pragma once

#include "quor/framework/FocusStack.h"

namespace quor::framework {

// The window is about to go: no record of it may stay.
void forgetFocusWindow(CWnd* window);

}  // namespace quor::framework
