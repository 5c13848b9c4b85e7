// The positions pane: a row for each instrument that the user holds, marked to the feed, with the sums in the caption.
// A grid in opti-data mode; the pane owns the rows. Cells of the last price and of the results flash when they change.
#pragma once

#include "host/core/Positions.h"
#include "host/panes/ListPane.h"
#include "host/panes/LiveGrid.h"
#include "host/panes/Rows.h"

#include <deque>

namespace terminal {

// The columns, by columnIndex.
enum class PositionColumn { symbol, quantity, average, last, value, day, dayPercent, total, totalPercent, count };

// What a cell of a position shows.
std::string_view positionText(const Position& position, PositionColumn column, TextBuffer& buffer);

class CPositionsPane : public CListPane {
public:
    // `seed` says what is held.
    CPositionsPane(PaintFigures& figures, std::uint64_t seed);

    CCommonListCtrl& list() override { return m_grid; }
    CLiveGrid& grid() { return m_grid; }
    const Positions& positions() const { return m_positions; }

    // What the feed tells; `now` is the clock's time in microseconds. The batch stays open.
    void instrument(const Instrument& news) { m_positions.instrument(news); }
    void quote(const Quote& news, std::int64_t now);

    // Brings sums and locked order up to date. Only between batches.
    void showTotals();

private:
    BOOL createList() override;
    void setTrends();
    int cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& color, COLORREF& back, int& icon);
    std::string totalsText();

    Positions m_positions;
    std::deque<PositionRow> m_rows;  // as they came, one for each position
    CLiveGrid m_grid;
    bool m_changed = false;  // since the sums were shown
};

}  // namespace terminal
