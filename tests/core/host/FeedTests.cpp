#include <gtest/gtest.h>

#include "host/core/Feed.h"
#include "tests/core/host/HostTestTools.h"

using namespace terminal;
using namespace terminal::test;

namespace {

constexpr MarketTime millisecond = 1'000'000;

std::vector<MarketTime> everyMillisecond(int count) {
    std::vector<MarketTime> times;
    for (int i = 0; i < count; ++i) times.push_back(77'000 * millisecond + i * millisecond);
    return times;
}

Feed feedOf(std::vector<MarketTime> times, Speed speed, TickSource::Next last = TickSource::Next::end) {
    return Feed(std::make_unique<ListedTicks>(std::move(times), last), speed);
}

TEST(Feed, TakesWhatIsDueAtItsSpeed) {
    struct {
        double factor;
        std::int64_t afterMicros;
        int ticks;
    } const cases[] = {{1, 0, 1}, {1, 999, 1}, {1, 1'000, 2}, {1, 50'000, 51}, {2, 50'000, 100}, {0.5, 50'000, 26}};
    for (const auto& c : cases) {
        Feed feed = feedOf(everyMillisecond(100), {.max = false, .factor = c.factor});
        SetClock clock;
        NoSink sink;
        clock.now = 123'456;  // the clock's own start says nothing
        const int first = feed.take(clock, {}, sink).ticks;
        clock.now += c.afterMicros;
        EXPECT_EQ(first, 1);
        EXPECT_EQ(first + feed.take(clock, {}, sink).ticks, c.ticks) << c.factor << " " << c.afterMicros;
        EXPECT_EQ(feed.ticksTaken(), c.ticks);
    }
}

TEST(Feed, AChangeOfSpeedCountsFromTheTickThatWaits) {
    Feed feed = feedOf(everyMillisecond(100), {});
    SetClock clock;
    NoSink sink;
    clock.now = 5'000;
    EXPECT_EQ(feed.take(clock, {}, sink).ticks, 1);
    clock.now = 60'005'000;  // a minute's pause
    feed.setSpeed({.max = false, .factor = 10});
    EXPECT_EQ(feed.take(clock, {}, sink).ticks, 1);
    clock.now += 1'000;
    EXPECT_EQ(feed.take(clock, {}, sink).ticks, 10);
    feed.setSpeed({.max = true});
    EXPECT_EQ(feed.take(clock, {}, sink).ticks, 88);
}

TEST(Feed, ASliceEndsAtItsTickLimitAndSaysThatMoreIsDue) {
    Feed feed = feedOf(everyMillisecond(25), {.max = true});
    SetClock clock;
    NoSink sink;
    Slice slice = feed.take(clock, {.maxTicks = 20}, sink);
    EXPECT_EQ(slice.ticks, 20);
    EXPECT_TRUE(slice.more);
    EXPECT_EQ(slice.state, FeedState::running);
    slice = feed.take(clock, {.maxTicks = 20}, sink);
    EXPECT_EQ(slice.ticks, 5);
    EXPECT_FALSE(slice.more);
    EXPECT_EQ(slice.state, FeedState::ended);
    EXPECT_EQ(feed.take(clock, {}, sink).ticks, 0);
}

TEST(Feed, ASliceEndsAtItsDeadline) {
    Feed feed = feedOf(everyMillisecond(1'000), {.max = true});
    SetClock clock;
    clock.stepPerRead = 1'000;
    NoSink sink;
    const Slice slice = feed.take(clock, {.maxMicros = 8'000}, sink);
    EXPECT_TRUE(slice.more);
    EXPECT_EQ(slice.ticks, 8 * 16);
}

// A tick each millisecond; `taken` of them are taken at the clock's start, and the next one waits.
TEST(Feed, TellsHowLongTheTickThatWaitsHasBeenDue) {
    struct {
        Speed speed;
        int taken;
        std::int64_t afterMicros, behindMicros;
    } const cases[] = {
        {{.factor = 1}, 1, 999, 0},    // not due yet
        {{.factor = 1}, 1, 1'000, 0},  // due now
        {{.factor = 1}, 1, 31'000, 30'000},   {{.factor = 1}, 3, 31'000, 28'000}, {{.factor = 2}, 1, 31'000, 30'500},
        {{.factor = 0.5}, 1, 31'000, 29'000}, {{.max = true}, 1, 31'000, 0},  // as fast as possible is never late
        {{.factor = 1}, 0, 31'000, 0},                                        // no tick was ever asked for
    };
    for (const auto& c : cases) {
        Feed feed = feedOf(everyMillisecond(5), c.speed);
        SetClock clock;
        clock.now = 500;
        NoSink sink;
        if (c.taken) feed.take(clock, {}, sink);  // the first one: its moment is the clock's
        if (c.taken > 1) {
            clock.now += (c.taken - 1) * 1'000;
            feed.take(clock, {}, sink);
        }
        EXPECT_EQ(feed.behindMicros(500 + c.afterMicros), c.behindMicros) << c.speed.factor << " " << c.afterMicros;
    }
}

TEST(Feed, WhatALimitLeavesIsBehindUntilItIsTaken) {
    Feed feed = feedOf(everyMillisecond(100), {});
    SetClock clock;
    NoSink sink;
    feed.take(clock, {}, sink);
    clock.now = 90'000;
    EXPECT_TRUE(feed.take(clock, {.maxTicks = 10}, sink).more);
    EXPECT_EQ(feed.behindMicros(clock.now), 79'000) << "tick 11 was due at 11 ms";
    feed.take(clock, {}, sink);
    EXPECT_EQ(feed.behindMicros(clock.now), 0);
    feed.setSpeed({.max = false, .factor = 1});  // what was due before the change is not due by it
    EXPECT_EQ(feed.behindMicros(clock.now + 50'000), 0);
    feed.take(clock, {}, sink);
    EXPECT_EQ(feed.behindMicros(clock.now + 5'000), 4'000);
}

TEST(Feed, ALateSliceStillTakesOneTick) {
    Feed feed = feedOf(everyMillisecond(3), {.max = true});
    SetClock clock;
    clock.stepPerRead = 100'000;
    NoSink sink;
    EXPECT_GE(feed.take(clock, {}, sink).ticks, 1);
}

TEST(Feed, ATimeThatStepsBackIsDueAtOnce) {
    Feed feed = feedOf({10 * millisecond, 12 * millisecond, 3 * millisecond, 13 * millisecond}, {});
    SetClock clock;
    EventLog log;
    feed.take(clock, {}, log);
    clock.now = 2'000;
    feed.take(clock, {}, log);
    EXPECT_EQ(log.ticks.size(), 3u);
}

TEST(Feed, AFailureComesAfterEverythingBeforeIt) {
    Feed feed = feedOf(everyMillisecond(3), {.max = true}, TickSource::Next::failed);
    SetClock clock;
    NoSink sink;
    const Slice slice = feed.take(clock, {}, sink);
    EXPECT_EQ(slice.ticks, 3);
    EXPECT_EQ(slice.state, FeedState::failed);
    EXPECT_EQ(feed.error(), "it broke");
}

TEST(Feed, AGapOfCenturiesOverflowsNothing) {
    const MarketTime last = std::numeric_limits<MarketTime>::max() - 1;
    Feed feed = feedOf({0, last}, {.max = false, .factor = 1'000'000});
    SetClock clock;
    NoSink sink;
    feed.take(clock, {}, sink);
    clock.now = std::int64_t{3'600} * 1'000'000;
    EXPECT_EQ(feed.take(clock, {}, sink).ticks, 0);
}

class TallyTest : public testing::Test {
protected:
    void SetUp() override { m_tally.instrument({.id = 0, .symbol = "ONE", .tickSize = 0, .bookLevels = 2}); }
    void order(OrderAction action, OrderId id, Quantity quantity) {
        m_tally.order({action, {.id = id, .quantity = quantity}});
    }
    Tally m_tally;
};

TEST_F(TallyTest, LiveOrdersStandInTheirOrderOfArrival) {
    for (const OrderId id : {50u, 7u, 900u}) order(OrderAction::add, id, 10);
    order(OrderAction::change, 50, 3);
    order(OrderAction::remove, 7, 10);
    order(OrderAction::add, 1, 4);
    std::vector<std::pair<OrderId, Quantity>> found;
    for (const Order& one : m_tally.liveOrdersByArrival()) found.emplace_back(one.id, one.quantity);
    EXPECT_EQ(found, (std::vector<std::pair<OrderId, Quantity>>{{50, 3}, {900, 10}, {1, 4}}));
    EXPECT_EQ(m_tally.faults(), 0);
}

TEST_F(TallyTest, ContradictionsAreCountedAndPassedOver) {
    order(OrderAction::change, 1, 1);
    order(OrderAction::remove, 1, 1);
    order(OrderAction::add, 1, 1);
    order(OrderAction::add, 1, 2);
    m_tally.trade({.instrument = 1});
    m_tally.instrument({.id = 0, .symbol = "AGAIN"});
    m_tally.level({.instrument = 0, .side = Side::buy, .level = 2});
    EXPECT_EQ(m_tally.faults(), 6);
    EXPECT_EQ(m_tally.tradeCount(), 0);
    EXPECT_EQ(m_tally.liveOrders().at(1).order.quantity, 1);
}

TEST_F(TallyTest, QuotesMergeFieldByField) {
    m_tally.quote({.instrument = 0, .fields = quoteLast | quoteHigh, .time = 1, .last = 5, .high = 9});
    m_tally.quote({.instrument = 0, .fields = quoteLast, .time = 2, .last = 6});
    const Quote& quote = m_tally.instruments()[0].quote;
    EXPECT_EQ(quote, (Quote{.instrument = 0, .fields = quoteLast | quoteHigh, .time = 2, .last = 6, .high = 9}));
}

TEST_F(TallyTest, LevelsStandFromTheWorstAskToTheWorstBid) {
    m_tally.level({.instrument = 0, .side = Side::sell, .level = 1, .price = 4, .quantity = 1});
    m_tally.level({.instrument = 0, .side = Side::sell, .level = 0, .price = 3, .quantity = 1});
    m_tally.level({.instrument = 0, .side = Side::buy, .level = 1, .price = 1, .quantity = 1});
    std::vector<Price> prices;
    for (const BookLevel& level : m_tally.instruments()[0].levels) prices.push_back(level.price);
    EXPECT_EQ(prices, (std::vector<Price>{4, 3, noPrice, 1}));
}

TEST_F(TallyTest, TheLastTradeAndTheirNumberAreKept) {
    m_tally.trade({.instrument = 0, .price = 5, .quantity = 1, .time = 1});
    m_tally.trade({.instrument = 0, .price = 4, .quantity = 2, .time = 2});
    EXPECT_EQ(m_tally.tradeCount(), 2);
    EXPECT_EQ(m_tally.instruments()[0].lastTrade, (Trade{.instrument = 0, .price = 4, .quantity = 2, .time = 2}));
}

}  // namespace
