// One step: the time moves on by a random gap, an instrument is chosen (the first ones more often; in a burst a few hot
// ones), and one thing happens to it: its quote moves, an order comes, changes, leaves or is filled, or it trades.
#include "host/core/Simulator.h"

#include "host/core/Session.h"

#include <algorithm>
#include <array>

namespace terminal {
namespace {

constexpr MarketTime kOpeningTime = 1'710'494'100'000'000'000;  // 2024-03-15 09:15:00
constexpr Price kCent = kPriceOne / 100;

// Of normal steps one in 6,000 begins a burst of 1,700 on average, in which the gaps are an eighth: the mean gap is
// then (6000 + 1700 / 8) / 7700 of the normal one, and 124 % of the wanted gap gives the wanted mean.
constexpr std::uint32_t kStepsBetweenBursts = 6'000;
constexpr std::uint32_t kShortestBurst = 400;
constexpr std::uint32_t kBurstSpread = 2'601;
constexpr int kBurstHaste = 8;
constexpr std::uint32_t kHotIssues = 3;
constexpr int kGapPercent = 124;

// SplitMix64 (Steele, Lea, Flood 2014): the whole state is one counter.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}
    std::uint64_t next() {
        std::uint64_t z = m_state += 0x9E3779B97F4A7C15u;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }
    // 0 to n - 1; n is at least 1.
    std::uint32_t below(std::uint32_t n) { return static_cast<std::uint32_t>(((next() >> 32) * n) >> 32); }
    std::int64_t between(std::int64_t low, std::int64_t high) {
        return low + below(static_cast<std::uint32_t>(high - low + 1));
    }
    bool chance(std::uint32_t percent) { return below(100) < percent; }

private:
    std::uint64_t m_state;
};

// What prices of a size look like: a range, and the tick size used there.
struct PriceBand {
    std::uint32_t percent;  // of all instruments
    std::int64_t lowCents, highCents, tickCents;
};
constexpr PriceBand kPriceBands[] = {
    {20, 500, 4'999, 1}, {50, 5'000, 49'995, 5}, {25, 50'000, 299'990, 10}, {5, 300'000, 2'000'000, 50}};

// An instrument of the market; its prices count ticks.
struct Issue {
    Price tickSize = 1;
    std::int64_t close = 0, bid = 0, spread = 1;
    Quantity lot = 1, openInterest = 0;
    Session session;
    std::int64_t ask() const { return bid + spread; }
};

// Consonants and vowels in turn make names one can say; the n-th is met once only, for n below the number of names.
std::string symbolOf(std::uint64_t n, std::uint64_t instruments) {
    constexpr std::string_view kConsonants = "BCDFGHJKLMNPQRSTVWXZ", kVowels = "AEIOUY";
    const std::string_view pattern = instruments <= 40'000 ? "cvcc" : "cvcvcc";
    std::uint64_t names = 1;
    for (const char kind : pattern) names *= kind == 'c' ? kConsonants.size() : kVowels.size();
    std::uint64_t scattered = (n * 7'919 + 1'234) % names;  // 7919 shares no factor with the number of names
    std::string symbol;
    for (const char kind : pattern) {
        const std::string_view letters = kind == 'c' ? kConsonants : kVowels;
        symbol += letters[scattered % letters.size()];
        scattered /= letters.size();
    }
    return symbol;
}

class Simulator final : public TickSource {
public:
    explicit Simulator(const SimulatorSettings& settings)
        : m_count(static_cast<std::uint32_t>(std::clamp(settings.instruments, 1, 1'000'000))),
          m_ordersAimed(m_count * static_cast<std::uint32_t>(std::clamp(settings.ordersPerInstrument, 1, 100))),
          m_meanGap(1'000'000'000LL * kGapPercent / 100 / std::clamp(settings.ticksPerSecond, 1, 10'000'000)),
          m_random(settings.seed) {
        m_issues.reserve(m_count);
    }

    Next next(Tick& tick) override {
        tick.events.clear();
        m_tick = &tick;
        if (m_issues.size() < m_count)
            open();
        else
            step();
        return Next::tick;
    }
    const std::string& error() const override { return m_noError; }

private:
    void open() {
        const auto id = static_cast<InstrumentId>(m_issues.size());
        const bool future = id % 5 == 4;
        Issue& issue = m_issues.emplace_back();
        choosePrice(issue);
        issue.lot = future ? 25 : 1;
        issue.openInterest = future ? 25 * m_random.between(1'000, 90'000) : 0;
        m_tick->time = m_time;
        m_tick->events.emplace_back(Instrument{.id = id,
                                               .symbol = symbolOf(id, m_count),
                                               .series = future ? "FUT" : "EQ",
                                               .tickSize = issue.tickSize,
                                               .bookLevels = 0});
        Quote news = tradeAt(id, issue.bid, quantity(issue, 200));
        news.fields |= quoteClose | quoteBid | quoteAsk | quoteBidSize | quoteAskSize;
        news.close = issue.close * issue.tickSize;
        fillTouch(issue, news);
        m_tick->events.emplace_back(news);
    }

    void choosePrice(Issue& issue) {
        std::uint32_t draw = m_random.below(100);
        const PriceBand* band = kPriceBands;
        while (draw >= band->percent) draw -= band++->percent;
        issue.tickSize = band->tickCents * kCent;
        issue.close = m_random.between(band->lowCents / band->tickCents, band->highCents / band->tickCents);
        const std::int64_t swing = issue.close / 100 + 1;  // the night moved it by up to 1 %
        issue.bid = std::max<std::int64_t>(1, issue.close + m_random.between(-swing, swing));
        issue.spread = m_random.between(1, 3);
    }

    void step() {
        moveTime();
        const std::uint32_t draw = m_random.below(100);
        if (draw < 40) return requote(chooseIssue());
        if (draw < 70) return addOrRemoveOrder();
        if (draw < 80) return changeOrder();
        if (draw < 90) return fillOrder();
        trade(chooseIssue());
    }

    void moveTime() {
        if (m_burstLeft > 0) {
            --m_burstLeft;
        } else if (m_random.below(kStepsBetweenBursts) == 0) {
            m_burstLeft = kShortestBurst + m_random.below(kBurstSpread);
            m_burstDirection = m_random.chance(50) ? 1 : -1;
            for (InstrumentId& hot : m_hot) hot = m_random.below(m_count);
        }
        const std::int64_t mean = m_burstLeft > 0 ? m_meanGap / kBurstHaste : m_meanGap;
        m_time += m_random.between(0, 2 * mean);
        m_tick->time = m_time;
    }

    InstrumentId chooseIssue() {
        if (m_burstLeft > 0 && m_random.chance(80)) return m_hot[m_random.below(kHotIssues)];
        const std::uint32_t one = m_random.below(m_count), other = m_random.below(m_count);
        return std::min(one, other);
    }

    Quantity quantity(const Issue& issue, std::uint32_t most) { return issue.lot * (1 + m_random.below(most)); }

    void fillTouch(const Issue& issue, Quote& news) {
        news.bid = issue.bid * issue.tickSize;
        news.ask = issue.ask() * issue.tickSize;
        news.bidSize = quantity(issue, 400);
        news.askSize = quantity(issue, 400);
    }

    // The quote walks by a tick or stays; in a burst it runs; more than 8 % away from the close it is drawn back.
    void requote(InstrumentId id) {
        Issue& issue = m_issues[id];
        std::int64_t move = m_random.between(-1, 1);
        if (m_burstLeft > 0 && m_random.chance(40)) move = m_burstDirection;
        const std::int64_t away = issue.bid - issue.close;
        if (std::abs(away) > issue.close / 12) move = away > 0 ? -1 : 1;
        issue.bid = std::max<std::int64_t>(1, issue.bid + move);
        if (m_random.chance(10)) issue.spread = m_random.between(1, m_burstLeft > 0 ? 6 : 3);
        Quote news{.instrument = id, .fields = quoteBid | quoteAsk | quoteBidSize | quoteAskSize, .time = m_time};
        fillTouch(issue, news);
        m_tick->events.emplace_back(news);
    }

    // Puts the trade into the tick and returns what it makes new of the session; the caller adds that, last of all.
    Quote tradeAt(InstrumentId id, std::int64_t price, Quantity traded) {
        Issue& issue = m_issues[id];
        const Trade done{.instrument = id, .price = price * issue.tickSize, .quantity = traded, .time = m_time};
        m_tick->events.emplace_back(done);
        Quote news = issue.session.take(done);
        if (issue.openInterest > 0) {
            const Quantity opened = issue.lot * m_random.between(-3, 4);
            issue.openInterest = std::max(issue.lot, issue.openInterest + opened);
            news.fields |= quoteOpenInterest;
            news.openInterest = issue.openInterest;
        }
        return news;
    }

    void trade(InstrumentId id) {
        const Issue& issue = m_issues[id];
        const std::int64_t price = m_random.chance(50) ? issue.bid : issue.ask();
        const std::uint32_t most = m_random.chance(5) ? 2'000 : 100;  // now and then a large one
        m_tick->events.emplace_back(tradeAt(id, price, quantity(issue, most)));
    }

    // Adds the less often the more there are, so that their number swings about the one aimed at.
    void addOrRemoveOrder() {
        if (m_random.below(2 * m_ordersAimed) >= m_live.size())
            addOrder();
        else
            removeOrder(m_random.below(static_cast<std::uint32_t>(m_live.size())));
    }

    Price priceNearTouch(const Issue& issue, Side side) {
        const std::int64_t away = m_random.below(8);
        const std::int64_t price = side == Side::buy ? issue.bid - away : issue.ask() + away;
        return std::max<std::int64_t>(1, price) * issue.tickSize;
    }

    void addOrder() {
        const InstrumentId id = chooseIssue();
        const Issue& issue = m_issues[id];
        Order order{.id = ++m_lastOrder, .instrument = id};
        order.side = m_random.chance(50) ? Side::buy : Side::sell;
        order.price = priceNearTouch(issue, order.side);
        order.quantity = quantity(issue, 500);
        order.time = m_time;
        m_live.push_back(order);
        tell(OrderAction::add, order);
    }

    void removeOrder(std::uint32_t place) {
        Order& order = m_live[place];
        order.time = m_time;
        tell(OrderAction::remove, order);
        order = m_live.back();
        m_live.pop_back();
    }

    void changeOrder() {
        if (m_live.empty()) return addOrder();
        Order& order = m_live[m_random.below(static_cast<std::uint32_t>(m_live.size()))];
        const Issue& issue = m_issues[order.instrument];
        if (m_random.chance(60))
            order.price = priceNearTouch(issue, order.side);
        else
            order.quantity = quantity(issue, 500);
        order.time = m_time;
        tell(OrderAction::change, order);
    }

    // An order at the touch or beyond trades, in part or whole; one that waits far off is moved up to the touch.
    void fillOrder() {
        if (m_live.empty()) return addOrder();
        const std::uint32_t place = m_random.below(static_cast<std::uint32_t>(m_live.size()));
        Order& order = m_live[place];
        const Issue& issue = m_issues[order.instrument];
        const std::int64_t price = std::clamp(order.price / issue.tickSize, issue.bid, issue.ask());
        const bool waits = order.side == Side::buy ? order.price < issue.bid * issue.tickSize
                                                   : order.price > issue.ask() * issue.tickSize;
        order.time = m_time;
        if (waits) {
            order.price = price * issue.tickSize;
            return tell(OrderAction::change, order);
        }
        const Quantity filled = m_random.chance(50) ? order.quantity : std::min(order.quantity, quantity(issue, 100));
        const Quote news = tradeAt(order.instrument, price, filled);
        order.quantity -= filled;
        if (order.quantity > 0)
            tell(OrderAction::change, order);
        else
            removeFilled(place, filled);
        m_tick->events.emplace_back(news);
    }

    // A removal repeats the last quantity, which for a filled order is what was filled last.
    void removeFilled(std::uint32_t place, Quantity filled) {
        m_live[place].quantity = filled;
        removeOrder(place);
    }

    void tell(OrderAction action, const Order& order) { m_tick->events.emplace_back(OrderEvent{action, order}); }

    std::uint32_t m_count;
    std::uint32_t m_ordersAimed;
    std::int64_t m_meanGap;  // nanoseconds
    Random m_random;
    std::vector<Issue> m_issues;
    std::vector<Order> m_live;
    OrderId m_lastOrder = 0;
    MarketTime m_time = kOpeningTime;
    std::uint32_t m_burstLeft = 0;  // steps
    int m_burstDirection = 1;
    std::array<InstrumentId, kHotIssues> m_hot{};
    Tick* m_tick = nullptr;  // the one being made
    std::string m_noError;
};

}  // namespace

std::unique_ptr<TickSource> makeSimulator(const SimulatorSettings& settings) {
    return std::make_unique<Simulator>(settings);
}

}  // namespace terminal
