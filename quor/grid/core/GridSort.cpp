// Three roads to one order:
//   - integers and numbers become unsigned keys that rise where the rows shall, and go through a radix sort;
//   - mixed texts do the same by a digest, bytes whose plain order is that of naturalCompare, eight of them first and
//     the rest only among rows that these leave equal. Texts with a number that naturalCompare compares in a manner of
//     its own have no digest;
//   - those, and dates, go through a merge sort with the comparison itself.
// The first two start from the rows by map index, in the direction that the tie-break asks for, and are stable.
#include "quor/grid/core/GridSort.h"

#include "quor/foundation/core/ColumnRecords.h"
#include "quor/list/core/MergeSort.h"
#include "quor/list/core/NaturalCompare.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <optional>

namespace quor::grid {

namespace {

template <class Value>
int orderOf(Value a, Value b, int order) {
    return a < b ? order : b < a ? -order : 0;
}

// Every sort order is a direction; only its sign counts.
int keyDirection(const SortRule& rule) {
    const int sign = rule.order < 0 ? -1 : rule.order > 0 ? 1 : 0;
    return rule.negated ? -sign : sign;
}

// ---- Radix sort, by as many bits as the keys differ in.

struct Keyed {
    std::uint64_t key = 0;
    std::uint32_t position = 0;
};

constexpr int kDigitBits = 11;
constexpr std::size_t kFewRows = 512;  // below, a comparison sort beats the counting

void radixPass(const std::vector<Keyed>& from, std::vector<Keyed>& to, int shift, std::uint64_t mask) {
    std::array<std::uint32_t, (std::size_t{1} << kDigitBits) + 1> starts{};
    for (const Keyed& row : from) ++starts[(row.key >> shift & mask) + 1];
    std::partial_sum(starts.begin(), starts.end(), starts.begin());
    for (const Keyed& row : from) to[starts[row.key >> shift & mask]++] = row;
}

// Stable, rising by key. The keys are made relative to the lowest on the way.
void sortByKey(std::vector<Keyed>& rows) {
    if (rows.size() < kFewRows) {
        list::stableMergeSort(rows, [](const Keyed& a, const Keyed& b) { return a.key > b.key ? 1 : 0; });
        return;
    }
    std::uint64_t lowest = std::numeric_limits<std::uint64_t>::max(), highest = 0;
    for (const Keyed& row : rows) {
        lowest = std::min(lowest, row.key);
        highest = std::max(highest, row.key);
    }
    const int bits = static_cast<int>(std::bit_width(highest - lowest));
    if (bits == 0) return;
    const int passes = (bits + kDigitBits - 1) / kDigitBits;
    const int digitBits = (bits + passes - 1) / passes;
    for (Keyed& row : rows) row.key -= lowest;
    std::vector<Keyed> other(rows.size());
    for (int pass = 0; pass < passes; ++pass) {
        radixPass(rows, other, pass * digitBits, (std::uint64_t{1} << digitBits) - 1);
        rows.swap(other);
    }
}

// The rows by map index, rising for a falling order: what the tie-break asks for.
std::vector<Keyed> rowsForTies(const SortKeys& keys, int order) {
    const std::vector<std::int32_t>& mapIndices = keys.mapIndices();
    std::vector<Keyed> rows(keys.size());
    for (std::uint32_t i = 0; i < rows.size(); ++i) rows[i] = {static_cast<std::uint32_t>(mapIndices[i]), i};
    if (!std::is_sorted(mapIndices.begin(), mapIndices.end())) sortByKey(rows);
    if (order < 0) std::reverse(rows.begin(), rows.end());
    return rows;
}

// ---- The short road: key and position of a row in one word

// Stable, rising by key; rows come in as they stand in the run, or the other way round if `backwards`. `keys` are used
// up as room to sort in. Nothing when key and position do not fit in a word together.
//
// The digits of all passes are counted in one walk over the keys, and the last pass writes the map indices themselves:
// for two passes, the common case, a million rows are walked over four times in eight bytes each.
class PackedSort {
public:
    PackedSort(std::vector<std::uint64_t>& keys, const std::vector<std::int32_t>& mapIndices, bool backwards)
        : m_keys(keys), m_mapIndices(mapIndices), m_backwards(backwards) {}

