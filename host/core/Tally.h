// The feed's own account of what it handed out, kept apart from every row: what a self-check holds the windows against.
#pragma once

#include "host/core/FeedSink.h"

#include <unordered_map>
#include <vector>

namespace terminal {

class Tally final : public FeedSink {
public:
    struct LiveOrder {
        Order order;
        std::uint64_t arrival = 0;  // counts the orders that were ever added: the order of the rows
    };
    struct OfInstrument {
        Instrument instrument;
        Quote quote;      // every field that ever came, at its newest value
        Trade lastTrade;  // meaningful if trades > 0
        std::int64_t trades = 0;
        std::vector<BookLevel> levels;  // asks from the worst to the best, then bids from the best to the worst
    };

    const std::unordered_map<OrderId, LiveOrder>& liveOrders() const { return m_liveOrders; }
    // The same, sorted by arrival; made anew at each call.
    std::vector<Order> liveOrdersByArrival() const;
    std::int64_t tradeCount() const { return m_tradeCount; }
    const std::vector<OfInstrument>& instruments() const { return m_instruments; }  // indexed by InstrumentId
    // Events that contradict what came before (an unknown instrument or order, an id used twice, a level outside the
    // book); they are counted and otherwise passed over. 0 for every feed of this terminal.
    std::int64_t faults() const { return m_faults; }

    void instrument(const Instrument& news) override;
    void quote(const Quote& news) override;
    void order(const OrderEvent& news) override;
    void trade(const Trade& news) override;
    void level(const BookLevel& news) override;

    // Where a level stands in OfInstrument::levels, and among the rows of a book pane; -1 if the book has no such
    // level.
    static int levelPlace(int bookLevels, const BookLevel& level);

private:
    OfInstrument* find(InstrumentId id);  // null counts a fault

    std::vector<OfInstrument> m_instruments;
    std::unordered_map<OrderId, LiveOrder> m_liveOrders;
    std::uint64_t m_arrivals = 0;
    std::int64_t m_tradeCount = 0;
    std::int64_t m_faults = 0;
};

}  // namespace terminal
