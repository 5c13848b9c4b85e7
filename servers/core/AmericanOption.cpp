// The tree of Leisen and Reimer: its probabilities are chosen so that the end nodes lie evenly around the strike, which
// makes the price converge smoothly (a plain binomial tree's price swings with the number of steps). The European
// option is carried along in the same nodes, and what a tree gives is the premium of the American option over it, added
// to the formula's results. The premium's error falls with one over the number of steps, so two trees, the second of
// half the steps, are extrapolated to infinitely many (Richardson): twenty times nearer than the first alone.
#include "servers/core/OptionModelInternal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace servers {

namespace {

// A node's probability this close to 0 or 1 leaves nothing uncertain, and the tree's factors would lose their digits.
constexpr double kCertain = 1e-13;

// Prices of both options at the first nodes: [step][number of up moves].
struct Corner {
    std::array<std::array<double, 3>, 3> american{};
    std::array<std::array<double, 3>, 3> european{};
    std::array<std::array<double, 3>, 3> spot{};
};

// Peizer and Pratt's inversion: the probability at which a binomial distribution of n steps has the normal value z.
double inverted(double z, int n) {
    const double shifted = n + 1.0 / 3 + 0.1 / (n + 1.0);
    const double inner = 1 - std::exp(-(z / shifted) * (z / shifted) * (n + 1.0 / 6));
    return 0.5 + std::copysign(0.5, z) * std::sqrt(inner);
}

struct Tree {
    int steps;
    double up, down;              // factors of the spot in one step
    double upWeight, downWeight;  // probabilities, discounted by one step
    bool certain;
};

// The tree needs an odd number of steps, and three at least for a gamma.
int stepsOf(const Option& o) { return std::max(o.steps == 0 ? kDefaultSteps : o.steps, 5) | 1; }

Tree treeOf(const Option& o, int steps) {
    Tree tree{};
    tree.steps = steps;
    const double deviation = o.volatility * std::sqrt(o.years);
    if (!(deviation > 0)) {
        tree.certain = true;
        return tree;
    }
    const double d1 = (std::log(o.spot / o.strike) + o.carry * o.years) / deviation + deviation / 2;
    const double p = inverted(d1 - deviation, tree.steps);
    const double pAsset = inverted(d1, tree.steps);
    tree.certain = p < kCertain || p > 1 - kCertain || pAsset < kCertain || pAsset > 1 - kCertain;
    if (tree.certain) return tree;
    const double dt = o.years / tree.steps;
    const double growth = std::exp(o.carry * dt);
    tree.up = growth * pAsset / p;
    tree.down = growth * (1 - pAsset) / (1 - p);
    tree.upWeight = std::exp(-o.rate * dt) * p;
    tree.downWeight = std::exp(-o.rate * dt) * (1 - p);
    return tree;
}

// Both options at the nodes of one step, from the lowest spot to the highest.
struct Level {
    std::vector<double> american, european;
};

Level lastLevel(const Option& o, const Tree& tree) {
    Level level;
    const auto count = static_cast<std::size_t>(tree.steps) + 1;
    level.american.resize(count);
    double spot = o.spot * std::pow(tree.down, tree.steps);
    for (double& price : level.american) {
        price = std::max(0.0, payoff(o, spot));
        spot *= tree.up / tree.down;
    }
    level.european = level.american;
    return level;
}

Corner fold(const Option& o, const Tree& tree) {
    Level level = lastLevel(o, tree);
    Corner corner;
    for (int step = tree.steps - 1; step >= 0; --step) {
        double spot = o.spot * std::pow(tree.down, step);
        for (std::size_t i = 0; i <= static_cast<std::size_t>(step); ++i) {
            level.european[i] = tree.downWeight * level.european[i] + tree.upWeight * level.european[i + 1];
            const double held = tree.downWeight * level.american[i] + tree.upWeight * level.american[i + 1];
            level.american[i] = std::max(held, payoff(o, spot));
            if (step < 3) {
                const auto s = static_cast<std::size_t>(step);
                corner.american[s][i] = level.american[i];
                corner.european[s][i] = level.european[i];
                corner.spot[s][i] = spot;
            }
            spot *= tree.up / tree.down;
        }
    }
    return corner;
}

double slope(const std::array<double, 3>& price, const std::array<double, 3>& spot, std::size_t from, std::size_t to) {
    return (price[to] - price[from]) / (spot[to] - spot[from]);
}

double curvature(const std::array<double, 3>& price, const std::array<double, 3>& spot) {
    return (slope(price, spot, 1, 2) - slope(price, spot, 0, 1)) / ((spot[2] - spot[0]) / 2);
}

// Early exercise never pays: a call whose asset grows at least as fast as interest, a put whose strike earns none.
bool neverEarly(const Option& o) { return o.right == Right::Call ? o.carry >= o.rate : o.rate <= 0; }

// What the right to exercise early adds to a European option.
struct Premium {
    double price = 0, delta = 0, gamma = 0;
    bool certain = false;    // no tree was possible
    bool exercised = false;  // the root itself is a node of exercise
};

Premium premiumOfTree(const Option& o, int steps) {
    Premium premium;
    const Tree tree = treeOf(o, steps);
    premium.certain = tree.certain;
    if (tree.certain) return premium;
    const Corner c = fold(o, tree);
    premium.price = c.american[0][0] - c.european[0][0];
    premium.delta = slope(c.american[1], c.spot[1], 0, 1) - slope(c.european[1], c.spot[1], 0, 1);
    premium.gamma = curvature(c.american[2], c.spot[2]) - curvature(c.european[2], c.spot[2]);
    const double now = payoff(o, o.spot);
    premium.exercised = now > 0 && c.american[0][0] <= now;
    return premium;
}

Premium premiumOf(const Option& o) {
    const int steps = stepsOf(o), fewer = (steps / 2) | 1;
    Premium premium = premiumOfTree(o, steps);
    const Premium coarse = premiumOfTree(o, fewer);
    if (premium.certain || premium.exercised || coarse.certain) return premium;
    const double weight = static_cast<double>(fewer) / (steps - fewer);
    premium.price += weight * (premium.price - coarse.price);
    premium.delta += weight * (premium.delta - coarse.delta);
    premium.gamma += weight * (premium.gamma - coarse.gamma);
    return premium;
}

double correctedPrice(const Option& o, const Premium& premium, double european) {
    return std::max({european + premium.price, european, payoff(o, o.spot)});
}

// Exercised at once: worth what it pays, and moves with the spot alone.
Valuation exercised(const Option& o) {
    Valuation v;
    v.price = payoff(o, o.spot);
    v.delta = o.right == Right::Call ? 1 : -1;
    return v;
}

Option bumped(Option o, double volatility, double rate) {
    o.volatility += volatility;
    if (o.carry != 0) o.carry += rate;
    o.rate += rate;
    return o;
}

// The Black-Scholes equation gives the theta of an option that is held: the tree has no node of the same spot later.
double yearlyTheta(const Option& o, const Valuation& v) {
    return o.rate * v.price - o.carry * o.spot * v.delta - o.volatility * o.volatility * o.spot * o.spot * v.gamma / 2;
}

// More volatility than a tree can hold: the price has reached its upper bound.
bool boundless(const Option& o) { return o.volatility * std::sqrt(o.years) > kLargestDeviation; }

Valuation boundlessValue(const Option& o) {
    Valuation v;
    v.price = o.right == Right::Call ? o.spot : o.strike;
    v.delta = o.right == Right::Call ? 1 : 0;
    return v;
}

// Nothing uncertain: delta by a small step of the spot; gamma, vega and rho are left at 0.
Valuation certainValue(const Option& o) {
    Valuation v;
    v.price = std::max(europeanPrice(o), certainAmericanPrice(o));
    const double step = o.spot * 1e-6;
    Option up = o, down = o;
    up.spot += step;
    down.spot -= step;
    v.delta = (certainAmericanPrice(up) - certainAmericanPrice(down)) / (2 * step);
    if (o.years > 0) v.theta = (o.rate * v.price - o.carry * o.spot * v.delta) / kDaysInYear;
    return v;
}

}  // namespace

