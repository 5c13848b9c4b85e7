#include "quor/edits/XHeaderCtrl.h"

#include "quor/edits/ButtonPaintInternal.h"
#include "quor/edits/CheckBoxPaintInternal.h"
#include "quor/edits/XListCtrl.h"
#include "quor/edits/core/CheckCell.h"
#include "quor/edits/core/Colours.h"

#include <vsstyle.h>

using namespace quor::edits;
using quor::platform::scaled;

namespace {

constexpr int kMargin = 4;
constexpr int kLongestHeading = 260;
constexpr int kSystemsOwn = HDF_IMAGE | HDF_BITMAP | HDF_SORTUP | HDF_SORTDOWN | HDF_OWNERDRAW;

}  // namespace

IMPLEMENT_DYNAMIC(CXHeaderCtrl, CHeaderCtrl)

BEGIN_MESSAGE_MAP(CXHeaderCtrl, CHeaderCtrl)
    ON_NOTIFY_REFLECT(NM_CUSTOMDRAW, &CXHeaderCtrl::OnCustomDraw)
    ON_WM_LBUTTONDBLCLK()
    ON_WM_THEMECHANGED()
END_MESSAGE_MAP()

// The format keeps it, so that it moves with its column; the system draws none without the header's own style for it.
BOOL CXHeaderCtrl::ShowCheckbox(int column, BOOL show) {
    HDITEM item{};
    item.mask = HDI_FORMAT;
    if (!GetItem(column, &item)) return FALSE;
    item.fmt = show ? item.fmt | HDF_CHECKBOX : item.fmt & ~HDF_CHECKBOX;
    if (!SetItem(column, &item)) return FALSE;
    Invalidate();
    return TRUE;
}

BOOL CXHeaderCtrl::HasCheckbox(int column) const {
    HDITEM item{};
    item.mask = HDI_FORMAT;
    return GetItem(column, &item) && (item.fmt & HDF_CHECKBOX);
}

bool CXHeaderCtrl::isOurs(int column) const {
    HDITEM item{};
    item.mask = HDI_FORMAT;
    return GetItem(column, &item) && ((item.fmt & HDF_CHECKBOX) || !(item.fmt & kSystemsOwn));
}

// The second of two quick clicks on a box is a click; on a divider it stays what it is.
void CXHeaderCtrl::OnLButtonDblClk(UINT flags, CPoint point) {
    HDHITTESTINFO hit{};
    hit.pt = point;
    if (HitTest(&hit) < 0 || hit.flags != HHT_ONHEADER || !HasCheckbox(hit.iItem))
        return CHeaderCtrl::OnLButtonDblClk(flags, point);
    SendMessage(WM_LBUTTONDOWN, flags, MAKELPARAM(point.x, point.y));
}

LRESULT CXHeaderCtrl::OnThemeChanged() {
    m_theme.CloseThemeData();
    m_boxTheme.CloseThemeData();
    return Default();
}

void CXHeaderCtrl::OnCustomDraw(NMHDR* header, LRESULT* result) {
    const auto& draw = *reinterpret_cast<const NMCUSTOMDRAW*>(header);
    *result = draw.dwDrawStage == CDDS_PREPAINT ? CDRF_NOTIFYITEMDRAW : CDRF_DODEFAULT;
    const int column = static_cast<int>(draw.dwItemSpec);
    if (draw.dwDrawStage != CDDS_ITEMPREPAINT || !isOurs(column)) return;
    paintHeading(*CDC::FromHandle(draw.hdc), quor::platform::headerCaption(draw), column,
                 (draw.uItemState & CDIS_SELECTED) != 0);
    *result = quor::platform::headerCaptionPainted(draw);
}

void CXHeaderCtrl::paintHeading(CDC& dc, CRect area, int column, bool pressed) {
    const DcStateScope state(dc);
    m_theme.KeepThemeData(nullptr, L"HEADER");
    if (!m_theme.DrawThemeBackground(dc, HP_HEADERITEM, pressed ? HIS_PRESSED : HIS_NORMAL, area)) {
        dc.FillSolidRect(area, ::GetSysColor(COLOR_BTNFACE));
        dc.DrawEdge(area, pressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT | BF_SOFT);
    }
    char heading[kLongestHeading] = "";
    HDITEM item{};
    item.mask = HDI_TEXT | HDI_FORMAT;
    item.pszText = heading;
    item.cchTextMax = sizeof heading;
    GetItem(column, &item);
    const auto* const list = DYNAMIC_DOWNCAST(CXListCtrl, GetParent());
    const int check = list ? list->GetHeaderCheckbox(column) : kNoCheck;
    const int box = HasCheckbox(column) ? std::max(check, kUnchecked) : kNoCheck;
    const CellMetrics metrics{scaled(m_hWnd, kMargin), checkBoxSize(m_boxTheme, m_hWnd)};
    const CellPlaces places = cellPlaces({box, false, true}, area, metrics);
    const bool enabled = GetParent()->IsWindowEnabled() != FALSE;
    paintCheckBox(m_boxTheme, dc, places.check, {check, check != kNoCheck && enabled});
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(enabled
                        ? ::GetSysColor(COLOR_BTNTEXT)
                        : readableOn(::GetSysColor(COLOR_WINDOW), ::GetSysColor(COLOR_GRAYTEXT), kDisabledContrast));
    CRect text = places.text;
    dc.DrawText(heading, -1, text, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX | drawFormat(item.fmt));
}
