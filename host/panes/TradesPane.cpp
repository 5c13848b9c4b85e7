#include "host/panes/TradesPane.h"

#include "host/panes/Theme.h"
#include "host/resource/resource.h"

#include <cstdio>

namespace terminal {

namespace {
using Column = TradeColumn;
constexpr int kColumnCount = static_cast<int>(Column::count);
constexpr ColumnSpec kColumns[kColumnCount] = {
    {"Trade", 84, 0, 4}, {"Time", 110, 2, 6},  {"Symbol", 92, 0, 3},
    {"Price", 96, 1, 2}, {"Change", 84, 1, 2}, {"Qty", 90, 1, 2},
};

std::string_view cellOf(const TradeRow& row, const Instrument& instrument, Column column, TextBuffer& buffer) {
    const int decimals = decimalsOf(instrument.tickSize);
    switch (column) {
        case Column::number:
            return formatQuantity(row.number, buffer);
        case Column::time:
            return formatTimeOfDay(row.trade.time, buffer);
        case Column::symbol:
            return instrument.symbol;
        case Column::price:
            return formatPrice(row.trade.price, decimals, buffer);
        case Column::change:
            return formatChange(row.change, decimals, buffer);
        case Column::quantity:
            return formatQuantity(row.trade.quantity, buffer);
        case Column::count:
            break;
    }
    return {};
}

PaintStamp& stampOf(void* row) { return static_cast<TradeRow*>(static_cast<CFilterListBaseData*>(row))->stamp; }
}  // namespace

CTradesPane::CTradesPane(PaintFigures& figures, int keep)
    : CListPane("Trades"), m_keep(static_cast<std::size_t>(keep)), m_grid(figures) {
    m_grid.setStampOf(&stampOf);
}

BOOL CTradesPane::createList() {
    describeColumns(kColumns, kColumnCount);
    m_grid.InitColumnTextRtn(static_cast<ColumnTextMemberCallback>(&CTradesPane::cellText));
    if (!m_grid.CreateGrid(this, IDC_TRADES)) return FALSE;
    m_grid.m_bCellToolTips = 1;
    m_grid.m_Appearance.bKeywordsEnabled = 1;
    m_grid.SetReverseDisplay(true);
    m_grid.AnchorView(true);
    m_grid.InsertColumnsForList(nullptr);
    return TRUE;
}

int CTradesPane::cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& color, COLORREF& back, int&) {
    if (columnIndex < 0 || columnIndex >= kColumnCount) return 0;
    const auto& row = *static_cast<const TradeRow*>(reinterpret_cast<const CFilterListBaseData*>(data));
    TextBuffer buffer;
    const Instrument& instrument = m_instruments[row.trade.instrument].instrument;
    const std::string_view cell = cellOf(row, instrument, static_cast<Column>(columnIndex), buffer);
    assignText(text, cell);
    color = row.move == Move::up ? palette::kUp : row.move == Move::down ? palette::kDown : m_grid.m_Appearance.crText;
    back = m_grid.m_Appearance.crBackground;
    m_grid.note(columnIndex, cell);
    return 1;
}

void CTradesPane::instrument(const Instrument& news) {
    if (news.id == m_instruments.size()) m_instruments.push_back({news, kNoPrice, Move::none});
}

void CTradesPane::showCount() { setRemark(countedIn(m_grid, m_tradeCount, "trade")); }

void CTradesPane::trade(const Trade& news, std::int64_t now) {
    if (news.instrument >= m_instruments.size()) return;
    OfInstrument& of = m_instruments[news.instrument];
    TradeRow& row = m_rows.emplace_back();
    row.trade = news;
    row.number = ++m_tradeCount;
    if (of.last != kNoPrice) {
        row.change = news.price - of.last;
        if (row.change) of.move = row.change > 0 ? Move::up : Move::down;
    }
    row.move = of.move;
    of.last = news.price;
    m_grid.add(&row);
    m_grid.touched(&row, row.stamp, now);
}

void CTradesPane::dropOldest() {
    while (m_rows.size() > m_keep) {
        m_grid.remove(&m_rows.front());
        m_rows.pop_front();
    }
}

void CTradesPane::refillIfNeeded() {
    if (!m_grid.needsRefill()) return;
    m_grid.refill([this] {
        for (TradeRow& row : m_rows) m_grid.add(&row);
    });
}

}  // namespace terminal
