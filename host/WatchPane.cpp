#include "host/WatchPane.h"

#include <algorithm>

#include "host/HeaderPaint.h"
#include "host/Theme.h"
#include "host/WatchText.h"
#include "host/resource.h"

namespace terminal {

namespace {
constexpr int left = 0, right = 1;
constexpr int typeText = 3, typeWhole = 4, typeDecimal = 5, typeTime = 6;
constexpr ColumnSpec columns[watchColumns] = {
    {"Symbol", 92, left, typeText},    {"Series", 52, left, typeText},     {"Last", 78, right, typeDecimal},
    {"LTQ", 62, right, typeWhole},     {"Change", 70, right, typeDecimal}, {"Change %", 70, right, typeDecimal},
    {"Bid Qty", 66, right, typeWhole}, {"Bid", 78, right, typeDecimal},    {"Ask", 78, right, typeDecimal},
    {"Ask Qty", 66, right, typeWhole}, {"Spread", 62, right, typeDecimal}, {"Open", 78, right, typeDecimal},
    {"High", 78, right, typeDecimal},  {"Low", 78, right, typeDecimal},    {"Close", 78, right, typeDecimal},
    {"Volume", 88, right, typeWhole},  {"Value", 78, right, typeDecimal},  {"Average", 78, right, typeDecimal},
    {"OI", 82, right, typeWhole},      {"Time", 74, right, typeTime},
};

COLORREF colourOf(const WatchRow& row, Watch column) {
    const auto bySign = [](auto value) { return value > 0 ? palette::up : value < 0 ? palette::down : palette::text; };
    switch (column) {
        case Watch::symbol:
            return palette::symbol;
        case Watch::series:
        case Watch::time:
        case Watch::spread:
        case Watch::openInterest:
            return palette::dim;
        case Watch::last:
            return bySign(static_cast<int>(row.direction));
        case Watch::change:
        case Watch::changePercent:
            return row.quote.has(quoteClose) ? bySign(row.quote.last - row.quote.close) : palette::text;
        case Watch::bid:
        case Watch::bidSize:
            return palette::up;
        case Watch::ask:
        case Watch::askSize:
            return palette::down;
        default:
            return palette::text;
    }
}
}  // namespace

BEGIN_MESSAGE_MAP(CWatchList, CCommonListCtrl)
    ON_WM_PAINT()
END_MESSAGE_MAP()

// Header items may have been dragged and sized: their rectangles are asked for once a paint.
void CWatchList::measureCells() {
    const HWND header = reinterpret_cast<HWND>(SendMessage(LVM_GETHEADER));
    const int count = static_cast<int>(::SendMessageA(header, HDM_GETITEMCOUNT, 0, 0));
    const int scrolled = GetScrollPos(SB_HORZ);
    m_cells.resize(static_cast<std::size_t>((std::max)(0, count)));
    for (int place = 0; place < count; ++place) {
        RECT item{};
        ::SendMessageA(header, HDM_GETITEMRECT, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
        m_cells[static_cast<std::size_t>(place)] = {static_cast<int>(item.left) - scrolled,
                                                    static_cast<int>(item.right - item.left)};
    }
}

void CWatchList::OnPaint() {
    drawnRows.clear();
    measureCells();
    CCommonListCtrl::OnPaint();
    m_figures.paintEnded(m_figures.now(), drawnRows.size() != 0);
}

BOOL CWatchList::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (paintHeader(*this, reinterpret_cast<NMHDR*>(lParam), result)) return TRUE;
    return CCommonListCtrl::OnNotify(wParam, lParam, result);
}

BEGIN_MESSAGE_MAP(CWatchPane, CListPane)
    ON_WM_DRAWITEM()
END_MESSAGE_MAP()

CWatchPane::CWatchPane(PaintFigures& figures) : CListPane("Market Watch"), m_list(figures) {}

BOOL CWatchPane::createList() {
    describeColumns(columns, watchColumns);
    const CRect none(0, 0, 0, 0);
    m_list.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDRAWFIXED | LVS_SHOWSELALWAYS, none, this,
                  IDC_WATCH);
    if (!m_list.GetSafeHwnd()) return FALSE;
    m_list.SetExtendedStyle(m_list.GetExtendedStyle() | LVS_EX_DOUBLEBUFFER);
    m_list.InsertColumnsForList(nullptr);
    return TRUE;
}

int CWatchPane::selectedRow() const { return m_list.CListCtrl::GetNextItem(-1, LVNI_SELECTED); }

void CWatchPane::addInstrument(const Instrument& news) {
    if (news.id != m_rows.size()) return;  // ids are an index; a feed that breaks this is counted by the tally
    holdRedraw();
    m_rows.emplace_back().instrument = news;
    const int row = static_cast<int>(news.id);
    m_list.InsertItem(row, news.symbol.c_str());
    m_rows.back().written[0] = news.symbol;
    m_rows.back().dirty = true;
    m_dirty.push_back(row);
}

