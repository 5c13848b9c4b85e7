// User columns of a grid: their texts come from the grid's own columns, user columns among them.
#include "quor/grid/FilterListCtrlInternal.h"

using namespace quor::expression;
using namespace quor::grid;

// A row, for as long as the grid is there and, once something changed, knows the row: the host may have freed it.
class CFilterListCtrl::CustomRow : public CustomCellSource {
public:
    CustomRow(CFilterListCtrl& grid, DWORD_PTR data)
        : m_grid(grid), m_presence(grid), m_data(data), m_changes(grid.m_parts->rows.changes()) {}
    bool cellText(int columnIndex, CString& text) override {
        if (m_presence.objectWent() || !isThere()) return false;
        if (columnIndex < 0 || columnIndex >= m_grid.m_arrColumns.GetSize()) return false;
        CellAnswer cell{std::move(text), {}, -1};
        const int answered = m_grid.m_parts->askCell(m_data, columnIndex, cell);
        text = std::move(cell.text);
        return answered != 0;
    }

private:
    bool isThere() const {
        const LiveRows& rows = m_grid.m_parts->rows;
        return rows.changes() == m_changes || rows.holdsData(m_data);
    }

    CFilterListCtrl& m_grid;
    Presence m_presence;
    DWORD_PTR m_data;
    unsigned m_changes;
};

void CFilterListCtrl::GetCustomColumnText(DWORD_PTR data, int columnIndex, CString& text) {
    if (columnIndex <= m_nBaseColumnCount - 1 || columnIndex >= m_arrColumns.GetCount()) return;
    CustomRow row(*this, data);
    // Copies: a host's text and the message box may bring messages that change the columns or end the grid.
    const CString formula = idExpression(m_arrColumns.GetAt(columnIndex), ListFamily::grid);
    const std::shared_ptr<CustomColumnText> cells = m_parts->customText;
    const CustomCellOutcome outcome = cells->evaluate(ListFamily::grid, {data, columnIndex}, formula, row, text);
    if (outcome == CustomCellOutcome::invalid) AfxMessageBox(kInvalidCustomExpression);
}
