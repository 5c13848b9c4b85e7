// The texts of a filter are folded once. Cells are folded byte by byte while they are compared, never copied.
//
// Beginnings: one hash runs over the cell, and after each length that some token has, the table is asked for the bytes
// read so far. So the work per cell is its length, not the number of tokens. For a few texts plain comparison is
// faster, eight bytes at a time.
#include "quor/grid/core/FilterTokens.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace quor::grid {

namespace {

constexpr std::size_t kFewTexts = 4;
constexpr std::uint64_t kHashStart = 0xcbf29ce484222325;

constexpr std::array<unsigned char, 256> makeFold() {
    std::array<unsigned char, 256> table{};
    for (unsigned i = 0; i < 256; ++i) table[i] = static_cast<unsigned char>(i >= 'A' && i <= 'Z' ? i + 32 : i);
    return table;
}
constexpr std::array<unsigned char, 256> kFoldTable = makeFold();

char fold(char c) { return static_cast<char>(kFoldTable[static_cast<unsigned char>(c)]); }

std::string folded(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = fold(c);
    return result;
}

// `lower` is folded already; the sizes agree.
bool equalFolded(const char* text, std::string_view lower) {
    for (const char c : lower)
        if (fold(*text++) != c) return false;
    return true;
}

constexpr std::size_t kWordSize = sizeof(std::uint64_t);
constexpr std::uint64_t kEach = 0x0101010101010101;  // times a byte: that byte eight times

// Eight bytes from here on.
std::uint64_t wordAt(const char* text) {
    std::uint64_t word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

// fold of each byte. The sums of a byte's lower seven bits reach its top bit from A, or from behind Z, on; a byte with
// a top bit of its own is no letter.
std::uint64_t foldedWord(std::uint64_t word) {
    const std::uint64_t low = word & 0x7f * kEach;
    const std::uint64_t fromA = low + (0x80 - 'A') * kEach, behindZ = low + (0x80 - 'Z' - 1) * kEach;
    const std::uint64_t capitals = (fromA ^ behindZ) & ~word & 0x80 * kEach;
    return word | capitals >> 2;  // 0x80 becomes the bit that tells a from A
}

// The top bit of each byte that is this one.
std::uint64_t bytesThatAre(std::uint64_t word, char c) {
    const std::uint64_t other = word ^ kEach * static_cast<unsigned char>(c);
    return ~(((other & 0x7f * kEach) + 0x7f * kEach) | other) & 0x80 * kEach;
}

bool endsWith(std::string_view cell, std::string_view lower) {
    return cell.size() >= lower.size() && equalFolded(cell.data() + (cell.size() - lower.size()), lower);
}

// The folded word of a cell from a byte on; zeros, which no text has, behind its end. The cell ends with NUL: seven
// bytes and that fill a word.
std::uint64_t cellWord(std::string_view cell, std::size_t from) {
    std::uint64_t word = 0;
    if (cell.size() + 1 >= from + kWordSize) {
        word = wordAt(cell.data() + from);
    } else {
        std::memcpy(&word, cell.data() + from, cell.size() - from);
    }
    return foldedWord(word);
}

// Eight places at a time, by the first two bytes; of the last place in a word only the first is known.
bool contains(std::string_view cell, std::string_view lower) {
    constexpr std::uint64_t kLastPlace = 0x80ull << 56;
    if (cell.size() < lower.size()) return false;
    const std::size_t last = cell.size() - lower.size();
    for (std::size_t from = 0; from <= last; from += kWordSize) {
        const std::uint64_t word = cellWord(cell, from);
        std::uint64_t places = bytesThatAre(word, lower.front());
        if (lower.size() > 1) places &= bytesThatAre(word, lower[1]) >> 8 | kLastPlace;
        for (; places != 0; places &= places - 1) {
            const std::size_t place = from + static_cast<std::size_t>(std::countr_zero(places)) / 8;
            if (place <= last && equalFolded(cell.data() + place, lower)) return true;
        }
    }
    return false;
}

// The number at the beginning of a text that ends with NUL; not-a-number when there is none. Most cells take the short
// road, with nothing but registers on the way (a tick that writes little memory of its own waits less for the rows that
// it wrote before). Whatever else follows goes to the full reader.
double numberAt(const char* text) {
    const char* const start = text + (*text == '-');
    double value = 0;
    const std::size_t length = quor::readShortDecimal(start, value);
    if (length != 0 && start[length] == '\0') return *text == '-' ? -value : value;
    const char* end = text;
    value = quor::strtod(text, &end);
    return end == text ? std::numeric_limits<double>::quiet_NaN() : value;
}

std::uint64_t hashed(std::uint64_t hash, char c) {
    return (hash ^ static_cast<unsigned char>(c)) * 0x9e3779b97f4a7c15 + (hash >> 29);
}

}  // namespace

// ---- TextSet

void FilterTokens::TextSet::add(std::string_view text) {
    m_texts.push_back({static_cast<std::uint32_t>(m_bytes.size()), static_cast<std::uint32_t>(text.size())});
    for (const char c : text) m_bytes.push_back(fold(c));
}

void FilterTokens::TextSet::sealFew() {
    for (const Text& text : m_texts) {
        const std::size_t inWord = std::min<std::size_t>(text.length, kWordSize);
        Word& word = m_words.emplace_back();
        std::memcpy(&word.bytes, m_bytes.data() + text.start, inWord);
        std::memset(&word.mask, 0xff, inWord);
    }
}

void FilterTokens::TextSet::seal() {
    if (m_texts.size() <= kFewTexts) return sealFew();
    std::size_t size = 16;
    while (size < m_texts.size() * 2) size *= 2;
    m_slots.assign(size, {});
    std::vector<char> lengthOccurs;
    for (std::uint32_t i = 0; i < m_texts.size(); ++i) {
        enter(i);
        const std::size_t length = m_texts[i].length;
        if (lengthOccurs.size() <= length) lengthOccurs.resize(length + 1);
        lengthOccurs[length] = 1;
    }
    for (std::uint32_t length = 0; length < lengthOccurs.size(); ++length)
        if (lengthOccurs[length]) m_lengths.push_back(length);
}

// A text that stands there already is not entered twice.
void FilterTokens::TextSet::enter(std::uint32_t number) {
    const std::string_view text = view(m_texts[number]);
    std::uint64_t hash = kHashStart;
    for (const char c : text) hash = hashed(hash, c);
    const std::size_t mask = m_slots.size() - 1;
    const auto tag = static_cast<std::uint32_t>(hash >> 32);
    for (std::size_t at = (hash ^ hash >> 32) & mask;; at = (at + 1) & mask) {
        Slot& slot = m_slots[at];
        if (slot.text == 0) {
            slot = {tag, number + 1};
            return;
        }
        if (slot.tag == tag && view(m_texts[slot.text - 1]) == text) return;
    }
}

bool FilterTokens::TextSet::holds(std::uint64_t hash, std::string_view beginning) const {
    const std::size_t mask = m_slots.size() - 1;
    const auto tag = static_cast<std::uint32_t>(hash >> 32);
    for (std::size_t at = (hash ^ hash >> 32) & mask; m_slots[at].text != 0; at = (at + 1) & mask) {
        if (m_slots[at].tag != tag) continue;
        const std::string_view text = view(m_texts[m_slots[at].text - 1]);
        if (text.size() == beginning.size() && equalFolded(beginning.data(), text)) return true;
    }
    return false;
}

bool FilterTokens::TextSet::containsWhole(std::string_view cell) const {
    if (m_slots.empty()) {
        for (const Text& text : m_texts)
            if (text.length == cell.size() && equalFolded(cell.data(), view(text))) return true;
        return false;
    }
    if (!std::binary_search(m_lengths.begin(), m_lengths.end(), cell.size())) return false;
    std::uint64_t hash = kHashStart;
    for (const char c : cell) hash = hashed(hash, fold(c));
    return holds(hash, cell);
}

// A text that is longer than the cell has a byte where the word has a zero.
bool FilterTokens::TextSet::beginsWithOneOfFew(std::string_view cell) const {
    if (m_words.empty()) return false;
    const std::uint64_t first = cellWord(cell, 0);
    for (std::size_t i = 0; i < m_words.size(); ++i) {
        const Text& text = m_texts[i];
        if (((first ^ m_words[i].bytes) & m_words[i].mask) != 0 || text.length > cell.size()) continue;
        if (text.length <= kWordSize || equalFolded(cell.data() + kWordSize, view(text).substr(kWordSize))) return true;
    }
    return false;
}

bool FilterTokens::TextSet::containsBeginning(std::string_view cell) const {
    if (m_slots.empty()) return beginsWithOneOfFew(cell);
    std::uint64_t hash = kHashStart;
    std::size_t read = 0;
    for (const std::uint32_t length : m_lengths) {
        if (length > cell.size()) return false;
        while (read < length) hash = hashed(hash, fold(cell[read++]));
        if (holds(hash, cell.substr(0, length))) return true;
    }
    return false;
}

// ---- FilterTokens

FilterTokens::FilterTokens(std::string_view text, bool exact) : m_exact(exact) {
    text = text.substr(0, text.find('\0'));
    m_all = text.empty();
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('~'), text.size());
        if (length != 0) addToken(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    m_texts.seal();
    m_onlyNumbers = !m_all && !m_exact && m_texts.isEmpty() && m_contained.empty() && m_endings.empty();
}

void FilterTokens::addToken(std::string_view token) {
    if (m_exact) return m_texts.add(token);
    switch (token.front()) {
        case '*': {
            const bool anywhere = token.back() == '*';  // of "*" alone it is the same byte
            std::string_view text = token.substr(1);
            if (anywhere && !text.empty()) text.remove_suffix(1);
            if (text.empty()) {
                m_all = true;
            } else {
                (anywhere ? m_contained : m_endings).push_back(folded(text));
            }
            return;
        }
        case '>':
        case '<':
            return addNumber(token);
        default:
            return m_texts.add(token);
    }
}

// Any one token that passes is enough: of all ">" the least number decides, of all "<" the greatest.
void FilterTokens::addNumber(std::string_view token) {
    const double number = numberAt(std::string(token.substr(1)).c_str());
    if (std::isnan(number)) return;
    m_hasNumbers = true;
    if (token.front() == '>') {
        m_greater = std::min(m_greater, number);
    } else {
        m_less = std::max(m_less, number);
    }
}

// Comparisons with not-a-number are false. No jump: what passes under a live filter cannot be foretold, and a wrong
// guess costs a tick more than both comparisons.
bool FilterTokens::passesNumber(const char* cell) const {
    const double value = numberAt(cell);
    return (value > m_greater) | (value < m_less);
}

bool FilterTokens::passes(std::string_view cell) const {
    if (m_onlyNumbers) return passesNumber(cell.data());
    if (m_all) return true;
    if (m_exact) return m_texts.containsWhole(cell);
    if (m_texts.containsBeginning(cell)) return true;
    if (m_hasNumbers && passesNumber(cell.data())) return true;
    for (const std::string& text : m_contained)
        if (contains(cell, text)) return true;
    for (const std::string& text : m_endings)
        if (endsWith(cell, text)) return true;
    return false;
}

}  // namespace quor::grid
