#include "quor/expression/core/CustomColumnText.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

using namespace quor::expression;

namespace {

using Outcome = CustomCellOutcome;

// A row whose built-in columns hold texts and whose user columns hold id forms.
class Row : public CustomCellSource {
public:
    bool cellText(int columnIndex, CString& text) override {
        if (const auto formula = formulas.find(columnIndex); formula != formulas.end()) {
            inner.push_back(cells.evaluate(family, {row, columnIndex}, formula->second.c_str(), *this, text));
            return true;
        }
        const auto found = texts.find(columnIndex);
        if (found == texts.end()) return false;
        text = found->second.c_str();
        return true;
    }

    Outcome show(const std::string& formula, CString& text) {
        return cells.evaluate(family, {row, 100}, formula.c_str(), *this, text);
    }

    std::uintptr_t row = 1;
    ListFamily family = ListFamily::grid;
    std::map<int, std::string> texts = {{1, "123.45"}, {2, "abc"}, {3, "-3"},      {4, "4"},
                                        {5, ""},       {6, "0"},   {7, "1,234.5"}, {8, "0x10"}};
    std::map<int, std::string> formulas;
    std::vector<Outcome> inner;
    CustomColumnText cells;
};

TEST(CustomColumnText, FormulasShowWhatCellsDependOn) {
    const struct {
        const char *formula, *shown;
        Outcome outcome = Outcome::done;
    } cases[] = {
        {" \"1\" * 2", "246.90"},
        {" \"2\" + 1", "1.00"},                       // no number: zero
        {" \"5\" + 1", "1.00"},                       // empty: zero
        {" \"8\" + 1", "1.00"},                       // a cell's number is decimal
        {" \"3\" * \"4\"", "-12.00"},                 // a sign behind a blank
        {" \"4\"*\"3\"", "0.00"},                     // "4*-3" has no operator
        {" \"7\" + 1", "0.00"},                       // enters whole and fails there
        {" \"4\" / \"6\"", "Divided by ZERO error"},  //
        {" 10/2-2", "Divided by ZERO error"},         // everything right of the first "/"
        {" (10/2)", "Divided by ZERO error"},         // unbalanced there: the number stays 0
        {" 2/1+10/0", "inf"},
        {" 8 / \"4\"", "2.00"},
        {" \"4\" / x", "4"},         // the right side is no number: the last reference stays
        {" \"4\" % \"6\"", "0.00"},  // a bad operand is no failure
        {" \"4\" \"1\"", "123.45", Outcome::invalid},
        {" \"4\" + \"9\"", "4", Outcome::noValue},
        {" 0 - 1 / 8", "-0.12"},                    // an exact half goes to the even digit
        {"\"4\" * 2", "before", Outcome::noValue},  // no leading text: the roles are swapped, and column " * 2" is 0
        {" \"\"\"4\" * 2", "8.00"},                 // runs of quotes are one
    };
    for (const auto& expected : cases) {
        Row row;
        CString text = "before";
        EXPECT_EQ(row.show(expected.formula, text), expected.outcome) << expected.formula;
        EXPECT_STREQ(text, expected.shown) << expected.formula;
    }
}

TEST(CustomColumnText, MultiLineListsKeepAnEmptyCellEmpty) {
    Row row;
    row.family = ListFamily::multiLine;
    for (const auto& [formula, outcome] :
         {std::pair(" \"4\" + \"5\"", Outcome::emptyValue), {" \"4\" / x", Outcome::done}}) {  // references do not show
        CString text = "before";
        EXPECT_EQ(row.show(formula, text), outcome);
        EXPECT_STREQ(text, "");
    }
}

TEST(CustomColumnText, InnerColumnsEnterWithTwoDecimalsAndThoseThatContainEachOtherEnd) {
    Row row;
    row.formulas = {{50, " \"4\" / 3"}, {51, " \"50\" * 3 + \"50\""}};
    CString text;
    EXPECT_EQ(row.show(" \"51\" * 100 + \"4\"", text), Outcome::done);
    EXPECT_STREQ(text, "536.00");  // 1.33 * 3 + 1.33 = 5.32
    row.formulas = {{50, " \"51\" + 1"}, {51, " \"50\" + \"50\" + 1"}, {100, " \"100\""}};
    row.inner.clear();
    text = "before";
    EXPECT_EQ(row.show(" \"100\" + 1", text), Outcome::noValue);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(row.show(" \"50\" + \"100\"", text), Outcome::noValue);
    EXPECT_EQ(row.inner, (std::vector<Outcome>{Outcome::noValue, Outcome::done}));
}

}  // namespace
