// What a workspace keeps of a list beyond what the list stores by itself: columns as they were dragged, a plain sort,
// filters.
#pragma once

#include "host/core/Workspaces.h"
#include "host/panes/ListPane.h"

namespace terminal {

ListChoice choiceOf(CListPane& pane);
// Columns that the choice does not name stay behind the others. Without a plain sort the rows stay as they stand; a
// locked sort, levels and auto-sort win over one.
void applyChoice(CListPane& pane, const ListChoice& choice);

}  // namespace terminal
