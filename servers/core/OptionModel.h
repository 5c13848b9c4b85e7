// European and American options on an asset with a cost of carry.
//
// European: the generalised Black-Scholes formula (Black and Scholes 1973, Merton 1973, with the cost of carry as in
// E. G. Haug, "The Complete Guide to Option Pricing Formulas"). The carry says what the asset is: b = r a share without
// dividends, b = r - q one with a dividend yield q, b = 0 a future, b = r - rf a currency.
//
// American: finite differences with the greater of holding and exercise at every node (Brennan and Schwartz 1977; see
// ExerciseGrid.h), for every sign of rate and carry; the European formula where early exercise never pays. Of 2,000
// random options (strike 100, spot 50 to 200, up to three years, rate and carry within 15 % of 0, volatility 5 % to
// 100 %) the default steps and 700 differed by 6e-4 or less in nine of ten, by 3e-3 in 99 of 100, by 0.01 at most.
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
    // Cash paid before expiry, at its present value; from 0 to below the spot. It has no date: an American option is
    // exercised now, on the spot as it is, or held, on the spot without it.
    double dividends = 0;
    Right right = Right::Call;
    Exercise exercise = Exercise::European;
    // In time, of the American grid; 0 for kDefaultSteps. Fewer than 5 count as 5, and hard lives take more than asked.
    int steps = 0;
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

constexpr int kDefaultSteps = 80;
constexpr int kMaximalSteps = 5001;

// Refusal (BadArgument) for numbers outside the ranges above, NaN and infinity included. An American option costs at
// least what exercise now brings, at least the European one, and lies within its bounds. Exercised at once it has a
// delta of 1 or -1, and no other slope. At expiry or without volatility the price is that of the certain payment, delta
// is a half where spot and strike meet, gamma and vega 0; theta and rho are those of the best time to exercise.
Valuation value(const Option& option);

// The price alone, for searches: no grids for vega and rho.
double price(const Option& option);

// What the price lies between, whatever the volatility: its limits for a volatility of 0 and of infinity. They
// meet where exercise now brings more than the rest of the asset can be worth: a call with dividends above its strike.
struct Bounds {
    double lower = 0;
    double upper = 0;
};
Bounds priceBounds(const Option& option);

// The volatility at which `price(option)` is the given price; option.volatility is not read. A bracket is kept around
// the answer at every step (TOMS 748: Alefeld, Potra, Shi 1995), so the search cannot run away. A price at its lower
// bound gives 0. A price made by price() gives its volatility (1 % to 300 %) back to 1e-5 if it lies 1e-4 or more
// (strike 100) above its lower bound. Refusal (OutsideBounds) for a price below the lower bound or from the
// upper bound on, and for an option at expiry; Refusal (BadArgument) as in value().
double impliedVolatility(const Option& option, double price);

// Refusal (BadArgument) unless all of the numbers are in their ranges.
void check(const Option& option);

}  // namespace servers
