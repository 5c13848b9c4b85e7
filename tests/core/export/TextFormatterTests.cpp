#include "quor/export/core/TextFormatter.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

std::string paragraph(int width, std::string text) {
    std::ostringstream out;
    TF::TextFormatter formatter(out, 10, "\n");
    formatter.setBlockMax(width);
    formatter.print(text.data());
    return out.str();
}

TEST(TextFormatter, DealSlipTable) {
    std::ostringstream out;
    TF::TextFormatter slip(out, 40, "\r\n");
    slip.createTable();
    slip.addColumn("Symbol", 10);
    slip.addColumn("Side", 6);
    slip.addColumn("Qty", 7);
    slip.addColumn("Price", 10);
    slip.setColumnAlignment(2, TF::alignRight);
    slip.setColumnAlignment(3, static_cast<TF::alignET>(7));  // any value but 0 is right
    slip.setColumnAlignment(4, TF::alignRight);               // no such column
    slip.printHeader(true);
    slip.printRow(4, "INFY", "Buy", "100", "1450.25");
    slip.printRow(4, "ALONGSYMBOLNAME", "Sell", "25", "3.5");  // pushes on, up to the blanks of later columns
    slip.printRow(2, "TCS", nullptr);
    slip.printRow(6, "A", "B", "1", "2", "ignored", "too");
    slip.printRowLine('=');
    slip.newLines(2);
    EXPECT_EQ(out.str(),
              "Symbol    Side      Qty     Price\r\n"
              "---------------------------------\r\n"
              "INFY      Buy       100   1450.25\r\n"
              "ALONGSYMBOLNAMESell  25       3.5\r\n"
              "TCS       \r\n"
              "A         B           1         2\r\n"
              "=================================\r\n"
              "\r\n\r\n");
}

TEST(TextFormatter, EveryColumnTextStartsAtItsTargetOrWhereTheLineStands) {
    std::ostringstream out;
    TF::TextFormatter table(out, 40, "|");
    table.addColumn("A", 10);
    table.addColumn("B", 5);
    table.setColumnAlignment(1, TF::alignRight);
    table.printRow(2, "", "ab");                  // position 3 of its span
    table.printRow(2, "0123456789", "abcdefgh");  // wider than the column: its target is already past
    table.printRow(2, "0123456789ABCDE", "ab");
    table.printRowLine('-');
    EXPECT_EQ(out.str(), "             ab|0123456789abcdefgh|0123456789ABCDEab|---------------|");
    out.str("");
    table.createTable();
    table.printHeader(true);
    EXPECT_EQ(out.str(), "||");
    out.str("");
    for (int i = 0; i < 70; ++i) table.addColumn("x", 2);  // column 65 is ignored
    table.printRowLine('-');
    EXPECT_EQ(out.str(), std::string(128, '-') + "|");
}

// Expected rows worked out by hand from the rule: pad = width - length + spaces; sum of steps, last gap takes the rest.
TEST(TextFormatter, Paragraphs) {
    const struct {
        int width;
        const char *text, *out;
    } rows[] = {
        {10, "\na\n\n\nb\n", "a\nb\n"},      // empty lines disappear
        {10, "ab cd efgh", "ab cd efgh\n"},  // exactly the width: not cut
        {4, "a bcdefg", "a\nbcde\nfg\n"},
        // "one two" in 10: pad 4, spaces 1, step 4: first gap takes all 4, "two" takes 8 - 0 behind it.
        {10, "one two threefour", "one    two        \nthreefour\n"},
        // "a b c" in 8: pad 5, spaces 2, step 2.5: gaps 2 and 5-2; the last word 7.5-2 = 5 blanks.
        {8, "a b c defgh", "a  b   c     \ndefgh\n"},
        // "a  b" in 6: pad 4 over 2 spaces, but one gap is left: it takes all 4, and "b" another 2 + 2 behind it.
        {6, "a  b cdefg", "a    b    \ncdefg\n"},
        {4, " abcdef", "\nabcd\nef\n"},
        {0, "some words here", "some words here\n"},  // a width below 1 cuts nothing
    };
    for (const auto& row : rows) EXPECT_EQ(paragraph(row.width, row.text), row.out);
    const std::string wide = paragraph(150, "a b " + std::string(149, 'x'));
    EXPECT_EQ(wide.substr(0, 150), "a" + std::string(148, ' ') + "b") << "a gap of more than a hundred blanks";
    std::ostringstream out;
    TF::TextFormatter formatter(out, 80, "\r\n"), noBreaks(out, 80, nullptr);
    char text[] = "one\rtwo\r\n\r\nthree\nfour", more[] = "five\nsix";
    formatter.print(text);
    EXPECT_EQ(text[3], '\0') << "the text is cut in place";
    formatter.print(nullptr);
    noBreaks.print(more);
    EXPECT_EQ(out.str(), "one\r\ntwo\r\nthree\r\nfour\r\nfive\nsix");
}

}  // namespace
