#include "host/core/MarketPulse.h"

#include <cmath>

namespace terminal {

namespace {

constexpr double kRelativeOne = 1e9;
constexpr double kLargestRelative = 1000;  // a close that means nothing would drown all others

}  // namespace

void MarketPulse::quote(const Quote& news) {
    if (!news.has(quoteLast) && !news.has(quoteClose)) return;
    if (news.instrument >= m_prices.size()) m_prices.resize(std::size_t{news.instrument} + 1);
    count(news.instrument, -1);
    Prices& prices = m_prices[news.instrument];
    if (news.has(quoteLast)) prices.last = news.last;
    if (news.has(quoteClose)) prices.close = news.close;
    count(news.instrument, 1);
}

// Takes the instrument into all figures, or out of them.
void MarketPulse::count(InstrumentId instrument, int sign) {
    const Prices& prices = m_prices[instrument];
    if (prices.last == kNoPrice || prices.close == kNoPrice || prices.close <= 0) return;
    if (prices.last > prices.close) m_advances += sign;
    if (prices.last < prices.close) m_declines += sign;
    const double relative = static_cast<double>(prices.last) / static_cast<double>(prices.close);
    if (std::abs(relative) > kLargestRelative) return;
    const std::int64_t whole = std::llround(relative * kRelativeOne);
    for (Sum* sum : {&m_all, instrument < kLeaders ? &m_leaders : nullptr}) {
        if (!sum) continue;
        sum->relatives += sign * whole;
        sum->count += sign;
    }
}

std::optional<MarketPulse::Index> MarketPulse::indexOf(const Sum& sum) {
    if (sum.count == 0) return {};
    const double mean = static_cast<double>(sum.relatives) / (kRelativeOne * static_cast<double>(sum.count));
    return Index{kBase * mean, (mean - 1) * 100};
}

}  // namespace terminal
