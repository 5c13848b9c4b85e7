#include <gtest/gtest.h>

#include "host/core/MarketText.h"

using namespace terminal;

namespace {

struct PriceCase {
    const char* text;
    std::optional<Price> price;
};

TEST(MarketText, ScaledPricesAreIntegersOfATenThousandth) {
    const PriceCase cases[] = {
        {"2205100", 220'51000000},
        {"0", 0},
        {"-1", -10'000},
        {"9999999999", 999'999'99990000},
        {"900000000000000", largestPrice},
        {"900000000000001", {}},
        {"99999999999999999999999", {}},
        {"220.51", {}},
        {"", {}},
        {"-", {}},
        {"--1", {}},
        {"+1", {}},
        {" 1", {}},
        {"1 ", {}},
        {"0x10", {}},
        {"1e3", {}},
    };
    for (const PriceCase& c : cases) EXPECT_EQ(parseScaledPrice(c.text), c.price) << c.text;
}

TEST(MarketText, DecimalPricesStandAsTheyAre) {
    const PriceCase cases[] = {
        {"220.51", 220'51000000},
        {"220", 220'00000000},
        {"-0.5", -50000000},
        {"0.00000001", 1},
        {"0.000000010", 1},
        {"0.000000001", {}},
        {"1.", {}},
        {".5", {}},
        {"1.2.3", {}},
        {"1.-2", {}},
        {"90000000000", largestPrice},
        {"90000000000.00000001", {}},
        {"nan", {}},
        {"inf", {}},
        {"1.5e2", {}},
    };
    for (const PriceCase& c : cases) EXPECT_EQ(parseDecimalPrice(c.text), c.price) << c.text;
}

TEST(MarketText, ANulByteIsNoPartOfANumber) {
    EXPECT_FALSE(parseDecimalPrice(std::string_view("1\0", 2)));
    EXPECT_FALSE(parseQuantity(std::string_view("\0001", 2)));
}

TEST(MarketText, PricesShowTwoDecimalsAndMoreWhereTheyHaveThem) {
    const std::pair<Price, const char*> cases[] = {
        {220'51000000, "220.51"}, {220'50000000, "220.50"},          {0, "0.00"},   {1, "0.00000001"},
        {-50000000, "-0.50"},     {1'08345000, "1.08345"},           {noPrice, ""}, {largestPrice, "90000000000.00"},
        {-1, "-0.00000001"},      {-largestPrice, "-90000000000.00"}};
    for (const auto& [price, text] : cases) {
        TextBuffer buffer;
        EXPECT_EQ(formatPrice(price, buffer), text);
        if (price == noPrice) continue;
        EXPECT_EQ(parseDecimalPrice(text), price);
    }
}

TEST(MarketText, FixedDecimalsRoundHalfAwayFromZero) {
    struct {
        Price price;
        int decimals;
        const char* text;
    } const cases[] = {{1'00500000, 2, "1.01"},       {-1'00500000, 2, "-1.01"}, {1'00499999, 2, "1.00"},
                       {99'50000000, 0, "100"},       {-400000, 2, "0.00"},      {1'00000000, 8, "1.00000000"},
                       {999'99999999, 4, "1000.0000"}};
    for (const auto& c : cases) {
        TextBuffer buffer;
        EXPECT_EQ(formatPrice(c.price, c.decimals, buffer), c.text);
    }
}

TEST(MarketText, DecimalsFollowTheTickSize) {
    EXPECT_EQ(decimalsOf(0), 2);
    EXPECT_EQ(decimalsOf(5'000000), 2);
    EXPECT_EQ(decimalsOf(5'000), 5);
    EXPECT_EQ(decimalsOf(100'00000000), 2);
    EXPECT_EQ(decimalsOf(1), 8);
}

TEST(MarketText, QuantitiesAreWholeAndBounded) {
    EXPECT_EQ(parseQuantity("0"), 0);
    EXPECT_EQ(parseQuantity("1000000000000"), largestQuantity);
    for (const char* bad : {"1000000000001", "-1", "1.5", "", "18446744073709551616", "1,"})
        EXPECT_FALSE(parseQuantity(bad)) << bad;
}

constexpr MarketTime second = 1'000'000'000;

TEST(MarketText, TimesAreReadInThreeForms) {
    struct {
        const char* text;
        std::optional<MarketTime> time;
    } const cases[] = {
        {"2012-06-21 09:30:00.017460000", 1'340'271'000 * second + 17'460'000},
        {"2012-06-21T09:30:00", 1'340'271'000 * second},
        {"1970-01-01 00:00:00", 0},
        {"09:30:00.5", 34'200 * second + second / 2},
        {"34200.017460", 34'200 * second + 17'460'000},
        {"86399.999999999", 86'400 * second - 1},
        {"0", 0},
        {"2012-02-29 00:00:00", 1'330'473'600 * second},
        {"2013-02-29 00:00:00", {}},
        {"2012-13-01 00:00:00", {}},
        {"1969-12-31 23:59:59", {}},
        {"2262-01-01 00:00:00", {}},
        {"2012-06-21", {}},
        {"2012-06-21 24:00:00", {}},
        {"09:60:00", {}},
        {"09:30:60", {}},
        {"09:30", {}},
        {"9:30:00", {}},
        {"09:30:00.", {}},
        {"09:30:00.1234567891", {}},
        {"86400", {}},
        {"-1", {}},
        {"", {}},
        {"12-06", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(parseTime(c.text), c.time) << c.text;
}

TEST(MarketText, TimesAreWrittenAsTheyAreRead) {
    for (const char* text :
         {"2012-06-21 09:30:00.017460000", "1970-01-01 00:00:00.000000000", "2261-12-31 23:59:59.999999999"}) {
        TextBuffer buffer;
        ASSERT_TRUE(parseTime(text)) << text;
        EXPECT_EQ(formatDateTime(*parseTime(text), buffer), text);
    }
    TextBuffer buffer;
    EXPECT_EQ(formatTimeOfDay(*parseTime("2012-06-21 09:30:00.999999999"), buffer), "09:30:00.999");
}

TEST(MarketText, MessagesShowStrangeBytesAndCutLongTexts) {
    EXPECT_EQ(quoteForMessage(std::string_view("a\0\xA7"
                                               "b",
                                               4)),
              "\"a\\x00\\xA7b\"");
    EXPECT_EQ(quoteForMessage(std::string(41, 'x')), "\"" + std::string(40, 'x') + "\"...");
    EXPECT_EQ(quoteForMessage(""), "\"\"");
}

}  // namespace
