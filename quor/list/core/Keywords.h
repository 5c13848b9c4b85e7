// Keywords of a list's appearance: their order, and the question which of them a text holds. All comparison is of texts
// folded to capitals, A to Z and no other letter.
#pragma once

#include "quor/platform/Base.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quor::list {

// A keyword as records keep it.
inline CString foldedKeyword(CString keyword) { return keyword.MakeUpper(); }

// Where a keyword of this length goes into a table that stands in this order of lengths: before the first that is not
// longer. So tables have their longest keywords first, and "ABC" is found before "AB".
int keywordPlace(const std::vector<int>& lengths, int length);

// A folded copy of a keyword table that somebody else owns and may change at any time. To follow it costs a comparison
// a keyword; to look into a text costs little where none of them occurs.
class Keywords {
public:
    // Takes over what has changed since the last call. Null stands for an empty table. The table is not kept.
    void follow(const CStringArray* table);

    // The first keyword, in the order of the table, that occurs in the text; -1 none. The empty keyword occurs in every
    // text.
    int firstIn(const CString& text);
    // The first keyword that equals the text; -1 none.
    int indexOf(const CString& text);

private:
    std::string_view fold(const CString& text);

    // The copies hold their buffers: one that is still the table's has the same text.
    std::vector<CString> m_sources;
    std::vector<std::string> m_folded;
    // By keyword: a bit for each pair of neighbouring letters. A text that lacks one cannot hold the keyword.
    std::vector<std::uint64_t> m_pairs;
    std::string m_text;  // scratch
};

}  // namespace quor::list
