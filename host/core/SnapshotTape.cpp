// Tapes of order book snapshots: no header, no time; for each level of the book its ask price, ask size, bid price and
// bid size. Only what changed against the line before becomes events.
#include "host/core/MarketText.h"
#include "host/core/TapeFormat.h"

#include <charconv>

namespace terminal {
namespace {

constexpr std::int64_t kNanosPerLine = 1'000'000;    // 1,000 lines a second
constexpr std::int64_t kEmptyPrice = 9'999'999'999;  // in the tape's 1/10,000, with either sign
constexpr int kFieldsPerLevel = 4;
constexpr int kMostLevels = 1'000;
constexpr Price kScaledPriceOne = kPriceOne / 10'000;

int countFields(std::string_view line) {
    int count = 1;
    for (const char c : line) count += c == ',';
    return count;
}

std::optional<BookLevel> parseLevel(std::string_view priceText, std::string_view sizeText, std::string_view& bad) {
    bad = priceText;
    const auto price = parseScaledPrice(priceText);
    if (!price) return {};
    bad = sizeText;
    const auto size = parseQuantity(sizeText);
    if (!size) return {};
    BookLevel level;
    const bool empty =
        *size == 0 || *price == kEmptyPrice * kScaledPriceOne || *price == -kEmptyPrice * kScaledPriceOne;
    if (!empty) {
        level.price = *price;
        level.quantity = *size;
    }
    return level;
}

class SnapshotTape final : public TapeFormat {
public:
    explicit SnapshotTape(const std::string& symbol) { m_instrument.symbol = symbol; }

    bool parse(std::string_view line, Tick& tick, LineFault& fault) override {
        const int fields = countFields(line);
        if (m_book.empty() && !begin(fields, tick)) return wrongCount(line, fault);
        if (fields != m_instrument.bookLevels * kFieldsPerLevel) return wrongCount(line, fault);
        tick.time = m_lines++ * kNanosPerLine;
        m_news = {.instrument = 0, .fields = 0, .time = tick.time};
        for (int level = 0; level < m_instrument.bookLevels; ++level) {
            for (const Side side : {Side::sell, Side::buy}) {
                if (!takeLevel(side, level, line, tick, fault)) return false;
            }
        }
        if (m_news.fields != 0) tick.events.emplace_back(m_news);
        return true;
    }

private:
    bool begin(int fields, Tick& tick) {
        if (fields % kFieldsPerLevel != 0 || fields / kFieldsPerLevel > kMostLevels) return false;
        m_instrument.bookLevels = fields / kFieldsPerLevel;
        m_book.resize(static_cast<std::size_t>(m_instrument.bookLevels) * 2);
        tick.events.emplace_back(m_instrument);
        return true;
    }

    bool wrongCount(std::string_view line, LineFault& fault) {
        m_expected = m_book.empty() ? "four fields a level, at most 1000 levels"
                                    : std::to_string(m_instrument.bookLevels * kFieldsPerLevel) +
                                          " fields, as many as the first line has";
        fault = {"line of " + std::to_string(countFields(line)) + " fields", line, m_expected.c_str()};
        return false;
    }

    bool takeLevel(Side side, int level, std::string_view& line, Tick& tick, LineFault& fault) {
        bool more = false;
        const std::string_view price = takeField(line, ',', more);
        const std::string_view size = takeField(line, ',', more);
        std::string_view bad;
        auto news = parseLevel(price, size, bad);
        if (!news) {
            const bool badPrice = bad.data() == price.data();
            const std::string which = (side == Side::sell ? "ask " : "bid ") + std::to_string(level + 1);
            fault = {(badPrice ? "price of " : "size of ") + which, bad,
                     badPrice ? "an integer of 1/10000" : "a whole number from 0 to 1000000000000"};
            return false;
        }
        news->side = side;
        news->level = level;
        BookLevel& known = m_book[2 * static_cast<std::size_t>(level) + (side == Side::buy ? 1 : 0)];
        if (known.price == news->price && known.quantity == news->quantity) return true;
        known = *news;
        tick.events.emplace_back(*news);
        if (level == 0) quoteBest(*news);
        return true;
    }

    void quoteBest(const BookLevel& best) {
        if (best.side == Side::sell) {
            m_news.fields |= quoteAsk | quoteAskSize;
            m_news.ask = best.price;
            m_news.askSize = best.quantity;
        } else {
            m_news.fields |= quoteBid | quoteBidSize;
            m_news.bid = best.price;
            m_news.bidSize = best.quantity;
        }
    }

    Instrument m_instrument;
    std::vector<BookLevel> m_book;  // ask and bid of level 0, of level 1, ...; empty at first
    Quote m_news;
    std::int64_t m_lines = 0;
    std::string m_expected;  // the fault's text points here
};

}  // namespace

bool looksLikeSnapshot(std::string_view line) {
    if (countFields(line) % kFieldsPerLevel != 0) return false;
    for (const char c : line) {
        if ((c < '0' || c > '9') && c != '-' && c != ',') return false;
    }
    return true;
}

std::unique_ptr<TapeFormat> makeSnapshotTape(const std::string& symbol) {
    return std::make_unique<SnapshotTape>(symbol);
}

}  // namespace terminal
