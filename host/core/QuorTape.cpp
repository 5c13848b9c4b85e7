// The project's own tape, both ways: the parser and the writer stand side by side, so that they stay each other's
// reverse. docs/formats.md, section "Tape", tells the form.
#include "host/core/MarketText.h"
#include "host/core/TapeFormat.h"

#include <charconv>
#include <cmath>
#include <unordered_map>

namespace terminal {
namespace {

constexpr const char* kPriceExpected = "a price with up to 8 decimals, at most 90000000000 in value";
constexpr const char* kQuantityExpected = "a whole number from 0 to 1000000000000";
constexpr const char* kLiveExpected = "the number of a live order";
constexpr std::string_view kNoPriceText = "-";
constexpr std::uint64_t kMostLevels = 1'000;

// One letter a field of a quote, and where it goes.
struct PriceLetter {
    char letter;
    QuoteField field;
    Price Quote::*member;
};
constexpr PriceLetter kPriceLetters[] = {{'l', quoteLast, &Quote::last},  {'b', quoteBid, &Quote::bid},
                                         {'a', quoteAsk, &Quote::ask},    {'o', quoteOpen, &Quote::open},
                                         {'h', quoteHigh, &Quote::high},  {'w', quoteLow, &Quote::low},
                                         {'c', quoteClose, &Quote::close}};
struct QuantityLetter {
    char letter;
    QuoteField field;
    Quantity Quote::*member;
};
constexpr QuantityLetter kQuantityLetters[] = {{'L', quoteLastSize, &Quote::lastSize},
                                               {'B', quoteBidSize, &Quote::bidSize},
                                               {'A', quoteAskSize, &Quote::askSize},
                                               {'v', quoteVolume, &Quote::volume},
                                               {'i', quoteOpenInterest, &Quote::openInterest}};
constexpr char kValueLetter = 'u';

bool mustEscape(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F || c == '%' || c == ',' || c == ';';
}

void appendName(std::string& line, std::string_view name) {
    constexpr char kHex[] = "0123456789ABCDEF";
    for (const char c : name) {
        if (!mustEscape(c)) {
            line += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        line += {'%', kHex[byte >> 4], kHex[byte & 15]};
    }
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::optional<std::string> parseName(std::string_view text) {
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            if (mustEscape(text[i])) return {};
            name += text[i];
            continue;
        }
        const int high = i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
        if (low < 0 || (high == 0 && low == 0)) return {};
        name += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return name;
}

void appendPrice(std::string& line, Price price) {
    TextBuffer buffer;
    line += price == kNoPrice ? kNoPriceText : formatPrice(price, buffer);
}

void appendNumber(std::string& line, std::uint64_t number) {
    char text[20];
    line.append(text, std::to_chars(text, std::end(text), number).ptr);
}

void appendQuantity(std::string& line, Quantity quantity) { appendNumber(line, static_cast<std::uint64_t>(quantity)); }

// The letters of the events, beside their writers.
struct EventWriter {
    std::string& line;

    void operator()(const Instrument& i) const {
        begin('I', i.id);
        price(i.tickSize);
        number(static_cast<std::uint64_t>(i.bookLevels));
        line += ',';
        appendName(line, i.series);
        line += ',';
        appendName(line, i.symbol);
    }
    void operator()(const Quote& q) const {
        begin('Q', q.instrument);
        for (const PriceLetter& p : kPriceLetters) {
            if (!q.has(p.field)) continue;
            line += {',', p.letter};
            appendPrice(line, q.*p.member);
        }
        for (const QuantityLetter& n : kQuantityLetters) {
            if (!q.has(n.field)) continue;
            line += {',', n.letter};
            appendQuantity(line, q.*n.member);
        }
        if (!q.has(quoteValue)) return;
        char text[32];
        line += {',', kValueLetter};
        line.append(text, std::to_chars(text, std::end(text), q.value).ptr);
    }
    void operator()(const OrderEvent& e) const {
        const Order& o = e.order;
        if (e.action == OrderAction::remove) return begin('X', o.id);
        begin(e.action == OrderAction::add ? 'O' : 'M', o.id);
        if (e.action == OrderAction::add) {
            number(o.instrument);
            line += o.side == Side::buy ? ",B" : ",S";
        }
        price(o.price);
        number(static_cast<std::uint64_t>(o.quantity));
    }
    void operator()(const Trade& t) const {
        begin('T', t.instrument);
        price(t.price);
        number(static_cast<std::uint64_t>(t.quantity));
    }
    void operator()(const BookLevel& l) const {
        begin('L', l.instrument);
        line += l.side == Side::buy ? ",B" : ",S";
        number(static_cast<std::uint64_t>(l.level));
        price(l.price);
        number(static_cast<std::uint64_t>(l.quantity));
    }

private:
    void begin(char letter, std::uint64_t id) const {
        line += {';', letter};
        appendNumber(line, id);
    }
    void number(std::uint64_t value) const {
        line += ',';
        appendNumber(line, value);
    }
    void price(Price value) const {
        line += ',';
        appendPrice(line, value);
    }
};

// Reads one event field by field and remembers the first thing that was wrong.
class EventReader {
public:
    // `event` begins with its letter.
    EventReader(std::string_view event, LineFault& fault) : m_event(event), m_rest(event.substr(1)), m_fault(fault) {}

    bool good() const { return m_good; }
    bool more() const { return m_more; }
    std::string_view field() {
        if (!m_more) {
            failEvent("more fields");
            return {};
        }
        return takeField(m_rest, ',', m_more);
    }
    std::uint64_t number(const char* what, std::uint64_t largest, const char* expected) {
        const std::string_view text = field();
        const auto value = parseNumber(text, largest);
        if (!value) fail(what, text, expected);
        return value.value_or(0);
    }
    Quantity quantity(const char* what) {
        return static_cast<Quantity>(number(what, static_cast<std::uint64_t>(kLargestQuantity), kQuantityExpected));
    }
    Price price() { return priceOf(field()); }
    Price priceOf(std::string_view text) {
        const auto value = parseDecimalPrice(text);
        if (!value) fail("price", text, kPriceExpected);
        return value.value_or(0);
    }
    // A side of a book may be empty.
    Price priceOrNoneOf(std::string_view text) { return text == kNoPriceText ? kNoPrice : priceOf(text); }
    Side side() {
        const std::string_view text = field();
        if (text != "B" && text != "S") fail("side", text, "B or S");
        return text == "S" ? Side::sell : Side::buy;
    }
    std::string name(const char* what) {
        const std::string_view text = field();
        auto value = parseName(text);
        if (!value) fail(what, text, "a name, special bytes as %XX");
        return std::move(value).value_or("");
    }
    void failEvent(const char* expected) { fail("event", m_event, expected); }
    void fail(const char* what, std::string_view found, const char* expected) {
        if (m_good) m_fault = {what, found, expected};
        m_good = false;
    }
    bool finish() {
        if (m_more) failEvent("fewer fields");
        return m_good;
    }

private:
    std::string_view m_event;
    std::string_view m_rest;
    LineFault& m_fault;
    bool m_more = true;
    bool m_good = true;
};

class QuorTape final : public TapeFormat {
public:
    bool parse(std::string_view line, Tick& tick, LineFault& fault) override {
        bool more = false;
        const std::string_view timeText = takeField(line, ';', more);
        const auto time = parseTime(timeText);
        if (!time) {
            fault = {"time", timeText, "a time such as 2012-06-21 09:30:00.017460000"};
            return false;
        }
        tick.time = *time;
        while (more) {
            if (!parseEvent(takeField(line, ';', more), tick, fault)) return false;
        }
        return true;
    }

private:
    bool parseEvent(std::string_view text, Tick& tick, LineFault& fault) {
        constexpr const char* kEventExpected = "an event that begins with I, Q, O, M, X, T or L";
        if (text.empty()) {
            fault = {"event", text, kEventExpected};
            return false;
        }
        EventReader reader(text, fault);
        switch (text.front()) {
            case 'I':
                tick.events.emplace_back(readInstrument(reader));
                break;
            case 'Q':
                tick.events.emplace_back(readQuote(reader, tick.time));
                break;
            case 'O':
                tick.events.emplace_back(readNewOrder(reader, tick.time));
                break;
            case 'M':
                tick.events.emplace_back(readChange(reader, tick.time));
                break;
            case 'X':
                tick.events.emplace_back(readRemoval(reader, tick.time));
                break;
            case 'T':
                tick.events.emplace_back(readTrade(reader, tick.time));
                break;
            case 'L':
                tick.events.emplace_back(readLevel(reader));
                break;
            default:
                reader.failEvent(kEventExpected);
                return false;
        }
        return reader.finish();
    }

    Instrument readInstrument(EventReader& reader) {
        Instrument news;
        const std::string_view idText = reader.field();
        if (parseNumber(idText, 0xFFFFFFFF) != m_levels.size())
            reader.fail("instrument", idText, "the next number in turn, from 0");
        news.id = static_cast<InstrumentId>(m_levels.size());
        news.tickSize = reader.price();
        news.bookLevels = static_cast<int>(reader.number("levels", kMostLevels, "a whole number from 0 to 1000"));
        news.series = reader.name("series");
        news.symbol = reader.name("symbol");
        if (news.symbol.empty()) reader.fail("symbol", "", "at least one byte");
        m_levels.push_back(news.bookLevels);
        return news;
    }

    InstrumentId readId(EventReader& reader) {
        const std::string_view text = reader.field();
        const auto id = parseNumber(text, 0xFFFFFFFF);
        if (!id || *id >= m_levels.size()) reader.fail("instrument", text, "the number of an announced instrument");
        return static_cast<InstrumentId>(id.value_or(0));
    }

    Quote readQuote(EventReader& reader, MarketTime time) {
        Quote news{.instrument = readId(reader), .fields = 0, .time = time};
        while (reader.good() && reader.more()) {
            const std::string_view text = reader.field();
            if (!readQuoteField(reader, text, news))
                reader.fail("quote field", text, "one of lbaohwcLBAviu, its value after it, each at most once");
        }
        return news;
    }

    static bool readQuoteField(EventReader& reader, std::string_view text, Quote& news) {
        if (text.empty()) return false;
        const std::string_view value = text.substr(1);
        for (const PriceLetter& p : kPriceLetters) {
            if (text.front() != p.letter || news.has(p.field)) continue;
            news.fields |= p.field;
            const bool ofBook = p.field == quoteBid || p.field == quoteAsk;
            news.*p.member = ofBook ? reader.priceOrNoneOf(value) : reader.priceOf(value);
            return true;
        }
        for (const QuantityLetter& n : kQuantityLetters) {
            if (text.front() != n.letter || news.has(n.field)) continue;
            // A session's sum may be larger than any single quantity.
            const auto number = parseNumber(value, std::numeric_limits<Quantity>::max());
            if (!number) reader.fail("quantity", value, "a whole number from 0 to 9223372036854775807");
            news.fields |= n.field;
            news.*n.member = static_cast<Quantity>(number.value_or(0));
            return true;
        }
        if (text.front() != kValueLetter || news.has(quoteValue)) return false;
        news.fields |= quoteValue;
        const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), news.value);
        if (error != std::errc{} || end != value.data() + value.size() || !std::isfinite(news.value))
            reader.fail("value", value, "a number");
        return true;
    }

