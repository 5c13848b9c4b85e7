#include "src/list/core/ColumnProfileText.h"

#include <cstddef>
#include <optional>

#include "platform/base/Numbers.h"
#include "src/foundation/core/StoredFields.h"

namespace quor::list {

namespace {

constexpr char kCustomColumnMarker[] = "CUSTOMCOLUMN";

// Three numbers, the first of which was met already. False if the text ends within them.
bool readTriple(foundation::StoredFields& fields, const CString& index, ProfileEntry& entry) {
    const auto place = fields.next();
    const auto width = fields.next();
    if (!width) return false;
    entry.columnIndex = quor::atoi(index);
    entry.place = quor::atoi(*place);
    entry.width = quor::atoi(*width);
    return true;
}

// Name, expression, tool tip. False if one of them is missing; then the entry has no user part.
bool readUserPart(foundation::StoredFields& fields, ProfileEntry& entry) {
    const auto name = fields.next('#');
    const auto expression = fields.next('#');
    const auto toolTip = fields.next();
    if (!toolTip) return false;
    entry.isUserColumn = true;
    entry.name = *name;
    entry.expression = *expression;
    entry.toolTip = *toolTip;
    return true;
}

void appendTriple(CString& text, const ProfileEntry& entry) {
    text.AppendFormat("%d,%d,%d", entry.columnIndex, entry.place, entry.width);
}

void appendUserPart(CString& text, const ProfileEntry& entry) {
    text.AppendFormat(",%s#%s#%s", entry.name.GetString(), entry.expression.GetString(), entry.toolTip.GetString());
}

void putAt(std::vector<int>& array, int index, int value) {
    const auto at = static_cast<std::size_t>(index);
    if (at >= array.size()) array.resize(at + 1);
    array[at] = value;
}

}  // namespace

bool fitsColumnRange(int columnIndex, int place) {
    return columnIndex >= 0 && columnIndex < kMaxColumns && place >= -1 && place < kMaxColumns;
}

std::vector<ProfileEntry> parseColumnProfile(const CString& text, int builtInCount) {
    std::vector<ProfileEntry> entries;
    foundation::StoredFields fields(text);
    while (const auto index = fields.next()) {
        ProfileEntry entry;
        if (!readTriple(fields, *index, entry)) break;
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
        appendTriple(text, entry);
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
        if (!readTriple(fields, *field, entry)) break;
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
        appendTriple(text, entry);
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
