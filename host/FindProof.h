// Proves, at the end of a headless run, that its user finds and orders rows as the screen promises.
//
// A frame of its own shows the market as the feed left it, over an empty store, so that nothing moves and no choice of
// a user is read or touched. Keys and mouse then go through the system's own input queue: the filter bar is opened and
// typed into, headers are clicked, the sort is locked by the menu, values are chosen in the pop-up. After each step the
// rows of the orders pane, and the texts that its last paint drew, are held against what the feed's tally says they
// have to be. A last frame over the same store shows that the locked sort survives a restart.
//
// Input goes to whatever window is in front: the run must have a desktop of its own (quor::useOwnDesktop).
#pragma once

namespace terminal {

class TerminalRun;

// Puts the checks held and tried into the run's summary ("none" where the orders pane has fewer than four rows), three
// pictures into its out folder, what was seen and expected of a failed check onto stderr and into the log, and a
// failure into its exit code. The lists' settings come from the run's proof store afterwards.
void proveFinding(TerminalRun& run);

}  // namespace terminal
