// What a market watch knows of its instruments: the merged quote, the book's best levels and the figures that follow
// from the stream of ticks. No text, no window.
//
// A feed brings a book in one of three ways, and the depth shown follows it: levels (snapshots), single orders, which
// are summed by price here, or nothing but the touch. Live orders that stand at the touch or beyond it give no level of
// their own below the first: a quote and the orders around it come as separate news, and no depth shown is crossed.
#pragma once

#include "host/core/FeedSink.h"

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace terminal {

inline constexpr int kWatchDepth = 5;  // levels a side

struct DepthLevel {
    Price price = kNoPrice;
    Quantity quantity = 0;
    int orders = 0;  // 0: the feed does not say
    bool operator==(const DepthLevel&) const = default;
};

// One side of a book out of single orders.
struct PriceLevel {
    Quantity quantity = 0;
    int orders = 0;
};
using OrderSide = std::map<Price, PriceLevel>;

// Times of 0 and prices of kNoPrice say that the thing has not happened.
struct WatchData {
    Instrument instrument;
    Quote quote;
    Move direction = Move::none;  // of the last price that changed against the one before it
    Price lastBefore = kNoPrice;  // the last price that was another one
    MarketTime tradeTime = 0, quoteTime = 0, openTime = 0, highTime = 0, lowTime = 0, orderTime = 0;
    std::int64_t updates = 0, quoteUpdates = 0, upTicks = 0, downTicks = 0;
    std::int64_t trades = 0, orderAdds = 0, orderChanges = 0, orderRemoves = 0;
    Quantity boughtAtAsk = 0, soldAtBid = 0, largestTrade = 0;
    std::optional<Quantity> firstOpenInterest, highOpenInterest, lowOpenInterest;
    Price widestSpread = kNoPrice, narrowestSpread = kNoPrice;
    OrderSide bids, asks;                                    // by price, rising, on both sides
    std::array<DepthLevel, kWatchDepth> bookBids, bookAsks;  // of a feed that brings levels

    bool hasBid() const { return quote.has(quoteBid) && quote.bid != kNoPrice; }
    bool hasAsk() const { return quote.has(quoteAsk) && quote.ask != kNoPrice; }
    // Level 0 is the best, kWatchDepth - 1 the last one. Empty: the side has no such level.
    std::optional<DepthLevel> depth(Side side, int level) const;
    // All that waits on a side. Empty: the feed brings neither orders nor levels for it.
    std::optional<DepthLevel> total(Side side) const;  // its price means nothing
};

// Takes a feed's news in. Rows are numbered by InstrumentId; news of an unknown instrument or order is passed over.
class WatchMarket final : public FeedSink {
public:
    std::size_t size() const { return m_rows.size(); }
    const WatchData& operator[](std::size_t id) const { return *m_rows[id]; }  // stays where it is

    void instrument(const Instrument& news) override;
    void quote(const Quote& news) override;
    void order(const OrderEvent& news) override;
    void trade(const Trade& news) override;
    void level(const BookLevel& news) override;

private:
    struct Resting {
        InstrumentId instrument;
        Side side;
        Price price;
        Quantity quantity;
    };
    void rest(const Resting& order, int sign);

    std::vector<std::unique_ptr<WatchData>> m_rows;
    std::unordered_map<OrderId, Resting> m_orders;
};

}  // namespace terminal