    std::optional<std::vector<std::int32_t>> sorted() {
        const int keyBits = measureKeys();
        m_positionBits = static_cast<int>(std::bit_width(m_keys.size() - 1));
        if (keyBits + m_positionBits > 64) return std::nullopt;
        m_passes = (keyBits + kDigitBits - 1) / kDigitBits;
        m_digitBits = (keyBits + m_passes - 1) / m_passes;
        countDigits();
        return sortedByPasses();
    }

private:
    using Starts = std::array<std::uint32_t, std::size_t{1} << kDigitBits>;

    std::size_t digitOfKey(std::uint64_t key, int pass) const {
        return static_cast<std::size_t>(key >> (pass * m_digitBits) & ((std::uint64_t{1} << m_digitBits) - 1));
    }
    std::size_t digitOfWord(std::uint64_t word, int pass) const { return digitOfKey(word >> m_positionBits, pass); }
    // The key without what all of them share: the lowest, and the bits on the right (of short texts' digests, many).
    std::uint64_t shortened(std::uint64_t key) const { return (key - m_lowest) >> m_sharedBits; }
    std::int32_t mapIndexOf(std::uint64_t word) const {
        return m_mapIndices[static_cast<std::size_t>(word & ((std::uint64_t{1} << m_positionBits) - 1))];
    }
    std::uint64_t wordAt(std::size_t i) const {
        const std::size_t position = m_backwards ? m_keys.size() - 1 - i : i;
        return shortened(m_keys[position]) << m_positionBits | position;
    }

    int measureKeys() {
        std::uint64_t lowest = m_keys.front(), highest = lowest, differing = 0;
        for (const std::uint64_t key : m_keys) {
            lowest = std::min(lowest, key);
            highest = std::max(highest, key);
            differing |= key ^ m_keys.front();
        }
        m_lowest = lowest;
        m_sharedBits = differing == 0 ? 0 : std::countr_zero(differing);
        return std::max(1, static_cast<int>(std::bit_width(shortened(highest))));
    }

    void countDigits() {
        m_starts.assign(static_cast<std::size_t>(m_passes), Starts{});
        for (const std::uint64_t key : m_keys)
            for (int pass = 0; pass < m_passes; ++pass)
                ++m_starts[static_cast<std::size_t>(pass)][digitOfKey(shortened(key), pass)];
        for (Starts& starts : m_starts) std::exclusive_scan(starts.begin(), starts.end(), starts.begin(), 0u);
    }

    template <class WordAt, class Put>
    void pass(int number, const WordAt& word, const Put& put) {
        Starts& starts = m_starts[static_cast<std::size_t>(number)];
        for (std::size_t i = 0; i < m_keys.size(); ++i) put(starts[digitOfWord(word(i), number)]++, word(i));
    }

    std::vector<std::int32_t> sortedByPasses() {
        std::vector<std::int32_t> result(m_keys.size());
        const auto putResult = [&](std::uint32_t at, std::uint64_t word) { result[at] = mapIndexOf(word); };
        const auto firstWord = [this](std::size_t i) { return wordAt(i); };
        if (m_passes == 1) {
            pass(0, firstWord, putResult);
            return result;
        }
        std::vector<std::uint64_t> words(m_keys.size());
        pass(0, firstWord, [&](std::uint32_t at, std::uint64_t word) { words[at] = word; });
        for (int number = 1; number < m_passes; ++number) {
            const auto nextWord = [&](std::size_t i) { return words[i]; };
            if (number + 1 == m_passes) {
                pass(number, nextWord, putResult);
            } else {
                pass(number, nextWord, [this](std::uint32_t at, std::uint64_t word) { m_keys[at] = word; });
                words.swap(m_keys);
            }
        }
        return result;
    }

