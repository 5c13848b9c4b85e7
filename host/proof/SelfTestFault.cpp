#include "host/proof/SelfTestFault.h"

namespace terminal {

namespace {
bool loseFirstRow(CLiveGrid& grid) {
    CFilterListBaseData* const row = grid.GetDisplayCount() > 0 ? grid.rowAt(0) : nullptr;
    if (!row) return false;
    grid.remove(row);
    processEndofBatchUpdates();
    return true;
}
}  // namespace

bool plantFault(const Panes& panes) {
    return loseFirstRow(panes.orders->grid()) || loseFirstRow(panes.trades->grid()) ||
           panes.watch->list().DeleteItem(0);
}

}  // namespace terminal
