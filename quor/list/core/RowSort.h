// How rows compare and in which order they end: the rule over two texts, the same rule over texts read once per row,
// and the sorted order of rows.
//
// The rule, by the ColumnDataType of the column, with texts a and b and order s (-1 rising, 1 falling):
//
//   integer, long integer     s * (int(b) - int(a)), in 32 bits that wrap: two values more than 2^31 apart compare the
//                             wrong way round
//   all four decimals         the sign of s * (number(b) - number(a)); "-" and "NA" count as -1
//   mixed                     s * natural(b, a), which is not transitive around 2147483647: see NaturalCompare.h
//   date and time             the opposite of s * (date a against date b)
//   text                      s * (b against a), by bytes
//   any other                 equal
//
// A multi-column sort goes by its levels, and the first that is not equal decides. Its rule differs: the watch's and
// the trend's decimal and text are equal, "-" and "NA" count as 0 like any text without a number, and dates come the
// other way round. Users know both; keep them apart.
//
// Integers (by the wrap) and mixed texts are thus not transitive for every column, so rows are put in order by
// stableMergeSort only.
#pragma once

#include "quor/platform/Base.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quor::list {

enum class SortRule { singleColumn, levels };

// The rule as it stands, over two texts. Negative: a first; a difference of integers is returned as it is, all
// others are -1, 0, 1 for an order of -1 or 1.
int compareSortTexts(const char* a, const char* b, int dataType, int order, SortRule rule);

// One column's texts as the keys that its rule compares, by row number. compare() gives what compareSortTexts gives for
// the two texts, without reading them again.
class SortKeys {
public:
    SortKeys(int dataType, int order, SortRule rule);

    // Whether the rule looks at texts at all; if not, no text need be added.
    bool readsTexts() const { return m_kind != Kind::none; }
    void reserve(std::size_t rows);
    // The next row's text. Null counts as empty.
    void add(const char* text);
    // Rows are those added; no bounds check.
    int compare(std::size_t a, std::size_t b) const;

private:
    enum class Kind { none, integer, number, natural, date, text };
    // A date as one key: quor::DateTime, whose order is that of its members.
    struct Date {
        std::int32_t day;
        std::int64_t nanosecond;
    };
    static Kind kindOf(int dataType, SortRule rule);

    Kind m_kind;
    int m_order;
    SortRule m_rule;
    // Only the one of the kind is filled.
    std::vector<std::int32_t> m_integers;
    std::vector<double> m_numbers;
    std::vector<Date> m_dates;
    std::vector<std::string> m_texts;
};

// The sort of a number of rows: levels of keys, one for a single-column sort.
class RowSort {
public:
    explicit RowSort(std::size_t rows) : m_rows(rows) {}

    // Adds the next level. Unless its rule reads no texts, each row's text must have been added to it.
    void addLevel(SortKeys keys);
    int compare(std::size_t a, std::size_t b) const;
    // The row numbers in sorted order; rows that compare equal keep theirs.
    std::vector<std::uint32_t> sortedRows() const;
    // For each row the position at which it ends.
    std::vector<std::uint32_t> positions() const;

private:
    std::size_t m_rows;
    std::vector<SortKeys> m_levels;
};

}  // namespace quor::list
