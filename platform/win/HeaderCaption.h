// Captions of a column header, for those who paint them in custom draw. The record that custom draw brings covers a
// whole item; in a header with a filter bar the item's filter field is part of that, and belongs to the header.
#pragma once

#include "platform/base/Export.h"
#include "platform/base/WinTypes.h"

#include <commctrl.h>

namespace quor {

// The caption in draw.rc, in the coordinates of draw.hdc: all of it, without the field where a filter bar shows. At
// CDDS_ITEMPREPAINT.
QUOR_FRAMEWORK_API RECT headerCaption(const NMCUSTOMDRAW& draw);

// The answer to CDDS_ITEMPREPAINT once the caption is painted. The header still draws what else an item has: its field,
// where the system's own filter bar shows. It cannot paint over the caption any more.
QUOR_FRAMEWORK_API LRESULT headerCaptionPainted(const NMCUSTOMDRAW& draw);

}  // namespace quor
