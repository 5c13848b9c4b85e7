#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "quor/calculators/core/Black76.h"

#include <cmath>
#include <stdexcept>

namespace {

// At arguments all over the range, against the closed form.
double normalDistributionMicroseconds() {
    constexpr int kCalls = 2000;
    double worst = 0;
    const double seconds = medianSeconds(7, [&] {
        for (int i = 0; i < kCalls; ++i) {
            const double x = -4 + 8.0 * i / kCalls;
            worst =
                std::max(worst, std::fabs(quor::black76::normalDistribution(x) - std::erfc(-x / std::sqrt(2.0)) / 2));
        }
    });
    if (!(worst < 1e-12)) throw std::runtime_error("the normal distribution is off");
    return seconds * 1e6 / kCalls;
}

// Put-call parity holds for every strike of the chain.
double chainMilliseconds() {
    constexpr int kStrikes = 200;
    double worst = 0;
    const double seconds = medianSeconds(15, [&] {
        for (int i = 0; i < kStrikes; ++i) {
            const quor::black76::Inputs in{23450.5, 0.065, 24 / 365.0, 0.14, 18500 + 50.0 * i};
            const quor::black76::Outputs call = quor::black76::call(in);
            const quor::black76::Outputs put = quor::black76::put(in);
            const double parity = std::exp(-in.r * in.T) * (in.F - in.K);
            worst = std::max(worst, std::fabs(call.price - put.price - parity) / in.F);
            worst = std::max(worst, std::fabs(call.delta - put.delta - std::exp(-in.r * in.T)));
            worst = std::max(worst, std::fabs(call.gamma - put.gamma) + std::fabs(call.vega - put.vega));
        }
    });
    if (!(worst < 1e-10)) throw std::runtime_error("put-call parity does not hold");
    return seconds * 1e3;
}

}  // namespace

void benchBlack76(Figures& figures) {
    figures.push_back({"norm_dist_us", normalDistributionMicroseconds(), "us",
                       "one cumulative normal distribution, Simpson with 2000 steps; 2000 calls, median of 7", 30, 6});
    figures.push_back({"black76_chain_ms", chainMilliseconds(), "ms",
                       "200 strikes, call and put, all six outputs; median of 15", 40, 8});
}
