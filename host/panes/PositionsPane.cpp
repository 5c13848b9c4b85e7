#include "host/panes/PositionsPane.h"

#include "host/panes/HostEntries.h"
#include "host/panes/Theme.h"
#include "host/resource/resource.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace terminal {

namespace {
using Column = PositionColumn;
constexpr int kColumnCount = static_cast<int>(Column::count);
constexpr int kLeft = 0, kRight = 1;
constexpr ColumnSpec kColumns[kColumnCount] = {
    {"Symbol", 64, kLeft, kTypeMixed},   {"Qty", 58, kRight, kTypeDecimal},       {"Average", 78, kRight, kTypeDecimal},
    {"Last", 78, kRight, kTypeDecimal},  {"Value", 98, kRight, kTypeDecimal},     {"Day P&L", 80, kRight, kTypeDecimal},
    {"Day %", 58, kRight, kTypeDecimal}, {"Total P&L", 88, kRight, kTypeDecimal}, {"Total %", 60, kRight, kTypeDecimal},
};
constexpr Column kTrendColumns[] = {Column::last, Column::day, Column::total};
constexpr int kFlashMilliseconds = 1'000;

std::string_view signedNumber(const std::optional<double>& value, TextBuffer& buffer) {
    if (!value) return {};
    const int length = std::snprintf(buffer.text, sizeof buffer.text, "%+.2f", *value);
    return withoutZeroSign({buffer.text, (std::min)(static_cast<std::size_t>(length), sizeof buffer.text - 1)});
}

std::string_view plainNumber(double value, TextBuffer& buffer) {
    const std::string_view text = signedNumber(value, buffer);
    return text.starts_with('+') ? text.substr(1) : text;
}

const Position& positionOf(const void* row) {
    return *static_cast<const PositionRow*>(static_cast<const CFilterListBaseData*>(row))->position;
}

PaintStamp& stampOf(void* row) { return static_cast<PositionRow*>(static_cast<CFilterListBaseData*>(row))->stamp; }
}  // namespace

std::string_view positionText(const Position& position, PositionColumn column, TextBuffer& buffer) {
    const int decimals = decimalsOf(position.instrument.tickSize);
    switch (column) {
        case Column::symbol:
            return position.instrument.symbol;
        case Column::quantity:
            return formatQuantity(position.quantity, buffer);
        case Column::average:
            return formatPrice(position.average, decimals, buffer);
        case Column::last:
            return formatPrice(position.last, decimals, buffer);
        case Column::value:
            return plainNumber(valueOf(position), buffer);
        case Column::day:
            return signedNumber(dayResult(position).money, buffer);
        case Column::dayPercent:
            return signedNumber(dayResult(position).percent, buffer);
        case Column::total:
            return signedNumber(totalResult(position).money, buffer);
        case Column::totalPercent:
            return signedNumber(totalResult(position).percent, buffer);
        case Column::count:
            break;
    }
    return {};
}

CPositionsPane::CPositionsPane(PaintFigures& figures, std::uint64_t seed)
    : CListPane("Positions"), m_positions(seed), m_grid(figures) {
    m_grid.setStampOf(&stampOf);
}

BOOL CPositionsPane::createList() {
    describeColumns(kColumns, kColumnCount);
    m_grid.InitColumnTextRtn(static_cast<ColumnTextMemberCallback>(&CPositionsPane::cellText));
    m_grid.m_bLockSortEnabled = 1;
    if (!m_grid.CreateGrid(this, IDC_POSITIONS)) return FALSE;
    m_grid.InsertColumnsForList(nullptr);
    if (!settingStored(title(), "TrendColumns")) setTrends();
    return TRUE;
}

// Of a user who has chosen none yet.
void CPositionsPane::setTrends() {
    m_grid.PosColor = palette::kRiseFlash;
    m_grid.NegColor = palette::kFallFlash;
    m_grid.TrendInterval = kFlashMilliseconds;
    CArray<int, int> columns;
    for (const Column column : kTrendColumns) columns.Add(static_cast<int>(column));
    m_grid.SetTrendColumns(&columns);
}

int CPositionsPane::cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& color, COLORREF& back, int&) {
    if (columnIndex < 0 || columnIndex >= kColumnCount) return 0;
    TextBuffer buffer;
    const Position& position = positionOf(reinterpret_cast<const void*>(data));
    const std::string_view cell = positionText(position, static_cast<Column>(columnIndex), buffer);
    assignText(text, cell);
    color = m_grid.m_Appearance.crText;
    back = m_grid.m_Appearance.crBackground;
    m_grid.note(columnIndex, cell);
    return 1;
}

void CPositionsPane::quote(const Quote& news, std::int64_t now) {
    const Position* const position = m_positions.quote(news);
    if (!position) return;
    m_changed = true;
    if (m_rows.size() < m_positions.all().size()) {
        PositionRow& row = m_rows.emplace_back();
        row.position = position;
        m_grid.add(&row);
        m_grid.touched(&row, row.stamp, now);
        return;
    }
    const auto row =
        std::find_if(m_rows.begin(), m_rows.end(), [=](const auto& one) { return one.position == position; });
    m_grid.touched(&*row, row->stamp, now);
    m_grid.UpdateRow(&*row);
}

void CPositionsPane::showTotals() {
    if (!std::exchange(m_changed, false)) return;
    setRemark(totalsText());
    m_grid.resort();
}

std::string CPositionsPane::totalsText() {
    TextBuffer buffer;
    const Portfolio sum = m_positions.total();
    std::string text = countedIn(m_grid, static_cast<std::int64_t>(m_rows.size()), "position");
    text += "   " + grouped(m_grid, plainNumber(sum.value, buffer));
    for (const auto& [name, result] : {std::pair{"day", sum.day}, {"total", sum.total}}) {
        if (!result.money || !result.percent) continue;
        text += std::string("   ") + name + " " + grouped(m_grid, signedNumber(result.money, buffer)) + " (";
        text += std::string(signedNumber(result.percent, buffer)) + "%)";
    }
    return text;
}

}  // namespace terminal
