// A double click on a divider, measured here: the control measures all rows, and only the texts that it holds itself,
// without the heading.
#include "quor/list/CommonListCtrlInternal.h"

#include <algorithm>

using namespace quor::list;

// Left of the first column's text the control keeps room for a state image.
int CCommonListCtrl::LabelIndent(int place) {
    if (place != 0) return 0;
    CRect bounds, label;
    const HWND list = m_hWnd;
    const auto isHere = [&] { return CWnd::FromHandlePermanent(list) == this; };
    const int row = CListCtrl::GetTopIndex();
    if (!isHere() || !CListCtrl::GetItemRect(row, bounds, LVIR_BOUNDS)) return 0;
    return isHere() && CListCtrl::GetItemRect(row, label, LVIR_LABEL) ? label.left - bounds.left : 0;
}

// A double click on the divider right of a heading. The parent hears of it as from the control.
void CCommonListCtrl::FitColumnToView(const NMHEADER& click) {
    const HWND list = m_hWnd;
    const int data = WidestCellInView(click.iItem);
    if (CWnd::FromHandlePermanent(list) != this) return;
    CHeaderCtrl& header = *GetHeaderCtrl();
    int heading = 0;
    {
        CClientDC dc(&header);
        const SelectScope font(&dc, header.GetFont());
        heading = headingWidth(header, dc, click.iItem);
    }
    const int cells = data == 0 ? 0 : data + LabelIndent(click.iItem);
    if (CWnd::FromHandlePermanent(list) != this) return;
    CListCtrl::SetColumnWidth(click.iItem, std::max(cells, heading));
    NMHEADERA news{};
    news.hdr = {click.hdr.hwndFrom, click.hdr.idFrom, static_cast<UINT>(HDN_DIVIDERDBLCLICKA)};
    news.iItem = click.iItem;
    news.iButton = click.iButton;
    if (CWnd* const parent = CWnd::FromHandle(::GetParent(list)))
        parent->SendMessage(WM_NOTIFY, news.hdr.idFrom, reinterpret_cast<LPARAM>(&news));
}
