// The panes in their splitters: made, laid out, and kept over a restart.
#include "host/MainFrame.h"
#include "host/core/WatchStore.h"
#include "host/panes/DarkMenus.h"
#include "host/panes/HostEntries.h"
#include "host/panes/ListChoices.h"
#include "host/resource/resource.h"

#include <algorithm>
#include <cstdlib>

namespace terminal {

using quor::platform::scaled;

namespace {

constexpr int kBrickHeight = 24;
constexpr int kShareUnits = 10'000;
constexpr double kWatchShare = 0.34, kLeastShare = 0.02, kLargestShare = 0.98;
constexpr const char* kBricksName = "Market";

enum Brick { kLeadersBrick, kMarketBrick, kAdvancesBrick, kDeclinesBrick, kResultBrick, kRateBrick };
constexpr const char* kBrickCaptions[] = {"Leaders", "Market", "Advances", "Declines", "Day P&L", "Ticks/s"};

std::string indexText(CCommonListCtrl& list, const std::optional<MarketPulse::Index>& index) {
    return index ? grouped(list, formatted("%.2f", index->value)) + formatted(" (%+.2f%%)", index->change) : "-";
}

LowerPane paneOf(UINT id) {
    switch (id) {
        case ID_VIEW_ORDERS:
            return LowerPane::orders;
        case ID_VIEW_TRADES:
            return LowerPane::trades;
        case ID_VIEW_CHAIN:
            return LowerPane::chain;
        case ID_VIEW_POSITIONS:
            return LowerPane::positions;
        default:
            return LowerPane::log;
    }
}

}  // namespace

std::vector<CListPane*> CMainFrame::listPanes() {
    return {m_panes.watch, m_panes.orders, m_panes.trades, m_panes.positions, m_chain};
}

bool CMainFrame::createBricks() {
    CArray<CString> captions;
    for (const char* caption : kBrickCaptions) captions.Add(caption);
    CRect place;  // the bricks of the first start share it
    GetClientRect(&place);
    place.bottom = scaled(m_hWnd, kBrickHeight);
    m_bricks.m_strBarName = kBricksName;
    if (!m_bricks.CreateBrickBars(this, static_cast<int>(std::size(kBrickCaptions)), captions, &place, 1)) return false;
    for (int brick = 0; brick < m_bricks.GetPaneCount(); ++brick)
        darkenMenus(m_bricks.GetSplitterWnd()->GetPane(0, brick)->GetSafeHwnd());
    return true;
}

bool CMainFrame::createPanes() {
    constexpr DWORD kInside = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    if (!createBricks() || !m_split.CreateStatic(this, 2, 1, kInside, IDC_SPLIT) ||
        !m_split.CreateView(0, 0, RUNTIME_CLASS(CPaneHolder), SIZE{0, 0}, nullptr) ||
        !m_area.CreateArea(&m_split, static_cast<UINT>(m_split.IdFromRowCol(1, 0))))
        return false;
    m_split.SetKeepShares(1);
    CPaneHolder& log = m_area.holder(LowerPane::log);
    if (!m_log.CreatePane(&log, IDC_LOG)) return false;
    log.hold(m_log, "Log");
    // The views delete themselves with their windows, also when their creation fails half-way.
    const auto watched = [this](auto* pane) {
        pane->setOnGone([this, pane] { paneGone(pane); });
        return pane;
    };
    m_panes.pulse = &m_pulse;
    m_panes.watch = watched(new CWatchPane(m_run.figures));
    if (!m_panes.watch->CreatePane(m_split.GetPane(0, 0), IDC_PANE_WATCH)) return false;
    m_panes.orders = watched(new COrdersPane(m_run.figures));
    if (!m_panes.orders->CreatePane(&m_area.holder(LowerPane::orders), IDC_PANE_ORDERS)) return false;
    m_panes.trades = watched(new CTradesPane(m_run.figures, m_run.options.keep));
    if (!m_panes.trades->CreatePane(&m_area.holder(LowerPane::trades), IDC_PANE_TRADES)) return false;
    m_panes.positions = watched(new CPositionsPane(m_run.figures, m_run.options.seed));
    if (!m_panes.positions->CreatePane(&m_area.holder(LowerPane::positions), IDC_PANE_POSITIONS)) return false;
    m_chain = watched(new CChainPane(m_run.figures, *m_panes.watch));
    if (!m_chain->CreatePane(&m_area.holder(LowerPane::chain), IDC_PANE_CHAIN)) return false;
    CZTDialog::m_pDgBar = &m_panes.watch->list();
    return true;
}

// A pane that goes before the frame does, or whose list goes, leaves nothing to show: the terminal ends, and the other
// panes with it.
void CMainFrame::paneGone(const CListPane* pane) {
    if (m_panes.watch == pane) {
        CZTDialog::ResetBWLDlgPtr();
        m_panes.watch = nullptr;
    }
    if (m_panes.orders == pane) m_panes.orders = nullptr;
    if (m_panes.trades == pane) m_panes.trades = nullptr;
    if (m_panes.positions == pane) m_panes.positions = nullptr;
    if (m_chain == pane) m_chain = nullptr;
    if (m_ending) return;
    m_ending = true;
    KillTimer(kTickTimer);
    EnableWindow(FALSE);
    Log::instance().add("A pane was closed: the terminal ends.");
    if (m_run.exitCode == kExitWell) m_run.exitCode = kExitCheckFailed;
    PostMessage(WM_CLOSE);
}

void CMainFrame::RecalcLayout(BOOL) {
    if (!m_status.GetSafeHwnd() || !m_split.GetSafeHwnd()) return;
    CRect area, bar;
    GetClientRect(&area);
    m_status.SendMessage(WM_SIZE);  // the bar finds its own place and height
    m_status.GetWindowRect(&bar);
    const int bricks = std::min<int>(area.Height(), scaled(m_hWnd, kBrickHeight));
    m_bricks.MoveWindow(0, 0, area.Width(), bricks);
    m_bricks.GetSplitterWnd()->MoveWindow(0, 0, area.Width(), bricks);
    m_split.MoveWindow(0, bricks, area.Width(), (std::max)(0, area.Height() - bricks - bar.Height()));
}

// --- Counts and bricks
// --------------------------------------------------------------------------------------------------------

void CMainFrame::showCounts() {
    m_panes.orders->showCount();
    m_panes.trades->showCount();
    showBricks();
}

void CMainFrame::showBricks() {
    if (!m_bricks.GetSafeHwnd() || !m_panes.positions) return;
    CCommonListCtrl& list = m_panes.positions->list();
    const auto day = m_panes.positions->positions().total().day.money;
    m_bricks.SetText(kLeadersBrick, indexText(list, m_pulse.leaders()).c_str());
    m_bricks.SetText(kMarketBrick, indexText(list, m_pulse.all()).c_str());
    m_bricks.SetText(kAdvancesBrick, std::to_string(m_pulse.advances()).c_str());
    m_bricks.SetText(kDeclinesBrick, std::to_string(m_pulse.declines()).c_str());
    m_bricks.SetText(kResultBrick, day ? grouped(list, formatted("%+.2f", *day)).c_str() : "-");
    m_bricks.SetText(kRateBrick, m_pump ? grouped(list, formatted("%.0f", m_pump->ticksPerSecond())).c_str() : "-");
}

// --- Workspaces ----------------------------------------------------------------------------------------------------

Workspace CMainFrame::arrangement() {
    Workspace now = m_workspaces.present();
    now.panes = m_area.shares();
    now.watch = watchLists()[static_cast<std::size_t>(m_panes.watch->shownWatch())].name;
    if (m_choicesTaken) now.lists.clear();
    for (CListPane* pane : listPanes())
        if (pane && m_choicesTaken) now.lists.push_back(choiceOf(*pane));
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    // It is told of a hidden window, too: one that ends is hidden already.
    if (!m_run.options.headless && ::GetWindowPlacement(m_hWnd, &placement)) {
        const CRect place(placement.rcNormalPosition);
        const bool maximized = placement.showCmd == SW_SHOWMINIMIZED ? placement.flags & WPF_RESTORETOMAXIMIZED
                                                                     : placement.showCmd == SW_SHOWMAXIMIZED;
        now.place = {place.left, place.top, place.Width(), place.Height(), maximized};
    }
    return now;
}

void CMainFrame::arrange(const Workspace& workspace) {
    m_area.setShares(workspace.panes);
    const auto& lists = watchLists();
    const auto watch = std::ranges::find(lists, workspace.watch, &WatchList::name);
    if (watch != lists.end()) m_panes.watch->showWatch(static_cast<int>(watch - lists.begin()));
    if (m_choicesTaken) takeChoices();
    const WindowPlace& place = workspace.place;
    if (place.width <= 0 || place.height <= 0 || m_run.options.headless) return;
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    placement.rcNormalPosition = {place.left, place.top, place.left + place.width, place.top + place.height};
    placement.showCmd = place.maximized ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
    if (::MonitorFromRect(&placement.rcNormalPosition, MONITOR_DEFAULTTONULL)) ::SetWindowPlacement(m_hWnd, &placement);
}

void CMainFrame::takeChoices() {
    m_choicesTaken = true;
    const std::vector<ListChoice> choices = m_workspaces.present().lists;
    for (CListPane* pane : listPanes()) {
        const auto choice = std::ranges::find(choices, pane->title(), &ListChoice::list);
        if (choice != choices.end()) applyChoice(*pane, *choice);
    }
}

void CMainFrame::showWorkspace(int place) {
    keepWorkspace();
    m_workspaces.show(static_cast<std::size_t>(place));
    arrange(m_workspaces.present());
}

void CMainFrame::moveWorkspace(int from, int to) {
    m_workspaces.move(static_cast<std::size_t>(from), static_cast<std::size_t>(to));
}

void CMainFrame::copyWorkspace(int to, const std::string& name) {
    keepWorkspace();
    m_workspaces.show(m_workspaces.copy(m_workspaces.shown(), static_cast<std::size_t>(to), name));
    m_area.showTabs(m_workspaces);
}

std::string CMainFrame::workspaceName(int place) const {
    const auto& all = m_workspaces.all();
    return static_cast<std::size_t>(place) < all.size() ? all[static_cast<std::size_t>(place)].name : std::string();
}

bool CMainFrame::renameWorkspace(int place, const std::string& name) {
    return m_workspaces.rename(static_cast<std::size_t>(place), name);
}

void CMainFrame::closeWorkspace(int place) {
    keepWorkspace();
    if (!m_workspaces.close(static_cast<std::size_t>(place))) return;
    m_area.showTabs(m_workspaces);
    arrange(m_workspaces.present());
}

void CMainFrame::addWorkspace() {
    keepWorkspace();
    m_workspaces.show(m_workspaces.add());
    m_area.showTabs(m_workspaces);
}

void CMainFrame::OnViewAddWorkspace() { addWorkspace(); }

void CMainFrame::OnViewPane(UINT id) { m_area.show(paneOf(id), !m_area.shows(paneOf(id))); }

void CMainFrame::OnUpdateViewPane(CCmdUI* ui) { ui->SetCheck(m_area.shows(paneOf(ui->m_nID)) ? 1 : 0); }

// Bricks, watch, tabs and the panes below in turn, those that show.
void CMainFrame::OnViewOtherPane(UINT id) {
    std::vector<CWnd*> ring{&m_bricks, m_split.GetPane(0, 0), &m_area.tabs()};
    for (int pane = 0; pane < kLowerPanes; ++pane) ring.push_back(&m_area.holder(LowerPane{pane}));
    std::erase_if(ring, [](CWnd* window) {
        CRect area;
        window->GetClientRect(&area);
        return area.IsRectEmpty();
    });
    const HWND focus = ::GetFocus();
    const auto holds = [focus](const CWnd* window) { return *window == focus || ::IsChild(*window, focus); };
    const auto present = std::ranges::find_if(ring, holds);
    const std::size_t count = ring.size(), step = id == ID_VIEW_NEXT_PANE ? 1 : count - 1;
    const std::size_t from = present == ring.end() ? count - step : static_cast<std::size_t>(present - ring.begin());
    ring[(from + step) % count]->SetFocus();
}

// Those next to the pane with the focus; Enter keeps and Esc undoes.
void CMainFrame::OnViewMoveBars() {
    for (HWND window = ::GetFocus(); window; window = ::GetParent(window))
        if (auto* splitter = dynamic_cast<CSplitterWnd*>(FromHandlePermanent(window))) {
            splitter->DoKeyboardSplit();
            return;
        }
}

// --- Kept ----------------------------------------------------------------------------------------------------------

// From the store in use, as the lists' own settings are.
void CMainFrame::readLayout() {
    m_layoutRead = true;
    const double stored = std::atof(setting("Layout", "Watch").c_str());
    const double watch = stored > kLeastShare && stored < kLargestShare ? stored : kWatchShare;
    const int units = static_cast<int>(watch * kShareUnits);
    m_split.SetRowShares({units, kShareUnits - units});
    if (settingsInUse()) m_workspaces.read(*settingsInUse());
    m_area.showTabs(m_workspaces);
    arrange(m_workspaces.present());
    CZTDialog::m_bGlobalMmmMode = setting("Layout", "MultiMonitor") == "1";
}

void CMainFrame::writeLayout() {
    if (!m_layoutRead || !settingsInUse()) return;
    const std::vector<int> rows = m_split.GetRowShares();
    if (const double total = rows[0] + rows[1]; total > 0)
        keepSetting("Layout", "Watch", formatted("%.4f", rows[0] / total));
    if (m_panes.watch) keepWorkspace();
    m_workspaces.write(*settingsInUse());
    m_bricks.WriteToINI();
    keepSetting("Layout", "MultiMonitor", CZTDialog::m_bGlobalMmmMode ? "1" : "0");
}

// Nobody uses a headless terminal.
void CMainFrame::keepLayouts() {
    if (m_run.options.headless) return;
    const std::int64_t now = m_run.clock.nowMicros();
    if (now < m_nextKeeping) return;
    m_nextKeeping = now + kKeepingPeriod;
    for (CListPane* pane : listPanes())
        if (pane) pane->saveState();
    writeLayout();
}

// Dialogs that run in multi-monitor mode, by their system menus, keep out of the way of the others' focus.
void CMainFrame::OnViewMultiMonitor() { CZTDialog::m_bGlobalMmmMode = !CZTDialog::m_bGlobalMmmMode; }

void CMainFrame::OnUpdateViewMultiMonitor(CCmdUI* ui) { ui->SetCheck(CZTDialog::m_bGlobalMmmMode ? 1 : 0); }

void CMainFrame::OnViewFitColumns() {
    m_panes.watch->fitColumns();
    m_panes.orders->fitColumns();
    m_panes.trades->fitColumns();
    m_panes.positions->fitColumns();
    m_chain->fitColumns();
}

void CMainFrame::OnViewResetLayout() {
    const int units = static_cast<int>(kWatchShare * kShareUnits);
    m_split.SetRowShares({units, kShareUnits - units});
    m_area.setShares(CWorkspaceArea::firstShares());
}

}  // namespace terminal
