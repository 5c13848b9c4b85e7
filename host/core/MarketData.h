// What a market tells: instruments, quotes, orders, trades and the levels of a book, as plain values.
//
// Every source of data (simulator, tapes) speaks in these, and everything that listens (the windows, the tally, the
// recorder) reads them. All numbers are whole: two builds, or a recording and its replay, never differ by a rounding.
// The one exception is the traded value of a session, a figure to look at; its text keeps every bit.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <variant>
#include <vector>

namespace terminal {

// A price in units of 1/100,000,000. The tapes' integers of 1/10,000 and prices with up to 8 decimals are both exact.
using Price = std::int64_t;
inline constexpr Price kPriceOne = 100'000'000;
// "There is no such price": an empty side of a book. Shown as an empty cell, never computed with.
inline constexpr Price kNoPrice = std::numeric_limits<Price>::min();
// No price of a feed is larger than this on either side of zero (90,000,000,000.00).
inline constexpr Price kLargestPrice = 90'000'000'000 * kPriceOne;

using Quantity = std::int64_t;  // shares or contracts, never negative
inline constexpr Quantity kLargestQuantity = 1'000'000'000'000;

// Nanoseconds since 1970-01-01 00:00:00 of the exchange's clock; no time zone is known or meant. A source without a
// date begins at 0, so that its times show as 00:00:00.
using MarketTime = std::int64_t;

// Instruments are numbered 0, 1, 2, ... in the order in which their feed announces them: an index, not a key.
using InstrumentId = std::uint32_t;
using OrderId = std::uint64_t;  // unique for the whole run, never used again

enum class Side : std::uint8_t { buy, sell };

// Comes once, before anything else names its id.
struct Instrument {
    InstrumentId id = 0;
    std::string symbol{};  // any bytes but NUL; not empty
    std::string series{};  // "EQ", "FUT", ...; may be empty
    Price tickSize = 0;    // 0: not known
    int bookLevels = 0;    // levels a side of its book that will come as BookLevel; 0: no book
    bool operator==(const Instrument&) const = default;
};

// The fields of a quote, as bits of Quote::fields.
enum QuoteField : std::uint16_t {
    quoteLast = 1,
    quoteLastSize = 2,
    quoteBid = 4,
    quoteAsk = 8,
    quoteBidSize = 16,
    quoteAskSize = 32,
    quoteOpen = 64,
    quoteHigh = 128,
    quoteLow = 256,
    quoteClose = 512,  // of the session before; change and % change are counted from it
    quoteVolume = 1024,
    quoteValue = 2048,
    quoteOpenInterest = 4096,
};

// What is new about an instrument. Only the members whose bit is set mean anything; the others are 0, so that == works.
struct Quote {
    InstrumentId instrument = 0;
    std::uint16_t fields = 0;
    MarketTime time = 0;
    Price last = 0, bid = 0, ask = 0, open = 0, high = 0, low = 0, close = 0;  // bid and ask may be kNoPrice
    Quantity lastSize = 0, bidSize = 0, askSize = 0, volume = 0, openInterest = 0;
    double value = 0;  // sum of price times quantity of the session's trades, in currency units
    bool has(QuoteField field) const { return (fields & field) != 0; }
    bool operator==(const Quote&) const = default;
};

// Puts the fields that `news` has over those of `state`, time included.
void mergeQuote(Quote& state, const Quote& news);

// Which way a price went against the one before it of the same instrument; equal prices keep the direction.
enum class Move : std::int8_t { down = -1, none = 0, up = 1 };

struct Order {
    OrderId id = 0;
    InstrumentId instrument = 0;
    Side side = Side::buy;
    Price price = 0;
    Quantity quantity = 0;  // what is left of it; more than 0 while it lives
    MarketTime time = 0;    // of the last thing that happened to it
    bool operator==(const Order&) const = default;
};

enum class OrderAction : std::uint8_t { add, change, remove };

// `add` brings a new id; `change` gives price and quantity of a live one anew, its instrument and side stay; `remove`
// ends a live one and repeats its last price and quantity. Each order is added once and removed at most once.
struct OrderEvent {
    OrderAction action = OrderAction::add;
    Order order;
    bool operator==(const OrderEvent&) const = default;
};

struct Trade {
    InstrumentId instrument = 0;
    Price price = 0;
    Quantity quantity = 0;
    MarketTime time = 0;
    bool operator==(const Trade&) const = default;
};

// One level of an instrument's book; level 0 is the best. An empty level has price kNoPrice and quantity 0.
struct BookLevel {
    InstrumentId instrument = 0;
    Side side = Side::buy;
    int level = 0;  // below the instrument's bookLevels
    Price price = kNoPrice;
    Quantity quantity = 0;
    bool operator==(const BookLevel&) const = default;
};

using FeedEvent = std::variant<Instrument, Quote, OrderEvent, Trade, BookLevel>;

// All that happens at one moment: one line of a tape, one step of the simulator. The events stand in the order in which
// they are to be taken; an instrument comes before its first use. The time of each event is the tick's.
struct Tick {
    MarketTime time = 0;
    std::vector<FeedEvent> events;
};

}  // namespace terminal
