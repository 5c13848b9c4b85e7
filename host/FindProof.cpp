#include "host/FindProof.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "host/HostEntries.h"
#include "host/LogPane.h"
#include "host/MainFrame.h"
#include "host/TerminalRun.h"
#include "host/core/Utf8.h"
#include "host/core/WatchStore.h"
#include "platform/proving/UserInput.h"
#include "platform/proving/WindowCapture.h"
#include "src/grid/FilterText.h"

namespace terminal {

namespace {

constexpr ULONGLONG patience = 10'000;   // milliseconds that a step may take on a busy machine
constexpr ULONGLONG impatience = 1'000;  // after a check that failed: others will, too
constexpr ULONGLONG menuPatience = 5'000;
constexpr int fewestRows = 4;  // with fewer there is nothing to find

// One row as the tally tells it. Its index among all is the row's arrival: both are made in the same order.
struct Told {
    std::string name;  // the first column
    std::string symbol;
    Price price = 0;
    Quantity quantity = 0;
    bool gone = false;
};

std::vector<Told> rowsTold(const Tally& tally) {
    std::vector<Told> rows;
    for (const auto& of : tally.instruments())
        for (const BookLevel& level : of.levels)
            rows.push_back({(level.side == Side::sell ? "Ask " : "Bid ") + std::to_string(level.level + 1),
                            of.instrument.symbol, level.price == noPrice ? 0 : level.price, level.quantity});
    for (const Order& order : tally.liveOrdersByArrival())
        rows.push_back({std::to_string(order.id), tally.instruments()[order.instrument].instrument.symbol, order.price,
                        order.quantity});
    return rows;
}

std::string folded(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

bool startsWith(const std::string& text, const std::string& prefix) { return folded(text).starts_with(folded(prefix)); }

// Dispatches what comes until the condition holds. False: it did not within the time.
bool pumpUntil(const std::function<bool()>& condition, ULONGLONG limit = patience) {
    const ULONGLONG end = ::GetTickCount64() + limit;
    while (!condition()) {
        MSG message;
        if (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE))
            AfxPumpMessage();
        else if (::GetTickCount64() >= end)
            return false;
        else
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}

void pumpAll() {
    MSG message;
    pumpUntil([&message] { return !::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE); });
}

// Answers message boxes, which nobody expects here, so that a fault ends in a finding and not in a run that waits.
class BoxGuard {
public:
    BoxGuard() { s_texts.clear(); }
    ~BoxGuard() { ::KillTimer(nullptr, m_timer); }
    BoxGuard(const BoxGuard&) = delete;
    BoxGuard& operator=(const BoxGuard&) = delete;
    static const std::vector<std::string>& texts() { return s_texts; }

private:
    static void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) {
        ::EnumThreadWindows(
            ::GetCurrentThreadId(),
            [](HWND window, LPARAM) -> BOOL {
                constexpr int textOfABox = 0xFFFF;
                char text[256] = "";
                if (::GetDlgItemTextA(window, textOfABox, text, sizeof text) == 0) return TRUE;
                s_texts.push_back(text);
                ::PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
                ::PostMessageA(window, WM_COMMAND, IDOK, 0);
                return FALSE;
            },
            0);
    }

    static inline std::vector<std::string> s_texts;
    UINT_PTR m_timer = ::SetTimer(nullptr, 0, 500, &look);
};

// The columns in which the proof looks for rows: by name within one book, by symbol in a market.
struct Search {
    OrderColumn column;
    std::string Told::*text;
};

using Arrivals = std::vector<std::size_t>;

struct Outcome {
    int tried = 0;
    int held = 0;
    std::vector<std::string> findings;
};

class FindProof {
public:
    FindProof(TerminalRun& run, CMainFrame& frame, Outcome& outcome)
        : m_run(run),
          m_outcome(outcome),
          m_frame(frame),
          m_pane(frame.ordersPane()),
          m_grid(m_pane.grid()),
          m_told(rowsTold(run.feed->tally())) {}

