// The market watch: one row for each instrument of the watch that is shown, 112 columns and the user's own.
//
// The list keeps neither texts nor prices: a row's item data is the instrument's record, and each cell is asked for
// when it is painted or sorted by. A tick changes the market's data and marks the instrument; a few times a second the
// rows in view whose instrument is marked are invalidated, and nothing else is. So a tick on a row out of view costs
// nothing, and no news ever waits for a row.
//
// The watch shown is chosen in the combo of the caption strip. The pane's window title is its name: by it the list
// finds and saves its columns. Everything else that a watch keeps goes by that name, too: levels, lock, auto-sort.
#pragma once

#include "host/core/WatchColumns.h"
#include "host/core/WatchData.h"
#include "host/core/WatchRecord.h"
#include "host/panes/DrawnRows.h"
#include "host/panes/GridLines.h"
#include "host/panes/ListPane.h"
#include "host/panes/PaintFigures.h"
#include "quor/lists/MrktWatchListCtrl.h"

#include <memory>
#include <string>
#include <vector>

namespace terminal {

// The list itself: keeps account of its paints and knows where its cells stand.
class CWatchList : public Lined<CMrktWatchListCtrl> {
public:
    explicit CWatchList(PaintFigures& figures) : m_figures(figures) {}

    // Left edge and width of the column at a place, in client coordinates; valid inside a paint.
    struct Cell {
        int left = 0;
        int width = 0;
    };
    const std::vector<Cell>& cells() const { return m_cells; }

    using CMrktWatchListCtrl::ColumnsStand;

    DrawnRows drawnRows;

    // Rows in view that were invalidated since the last paint began.
    int unpainted() const { return m_unpainted; }
    void invalidateRow(int row);

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    void OnPaint();
    void MeasureItem(LPMEASUREITEMSTRUCT item);
    void measureCells();

    PaintFigures& m_figures;
    std::vector<Cell> m_cells;  // by place
    int m_unpainted = 0;

    DECLARE_MESSAGE_MAP()
};

class CWatchPane : public CListPane {
public:
    explicit CWatchPane(PaintFigures& figures);

    CWatchList& list() override { return m_list; }
    void saveState() override;
    const DrawnRows& drawn() const { return m_list.drawnRows; }
    const WatchMarket& market() const { return m_market; }

    // The instrument of the row that the user selected, the first of several; -1: none.
    int selectedInstrument() const;
    // The record of a row; null for a row that there is not.
    const sMWStruct* record(int row) const;

    // News of the feed. A new instrument gets a row if the watch shown holds it.
    void addInstrument(const Instrument& news);
    void quote(const Quote& news);
    void order(const OrderEvent& news);
    void trade(const Trade& news);
    void level(const BookLevel& news);

    // Invalidates the rows in view that have news.
    void showChanged();
    // Instruments in view with news that no showChanged has taken yet: 0 after each.
    int waiting() const;
    // Rows in view whose news were shown, and no paint has come yet.
    int unpainted() const { return m_list.unpainted(); }

    // The watch shown, by its number in watchLists(). Showing another one saves the columns and auto-sort of the one
    // before (the rest is stored when it changes), and sorts as the user left the new one: by levels, locked, or not.
    int shownWatch() const { return m_shown; }
    void showWatch(int watch);

    // The text of a cell as the list asks for it, built-in and user columns.
    void cellText(const sMWStruct& record, int columnIndex, CString& text);

private:
    BOOL createList() override;
    std::string layoutSection() const override;
    void layOut() override;
    void menuClosed() override;
    void setLooks();
    void readLooks();
    void takeFont(const std::string& font);
    void mark(InstrumentId id);
    void addRow(InstrumentId id);
    void readSort();
    void forgetSort();
    void saveAutoSort();
    void OnDestroy();
    void OnChooseWatch();
    void OnDrawItem(int id, LPDRAWITEMSTRUCT item);
    void drawCell(CDC& dc, const WatchData& data, int columnIndex, const CString& text, RECT cell, bool selected);

    WatchMarket m_market;
    std::vector<std::unique_ptr<sMWStruct>> m_records;  // by InstrumentId
    std::vector<char> m_news;                           // by InstrumentId: changed since it was last invalidated
    int m_shown = 0;
    bool m_held = false;  // the list draws nothing until the rows that came are all there
    CFont m_comboFont;
    std::string m_shownFont;  // as it is stored
    CComboBox m_names;
    CWatchList m_list;
    quor::list::LevelsAsChooser m_levels{m_list.m_arrSortOrder};  // the names that are stored

    DECLARE_MESSAGE_MAP()
};

}  // namespace terminal
