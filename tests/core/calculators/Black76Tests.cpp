#include "src/calculators/core/Black76.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

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

void expectSame(const quor::black76::Outputs& got, const quor::black76::Outputs& want, double scale, const char* what) {
    EXPECT_NEAR(got.price, want.price, 1e-11 * scale) << what;
    EXPECT_NEAR(got.delta, want.delta, 1e-11) << what;
    EXPECT_NEAR(got.gamma, want.gamma, 1e-11 * (1 + want.gamma)) << what;
    EXPECT_NEAR(got.theta, want.theta, 1e-11 * scale) << what;
    EXPECT_NEAR(got.vega, want.vega, 1e-11 * scale) << what;
    EXPECT_NEAR(got.rho, want.rho, 1e-11 * scale) << what;
}

TEST(Black76, NormalDistributionIsThePlainRuleWithin1e13) {
    double worst = 0;
    const auto probe = [&worst](double x) {
        const double difference = std::fabs(quor::black76::normalDistribution(x) - plainSimpson(x));
        EXPECT_LE(difference, 1e-13) << "at " << x;
        worst = std::max(worst, difference);
    };
    for (int i = -1000; i <= 1000; ++i) probe(i / 100.0);
    for (double x : {1e-310, 1e-300, 1e-16, 1e-8, -1e-8, -1e-310}) probe(x);
    std::mt19937 random(20251);
    std::uniform_real_distribution<double> uniform(-10, 10);
    for (int i = 0; i < 500; ++i) probe(uniform(random));
    RecordProperty("worst_difference", std::to_string(worst));
}

TEST(Black76, NormalDistributionAtItsEdges) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(quor::black76::normalDistribution(0), 0.5);
    EXPECT_EQ(quor::black76::normalDistribution(10.000001), 1.0);
    EXPECT_EQ(quor::black76::normalDistribution(-10.000001), 0.0);
    EXPECT_EQ(quor::black76::normalDistribution(infinity), 1.0);
    EXPECT_EQ(quor::black76::normalDistribution(-infinity), 0.0);
    EXPECT_TRUE(std::isnan(quor::black76::normalDistribution(std::nan(""))));
    // 10 and -10 still go through the integral: the rule's own error shows.
    EXPECT_EQ(quor::black76::normalDistribution(10.0) == 1.0, plainSimpson(10.0) == 1.0);
    EXPECT_NEAR(quor::black76::normalDistribution(10.0), 1.0, 1e-10);
    EXPECT_NEAR(quor::black76::normalDistribution(-10.0), 0.0, 1e-10);
    for (double x = -10; x <= 10; x += 0.25)
        EXPECT_NEAR(quor::black76::normalDistribution(x) + quor::black76::normalDistribution(-x), 1.0, 3e-16) << x;
}

TEST(Black76, AllOutputsAgainstTheClosedForm) {
    for (double F : {20.0, 100.0, 23456.75})
        for (double moneyness : {0.6, 0.95, 1.0, 1.05, 1.7})
            for (double T : {1.0 / 365, 0.25, 2.0})
                for (double sigma : {0.05, 0.25, 0.9})
                    for (double r : {0.0, 0.09}) {
                        const quor::black76::Inputs in{F, r, T, sigma, F * moneyness};
                        expectSame(quor::black76::call(in), closedForm(in, 1), F, "call");
                        expectSame(quor::black76::put(in), closedForm(in, -1), F, "put");
                        // Parity: a call less a put is the discounted difference of future and strike.
                        EXPECT_NEAR(quor::black76::call(in).price - quor::black76::put(in).price,
                                    std::exp(-r * T) * (F - in.K), 1e-11 * F);
                    }
}

TEST(Black76, PublishedFigure) {
    // A textbook put: F 20, K 20, r 9 %, sigma 25 %, four months.
    EXPECT_NEAR(quor::black76::put({20, 0.09, 4.0 / 12, 0.25, 20}).price, 1.1166, 5e-5);
}

TEST(Black76, ThetaVegaAndDeltaAreTheSlopesTheirUnitsSay) {
    const quor::black76::Inputs in{100, 0.05, 0.5, 0.3, 104};
    const auto moved = [&in](double quor::black76::Inputs::*field, double by) {
        quor::black76::Inputs other = in;
        other.*field += by;
        return quor::black76::call(other);
    };
    const double step = 1e-5;
    const auto slope = [&](double quor::black76::Inputs::*field) {
        return (moved(field, step).price - moved(field, -step).price) / (2 * step);
    };
    const quor::black76::Outputs out = quor::black76::call(in);
    EXPECT_NEAR(out.delta, slope(&quor::black76::Inputs::F), 1e-6);
    EXPECT_NEAR(out.theta, -slope(&quor::black76::Inputs::T) / 365, 1e-6);
    EXPECT_NEAR(out.vega, slope(&quor::black76::Inputs::sigma) / 100, 1e-6);
    EXPECT_NEAR(out.rho, slope(&quor::black76::Inputs::r) / 100, 1e-6);
    EXPECT_NEAR(out.gamma,
                (moved(&quor::black76::Inputs::F, 1e-3).delta - moved(&quor::black76::Inputs::F, -1e-3).delta) / 2e-3,
                1e-6);
}

TEST(Black76, AtTheMoneyWithoutInterestCallAndPutCostTheSame) {
    const quor::black76::Inputs in{250, 0, 0.75, 0.4, 250};
    EXPECT_NEAR(quor::black76::call(in).price, quor::black76::put(in).price, 1e-12);
    EXPECT_NEAR(quor::black76::call(in).delta + quor::black76::put(in).delta + 1, 2 * quor::black76::call(in).delta,
                1e-12);
}

TEST(Black76, NoTimeOrNoVolatilityIsWhatFloatingPointGives) {
    for (const quor::black76::Inputs& in :
         {quor::black76::Inputs{110, 0.05, 0, 0.2, 100}, quor::black76::Inputs{110, 0.05, 0.5, 0, 100}}) {
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
