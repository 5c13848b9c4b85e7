// Aligned plain-text tables and justified paragraphs, written to an output stream: the deal slip and like reports.
// Knows nothing of windows. The stream is the caller's and must outlive the formatter.
#pragma once

#include "quor/platform/Base.h"

#include <array>
#include <ostream>
#include <string>
#include <string_view>

namespace TF {

// Where a column's text stands in its span: left for 0, right for any other value.
enum alignET : int { alignLeft = 0, alignRight = 1 };

// One structure for two uses: a column of a table, or a row of a paragraph.
struct elementT {
    int value = 0;              // column: the position at which it ends; row: 1 if it was cut from a longer one, else 0
    alignET align = alignLeft;  // column only
    std::string text;           // the column's title, or the row's text
    elementT* next = nullptr;   // the row behind this one; not owned
};

class QUOR_CONTROLS_API TextFormatter {
public:
    // Characters are counted as bytes. `blockMax` is the width of a paragraph; `newLine` (copied, null is empty) ends
    // every line written and, character by character, separates the rows of a paragraph's text.
    TextFormatter(std::ostream& stream, unsigned blockMax, const char* newLine);

    // Forgets the columns.
    void createTable();

    // Appends a column that is `width` wide. A table has at most 64: what comes after is ignored. A null title is
    // empty.
    void addColumn(const char* title, int width);

    // Columns start at 0; one that does not exist is ignored. New columns are left-aligned.
    void setColumnAlignment(int column, alignET align);

    // The width of the paragraphs printed from now on. Below 1, nothing is cut.
    void setBlockMax(int value);

    // Writes the titles as one line and, if asked, a line of dashes below.
    void printHeader(bool underline);

    // Writes one line from `count` texts (`const char*`, null is empty). Texts past the last column are ignored.
    void printRow(int count, ...);

    // Writes one text of the line begun by printHeader or printRow: blanks up to its place, then the text. Nothing is
    // ever cut: a text wider than its column eats the blanks of the columns behind it, and no separator is put between.
    void printColumn(int column, const char* text);

    // Writes the character as often as the table is wide, and ends the line.
    void printRowLine(char character);

    void newLine();
    void newLines(int count);

    // Writes a paragraph: each row of the text is wrapped at the block width, and the rows that were wrapped are
    // justified. The last gap's arithmetic covers the last word too, which may leave blanks at the end of a row: they
    // are part of the output. Empty rows disappear. Cuts `text` up in place; a null text writes nothing.
    void print(char* text);

private:
    static constexpr int kMaxColumns = 64;

    int columnStart(int column) const { return column == 0 ? 0 : m_columns[static_cast<size_t>(column) - 1].value; }
    void writeBlanks(int count);

    std::string m_newLine;
    int m_outputColumn = 0;  // where the line being written stands
    int m_blockMax;
    std::ostream& m_stream;
    std::array<elementT, kMaxColumns> m_columns;
    int m_columnCount = 0;
};

}  // namespace TF
