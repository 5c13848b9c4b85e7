#include "HostTestTools.h"
#include "host/core/SettingsFile.h"
#include "host/core/Simulator.h"
#include "host/core/WatchColumns.h"
#include "host/core/WatchStore.h"
#include "quor/expression/core/ExpressionEvaluator.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <tuple>

using namespace terminal;
using namespace terminal::test;

namespace {

std::string cell(const WatchData& data, std::string_view heading) {
    int column = 0;
    while (column < kWatchBuiltInColumns && heading != watchColumn(column).heading) ++column;
    TextBuffer buffer;
    return std::string(watchText(data, column, buffer));
}

// Of several, both parted by commas.
std::string cells(const WatchData& data, const char* headings) {
    std::istringstream names(headings);
    std::string all;
    for (std::string name; std::getline(names, name, ',');) all += (all.empty() ? "" : ",") + cell(data, name);
    return all;
}

constexpr Price units(double price) { return static_cast<Price>(price * static_cast<double>(kPriceOne) + 0.5); }
constexpr MarketTime second = 1'000'000'000;

// One future as its session might stand: close 100, last 102.50 after 102, high 103, low 99, touch 102.40 to 102.60.
struct OneFuture {
    WatchMarket market;
    OneFuture() {
        market.instrument({.id = 0, .symbol = "ABCD", .series = "FUT", .tickSize = units(0.05), .bookLevels = 0});
        Quote news{.instrument = 0, .fields = 0x1fff, .time = 3600 * second};
        news.last = units(102), news.lastSize = 25;
        news.bid = units(102.40), news.bidSize = 300;
        news.ask = units(102.60), news.askSize = 100;
        news.open = units(101), news.high = units(103), news.low = units(99), news.close = units(100);
        news.volume = 400, news.value = 40'600;
        news.openInterest = 1000;
        market.quote(news);
        news.fields = quoteLast | quoteOpenInterest;
        news.time += second;
        news.last = units(102.50);
        news.openInterest = 950;
        market.quote(news);
    }
    void order(OrderId id, Side side, double price, Quantity quantity) {
        market.order({OrderAction::add, {id, 0, side, units(price), quantity, 3700 * second}});
    }
    std::string operator[](const char* headings) const { return cells(market[0], headings); }
};

TEST(WatchColumns, TextsFollowTheQuote) {
    OneFuture future;
    EXPECT_EQ(future["Symbol,Series,Last,Change,Change %,Last Before,Tick Change,Direction,Up Ticks,Down Ticks"],
              "ABCD,FUT,102.50,+2.50,+2.50,102.00,+0.50,Up,1,0");
    EXPECT_EQ(future["Bid,Ask Qty,Spread,Spread Ticks,Mid,Weighted Mid"], "102.40,100,0.20,4,102.50,102.55");
    EXPECT_EQ(future["Range,Range %,Range Position,Gap,From High,From Low %"], "4.00,4.04,88,+1.00,-0.50,+3.54");
    EXPECT_EQ(future["Value,Average,From Average,Last Value"], "40600.00,101.50,+1.00,2562.50");
    EXPECT_EQ(future["OI Change,OI Change %,OI High,OI Low"], "-50,-5.00,1000,950");
    EXPECT_EQ(future["Time,Quote Time,Trade Time,Date"], "01:00:01,01:00:00,01:00:01,1970-01-01");
    EXPECT_EQ(future["Delta,Updates,Number,Order Time,Total Bid Qty,Bid 2"], "-,2,1,,,");
    // Of news with one side the other stands as it was.
    const std::tuple<std::uint16_t, double, const char*> news[] = {{quoteBid, 102.20, "0.40,0.20"},
                                                                   {quoteAsk, 102.30, "0.40,0.10"},
                                                                   {quoteLast, 102.25, "0.40,0.10"},
                                                                   {quoteAsk, 103.20, "1.00,0.10"}};
    for (const auto& [field, price, spreads] : news) {
        Quote quote{.instrument = 0, .fields = field, .time = 3602 * second};
        quote.bid = quote.ask = quote.last = units(price);
        future.market.quote(quote);
        EXPECT_EQ(future["Widest Spread,Narrowest Spread"], spreads) << price;
    }
    EXPECT_EQ(future["Quote Updates"], "4");
}

// A last price against a close of 100.00, with ticks of 0.01.
TEST(WatchColumns, WhatShowsAsZeroHasNoSign) {
    const std::pair<Price, const char*> cases[] = {
        {100'00400000, "0.00"}, {99'99600000, "0.00"}, {100'01000000, "+0.01"}, {99'99000000, "-0.01"}};
    for (const auto& [last, change] : cases) {
        WatchMarket market;
        market.instrument({.id = 0, .symbol = "X", .tickSize = kPriceOne / 100});
        market.quote({.instrument = 0, .fields = quoteLast | quoteClose, .last = last, .close = 100 * kPriceOne});
        EXPECT_EQ(cell(market[0], "Change"), change) << last;
        EXPECT_EQ(cell(market[0], "Change %"), change) << last;
    }
    for (const char* kept : {"-", "-0.01", "-nan", ""}) EXPECT_EQ(withoutZeroSign(kept), kept);
    EXPECT_EQ(withoutZeroSign("-0.00%"), "0.00%");
    for (const char* none : {"Divided by ZERO error", "inf", "-nan", "-", ""})
        EXPECT_EQ(userColumnTone(none), WatchTone::dim) << none;
    EXPECT_EQ(userColumnTone("-0.25"), WatchTone::sign);
}

// An instrument without news; then with figures at the ends of their ranges, whose texts fit their cells.
TEST(WatchColumns, WhatTheFeedHasNotToldIsEmptyAndHostileFiguresFit) {
    WatchMarket market;
    market.instrument({.id = 0, .symbol = "X", .tickSize = 1});
    EXPECT_EQ(cells(market[0], "Last,Change %,Bid,Spread,Weighted Mid,Range Position,Time,Delta"), "-");
    TextBuffer buffer;
    for (const int outside : {-1, kWatchBuiltInColumns, 4095}) EXPECT_EQ(watchText(market[0], outside, buffer), "");
    constexpr Price most = kLargestPrice;
    const std::pair<Price, Price> extremes[] = {{most, most}, {most, -most}, {-most, most}, {0, 0}, {kNoPrice, 1}};
    for (const auto& [one, other] : extremes) {
        Quote news{.instrument = 0, .fields = 0x1fff, .time = std::numeric_limits<MarketTime>::max()};
        news.bid = one;
        news.ask = news.last = news.high = other;
        news.open = news.low = news.close = one == kNoPrice ? 0 : one;
        news.volume = news.lastSize = news.bidSize = news.askSize = news.openInterest = kLargestQuantity;
        news.value = std::numeric_limits<double>::max();
        market.quote(news);
        for (int i = 0; i < kWatchBuiltInColumns; ++i) EXPECT_LT(cell(market[0], watchColumn(i).heading).size(), 40u);
    }
}

TEST(WatchData, DepthBelowTheTouchIsTheOrdersBehindItOrTheBooks) {
    OneFuture future;
    future.order(1, Side::buy, 102.40, 10);  // at the touch
    future.order(2, Side::buy, 102.30, 20);
    future.order(3, Side::buy, 102.30, 30);
    future.order(4, Side::buy, 102.00, 40);
    future.order(5, Side::buy, 102.70, 50);  // through the touch: no level
    future.order(6, Side::sell, 102.65, 60);
    EXPECT_EQ(future["Bid,Bid Qty,Bid Orders,Bid 2,Bid Qty 2,Bid Orders 2,Bid 3,Bid 4"],
              "102.40,300,1,102.30,50,2,102.00,");
    EXPECT_EQ(future["Ask 2,Ask Qty 2,Ask 3,Ask Orders"], "102.65,60,,");
    EXPECT_EQ(future["Live Orders,Total Bid Qty,Total Ask Qty,Imbalance %"], "6,150,60,+42.86");

    future.market.order({OrderAction::change, {4, 0, Side::buy, units(102.30), 5, 0}});
    for (int twice = 0; twice < 2; ++twice) {  // at the second time it is not known
        future.market.order({OrderAction::remove, {2, 0, Side::buy, units(102.30), 20, 0}});
        EXPECT_EQ(future["Bid Qty 2,Live Orders,Bid 3"], "35,5,");
    }
    WatchMarket market;  // of a book, levels as they came
    market.instrument({.id = 0, .symbol = "X", .bookLevels = 10});
    for (int level = 0; level < 10; ++level) market.level({0, Side::sell, level, units(50 + level), 100 * (level + 1)});
    market.level({0, Side::sell, 2, kNoPrice, 0});
    EXPECT_EQ(cells(market[0], "Ask 2,Ask 3,Ask Qty 5,Total Ask Qty,Ask Orders 2"), "51.00,,500,1200,");
}

// Over a stretch of the simulator: no depth is out of order, and the sums are those of the feed's own account.
TEST(WatchData, DepthOfASimulatedMarketIsInOrderAndComplete) {
    Feed feed(makeSimulator({.seed = 7, .instruments = 20, .ticksPerSecond = 10'000}), {true, 1}, nullptr);
    WatchMarket market;
    SetClock clock;
    while (feed.ticksTaken() < 20'000) feed.take(clock, {}, market);
    std::vector<Quantity> resting(market.size());
    for (const auto& [id, live] : feed.tally().liveOrders()) resting[live.order.instrument] += live.order.quantity;
    int levels = 0;
    for (InstrumentId id = 0; id < market.size(); ++id) {
        const auto bids = market[id].total(Side::buy), asks = market[id].total(Side::sell);
        EXPECT_EQ((bids ? bids->quantity : 0) + (asks ? asks->quantity : 0), resting[id]);
        EXPECT_EQ(market[id].trades, feed.tally().instruments()[id].trades);
        EXPECT_EQ(market[id].quote, feed.tally().instruments()[id].quote);
        for (const int sign : {1, -1})
            for (int level = 1; level < kWatchDepth; ++level) {
                const Side side = sign > 0 ? Side::buy : Side::sell;
                const auto better = market[id].depth(side, level - 1), worse = market[id].depth(side, level);
                if (!worse) continue;
                ++levels;
                ASSERT_TRUE(better);
                EXPECT_LT(sign * worse->price, sign * better->price);
                EXPECT_GT(worse->quantity, 0);
            }
    }
    EXPECT_GT(levels, 20);
}

// Each formula with the cells' texts put in place of its references gives what it says.
TEST(WatchStore, TheFirstUserColumnsAreWrittenOnceAndCompute) {
    const TestFile file;
    quor::Disk disk;
    SettingsFile settings(disk, file.name);
    ASSERT_TRUE(settings.load());
    writeFirstUserColumns(settings);
    EXPECT_TRUE(
        settings.get("MarketWatch", "UserColumns")->starts_with("112\247Spread bp\247 ( \"8\" - \"7\" ) * 20000"));
    settings.set("MarketWatch", "UserColumns", "");
    writeFirstUserColumns(settings);
    EXPECT_EQ(settings.get("MarketWatch", "UserColumns"), "");

    const OneFuture future;
    std::vector<double> expected{(102.50 - 103) / 103 * 100, 0.20 / 102.50 * 10'000};
    for (const UserColumn& column : firstUserColumns()) {
        std::string built, headings, part;
        std::istringstream parts(column.byNumber);
        for (bool reference = false; std::getline(parts, part, '"'); reference = !reference) {
            const std::string heading = reference ? watchColumn(std::atoi(part.c_str())).heading : "";
            built += reference ? future[heading.c_str()] : part;
            headings += reference ? '"' + heading + '"' : part;
        }
        double result = 0;
        EXPECT_EQ(EvaluateExpression(built.c_str(), &result), EXPR_OK) << built;
        EXPECT_NEAR(result, expected.back(), 1e-9) << built;
        expected.pop_back();
        EXPECT_EQ(headings, column.byHeading);
    }
}

}  // namespace
