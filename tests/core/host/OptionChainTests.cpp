// The option chain without its window: underlying, strikes, expiry, quotes, and when it is computed again.
#include "host/core/MarketText.h"
#include "host/core/OptionChain.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

using namespace terminal;
using namespace std::string_literals;

namespace {

// Intrinsic value plus a term linear in the volatility: can be turned round by hand.
class LinearPricer final : public OptionPricer {
public:
    std::optional<OptionValues> value(const OptionTerms& terms, double volatility) override {
        ++calls;
        if (terms.strike == refusedStrike) return {};
        return OptionValues{intrinsic(terms) + volatility * 10, volatility, 0, 0, 0};
    }
    std::optional<double> impliedVolatility(const OptionTerms& terms, double price) override {
        if (!implies) return {};
        return (price - intrinsic(terms)) / 10;
    }
    static double intrinsic(const OptionTerms& terms) {
        const double call = terms.underlying - terms.strike;
        return std::max(0.0, terms.put ? -call : call);
    }
    double refusedStrike = -1;
    bool implies = true;
    int calls = 0;
};

TEST(OptionChain, TheUnderlyingIsTheSelectedOneElseTheOneShownElseTheFirst) {
    constexpr auto no = Candidate::no, other = Candidate::fallback, good = Candidate::preferred;
    const struct {
        std::vector<Candidate> all;
        int selected;
        std::optional<InstrumentId> shown, expected;
    } cases[] = {{{no, no}, 1, {}, {}},           {{no, other, good, good}, -1, {}, 2}, {{no, other, other}, -1, {}, 1},
                 {{good, other, good}, 1, {}, 1}, {{good, no, good}, 1, 2, 2},          {{good, good, good}, 1, 2, 1}};
    for (const auto& c : cases)
        EXPECT_EQ(chooseUnderlying(c.all.size(), c.selected, c.shown, [&](InstrumentId id) { return c.all.at(id); }),
                  c.expected);
}

TEST(OptionChain, ThePriceIsTheLastElseTheMiddle) {
    constexpr std::uint16_t both = quoteBid | quoteAsk;
    const struct {
        std::uint16_t fields;
        Price last, bid, ask;
        std::optional<Price> expected;
    } cases[] = {{0, 5, 5, 5, {}},           {quoteLast | both, 7, 1, 3, 7}, {both, 0, 10, 14, 12},
                 {both, 0, kNoPrice, 4, {}}, {quoteBid, 0, 10, 0, {}},       {quoteLast, 0, 0, 0, {}}};
    for (const auto& c : cases) {
        Quote quote{.fields = c.fields};
        quote.last = c.last, quote.bid = c.bid, quote.ask = c.ask;
        EXPECT_EQ(underlyingPrice(quote), c.expected);
        const auto kind = c.expected ? Candidate::preferred : Candidate::no;
        EXPECT_EQ(candidateOf({.symbol = "A", .series = "FUT"}, quote), kind);
        EXPECT_EQ(candidateOf({.symbol = "A", .series = "BOND"}, quote) == Candidate::fallback, c.expected.has_value());
    }
}

TEST(OptionChain, StrikesAreOneTwoOrFiveApartAndExpireOnTheLastThursdayAWeekAhead) {
    const std::pair<Price, Price> strikes[] = {{100 * kPriceOne, kPriceOne},
                                               {101 * kPriceOne, 2 * kPriceOne},
                                               {612 * kPriceOne, 10 * kPriceOne},
                                               {1, 1},
                                               {500 * kPriceOne, 5 * kPriceOne},
                                               {kPriceOne / 2, kPriceOne / 200},
                                               {kLargestPrice, 1'000'000'000 * kPriceOne}};
    for (const auto& [price, step] : strikes) EXPECT_EQ(strikeStep(price), step) << price;
    const std::pair<const char*, const char*> expiries[] = {
        {"2012-06-21", "2012-06-28"}, {"2012-06-22", "2012-07-26"}, {"2023-12-28", "2024-01-25"}};
    for (const auto& [today, expiry] : expiries)
        EXPECT_EQ(expiryAfter(*parseTime(today + " 09:30:00"s)), parseTime(expiry + " 15:30:00"s)) << today;
}

TEST(OptionChain, QuotesAreWholeTicksAndGreeksFollowTheQuote) {
    EXPECT_GT(smileVolatility(90, 100), smileVolatility(110, 100));
    EXPECT_GE(smileVolatility(1e9, 100), 0.05);
    LinearPricer pricer;
    OptionTerms terms{.underlying = 100, .strike = 100, .years = 0.1};
    OptionFigures figures = priceOption(pricer, terms, 0.25);  // the smile's 2.20 becomes 2.25
    ASSERT_TRUE(figures.values && figures.volatility);
    EXPECT_DOUBLE_EQ(figures.values->price, 2.25);
    EXPECT_DOUBLE_EQ(*figures.volatility, 0.225);
    EXPECT_DOUBLE_EQ(figures.values->delta, 0.225);
    EXPECT_DOUBLE_EQ(priceOption(pricer, terms, 5).values->price, 5) << "a quote is one tick at least";

    pricer.implies = false;
    figures = priceOption(pricer, terms, 0.25);
    EXPECT_FALSE(figures.volatility);
    EXPECT_DOUBLE_EQ(figures.values->price, 2.25);
    EXPECT_DOUBLE_EQ(figures.values->delta, 0.22) << "without a volatility the Greeks are the smile's";

    pricer.refusedStrike = 100;
    EXPECT_FALSE(priceOption(pricer, terms, 0.25).values);
}

TEST(OptionChain, RowsStandInOrderAroundTheMoney) {
    LinearPricer pricer;
    for (const Price price : {Price{1}, 612'35 * kPriceOne / 100, kLargestPrice}) {
        OptionChain chain;
        ASSERT_TRUE(chain.recompute({.price = price, .tickSize = 5'000'000}, 0, pricer));
        const auto& rows = chain.rows();
        EXPECT_GT(rows[0].strike, 0) << price;
        for (std::size_t i = 1; i < rows.size(); ++i)
            EXPECT_EQ(rows[i].strike - rows[i - 1].strike, strikeStep(price)) << price;
        const Price nearest = rows[static_cast<std::size_t>(chain.atTheMoney())].strike;
        EXPECT_LE(2 * std::abs(nearest - price), strikeStep(price)) << price;
        EXPECT_TRUE(price == 1 || price == kLargestPrice || chain.atTheMoney() == OptionChain::kStrikes / 2) << price;
    }
    // They stay while the price swings by less than a step.
    OptionChain chain;
    const struct {
        int price, lowest, atTheMoney;
    } steps[] = {{150, 136, 7}, {148, 136, 6}, {152, 136, 8}, {153, 140, 6}, {152, 140, 6}, {151, 138, 6}};
    std::int64_t now = 0;
    for (const auto& s : steps) {
        chain.recompute({.price = s.price * kPriceOne}, now += OptionChain::kPeriodMicros, pricer);
        EXPECT_EQ(chain.rows()[0].strike, s.lowest * kPriceOne) << s.price;
        EXPECT_EQ(chain.atTheMoney(), s.atTheMoney) << s.price;
    }
}

TEST(OptionChain, IsComputedTwiceASecondAtMostAndOnlyForNews) {
    LinearPricer pricer;
    OptionChain chain;
    ChainBasis basis{.price = 100 * kPriceOne};
    EXPECT_TRUE(chain.due(0));
    EXPECT_TRUE(chain.recompute(basis, 1'000, pricer));
    EXPECT_FALSE(chain.due(1'000 + 499'999));
    EXPECT_TRUE(chain.due(1'000 + 500'000));
    const int calls = pricer.calls;
    EXPECT_FALSE(chain.recompute(basis, 501'000, pricer));
    EXPECT_EQ(pricer.calls, calls);
    basis.time = 1;
    EXPECT_TRUE(chain.recompute(basis, 501'000, pricer));
    EXPECT_FALSE(chain.due(501'001));

    pricer.refusedStrike = 100;
    basis.time = 2;
    chain.recompute(basis, 1'500'000, pricer);
    EXPECT_EQ(chain.priced(), 3 * 2 * OptionChain::kStrikes - 2) << "an option without a price does not count";
}

}  // namespace
