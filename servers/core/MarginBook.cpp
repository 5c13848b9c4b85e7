#include "servers/core/MarginBook.h"

#include "servers/core/OptionModel.h"
#include "servers/core/Refusal.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace servers {

namespace {

constexpr Scenario kNow = {0, 0, 1};
constexpr double kDaysInYear = 365;

void require(bool holds, const char* sentence) {
    if (!holds) throw Refusal(Reason::BadArgument, sentence);
}

std::vector<std::string_view> fieldsOf(std::string_view text) {
    std::vector<std::string_view> fields;
    for (;;) {
        const auto comma = text.find(',');
        fields.push_back(text.substr(0, comma));
        if (comma == std::string_view::npos) return fields;
        text.remove_prefix(comma + 1);
    }
}

double numberOf(std::string_view field) {
    double number = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number);
    require(error == std::errc() && end == field.data() + field.size() && std::isfinite(number),
            "A field of the product's text is not a number.");
    return number;
}

// The product's text, taken apart and checked.
struct ProductText {
    std::string symbol;
    std::optional<double> price;
    std::optional<RiskParameters> parameters;
};

RiskParameters parametersOf(const std::vector<std::string_view>& fields) {
    RiskParameters p;
    p.range = numberOf(fields[2]);
    p.volatility = numberOf(fields[3]);
    p.volatilityRange = numberOf(fields[4]);
    p.rate = numberOf(fields[5]);
    p.spreadCharge = numberOf(fields[6]);
    require(p.range > 0, "The price range must be above 0.");
    require(p.volatility >= 0 && p.volatilityRange >= 0, "Volatility and its range must be 0 or more.");
    require(p.spreadCharge >= 0, "The spread charge must be 0 or more.");
    return p;
}

ProductText productTextOf(std::string_view text) {
    const auto fields = fieldsOf(text);
    require(fields.size() == 1 || fields.size() == 2 || fields.size() == 7,
            "The product's text needs a symbol; symbol and price; or all seven fields.");
    require(!fields[0].empty(), "The product needs a symbol.");
    ProductText product{std::string(fields[0]), {}, {}};
    if (fields.size() > 1) {
        product.price = numberOf(fields[1]);
        require(*product.price > 0, "The price must be above 0.");
    }
    if (fields.size() == 7) product.parameters = parametersOf(fields);
    return product;
}

void checkContract(const Position& position) {
    require(position.kind >= 0 && position.kind <= 2, "The kind must be 0 (future), 1 (call) or 2 (put).");
    require(!position.month.empty() && !position.underlyingMonth.empty(), "The contract needs a month.");
    require(position.days >= 0, "The days to expiry must be 0 or more.");
    require(position.kind == 0 || (std::isfinite(position.strike) && position.strike > 0),
            "An option's strike must be above 0.");
}

Option optionOn(double price, ContractKind kind, double strike, int days, const RiskParameters& p) {
    Option option;
    option.spot = price;
    option.strike = strike;
    option.years = days / kDaysInYear;
    option.rate = p.rate;
    option.carry = 0;
    option.volatility = p.volatility;
    option.right = kind == ContractKind::Call ? Right::Call : Right::Put;
    return option;
}

}  // namespace

// Of one unit. A fall by more than the price leaves the future worthless: its call too, and its put pays the strike.
double Portfolio::valueOf(const Product& product, const ContractKey& key, const Holding& holding,
                          const Scenario& scenario) {
    const RiskParameters& p = product.parameters;
    const double price = std::max(0.0, product.prices.at(holding.underlyingMonth) + scenario.move * p.range);
    if (key.kind == ContractKind::Future) return price;
    Option option = optionOn(price, key.kind, key.strike, holding.days, p);
    if (price == 0) return key.kind == ContractKind::Call ? 0 : key.strike * std::exp(-p.rate * option.years);
    option.volatility = std::max(0.0, p.volatility + scenario.volatility * p.volatilityRange);
    return servers::price(option);
}

double Portfolio::deltaOf(const Product& product, const ContractKey& key, const Holding& holding) {
    if (key.kind == ContractKind::Future) return 1;
    const double price = product.prices.at(holding.underlyingMonth);
    return value(optionOn(price, key.kind, key.strike, holding.days, product.parameters)).delta;
}

