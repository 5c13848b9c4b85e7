// The record of which the stored texts of columns are made: number, place and width of a column, then three texts. Each
// family of lists has its own delimiters and members; docs/formats.md shows the texts.
#pragma once

#include "quor/foundation/core/StoredFields.h"
#include "quor/platform/Base.h"

#include <array>

namespace quor::foundation {

// Place and width behind a number that was met already. False if the text ends within them; the record stays then.
template <class Column>
bool readPlaced(StoredFields& fields, const CString& columnIndex, Column& column) {
    const auto place = fields.next();
    const auto width = fields.next();
    if (!width) return false;
    column.columnIndex = quor::atoi(columnIndex);
    column.place = quor::atoi(*place);
    column.width = quor::atoi(*width);
    return true;
}

template <class Column>
void appendPlaced(CString& text, const Column& column, char delimiter = ',') {
    text.AppendFormat("%d%c%d%c%d", column.columnIndex, delimiter, column.place, delimiter, column.width);
}

// What stands between the three texts of a user column, and behind them.
struct TextDelimiters {
    char between;
    char behind;
};

// False if one of the texts is missing; all stay then.
inline bool readTexts(StoredFields& fields, const std::array<CString*, 3>& texts, TextDelimiters delimiters) {
    const auto first = fields.next(delimiters.between);
    const auto second = fields.next(delimiters.between);
    const auto third = fields.next(delimiters.behind);
    if (!third) return false;
    *texts[0] = *first;
    *texts[1] = *second;
    *texts[2] = *third;
    return true;
}

// Each behind its delimiter: that in front of the first is the one that ends any field.
inline void appendTexts(CString& text, const std::array<const CString*, 3>& texts, TextDelimiters delimiters) {
    text.AppendFormat("%c%s%c%s%c%s", delimiters.behind, texts[0]->GetString(), delimiters.between,
                      texts[1]->GetString(), delimiters.between, texts[2]->GetString());
}

}  // namespace quor::foundation
