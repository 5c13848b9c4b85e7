// Tapes of trades: a header `Time,Price,Volume`, then one trade a line.
#include "host/core/MarketText.h"
#include "host/core/Session.h"
#include "host/core/TapeFormat.h"

namespace terminal {
namespace {

constexpr const char* kTimeExpected = "a time such as 2012-06-21 09:30:00.017460000, 09:30:00.5 or 34200.5";
constexpr const char* kPriceExpected =
    "an integer of 1/10000 or a number with a decimal point and up to 8 decimals, at most 90000000000 in value";
constexpr const char* kVolumeExpected = "a whole number from 0 to 1000000000000";

std::optional<Price> parsePrice(std::string_view text) {
    return text.find('.') == std::string_view::npos ? parseScaledPrice(text) : parseDecimalPrice(text);
}

class TradesTape final : public TapeFormat {
public:
    explicit TradesTape(const std::string& symbol) : m_instrument{.id = 0, .symbol = symbol} {}

    bool parse(std::string_view line, Tick& tick, LineFault& fault) override {
        std::string_view fields[3];
        if (!split(line, fields)) {
            fault = {"line", line, "three fields: time, price, volume"};
            return false;
        }
        const auto time = parseTime(fields[0]);
        const auto price = parsePrice(fields[1]);
        const auto volume = parseQuantity(fields[2]);
        if (!time)
            fault = {"time", fields[0], kTimeExpected};
        else if (!price)
            fault = {"price", fields[1], kPriceExpected};
        else if (!volume)
            fault = {"volume", fields[2], kVolumeExpected};
        if (!time || !price || !volume) return false;
        deliver(Trade{.instrument = 0, .price = *price, .quantity = *volume, .time = *time}, tick);
        return true;
    }

private:
    static bool split(std::string_view line, std::string_view (&fields)[3]) {
        bool more = true;
        for (std::string_view& field : fields) {
            if (!more) return false;
            field = takeField(line, ',', more);
        }
        return !more;
    }

    void deliver(const Trade& trade, Tick& tick) {
        if (!m_announced) tick.events.emplace_back(m_instrument);
        m_announced = true;
        tick.time = trade.time;
        tick.events.emplace_back(trade);
        tick.events.emplace_back(m_session.take(trade));
    }

    Instrument m_instrument;
    Session m_session;
    bool m_announced = false;
};

}  // namespace

std::unique_ptr<TapeFormat> makeTradesTape(const std::string& symbol) { return std::make_unique<TradesTape>(symbol); }

}  // namespace terminal
