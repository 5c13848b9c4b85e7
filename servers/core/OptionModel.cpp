#include "servers/core/OptionModelInternal.h"
#include "servers/core/Refusal.h"

#include <algorithm>
#include <boost/math/tools/toms748_solve.hpp>
#include <cmath>
#include <cstdint>

namespace servers {

namespace {

void require(bool holds, const char* sentence) {
    if (!holds) throw Refusal(Reason::BadArgument, sentence);
}

bool positive(double x) { return std::isfinite(x) && x > 0; }

double priceOf(const Option& option) {
    return option.exercise == Exercise::American ? americanPrice(option) : europeanPrice(withoutDividends(option));
}

Bounds europeanBounds(Option option) {
    option.volatility = 0;
    const double asset = option.spot * std::exp((option.carry - option.rate) * option.years);
    const double strike = option.strike * std::exp(-option.rate * option.years);
    return {europeanPrice(option), option.right == Right::Call ? asset : strike};
}

Bounds boundsOf(const Option& option) {
    return option.exercise == Exercise::American ? americanBounds(option) : europeanBounds(withoutDividends(option));
}

// The first volatility found at which the option costs at least `target`; 0 if there is none.
double volatilityAbove(Option option, double target) {
    const double largest = kLargestDeviation / std::sqrt(option.years);
    for (option.volatility = std::min(0.25, largest);; option.volatility = std::min(2 * option.volatility, largest)) {
        if (priceOf(option) >= target) return option.volatility;
        if (option.volatility >= largest) return 0;
    }
}

}  // namespace

Option withoutDividends(Option option) {
    option.spot -= option.dividends;
    option.dividends = 0;
    return option;
}

void check(const Option& o) {
    require(positive(o.spot), "The price of the asset must be above 0.");
    require(positive(o.strike), "The strike must be above 0.");
    require(std::isfinite(o.years) && o.years >= 0, "The time to expiry must be 0 or more.");
    require(std::isfinite(o.rate), "The rate must be a number.");
    require(std::isfinite(o.carry), "The cost of carry must be a number.");
    require(std::isfinite(o.volatility) && o.volatility >= 0, "The volatility must be 0 or more.");
    require(std::isfinite(o.dividends) && o.dividends >= 0 && o.dividends < o.spot,
            "The dividends must be 0 or more and below the price of the asset.");
    require(o.steps >= 0 && o.steps <= kMaximalSteps, "The number of steps must be from 0 to 5001.");
}

Valuation value(const Option& option) {
    check(option);
    return option.exercise == Exercise::American ? americanValue(option) : europeanValue(withoutDividends(option));
}

double price(const Option& option) {
    check(option);
    return priceOf(option);
}

Bounds priceBounds(const Option& option) {
    check(option);
    return boundsOf(option);
}

double impliedVolatility(const Option& option, double price) {
    Option o = option;
    o.volatility = 0;
    check(o);
    require(std::isfinite(price), "The option's price must be a number.");
    if (o.years == 0) throw Refusal(Reason::OutsideBounds, "An option at expiry has no volatility.");
    const Bounds bounds = boundsOf(o);
    if (price == bounds.lower) return 0;
    if (price < bounds.lower || price >= bounds.upper)
        throw Refusal(Reason::OutsideBounds, "The price lies outside the no-arbitrage bounds.");
    const double high = volatilityAbove(o, price);
    if (high == 0) throw Refusal(Reason::OutsideBounds, "The price is too near its upper bound.");

    const auto excess = [&o, price](double volatility) {
        Option at = o;
        at.volatility = volatility;
        return priceOf(at) - price;
    };
    const double atHigh = excess(high);
    if (atHigh == 0) return high;
    std::uintmax_t evaluations = 200;
    const boost::math::tools::eps_tolerance<double> nearEnough(50);
    const auto bracket =
        boost::math::tools::toms748_solve(excess, 0.0, high, bounds.lower - price, atHigh, nearEnough, evaluations);
    return (bracket.first + bracket.second) / 2;
}

}  // namespace servers
