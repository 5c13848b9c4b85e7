#include "host/core/OptionChain.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace terminal {

namespace {
constexpr std::int64_t kNanosADay = 86'400'000'000'000;
constexpr std::int64_t kExpiryOfDay = 55'800'000'000'000;  // 15:30
constexpr std::chrono::days kLeastAhead{7};
constexpr Price kCent = kPriceOne / 100;

double money(Price price) { return static_cast<double>(price) / static_cast<double>(kPriceOne); }

std::chrono::sys_days lastThursday(std::chrono::year_month month) {
    return month / std::chrono::Thursday[std::chrono::last];
}
}  // namespace

std::optional<Price> underlyingPrice(const Quote& quote) {
    const auto known = [&](QuoteField field, Price price) {
        return quote.has(field) && price != kNoPrice && price > 0;
    };
    if (known(quoteLast, quote.last)) return quote.last;
    if (!known(quoteBid, quote.bid) || !known(quoteAsk, quote.ask)) return {};
    return quote.bid + (quote.ask - quote.bid) / 2;
}

Candidate candidateOf(const Instrument& instrument, const Quote& quote) {
    if (!underlyingPrice(quote)) return Candidate::no;
    return instrument.series == "EQ" || instrument.series == "FUT" ? Candidate::preferred : Candidate::fallback;
}

std::optional<InstrumentId> chooseUnderlying(std::size_t count, int selected, std::optional<InstrumentId> shown,
                                             const std::function<Candidate(InstrumentId)>& candidate) {
    const auto usable = [&](InstrumentId id) { return id < count && candidate(id) != Candidate::no; };
    if (selected >= 0 && usable(static_cast<InstrumentId>(selected))) return static_cast<InstrumentId>(selected);
    if (shown && usable(*shown)) return shown;
    std::optional<InstrumentId> fallback;
    for (InstrumentId id = 0; id < count; ++id) {
        const Candidate kind = candidate(id);
        if (kind == Candidate::preferred) return id;
        if (kind == Candidate::fallback && !fallback) fallback = id;
    }
    return fallback;
}

Price strikeStep(Price price) {
    for (Price power = 1;; power *= 10)
        for (const Price digit : {1, 2, 5})
            if (digit * power >= price / 100) return digit * power;
}

MarketTime expiryAfter(MarketTime now) {
    using namespace std::chrono;
    const sys_days today{days{now / kNanosADay}};
    const year_month_day date{today};
    const year_month month = date.year() / date.month();
    sys_days day = lastThursday(month);
    if (day - today < kLeastAhead) day = lastThursday(month + months{1});
    return day.time_since_epoch().count() * kNanosADay + kExpiryOfDay;
}

double smileVolatility(double strike, double forward) {
    constexpr double kAtTheMoney = 0.22, kSkew = -0.25, kCurvature = 1.2, kLowest = 0.05, kHighest = 1.5;
    const double distance = std::log(strike / forward);
    return std::clamp(kAtTheMoney + kSkew * distance + kCurvature * distance * distance, kLowest, kHighest);
}

OptionFigures priceOption(OptionPricer& pricer, const OptionTerms& terms, double tick) {
    const double forward = terms.underlying * std::exp(terms.carry * terms.years);
    OptionFigures figures;
    figures.values = pricer.value(terms, smileVolatility(terms.strike, forward));
    if (!figures.values) return figures;
    const double quote = (std::max)(1.0, std::round(figures.values->price / tick)) * tick;
    figures.volatility = pricer.impliedVolatility(terms, quote);
    if (figures.volatility && *figures.volatility > 0)
        if (const auto atQuote = pricer.value(terms, *figures.volatility)) figures.values = atQuote;
    figures.values->price = quote;
    return figures;
}

// The window of strikes stays where it is until the price is a whole step off its middle: a price that swings between
// two strikes does not make the rows jump.
void OptionChain::placeStrikes() {
    constexpr int kMiddle = kStrikes / 2;
    const Price price = m_basis.price, step = strikeStep(price);
    if (step != m_step || std::abs(price - m_rows[kMiddle].strike) > step) {
        m_step = step;
        const Price nearest = (price + step / 2) / step * step;
        const Price highest = (std::min)(nearest, kLargestPrice - kMiddle * step) + kMiddle * step;
        const Price lowest = (std::max)(step, highest - (kStrikes - 1) * step);
        for (int i = 0; i < kStrikes; ++i) m_rows[static_cast<std::size_t>(i)].strike = lowest + i * step;
    }
    const auto distance = [price](const ChainRow& row) { return std::abs(row.strike - price); };
    const auto closest = std::min_element(
        m_rows.begin(), m_rows.end(), [&](const ChainRow& a, const ChainRow& b) { return distance(a) < distance(b); });
    m_atTheMoney = static_cast<int>(closest - m_rows.begin());
}

bool OptionChain::recompute(const ChainBasis& basis, std::int64_t now, OptionPricer& pricer) {
    if (!empty() && basis == m_basis) return false;
    m_basis = basis;
    m_computed = now;
    m_expiry = expiryAfter(basis.time);
    placeStrikes();
    OptionTerms terms;
    terms.underlying = money(basis.price);
    terms.years = static_cast<double>(m_expiry - basis.time) / static_cast<double>(kNanosADay) / 365;
    terms.rate = kRate;
    terms.carry = basis.future ? 0 : kRate;
    terms.future = basis.future;
    const double tick = money(basis.tickSize > 0 ? basis.tickSize : kCent);
    for (ChainRow& row : m_rows) {
        terms.strike = money(row.strike);
        for (const bool put : {false, true}) {
            terms.put = put;
            OptionFigures& figures = put ? row.put : row.call;
            figures = priceOption(pricer, terms, tick);
            m_priced += figures.values.has_value();
        }
    }
    return true;
}

}  // namespace terminal
