// The user's positions: what they are worth, and which instruments are held.
#include "host/core/Positions.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace terminal;

namespace {

constexpr Price kCent = kPriceOne / 100;

TEST(Positions, ResultsByTheLastPrice) {
    const struct {
        Quantity quantity;
        Price average, last, close;   // cents
        std::vector<double> results;  // value; day and total in money and per cent
    } table[] = {
        {100, 1000, 1250, 1200, {1250, 50, 100 / 24.0, 250, 25}},
        {50, 2000, 1000, 1600, {500, -300, -37.5, -500, -50}},
        {-100, 1000, 750, 800, {-750, 50, 6.25, 250, 25}},
        {10, -100, -150, -200, {-15, 5, 25, -5, -50}},
    };
    for (const auto& row : table) {
        const Position position{{}, row.quantity, row.average * kCent, row.last * kCent, row.close * kCent};
        const Result day = dayResult(position), total = totalResult(position);
        const double results[] = {valueOf(position), *day.money, *day.percent, *total.money, *total.percent};
        for (std::size_t i = 0; i < 5; ++i) EXPECT_DOUBLE_EQ(results[i], row.results[i]) << row.quantity << " " << i;
    }
    const Position given{{}, 10, 0, kPriceOne, kNoPrice};
    EXPECT_FALSE(dayResult(given).money);
    EXPECT_FALSE(totalResult(given).percent) << "of nothing";
}

TEST(Positions, APositionOpensWithItsFirstPriceAndFollowsIt) {
    Positions positions(1);
    EXPECT_FALSE(positions.total().total.money);
    positions.instrument({.id = 0, .symbol = "A", .tickSize = 5 * kCent});
    EXPECT_FALSE(positions.quote({.instrument = 0, .fields = quoteClose, .close = 100 * kPriceOne}));
    EXPECT_FALSE(positions.quote({.instrument = 1, .fields = quoteLast, .last = 1}));
    const Position* const position = positions.quote({.instrument = 0, .fields = quoteLast, .last = 110 * kPriceOne});
    ASSERT_TRUE(position);
    EXPECT_EQ(position->average % (5 * kCent), 0);
    EXPECT_LE(std::abs(position->average - 100 * kPriceOne), 12 * kPriceOne);
    EXPECT_DOUBLE_EQ(*positions.total().day.percent, position->quantity > 0 ? 10 : -10);
    EXPECT_EQ(positions.quote({.instrument = 0, .fields = quoteLast, .last = kLargestPrice}), position);
    EXPECT_DOUBLE_EQ(positions.total().value, valueOf(*position));
}

TEST(Positions, SixtyOfAMarketAreHeldAsTheSeedSays) {
    const auto held = [](std::uint64_t seed) {
        Positions positions(seed);
        std::vector<Quantity> quantities;
        for (InstrumentId id = 0; id < 300; ++id) {
            positions.instrument({.id = id, .symbol = "A"});
            positions.quote({.instrument = id, .fields = quoteLast, .last = kPriceOne});
        }
        for (const Position& one : positions.all()) quantities.push_back(one.quantity);
        return quantities;
    };
    EXPECT_EQ(held(1).size(), 60u);
    EXPECT_LT(std::ranges::min(held(1)), 0) << "some are sold short";
    EXPECT_EQ(held(1), held(1));
    EXPECT_NE(held(1), held(2));
}

}  // namespace
