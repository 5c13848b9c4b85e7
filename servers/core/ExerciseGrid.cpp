// Three things make the grid fast: the equations of one time are the same at every node, so the elimination needs one
// pivot, its limit, and no division; a node that is exercised at one time is exercised at all later ones, so each time
// is solved from a little inside the former boundary outward; and the prices at the ends hardly matter, so they are
// those without volatility.
#include "servers/core/ExerciseGrid.h"

#include "servers/core/OptionModelInternal.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace servers {

namespace {

constexpr int kFewestSteps = 5;
constexpr double kMostStretched = 8;     // times as many steps as asked for, where a life needs more
constexpr double kNodesPerStep = 0.5;    // nodes in one standard deviation of the life, for every step of time
constexpr double kDeviations = 4;        // from the spot, or from where the drift leads, to the ends
constexpr double kWidestSpacing = 0.05;  // of the spots' logarithms
constexpr int kMostNodes = 4000;
constexpr double kNoPrice = -1e300;
constexpr int kBoundaryMove = 4;          // nodes that the boundary of exercise is expected to move in one step at most
constexpr double kUncertainDistance = 7;  // deviations from the strike beyond which the European price is certain

int stepsOf(const Option& o) { return o.steps == 0 ? kDefaultSteps : std::max(o.steps, kFewestSteps); }

// More steps where the interest of the life is large, or where the drift carries the price far in terms of its
// deviation: the error of a step falls with what happens in it.
int timesOf(const Option& o) {
    const double interest = (std::abs(o.rate) + std::abs(o.carry)) * o.years;
    const double drift = std::abs(o.carry) * std::sqrt(o.years) / o.volatility;
    return static_cast<int>(std::ceil(stepsOf(o) * std::clamp(std::max(interest, drift), 1.0, kMostStretched)));
}

struct Layout {
    double spacing;  // of the logarithms
    int root;        // node of the option's spot
    int count;
};

Layout layoutOf(const Option& o) {
    const double deviation = o.volatility * std::sqrt(o.years), variance = o.volatility * o.volatility;
    const double low = std::min(0.0, (o.carry - variance / 2) * o.years) - kDeviations * deviation;
    const double high = std::max(0.0, (o.carry + variance / 2) * o.years) + kDeviations * deviation;
    double spacing = std::min(deviation / (kNodesPerStep * stepsOf(o)), kWidestSpacing);
    if (o.carry != 0) spacing = std::min(spacing, variance / std::abs(o.carry));
    spacing = std::max(spacing, (high - low) / kMostNodes);
    const int root = static_cast<int>(std::ceil(-low / spacing));
    return {spacing, root, root + static_cast<int>(std::ceil(high / spacing)) + 1};
}

// One step of time: (down + up + rest) x[j] - down x[j-1] - up x[j+1] = now * V[j] + before * V'[j].
struct Equation {
    double now, before;
    double down, up;
    double pivot;  // limit of the elimination's pivots
};

// European prices at many spots: by formula where the outcome is uncertain, else what is certain.
class HeldToExpiry {
public:
    HeldToExpiry(const Option& option, double years) : m_option(option) {
        m_option.years = years;
        const double deviation = m_option.volatility * std::sqrt(years);
        const double uncertain = std::exp(deviation * (kUncertainDistance + deviation));
        const double forward = m_option.strike * std::exp(-m_option.carry * years);
        m_low = forward / uncertain;
        m_high = forward * uncertain;
        m_growth = std::exp((m_option.carry - m_option.rate) * years);
        m_certain = option;
        m_certain.strike *= std::exp(-m_option.rate * years);
    }

    double price(double spot) const {
        if (spot < m_low || spot > m_high) return std::max(0.0, payoff(m_certain, spot * m_growth));
        Option o = m_option;
        o.spot = spot;
        return europeanPrice(o);
    }

private:
    Option m_option, m_certain;
    double m_low, m_high;  // spots between which the outcome is uncertain
    double m_growth;
};

class Grid {
public:
    explicit Grid(const Option& option) : m_option(option), m_times(timesOf(option)), m_layout(layoutOf(option)) {
        const auto count = static_cast<std::size_t>(m_layout.count);
        for (auto* row : {&m_spots, &m_payoffs, &m_next, &m_now, &m_before, &m_eliminated}) row->resize(count);
        m_unlimited.assign(count, kNoPrice);
        for (std::size_t i = 0; i < count; ++i) {
            m_spots[i] = option.spot * std::exp((static_cast<int>(i) - m_layout.root) * m_layout.spacing);
            m_payoffs[i] = payoff(option, m_spots[i]);
        }
    }

