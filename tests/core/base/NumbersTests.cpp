#include "quor/platform/Base.h"
#include "tests/support/Rounds.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

::testing::AssertionResult sameBits(double left, double right) {
    if (std::isnan(left) && std::isnan(right)) return ::testing::AssertionSuccess();
    if (std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << left << " is not " << right;
}

TEST(Numbers, IntegersSaturate) {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max(), least = -most - 1;
    constexpr std::int64_t mostWide = std::numeric_limits<std::int64_t>::max(), leastWide = -mostWide - 1;
    const struct {
        const char* text;
        std::int32_t narrow;
        std::int64_t wide;
    } cases[] = {{nullptr, 0, 0}, {" \t\n\v\f\r-17x", -17, -17}, {"+5", 5, 5}, {"- 5", 0, 0}, {"\2405", 0, 0}},
      limits[] = {{"2147483648", most, 2147483648},           {"-2147483648", least, -2147483648},
                  {"-2147483649", least, -2147483649},        {"9223372036854775807", most, mostWide},
                  {"9223372036854775808", most, mostWide},    {"-9223372036854775808", least, leastWide},
                  {"-9223372036854775809", least, leastWide}, {"18446744073709551617", most, mostWide}};
    const auto check = [](const auto& one) {
        EXPECT_EQ(quor::atoi(one.text), one.narrow) << one.text;
        EXPECT_EQ(quor::atol(one.text), one.narrow) << one.text;
        EXPECT_EQ(quor::atoi64(one.text), one.wide) << one.text;
    };
    for (const auto& one : cases) check(one);
    for (const auto& one : limits) check(one);
}

TEST(Numbers, CellsAndC99DifferInWordsAndHexadecimalOnly) {
    const std::string tinyTimesHuge = "0." + std::string(400, '0') + "1e401";
    const struct {
        const char* text;
        double cell;
        double c99;
        std::size_t used;  // by the C99 reader
    } cases[] = {{"", 0, 0, 0},     {"-0", -0.0, -0.0, 2}, {".", 0, 0, 0},        {"5.", 5, 5, 2},
                 {"-.e5", 0, 0, 0}, {"1,234", 1, 1, 1},    {"1e+", 1, 1, 1},      {"1e+2x", 100, 100, 4},
                 {"1d5", 1, 1, 1},  {"NAN", 0, kNan, 3},   {"nan(1", 0, kNan, 3}, {"0x10", 0, 16, 4},
                 {"0x", 0, 0, 1},   {"0x.p1", 0, 0, 1},    {"0x1p", 0, 1, 3}},
      wide[] = {{" 220.51 ", 220.51, 220.51, 7},  {"-0.05", -0.05, -0.05, 5}, {"INFY", 0, kInfinity, 3},
                {"-infinityx", 0, -kInfinity, 9}, {"nan(0x_1)5", 0, kNan, 9}, {"-0X1.8P3z", -0.0, -12, 8}},
      extremes[] = {
          {"0x10000000000000000", 0, 0x1p64, 19},                          // a digit more than 64 bits hold
          {"0x1.00000000000008p0", 0, 1.0, 20},                            // a half, to even
          {"0x1.000000000000080000000001p0", 0, 0x1.0000000000001p0, 30},  // just above it
          {"0x500faf0e09Ba02p-1084", 0, 0x0.01403ebc3826fp-1022, 22},      // rounds below the normal range
          {"-1e99999999999999999999", -kInfinity, -kInfinity, 23},
          {"1e-99999999999999999999", 0, 0, 23},
          {"9007199254740993", 9007199254740992.0, 9007199254740992.0, 16},  // 2^53 + 1, to even
          {"9007199254740993.00000000000000001", 9007199254740994.0, 9007199254740994.0, 34},
          {tinyTimesHuge.c_str(), 1.0, 1.0, tinyTimesHuge.size()},
      };
    const auto check = [](const auto& one) {
        EXPECT_TRUE(sameBits(quor::atof(one.text), one.cell)) << one.text;
        const char* end = nullptr;
        EXPECT_TRUE(sameBits(quor::strtod(one.text, &end), one.c99)) << one.text;
        EXPECT_EQ(static_cast<std::size_t>(end - one.text), one.used) << one.text;
    };
    for (const auto& one : cases) check(one);
    for (const auto& one : wide) check(one);
    for (const auto& one : extremes) check(one);
    EXPECT_EQ(quor::atof(nullptr), 0.0);
    EXPECT_EQ(quor::strtod(nullptr), 0.0);
}

// Every double has a shortest decimal and an exact hexadecimal text, which must read back as itself.
TEST(Numbers, TextsOfAnyDoubleReadBackExactly) {
    const unsigned seed = test::anySeed();
    SCOPED_TRACE("QUOR_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    for (long i = test::rounds("QUOR_NUMBER_CASES", 100'000); i > 0; --i) {
        double value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        if (i % 3 == 0) value = std::round(std::fmod(value, 1e7) * 100) / 100;  // as prices are
        if (i % 3 == 1) value = std::ldexp(value, -static_cast<int>(random() % 2200));
        char text[64];
        *std::to_chars(text, text + sizeof text, value).ptr = '\0';
        ASSERT_TRUE(sameBits(quor::atof(text), value)) << text;
        ASSERT_TRUE(sameBits(quor::strtod(text), value)) << text;
        char* const digits = text + (std::signbit(value) ? 3 : 2);
        *std::to_chars(digits, text + sizeof text, std::fabs(value), std::chars_format::hex).ptr = '\0';
        digits[-1] = 'x';
        digits[-2] = '0';
        text[0] = std::signbit(value) ? '-' : text[0];
        ASSERT_TRUE(sameBits(quor::strtod(text), value)) << text;
    }
}

TEST(Numbers, TextsOfDoublesAreThoseOfPrintf) {
    const struct {
        double value;
        int precision;
        const char* text;
    } cases[] = {{3.5, 0, "4"},         {2.675, 2, "2.67"},    {-0.001, 2, "-0.00"},
                 {1.5, -1, "1.500000"}, {kInfinity, 2, "inf"}, {-kNan, 2, "nan"}};
    for (const auto& one : cases) EXPECT_STREQ(quor::formatDouble(one.value, one.precision), one.text);
    EXPECT_EQ(quor::formatDouble(-1e308, 2).GetLength(), 1 + 309 + 3);
    EXPECT_EQ(quor::formatDouble(0.5, 500).GetLength(), 502);
}

}  // namespace
