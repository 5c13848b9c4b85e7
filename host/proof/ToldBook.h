// The rows that the orders pane has to show, as the feed's tally tells them, under the filters and the order that a
// proof has asked for; and what the pane shows, to be held against them. The tally never saw a row of the pane.
#pragma once

#include "host/core/Tally.h"
#include "host/panes/OrdersPane.h"

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace terminal {

struct ToldRow {
    std::string name;  // the first column
    std::string symbol;
    Price price = 0;
    Quantity quantity = 0;
    bool gone = false;
};

// Indices into a book's rows. A row's index is its arrival: both are made in the same order.
using Arrivals = std::vector<std::size_t>;

// The column in which rows are looked for: by name within one book, by symbol in a market.
struct Search {
    OrderColumn column;
    std::string ToldRow::*text;
};

// What the user has asked for so far; at first the pane's own: all rows, locked on the price, falling.
struct Asked {
    std::function<bool(const ToldRow&)> passes = [](const ToldRow&) { return true; };
    Quantity ToldRow::*key = &ToldRow::price;
    int order = 1;  // 1 falling, -1 rising
};

class ToldBook {
public:
    explicit ToldBook(const Tally& tally);

    std::size_t size() const { return m_rows.size(); }
    ToldRow& operator[](std::size_t arrival) { return m_rows[arrival]; }
    const ToldRow& operator[](std::size_t arrival) const { return m_rows[arrival]; }
    // Gives the row's index.
    std::size_t add(const ToldRow& row);

    Search search() const;
    // The first letters of a text in the middle, in small ones: those of some rows and not of all.
    std::string commonPrefix() const;
    // Of the search's column.
    std::set<std::string> values() const;

    Arrivals expected() const;
    // The grid's rows; one that is nobody's has the index size().
    Arrivals shown(CLiveGrid& grid) const;
    // Paints the grid. A row in view whose drawn texts are not those of the row that has to stand there; "": none.
    std::string drawnWrong(CLiveGrid& grid) const;
    std::string described(const Arrivals& rows) const;

    Asked asked;

private:
    std::vector<ToldRow> m_rows;
};

// Whether a text begins with another one, as a filter sees it.
bool startsWith(const std::string& text, const std::string& prefix);

}  // namespace terminal
