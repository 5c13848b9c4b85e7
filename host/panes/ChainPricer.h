// Values the option chain with the library's calculators: Black-76 in the library itself, the rest by the option
// server.
#pragma once

#include "host/core/OptionChain.h"

namespace terminal {

// With the server, options on shares are valued by it and volatilities implied by it; options on futures are always
// Black-76. Without it, options on shares are Black-76 on the forward, with Greeks against the share, and there are no
// implied volatilities. A failure of the server is an empty result. Used on one thread, which connected it.
class ChainPricer final : public OptionPricer {
public:
    // Asks for the server; once in a process. False: it is not registered, and the log says so.
    bool connect();

    std::optional<OptionValues> value(const OptionTerms& terms, double volatility) override;
    std::optional<double> impliedVolatility(const OptionTerms& terms, double price) override;

private:
    bool m_server = false;
};

}  // namespace terminal
