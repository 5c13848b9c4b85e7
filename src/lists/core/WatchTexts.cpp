#include "src/lists/core/WatchTexts.h"

#include "platform/base/Numbers.h"
#include "src/foundation/core/StoredFields.h"

#include <optional>

namespace quor::watch {

namespace {

constexpr char kMarker[] = "CUSTOMCOLUMN";

int number(const std::optional<CString>& field, int missing) { return field ? quor::atoi(*field) : missing; }

// The three texts at the end of a user column; false if one is missing.
bool readTexts(foundation::StoredFields& fields, WatchColumn& column) {
    for (CString* text : {&column.name, &column.idForm, &column.displayForm}) {
        const auto field = fields.next(kWatchDelimiter);
        if (!field) return false;
        *text = *field;
    }
    return true;
}

void appendNumber(CString& text, int number) { text.AppendFormat("%d", number); }

void appendTexts(CString& text, const WatchColumn& column) {
    for (const CString* field : {&column.name, &column.idForm, &column.displayForm}) {
        text += kWatchDelimiter;
        text += *field;
    }
}

void appendPlaced(CString& text, const WatchColumn& column, char delimiter) {
    appendNumber(text, column.columnIndex);
    for (const int number : {column.place, column.width}) {
        text += delimiter;
        appendNumber(text, number);
    }
}

}  // namespace

bool isWatchUserColumn(const WatchColumn& column) {
    return column.columnIndex >= kMarketWatchColumns && !(column.idForm.IsEmpty() && column.displayForm.IsEmpty());
}

std::vector<WatchColumn> parseWatchProfile(const CString& text) {
    std::vector<WatchColumn> columns;
    foundation::StoredFields fields(text);
    while (const auto index = fields.next()) {
        const auto place = fields.next(), width = fields.next();
        if (!width) break;
        columns.push_back({quor::atoi(*index), quor::atoi(*place), quor::atoi(*width), {}, {}, {}});
    }
    return columns;
}

CString formatWatchProfile(const std::vector<WatchColumn>& columns) {
    CString text;
    for (const WatchColumn& column : columns) {
        if (!text.IsEmpty()) text += ',';
        appendPlaced(text, column, ',');
    }
    return text;
}

std::vector<WatchColumn> parseWatchUserColumns(const CString& text) {
    std::vector<WatchColumn> columns;
    foundation::StoredFields fields(text);
    while (const auto index = fields.next(kWatchDelimiter)) {
        WatchColumn column;
        column.columnIndex = quor::atoi(*index);
        if (!readTexts(fields, column)) break;
        columns.push_back(column);
    }
    return columns;
}

CString formatWatchUserColumns(const std::vector<WatchColumn>& columns) {
    CString text;
    for (const WatchColumn& column : columns) {
        if (!isWatchUserColumn(column)) continue;
        if (!text.IsEmpty()) text += kWatchDelimiter;
        appendNumber(text, column.columnIndex);
        appendTexts(text, column);
    }
    return text;
}

WatchExport parseWatchExport(const CString& text) {
    WatchExport made;
    foundation::StoredFields fields(text);
    while (const auto index = fields.next()) {
        if (*index == kMarker) {
            made.hasMarker = true;
            break;
        }
        WatchColumn column;
        column.columnIndex = quor::atoi(*index);
        column.place = number(fields.next(), -1);
        column.width = number(fields.next(), 0);
        column.name = fields.next().value_or(CString());
        made.builtIn.push_back(column);
    }
    while (const auto index = fields.next(kWatchDelimiter)) {
        WatchColumn column;
        column.columnIndex = quor::atoi(*index);
        column.place = number(fields.next(kWatchDelimiter), -1);
        column.width = number(fields.next(kWatchDelimiter), 0);
        if (!readTexts(fields, column)) break;
        made.user.push_back(column);
    }
    return made;
}

CString formatWatchExport(const std::vector<WatchColumn>& columns) {
    CString builtIn, user;
    for (const WatchColumn& column : columns) {
        const bool isUser = isWatchUserColumn(column);
        if (!isUser && column.columnIndex >= kMarketWatchColumns) continue;
        CString& text = isUser ? user : builtIn;
        if (!text.IsEmpty()) text += isUser ? kWatchDelimiter : ',';
        appendPlaced(text, column, isUser ? kWatchDelimiter : ',');
        if (isUser) {
            appendTexts(text, column);
        } else {
            text += ',';
            text += column.name;
        }
    }
    return builtIn + "," + kMarker + "," + user;
}

}  // namespace quor::watch
