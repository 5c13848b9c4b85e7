// The stored texts of deal slip profiles: named choices of columns for reports.
//
// A profile's text is pairs of columnIndex and place in the report, -1 for a column that is not in it. The writer puts
// a user part behind the pair of a user column; the reader takes strict pairs and makes no allowance for it: it reads
// the user part as index 0, and the pairs behind it shift by one. Stored texts depend on both, so both stay.
#pragma once

#include "quor/list/core/ProfileEntry.h"

#include <optional>
#include <vector>

namespace quor::list {

// Names are stored with this in front and kept in memory without it.
inline constexpr char kDealSlipPrefix[] = "dealslip_";

CString withDealSlipPrefix(const CString& name);
// Only at the start, and once.
CString withoutDealSlipPrefix(const CString& stored);

// Place by columnIndex, -1 where the text has none. An index without a place ends the reading. Nothing for a text
// without a pair, or with an index outside 0..4095 or a place outside -1..4095.
std::optional<std::vector<int>> parseDealSlipProfile(const CString& text);
// Writes index and place of each entry, and the user part of user columns; widths are not written.
CString formatDealSlipProfile(const std::vector<ProfileEntry>& entries);

// The list of names, joined by commas: stored with the prefix, here without.
std::vector<CString> parseProfileNames(const CString& text);
CString formatProfileNames(const std::vector<CString>& names);

}  // namespace quor::list
