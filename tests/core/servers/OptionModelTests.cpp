// The option server's mathematics: published figures, laws that hold between prices, an independent tree, and the
// search for the volatility over a grid of options. Random options are in OptionPropertyTests.cpp.
#include "PlainTree.h"

#include "servers/core/OptionModel.h"
#include "servers/core/Refusal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using namespace servers;

Option option(double spot, double strike, double years, double rate, double carry, double volatility, Right right) {
    Option o;
    o.spot = spot;
    o.strike = strike;
    o.years = years;
    o.rate = rate;
    o.carry = carry;
    o.volatility = volatility;
    o.right = right;
    return o;
}

Option american(Option o) {
    o.exercise = Exercise::American;
    return o;
}

double oracle(const Option& o) { return option_test::plainTrees(o).american; }

TEST(OptionModel, PublishedFigures) {
    EXPECT_NEAR(price(option(42, 40, 0.5, 0.10, 0.10, 0.20, Right::Call)), 4.7594, 5e-5);
    EXPECT_NEAR(price(option(42, 40, 0.5, 0.10, 0.10, 0.20, Right::Put)), 0.8086, 5e-5);
    EXPECT_NEAR(price(option(75, 70, 0.5, 0.10, 0.05, 0.35, Right::Put)), 4.0870, 5e-5);
    // A future has no carry.
    EXPECT_NEAR(price(option(20, 20, 4.0 / 12, 0.09, 0, 0.25, Right::Put)), 1.1166, 5e-5);
}

// Central differences of the price, in the units of the header.
Valuation differences(const Option& o) {
    const auto at = [&o](double spot, double years, double volatility, double rate) {
        Option moved = o;
        moved.spot += spot;
        moved.years += years;
        moved.volatility += volatility;
        moved.rate += rate;
        if (moved.carry != 0) moved.carry += rate;
        return price(moved);
    };
    const double h = o.spot * 1e-3, e = 1e-4;
    Valuation v;
    v.price = price(o);
    v.delta = (at(h, 0, 0, 0) - at(-h, 0, 0, 0)) / (2 * h);
    v.gamma = (at(h, 0, 0, 0) - 2 * v.price + at(-h, 0, 0, 0)) / (h * h);
    v.theta = (at(0, -e, 0, 0) - at(0, e, 0, 0)) / (2 * e) / 365;
    v.vega = (at(0, 0, e, 0) - at(0, 0, -e, 0)) / (2 * e) / 100;
    v.rho = (at(0, 0, 0, e) - at(0, 0, 0, -e)) / (2 * e) / 100;
    return v;
}

const Option kGreekCases[] = {
    option(42, 40, 0.5, 0.10, 0.10, 0.20, Right::Call), option(42, 40, 0.5, 0.10, 0.10, 0.20, Right::Put),
    option(75, 70, 0.5, 0.10, 0.05, 0.35, Right::Put),  option(20, 20, 1.0 / 3, 0.09, 0, 0.25, Right::Put),
    option(100, 120, 2, 0.03, -0.02, 0.4, Right::Call),
};

TEST(OptionModel, EuropeanGreeksAreTheSlopesOfThePrice) {
    for (const Option& o : kGreekCases) {
        const Valuation v = value(o), d = differences(o);
        EXPECT_NEAR(v.delta, d.delta, 1e-5);
        EXPECT_NEAR(v.gamma, d.gamma, 1e-5);
        EXPECT_NEAR(v.theta, d.theta, 1e-7);
        EXPECT_NEAR(v.vega, d.vega, 1e-7);
        EXPECT_NEAR(v.rho, d.rho, 1e-7);
    }
}

// Slopes of the independent tree's price, too coarse for gamma.
TEST(OptionModel, AmericanPriceAndGreeksAgreeWithAPlainTree) {
    const Option cases[] = {
        option(100, 100, 1, 0.08, 0.08, 0.25, Right::Put),   option(90, 100, 0.5, 0.10, 0, 0.25, Right::Put),
        option(110, 100, 0.5, 0.10, 0, 0.25, Right::Call),   option(42, 40, 0.75, 0.04, -0.04, 0.35, Right::Call),
        option(100, 110, 0.25, 0.05, 0.02, 0.6, Right::Put),
    };
    for (const Option& european : cases) {
        const Option o = american(european);
        const auto moved = [&o](double spot, double volatility, double rate) {
            Option m = o;
            m.spot += spot;
            m.volatility += volatility;
            m.rate += rate;
            if (m.carry != 0) m.carry += rate;
            return oracle(m);
        };
        const Valuation v = value(o);
        EXPECT_NEAR(v.price, oracle(o), 3e-5 * o.spot);
        EXPECT_GT(v.price, price(european));
        const double h = o.spot * 0.02;
        EXPECT_NEAR(v.delta, (moved(h, 0, 0) - moved(-h, 0, 0)) / (2 * h), 3e-3);
        EXPECT_NEAR(v.vega, (moved(0, 0.01, 0) - moved(0, -0.01, 0)) / 2, 1e-3 * o.spot / 10);
        EXPECT_NEAR(v.rho, (moved(0, 0, 0.01) - moved(0, 0, -0.01)) / 2, 1e-3 * o.spot / 10);
        // The Black-Scholes equation ties theta to gamma; gamma itself is checked against the slope of delta.
        Option up = o, down = o;
        up.spot += h;
        down.spot -= h;
        EXPECT_NEAR(v.gamma, (value(up).delta - value(down).delta) / (2 * h), 0.05 * v.gamma);
        Option later = o;
        later.years -= 1.0 / 365;
        EXPECT_NEAR(v.theta, price(later) - v.price, 0.05 * std::abs(v.theta) + 1e-4);
    }
}

