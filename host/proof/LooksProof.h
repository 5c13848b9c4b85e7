// Proves that the terminal's user gives the lists their looks, and finds them after a restart.
//
// The dialogs are opened by the items of the context menus and used by keys and mouse: colours, font and a keyword of
// the trades, colours by side of the orders, colour and interval of the positions' trends, ground and font of the
// watch. Each is looked for in the list, in its painted pixels, and in the frame after the restart. A price of the
// positions rises: its cell flashes in the chosen colour, and no longer when the interval is over.
//
// Leaves the looks as chosen, which no other proof looks at, and the positions at the prices that the feed told.
#pragma once

#include "host/proof/Proof.h"

#include <memory>

namespace terminal {

class TerminalRun;

// Pictures named looks-*.png go into the run's out folder. `run` and `outcome` outlive the proof.
std::unique_ptr<Proof> makeLooksProof(TerminalRun& run, Outcome& outcome);

}  // namespace terminal
