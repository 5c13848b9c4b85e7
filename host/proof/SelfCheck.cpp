#include "host/proof/SelfCheck.h"

#include "host/core/MarketText.h"
#include "host/core/WatchStore.h"

#include <algorithm>
#include <unordered_set>

namespace terminal {

namespace {

class Check {
public:
    Check(const Tally& tally, const Panes& panes, int keep) : m_tally(tally), m_panes(panes), m_keep(keep) {}

    std::vector<std::string> run() {
        equal("feed: events that contradict others", m_tally.faults(), 0);
        watch();
        orders();
        trades();
        positions();
        if (m_unsaid) m_findings.push_back("... and " + std::to_string(m_unsaid) + " more");
        return std::move(m_findings);
    }

private:
    static constexpr std::size_t kMostFindings = 20;

    void add(std::string finding) {
        if (m_findings.size() < kMostFindings)
            m_findings.push_back(std::move(finding));
        else
            ++m_unsaid;
    }
    bool equal(const std::string& what, std::int64_t shown, std::int64_t told) {
        if (shown == told) return true;
        add(what + ": shown " + std::to_string(shown) + ", told " + std::to_string(told));
        return false;
    }
    void equalText(const std::string& what, std::string_view shown, std::string_view told) {
        if (shown != told) add(what + ": shown \"" + std::string(shown) + "\", told \"" + std::string(told) + "\"");
    }
    std::string priceText(InstrumentId id, Price price) const {
        TextBuffer buffer;
        return std::string(formatPrice(price, decimalsOf(m_tally.instruments()[id].instrument.tickSize), buffer));
    }
    static std::string quantityText(Quantity quantity) {
        TextBuffer buffer;
        return std::string(formatQuantity(quantity, buffer));
    }
    template <class Column>
    static std::string_view cell(const DrawnRow& drawn, Column column) {
        const auto index = static_cast<std::size_t>(column);
        return index < drawn.cells.size() ? std::string_view(drawn.cells[index]) : std::string_view();
    }
    static std::string at(const char* pane, int visual) { return std::string(pane) + " row " + std::to_string(visual); }

    // Every row in view was drawn by the last paint. False: there is nothing to compare texts with.
    void everyRowInViewDrawn(const char* pane, const DrawnRows& drawn, CListCtrl& list, int count) {
        const int top = list.GetTopIndex();
        const int inView = (std::max)(0, (std::min)(count - top, list.GetCountPerPage()));
        std::unordered_set<int> seen;
        for (std::size_t i = 0; i < drawn.size(); ++i) seen.insert(drawn[i].visual);
        for (int visual = top; visual < top + inView; ++visual)
            if (!seen.count(visual)) add(at(pane, visual) + ": in view and not drawn");
    }

    void watch();
    void orders();
    void orderRow(int visual, const OrderRow& row);
    void asTold(const std::vector<const OrderRow*>& shown, const std::vector<const OrderRow*>& orderRows,
                const std::vector<const OrderRow*>& levelRows);
    void lockedInOrder(const std::vector<const OrderRow*>& shown, OrderColumn column, int order);
    void trades();
    void tradeRow(int visual, const TradeRow& row, bool newestOfItsInstrument);

    void positions();

