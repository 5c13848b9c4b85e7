// The filter text that the pop-up makes of the values that the user chose.
#pragma once

#include "quor/platform/Base.h"

#include <functional>
#include <string>

namespace quor::grid {

// The longest filter text that a field of the header takes, in bytes.
inline constexpr std::size_t kLongestFilter = 1048575;

// Joins values by "~" in the order in which `next` gives them, until it answers false. A value that the text so far
// contains, as a part of a value or across a "~", is left out: with "ABCD" before it, "ABC" is. The text is cut at the
// longest filter, and nothing that could only stand behind that is asked for once this is known.
//
// Cost: linear in the bytes of the values, whatever they are; 24 bytes of memory for each of them, for as many at a
// time as fill a filter.
std::string joinFilterValues(const std::function<bool(CString& value)>& next, std::size_t longest = kLongestFilter);

}  // namespace quor::grid