void Portfolio::setPosition(const Position& position) {
    checkContract(position);
    const ProductText text = productTextOf(position.product);
    const ProductKey key = {position.clearing, position.exchange, text.symbol};
    const auto known = m_products.find(key);
    require(text.parameters || known != m_products.end(), "The product's market data are not known yet.");
    require(text.price || known->second.prices.contains(position.underlyingMonth),
            "The price of this month is not known yet.");

    Product& product = m_products[key];
    if (text.parameters) product.parameters = *text.parameters;
    if (text.price) product.prices[position.underlyingMonth] = *text.price;
    const auto kind = static_cast<ContractKind>(position.kind);
    const ContractKey contract = {kind, position.month, kind == ContractKind::Future ? 0 : position.strike};
    if (position.quantity == 0)
        product.holdings.erase(contract);
    else
        product.holdings[contract] = {position.underlyingMonth, position.days, position.quantity};
    m_calculated = false;
}

std::vector<double> Portfolio::lossesOf(const Product& product) {
    std::vector<double> losses(kScenarios.size(), 0.0);
    for (const auto& [key, holding] : product.holdings) {
        const double now = valueOf(product, key, holding, kNow);
        for (std::size_t i = 0; i < kScenarios.size(); ++i) {
            const double then = valueOf(product, key, holding, kScenarios[i]);
            losses[i] += holding.quantity * (now - then) * kScenarios[i].share;
        }
    }
    return losses;
}

std::vector<double> Portfolio::losses(const std::string& clearing, const std::string& exchange,
                                      const std::string& symbol) const {
    const auto found = m_products.find({clearing, exchange, symbol});
    return found == m_products.end() ? std::vector<double>() : lossesOf(found->second);
}

// Net delta by month of the underlying; what is long in some months is spread against what is short in others.
double Portfolio::spreadChargeOf(const Product& product) {
    std::map<std::string, double> deltas;
    for (const auto& [key, holding] : product.holdings)
        deltas[holding.underlyingMonth] += holding.quantity * deltaOf(product, key, holding);
    double longDelta = 0, shortDelta = 0;
    for (const auto& [month, delta] : deltas) (delta > 0 ? longDelta : shortDelta) += std::abs(delta);
    return std::min(longDelta, shortDelta) * product.parameters.spreadCharge;
}

void Portfolio::addOptionValues(const Product& product, MarginResult& result) {
    for (const auto& [key, holding] : product.holdings) {
        if (key.kind == ContractKind::Future) continue;
        const double worth = holding.quantity * valueOf(product, key, holding, kNow);
        (worth > 0 ? result.longOptionValue : result.shortOptionValue) += std::abs(worth);
    }
}

bool Portfolio::calculate() {
    MarginResult result;
    bool any = false;
    for (const auto& [key, product] : m_products) {
        any = any || !product.holdings.empty();
        const auto losses = lossesOf(product);
        result.scanningRisk += std::max(0.0, *std::max_element(losses.begin(), losses.end()));
        result.spreadCharge += spreadChargeOf(product);
        addOptionValues(product, result);
    }
    m_result = result;
    m_calculated = true;
    return any;
}

void MarginBook::create(const Name& name) {
    if (!m_portfolios.try_emplace(name).second) throw Refusal(Reason::AlreadyThere, "A portfolio of this name exists.");
}

void MarginBook::select(const Name& name) {
    const auto found = m_portfolios.find(name);
    if (found == m_portfolios.end()) throw Refusal(Reason::NotFound, "There is no portfolio of this name.");
    m_selected = &found->second;
    m_selectedName = name;
}

Portfolio& MarginBook::selected() {
    if (!m_selected) throw Refusal(Reason::NotFound, "No portfolio is selected.");
    return *m_selected;
}

void MarginBook::eraseSelected() {
    selected();
    m_portfolios.erase(m_selectedName);
    m_selected = nullptr;
}

const MarginResult& MarginBook::result() {
    if (!selected().calculated()) throw Refusal(Reason::NotCalculated, "The portfolio has not been calculated.");
    return m_selected->result();
}

double MarginBook::requirement(int whole, int credit) {
    require((whole == 0 || whole == 1) && (credit == 0 || credit == 1), "Both choices must be 0 or 1.");
    const MarginResult& r = result();
    const double risk = r.scanningRisk + (whole ? r.spreadCharge : 0);
    return std::max(0.0, risk - (credit ? r.netOptionValue() : 0));
}

}  // namespace servers
