#include "host/core/Simulator.h"
#include "host/core/TapeFormat.h"
#include "tests/core/host/HostTestTools.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

using namespace terminal;
using namespace terminal::test;

namespace {

// FNV-1a over the recorder's text of every tick: any difference in any event shows.
std::uint64_t hashOf(TickSource& source, int ticks) {
    std::uint64_t hash = 14695981039346656037u;
    Tick tick;
    std::string line;
    for (int i = 0; i < ticks; ++i) {
        source.next(tick);
        line = std::to_string(tick.time);
        for (const FeedEvent& event : tick.events) appendEvent(line, event);
        for (const char c : line) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    }
    return hash;
}

TEST(Simulator, TheSameSeedGivesTheSameStreamInEveryBuild) {
    EXPECT_EQ(hashOf(*makeSimulator({.seed = 1}), 50'000), 11396189962293046899u);
    EXPECT_EQ(hashOf(*makeSimulator({.seed = 42, .instruments = 7}), 50'000), 1237197470660492230u);
    EXPECT_NE(hashOf(*makeSimulator({.seed = 2}), 1'000), hashOf(*makeSimulator({.seed = 1}), 1'000));
}

// Holds every event against the promises of Simulator.h that the feed's own account does not count as faults.
class PromiseKeeper final : public FeedSink {
public:
    void instrument(const Instrument& news) override {
        ASSERT_FALSE(news.symbol.empty());
        ASSERT_GT(news.tickSize, 0);
        ASSERT_TRUE(m_symbols.insert(news.symbol).second) << news.symbol;
        m_instruments.push_back({news.tickSize, {}, 0});
    }
    void quote(const Quote& news) override {
        Quote& state = m_instruments.at(news.instrument).quote;
        const Quantity before = state.volume;
        mergeQuote(state, news);
        ASSERT_LT(state.bid, state.ask);
        ASSERT_GT(std::min(state.bidSize, state.askSize), 0);
        ASSERT_LE(state.low, std::min(state.open, state.last));
        ASSERT_GE(state.high, std::max(state.open, state.last));
        ASSERT_GE(state.volume, before);
        ASSERT_EQ(state.volume, m_instruments[news.instrument].traded);
        for (const Price price : {state.bid, state.ask, state.last, state.open, state.high, state.low, state.close})
            onTick(news.instrument, price, 1);
    }
    void order(const OrderEvent& news) override {
        const Order& order = news.order;
        onTick(order.instrument, order.price, order.quantity);
        ASSERT_TRUE(news.action != OrderAction::add || m_everSeen.insert(order.id).second) << order.id;
    }
    void trade(const Trade& news) override {
        onTick(news.instrument, news.price, news.quantity);
        m_instruments[news.instrument].traded += news.quantity;
    }
    void level(const BookLevel&) override { FAIL(); }
    void tickEnd(MarketTime time) override {
        ASSERT_GE(time, m_lastTime);
        m_lastTime = time;
    }

private:
    struct OfInstrument {
        Price tickSize;
        Quote quote;
        Quantity traded;
    };
    void onTick(InstrumentId id, Price price, Quantity quantity) {
        ASSERT_GT(price, 0);
        ASSERT_EQ(price % m_instruments.at(id).tickSize, 0);
        ASSERT_GT(quantity, 0);
    }
    std::vector<OfInstrument> m_instruments;
    std::set<std::string> m_symbols;
    std::set<OrderId> m_everSeen;
    MarketTime m_lastTime = 0;
};

TEST(Simulator, EveryEventKeepsThePromises) {
    for (const SimulatorSettings& settings :
         {SimulatorSettings{.seed = 1}, SimulatorSettings{.seed = 99, .instruments = 1},
          SimulatorSettings{.seed = 3, .instruments = 3, .ticksPerSecond = 100, .ordersPerInstrument = 1},
          SimulatorSettings{.seed = 1, .instruments = 50'000}}) {
        Feed feed(makeSimulator(settings), {.max = true});
        PromiseKeeper keeper;
        SetClock clock;
        while (feed.ticksTaken() < 60'000 && !HasFatalFailure()) feed.take(clock, {}, keeper);
        EXPECT_EQ(feed.tally().faults(), 0);
        EXPECT_GT(feed.tally().tradeCount(), 6'000);
    }
}

}  // namespace
