// Prices stay whole numbers until their text is made; ratios are doubles. Differences and percentages carry their sign,
// so that a cell's colour can follow its text; what shows as zero has none.
#include "host/core/WatchColumns.h"

#include "quor/platform/Base.h"

#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace terminal {

namespace {
using Cell = const WatchCell&;
using View = std::string_view;

constexpr double kOne = static_cast<double>(kPriceOne);

[[gnu::format(printf, 2, 3)]] View print(Cell cell, const char* format, ...) {
    va_list values;
    va_start(values, format);
    const int length = std::vsnprintf(cell.buffer.text, sizeof cell.buffer.text, format, values);
    va_end(values);
    const int most = static_cast<int>(sizeof cell.buffer.text) - 1;
    return {cell.buffer.text, static_cast<std::size_t>(length < most ? length : most)};
}

View price(Cell cell, Price value) {
    return value == kNoPrice ? View() : formatPrice(value, decimalsOf(cell.data.instrument.tickSize), cell.buffer);
}

// A price out of a division, rounded as the instrument's prices are.
View meanPrice(Cell cell, double units) {
    return std::abs(units) < static_cast<double>(kLargestPrice) ? price(cell, static_cast<Price>(std::llround(units)))
                                                                : View();
}

// kNoPrice for a difference that no price can be: two hostile prices lie further apart than a number holds.
Price minus(Price of, Price from) {
    Price result = 0;
    return quor::subtractOverflows(of, from, result) ? kNoPrice : result;
}
double units(Price price) { return static_cast<double>(price); }

View difference(Cell cell, Price of, Price from) {
    return formatChange(minus(of, from), decimalsOf(cell.data.instrument.tickSize), cell.buffer);
}

View quantity(Cell cell, Quantity value) { return formatQuantity(value, cell.buffer); }
View signedCount(Cell cell, std::int64_t value) {
    return print(cell, value > 0 ? "+%lld" : "%lld", static_cast<long long>(value));
}

// `part` of `whole` in per cent; nothing for a whole that is not above 0.
View percent(Cell cell, double part, double whole) {
    return whole > 0 ? withoutZeroSign(print(cell, "%+.2f", part / whole * 100)) : View();
}

View timeOfDay(Cell cell, MarketTime time) { return time ? formatTimeOfDay(time, cell.buffer).substr(0, 8) : View(); }

// A field of the quote.
template <QuoteField field, Price Quote::*member>
View priceOf(Cell cell) {
    return cell.data.quote.has(field) ? price(cell, cell.data.quote.*member) : View();
}
template <QuoteField field, Quantity Quote::*member>
View quantityOf(Cell cell) {
    return cell.data.quote.has(field) ? quantity(cell, cell.data.quote.*member) : View();
}
// What counts from 0 as the feed goes.
template <auto member>
View countOf(Cell cell) {
    return quantity(cell, cell.data.*member);
}
template <MarketTime WatchData::*member>
View timeOf(Cell cell) {
    return timeOfDay(cell, cell.data.*member);
}
template <Price WatchData::*member>
View priceIn(Cell cell) {
    return price(cell, cell.data.*member);
}
template <std::optional<Quantity> WatchData::*member>
View openInterestOf(Cell cell) {
    return cell.data.*member ? quantity(cell, *(cell.data.*member)) : View();
}

// Levels count from 1 here, as their headings do.
template <Side side, int level>
View depthPrice(Cell cell) {
    const auto found = cell.data.depth(side, level - 1);
    return found ? price(cell, found->price) : View();
}
template <Side side, int level>
View depthSize(Cell cell) {
    const auto found = cell.data.depth(side, level - 1);
    return found ? quantity(cell, found->quantity) : View();
}
template <Side side, int level>
View depthOrders(Cell cell) {
    const auto found = cell.data.depth(side, level - 1);
    return found && found->orders ? quantity(cell, found->orders) : View();
}
template <Side side>
View totalSize(Cell cell) {
    const auto sum = cell.data.total(side);
    return sum ? quantity(cell, sum->quantity) : View();
}

bool twoSided(Cell cell) { return cell.data.hasBid() && cell.data.hasAsk(); }
bool both(Cell cell, QuoteField a, QuoteField b) { return cell.data.quote.has(a) && cell.data.quote.has(b); }

// Of one price of the quote against another: as a difference, and in per cent of the other.
template <QuoteField field, Price Quote::*member, QuoteField baseField, Price Quote::*base>
View against(Cell cell) {
    const Quote& quote = cell.data.quote;
    return both(cell, field, baseField) ? difference(cell, quote.*member, quote.*base) : View();
}
template <QuoteField field, Price Quote::*member, QuoteField baseField, Price Quote::*base>
View percentAgainst(Cell cell) {
    const Quote& quote = cell.data.quote;
    return both(cell, field, baseField) ? percent(cell, units(quote.*member) - units(quote.*base), units(quote.*base))
                                        : View();
}

// The average price of the session's trades in units of Price; 0: there is none.
double averageOf(const Quote& quote) {
    if (!quote.has(quoteValue) || !quote.has(quoteVolume) || quote.volume <= 0) return 0;
    const double mean = quote.value / static_cast<double>(quote.volume) * kOne;
    return mean > 0 && mean < units(kLargestPrice) ? mean : 0;
}
View average(Cell cell) {
    const double mean = averageOf(cell.data.quote);
    return mean > 0 ? meanPrice(cell, mean) : View();
}
View fromAverage(Cell cell) {
    const double mean = averageOf(cell.data.quote);
    if (!(mean > 0) || !cell.data.quote.has(quoteLast)) return {};
    return difference(cell, cell.data.quote.last, static_cast<Price>(std::llround(mean)));
}
View fromAveragePercent(Cell cell) {
    const double mean = averageOf(cell.data.quote);
    return cell.data.quote.has(quoteLast) ? percent(cell, units(cell.data.quote.last) - mean, mean) : View();
}

View value(Cell cell) { return cell.data.quote.has(quoteValue) ? print(cell, "%.2f", cell.data.quote.value) : View(); }
View lastValue(Cell cell) {
    const Quote& quote = cell.data.quote;
    return both(cell, quoteLast, quoteLastSize)
               ? print(cell, "%.2f", static_cast<double>(quote.last) / kOne * static_cast<double>(quote.lastSize))
               : View();
}

View spread(Cell cell) {
    return twoSided(cell) ? price(cell, minus(cell.data.quote.ask, cell.data.quote.bid)) : View();
}
View spreadPercent(Cell cell) {
    if (!twoSided(cell)) return {};
    const double bid = units(cell.data.quote.bid), ask = units(cell.data.quote.ask);
    return ask + bid > 0 ? print(cell, "%.3f", (ask - bid) * 200 / (ask + bid)) : View();
}
View spreadTicks(Cell cell) {
    const Price tick = cell.data.instrument.tickSize;
    if (!twoSided(cell) || tick <= 0) return {};
    const Price width = minus(cell.data.quote.ask, cell.data.quote.bid);
    return width == kNoPrice ? View() : print(cell, "%lld", static_cast<long long>(width / tick));
}
View middle(Cell cell) {
    return twoSided(cell) ? meanPrice(cell, (units(cell.data.quote.bid) + units(cell.data.quote.ask)) / 2) : View();
}
// The touch weighted by the size of the other side: where the next trade is likelier.
View weightedMiddle(Cell cell) {
    const Quote& quote = cell.data.quote;
    const double bidSize = static_cast<double>(quote.bidSize), askSize = static_cast<double>(quote.askSize);
    if (!twoSided(cell) || bidSize + askSize <= 0) return {};
    return meanPrice(cell, (units(quote.bid) * askSize + units(quote.ask) * bidSize) / (bidSize + askSize));
}
View imbalance(Cell cell) {
    const auto bids = cell.data.total(Side::buy), asks = cell.data.total(Side::sell);
    if (!bids && !asks) return {};
    const double buy = bids ? static_cast<double>(bids->quantity) : 0,
                 sell = asks ? static_cast<double>(asks->quantity) : 0;
    return percent(cell, buy - sell, buy + sell);
}

View liveOrders(Cell cell) {
    const WatchData& data = cell.data;
    return quantity(cell, data.orderAdds - data.orderRemoves);
}

View range(Cell cell) {
    const Quote& quote = cell.data.quote;
    return both(cell, quoteHigh, quoteLow) ? price(cell, minus(quote.high, quote.low)) : View();
}
View rangePercent(Cell cell) {
    const Quote& quote = cell.data.quote;
    if (!both(cell, quoteHigh, quoteLow) || quote.low <= 0) return {};
    return print(cell, "%.2f", (units(quote.high) - units(quote.low)) / units(quote.low) * 100);
}
// 0 at the day's low, 100 at its high.
View rangePosition(Cell cell) {
    const Quote& quote = cell.data.quote;
    if (!both(cell, quoteHigh, quoteLow) || !quote.has(quoteLast) || quote.high <= quote.low) return {};
    const double low = units(quote.low);
    return print(cell, "%.0f", (units(quote.last) - low) / (units(quote.high) - low) * 100);
}

View tickChange(Cell cell) {
    const Price before = cell.data.lastBefore;
    return before == kNoPrice ? View() : difference(cell, cell.data.quote.last, before);
}
View direction(Cell cell) {
    return cell.data.direction == Move::up ? "Up" : cell.data.direction == Move::down ? "Down" : View();
}
View averageTrade(Cell cell) {
    const WatchData& data = cell.data;
    return data.trades && data.quote.has(quoteVolume) ? quantity(cell, data.quote.volume / data.trades) : View();
}
View flow(Cell cell) { return signedCount(cell, cell.data.boughtAtAsk - cell.data.soldAtBid); }
View openInterestChange(Cell cell) {
    const auto first = cell.data.firstOpenInterest;
    return first ? signedCount(cell, cell.data.quote.openInterest - *first) : View();
}
View openInterestPercent(Cell cell) {
    const auto first = cell.data.firstOpenInterest;
    return first
               ? percent(cell, static_cast<double>(cell.data.quote.openInterest - *first), static_cast<double>(*first))
               : View();
}

View symbol(Cell cell) { return cell.data.instrument.symbol; }
View series(Cell cell) { return cell.data.instrument.series; }
View time(Cell cell) {
    return cell.data.quote.fields ? formatTimeOfDay(cell.data.quote.time, cell.buffer).substr(0, 8) : View();
}
View date(Cell cell) {
    return cell.data.quote.fields ? formatDateTime(cell.data.quote.time, cell.buffer).substr(0, 10) : View();
}
View tickSize(Cell cell) {
    return cell.data.instrument.tickSize > 0 ? formatPrice(cell.data.instrument.tickSize, cell.buffer) : View();
}
View bookLevels(Cell cell) { return quantity(cell, cell.data.instrument.bookLevels); }
View number(Cell cell) { return quantity(cell, cell.data.instrument.id + Quantity{1}); }
// The terminal's feeds have neither options nor a link from a future to its underlying.
View notTraded(Cell) { return "-"; }

constexpr int kLeft = 0, kRight = 1;
constexpr int kText = 3, kWhole = 4, kDecimal = 5, kMoment = 6;
constexpr auto kPlain = WatchTone::plain, kDim = WatchTone::dim, kSign = WatchTone::sign, kBuy = WatchTone::buy,
               kSell = WatchTone::sell;
constexpr auto kB = Side::buy, kS = Side::sell;

constexpr std::array<WatchColumnInfo, kWatchBuiltInColumns> kColumns{{
    {"Symbol", 92, kLeft, kText, WatchTone::symbol, symbol},
    {"Series", 52, kLeft, kText, kDim, series},
    {"Last", 78, kRight, kDecimal, WatchTone::direction, priceOf<quoteLast, &Quote::last>},
    {"LTQ", 62, kRight, kDecimal, kPlain, quantityOf<quoteLastSize, &Quote::lastSize>},
    {"Change", 70, kRight, kDecimal, kSign, against<quoteLast, &Quote::last, quoteClose, &Quote::close>},
    {"Change %", 70, kRight, kDecimal, kSign, percentAgainst<quoteLast, &Quote::last, quoteClose, &Quote::close>},
    {"Bid Qty", 66, kRight, kDecimal, kBuy, quantityOf<quoteBidSize, &Quote::bidSize>},
    {"Bid", 78, kRight, kDecimal, kBuy, priceOf<quoteBid, &Quote::bid>},
    {"Ask", 78, kRight, kDecimal, kSell, priceOf<quoteAsk, &Quote::ask>},
    {"Ask Qty", 66, kRight, kDecimal, kSell, quantityOf<quoteAskSize, &Quote::askSize>},
    {"Open", 78, kRight, kDecimal, kPlain, priceOf<quoteOpen, &Quote::open>},
    {"High", 78, kRight, kDecimal, kPlain, priceOf<quoteHigh, &Quote::high>},
    {"Low", 78, kRight, kDecimal, kPlain, priceOf<quoteLow, &Quote::low>},
    {"Close", 78, kRight, kDecimal, kPlain, priceOf<quoteClose, &Quote::close>},
    {"Volume", 88, kRight, kDecimal, kPlain, quantityOf<quoteVolume, &Quote::volume>},
    {"Average", 78, kRight, kDecimal, kPlain, average},
    {"OI", 82, kRight, kDecimal, kDim, quantityOf<quoteOpenInterest, &Quote::openInterest>},
    {"Time", 74, kRight, kMoment, kDim, time},

    {"Value", 110, kRight, kDecimal, kPlain, value},
    {"Spread", 62, kRight, kDecimal, kDim, spread},
    {"Spread %", 68, kRight, kDecimal, kDim, spreadPercent},
    {"Spread Ticks", 84, kRight, kDecimal, kDim, spreadTicks},
    {"Widest Spread", 94, kRight, kDecimal, kDim, priceIn<&WatchData::widestSpread>},
    {"Narrowest Spread", 110, kRight, kDecimal, kDim, priceIn<&WatchData::narrowestSpread>},
    {"Mid", 78, kRight, kDecimal, kPlain, middle},
    {"Weighted Mid", 90, kRight, kDecimal, kPlain, weightedMiddle},

    {"Date", 80, kRight, kMoment, kDim, date},
    {"Trade Time", 78, kRight, kMoment, kDim, timeOf<&WatchData::tradeTime>},
    {"Quote Time", 78, kRight, kMoment, kDim, timeOf<&WatchData::quoteTime>},
    {"Order Time", 78, kRight, kMoment, kDim, timeOf<&WatchData::orderTime>},
    {"Open Time", 78, kRight, kMoment, kDim, timeOf<&WatchData::openTime>},
    {"High Time", 78, kRight, kMoment, kDim, timeOf<&WatchData::highTime>},
    {"Low Time", 78, kRight, kMoment, kDim, timeOf<&WatchData::lowTime>},

    {"Bid 2", 78, kRight, kDecimal, kBuy, depthPrice<kB, 2>},
    {"Bid 3", 78, kRight, kDecimal, kBuy, depthPrice<kB, 3>},
    {"Bid 4", 78, kRight, kDecimal, kBuy, depthPrice<kB, 4>},
    {"Bid 5", 78, kRight, kDecimal, kBuy, depthPrice<kB, 5>},
    {"Bid Qty 2", 70, kRight, kDecimal, kBuy, depthSize<kB, 2>},
    {"Bid Qty 3", 70, kRight, kDecimal, kBuy, depthSize<kB, 3>},
    {"Bid Qty 4", 70, kRight, kDecimal, kBuy, depthSize<kB, 4>},
    {"Bid Qty 5", 70, kRight, kDecimal, kBuy, depthSize<kB, 5>},
    {"Bid Orders", 74, kRight, kWhole, kBuy, depthOrders<kB, 1>},
    {"Bid Orders 2", 84, kRight, kWhole, kBuy, depthOrders<kB, 2>},
    {"Bid Orders 3", 84, kRight, kWhole, kBuy, depthOrders<kB, 3>},
    {"Bid Orders 4", 84, kRight, kWhole, kBuy, depthOrders<kB, 4>},
    {"Bid Orders 5", 84, kRight, kWhole, kBuy, depthOrders<kB, 5>},
    {"Ask 2", 78, kRight, kDecimal, kSell, depthPrice<kS, 2>},
    {"Ask 3", 78, kRight, kDecimal, kSell, depthPrice<kS, 3>},
    {"Ask 4", 78, kRight, kDecimal, kSell, depthPrice<kS, 4>},
    {"Ask 5", 78, kRight, kDecimal, kSell, depthPrice<kS, 5>},
    {"Ask Qty 2", 70, kRight, kDecimal, kSell, depthSize<kS, 2>},
    {"Ask Qty 3", 70, kRight, kDecimal, kSell, depthSize<kS, 3>},
    {"Ask Qty 4", 70, kRight, kDecimal, kSell, depthSize<kS, 4>},
    {"Ask Qty 5", 70, kRight, kDecimal, kSell, depthSize<kS, 5>},
    {"Ask Orders", 74, kRight, kWhole, kSell, depthOrders<kS, 1>},
    {"Ask Orders 2", 84, kRight, kWhole, kSell, depthOrders<kS, 2>},
    {"Ask Orders 3", 84, kRight, kWhole, kSell, depthOrders<kS, 3>},
    {"Ask Orders 4", 84, kRight, kWhole, kSell, depthOrders<kS, 4>},
    {"Ask Orders 5", 84, kRight, kWhole, kSell, depthOrders<kS, 5>},
    {"Total Bid Qty", 88, kRight, kDecimal, kBuy, totalSize<kB>},
    {"Total Ask Qty", 88, kRight, kDecimal, kSell, totalSize<kS>},
    {"Imbalance %", 84, kRight, kDecimal, kSign, imbalance},
    {"Live Orders", 80, kRight, kDecimal, kDim, liveOrders},

    {"Range", 70, kRight, kDecimal, kPlain, range},
    {"Range %", 66, kRight, kDecimal, kPlain, rangePercent},
    {"Range Position", 94, kRight, kDecimal, kPlain, rangePosition},
    {"Gap", 70, kRight, kDecimal, kSign, against<quoteOpen, &Quote::open, quoteClose, &Quote::close>},
    {"Gap %", 66, kRight, kDecimal, kSign, percentAgainst<quoteOpen, &Quote::open, quoteClose, &Quote::close>},
    {"From Open", 74, kRight, kDecimal, kSign, against<quoteLast, &Quote::last, quoteOpen, &Quote::open>},
    {"From Open %", 84, kRight, kDecimal, kSign, percentAgainst<quoteLast, &Quote::last, quoteOpen, &Quote::open>},
    {"From High", 74, kRight, kDecimal, kSign, against<quoteLast, &Quote::last, quoteHigh, &Quote::high>},
    {"From Low", 74, kRight, kDecimal, kSign, against<quoteLast, &Quote::last, quoteLow, &Quote::low>},
    {"From Low %", 80, kRight, kDecimal, kSign, percentAgainst<quoteLast, &Quote::last, quoteLow, &Quote::low>},
    {"From Average", 90, kRight, kDecimal, kSign, fromAverage},
    {"From Average %", 98, kRight, kDecimal, kSign, fromAveragePercent},

    {"Last Before", 80, kRight, kDecimal, kDim, priceIn<&WatchData::lastBefore>},
    {"Tick Change", 80, kRight, kDecimal, kSign, tickChange},
    {"Direction", 66, kLeft, kText, WatchTone::direction, direction},
    {"Up Ticks", 66, kRight, kDecimal, kBuy, countOf<&WatchData::upTicks>},
    {"Down Ticks", 76, kRight, kDecimal, kSell, countOf<&WatchData::downTicks>},
    {"Trades", 66, kRight, kDecimal, kPlain, countOf<&WatchData::trades>},
    {"Average Trade", 92, kRight, kDecimal, kPlain, averageTrade},
    {"Largest Trade", 90, kRight, kDecimal, kPlain, countOf<&WatchData::largestTrade>},
    {"Last Value", 96, kRight, kDecimal, kPlain, lastValue},
    {"Bought at Ask", 92, kRight, kDecimal, kBuy, countOf<&WatchData::boughtAtAsk>},
    {"Sold at Bid", 86, kRight, kDecimal, kSell, countOf<&WatchData::soldAtBid>},
    {"Flow", 80, kRight, kDecimal, kSign, flow},
    {"Updates", 70, kRight, kDecimal, kDim, countOf<&WatchData::updates>},
    {"Quote Updates", 92, kRight, kDecimal, kDim, countOf<&WatchData::quoteUpdates>},
    {"Orders Added", 88, kRight, kDecimal, kDim, countOf<&WatchData::orderAdds>},
    {"Orders Changed", 98, kRight, kDecimal, kDim, countOf<&WatchData::orderChanges>},
    {"Orders Removed", 100, kRight, kDecimal, kDim, countOf<&WatchData::orderRemoves>},

    {"OI Change", 80, kRight, kDecimal, kSign, openInterestChange},
    {"OI Change %", 84, kRight, kDecimal, kSign, openInterestPercent},
    {"OI High", 82, kRight, kDecimal, kDim, openInterestOf<&WatchData::highOpenInterest>},
    {"OI Low", 82, kRight, kDecimal, kDim, openInterestOf<&WatchData::lowOpenInterest>},

    {"Underlying", 92, kLeft, kText, kDim, notTraded},
    {"Option Type", 80, kLeft, kText, kDim, notTraded},
    {"Strike", 78, kRight, kDecimal, kDim, notTraded},
    {"Expiry", 80, kRight, kMoment, kDim, notTraded},
    {"Days to Expiry", 90, kRight, kDecimal, kDim, notTraded},
    {"Implied Volatility", 108, kRight, kDecimal, kDim, notTraded},
    {"Delta", 66, kRight, kDecimal, kDim, notTraded},
    {"Gamma", 66, kRight, kDecimal, kDim, notTraded},
    {"Theta", 66, kRight, kDecimal, kDim, notTraded},
    {"Vega", 66, kRight, kDecimal, kDim, notTraded},
    {"Rho", 66, kRight, kDecimal, kDim, notTraded},
    {"Theoretical Price", 104, kRight, kDecimal, kDim, notTraded},
    {"Basis", 66, kRight, kDecimal, kDim, notTraded},

    {"Tick Size", 70, kRight, kDecimal, kDim, tickSize},
    {"Book Levels", 80, kRight, kWhole, kDim, bookLevels},
    {"Number", 66, kRight, kDecimal, kDim, number},
}};
static_assert(kColumns.back().text, "a row of the table is missing");
}  // namespace

const WatchColumnInfo& watchColumn(int columnIndex) { return kColumns[static_cast<std::size_t>(columnIndex)]; }

std::string_view watchText(const WatchData& data, int columnIndex, TextBuffer& buffer) {
    if (columnIndex < 0 || columnIndex >= kWatchBuiltInColumns) return {};
    return watchColumn(columnIndex).text({data, buffer});
}

WatchTone userColumnTone(std::string_view text) {
    const std::size_t first = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
    const bool numeric = text.size() > first && text[first] >= '0' && text[first] <= '9';
    return numeric ? WatchTone::sign : WatchTone::dim;
}

}  // namespace terminal
