#include "host/proof/FindProof.h"

#include "host/MainFrame.h"
#include "host/TerminalRun.h"
#include "host/core/Utf8.h"
#include "host/proof/ToldBook.h"
#include "host/proof/UserHand.h"
#include "quor/grid/FilterText.h"
#include "quor/platform/proving/WindowCapture.h"

#include <algorithm>
#include <optional>

namespace terminal {

namespace {

constexpr std::size_t kFewestRows = 4;  // with fewer there is nothing to find

// The proof's steps in one frame.
class Steps {
public:
    Steps(TerminalRun& run, COrdersPane& pane, Outcome& outcome)
        : m_run(run), m_outcome(outcome), m_pane(pane), m_grid(pane.grid()), m_told(run.feed->tally()) {
        m_captionHeight = headerHeight();
    }

    void useTheBar();
    void letRowsStream();
    void sortAndLock();
    void useThePopup();
    void putBack();
    void afterRestart();

private:
    HWND header() { return m_grid.GetHeaderCtrl()->GetSafeHwnd(); }
    int headerHeight() {
        CRect area;
        ::GetClientRect(header(), &area);
        return area.Height();
    }
    int placeOf(OrderColumn column) { return m_grid.m_arrOrder[static_cast<int>(column)]; }

    POINT inItem(OrderColumn column, bool bar, bool button);
    void clickHeading(OrderColumn column);
    void clickField(OrderColumn column) { click(header(), inItem(column, true, false)); }
    void clickFunnel(OrderColumn column) { click(header(), inItem(column, true, true)); }
    std::optional<POINT> inRow(int row);
    void clickRow(int row);
    void chooseInRowsMenu(WORD letter);
    void emptyField(OrderColumn column);
    void tabTo(OrderColumn column);
    int selectedRow() { return m_grid.CListCtrl::GetNextItem(-1, LVNI_SELECTED); }

    void showAll() { m_told.asked.passes = Asked{}.passes; }
    void send(OrderAction action, const Order& order) { m_pane.order({action, order}, m_run.clock.nowMicros()); }
    void addAround(const Arrivals& before);
    void moveAndRemove(std::size_t selected);
    void endBatch();

    void check(const char* what, bool held, const std::string& finding) { m_outcome.check(what, held, finding); }
    void checkRows(const char* what);
    void save(const char* name, HWND popup = nullptr);

