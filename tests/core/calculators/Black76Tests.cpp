#include "quor/calculators/core/Black76.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace {

// The rule in its plain form: one exponential a point, added in order.
double plainSimpson(double x) {
    if (x < -10.0) return 0.0;
    if (x > 10.0) return 1.0;
    const auto f = [](double t) { return std::exp(-t * t / 2); };
    const double h = x / 2000;
    double sum = f(0) + 4 * f(h) + f(x);
    for (int i = 1; i <= 999; ++i) {
        const double t = 2 * i * h;
        sum += 2 * f(t) + 4 * f(t + h);
    }
    return 0.5 + h * sum / 3 / std::sqrt(8 * std::atan(1.0));
}

double exactN(double x) { return std::erfc(-x / std::sqrt(2.0)) / 2; }

double exactDensity(double x) { return std::exp(-x * x / 2) / std::sqrt(2 * std::acos(-1.0)); }

// Prices and sensitivities written down another way: by erfc, theta and rho from the general derivatives.
quor::black76::Outputs closedForm(const quor::black76::Inputs& in, int sign) {
    const double v = in.sigma * std::sqrt(in.T);
    const double d1 = std::log(in.F / in.K) / v + v / 2;
    const double d2 = std::log(in.F / in.K) / v - v / 2;
    const double discount = std::exp(-in.r * in.T);
    quor::black76::Outputs out;
    out.price = sign * discount * (in.F * exactN(sign * d1) - in.K * exactN(sign * d2));
    out.delta = sign * discount * exactN(sign * d1);
    out.gamma = discount * exactDensity(d1) / (in.F * v);
    out.theta = (in.r * out.price - discount * in.F * exactDensity(d1) * in.sigma / (2 * std::sqrt(in.T))) / 365;
    out.vega = discount * in.F * exactDensity(d1) * std::sqrt(in.T) / 100;
    out.rho = -in.T * out.price / 100;
    return out;
}

void expectSame(const quor::black76::Outputs& got, const quor::black76::Outputs& want, double scale) {
    EXPECT_NEAR(got.price, want.price, 1e-11 * scale);
    EXPECT_NEAR(got.delta, want.delta, 1e-11);
    EXPECT_NEAR(got.gamma, want.gamma, 1e-11 * (1 + want.gamma));
    EXPECT_NEAR(got.theta, want.theta, 1e-11 * scale);
    EXPECT_NEAR(got.vega, want.vega, 1e-11 * scale);
    EXPECT_NEAR(got.rho, want.rho, 1e-11 * scale);
}

TEST(Black76, NormalDistributionIsThePlainRuleWithin1e13) {
    const auto probe = [](double x) {
        EXPECT_NEAR(quor::black76::normalDistribution(x), plainSimpson(x), 1e-13) << "at " << x;
    };
    for (int i = -2000; i <= 2000; ++i) probe(i / 200.0);  // 10 and -10 still go through the integral
    for (double x : {1e-310, 1e-300, 1e-16, 1e-8, -1e-8, -1e-310}) probe(x);
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, double> edges[] = {
        {0, 0.5}, {10.000001, 1}, {-10.000001, 0}, {infinity, 1}, {-infinity, 0}};
    for (const auto& [x, expected] : edges) EXPECT_EQ(quor::black76::normalDistribution(x), expected) << x;
    EXPECT_TRUE(std::isnan(quor::black76::normalDistribution(std::nan(""))));
}

TEST(Black76, AllOutputsAgainstTheClosedForm) {
    for (double F : {20.0, 100.0, 23456.75})
        for (double moneyness : {0.6, 0.95, 1.0, 1.05, 1.7})
            for (double T : {1.0 / 365, 0.25, 2.0})
                for (double sigma : {0.05, 0.25, 0.9})
                    for (double r : {0.0, 0.09}) {
                        const quor::black76::Inputs in{F, r, T, sigma, F * moneyness};
                        expectSame(quor::black76::call(in), closedForm(in, 1), F);
                        expectSame(quor::black76::put(in), closedForm(in, -1), F);
                    }
}

TEST(Black76, NoTimeOrNoVolatilityIsWhatFloatingPointGives) {
    for (const double years : {0.0, 0.5}) {
        const quor::black76::Inputs in{110, 0.05, years, years ? 0 : 0.2, 100};
        const quor::black76::Outputs call = quor::black76::call(in);
        const double discount = std::exp(-in.r * in.T);
        EXPECT_EQ(call.price, discount * 10);  // d1 and d2 are +infinity
        EXPECT_EQ(call.delta, discount);
        EXPECT_EQ(quor::black76::put(in).price, 0);
        EXPECT_TRUE(std::isnan(call.gamma));  // 0 / 0
    }
    // At the money 0 / 0 is NaN and runs through everything that needs d1.
    const quor::black76::Outputs even = quor::black76::put({100, 0.05, 0, 0.2, 100});
    EXPECT_TRUE(std::isnan(even.price));
    EXPECT_TRUE(std::isnan(even.delta));
}

}  // namespace
