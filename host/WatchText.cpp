#include "host/WatchText.h"

#include <cmath>
#include <cstdio>

namespace terminal {

namespace {
std::string_view percentText(Price change, Price close, TextBuffer& buffer) {
    const double percent = static_cast<double>(change) / static_cast<double>(close) * 100;
    const int length = std::snprintf(buffer.text, sizeof buffer.text, change == 0 ? "%.2f" : "%+.2f", percent);
    return {buffer.text, static_cast<std::size_t>(length)};
}

std::string_view signedPrice(Price price, int decimals, TextBuffer& buffer) {
    TextBuffer plain;
    const std::string_view text = formatPrice(price, decimals, plain);
    const int length = std::snprintf(buffer.text, sizeof buffer.text, "%s%.*s", price > 0 ? "+" : "",
                                     static_cast<int>(text.size()), text.data());
    return {buffer.text, static_cast<std::size_t>(length)};
}

// A traded value with at most seven digits: "98.1M", "12.34B".
std::string_view valueText(double value, TextBuffer& buffer) {
    static constexpr struct {
        double from;
        const char* unit;
    } units[] = {{1e9, "B"}, {1e6, "M"}, {1e3, "K"}};
    for (const auto& [from, unit] : units)
        if (value >= from) {
            const int length = std::snprintf(buffer.text, sizeof buffer.text, "%.2f%s", value / from, unit);
            return {buffer.text, static_cast<std::size_t>(length)};
        }
    const int length = std::snprintf(buffer.text, sizeof buffer.text, "%.2f", value);
    return {buffer.text, static_cast<std::size_t>(length)};
}

bool known(const Quote& quote, QuoteField field, Price price) { return quote.has(field) && price != noPrice; }
}  // namespace

std::string_view watchText(const WatchRow& row, Watch column, TextBuffer& buffer) {
    const Quote& quote = row.quote;
    const int decimals = decimalsOf(row.instrument.tickSize);
    const auto price = [&](QuoteField field, Price value) {
        return known(quote, field, value) ? formatPrice(value, decimals, buffer) : std::string_view();
    };
    const auto quantity = [&](QuoteField field, Quantity value) {
        return quote.has(field) ? formatQuantity(value, buffer) : std::string_view();
    };
    const bool moved = quote.has(quoteLast) && quote.has(quoteClose) && quote.close > 0;
    const bool twoSided = known(quote, quoteBid, quote.bid) && known(quote, quoteAsk, quote.ask);
    switch (column) {
        case Watch::symbol:
            return row.instrument.symbol;
        case Watch::series:
            return row.instrument.series;
        case Watch::last:
            return price(quoteLast, quote.last);
        case Watch::lastSize:
            return quantity(quoteLastSize, quote.lastSize);
        case Watch::change:
            return moved ? signedPrice(quote.last - quote.close, decimals, buffer) : std::string_view();
        case Watch::changePercent:
            return moved ? percentText(quote.last - quote.close, quote.close, buffer) : std::string_view();
        case Watch::bidSize:
            return quantity(quoteBidSize, quote.bidSize);
        case Watch::bid:
            return price(quoteBid, quote.bid);
        case Watch::ask:
            return price(quoteAsk, quote.ask);
        case Watch::askSize:
            return quantity(quoteAskSize, quote.askSize);
        case Watch::spread:
            return twoSided ? formatPrice(quote.ask - quote.bid, decimals, buffer) : std::string_view();
        case Watch::open:
            return price(quoteOpen, quote.open);
        case Watch::high:
            return price(quoteHigh, quote.high);
        case Watch::low:
            return price(quoteLow, quote.low);
        case Watch::close:
            return price(quoteClose, quote.close);
        case Watch::volume:
            return quantity(quoteVolume, quote.volume);
        case Watch::value:
            return quote.has(quoteValue) ? valueText(quote.value, buffer) : std::string_view();
        case Watch::average: {
            if (!quote.has(quoteValue) || quote.volume <= 0) return {};
            const double average = quote.value / static_cast<double>(quote.volume) * static_cast<double>(priceOne);
            return formatPrice(static_cast<Price>(std::llround(average)), decimals, buffer);
        }
        case Watch::openInterest:
            return quantity(quoteOpenInterest, quote.openInterest);
        case Watch::time:
            return quote.fields ? formatTimeOfDay(quote.time, buffer).substr(0, 8) : std::string_view();
        case Watch::count:
            break;
    }
    return {};
}

}  // namespace terminal
