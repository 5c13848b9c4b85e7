// Painting. Rows paint their own ground and the erase paints only where no row stands, so a repaint of the dirty
// rectangle needs no erasing. Two routes: owner draw (DrawItem) for a whole row, custom draw for a cell at a time.
#include "src/grid/FilterListCtrl.h"

#include <cstring>
#include <vector>

#include "src/foundation/ControlBlock.h"
#include "src/list/core/ListLayout.h"

using namespace quor::grid;
using namespace quor::list;

namespace {

constexpr UINT kPaintedState = LVIS_STATEIMAGEMASK | LVIS_OVERLAYMASK | LVIS_SELECTED;
constexpr SIZE kCellImageSize{16, 17};

UINT textFlags(CellAlign align) {
    switch (align) {
        case CellAlign::left:
            return DT_LEFT;
        case CellAlign::right:
            return DT_RIGHT;
        default:
            return DT_CENTER;
    }
}

RECT textRect(RECT cell, CellAlign align) {
    if (align == CellAlign::left) cell.left += kCellInset;
    if (align == CellAlign::right) cell.right -= kCellInset;
    return cell;
}

// The text may be shortened in place, and the ellipsis needs room.
void drawCellText(CDC& dc, const CString& text, RECT rect, CellAlign align) {
    constexpr std::size_t ellipsisRoom = 4;
    const auto length = static_cast<std::size_t>(text.GetLength());
    char small[128];
    std::vector<char> large;
    char* buffer = small;
    if (length + ellipsisRoom + 1 > sizeof small) {
        large.resize(length + ellipsisRoom + 1);
        buffer = large.data();
    }
    std::memcpy(buffer, static_cast<const char*>(text), length + 1);
    dc.DrawTextEx(buffer, static_cast<int>(length), &rect,
                  textFlags(align) | DT_NOPREFIX | DT_END_ELLIPSIS | DT_MODIFYSTRING, nullptr);
}

void fillGradient(CDC& dc, const RECT& rect, GradientColors colors) {
    g_pControlBlock->FillShadeRect(&dc, &rect, colors.from, colors.to, 0);
}

}  // namespace

// One row, as DrawItem paints it.
class CFilterListCtrl::RowPainter {
public:
    RowPainter(CFilterListCtrl& grid, CDC& dc, int visual, const RECT& row)
        : m_grid(grid),
          m_dc(dc),
          m_visual(visual),
          m_row(row),
          m_look(grid.rowLook(visual)),
          m_state(grid.m_native.itemState(visual, kPaintedState)) {}

    void paint() {
        m_dc.SetBkMode(TRANSPARENT);
        m_data = m_grid.GetItemData(m_visual);
        if (m_data == 0) return paintBlank();
        const int first = m_grid.m_nFirstColumn;
        if (first < 0 || first >= m_grid.m_arrOrder.GetSize() || m_grid.m_arrOrder.GetAt(first) != 0) return;
        bool groundIsDone = false;
        for (INT_PTR i = 0; i < m_grid.m_arrVisible.GetSize(); ++i) {
            const sVisibleColumn& column = m_grid.m_arrVisible.GetAt(i);
            if (column.iVisiblePosition == -1 && column.iColumnIndex != 0) continue;
            if (!paintColumn(column, groundIsDone)) return;
            groundIsDone = true;
        }
    }

private:
    bool showsSelection() const { return (m_state & LVIS_SELECTED) != 0 && !m_grid.NoSelectionPaint; }

    // A deleted row that the batch still shows, or one without data.
    void paintBlank() {
        if (showsSelection()) return paintSelection();
        fill(m_look.greyedOut ? kColorGreyedOut : m_look.listDefaults.background);
    }

    void paintSelection() {
        fillGradient(m_dc, m_row, m_grid.m_hasFocus ? kSelectionWithFocus : kSelectionWithoutFocus);
        m_dc.SetTextColor(kColorSelectedText);
    }

    void fill(COLORREF color) { m_grid.fillArea(m_dc, m_row, color); }

    // False ends the row: the host has no text, and the cell stays as it was.
    bool paintColumn(const sVisibleColumn& column, bool groundIsDone) {
        CString text;
        int icon = -1;
        RowColors colors = startingColors(m_look, m_visual);
        if (!m_grid.GetColumnText(m_data, column.iColumnIndex, text, colors.text, colors.background, icon, false))
            return false;
        if (!groundIsDone) paintGround(colors);
        m_grid.PaintTrend(m_dc, m_visual, column.iColumnIndex, column.iVisiblePosition, text, m_rowText);
        if (column.iVisiblePosition != -1) paintCell(column, text, icon);
        paintCheck();
        return true;
    }

    void paintGround(RowColors colors) {
        m_grid.applyKeywordColor(m_data, colors.text);
        colors = finalColors(m_look, colors);
        if (m_grid.DrawShades || !m_grid.NoRowFill) fill(colors.background);
        m_rowText = colors.text;
        m_dc.SetTextColor(colors.text);
        if (!showsSelection()) return;
        paintSelection();
        m_rowText = kColorSelectedText;
    }

