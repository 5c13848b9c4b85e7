#include "quor/edits/XListCtrl.h"

#include "quor/edits/ButtonPaintInternal.h"
#include "quor/edits/CheckBoxPaintInternal.h"
#include "quor/edits/core/CheckCell.h"
#include "quor/edits/core/Colours.h"
#include "quor/foundation/Messages.h"
#include "quor/foundation/RedrawScope.h"

#include <algorithm>

using namespace quor::edits;
using quor::platform::scaled;

static_assert(COLORREF{CXListCtrl::kNoColor} == kNoColour);

namespace {

constexpr int kMargin = 4;
constexpr int kRowHeight = 16;  // at least, so that boxes have air
constexpr DWORD kExtendedStyle = LVS_EX_FULLROWSELECT | LVS_EX_SUBITEMIMAGES | LVS_EX_DOUBLEBUFFER;
constexpr int kIdleHighlight = 5;      // sixteenths of the highlight in a chosen row while the focus is elsewhere
constexpr double kTextContrast = 4.5;  // that its text keeps
constexpr WPARAM kHeadingRow = static_cast<WPARAM>(-1);
constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;

CellMetrics metricsOf(CThemeUtil& theme, HWND list) { return {scaled(list, kMargin), checkBoxSize(theme, list)}; }

// A colour of the control's, which may be none of its own.
COLORREF resolved(COLORREF color, int index) {
    return color == CLR_NONE || color == CLR_DEFAULT ? ::GetSysColor(index) : color;
}

void paintColourBox(CDC& dc, CRect box, COLORREF color, bool enabled) {
    if (box.IsRectEmpty()) return;
    const COLORREF ground = ::GetSysColor(COLOR_WINDOW);
    dc.FillSolidRect(box, ::GetSysColor(enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
    box.DeflateRect(1, 1);
    if (box.IsRectEmpty()) return;
    dc.FillSolidRect(box, color == kNoColour ? ground : color);
    if (color != kNoColour) return;
    // A box without a colour is crossed out: white is a colour.
    CPen pen(PS_SOLID, 1, ::GetSysColor(COLOR_GRAYTEXT));
    const SelectScope selected(dc, pen);
    dc.MoveTo(box.left, box.bottom - 1);
    dc.LineTo(box.right, box.top - 1);
}

}  // namespace

struct CXListCtrl::Parts {
    int focusColumn = 0;
    bool spaceTaken = false;  // its WM_CHAR is not for the search by letters
    CThemeUtil theme;
    CImageList rowHeight;  // of its images, which nobody sees
};

IMPLEMENT_DYNCREATE(CXListCtrl, CListCtrl)

BEGIN_MESSAGE_MAP(CXListCtrl, CListCtrl)
    ON_WM_CREATE()
    ON_WM_PARENTNOTIFY()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_KEYDOWN()
    ON_WM_CHAR()
    ON_WM_PAINT()
    ON_WM_ENABLE()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_THEMECHANGED()
    ON_NOTIFY_REFLECT(NM_CUSTOMDRAW, &CXListCtrl::OnCustomDraw)
    ON_NOTIFY_REFLECT_EX(LVN_COLUMNCLICK, &CXListCtrl::OnColumnClick)
END_MESSAGE_MAP()

CXListCtrl::CXListCtrl() : m_parts(std::make_unique<Parts>()) {}

// While header and parts are still there.
CXListCtrl::~CXListCtrl() {
    if (m_hWnd) DestroyWindow();
}

// ---- Creation: on both roads, by Create and by taking over a dialog's control, the header may come later.

void CXListCtrl::PreSubclassWindow() {
    CListCtrl::PreSubclassWindow();
    prepare();
}

int CXListCtrl::OnCreate(LPCREATESTRUCT create) {
    if (CListCtrl::OnCreate(create) == -1) return -1;
    prepare();
    return 0;
}

void CXListCtrl::OnParentNotify(UINT message, LPARAM lParam) {
    CListCtrl::OnParentNotify(message, lParam);
    if (LOWORD(message) == WM_CREATE) prepare();
}

void CXListCtrl::prepare() {
    SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, kExtendedStyle, kExtendedStyle);
    giveRowHeight();
    const HWND header = m_header.m_hWnd ? nullptr : ::FindWindowExA(m_hWnd, nullptr, WC_HEADERA, nullptr);
    if (header) m_header.SubclassWindow(header);
}

void CXListCtrl::giveRowHeight() {
    CImageList& images = m_parts->rowHeight;
    if (!images.m_hImageList) images.Create(1, scaled(m_hWnd, kRowHeight), ILC_COLOR, 0, 1);
    ModifyStyle(0, LVS_SHAREIMAGELISTS);  // the control frees none
    SetImageList(&images, LVSIL_SMALL);
}

// ---- Cells

bool CXListCtrl::isCell(int row, int column) const {
    return row >= 0 && row < GetItemCount() && column >= 0 && column < m_header.GetItemCount();
}

int CXListCtrl::cellNumber(int row, int column) const {
    LVITEM item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    item.iSubItem = column;
    return isCell(row, column) && GetItem(&item) ? item.iImage : 0;
}

BOOL CXListCtrl::setCellNumber(int row, int column, int number) {
    if (!isCell(row, column)) return FALSE;
    LVITEM item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    item.iSubItem = column;
    item.iImage = number;
    const HWND self = m_hWnd;
    if (!SetItem(&item) || !::IsWindow(self)) return FALSE;  // whoever hears of the change may end the list
    InvalidateRect(GetCellRect(row, column), FALSE);
    if (m_header.HasCheckbox(column)) m_header.Invalidate(FALSE);
    return TRUE;
}

BOOL CXListCtrl::SetCheckbox(int row, int column, int check) {
    CheckCell cell = unpackCell(cellNumber(row, column));
    cell.check = std::clamp(check, kNoCheck, kChecked);
    return setCellNumber(row, column, packCell(cell));
}

int CXListCtrl::GetCheckbox(int row, int column) const { return unpackCell(cellNumber(row, column)).check; }

BOOL CXListCtrl::SetColorboxColor(int row, int column, COLORREF color) {
    CheckCell cell = unpackCell(cellNumber(row, column));
    cell.colour = true;
    return setCellNumber(row, column, packCell(cell)) && SetItemText(row, column, formatColour(color).c_str());
}

COLORREF CXListCtrl::GetColorboxColor(int row, int column) const {
    if (!unpackCell(cellNumber(row, column)).colour) return kNoColour;
    const CString text = GetItemText(row, column);
    return parseColour({text, static_cast<std::size_t>(text.GetLength())});
}

BOOL CXListCtrl::SetEnabled(int row, int column, BOOL enabled) {
    CheckCell cell = unpackCell(cellNumber(row, column));
    cell.enabled = enabled != FALSE;
    return setCellNumber(row, column, packCell(cell));
}

BOOL CXListCtrl::GetEnabled(int row, int column) const {
    return isCell(row, column) && unpackCell(cellNumber(row, column)).enabled;
}

// ---- Headings

BOOL CXListCtrl::SetHeaderCheckbox(int column, BOOL show) { return m_header.ShowCheckbox(column, show); }

int CXListCtrl::GetHeaderCheckbox(int column) const {
    if (!m_header.HasCheckbox(column)) return kNoCheck;
    int sum = kNoCheck;
    for (int row = GetItemCount() - 1; row >= 0 && sum != kMixed; --row) sum = joined(sum, GetCheckbox(row, column));
    return std::max(sum, kUnchecked);
}

// Boxes of disabled cells stay as they are, and do not say which way the others turn.
BOOL CXListCtrl::OnColumnClick(NMHDR* header, LRESULT*) {
    const int column = reinterpret_cast<const NMLISTVIEW*>(header)->iSubItem;
    if (!m_header.HasCheckbox(column)) return FALSE;
    const auto turns = [&](int row) {
        const CheckCell cell = unpackCell(cellNumber(row, column));
        return cell.enabled ? cell.check : kNoCheck;
    };
    int sum = kNoCheck;
    for (int row = 0; row < GetItemCount(); ++row) sum = joined(sum, turns(row));
    if (sum == kNoCheck) return FALSE;
    const HWND self = m_hWnd;
    {
        const quor::foundation::RedrawScope off(*this);
        for (int row = 0; ::IsWindow(self) && row < GetItemCount(); ++row)
            if (turns(row) != kNoCheck) SetCheckbox(row, column, toggled(sum));
    }
    if (!::IsWindow(self)) return TRUE;
    GetParent()->SendMessage(WM_XLISTCTRL_CHECKBOX_CLICKED, kHeadingRow, column);
    return !::IsWindow(self);  // else the parent hears of the click too
}

// ---- Places

int CXListCtrl::GetFocusedColumn() const {
    return std::clamp(m_parts->focusColumn, 0, std::max(m_header.GetItemCount() - 1, 0));
}

// By the header: the control's own bounds of the first column are those of the row.
CRect CXListCtrl::GetCellRect(int row, int column) const {
    CRect bounds, heading;
    if (!isCell(row, column) || !GetItemRect(row, bounds, LVIR_BOUNDS) || !m_header.GetItemRect(column, heading))
        return CRect(0, 0, 0, 0);
    ::MapWindowPoints(m_header.m_hWnd, m_hWnd, reinterpret_cast<POINT*>(&heading), 2);
    return CRect(heading.left, bounds.top, heading.right, bounds.bottom);
}

void CXListCtrl::invalidateRow(int row) {
    if (row >= 0) RedrawItems(row, row);
}

// ---- Input

bool CXListCtrl::pressBox(int row, int column, bool colour) {
    const CheckCell cell = unpackCell(cellNumber(row, column));
    if (!cell.enabled || !isCell(row, column)) return false;
    if (colour ? !cell.colour : cell.check == kNoCheck) return false;
    const HWND self = m_hWnd;
    if (!colour) SetCheckbox(row, column, toggled(cell.check));
    if (!::IsWindow(self)) return true;
    GetParent()->SendMessage(colour ? WM_XLISTCTRL_COLORBOX_CLICKED : WM_XLISTCTRL_CHECKBOX_CLICKED,
                             static_cast<WPARAM>(row), column);
    return true;
}

// True: the point was on a box that answers. The row becomes the selected one; whoever hears of that may change the
// list or end it.
bool CXListCtrl::pressAt(CPoint point) {
    LVHITTESTINFO info{};
    info.pt = point;
    const int row = SubItemHitTest(&info);
    for (int column = m_header.GetItemCount() - 1; row >= 0 && column >= 0; --column) {
        const CRect area = GetCellRect(row, column);
        if (!area.PtInRect(point)) continue;
        m_parts->focusColumn = column;
        invalidateRow(row);
        const CheckCell cell = unpackCell(cellNumber(row, column));
        const CellPlaces places = cellPlaces(cell, area, metricsOf(m_parts->theme, m_hWnd));
        const bool colour = ::PtInRect(&places.colour, point) != FALSE;
        if (!cell.enabled || (!colour && !::PtInRect(&places.check, point))) return false;
        const HWND self = m_hWnd;
        SetFocus();
        if (::IsWindow(self)) SetItemState(-1, 0, LVIS_SELECTED);
        if (::IsWindow(self)) SetItemState(row, kChosen, kChosen);
        if (::IsWindow(self)) pressBox(row, column, colour);
        return true;
    }
    return false;
}

void CXListCtrl::OnLButtonDown(UINT flags, CPoint point) {
    if (!pressAt(point)) CListCtrl::OnLButtonDown(flags, point);
}

void CXListCtrl::OnLButtonDblClk(UINT flags, CPoint point) {
    if (!pressAt(point)) CListCtrl::OnLButtonDblClk(flags, point);
}

// In the order on the screen; a column out of view is scrolled into it.
void CXListCtrl::moveFocus(int step) {
    const int count = m_header.GetItemCount();
    if (count <= 0) return;
    std::vector<int> order(static_cast<std::size_t>(count));
    m_header.GetOrderArray(order.data(), count);
    const auto present = std::find(order.begin(), order.end(), GetFocusedColumn()) - order.begin();
    const auto place = std::clamp<std::ptrdiff_t>(present + step, 0, count - 1);
    m_parts->focusColumn = order[static_cast<std::size_t>(place)];
    const int row = GetNextItem(-1, LVNI_FOCUSED);
    const CRect area = GetCellRect(row, m_parts->focusColumn);
    CRect client;
    GetClientRect(client);
    if (area.right > client.right) Scroll(CSize(std::min(area.right - client.right, area.left), 0));
    if (area.left < 0) Scroll(CSize(area.left, 0));
    invalidateRow(row);
}

void CXListCtrl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    const int row = GetNextItem(-1, LVNI_FOCUSED);
    m_parts->spaceTaken = false;
    if (row >= 0 && (key == VK_LEFT || key == VK_RIGHT)) return moveFocus(key == VK_LEFT ? -1 : 1);
    if (row >= 0 && key == VK_SPACE) {
        const CheckCell cell = unpackCell(cellNumber(row, GetFocusedColumn()));
        if (cell.check != kNoCheck || cell.colour) {
            m_parts->spaceTaken = true;
            pressBox(row, GetFocusedColumn(), cell.check == kNoCheck);
            return;
        }
    }
    CListCtrl::OnKeyDown(key, repeat, flags);
}

