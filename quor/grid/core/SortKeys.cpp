// Texts lie in one block, each with its terminator, since a string object a row would be an allocation a row. Equal
// texts are watched for as they come in: a click on a column of one value is to move nothing.
#include "quor/grid/core/SortKeys.h"

#include "quor/foundation/core/ColumnRecords.h"

#include <string_view>

namespace quor::grid {

namespace {

constexpr std::size_t kUsualTextSize = 16;  // bytes a row, for the first allocation only

}  // namespace

SortKeyKind sortKeyKind(int dataType) {
    switch (dataType) {
        case kTypeInteger:
        case kTypeLongInteger:
            return SortKeyKind::integer;
        case kTypeDecimal:
        case kTypePlainDecimal:
            return SortKeyKind::number;
        case kTypeMixed:
        case kTypeDateTime:
            return SortKeyKind::text;
        default:
            return SortKeyKind::none;
    }
}

SortKeys::SortKeys(int dataType, SortIntegers integers, std::size_t expectedRows)
    : m_dataType(dataType), m_kind(sortKeyKind(dataType)), m_integers(integers) {
    m_mapIndices.reserve(expectedRows);
    if (m_kind == SortKeyKind::integer) m_integerKeys.reserve(expectedRows);
    if (m_kind == SortKeyKind::number) m_numberKeys.reserve(expectedRows);
    if (m_kind != SortKeyKind::text) return;
    m_textStarts.reserve(expectedRows);
    m_texts.reserve(expectedRows * kUsualTextSize);
}

void SortKeys::add(std::int32_t mapIndex, const CString& text) {
    const char* const bytes = text.GetString();
    const auto length = static_cast<std::size_t>(text.GetLength());
    if (m_mapIndices.empty()) {
        m_firstText.assign(bytes, length);
    } else if (m_allEqual) {
        m_allEqual = std::string_view(bytes, length) == m_firstText;
    }
    m_mapIndices.push_back(mapIndex);
    switch (m_kind) {
        case SortKeyKind::integer:
            m_integerKeys.push_back(m_integers == SortIntegers::wide ? quor::atoi64(bytes) : quor::atol(bytes));
            break;
        case SortKeyKind::number:
            m_numberKeys.push_back(quor::atof(bytes));
            break;
        case SortKeyKind::text:
            m_textStarts.push_back(m_texts.size());
            m_texts.insert(m_texts.end(), bytes, bytes + length + 1);
            break;
        case SortKeyKind::none:
            break;
    }
}

}  // namespace quor::grid
