#include "quor/expression/core/ExpressionEvaluator.h"
#include "tests/core/expression/ExpressionGenerator.h"
#include "tests/support/Rounds.h"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double kUntouched = -77;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kWholeMin = -2147483648.0;  // what does not fit 32 bits

void expectBothRoads(const char* text, int code, double expected) {
    double value = kUntouched;
    EXPECT_EQ(EvaluateExpression(text, &value), code) << text;
    EXPECT_TRUE(value == expected || (std::isnan(value) && std::isnan(expected))) << text << " is " << value;
    EXPECT_EQ(expression_test::difference(text), "");
}

TEST(Expression, GivesPostfixCodeAndValueOnBothRoads) {
    const struct {
        const char *text, *postfix;
        int code;
        double value = kUntouched;  // not written
    } rows[] = {{"1 2", " 1 2", 4, 2},          {"(-3)", " 0 3 -", 0, -3},       {"2*-3", " 2 * 0 3 -", 1},
                {" \t-3", " (-3)", 0, -3},      {"1== -3", " 1 3 - ==", 1},      {"-3+4", " (-3) 4 +", 0, 1},
                {"2<<(-3)", " 2 3 - <<", 1},    {"(1)(-3)", " 1 3 -", 0, -2},    {"1+2*3", " 1 2 3 * +", 0, 7},
                {"2* -3", " 2 (-3) *", 0, -6},  {"2-3-4", " 2 3 - 4 -", 0, -5},  {"2*3^2", " 2 3 * 2 ^", 0, 36},
                {"1&& -3", " 1 (-3) &&", 0, 1}, {"(1+2)*3", " 1 2 + 3 *", 0, 9}, {"1>> -1", " 1 (-1) >>", 0, 0}};
    for (const auto& row : rows) {
        CString postfix;
        ConvertToPostfix(row.text, postfix);
        EXPECT_STREQ(postfix, row.postfix) << row.text;
        expectBothRoads(row.text, row.code, row.value);
    }
}

TEST(Expression, Values) {
    const std::pair<const char*, double> rows[] = {
        {"6&3", 2},      {"6|3", 7},        {"1<<3", 8},       {"2>=2", 1},        {"2<=1", 0},        {"5%3*2", 5},
        {"5*3%2", 1},    {"1<2<3", 1},      {"16>>2", 4},      {"1|2+4", 7},       {"2- -3", 5},       {".5+.5", 1},
        {"0x10", 16},    {"nan", NAN},      {"0/0", NAN},      {"1<<32", 1},       {"inf&1", 0},       {"2^3^2", 64},
        {"7\\2*2", 6},   {"1+2==3", 1},     {"1+1<<1", 3},     {"2-(-3)", 5},      {"nan&&1", 1},      {"1==1&&0", 0},
        {"2&&0||1", 1},  {"7%(0-3)", 1},    {"7.9%3.9", 1},    {"1e5", 100000},    {"0x1.8p3", 12},    {"(0-7)%3", -1},
        {"nan==nan", 0}, {"(0-16)>>2", -4}, {"1>>(0+0-1)", 0}, {"inf", kInfinity}, {"10/0", kInfinity}};
    const std::pair<const char*, double> wide[] = {{"-inf", -kInfinity},         {"1e400", kInfinity},
                                                   {"10\\0", kWholeMin},         {"1<<31", kWholeMin},
                                                   {"nan\\1", kWholeMin},        {"inf|1", -2147483647},
                                                   {"9999999999%(0-1)", 0},      {"9007199254740993", 0x1p53},
                                                   {"9999999999\\1", kWholeMin}, {"2147483647.9\\1", 2147483647}};
    for (const auto& [text, value] : rows) expectBothRoads(text, EXPR_OK, value);
    for (const auto& [text, value] : wide) expectBothRoads(text, EXPR_OK, value);
}

// Parentheses come before what the second stage finds; "= -3" is no operator, "& -3" is: only one of them lets a sign
// stand.
TEST(Expression, Failures) {
    const std::pair<const char*, int> rows[] = {{"(2)^-1", 1}, {"-(3)", 3}, {"*3", 3},    {"2<<-3", 1}, {"1+2)", 1},
                                                {"1+", 1},     {"1e-5", 3}, {"1=1", 3},   {"1!=2", 3},  {"1<>2", 1},
                                                {"10%0", 3},   {"abc)", 1}, {"(10%0", 1}, {"\2471", 3}, {".", 3},
                                                {"infx", 3},   {"", 1},     {"()", 1},    {"abc", 3},   {"1.2.3", 3}};
    for (const auto& [text, code] : rows) expectBothRoads(text, code, kUntouched);
}

TEST(ExpressionParts, TextsEndAtTheFirstNulAndMayBeTheirOwnOutput) {
    double value = 0;
    EXPECT_EQ(EvaluateExpression(CString("1+2\0+)", 6), &value), EXPR_OK);
    EXPECT_EQ(value, 3);
    CString text("4*5");
    EXPECT_EQ(ConvertToPostfix(text, text), EXPR_OK);
    EXPECT_STREQ(text.GetString(), " 4 5 *");
}

// Generated texts, both roads. QUOR_EXPRESSION_CASES=10000000 makes the search a long one; QUOR_SEED repeats one.
TEST(ExpressionRoads, AgreeOnGeneratedTexts) {
    const long count = test::rounds("QUOR_EXPRESSION_CASES", 600'000);
    const unsigned seed = test::anySeed();
    RecordProperty("seed", std::to_string(seed));
    expression_test::Generator generator(seed);
    long succeeded = 0;
    for (long i = 0; i < count; ++i) {
        const std::string text = generator.next();
        ASSERT_EQ(expression_test::difference(text), "") << "QUOR_SEED=" << seed;
        double value = 0;
        succeeded += EvaluateExpression(text.c_str(), &value) == EXPR_OK;
    }
    EXPECT_GT(succeeded, count / 20) << "the generator makes too little that evaluates, QUOR_SEED=" << seed;
}

std::string repeated(const char* unit, std::size_t bytes) {
    std::string text;
    while (text.size() < bytes) text += unit;
    return text;
}

// Ten times the text may cost ten times the time, not a hundred. A busy machine adds time to any run, so each length
// counts with its shortest, and a long text that took too long is tried again.
TEST(ExpressionRoads, CostGrowsWithTheLength) {
    // The shortest of `runs`; no more of them once one keeps below `enough`.
    const auto seconds = [](const std::string& text, int runs, double enough) {
        double best = 3600;
        for (; runs > 0 && best >= enough; --runs) {
            const auto start = std::chrono::steady_clock::now();
            EXPECT_EQ(expression_test::difference(text).substr(0, 100), "");
            best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        }
        return best;
    };
    for (const char* unit : {"1+", "<", "- ", "(1-", "      +"}) {
        const double brief = std::max(seconds(repeated(unit, 50'000), 5, 0), 1e-3);
        EXPECT_LT(seconds(repeated(unit, 500'000), 20, 40 * brief), 40 * brief) << unit;
    }
}

}  // namespace
