#include "quor/list/core/DealSlipText.h"

#include "quor/foundation/core/StoredFields.h"
#include "quor/list/core/ColumnProfileText.h"

#include <cstddef>

namespace quor::list {

namespace {

constexpr int kPrefixLength = sizeof(kDealSlipPrefix) - 1;

}  // namespace

CString withDealSlipPrefix(const CString& name) { return kDealSlipPrefix + name; }

CString withoutDealSlipPrefix(const CString& stored) {
    return stored.Left(kPrefixLength) == kDealSlipPrefix ? stored.Mid(kPrefixLength) : stored;
}

std::optional<std::vector<int>> parseDealSlipProfile(const CString& text) {
    std::vector<int> places;
    foundation::StoredFields fields(text);
    while (const auto index = fields.next()) {
        const auto place = fields.next();
        if (!place) break;
        const int column = quor::atoi(*index);
        if (!fitsColumnRange(column, quor::atoi(*place))) return std::nullopt;
        const auto at = static_cast<std::size_t>(column);
        if (at >= places.size()) places.resize(at + 1, -1);
        places[at] = quor::atoi(*place);
    }
    if (places.empty()) return std::nullopt;
    return places;
}

CString formatDealSlipProfile(const std::vector<ProfileEntry>& entries) {
    CString text;
    for (const ProfileEntry& entry : entries) {
        if (!text.IsEmpty()) text += ',';
        text.AppendFormat("%d,%d", entry.columnIndex, entry.place);
        if (entry.isUserColumn) appendUserPart(text, entry);
    }
    return text;
}

std::vector<CString> parseProfileNames(const CString& text) {
    std::vector<CString> names;
    foundation::StoredFields fields(text);
    while (const auto name = fields.next()) names.push_back(withoutDealSlipPrefix(*name));
    return names;
}

CString formatProfileNames(const std::vector<CString>& names) {
    CString text;
    for (const CString& name : names) {
        if (!text.IsEmpty()) text += ',';
        text += withDealSlipPrefix(name);
    }
    return text;
}

}  // namespace quor::list
