// The panes in their splitters: made, laid out, and kept over a restart.
#include "host/MainFrame.h"
#include "host/resource/resource.h"

#include <algorithm>
#include <cstdlib>

namespace terminal {

namespace {
constexpr double kWatchShare = 0.50, kOrdersShare = 0.54, kPanesShare = 0.68, kChainShare = 0.57,
                 kPositionsShare = 0.70;
}  // namespace

std::vector<CListPane*> CMainFrame::listPanes() {
    return {m_panes.watch, m_panes.orders, m_panes.trades, m_panes.positions, m_chain};
}

bool CMainFrame::createPanes() {
    if (!m_splitLog.CreatePane(this, IDC_SPLIT_LOG) || !m_splitWatch.CreatePane(&m_splitLog, IDC_SPLIT_WATCH) ||
        !m_splitBooks.CreatePane(&m_splitWatch, IDC_SPLIT_BOOKS) ||
        !m_splitBottom.CreatePane(&m_splitLog, IDC_SPLIT_BOTTOM) ||
        !m_splitMoney.CreatePane(&m_splitBottom, IDC_SPLIT_MONEY) || !m_log.CreatePane(&m_splitMoney, IDC_LOG))
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
    m_panes.positions = watched(new CPositionsPane(m_run.figures, m_run.options.seed));
    if (!m_panes.positions->CreatePane(&m_splitMoney, IDC_PANE_POSITIONS)) return false;
    m_chain = watched(new CChainPane(m_run.figures, *m_panes.watch));
    if (!m_chain->CreatePane(&m_splitBottom, IDC_PANE_CHAIN)) return false;
    m_splitBooks.SetPanes(m_panes.orders, m_panes.trades);
    m_splitWatch.SetPanes(m_panes.watch, &m_splitBooks);
    m_splitMoney.SetPanes(m_panes.positions, &m_log);
    m_splitBottom.SetPanes(m_chain, &m_splitMoney);
    m_splitLog.SetPanes(&m_splitWatch, &m_splitBottom);
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
    for (CPaneSplitter* splitter : {&m_splitLog, &m_splitBottom, &m_splitMoney, &m_splitWatch, &m_splitBooks})
        splitter->SetPanes(nullptr, nullptr);
    if (m_ending) return;
    m_ending = true;
    KillTimer(kTickTimer);
    EnableWindow(FALSE);
    Log::instance().add("A pane was closed: the terminal ends.");
    if (m_run.exitCode == kExitWell) m_run.exitCode = kExitCheckFailed;
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
    m_splitLog.setShare(share("Bottom", kPanesShare));
    m_splitBottom.setShare(share("Chain", kChainShare));
    m_splitMoney.setShare(share("Positions", kPositionsShare));
    m_splitWatch.setShare(share("Watch", kWatchShare));
    m_splitBooks.setShare(share("Orders", kOrdersShare));
    const auto shown = m_run.settings.get("Layout", "LogShown");
    m_logShown = !shown || *shown != "0";
    m_splitMoney.showSecond(m_logShown);
    CZTDialog::m_bGlobalMmmMode = m_run.settings.get("Layout", "MultiMonitor") == "1";
}

void CMainFrame::writeLayout() {
    if (!m_layoutRead) return;
    m_run.settings.set("Layout", "Bottom", formatted("%.4f", m_splitLog.share()));
    m_run.settings.set("Layout", "Chain", formatted("%.4f", m_splitBottom.share()));
    m_run.settings.set("Layout", "Positions", formatted("%.4f", m_splitMoney.share()));
    m_run.settings.set("Layout", "Watch", formatted("%.4f", m_splitWatch.share()));
    m_run.settings.set("Layout", "Orders", formatted("%.4f", m_splitBooks.share()));
    m_run.settings.set("Layout", "LogShown", m_logShown ? "1" : "0");
    m_run.settings.set("Layout", "MultiMonitor", CZTDialog::m_bGlobalMmmMode ? "1" : "0");
}

void CMainFrame::OnViewLog() {
    m_logShown = !m_logShown;
    m_splitMoney.showSecond(m_logShown);
}

void CMainFrame::OnUpdateViewLog(CCmdUI* ui) { ui->SetCheck(m_logShown ? 1 : 0); }

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
    m_splitLog.setShare(kPanesShare);
    m_splitBottom.setShare(kChainShare);
    m_splitMoney.setShare(kPositionsShare);
    m_splitWatch.setShare(kWatchShare);
    m_splitBooks.setShare(kOrdersShare);
    if (!m_logShown) OnViewLog();
}

}  // namespace terminal