    void paintCell(const sVisibleColumn& column, CString& text, int icon) {
        RECT cell;
        if (column.iColumnIndex < 0 || column.iColumnIndex >= m_grid.m_arrColumns.GetSize() ||
            !m_grid.m_native.labelRect(m_visual, column.iVisiblePosition, cell))
            return;
        const sQuorColInfo& record = m_grid.m_arrColumns.GetAt(column.iColumnIndex);
        const CellAlign align = cellAlign(record.iFormat);
        if (align == CellAlign::icon) return paintIcon(cell, isNumericType(record.iDataType), icon);
        if (wantsGrouping(record.iDataType, text)) text = m_grid.GetCommaData(text);
        drawCellText(m_dc, text, textRect(cell, align), align);
    }

    void paintIcon(const RECT& cell, bool isHandle, int icon) {
        if (icon == -1) return;
        if (!isHandle) return paintImage(cell, icon);
        const int edge = iconEdge(cell.bottom - cell.top);
        const auto handle = reinterpret_cast<HICON>(static_cast<INT_PTR>(icon));
        if (!::DrawIconEx(m_dc, (cell.left + cell.right) / 2, cell.top, handle, edge, edge, 0, nullptr, DI_NORMAL))
            drawCellText(m_dc, "Failed to draw icon", cell, CellAlign::centre);
    }

    void paintImage(const RECT& cell, int image) {
        const HIMAGELIST images = m_grid.m_native.imageList(LVSIL_NORMAL);
        if (!images) return;
        ::ImageList_DrawEx(images, image, m_dc, cell.left, cell.top, kCellImageSize.cx, kCellImageSize.cy, 0x00FFFFFF,
                           0x00FFFFFF, ILD_TRANSPARENT | (m_state & LVIS_OVERLAYMASK));
    }

    void paintCheck() {
        if ((m_state & LVIS_STATEIMAGEMASK) == 0) return;
        if (const HIMAGELIST images = m_grid.m_native.imageList(LVSIL_STATE))
            ::ImageList_Draw(images, m_grid.GetCheck(m_visual), m_dc, m_row.left, m_row.top, ILD_TRANSPARENT);
    }

    CFilterListCtrl& m_grid;
    CDC& m_dc;
    int m_visual;
    RECT m_row;
    RowLook m_look;
    UINT m_state;
    DWORD_PTR m_data = 0;
    COLORREF m_rowText = 0;
};

void CFilterListCtrl::DrawItem(LPDRAWITEMSTRUCT item) {
    if (!UseFilter) return CCommonListCtrl::DrawItem(item);
    const int visual = static_cast<int>(item->itemID);
    if (visual > GetDisplayCount()) return;
    if (!hasTextCallback()) return CCommonListCtrl::DrawItem(item);  // an owner can paint a grid without a callback
    if (visual < 0 || visual >= GetDisplayCount() || visual >= GetItemCount()) return;
    // The control's rectangle may leave out the margin left of the first column.
    const RECT bounds = m_native.layout().rowRect(visual);
    const RECT row{bounds.left, item->rcItem.top, bounds.right, item->rcItem.bottom};
    const DcStateScope state(item->hDC);
    RowPainter(*this, *CDC::FromHandle(item->hDC), visual, row).paint();
}

RowLook CFilterListCtrl::rowLook(int visual) {
    RowLook look;
    look.alternateRows = AlternateRows;
    look.evenRows = AlternateColor1;
    look.oddRows = AlternateColor2;
    look.greyedOut = GreyedOut;
    look.checkedStandsOut = SortOnCheckedFlag && GetCheck(visual) > 0;
    look.listDefaults = {m_native.textColor(), m_native.backColor()};
    return look;
}

// The base list's colour routine: the grid's own, or one that the owner set.
void CFilterListCtrl::applyKeywordColor(DWORD_PTR data, COLORREF& textColor) {
    if (!m_Appearance.bKeywordsEnabled || !m_pfnGetTextColor) return;
    const auto own = static_cast<TextColorCallback>(&CFilterListCtrl::GetTextColorForItem);
    CWnd* const target = m_pfnGetTextColor == own ? this : callbackOwner();
    if (target) (target->*m_pfnGetTextColor)(data, textColor, 0, 0);
}

void CFilterListCtrl::fillArea(CDC& dc, const RECT& area, COLORREF color) {
    if (DrawShades) {
        fillGradient(dc, area, {color, kColorShadeEnd});
    } else {
        dc.FillSolidRect(&area, color);
    }
}

// ---- Custom draw

