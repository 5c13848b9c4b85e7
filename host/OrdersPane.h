// The orders pane: one row for each live order in order of arrival, or, when the feed brings books, one row for each
// level from the worst ask to the worst bid. A grid in opti-data mode; the pane owns the rows.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "host/ListPane.h"
#include "host/LiveGrid.h"
#include "host/Rows.h"
#include "host/core/Tally.h"

namespace terminal {

// The columns, by columnIndex.
enum class OrderColumn { order, symbol, side, price, quantity, value, time, count };

class COrdersPane : public CListPane {
public:
    explicit COrdersPane(PaintFigures& figures);

    CCommonListCtrl& list() override { return m_grid; }
    CLiveGrid& grid() { return m_grid; }

    // What the feed tells; `now` is the clock's time in microseconds. The batch stays open.
    void instrument(const Instrument& news);
    void order(const OrderEvent& news, std::int64_t now);
    void level(const BookLevel& news, std::int64_t now);

    // Empties the grid and adds its rows again when deleted ones hold too many slots. Only between batches.
    void refillIfNeeded();

    // The row of a live order, or null.
    const OrderRow* find(OrderId id) const;
    // The rows of the levels of an instrument's book, in their order on screen; empty without a book.
    const std::vector<std::unique_ptr<OrderRow>>& levelRows(InstrumentId id) const;
    std::size_t rowCount() const;

    // Makes the pane wrong, for the test of the self-check: an order is lost, or a level's price is changed. False:
    // there is nothing to spoil.
    bool spoil();

private:
    BOOL createList() override;
    int cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& color, COLORREF& back, int& icon);
    void add(const Order& order, std::int64_t now);

    void addRow(OrderRow& row);

    std::unordered_map<OrderId, std::unique_ptr<OrderRow>> m_orders;
    std::vector<std::vector<std::unique_ptr<OrderRow>>> m_levels;  // by InstrumentId
    std::vector<Instrument> m_instruments;
    std::uint64_t m_arrivals = 0;
    CLiveGrid m_grid;  // the last member: it dies before the rows
};

}  // namespace terminal
