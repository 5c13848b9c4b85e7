// User columns of a grid: their texts come from the grid's own columns, user columns among them.
#include "src/grid/FilterListCtrlInternal.h"

using namespace quor::expression;

namespace {

class GridRow : public CustomCellSource {
public:
    GridRow(CFilterListCtrl& grid, DWORD_PTR data) : m_grid(grid), m_data(data) {}
    bool cellText(int columnIndex, CString& text) override {
        COLORREF textColor = 0, background = 0;
        int icon = -1;
        return m_grid.GetColumnText(m_data, columnIndex, text, textColor, background, icon, false) != 0;
    }

private:
    CFilterListCtrl& m_grid;
    DWORD_PTR m_data;
};

}  // namespace

void CFilterListCtrl::GetCustomColumnText(DWORD_PTR data, int columnIndex, CString& text) {
    if (columnIndex <= m_nBaseColumnCount - 1 || columnIndex >= m_arrColumns.GetCount()) return;
    GridRow row(*this, data);
    // A copy: the message box pumps messages, and the columns may change meanwhile.
    const CString formula = idExpression(m_arrColumns.GetAt(columnIndex), ListFamily::grid);
    const CustomCellOutcome outcome = m_parts->customText.evaluate(ListFamily::grid, columnIndex, formula, row, text);
    if (outcome == CustomCellOutcome::invalid) AfxMessageBox(kInvalidCustomExpression);
}