BOOL CFilterListCtrl::OnNMCustomdraw(NMHDR* header, LRESULT* result) {
    if (!CustomDrawMode || !m_bCustomDraw || !UseFilter) return FALSE;
    auto& draw = *reinterpret_cast<NMLVCUSTOMDRAW*>(header);
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            *result = CDRF_NOTIFYITEMDRAW;
            break;
        case CDDS_ITEMPREPAINT:
            *result = CDRF_NOTIFYSUBITEMDRAW;
            break;
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
            *result = drawCell(draw);
            break;
        default:
            *result = CDRF_DODEFAULT;
            break;
    }
    return TRUE;
}

LRESULT CFilterListCtrl::drawCell(NMLVCUSTOMDRAW& draw) {
    const int visual = static_cast<int>(draw.nmcd.dwItemSpec);
    const int columnIndex = GetOriginalColumnPosition(draw.iSubItem);
    const DWORD_PTR data = GetItemData(visual);
    RECT cell;
    if (data == 0 || columnIndex < 0 || columnIndex >= m_arrColumns.GetSize() ||
        !m_native.labelRect(visual, draw.iSubItem, cell))
        return CDRF_DODEFAULT;
    CString text;
    RowColors colors;
    int icon = -1;
    if (!GetColumnText(data, columnIndex, text, colors.text, colors.background, icon, false)) return CDRF_DODEFAULT;

    applyKeywordColor(data, colors.text);
    RowLook look = rowLook(visual);
    look.greyedOut = false;
    colors = finalColors(look, colors);
    if ((m_native.itemState(visual, kPaintedState) & LVIS_SELECTED) && !NoSelectionPaint)
        colors = {kColorSelectedText, (m_hasFocus ? kSelectionWithFocus : kSelectionWithoutFocus).from};

    const DcStateScope state(draw.nmcd.hdc);
    CDC& dc = *CDC::FromHandle(draw.nmcd.hdc);
    constexpr int marginOfFirstCell = 4;
    RECT ground = cell;
    if (draw.iSubItem == 0) ground.left -= marginOfFirstCell;
    dc.FillSolidRect(&ground, colors.background);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(colors.text);
    const sQuorColInfo& record = m_arrColumns.GetAt(columnIndex);
    const CellAlign align = cellAlign(record.iFormat);
    if (align == CellAlign::icon) return CDRF_SKIPDEFAULT;
    if (wantsGrouping(record.iDataType, text)) text = GetCommaData(text);
    RECT place = textRect(cell, align);
    dc.DrawText(text, &place, textFlags(align) | DT_NOPREFIX | DT_END_ELLIPSIS);
    return CDRF_SKIPDEFAULT;
}

// ---- Row height and erasing

void CFilterListCtrl::MeasureItem(LPMEASUREITEMSTRUCT item) {
    if (LinesPerRow < 2) LinesPerRow = 1;
    LOGFONT font{};
    if (const CFont* const own = GetFont()) own->GetLogFont(&font);
    item->itemHeight = static_cast<UINT>(rowHeightFor(font.lfHeight, LinesPerRow));
}

BOOL CFilterListCtrl::OnEraseBkgnd(CDC* dc) {
    if (!UseFilter) return CCommonListCtrl::OnEraseBkgnd(dc);
    if (AlternateRows) {
        eraseStripes(*dc);
        return TRUE;
    }
    if (!m_bFillEmptyArea) return CCommonListCtrl::OnEraseBkgnd(dc);
    if (GetDisplayCount() == 0) return CListCtrl::OnEraseBkgnd(dc);
    eraseOutsideRows(*dc);
    return TRUE;
}

// Stripes count from the top of the page, not from row 0.
void CFilterListCtrl::eraseStripes(CDC& dc) {
    const DcStateScope state(dc);
    const RowLayout& layout = m_native.layout();
    RECT stripe{0, 0, layout.clientWidth, layout.clientHeight};
    dc.FillSolidRect(&stripe, AlternateColor2);
    if (layout.rowHeight == 0) return;
    for (int i = 0; i <= layout.countPerPage; ++i) {
        stripe.top = layout.rowRect(layout.topIndex + i).top;
        stripe.bottom = stripe.top + layout.rowHeight;
        dc.FillSolidRect(&stripe, i % 2 == 0 ? AlternateColor1 : AlternateColor2);
    }
}

void CFilterListCtrl::eraseOutsideRows(CDC& dc) {
    RECT clip;
    if (dc.GetClipBox(&clip) == NULLREGION) return;
    const DcStateScope state(dc);
    const RowLayout& layout = m_native.layout();
    const int last = std::min(layout.topIndex + layout.countPerPage, GetDisplayCount() - 1);
    RECT rows = layout.rowRect(layout.topIndex);
    rows.bottom = layout.rowRect(last).bottom;
    for (const RECT& part : areaOutsideCells({0, 0, layout.clientWidth, layout.clientHeight}, rows)) {
        RECT common;
        if (::IntersectRect(&common, &part, &clip)) fillArea(dc, part, m_native.backColor());
    }
}
