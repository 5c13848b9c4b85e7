// The option chain of one underlying: which underlying, which strikes and expiry, what its options are quoted at, and
// when all of that is computed again. No window and no server: who values an option comes in as an OptionPricer.
//
// The feed has no options. Their quotes are made here: the model's price at the volatility of a fixed smile, rounded to
// the underlying's tick size as an exchange would. Implied volatility and Greeks are then computed from the quote.
#pragma once

#include "host/core/MarketData.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

namespace terminal {

// One European option. Money in currency units; rates a year, continuous.
struct OptionTerms {
    double underlying = 0;
    double strike = 0;
    double years = 0;  // to expiry
    double rate = 0;
    double carry = 0;  // the rate for a share, 0 for a future
    bool future = false;
    bool put = false;
};

// Theta is per calendar day, vega per point (0.01) of volatility, delta and gamma per 1 of the underlying.
struct OptionValues {
    double price = 0, delta = 0, gamma = 0, theta = 0, vega = 0;
};

// Values options. Each call stands alone; empty: there is no such value, and nothing else happened.
class OptionPricer {
public:
    virtual ~OptionPricer() = default;
    virtual std::optional<OptionValues> value(const OptionTerms& terms, double volatility) = 0;
    virtual std::optional<double> impliedVolatility(const OptionTerms& terms, double price) = 0;
};

// One side of a row. `values` is empty when the option could not be priced; then so is the volatility. The volatility
// alone is empty when no volatility gives the quote, or nobody can compute it: the Greeks are then the smile's.
struct OptionFigures {
    std::optional<OptionValues> values;  // its price is the quote
    std::optional<double> volatility;    // implied, a year: 0.2 is 20 %
};

struct ChainRow {
    Price strike = 0;
    OptionFigures call, put;
};

// What a chain follows from: two equal ones give the same chain.
struct ChainBasis {
    InstrumentId instrument = 0;
    bool future = false;
    Price price = 0;     // of the underlying, above 0
    Price tickSize = 0;  // 0: not known, quotes are then rounded to 0.01
    MarketTime time = 0;
    bool operator==(const ChainBasis&) const = default;
};

// The last price; without one the middle of bid and ask. Empty: there is neither, or it is not above 0.
std::optional<Price> underlyingPrice(const Quote& quote);

// An instrument as one that may have options.
enum class Candidate {
    no,         // it has no price yet
    fallback,   // a price, but a series other than EQ or FUT
    preferred,  // a price, and of series EQ or FUT
};
Candidate candidateOf(const Instrument& instrument, const Quote& quote);

// The selected instrument if it has a price; else the one shown so far; else the first preferred one, else the first
// fallback. Empty: nothing has a price. `selected` below 0: none. `candidate` is asked for ids 0 to count - 1.
std::optional<InstrumentId> chooseUnderlying(std::size_t count, int selected, std::optional<InstrumentId> shown,
                                             const std::function<Candidate(InstrumentId)>& candidate);

// The smallest 1, 2 or 5 times a power of ten that is at least one per cent of the price.
Price strikeStep(Price price);

// 15:30 on the last Thursday of the month; of the next month when that is less than 7 days ahead.
MarketTime expiryAfter(MarketTime now);

// A year's volatility at a strike of `forward`: higher for low strikes than for high ones, lowest near the money.
double smileVolatility(double strike, double forward);

// One option: quote, implied volatility of the quote, Greeks at that volatility. `tick` is above 0.
OptionFigures priceOption(OptionPricer& pricer, const OptionTerms& terms, double tick);

class OptionChain {
public:
    static constexpr int kStrikes = 15;                     // an odd number: as many above the middle as below
    static constexpr std::int64_t kPeriodMicros = 500'000;  // between two recomputes at least
    static constexpr double kRate = 0.065;                  // interest a year
    using Rows = std::array<ChainRow, kStrikes>;

    // Whether a period has passed since the last recompute. `now` is a steady clock's time.
    bool due(std::int64_t now) const { return m_computed < 0 || now - m_computed >= kPeriodMicros; }
    // Prices every option anew unless the basis is the one already shown. False: nothing changed.
    bool recompute(const ChainBasis& basis, std::int64_t now, OptionPricer& pricer);

    bool empty() const { return m_computed < 0; }
    const ChainBasis& basis() const { return m_basis; }
    MarketTime expiry() const { return m_expiry; }
    const Rows& rows() const { return m_rows; }       // by strike, the lowest first
    int atTheMoney() const { return m_atTheMoney; }   // the row nearest to the price
    std::int64_t priced() const { return m_priced; }  // options priced so far, over all recomputes

private:
    void placeStrikes();

    ChainBasis m_basis;
    MarketTime m_expiry = 0;
    Price m_step = 0;
    Rows m_rows;
    int m_atTheMoney = 0;
    std::int64_t m_computed = -1;  // -1: never
    std::int64_t m_priced = 0;
};

}  // namespace terminal
