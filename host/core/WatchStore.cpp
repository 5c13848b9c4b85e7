#include "host/core/WatchStore.h"

#include "host/core/SettingsFile.h"

namespace terminal {

namespace {
constexpr char kSeparator = '\xA7';  // no character of a heading or a formula
}

// A divisor that is 0, as of an empty cell, shows a message in the cell: everything behind the first "/" is it. Both
// formulas multiply first, so that nothing but the prices decides.
const std::vector<UserColumn>& firstUserColumns() {
    static const std::vector<UserColumn> columns{
        {112, "Spread bp", " ( \"8\" - \"7\" ) * 20000 / ( \"8\" + \"7\" )",
         " ( \"Ask\" - \"Bid\" ) * 20000 / ( \"Ask\" + \"Bid\" )"},
        {113, "From High %", " ( \"2\" - \"11\" ) * 100 / \"11\"", " ( \"Last\" - \"High\" ) * 100 / \"High\""},
    };
    return columns;
}

std::string userColumnsText(const std::vector<UserColumn>& columns) {
    std::string text;
    for (const UserColumn& column : columns) {
        if (!text.empty()) text += kSeparator;
        text += std::to_string(column.columnIndex);
        for (const char* const part : {column.heading, column.byNumber, column.byHeading}) (text += kSeparator) += part;
    }
    return text;
}

void writeFirstUserColumns(SettingsFile& settings) {
    if (settings.get(kUserColumnsSection, kUserColumnsKey)) return;
    settings.set(kUserColumnsSection, kUserColumnsKey, userColumnsText(firstUserColumns()));
}

const std::vector<WatchList>& watchLists() {
    static const std::vector<WatchList> lists{{"Market", ""}, {"Futures", "FUT"}};
    return lists;
}

}  // namespace terminal
