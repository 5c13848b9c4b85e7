// The option server's mathematics: published figures, slopes, certain payments, and the search for the volatility at
// its ends. Random options, against an independent tree, are in OptionPropertyTests.cpp.
#include "servers/core/OptionModel.h"
#include "servers/core/Refusal.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

using namespace servers;

Option option(double spot, double strike, double years, double rate, double carry, double volatility, Right right) {
    return {spot, strike, years, rate, carry, volatility, 0, right, Exercise::European, 0};
}

Option american(Option o) {
    o.exercise = Exercise::American;
    return o;
}

TEST(OptionModel, PublishedFigures) {
    EXPECT_NEAR(price(option(42, 40, 0.5, 0.10, 0.10, 0.20, Right::Call)), 4.7594, 5e-5);
    EXPECT_NEAR(price(option(42, 40, 0.5, 0.10, 0.10, 0.20, Right::Put)), 0.8086, 5e-5);
    EXPECT_NEAR(price(option(75, 70, 0.5, 0.10, 0.05, 0.35, Right::Put)), 4.0870, 5e-5);
    // A future has no carry.
    EXPECT_NEAR(price(option(20, 20, 4.0 / 12, 0.09, 0, 0.25, Right::Put)), 1.1166, 5e-5);
}

// Central differences of the price, in the units of the header; steps of the spot are a share of it.
Valuation differences(const Option& o, double share, double e) {
    const auto at = [&o](double spot, double years, double volatility, double rate) {
        Option moved = o;
        moved.spot += spot;
        moved.years += years;
        moved.volatility = std::max(0.0, o.volatility + volatility);
        moved.rate += rate;
        if (moved.carry != 0) moved.carry += rate;
        return price(moved);
    };
    const double h = o.spot * share;
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
    option(42, 40, 0.5, 0.10, 0.10, 0.20, Right::Call),   option(42, 40, 0.5, 0.10, 0.10, 0.20, Right::Put),
    option(75, 70, 0.5, 0.10, 0.05, 0.35, Right::Put),    option(20, 20, 1.0 / 3, 0.09, 0, 0.25, Right::Put),
    option(100, 120, 2, 0.03, -0.02, 0.4, Right::Call),   option(110, 100, 0.5, 0.10, 0, 0.25, Right::Call),
    option(42, 40, 0.75, 0.04, -0.04, 0.35, Right::Call),
};

// Without volatility an American one is exercised now, at expiry, or between, where what the asset loses equals what
// the strike earns.
const Option kCertainCases[] = {
    option(90, 100, 1, 0.05, 0.05, 0, Right::Put), option(110, 100, 1, 0.05, 0, 0, Right::Call),
    option(90, 100, 1, 0.02, -0.05, 0, Right::Put), option(30, 100, 2, 0.02, -0.05, 0, Right::Put)};

// Of American ones with long steps: the price of a grid is not smooth.
TEST(OptionModel, GreeksAreTheSlopesOfThePrice) {
    for (const Option& o : kGreekCases) {
        Valuation v = value(o), d = differences(o, 1e-3, 1e-4);
        EXPECT_NEAR(v.delta, d.delta, 1e-5);
        EXPECT_NEAR(v.gamma, d.gamma, 1e-5);
        EXPECT_NEAR(v.theta, d.theta, 1e-7);
        EXPECT_NEAR(v.vega, d.vega, 1e-7);
        EXPECT_NEAR(v.rho, d.rho, 1e-7);
        v = value(american(o)), d = differences(american(o), 0.02, 0.01);
        EXPECT_NEAR(v.delta, d.delta, 3e-3);
        EXPECT_NEAR(v.gamma, d.gamma, 0.05 * d.gamma);
        EXPECT_NEAR(v.theta, d.theta, 0.05 * std::abs(d.theta) + 1e-5);
        EXPECT_NEAR(v.vega, d.vega, 1e-4 * o.spot);
        EXPECT_NEAR(v.rho, d.rho, 1e-4 * o.spot);
    }
    for (const Option& o : kCertainCases) {
        const Valuation v = value(american(o)), d = differences(american(o), 1e-3, 1e-4);
        EXPECT_NEAR(v.theta, d.theta, 1e-7) << o.spot;
        EXPECT_NEAR(v.rho, d.rho, 1e-4) << o.spot;
    }
}

// Held, the call on the rest of the spot costs 16.10.
TEST(OptionModel, AnAmericanCallIsExercisedBeforeItsDividendsArePaid) {
    Option o = american(option(100, 80, 0.25, 0.05, 0.05, 0.2, Right::Call));
    for (const double dividends : {5, 90}) {  // more than the strike: nothing that the rest of the asset does matters
        o.dividends = dividends;
        const Valuation v = value(o);
        EXPECT_EQ(v.price, 20);
        EXPECT_EQ(v.delta, 1);
        EXPECT_EQ(v.theta, 0);
        EXPECT_EQ(impliedVolatility(o, 20), 0);
    }
}

TEST(OptionModel, AtExpiryAndWithoutVolatilityThePaymentIsCertain) {
    const double growth = std::exp(-0.05);
    const struct {
        double spot, years, volatility, price, delta, theta;
    } rows[] = {{110, 0, 0.3, 10, 1, 0},
                {90, 0, 0.3, 0, 0, 0},
                {100, 0, 0.3, 0, 0.5, 0},
                {110, 1, 0, 110 - 100 * growth, 1, -0.05 * 100 * growth / 365},
                {90, 1, 0, 0, 0, 0}};
    for (const auto& row : rows) {
        const Option o = option(row.spot, 100, row.years, 0.05, 0.05, row.volatility, Right::Call);
        for (const Option& kind : {o, american(o)}) {
            const Valuation v = value(kind);
            EXPECT_NEAR(v.price, row.price, 1e-12);
            EXPECT_EQ(v.delta, row.delta);
            EXPECT_NEAR(v.theta, row.theta, 1e-12);
            EXPECT_TRUE(v.gamma == 0 && v.vega == 0);
        }
    }
}

// Tiny and huge volatilities too.
TEST(OptionModel, PricesRiseWithTheVolatilityBetweenTheirBounds) {
    for (const Right right : {Right::Call, Right::Put})
        for (const double spot : {50.0, 100.0, 200.0, -50.0, -200.0}) {  // below 0: a European option on as much
            Option o = option(std::abs(spot), 100, 2, 0.06, 0.01, 0, right);
            if (spot > 0) o = american(o);
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
            try {  // one digit below the bound: whatever the answer, it is no runaway
                const double target = std::nextafter(bounds.upper, 0.0);
                o.volatility = impliedVolatility(o, target);
                EXPECT_NEAR(price(o), target, 1e-11);
            } catch (const Refusal& refusal) {
                EXPECT_EQ(refusal.reason(), Reason::OutsideBounds);
            }
            o.years = 0;
            EXPECT_EQ(refusalOf(o, 20), Reason::OutsideBounds);
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
