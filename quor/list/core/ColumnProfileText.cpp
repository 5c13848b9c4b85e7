// Each form has a reader of its own, since they differ in what a missing field means: a profile that is cut keeps what
// was whole, an exchange text keeps a last column without a heading, and the factory's repeats the number before. Texts
// of all ages are on disks, and each has to mean what it always meant.
#include "quor/list/core/ColumnProfileText.h"

#include "quor/foundation/core/ColumnTexts.h"

#include <cstddef>
#include <optional>

namespace quor::list {

namespace {

constexpr char kCustomColumnMarker[] = "CUSTOMCOLUMN";

constexpr foundation::TextDelimiters kUserPartDelimiters{'#', ','};

// Name, expression, tool tip. False if one of them is missing; then the entry has no user part.
bool readUserPart(foundation::StoredFields& fields, ProfileEntry& entry) {
    entry.isUserColumn = readTexts(fields, {&entry.name, &entry.expression, &entry.toolTip}, kUserPartDelimiters);
    return entry.isUserColumn;
}

void putAt(std::vector<int>& array, int index, int value) {
    const auto at = static_cast<std::size_t>(index);
    if (at >= array.size()) array.resize(at + 1);
    array[at] = value;
}

}  // namespace

void appendUserPart(CString& text, const ProfileEntry& entry) {
    appendTexts(text, {&entry.name, &entry.expression, &entry.toolTip}, kUserPartDelimiters);
}

bool fitsColumnRange(int columnIndex, int place) {
    return columnIndex >= 0 && columnIndex < kMaxColumns && place >= -1 && place < kMaxColumns;
}

std::vector<ProfileEntry> parseColumnProfile(const CString& text, int builtInCount) {
    std::vector<ProfileEntry> entries;
    foundation::StoredFields fields(text);
    while (const auto index = fields.next()) {
        ProfileEntry entry;
        if (!readPlaced(fields, *index, entry)) break;
        const bool cut = entry.columnIndex >= builtInCount && !readUserPart(fields, entry);
        entries.push_back(entry);
        if (cut) break;
    }
    return entries;
}

CString formatColumnProfile(const std::vector<ProfileEntry>& entries) {
    CString text;
    for (const ProfileEntry& entry : entries) {
        if (!text.IsEmpty()) text += ',';
        foundation::appendPlaced(text, entry);
        if (entry.isUserColumn) appendUserPart(text, entry);
    }
    return text;
}

ExchangeProfile parseExchangeProfile(const CString& text) {
    ExchangeProfile profile;
    foundation::StoredFields fields(text);
    for (auto field = fields.next(); field; field = fields.next()) {
        if (!profile.hasMarker && *field == kCustomColumnMarker) {
            profile.hasMarker = true;
            if (!(field = fields.next())) break;
        }
        ProfileEntry entry;
        if (!readPlaced(fields, *field, entry)) break;
        const auto heading = fields.next();
        if (profile.hasMarker) {
            if (!readUserPart(fields, entry)) break;
            profile.user.push_back(entry);
        } else {
            if (heading) entry.name = *heading;
            profile.builtIn.push_back(entry);
        }
    }
    return profile;
}

CString formatExchangeProfile(const std::vector<ProfileEntry>& entries) {
    CString text;
    bool marked = false;
    for (const ProfileEntry& entry : entries) {
        if (entry.isUserColumn && !marked) {
            // The comma that ends the entry before is the one in front of the marker.
            text += text.IsEmpty() ? "," : "";
            text.AppendFormat("%s,", kCustomColumnMarker);
            marked = true;
        }
        foundation::appendPlaced(text, entry);
        text.AppendFormat(",%s", entry.name.GetString());
        if (entry.isUserColumn) appendUserPart(text, entry);
        text += ',';
    }
    return text;
}

FactoryColumns parseFactoryProfile(const CString& text) {
    FactoryColumns factory;
    foundation::StoredFields fields(text);
    int place = -1, width = 0;
    while (const auto index = fields.next()) {
        if (const auto field = fields.next()) place = quor::atoi(*field);
        if (const auto field = fields.next()) width = quor::atoi(*field);
        const int column = quor::atoi(*index);
        if (!fitsColumnRange(column, place)) return {};
        if (place == -1) continue;
        putAt(factory.columns, place, column);
        putAt(factory.widths, place, width);
    }
    return factory;
}

}  // namespace quor::list