    const Tally& m_tally;
    Panes m_panes;
    int m_keep;
    std::vector<std::string> m_findings;
    std::size_t m_unsaid = 0;
};

// Rows may stand in any order, each instrument of the watch once.
void Check::watch() {
    const auto& told = m_tally.instruments();
    CWatchList& list = m_panes.watch->list();
    const WatchList& shown = watchLists()[static_cast<std::size_t>(m_panes.watch->shownWatch())];
    const auto held =
        std::count_if(told.begin(), told.end(), [&](const auto& of) { return shown.holds(of.instrument); });
    if (!equal("watch: rows", list.GetItemCount(), held)) return;
    equal("watch: instruments with news that was not shown", m_panes.watch->waiting(), 0);
    const auto lastText = [&](InstrumentId id) {
        const Quote& quote = told[id].quote;
        return quote.has(quoteLast) ? priceText(id, quote.last) : std::string();
    };
    const int lastPlace = list.m_arrOrder[static_cast<int>(WatchColumn::last)];
    std::unordered_set<InstrumentId> met;
    for (int row = 0; row < list.GetItemCount(); ++row) {
        const sMWStruct* const record = m_panes.watch->record(row);
        if (!record || !met.insert(record->instrument).second || record->instrument >= told.size()) {
            add(at("watch", row) + ": no instrument of its own");
        } else if (lastPlace >= 0) {
            const CString text = list.GetItemText(row, lastPlace);
            equalText(at("watch", row) + " last price", static_cast<const char*>(text), lastText(record->instrument));
        }
    }
    const DrawnRows& drawn = m_panes.watch->drawn();
    everyRowInViewDrawn("watch", drawn, list, list.GetItemCount());
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        const InstrumentId id = static_cast<const sMWStruct*>(drawn[i].row)->instrument;
        const std::string row = at("watch", drawn[i].visual) + " drawn";
        equalText(row + " symbol", cell(drawn[i], WatchColumn::symbol), told[id].instrument.symbol);
        equalText(row + " last price", cell(drawn[i], WatchColumn::last), lastText(id));
        const Quote& quote = told[id].quote;
        equalText(row + " bid", cell(drawn[i], WatchColumn::bid), quote.has(quoteBid) ? priceText(id, quote.bid) : "");
        equalText(row + " ask", cell(drawn[i], WatchColumn::ask), quote.has(quoteAsk) ? priceText(id, quote.ask) : "");
    }
}

// The values of one row against the tally's.
void Check::orderRow(int visual, const OrderRow& row) {
    const std::string what = at("orders", visual);
    if (row.level >= 0) {
        const auto& of = m_tally.instruments()[row.order.instrument];
        const BookLevel level{row.order.instrument, row.order.side, row.level, 0, 0};
        const int place = Tally::levelPlace(of.instrument.bookLevels, level);
        if (place < 0 || place >= static_cast<int>(of.levels.size())) return add(what + ": no such level was told");
        equal(what + " level price", row.order.price, of.levels[static_cast<std::size_t>(place)].price);
        equal(what + " level size", row.order.quantity, of.levels[static_cast<std::size_t>(place)].quantity);
        return;
    }
    const auto found = m_tally.liveOrders().find(row.order.id);
    if (found == m_tally.liveOrders().end()) return add(what + ": order " + std::to_string(row.order.id) + " is dead");
    equal(what + " price", row.order.price, found->second.order.price);
    equal(what + " quantity", row.order.quantity, found->second.order.quantity);
}

// A grid that was never sorted shows the rows as they came.
void Check::asTold(const std::vector<const OrderRow*>& shown, const std::vector<const OrderRow*>& orderRows,
                   const std::vector<const OrderRow*>& levelRows) {
    std::size_t nextOrder = 0, nextLevel = 0;
    for (std::size_t visual = 0; visual < shown.size(); ++visual) {
        const auto& rows = shown[visual]->level >= 0 ? levelRows : orderRows;
        std::size_t& next = shown[visual]->level >= 0 ? nextLevel : nextOrder;
        if (next >= rows.size() || rows[next] != shown[visual])
            add(at("orders", static_cast<int>(visual)) + ": out of order");
        ++next;
    }
}

// A locked book: prices or quantities fall (order 1) or rise (-1), an empty level counts as 0. Of equal ones the older
// row comes first when they fall, the newer one when they rise.
void Check::lockedInOrder(const std::vector<const OrderRow*>& shown, OrderColumn column, int order) {
    if (column != OrderColumn::price && column != OrderColumn::quantity) return;
    const auto key = [=](const OrderRow* row) {
        const std::int64_t value = row->order.price == kNoPrice   ? 0
                                   : column == OrderColumn::price ? row->order.price
                                                                  : row->order.quantity;
        return std::pair(-order * value, order * static_cast<std::int64_t>(row->arrival));
    };
    for (std::size_t i = 1; i < shown.size(); ++i)
        if (key(shown[i]) <= key(shown[i - 1]))
            add(at("orders", static_cast<int>(i)) + ": value or age out of the locked order");
}

void Check::orders() {
    CLiveGrid& grid = m_panes.orders->grid();
    const std::vector<Order> told = m_tally.liveOrdersByArrival();
    std::vector<const OrderRow*> orderRows, levelRows;
    for (const Order& order : told) orderRows.push_back(m_panes.orders->find(order.id));
    for (const auto& of : m_tally.instruments())
        for (const auto& row : m_panes.orders->levelRows(of.instrument.id)) levelRows.push_back(row.get());
    std::size_t levelsTold = 0;
    for (const auto& of : m_tally.instruments()) levelsTold += 2 * static_cast<std::size_t>(of.instrument.bookLevels);
    const int count = grid.GetDisplayCount();
    if (!grid.GetFilterCount()) equal("orders: rows", count, static_cast<std::int64_t>(told.size() + levelsTold));
    equal("orders: rows of the control", ::SendMessageA(grid.GetSafeHwnd(), LVM_GETITEMCOUNT, 0, 0), count);

    std::vector<const OrderRow*> shown;
    for (int visual = 0; visual < count; ++visual) {
        const auto row = static_cast<const OrderRow*>(grid.rowAt(visual));
        if (!row)
            add(at("orders", visual) + ": no row");
        else
            orderRow(visual, *shown.emplace_back(row));
    }
    if (grid.m_bSortLocked)
        lockedInOrder(shown, static_cast<OrderColumn>(grid.m_nLockSortColumn), grid.m_nLockSortOrder);
    else if (!grid.m_bSorted && !grid.GetFilterCount())
        asTold(shown, orderRows, levelRows);
    const DrawnRows& drawn = grid.drawn();
    everyRowInViewDrawn("orders", drawn, grid, count);
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        if (!drawn[i].row) continue;
        const auto& row = *static_cast<const OrderRow*>(static_cast<const CFilterListBaseData*>(drawn[i].row));
        Price price = kNoPrice;
        Quantity quantity = 0;
        if (row.level >= 0) {
            const auto& of = m_tally.instruments()[row.order.instrument];
            const int place =
                Tally::levelPlace(of.instrument.bookLevels, {row.order.instrument, row.order.side, row.level, 0, 0});
            price = of.levels.at(static_cast<std::size_t>(place)).price;
            quantity = of.levels.at(static_cast<std::size_t>(place)).quantity;
        } else if (const auto found = m_tally.liveOrders().find(row.order.id); found != m_tally.liveOrders().end()) {
            price = found->second.order.price;
            quantity = found->second.order.quantity;
            equalText(at("orders", drawn[i].visual) + " drawn id", cell(drawn[i], OrderColumn::order),
                      std::to_string(found->second.order.id));
        }
        const std::string what = at("orders", drawn[i].visual) + " drawn";
        equalText(what + " price", cell(drawn[i], OrderColumn::price), priceText(row.order.instrument, price));
        equalText(what + " quantity", cell(drawn[i], OrderColumn::quantity),
                  price == kNoPrice ? "" : quantityText(quantity));
    }
}

