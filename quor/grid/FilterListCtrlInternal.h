// What the sources of CFilterListCtrl share: its parts, and scopes around calls that reach the host.
#pragma once

#include "quor/expression/core/CustomColumnText.h"
#include "quor/grid/FilterListCtrl.h"
#include "quor/grid/NativeList.h"
#include "quor/grid/core/CellPainting.h"
#include "quor/grid/core/FilterStore.h"
#include "quor/grid/core/LiveRows.h"
#include "quor/list/core/Keywords.h"

#include <memory>
#include <utility>

// What the host does goes down from the grid to the rows and from the rows to the native control.
struct CFilterListCtrl::Parts {
    explicit Parts(CFilterListCtrl& list) : native(list), rows(native), m_list(list) {}
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    quor::grid::RowTest rowTest();
    // As GetColumnText.
    int askCell(DWORD_PTR data, int columnIndex, quor::grid::CellAnswer& cell, bool forExport = false) {
        return m_list.GetColumnText(data, columnIndex, cell.text, cell.colors.text, cell.colors.background, cell.icon,
                                    forExport);
    }
    // Only the text, into an answer that is used again: what walks over all rows ask. Its text keeps its buffer, so
    // that a host that writes into it does not allocate.
    void readCell(DWORD_PTR data, int columnIndex, quor::grid::CellAnswer& cell) {
        cell.text = "";
        cell.colors = {};
        cell.icon = -1;
        if (m_list.TextCallback && !m_list.TextMemberCallback && columnIndex < m_list.m_nBaseColumnCount) {
            m_list.TextCallback(data, columnIndex, cell.text, cell.colors.text, cell.colors.background, cell.icon);
        } else {
            askCell(data, columnIndex, cell);
        }
    }
    // A native call that may scroll or change the rows' places.
    template <class Function>
    void touchControl(Function function) {
        const std::weak_ptr<char> here = alive;
        rows.settle();
        if (here.expired()) return;
        rows.forgetLayout();
        function();
        if (!here.expired()) rows.forgetLayout();
    }

    quor::grid::NativeList native;
    quor::grid::LiveRows rows;
    quor::grid::FilterStore filters;
    quor::list::Keywords keywords, userKeywords;  // of m_Appearance
    // A cell under way outlives a grid that the host ends while it gives a text.
    std::shared_ptr<quor::expression::CustomColumnText> customText =
        std::make_shared<quor::expression::CustomColumnText>();
    quor::grid::RowWalk* rebuilding = nullptr;  // a rebuild that goes on to a sort of its own
    unsigned sorts = 0;                         // how many were begun
    std::shared_ptr<char> alive = std::make_shared<char>();

private:
    bool passesFilters(DWORD_PTR data, const quor::grid::RowWalk& walk);
    friend class CFilterListCtrl;

    CFilterListCtrl& m_list;
    CString m_cellText;  // scratch of the row test, so that it keeps its buffer
};

// A call that can reach the host may end the grid or its window; nothing of either may be touched then.
class CFilterListCtrl::Presence {
public:
    explicit Presence(const CFilterListCtrl& grid)
        : m_grid(grid), m_window(grid.m_hWnd), m_alive(grid.m_parts->alive) {}
    bool gone() const { return m_alive.expired() || m_grid.m_hWnd != m_window; }
    bool objectWent() const { return m_alive.expired(); }

private:
    const CFilterListCtrl& m_grid;
    HWND m_window;
    std::weak_ptr<char> m_alive;
};
