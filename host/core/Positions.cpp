#include "host/core/Positions.h"

#include <cmath>

namespace terminal {

namespace {

constexpr int kLotsAtMost = 40;
constexpr Quantity kLot = 25;
constexpr unsigned kShortOneIn = 6;
constexpr Price kAveragePerMille = 120;  // the farthest that an average price lies from the market's

// SplitMix64's finisher (Steele, Lea, Flood 2014): any seed and number give bits that look drawn.
std::uint64_t drawn(std::uint64_t seed, std::uint64_t number) {
    std::uint64_t z = seed + (number + 1) * 0x9E3779B97F4A7C15u;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
}

double units(Price price) { return static_cast<double>(price) / static_cast<double>(kPriceOne); }

double worth(Price price, Quantity quantity) { return units(price) * static_cast<double>(quantity); }

Result resultOf(double money, double base) {
    if (base == 0) return {money, std::nullopt};
    return {money, 100 * money / std::abs(base)};
}

// Off the market price by some per mille, in whole ticks; that price itself where the sum would not fit.
Price averageNear(Price price, Price tickSize, std::uint64_t draw) {
    const Price off = price / 1000 * (static_cast<Price>(draw % (2 * kAveragePerMille + 1)) - kAveragePerMille);
    if (off > 0 ? price > kLargestPrice - off : price < -kLargestPrice - off) return price;
    const Price average = price + off;
    return tickSize > 0 ? average - average % tickSize : average;
}

}  // namespace

double valueOf(const Position& position) { return worth(position.last, position.quantity); }

Result dayResult(const Position& position) {
    if (position.close == kNoPrice) return {};
    const double base = worth(position.close, position.quantity);
    return resultOf(valueOf(position) - base, base);
}

Result totalResult(const Position& position) {
    const double base = worth(position.average, position.quantity);
    return resultOf(valueOf(position) - base, base);
}

void Positions::instrument(const Instrument& news) {
    if (news.id != m_held.size()) return;
    auto& held = m_held.emplace_back();
    const bool chosen = news.id == 0 || drawn(m_seed, news.id) % 2 == 0;
    if (!chosen || m_heldCount == m_most) return;
    ++m_heldCount;
    held.emplace().instrument = news;
}

Positions::Held* Positions::find(InstrumentId id) { return id < m_held.size() && m_held[id] ? &*m_held[id] : nullptr; }

Position& Positions::open(const Held& held, Price last) {
    const std::uint64_t draw = drawn(~m_seed, held.instrument.id);
    const Quantity quantity = kLot * static_cast<Quantity>(1 + draw % kLotsAtMost);
    Position& position = m_positions.emplace_back();
    position.instrument = held.instrument;
    position.quantity = draw / kLotsAtMost % kShortOneIn == 0 ? -quantity : quantity;
    position.average = averageNear(held.close == kNoPrice ? last : held.close, held.instrument.tickSize, draw >> 20);
    position.close = held.close;
    return position;
}

const Position* Positions::quote(const Quote& news) {
    Held* const held = find(news.instrument);
    if (!held || !(news.has(quoteLast) || news.has(quoteClose))) return nullptr;
    if (news.has(quoteClose)) held->close = news.close;
    if (!held->position && !news.has(quoteLast)) return nullptr;
    if (!held->position) held->position = &open(*held, news.last);
    if (news.has(quoteLast)) held->position->last = news.last;
    held->position->close = held->close;
    return held->position;
}

Portfolio Positions::total() const {
    Portfolio sum;
    double day = 0, dayBase = 0, total = 0, totalBase = 0;
    bool hasDay = false;
    for (const Position& position : m_positions) {
        sum.value += valueOf(position);
        total += *totalResult(position).money;
        totalBase += std::abs(worth(position.average, position.quantity));
        const Result ofDay = dayResult(position);
        if (!ofDay.money) continue;
        hasDay = true;
        day += *ofDay.money;
        dayBase += std::abs(worth(position.close, position.quantity));
    }
    if (hasDay) sum.day = resultOf(day, dayBase);
    if (!m_positions.empty()) sum.total = resultOf(total, totalBase);
    return sum;
}

}  // namespace terminal
