// European and American options on an asset with a cost of carry.
//
// European: the generalised Black-Scholes formula (Black and Scholes 1973, Merton 1973, with the cost of carry as in
// E. G. Haug, "The Complete Guide to Option Pricing Formulas"). The carry says what the asset is: b = r a share without
// dividends, b = r - q one with a dividend yield q, b = 0 a future, b = r - rf a currency.
//
// American: the binomial tree of Leisen and Reimer ("Binomial models for option valuation", 1996), corrected by the
// known error of the same tree for the European option (the control variate of Hull and White, 1988) and extrapolated
// over the number of steps (Broadie and Detemple, 1996). With the default steps prices are within 3e-4 of the limit for
// a spot of 100.
//
// Nothing here keeps state; every function may be called from any thread.
#pragma once

namespace servers {

enum class Right { Call, Put };
enum class Exercise { European, American };

struct Option {
    double spot = 0;        // price of the asset, above 0
    double strike = 0;      // in the unit of the spot, above 0
    double years = 0;       // to expiry, 0 or more
    double rate = 0;        // interest a year, continuous: 0.1 is 10 %
    double carry = 0;       // cost of carry a year, continuous
    double volatility = 0;  // a year, 0 or more: 0.2 is 20 %
    double dividends =
        0;  // cash paid before expiry, at its present value; from 0 to below the spot, it is taken off it
    Right right = Right::Call;
    Exercise exercise = Exercise::European;
    int steps = 0;  // of the tree, 0 for kDefaultSteps; even numbers count as the next odd one, 5 at least
};

struct Valuation {
    double price = 0;  // in the unit of the spot, paid today
    double delta = 0;  // change of the price per 1 of spot
    double gamma = 0;  // change of delta per 1 of spot
    double theta = 0;  // change of the price per calendar day that passes (a year has 365)
    double vega = 0;   // change of the price per point of volatility (0.01)
    // Change of the price per point of the rate (0.01). The carry moves with the rate (the yield r - b stays), unless
    // it is exactly 0: an option on a future, whose price stays.
    double rho = 0;
};

constexpr int kDefaultSteps = 201;
constexpr int kMaximalSteps = 5001;

// Refusal (BadArgument) for numbers outside the ranges above, NaN and infinity included. At expiry or without
// volatility the price is that of the certain payment, delta is a half where spot and strike meet, gamma and vega 0.
Valuation value(const Option& option);

// The price alone, for searches: no trees for the Greeks.
double price(const Option& option);

// What the price lies between, whatever the volatility: its limits for a volatility of 0 and of infinity.
struct Bounds {
    double lower = 0;
    double upper = 0;
};
Bounds priceBounds(const Option& option);

// The volatility at which `price(option)` is the given price; option.volatility is not read. A bracket is kept around
// the answer at every step (TOMS 748: Alefeld, Potra, Shi 1995), so the search cannot run away. A price at its lower
// bound gives 0. Refusal (OutsideBounds) for a price below the lower bound or from the upper bound on, and for an
// option at expiry; Refusal (BadArgument) as in value().
double impliedVolatility(const Option& option, double price);

// Refusal (BadArgument) unless all of the numbers are in their ranges.
void check(const Option& option);

}  // namespace servers
