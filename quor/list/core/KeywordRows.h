// The keyword rows of the appearance dialogs, in and out of a list's record, and the texts that are stored when they
// are applied. docs/formats.md shows the texts.
#pragma once

#include "quor/foundation/core/ColumnRecords.h"

#include <optional>
#include <vector>

namespace quor::list {

// A box without a colour is nothing, which black is not. Rows of the customise level have no background.
struct KeywordRow {
    CString keyword;
    std::optional<COLORREF> text;
    std::optional<COLORREF> back;
};

// What a record holds. Its arrays may differ in length: a colour that is not there is nothing. Without all three of its
// arrays the user level has no rows.
std::vector<KeywordRow> keywordRows(const cCustomizedAppearanceSettings& record);
std::vector<KeywordRow> userKeywordRows(const cCustomizedAppearanceSettings& record);

// Make rows the keywords of a record, folded to capitals, and return the text that stands for them behind the looks.
// The arrays are made if they are needed and belong to the record's owner. Customise level: `column` becomes the
// keyword column; a row without a colour is dropped.
CString takeKeywords(cCustomizedAppearanceSettings& record, int column, const std::vector<KeywordRow>& rows);
// User level: a colour that is nothing enters no array, so that they drift apart, and is written as that of the row
// before (FFFFFFFF before the first).
CString takeUserKeywords(cCustomizedAppearanceSettings& record, const std::vector<KeywordRow>& rows);

// The stored text: colours and font, then `tail` unless it is empty.
CString appearanceText(const cCustomizedAppearanceSettings& looks, const CString& tail);

// `target = source` by the record's own rules, for an owner: the arrays of `target` that are replaced are freed.
void replaceAppearance(cCustomizedAppearanceSettings& target, const cCustomizedAppearanceSettings& source);

}  // namespace quor::list
