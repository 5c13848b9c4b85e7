#include "host/panes/ChainPane.h"

#include "host/panes/Theme.h"
#include "host/resource/resource.h"

#include <cstdio>

namespace terminal {

namespace {
using Column = ChainColumn;
constexpr int kColumnCount = static_cast<int>(Column::count);
constexpr int kRight = 1, kCentred = 2;
constexpr ColumnSpec kColumns[kColumnCount] = {
    {"Call Vega", 66, kRight, kTypeDecimal},  {"Call Theta", 70, kRight, kTypeDecimal},
    {"Call Gamma", 80, kRight, kTypeDecimal}, {"Call Delta", 72, kRight, kTypeDecimal},
    {"Call IV", 60, kRight, kTypeDecimal},    {"Call", 70, kRight, kTypeDecimal},
    {"Strike", 76, kCentred, kTypeDecimal},   {"Put", 70, kRight, kTypeDecimal},
    {"Put IV", 60, kRight, kTypeDecimal},     {"Put Delta", 72, kRight, kTypeDecimal},
    {"Put Gamma", 80, kRight, kTypeDecimal},  {"Put Theta", 70, kRight, kTypeDecimal},
    {"Put Vega", 66, kRight, kTypeDecimal},
};

constexpr bool sidesAreAlike() {
    for (int i = 0; i < kColumnCount / 2; ++i)
        if (kColumns[i].width != kColumns[kColumnCount - 1 - i].width) return false;
    return true;
}
static_assert(sidesAreAlike(), "calls and puts have columns of one width");

// The put's column of the same meaning.
constexpr Column mirrored(Column column) { return static_cast<Column>(kColumnCount - 1 - static_cast<int>(column)); }

std::string_view number(double value, int decimals, const char* unit, TextBuffer& buffer) {
    const int length = std::snprintf(buffer.text, sizeof buffer.text, "%.*f%s", decimals, value, unit);
    return withoutZeroSign({buffer.text, (std::min)(static_cast<std::size_t>(length), sizeof buffer.text - 1)});
}

// One side's cell; `column` is the put's. What is not known is empty.
std::string_view sideText(const OptionFigures& side, Column column, int decimals, TextBuffer& buffer) {
    if (!side.values) return {};
    switch (column) {
        case Column::putPrice:
            return number(side.values->price, decimals, "", buffer);
        case Column::putVolatility:
            return side.volatility ? number(*side.volatility * 100, 2, "%", buffer) : std::string_view();
        case Column::putDelta:
            return number(side.values->delta, 4, "", buffer);
        case Column::putGamma:
            return number(side.values->gamma, 5, "", buffer);
        case Column::putTheta:
            return number(side.values->theta, 4, "", buffer);
        case Column::putVega:
            return number(side.values->vega, 4, "", buffer);
        default:
            return {};
    }
}

COLORREF sideColour(Column column) {
    if (column == Column::putPrice) return palette::kText;
    return column == Column::putVolatility ? palette::kSymbol : palette::kDim;
}
}  // namespace

CChainPane::CChainPane(PaintFigures& figures, const CWatchPane& watch)
    : CListPane("Option chain"), m_figures(figures), m_watch(watch), m_grid(figures) {
    for (int i = 0; i < OptionChain::kStrikes; ++i) m_rows[static_cast<std::size_t>(i)].index = i;
}

BOOL CChainPane::createList() {
    describeColumns(kColumns, kColumnCount);
    m_grid.InitColumnTextRtn(static_cast<ColumnTextMemberCallback>(&CChainPane::cellText));
    if (!m_grid.CreateGrid(this, IDC_CHAIN)) return FALSE;
    // Each cell has colours of its own: custom draw, by which the grid paints cell by cell. The rows keep their height.
    m_grid.CustomDrawMode = true;
    m_grid.NoSelectionPaint = true;  // the callback gives its colours
    m_grid.m_bCustomDraw = 1;
    m_grid.ModifyStyle(LVS_OWNERDRAWFIXED, 0);
    m_grid.InsertColumnsForList(nullptr);
    return TRUE;
}

int CChainPane::cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& color, COLORREF& back, int&) {
    if (columnIndex < 0 || columnIndex >= kColumnCount) return 0;
    auto* const own = static_cast<Row*>(reinterpret_cast<CFilterListBaseData*>(data));
    const int index = own->index;
    const ChainRow& row = m_chain.rows()[static_cast<std::size_t>(index)];
    const Price price = m_chain.basis().price;
    const int decimals = decimalsOf(m_chain.basis().tickSize);
    const auto column = static_cast<Column>(columnIndex);
    TextBuffer buffer;
    std::string_view cell;
    if (column == Column::strike) {
        cell = formatPrice(row.strike, decimals, buffer);
        color = palette::kSymbol;
        back = palette::kSurface;
    } else {
        const bool call = column < Column::strike;
        const Column meaning = call ? mirrored(column) : column;
        cell = sideText(call ? row.call : row.put, meaning, decimals, buffer);
        color = sideColour(meaning);
        back = call && row.strike < price    ? palette::kUpBack
               : !call && row.strike > price ? palette::kDownBack
                                             : palette::kBackground;
    }
    if (index == m_chain.atTheMoney()) {
        back = palette::kAtMoney;
        if (color == palette::kDim) color = palette::kText;
    }
    m_grid.takeSelection(own, color, back);
    assignText(text, cell);
    return 1;
}

std::optional<ChainBasis> CChainPane::basisNow() {
    const WatchMarket& rows = m_watch.market();
    const auto shown = m_chain.empty() ? std::nullopt : std::optional(m_chain.basis().instrument);
    const auto chosen = chooseUnderlying(rows.size(), m_watch.selectedInstrument(), shown, [&rows](InstrumentId id) {
        return candidateOf(rows[id].instrument, rows[id].quote);
    });
    if (!chosen) return {};
    const WatchData& row = rows[*chosen];
    return ChainBasis{*chosen, row.instrument.series == "FUT", *underlyingPrice(row.quote), row.instrument.tickSize,
                      row.quote.time};
}

void CChainPane::update(std::int64_t now) {
    if (!m_chain.due(now)) return;
    const auto basis = basisNow();
    if (!basis) return;
    const bool first = m_chain.empty();
    const std::int64_t begin = m_figures.now();
    if (!m_chain.recompute(*basis, now, m_pricer)) return;
    m_costs.add(m_figures.now() - begin);
    for (Row& row : m_rows) {
        if (first)
            m_grid.add(&row);
        else
            m_grid.UpdateRow(&row);
    }
    processEndofBatchUpdates();
    show();
}

void CChainPane::show() {
    const ChainBasis& basis = m_chain.basis();
    const Instrument& instrument = m_watch.market()[basis.instrument].instrument;
    TextBuffer price, expiry;
    std::string remark = instrument.symbol;
    if (!instrument.series.empty()) remark.append(" ").append(instrument.series);
    remark.append("  ").append(grouped(m_grid, formatPrice(basis.price, decimalsOf(instrument.tickSize), price)));
    remark.append("    expires ").append(formatDateTime(m_chain.expiry(), expiry).substr(0, 10));
    setRemark(remark);
}

}  // namespace terminal
