// The dark header of the terminal's lists, by custom draw of the header control.
#pragma once

#include "quor/platform/Framework.h"

class CCommonListCtrl;

namespace terminal {

// Answers the header's NM_CUSTOMDRAW inside its list: paints each cell and skips the system's picture. True if
// `news` was such a notification of this list's header and `*result` holds the answer.
bool paintHeader(CCommonListCtrl& list, const NMHDR* news, LRESULT* result);

}  // namespace terminal
