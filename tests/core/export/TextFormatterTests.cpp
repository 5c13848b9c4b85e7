#include "src/export/core/TextFormatter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string paragraph(int width, std::string text) {
    std::ostringstream out;
    TF::TextFormatter formatter(out, static_cast<unsigned>(width), "\n");
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
}

TEST(TextFormatter, ColumnSixtyFiveIsIgnored) {
    std::ostringstream out;
    TF::TextFormatter table(out, 40, "\n");
    for (int i = 0; i < 70; ++i) table.addColumn("x", 2);
    table.printRowLine('-');
    EXPECT_EQ(out.str(), std::string(128, '-') + "\n");
}

// Expected rows worked out by hand from the rule: pad = width - length + spaces; sum of steps, last gap takes the rest.
TEST(TextFormatter, Paragraphs) {
    struct Row {
        const char* what;
        int width;
        const char* text;
        const char* out;
    };
    const Row rows[] = {
        {"empty text", 10, "", ""},
        {"only newlines", 10, "\n\n\n", ""},
        {"empty lines disappear", 10, "\na\n\n\nb\n", "a\nb\n"},
        {"exactly the width: not cut", 10, "ab cd efgh", "ab cd efgh\n"},
        {"a last row is not justified", 10, "ab cd", "ab cd\n"},
        {"hard cut", 4, "abcdefghij", "abcd\nefgh\nij\n"},
        {"hard cut behind a soft one", 4, "a bcdefg", "a\nbcde\nfg\n"},
        // "one two" in 10: pad 4, spaces 1, step 4: first gap takes all 4, "two" takes 8 - 0 behind it.
        {"one gap leaves trailing blanks", 10, "one two threefour", "one    two        \nthreefour\n"},
        // "a b c" in 8: pad 5, spaces 2, step 2.5: gaps 2 and 5-2; the last word 7.5-2 = 5 blanks.
        {"two gaps", 8, "a b c defgh", "a  b   c     \ndefgh\n"},
        // "a  b" in 6: pad 4 over 2 spaces, but one gap is left: it takes all 4, and "b" another 2 + 2 behind it.
        {"runs of spaces collapse", 6, "a  b cdefg", "a    b    \ncdefg\n"},
        {"a row that starts with its only space", 4, " abcdef", "\nabcd\nef\n"},
        {"width below 1 cuts nothing", 0, "some words here", "some words here\n"},
        {"a negative width neither", -5, "some words here", "some words here\n"},
    };
    for (const Row& row : rows) {
        std::ostringstream out;
        TF::TextFormatter formatter(out, 10, "\n");
        formatter.setBlockMax(row.width);
        std::string text = row.text;
        formatter.print(text.data());
        EXPECT_EQ(out.str(), row.out) << row.what;
    }
}

TEST(TextFormatter, EveryNewLineCharacterSeparatesRowsAndTheTextIsCutInPlace) {
    std::ostringstream out;
    TF::TextFormatter formatter(out, 80, "\r\n");
    char text[] = "one\rtwo\r\n\r\nthree\nfour";
    formatter.print(text);
    EXPECT_EQ(out.str(), "one\r\ntwo\r\nthree\r\nfour\r\n");
    EXPECT_EQ(text[3], '\0');
    formatter.print(nullptr);
    std::ostringstream bare;
    TF::TextFormatter noBreaks(bare, 80, nullptr);
    char more[] = "one\ntwo";
    noBreaks.print(more);
    EXPECT_EQ(bare.str(), "one\ntwo");
}

TEST(TextFormatter, AGapTakesMoreThanAHundredBlanks) {
    const std::string out = paragraph(150, "a b " + std::string(149, 'x'));
    EXPECT_EQ(out.substr(0, 150), "a" + std::string(148, ' ') + "b");
}

TEST(TextFormatter, ALongParagraphCostsNoMoreThanItsLength) {
    std::string text;
    while (text.size() < 1'000'000) text += "word and another ";
    const std::string out = paragraph(40, text);
    EXPECT_GT(out.size(), text.size());
}

}  // namespace
