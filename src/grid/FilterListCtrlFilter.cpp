// Which rows are displayed: the test of one row, the rebuild of all, the filter bar.
#include "src/grid/FilterListCtrl.h"

namespace {

constexpr DWORD kFilterChangeDelay = 500;  // ms from the last key to the header's notification

}  // namespace

int CFilterListCtrl::CheckForFilteredData(DWORD_PTR data) {
    if (FilteredCols.GetSize() == 0 || !hasTextCallback()) return 1;
    for (INT_PTR i = 0; i < FilteredCols.GetSize(); ++i) {
        CString text;
        COLORREF textColor = kColorUnset, background = kColorUnset;
        int icon = -1;
        GetColumnText(data, FilteredCols.GetAt(i), text, textColor, background, icon, false);
        if (!IsItemMatchingFilter(text, FilterStrings.GetAt(i))) return 0;
    }
    return 1;
}

void CFilterListCtrl::PopulateList() {
    if (!hasTextCallback() || !UseFilter || !m_header.m_hWnd || m_header.GetItemCount() <= 0) return;
    m_native.setRedraw(false);
    m_rows.clearDisplay();
    if (FilteredCols.GetSize() != FilterStrings.GetSize()) {
        AfxMessageBox("Error occured while filtering");
        return;
    }
    m_rows.rebuild(rowTest());
    MatchExact = 0;
    if (SortOnCheckedFlag) SortOnChecked();
    if (m_bLockSortEnabled && m_bSorted && m_bSortLocked) SortByLastColumnWithLock();
    m_native.setRedraw(true);
    m_native.setCount(m_rows.displayCount());
    m_native.invalidateAll();
}

void CFilterListCtrl::GetFileteredCols(CArray<int, int>& columns, CArray<CString, CString>& texts) {
    columns.Copy(FilteredCols);
    texts.Copy(FilterStrings);
}

void CFilterListCtrl::PutListFilter() {
    if (!m_header.m_hWnd) return;
    FilterBarVisible = !FilterBarVisible;
    showFilterBar(FilterBarVisible != 0);
    if (FilterBarVisible && m_header.GetItemCount() > 0) m_header.PostMessage(HDM_EDITFILTER, 0, 0);
    // The control places its rows below the header anew when a width changes.
    const int width = m_native.columnWidth(0);
    m_native.setColumnWidth(0, width + 1);
    m_native.setColumnWidth(0, width);
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void CFilterListCtrl::showFilterBar(bool show) {
    if (!m_header.m_hWnd) return;
    m_header.ModifyStyle(show ? 0 : HDS_FILTERBAR, show ? HDS_FILTERBAR : 0);
    if (show) m_header.SetFilterChangeTimeout(kFilterChangeDelay);
}