    void useTheBar();
    void letRowsStream();
    void sortAndLock();
    void useThePopup();
    void afterRestart();

private:
    HWND header() { return m_grid.GetHeaderCtrl()->GetSafeHwnd(); }
    int placeOf(OrderColumn column) { return m_grid.m_arrOrder[static_cast<int>(column)]; }

    // ---- Input
    void bringToFront();
    POINT inItem(OrderColumn column, bool bar, bool button);
    void clickHeading(OrderColumn column);
    void clickField(OrderColumn column) { click(header(), inItem(column, true, false)); }
    void clickFunnel(OrderColumn column) { click(header(), inItem(column, true, true)); }
    void clickRow(quor::MouseButton button, int row = 0);
    void click(HWND window, POINT point) {
        quor::sendClick(window, point);
        pumpAll();
    }
    void press(std::initializer_list<WORD> keys) {
        quor::sendKeys(keys);
        pumpAll();
    }
    void type(const std::string& text) {
        quor::sendText(text);
        pumpAll();
    }
    void emptyField(OrderColumn column);
    void chooseInMenu(WORD letter);
    void tabTo(OrderColumn column);

    // ---- What is seen and what has to be
    Search search() const;
    std::string commonPrefix() const;
    Arrivals shown();
    Arrivals expected() const;
    std::string described(const Arrivals& rows) const;
    std::string drawnWrong();
    void check(const char* what, bool held, const std::string& finding);
    void checkRows(const char* what);
    void save(const char* name, HWND popup = nullptr);

