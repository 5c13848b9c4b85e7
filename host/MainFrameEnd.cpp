// The end of a run: of its feed, of its session, of its window; last paint, pictures, self-check and figures.
#include "host/MainFrame.h"
#include "host/core/Utf8.h"
#include "quor/platform/proving/WindowCapture.h"

#include <cstdio>

namespace terminal {

void CMainFrame::feedOver(const std::string& reason) {
    m_feedEnding = reason;
    if (m_run.feed->state() == FeedState::failed) {
        m_run.exitCode = kExitBadInput;
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
    constexpr std::size_t kFew = 4;
    const WatchMarket& rows = m_panes.watch->market();
    for (std::size_t i = 0; i < rows.size() && rows.size() <= kFew; ++i) {
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
    KillTimer(kTickTimer);
    m_pump->settle();
    if (m_run.plantFault)
        Log::instance().add(m_run.plantFault(m_panes) ? "Self-test: one row is wrong on purpose."
                                                      : "Self-test: there is no row to spoil.");
    logChainCosts();
    Log::instance().add(
        ("Orders: " + counted(m_panes.orders->grid().GetDisplayCount(), "row") + ", " + m_panes.orders->orderText())
            .c_str());
    refreshStatus();
    paintEverything();
    if (m_run.options.headless) savePictures();
    checkMyself();
    fillSummary();
    m_run.summary.ending = ending;
    if (m_run.options.headless) m_run.openProofStore();  // nobody's choices are in this frame's lists
    if (IsWindow(m_hWnd)) DestroyWindow();
}

void CMainFrame::fillSummary() {
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
}

void CMainFrame::checkMyself() {
    if (!m_run.selfCheck) return;
    const auto findings = m_run.selfCheck(m_panes);
    for (const std::string& finding : findings) {
        Log::instance().add(("Self-check: " + finding).c_str());
        std::fprintf(stderr, "self-check: %s\n", finding.c_str());
    }
    if (!findings.empty() && m_run.exitCode == kExitWell) m_run.exitCode = kExitCheckFailed;
}

bool CMainFrame::savePictures() {
    const struct {
        CWnd* window;
        const char* name;
    } pictures[] = {
        {this, "terminal.png"},         {m_panes.watch, "watch.png"},         {m_panes.orders, "orders.png"},
        {m_panes.trades, "trades.png"}, {m_panes.positions, "positions.png"}, {m_chain, "chain.png"}};
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
        if (m_run.exitCode == kExitWell) m_run.exitCode = kExitCheckFailed;
    }
    return all;
}

// Once this returns, the system may end the process without another word to its windows.
void CMainFrame::OnEndSession(BOOL ending) {
    if (ending) {
        for (CListPane* pane : listPanes())
            if (pane) pane->saveState();
        for (INT_PTR at = 0; at < CZTDialog::AllDlgArray.GetCount(); ++at) CZTDialog::AllDlgArray[at]->SaveWindowPos();
        writeLayout();
        m_run.saveStores();
    }
    CFrameWnd::OnEndSession(ending);
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
    KillTimer(kTickTimer);
    writeLayout();
    CFrameWnd::OnDestroy();
}

void CMainFrame::OnFilePictures() {
    paintEverything();
    if (savePictures()) Log::instance().add(("The pictures are in " + m_run.options.outDirectory).c_str());
}

void CMainFrame::OnFileExit() { SendMessage(WM_CLOSE); }

}  // namespace terminal
