// The oracle of American prices: plain binomial trees (Cox, Ross, Rubinstein 1979), which share nothing with the grid
// that is tested. They have errors of their own, seen by what they make of the European option.
#pragma once

#include "servers/core/OptionModel.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace option_test {

struct TreePrices {
    double american = 0, european = 0;
    bool valid = true;  // probabilities between 0 and 1
};

inline TreePrices plainTree(const servers::Option& o, int steps) {
    const double dt = o.years / steps, move = o.volatility * std::sqrt(dt), up = std::exp(move), down = 1 / up;
    const double p = (std::exp(o.carry * dt) - down) / (up - down), discount = std::exp(-o.rate * dt);
    if (!(p > 0 && p < 1)) return {0, 0, false};
    const double sign = o.right == servers::Right::Call ? 1 : -1, reduced = o.spot - o.dividends;
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
inline TreePrices plainTrees(const servers::Option& o, int steps = 800) {
    const TreePrices even = plainTree(o, steps), odd = plainTree(o, steps + 1);
    const double now = o.right == servers::Right::Call ? o.spot - o.strike : o.strike - o.spot;
    return {std::max((even.american + odd.american) / 2, now), (even.european + odd.european) / 2,
            even.valid && odd.valid};
}

}  // namespace option_test
