#include "host/panes/HeaderPaint.h"

#include "host/panes/Theme.h"
#include "quor/grid/FilterListCtrl.h"

namespace terminal {

namespace {
// The library gives up a heading's alignment while its arrow shows; the column's own is drawn in any case.
void paintCell(CCommonListCtrl& list, HWND header, const NMCUSTOMDRAW& draw) {
    char text[128] = "";
    HDITEMA item{};
    item.mask = HDI_TEXT | HDI_FORMAT | HDI_IMAGE;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    ::SendMessageA(header, HDM_GETITEMA, draw.dwItemSpec, reinterpret_cast<LPARAM>(&item));
    const int image = (item.fmt & HDF_IMAGE) ? item.iImage : -1;
    const int columnIndex = list.GetOriginalColumnPosition(static_cast<int>(draw.dwItemSpec));
    const int format = columnIndex < 0 ? item.fmt : list.m_arrColumns[columnIndex].iFormat;
    CDC& dc = *CDC::FromHandle(draw.hdc);
    const bool isGrid = dynamic_cast<const CFilterListCtrl*>(&list) != nullptr;
    const Padding ofGrid = draw.dwItemSpec == 0 ? kFirstGridCell : kGridCell;
    drawHeaderCell(dc, quor::platform::headerCaption(draw), text, format & HDF_JUSTIFYMASK, image,
                   isGrid ? ofGrid : cellPadding(dc));
}

// What no column covers: right of the last one, as high as its caption.
void paintRest(HWND header, const NMCUSTOMDRAW& draw) {
    RECT area = draw.rc;
    const auto count = ::SendMessageA(header, HDM_GETITEMCOUNT, 0, 0);
    if (count > 0) {
        NMCUSTOMDRAW last = draw;
        last.dwItemSpec =
            static_cast<DWORD_PTR>(::SendMessageA(header, HDM_ORDERTOINDEX, static_cast<WPARAM>(count - 1), 0));
        area = quor::platform::headerCaption(last);
        RECT item{};
        ::SendMessageA(header, HDM_GETITEMRECT, last.dwItemSpec, reinterpret_cast<LPARAM>(&item));
        area.left = item.right;
    }
    if (area.left < area.right) drawHeaderCell(*CDC::FromHandle(draw.hdc), area, "", 0, -1, {});
}
}  // namespace

bool paintHeader(CCommonListCtrl& list, const NMHDR* news, LRESULT* result) {
    if (!news || news->code != static_cast<UINT>(NM_CUSTOMDRAW)) return false;
    const HWND header = reinterpret_cast<HWND>(::SendMessageA(list.GetSafeHwnd(), LVM_GETHEADER, 0, 0));
    if (news->hwndFrom != header) return false;
    const auto grid = dynamic_cast<const CFilterListCtrl*>(&list);
    if (grid && grid->GetFilterCount() > 0) return false;  // the grid's own tint shows what is filtered
    const auto& draw = *reinterpret_cast<const NMCUSTOMDRAW*>(news);
    if (draw.dwDrawStage == CDDS_PREPAINT) {
        *result = CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    } else if (draw.dwDrawStage == CDDS_ITEMPREPAINT) {
        paintCell(list, header, draw);
        *result = quor::platform::headerCaptionPainted(draw);
    } else {
        if (draw.dwDrawStage == CDDS_POSTPAINT) paintRest(header, draw);
        *result = CDRF_DODEFAULT;
    }
    return true;
}

}  // namespace terminal