TEST(OptionModel, WithoutReasonForEarlyExerciseBothKindsCostTheSame) {
    const Option call = option(100, 90, 1, 0.05, 0.05, 0.3, Right::Call);
    const Option put = option(100, 110, 1, 0, -0.02, 0.3, Right::Put);
    EXPECT_EQ(price(american(call)), price(call));
    EXPECT_EQ(price(american(put)), price(put));
}

TEST(OptionModel, DeepInTheMoneyAnAmericanPutIsExercisedAtOnce) {
    const Valuation v = value(american(option(40, 100, 1, 0.1, 0.1, 0.2, Right::Put)));
    EXPECT_EQ(v.price, 60);
    EXPECT_EQ(v.delta, -1);
    EXPECT_EQ(v.gamma, 0);
    EXPECT_EQ(v.theta, 0);
}

// Neither a rate of 0 or less nor a carry above the rate is enough to rule early exercise out.
TEST(OptionModel, EarlyExercisePaysAtRatesOfZeroAndBelow) {
    for (const Option& o :
         {option(90, 100, 1, 0, 0.05, 0.2, Right::Put), option(90, 100, 1, -0.03, 0.05, 0.2, Right::Put),
          option(110, 100, 1, -0.06, -0.03, 0.2, Right::Call)}) {
        EXPECT_NEAR(price(american(o)), oracle(american(o)), 2e-3);
        EXPECT_GT(price(american(o)), price(o) + 0.1);
    }
}

// Held, the call on the rest of the spot costs 16.10.
TEST(OptionModel, AnAmericanCallIsExercisedBeforeItsDividendsArePaid) {
    Option o = american(option(100, 80, 0.25, 0.05, 0.05, 0.2, Right::Call));
    o.dividends = 5;
    const Valuation v = value(o);
    EXPECT_EQ(v.price, 20);
    EXPECT_EQ(v.delta, 1);
    EXPECT_EQ(v.theta, 0);
    EXPECT_EQ(priceBounds(o).lower, 20);
    EXPECT_EQ(impliedVolatility(o, 20), 0);
    o.volatility = 0.9;
    EXPECT_EQ(price(o), price(option(95, 80, 0.25, 0.05, 0.05, 0.9, Right::Call)));
    EXPECT_NEAR(impliedVolatility(o, price(o)), 0.9, 1e-9);
    o.dividends = 90;  // more than the strike: nothing that the rest of the asset does matters
    EXPECT_EQ(price(o), 20);
    EXPECT_EQ(impliedVolatility(o, 20), 0);
}

TEST(OptionModel, AtExpiryAndWithoutVolatilityThePaymentIsCertain) {
    struct Row {
        double spot, years, volatility, price, delta, theta;
    };
    const double growth = std::exp(-0.05);
    const Row rows[] = {
        {110, 0, 0.3, 10, 1, 0},  {90, 0, 0.3, 0, 0, 0},
        {100, 0, 0.3, 0, 0.5, 0}, {110, 1, 0, 110 - 100 * growth, 1, -0.05 * 100 * growth / 365},
        {90, 1, 0, 0, 0, 0},
    };
    for (const Row& row : rows) {
        const Option o = option(row.spot, 100, row.years, 0.05, 0.05, row.volatility, Right::Call);
        for (const Option& kind : {o, american(o)}) {
            const Valuation v = value(kind);
            EXPECT_NEAR(v.price, row.price, 1e-12);
            EXPECT_EQ(v.delta, row.delta);
            EXPECT_EQ(v.gamma, 0);
            EXPECT_NEAR(v.theta, row.theta, 1e-12);
            EXPECT_EQ(v.vega, 0);
        }
    }
}

// Exercised now, at expiry, and between, where what the asset loses equals what the strike earns.
TEST(OptionModel, SlopesWithoutVolatilityAreThoseOfTheBestTime) {
    const Option rows[] = {option(90, 100, 1, 0.05, 0.05, 0, Right::Put), option(110, 100, 1, 0.05, 0, 0, Right::Call),
                           option(90, 100, 1, 0.02, -0.05, 0, Right::Put),
                           option(30, 100, 2, 0.02, -0.05, 0, Right::Put)};
    for (const Option& row : rows) {
        const Option o = american(row);
        const auto moved = [&o](double years, double rate) {
            Option m = o;
            m.years += years;
            m.rate += rate;
            if (m.carry != 0) m.carry += rate;
            return price(m);
        };
        const double e = 1e-4;
        const Valuation v = value(o);
        EXPECT_NEAR(v.theta, (moved(-e, 0) - moved(e, 0)) / (2 * e) / 365, 1e-7) << o.spot;
        EXPECT_NEAR(v.rho, (moved(0, e) - moved(0, -e)) / (2 * e) / 100, 1e-4) << o.spot;
    }
}

