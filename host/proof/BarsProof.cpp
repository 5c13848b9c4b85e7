#include "host/proof/BarsProof.h"

#include "host/MainFrame.h"
#include "host/TerminalRun.h"
#include "host/core/Utf8.h"
#include "host/proof/UserHand.h"
#include "host/resource/resource.h"
#include "quor/platform/proving/WindowCapture.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace terminal {

namespace {

constexpr ULONGLONG kDragDelay = 600;  // milliseconds after which a tab that is held down is dragged
constexpr ColourBox kOneColour{0, 3}, kAllColour{4, 3};
constexpr const char* kOnePoints = "14";
constexpr const char* kAllPoints = "9";
constexpr int kCutWidth = 24;          // pixels of a column of trades
constexpr ULONGLONG kBesideTip = 300;  // milliseconds in which a tip would show for the next cell
constexpr int kDragged = 3, kFarther = 40, kManyWorkspaces = 24;

POINT middleOf(HWND window) {
    RECT area{};
    ::GetClientRect(window, &area);
    return {area.right / 2, area.bottom / 2};
}

std::string textOf(const std::vector<int>& numbers) {
    std::string text;
    for (const int number : numbers) text += std::to_string(number) + " ";
    return text;
}

// What is chosen before the restart, as it has to be found again.
struct Chosen {
    std::vector<int> bricks;
    std::vector<COLORREF> colours;
    std::string tabs, shares;
};

class Steps {
public:
    Steps(TerminalRun& run, CMainFrame& frame, Outcome& outcome)
        : m_run(run), m_frame(frame), m_outcome(outcome), m_bricks(frame.bricks()), m_area(frame.lowerPanes()) {}

    Chosen act() {
        walkByKeys();
        restOnTrades();
        dragBricks();
        dressBricks();
        arrangeWorkspaces();
        dividePanes();
        return found();
    }
    void afterRestart(const Chosen& chosen);

private:
    CFlatSplitterWnd& splitter() { return *m_bricks.GetSplitterWnd(); }
    CHolderView& brick(int number) { return static_cast<CHolderView&>(*splitter().GetPane(0, number)); }
    int count() const { return m_bricks.GetPaneCount(); }
    std::vector<COLORREF> colours() {
        std::vector<COLORREF> all;
        for (int number = 0; number < count(); ++number) all.push_back(brick(number).GetTitleColor());
        return all;
    }
    std::vector<int> fontHeights() {
        std::vector<int> all;
        for (int number = 0; number < count(); ++number) {
            LOGFONT font{};
            if (CFont* const own = brick(number).GetTitleFont()) own->GetLogFont(&font);
            all.push_back(static_cast<int>(font.lfHeight));
        }
        return all;
    }
    Chosen found() { return {splitter().GetColumnShares(), colours(), tabsText(), sharesText()}; }
    std::string tabsText();
    std::string sharesText();
    // The bar behind a column of a splitter, by some pixels.
    void dragBar(CFlatSplitterWnd& splitter, int column, int by);
    void command(int number, UINT id) { clickInMenu(brick(number), middleOf(brick(number)), id); }
    POINT tabPoint(int tab);

    void walkByKeys();
    // The tip of a row's cell, once it shows.
    HWND restOn(CCommonListCtrl& list, int row, int place);
    void restOnTrades();
    void dragBricks();
    void dressBricks();
    void arrangeWorkspaces();
    void dividePanes();
    void check(const char* what, bool held, const std::string& finding) { m_outcome.check(what, held, finding); }
    void save(const char* name, CWnd& window) {
        CString error;
        window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        if (!quorSaveClientAreaPng(window, wideText(m_run.outPath(name)).c_str(), &error))
            m_outcome.findings.push_back(std::string(name) + " could not be written: " + error.GetString());
    }

