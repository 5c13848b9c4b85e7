// The terminal's frame window: menu, bricks of the market, panes in splitters and workspaces, status bar, and the one
// tick that drives it all.
//
// The tick (a window timer) takes one slice of the feed and then drives a CZTTimer, whose entry refreshes the status
// bar. When the run is over (its time, the tape's end, a bad line) a headless frame paints for the last time, saves its
// pictures, checks itself and closes; one with a user stays open, and is checked when it closes.
#pragma once

#include "host/FeedPump.h"
#include "host/StatusStrip.h"
#include "host/TerminalRun.h"
#include "host/WorkspaceArea.h"
#include "host/core/MarketPulse.h"
#include "host/panes/ChainPane.h"
#include "host/panes/LogPane.h"
#include "quor/bars/ZTBrickBar.h"
#include "quor/foundation/ZTTimer.h"
#include "quor/framework/ZTDialog.h"
#include "quor/platform/Framework.h"

#include <memory>
#include <string>
#include <vector>

namespace terminal {

// The panes with a list.
struct ListPanes {
    CWatchPane& watch;
    COrdersPane& orders;
    CTradesPane& trades;
    CPositionsPane& positions;
    CChainPane& chain;
};

class CMainFrame : public CFrameWnd, private CWorkspaceArea::Owner {
public:
    // The run is borrowed and outlives the frame.
    explicit CMainFrame(TerminalRun& run);

    // Makes the window with everything in it. FALSE: the system gave no window.
    BOOL CreateTerminal();

    // The frame of a restart: as CreateTerminal, with the market as the feed left it, and without a feed.
    BOOL CreateRestored();
    ListPanes panes() { return {*m_panes.watch, *m_panes.orders, *m_panes.trades, *m_panes.positions, *m_chain}; }
    CZTBrickBar& bricks() { return m_bricks; }
    CWorkspaceArea& lowerPanes() { return m_area; }
    const Workspaces& workspaces() const { return m_workspaces; }

protected:
    BOOL OnCreateClient(LPCREATESTRUCT create, CCreateContext* context) override;
    void RecalcLayout(BOOL notify = TRUE) override;

private:
    static constexpr UINT_PTR kTickTimer = 1;
    static constexpr std::int64_t kKeepingPeriod = 5'000'000;  // microseconds: what a crash may cost

    int OnCreate(LPCREATESTRUCT create);
    void OnDestroy();
    void OnEndSession(BOOL ending);
    void OnClose();
    void OnGetMinMaxInfo(MINMAXINFO* info);
    void OnSysColorChange();
    void OnTimer(UINT_PTR id);
    LRESULT OnRefreshStatus(WPARAM, LPARAM);

    void OnFilePictures();
    void OnFileExit();
    void OnViewPane(UINT id);
    void OnUpdateViewPane(CCmdUI* ui);
    void OnViewAddWorkspace();
    void OnViewOtherPane(UINT id);
    void OnViewMoveBars();
    void OnViewFitColumns();
    void OnViewResetLayout();
    void OnViewMultiMonitor();
    void OnUpdateViewMultiMonitor(CCmdUI* ui);
    void OnFeedPause();
    void OnUpdateFeedPause(CCmdUI* ui);
    void OnFeedSlower();
    void OnFeedFaster();
    void OnFeedRealTime();
    void OnFeedMax();
    void OnUpdateFeedSpeed(CCmdUI* ui);
    void OnHelpAbout();

    void showWorkspace(int place) override;
    void moveWorkspace(int from, int to) override;
    void copyWorkspace(int to, const std::string& name) override;
    std::string workspaceName(int place) const override;
    bool renameWorkspace(int place, const std::string& name) override;
    void closeWorkspace(int place) override;
    void addWorkspace() override;
    // As the panes stand now, and so again.
    Workspace arrangement();
    void arrange(const Workspace& workspace);
    void takeChoices();
    void keepWorkspace() { m_workspaces.keep(arrangement()); }

    bool createPanes();
    bool createBricks();
    void showCounts();
    void showBricks();
    void paneGone(const CListPane* pane);
    BOOL createWindow();
    std::vector<CListPane*> listPanes();
    void readLayout();
    void writeLayout();
    void keepLayouts();
    void setSpeed(Speed speed);
    void saveSettings();

    // The end of the feed, for a reason; told once.
    void feedOver(const std::string& reason);
    // The end of the run: last paint, pictures, self-check, figures.
    void finish(const std::string& ending);
    void fillSummary();
    void logLastPrices();
    void logChainCosts();
    void paintEverything();
    bool savePictures();
    void checkMyself();
    void refreshStatus();

    TerminalRun& m_run;
    Panes m_panes;
    CChainPane* m_chain = nullptr;  // a view: it goes with its window
    std::unique_ptr<FeedPump> m_pump;
    CZTTimer m_timer;
    MarketPulse m_pulse;
    CZTBrickBar m_bricks;
    CFlatSplitterWnd m_split;  // the watch, and the panes of a workspace
    CWorkspaceArea m_area{*this};
    Workspaces m_workspaces;
    CLogPane m_log;
    CStatusStrip m_status;
    CZTDialog m_about;
    std::string m_feedEnding;  // "" while the feed runs
    bool m_layoutRead = false;
    bool m_choicesTaken = false;  // the lists' sorts wait for their first rows
    bool m_finished = false;
    bool m_ending = false;  // the window goes, or will as soon as it may
    bool m_saveFailed = false;
    std::int64_t m_nextSave = 0;
    std::int64_t m_nextKeeping = 0;
    std::int64_t m_lastTick = 0;
    std::int64_t m_deadline = 0;  // 0: none

    DECLARE_MESSAGE_MAP()
};

}  // namespace terminal