// Tiny and huge volatilities too.
TEST(OptionModel, AmericanPricesRiseWithTheVolatilityBetweenTheirBounds) {
    for (const Right right : {Right::Call, Right::Put})
        for (const double spot : {50.0, 100.0, 200.0}) {
            Option o = american(option(spot, 100, 2, 0.06, 0.01, 0, right));
            const Bounds bounds = priceBounds(o);
            double last = bounds.lower;
            for (double volatility = 1e-7; volatility < 1e3; volatility *= 4) {
                o.volatility = volatility;
                const double now = price(o);
                EXPECT_GE(now, last - 1e-7) << spot << " at " << volatility;
                EXPECT_LE(now, bounds.upper);
                last = now;
            }
            EXPECT_NEAR(last, bounds.upper, 1e-9);
        }
}

TEST(ImpliedVolatility, GivesThePriceBack) {
    int searched = 0;
    for (const Right right : {Right::Call, Right::Put})
        for (const double strike : {20.0, 80.0, 100.0, 130.0, 400.0})
            for (const double years : {1.0 / 365, 0.5, 3.0})
                for (const double volatility : {0.01, 0.2, 0.9, 4.0}) {
                    Option o = option(100, strike, years, 0.05, 0.02, volatility, right);
                    const double target = price(o);
                    const Bounds bounds = priceBounds(o);
                    if (target >= bounds.upper || target < bounds.lower) continue;
                    o.volatility = impliedVolatility(o, target);
                    EXPECT_NEAR(price(o), target, 1e-11) << strike << ' ' << years << ' ' << volatility;
                    ++searched;
                }
    EXPECT_GT(searched, 100);
}

Reason refusalOf(const Option& o, double target) {
    try {
        const double volatility = impliedVolatility(o, target);
        ADD_FAILURE() << target << " was found at " << volatility;
    } catch (const Refusal& refusal) {
        return refusal.reason();
    }
    return Reason::NotFound;
}

TEST(ImpliedVolatility, RefusesPricesOutsideTheBounds) {
    for (const Right right : {Right::Call, Right::Put})
        for (const Exercise exercise : {Exercise::European, Exercise::American}) {
            Option o = option(100, right == Right::Call ? 80 : 120, 1, 0.05, 0.02, 0, right);
            o.exercise = exercise;
            const Bounds bounds = priceBounds(o);
            ASSERT_GT(bounds.lower, 0);
            EXPECT_EQ(impliedVolatility(o, bounds.lower), 0);
            EXPECT_EQ(refusalOf(o, std::nextafter(bounds.lower, 0.0)), Reason::OutsideBounds);
            EXPECT_EQ(refusalOf(o, bounds.upper), Reason::OutsideBounds);
            EXPECT_EQ(refusalOf(o, -1), Reason::OutsideBounds);
            EXPECT_EQ(refusalOf(o, std::nan("")), Reason::BadArgument);
            o.years = 0;
            EXPECT_EQ(refusalOf(o, 20), Reason::OutsideBounds);
        }
}

// One digit below the bound: whatever the answer, it is no runaway.
TEST(ImpliedVolatility, EndsNextToTheUpperBound) {
    for (const Right right : {Right::Call, Right::Put})
        for (const Exercise exercise : {Exercise::European, Exercise::American}) {
            Option o = option(100, 100, 1, 0.05, 0.02, 0, right);
            o.exercise = exercise;
            const double target = std::nextafter(priceBounds(o).upper, 0.0);
            try {
                o.volatility = impliedVolatility(o, target);
                EXPECT_NEAR(price(o), target, 1e-11);
            } catch (const Refusal& refusal) {
                EXPECT_EQ(refusal.reason(), Reason::OutsideBounds);
            }
        }
}

TEST(OptionModel, RefusesArgumentsThatMeanNothing) {
    const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
    const Option good = option(100, 100, 1, 0.05, 0.05, 0.2, Right::Call);
    std::vector<Option> bad;
    const auto vary = [&](double Option::*field, std::vector<double> values) {
        for (const double v : values) (bad.emplace_back(good)).*field = v;
    };
    vary(&Option::spot, {0, -1, nan, inf});
    vary(&Option::strike, {0, -1, nan, inf});
    vary(&Option::years, {-0.1, nan, inf});
    vary(&Option::rate, {nan, inf});
    vary(&Option::carry, {nan, -inf});
    vary(&Option::volatility, {-0.1, nan, inf});
    vary(&Option::dividends, {-1, 100, nan});
    bad.emplace_back(good).steps = -1;
    bad.emplace_back(good).steps = kMaximalSteps + 1;
    for (const Option& o : bad) EXPECT_THROW(value(o), Refusal);
}

}  // namespace
