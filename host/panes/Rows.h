// The host's row objects: what the panes of orders, trades and positions show, one object a row, typed fields and no
// text.
//
// The panes own them; a row outlives its time in a grid. Panes without a window may be dropped in any order.
#pragma once

#include "host/core/MarketData.h"
#include "host/core/Positions.h"
#include "host/panes/PaintFigures.h"
#include "quor/grid/core/FilterListBaseData.h"

namespace terminal {

// A live order, or one level of a book when the feed brings books.
struct OrderRow : CFilterListBaseData {
    Order order;
    std::uint64_t arrival = 0;  // counts the rows that the pane ever added
    int level = -1;             // of a book, 0 is the best; -1: this row is an order
    PaintStamp stamp;
};

struct TradeRow : CFilterListBaseData {
    Trade trade;
    std::int64_t number = 0;  // 1 is the first trade of the run
    Price change = kNoPrice;  // against the trade before it of the same instrument; kNoPrice: it is the first
    Move move = Move::none;
    PaintStamp stamp;
};

struct PositionRow : CFilterListBaseData {
    const Position* position = nullptr;  // of the pane's Positions
    PaintStamp stamp;
};

}  // namespace terminal