    std::vector<std::uint64_t>& m_keys;
    const std::vector<std::int32_t>& m_mapIndices;
    bool m_backwards;
    std::uint64_t m_lowest = 0;
    int m_sharedBits = 0;
    int m_positionBits = 0;
    int m_passes = 0;
    int m_digitBits = 0;
    std::vector<Starts> m_starts;  // by pass: where the next row of each digit goes
};

// ---- Keys of numbers

constexpr std::uint64_t kTopBit = std::uint64_t{1} << 63;

std::uint64_t keyOf(std::int64_t value) { return static_cast<std::uint64_t>(value) ^ kTopBit; }

// Rises with the value; both zeros are one. There are no NaN.
std::uint64_t keyOf(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value + 0.0);
    return bits & kTopBit ? ~bits : bits | kTopBit;
}

// Numbers with up to two decimals as whole hundredths: far fewer bits to sort by. Taken only if every quotient gives
// back the very number, so that the hundredths stand in the numbers' own order. (Division rounds one way only: unequal
// numbers have unequal hundredths.)
bool toHundredths(const std::vector<double>& numbers, std::vector<std::uint64_t>& keys) {
    constexpr double kLimit = 1e13;  // far inside the whole numbers that a double holds
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const double scaled = numbers[i] * 100;
        if (!(std::fabs(scaled) < kLimit)) return false;
        const auto whole = static_cast<std::int64_t>(scaled + (scaled < 0 ? -0.5 : 0.5));
        if (static_cast<double>(whole) / 100 != numbers[i]) return false;
        keys[i] = keyOf(whole);
    }
    return true;
}

std::vector<std::uint64_t> numericKeys(const SortKeys& keys) {
    std::vector<std::uint64_t> result(keys.size());
    const auto copy = [&result](const auto& values) {
        std::transform(values.begin(), values.end(), result.begin(), [](auto value) { return keyOf(value); });
    };
    if (keys.kind() == SortKeyKind::integer) {
        copy(keys.integers());
    } else if (keys.kind() == SortKeyKind::number && !toHundredths(keys.numbers(), result)) {
        copy(keys.numbers());
    }
    return result;
}

// ---- Digests of mixed texts

// A digit run is its value without leading zero bytes, behind the number of these bytes (1 more, so that the end of a
// text stays lowest), then its length counted down: the longer run stands first. Any other character is one byte, in
// the order of signed bytes, above all digit runs.
class TextDigests {
public:
    // False if a text holds a number that its first digit decides, or a run too long to say.
    bool read(const SortKeys& keys) {
        m_starts.reserve(keys.size() + 1);
        m_bytes.reserve(keys.size() * 10);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            m_starts.push_back(m_bytes.size());
            if (!append(keys.text(i))) return false;
        }
        m_starts.push_back(m_bytes.size());
        m_common = commonBytes();
        return true;
    }

    // Eight bytes behind what all digests share, zeros behind the end.
    std::uint64_t beginning(std::size_t position) const {
        const std::size_t start = m_starts[position] + m_common;
        const std::size_t count = std::min<std::size_t>(8, m_starts[position + 1] - start);
        std::uint64_t key = 0;
        for (std::size_t i = 0; i < count; ++i) key |= std::uint64_t{m_bytes[start + i]} << (56 - 8 * i);
        return key;
    }

    // Of two digests with the same beginning.
    int compareRest(std::size_t first, std::size_t second) const {
        const std::size_t firstSize = rest(first), secondSize = rest(second);
        if (firstSize == 0 || secondSize == 0) return firstSize == secondSize ? 0 : firstSize < secondSize ? -1 : 1;
        const int order = std::memcmp(restOf(first), restOf(second), std::min(firstSize, secondSize));
        if (order != 0) return order;
        return firstSize == secondSize ? 0 : firstSize < secondSize ? -1 : 1;
    }

    bool anyRest() const {
        for (std::size_t i = 0; i + 1 < m_starts.size(); ++i)
            if (rest(i) != 0) return true;
        return false;
    }

