#include "host/proof/ToldBook.h"

#include <algorithm>

namespace terminal {

namespace {
std::string folded(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}
}  // namespace

bool startsWith(const std::string& text, const std::string& prefix) { return folded(text).starts_with(folded(prefix)); }

ToldBook::ToldBook(const Tally& tally) {
    for (const auto& of : tally.instruments())
        for (const BookLevel& level : of.levels)
            add({(level.side == Side::sell ? "Ask " : "Bid ") + std::to_string(level.level + 1), of.instrument.symbol,
                 level.price == kNoPrice ? 0 : level.price, level.quantity});
    for (const Order& order : tally.liveOrdersByArrival())
        add({std::to_string(order.id), tally.instruments()[order.instrument].instrument.symbol, order.price,
             order.quantity});
}

std::size_t ToldBook::add(const ToldRow& row) {
    m_rows.push_back(row);
    return m_rows.size() - 1;
}

Search ToldBook::search() const {
    const bool one = std::all_of(m_rows.begin(), m_rows.end(),
                                 [this](const ToldRow& row) { return row.symbol == m_rows.front().symbol; });
    return one ? Search{OrderColumn::order, &ToldRow::name} : Search{OrderColumn::symbol, &ToldRow::symbol};
}

std::string ToldBook::commonPrefix() const { return folded((m_rows[m_rows.size() / 2].*search().text).substr(0, 2)); }

std::set<std::string> ToldBook::values() const {
    std::set<std::string> values;
    const auto text = search().text;
    for (const ToldRow& row : m_rows)
        if (!row.gone) values.insert(row.*text);
    return values;
}

// Of equal rows the older one comes first when values fall, the newer one when they rise.
Arrivals ToldBook::expected() const {
    Arrivals rows;
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        if (!m_rows[i].gone && asked.passes(m_rows[i])) rows.push_back(i);
    std::sort(rows.begin(), rows.end(), [this](std::size_t a, std::size_t b) {
        const auto left = m_rows[a].*asked.key, right = m_rows[b].*asked.key;
        if (left != right) return (left < right) == (asked.order == -1);
        return (a < b) == (asked.order == 1);
    });
    return rows;
}

Arrivals ToldBook::shown(CLiveGrid& grid) const {
    Arrivals rows;
    for (int visual = 0; visual < grid.GetDisplayCount(); ++visual) {
        const auto* const row = static_cast<const OrderRow*>(grid.rowAt(visual));
        rows.push_back(row ? static_cast<std::size_t>(row->arrival) : m_rows.size());
    }
    return rows;
}

std::string ToldBook::drawnWrong(CLiveGrid& grid) const {
    grid.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const Arrivals rows = expected();
    const DrawnRows& drawn = grid.drawn();
    const auto inView = (std::min)(grid.GetDisplayCount() - grid.GetTopIndex(), grid.GetCountPerPage());
    if (static_cast<int>(drawn.size()) < inView) return "a row in view was not drawn";
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        if (!drawn[i].row) continue;
        const ToldRow& row = m_rows[rows[static_cast<std::size_t>(drawn[i].visual)]];
        const auto cell = [&](OrderColumn column) { return drawn[i].cells.at(static_cast<std::size_t>(column)); };
        if (cell(OrderColumn::order) == row.name && cell(OrderColumn::symbol) == row.symbol) continue;
        return "drawn in row " + std::to_string(drawn[i].visual) + ": " + cell(OrderColumn::order) + " " +
               cell(OrderColumn::symbol) + ", to be drawn: " + row.name + " " + row.symbol;
    }
    return {};
}

std::string ToldBook::described(const Arrivals& rows) const {
    constexpr std::size_t kFew = 3;
    std::string text = std::to_string(rows.size()) + " rows";
    for (std::size_t i = 0; i < rows.size() && i < kFew; ++i) {
        if (rows[i] >= m_rows.size()) return text + ", one of nobody's";
        const ToldRow& row = m_rows[rows[i]];
        TextBuffer buffer;
        text += (i ? ", " : ": ") + row.name + " " + row.symbol + " " + std::string(formatPrice(row.price, buffer)) +
                " x " + std::to_string(row.quantity);
    }
    return text;
}

}  // namespace terminal
