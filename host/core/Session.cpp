#include "host/core/Session.h"

#include "quor/platform/Base.h"

namespace terminal {

Quote Session::take(const Trade& trade) {
    Quote news{.instrument = trade.instrument, .fields = quoteLast | quoteLastSize | quoteVolume | quoteValue};
    auto set = [&](QuoteField field, Price& in, Price value) {
        news.fields |= field;
        in = value;
    };
    news.time = trade.time;
    news.last = trade.price;
    news.lastSize = trade.quantity;
    if (!m_open) set(quoteOpen, news.open, trade.price);
    if (!m_open || trade.price > m_high) set(quoteHigh, news.high, m_high = trade.price);
    if (!m_open || trade.price < m_low) set(quoteLow, news.low, m_low = trade.price);
    m_open = true;
    if (quor::addOverflows(m_volume, trade.quantity, m_volume)) m_volume = std::numeric_limits<Quantity>::max();
    m_value += static_cast<double>(trade.price) * static_cast<double>(trade.quantity) / static_cast<double>(kPriceOne);
    news.volume = m_volume;
    news.value = m_value;
    return news;
}

}  // namespace terminal
