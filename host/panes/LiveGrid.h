// The grid of the orders pane and the trades pane: a CFilterListCtrl in opti-data mode that keeps account of its own
// paints (how many, how long after the tick, which texts) and of its tombstones.
//
// The pane owns the rows and the grid, the grid first to die. The pane's text callback calls `note` with every text
// that it gives, so that the grid knows what its paint drew.
#pragma once

#include "host/panes/DrawnRows.h"
#include "host/panes/GridLines.h"
#include "host/panes/PaintFigures.h"
#include "quor/grid/FilterListCtrl.h"
#include "quor/platform/Framework.h"

#include <functional>
#include <string_view>
#include <vector>

namespace terminal {

class CLiveGrid : public Lined<CFilterListCtrl> {
public:
    explicit CLiveGrid(PaintFigures& figures) : m_figures(figures) {}

    // Makes the control inside `owner` in the styles that the grid asks of its creator, in opti-data mode.
    // FALSE: the system gave no window.
    BOOL CreateGrid(CWnd* owner, UINT id);

    // How a row's stamp is found from its data.
    void setStampOf(PaintStamp& (*stampOf)(void* row)) { m_stampOf = stampOf; }

    // To be called when a slice begins: which rows are in view, for the stamps.
    void beginSlice();

    // A tick reached a row of this grid at `now`. Rows in view alone are stamped: the others wait for no paint.
    void touched(CFilterListBaseData* row, PaintStamp& stamp, std::int64_t now);

    // One text that the callback gave; kept if a paint asked for it.
    void note(int columnIndex, std::string_view text) {
        if (m_drawing) DrawnRows::note(*m_drawing, columnIndex, text);
    }
    const DrawnRows& drawn() const { return m_drawn; }

    // For a pane whose grid paints cell by cell: a row that is selected takes the selection's colours in a paint.
    void takeSelection(CFilterListBaseData* row, COLORREF& text, COLORREF& back);

    // Deleted rows whose slots are still held, and whether they are so many that the grid has to be filled anew.
    int tombstones() { return GetItemCount() - m_live; }
    bool needsRefill() { return tombstones() > 4 * m_live; }

    // Row calls that keep the count of live rows; a batch is left open.
    void add(CFilterListBaseData* row);
    void remove(CFilterListBaseData* row);
    int live() const { return m_live; }

    // The row that stands there; null: none.
    CFilterListBaseData* rowAt(int visual);
    // Does `change` (a sort, a rebuild) and lets selection, focus and mark stay on their rows, wherever these stand
    // then. Rows that are no longer shown lose theirs. Only between batches.
    void keepSelection(const std::function<void()>& change);
    // Takes rows that came in, or changed, into the locked order; nothing without a lock. Only between batches.
    void resort();
    // After each batch: rows that came in have trends from here on.
    void batchClosed();
    // Empties the grid and lets `addAll` add its rows again, in arrival order; a locked sort and the selection stay.
    // Only between batches. Trend columns stay, and have the rows from then on.
    void refill(const std::function<void()>& addAll);

protected:
    void DrawItem(LPDRAWITEMSTRUCT item) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void GroupDigits(int dataType, CString& text) override;

private:
    void beginTrends();
    int visualOf(CFilterListBaseData* row);  // -1: null, or not shown
    void scrollTo(int top);
    void OnPaint();
    void OnVScroll(UINT code, UINT position, CScrollBar* bar);
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    void OnSize(UINT type, int width, int height);

    // The rows in view are others than before: a stamp from before says nothing any more.
    void startGeneration() { ++m_generation; }

    PaintFigures& m_figures;
    PaintStamp& (*m_stampOf)(void* row) = nullptr;
    DrawnRows m_drawn;
    DrawnRow* m_drawing = nullptr;
    std::vector<PaintStamp*> m_painted;  // rows of the paint under way that waited for it
    std::uint32_t m_generation = 1;
    int m_topInView = 0;
    int m_endInView = 0;
    int m_live = 0;
    bool m_painting = false;
    bool m_rowsCame = false;  // in the batch

    DECLARE_MESSAGE_MAP()
};

}  // namespace terminal
