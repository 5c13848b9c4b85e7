// The generalised Black-Scholes formula. One sign serves both rights: a put is the call's formula with the signs of the
// payments and of d1 and d2 turned, which keeps small prices exact where parity would cancel them.
#include "servers/core/OptionModelInternal.h"
#include "servers/core/Refusal.h"

#include <algorithm>
#include <boost/math/distributions/normal.hpp>
#include <cmath>
#include <limits>

namespace servers {

namespace {

// Double arithmetic throughout: without this Boost computes in long double, several times slower.
using Plain = boost::math::policies::policy<boost::math::policies::promote_double<false>>;
using Normal = boost::math::normal_distribution<double, Plain>;

double cumulative(double x) {
    if (std::isinf(x)) return x > 0 ? 1 : 0;
    return boost::math::cdf(Normal(), x);
}

double density(double x) { return std::isinf(x) ? 0 : boost::math::pdf(Normal(), x); }

// Without time or volatility the outcome is certain: d1 and d2 are infinite, and 0 where the payment is 0 either way.
double certainDistance(double forward, double strike) {
    if (forward == strike) return 0;
    return forward > strike ? std::numeric_limits<double>::infinity() : -std::numeric_limits<double>::infinity();
}

struct Terms {
    double sign;
    double deviation;  // volatility over the life: sigma * sqrt(T)
    double asset;      // present value of the asset delivered at expiry
    double strike;     // present value of the strike
    double d1, d2;
    double n1, n2;  // probabilities, N(sign * d1) and N(sign * d2)
};

Terms termsOf(const Option& o) {
    Terms t;
    t.sign = signOf(o.right);
    t.deviation = o.volatility * std::sqrt(o.years);
    t.asset = o.spot * std::exp((o.carry - o.rate) * o.years);
    t.strike = o.strike * std::exp(-o.rate * o.years);
    if (t.deviation > 0) {
        t.d1 = (std::log(o.spot / o.strike) + o.carry * o.years) / t.deviation + t.deviation / 2;
        t.d2 = t.d1 - t.deviation;
    } else {
        t.d1 = t.d2 = certainDistance(o.spot * std::exp(o.carry * o.years), o.strike);
    }
    t.n1 = cumulative(t.sign * t.d1);
    t.n2 = cumulative(t.sign * t.d2);
    return t;
}

// Never a rounding below what the option is worth without volatility.
double priceOf(const Terms& t) {
    return std::max({0.0, t.sign * (t.asset - t.strike), t.sign * (t.asset * t.n1 - t.strike * t.n2)});
}

// A year's theta: the time value that melts, and what the payments earn.
double yearlyTheta(const Option& o, const Terms& t) {
    if (o.years == 0) return 0;
    const double melting = -t.asset * density(t.d1) * o.volatility / (2 * std::sqrt(o.years));
    return melting - t.sign * ((o.carry - o.rate) * t.asset * t.n1 + o.rate * t.strike * t.n2);
}

}  // namespace

double payoff(const Option& option, double spot) { return signOf(option.right) * (spot - option.strike); }

double europeanPrice(const Option& option) { return priceOf(termsOf(option)); }

Valuation europeanValue(const Option& option) {
    const Terms t = termsOf(option);
    Valuation v;
    v.price = priceOf(t);
    v.delta = t.sign * t.asset / option.spot * t.n1;
    v.theta = yearlyTheta(option, t) / kDaysInYear;
    const double yearlyRho = option.carry == 0 ? -option.years * v.price : t.sign * option.years * t.strike * t.n2;
    v.rho = yearlyRho * kPoint;
    if (t.deviation > 0) {
        v.gamma = t.asset * density(t.d1) / (option.spot * option.spot * t.deviation);
        v.vega = t.asset * density(t.d1) * std::sqrt(option.years) * kPoint;
    }
    return v;
}

}  // namespace servers
