// The texts of the market watch's cells, out of a quote. No window, no allocation.
#pragma once

#include <string_view>

#include "host/WatchPane.h"

namespace terminal {

// The text of one cell; it points into `buffer` or into the row. A field that never came gives an empty text.
std::string_view watchText(const WatchRow& row, Watch column, TextBuffer& buffer);

}  // namespace terminal