private:
    static constexpr std::int64_t kOwnManner = 2147483647;  // see naturalCompare
    static constexpr std::size_t kLongestRun = 255;
    static constexpr std::uint8_t kFirstCharacter = 10;  // above the nine counts of bytes

    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    static constexpr std::array<std::uint8_t, 256> characterRanks() {
        std::array<std::uint8_t, 256> ranks{};
        std::uint8_t rank = kFirstCharacter;
        for (int c = -128; c < 128; ++c) {
            if (c == 0 || (c >= '0' && c <= '9')) continue;
            ranks[static_cast<std::uint8_t>(c)] = rank++;
        }
        return ranks;
    }

    bool append(const char* text) {
        static constexpr std::array<std::uint8_t, 256> kRanks = characterRanks();
        while (*text) {
            if (isDigit(*text)) {
                if (!appendRun(text)) return false;
            } else {
                m_bytes.push_back(kRanks[static_cast<std::uint8_t>(*text++)]);
            }
        }
        return true;
    }

    bool appendRun(const char*& text) {
        constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
        const char* const start = text;
        std::uint64_t value = 0;
        for (; isDigit(*text); ++text) {
            const auto digit = static_cast<unsigned>(*text - '0');
            value = value > (kMost - digit) / 10 ? kMost : value * 10 + digit;
        }
        const auto length = static_cast<std::size_t>(text - start);
        if (value == kOwnManner || length > kLongestRun) return false;
        const int count = (static_cast<int>(std::bit_width(value)) + 7) / 8;
        m_bytes.push_back(static_cast<std::uint8_t>(count + 1));
        for (int i = count - 1; i >= 0; --i) m_bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        m_bytes.push_back(static_cast<std::uint8_t>(kLongestRun - length));
        return true;
    }

    std::size_t commonBytes() const {
        if (m_starts.size() < 2) return 0;
        std::size_t common = m_starts[1];
        for (std::size_t i = 1; i + 1 < m_starts.size() && common != 0; ++i) {
            common = std::min(common, m_starts[i + 1] - m_starts[i]);
            const std::uint8_t* const bytes = m_bytes.data() + m_starts[i];
            common = static_cast<std::size_t>(std::mismatch(bytes, bytes + common, m_bytes.data()).first - bytes);
        }
        return common;
    }

    const std::uint8_t* restOf(std::size_t position) const {
        return m_bytes.data() + m_starts[position] + m_common + 8;
    }
    std::size_t rest(std::size_t position) const {
        const std::size_t size = m_starts[position + 1] - m_starts[position] - m_common;
        return size > 8 ? size - 8 : 0;
    }

    std::vector<std::uint8_t> m_bytes;
    std::vector<std::size_t> m_starts;  // and the end of the last
    std::size_t m_common = 0;
};

// Rows that the beginning leaves equal stand side by side.
void sortRests(std::vector<Keyed>& rows, const TextDigests& digests, bool rising) {
    const auto compare = [&](const Keyed& a, const Keyed& b) {
        const int order = digests.compareRest(a.position, b.position);
        return rising ? order : -order;
    };
    std::vector<Keyed> run;
    for (auto start = rows.begin(); start != rows.end();) {
        auto end = start + 1;
        while (end != rows.end() && end->key == start->key) ++end;
        if (end - start > 1) {
            run.assign(start, end);
            list::stableMergeSort(run, compare);
            std::copy(run.begin(), run.end(), start);
        }
        start = end;
    }
}

// ---- The three roads

std::vector<std::int32_t> mapIndicesOf(const SortKeys& keys, const std::vector<Keyed>& rows) {
    std::vector<std::int32_t> result(rows.size());
    std::transform(rows.begin(), rows.end(), result.begin(),
                   [&keys](const Keyed& row) { return keys.mapIndices()[row.position]; });
    return result;
}

// `values` by position, used up by either road.
std::vector<Keyed> sortedRows(const SortKeys& keys, const SortRule& rule, const std::vector<std::uint64_t>& values) {
    std::vector<Keyed> rows = rowsForTies(keys, rule.order);
    for (Keyed& row : rows) row.key = values[row.position];
    sortByKey(rows);
    return rows;
}