double certainAmericanPrice(const Option& o) {
    const auto exercisedAt = [&o](double t) {
        return payoff(o, o.spot * std::exp(o.carry * t)) * std::exp(-o.rate * t);
    };
    double best = std::max({0.0, exercisedAt(0), exercisedAt(o.years)});
    // Where the payoff's present value stands still in time.
    const double ratio = o.rate * o.strike / ((o.rate - o.carry) * o.spot);
    if (o.carry != 0 && ratio > 0 && std::isfinite(ratio)) {
        const double still = std::log(ratio) / o.carry;
        if (still > 0 && still < o.years) best = std::max(best, exercisedAt(still));
    }
    return best;
}

double americanPrice(const Option& option) {
    if (neverEarly(option)) return europeanPrice(option);
    if (boundless(option)) return boundlessValue(option).price;
    const double european = europeanPrice(option);
    const Premium premium = premiumOf(option);
    if (premium.certain) return std::max(european, certainAmericanPrice(option));
    return correctedPrice(option, premium, european);
}

Valuation americanValue(const Option& option) {
    if (neverEarly(option)) return europeanValue(option);
    if (boundless(option)) return boundlessValue(option);
    const Premium premium = premiumOf(option);
    if (premium.certain) return certainValue(option);
    if (premium.exercised) return exercised(option);

    Valuation v = europeanValue(option);
    v.price = correctedPrice(option, premium, v.price);
    v.delta += premium.delta;
    v.gamma += premium.gamma;
    v.theta = yearlyTheta(option, v) / kDaysInYear;
    const double volatilityStep = std::min(kPoint / 10, option.volatility / 2);
    v.vega = (americanPrice(bumped(option, volatilityStep, 0)) - americanPrice(bumped(option, -volatilityStep, 0))) /
             (2 * volatilityStep) * kPoint;
    constexpr double rateStep = kPoint / 10;
    v.rho = (americanPrice(bumped(option, 0, rateStep)) - americanPrice(bumped(option, 0, -rateStep))) /
            (2 * rateStep) * kPoint;
    return v;
}

}  // namespace servers