    Quantity readOrderQuantity(EventReader& reader) {
        const std::string_view text = reader.field();
        const auto quantity = parseQuantity(text);
        if (!quantity || *quantity == 0) reader.fail("quantity", text, "a whole number from 1 to 1000000000000");
        return quantity.value_or(0);
    }

    OrderEvent readNewOrder(EventReader& reader, MarketTime time) {
        const std::string_view idText = reader.field();
        const auto id = parseNumber(idText, std::numeric_limits<OrderId>::max());
        if (!id || m_live.contains(*id)) reader.fail("order", idText, "a number that no live order has");
        Order order{.id = id.value_or(0), .instrument = readId(reader), .side = reader.side(), .price = reader.price()};
        order.quantity = readOrderQuantity(reader);
        order.time = time;
        if (reader.good()) m_live.emplace(order.id, order);
        return {OrderAction::add, order};
    }

    Order* readLive(EventReader& reader) {
        const std::string_view text = reader.field();
        const auto id = parseNumber(text, std::numeric_limits<OrderId>::max());
        const auto live = id ? m_live.find(*id) : m_live.end();
        if (live != m_live.end()) return &live->second;
        reader.fail("order", text, kLiveExpected);
        return nullptr;
    }

    OrderEvent readChange(EventReader& reader, MarketTime time) {
        Order* const live = readLive(reader);
        if (!live) return {};
        live->price = reader.price();
        live->quantity = readOrderQuantity(reader);
        live->time = time;
        return {OrderAction::change, *live};
    }

