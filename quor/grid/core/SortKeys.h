// SortKeys: what one sort run knows of its rows. Each row is read once, in the order of the run, into flat arrays, so
// that no comparison asks the host. A row is then known by its position in the run, from 0.
//
// The kind of key follows from the column's ColumnDataType: integer and long integer, decimal and plain decimal
// (numbers), mixed and date (texts); any other has no key and all its rows are equal. A cell that is no number counts
// as 0, and so does a row without a key, whose text is empty.
#pragma once

#include "quor/platform/Base.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quor::grid {

enum class SortKeyKind { none, integer, number, text };

SortKeyKind sortKeyKind(int dataType);

// How integers are read: a click takes 64 bits, the lock path stays with 32 (it saturates).
enum class SortIntegers { wide, narrow };

class SortKeys {
public:
    SortKeys(int dataType, SortIntegers integers, std::size_t expectedRows);

    // The next row. The text is copied as far as it is needed.
    void add(std::int32_t mapIndex, const CString& text);

    int dataType() const { return m_dataType; }
    SortKeyKind kind() const { return m_kind; }
    std::size_t size() const { return m_mapIndices.size(); }
    // True while every text added equals the first one, byte for byte; of no row, too.
    bool allTextsEqual() const { return m_allEqual; }

    // By position; only of the kind that the run has.
    const std::vector<std::int32_t>& mapIndices() const { return m_mapIndices; }
    const std::vector<std::int64_t>& integers() const { return m_integerKeys; }
    const std::vector<double>& numbers() const { return m_numberKeys; }
    const char* text(std::size_t position) const { return m_texts.data() + m_textStarts[position]; }

private:
    int m_dataType;
    SortKeyKind m_kind;
    SortIntegers m_integers;
    bool m_allEqual = true;
    std::string m_firstText;
    std::vector<std::int32_t> m_mapIndices;
    std::vector<std::int64_t> m_integerKeys;
    std::vector<double> m_numberKeys;
    std::vector<std::size_t> m_textStarts;
    std::vector<char> m_texts;  // each with its terminator
};

}  // namespace quor::grid