    TerminalRun& m_run;
    Outcome& m_outcome;
    CMainFrame& m_frame;
    COrdersPane& m_pane;
    CLiveGrid& m_grid;
    std::vector<Told> m_told;
    int m_captionHeight = 0;  // of the header without its bar
    int m_headingClicks = 0;
    OrderColumn m_tabbed = OrderColumn::order;
    // What the steps so far have asked for.
    std::function<bool(const Told&)> m_passes = [](const Told&) { return true; };
    Quantity Told::*m_key = &Told::price;
    int m_order = 1;
};

// ---- Input

void FindProof::bringToFront() {
    m_frame.ShowWindow(SW_SHOWNORMAL);
    m_frame.BringWindowToTop();
    m_frame.SetForegroundWindow();
    m_frame.UpdateWindow();
    pumpAll();
    CRect area;
    ::GetClientRect(header(), &area);
    m_captionHeight = area.Height();
}

POINT FindProof::inItem(OrderColumn column, bool bar, bool button) {
    RECT item{}, area{};
    ::SendMessageA(header(), HDM_GETITEMRECT, static_cast<WPARAM>(placeOf(column)), reinterpret_cast<LPARAM>(&item));
    ::GetClientRect(header(), &area);
    return {button ? item.right - 8 : (item.left + item.right) / 2,
            bar ? (m_captionHeight + area.bottom) / 2 : m_captionHeight / 2};
}

// Never twice running at one point: that would be a double click.
void FindProof::clickHeading(OrderColumn column) {
    POINT point = inItem(column, false, false);
    point.x += m_headingClicks++ % 2 ? 3 * ::GetSystemMetrics(SM_CXDOUBLECLK) : 0;
    click(header(), point);
}

void FindProof::clickRow(quor::MouseButton button, int row) {
    CRect place;
    if (m_grid.GetItemRect(m_grid.GetTopIndex() + row, &place, LVIR_LABEL))
        quor::sendClick(m_grid, place.CenterPoint(), button);
}

// A click marks what stands in the field.
void FindProof::emptyField(OrderColumn column) {
    clickField(column);
    press({VK_DELETE});
    press({VK_RETURN});
}

// The letter waits behind the click and finds the menu open. A menu that does not take it is closed after a while.
void FindProof::chooseInMenu(WORD letter) {
    const UINT_PTR guard =
        ::SetTimer(nullptr, 0, static_cast<UINT>(menuPatience), [](HWND, UINT, UINT_PTR, DWORD) { ::EndMenu(); });
    clickRow(quor::MouseButton::right);
    quor::sendKeys({letter});
    pumpAll();
    ::KillTimer(nullptr, guard);
}

void FindProof::tabTo(OrderColumn column) {
    for (int steps = placeOf(column) - placeOf(m_tabbed); steps > 0; --steps) press({VK_TAB});
    m_tabbed = column;
}

// ---- What is seen and what has to be

Search FindProof::search() const {
    const bool one = std::all_of(m_told.begin(), m_told.end(),
                                 [this](const Told& row) { return row.symbol == m_told.front().symbol; });
    return one ? Search{OrderColumn::order, &Told::name} : Search{OrderColumn::symbol, &Told::symbol};
}

// The first letters of a text in the middle, in small ones: those of some rows and not of all.
std::string FindProof::commonPrefix() const {
    const auto text = search().text;
    return folded((m_told[m_told.size() / 2].*text).substr(0, 2));
}

Arrivals FindProof::shown() {
    Arrivals rows;
    for (int visual = 0; visual < m_grid.GetDisplayCount(); ++visual) {
        const auto* const row =
            static_cast<const OrderRow*>(reinterpret_cast<const CFilterListBaseData*>(m_grid.GetItemData(visual)));
        rows.push_back(row ? static_cast<std::size_t>(row->arrival) : m_told.size());
    }
    return rows;
}

// Of equal rows the older one comes first when values fall, the newer one when they rise.
Arrivals FindProof::expected() const {
    Arrivals rows;
    for (std::size_t i = 0; i < m_told.size(); ++i)
        if (!m_told[i].gone && m_passes(m_told[i])) rows.push_back(i);
    std::sort(rows.begin(), rows.end(), [this](std::size_t a, std::size_t b) {
        const auto left = m_told[a].*m_key, right = m_told[b].*m_key;
        if (left != right) return (left < right) == (m_order == -1);
        return (a < b) == (m_order == 1);
    });
    return rows;
}

std::string FindProof::described(const Arrivals& rows) const {
    constexpr std::size_t few = 3;
    std::string text = std::to_string(rows.size()) + " rows";
    for (std::size_t i = 0; i < rows.size() && i < few; ++i) {
        if (rows[i] >= m_told.size()) return text + ", one of nobody's";
        const Told& row = m_told[rows[i]];
        TextBuffer buffer;
        text += (i ? ", " : ": ") + row.name + " " + row.symbol + " " + std::string(formatPrice(row.price, buffer)) +
                " x " + std::to_string(row.quantity);
    }
    return text;
}

// A row in view whose drawn texts are not those of the row that has to stand there; "" when all are.
std::string FindProof::drawnWrong() {
    m_grid.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const Arrivals rows = expected();
    const DrawnRows& drawn = m_grid.drawn();
    const auto inView = (std::min)(m_grid.GetDisplayCount() - m_grid.GetTopIndex(), m_grid.GetCountPerPage());
    if (static_cast<int>(drawn.size()) < inView) return "a row in view was not drawn";
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        if (!drawn[i].row) continue;
        const Told& row = m_told[rows[static_cast<std::size_t>(drawn[i].visual)]];
        const auto cell = [&](OrderColumn column) { return drawn[i].cells.at(static_cast<std::size_t>(column)); };
        if (cell(OrderColumn::order) == row.name && cell(OrderColumn::symbol) == row.symbol) continue;
        return "drawn in row " + std::to_string(drawn[i].visual) + ": " + cell(OrderColumn::order) + " " +
               cell(OrderColumn::symbol) + ", to be drawn: " + row.name + " " + row.symbol;
    }
    return {};
}

void FindProof::check(const char* what, bool held, const std::string& finding) {
    ++m_outcome.tried;
    if (held)
        ++m_outcome.held;
    else
        m_outcome.findings.push_back(std::string(what) + ": " + finding);
}

void FindProof::checkRows(const char* what) {
    const Arrivals wanted = expected();
    const bool came = pumpUntil([&] { return shown() == wanted; }, m_outcome.findings.empty() ? patience : impatience);
    pumpAll();
    const Arrivals seen = shown();
    if (!came || seen != wanted)
        check(what, false, "seen " + described(seen) + "; expected " + described(wanted));
    else if (const std::string wrong = drawnWrong(); !wrong.empty())
        check(what, false, wrong);
    else
        check(what, true, {});
}

