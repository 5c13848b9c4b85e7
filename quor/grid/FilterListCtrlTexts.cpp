// What a cell says: the one road to the host's text callbacks, which paint, filters, sort, export and measure all take,
// so that none of them can show a text that another one does not find. Check states and column numbers besides.
#include "quor/grid/FilterListCtrlInternal.h"

using namespace quor::grid;

int CFilterListCtrl::GetColumnText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& textColor,
                                   COLORREF& background, int& icon, bool forExport) {
    if (!hasTextCallback()) return 0;
    if (columnIndex > m_nBaseColumnCount - 1) {
        GetCustomColumnText(data, columnIndex, text);
        return 1;
    }
    return CallBackForText(data, columnIndex, text, textColor, background, icon, forExport);
}

int CFilterListCtrl::CallBackForText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& textColor,
                                     COLORREF& background, int& icon, bool forExport) {
    if (forExport && ExportTextCallback) {
        CWnd* const owner = callbackOwner();
        return owner ? (owner->*ExportTextCallback)(data, columnIndex, text, icon) : 0;
    }
    if (TextMemberCallback) {
        CWnd* const owner = callbackOwner();
        return owner ? (owner->*TextMemberCallback)(data, columnIndex, text, textColor, background, icon) : 0;
    }
    return TextCallback ? TextCallback(data, columnIndex, text, textColor, background, icon) : 0;
}

CString CFilterListCtrl::ShownText(int item, int place) {
    const HWND grid = m_hWnd;
    CString text = CCommonListCtrl::ShownText(item, place);
    if (CWnd::FromHandlePermanent(grid) != this) return text;  // the host ended it
    const int columnIndex = GetOriginalColumnPosition(place);
    if (!UseFilter || columnIndex < 0 || columnIndex >= m_arrColumns.GetSize()) return text;
    const sQuorColInfo& record = m_arrColumns.GetAt(columnIndex);
    if (cellAlign(record.iFormat) == CellAlign::icon) return {};
    GroupDigits(record.iDataType, text);
    return text;
}

void CFilterListCtrl::GroupDigits(int dataType, CString& text) {
    if (wantsGrouping(dataType, text)) text = GetCommaData(text);
}

BOOL CFilterListCtrl::GetCheck(int item) const {
    return UseFilter ? m_parts->rows.checkOfVisual(item) : CListCtrl::GetCheck(item);
}

int CFilterListCtrl::SetCheck(int item, int state) { return m_parts->rows.setCheckOfVisual(item, state); }

int CFilterListCtrl::GetMapItemCheck(int mapIndex) const {
    return m_parts->rows.checkOfMapIndexUnchecked(static_cast<std::size_t>(mapIndex));
}

int CFilterListCtrl::SetMapItemCheck(int mapIndex, int state) {
    return m_parts->rows.setCheckOfMapIndex(mapIndex, state);
}

int CFilterListCtrl::GetCheckedItemCount() const { return m_parts->rows.checkedCount(); }

void CFilterListCtrl::ResetCheckedItems() { m_parts->rows.resetChecks(); }

int CFilterListCtrl::GetOriginalColNo(int place) {
    for (INT_PTR columnIndex = 0; columnIndex < m_arrOrder.GetSize(); ++columnIndex)
        if (m_arrOrder.GetAt(columnIndex) == place) return static_cast<int>(columnIndex);
    return 1;
}
