#include "host/panes/OrdersPane.h"

#include "host/panes/HostEntries.h"
#include "host/panes/Theme.h"
#include "host/resource/resource.h"

#include <algorithm>
#include <cstdio>

namespace terminal {

namespace {
using Column = OrderColumn;
constexpr int kColumnCount = static_cast<int>(Column::count);
// A sort repaints the whole pane: five times a second is as often as the watch.
constexpr std::int64_t kOrderPeriodMicros = 200'000;
constexpr ColumnSpec kColumns[kColumnCount] = {
    {"Order", 84, 0, 4}, {"Symbol", 92, 0, 3}, {"Side", 50, 0, 3},  {"Price", 96, 1, 2},
    {"Qty", 90, 1, 2},   {"Value", 118, 1, 2}, {"Time", 110, 2, 6},
};

// Price times quantity in currency units; a long product is cut to what fits rather than wrapped.
std::string_view valueText(Price price, Quantity quantity, TextBuffer& buffer) {
    const double value = static_cast<double>(price) / static_cast<double>(kPriceOne) * static_cast<double>(quantity);
    const int length = std::snprintf(buffer.text, sizeof buffer.text, "%.2f", value);
    return {buffer.text, static_cast<std::size_t>((std::min)(length, static_cast<int>(sizeof buffer.text) - 1))};
}

std::string_view orderText(const OrderRow& row, TextBuffer& buffer) {
    const int length = row.level < 0 ? std::snprintf(buffer.text, sizeof buffer.text, "%llu",
                                                     static_cast<unsigned long long>(row.order.id))
                                     : std::snprintf(buffer.text, sizeof buffer.text, "%s %d",
                                                     row.order.side == Side::sell ? "Ask" : "Bid", row.level + 1);
    return {buffer.text, static_cast<std::size_t>(length)};
}

std::string_view cellOf(const OrderRow& row, const Instrument& instrument, Column column, TextBuffer& buffer) {
    const Order& order = row.order;
    const bool empty = order.price == kNoPrice;
    switch (column) {
        case Column::order:
            return orderText(row, buffer);
        case Column::symbol:
            return instrument.symbol;
        case Column::side:
            return order.side == Side::buy ? "Buy" : "Sell";
        case Column::price:
            return formatPrice(order.price, decimalsOf(instrument.tickSize), buffer);
        case Column::quantity:
            return empty ? std::string_view() : formatQuantity(order.quantity, buffer);
        case Column::value:
            return empty ? std::string_view() : valueText(order.price, order.quantity, buffer);
        case Column::time:  // a level of a snapshot has none
            return empty || row.level >= 0 ? std::string_view() : formatTimeOfDay(order.time, buffer);
        case Column::count:
            break;
    }
    return {};
}

PaintStamp& stampOf(void* row) { return static_cast<OrderRow*>(static_cast<CFilterListBaseData*>(row))->stamp; }
}  // namespace

COrdersPane::COrdersPane(PaintFigures& figures) : CListPane("Orders"), m_grid(figures) { m_grid.setStampOf(&stampOf); }

BOOL COrdersPane::createList() {
    describeColumns(kColumns, kColumnCount);
    m_grid.InitColumnTextRtn(static_cast<ColumnTextMemberCallback>(&COrdersPane::cellText));
    m_grid.m_bLockSortEnabled = 1;
    if (!m_grid.CreateGrid(this, IDC_ORDERS)) return FALSE;
    m_grid.m_Appearance.bKeywordsEnabled = 1;
    m_grid.InsertColumnsForList(nullptr);
    if (!settingStored(title(), "SortLockInfo")) lockOnPrice();
    return TRUE;
}

// As the library reads a stored lock: the first sort shows the arrow.
void COrdersPane::lockOnPrice() {
    m_grid.m_nLockSortColumn = static_cast<int>(Column::price);
    m_grid.m_nLockSortOrder = 1;
    m_grid.m_bSortLocked = m_grid.m_bSorted = 1;
}

void COrdersPane::changing(const OrderRow& row, Price price) {
    if (m_grid.m_nLockSortColumn != static_cast<int>(Column::price) || row.order.price != price) m_outOfOrder = true;
}

void COrdersPane::update(OrderRow& row) {
    if (m_grid.UpdateRow(&row) > 0) m_outOfOrder = true;  // it passes a filter now, and came in by its arrival
}

void COrdersPane::keepOrder(std::int64_t now) {
    if (now - m_orderedAt < kOrderPeriodMicros) return;
    m_orderedAt = now;
    keepOrder();
}

void COrdersPane::keepOrder() {
    if (m_outOfOrder) m_grid.resort();
    m_outOfOrder = false;
}

std::string COrdersPane::orderText() {
    const int columnIndex = m_grid.m_nLockSortColumn;
    if (!m_grid.m_bSorted || columnIndex < 0 || columnIndex >= kColumnCount) return "as they came";
    return std::string(m_grid.m_bSortLocked ? "locked on " : "sorted once by ") + kColumns[columnIndex].heading +
           (m_grid.m_nLockSortOrder == -1 ? ", rising" : ", falling");
}

void COrdersPane::showCount() { setRemark(countedIn(m_grid, m_grid.GetDisplayCount(), "row") + ", " + orderText()); }

int COrdersPane::cellText(DWORD_PTR data, int columnIndex, CString& text, COLORREF& color, COLORREF& back, int&) {
    if (columnIndex < 0 || columnIndex >= kColumnCount) return 0;
    const auto& row = *static_cast<const OrderRow*>(reinterpret_cast<const CFilterListBaseData*>(data));
    TextBuffer buffer;
    const std::string_view cell =
        cellOf(row, m_instruments[row.order.instrument], static_cast<Column>(columnIndex), buffer);
    assignText(text, cell);
    const bool buy = row.order.side == Side::buy;
    color = buy ? palette::kUp : palette::kDown;
    back = buy ? palette::kUpBack : palette::kDownBack;
    takeStatusColours(row, color, back);
    m_grid.note(columnIndex, cell);
    return 1;
}

// A row is painted in the colours of its side, or in those that the user gave to that text.
void COrdersPane::takeStatusColours(const OrderRow& row, COLORREF& color, COLORREF& back) {
    const CStringArray* const texts = m_grid.m_Appearance.pUserKeywords;
    if (!texts || texts->IsEmpty()) return;
    TextBuffer buffer;
    CString side;
    assignText(side, cellOf(row, m_instruments[row.order.instrument], Column::side, buffer));
    m_grid.GetProperty(color, back, side);
}

void COrdersPane::instrument(const Instrument& news) {
    if (news.id != m_instruments.size()) return;
    m_instruments.push_back(news);
    auto& levels = m_levels.emplace_back();
    for (int place = 0; place < 2 * news.bookLevels; ++place) {
        const bool ask = place < news.bookLevels;
        OrderRow& row = *levels.emplace_back(std::make_unique<OrderRow>());
        row.order.instrument = news.id;
        row.order.side = ask ? Side::sell : Side::buy;
        row.order.price = kNoPrice;
        row.level = ask ? news.bookLevels - 1 - place : place - news.bookLevels;
        addRow(row);
    }
}

void COrdersPane::addRow(OrderRow& row) {
    row.arrival = m_arrivals++;
    m_outOfOrder = true;
    m_grid.add(&row);
}

void COrdersPane::add(const Order& order, std::int64_t now) {
    auto row = std::make_unique<OrderRow>();
    row->order = order;
    addRow(*row);
    m_grid.touched(row.get(), row->stamp, now);
    m_orders[order.id] = std::move(row);
}

void COrdersPane::order(const OrderEvent& news, std::int64_t now) {
    const auto found = m_orders.find(news.order.id);
    if (news.action == OrderAction::add) {
        if (found == m_orders.end() && news.order.instrument < m_instruments.size()) add(news.order, now);
        return;
    }
    if (found == m_orders.end()) return;
    OrderRow& row = *found->second;
    if (news.action == OrderAction::change) {
        changing(row, news.order.price);
        row.order.price = news.order.price;
        row.order.quantity = news.order.quantity;
        row.order.time = news.order.time;
        m_grid.touched(&row, row.stamp, now);
        update(row);
    } else {
        m_grid.remove(&row);
        m_orders.erase(found);
    }
}

void COrdersPane::level(const BookLevel& news, std::int64_t now) {
    if (news.instrument >= m_levels.size()) return;
    auto& rows = m_levels[news.instrument];
    const int place = Tally::levelPlace(m_instruments[news.instrument].bookLevels, news);
    if (place < 0 || place >= static_cast<int>(rows.size())) return;
    OrderRow& row = *rows[static_cast<std::size_t>(place)];
    changing(row, news.price);
    row.order.price = news.price;
    row.order.quantity = news.quantity;
    m_grid.touched(&row, row.stamp, now);
    update(row);
}

void COrdersPane::refillIfNeeded() {
    if (!m_grid.needsRefill()) return;
    std::vector<OrderRow*> rows;
    rows.reserve(rowCount());
    for (const auto& levels : m_levels)
        for (const auto& row : levels) rows.push_back(row.get());
    for (const auto& [id, row] : m_orders) rows.push_back(row.get());
    std::sort(rows.begin(), rows.end(), [](const OrderRow* a, const OrderRow* b) { return a->arrival < b->arrival; });
    m_grid.refill([&] {
        for (OrderRow* row : rows) m_grid.add(row);
    });
}

const OrderRow* COrdersPane::find(OrderId id) const {
    const auto found = m_orders.find(id);
    return found == m_orders.end() ? nullptr : found->second.get();
}

const std::vector<std::unique_ptr<OrderRow>>& COrdersPane::levelRows(InstrumentId id) const {
    static const std::vector<std::unique_ptr<OrderRow>> none;
    return id < m_levels.size() ? m_levels[id] : none;
}

std::size_t COrdersPane::rowCount() const {
    std::size_t count = m_orders.size();
    for (const auto& rows : m_levels) count += rows.size();
    return count;
}

}  // namespace terminal
