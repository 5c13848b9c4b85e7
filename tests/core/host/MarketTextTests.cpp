#include "host/core/MarketText.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace terminal;

namespace {

TEST(MarketText, PricesAreIntegersOfATenThousandthOrDecimalsAndQuantitiesWhole) {
    const std::pair<const char*, Price> scaled[] = {
        {"2205100", 220'51000000}, {"-1", -10'000}, {"900000000000000", kLargestPrice}};
    for (const auto& [text, price] : scaled) EXPECT_EQ(parseScaledPrice(text), price) << text;
    for (const char* bad : {"900000000000001", "99999999999999999999999", "220.51", "", "-", "+1", " 1", "1 ", "1e3"})
        EXPECT_FALSE(parseScaledPrice(bad)) << bad;
    for (const char* bad : {"0.000000001", "1.", ".5", "1.2.3", "1.-2", "90000000000.00000001", "nan", "1.5e2"})
        EXPECT_FALSE(parseDecimalPrice(bad)) << bad;
    EXPECT_EQ(parseDecimalPrice("0.000000010"), 1);
    EXPECT_EQ(parseQuantity("1000000000000"), kLargestQuantity);
    for (const char* bad : {"1000000000001", "-1", "1.5", "", "18446744073709551616", "1,"})
        EXPECT_FALSE(parseQuantity(bad)) << bad;
    EXPECT_FALSE(parseDecimalPrice(std::string_view("1\0", 2)));
    EXPECT_FALSE(parseQuantity(std::string_view("\0001", 2)));
}

TEST(MarketText, PricesShowTwoDecimalsAndMoreWhereTheyHaveThem) {
    const std::pair<Price, const char*> cases[] = {
        {220'51000000, "220.51"},          {0, "0.00"},        {-50000000, "-0.50"}, {1'08345000, "1.08345"},
        {kLargestPrice, "90000000000.00"}, {-1, "-0.00000001"}};
    TextBuffer buffer;
    for (const auto& [price, text] : cases) {
        EXPECT_EQ(formatPrice(price, buffer), text);
        EXPECT_EQ(parseDecimalPrice(text), price);
    }
    EXPECT_EQ(formatPrice(kNoPrice, buffer), "");
    struct {
        Price price;
        int decimals;
        const char* text;
    } const rounded[] = {{1'00500000, 2, "1.01"}, {-1'00500000, 2, "-1.01"}, {1'00499999, 2, "1.00"},
                         {99'50000000, 0, "100"}, {-400000, 2, "0.00"},      {1'00000000, 8, "1.00000000"}};
    for (const auto& c : rounded) EXPECT_EQ(formatPrice(c.price, c.decimals, buffer), c.text);
    struct {
        Price change;
        int decimals;
        const char* text;
    } const changes[] = {{15000000, 2, "+0.15"}, {-15000000, 2, "-0.15"}, {0, 2, "0.00"},
                         {400000, 2, "0.00"},    {kNoPrice, 2, ""},       {kLargestPrice, 8, "+90000000000.00000000"}};
    for (const auto& c : changes) EXPECT_EQ(formatChange(c.change, c.decimals, buffer), c.text);
    const std::pair<Price, int> decimals[] = {{0, 2}, {5'000000, 2}, {5'000, 5}, {100'00000000, 2}, {1, 8}};
    for (const auto& [tickSize, expected] : decimals) EXPECT_EQ(decimalsOf(tickSize), expected);
}

constexpr MarketTime second = 1'000'000'000;

TEST(MarketText, TimesAreReadInThreeFormsAndWrittenInOne) {
    const std::pair<const char*, MarketTime> cases[] = {
        {"2012-06-21T09:30:00", 1'340'271'000 * second}, {"1970-01-01 00:00:00", 0},
        {"2012-02-29 00:00:00", 1'330'473'600 * second}, {"09:30:00.5", 34'200 * second + second / 2},
        {"34200.017460", 34'200 * second + 17'460'000},  {"86399.999999999", 86'400 * second - 1}};
    for (const auto& [text, time] : cases) EXPECT_EQ(parseTime(text), time) << text;
    TextBuffer buffer;
    for (const char* text : {"2012-06-21 09:30:00.017460000", "2261-12-31 23:59:59.999999999"})
        EXPECT_EQ(formatDateTime(*parseTime(text), buffer), text);
    EXPECT_EQ(formatTimeOfDay(*parseTime("2012-06-21 09:30:00.999999999"), buffer), "09:30:00.999");
    std::istringstream bad(
        ",2013-02-29 00:00:00,2012-13-01 00:00:00,1969-12-31 23:59:59,2262-01-01 00:00:00,2012-06-21,"
        "2012-06-21 24:00:00,09:60:00,09:30:60,09:30,9:30:00,09:30:00.,09:30:00.1234567891,86400,-1,12-06");
    for (std::string text; std::getline(bad, text, ',');) EXPECT_FALSE(parseTime(text)) << text;
}

}  // namespace