// The pane as it stands, with the pop-up over it.
void FindProof::save(const char* name, HWND popup) {
    m_pane.setRemark(std::to_string(m_grid.GetDisplayCount()) + " rows, " + m_pane.orderText());
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

void FindProof::useTheBar() {
    bringToFront();
    checkRows("a first start shows the book by price");
    clickRow(quor::MouseButton::left);
    pumpAll();
    press({VK_CONTROL, 'F'});
    const HWND focus = ::GetFocus();
    check("Ctrl+F opens the filter bar", ::GetParent(focus) == header(), "the keyboard is in no field of it");

    const auto text = search().text;
    const std::string prefix = commonPrefix();
    tabTo(search().column);
    type(prefix);
    m_passes = [=](const Told& row) { return startsWith(row.*text, prefix); };
    checkRows("a filter that was typed takes hold by itself");
    save("find-typed.png");

    const Arrivals found = expected();
    const Quantity above = found.empty() ? 0 : m_told[found[found.size() / 2]].quantity;
    tabTo(OrderColumn::quantity);
    type(">" + std::to_string(above));
    press({VK_RETURN});
    m_passes = [=](const Told& row) { return startsWith(row.*text, prefix) && row.quantity > above; };
    checkRows("a second filter narrows the first, at once with Enter");

    type("9");
    press({VK_ESCAPE});
    checkRows("Esc leaves the rows as they were");
    check("Esc gives the keyboard back to the rows", ::GetFocus() == m_grid.GetSafeHwnd(), "it is elsewhere");
    clickHeading(OrderColumn::quantity);
    checkRows("a heading that is clicked moves nothing while the sort is locked");

    emptyField(OrderColumn::quantity);
    emptyField(search().column);
    m_passes = [](const Told&) { return true; };
    checkRows("emptied fields bring all rows back, in the locked order");
}

// Orders come in above, among and below the others, one moves and one leaves. No row of the tally's is touched.
void FindProof::letRowsStream() {
    const Tally& tally = m_run.feed->tally();
    const std::vector<Order> live = tally.liveOrdersByArrival();
    const Arrivals before = shown();
    if (before.size() < std::size_t{fewestRows})
        return check("rows are left to stream between", false, described(before));
    clickRow(quor::MouseButton::left, fewestRows - 1);
    pumpAll();
    const int chosen = m_grid.CListCtrl::GetNextItem(-1, LVNI_SELECTED);
    const std::size_t selected = chosen < 0 ? m_told.size() : before[static_cast<std::size_t>(chosen)];

    OrderId id = 1'000'000'000'000;
    const auto add = [&](Price price) {
        const Order order{.id = ++id, .instrument = 0, .price = price, .quantity = 7};
        m_told.push_back({std::to_string(id), tally.instruments()[0].instrument.symbol, price, order.quantity});
        m_pane.order({OrderAction::add, order}, m_run.clock.nowMicros());
    };
    const Price highest = m_told[before.front()].price;
    for (const Price price : {highest + priceOne, highest, m_told[before[before.size() / 2]].price, priceOne / 100})
        add(price);
    const std::size_t firstOrder = m_told.size() - 4 - live.size();
    std::vector<std::size_t> others;  // orders that the user has not selected
    for (std::size_t i = 0; i < live.size() && others.size() < 2; ++i)
        if (firstOrder + i != selected) others.push_back(i);
    if (others.size() == 2) {
        Order moved = live[others[0]];
        m_told[firstOrder + others[0]].price = moved.price = highest + 2 * priceOne;
        m_pane.order({OrderAction::change, moved}, m_run.clock.nowMicros());
        m_told[firstOrder + others[1]].gone = true;
        m_pane.order({OrderAction::remove, live[others[1]]}, m_run.clock.nowMicros());
    }
    processEndofBatchUpdates();
    m_pane.keepOrder();
    checkRows("rows that come in take their place in the locked order");
    const Arrivals now = shown();
    const int still = m_grid.CListCtrl::GetNextItem(-1, LVNI_SELECTED);
    check("the selection stays on its row",
          m_grid.GetSelectedCount() == 1 && still >= 0 && now[static_cast<std::size_t>(still)] == selected &&
              still != chosen && m_grid.CListCtrl::GetNextItem(-1, LVNI_FOCUSED) == still,
          "selected row " + std::to_string(chosen) + " before, " + std::to_string(still) + " after, " +
              std::to_string(m_grid.GetSelectedCount()) + " rows in all");
}

void FindProof::sortAndLock() {
    chooseInMenu('L');
    check("the menu unlocks the sort", !m_grid.m_bSortLocked, "it is still locked");
    clickHeading(OrderColumn::quantity);
    m_key = &Told::quantity;
    m_order = -1;
    checkRows("a click on a heading sorts, rising");
    clickHeading(OrderColumn::quantity);
    m_order = 1;
    checkRows("a second click turns the order round");
    chooseInMenu('L');
    check("the menu locks the sort", m_grid.m_bSortLocked != 0, "it is not locked");
}

void FindProof::useThePopup() {
    std::set<std::string> values;
    const auto text = search().text;
    for (const Told& row : m_told)
        if (!row.gone) values.insert(row.*text);
    clickFunnel(search().column);
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
    m_passes = [=](const Told& row) { return startsWith(row.*text, one) || startsWith(row.*text, other); };
    checkRows("the values that were chosen filter, and the locked order stays");
    check("the pop-up goes", !popup->IsWindowVisible(), "it is still there");
    save("find-locked.png");
    chooseInMenu('R');
    m_passes = [](const Told&) { return true; };
    checkRows("filters that are reset bring all rows back, in the locked order");
}

void FindProof::afterRestart() {
    bringToFront();
    m_key = &Told::quantity;
    m_order = 1;
    checkRows("the locked order survives a restart");
}

// One frame over the store in use, shown, for as long as `use` takes.
void inFrame(TerminalRun& run, Outcome& outcome, const std::function<void(FindProof&)>& use) {
    auto* const frame = new CMainFrame(run);
    AfxGetApp()->m_pMainWnd = frame;
    const bool made = frame->CreateRestored() != FALSE;
    if (made) {
        FindProof proof(run, *frame, outcome);
        use(proof);
    } else {
        outcome.findings.push_back("the window could not be made");
    }
    AfxGetApp()->m_pMainWnd = nullptr;  // its end does not end the program
    if (made) frame->DestroyWindow();
    pumpAll();
}

}  // namespace

