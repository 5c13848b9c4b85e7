#include "host/core/Tally.h"

#include <algorithm>

namespace terminal {

Tally::OfInstrument* Tally::find(InstrumentId id) {
    if (id < m_instruments.size()) return &m_instruments[id];
    ++m_faults;
    return nullptr;
}

int Tally::levelPlace(int bookLevels, const BookLevel& level) {
    if (level.level < 0 || level.level >= bookLevels) return -1;
    return level.side == Side::sell ? bookLevels - 1 - level.level : bookLevels + level.level;
}

void Tally::instrument(const Instrument& news) {
    if (news.id != m_instruments.size()) {
        ++m_faults;
        return;
    }
    OfInstrument& added = m_instruments.emplace_back();
    added.instrument = news;
    added.quote.instrument = news.id;
    added.levels.resize(2 * static_cast<std::size_t>(news.bookLevels));
    for (int level = 0; level < news.bookLevels; ++level) {
        for (const Side side : {Side::buy, Side::sell}) {
            const BookLevel empty{.instrument = news.id, .side = side, .level = level};
            added.levels[static_cast<std::size_t>(levelPlace(news.bookLevels, empty))] = empty;
        }
    }
}

void Tally::quote(const Quote& news) {
    if (OfInstrument* of = find(news.instrument)) mergeQuote(of->quote, news);
}

void Tally::order(const OrderEvent& news) {
    const Order& order = news.order;
    if (!find(order.instrument)) return;
    if (news.action == OrderAction::add) {
        const bool added = m_liveOrders.try_emplace(order.id, LiveOrder{order, m_arrivals}).second;
        if (added)
            ++m_arrivals;
        else
            ++m_faults;
        return;
    }
    const auto live = m_liveOrders.find(order.id);
    if (live == m_liveOrders.end())
        ++m_faults;
    else if (news.action == OrderAction::change)
        live->second.order = order;
    else
        m_liveOrders.erase(live);
}

void Tally::trade(const Trade& news) {
    OfInstrument* of = find(news.instrument);
    if (!of) return;
    of->lastTrade = news;
    ++of->trades;
    ++m_tradeCount;
}

void Tally::level(const BookLevel& news) {
    OfInstrument* of = find(news.instrument);
    if (!of) return;
    const int place = levelPlace(of->instrument.bookLevels, news);
    if (place < 0)
        ++m_faults;
    else
        of->levels[static_cast<std::size_t>(place)] = news;
}

std::vector<Order> Tally::liveOrdersByArrival() const {
    std::vector<const LiveOrder*> live;
    live.reserve(m_liveOrders.size());
    for (const auto& entry : m_liveOrders) live.push_back(&entry.second);
    std::sort(live.begin(), live.end(), [](auto* a, auto* b) { return a->arrival < b->arrival; });
    std::vector<Order> orders;
    orders.reserve(live.size());
    for (const LiveOrder* one : live) orders.push_back(one->order);
    return orders;
}

}  // namespace terminal
