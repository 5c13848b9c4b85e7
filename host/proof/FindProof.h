// Proves that the terminal's user finds and orders rows as the screen promises.
//
// The filter bar of the orders pane is opened and typed into, headers are clicked, the sort is locked by the menu,
// values are chosen in the pop-up, and rows stream in meanwhile. After each step the pane's rows, and the texts that
// its last paint drew, are held against what the feed's tally says they have to be. After the restart, the locked sort.
//
// Leaves the pane as a first start shows it, but for the lock: on the quantity, falling. Who sorts the pane after it
// leaves it so, too.
#pragma once

#include "host/proof/Proof.h"

#include <memory>

namespace terminal {

class TerminalRun;

// Three pictures go into the run's out folder. `run` and `outcome` outlive the proof.
std::unique_ptr<Proof> makeFindProof(TerminalRun& run, Outcome& outcome);

}  // namespace terminal
