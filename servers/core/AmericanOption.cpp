// An American option is worth the greater of two: what exercise now brings, before the dividends are paid, and the
// option on the spot without them, which may be exercised at any time.
#include "servers/core/ExerciseGrid.h"
#include "servers/core/OptionModelInternal.h"

#include <algorithm>
#include <cmath>

namespace servers {

namespace {

// With less volatility over the life (sigma * sqrt(T)) no price differs from the certain one by a millionth of the
// strike.
constexpr double kSmallestDeviation = 1e-6;

double deviationOf(const Option& o) { return o.volatility * std::sqrt(o.years); }

// Exercise never pays early if holding an option in the money never costs: at no spot where exercise pays may the asset
// earn less, together with what the strike costs, than nothing. It is enough to look at the ends of these spots: for a
// call at the strike and at infinity, for a put at the strike and at 0.
bool neverEarly(const Option& o) {
    return o.right == Right::Call ? o.carry >= 0 && o.carry >= o.rate : o.carry <= 0 && o.rate <= 0;
}

// More volatility than a grid can hold: the price has reached its upper bound.
bool boundless(const Option& o) { return deviationOf(o) > kLargestDeviation; }

double upperBound(const Option& o) {
    return o.right == Right::Call ? o.spot * std::exp(std::max(0.0, (o.carry - o.rate) * o.years))
                                  : o.strike * std::exp(std::max(0.0, -o.rate * o.years));
}

Valuation boundlessValue(const Option& o) {
    Valuation v;
    v.price = upperBound(o);
    v.delta = o.right == Right::Call ? v.price / o.spot : 0;
    return v;
}

// What exercise after a time is worth today if nothing is uncertain.
double exercisedAfter(const Option& o, double years) {
    return payoff(o, o.spot * std::exp(o.carry * years)) * std::exp(-o.rate * years);
}

// The best time for that: now, at expiry, or where the payment's present value stands still.
double bestTime(const Option& o) {
    double best = exercisedAfter(o, o.years) > exercisedAfter(o, 0) ? o.years : 0;
    const double ratio = o.rate * o.strike / ((o.rate - o.carry) * o.spot);
    if (o.carry == 0 || !(ratio > 0) || !std::isfinite(ratio)) return best;
    const double still = std::log(ratio) / o.carry;
    if (still > 0 && still < o.years && exercisedAfter(o, still) > exercisedAfter(o, best)) best = still;
    return best;
}

// Nothing uncertain: exercised at the best time, or never. Gamma and vega are 0. Theta is 0 too unless that time is
// expiry: as a day passes, the payment comes as late after today as before.
Valuation certainValue(const Option& o) {
    Valuation v;
    const double years = bestTime(o), payment = exercisedAfter(o, years);
    if (payment < 0) return v;
    const double share = payment > 0 ? 1 : 0.5;
    const double strike = o.strike * std::exp(-o.rate * years);
    v.price = payment;
    v.delta = share * signOf(o.right) * std::exp((o.carry - o.rate) * years);
    if (years > 0 && years == o.years) v.theta = (o.rate * v.price - o.carry * o.spot * v.delta) / kDaysInYear;
    v.rho = (o.carry == 0 ? -v.price : share * signOf(o.right) * strike) * years * kPoint;
    return v;
}

double clamped(const Option& o, double price) {
    return std::min(std::max({price, europeanPrice(o), certainAmericanPrice(o)}), upperBound(o));
}

bool needsGrid(const Option& o) { return !neverEarly(o) && !boundless(o) && deviationOf(o) >= kSmallestDeviation; }

// Where no grid is needed.
Valuation plainValue(const Option& o) {
    if (neverEarly(o)) return europeanValue(o);
    return boundless(o) ? boundlessValue(o) : certainValue(o);
}

Option bumped(Option o, double volatility, double rate) {
    o.volatility += volatility;
    if (o.carry != 0) o.carry += rate;
    o.rate += rate;
    return o;
}

// The Black-Scholes equation gives the theta of an option that is held.
double yearlyTheta(const Option& o, const Valuation& v) {
    return o.rate * v.price - o.carry * o.spot * v.delta - o.volatility * o.volatility * o.spot * o.spot * v.gamma / 2;
}

// Without vega and rho, which need further grids.
Valuation gridValue(const Option& o) {
    const GridPrice grid = gridPrice(o);
    Valuation v;
    v.price = grid.price;
    v.delta = grid.delta;
    v.gamma = grid.gamma;
    v.theta = yearlyTheta(o, v) / kDaysInYear;
    return v;
}

void addSlopes(const Option& o, Valuation& v) {
    const auto slope = [&o](double volatility, double rate) {
        return (americanPrice(bumped(o, volatility, rate)) - americanPrice(bumped(o, -volatility, -rate))) /
               (2 * (volatility + rate)) * kPoint;
    };
    v.vega = slope(std::min(kPoint / 10, o.volatility / 2), 0);
    v.rho = slope(0, kPoint / 10);
}

// Exercised at once: worth what it pays, and moves with the spot alone.
Valuation exercisedValue(const Option& o) {
    Valuation v;
    v.price = payoff(o, o.spot);
    v.delta = signOf(o.right);
    return v;
}

}  // namespace

double certainAmericanPrice(const Option& o) { return std::max(0.0, exercisedAfter(o, bestTime(o))); }

Bounds americanBounds(const Option& o) {
    Option calm = withoutDividends(o);
    calm.volatility = 0;
    const double lower = std::max(clamped(calm, 0), payoff(o, o.spot));
    return {lower, std::max(lower, upperBound(calm))};
}

double americanPrice(const Option& o) {
    const Option held = withoutDividends(o);
    const double price = needsGrid(held) ? gridPrice(held).price : plainValue(held).price;
    return std::max(clamped(held, price), payoff(o, o.spot));
}

Valuation americanValue(const Option& o) {
    const Option held = withoutDividends(o);
    const bool onGrid = needsGrid(held);
    Valuation v = onGrid ? gridValue(held) : plainValue(held);
    v.price = clamped(held, v.price);
    const double now = payoff(o, o.spot);
    if (now > 0 && now >= v.price) return exercisedValue(o);
    if (onGrid) addSlopes(o, v);
    return v;
}

}  // namespace servers