    GridPrice solve() {
        startLevel(1, m_before);
        findExercised(startLevel(2, m_now));
        for (int time = 3; time <= m_times; ++time) step(time);
        return atRoot();
    }

private:
    // To expiry, at one of the times counted from there.
    double yearsAt(int time) const {
        const double part = static_cast<double>(time) / m_times;
        return m_option.years * part * part;
    }

    // Exercise only at this time or at expiry. The node where exercise gains most over holding, -1 if it gains nowhere.
    int startLevel(int time, std::vector<double>& level) const {
        const HeldToExpiry held(m_option, yearsAt(time));
        double most = 0;
        int node = -1;
        for (std::size_t i = 0; i < level.size(); ++i) {
            level[i] = held.price(m_spots[i]);
            const double gain = m_payoffs[i] - level[i];
            if (gain < 0) continue;
            level[i] = m_payoffs[i];
            if (gain < most) continue;
            most = gain;
            node = static_cast<int>(i);
        }
        return node;
    }

    bool exercised(const std::vector<double>& level, int node) const { return level[at(node)] <= m_payoffs[at(node)]; }
    int last() const { return m_layout.count - 1; }
    static std::size_t at(int node) { return static_cast<std::size_t>(node); }

    void findExercised(int node) {
        m_low = m_high = node;
        if (node < 0) return;
        while (m_low > 0 && exercised(m_now, m_low - 1)) --m_low;
        while (m_high < last() && exercised(m_now, m_high + 1)) ++m_high;
    }

    Equation equationOf(int time) const {
        const double dt = yearsAt(time) - yearsAt(time - 1), former = yearsAt(time - 1) - yearsAt(time - 2);
        const double ratio = dt / former;
        Equation e{};
        e.now = 1 + ratio;
        e.before = -ratio * ratio / (1 + ratio);
        // What stands before x[j] for a payment that is worth e^(-y t).
        const auto fitted = [&](double yield) {
            return e.now * std::exp(yield * dt) + e.before * std::exp(yield * (dt + former));
        };
        const double rest = fitted(m_option.rate), drift = rest - fitted(m_option.rate - m_option.carry);
        const double above = std::expm1(m_layout.spacing), below = -std::expm1(-m_layout.spacing);
        const double variance = std::max(m_option.volatility * m_option.volatility * dt, std::abs(drift) * above);
        e.up = (variance + drift * below) / (above * (above + below));
        e.down = (variance - drift * above) / (below * (above + below));
        const double diagonal = rest + e.up + e.down;
        e.pivot = (diagonal + std::sqrt(std::max(0.0, diagonal * diagonal - 4 * e.up * e.down))) / 2;
        return e;
    }

    void step(int time) {
        const Equation e = equationOf(time);
        m_years = yearsAt(time);
        if (m_low < 0) {
            solveOutward(e, last(), -1, m_payoffs);
        } else {
            solveAroundExercised(e);
        }
        m_before.swap(m_now);
        m_now.swap(m_next);
    }

    // From a node that is surely exercised outward: an end of the grid, or one between two boundaries.
    void solveAroundExercised(const Equation& e) {
        const int inmost = m_low == 0 ? 0 : m_high == last() ? last() : gainingNode(e);
        if (inmost < 0) {
            m_low = m_high = -1;
            return;
        }
        std::copy(m_payoffs.begin() + m_low, m_payoffs.begin() + m_high + 1, m_next.begin() + m_low);
        m_high = boundary(e, inmost, m_high, 1);
        m_low = boundary(e, inmost, m_low, -1);
        while (m_low < m_high && !exercised(m_next, m_low)) ++m_low;
    }

    // Holds everywhere, and gives the node where exercise would bring most more; -1 if it brings more nowhere, and then
    // the prices stand. That node is exercised: exercise at this time adds at every node at least what it would bring
    // there, and adds most at a node that is exercised, where it adds no more than that.
    int gainingNode(const Equation& e) {
        solveOutward(e, last(), -1, m_unlimited);
        double most = 0;
        int best = -1;
        for (int node = m_low; node <= m_high; ++node) {
            const double gain = m_payoffs[at(node)] - m_next[at(node)];
            if (gain <= most) continue;
            most = gain;
            best = node;
        }
        return best;
    }

