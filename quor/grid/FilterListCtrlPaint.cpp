// Painting. Rows paint their own ground and the erase paints only where no row stands, so a repaint of the dirty
// rectangle needs no erasing. Two routes, owner draw (DrawItem) for a whole row and custom draw for a cell at a time,
// ask for a cell and find its colours in one way (CellPainter).
//
// The host is asked for every cell and may change the rows meanwhile, or end the grid: a row is painted on only while
// it stands where it stood.
#include "quor/foundation/ControlBlock.h"
#include "quor/grid/FilterListCtrlInternal.h"
#include "quor/list/core/CellTips.h"
#include "quor/list/core/ListLayout.h"

#include <cstring>
#include <vector>

using namespace quor::grid;
using namespace quor::list;

namespace {

constexpr UINT kPaintedState = LVIS_STATEIMAGEMASK | LVIS_OVERLAYMASK | LVIS_SELECTED;
constexpr SIZE kCellImageSize{16, 17};
constexpr COLORREF kNoBlend = RGB(255, 255, 255);  // not seen: the image is transparent and blends with nothing

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

// The text may be shortened in place, and the ellipsis needs room.
void drawCellText(CDC& dc, const CString& text, RECT rect, CellAlign align) {
    constexpr std::size_t kEllipsisRoom = 4;
    const auto length = static_cast<std::size_t>(text.GetLength());
    char small[128];
    std::vector<char> large;
    char* buffer = small;
    if (length + kEllipsisRoom + 1 > sizeof small) {
        large.resize(length + kEllipsisRoom + 1);
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

// A cell of a row, whichever route asks for it.
class CFilterListCtrl::CellPainter {
public:
    CellPainter(CFilterListCtrl& grid, HDC dc, int visual)
        : m_grid(grid),
          m_presence(grid),
          m_dc(*CDC::FromHandle(dc)),
          m_visual(visual),
          m_look(lookOf(grid, visual)),
          m_state(grid.m_parts->native.itemState(visual, kPaintedState)),
          m_changes(grid.m_parts->rows.changes()),
          m_data(grid.GetItemData(visual)) {}

    DWORD_PTR data() const { return m_data; }
    UINT state() const { return m_state; }
    const RowLook& look() const { return m_look; }
    bool showsSelection() const { return (m_state & LVIS_SELECTED) != 0 && !m_grid.NoSelectionPaint; }

    // The host's answer, before the row's own colours.
    struct Cell : CellAnswer {
        const sQuorColInfo* record = nullptr;  // null: not a column of the list
    };

    // False: the host has no text, or the row is not there any more.
    bool ask(int columnIndex, Cell& cell) {
        if (!m_grid.m_parts->askCell(m_data, columnIndex, cell) || !stillStands()) return false;
        if (columnIndex >= 0 && columnIndex < m_grid.m_arrColumns.GetSize())
            cell.record = &m_grid.m_arrColumns.GetAt(columnIndex);
        return true;
    }

    // The colours of the row, once the host's are known: keywords, defaults, checked and greyed-out rows.
    bool finish(RowColors& colors) {
        if (!applyKeywordColor(colors.text)) return false;
        colors = finalColors(m_look, colors);
        return true;
    }

    void group(Cell& cell) const { m_grid.GroupDigits(cell.record->iDataType, cell.text); }
    bool labelRect(int place, RECT& rect) const {
        return m_grid.m_parts->native.labelRect(m_grid.m_parts->rows.layout(), m_visual, place, rect);
    }
    bool gone() const { return m_presence.gone(); }

protected:
    // The grid is there, and the row is where it was.
    bool stillStands() {
        if (m_presence.gone()) return false;
        const unsigned changes = m_grid.m_parts->rows.changes();
        if (changes == m_changes) return true;
        m_changes = changes;
        if (m_grid.GetItemData(m_visual) == m_data) return true;
        m_grid.m_parts->native.invalidateAll();
        return false;
    }

    CFilterListCtrl& m_grid;
    Presence m_presence;
    CDC& m_dc;
    int m_visual;
    RowLook m_look;
    UINT m_state;
    unsigned m_changes;
    DWORD_PTR m_data;

private:
    static RowLook lookOf(CFilterListCtrl& grid, int visual) {
        RowLook look;
        look.alternateRows = grid.AlternateRows;
        look.evenRows = grid.AlternateColor1;
        look.oddRows = grid.AlternateColor2;
        look.greyedOut = grid.GreyedOut && !grid.paintsByCustomDraw();
        look.checkedStandsOut = grid.SortOnCheckedFlag && grid.GetCheck(visual) > 0;
        look.listDefaults = {grid.m_parts->native.textColor(), grid.m_parts->native.backColor()};
        return look;
    }

    // The base list's colour routine: the grid's own, or one that the owner set.
    bool applyKeywordColor(COLORREF& textColor) {
        if (!m_grid.m_Appearance.bKeywordsEnabled || !m_grid.m_pfnGetTextColor) return true;
        const auto own = static_cast<TextColorCallback>(&CFilterListCtrl::GetTextColorForItem);
        CWnd* const target = m_grid.m_pfnGetTextColor == own ? &m_grid : m_grid.callbackOwner();
        if (target) (target->*m_grid.m_pfnGetTextColor)(m_data, textColor, 0, 0);
        return stillStands();
    }
};

// One row, as DrawItem paints it.
class CFilterListCtrl::RowPainter : private CellPainter {
public:
    RowPainter(CFilterListCtrl& grid, HDC dc, int visual, const RECT& row)
        : CellPainter(grid, dc, visual), m_row(row) {}

    void paint() {
        m_dc.SetBkMode(TRANSPARENT);
        if (m_data == 0) return paintBlank();
        const int first = m_grid.m_nFirstColumn;
        if (first < 0 || first >= m_grid.m_arrOrder.GetSize() || m_grid.m_arrOrder.GetAt(first) != 0) return;
        bool groundIsDone = false;
        for (INT_PTR i = 0; !gone() && i < m_grid.m_arrVisible.GetSize(); ++i) {
            const sVisibleColumn column = m_grid.m_arrVisible.GetAt(i);
            if (column.iVisiblePosition == -1 && column.iColumnIndex != 0) continue;
            if (!paintColumn(column, groundIsDone)) return;
            groundIsDone = true;
        }
    }

private:
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
        Cell cell;
        cell.colors = startingColors(m_look, m_visual);
        if (!ask(column.iColumnIndex, cell)) return false;
        if (!groundIsDone && !paintGround(cell.colors)) return false;
        m_grid.PaintTrend(m_dc, m_visual, column.iColumnIndex, column.iVisiblePosition, cell.text, m_rowText);
        if (gone()) return false;
        if (column.iVisiblePosition != -1) paintCell(column.iVisiblePosition, cell);
        paintCheck();
        return true;
    }

    bool paintGround(RowColors colors) {
        if (!finish(colors)) return false;
        if (m_grid.DrawShades || !m_grid.NoRowFill) fill(colors.background);
        m_rowText = colors.text;
        m_dc.SetTextColor(colors.text);
        if (!showsSelection()) return true;
        paintSelection();
        m_rowText = kColorSelectedText;
        return true;
    }

    void paintCell(int place, Cell& cell) {
        RECT rect;
        if (!cell.record || !labelRect(place, rect)) return;
        const CellAlign align = cellAlign(cell.record->iFormat);
        if (align == CellAlign::icon) return paintIcon(rect, isNumericType(cell.record->iDataType), cell.icon);
        group(cell);
        drawCellText(m_dc, cell.text, cellTextArea(rect, cell.record->iFormat), align);
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
        const HIMAGELIST images = m_grid.m_parts->native.imageList(LVSIL_NORMAL);
        if (!images) return;
        ::ImageList_DrawEx(images, image, m_dc, cell.left, cell.top, kCellImageSize.cx, kCellImageSize.cy, kNoBlend,
                           kNoBlend, ILD_TRANSPARENT | (m_state & LVIS_OVERLAYMASK));
    }

    void paintCheck() {
        if ((m_state & LVIS_STATEIMAGEMASK) == 0) return;
        if (const HIMAGELIST images = m_grid.m_parts->native.imageList(LVSIL_STATE))
            ::ImageList_Draw(images, m_grid.GetCheck(m_visual), m_dc, m_row.left, m_row.top, ILD_TRANSPARENT);
    }

    RECT m_row;
    COLORREF m_rowText = 0;
};

void CFilterListCtrl::DrawItem(LPDRAWITEMSTRUCT item) {
    if (!UseFilter) return CCommonListCtrl::DrawItem(item);
    const int visual = static_cast<int>(item->itemID);
    if (visual > GetDisplayCount()) return;
    if (!hasTextCallback()) return CCommonListCtrl::DrawItem(item);  // an owner can paint a grid without a callback
    if (visual < 0 || visual >= GetDisplayCount() || visual >= GetItemCount()) return;
    // The control's rectangle may leave out the margin left of the first column.
    const RECT bounds = m_parts->rows.layout().rowRect(visual);
    const RECT row{bounds.left, item->rcItem.top, bounds.right, item->rcItem.bottom};
    const DcStateScope state(item->hDC);
    RowPainter(*this, item->hDC, visual, row).paint();
}

void CFilterListCtrl::fillArea(CDC& dc, const RECT& area, COLORREF color) {
    if (DrawShades) {
        fillGradient(dc, area, {color, kColorShadeEnd});
    } else {
        dc.FillSolidRect(&area, color);
    }
}

// The host is not asked for a text to find out where a cell is.
bool CFilterListCtrl::CellAt(CPoint point, int& item, int& place) {
    if (!UseFilter) return CCommonListCtrl::CellAt(point, item, place);
    const Presence presence(*this);
    m_parts->rows.settle();
    if (presence.gone() || !hasTextCallback()) return false;
    const CellPlace cell = m_parts->native.cellAt(point);
    item = cell.visual;
    place = cell.place;
    return item >= 0 && item < GetDisplayCount() && place >= 0;
}

bool CFilterListCtrl::LabelRect(int item, int place, CRect& label) {
    if (!UseFilter) return CCommonListCtrl::LabelRect(item, place, label);
    return m_parts->native.labelRect(m_parts->rows.layout(), item, place, label);
}

// ---- Custom draw

bool CFilterListCtrl::paintsByCustomDraw() const { return CustomDrawMode && m_bCustomDraw; }

BOOL CFilterListCtrl::OnNMCustomdraw(NMHDR* header, LRESULT* result) {
    if (!paintsByCustomDraw() || !UseFilter) return FALSE;
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
    const int columnIndex = GetOriginalColumnPosition(draw.iSubItem);
    CellPainter painter(*this, draw.nmcd.hdc, static_cast<int>(draw.nmcd.dwItemSpec));
    RECT rect;
    if (painter.data() == 0 || columnIndex < 0 || columnIndex >= m_arrColumns.GetSize() ||
        !painter.labelRect(draw.iSubItem, rect))
        return CDRF_DODEFAULT;
    CellPainter::Cell cell;
    if (!painter.ask(columnIndex, cell) || !cell.record || !painter.finish(cell.colors)) return CDRF_DODEFAULT;
    if (painter.showsSelection())
        cell.colors = {kColorSelectedText, (m_hasFocus ? kSelectionWithFocus : kSelectionWithoutFocus).from};

    const DcStateScope state(draw.nmcd.hdc);
    CDC& dc = *CDC::FromHandle(draw.nmcd.hdc);
    RECT ground = rect;
    if (draw.iSubItem == 0) ground.left -= kMarginOfFirstCell;
    dc.FillSolidRect(&ground, cell.colors.background);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(cell.colors.text);
    const CellAlign align = cellAlign(cell.record->iFormat);
    if (align == CellAlign::icon) return CDRF_SKIPDEFAULT;
    painter.group(cell);
    RECT place = cellTextArea(rect, cell.record->iFormat);
    dc.DrawText(cell.text, &place, textFlags(align) | DT_NOPREFIX | DT_END_ELLIPSIS);
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
    const RowLayout& layout = m_parts->rows.layout();
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
    const RowLayout& layout = m_parts->rows.layout();
    const int last = std::min(layout.topIndex + layout.countPerPage, GetDisplayCount() - 1);
    RECT rows = layout.rowRect(layout.topIndex);
    rows.bottom = layout.rowRect(last).bottom;
    for (const RECT& part : areaOutsideCells({0, 0, layout.clientWidth, layout.clientHeight}, rows)) {
        RECT common;
        if (::IntersectRect(&common, &part, &clip)) fillArea(dc, part, m_parts->native.backColor());
    }
}