void Check::tradeRow(int visual, const TradeRow& row, bool newestOfItsInstrument) {
    const std::string what = at("trades", visual);
    equal(what + " number", row.number, m_tally.tradeCount() - visual);
    if (!newestOfItsInstrument) return;
    const Trade& told = m_tally.instruments()[row.trade.instrument].lastTrade;
    equal(what + " price of the last trade", row.trade.price, told.price);
    equal(what + " quantity of the last trade", row.trade.quantity, told.quantity);
}

void Check::trades() {
    CLiveGrid& grid = m_panes.trades->grid();
    const auto& rows = m_panes.trades->rows();
    const int count = grid.GetDisplayCount();
    if (!grid.GetFilterCount())
        equal("trades: rows", count, (std::min)(m_tally.tradeCount(), static_cast<std::int64_t>(m_keep)));
    equal("trades: rows of the control", ::SendMessageA(grid.GetSafeHwnd(), LVM_GETITEMCOUNT, 0, 0), count);
    equal("trades: taken", m_panes.trades->tradeCount(), m_tally.tradeCount());
    if (grid.m_bSorted || grid.GetFilterCount()) return;  // the user's own choice of rows and order
    std::unordered_set<InstrumentId> met;
    for (int visual = 0; visual < count; ++visual) {
        const auto row = static_cast<const TradeRow*>(grid.rowAt(visual));
        const std::size_t fromEnd = static_cast<std::size_t>(visual) + 1;
        if (!row || fromEnd > rows.size() || row != &rows[rows.size() - fromEnd]) {
            add(at("trades", visual) + ": out of order");
            continue;
        }
        tradeRow(visual, *row, met.insert(row->trade.instrument).second);
    }
    const DrawnRows& drawn = grid.drawn();
    everyRowInViewDrawn("trades", drawn, grid, count);
    std::unordered_set<InstrumentId> drawnOnce;
    for (std::size_t i = 0; i < drawn.size() && grid.GetTopIndex() == 0; ++i) {
        if (!drawn[i].row || drawn[i].visual != static_cast<int>(i)) continue;
        const auto& row = *static_cast<const TradeRow*>(static_cast<const CFilterListBaseData*>(drawn[i].row));
        const std::string what = at("trades", drawn[i].visual) + " drawn";
        equalText(what + " number", cell(drawn[i], TradeColumn::number),
                  std::to_string(m_tally.tradeCount() - drawn[i].visual));
        if (!drawnOnce.insert(row.trade.instrument).second) continue;
        const auto& of = m_tally.instruments()[row.trade.instrument];
        equalText(what + " symbol", cell(drawn[i], TradeColumn::symbol), of.instrument.symbol);
        equalText(what + " price", cell(drawn[i], TradeColumn::price),
                  priceText(row.trade.instrument, of.lastTrade.price));
        equalText(what + " quantity", cell(drawn[i], TradeColumn::quantity), quantityText(of.lastTrade.quantity));
    }
}

