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

TEST(Feed, TakesWhatIsDueAtItsSpeedAndTellsHowLongTheRestWaits) {
    const struct {
        Speed speed;
        std::int64_t afterMicros, behindMicros;
        int ticks;
    } cases[] = {
        {{.factor = 1}, 999, 0, 1},          {{.factor = 1}, 1'000, 0, 2},          {{.factor = 1}, 31'000, 30'000, 32},
        {{.factor = 2}, 31'000, 30'500, 63}, {{.factor = 0.5}, 31'000, 29'000, 16}, {kMax, 31'000, 0, 100}};
    for (const auto& c : cases) {
        Replay run(everyMillisecond(100), c.speed);
        EXPECT_EQ(run.feed.behindMicros(kStart + c.afterMicros), 0) << "no tick was ever asked for";
        EXPECT_EQ(run.take(kStart).ticks, c.speed.max ? 100 : 1);
        EXPECT_EQ(run.feed.behindMicros(kStart + c.afterMicros), c.behindMicros) << c.speed.factor;
        run.take(kStart + c.afterMicros);
        EXPECT_EQ(run.feed.ticksTaken(), c.ticks) << c.speed.factor << " " << c.afterMicros;
    }
}

TEST(Feed, AChangeOfSpeedCountsFromTheTickThatWaits) {
    Replay run(everyMillisecond(100));
    EXPECT_EQ(run.take(5'000).ticks, 1);
    run.feed.setSpeed({.factor = 10});
    const std::int64_t minute = 60'005'000;
    EXPECT_EQ(run.take(minute).ticks, 1);
    EXPECT_EQ(run.take(minute + 1'000).ticks, 10);
    EXPECT_EQ(run.feed.behindMicros(minute + 2'100), 1'000) << "the next was due at 1.1 ms";
    run.feed.setSpeed({.factor = 1});
    EXPECT_EQ(run.feed.behindMicros(minute + 9'000), 0) << "what was due before the change is not due by it";
    run.feed.setSpeed(kMax);
    EXPECT_EQ(run.take(minute + 1'000).ticks, 88);
}

TEST(Feed, ASliceEndsAtItsLimitsAndSaysThatMoreIsDue) {
    for (const auto last : {TickSource::Next::end, TickSource::Next::failed}) {
        const bool ends = last == TickSource::Next::end;
        Replay run(everyMillisecond(25), kMax, last);
        for (const int ticks : {20, 5, 0}) {
            const Slice slice = run.take(0, {.maxTicks = 20});
            EXPECT_EQ(slice.ticks, ticks);
            EXPECT_EQ(slice.more, ticks == 20);
            EXPECT_EQ(slice.state, slice.more ? FeedState::running : ends ? FeedState::ended : FeedState::failed);
        }
        EXPECT_EQ(run.feed.error(), ends ? "" : "it broke");
    }
    Replay run(everyMillisecond(1'000), kMax);
    run.clock.stepPerRead = 1'000;
    const Slice slice = run.take(0, {.maxMicros = 8'000});
    EXPECT_TRUE(slice.more);
    EXPECT_EQ(slice.ticks, 8 * 16);
    run.clock.stepPerRead = 100'000;
    EXPECT_GE(run.take(0).ticks, 1) << "a late slice still takes one";
}

TEST(Tally, KeepsLiveOrdersByArrivalAndLevelsInOrderAndCountsContradictions) {
    Tally tally;
    const auto order = [&](OrderAction action, OrderId id, Quantity quantity) {
        tally.order({action, {.id = id, .quantity = quantity}});
    };
    tally.instrument({.id = 0, .symbol = "ONE", .tickSize = 0, .bookLevels = 2});
    for (const OrderId id : {50u, 7u, 900u}) order(OrderAction::add, id, 10);
    order(OrderAction::change, 50, 3);
    order(OrderAction::remove, 7, 10);
    order(OrderAction::add, 1, 4);
    for (const int level : {1, 0})
        tally.level({.instrument = 0, .side = Side::sell, .level = level, .price = 3 + level, .quantity = 1});
    tally.level({.instrument = 0, .side = Side::buy, .level = 1, .price = 1, .quantity = 1});
    EXPECT_EQ(tally.faults(), 0);

    order(OrderAction::change, 2, 1);
    order(OrderAction::remove, 2, 1);
    order(OrderAction::add, 1, 2);
    tally.trade({.instrument = 1});
    tally.instrument({.id = 0, .symbol = "AGAIN"});
    tally.level({.instrument = 0, .side = Side::buy, .level = 2});
    EXPECT_EQ(tally.faults(), 6);
    EXPECT_EQ(tally.tradeCount(), 0);

    std::vector<std::pair<OrderId, Quantity>> found;
    for (const Order& one : tally.liveOrdersByArrival()) found.emplace_back(one.id, one.quantity);
    EXPECT_EQ(found, (std::vector<std::pair<OrderId, Quantity>>{{50, 3}, {900, 10}, {1, 4}}));
    std::vector<Price> prices;
    for (const BookLevel& level : tally.instruments()[0].levels) prices.push_back(level.price);
    EXPECT_EQ(prices, (std::vector<Price>{4, 3, kNoPrice, 1}));
}

}  // namespace
