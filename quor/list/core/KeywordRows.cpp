#include "quor/list/core/KeywordRows.h"

#include "quor/foundation/core/AppearanceRecords.h"
#include "quor/list/core/Keywords.h"

namespace quor::list {

namespace {

using Colors = CArray<DWORD, DWORD>;

constexpr COLORREF kNoColor = 0xFFFFFFFF;

std::optional<COLORREF> colorAt(const Colors* colors, INT_PTR index) {
    if (!colors || index >= colors->GetCount()) return std::nullopt;
    return colors->GetAt(index);
}

template <class Array>
void makeReady(Array*& array, bool needed) {
    if (array) array->RemoveAll();
    if (!array && needed) array = new Array;
}

template <class Array>
void freeFormer(Array* former, const Array* present) {
    if (former != present) delete former;
}

void appendColor(CString& text, COLORREF color) { text.AppendFormat("%X,", static_cast<unsigned>(color)); }

}  // namespace

std::vector<KeywordRow> keywordRows(const cCustomizedAppearanceSettings& record) {
    std::vector<KeywordRow> rows;
    for (INT_PTR i = 0; record.pKeywords && i < record.pKeywords->GetCount(); ++i)
        rows.push_back({record.pKeywords->GetAt(i), colorAt(record.pKeywordColors, i), std::nullopt});
    return rows;
}

std::vector<KeywordRow> userKeywordRows(const cCustomizedAppearanceSettings& record) {
    std::vector<KeywordRow> rows;
    if (!record.pUserKeywords || !record.pUserTextColors || !record.pUserBackColors) return rows;
    for (INT_PTR i = 0; i < record.pUserKeywords->GetCount(); ++i)
        rows.push_back(
            {record.pUserKeywords->GetAt(i), colorAt(record.pUserTextColors, i), colorAt(record.pUserBackColors, i)});
    return rows;
}

CString takeKeywords(cCustomizedAppearanceSettings& record, int column, const std::vector<KeywordRow>& rows) {
    record.iKeywordColumn = column;
    makeReady(record.pKeywords, !rows.empty());
    makeReady(record.pKeywordColors, !rows.empty());
    CString tail;
    tail.Format("%d,", column);
    for (const KeywordRow& row : rows) {
        if (!row.text) continue;
        const CString keyword = foldedKeyword(row.keyword);
        record.pKeywords->Add(keyword);
        record.pKeywordColors->Add(*row.text);
        tail += keyword + ",";
        appendColor(tail, *row.text);
    }
    return tail;
}

CString takeUserKeywords(cCustomizedAppearanceSettings& record, const std::vector<KeywordRow>& rows) {
    makeReady(record.pUserKeywords, !rows.empty());
    makeReady(record.pUserTextColors, !rows.empty());
    makeReady(record.pUserBackColors, !rows.empty());
    CString tail;
    COLORREF text = kNoColor, back = kNoColor;
    for (const KeywordRow& row : rows) {
        const CString keyword = foldedKeyword(row.keyword);
        record.pUserKeywords->Add(keyword);
        if (row.text) record.pUserTextColors->Add(text = *row.text);
        if (row.back) record.pUserBackColors->Add(back = *row.back);
        tail += keyword + ",";
        appendColor(tail, text);
        appendColor(tail, back);
    }
    return tail;
}

CString appearanceText(const cCustomizedAppearanceSettings& looks, const CString& tail) {
    CString text = foundation::formatLooks(looks);
    if (!tail.IsEmpty()) text += "," + tail;
    return text;
}

void replaceAppearance(cCustomizedAppearanceSettings& target, const cCustomizedAppearanceSettings& source) {
    const cCustomizedAppearanceSettings former(target);  // shares the arrays
    target = source;
    freeFormer(former.pKeywords, target.pKeywords);
    freeFormer(former.pKeywordColors, target.pKeywordColors);
    freeFormer(former.pUserKeywords, target.pUserKeywords);
    freeFormer(former.pUserTextColors, target.pUserTextColors);
    freeFormer(former.pUserBackColors, target.pUserBackColors);
}

}  // namespace quor::list
