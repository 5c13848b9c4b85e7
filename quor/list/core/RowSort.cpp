// The rule is needed twice, over two texts and over a whole list, and must not differ: so a comparison of two texts
// makes keys of them too. Integers wrap on purpose, through unsigned arithmetic, where a difference of ints could not
// be relied on.
#include "quor/list/core/RowSort.h"

#include "quor/foundation/core/ColumnRecords.h"
#include "quor/list/core/MergeSort.h"
#include "quor/list/core/NaturalCompare.h"

#include <cstring>
#include <utility>

namespace quor::list {

namespace {

template <class Value>
int threeWay(const Value& left, const Value& right) {
    return left < right ? -1 : right < left ? 1 : 0;
}

// In 32 bits that wrap: an order may come from a stored text and be any number.
int times(int order, std::uint32_t value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(order) * value);
}

int times(int order, int comparison) { return times(order, static_cast<std::uint32_t>(comparison)); }

int compareIntegers(std::int32_t a, std::int32_t b, int order) {
    return times(order, static_cast<std::uint32_t>(b) - static_cast<std::uint32_t>(a));
}

// Two infinities of one sign have no difference; they are equal.
int compareNumbers(double a, double b, int order) {
    const double difference = order * (b - a);
    return difference > 0 ? 1 : difference < 0 ? -1 : 0;
}

double numberOf(const char* text, SortRule rule) {
    const bool missing = std::strcmp(text, "-") == 0 || std::strcmp(text, "NA") == 0;
    return missing && rule == SortRule::singleColumn ? -1 : quor::atof(text);
}

}  // namespace

SortKeys::Kind SortKeys::kindOf(int dataType, SortRule rule) {
    const bool single = rule == SortRule::singleColumn;
    switch (dataType) {
        case kTypeInteger:
        case kTypeLongInteger:
            return Kind::integer;
        case kTypeDecimal:
        case kTypePlainDecimal:
            return Kind::number;
        case kTypeMixed:
            return Kind::natural;
        case kTypeDateTime:
            return Kind::date;
        case kTypeWatchDecimal:
        case kTypeTrendDecimal:
            return single ? Kind::number : Kind::none;
        case kTypeText:
            return single ? Kind::text : Kind::none;
        default:
            return Kind::none;
    }
}

SortKeys::SortKeys(int dataType, int order, SortRule rule)
    : m_kind(kindOf(dataType, rule)), m_order(order), m_rule(rule) {}

void SortKeys::reserve(std::size_t rows) {
    switch (m_kind) {
        case Kind::none:
            break;
        case Kind::integer:
            return m_integers.reserve(rows);
        case Kind::number:
            return m_numbers.reserve(rows);
        case Kind::date:
            return m_dates.reserve(rows);
        case Kind::natural:
        case Kind::text:
            return m_texts.reserve(rows);
    }
}

void SortKeys::add(const char* text) {
    if (!text) text = "";
    switch (m_kind) {
        case Kind::none:
            break;
        case Kind::integer:
            m_integers.push_back(quor::atoi(text));
            break;
        case Kind::number:
            m_numbers.push_back(numberOf(text, m_rule));
            break;
        case Kind::date: {
            const quor::DateTime date = quor::readDateTime(text);
            m_dates.push_back({date.day, date.nanosecond});
            break;
        }
        case Kind::natural:
        case Kind::text:
            m_texts.emplace_back(text);
            break;
    }
}

int SortKeys::compare(std::size_t a, std::size_t b) const {
    switch (m_kind) {
        case Kind::none:
            break;
        case Kind::integer:
            return compareIntegers(m_integers[a], m_integers[b], m_order);
        case Kind::number:
            return compareNumbers(m_numbers[a], m_numbers[b], m_order);
        case Kind::natural:
            return times(m_order, naturalCompare(m_texts[b].c_str(), m_texts[a].c_str()));
        case Kind::date: {
            const int days = threeWay(m_dates[a].day, m_dates[b].day);
            const int date = days ? days : threeWay(m_dates[a].nanosecond, m_dates[b].nanosecond);
            return times(m_order, m_rule == SortRule::singleColumn ? -date : date);
        }
        case Kind::text:
            return times(m_order, threeWay(std::strcmp(m_texts[b].c_str(), m_texts[a].c_str()), 0));
    }
    return 0;
}

int compareSortTexts(const char* a, const char* b, int dataType, int order, SortRule rule) {
    SortKeys keys(dataType, order, rule);
    if (!keys.readsTexts()) return 0;
    keys.add(a);
    keys.add(b);
    return keys.compare(0, 1);
}

void RowSort::addLevel(SortKeys keys) {
    if (keys.readsTexts()) m_levels.push_back(std::move(keys));
}

int RowSort::compare(std::size_t a, std::size_t b) const {
    for (const SortKeys& level : m_levels) {
        if (const int order = level.compare(a, b)) return order;
    }
    return 0;
}

std::vector<std::uint32_t> RowSort::sortedRows() const {
    std::vector<std::uint32_t> rows(m_rows);
    for (std::size_t row = 0; row < m_rows; ++row) rows[row] = static_cast<std::uint32_t>(row);
    if (m_levels.empty()) return rows;
    stableMergeSort(rows, [this](std::uint32_t a, std::uint32_t b) { return compare(a, b); });
    return rows;
}

std::vector<std::uint32_t> RowSort::positions() const {
    const std::vector<std::uint32_t> rows = sortedRows();
    std::vector<std::uint32_t> positions(m_rows);
    for (std::size_t position = 0; position < m_rows; ++position) {
        positions[rows[position]] = static_cast<std::uint32_t>(position);
    }
    return positions;
}

}  // namespace quor::list
