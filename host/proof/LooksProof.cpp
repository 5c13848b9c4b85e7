#include "host/proof/LooksProof.h"

#include "host/MainFrame.h"
#include "host/TerminalRun.h"
#include "host/core/Utf8.h"
#include "host/panes/ListMenu.h"
#include "host/proof/UserHand.h"
#include "quor/edits/XListCtrl.h"
#include "quor/grid/ListTrendSetting.h"
#include "quor/list/CustomizedAppearance.h"
#include "quor/list/ListCommands.h"
#include "quor/list/UserCusomize.h"
#include "quor/platform/proving/WindowCapture.h"
#include "quor/resource/resource.h"

#include <algorithm>
#include <optional>

namespace terminal {

namespace {

constexpr int kFlashMilliseconds = 2'000;
constexpr const char* kListPoints = "12";
constexpr const char* kWatchPoints = "14";

constexpr ColourBox kTradesGround{4, 4}, kKeywordText{1, 0}, kSideGround{1, 4}, kRise{3, 3}, kWatchGround{0, 4};

POINT middleOf(HWND window) {
    RECT area{};
    ::GetClientRect(window, &area);
    return {area.right / 2, area.bottom / 2};
}

POINT firstRow(CCommonListCtrl& list) {
    CRect row;
    list.GetItemRect(list.GetTopIndex(), &row, LVIR_LABEL);
    return row.CenterPoint();
}

int fontHeightOf(const CWnd& list) {
    LOGFONT font{};
    const CFont* const present = list.GetFont();
    return present && present->GetLogFont(&font) ? static_cast<int>(font.lfHeight) : 0;
}

void clickItem(CWnd& dialog, int id) {
    const HWND item = ::GetDlgItem(dialog.m_hWnd, id);
    click(item, middleOf(item));
}

bool pickColour(CWnd& owner, ColourBox box, const std::function<void()>& open) {
    return throughColours(owner, open, box);
}

// Whether the client area shows the colour anywhere, painted anew.
bool shows(CWnd& window, COLORREF colour) {
    WindowPicture picture;
    window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    if (!quorCaptureClientArea(window, picture)) return false;
    const auto pixel = 0xFF000000u | static_cast<std::uint32_t>(GetRValue(colour)) << 16 |
                       static_cast<std::uint32_t>(GetGValue(colour)) << 8 | GetBValue(colour);
    return std::find(picture.pixels.begin(), picture.pixels.end(), pixel) != picture.pixels.end();
}

std::string hex(COLORREF colour) {
    char text[16];
    std::snprintf(text, sizeof text, "%06lX", static_cast<unsigned long>(colour));
    return text;
}

// What the user chose in one list, as its record tells it.
struct Looks {
    COLORREF ground = 0;
    int fontHeight = 0;
    std::string keywords;
    bool operator==(const Looks&) const = default;
    std::string text() const {
        return "ground " + hex(ground) + ", font " + std::to_string(fontHeight) + ", " + keywords;
    }
};

std::string keywordsOf(const CStringArray* words, const CArray<DWORD, DWORD>* colours) {
    std::string text = "keywords";
    for (INT_PTR i = 0; words && colours && i < words->GetCount() && i < colours->GetCount(); ++i)
        text += std::string(" ") + words->GetAt(i).GetString() + "/" + hex(colours->GetAt(i));
    return text;
}

Looks looksOf(CCommonListCtrl& list) {
    const cCustomizedAppearanceSettings& record = list.m_Appearance;
    return {list.GetBkColor(), fontHeightOf(list),
            keywordsOf(record.pKeywords, record.pKeywordColors) + "; by user " +
                keywordsOf(record.pUserKeywords, record.pUserBackColors)};
}

// The trends of a grid.
struct Trends {
    COLORREF rise = 0;
    int interval = 0;
    bool operator==(const Trends&) const = default;
    std::string text() const { return "rise " + hex(rise) + ", " + std::to_string(interval) + " ms"; }
};

Trends trendsOf(const CFilterListCtrl& grid) { return {grid.PosColor, grid.TrendInterval}; }

// What is chosen before the restart.
struct Chosen {
    Looks trades, orders, watch;
    Trends positions;
};

class Steps {
public:
    Steps(TerminalRun& run, const ListPanes& panes, Outcome& outcome)
        : m_run(run), m_outcome(outcome), m_panes(panes) {}

