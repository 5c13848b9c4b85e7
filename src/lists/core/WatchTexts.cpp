#include "src/lists/core/WatchTexts.h"

#include "platform/base/Numbers.h"

#include <cstring>
#include <optional>

namespace {

constexpr char kMarker[] = "CUSTOMCOLUMN";
constexpr char kUserDelimiters[] = {kWatchDelimiter, '\0'};

// A text's fields, one after the other.
class Fields {
public:
    Fields(const CString& text, const char* delimiters) : m_text(text), m_delimiters(delimiters) {}

    std::optional<CString> next() {
        if (m_at < 0) return std::nullopt;
        CString field = m_text.Tokenize(m_delimiters, m_at);
        if (m_at < 0) return std::nullopt;
        return field;
    }
    int number(int missing) {
        const std::optional<CString> field = next();
        return field ? quor::atoi(*field) : missing;
    }
    // What lies behind the last field.
    CString rest() const { return m_at < 0 ? CString() : m_text.Mid(m_at); }

private:
    const CString& m_text;
    const char* m_delimiters;
    int m_at = 0;
};

// The three texts at the end of a user column; false if one is missing.
bool readTexts(Fields& fields, WatchColumn& column) {
    for (CString* text : {&column.name, &column.idForm, &column.displayForm}) {
        std::optional<CString> field = fields.next();
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
    Fields fields(text, ",");
    while (const std::optional<CString> index = fields.next()) {
        const std::optional<CString> place = fields.next(), width = fields.next();
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
    Fields fields(text, kUserDelimiters);
    while (const std::optional<CString> index = fields.next()) {
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
    Fields fields(text, ",");
    while (const std::optional<CString> index = fields.next()) {
        if (*index == kMarker) {
            made.hasMarker = true;
            break;
        }
        WatchColumn column;
        column.columnIndex = quor::atoi(*index);
        column.place = fields.number(-1);
        column.width = fields.number(0);
        column.name = fields.next().value_or(CString());
        made.builtIn.push_back(column);
    }
    if (!made.hasMarker) return made;
    const CString userText = fields.rest();
    Fields user(userText, kUserDelimiters);
    while (const std::optional<CString> index = user.next()) {
        WatchColumn column;
        column.columnIndex = quor::atoi(*index);
        column.place = user.number(-1);
        column.width = user.number(0);
        if (!readTexts(user, column)) break;
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
