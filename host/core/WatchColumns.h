// The 112 columns of the market watch: headings, widths, alignments, sort types, colours and the text of each cell out
// of an instrument's data. One table is all there is to a column. No window, no allocation.
//
// A column's place in the table is its number for ever: stored layouts and formulas of user columns name it. The first
// `kWatchShownColumns` are those of a new watch; user columns are numbered from `kWatchBuiltInColumns` on.
#pragma once

#include "host/core/MarketText.h"
#include "host/core/WatchData.h"

#include <string_view>

namespace terminal {

inline constexpr int kWatchBuiltInColumns = 112;
inline constexpr int kWatchShownColumns = 18;

// The columns that code names: the first ones of the table, in its order.
enum class WatchColumn {
    symbol,
    series,
    last,
    lastSize,
    change,
    changePercent,
    bidSize,
    bid,
    ask,
    askSize,
    open,
    high,
    low,
    close,
    volume,
    average,
    openInterest,
    time,
    value,
    spread,
};

// What the colour of a cell follows from.
enum class WatchTone {
    plain,
    symbol,
    dim,
    direction,  // of the last price
    sign,       // of the cell's own text
    buy,
    sell,
};

// What a cell's text is made from.
struct WatchCell {
    const WatchData& data;
    TextBuffer& buffer;
};

struct WatchColumnInfo {
    const char* heading;  // unlike all others; neither ',' nor '#' nor '"'
    int width;            // pixels
    int format;           // list column format: 0 left, 1 right
    int dataType;         // how the column sorts: 3 mixed text, 4 long integer, 5 decimal, 6 date and time
    WatchTone tone;
    std::string_view (*text)(const WatchCell& cell);
};

// `columnIndex` is from 0 to kWatchBuiltInColumns - 1.
const WatchColumnInfo& watchColumn(int columnIndex);

// The text of one cell; it points into `buffer`, into `data` or to a literal. Empty: the feed has not told it. "-": a
// thing that the feed's instruments do not have, such as a strike. An index outside the table gives an empty text.
std::string_view watchText(const WatchData& data, int columnIndex, TextBuffer& buffer);
inline std::string_view watchText(const WatchData& data, WatchColumn column, TextBuffer& buffer) {
    return watchText(data, static_cast<int>(column), buffer);
}

// The tone of a user column's cell: a number follows its sign; what stands there for want of one ("Divided by ZERO
// error") is dim.
WatchTone userColumnTone(std::string_view text);

}  // namespace terminal