    Chosen act() {
        customizeTrades();
        customizeOrders();
        setTrends();
        flash();
        dressWatch();
        return found();
    }
    void afterRestart(const Chosen& chosen);

private:
    Chosen found() {
        return {looksOf(m_panes.trades.list()), looksOf(m_panes.orders.list()), looksOf(m_panes.watch.list()),
                trendsOf(m_panes.positions.grid())};
    }
    CWnd* open(CCommonListCtrl& list, UINT command, CZTDialog* (*shared)(CCommonListCtrl&), const char* what);
    void close(CWnd& dialog, int apply);
    void addKeyword(CWnd& dialog, const std::string& keyword, int table, int column, ColourBox box);
    void customizeTrades();
    void customizeOrders();
    void setTrends();
    void flash();
    void dressWatch();

    void check(const char* what, bool held, const std::string& finding) { m_outcome.check(what, held, finding); }
    template <class Value>
    void checkSame(const char* what, const Value& now, const Value& then) {
        check(what, now == then, "now " + now.text() + "; chosen " + then.text());
    }
    void save(const char* name, CWnd& window) {
        CString error;
        window.UpdateWindow();
        if (!quorSaveClientAreaPng(window, wideText(m_run.outPath(name)).c_str(), &error))
            m_outcome.findings.push_back(std::string(name) + " could not be written: " + error.GetString());
    }

