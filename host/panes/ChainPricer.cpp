#include "host/panes/ChainPricer.h"

#include "host/panes/LogPane.h"
#include "quor/calculators/QuorCOMWrapApp.h"
#include "quor/platform/Framework.h"

#include <cmath>

namespace terminal {

namespace {
constexpr double kNoDividends = 0, kDaysAYear = 365;

// A share's option as one on its forward F = S e^(bT). The Greeks are carried over to S; theta gets the part of F that
// moves with the time to expiry.
OptionValues black76Values(const OptionTerms& terms, double volatility) {
    const double growth = std::exp(terms.carry * terms.years), forward = terms.underlying * growth;
    CQuorCOMWrapApp& calculators = quorCalculators();
    OptionValues v;
    double rho;
    const auto compute =
        terms.put ? &CQuorCOMWrapApp::CalcBlack76ModelPutData : &CQuorCOMWrapApp::CalcBlack76ModelCallData;
    (calculators.*compute)(forward, terms.rate, terms.years, volatility, terms.strike, v.price, v.delta, v.gamma,
                           v.theta, v.vega, rho);
    v.theta -= v.delta * terms.carry * forward / kDaysAYear;
    v.delta *= growth;
    v.gamma *= growth * growth;
    return v;
}

bool finite(const OptionValues& v) {
    return std::isfinite(v.price) && std::isfinite(v.delta) && std::isfinite(v.gamma) && std::isfinite(v.theta) &&
           std::isfinite(v.vega);
}
}  // namespace

bool ChainPricer::connect() {
    quorCalculators().GetSpan(&m_server);
    if (!m_server)
        Log::instance().add(
            "Option chain: the option server is not registered; Black-76 alone, no implied volatility.");
    return m_server;
}

std::optional<OptionValues> ChainPricer::value(const OptionTerms& terms, double volatility) {
    OptionValues v;
    if (terms.future || !m_server) {
        v = black76Values(terms, volatility);
    } else {
        try {
            double rho;
            quorCalculators().CalculateBSPriceWra(terms.underlying, static_cast<float>(terms.strike), terms.years,
                                                  terms.rate, volatility, terms.put ? 1 : 0, terms.carry, kNoDividends,
                                                  &v.price, &v.delta, &v.gamma, &v.theta, &v.vega, &rho);
        } catch (const _com_error&) {
            return {};
        }
    }
    if (!finite(v)) return {};
    return v;
}

std::optional<double> ChainPricer::impliedVolatility(const OptionTerms& terms, double price) {
    if (!m_server) return {};
    try {
        double volatility = 0;
        quorCalculators().CalculateImpVolatilityWra(price, terms.underlying, terms.strike, terms.years, terms.rate,
                                                    terms.carry, kNoDividends, terms.put ? 1 : 0, &volatility);
        return volatility;
    } catch (const _com_error&) {
        return {};
    }
}

}  // namespace terminal
