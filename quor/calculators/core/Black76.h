// Black-76: European options on futures and forwards (F. Black, "The pricing of commodity contracts", Journal of
// Financial Economics 3, 1976). The cumulative normal distribution is Simpson's rule over a fixed number of steps, and
// that rule, not a library's erf, decides the digits of every result.
#pragma once

#include "quor/platform/Base.h"

namespace quor::black76 {

// Nothing is checked: with T or sigma 0 (or bad values) the results are what floating point gives, NaN and infinity
// included.
struct Inputs {
    double F = 0;      // price of the underlying future
    double r = 0;      // interest rate a year, continuous (0.09 is 9 %)
    double T = 0;      // years to expiry
    double sigma = 0;  // volatility a year (0.25 is 25 %)
    double K = 0;      // strike, in the unit of F
};

struct Outputs {
    double price = 0;  // in the unit of F, paid today
    double delta = 0;  // change of the price per 1 of F
    double gamma = 0;  // change of delta per 1 of F
    double theta = 0;  // change of the price per calendar day that passes (a year has 365)
    double vega = 0;   // change of the price per point of volatility (1 point = 0.01)
    double rho = 0;    // change of the price per point of the rate (1 point = 0.01), with F unchanged
};

// The area under the standard normal density left of `x`: Simpson's rule with 2000 steps over [0, x], added to 0.5.
// Exactly 0 below -10 and exactly 1 above 10; NaN for NaN. Within 1e-13 of the rule computed with one exponential a
// point (the rule itself is off the true value by at most 1e-10 at |x| = 10, and far less near 0).
QUOR_CONTROLS_API double normalDistribution(double x);

QUOR_CONTROLS_API Outputs call(const Inputs& in);
QUOR_CONTROLS_API Outputs put(const Inputs& in);

}  // namespace quor::black76
