// Proves that a restart of the terminal brings back what its user made of the lists: shown columns, their order on
// screen and widths, user columns, locked sort.
//
// The layouts are changed as a user might, the frame is closed, and a second frame is opened over what the first one
// wrote, read from its file anew. All of it goes to a store of its own: a user's layouts are neither read nor touched.
#pragma once

#include <string>
#include <vector>

#include "platform/Framework.h"

class CCommonListCtrl;

namespace terminal {

// One list as its user sees it, in a line: heading and width of each column from left to right, name and formula of
// each user column, and the lock.
std::string layoutOf(CCommonListCtrl& list);

// Another layout than before: the second column hidden, one that was hidden shown, two changed places, other widths;
// the sort locked on the first column where the list can lock.
void changeLayout(CCommonListCtrl& list);

}  // namespace terminal