std::vector<std::int32_t> sortedByValues(const SortKeys& keys, const SortRule& rule,
                                         std::vector<std::uint64_t>& values) {
    const std::vector<std::int32_t>& mapIndices = keys.mapIndices();
    if (values.size() >= kFewRows && std::is_sorted(mapIndices.begin(), mapIndices.end())) {
        if (auto sorted = PackedSort(values, mapIndices, rule.order < 0).sorted()) return *std::move(sorted);
    }
    return mapIndicesOf(keys, sortedRows(keys, rule, values));
}

void turnRound(std::vector<std::uint64_t>& values, const SortRule& rule) {
    if (keyDirection(rule) < 0) return;
    for (std::uint64_t& value : values) value = ~value;
}

std::vector<std::int32_t> sortedByNumbers(const SortKeys& keys, const SortRule& rule) {
    std::vector<std::uint64_t> values = numericKeys(keys);
    turnRound(values, rule);
    return sortedByValues(keys, rule, values);
}

std::optional<std::vector<std::int32_t>> sortedByDigests(const SortKeys& keys, const SortRule& rule) {
    TextDigests digests;
    if (!digests.read(keys)) return std::nullopt;
    std::vector<std::uint64_t> values(keys.size());
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = digests.beginning(i);
    turnRound(values, rule);
    if (!digests.anyRest()) return sortedByValues(keys, rule, values);
    std::vector<Keyed> rows = sortedRows(keys, rule, values);
    sortRests(rows, digests, keyDirection(rule) < 0);
    return mapIndicesOf(keys, rows);
}

std::vector<std::int32_t> sortedByComparison(const SortKeys& keys, const SortRule& rule) {
    std::vector<std::uint32_t> rows(keys.size());
    std::iota(rows.begin(), rows.end(), 0u);
    list::stableMergeSort(rows, [&](std::uint32_t a, std::uint32_t b) { return compareRows(keys, rule, a, b); });
    std::vector<std::int32_t> result(rows.size());
    std::transform(rows.begin(), rows.end(), result.begin(),
                   [&keys](std::uint32_t position) { return keys.mapIndices()[position]; });
    return result;
}

int compareKeys(const SortKeys& keys, const SortRule& rule, std::size_t first, std::size_t second) {
    switch (keys.kind()) {
        case SortKeyKind::integer: {
            const std::int64_t a = keys.integers()[first], b = keys.integers()[second];
            return orderOf(a, b, rule.order);
        }
        case SortKeyKind::number: {
            const double a = keys.numbers()[first], b = keys.numbers()[second];
            return orderOf(a, b, rule.order);
        }
        case SortKeyKind::text:
            if (keys.dataType() == kTypeMixed)
                return list::naturalCompare(keys.text(second), keys.text(first)) * rule.order;
            // The interface is older than const; the texts are only read.
            return rule.compareDates ? rule.compareDates(const_cast<char*>(keys.text(first)),
                                                         const_cast<char*>(keys.text(second)), rule.order)
                                     : 0;
        case SortKeyKind::none:
            break;
    }
    return 0;
}

}  // namespace

int compareRows(const SortKeys& keys, const SortRule& rule, std::size_t first, std::size_t second) {
    const int result = compareKeys(keys, rule, first, second);
    if (result != 0) return rule.negated ? -result : result;
    const std::int32_t a = keys.mapIndices()[first], b = keys.mapIndices()[second];
    return a == b ? 0 : a > b ? rule.order : -rule.order;
}

std::vector<std::int32_t> sortedMapIndices(const SortKeys& keys, const SortRule& rule) {
    if (rule.order == 0) return keys.mapIndices();
    if (keys.kind() != SortKeyKind::text) return sortedByNumbers(keys, rule);
    if (keys.dataType() == kTypeMixed) {
        if (auto sorted = sortedByDigests(keys, rule)) return *sorted;
    }
    return sortedByComparison(keys, rule);
}

}  // namespace quor::grid
