#include "host/core/WatchData.h"

#include "quor/platform/Base.h"

#include <algorithm>

namespace terminal {

namespace {
// The level at a price, or of all prices behind `touch` the one that is `nth`, counted from 0.
template <class Iterator>
std::optional<DepthLevel> behind(Iterator from, Iterator end, int nth) {
    for (; from != end && nth > 0; ++from) --nth;
    if (from == end) return {};
    return DepthLevel{from->first, from->second.quantity, from->second.orders};
}

std::optional<DepthLevel> touchOf(const WatchData& data, Side side) {
    const bool buy = side == Side::buy;
    if (!(buy ? data.hasBid() : data.hasAsk())) return {};
    DepthLevel level{buy ? data.quote.bid : data.quote.ask, buy ? data.quote.bidSize : data.quote.askSize, 0};
    const OrderSide& orders = buy ? data.bids : data.asks;
    if (const auto found = orders.find(level.price); found != orders.end()) level.orders = found->second.orders;
    return level;
}
}  // namespace

std::optional<DepthLevel> WatchData::depth(Side side, int level) const {
    if (level < 0 || level >= kWatchDepth) return {};
    const bool buy = side == Side::buy;
    if (instrument.bookLevels > 0) {
        const DepthLevel& told = (buy ? bookBids : bookAsks)[static_cast<std::size_t>(level)];
        return told.price == kNoPrice ? std::nullopt : std::optional(told);
    }
    const std::optional<DepthLevel> touch = touchOf(*this, side);
    if (level == 0 && touch) return touch;
    const int nth = touch ? level - 1 : level;
    if (buy) {
        const auto worse = touch ? bids.lower_bound(touch->price) : bids.end();
        return behind(std::make_reverse_iterator(worse), bids.rend(), nth);
    }
    return behind(touch ? asks.upper_bound(touch->price) : asks.begin(), asks.end(), nth);
}

std::optional<DepthLevel> WatchData::total(Side side) const {
    const bool buy = side == Side::buy;
    DepthLevel sum;
    if (instrument.bookLevels > 0) {
        for (const DepthLevel& level : buy ? bookBids : bookAsks) sum.quantity += level.quantity;
        return sum.quantity ? std::optional(sum) : std::nullopt;
    }
    for (const auto& [price, level] : buy ? bids : asks) {
        sum.quantity += level.quantity;
        sum.orders += level.orders;
    }
    return sum.orders ? std::optional(sum) : std::nullopt;
}

void WatchMarket::instrument(const Instrument& news) {
    if (news.id != m_rows.size()) return;
    m_rows.push_back(std::make_unique<WatchData>());
    m_rows.back()->instrument = news;
}

void WatchMarket::quote(const Quote& news) {
    if (news.instrument >= m_rows.size()) return;
    WatchData& row = *m_rows[news.instrument];
    ++row.updates;
    if (news.has(quoteLast) && row.quote.has(quoteLast) && news.last != row.quote.last) {
        row.direction = news.last > row.quote.last ? Move::up : Move::down;
        ++(row.direction == Move::up ? row.upTicks : row.downTicks);
        row.lastBefore = row.quote.last;
    }
    mergeQuote(row.quote, news);
    if (news.has(quoteLast)) row.tradeTime = news.time;
    if (news.has(quoteOpen)) row.openTime = news.time;
    if (news.has(quoteHigh)) row.highTime = news.time;
    if (news.has(quoteLow)) row.lowTime = news.time;
    if (news.has(quoteOpenInterest)) {
        const Quantity now = news.openInterest;
        if (!row.firstOpenInterest) row.firstOpenInterest = now;
        row.highOpenInterest = std::max(row.highOpenInterest.value_or(now), now);
        row.lowOpenInterest = std::min(row.lowOpenInterest.value_or(now), now);
    }
    if (!news.has(quoteBid) && !news.has(quoteAsk)) return;
    row.quoteTime = news.time;
    ++row.quoteUpdates;
    if (!row.hasBid() || !row.hasAsk()) return;
    Price spread = 0;
    if (quor::subtractOverflows(row.quote.ask, row.quote.bid, spread)) return;  // further apart than prices can be
    if (row.widestSpread == kNoPrice || spread > row.widestSpread) row.widestSpread = spread;
    if (row.narrowestSpread == kNoPrice || spread < row.narrowestSpread) row.narrowestSpread = spread;
}

void WatchMarket::rest(const Resting& order, int sign) {
    WatchData& row = *m_rows[order.instrument];
    OrderSide& side = order.side == Side::buy ? row.bids : row.asks;
    PriceLevel& level = side[order.price];
    level.quantity += sign * order.quantity;
    level.orders += sign;
    if (level.orders == 0) side.erase(order.price);
}

void WatchMarket::order(const OrderEvent& news) {
    if (news.order.instrument >= m_rows.size()) return;
    const auto found = m_orders.find(news.order.id);
    if ((news.action == OrderAction::add) == (found != m_orders.end())) return;
    WatchData& row = *m_rows[found == m_orders.end() ? news.order.instrument : found->second.instrument];
    row.orderTime = news.order.time;
    if (news.action == OrderAction::add) {
        ++row.orderAdds;
        const Resting resting{news.order.instrument, news.order.side, news.order.price, news.order.quantity};
        rest(resting, 1);
        m_orders.emplace(news.order.id, resting);
        return;
    }
    rest(found->second, -1);
    if (news.action == OrderAction::remove) {
        ++row.orderRemoves;
        m_orders.erase(found);
        return;
    }
    ++row.orderChanges;
    found->second.price = news.order.price;
    found->second.quantity = news.order.quantity;
    rest(found->second, 1);
}

void WatchMarket::trade(const Trade& news) {
    if (news.instrument >= m_rows.size()) return;
    WatchData& row = *m_rows[news.instrument];
    ++row.trades;
    row.largestTrade = std::max(row.largestTrade, news.quantity);
    if (row.hasAsk() && news.price >= row.quote.ask)
        row.boughtAtAsk += news.quantity;
    else if (row.hasBid() && news.price <= row.quote.bid)
        row.soldAtBid += news.quantity;
}

void WatchMarket::level(const BookLevel& news) {
    if (news.instrument >= m_rows.size() || news.level < 0 || news.level >= kWatchDepth) return;
    WatchData& row = *m_rows[news.instrument];
    auto& side = news.side == Side::buy ? row.bookBids : row.bookAsks;
    side[static_cast<std::size_t>(news.level)] = {news.price, news.quantity, 0};
}

}  // namespace terminal
