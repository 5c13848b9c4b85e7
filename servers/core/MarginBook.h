// Portfolio margin by scenarios: what could a portfolio of futures and European options on futures lose in a day?
//
// A book holds portfolios, named by three texts; one of them is selected. Positions carry their market data with them
// (see RiskParameters), since a portfolio has no other source. Calculation, per product:
//   - scanning risk: the largest loss over 16 scenarios of price and volatility (kScenarios), 0 at least;
//   - inter-month spread charge: the scan lets all months move as one, so each unit of delta that is long in one month
//     and offset by one short in another costs a charge.
// Requirement of the portfolio: the sum of both over all products, less the net option value (what the long options
// would bring less what buying back the short ones would cost), 0 at least.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

namespace servers {

// One row of the scan.
struct Scenario {
    double move;        // of the price, in price ranges
    double volatility;  // +1 up, -1 down, 0 unchanged, in volatility ranges
    double share;       // of the loss that counts
};

constexpr double kThird = 1.0 / 3;
constexpr double kExtremeShare = 0.35;
constexpr std::array<Scenario, 16> kScenarios = {{
    {0, 1, 1},   // price unchanged, volatility up
    {0, -1, 1},  // and down; so on in pairs
    {kThird, 1, 1},
    {kThird, -1, 1},
    {-kThird, 1, 1},
    {-kThird, -1, 1},
    {2 * kThird, 1, 1},
    {2 * kThird, -1, 1},
    {-2 * kThird, 1, 1},
    {-2 * kThird, -1, 1},
    {1, 1, 1},  // the whole range
    {1, -1, 1},
    {-1, 1, 1},
    {-1, -1, 1},
    {2, 0, kExtremeShare},  // twice the range: rare, so a part of the loss counts
    {-2, 0, kExtremeShare},
}};

enum class ContractKind { Future = 0, Call = 1, Put = 2 };

struct Position {
    std::string clearing;  // house and exchange: any texts, part of the product's identity
    std::string exchange;
    // The product and, at least the first time, its market data, separated by commas:
    //   SYMBOL                     product and month are known already
    //   SYMBOL,price               a new price of this month
    //   SYMBOL,price,range,volatility,volatility range,rate,spread charge
    std::string product;
    int kind = 0;                 // as ContractKind
    std::string month;            // of the contract: any text, "2606"
    std::string underlyingMonth;  // of the future under it, whose price is meant
    int days = 0;                 // calendar days to expiry, 0 or more
    double strike = 0;            // above 0 for options; unread for futures
    int quantity = 0;             // in units of the underlying, long above 0, short below; 0 takes the position out
};

// The market data of a product; the price is that of one month.
struct RiskParameters {
    double range = 0;            // the price's largest ordinary move in a day, above 0
    double volatility = 0;       // a year, 0 or more
    double volatilityRange = 0;  // its largest ordinary change, 0 or more
    double rate = 0;             // interest a year, continuous
    double spreadCharge = 0;     // for one unit of delta spread over two months, 0 or more
};

struct MarginResult {
    double scanningRisk = 0;
    double spreadCharge = 0;
    double longOptionValue = 0;
    double shortOptionValue = 0;  // 0 or more: the cost of buying the short options back
    double netOptionValue() const { return longOptionValue - shortOptionValue; }
};

// One portfolio: its positions, their market data and, once calculated, its margin.
class Portfolio {
public:
    // Sets the position of a contract (clearing, exchange, symbol, kind, month, strike); a former one is replaced.
    // Results are void afterwards. Refusal for bad fields, which change nothing.
    void setPosition(const Position& position);
    // True if there was a position to calculate.
    bool calculate();
    bool calculated() const { return m_calculated; }
    const MarginResult& result() const { return m_result; }
    // Loss of one product in each scenario, in the order of kScenarios; empty for an unknown one. For reports and
    // tests.
    std::vector<double> losses(const std::string& clearing, const std::string& exchange,
                               const std::string& symbol) const;

private:
    struct ContractKey {
        ContractKind kind;
        std::string month;
        double strike;
        auto operator<=>(const ContractKey&) const = default;
    };
    struct Holding {
        std::string underlyingMonth;
        int days = 0;
        int quantity = 0;
    };
    struct Product {
        RiskParameters parameters;
        std::map<std::string, double> prices;  // by month of the future
        std::map<ContractKey, Holding> holdings;
    };
    using ProductKey = std::array<std::string, 3>;  // clearing, exchange, symbol

    static double valueOf(const Product& product, const ContractKey& key, const Holding& holding,
                          const Scenario& scenario);
    static double deltaOf(const Product& product, const ContractKey& key, const Holding& holding);
    static std::vector<double> lossesOf(const Product& product);
    static double spreadChargeOf(const Product& product);
    static void addOptionValues(const Product& product, MarginResult& result);

    std::map<ProductKey, Product> m_products;
    MarginResult m_result;
    bool m_calculated = false;
};

// The portfolios of one client.
class MarginBook {
public:
    using Name = std::array<std::string, 3>;  // portfolio, account, segment: any texts

    void create(const Name& name);  // Refusal (AlreadyThere); does not select
    void select(const Name& name);  // Refusal (NotFound), the selection stays
    void eraseSelected();           // nothing is selected afterwards
    // The selected portfolio; Refusal (NotFound) without one.
    Portfolio& selected();
    // Its results; Refusal (NotCalculated) before calculate() or after a change.
    const MarginResult& result();
    // What must be deposited. `whole` 1: scanning risk and spread charge, 0: scanning risk alone; `credit` 1: less the
    // net option value, 0: not. Other numbers are refused.
    double requirement(int whole, int credit);

private:
    std::map<Name, Portfolio> m_portfolios;
    Portfolio* m_selected = nullptr;
    Name m_selectedName;
};

}  // namespace servers
