// What the European formula, the American grid and the search share. Options here are checked.
#pragma once

#include "servers/core/OptionModel.h"

namespace servers {

constexpr double kDaysInYear = 365;
constexpr double kPoint = 0.01;
// With more volatility over the life (sigma * sqrt(T)) no price differs from its upper bound by a double's last digit.
constexpr double kLargestDeviation = 20;

// 1 for a call, -1 for a put.
constexpr double signOf(Right right) { return right == Right::Call ? 1 : -1; }

// The formulas know no cash dividends: the asset is worth less by what it will have paid.
Option withoutDividends(Option option);

// Of the European option, by formula; on the spot without dividends.
Valuation europeanValue(const Option& option);
double europeanPrice(const Option& option);

// Of the American one, on the spot with dividends.
Valuation americanValue(const Option& option);
double americanPrice(const Option& option);
Bounds americanBounds(const Option& option);

// What exercise at a spot brings; below 0 if it costs.
double payoff(const Option& option, double spot);

// The best moment to exercise when nothing is uncertain: what the American option is worth without volatility, on the
// spot without dividends.
double certainAmericanPrice(const Option& option);

}  // namespace servers
