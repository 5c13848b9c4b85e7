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

constexpr double one = static_cast<double>(priceOne);

[[gnu::format(printf, 2, 3)]] View print(Cell cell, const char* format, ...) {
    va_list values;
    va_start(values, format);
    const int length = std::vsnprintf(cell.buffer.text, sizeof cell.buffer.text, format, values);
    va_end(values);
    const int most = static_cast<int>(sizeof cell.buffer.text) - 1;
    return {cell.buffer.text, static_cast<std::size_t>(length < most ? length : most)};
}

View price(Cell cell, Price value) {
    return value == noPrice ? View() : formatPrice(value, decimalsOf(cell.data.instrument.tickSize), cell.buffer);
}

// A price out of a division, rounded as the instrument's prices are.
View meanPrice(Cell cell, double units) {
    return std::abs(units) < static_cast<double>(largestPrice) ? price(cell, static_cast<Price>(std::llround(units)))
                                                               : View();
}

// noPrice for a difference that no price can be: two hostile prices lie further apart than a number holds.
Price minus(Price of, Price from) {
    Price result = 0;
    return quor::subtractOverflows(of, from, result) ? noPrice : result;
}
double units(Price price) { return static_cast<double>(price); }

View difference(Cell cell, Price of, Price from) {
    const Price value = minus(of, from);
    const View text = price(cell, value);
    if (value <= 0) return text;
    TextBuffer plain;
    const std::size_t length = text.copy(plain.text, sizeof plain.text - 1);
    plain.text[length] = 0;
    return withoutZeroSign(print(cell, "+%s", plain.text));
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
    const double mean = quote.value / static_cast<double>(quote.volume) * one;
    return mean > 0 && mean < units(largestPrice) ? mean : 0;
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
               ? print(cell, "%.2f", static_cast<double>(quote.last) / one * static_cast<double>(quote.lastSize))
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
    return width == noPrice ? View() : print(cell, "%lld", static_cast<long long>(width / tick));
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
    return before == noPrice ? View() : difference(cell, cell.data.quote.last, before);
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
constexpr auto plain = WatchTone::plain, dim = WatchTone::dim, sign = WatchTone::sign, buy = WatchTone::buy,
               sell = WatchTone::sell;
constexpr auto B = Side::buy, S = Side::sell;

constexpr std::array<WatchColumnInfo, watchBuiltInColumns> columns{{
    {"Symbol", 92, kLeft, kText, WatchTone::symbol, symbol},
    {"Series", 52, kLeft, kText, dim, series},
    {"Last", 78, kRight, kDecimal, WatchTone::direction, priceOf<quoteLast, &Quote::last>},
    {"LTQ", 62, kRight, kDecimal, plain, quantityOf<quoteLastSize, &Quote::lastSize>},
    {"Change", 70, kRight, kDecimal, sign, against<quoteLast, &Quote::last, quoteClose, &Quote::close>},
    {"Change %", 70, kRight, kDecimal, sign, percentAgainst<quoteLast, &Quote::last, quoteClose, &Quote::close>},
    {"Bid Qty", 66, kRight, kDecimal, buy, quantityOf<quoteBidSize, &Quote::bidSize>},
    {"Bid", 78, kRight, kDecimal, buy, priceOf<quoteBid, &Quote::bid>},
    {"Ask", 78, kRight, kDecimal, sell, priceOf<quoteAsk, &Quote::ask>},
    {"Ask Qty", 66, kRight, kDecimal, sell, quantityOf<quoteAskSize, &Quote::askSize>},
    {"Open", 78, kRight, kDecimal, plain, priceOf<quoteOpen, &Quote::open>},
    {"High", 78, kRight, kDecimal, plain, priceOf<quoteHigh, &Quote::high>},
    {"Low", 78, kRight, kDecimal, plain, priceOf<quoteLow, &Quote::low>},
    {"Close", 78, kRight, kDecimal, plain, priceOf<quoteClose, &Quote::close>},
    {"Volume", 88, kRight, kDecimal, plain, quantityOf<quoteVolume, &Quote::volume>},
    {"Average", 78, kRight, kDecimal, plain, average},
    {"OI", 82, kRight, kDecimal, dim, quantityOf<quoteOpenInterest, &Quote::openInterest>},
    {"Time", 74, kRight, kMoment, dim, time},

    {"Value", 110, kRight, kDecimal, plain, value},
    {"Spread", 62, kRight, kDecimal, dim, spread},
    {"Spread %", 68, kRight, kDecimal, dim, spreadPercent},
    {"Spread Ticks", 84, kRight, kDecimal, dim, spreadTicks},
    {"Widest Spread", 94, kRight, kDecimal, dim, priceIn<&WatchData::widestSpread>},
    {"Narrowest Spread", 110, kRight, kDecimal, dim, priceIn<&WatchData::narrowestSpread>},
    {"Mid", 78, kRight, kDecimal, plain, middle},
    {"Weighted Mid", 90, kRight, kDecimal, plain, weightedMiddle},

    {"Date", 80, kRight, kMoment, dim, date},
    {"Trade Time", 78, kRight, kMoment, dim, timeOf<&WatchData::tradeTime>},
    {"Quote Time", 78, kRight, kMoment, dim, timeOf<&WatchData::quoteTime>},
    {"Order Time", 78, kRight, kMoment, dim, timeOf<&WatchData::orderTime>},
    {"Open Time", 78, kRight, kMoment, dim, timeOf<&WatchData::openTime>},
    {"High Time", 78, kRight, kMoment, dim, timeOf<&WatchData::highTime>},
    {"Low Time", 78, kRight, kMoment, dim, timeOf<&WatchData::lowTime>},

    {"Bid 2", 78, kRight, kDecimal, buy, depthPrice<B, 2>},
    {"Bid 3", 78, kRight, kDecimal, buy, depthPrice<B, 3>},
    {"Bid 4", 78, kRight, kDecimal, buy, depthPrice<B, 4>},
    {"Bid 5", 78, kRight, kDecimal, buy, depthPrice<B, 5>},
    {"Bid Qty 2", 70, kRight, kDecimal, buy, depthSize<B, 2>},
    {"Bid Qty 3", 70, kRight, kDecimal, buy, depthSize<B, 3>},
    {"Bid Qty 4", 70, kRight, kDecimal, buy, depthSize<B, 4>},
    {"Bid Qty 5", 70, kRight, kDecimal, buy, depthSize<B, 5>},
    {"Bid Orders", 74, kRight, kWhole, buy, depthOrders<B, 1>},
    {"Bid Orders 2", 84, kRight, kWhole, buy, depthOrders<B, 2>},
    {"Bid Orders 3", 84, kRight, kWhole, buy, depthOrders<B, 3>},
    {"Bid Orders 4", 84, kRight, kWhole, buy, depthOrders<B, 4>},
    {"Bid Orders 5", 84, kRight, kWhole, buy, depthOrders<B, 5>},
    {"Ask 2", 78, kRight, kDecimal, sell, depthPrice<S, 2>},
    {"Ask 3", 78, kRight, kDecimal, sell, depthPrice<S, 3>},
    {"Ask 4", 78, kRight, kDecimal, sell, depthPrice<S, 4>},
    {"Ask 5", 78, kRight, kDecimal, sell, depthPrice<S, 5>},
    {"Ask Qty 2", 70, kRight, kDecimal, sell, depthSize<S, 2>},
    {"Ask Qty 3", 70, kRight, kDecimal, sell, depthSize<S, 3>},
    {"Ask Qty 4", 70, kRight, kDecimal, sell, depthSize<S, 4>},
    {"Ask Qty 5", 70, kRight, kDecimal, sell, depthSize<S, 5>},
    {"Ask Orders", 74, kRight, kWhole, sell, depthOrders<S, 1>},
    {"Ask Orders 2", 84, kRight, kWhole, sell, depthOrders<S, 2>},
    {"Ask Orders 3", 84, kRight, kWhole, sell, depthOrders<S, 3>},
    {"Ask Orders 4", 84, kRight, kWhole, sell, depthOrders<S, 4>},
    {"Ask Orders 5", 84, kRight, kWhole, sell, depthOrders<S, 5>},
    {"Total Bid Qty", 88, kRight, kDecimal, buy, totalSize<B>},
    {"Total Ask Qty", 88, kRight, kDecimal, sell, totalSize<S>},
    {"Imbalance %", 84, kRight, kDecimal, sign, imbalance},
    {"Live Orders", 80, kRight, kDecimal, dim, liveOrders},

    {"Range", 70, kRight, kDecimal, plain, range},
    {"Range %", 66, kRight, kDecimal, plain, rangePercent},
    {"Range Position", 94, kRight, kDecimal, plain, rangePosition},
    {"Gap", 70, kRight, kDecimal, sign, against<quoteOpen, &Quote::open, quoteClose, &Quote::close>},
    {"Gap %", 66, kRight, kDecimal, sign, percentAgainst<quoteOpen, &Quote::open, quoteClose, &Quote::close>},
    {"From Open", 74, kRight, kDecimal, sign, against<quoteLast, &Quote::last, quoteOpen, &Quote::open>},
    {"From Open %", 84, kRight, kDecimal, sign, percentAgainst<quoteLast, &Quote::last, quoteOpen, &Quote::open>},
    {"From High", 74, kRight, kDecimal, sign, against<quoteLast, &Quote::last, quoteHigh, &Quote::high>},
    {"From Low", 74, kRight, kDecimal, sign, against<quoteLast, &Quote::last, quoteLow, &Quote::low>},
    {"From Low %", 80, kRight, kDecimal, sign, percentAgainst<quoteLast, &Quote::last, quoteLow, &Quote::low>},
    {"From Average", 90, kRight, kDecimal, sign, fromAverage},
    {"From Average %", 98, kRight, kDecimal, sign, fromAveragePercent},

    {"Last Before", 80, kRight, kDecimal, dim, priceIn<&WatchData::lastBefore>},
    {"Tick Change", 80, kRight, kDecimal, sign, tickChange},
    {"Direction", 66, kLeft, kText, WatchTone::direction, direction},
    {"Up Ticks", 66, kRight, kDecimal, buy, countOf<&WatchData::upTicks>},
    {"Down Ticks", 76, kRight, kDecimal, sell, countOf<&WatchData::downTicks>},
    {"Trades", 66, kRight, kDecimal, plain, countOf<&WatchData::trades>},
    {"Average Trade", 92, kRight, kDecimal, plain, averageTrade},
    {"Largest Trade", 90, kRight, kDecimal, plain, countOf<&WatchData::largestTrade>},
    {"Last Value", 96, kRight, kDecimal, plain, lastValue},
    {"Bought at Ask", 92, kRight, kDecimal, buy, countOf<&WatchData::boughtAtAsk>},
    {"Sold at Bid", 86, kRight, kDecimal, sell, countOf<&WatchData::soldAtBid>},
    {"Flow", 80, kRight, kDecimal, sign, flow},
    {"Updates", 70, kRight, kDecimal, dim, countOf<&WatchData::updates>},
    {"Quote Updates", 92, kRight, kDecimal, dim, countOf<&WatchData::quoteUpdates>},
    {"Orders Added", 88, kRight, kDecimal, dim, countOf<&WatchData::orderAdds>},
    {"Orders Changed", 98, kRight, kDecimal, dim, countOf<&WatchData::orderChanges>},
    {"Orders Removed", 100, kRight, kDecimal, dim, countOf<&WatchData::orderRemoves>},

    {"OI Change", 80, kRight, kDecimal, sign, openInterestChange},
    {"OI Change %", 84, kRight, kDecimal, sign, openInterestPercent},
    {"OI High", 82, kRight, kDecimal, dim, openInterestOf<&WatchData::highOpenInterest>},
    {"OI Low", 82, kRight, kDecimal, dim, openInterestOf<&WatchData::lowOpenInterest>},

    {"Underlying", 92, kLeft, kText, dim, notTraded},
    {"Option Type", 80, kLeft, kText, dim, notTraded},
    {"Strike", 78, kRight, kDecimal, dim, notTraded},
    {"Expiry", 80, kRight, kMoment, dim, notTraded},
    {"Days to Expiry", 90, kRight, kDecimal, dim, notTraded},
    {"Implied Volatility", 108, kRight, kDecimal, dim, notTraded},
    {"Delta", 66, kRight, kDecimal, dim, notTraded},
    {"Gamma", 66, kRight, kDecimal, dim, notTraded},
    {"Theta", 66, kRight, kDecimal, dim, notTraded},
    {"Vega", 66, kRight, kDecimal, dim, notTraded},
    {"Rho", 66, kRight, kDecimal, dim, notTraded},
    {"Theoretical Price", 104, kRight, kDecimal, dim, notTraded},
    {"Basis", 66, kRight, kDecimal, dim, notTraded},

    {"Tick Size", 70, kRight, kDecimal, dim, tickSize},
    {"Book Levels", 80, kRight, kWhole, dim, bookLevels},
    {"Number", 66, kRight, kDecimal, dim, number},
}};
static_assert(columns.back().text, "a row of the table is missing");
}  // namespace

const WatchColumnInfo& watchColumn(int columnIndex) { return columns[static_cast<std::size_t>(columnIndex)]; }

std::string_view watchText(const WatchData& data, int columnIndex, TextBuffer& buffer) {
    if (columnIndex < 0 || columnIndex >= watchBuiltInColumns) return {};
    return watchColumn(columnIndex).text({data, buffer});
}

WatchTone userColumnTone(std::string_view text) {
    const std::size_t first = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
    const bool numeric = text.size() > first && text[first] >= '0' && text[first] <= '9';
    return numeric ? WatchTone::sign : WatchTone::dim;
}

}  // namespace terminal
