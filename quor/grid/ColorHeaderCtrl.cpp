#include "quor/grid/ColorHeaderCtrl.h"

#include "quor/grid/FilterListCtrl.h"

namespace {

constexpr COLORREF kFilteredGround = 0x20A5DA;  // the column has a filter
constexpr COLORREF kOtherGround = 0x82DDEE;     // another column has one
constexpr int kTextMargin = 6;                  // pixels between the edge of an item and its text

UINT drawFormat(int alignment) {
    switch (alignment) {
        case HDF_RIGHT:
            return DT_RIGHT;
        case HDF_CENTER:
            return DT_CENTER;
        default:
            return DT_LEFT;
    }
}

CFilterListCtrl* gridOf(const CHeaderCtrl& header) { return DYNAMIC_DOWNCAST(CFilterListCtrl, header.GetParent()); }

}  // namespace

struct CColorHeaderCtrl::Caption {
    char text[260] = "";
    int image = -1;
    int itemAlignment = 0;  // HDF_LEFT, HDF_RIGHT or HDF_CENTER
    int alignment = 0;      // of the column, whatever became of the item's
    COLORREF ground = 0;
};

IMPLEMENT_DYNAMIC(CColorHeaderCtrl, CHeaderCtrl)

BEGIN_MESSAGE_MAP(CColorHeaderCtrl, CHeaderCtrl)
    ON_NOTIFY_REFLECT(NM_CUSTOMDRAW, &CColorHeaderCtrl::OnCustomDraw)
END_MESSAGE_MAP()

COLORREF CColorHeaderCtrl::groundOf(int place) const {
    const COLORREF plain = ::GetSysColor(COLOR_BTNFACE);
    CFilterListCtrl* const grid = gridOf(*this);
    if (!grid) return plain;
    CFilterListCtrl& list = *grid;
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

CColorHeaderCtrl::Caption CColorHeaderCtrl::captionOf(int place) const {
    Caption caption;
    HDITEMA item{};
    item.mask = HDI_TEXT | HDI_FORMAT | HDI_IMAGE;
    item.pszText = caption.text;
    item.cchTextMax = sizeof caption.text;
    SendMessage(HDM_GETITEMA, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
    if (item.fmt & HDF_IMAGE) caption.image = item.iImage;
    caption.alignment = caption.itemAlignment = item.fmt & HDF_JUSTIFYMASK;
    CFilterListCtrl* const grid = gridOf(*this);
    const int columnIndex = grid ? grid->GetOriginalColumnPosition(place) : -1;
    if (columnIndex >= 0 && columnIndex < grid->m_arrColumns.GetSize())
        caption.alignment = grid->m_arrColumns.GetAt(columnIndex).iFormat & LVCFMT_JUSTIFYMASK;
    caption.ground = groundOf(place);
    return caption;
}

void CColorHeaderCtrl::OnCustomDraw(NMHDR* header, LRESULT* result) {
    const auto& draw = *reinterpret_cast<const NMCUSTOMDRAW*>(header);
    *result = CDRF_DODEFAULT;
    if (draw.dwDrawStage == CDDS_PREPAINT) *result = CDRF_NOTIFYITEMDRAW;
    if (draw.dwDrawStage != CDDS_ITEMPREPAINT) return;
    const Caption caption = captionOf(static_cast<int>(draw.dwItemSpec));
    CDC& dc = *CDC::FromHandle(draw.hdc);
    dc.SetTextColor(0);
    dc.SetBkColor(caption.ground);
    *result = CDRF_NEWFONT;
    if (caption.ground == ::GetSysColor(COLOR_BTNFACE) && caption.alignment == caption.itemAlignment) return;
    paintCaption(dc, caption, quor::platform::headerCaption(draw), (draw.uItemState & CDIS_SELECTED) != 0);
    *result = quor::platform::headerCaptionPainted(draw);
}

// Ground, edge, heading, and the image on the right of it.
void CColorHeaderCtrl::paintCaption(CDC& dc, const Caption& caption, CRect area, bool pressed) {
    const DcStateScope state(dc.m_hDC);
    dc.FillSolidRect(area, caption.ground);
    dc.DrawEdge(area, pressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT | BF_SOFT);
    area.DeflateRect(kTextMargin, 0);
    CImageList* const images = caption.image == -1 ? nullptr : GetImageList();
    IMAGEINFO image{};
    if (images && images->GetImageInfo(caption.image, &image)) {
        const CRect size = image.rcImage;
        images->Draw(&dc, caption.image, CPoint(area.right - size.Width(), area.CenterPoint().y - size.Height() / 2),
                     ILD_NORMAL);
        area.right -= size.Width() + kTextMargin;
    }
    if (pressed) area.OffsetRect(1, 1);
    dc.SetBkMode(TRANSPARENT);
    dc.DrawText(caption.text, -1, area,
                DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX | drawFormat(caption.alignment));
}
