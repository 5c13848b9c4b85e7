// How wide a column has to be, measured here: the control measures all rows, and only the texts that it holds itself,
// without the heading.
#include <algorithm>

#include "src/list/CommonListCtrlInternal.h"

namespace {

constexpr int kTextMargin = 6;  // pixels on either side of a text, in a cell as in a heading

int imageWidth(const CHeaderCtrl& header) {
    int width = 0, height = 0;
    const CImageList* images = header.GetImageList();
    if (!images || !::ImageList_GetIconSize(images->m_hImageList, &width, &height)) return 0;
    return width + kTextMargin;
}

}  // namespace

CString CCommonListCtrl::ShownText(int row, int place) { return GetItemText(row, place); }

// What the host does while it is asked for a text may end the list: 0 then.
int CCommonListCtrl::DataWidthInView(int place) {
    const HWND list = m_hWnd;
    int widest = 0;
    const int end = CListCtrl::GetTopIndex() + CListCtrl::GetCountPerPage() + 1;  // the last one may show in part
    for (int row = CListCtrl::GetTopIndex(); row < end && row < CListCtrl::GetItemCount(); ++row) {
        const CString text = ShownText(row, place);
        if (CWnd::FromHandlePermanent(list) != this) return 0;
        if (!text.IsEmpty()) widest = std::max(widest, CListCtrl::GetStringWidth(text) + 2 * kTextMargin);
    }
    return widest == 0 ? 0 : widest + LabelIndent(place);
}

// Left of the first column's text the control keeps room for a state image.
int CCommonListCtrl::LabelIndent(int place) {
    CRect bounds, label;
    const int row = CListCtrl::GetTopIndex();
    if (place != 0 || !CListCtrl::GetItemRect(row, bounds, LVIR_BOUNDS) ||
        !CListCtrl::GetItemRect(row, label, LVIR_LABEL)) {
        return 0;
    }
    return label.left - bounds.left;
}

int CCommonListCtrl::HeadingWidth(int place) {
    CHeaderCtrl* const header = GetHeaderCtrl();
    char text[260] = "";
    HDITEM item{};
    item.mask = HDI_TEXT | HDI_FORMAT;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    if (!header || !header->GetItem(place, &item)) return 0;
    CClientDC dc(header);
    const SelectScope font(&dc, header->GetFont());
    return dc.GetTextExtent(text).cx + 2 * kTextMargin + ((item.fmt & HDF_IMAGE) ? imageWidth(*header) : 0);
}

// A double click on the divider right of a heading. The parent hears of it as from the control.
void CCommonListCtrl::FitColumnToView(const NMHEADER& click) {
    const HWND list = m_hWnd;
    const int data = DataWidthInView(click.iItem);
    if (CWnd::FromHandlePermanent(list) != this) return;
    CListCtrl::SetColumnWidth(click.iItem, std::max(data, HeadingWidth(click.iItem)));
    NMHEADERA news{};
    news.hdr = {click.hdr.hwndFrom, click.hdr.idFrom, static_cast<UINT>(HDN_DIVIDERDBLCLICKA)};
    news.iItem = click.iItem;
    news.iButton = click.iButton;
    if (CWnd* const parent = CWnd::FromHandle(::GetParent(list)))
        parent->SendMessage(WM_NOTIFY, news.hdr.idFrom, reinterpret_cast<LPARAM>(&news));
}
