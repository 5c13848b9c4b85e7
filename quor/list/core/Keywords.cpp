#include "quor/list/core/Keywords.h"

#include <algorithm>
#include <string_view>

namespace quor::list {

namespace {

char folded(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string_view viewOf(const CString& text) { return {text.GetString(), static_cast<std::size_t>(text.GetLength())}; }

// Fibonacci hashing, see Knuth, The Art of Computer Programming, volume 3, 6.4: the top six bits of a product.
std::uint64_t pairBit(char first, char second) {
    const std::uint32_t pair = static_cast<unsigned char>(first) << 8 | static_cast<unsigned char>(second);
    return std::uint64_t{1} << (pair * 0x9E3779B1u >> 26);
}

std::uint64_t pairsOf(std::string_view text) {
    std::uint64_t pairs = 0;
    for (std::size_t i = 1; i < text.size(); ++i) pairs |= pairBit(text[i - 1], text[i]);
    return pairs;
}

}  // namespace

int keywordPlace(const std::vector<int>& lengths, int length) {
    const auto place = std::find_if(lengths.begin(), lengths.end(), [length](int other) { return other <= length; });
    return static_cast<int>(place - lengths.begin());
}

std::string_view Keywords::fold(const CString& text) {
    const std::string_view view = viewOf(text);
    m_text.resize(view.size());
    std::transform(view.begin(), view.end(), m_text.begin(), folded);
    return m_text;
}

void Keywords::follow(const CStringArray* table) {
    const auto count = table ? static_cast<std::size_t>(table->GetSize()) : 0;
    m_sources.resize(count);
    m_folded.resize(count);
    m_pairs.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        const CString& keyword = table->GetAt(static_cast<INT_PTR>(i));
        if (keyword.GetString() == m_sources[i].GetString()) continue;
        m_sources[i] = keyword;
        m_folded[i] = fold(keyword);
        m_pairs[i] = pairsOf(m_folded[i]);
    }
}

int Keywords::firstIn(const CString& text) {
    if (m_folded.empty()) return -1;
    const std::string_view view = fold(text);
    const std::uint64_t pairs = pairsOf(view);
    for (std::size_t i = 0; i < m_pairs.size(); ++i)
        if ((m_pairs[i] & ~pairs) == 0 && view.find(m_folded[i]) != view.npos) return static_cast<int>(i);
    return -1;
}

int Keywords::indexOf(const CString& text) {
    const std::string_view view = fold(text);
    const auto found = std::find(m_folded.begin(), m_folded.end(), view);
    return found == m_folded.end() ? -1 : static_cast<int>(found - m_folded.begin());
}

}  // namespace quor::list
