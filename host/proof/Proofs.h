// What a headless run proves, from one table.
//
// A frame of its own shows the market as the feed left it, over an empty store, so that nothing moves and no choice of
// a user is read or touched. There every proof acts. The frame closes, the store is written and read from its file
// anew, and a second frame shows the same market over it: the restart. There every proof checks.
//
// Keys and mouse go to whatever window is in front: the run must have a desktop of its own (quor::useOwnDesktop).
#pragma once

#include "host/core/Summary.h"

#include <string>
#include <vector>

namespace terminal {

class BoxGuard;
class TerminalRun;

// What --proof may name, in the order in which they act.
std::vector<std::string> proofNames();

// Their fields of the summary, before anything was tried.
std::vector<ProofFigure> proofFigures();

// Runs the proofs, or the one that the options name. A proof's figure goes into the run's summary; what does not hold,
// and boxes that `guard` had to close, onto stderr and into the log, and a failure into the run's exit code. A proof
// without its ground is none on a tape, which may hold anything, and fails on the simulator. The lists' settings come
// from the run's proof store from here on.
void runProofs(TerminalRun& run, BoxGuard& guard);

}  // namespace terminal
