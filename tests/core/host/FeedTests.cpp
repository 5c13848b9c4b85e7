#include "host/core/Feed.h"
#include "tests/core/host/HostTestTools.h"

#include <gtest/gtest.h>

using namespace terminal;
using namespace terminal::test;

namespace {

constexpr MarketTime millisecond = 1'000'000;

std::vector<MarketTime> everyMillisecond(int count) {
    std::vector<MarketTime> times;
    for (int i = 0; i < count; ++i) times.push_back(77'000 * millisecond + i * millisecond);
    return times;
}

// A feed with its clock and its sink.
struct Replay {
    explicit Replay(std::vector<MarketTime> times, Speed speed = {}, TickSource::Next last = TickSource::Next::end)
        : feed(std::make_unique<ListedTicks>(std::move(times), last), speed) {}
    Slice take(std::int64_t micros, SliceLimit limit = {}) {
        clock.now = micros;
        return feed.take(clock, limit, log);
    }

    Feed feed;
    SetClock clock;
    EventLog log;
};

constexpr Speed kMax{.max = true};
constexpr std::int64_t kStart = 123'456;  // the clock's own start says nothing

TEST(Feed, TakesWhatIsDueAtItsSpeed) {
    struct {
        double factor;
        std::int64_t afterMicros;
        int ticks;
    } const cases[] = {{1, 999, 1}, {1, 1'000, 2}, {1, 50'000, 51}, {2, 50'000, 100}, {0.5, 50'000, 26}};
    for (const auto& c : cases) {
        Replay run(everyMillisecond(100), {.factor = c.factor});
        EXPECT_EQ(run.take(kStart).ticks, 1);
        EXPECT_EQ(run.take(kStart + c.afterMicros).ticks, c.ticks - 1) << c.factor << " " << c.afterMicros;
        EXPECT_EQ(run.feed.ticksTaken(), c.ticks);
    }
}

TEST(Feed, AChangeOfSpeedCountsFromTheTickThatWaits) {
    Replay run(everyMillisecond(100));
    EXPECT_EQ(run.take(5'000).ticks, 1);
    run.feed.setSpeed({.factor = 10});
    const std::int64_t minute = 60'005'000;
    EXPECT_EQ(run.take(minute).ticks, 1);
    EXPECT_EQ(run.take(minute + 1'000).ticks, 10);
    run.feed.setSpeed(kMax);
    EXPECT_EQ(run.take(minute + 1'000).ticks, 88);
}

TEST(Feed, ASliceEndsAtItsLimitsAndSaysThatMoreIsDue) {
    for (const auto last : {TickSource::Next::end, TickSource::Next::failed}) {
        Replay run(everyMillisecond(25), kMax, last);
        Slice slice = run.take(0, {.maxTicks = 20});
        EXPECT_EQ(slice.ticks, 20);
        EXPECT_TRUE(slice.more);
        EXPECT_EQ(slice.state, FeedState::running);
        slice = run.take(0, {.maxTicks = 20});
        EXPECT_EQ(slice.ticks, 5);
        EXPECT_FALSE(slice.more);
        EXPECT_EQ(slice.state, last == TickSource::Next::end ? FeedState::ended : FeedState::failed);
        EXPECT_EQ(run.feed.error(), last == TickSource::Next::end ? "" : "it broke");
        EXPECT_EQ(run.take(0).ticks, 0);
    }
    Replay run(everyMillisecond(1'000), kMax);
    run.clock.stepPerRead = 1'000;
    const Slice slice = run.take(0, {.maxMicros = 8'000});
    EXPECT_TRUE(slice.more);
    EXPECT_EQ(slice.ticks, 8 * 16);
    run.clock.stepPerRead = 100'000;
    EXPECT_GE(run.take(0).ticks, 1) << "a late slice still takes one";
}

TEST(Feed, TellsHowLongTheTickThatWaitsHasBeenDue) {
    struct {
        Speed speed;
        std::int64_t afterMicros, behindMicros;
    } const cases[] = {{{.factor = 1}, 999, 0},           {{.factor = 1}, 1'000, 0},
                       {{.factor = 1}, 31'000, 30'000},   {{.factor = 2}, 31'000, 30'500},
                       {{.factor = 0.5}, 31'000, 29'000}, {kMax, 31'000, 0}};
    for (const auto& c : cases) {
        Replay run(everyMillisecond(5), c.speed);
        EXPECT_EQ(run.feed.behindMicros(kStart + c.afterMicros), 0) << "no tick was ever asked for";
        run.take(kStart);
        EXPECT_EQ(run.feed.behindMicros(kStart + c.afterMicros), c.behindMicros) << c.speed.factor;
    }
    Replay run(everyMillisecond(100));
    run.take(0);
    EXPECT_TRUE(run.take(90'000, {.maxTicks = 10}).more);
    EXPECT_EQ(run.feed.behindMicros(90'000), 79'000) << "tick 11 was due at 11 ms";
    run.take(90'000);
    EXPECT_EQ(run.feed.behindMicros(90'000), 0);
    run.feed.setSpeed({.factor = 1});
    EXPECT_EQ(run.feed.behindMicros(140'000), 0) << "what was due before the change is not due by it";
}

TEST(Feed, TimesMayStepBackOrLeapCenturies) {
    Replay run({10 * millisecond, 12 * millisecond, 3 * millisecond, 13 * millisecond});
    run.take(0);
    run.take(2'000);
    EXPECT_EQ(run.log.ticks.size(), 3u);
    Replay far({0, std::numeric_limits<MarketTime>::max() - 1}, {.factor = 1'000'000});
    far.take(0);
    EXPECT_EQ(far.take(std::int64_t{3'600} * 1'000'000).ticks, 0);
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

TEST_F(TallyTest, LevelsStandFromTheWorstAskToTheWorstBid) {
    for (const int level : {1, 0})
        m_tally.level({.instrument = 0, .side = Side::sell, .level = level, .price = 3 + level, .quantity = 1});
    m_tally.level({.instrument = 0, .side = Side::buy, .level = 1, .price = 1, .quantity = 1});
    std::vector<Price> prices;
    for (const BookLevel& level : m_tally.instruments()[0].levels) prices.push_back(level.price);
    EXPECT_EQ(prices, (std::vector<Price>{4, 3, noPrice, 1}));
}

}  // namespace
