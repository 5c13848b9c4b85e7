#include "host/LayoutProof.h"

#include "src/list/CommonListCtrl.h"

namespace terminal {

std::string layoutOf(CCommonListCtrl& list) {
    std::string text;
    CHeaderCtrl* const header = list.GetHeaderCtrl();
    for (int i = 0; header && i < header->GetItemCount(); ++i) {
        const int item = header->OrderToIndex(i);
        const int columnIndex = list.GetOriginalColumnPosition(item);
        const char* const heading = columnIndex < 0 ? "?" : list.m_arrColumns[columnIndex].szColumnName;
        text.append(heading).append(":") += std::to_string(list.GetColumnWidth(item)) + " ";
    }
    for (INT_PTR i = list.m_nBaseColumnCount; i < list.m_arrColumns.GetCount(); ++i) {
        const sQuorColInfo& column = list.m_arrColumns[i];
        text.append("[").append(column.szColumnName).append("|").append(column.csExpression).append("|");
        text.append(column.csToolTip).append("] ");
    }
    text += list.m_bSortLocked
                ? "locked:" + std::to_string(list.m_nLockSortColumn) + "," + std::to_string(list.m_nLockSortOrder)
                : std::string("not locked");
    return text;
}

void changeLayout(CCommonListCtrl& list) {
    std::vector<int> shown;
    for (int place = 0; list.GetOriginalColumnPosition(place) >= 0; ++place)
        shown.push_back(list.GetOriginalColumnPosition(place));
    if (shown.size() < 4) return;
    shown.erase(shown.begin() + 1);
    std::swap(shown[1], shown[2]);
    for (int columnIndex = 0; columnIndex < list.m_arrColumns.GetCount(); ++columnIndex)
        if (list.m_arrOrder[columnIndex] < 0) {
            shown.push_back(columnIndex);
            break;
        }
    CArray<int, int> columns, widths;
    for (const int columnIndex : shown) {
        columns.Add(columnIndex);
        widths.Add(list.m_arrColumns[columnIndex].iWidth + 7 + columnIndex % 5);
    }
    list.LoadHeaders(&columns, &widths);
    if (!list.m_bLockSortEnabled || list.m_bSortLocked) return;
    list.SortOn(shown[0], 1);
    if (list.m_bSorted) list.OnLockUnlockSortCheck();
}

}  // namespace terminal
