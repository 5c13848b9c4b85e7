// The market watch: one row for each instrument, some twenty columns, in a plain CCommonListCtrl.
//
// The list keeps the cells' texts; it draws nothing and forwards WM_DRAWITEM to this pane, its owner, which paints the
// rows. A tick changes the pane's own record of the instrument; a cell's text goes to the list when a slice ends, at
// most once and only if it differs. Rows in view come first; the others share what is left of a slice, so that a burst
// over a thousand instruments does not hold the window up. `writeAll` brings every cell up to date.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "host/DrawnRows.h"
#include "host/ListPane.h"
#include "host/PaintFigures.h"
#include "host/Rows.h"
#include "src/list/CommonListCtrl.h"

namespace terminal {

// The columns, by columnIndex.
enum class Watch {
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
    spread,
    open,
    high,
    low,
    close,
    volume,
    value,
    average,
    openInterest,
    time,
    count
};
inline constexpr int watchColumns = static_cast<int>(Watch::count);

// One instrument as the watch knows it.
struct WatchRow {
    Instrument instrument;
    Quote quote;
    std::array<std::string, watchColumns> written;  // the texts that the list holds
    Move direction = Move::none;                    // of the last price against the one before
    bool dirty = false;                             // the quote has news that the list has not
};

// The list itself: keeps account of its paints and knows where its cells stand.
class CWatchList : public CCommonListCtrl {
public:
    explicit CWatchList(PaintFigures& figures) : m_figures(figures) {}

    // Left edge and width of the column at a place, in client coordinates; valid inside a paint.
    struct Cell {
        int left = 0;
        int width = 0;
    };
    const std::vector<Cell>& cells() const { return m_cells; }

    DrawnRows drawnRows;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    void OnPaint();
    void measureCells();

    PaintFigures& m_figures;
    std::vector<Cell> m_cells;  // by place

    DECLARE_MESSAGE_MAP()
};

class CWatchPane : public CListPane {
public:
    explicit CWatchPane(PaintFigures& figures);

    CCommonListCtrl& list() override { return m_list; }
    const DrawnRows& drawn() const { return m_list.drawnRows; }
    const std::vector<WatchRow>& rows() const { return m_rows; }

    // The row that the user selected, the first of several; -1: none.
    int selectedRow() const;

    void addInstrument(const Instrument& news);
    void quote(const Quote& news);

    // At a slice's end. Rows out of view get at most `maxOthers` of them written.
    void writeChanged(int maxOthers);
    void writeAll();
    // As the orders pane's: the last price of the first instrument, in the list only.
    bool spoil();

private:
    BOOL createList() override;
    void writeRow(int row);
    void holdRedraw();
    void releaseRedraw();
    void OnDrawItem(int id, LPDRAWITEMSTRUCT item);
    void drawCell(CDC& dc, const WatchRow& row, int columnIndex, const char* text, int length, RECT cell,
                  bool selected);

    std::vector<WatchRow> m_rows;  // by InstrumentId: the row number too
    std::vector<int> m_dirty;      // rows with news, each once
    bool m_held = false;           // the list draws nothing until the texts are written
    CWatchList m_list;

    DECLARE_MESSAGE_MAP()
};

}  // namespace terminal
