// User columns stand behind all others and between bytes of 0xA7: a name or a formula may hold a comma, so a comma
// cannot part them.
#include "quor/lists/core/WatchTexts.h"

#include "quor/foundation/core/ColumnTexts.h"

#include <optional>

namespace quor::watch {

namespace {

constexpr char kMarker[] = "CUSTOMCOLUMN";

constexpr foundation::TextDelimiters kWatchDelimiters{kWatchDelimiter, kWatchDelimiter};

int number(const std::optional<CString>& field, int missing) { return field ? quor::atoi(*field) : missing; }

bool readUserTexts(foundation::StoredFields& fields, WatchColumn& column) {
    return readTexts(fields, {&column.name, &column.idForm, &column.displayForm}, kWatchDelimiters);
}

void appendUserTexts(CString& text, const WatchColumn& column) {
    appendTexts(text, {&column.name, &column.idForm, &column.displayForm}, kWatchDelimiters);
}

}  // namespace

bool isWatchUserColumn(const WatchColumn& column) {
    return column.columnIndex >= kMarketWatchColumns && !(column.idForm.IsEmpty() && column.displayForm.IsEmpty());
}

std::vector<WatchColumn> parseWatchProfile(const CString& text) {
    std::vector<WatchColumn> columns;
    foundation::StoredFields fields(text);
    while (const auto index = fields.next()) {
        WatchColumn column;
        if (!readPlaced(fields, *index, column)) break;
        columns.push_back(column);
    }
    return columns;
}

CString formatWatchProfile(const std::vector<WatchColumn>& columns) {
    CString text;
    for (const WatchColumn& column : columns) {
        if (!text.IsEmpty()) text += ',';
        foundation::appendPlaced(text, column);
    }
    return text;
}

std::vector<WatchColumn> parseWatchUserColumns(const CString& text) {
    std::vector<WatchColumn> columns;
    foundation::StoredFields fields(text);
    while (const auto index = fields.next(kWatchDelimiter)) {
        WatchColumn column;
        column.columnIndex = quor::atoi(*index);
        if (!readUserTexts(fields, column)) break;
        columns.push_back(column);
    }
    return columns;
}

CString formatWatchUserColumns(const std::vector<WatchColumn>& columns) {
    CString text;
    for (const WatchColumn& column : columns) {
        if (!isWatchUserColumn(column)) continue;
        if (!text.IsEmpty()) text += kWatchDelimiter;
        text.AppendFormat("%d", column.columnIndex);
        appendUserTexts(text, column);
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
        if (!readUserTexts(fields, column)) break;
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
        foundation::appendPlaced(text, column, isUser ? kWatchDelimiter : ',');
        if (isUser) {
            appendUserTexts(text, column);
        } else {
            text += ',';
            text += column.name;
        }
    }
    return builtIn + "," + kMarker + "," + user;
}

}  // namespace quor::watch