// What is held is the pane's; what it is worth follows from the tally's last prices.
void Check::positions() {
    CLiveGrid& grid = m_panes.positions->grid();
    const auto& all = m_panes.positions->positions().all();
    const int count = grid.GetDisplayCount();
    if (!grid.GetFilterCount()) equal("positions: rows", count, static_cast<std::int64_t>(all.size()));
    equal("positions: rows of the control", ::SendMessageA(grid.GetSafeHwnd(), LVM_GETITEMCOUNT, 0, 0), count);
    const DrawnRows& drawn = grid.drawn();
    everyRowInViewDrawn("positions", drawn, grid, count);
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        if (!drawn[i].row) continue;
        Position told =
            *static_cast<const PositionRow*>(static_cast<const CFilterListBaseData*>(drawn[i].row))->position;
        const auto& of = m_tally.instruments()[told.instrument.id];
        told.last = of.quote.last;
        told.close = of.quote.has(quoteClose) ? of.quote.close : kNoPrice;
        for (int column = 0; column < static_cast<int>(PositionColumn::count); ++column) {
            if (grid.m_arrOrder[column] < 0) continue;
            TextBuffer buffer;
            const auto which = static_cast<PositionColumn>(column);
            equalText(at("positions", drawn[i].visual) + " drawn column " + std::to_string(column),
                      cell(drawn[i], which), positionText(told, which, buffer));
        }
    }
}

}  // namespace

std::vector<std::string> selfCheck(const Tally& tally, const Panes& panes, int keep) {
    return Check(tally, panes, keep).run();
}

}  // namespace terminal
