// Proves that the terminal's user arranges bricks, workspaces and panes, and finds them after a restart.
//
// By keys and mouse: bricks are dragged, closed, fitted, coloured and given fonts, one and all; workspaces are added,
// renamed, copied, moved and closed; panes are closed and divided anew; a clipped cell shows its whole text.
//
// Acts last: it changes the room that all lists have.
#pragma once

#include "host/proof/Proof.h"

#include <memory>

namespace terminal {

class TerminalRun;

// Pictures named bars-*.png go into the run's out folder. `run` and `outcome` outlive the proof.
std::unique_ptr<Proof> makeBarsProof(TerminalRun& run, Outcome& outcome);

}  // namespace terminal
