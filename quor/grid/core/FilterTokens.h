// FilterTokens: one filter text, compiled once and then asked for every cell.
//
// The text is a list of tokens between "~"; a cell passes when any of them passes. An empty text passes everything, one
// of separators only passes nothing. In exact mode a token is compared with the whole cell. Else its first byte
// decides:
//   *text*   the cell contains text ("*" alone: every cell)         *text   the cell ends with text
//   >number  the cell is a number and greater                       <number the cell is a number and less
//   text     the cell begins with text
// Case is A to Z and nothing else. Numbers are read from cell and token by quor::strtod: what follows the number is
// ignored ("12abc" is 12), a text that begins with none never passes, nor does one that is not a number.
// A filter text ends at its first NUL; a cell is taken at its full length.
//
// Cost of a cell: many beginnings (a list of values picked by the user) are one pass over the cell's bytes, however
// many there are; all the numbers of a text are at most two comparisons; each *text* and *text is looked for in turn.
#pragma once

#include "quor/platform/Base.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace quor::grid {

class FilterTokens {
public:
    // Passes everything.
    FilterTokens() = default;
    FilterTokens(std::string_view text, bool exact);

    // `cell` must be followed by a NUL, as the text of a CString is.
    bool passes(std::string_view cell) const;
    bool passes(const CString& cell) const {
        return passes(std::string_view(cell.GetString(), static_cast<std::size_t>(cell.GetLength())));
    }

private:
    // Folded texts, found by their bytes: an open-addressed table of positions in one buffer.
    class TextSet {
    public:
        void add(std::string_view folded);
        void seal();
        bool isEmpty() const { return m_texts.empty(); }
        // Whether some text of the set is the whole cell.
        bool containsWhole(std::string_view cell) const;
        // Whether some text of the set begins the cell.
        bool containsBeginning(std::string_view cell) const;

    private:
        struct Text {
            std::uint32_t start;
            std::uint32_t length;
        };
        // The first eight bytes of a text as they lie in memory, and which of them are its own.
        struct Word {
            std::uint64_t bytes = 0;
            std::uint64_t mask = 0;
        };
        struct Slot {
            std::uint32_t tag = 0;   // the upper half of the hash
            std::uint32_t text = 0;  // number of the text, from 1; 0: free
        };
        void sealFew();
        void enter(std::uint32_t number);
        bool holds(std::uint64_t hash, std::string_view beginning) const;
        bool beginsWithOneOfFew(std::string_view cell) const;
        std::string_view view(const Text& text) const { return {m_bytes.data() + text.start, text.length}; }

        std::string m_bytes;
        std::vector<Text> m_texts;
        std::vector<Word> m_words;             // of the texts, while these are few
        std::vector<Slot> m_slots;             // a power of two; none while the texts are few
        std::vector<std::uint32_t> m_lengths;  // that occur, rising
    };

    void addToken(std::string_view token);
    void addNumber(std::string_view token);
    bool passesNumber(const char* cell) const;

    bool m_all = true;
    bool m_exact = false;
    bool m_hasNumbers = false;
    bool m_onlyNumbers = false;                                  // no token of another kind
    double m_greater = std::numeric_limits<double>::infinity();  // the least of the ">" numbers; no cell is above
    double m_less = -std::numeric_limits<double>::infinity();    // the greatest of the "<" numbers
    TextSet m_texts;                                             // beginnings, or whole cells in exact mode
    std::vector<std::string> m_contained;
    std::vector<std::string> m_endings;
};

}  // namespace quor::grid
