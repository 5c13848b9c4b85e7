// The command line of the demo terminal.
#pragma once

#include "host/core/Feed.h"
#include "host/core/Tape.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace terminal {

struct Options {
    std::optional<TapeName> tape;      // --tape FILE[:SYMBOL]; none: the simulator
    Speed speed;                       // --speed X|max; 0 < X <= 1,000,000
    std::optional<int> seconds;        // --seconds N, 1 to 1,000,000; none: until the window is closed (headless: 15)
    bool headless = false;             // --headless
    std::string outDirectory = "out";  // --out DIR
    std::uint64_t seed = 1;            // --seed N
    int instruments = 500;             // --instruments N, 1 to 1,000,000
    int keep = 100'000;                // --keep N, 1 to 10,000,000: trades kept in the trades pane
    std::string recordFile;            // --record FILE; empty: none
    std::string proof;                 // --proof NAME; empty: all of a headless run
    bool selfTestFault = false;        // --self-test-fault: the self-check must find something
    bool help = false;                 // --help: print the usage and end with 0
};

// How long a run lasts; nothing: until its window is closed.
std::optional<int> secondsToRun(const Options& options);

struct ParsedOptions {
    Options options;
    std::string error;  // "" or what to print before ending with kExitBadInput; the options mean nothing then
};
inline constexpr int kExitBadInput = 2;

// `arguments` without the program's name, in UTF-8. A value follows as the next argument or after a '=' (`--speed=max`)
// and does not begin with "--" (a file of such a name is given as "./--name"). An option given twice counts the last
// time. `proofs` is what --proof may name, which asks for --headless. No file is touched.
ParsedOptions parseOptions(int count, const char* const* arguments, const std::vector<std::string>& proofs);

// What must be found out before any window opens: a bad tape (checkTape), or a recording that would overwrite the tape
// it is made from. "" or what to print before ending with kExitBadInput. Writes nothing.
std::string checkFiles(const Options& options);

std::string usageText(const std::vector<std::string>& proofs);

// Splits at the last colon that is no drive letter's; without one the symbol is the file's stem. A drive letter's colon
// follows a single letter at the start of the path. The symbol is empty if nothing stands after the colon.
TapeName splitTapeName(const std::string& text);

}  // namespace terminal