void proveFinding(TerminalRun& run) {
    if (rowsTold(run.feed->tally()).size() < std::size_t{fewestRows}) return;
    SettingsFile store(run.disk, run.outPath("find-settings.ini"));  // never written
    writeFirstUserColumns(store);
    useSettings(&store);
    const ULONGLONG begin = ::GetTickCount64();
    const BoxGuard guard;
    Outcome outcome;
    inFrame(run, outcome, [](FindProof& proof) {
        proof.useTheBar();
        proof.letRowsStream();
        proof.sortAndLock();
        proof.useThePopup();
    });
    inFrame(run, outcome, [](FindProof& proof) { proof.afterRestart(); });
    useSettings(&run.proofStore);
    for (const std::string& text : BoxGuard::texts()) outcome.findings.push_back("a box nobody expects: " + text);
    run.summary.findTried = outcome.tried;
    run.summary.findHeld = outcome.held;
    Log::instance().add(("Find: " + std::to_string(outcome.held) + " of " + std::to_string(outcome.tried) +
                         " checks held, in " + std::to_string(::GetTickCount64() - begin) + " ms")
                            .c_str());
    for (const std::string& finding : outcome.findings) {
        Log::instance().add(("Find: " + finding).c_str());
        std::fprintf(stderr, "find: %s\n", finding.c_str());
    }
    if (!outcome.findings.empty() && run.exitCode == exitWell) run.exitCode = exitCheckFailed;
}

}  // namespace terminal
