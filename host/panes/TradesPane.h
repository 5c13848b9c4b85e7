// The trades pane: every trade of the feed, the newest on top. A grid in opti-data mode with reverse display; the pane
// owns the rows and keeps the newest of them.
#pragma once

#include "host/panes/ListPane.h"
#include "host/panes/LiveGrid.h"
#include "host/panes/Rows.h"

#include <deque>
#include <vector>

namespace terminal {

// The columns, by columnIndex.
enum class TradeColumn { number, time, symbol, price, change, quantity, count };

class CTradesPane : public CListPane {
public:
    // `keep` is the number of trades that stay, at least 1.
    CTradesPane(PaintFigures& figures, int keep);

    CCommonListCtrl& list() override { return m_grid; }
    CLiveGrid& grid() { return m_grid; }

    void instrument(const Instrument& news);
    // Adds a row; the batch stays open. `now` is the clock's time in microseconds.
    void trade(const Trade& news, std::int64_t now);
    // Deletes the rows beyond the number to keep; the batch stays open.
    void dropOldest();
    // As the orders pane's.
    void refillIfNeeded();

    // The rows in arrival order.
    const std::deque<TradeRow>& rows() const { return m_rows; }
    std::int64_t tradeCount() const { return m_tradeCount; }
    void showCount() override;

private:
    BOOL createList() override;
    int cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& color, COLORREF& back, int& icon);

    struct OfInstrument {
        Instrument instrument;
        Price last = kNoPrice;
        Move move = Move::none;
    };
    std::size_t m_keep;
    std::vector<OfInstrument> m_instruments;
    std::deque<TradeRow> m_rows;  // a deque: rows keep their address while others come and go at the ends
    std::int64_t m_tradeCount = 0;
    CLiveGrid m_grid;  // the last member: it dies before the rows
};

}  // namespace terminal
