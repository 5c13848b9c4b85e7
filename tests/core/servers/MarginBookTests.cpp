// The margin server's mathematics: the portfolio of docs/calculators.md, worked there by hand, and the rules of
// portfolios and positions.
#include "servers/core/MarginBook.h"
#include "servers/core/Refusal.h"

#include <cmath>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

namespace {

using namespace servers;

const MarginBook::Name kName = {"otn", "101", "N/A"};

Position position(const char* product, ContractKind kind, const char* month, int quantity, double strike = 0) {
    return {"NSCCL", "NSE", product, static_cast<int>(kind), month, month, 73, strike, quantity};
}

constexpr const char* kNear = "ALPHA,1000,90,0.20,0.04,0.06,15";

// Ten futures long, six of the next month short, five calls written.
void fillWorkedExample(Portfolio& portfolio) {
    portfolio.setPosition(position(kNear, ContractKind::Future, "2606", 10));
    portfolio.setPosition(position("ALPHA,1010", ContractKind::Future, "2607", -6));
    portfolio.setPosition(position("ALPHA", ContractKind::Call, "2606", -5, 1050));
}

// Nothing where the call is not refused.
std::optional<Reason> reason(auto&& call) {
    try {
        call();
    } catch (const Refusal& r) {
        return r.reason();
    }
    return {};
}

struct Margin : testing::Test {
    Margin() {
        book.create(kName);
        book.select(kName);
    }
    double scanningRisk() {
        book.selected().calculate();
        return book.result().scanningRisk;
    }
    MarginBook book;
};

TEST_F(Margin, TheWorkedExample) {
    fillWorkedExample(book.selected());
    const double expected[] = {31.88,  -29.98, -29.31,  -100.83, 108.23, 60.78,  -74.69, -148.57,
                               197.99, 165.92, -104.70, -173.52, 298.63, 279.61, -48.63, 222.96};
    const auto losses = book.selected().losses("NSCCL", "NSE", "ALPHA");
    ASSERT_EQ(losses.size(), 16u);
    for (std::size_t i = 0; i < 16; ++i) EXPECT_NEAR(losses[i], expected[i], 0.005) << "scenario " << i + 1;

    EXPECT_THROW(book.result(), Refusal);
    EXPECT_TRUE(book.selected().calculate());
    EXPECT_NEAR(book.result().scanningRisk, 298.63, 0.005);
    EXPECT_NEAR(book.result().spreadCharge, 90, 1e-9);
    EXPECT_EQ(book.result().longOptionValue, 0);
    EXPECT_NEAR(book.result().shortOptionValue, 83.33, 0.005);
    const double requirements[2][2] = {{298.63, 381.96}, {388.63, 471.96}};
    for (const int i : {0, 1, 2, 3}) EXPECT_NEAR(book.requirement(i / 2, i % 2), requirements[i / 2][i % 2], 0.005);
    book.selected().setPosition(position("ALPHA", ContractKind::Call, "2606", -4, 1050));
    EXPECT_THROW(book.requirement(1, 1), Refusal) << "a change voids the results";
}

TEST_F(Margin, ProductsDoNotOffsetEachOtherAndPositionsAreSetNotAdded) {
    Portfolio& p = book.selected();
    p.setPosition(position("A,100,8,0,0,0,2", ContractKind::Future, "x", -9));
    p.setPosition(position("A,100,5,0,0,0,2", ContractKind::Future, "x", 3));
    p.setPosition(position("B,100,5,0,0,0,2", ContractKind::Future, "y", -3));
    EXPECT_DOUBLE_EQ(scanningRisk(), 30);
    EXPECT_EQ(book.result().spreadCharge, 0);
    // Within a product three of the five units are spread.
    p.setPosition(position("A,101", ContractKind::Future, "y", -5));
    EXPECT_DOUBLE_EQ(scanningRisk(), 10 + 15);
    EXPECT_DOUBLE_EQ(book.result().spreadCharge, 3 * 2);
}

TEST_F(Margin, BadPositionsAreRefusedAndChangeNothing) {
    Portfolio& p = book.selected();
    p.setPosition(position(kNear, ContractKind::Future, "2606", 10));
    const double before = scanningRisk();
    Position badKind = position(kNear, ContractKind::Put, "x", 1, 5), badDays = badKind;
    badKind.kind = 3;
    badDays.days = -1;
    std::vector<Position> bad = {badKind,
                                 badDays,
                                 position(kNear, ContractKind::Future, "", 1),
                                 position("ALPHA", ContractKind::Future, "2607", 1),
                                 position("ALPHA", ContractKind::Call, "2606", 1, 0),
                                 position("ALPHA", ContractKind::Call, "2606", 1, std::nan(""))};
    for (const char* product : {"", "OTHER,100", "ALPHA,12EUR", "ALPHA,1000,90", "ALPHA,1000,0,0.2,0.04,0.06,15",
                                "ALPHA,1000,90,-1,0.04,0.06,15", "ALPHA,1000,90,0.2,0.04,0.06,-1"})
        bad.push_back(position(product, ContractKind::Future, "2606", 1));
    for (const Position& b : bad)
        EXPECT_EQ(reason([&] { p.setPosition(b); }), Reason::BadArgument) << b.product << ' ' << b.month;
    EXPECT_EQ(book.result().scanningRisk, before);  // still calculated
}

}  // namespace
