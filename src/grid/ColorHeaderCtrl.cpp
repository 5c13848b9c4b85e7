#include "src/grid/ColorHeaderCtrl.h"

#include "src/grid/FilterListCtrl.h"

namespace {

constexpr COLORREF kFilteredGround = 0x20A5DA;  // the column has a filter
constexpr COLORREF kOtherGround = 0x82DDEE;     // another column has one
constexpr int kTextMargin = 6;                  // pixels between the edge of an item and its text

UINT alignmentOf(int format) {
    switch (format & HDF_JUSTIFYMASK) {
        case HDF_RIGHT:
            return DT_RIGHT;
        case HDF_CENTER:
            return DT_CENTER;
        default:
            return DT_LEFT;
    }
}

}  // namespace

IMPLEMENT_DYNAMIC(CColorHeaderCtrl, CHeaderCtrl)

BEGIN_MESSAGE_MAP(CColorHeaderCtrl, CHeaderCtrl)
    ON_NOTIFY_REFLECT(NM_CUSTOMDRAW, &CColorHeaderCtrl::OnCustomDraw)
END_MESSAGE_MAP()

COLORREF CColorHeaderCtrl::groundOf(int place) const {
    CWnd* const parent = GetParent();
    const COLORREF plain = ::GetSysColor(COLOR_BTNFACE);
    if (!parent || !parent->IsKindOf(RUNTIME_CLASS(CFilterListCtrl))) return plain;
    auto& list = *static_cast<CFilterListCtrl*>(parent);
    CArray<int, int> columns;
    CArray<CString, CString> texts;
    list.GetFileteredCols(columns, texts);
    for (INT_PTR i = 0; i < columns.GetSize(); ++i) {
        const int columnIndex = columns.GetAt(i);
        if (columnIndex >= 0 && columnIndex < list.m_arrOrder.GetSize() && list.m_arrOrder.GetAt(columnIndex) == place)
            return kFilteredGround;
    }
    return columns.GetSize() != 0 ? kOtherGround : plain;
}

void CColorHeaderCtrl::OnCustomDraw(NMHDR* header, LRESULT* result) {
    const auto& draw = *reinterpret_cast<const NMCUSTOMDRAW*>(header);
    *result = CDRF_DODEFAULT;
    if (draw.dwDrawStage == CDDS_PREPAINT) *result = CDRF_NOTIFYITEMDRAW;
    if (draw.dwDrawStage != CDDS_ITEMPREPAINT) return;
    const auto place = static_cast<int>(draw.dwItemSpec);
    const COLORREF ground = groundOf(place);
    CDC& dc = *CDC::FromHandle(draw.hdc);
    dc.SetTextColor(0);
    dc.SetBkColor(ground);
    *result = CDRF_NEWFONT;
    if (ground == ::GetSysColor(COLOR_BTNFACE)) return;
    paintItem(dc, place, draw.rc, (draw.uItemState & CDIS_SELECTED) != 0);
    *result = CDRF_SKIPDEFAULT;
}

// Ground, edge, heading, and the image on the right of it.
void CColorHeaderCtrl::paintItem(CDC& dc, int place, CRect area, bool pressed) {
    char text[260] = "";
    HDITEMA item{};
    item.mask = HDI_TEXT | HDI_FORMAT | HDI_IMAGE;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendMessage(HDM_GETITEMA, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
    const COLORREF ground = dc.GetBkColor();
    const DcStateScope state(dc.m_hDC);
    dc.FillSolidRect(area, ground);
    dc.DrawEdge(area, pressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT | BF_SOFT);
    area.DeflateRect(kTextMargin, 0);
    CImageList* const images = (item.fmt & HDF_IMAGE) ? GetImageList() : nullptr;
    IMAGEINFO image{};
    if (images && images->GetImageInfo(item.iImage, &image)) {
        const CRect size = image.rcImage;
        images->Draw(&dc, item.iImage, CPoint(area.right - size.Width(), area.CenterPoint().y - size.Height() / 2),
                     ILD_NORMAL);
        area.right -= size.Width() + kTextMargin;
    }
    if (pressed) area.OffsetRect(1, 1);
    dc.SetBkMode(TRANSPARENT);
    dc.DrawText(text, -1, area, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX | alignmentOf(item.fmt));
}