    OrderEvent readRemoval(EventReader& reader, MarketTime time) {
        const Order* const live = readLive(reader);
        if (!live) return {};
        OrderEvent news{OrderAction::remove, *live};
        news.order.time = time;
        m_live.erase(live->id);
        return news;
    }

    Trade readTrade(EventReader& reader, MarketTime time) {
        Trade news{.instrument = readId(reader), .price = reader.price()};
        news.quantity = reader.quantity("quantity");
        news.time = time;
        return news;
    }

    BookLevel readLevel(EventReader& reader) {
        BookLevel news{.instrument = readId(reader), .side = reader.side()};
        const std::string_view text = reader.field();
        const auto level = parseNumber(text, kMostLevels);
        const int levels = reader.good() ? m_levels[news.instrument] : 0;
        if (!level || static_cast<int>(*level) >= levels)
            reader.fail("level", text, "a level of the instrument's book");
        news.level = static_cast<int>(level.value_or(0));
        news.price = reader.priceOrNoneOf(reader.field());
        news.quantity = reader.quantity("size");
        if ((news.price == kNoPrice) != (news.quantity == 0))
            reader.failEvent("size 0 with the price -, and only with it");
        return news;
    }

    std::vector<int> m_levels;  // of each announced instrument
    std::unordered_map<OrderId, Order> m_live;
};

}  // namespace

std::unique_ptr<TapeFormat> makeQuorTape() { return std::make_unique<QuorTape>(); }

void appendEvent(std::string& line, const FeedEvent& event) { std::visit(EventWriter{line}, event); }

}  // namespace terminal
