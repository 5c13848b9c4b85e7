#include "host/MainFrame.h"

#include "host/core/Utf8.h"
#include "host/panes/DarkMenus.h"
#include "host/resource/resource.h"

#include <algorithm>

namespace terminal {

namespace {
constexpr UINT kTickPeriod = 10;  // milliseconds: the shortest that the system's timers give
constexpr int kStatusPeriod = 500;
constexpr unsigned long kStatusOffset = 601;  // of WM_USER: the message by which m_timer calls for the status bar
constexpr UINT kWmRefreshStatus = WM_USER + kStatusOffset;

constexpr std::int64_t kPauseAfterFailure = 1'000'000;  // microseconds between two saves
constexpr double kSlowest = 1.0 / 64, kFastest = 4096;
constexpr int kLargestWidth = 1680, kLargestHeight = 1000;
constexpr int kLeastWidth = 640, kLeastHeight = 480;
}  // namespace

BEGIN_MESSAGE_MAP(CMainFrame, CFrameWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_ENDSESSION()
    ON_WM_CLOSE()
    ON_WM_GETMINMAXINFO()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_TIMER()
    ON_MESSAGE(kWmRefreshStatus, &CMainFrame::OnRefreshStatus)
    ON_COMMAND(ID_FILE_PICTURES, &CMainFrame::OnFilePictures)
    ON_COMMAND(ID_FILE_EXIT, &CMainFrame::OnFileExit)
    ON_COMMAND_RANGE(ID_VIEW_ORDERS, ID_VIEW_LOG, &CMainFrame::OnViewPane)
    ON_UPDATE_COMMAND_UI_RANGE(ID_VIEW_ORDERS, ID_VIEW_LOG, &CMainFrame::OnUpdateViewPane)
    ON_COMMAND(ID_VIEW_ADD_WORKSPACE, &CMainFrame::OnViewAddWorkspace)
    ON_COMMAND_RANGE(ID_VIEW_NEXT_PANE, ID_VIEW_FORMER_PANE, &CMainFrame::OnViewOtherPane)
    ON_COMMAND(ID_VIEW_MOVE_BARS, &CMainFrame::OnViewMoveBars)
    ON_COMMAND(ID_VIEW_FIT_COLUMNS, &CMainFrame::OnViewFitColumns)
    ON_COMMAND(ID_VIEW_RESET_LAYOUT, &CMainFrame::OnViewResetLayout)
    ON_COMMAND(ID_VIEW_MULTI_MONITOR, &CMainFrame::OnViewMultiMonitor)
    ON_UPDATE_COMMAND_UI(ID_VIEW_MULTI_MONITOR, &CMainFrame::OnUpdateViewMultiMonitor)
    ON_COMMAND(ID_FEED_PAUSE, &CMainFrame::OnFeedPause)
    ON_UPDATE_COMMAND_UI(ID_FEED_PAUSE, &CMainFrame::OnUpdateFeedPause)
    ON_COMMAND(ID_FEED_SLOWER, &CMainFrame::OnFeedSlower)
    ON_COMMAND(ID_FEED_FASTER, &CMainFrame::OnFeedFaster)
    ON_COMMAND(ID_FEED_REAL_TIME, &CMainFrame::OnFeedRealTime)
    ON_COMMAND(ID_FEED_MAX, &CMainFrame::OnFeedMax)
    ON_UPDATE_COMMAND_UI_RANGE(ID_FEED_SLOWER, ID_FEED_MAX, &CMainFrame::OnUpdateFeedSpeed)
    ON_COMMAND(ID_HELP_ABOUT, &CMainFrame::OnHelpAbout)
END_MESSAGE_MAP()

CMainFrame::CMainFrame(TerminalRun& run)
    : m_run(run), m_workspaces(CWorkspaceArea::firstWorkspace()), m_about(IDD_ABOUT) {}

BOOL CMainFrame::createWindow() {
    const int width = (std::min)(quor::platform::scaled(nullptr, kLargestWidth), ::GetSystemMetrics(SM_CXSCREEN));
    const int height = (std::min)(quor::platform::scaled(nullptr, kLargestHeight), ::GetSystemMetrics(SM_CYSCREEN));
    const CRect place(0, 0, width, height);
    if (!Create(nullptr, "Quor Terminal", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, place, nullptr,
                MAKEINTRESOURCEA(IDR_TERMINAL)))
        return FALSE;
    // To the default procedure itself: the window is of the narrow kind, and on the way to it the system would put the
    // text into the code page.
    const std::wstring title = wideText("Quor Terminal - " + m_run.feedName());
    ::DefWindowProcW(m_hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(title.c_str()));
    darkenMenus(m_hWnd);
    LoadAccelTable(MAKEINTRESOURCEA(IDR_TERMINAL));
    InitialUpdateFrame(FALSE);
    readLayout();
    for (CListPane* pane : listPanes()) pane->fitNewColumns();
    return TRUE;
}

BOOL CMainFrame::CreateRestored() {
    m_finished = true;
    if (!createWindow()) return FALSE;
    for (const auto& of : m_run.feed->tally().instruments()) {
        m_panes.watch->addInstrument(of.instrument);
        m_panes.watch->quote(of.quote);
        m_pulse.quote(of.quote);
        m_panes.orders->instrument(of.instrument);
        m_panes.trades->instrument(of.instrument);
        m_panes.positions->instrument(of.instrument);
        m_panes.positions->quote(of.quote, m_run.clock.nowMicros());
        for (const BookLevel& level : of.levels) m_panes.orders->level(level, m_run.clock.nowMicros());
        if (of.lastTrade.quantity) m_panes.trades->trade(of.lastTrade, m_run.clock.nowMicros());
    }
    for (const Order& order : m_run.feed->tally().liveOrdersByArrival())
        m_panes.orders->order({OrderAction::add, order}, m_run.clock.nowMicros());
    m_panes.watch->showChanged();
    processEndofBatchUpdates();
    m_panes.orders->keepOrder();
    for (CLiveGrid* grid : {&m_panes.orders->grid(), &m_panes.trades->grid(), &m_panes.positions->grid()})
        grid->batchClosed();
    m_panes.positions->showTotals();
    showCounts();
    m_chain->connect();
    m_chain->update(m_run.clock.nowMicros());
    takeChoices();
    return TRUE;
}

BOOL CMainFrame::CreateTerminal() {
    if (!createWindow()) return FALSE;
    m_chain->connect();
    m_pump = std::make_unique<FeedPump>(*m_run.feed, m_run.options.speed, m_run.clock, m_panes);
    m_timer.register_timer(this, kStatusPeriod, kStatusOffset);
    m_lastTick = m_run.clock.nowMicros();
    m_nextKeeping = m_lastTick + kKeepingPeriod;
    if (const auto seconds = secondsToRun(m_run.options)) m_deadline = m_lastTick + *seconds * std::int64_t{1'000'000};
    Log::instance().add(("Feed: " + m_run.feedName()).c_str());
    refreshStatus();
    if (!::IsZoomed(m_hWnd)) ShowWindow(SW_SHOWNORMAL);  // its workspace may have been left so
    UpdateWindow();
    m_panes.watch->list().SetFocus();
    SetTimer(kTickTimer, kTickPeriod);
    return TRUE;
}

int CMainFrame::OnCreate(LPCREATESTRUCT create) {
    if (CFrameWnd::OnCreate(create) == -1 || !m_status.CreateStrip(this, IDC_STATUS)) return -1;
    RecalcLayout();
    return 0;
}

BOOL CMainFrame::OnCreateClient(LPCREATESTRUCT, CCreateContext*) { return createPanes(); }

// Between two ticks: what is refused now is tried again later, and at the end.
void CMainFrame::saveSettings() {
    const std::int64_t now = m_run.clock.nowMicros();
    if (!m_run.settings.dirty() || now < m_nextSave || m_run.settings.save()) return;
    m_nextSave = now + kPauseAfterFailure;
    if (!m_saveFailed) Log::instance().add(kSettingsNotWritten);
    m_saveFailed = true;
}

void CMainFrame::OnTimer(UINT_PTR id) {
    if (id != kTickTimer) return CFrameWnd::OnTimer(id);
    if (m_finished || m_ending) return;
    const FeedState state = m_pump->slice();
    keepLayouts();
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

void CMainFrame::refreshStatus() {
    const Speed speed = m_pump->speed();
    m_status.setPart(StatusPart::state, !m_feedEnding.empty() ? "Feed ended: " + m_feedEnding
                                        : m_pump->paused()    ? "Paused"
                                                              : "Live: " + m_run.feedName());
    CCommonListCtrl& list = m_panes.watch->list();
    m_status.setPart(StatusPart::ticks, grouped(list, formatted("%.0f", m_pump->ticksPerSecond())) + " ticks/s");
    m_status.setPart(StatusPart::rows, countedIn(list, m_pump->rows(), "row"));
    m_status.setPart(StatusPart::repaints, formatted("%.1f repaints/s", m_run.figures.repaintsPerSecond()));
    const std::int64_t latency = m_run.figures.takeRecentMedian();
    m_status.setPart(StatusPart::latency, latency
                                              ? formatted("tick to paint %.0f ms", static_cast<double>(latency) / 1000)
                                              : "tick to paint -");
    m_status.setPart(StatusPart::speed, speed.max ? "speed max" : formatted("speed x%g", speed.factor));
    showCounts();
}

void CMainFrame::OnGetMinMaxInfo(MINMAXINFO* info) {
    info->ptMinTrackSize = {quor::platform::scaled(m_hWnd, kLeastWidth), quor::platform::scaled(m_hWnd, kLeastHeight)};
}

// The system tells top-level windows only.
void CMainFrame::OnSysColorChange() {
    CFrameWnd::OnSysColorChange();
    SendMessageToDescendants(WM_SYSCOLORCHANGE);
}

LRESULT CMainFrame::OnRefreshStatus(WPARAM, LPARAM) {
    if (m_ending) return 0;
    if (!m_choicesTaken && m_pump->rows() > 0) takeChoices();
    refreshStatus();
    return 0;
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
    setSpeed({false, speed.max ? 1 : (std::max)(kSlowest, speed.factor / 2)});
}

void CMainFrame::OnFeedFaster() {
    const Speed speed = m_pump->speed();
    if (!speed.max) setSpeed({false, (std::min)(kFastest, speed.factor * 2)});
}

void CMainFrame::OnFeedRealTime() { setSpeed({false, 1}); }

void CMainFrame::OnFeedMax() { setSpeed({true, 1}); }

void CMainFrame::OnUpdateFeedSpeed(CCmdUI* ui) {
    const Speed speed = m_pump->speed();
    ui->Enable(m_feedEnding.empty());
    if (ui->m_nID == ID_FEED_REAL_TIME) ui->SetRadio(!speed.max && speed.factor == 1);
    if (ui->m_nID == ID_FEED_MAX) ui->SetRadio(speed.max);
}

// Open beside the market, which goes on.
void CMainFrame::OnHelpAbout() {
    if (m_about.m_hWnd || m_about.Create(IDD_ABOUT, this)) m_about.ShowWindow(SW_SHOW);
}

}  // namespace terminal