    TerminalRun& m_run;
    Outcome& m_outcome;
    ListPanes m_panes;
};

// Null, after a check that failed: no dialog showed.
CWnd* Steps::open(CCommonListCtrl& list, UINT command, CZTDialog* (*shared)(CCommonListCtrl&), const char* what) {
    clickInMenu(list, firstRow(list), command);
    CZTDialog* dialog = nullptr;
    const bool shown = pumpUntil(
        [&] {
            for (INT_PTR i = 0; !dialog && i < CZTDialog::AllDlgArray.GetCount(); ++i)
                if (CZTDialog::AllDlgArray[i]->IsWindowVisible()) dialog = shared(list);
            return dialog && dialog->IsWindowVisible();
        },
        kPatience);
    check(what, shown, "no dialog shows");
    return shown ? dialog : nullptr;
}

void Steps::close(CWnd& dialog, int apply) {
    clickItem(dialog, apply);
    if (dialog.IsWindowVisible()) clickItem(dialog, IDCANCEL);
    check("the dialog closes", !dialog.IsWindowVisible(), "it still shows");
}

// Typed, and its box coloured by the mouse; it is the only row.
void Steps::addKeyword(CWnd& dialog, const std::string& keyword, int table, int column, ColourBox box) {
    clickItem(dialog, IDC_NEW_KEYWORD);
    type(keyword);
    press({VK_RETURN});
    auto& list = *static_cast<CXListCtrl*>(dialog.GetDlgItem(table));
    check("a keyword that is typed becomes a row", list.GetItemCount() == 1,
          std::to_string(list.GetItemCount()) + " rows");
    if (list.GetItemCount() != 1) return;
    const CRect cell = list.GetCellRect(0, column);
    check("a box of the table opens the colours", pickColour(dialog, box, [&] { click(list, cell.CenterPoint()); }),
          "no dialog came, or it did not close");
}

void Steps::customizeTrades() {
    CTradesPane& pane = m_panes.trades;
    CLiveGrid& grid = pane.grid();
    // Of the second row: the first is selected by the menu's click, and painted so.
    const auto* const row = static_cast<const TradeRow*>(grid.rowAt(grid.GetTopIndex() + 1));
    const std::string symbol = m_run.feed->tally().instruments()[row->trade.instrument].instrument.symbol;
    const Looks before = looksOf(grid);
    CWnd* const dialog = open(
        grid, kCustomizeAppearance,
        [](CCommonListCtrl& list) -> CZTDialog* { return CCustomizedAppearance::shared(list); },
        "the menu of the trades opens their appearance");
    if (!dialog) return;
    check("a button opens the colours",
          pickColour(*dialog, kTradesGround, [&] { clickItem(*dialog, IDC_PROPERTY_COLOR); }),
          "no dialog came, or it did not close");
    throughDialog(
        *dialog, [&] { clickItem(*dialog, IDC_LIST_FONT); },
        [](HWND fonts) {
            const HWND size = ::GetDlgItem(fonts, IDC_FONT_SIZE);
            quor::sendClick(size, middleOf(size), quor::MouseButton::left, 2);
            quor::sendText(kListPoints);
            quor::sendKeys({VK_RETURN});
        });
    clickItem(*dialog, IDC_PROPERTY);
    press({'T'});
    press({VK_RETURN});
    clickItem(*dialog, IDC_CHANGE_KEYWORD_COLUMN);
    press({'S'});  // the symbols
    addKeyword(*dialog, symbol, IDC_KEYWORDS, 1, kKeywordText);
    save("looks-customize.png", *dialog);
    close(*dialog, IDC_APPLY_APPEARANCE);

    const Looks now = looksOf(grid);
    check("the trades have another ground", now.ground != before.ground && shows(grid, now.ground), now.text());
    check("the trades have another font", now.fontHeight == quor::platform::fontHeight(grid, std::atoi(kListPoints)),
          now.text());
    const auto* const colours = grid.m_Appearance.pKeywordColors;
    check("a row is in the colour of its keyword",
          colours && colours->GetCount() == 1 && shows(grid, colours->GetAt(0)), now.text());
    save("looks-trades.png", grid);
}

void Steps::customizeOrders() {
    CLiveGrid& grid = m_panes.orders.grid();
    const auto* const row = static_cast<const OrderRow*>(grid.rowAt(grid.GetTopIndex()));
    CWnd* const dialog = open(
        grid, kUserCustomize, [](CCommonListCtrl& list) -> CZTDialog* { return CUserCusomize::shared(list); },
        "the menu of the orders opens their colours by text");
    if (!dialog) return;
    addKeyword(*dialog, row->order.side == Side::buy ? "Buy" : "Sell", IDC_USER_KEYWORDS, 2, kSideGround);
    save("looks-user.png", *dialog);
    close(*dialog, IDC_APPLY_APPEARANCE);
    const auto* const colours = grid.m_Appearance.pUserBackColors;
    check("orders are in the colours of their side",
          colours && colours->GetCount() == 1 && shows(grid, colours->GetAt(0)), looksOf(grid).text());
}

// From the button of the rises two steps by Tab to the slider.
void Steps::setTrends() {
    CLiveGrid& grid = m_panes.positions.grid();
    const Trends before = trendsOf(grid);
    CWnd* const dialog = open(
        grid, kSetTrendColumns,
        [](CCommonListCtrl& list) -> CZTDialog* {
            return CListTrendSetting::shared(static_cast<CFilterListCtrl&>(list));
        },
        "the menu of the positions opens their trends");
    if (!dialog) return;
    pickColour(*dialog, kRise, [&] { clickItem(*dialog, IDC_RISE_COLOR); });
    for (const WORD key : {VK_TAB, VK_TAB, VK_HOME, VK_RIGHT, VK_RIGHT}) press({key});
    save("looks-trends.png", *dialog);
    close(*dialog, IDOK);
    const Trends now = trendsOf(grid);
    check("the trends have another colour", now.rise != before.rise, now.text());
    check("the trends have another interval", now.interval == kFlashMilliseconds && now.interval != before.interval,
          now.text());
}

void Steps::flash() {
    CPositionsPane& pane = m_panes.positions;
    CLiveGrid& grid = pane.grid();
    const Position& position = *static_cast<const PositionRow*>(grid.rowAt(grid.GetTopIndex()))->position;
    Quote news;
    news.instrument = position.instrument.id;
    news.fields = quoteLast;
    const Price former = position.last;
    const auto tell = [&](Price last) {
        news.last = last;
        pane.quote(news, m_run.clock.nowMicros());
        processEndofBatchUpdates();
    };
    check("nothing flashes before a price moves", !shows(grid, grid.PosColor), "the colour of rises is there");
    tell(former + position.instrument.tickSize);
    const ULONGLONG begin = ::GetTickCount64();
    check("a price that rises flashes", shows(grid, grid.PosColor), "the colour is not there");
    pane.showTotals();
    save("looks-flash.png", pane);
    const bool ended = pumpUntil([&] { return !shows(grid, grid.PosColor); });
    const ULONGLONG took = ::GetTickCount64() - begin;
    check("the flash ends with its interval", ended && took >= kFlashMilliseconds / 2, std::to_string(took) + " ms");
    tell(former);
    pane.showTotals();
}

void Steps::dressWatch() {
    CWatchList& list = m_panes.watch.list();
    const Looks before = looksOf(list);
    check("the menu of the watch opens the colours",
          pickColour(list, kWatchGround, [&] { clickInMenu(list, firstRow(list), kWatchBackground); }),
          "no dialog came, or it did not close");
    const bool hadFont = throughFonts(
        list, [&] { clickInMenu(list, firstRow(list), kWatchFont); }, kWatchPoints);
    check("the menu of the watch opens the fonts", hadFont, "no dialog came, or it did not close");
    const Looks now = looksOf(list);
    check("the watch has another ground", now.ground != before.ground && shows(list, now.ground), now.text());
    check("the watch has another font", now.fontHeight == quor::platform::fontHeight(list, std::atoi(kWatchPoints)),
          now.text());
    save("looks-watch.png", m_panes.watch);
}

void Steps::afterRestart(const Chosen& chosen) {
    const Chosen now = found();
    checkSame("the looks of the trades survive a restart", now.trades, chosen.trades);
    checkSame("the looks of the orders survive a restart", now.orders, chosen.orders);
    checkSame("the trends of the positions survive a restart", now.positions, chosen.positions);
    checkSame("the looks of the watch survive a restart", now.watch, chosen.watch);
    check("the trades are painted in theirs", shows(m_panes.trades.grid(), chosen.trades.ground), now.trades.text());
    check("the watch is painted in theirs", shows(m_panes.watch.list(), chosen.watch.ground), now.watch.text());
}

class LooksProof final : public Proof {
public:
    LooksProof(TerminalRun& run, Outcome& outcome) : m_run(run), m_outcome(outcome) {}

    std::string missing(CMainFrame& frame) override {
        const ListPanes panes = frame.panes();
        const std::pair<const char*, int> rows[] = {{"orders", panes.orders.grid().GetDisplayCount()},
                                                    {"trades", panes.trades.grid().GetDisplayCount() - 1},
                                                    {"positions", panes.positions.grid().GetDisplayCount()},
                                                    {"watch", panes.watch.list().GetItemCount()}};
        for (const auto& [name, count] : rows)
            if (count <= 0) return std::string("rows in the pane of the ") + name;
        if (CCommonListCtrl::m_csGetRecoveryFile.IsEmpty()) return "a folder that has a name in the code page";
        return {};
    }
    void act(CMainFrame& frame) override { m_chosen = Steps(m_run, frame.panes(), m_outcome).act(); }
    void check(CMainFrame& frame) override { Steps(m_run, frame.panes(), m_outcome).afterRestart(m_chosen); }

private:
    TerminalRun& m_run;
    Outcome& m_outcome;
    Chosen m_chosen;
};

}  // namespace

std::unique_ptr<Proof> makeLooksProof(TerminalRun& run, Outcome& outcome) {
    return std::make_unique<LooksProof>(run, outcome);
}

}  // namespace terminal
