// What the user of the terminal holds, marked to the feed: quantities and average prices out of a seed, so that nothing
// has to be stored, and the profit or loss of each position by the last price. No window and no text.
//
// Prices and quantities are whole, as the feed's; money is a double in currency units, a figure to look at.
#pragma once

#include "host/core/MarketData.h"

#include <cstddef>
#include <deque>
#include <optional>

namespace terminal {

struct Position {
    Instrument instrument;
    Quantity quantity = 0;  // below 0: sold short
    Price average = 0;      // what one was bought or sold for
    Price last = 0;
    Price close = kNoPrice;  // of the session before; kNoPrice: not known, and there is no result of the day
};

// Money, and the same in per cent of what it is counted from; nothing where that is not known, or 0.
struct Result {
    std::optional<double> money, percent;
};

double valueOf(const Position& position);
Result dayResult(const Position& position);    // against the close
Result totalResult(const Position& position);  // against the average price

struct Portfolio {
    double value = 0;
    Result day, total;
};

class Positions {
public:
    explicit Positions(std::uint64_t seed, std::size_t most = 60) : m_seed(seed), m_most(most) {}

    // In the order of the feed. The first instrument is held, of the others about half until there are enough.
    void instrument(const Instrument& news);
    // A position comes into being with the first price of its instrument. Null if the quote changes none.
    const Position* quote(const Quote& news);

    // In the order in which they came; none ever goes or moves in memory.
    const std::deque<Position>& all() const { return m_positions; }
    Portfolio total() const;

private:
    struct Held {
        Instrument instrument;
        Price close = kNoPrice;
        Position* position = nullptr;
    };

    Held* find(InstrumentId id);
    Position& open(const Held& held, Price last);

    std::uint64_t m_seed;
    std::size_t m_most;
    std::size_t m_heldCount = 0;
    std::deque<std::optional<Held>> m_held;  // by InstrumentId
    std::deque<Position> m_positions;
};

}  // namespace terminal
