#include "host/panes/GridLines.h"

#include "host/panes/Theme.h"
#include "quor/list/CommonListCtrl.h"

namespace terminal {

bool showsGridLines(const CListCtrl& list) { return (list.GetExtendedStyle() & LVS_EX_GRIDLINES) != 0; }

void drawGridLines(CCommonListCtrl& list, CDC& dc) {
    CHeaderCtrl* const header = list.GetHeaderCtrl();
    if (!header) return;
    CRect client, captions;
    list.GetClientRect(&client);
    header->GetWindowRect(&captions);
    list.ScreenToClient(&captions);
    for (int item = 0; item < header->GetItemCount(); ++item) {
        CRect column;
        header->GetItemRect(item, &column);
        const int right = captions.left + column.right;
        if (column.Width() == 0) continue;
        const RECT line{right - 1, captions.bottom, right, client.bottom};
        dc.FillSolidRect(&line, palette::kGridLine);
    }
    CRect row;
    if (!list.GetItemRect(list.GetTopIndex(), &row, LVIR_BOUNDS) || row.Height() <= 0) return;
    for (int y = row.bottom - 1; y < client.bottom; y += row.Height()) {
        const RECT line{client.left, y, client.right, y + 1};
        dc.FillSolidRect(&line, palette::kGridLine);
    }
}

}  // namespace terminal
