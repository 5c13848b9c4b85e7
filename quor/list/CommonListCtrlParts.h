// What only the sources of CCommonListCtrl share: the state that no other class reads, and the steps that work with the
// windowless parts of core/.
#pragma once

#include "quor/list/CommonListCtrlInternal.h"
#include "quor/list/core/CellTips.h"
#include "quor/list/core/ColumnSetPlan.h"
#include "quor/list/core/ListLayout.h"
#include "quor/list/core/ProfileEntry.h"
#include "quor/list/core/RowSort.h"

#include <memory>
#include <optional>
#include <vector>

namespace quor::list {

// A header item: the heading by which its column is known, cut to 255 characters, and its width in pixels.
struct HeaderColumn {
    CString heading;
    int width = 0;
};

// Rows from the first to the last; none if the last is before the first.
struct RowSpan {
    int first = 0;
    int last = -1;
};

}  // namespace quor::list

// The tip waits for the mouse to rest (timer kCellTipTimer), looks at the list again every kCellTipPeriod while it
// shows, and has a window only then. What it asks the list may end that, and this object with it.
class CCommonListCtrl::CellTip {
public:
    explicit CellTip(CCommonListCtrl& list);
    CellTip(const CellTip&) = delete;
    CellTip& operator=(const CellTip&) = delete;
    ~CellTip();

    void beforeMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void onTimer();
    // As OnToolHitTest; what was found stays known.
    INT_PTR hitTest(CPoint point, TOOLINFO* info);

private:
    class Window;
    struct Found {
        CPoint origin;  // of the list, on the screen
        CRect cell;     // what of it is in view
        CRect whole;    // the text, if nothing cut it
        CString text;
        bool inPlace = true;
        bool operator==(const Found& other) const;
    };

    bool isWanted() const { return m_list.m_bCellToolTips || m_window; }
    void mouseMoved(CPoint point, WPARAM buttons);
    bool askText(int row, int place, Found& found);
    quor::list::TextCell measure(const Found& found, CRect label, int place);
    std::optional<Found> cellAt(CPoint point, INT_PTR& number);
    bool look();
    void show();
    void place();
    void hide();
    void end();
    static LRESULT CALLBACK onMessageTaken(int code, WPARAM removed, LPARAM message);

    static CellTip* s_shown;  // its messages are watched
    static HHOOK s_hook;

    CCommonListCtrl& m_list;
    std::unique_ptr<Window> m_window;  // while the tip shows
    std::optional<Found> m_found;      // what the list said last
    CPoint m_mouse{-1, -1};            // on the screen, when it moved last
    CRect m_spent;                     // the cell whose tip was ended; it has none until the mouse has left it
    bool m_fromCellToCell = false;     // the mouse left a tip for the next cell
    DWORD m_shownAt = 0;
};

struct CCommonListCtrl::Parts {
    explicit Parts(CCommonListCtrl& list) : cellTip(list), m_list(list) {}
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    // The columns as they are now, in index order, names and user parts included.
    std::vector<quor::list::ProfileEntry> currentProfile() const;
    bool readStoredColumns(int builtInCount, std::vector<quor::list::ProfileEntry>& entries) const;
    // The arrays as a plan has them; the control is left alone.
    void takePlan(const quor::list::ColumnSetPlan& plan);
    void showPlan(const quor::list::ColumnSetPlan& plan);

    // What AutoSizeColumns reads, and what it makes of it.
    std::vector<quor::list::ColumnMeasure> measureColumns(quor::list::FitTo fit);
    void fitColumns(quor::list::FitTo fit, std::vector<quor::list::ColumnMeasure>& measures);
    // As WidestCellInView, for these rows.
    int widestCell(int place, quor::list::RowSpan rows);
    // The rows that are in view, one that shows in part at the end included.
    quor::list::RowSpan spanInView() const;

    // Of columns behind an inserted one: the header's tools move up by one, each with its text.
    void shiftHeaderToolTips(int inserted);

    // The keys of these rows, from texts asked for here and nowhere else. A level whose column does not show compares
    // nothing.
    quor::list::RowSort prepareSort(const std::vector<int>& rows);

    quor::list::SortOrderChooser* sortOrderChooser = nullptr;
    bool sortLockMoved = false;                // since it was stored
    bool multiSortEnds = false;                // the user agreed to hide a column of the multi-column sort
    std::shared_ptr<CImageList> headerImages;  // one for all lists of the process
    CFont font;                                // the font of m_Appearance, once applied
    bool creating = false;                     // inside the framework's creation: the control answers nothing yet
    HWND initialised = nullptr;                // the window for which CommonInitList ran
    // Shared with the draw under way: its owner may end the list.
    const std::shared_ptr<bool> forwardingDrawItem = std::make_shared<bool>(false);
    std::vector<int> paintedOrder;  // header items as they stood when the list was painted last
    CRect paintedRows;              // the row at the top and the sides of all, when the list was painted last
    bool toolTipsStale = false;     // a header item was dragged since the tools were laid out
    bool headerTipQuiet = false;    // the mouse is on a heading that shows whole
    CellTip cellTip;

private:
    std::vector<quor::list::HeaderColumn> readHeader() const;
    std::optional<quor::list::RowSpan> rowsToMeasure() const;

    CCommonListCtrl& m_list;
};
