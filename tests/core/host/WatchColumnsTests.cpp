#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <set>

#include "HostTestTools.h"
#include "host/core/SettingsFile.h"
#include "host/core/Simulator.h"
#include "host/core/WatchColumns.h"
#include "host/core/WatchRecord.h"
#include "host/core/WatchStore.h"
#include "src/expression/core/ExpressionEvaluator.h"

using namespace terminal;
using namespace terminal::test;

namespace {

int columnOf(std::string_view heading) {
    for (int i = 0; i < watchBuiltInColumns; ++i)
        if (heading == watchColumn(i).heading) return i;
    return -1;
}

std::string cell(const WatchData& data, std::string_view heading) {
    TextBuffer buffer;
    return std::string(watchText(data, columnOf(heading), buffer));
}

constexpr Price units(double price) { return static_cast<Price>(price * static_cast<double>(priceOne) + 0.5); }
constexpr MarketTime second = 1'000'000'000;

// One future as its session might stand: close 100, last 102.50 after 102, high 103, low 99, touch 102.40 to 102.60.
struct OneFuture {
    WatchMarket market;
    OneFuture() {
        market.instrument({.id = 0, .symbol = "ABCD", .series = "FUT", .tickSize = units(0.05), .bookLevels = 0});
        Quote first{.instrument = 0, .fields = 0x1fff, .time = 3600 * second};
        first.last = units(102);
        first.lastSize = 25;
        first.bid = units(102.40);
        first.ask = units(102.60);
        first.bidSize = 300;
        first.askSize = 100;
        first.open = units(101);
        first.high = units(103);
        first.low = units(99);
        first.close = units(100);
        first.volume = 400;
        first.openInterest = 1000;
        first.value = 40'600;
        market.quote(first);
        Quote next{.instrument = 0, .fields = quoteLast | quoteOpenInterest, .time = 3601 * second};
        next.last = units(102.50);
        next.openInterest = 950;
        market.quote(next);
    }
    void order(OrderId id, Side side, double price, Quantity quantity) {
        market.order({OrderAction::add, {id, 0, side, units(price), quantity, 3700 * second}});
    }
    std::string operator[](std::string_view heading) const { return cell(market[0], heading); }
};

TEST(WatchColumns, EveryHeadingIsItsOwnAndCanBeStored) {
    std::set<std::string> headings;
    for (int i = 0; i < watchBuiltInColumns; ++i) {
        const WatchColumnInfo& column = watchColumn(i);
        ASSERT_NE(column.heading, nullptr) << i;
        EXPECT_TRUE(headings.insert(column.heading).second) << column.heading;
        EXPECT_EQ(std::strpbrk(column.heading, ",#\"\xA7"), nullptr) << column.heading;
        EXPECT_LT(std::strlen(column.heading), 64u);
        EXPECT_GE(column.width, 50) << column.heading;
    }
    for (const UserColumn& column : firstUserColumns()) EXPECT_TRUE(headings.insert(column.heading).second);
}

TEST(WatchColumns, NamedColumnsStandWhereTheTableHasThem) {
    const std::pair<WatchColumn, const char*> named[] = {
        {WatchColumn::symbol, "Symbol"}, {WatchColumn::last, "Last"},    {WatchColumn::change, "Change"},
        {WatchColumn::bid, "Bid"},       {WatchColumn::ask, "Ask"},      {WatchColumn::high, "High"},
        {WatchColumn::close, "Close"},   {WatchColumn::time, "Time"},    {WatchColumn::value, "Value"},
        {WatchColumn::spread, "Spread"}, {WatchColumn::volume, "Volume"}};
    for (const auto& [column, heading] : named) EXPECT_STREQ(watchColumn(static_cast<int>(column)).heading, heading);
    EXPECT_EQ(static_cast<int>(WatchColumn::time), watchShownColumns - 1);
}

TEST(WatchColumns, TextsFollowTheQuote) {
    const OneFuture future;
    const struct {
        const char* heading;
        const char* text;
    } cases[] = {
        {"Symbol", "ABCD"},
        {"Series", "FUT"},
        {"Last", "102.50"},
        {"Change", "+2.50"},
        {"Change %", "+2.50"},
        {"Bid", "102.40"},
        {"Ask Qty", "100"},
        {"Average", "101.50"},
        {"Value", "40600.00"},
        {"Spread", "0.20"},
        {"Spread Ticks", "4"},
        {"Mid", "102.50"},
        {"Weighted Mid", "102.55"},
        {"Range", "4.00"},
        {"Range %", "4.04"},
        {"Range Position", "88"},
        {"Gap", "+1.00"},
        {"From High", "-0.50"},
        {"From Low %", "+3.54"},
        {"From Average", "+1.00"},
        {"Last Before", "102.00"},
        {"Tick Change", "+0.50"},
        {"Direction", "Up"},
        {"Up Ticks", "1"},
        {"Down Ticks", "0"},
        {"OI Change", "-50"},
        {"OI Change %", "-5.00"},
        {"OI High", "1000"},
        {"OI Low", "950"},
        {"Time", "01:00:01"},
        {"Quote Time", "01:00:00"},
        {"Trade Time", "01:00:01"},
        {"Date", "1970-01-01"},
        {"Last Value", "2562.50"},
        {"Delta", "-"},
        {"Order Time", ""},
        {"Total Bid Qty", ""},
        {"Bid 2", ""},
        {"Updates", "2"},
        {"Number", "1"},
    };
    for (const auto& [heading, text] : cases) EXPECT_EQ(future[heading], text) << heading;
}

// A last price against a close of 100.00, with ticks of 0.01.
TEST(WatchColumns, WhatShowsAsZeroHasNoSign) {
    const struct {
        Price last;
        const char *change, *percent;
    } cases[] = {{100'00000000, "0.00", "0.00"},
                 {100'00400000, "0.00", "0.00"},
                 {99'99600000, "0.00", "0.00"},
                 {100'01000000, "+0.01", "+0.01"},
                 {99'99000000, "-0.01", "-0.01"}};
    for (const auto& [last, change, percent] : cases) {
        WatchMarket market;
        market.instrument({.id = 0, .symbol = "X", .tickSize = priceOne / 100});
        market.quote({.instrument = 0, .fields = quoteLast | quoteClose, .last = last, .close = 100 * priceOne});
        EXPECT_EQ(cell(market[0], "Change"), change) << last;
        EXPECT_EQ(cell(market[0], "Change %"), percent) << last;
    }
    for (const char* kept : {"-", "-0.01", "+inf", "-nan", "0.00", ""}) EXPECT_EQ(withoutZeroSign(kept), kept);
    EXPECT_EQ(withoutZeroSign("-0.00%"), "0.00%");
}

// Of news with one side the other stands as it was.
TEST(WatchColumns, SpreadsFollowEitherSide) {
    OneFuture future;
    const struct {
        std::uint16_t field;
        double price;
        const char *widest, *narrowest;
    } news[] = {{quoteBid, 102.20, "0.40", "0.20"},
                {quoteAsk, 102.30, "0.40", "0.10"},
                {quoteLast, 102.25, "0.40", "0.10"},
                {quoteAsk, 102.50, "0.40", "0.10"},
                {quoteAsk, 103.20, "1.00", "0.10"}};
    for (const auto& [field, price, widest, narrowest] : news) {
        Quote quote{.instrument = 0, .fields = field, .time = 3602 * second};
        quote.bid = quote.ask = quote.last = units(price);
        future.market.quote(quote);
        EXPECT_EQ(future["Widest Spread"], widest) << price;
        EXPECT_EQ(future["Narrowest Spread"], narrowest) << price;
    }
    EXPECT_EQ(future["Quote Updates"], "5");
}

TEST(WatchColumns, AUserColumnWithoutANumberIsDim) {
    for (const char* number : {"1.00", "-0.25", "+3"}) EXPECT_EQ(userColumnTone(number), WatchTone::sign) << number;
    for (const char* none : {"Divided by ZERO error", "inf", "-nan", "-", ""})
        EXPECT_EQ(userColumnTone(none), WatchTone::dim) << none;
}

TEST(WatchColumns, WhatTheFeedHasNotToldIsEmpty) {
    WatchMarket market;
    market.instrument({.id = 0, .symbol = "X"});
    const std::set<std::string> always{"Symbol",         "Up Ticks",      "Down Ticks",   "Trades",
                                       "Largest Trade",  "Bought at Ask", "Sold at Bid",  "Flow",
                                       "Updates",        "Quote Updates", "Orders Added", "Orders Changed",
                                       "Orders Removed", "Book Levels",   "Number",       "Live Orders"};
    for (int i = 0; i < watchBuiltInColumns; ++i) {
        if (always.count(watchColumn(i).heading)) continue;
        const std::string text = cell(market[0], watchColumn(i).heading);
        EXPECT_TRUE(text.empty() || text == "-") << watchColumn(i).heading;
    }
    TextBuffer buffer;
    for (const int outside : {-1, watchBuiltInColumns, 4095}) EXPECT_EQ(watchText(market[0], outside, buffer), "");
}

TEST(WatchColumns, HostileFiguresStayInTheirBuffer) {
    WatchMarket market;
    market.instrument({.id = 0, .symbol = "X", .tickSize = 1});
    const std::pair<Price, Price> extremes[] = {{largestPrice, largestPrice},
                                                {largestPrice, -largestPrice},
                                                {-largestPrice, largestPrice},
                                                {0, 0},
                                                {noPrice, 1}};
    for (const auto& [one, other] : extremes) {
        Quote news{.instrument = 0, .fields = 0x1fff, .time = std::numeric_limits<MarketTime>::max()};
        news.bid = one;
        news.ask = other;
        news.last = news.high = other;
        news.open = news.low = news.close = one == noPrice ? 0 : one;
        news.volume = news.lastSize = news.bidSize = news.askSize = news.openInterest = largestQuantity;
        news.value = std::numeric_limits<double>::max();
        market.quote(news);
        for (int i = 0; i < watchBuiltInColumns; ++i) EXPECT_LT(cell(market[0], watchColumn(i).heading).size(), 40u);
    }
}

TEST(WatchData, DepthBelowTheTouchIsTheOrdersBehindIt) {
    OneFuture future;
    future.order(1, Side::buy, 102.40, 10);  // at the touch
    future.order(2, Side::buy, 102.30, 20);
    future.order(3, Side::buy, 102.30, 30);
    future.order(4, Side::buy, 102.00, 40);
    future.order(5, Side::buy, 102.70, 50);  // through the touch: no level
    future.order(6, Side::sell, 102.65, 60);
    const struct {
        const char* heading;
        const char* text;
    } cases[] = {
        {"Bid", "102.40"},    {"Bid Qty", "300"},       {"Bid Orders", "1"},     {"Bid 2", "102.30"},
        {"Bid Qty 2", "50"},  {"Bid Orders 2", "2"},    {"Bid 3", "102.00"},     {"Bid 4", ""},
        {"Ask Orders", ""},   {"Ask 2", "102.65"},      {"Ask Qty 2", "60"},     {"Ask 3", ""},
        {"Live Orders", "6"}, {"Total Bid Qty", "150"}, {"Total Ask Qty", "60"}, {"Imbalance %", "+42.86"},
    };
    for (const auto& [heading, text] : cases) EXPECT_EQ(future[heading], text) << heading;

    future.market.order({OrderAction::change, {4, 0, Side::buy, units(102.30), 5, 0}});
    future.market.order({OrderAction::remove, {2, 0, Side::buy, units(102.30), 20, 0}});
    EXPECT_EQ(future["Bid Qty 2"], "35");
    EXPECT_EQ(future["Bid 3"], "");
    EXPECT_EQ(future["Live Orders"], "5");
    future.market.order({OrderAction::remove, {2, 0, Side::buy, units(102.30), 20, 0}});  // again: not known
    EXPECT_EQ(future["Live Orders"], "5");
}

TEST(WatchData, ABookOfLevelsIsShownAsItCame) {
    WatchMarket market;
    market.instrument({.id = 0, .symbol = "X", .bookLevels = 10});
    for (int level = 0; level < 10; ++level) market.level({0, Side::sell, level, units(50 + level), 100 * (level + 1)});
    market.level({0, Side::sell, 2, noPrice, 0});
    EXPECT_EQ(cell(market[0], "Ask 2"), "51.00");
    EXPECT_EQ(cell(market[0], "Ask 3"), "");
    EXPECT_EQ(cell(market[0], "Ask Qty 5"), "500");
    EXPECT_EQ(cell(market[0], "Total Ask Qty"), "1200");
    EXPECT_EQ(cell(market[0], "Ask Orders 2"), "");
}

// Over a stretch of the simulator: no depth is crossed or out of order, and the sums are those of the feed's own
// account.
TEST(WatchData, DepthOfASimulatedMarketIsInOrderAndComplete) {
    Feed feed(makeSimulator({.seed = 7, .instruments = 20, .ticksPerSecond = 10'000}), {true, 1}, nullptr);
    WatchMarket market;
    SetClock clock;
    while (feed.ticksTaken() < 20'000) feed.take(clock, {}, market);
    std::vector<Quantity> resting(market.size());
    std::vector<int> orders(market.size());
    for (const auto& [id, live] : feed.tally().liveOrders()) {
        resting[live.order.instrument] += live.order.quantity;
        ++orders[live.order.instrument];
    }
    int levels = 0;
    for (InstrumentId id = 0; id < market.size(); ++id) {
        const auto bids = market[id].total(Side::buy), asks = market[id].total(Side::sell);
        EXPECT_EQ((bids ? bids->quantity : 0) + (asks ? asks->quantity : 0), resting[id]);
        EXPECT_EQ(cell(market[id], "Live Orders"), std::to_string(orders[id]));
        EXPECT_EQ(market[id].trades, feed.tally().instruments()[id].trades);
        EXPECT_EQ(market[id].quote, feed.tally().instruments()[id].quote);
        for (const Side side : {Side::buy, Side::sell})
            for (int level = 1; level < watchDepth; ++level) {
                const auto better = market[id].depth(side, level - 1), worse = market[id].depth(side, level);
                if (!worse) continue;
                ++levels;
                ASSERT_TRUE(better);
                EXPECT_TRUE(side == Side::buy ? worse->price < better->price : worse->price > better->price);
                EXPECT_GT(worse->quantity, 0);
            }
    }
    EXPECT_GT(levels, 20);
}

TEST(WatchRecord, TextsStandAtTheOffsetsTheLibraryReads) {
    const OneFuture future;
    const sMWStruct record(future.market[0]);
    const char* const bytes = reinterpret_cast<const char*>(&record);
    EXPECT_STREQ(bytes + 266, "ABCD FUT");
    EXPECT_STREQ(bytes + 401, "ABCD");
    EXPECT_EQ(reinterpret_cast<const void* const*>(bytes)[1], bytes);
    EXPECT_EQ(sMWStruct::of(&record), &record);
    const void* const other[2]{};
    EXPECT_EQ(sMWStruct::of(other), nullptr);
    EXPECT_EQ(sMWStruct::of(nullptr), nullptr);
}

TEST(WatchRecord, LongSymbolsAreCut) {
    WatchData data;
    data.instrument.symbol = std::string(500, 'x');
    EXPECT_EQ(std::strlen(sMWStruct(data).symbol), sMWStruct::textRoom - 1);
}

TEST(WatchStore, UserColumnsAreWrittenOnceAndAsTheLibraryReadsThem) {
    const TestFile file;
    quor::Disk disk;
    SettingsFile settings(disk, file.name);
    ASSERT_TRUE(settings.load());
    writeFirstUserColumns(settings);
    EXPECT_EQ(
        settings.get("MarketWatch", "UserColumns"),
        "112\xA7Spread bp\xA7 ( \"8\" - \"7\" ) * 20000 / ( \"8\" + \"7\" )\xA7 ( \"Ask\" - \"Bid\" ) * 20000 / ( "
        "\"Ask\" + \"Bid\" )\xA7"
        "113\xA7"
        "From High %\xA7 ( \"2\" - \"11\" ) * 100 / \"11\"\xA7 ( \"Last\" - \"High\" ) * 100 / \"High\"");
    settings.set("MarketWatch", "UserColumns", "");
    writeFirstUserColumns(settings);
    EXPECT_EQ(settings.get("MarketWatch", "UserColumns"), "");
}

// Each formula with the cells' texts put in place of its references gives what it says.
TEST(WatchStore, FormulasOfTheFirstUserColumnsCompute) {
    const OneFuture future;
    const double expected[] = {0.20 / 102.50 * 10'000, (102.50 - 103) / 103 * 100};
    std::size_t nth = 0;
    for (const UserColumn& column : firstUserColumns()) {
        std::string built, headings;
        bool reference = false;
        for (const char* at = column.byNumber; *at; reference = !reference) {
            const char* const end = std::strchr(at, '"') ? std::strchr(at, '"') : at + std::strlen(at);
            const std::string part(at, end);
            built += reference ? cell(future.market[0], watchColumn(std::atoi(part.c_str())).heading) : part;
            headings += reference ? '"' + std::string(watchColumn(std::atoi(part.c_str())).heading) + '"' : part;
            at = *end ? end + 1 : end;
        }
        double result = 0;
        EXPECT_EQ(EvaluateExpression(built.c_str(), &result), EXPR_OK) << built;
        EXPECT_NEAR(result, expected[nth++], 1e-9) << built;
        EXPECT_EQ(headings, column.byHeading);
    }
}

TEST(WatchStore, WatchesHoldTheInstrumentsOfTheirSeries) {
    const auto& lists = watchLists();
    ASSERT_EQ(lists.size(), 2u);
    const Instrument share{.symbol = "A", .series = "EQ"}, future{.symbol = "B", .series = "FUT"};
    EXPECT_TRUE(lists[0].holds(share) && lists[0].holds(future));
    EXPECT_TRUE(!lists[1].holds(share) && lists[1].holds(future));
}

}  // namespace
