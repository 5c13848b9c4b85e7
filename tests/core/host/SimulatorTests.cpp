#include "host/core/Simulator.h"
#include "host/core/TapeFormat.h"
#include "tests/core/host/HostTestTools.h"

#include <gtest/gtest.h>
#include <map>
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

// Holds every event against the promises of Simulator.h.
class PromiseKeeper final : public FeedSink {
public:
    void instrument(const Instrument& news) override {
        ASSERT_EQ(news.id, m_instruments.size());
        ASSERT_FALSE(news.symbol.empty());
        ASSERT_GT(news.tickSize, 0);
        ASSERT_TRUE(m_symbols.insert(news.symbol).second) << news.symbol;
        m_instruments.push_back({news, {}});
    }
    void quote(const Quote& news) override {
        ASSERT_LT(news.instrument, m_instruments.size());
        Quote& state = m_instruments[news.instrument].second;
        const Quote before = state;
        mergeQuote(state, news);
        ASSERT_LT(state.bid, state.ask);
        ASSERT_GT(state.bidSize, 0);
        ASSERT_GT(state.askSize, 0);
        ASSERT_LE(state.low, std::min(state.open, state.last));
        ASSERT_GE(state.high, std::max(state.open, state.last));
        ASSERT_GE(state.volume, before.volume);
        for (const Price price : {state.bid, state.ask, state.last, state.open, state.high, state.low, state.close})
            onTick(news.instrument, price);
        ASSERT_EQ(state.volume, m_traded[news.instrument]);
    }
    void order(const OrderEvent& news) override {
        const Order& order = news.order;
        onTick(order.instrument, order.price);
        ASSERT_GT(order.quantity, 0);
        const auto live = m_live.find(order.id);
        if (news.action == OrderAction::add) {
            ASSERT_TRUE(m_everSeen.insert(order.id).second) << order.id;
            m_live.emplace(order.id, order);
            return;
        }
        ASSERT_NE(live, m_live.end()) << order.id;
        ASSERT_EQ(live->second.side, order.side);
        ASSERT_EQ(live->second.instrument, order.instrument);
        if (news.action == OrderAction::change)
            live->second = order;
        else
            m_live.erase(live);
    }
    void trade(const Trade& news) override {
        onTick(news.instrument, news.price);
        ASSERT_GT(news.quantity, 0);
        m_traded[news.instrument] += news.quantity;
        ++trades;
    }
    void level(const BookLevel&) override { FAIL(); }
    void tickEnd(MarketTime time) override {
        ASSERT_GE(time, lastTime);
        lastTime = time;
    }
    MarketTime lastTime = 0;
    int trades = 0;

private:
    void onTick(InstrumentId id, Price price) {
        ASSERT_LT(id, m_instruments.size());
        ASSERT_GT(price, 0);
        ASSERT_EQ(price % m_instruments[id].first.tickSize, 0);
    }
    std::vector<std::pair<Instrument, Quote>> m_instruments;
    std::set<std::string> m_symbols;
    std::map<OrderId, Order> m_live;
    std::set<OrderId> m_everSeen;
    std::map<InstrumentId, Quantity> m_traded;
};

int tradesThatKeepThePromises(const SimulatorSettings& settings) {
    const auto source = makeSimulator(settings);
    PromiseKeeper keeper;
    Tick tick;
    for (int i = 0; i < 60'000 && !testing::Test::HasFatalFailure(); ++i) {
        EXPECT_EQ(source->next(tick), TickSource::Next::tick);
        dispatch(tick, keeper);
    }
    return keeper.trades;
}

TEST(Simulator, EveryEventKeepsThePromises) {
    EXPECT_GT(tradesThatKeepThePromises({.seed = 1}), 6'000);
    EXPECT_GT(tradesThatKeepThePromises({.seed = 99, .instruments = 1}), 6'000);
    EXPECT_GT(tradesThatKeepThePromises({.seed = 3, .instruments = 3, .ticksPerSecond = 100, .ordersPerInstrument = 1}),
              6'000);
    tradesThatKeepThePromises({.seed = 1, .instruments = 50'000});
}

}  // namespace