void CWatchPane::quote(const Quote& news) {
    if (news.instrument >= m_rows.size()) return;
    WatchRow& row = m_rows[news.instrument];
    if (news.has(quoteLast) && row.quote.has(quoteLast) && news.last != row.quote.last)
        row.direction = news.last > row.quote.last ? Move::up : Move::down;
    mergeQuote(row.quote, news);
    if (row.dirty) return;
    row.dirty = true;
    m_dirty.push_back(static_cast<int>(news.instrument));
}

// Each text written to a visible list would invalidate its cell by a call to the system of its own.
void CWatchPane::holdRedraw() {
    if (m_held) return;
    m_held = true;
    m_list.SetRedraw(FALSE);
}

void CWatchPane::releaseRedraw() {
    if (!m_held) return;
    m_held = false;
    m_list.SetRedraw(TRUE);
    m_list.Invalidate(FALSE);
}

void CWatchPane::writeRow(int rowNumber) {
    WatchRow& row = m_rows[static_cast<std::size_t>(rowNumber)];
    row.dirty = false;
    TextBuffer buffer;
    for (int columnIndex = 0; columnIndex < watchColumns; ++columnIndex) {
        std::string& written = row.written[static_cast<std::size_t>(columnIndex)];
        const std::string_view text = watchText(row, static_cast<Watch>(columnIndex), buffer);
        if (text == written) continue;
        written.assign(text);
        const int place = m_list.m_arrOrder[columnIndex];
        if (place >= 0) m_list.SetItemText(rowNumber, place, written.c_str());
    }
}

void CWatchPane::writeChanged(int maxOthers) {
    if (m_dirty.empty()) return;
    holdRedraw();
    const int top = m_list.GetTopIndex();
    const int end = top + m_list.GetCountPerPage() + 1;
    // Rows in view leave the queue now, the others in the order in which they entered it.
    std::size_t kept = 0;
    for (const int row : m_dirty) {
        const bool inView = row >= top && row < end;
        if (inView || maxOthers > 0) {
            if (!inView) --maxOthers;
            writeRow(row);
        } else {
            m_dirty[kept++] = row;
        }
    }
    m_dirty.resize(kept);
    releaseRedraw();
}

void CWatchPane::writeAll() {
    if (!m_dirty.empty()) holdRedraw();
    for (const int row : m_dirty) writeRow(row);
    m_dirty.clear();
    releaseRedraw();
}

bool CWatchPane::spoil() {
    const int place = m_rows.empty() ? -1 : m_list.m_arrOrder[static_cast<int>(Watch::last)];
    return place >= 0 && m_list.SetItemText(0, place, "0.00") != FALSE;
}

void CWatchPane::drawCell(CDC& dc, const WatchRow& row, int columnIndex, const char* text, int length, RECT cell,
                          bool selected) {
    const auto column = static_cast<Watch>(columnIndex);
    dc.SetTextColor(selected && column != Watch::symbol ? palette::text : colourOf(row, column));
    drawCellText(dc, text, length, cell, columns[columnIndex].format);
}

void CWatchPane::OnDrawItem(int id, LPDRAWITEMSTRUCT item) {
    if (id != IDC_WATCH || item->itemID >= m_rows.size()) return;
    const int rowNumber = static_cast<int>(item->itemID);
    const WatchRow& row = m_rows[item->itemID];
    CDC& dc = *CDC::FromHandle(item->hDC);
    RECT area = item->rcItem;
    area.left = 0;
    RECT client;
    m_list.GetClientRect(&client);
    area.right = client.right;
    const bool selected = (item->itemState & ODS_SELECTED) != 0;
    const COLORREF back = selected ? palette::selection : rowNumber % 2 ? palette::stripe : palette::background;
    dc.FillSolidRect(&area, back);
    dc.SetBkMode(TRANSPARENT);
    DrawnRow& drawn = m_list.drawnRows.begin(rowNumber, &row);
    char text[128];
    for (std::size_t place = 0; place < m_list.cells().size(); ++place) {
        const CWatchList::Cell& cell = m_list.cells()[place];
        if (cell.left >= client.right || cell.left + cell.width <= 0) continue;
        const int columnIndex = m_list.GetOriginalColumnPosition(static_cast<int>(place));
        if (columnIndex < 0 || columnIndex >= watchColumns) continue;
        const int length = m_list.CListCtrl::GetItemText(rowNumber, static_cast<int>(place), text, sizeof text);
        const RECT box{cell.left, area.top, cell.left + cell.width, area.bottom};
        drawCell(dc, row, columnIndex, text, length, box, selected);
        DrawnRows::note(drawn, columnIndex, {text, static_cast<std::size_t>(length)});
    }
}

}  // namespace terminal
