#include "host/MainFrame.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "host/SelfCheck.h"
#include "host/Theme.h"
#include "host/core/Utf8.h"
#include "host/resource.h"
#include "platform/proving/WindowCapture.h"

namespace terminal {

namespace {
constexpr UINT_PTR tickTimer = 1;
constexpr UINT tickPeriod = 10;  // milliseconds: the shortest that the system's timers give
constexpr int statusPeriod = 500;
constexpr unsigned long statusOffset = 601;  // of WM_USER: the message by which m_timer calls for the status bar
constexpr UINT WM_REFRESH_STATUS = WM_USER + statusOffset;

constexpr double watchShare = 0.50, ordersShare = 0.54, panesShare = 0.68, chainShare = 0.66;
constexpr std::int64_t pauseAfterFailure = 1'000'000;  // microseconds between two saves
constexpr double slowest = 1.0 / 64, fastest = 4096;
constexpr int largestWidth = 1680, largestHeight = 1000;

__attribute__((format(printf, 1, 2))) std::string formatted(const char* format, ...) {
    char text[128];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    return text;
}
}  // namespace

BEGIN_MESSAGE_MAP(CMainFrame, CFrameWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_ENDSESSION()
    ON_WM_CLOSE()
    ON_WM_TIMER()
    ON_MESSAGE(WM_REFRESH_STATUS, &CMainFrame::OnRefreshStatus)
    ON_COMMAND(ID_FILE_PICTURES, &CMainFrame::OnFilePictures)
    ON_COMMAND(ID_FILE_EXIT, &CMainFrame::OnFileExit)
    ON_COMMAND(ID_VIEW_LOG, &CMainFrame::OnViewLog)
    ON_UPDATE_COMMAND_UI(ID_VIEW_LOG, &CMainFrame::OnUpdateViewLog)
    ON_COMMAND(ID_VIEW_FIT_COLUMNS, &CMainFrame::OnViewFitColumns)
    ON_COMMAND(ID_VIEW_RESET_LAYOUT, &CMainFrame::OnViewResetLayout)
    ON_COMMAND(ID_FEED_PAUSE, &CMainFrame::OnFeedPause)
    ON_UPDATE_COMMAND_UI(ID_FEED_PAUSE, &CMainFrame::OnUpdateFeedPause)
    ON_COMMAND(ID_FEED_SLOWER, &CMainFrame::OnFeedSlower)
    ON_COMMAND(ID_FEED_FASTER, &CMainFrame::OnFeedFaster)
    ON_COMMAND(ID_FEED_REAL_TIME, &CMainFrame::OnFeedRealTime)
    ON_COMMAND(ID_FEED_MAX, &CMainFrame::OnFeedMax)
    ON_UPDATE_COMMAND_UI_RANGE(ID_FEED_SLOWER, ID_FEED_MAX, &CMainFrame::OnUpdateFeedSpeed)
    ON_COMMAND(ID_HELP_ABOUT, &CMainFrame::OnHelpAbout)
END_MESSAGE_MAP()

CMainFrame::CMainFrame(TerminalRun& run) : m_run(run) {}

BOOL CMainFrame::createWindow() {
    const int width = (std::min)(largestWidth, ::GetSystemMetrics(SM_CXSCREEN));
    const int height = (std::min)(largestHeight, ::GetSystemMetrics(SM_CYSCREEN));
    const CRect place(0, 0, width, height);
    if (!Create(nullptr, "Quor Terminal", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, place, nullptr,
                MAKEINTRESOURCEA(IDR_TERMINAL)))
        return FALSE;
    // To the default procedure itself: the window is of the narrow kind, and on the way to it the system would put the
    // text into the code page.
    const std::wstring title = wideText("Quor Terminal - " + m_run.feedName());
    ::DefWindowProcW(m_hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(title.c_str()));
    LoadAccelTable(MAKEINTRESOURCEA(IDR_TERMINAL));
    InitialUpdateFrame(FALSE);
    readLayout();
    for (CListPane* pane : listPanes()) pane->fitNewColumns();
    return TRUE;
}

std::vector<CListPane*> CMainFrame::listPanes() { return {m_panes.watch, m_panes.orders, m_panes.trades, m_chain}; }

BOOL CMainFrame::CreateRestored() {
    m_finished = true;
    if (!createWindow()) return FALSE;
    for (const auto& of : m_run.feed->tally().instruments()) {
        m_panes.watch->addInstrument(of.instrument);
        m_panes.watch->quote(of.quote);
        m_panes.orders->instrument(of.instrument);
        m_panes.trades->instrument(of.instrument);
        for (const BookLevel& level : of.levels) m_panes.orders->level(level, m_run.clock.nowMicros());
        if (of.lastTrade.quantity) m_panes.trades->trade(of.lastTrade, m_run.clock.nowMicros());
    }
    for (const Order& order : m_run.feed->tally().liveOrdersByArrival())
        m_panes.orders->order({OrderAction::add, order}, m_run.clock.nowMicros());
    m_panes.watch->showChanged();
    processEndofBatchUpdates();
    m_panes.orders->keepOrder();
    m_chain->connect();
    m_chain->update(m_run.clock.nowMicros());
    return TRUE;
}

BOOL CMainFrame::CreateTerminal() {
    if (!createWindow()) return FALSE;
    m_chain->connect();
    m_pump = std::make_unique<FeedPump>(*m_run.feed, m_run.options.speed, m_run.clock, m_panes);
    m_timer.register_timer(this, statusPeriod, statusOffset);
    m_lastTick = m_run.clock.nowMicros();
    if (const auto seconds = secondsToRun(m_run.options)) m_deadline = m_lastTick + *seconds * std::int64_t{1'000'000};
    Log::instance().add(("Feed: " + m_run.feedName()).c_str());
    refreshStatus();
    ShowWindow(SW_SHOWNORMAL);
    UpdateWindow();
    m_panes.watch->list().SetFocus();
    SetTimer(tickTimer, tickPeriod);
    return TRUE;
}

int CMainFrame::OnCreate(LPCREATESTRUCT create) {
    if (CFrameWnd::OnCreate(create) == -1 || !m_status.CreateStrip(this, IDC_STATUS)) return -1;
    RecalcLayout();
    return 0;
}

BOOL CMainFrame::OnCreateClient(LPCREATESTRUCT, CCreateContext*) { return createPanes(); }

bool CMainFrame::createPanes() {
    if (!m_splitLog.CreatePane(this, IDC_SPLIT_LOG) || !m_splitWatch.CreatePane(&m_splitLog, IDC_SPLIT_WATCH) ||
        !m_splitBooks.CreatePane(&m_splitWatch, IDC_SPLIT_BOOKS) ||
        !m_splitBottom.CreatePane(&m_splitLog, IDC_SPLIT_BOTTOM) || !m_log.CreatePane(&m_splitBottom, IDC_LOG))
        return false;
    // The views delete themselves with their windows, also when their creation fails half-way.
    const auto watched = [this](auto* pane) {
        pane->setOnGone([this, pane] { paneGone(pane); });
        return pane;
    };
    m_panes.watch = watched(new CWatchPane(m_run.figures));
    if (!m_panes.watch->CreatePane(&m_splitWatch, IDC_PANE_WATCH)) return false;
    m_panes.orders = watched(new COrdersPane(m_run.figures));
    if (!m_panes.orders->CreatePane(&m_splitBooks, IDC_PANE_ORDERS)) return false;
    m_panes.trades = watched(new CTradesPane(m_run.figures, m_run.options.keep));
    if (!m_panes.trades->CreatePane(&m_splitBooks, IDC_PANE_TRADES)) return false;
    m_chain = watched(new CChainPane(m_run.figures, *m_panes.watch));
    if (!m_chain->CreatePane(&m_splitBottom, IDC_PANE_CHAIN)) return false;
    m_splitBooks.SetPanes(m_panes.orders, m_panes.trades);
    m_splitWatch.SetPanes(m_panes.watch, &m_splitBooks);
    m_splitBottom.SetPanes(m_chain, &m_log);
    m_splitLog.SetPanes(&m_splitWatch, &m_splitBottom);
    return true;
}

// A pane that goes before the frame does, or whose list goes, leaves nothing to show: the terminal ends, and the other
// panes with it.
void CMainFrame::paneGone(const CListPane* pane) {
    if (m_panes.watch == pane) m_panes.watch = nullptr;
    if (m_panes.orders == pane) m_panes.orders = nullptr;
    if (m_panes.trades == pane) m_panes.trades = nullptr;
    if (m_chain == pane) m_chain = nullptr;
    for (CPaneSplitter* splitter : {&m_splitLog, &m_splitBottom, &m_splitWatch, &m_splitBooks})
        splitter->SetPanes(nullptr, nullptr);
    if (m_ending) return;
    m_ending = true;
    KillTimer(tickTimer);
    EnableWindow(FALSE);
    Log::instance().add("A pane was closed: the terminal ends.");
    if (m_run.exitCode == exitWell) m_run.exitCode = exitCheckFailed;
    PostMessage(WM_CLOSE);
}

void CMainFrame::RecalcLayout(BOOL) {
    if (!m_status.GetSafeHwnd() || !m_splitLog.GetSafeHwnd()) return;
    CRect area, bar;
    GetClientRect(&area);
    m_status.SendMessage(WM_SIZE);  // the bar finds its own place and height
    m_status.GetWindowRect(&bar);
    m_splitLog.MoveWindow(0, 0, area.Width(), (std::max)(0, area.Height() - bar.Height()));
}

void CMainFrame::readLayout() {
    m_layoutRead = true;
    const auto share = [this](const char* key, double otherwise) {
        const auto text = m_run.settings.get("Layout", key);
        const double value = text ? std::atof(std::string(*text).c_str()) : 0;
        return value > 0.02 && value < 0.98 ? value : otherwise;
    };
    m_splitLog.setShare(share("Bottom", panesShare));
    m_splitBottom.setShare(share("Chain", chainShare));
    m_splitWatch.setShare(share("Watch", watchShare));
    m_splitBooks.setShare(share("Orders", ordersShare));
    const auto shown = m_run.settings.get("Layout", "LogShown");
    m_logShown = !shown || *shown != "0";
    m_splitBottom.showSecond(m_logShown);
}

void CMainFrame::writeLayout() {
    if (!m_layoutRead) return;
    m_run.settings.set("Layout", "Bottom", formatted("%.4f", m_splitLog.share()));
    m_run.settings.set("Layout", "Chain", formatted("%.4f", m_splitBottom.share()));
    m_run.settings.set("Layout", "Watch", formatted("%.4f", m_splitWatch.share()));
    m_run.settings.set("Layout", "Orders", formatted("%.4f", m_splitBooks.share()));
    m_run.settings.set("Layout", "LogShown", m_logShown ? "1" : "0");
}

// Between two ticks: what is refused now is tried again later, and at the end.
void CMainFrame::saveSettings() {
    const std::int64_t now = m_run.clock.nowMicros();
    if (!m_run.settings.dirty() || now < m_nextSave || m_run.settings.save()) return;
    m_nextSave = now + pauseAfterFailure;
    if (!m_saveFailed) Log::instance().add(settingsNotWritten);
    m_saveFailed = true;
}

// Once this returns, the system may end the process without another word to its windows.
void CMainFrame::OnEndSession(BOOL ending) {
    if (ending) {
        for (CListPane* pane : listPanes())
            if (pane) pane->saveState();
        writeLayout();
        m_run.saveStores();
    }
    CFrameWnd::OnEndSession(ending);
}

void CMainFrame::OnTimer(UINT_PTR id) {
    if (id != tickTimer) return CFrameWnd::OnTimer(id);
    if (m_finished || m_ending) return;
    const FeedState state = m_pump->slice();
    saveSettings();
    const std::int64_t now = m_run.clock.nowMicros();
    m_chain->update(now);
    m_timer.timer_action(static_cast<unsigned long>((now - m_lastTick) / 1000));
    m_lastTick = now;
    if (state != FeedState::running && m_feedEnding.empty())
        feedOver(state == FeedState::ended ? "end of tape" : "bad line");
    if (!IsWindowEnabled()) return;  // a message box is open: the frame ends when it has been answered
    if (!m_feedEnding.empty() && m_run.options.headless)
        finish(m_feedEnding);
    else if (m_deadline && now >= m_deadline)
        finish("time is up");
}

void CMainFrame::feedOver(const std::string& reason) {
    m_feedEnding = reason;
    if (m_run.feed->state() == FeedState::failed) {
        m_run.exitCode = exitBadInput;
        m_status.showFault();
        Log::instance().add(m_run.feed->error().c_str());
        printError(m_run.feed->error());
    }
    Log::instance().add(
        ("The feed has ended: " + reason + ", " + std::to_string(m_run.feed->ticksTaken()) + " ticks").c_str());
    logLastPrices();
    refreshStatus();
}

// A line each for a few instruments, none for a whole market.
void CMainFrame::logLastPrices() {
    constexpr std::size_t few = 4;
    const WatchMarket& rows = m_panes.watch->market();
    for (std::size_t i = 0; i < rows.size() && rows.size() <= few; ++i) {
        TextBuffer buffer;
        const std::string last(watchText(rows[i], WatchColumn::last, buffer));
        if (!last.empty()) Log::instance().add((rows[i].instrument.symbol + ": last price " + last).c_str());
    }
}

void CMainFrame::logChainCosts() {
    const Percentiles& costs = m_chain->costs();
    if (!costs.count()) return;
    Log::instance().add(
        formatted("Option chain: %s in %s, median %.2f ms, longest %.2f ms",
                  counted(m_chain->chain().priced(), "option").c_str(), counted(costs.count(), "recompute").c_str(),
                  static_cast<double>(costs.median()) / 1000, static_cast<double>(costs.largest()) / 1000)
            .c_str());
}

void CMainFrame::paintEverything() {
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void CMainFrame::finish(const std::string& ending) {
    if (m_finished) return;
    m_finished = true;
    KillTimer(tickTimer);
    m_pump->settle();
    if (m_run.options.selfTestFault) {
        const bool spoilt = m_panes.orders->spoil() || m_panes.trades->spoil() || m_panes.watch->spoil();
        Log::instance().add(spoilt ? "Self-test: one row is wrong on purpose."
                                   : "Self-test: there is no row to spoil.");
        processEndofBatchUpdates();
    }
    logChainCosts();
    Log::instance().add(
        ("Orders: " + counted(m_panes.orders->grid().GetDisplayCount(), "row") + ", " + m_panes.orders->orderText())
            .c_str());
    refreshStatus();
    paintEverything();
    if (m_run.options.headless) savePictures();
    checkMyself();
    RunSummary& summary = m_run.summary;
    summary.instruments = static_cast<std::int64_t>(m_panes.watch->market().size());
    summary.rows = m_pump->rows();
    summary.ticks = m_run.feed->ticksTaken();
    summary.seconds = m_pump->secondsRun();
    summary.repaints = m_run.figures.repaints();
    if (const Percentiles& latency = m_run.figures.latency(); latency.count()) {
        summary.tickToPaintMedianMs = static_cast<double>(latency.median()) / 1000;
        summary.tickToPaintP99Ms = static_cast<double>(latency.percentile(99)) / 1000;
    }
    if (!m_run.options.speed.max) {
        const auto most = m_pump->mostBehind();
        summary.feedBehindMs = static_cast<double>(m_pump->behindMicros()) / 1000;
        summary.behindFirstHalfMs = static_cast<double>(most.first) / 1000;
        summary.behindSecondHalfMs = static_cast<double>(most.second) / 1000;
    }
    summary.watchWaiting = m_pump->mostUnpainted().second;
    summary.firstRowMs = m_run.figures.firstRowMs();
    summary.optionsPriced = m_chain->chain().priced();
    summary.ending = ending;
    if (m_run.options.headless) {
        m_run.openProofStore();
        m_run.layoutsLeft = leaveLayouts(proofPanes());
    }
    if (IsWindow(m_hWnd)) DestroyWindow();
}

void CMainFrame::checkMyself() {
    const auto findings = selfCheck(m_run.feed->tally(), m_panes, m_run.options.keep);
    for (const std::string& finding : findings) {
        Log::instance().add(("Self-check: " + finding).c_str());
        std::fprintf(stderr, "self-check: %s\n", finding.c_str());
    }
    if (!findings.empty() && m_run.exitCode == exitWell) m_run.exitCode = exitCheckFailed;
}

bool CMainFrame::savePictures() {
    const struct {
        CWnd* window;
        const char* name;
    } pictures[] = {{this, "terminal.png"},
                    {m_panes.watch, "watch.png"},
                    {m_panes.orders, "orders.png"},
                    {m_panes.trades, "trades.png"},
                    {m_chain, "chain.png"}};
    bool all = true;
    for (const auto& [window, name] : pictures) {
        const std::string path = m_run.outPath(name);
        CString error;
        window->ModifyStyle(WS_CLIPCHILDREN, 0);  // or the children would be holes in the picture
        const bool saved = quorSaveClientAreaPng(window->GetSafeHwnd(), wideText(path).c_str(), &error);
        window->ModifyStyle(0, WS_CLIPCHILDREN);
        if (saved) continue;
        all = false;
        const std::string message = path + ": this picture could not be written: " + static_cast<const char*>(error);
        Log::instance().add(message.c_str());
        printError(message);
        if (m_run.exitCode == exitWell) m_run.exitCode = exitCheckFailed;
    }
    return all;
}

void CMainFrame::refreshStatus() {
    const Speed speed = m_pump->speed();
    m_status.setPart(StatusPart::state, !m_feedEnding.empty() ? "Feed ended: " + m_feedEnding
                                        : m_pump->paused()    ? "Paused"
                                                              : "Live: " + m_run.feedName());
    m_status.setPart(StatusPart::ticks, formatted("%.0f ticks/s", m_pump->ticksPerSecond()));
    m_status.setPart(StatusPart::rows, formatted("%.0f rows", static_cast<double>(m_pump->rows())));
    m_status.setPart(StatusPart::repaints, formatted("%.1f repaints/s", m_run.figures.repaintsPerSecond()));
    const std::int64_t latency = m_run.figures.takeRecentMedian();
    m_status.setPart(StatusPart::latency, latency
                                              ? formatted("tick to paint %.0f ms", static_cast<double>(latency) / 1000)
                                              : "tick to paint -");
    m_status.setPart(StatusPart::speed, speed.max ? "speed max" : formatted("speed x%g", speed.factor));
    m_panes.orders->setRemark(counted(m_panes.orders->grid().GetDisplayCount(), "row") + ", " +
                              m_panes.orders->orderText());
    m_panes.trades->setRemark(counted(m_panes.trades->tradeCount(), "trade"));
}

LRESULT CMainFrame::OnRefreshStatus(WPARAM, LPARAM) {
    if (!m_ending) refreshStatus();
    return 0;
}

void CMainFrame::OnClose() {
    if (m_ending) {
        DestroyWindow();
    } else if (!m_finished) {
        finish("window closed");
    }
}

// The lists go after this, and write their layouts then: the settings are saved when the frame is gone.
void CMainFrame::OnDestroy() {
    m_ending = true;
    KillTimer(tickTimer);
    writeLayout();
    CFrameWnd::OnDestroy();
}

void CMainFrame::OnFilePictures() {
    paintEverything();
    if (savePictures()) Log::instance().add(("The pictures are in " + m_run.options.outDirectory).c_str());
}

void CMainFrame::OnFileExit() { SendMessage(WM_CLOSE); }

void CMainFrame::OnViewLog() {
    m_logShown = !m_logShown;
    m_splitBottom.showSecond(m_logShown);
}

void CMainFrame::OnUpdateViewLog(CCmdUI* ui) { ui->SetCheck(m_logShown ? 1 : 0); }

void CMainFrame::OnViewFitColumns() {
    m_panes.watch->fitColumns();
    m_panes.orders->fitColumns();
    m_panes.trades->fitColumns();
    m_chain->fitColumns();
}

void CMainFrame::OnViewResetLayout() {
    m_splitLog.setShare(panesShare);
    m_splitBottom.setShare(chainShare);
    m_splitWatch.setShare(watchShare);
    m_splitBooks.setShare(ordersShare);
    if (!m_logShown) OnViewLog();
}

void CMainFrame::OnFeedPause() {
    m_pump->pause(!m_pump->paused());
    Log::instance().add(m_pump->paused() ? "The feed is paused." : "The feed goes on.");
    refreshStatus();
}

void CMainFrame::OnUpdateFeedPause(CCmdUI* ui) {
    ui->Enable(m_feedEnding.empty());
    ui->SetCheck(m_pump->paused() ? 1 : 0);
}

void CMainFrame::setSpeed(Speed speed) {
    m_pump->setSpeed(speed);
    refreshStatus();
}

void CMainFrame::OnFeedSlower() {
    const Speed speed = m_pump->speed();
    setSpeed({false, speed.max ? 1 : (std::max)(slowest, speed.factor / 2)});
}

void CMainFrame::OnFeedFaster() {
    const Speed speed = m_pump->speed();
    if (!speed.max) setSpeed({false, (std::min)(fastest, speed.factor * 2)});
}

void CMainFrame::OnFeedRealTime() { setSpeed({false, 1}); }
void CMainFrame::OnFeedMax() { setSpeed({true, 1}); }

void CMainFrame::OnUpdateFeedSpeed(CCmdUI* ui) {
    const Speed speed = m_pump->speed();
    ui->Enable(m_feedEnding.empty());
    if (ui->m_nID == ID_FEED_REAL_TIME) ui->SetRadio(!speed.max && speed.factor == 1);
    if (ui->m_nID == ID_FEED_MAX) ui->SetRadio(speed.max);
}

void CMainFrame::OnHelpAbout() {
    MessageBox("Quor Terminal\n\nA demo of Quor Controls: live rows from a simulated or recorded market.",
               "About Quor Terminal", MB_OK | MB_ICONINFORMATION);
}

}  // namespace terminal
