// Laws of American prices over random options: rates and carries of both signs, dividends, lives of days to years.
// QUOR_OPTION_CASES=100000 makes the search a long one; QUOR_SEED repeats one.
#include "quor/platform/base/Strings.h"
#include "servers/core/OptionModel.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace servers;

// The oracle: plain binomial trees (Cox, Ross, Rubinstein 1979), which share nothing with the grid that is tested. They
// have errors of their own, seen by what they make of the European option.
struct TreePrices {
    double american = 0, european = 0;
    bool valid = true;  // probabilities between 0 and 1
};

TreePrices plainTree(const Option& o, int steps) {
    const double dt = o.years / steps, move = o.volatility * std::sqrt(dt), up = std::exp(move), down = 1 / up;
    const double p = (std::exp(o.carry * dt) - down) / (up - down), discount = std::exp(-o.rate * dt);
    if (!(p > 0 && p < 1)) return {0, 0, false};
    const double sign = o.right == Right::Call ? 1 : -1, reduced = o.spot - o.dividends;
    const auto count = static_cast<std::size_t>(steps);
    std::vector<double> payoffs, american;
    for (int i = -steps; i <= steps; ++i) payoffs.push_back(sign * (reduced * std::exp(move * i) - o.strike));
    for (std::size_t i = 0; i <= count; ++i) american.push_back(std::max(0.0, payoffs[2 * i]));
    std::vector<double> european = american;
    const double rise = discount * p, fall = discount * (1 - p);
    for (std::size_t step = count; step-- > 0;) {
        double *const early = american.data(), *const late = european.data();
        const double* const now = payoffs.data() + count - step;
        for (std::size_t i = 0; i <= step; ++i) {
            late[i] = fall * late[i] + rise * late[i + 1];
            early[i] = std::max(fall * early[i] + rise * early[i + 1], now[2 * i]);
        }
    }
    return {american[0], european[0], true};
}

// The mean over an even and an odd number of steps. Exercise at once comes before the dividends.
TreePrices plainTrees(const Option& o, int steps = 800) {
    const TreePrices even = plainTree(o, steps), odd = plainTree(o, steps + 1);
    const double now = o.right == Right::Call ? o.spot - o.strike : o.strike - o.spot;
    return {std::max((even.american + odd.american) / 2, now), (even.european + odd.european) / 2,
            even.valid && odd.valid};
}

// Strike 100. A quarter have the carry of a share, a tenth that of a future, two fifths pay dividends.
class RandomOptions : public testing::Test {
protected:
    Option next() {
        Option o;
        o.spot = spread(50, 200);
        o.strike = 100;
        o.years = spread(0.01, 3);
        o.rate = between(-0.15, 0.15);
        o.carry = chance(0.25) ? o.rate : chance(0.1) ? 0 : between(-0.15, 0.15);
        o.volatility = spread(0.05, 1);
        o.dividends = chance(0.4) ? o.spot * between(0, 0.2) : 0;
        o.right = chance(0.5) ? Right::Call : Right::Put;
        o.exercise = Exercise::American;
        return o;
    }
    std::string told(const Option& o) const {
        CString text;
        text.Format("%s, spot %g, years %g, rate %g, carry %g, volatility %g, dividends %g, QUOR_SEED=%u",
                    o.right == Right::Call ? "call" : "put", o.spot, o.years, o.rate, o.carry, o.volatility,
                    o.dividends, m_seed);
        return text.GetString();
    }
    static long cases() { return test::rounds("QUOR_OPTION_CASES", 2000); }

private:
    double between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_random); }
    double spread(double low, double high) { return low * std::pow(high / low, between(0, 1)); }
    bool chance(double share) { return between(0, 1) < share; }

    const unsigned m_seed = test::anySeed();
    std::mt19937_64 m_random{m_seed};
};

// A plain tree errs too where the drift of a step is not small against its volatility. It is believed where it prices
// the European option, whose formula is known, to a quarter of what is demanded.
TEST_F(RandomOptions, CostWhatTreesSayAndNeverLessThanExercise) {
    int compared = 0;
    for (int i = 0; i < cases(); ++i) {
        const Option o = next();
        const double cost = price(o), now = o.right == Right::Call ? o.spot - o.strike : o.strike - o.spot;
        Option european = o;
        european.exercise = Exercise::European;
        const Bounds bounds = priceBounds(o);
        ASSERT_GE(cost, now) << told(o);
        ASSERT_GE(cost, price(european)) << told(o);
        ASSERT_GE(cost, bounds.lower) << told(o);
        ASSERT_LE(cost, bounds.upper) << told(o);

        const TreePrices trees = plainTrees(o);
        const double allowed = 0.005 + 0.001 * trees.american;
        if (!trees.valid || std::abs(trees.european - price(european)) > allowed / 4) continue;
        ASSERT_NEAR(cost, trees.american, allowed) << told(o);
        ++compared;
    }
    EXPECT_GT(compared, cases() * 9 / 10);
}

// The grid has more points or fewer as the volatility moves, and its price steps by some millionths there: a volatility
// is told apart as far as these allow.
TEST_F(RandomOptions, GiveTheirVolatilityBack) {
    constexpr double kPriceStep = 5e-6;
    int searched = 0;
    for (int i = 0; i < cases(); ++i) {
        const Option o = next();
        const double cost = price(o);
        if (cost < priceBounds(o).lower + 1e-4) continue;
        Option european = o;
        european.exercise = Exercise::European;
        const Bounds bounds = priceBounds(european);
        const double target = price(european);
        if (target >= bounds.lower && target < bounds.upper) {
            european.volatility = impliedVolatility(european, target);
            ASSERT_NEAR(price(european), target, 1e-11) << told(o);
        }
        Option wilder = o;
        wilder.volatility *= 1.01;
        const double slope = (price(wilder) - cost) / (wilder.volatility - o.volatility);
        ASSERT_NEAR(impliedVolatility(o, cost), o.volatility, 1e-5 + kPriceStep / slope) << told(o);
        ++searched;
    }
    EXPECT_GT(searched, cases() / 3);
}

}  // namespace