    TerminalRun& m_run;
    CMainFrame& m_frame;
    Outcome& m_outcome;
    CZTBrickBar& m_bricks;
    CWorkspaceArea& m_area;
};

std::string Steps::tabsText() {
    std::string text;
    CCustomTabCtrl& tabs = m_area.tabs();
    for (int tab = 0; tab < tabs.GetItemCount(); ++tab)
        text += std::string(tabs.GetItemText(tab)) + (tab == tabs.GetCurSel() ? "* " : " ");
    return text;
}

std::string Steps::sharesText() {
    std::string text;
    for (const PaneShare& pane : m_area.shares())
        text += pane.pane + (pane.shown ? formatted(" %.2f ", pane.share) : " closed ");
    return text;
}

void Steps::dragBar(CFlatSplitterWnd& splitter, int column, int by) {
    CRect left, right;
    splitter.GetPane(0, column)->GetWindowRect(&left);
    splitter.GetPane(0, column + 1)->GetWindowRect(&right);
    splitter.ScreenToClient(&left);
    splitter.ScreenToClient(&right);
    const POINT from{(left.right + right.left) / 2, left.CenterPoint().y};
    quor::sendDrag(splitter, from, {from.x + by, from.y});
    pumpAll();
}

POINT Steps::tabPoint(int tab) {
    RECT area{};
    m_area.tabs().GetItemRect(tab, area);
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

// ---- Keys

void Steps::walkByKeys() {
    const auto holds = [](CWnd& window) { return window == ::GetFocus() || ::IsChild(window, ::GetFocus()); };
    CCommonListCtrl& watch = m_frame.panes().watch.list();
    watch.SetFocus();
    const auto press = [](std::initializer_list<WORD> keys) {
        quor::sendKeys(keys);
        pumpAll();
    };
    press({VK_SHIFT, VK_F6});
    check("Shift+F6 goes to the bricks", holds(brick(0)), "they have no focus");
    press({VK_F6});
    check("F6 goes back to the watch's list", holds(watch), "it has no focus");
    press({VK_F6});
    press({VK_F6});
    check("F6 goes past the tabs to a list", holds(m_frame.panes().orders.list()), "it has no focus");
    const std::vector<int> former = m_area.upperRow().GetColumnShares();
    press({VK_CONTROL, VK_F6});
    press({VK_LEFT});
    const bool moved = m_area.upperRow().GetColumnShares()[0] < former[0];
    press({VK_ESCAPE});
    check("keys move the bar beside it, and Esc undoes", moved && m_area.upperRow().GetColumnShares() == former,
          textOf(m_area.upperRow().GetColumnShares()));
}

// ---- Tips

CRect labelOf(CCommonListCtrl& list, int row, int place) {
    CRect label;
    list.GetSubItemRect(row, place, LVIR_LABEL, label);
    return label;
}

std::string fontOf(CWnd& window) {
    LOGFONT font{};
    if (CFont* const own = window.GetFont()) own->GetLogFont(&font);
    return font.lfFaceName + (" " + std::to_string(font.lfHeight));
}

// A place whose cell shows whole; -1: none.
int wholeCell(CCommonListCtrl& list, int row) {
    CClientDC dc(&list);
    const SelectScope font(&dc, list.GetFont());
    for (int place = list.GetHeaderCtrl()->GetItemCount() - 1; place > 0; --place) {
        const CRect label = labelOf(list, row, place);
        const int width = dc.GetTextExtent(list.GetItemText(row, place)).cx;
        CRect view;
        list.GetClientRect(&view);
        if (width > 0 && width + kCutWidth < label.Width() && label.right < view.right) return place;
    }
    return -1;
}

HWND Steps::restOn(CCommonListCtrl& list, int row, int place) {
    quor::sendMouseMove(list, labelOf(list, row, place).CenterPoint());
    pumpUntil([] { return quorShownToolTip() != nullptr; }, kImpatience);
    return quorShownToolTip();
}

// A market without trades has no cells.
void Steps::restOnTrades() {
    constexpr int kRows = 3;
    CCommonListCtrl& list = m_frame.panes().trades.list();
    if (list.GetItemCount() < kRows) return;
    const int cut = list.m_arrOrder[static_cast<int>(TradeColumn::time)], width = list.GetColumnWidth(cut);
    list.SetColumnWidth(cut, quor::platform::scaled(list, kCutWidth));
    list.SetFocus();
    list.EnsureVisible(0, FALSE);
    pumpAll();
    const auto gone = [](const char* deed) { return std::string("a tip stays after ") + deed; };
    if (CWnd* const tip = CWnd::FromHandle(restOn(list, 0, cut))) {
        CRect place, cell = labelOf(list, 0, cut);
        CString text;
        tip->GetWindowRect(&place);
        tip->GetWindowText(text);
        list.ClientToScreen(&cell);
        check("a clipped trade tells its text", text == list.GetItemText(0, cut), text.GetString());
        check("a tip stands in its cell's place",
              place.PtInRect(cell.TopLeft()) && place.right > cell.right && place.bottom < cell.bottom + cell.Height(),
              formatted("at %ld,%ld; the cell ", place.left, place.top) + formatted("%ld,%ld", cell.left, cell.top));
        check("a tip has its cell's font", fontOf(*tip) == fontOf(list), fontOf(*tip));
    }
    check("a clipped trade has a tip", quorShownToolTip() != nullptr, "none came");
    const int whole = wholeCell(list, 0);
    if (whole > 0) quor::sendMouseMove(list, labelOf(list, 0, whole).CenterPoint());
    check("a trade that shows whole has no tip",
          whole > 0 && !pumpUntil([] { return false; }, kBesideTip) && !quorShownToolTip(),
          "one came, or no cell is whole");
    const std::pair<const char*, std::function<void()>> deeds[] = {
        {"a key", [] { press({VK_SHIFT}); }},
        {"a scroll", [] { ::mouse_event(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(-WHEEL_DELTA), 0); }},
        {"a click", [&] { click(list, labelOf(list, 2, cut).CenterPoint()); }},
    };
    int row = 0;
    for (const auto& [deed, act] : deeds) {
        list.EnsureVisible(0, FALSE);
        const bool came = restOn(list, row++, cut) != nullptr;
        act();
        pumpAll();
        check("a tip goes with what the user does", came && !quorShownToolTip(), came ? gone(deed) : "none came");
    }
    list.SetColumnWidth(cut, width);
    list.EnsureVisible(0, FALSE);
}

// ---- Bricks

void Steps::dragBricks() {
    const std::vector<int> first = splitter().GetColumnShares();
    dragBar(splitter(), 3, -first[3] - kFarther);
    check("a brick is dragged to nothing", splitter().GetColumnShares()[3] == 0, textOf(splitter().GetColumnShares()));
    command(0, kCommandFitBricks);
    const std::vector<int> fitted = splitter().GetColumnShares();
    const auto [least, most] = std::minmax_element(fitted.begin(), fitted.end() - 1);
    check("fitted bricks are equally wide", *least > 0 && *most - *least <= 1, textOf(fitted));
    for (int column = 0; column < kDragged; ++column) dragBar(splitter(), column, kFarther);
    const std::vector<int> dragged = splitter().GetColumnShares();
    check("a brick is as wide as it was dragged", dragged[0] == fitted[0] + kFarther, textOf(dragged));
}

void Steps::dressBricks() {
    const std::vector<COLORREF> former = colours();
    check("a brick's menu opens the colours",
          throughColours(
              brick(0), [&] { command(0, kCommandBrickColor); }, kOneColour),
          "no dialog came");
    std::vector<COLORREF> now = colours();
    check("one brick has another colour",
          now[0] != former[0] && std::equal(now.begin() + 1, now.end(), former.begin() + 1),
          "others changed, or it did not");
    const std::vector<int> heights = fontHeights();
    check("a brick's menu opens the fonts",
          throughFonts(
              brick(1), [&] { command(1, kCommandBrickFont); }, kOnePoints),
          "no dialog came");
    check("one brick has another font", fontHeights()[1] != heights[1] && fontHeights()[0] == heights[0],
          textOf(fontHeights()));
    check("a brick's menu opens the colours of all",
          throughColours(
              brick(2), [&] { command(2, kCommandAllBrickColors); }, kAllColour),
          "no dialog came");
    now = colours();
    check("all bricks have another colour",
          std::count(now.begin(), now.end(), now[0]) == count() && now[0] != former[0], "they differ");
    check("a brick's menu opens the fonts of all",
          throughFonts(
              brick(2), [&] { command(2, kCommandAllBrickFonts); }, kAllPoints),
          "no dialog came");
    const std::vector<int> same = fontHeights();
    check("all bricks have one font", std::count(same.begin(), same.end(), same[0]) == count(), textOf(same));
    command(0, kCommandDefaultBricks);
    now = colours();
    check("the defaults are black", std::count(now.begin(), now.end(), COLORREF{0}) == count(), "they are not");
    throughColours(
        brick(0), [&] { command(0, kCommandBrickColor); }, kOneColour);
    save("bars-bricks.png", m_bricks);
}

// ---- Workspaces

void Steps::arrangeWorkspaces() {
    CCustomTabCtrl& tabs = m_area.tabs();
    clickInMenu(tabs, tabPoint(0), kAddWorkspace);
    check("a workspace is added and shown", tabsText() == "Trading Workspace 2* ", tabsText());
    tabs.SetFocus();
    quor::sendKeys({VK_F2});
    quor::sendText("Night");
    quor::sendKeys({VK_RETURN});
    pumpAll();
    check("a workspace is renamed", tabsText() == "Trading Night* ", tabsText());
    click(tabs, tabPoint(0));
    quor::sendKeys({VK_SHIFT, VK_F10});
    quor::sendKeys({'C'});
    pumpAll();
    check("a workspace is copied by keys", tabsText() == "Trading Trading (2)* Night ", tabsText());
    quor::sendPress(tabs, tabPoint(1));
    pumpUntil([] { return false; }, kDragDelay);
    quor::sendMouseMove(tabs, tabPoint(0));
    pumpAll();
    quor::sendRelease(tabs, {tabPoint(0).x / 2, tabPoint(0).y});
    pumpAll();
    check("a workspace is dragged to the front", tabsText() == "Trading (2)* Trading Night ", tabsText());
    clickInMenu(tabs, tabPoint(1), kCloseWorkspace);
    check("a workspace is closed", tabsText() == "Trading (2)* Night ", tabsText());
    for (int more = 0; more < kManyWorkspaces; ++more) m_frame.SendMessage(WM_COMMAND, ID_VIEW_ADD_WORKSPACE);
    const auto shows = [&tabs](int tab) {
        RECT area{};
        return tabs.GetItemRect(tab, area) && area.right > area.left;
    };
    const bool scrolled = !shows(0);
    check("the strip is scrolled to a new tab", scrolled && shows(tabs.GetItemCount() - 1), tabsText());
    save("bars-tabs.png", tabs);
    while (tabs.GetItemCount() > 2) {
        const int last = tabs.GetItemCount() - 1;
        clickInMenu(tabs, tabPoint(last), kCloseWorkspace);
        if (tabs.GetItemCount() > last) break;
    }
    click(tabs, tabPoint(1));
    check("a click shows a workspace", tabsText() == "Trading (2) Night* ", tabsText());
}

// ---- Panes

void Steps::dividePanes() {
    CPaneHolder& positions = m_area.holder(LowerPane::positions);
    const HWND box = ::GetDlgItem(positions, kCommandCloseHolder);
    click(box, middleOf(box));
    check("a pane is closed", !m_area.shows(LowerPane::positions), sharesText());
    const std::vector<int> former = m_area.upperRow().GetColumnShares();
    dragBar(m_area.upperRow(), 0, kFarther);
    const std::vector<int> now = m_area.upperRow().GetColumnShares();
    check("panes are divided anew", now[0] == former[0] + kFarther && now[1] == former[1] - kFarther, textOf(now));
    const std::string night = sharesText();
    click(m_area.tabs(), tabPoint(0));
    check("another workspace is divided otherwise", m_area.shows(LowerPane::positions), sharesText());
    click(m_area.tabs(), tabPoint(1));
    check("a workspace comes back as it was left", sharesText() == night, sharesText() + "; left " + night);
    save("bars-panes.png", m_frame);
}

void Steps::afterRestart(const Chosen& chosen) {
    const Chosen now = found();
    check("the bricks are as wide after a restart",
          std::equal(now.bricks.begin(), now.bricks.end() - 1, chosen.bricks.begin()),
          textOf(now.bricks) + "; chosen " + textOf(chosen.bricks));
    check("the bricks have their colours after a restart", now.colours == chosen.colours, "they differ");
    check("the workspaces are there after a restart", now.tabs == chosen.tabs, now.tabs + "; chosen " + chosen.tabs);
    check("the panes are divided so after a restart", now.shares == chosen.shares,
          now.shares + "; chosen " + chosen.shares);
}

class BarsProof final : public Proof {
public:
    BarsProof(TerminalRun& run, Outcome& outcome) : m_run(run), m_outcome(outcome) {}

    std::string missing(CMainFrame&) override { return {}; }
    void act(CMainFrame& frame) override { m_chosen = Steps(m_run, frame, m_outcome).act(); }
    void check(CMainFrame& frame) override { Steps(m_run, frame, m_outcome).afterRestart(m_chosen); }

private:
    TerminalRun& m_run;
    Outcome& m_outcome;
    Chosen m_chosen;
};

}  // namespace

std::unique_ptr<Proof> makeBarsProof(TerminalRun& run, Outcome& outcome) {
    return std::make_unique<BarsProof>(run, outcome);
}

}  // namespace terminal
