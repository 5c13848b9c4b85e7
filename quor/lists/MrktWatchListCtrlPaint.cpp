// Fonts, colours, what no row covers, the check box and the hit test.
#include "quor/lists/MrktWatchListCtrlParts.h"

namespace {

enum FontStyle { kBold = 1, kItalic = 2, kBoldItalic = 3 };

constexpr int kBoxIndent = 4;
constexpr COLORREF kBoxColor = RGB(255, 255, 255);
constexpr COLORREF kTickColor = RGB(0, 155, 19);
constexpr POINT kTickStart{10, 3};  // inside the box
constexpr int kStrokesDown = 4, kStrokesUp = 3, kStrokeHeight = 3;

}  // namespace

void CMrktWatchListCtrl::OnSize(UINT type, int width, int height) {
    CCommonListCtrl::OnSize(type, width, height);
    GetClientRect(&ClientRect);
}

// Rows erase themselves as they are painted, so that the list does not flicker.
BOOL CMrktWatchListCtrl::OnEraseBkgnd(CDC* dc) {
    CRect clip;
    if (GetItemCount() == 0 || dc->GetClipBox(&clip) == ERROR) return CCommonListCtrl::OnEraseBkgnd(dc);
    if (!m_bGridLines) EraseBesideRows(*dc);
    return TRUE;
}

void CMrktWatchListCtrl::EraseBesideRows(CDC& dc) {
    CRect client;
    GetClientRect(&client);
    const CRect rows = RowsInView();
    const COLORREF color = ListBkColor == CLR_DEFAULT ? GetBkColor() : ListBkColor;
    const DcStateScope state(&dc);
    for (const CRect& area :
         {CRect(client.left, rows.top, rows.left, rows.bottom), CRect(rows.right, rows.top, client.right, rows.bottom),
          CRect(client.left, rows.bottom, client.right, client.bottom)}) {
        if (area.left < area.right && area.top < area.bottom) dc.FillSolidRect(&area, color);
    }
}

// With grid lines the erase leaves all to the paint; what rows left behind goes here, before the lines are drawn.
void CMrktWatchListCtrl::OnPaint() {
    WidenUpdate();
    CRect update;
    if (m_bGridLines && GetItemCount() != 0 && GetUpdateRect(&update)) {
        CClientDC dc(this);
        dc.IntersectClipRect(&update);
        EraseBesideRows(dc);
    }
    Default();
}

void CMrktWatchListCtrl::SetBkColor(COLORREF color) {
    ListBkColor = color;
    CListCtrl::SetBkColor(color);
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void CMrktWatchListCtrl::SetTextColor(COLORREF color) {
    ListTextColor = color;
    CListCtrl::SetTextColor(color);
    RedrawItems(0, GetItemCount());
}

void CMrktWatchListCtrl::SetBkColorFromDlg() {
    CColorDialog dialog(GetBkColor(), 0, this);
    if (dialog.DoModal() == IDOK) SetBkColor(dialog.GetColor());
}

void CMrktWatchListCtrl::SetTxtColorFromDlg() {
    CColorDialog dialog(GetTextColor(), 0, this);
    if (dialog.DoModal() == IDOK) SetTextColor(dialog.GetColor());
}

// The former font goes when the control no longer uses it.
void CMrktWatchListCtrl::TakeFont(const LOGFONT& description) {
    CFont font;
    if (!font.CreateFontIndirect(&description)) return;
    SetFont(&font, TRUE);
    m_parts->listFont.DeleteObject();
    m_parts->listFont.Attach(font.Detach());
}

void CMrktWatchListCtrl::SetListFont(CString face, CString size, int style) {
    LOGFONT font{};
    const CFont* present = GetFont();
    if (face.IsEmpty() || size.IsEmpty() || !present || !present->GetLogFont(&font)) return;
    font.lfHeight = quor::platform::fontHeight(*this, quor::atoi(size));
    ::lstrcpynA(font.lfFaceName, face, LF_FACESIZE);
    font.lfWeight = style == kBold || style == kBoldItalic ? FW_BOLD : FW_NORMAL;
    font.lfItalic = style == kItalic || style == kBoldItalic;
    TakeFont(font);
}

void CMrktWatchListCtrl::ShowFontDlg() {
    LOGFONT font{};
    const CFont* present = GetFont();
    const bool known = present && present->GetLogFont(&font);
    CFontDialog dialog(known ? &font : nullptr, CF_SCREENFONTS | CF_EFFECTS, nullptr, this);
    if (dialog.DoModal() != IDOK) return;
    dialog.GetCurrentFont(&font);
    TakeFont(font);
}

void CMrktWatchListCtrl::DrawCheckbox(int, int, CDC* dc, COLORREF, COLORREF, CRect& cell, CRect* box, int checked) {
    const int side = cell.Height() - 1;
    CRect square(cell.left + kBoxIndent, cell.top, cell.left + kBoxIndent + side, cell.top + side);
    if (box) *box = square;
    const DcStateScope state(dc);
    dc->FillSolidRect(&square, kBoxColor);
    const CPoint corner = square.TopLeft();
    dc->DrawEdge(&square, EDGE_SUNKEN, BF_RECT);
    if (!checked) return;
    CPen pen(PS_SOLID, 1, kTickColor);
    const SelectScope drawing(*dc, pen);
    CPoint at = corner + kTickStart;
    const auto stroke = [&] {
        dc->MoveTo(at.x, at.y);
        dc->LineTo(at.x, at.y + kStrokeHeight);
        --at.x;
    };
    for (int i = 0; i < kStrokesDown; ++i, ++at.y) stroke();
    at.y -= 2;  // one above the lowest
    for (int i = 0; i < kStrokesUp; ++i, --at.y) stroke();
}

bool CMrktWatchListCtrl::HitTestEx(CPoint& point, int* row, int* column) {
    if (!row || !column || (::GetWindowLongA(m_hWnd, GWL_STYLE) & LVS_TYPEMASK) != LVS_REPORT) return false;
    const int hit = HitTest(point);
    CRect bounds;
    if (hit < 0 || !GetItemRect(hit, bounds, LVIR_BOUNDS) || !bounds.PtInRect(point)) return false;
    const CHeaderCtrl* header = GetHeaderCtrl();
    const int count = header ? header->GetItemCount() : 0;
    int right = bounds.left;
    for (int place = 0; place < count; ++place) {
        right += GetColumnWidth(header->OrderToIndex(place));
        if (point.x >= right) continue;
        *row = hit;
        *column = place;
        return true;
    }
    return false;
}