    TerminalRun& m_run;
    Outcome& m_outcome;
    COrdersPane& m_pane;
    CLiveGrid& m_grid;
    ToldBook m_told;
    int m_captionHeight = 0;  // of the header without its bar
    int m_headingClicks = 0;
    OrderColumn m_tabbed = OrderColumn::order;
    // What streamed, for its way back. The tally knows none of it.
    struct Streamed {
        std::size_t arrival;
        Order former;  // as the tally has it; of an added one, as it was added
    };
    std::vector<Streamed> m_added;
    std::optional<Streamed> m_moved, m_removed;
};

// ---- Input

POINT Steps::inItem(OrderColumn column, bool bar, bool button) {
    RECT item{}, area{};
    ::SendMessageA(header(), HDM_GETITEMRECT, static_cast<WPARAM>(placeOf(column)), reinterpret_cast<LPARAM>(&item));
    ::GetClientRect(header(), &area);
    return {button ? item.right - 8 : (item.left + item.right) / 2,
            bar ? (m_captionHeight + area.bottom) / 2 : m_captionHeight / 2};
}

// Never twice running at one point: that would be a double click.
void Steps::clickHeading(OrderColumn column) {
    POINT point = inItem(column, false, false);
    point.x += m_headingClicks++ % 2 ? 3 * ::GetSystemMetrics(SM_CXDOUBLECLK) : 0;
    click(header(), point);
}

std::optional<POINT> Steps::inRow(int row) {
    CRect place;
    if (!m_grid.GetItemRect(m_grid.GetTopIndex() + row, &place, LVIR_LABEL)) return {};
    return place.CenterPoint();
}

void Steps::clickRow(int row) {
    if (const auto point = inRow(row)) click(m_grid, *point);
}

void Steps::chooseInRowsMenu(WORD letter) {
    if (const auto point = inRow(0)) chooseInMenu(m_grid, *point, letter);
}

// A click marks what stands in the field.
void Steps::emptyField(OrderColumn column) {
    clickField(column);
    press({VK_DELETE});
    press({VK_RETURN});
}

void Steps::tabTo(OrderColumn column) {
    for (int steps = placeOf(column) - placeOf(m_tabbed); steps > 0; --steps) press({VK_TAB});
    m_tabbed = column;
}

// ---- What is seen and what has to be

void Steps::checkRows(const char* what) {
    const Arrivals wanted = m_told.expected();
    const bool came =
        pumpUntil([&] { return m_told.shown(m_grid) == wanted; }, m_outcome.findings.empty() ? kPatience : kImpatience);
    pumpAll();
    const Arrivals seen = m_told.shown(m_grid);
    if (!came || seen != wanted)
        return check(what, false, "seen " + m_told.described(seen) + "; expected " + m_told.described(wanted));
    const std::string wrong = m_told.drawnWrong(m_grid);
    check(what, wrong.empty(), wrong);
}

// The pane as it stands, with the pop-up over it.
void Steps::save(const char* name, HWND popup) {
    m_pane.showCount();
    m_pane.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    WindowPicture picture, over;
    m_pane.ModifyStyle(WS_CLIPCHILDREN, 0);
    const bool taken = quorCaptureClientArea(m_pane, picture);
    m_pane.ModifyStyle(0, WS_CLIPCHILDREN);
    if (popup && quorCaptureClientArea(popup, over)) {
        POINT at{};
        ::MapWindowPoints(popup, m_pane, &at, 1);
        for (int y = (std::max)(0L, -at.y); y < over.height && y + at.y < picture.height; ++y)
            for (int x = (std::max)(0L, -at.x); x < over.width && x + at.x < picture.width; ++x)
                picture.pixels[static_cast<std::size_t>((y + at.y) * picture.width + x + at.x)] =
                    over.pixels[static_cast<std::size_t>(y * over.width + x)];
    }
    CString error;
    if (!taken || !quorSavePng(picture, wideText(m_run.outPath(name)).c_str(), &error))
        m_outcome.findings.push_back(std::string(name) + " could not be written: " + static_cast<const char*>(error));
}

// ---- The steps

void Steps::useTheBar() {
    checkRows("a first start shows the book by price");
    clickRow(0);
    press({VK_CONTROL, 'F'});
    const HWND focus = ::GetFocus();
    check("Ctrl+F opens the filter bar", ::GetParent(focus) == header(), "the keyboard is in no field of it");

    const auto text = m_told.search().text;
    const std::string prefix = m_told.commonPrefix();
    tabTo(m_told.search().column);
    type(prefix);
    m_told.asked.passes = [=](const ToldRow& row) { return startsWith(row.*text, prefix); };
    checkRows("a filter that was typed takes hold by itself");
    save("find-typed.png");

    const Arrivals found = m_told.expected();
    const Quantity above = found.empty() ? 0 : m_told[found[found.size() / 2]].quantity;
    tabTo(OrderColumn::quantity);
    type(">" + std::to_string(above));
    press({VK_RETURN});
    m_told.asked.passes = [=](const ToldRow& row) { return startsWith(row.*text, prefix) && row.quantity > above; };
    checkRows("a second filter narrows the first, at once with Enter");

    type("9");
    press({VK_ESCAPE});
    checkRows("Esc leaves the rows as they were");
    check("Esc gives the keyboard back to the rows", ::GetFocus() == m_grid.GetSafeHwnd(), "it is elsewhere");
    clickHeading(OrderColumn::quantity);
    checkRows("a heading that is clicked moves nothing while the sort is locked");

    emptyField(OrderColumn::quantity);
    emptyField(m_told.search().column);
    showAll();
    checkRows("emptied fields bring all rows back, in the locked order");
}

void Steps::endBatch() {
    processEndofBatchUpdates();
    m_pane.keepOrder();
}

// Orders above, among and below those that are there.
void Steps::addAround(const Arrivals& before) {
    OrderId id = 1'000'000'000'000;
    const Price highest = m_told[before.front()].price;
    for (const Price price : {highest + kPriceOne, highest, m_told[before[before.size() / 2]].price, kPriceOne / 100}) {
        const Order order{.id = ++id, .instrument = 0, .price = price, .quantity = 7};
        const std::string& symbol = m_run.feed->tally().instruments()[0].instrument.symbol;
        m_added.push_back({m_told.add({std::to_string(id), symbol, price, order.quantity}), order});
        send(OrderAction::add, order);
    }
}

// The oldest order moves to the top and the newest one leaves, which can come back to its place; both but the selected
// one. A feed of book levels has none.
void Steps::moveAndRemove(std::size_t selected) {
    const std::vector<Order> live = m_run.feed->tally().liveOrdersByArrival();
    const std::size_t firstOrder = m_told.size() - m_added.size() - live.size();
    std::vector<Streamed> others;
    for (std::size_t i = 0; i < live.size(); ++i)
        if (firstOrder + i != selected) others.push_back({firstOrder + i, live[i]});
    if (others.size() < 2) return;
    m_moved = others.front();
    m_removed = others.back();
    Order moved = m_moved->former;
    m_told[m_moved->arrival].price = moved.price = m_added.front().former.price + kPriceOne;
    send(OrderAction::change, moved);
    m_told[m_removed->arrival].gone = true;
    send(OrderAction::remove, m_removed->former);
}

void Steps::letRowsStream() {
    const Arrivals before = m_told.shown(m_grid);
    if (before.size() < kFewestRows) return check("rows are left to stream between", false, m_told.described(before));
    clickRow(static_cast<int>(kFewestRows) - 1);
    const int chosen = selectedRow();
    const std::size_t selected = chosen < 0 ? m_told.size() : before[static_cast<std::size_t>(chosen)];
    addAround(before);
    moveAndRemove(selected);
    endBatch();
    checkRows("rows that come in take their place in the locked order");
    const Arrivals now = m_told.shown(m_grid);
    const int still = selectedRow();
    check("the selection stays on its row",
          m_grid.GetSelectedCount() == 1 && still >= 0 && now[static_cast<std::size_t>(still)] == selected &&
              still != chosen && m_grid.CListCtrl::GetNextItem(-1, LVNI_FOCUSED) == still,
          "selected row " + std::to_string(chosen) + " before, " + std::to_string(still) + " after, " +
              std::to_string(m_grid.GetSelectedCount()) + " rows in all");
}

void Steps::sortAndLock() {
    chooseInRowsMenu('L');
    check("the menu unlocks the sort", !m_grid.m_bSortLocked, "it is still locked");
    clickHeading(OrderColumn::quantity);
    m_told.asked.key = &ToldRow::quantity;
    m_told.asked.order = -1;
    checkRows("a click on a heading sorts, rising");
    clickHeading(OrderColumn::quantity);
    m_told.asked.order = 1;
    checkRows("a second click turns the order round");
    chooseInRowsMenu('L');
    check("the menu locks the sort", m_grid.m_bSortLocked != 0, "it is not locked");
}

void Steps::useThePopup() {
    const std::set<std::string> values = m_told.values();
    const auto text = m_told.search().text;
    clickFunnel(m_told.search().column);
    CFilterText* const popup = CFilterText::shared(&m_grid);
    CListBox& list = popup->values();
    std::vector<std::string> offered;
    for (int i = 0; i < list.GetCount(); ++i) {
        CString value;
        list.GetText(i, value);
        offered.emplace_back(static_cast<const char*>(value));
    }
    const bool inOrder = std::is_sorted(offered.begin(), offered.end(), [](const auto& a, const auto& b) {
        return ::lstrcmpiA(a.c_str(), b.c_str()) < 0;
    });
    check("the funnel offers every value once, in order",
          popup->IsWindowVisible() && inOrder && offered.size() == values.size() &&
              std::set<std::string>(offered.begin(), offered.end()) == values,
          std::to_string(offered.size()) + " offered, " + std::to_string(values.size()) + " expected");
    if (offered.size() < 2) return;

    CRect first;
    list.SendMessage(LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
    click(list, first.CenterPoint());
    press({VK_SHIFT, VK_DOWN});
    popup->UpdateWindow();
    save("find-popup.png", *popup);
    press({VK_RETURN});
    const std::string one = offered[0], other = offered[1];
    m_told.asked.passes = [=](const ToldRow& row) {
        return startsWith(row.*text, one) || startsWith(row.*text, other);
    };
    checkRows("the values that were chosen filter, and the locked order stays");
    check("the pop-up goes", !popup->IsWindowVisible(), "it is still there");
    save("find-locked.png");
    chooseInRowsMenu('R');
    showAll();
    checkRows("filters that are reset bring all rows back, in the locked order");
}

// The rows are again those of the tally, none of them selected, below a header without its bar.
void Steps::putBack() {
    for (const Streamed& added : m_added) {
        m_told[added.arrival].gone = true;
        send(OrderAction::remove, added.former);
    }
    if (m_moved) {
        m_told[m_moved->arrival].price = m_moved->former.price;
        send(OrderAction::change, m_moved->former);
    }
    if (m_removed) {
        ToldRow back = m_told[m_removed->arrival];
        back.gone = false;
        m_told.add(back);
        send(OrderAction::add, m_removed->former);
    }
    m_grid.RemoveAllFilters();  // a step that failed may have left some
    showAll();
    endBatch();
    m_grid.CListCtrl::SetItemState(-1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    if (headerHeight() > m_captionHeight) m_grid.PutListFilter();
    pumpAll();
    const Arrivals left = m_told.shown(m_grid);
    if (left != m_told.expected()) m_outcome.findings.push_back("rows were left behind: " + m_told.described(left));
}

void Steps::afterRestart() {
    m_told.asked.key = &ToldRow::quantity;
    checkRows("the locked order survives a restart");
}

class FindProof final : public Proof {
public:
    FindProof(TerminalRun& run, Outcome& outcome) : m_run(run), m_outcome(outcome) {}

    std::string missing(CMainFrame& frame) override {
        const std::size_t rows = ToldBook(m_run.feed->tally()).size();
        if (rows < kFewestRows)
            return std::to_string(kFewestRows) + " rows in the orders pane, of which there are " + std::to_string(rows);
        CLiveGrid& grid = frame.panes().orders.grid();
        for (const OrderColumn column :
             {OrderColumn::order, OrderColumn::symbol, OrderColumn::price, OrderColumn::quantity}) {
            const int index = static_cast<int>(column);
            if (index >= grid.m_arrOrder.GetCount() || grid.m_arrOrder[index] < 0)
                return "column " + std::to_string(index) + " of the orders pane, which does not show";
        }
        return {};
    }
    void act(CMainFrame& frame) override {
        Steps steps(m_run, frame.panes().orders, m_outcome);
        steps.useTheBar();
        steps.letRowsStream();
        steps.sortAndLock();
        steps.useThePopup();
        steps.putBack();
    }
    void check(CMainFrame& frame) override { Steps(m_run, frame.panes().orders, m_outcome).afterRestart(); }

private:
    TerminalRun& m_run;
    Outcome& m_outcome;
};

}  // namespace

std::unique_ptr<Proof> makeFindProof(TerminalRun& run, Outcome& outcome) {
    return std::make_unique<FindProof>(run, outcome);
}

}  // namespace terminal
