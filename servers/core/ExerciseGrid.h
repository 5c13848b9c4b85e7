// The American option on a grid of spots, by finite differences from expiry back to today: at every node the price is
// the greater of what holding and what exercise brings. Good for every sign of rate and carry.
//
//   Space. The nodes stand in a geometric row around the spot; central differences, exact for a constant, S and S^2.
//   Where the carry outweighs the volatility between two nodes, so much volatility is added that no price turns
//   negative.
//   Time. Second-order backward differences (BDF2). The times lie closer together towards expiry, where the boundary of
//   exercise moves like the root of time; the first two levels are the European formula's. The steps are fitted so
//   that a constant and S, the parts of every payment, come out exactly however long they are.
//   Exercise. M. J. Brennan, E. S. Schwartz, "The valuation of American put options", Journal of Finance 32 (1977),
//   which P. Jaillet, D. Lamberton, B. Lapeyre, "Variational inequalities and the pricing of American options", Acta
//   Applicandae Mathematicae 21 (1990), prove right: the equations are eliminated from the far end towards the
//   exercised nodes and solved outward from these, taking the payoff where it is greater. With a negative rate the
//   exercised spots can be an interval between two boundaries; then it is done on either side of it.
#pragma once

#include "servers/core/OptionModel.h"

namespace servers {

// At the option's spot; the slopes are those of the header of the model.
struct GridPrice {
    double price = 0;
    double delta = 0;
    double gamma = 0;
};

// The arguments are taken as checked, the dividends as taken off the spot. Volatility and time must be above 0. The
// price is exactly the payoff where exercise at once is best.
GridPrice gridPrice(const Option& option);

}  // namespace servers
