// The figures of one instrument's session as its trades make them: open, high, low, volume, value.
#pragma once

#include "host/core/MarketData.h"

namespace terminal {

class Session {
public:
    // Takes the trade in and returns what it makes new: last price and size, volume, value; open, high and low if they
    // moved. The volume stays at the largest number there is rather than run over.
    Quote take(const Trade& trade);

private:
    bool m_open = false;
    Price m_high = 0;
    Price m_low = 0;
    Quantity m_volume = 0;
    double m_value = 0;
};

}  // namespace terminal
