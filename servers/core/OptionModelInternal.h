// What the European formula, the tree and the search share.
#pragma once

#include "servers/core/OptionModel.h"

namespace servers {

constexpr double kDaysInYear = 365;
constexpr double kPoint = 0.01;
// With more volatility over the life (sigma * sqrt(T)) no price differs from its upper bound by a double's last digit.
constexpr double kLargestDeviation = 20;

// Of the European option, by formula. The arguments are taken as checked, the dividends as taken off.
Valuation europeanValue(const Option& option);
double europeanPrice(const Option& option);

// Of the American one, by tree.
Valuation americanValue(const Option& option);
double americanPrice(const Option& option);

// What exercise at once brings; below 0 if it costs.
double payoff(const Option& option, double spot);

// The best moment to exercise when nothing is uncertain: what the option is worth without volatility.
double certainAmericanPrice(const Option& option);

}  // namespace servers
