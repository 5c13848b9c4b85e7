// One thing that a headless run proves at its end: its user changes the terminal, and finds what has to last after a
// restart.
//
// All proofs act on one frame, one after the other, then the terminal restarts once, then all of them check what the
// next frame shows (host/proof/Proofs.h). So each one leaves what others look at as it found it, or in the state that
// its header names.
#pragma once

#include <string>
#include <vector>

namespace terminal {

class CMainFrame;

// What a proof comes to.
struct Outcome {
    int tried = 0;
    int held = 0;
    std::vector<std::string> findings;  // a line each; any one fails the run, counted as a check or not

    // Counts one check; `finding` is told after `what` if it does not hold.
    void check(const char* what, bool holds, const std::string& finding) {
        ++tried;
        if (holds)
            ++held;
        else
            findings.push_back(std::string(what) + ": " + finding);
    }
};

class Proof {
public:
    Proof() = default;
    virtual ~Proof() = default;
    Proof(const Proof&) = delete;
    Proof& operator=(const Proof&) = delete;

    // The panes, columns and rows that it needs and that are not there; "": it can act. Changes nothing.
    virtual std::string missing(CMainFrame& frame) = 0;
    // In the frame that closes for the restart. It is shown, and in front.
    virtual void act(CMainFrame& frame) = 0;
    // In the frame after it.
    virtual void check(CMainFrame& frame) = 0;
};

}  // namespace terminal
