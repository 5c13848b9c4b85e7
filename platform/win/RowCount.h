// Tells a list view with owner data, in report view, how many rows it has.
#pragma once

#include "platform/base/Export.h"

class CWnd;

namespace quor {

// The control keeps its selection and does not scroll beyond what the count asks for; what the news uncover is
// invalidated, and no more (LVSICF_NOINVALIDATEALL, LVSICF_NOSCROLL). The call goes past the window procedure of `list`
// to the control's own.
QUOR_FRAMEWORK_API void tellRowCount(CWnd& list, int count);

}  // namespace quor