void CXListCtrl::OnChar(UINT character, UINT repeat, UINT flags) {
    if (character != VK_SPACE || !m_parts->spaceTaken) CListCtrl::OnChar(character, repeat, flags);
}

// ---- Drawing

// The control invalidates a row from its first text on; what lies left of that is part of the row here.
void CXListCtrl::OnPaint() {
    CRect dirty, client;
    GetClientRect(client);
    if (GetUpdateRect(dirty) && dirty.left < scaled(m_hWnd, kMargin))
        InvalidateRect(CRect(client.left, dirty.top, dirty.right, dirty.bottom), FALSE);
    CListCtrl::OnPaint();
}

void CXListCtrl::OnEnable(BOOL enabled) {
    CListCtrl::OnEnable(enabled);
    Invalidate(FALSE);
    if (m_header.m_hWnd) m_header.Invalidate(FALSE);
}

void CXListCtrl::OnSysColorChange() {
    CListCtrl::OnSysColorChange();
    Invalidate();
}

LRESULT CXListCtrl::OnThemeChanged() {
    m_parts->theme.CloseThemeData();
    return Default();
}

void CXListCtrl::OnCustomDraw(NMHDR* header, LRESULT* result) {
    const auto& draw = reinterpret_cast<const NMLVCUSTOMDRAW*>(header)->nmcd;
    *result = draw.dwDrawStage == CDDS_PREPAINT ? CDRF_NOTIFYITEMDRAW : CDRF_DODEFAULT;
    if (draw.dwDrawStage != CDDS_ITEMPREPAINT) return;
    paintRow(*CDC::FromHandle(draw.hdc), static_cast<int>(draw.dwItemSpec));
    *result = CDRF_SKIPDEFAULT;
}

