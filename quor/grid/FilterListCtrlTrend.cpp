// Trend columns: their colours while a row is painted, the timer that takes the colours away, their settings. What a
// cell shows is decided by TrendStore.
#include "quor/foundation/TimerIds.h"
#include "quor/grid/FilterListCtrlInternal.h"
#include "quor/list/ListScopes.h"
#include "quor/list/ListSettings.h"

#include <algorithm>
#include <ctime>

using namespace quor::grid;
using namespace quor::list;

namespace {

constexpr char kColumnsKey[] = "TrendColumns";
constexpr char kTypeKey[] = "TrendType";
constexpr char kNegativeKey[] = "NegColor";
constexpr char kPositiveKey[] = "PosColor";
constexpr char kIntervalKey[] = "Interval";
constexpr char kBackgroundType[] = "TRUE";
constexpr char kTextType[] = "FALSE";

TrendTime timeNow(int interval) { return {static_cast<std::int32_t>(std::clock()), interval}; }

CString numberText(int number) {
    CString text;
    text.Format("%d", number);
    return text;
}

// A row of the page by its map index.
struct RowInView {
    std::int32_t mapIndex;
    int visual;
    auto operator<=>(const RowInView&) const = default;
};

std::vector<RowInView> rowsInView(LiveRows& rows, const RowLayout& layout) {
    std::vector<RowInView> found;
    const int last = std::min(layout.topIndex + layout.countPerPage + 1, rows.displayCount() - 1);
    for (int visual = layout.topIndex; visual <= last; ++visual)
        found.push_back({rows.mapIndexOfVisual(visual), visual});
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace

UINT_PTR CFilterListCtrl::TrendTimerId = 0;

// ---- Columns

int CFilterListCtrl::SetTrendColumns(CArray<int, int>* columns) {
    if (columns) setTrendColumns(toVector(*columns));
    return 1;
}

void CFilterListCtrl::setTrendColumns(const std::vector<int>& columns) {
    m_parts->rows.trends().set(columns, static_cast<int>(m_arrColumns.GetSize()), m_parts->rows.itemCount());
    startTrendTimer();
}

void CFilterListCtrl::ExtendTrendColumns() { m_parts->rows.trends().extend(m_parts->rows.itemCount()); }

void CFilterListCtrl::GetTrendColumns(CArray<int, int>& columns) const {
    assign(columns, m_parts->rows.trends().columns());
}

void CFilterListCtrl::OnColumnsMoved(const std::vector<int>& moved) {
    CCommonListCtrl::OnColumnsMoved(moved);
    const int count = static_cast<int>(m_arrColumns.GetSize());
    m_parts->rows.trends().moveColumns(moved, count);
    if (m_parts->filters.moveColumns(moved, count)) m_filterEnded = true;
    startTrendTimer();
}

// Starts it anew, or ends it if there is nothing to fade.
void CFilterListCtrl::startTrendTimer() {
    if (!m_hWnd) return;
    if (TrendTimerId != 0) KillTimer(kTrendFadeTimer);
    if (m_parts->rows.trends().isActive()) TrendTimerId = SetTimer(kTrendFadeTimer, kTrendFadePeriod);
}

// ---- Painting

// The fill lies under the text, and over whatever ground the row has. The text keeps the row's colour, unless the trend
// is to colour it.
void CFilterListCtrl::PaintTrend(CDC& dc, int visual, int columnIndex, int place, const CString& text,
                                 COLORREF rowText) {
    TrendStore& trends = m_parts->rows.trends();
    if (!trends.isActive() || !TrendEnabled) return;
    const int mapIndex = m_parts->rows.mapIndexOfVisual(visual);
    const TrendPaint paint = trends.paint(columnIndex, mapIndex, text, timeNow(TrendInterval));
    if (paint == TrendPaint::unchanged) return;
    if (paint == TrendPaint::normal || TrendBackground) dc.SetTextColor(rowText);
    if (paint == TrendPaint::normal || place == -1) return;
    const COLORREF color = paint == TrendPaint::positive ? PosColor : NegColor;
    if (!TrendBackground) {
        dc.SetTextColor(color);
        return;
    }
    const Presence presence(*this);
    RECT cell;
    const bool found = m_parts->native.labelRect(m_parts->rows.layout(), visual, place, cell);
    if (found && !presence.gone()) fillArea(dc, cell, color);
}

// Columns that are not on screen keep what they show. Asking for the layout may reach a host; nothing behind it does.
void CFilterListCtrl::FadeTrends() {
    LiveRows& rows = m_parts->rows;
    const Presence presence(*this);
    if (!rows.trends().isActive()) return;
    const RowLayout& layout = rows.layout();
    if (presence.gone()) return;
    std::vector<RowInView> inView;
    std::vector<CellPlace> cells;
    std::vector<std::int32_t> ended;
    for (INT_PTR i = 0; i < m_arrVisible.GetSize(); ++i) {
        const sVisibleColumn& column = m_arrVisible.GetAt(i);
        if (column.iVisiblePosition == -1) continue;
        ended.clear();
        rows.trends().fade(column.iColumnIndex, timeNow(TrendInterval), ended);
        if (!ended.empty() && inView.empty()) inView = rowsInView(rows, layout);
        for (const std::int32_t mapIndex : ended) {
            const auto row = std::lower_bound(inView.begin(), inView.end(), RowInView{mapIndex, 0});
            if (row != inView.end() && row->mapIndex == mapIndex)
                cells.push_back({row->visual, column.iVisiblePosition});
        }
    }
    if (!cells.empty()) m_parts->native.invalidateCells(std::move(cells));
}

// ---- Settings

void CFilterListCtrl::InsertColumnsForList(int* unused) {
    const Presence presence(*this);
    CCommonListCtrl::InsertColumnsForList(unused);
    if (!presence.gone() && TrendEnabled) ReadTrendSettings(m_csListName);
}

// The host may take the grid away with every answer.
void CFilterListCtrl::ReadTrendSettings(CString name) {
    const Presence presence(*this);
    CString value;
    const auto read = [&](const char* key) {
        value.Empty();
        return !presence.gone() && readListSetting(name, key, value) && !presence.gone();
    };
    const bool isText = read(kTypeKey) && value == kTextType;
    const COLORREF negative = read(kNegativeKey) ? static_cast<COLORREF>(quor::atol(value)) : kDefaultFallColor;
    const COLORREF positive = read(kPositiveKey) ? static_cast<COLORREF>(quor::atol(value)) : kDefaultRiseColor;
    const int interval = read(kIntervalKey) ? quor::atoi(value) : 0;
    const bool hasColumns = read(kColumnsKey) && !value.IsEmpty();
    if (presence.gone()) return;
    TrendBackground = !isText;
    NegColor = negative;
    PosColor = positive;
    TrendInterval = interval;
    if (hasColumns) setTrendColumns(parseTrendColumns(value));
}

void CFilterListCtrl::SaveColumnProfile() {
    const Presence presence(*this);
    CCommonListCtrl::SaveColumnProfile();
    if (presence.gone() || !TrendEnabled || !m_parts->rows.trends().isActive()) return;
    const std::pair<const char*, CString> settings[] = {
        {kColumnsKey, formatTrendColumns(m_parts->rows.trends().columns())},
        {kTypeKey, TrendBackground ? kBackgroundType : kTextType},
        {kNegativeKey, numberText(static_cast<int>(NegColor))},
        {kPositiveKey, numberText(static_cast<int>(PosColor))},
        {kIntervalKey, numberText(TrendInterval)}};
    const CString section = m_csListName;
    for (const auto& [key, value] : settings)
        if (!presence.gone()) writeListSetting(section, key, value);
}
