// The orders pane: one row for each live order, or, when the feed brings books, one row for each level of each book. A
// grid in opti-data mode; the pane owns the rows.
//
// It starts as an order book: locked on the price, the highest on top. A lock that the settings hold, or that they hold
// open, is the user's own choice and wins. The grid itself leaves new and changed rows where they are, so the pane
// takes them into the locked order, a few times a second.
#pragma once

#include "host/core/Tally.h"
#include "host/panes/ListPane.h"
#include "host/panes/LiveGrid.h"
#include "host/panes/Rows.h"

#include <memory>
#include <unordered_map>
#include <vector>

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

    // Takes what came in since the last time into the locked order, if that is long enough ago at `now` (microseconds).
    // Only between batches.
    void keepOrder(std::int64_t now);
    void keepOrder();  // however long ago it is

    // Empties the grid and adds its rows again when deleted ones hold too many slots. Only between batches.
    void refillIfNeeded();

    // The row of a live order, or null.
    const OrderRow* find(OrderId id) const;
    // The rows of the levels of an instrument's book, in their order on screen; empty without a book.
    const std::vector<std::unique_ptr<OrderRow>>& levelRows(InstrumentId id) const;
    std::size_t rowCount() const;
    // The rows' order, for the log: "locked on Price, falling", or "as they came".
    std::string orderText();
    void showCount() override;

private:
    BOOL createList() override;
    int cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& color, COLORREF& back, int& icon);
    void takeStatusColours(const OrderRow& row, COLORREF& color, COLORREF& back);
    void add(const Order& order, std::int64_t now);
    void addRow(OrderRow& row);
    void lockOnPrice();
    // Values of a row on which the order may rest are about to change.
    void changing(const OrderRow& row, Price price);
    void update(OrderRow& row);

    std::unordered_map<OrderId, std::unique_ptr<OrderRow>> m_orders;
    std::vector<std::vector<std::unique_ptr<OrderRow>>> m_levels;  // by InstrumentId
    std::vector<Instrument> m_instruments;
    std::uint64_t m_arrivals = 0;
    bool m_outOfOrder = false;  // rows may stand elsewhere than the lock says
    std::int64_t m_orderedAt = 0;
    CLiveGrid m_grid;  // the last member: it dies before the rows
};

}  // namespace terminal
