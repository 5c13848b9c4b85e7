// The market at a glance: two indices, and how many instruments stand above and below the close of the session before.
//
// Both indices are equal-weighted: 1,000 times the mean of last price to close over their instruments that have both
// (price relatives, base 1,000 at the close). One is over all instruments, the other over those that a feed announces
// first. Each piece of news costs the same, however many instruments there are.
#pragma once

#include "host/core/MarketData.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace terminal {

class MarketPulse {
public:
    static constexpr std::size_t kLeaders = 50;  // instruments of the narrow index
    static constexpr double kBase = 1000;

    void quote(const Quote& news);

    struct Index {
        double value = 0, change = 0;  // change in per cent since the close
    };
    // Nothing while none of its instruments has last and close.
    std::optional<Index> leaders() const { return indexOf(m_leaders); }
    std::optional<Index> all() const { return indexOf(m_all); }
    int advances() const { return m_advances; }
    int declines() const { return m_declines; }

private:
    // Relatives are summed in billionths: whole numbers, so that taking one out leaves nothing behind.
    struct Sum {
        std::int64_t relatives = 0;
        std::int64_t count = 0;
    };
    struct Prices {
        Price last = kNoPrice, close = kNoPrice;
    };
    static std::optional<Index> indexOf(const Sum& sum);
    void count(InstrumentId instrument, int sign);

    std::vector<Prices> m_prices;  // by InstrumentId
    Sum m_leaders, m_all;
    int m_advances = 0, m_declines = 0;
};

}  // namespace terminal
