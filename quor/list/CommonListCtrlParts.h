// What only the sources of CCommonListCtrl share: the state that no other class reads, and the steps that work with the
// windowless parts of core/.
#pragma once

#include "quor/list/CommonListCtrlInternal.h"
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

struct CCommonListCtrl::Parts {
    explicit Parts(CCommonListCtrl& list) : m_list(list) {}
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

private:
    std::vector<quor::list::HeaderColumn> readHeader() const;
    std::optional<quor::list::RowSpan> rowsToMeasure() const;

    CCommonListCtrl& m_list;
};