void CXListCtrl::paintRow(CDC& dc, int row) {
    const DcStateScope state(dc);
    const bool hasFocus = ::GetFocus() == m_hWnd;
    const bool isChosen = GetItemState(row, LVIS_SELECTED) && (hasFocus || (GetStyle() & LVS_SHOWSELALWAYS));
    const COLORREF own = GetTextBkColor();
    COLORREF ground = resolved(own == CLR_NONE || own == CLR_DEFAULT ? GetBkColor() : own, COLOR_WINDOW);
    COLORREF color = resolved(GetTextColor(), COLOR_WINDOWTEXT);
    if (isChosen) {
        const COLORREF highlight = ::GetSysColor(COLOR_HIGHLIGHT);
        ground = hasFocus ? highlight : between(ground, highlight, kIdleHighlight);
        color = hasFocus ? ::GetSysColor(COLOR_HIGHLIGHTTEXT) : readableOn(ground, color, kTextContrast);
    }
    const bool focusShows = hasFocus && GetItemState(row, LVIS_FOCUSED);
    for (int column = 0; column < m_header.GetItemCount(); ++column) {
        const CRect area = GetCellRect(row, column);
        if (area.IsRectEmpty() || !dc.RectVisible(area)) continue;
        paintCell(dc, row, column, area, ground, color);
        if (!focusShows || column != GetFocusedColumn()) continue;
        dc.SetTextColor(0);
        dc.SetBkColor(0xFFFFFF);
        dc.DrawFocusRect(area);
    }
}

void CXListCtrl::paintCell(CDC& dc, int row, int column, const CRect& area, COLORREF ground, COLORREF color) {
    const CheckCell cell = unpackCell(cellNumber(row, column));
    const bool enabled = cell.enabled && IsWindowEnabled();
    dc.FillSolidRect(area, ground);
    const CellPlaces places = cellPlaces(cell, area, metricsOf(m_parts->theme, m_hWnd));
    paintCheckBox(m_parts->theme, dc, places.check, {cell.check, enabled});
    if (cell.colour) return paintColourBox(dc, places.colour, GetColorboxColor(row, column), enabled);
    LVCOLUMN record{};
    record.mask = LVCF_FMT;
    GetColumn(column, &record);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(enabled ? color : readableOn(ground, ::GetSysColor(COLOR_GRAYTEXT), kDisabledContrast));
    CRect text = places.text;
    dc.DrawText(GetItemText(row, column), text,
                DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX | drawFormat(record.fmt));
}