    // Solves the nodes on one side and gives the last exercised one there.
    int boundary(const Equation& e, int inmost, int former, int direction) {
        const int end = direction > 0 ? last() : 0;
        if (former == end) return end;
        int from = former - direction * kBoundaryMove;
        if ((from - inmost) * direction < 0) from = inmost;
        for (;; from = inmost) {
            solveOutward(e, from, direction, m_payoffs);
            int node = from;
            while (node != end && exercised(m_next, node + direction)) node += direction;
            if (node != from || from == inmost) return node;
        }
    }

    double rightSide(const Equation& e, std::size_t node) const {
        return e.now * m_now[node] + e.before * m_before[node];
    }

    // What the option is worth without volatility: the price at an end.
    double certainAt(int node) const {
        Option o = m_option;
        o.spot = m_spots[at(node)];
        o.years = m_years;
        return certainAmericanPrice(o);
    }

    // Solves the nodes from `from`, whose price is known, to the end of the grid; no price is below `floor`.
    void solveOutward(const Equation& e, int from, int direction, const std::vector<double>& floor) {
        const int end = direction > 0 ? last() : 0;
        m_next[at(from)] = from == 0 || from == last() ? certainAt(from) : m_payoffs[at(from)];
        if (from == end) return;
        const double outer = direction > 0 ? e.up : e.down, inner = direction > 0 ? e.down : e.up;
        const double atEnd = certainAt(end), scale = 1 / e.pivot;
        // Chosen so that the price at the end is the one wanted, if its neighbour's is near the certain one.
        eliminate({end - direction, from, -direction}, e, outer * scale,
                  e.pivot * atEnd - inner * certainAt(end - direction));
        substitute({from + direction, end, direction}, scale, inner * scale, floor);
        m_next[at(end)] = atEnd;
    }

    // Both loops carry a number from node to node. They take two nodes at a time, so that it passes through half as
    // many operations one after the other.
    struct Walk {
        int node, end, direction;
        bool pair() const { return node != end && node + direction != end; }
    };

    void eliminate(Walk w, const Equation& e, double factor, double carried) {
        for (; w.pair(); w.node += 2 * w.direction) {
            const double first = rightSide(e, at(w.node)), second = rightSide(e, at(w.node + w.direction));
            m_eliminated[at(w.node)] = first + factor * carried;
            carried = (second + factor * first) + factor * factor * carried;
            m_eliminated[at(w.node + w.direction)] = carried;
        }
        if (w.node != w.end) m_eliminated[at(w.node)] = rightSide(e, at(w.node)) + factor * carried;
    }

    void substitute(Walk w, double scale, double factor, const std::vector<double>& floor) {
        double price = m_next[at(w.node - w.direction)];
        for (; w.pair(); w.node += 2 * w.direction) {
            const std::size_t i = at(w.node), k = at(w.node + w.direction);
            const double first = m_eliminated[i] * scale, second = m_eliminated[k] * scale;
            const double least = std::max(second + factor * floor[i], floor[k]);
            m_next[i] = std::max(first + factor * price, floor[i]);
            price = std::max((second + factor * first) + factor * factor * price, least);
            m_next[k] = price;
        }
        if (w.node != w.end)
            m_next[at(w.node)] = std::max(m_eliminated[at(w.node)] * scale + factor * price, floor[at(w.node)]);
    }

    GridPrice atRoot() const {
        const std::size_t root = at(m_layout.root);
        const double above = m_spots[root + 1] - m_spots[root], below = m_spots[root] - m_spots[root - 1];
        const double up = (m_now[root + 1] - m_now[root]) / above, down = (m_now[root] - m_now[root - 1]) / below;
        return {m_now[root], (up * below + down * above) / (above + below), 2 * (up - down) / (above + below)};
    }

    const Option& m_option;
    int m_times;
    Layout m_layout;
    double m_years = 0;           // to expiry, at the time being solved
    int m_low = -1, m_high = -1;  // exercised nodes; -1 if there are none
    std::vector<double> m_spots, m_payoffs;
    std::vector<double> m_next, m_now, m_before;  // prices at the time being solved and at the two solved last
    std::vector<double> m_eliminated;
    std::vector<double> m_unlimited;  // a floor that limits nothing
};

}  // namespace

GridPrice gridPrice(const Option& option) { return Grid(option).solve(); }

}  // namespace servers
