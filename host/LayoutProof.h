// Proves that a restart of the terminal brings back what its user made of the lists.
//
// Before the frame closes, each list is changed by the means of its user: columns hidden and shown as the menu does it,
// header items dragged and sized by the mouse's messages, header clicks, the lock's command, auto-sort, levels, the
// combo of the watches. A second frame is opened over what the first one wrote, read from its file anew. What is held
// against each other are facts with a name: columns from left to right, widths, user columns, levels and whether they
// are active, lock, auto-sort, arrows, the order of the rows, and that a mere click has left nothing.
//
// All of it goes to a store of its own: a user's layouts are neither read nor touched.
#pragma once

#include <string>
#include <vector>

namespace terminal {

class CWatchPane;
class COrdersPane;
class CTradesPane;
class CChainPane;

struct LayoutFact {
    std::string name, value;
    bool operator==(const LayoutFact&) const = default;
};

// One list, or one watch of the market watch.
struct ListLayout {
    std::string list;
    std::vector<LayoutFact> facts;
};

// The lists of one frame.
struct ProofPanes {
    CWatchPane& watch;
    COrdersPane& orders;
    CTradesPane& trades;
    CChainPane& chain;
};

struct LeftLayouts {
    std::vector<ListLayout> lists;      // as a restart has to bring them back
    std::vector<std::string> failures;  // what could not be changed; then a restart proves nothing
};

LeftLayouts leaveLayouts(const ProofPanes& panes);
// The same lists after the restart, in the same order. Leaves the last watch shown.
std::vector<ListLayout> findLayouts(const ProofPanes& panes);

// A line for each fact that is not as it was left. Empty: all are.
std::vector<std::string> differences(const ListLayout& left, const ListLayout& found);

}  // namespace terminal
