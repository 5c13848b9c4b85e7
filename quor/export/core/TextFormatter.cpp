// What is printed is known blank by blank, odd gaps included. So a paragraph is made in the three steps in which it
// always was, rounding and all: split into rows, cut to the block width, justify what was cut.
#include "quor/export/core/TextFormatter.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <deque>
#include <limits>
#include <vector>

namespace TF {

namespace {

// Owns the rows; a deque, since the chain needs addresses that stay. The chain is in order, with no gaps.
class RowChain {
public:
    elementT* first() { return m_rows.empty() ? nullptr : &m_rows.front(); }

    elementT& append(std::string_view text) {
        elementT& row = m_rows.emplace_back();
        row.text = text;
        if (m_rows.size() > 1) m_rows[m_rows.size() - 2].next = &row;
        return row;
    }

private:
    std::deque<elementT> m_rows;
};

// Appends one row, or the several that a row longer than `blockMax` is cut into. A cut is made at the last space below
// the limit, which is dropped, or, in a word that is too long, at the limit.
void appendRowUnderBlockMax(RowChain& rows, std::string_view rest, int blockMax) {
    if (blockMax >= 1) {
        const size_t limit = static_cast<size_t>(blockMax);
        while (rest.size() > limit) {
            const size_t space = rest.rfind(' ', limit - 1);
            const bool atSpace = space != std::string_view::npos;
            rows.append(rest.substr(0, atSpace ? space : limit)).value = 1;
            rest.remove_prefix(atSpace ? space + 1 : limit);
        }
    }
    rows.append(rest);
}

std::vector<std::string> splitAtSpaces(const std::string& text) {
    std::vector<std::string> words;
    for (size_t at = text.find_first_not_of(' '); at != std::string::npos;) {
        const size_t end = std::min(text.find(' ', at), text.size());
        words.push_back(text.substr(at, end - at));
        at = text.find_first_not_of(' ', end);
    }
    return words;
}

// Spreads the blanks of a row so that it fills the block. The running sum is a float and every gap is what the sum
// says by now less what was given, so the wider gaps are spread over the row. The gap before the last word takes what
// remains but is not booked as given; the last word takes its own share behind it. Do not tidy: this is the output.
void justify(elementT& row, int blockMax) {
    const int spaces = static_cast<int>(std::count(row.text.begin(), row.text.end(), ' '));
    const int pad = blockMax - static_cast<int>(row.text.size()) + spaces;
    if (pad == 0 || spaces == 0) return;
    const float step = static_cast<float>(pad) / static_cast<float>(spaces);
    const std::vector<std::string> words = splitAtSpaces(row.text);
    row.text.clear();
    float accumulated = 0;
    int given = 0;
    for (size_t i = 0; i < words.size(); ++i) {
        row.text += words[i];
        accumulated += step;
        int count = static_cast<int>(accumulated - static_cast<float>(given));
        if (i + 2 == words.size())
            count = pad - given;
        else
            given += count;
        row.text.append(static_cast<size_t>(std::max(count, 0)), ' ');
    }
}

}  // namespace

TextFormatter::TextFormatter(std::ostream& stream, unsigned blockMax, const char* newLine)
    : m_newLine(newLine ? newLine : ""),
      m_blockMax(static_cast<int>(std::min<unsigned>(blockMax, std::numeric_limits<int>::max()))),
      m_stream(stream) {}

void TextFormatter::createTable() { m_columnCount = 0; }

void TextFormatter::addColumn(const char* title, int width) {
    if (m_columnCount == kMaxColumns) return;
    elementT& column = m_columns[static_cast<size_t>(m_columnCount)];
    column.value = columnStart(m_columnCount) + width;
    column.align = alignLeft;
    column.text = title ? title : "";
    ++m_columnCount;
}

void TextFormatter::setColumnAlignment(int column, alignET align) {
    if (column >= 0 && column < m_columnCount) m_columns[static_cast<size_t>(column)].align = align;
}

void TextFormatter::setBlockMax(int value) { m_blockMax = value; }

void TextFormatter::printHeader(bool underline) {
    m_outputColumn = 0;
    for (int column = 0; column < m_columnCount; ++column)
        printColumn(column, m_columns[static_cast<size_t>(column)].text.c_str());
    newLine();
    if (underline) printRowLine('-');
}

void TextFormatter::printRow(int count, ...) {
    m_outputColumn = 0;
    va_list texts;
    va_start(texts, count);
    for (int column = 0; column < count; ++column) printColumn(column, va_arg(texts, const char*));
    va_end(texts);
    newLine();
}

void TextFormatter::printColumn(int column, const char* text) {
    if (column < 0 || column >= m_columnCount) return;
    const std::string_view shown = text ? std::string_view(text) : std::string_view();
    const elementT& place = m_columns[static_cast<size_t>(column)];
    const int length = static_cast<int>(shown.size());
    const int target = place.align == alignLeft ? columnStart(column) : place.value - length;
    if (target > m_outputColumn) writeBlanks(target - m_outputColumn);
    m_stream << shown;
    m_outputColumn = std::max(m_outputColumn, target) + length;
}

void TextFormatter::printRowLine(char character) {
    for (int i = columnStart(m_columnCount); i > 0; --i) m_stream.put(character);
    newLine();
}

void TextFormatter::newLine() { newLines(1); }

void TextFormatter::newLines(int count) {
    for (int i = 0; i < count; ++i) m_stream << m_newLine;
}

void TextFormatter::writeBlanks(int count) {
    for (int i = 0; i < count; ++i) m_stream.put(' ');
}

void TextFormatter::print(char* text) {
    if (!text) return;
    RowChain rows;
    // Rows end where a delimiter is overwritten, as with the C library's tokeniser, but without its hidden state.
    for (char* at = text + std::strspn(text, m_newLine.c_str()); *at;) {
        char* end = at + std::strcspn(at, m_newLine.c_str());
        char* next = *end ? end + 1 : end;
        *end = '\0';
        appendRowUnderBlockMax(rows, at, m_blockMax);
        at = next + std::strspn(next, m_newLine.c_str());
    }
    for (elementT* row = rows.first(); row; row = row->next) {
        if (row->value == 1) justify(*row, m_blockMax);
        m_stream << row->text << m_newLine;
    }
}

}  // namespace TF
