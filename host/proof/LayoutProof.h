// Proves that a restart of the terminal brings back what its user made of the lists.
//
// Each list is changed by the means of its user: columns hidden and shown as the menu does it, header items dragged and
// sized by the mouse's messages, header clicks, the lock's command, auto-sort, levels, the combo of the watches. What
// is held against each other before and after the restart are facts with a name (host/proof/LayoutFacts.h).
//
// Leaves every list changed: it acts last. The orders pane is locked on the quantity, falling; the first watch is
// shown.
#pragma once

#include "host/proof/Proof.h"

#include <memory>

namespace terminal {

class TerminalRun;

std::unique_ptr<Proof> makeLayoutProof(TerminalRun& run, Outcome& outcome);

}  // namespace terminal
