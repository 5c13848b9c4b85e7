// What stands below the watch: a strip of tabs, one for each workspace, and the panes of the one that is shown, in two
// rows. A pane that its workspace does not show has the width 0.
//
// Makes the holders; whoever made the area puts the panes into them. The tabs tell what the user wants; what becomes of
// it is the owner's, by the calls of `Owner`.
#pragma once

#include "host/core/Workspaces.h"
#include "host/panes/PaneHolder.h"
#include "quor/bars/CustomTabCtrl.h"
#include "quor/bars/FlatSplitterWnd.h"

#include <functional>
#include <vector>

namespace terminal {

// Panes below the watch, in the order of Workspace::panes; the rows have their shares behind them.
enum class LowerPane { orders, trades, chain, positions, log };
inline constexpr int kLowerPanes = 5;

// Items of a tab's menu.
inline constexpr UINT kAddWorkspace = 1, kRenameWorkspace = 2, kCopyWorkspace = 3, kCloseWorkspace = 4;

class CWorkspaceArea : public CWnd {
public:
    struct Owner {
        virtual void showWorkspace(int place) = 0;
        virtual void moveWorkspace(int from, int to) = 0;
        // Of the one that is shown; it is shown then.
        virtual void copyWorkspace(int to, const std::string& name) = 0;
        virtual std::string workspaceName(int place) const = 0;
        // False refuses the name.
        virtual bool renameWorkspace(int place, const std::string& name) = 0;
        virtual void closeWorkspace(int place) = 0;
        virtual void addWorkspace() = 0;

    protected:
        ~Owner() = default;
    };

    explicit CWorkspaceArea(Owner& owner) : m_owner(owner) {}

    BOOL CreateArea(CWnd* parent, UINT id);
    CPaneHolder& holder(LowerPane pane);

    // The tabs of all workspaces, the shown one selected.
    void showTabs(const Workspaces& workspaces);
    CCustomTabCtrl& tabs() { return m_tabs; }
    // Orders and trades.
    CFlatSplitterWnd& upperRow() { return m_upper; }

    // The panes as they are divided, and so again. Panes that are not named stay.
    std::vector<PaneShare> shares() const;
    void setShares(const std::vector<PaneShare>& shares);
    static std::vector<PaneShare> firstShares();
    // That of the first start.
    static Workspace firstWorkspace();

    bool shows(LowerPane pane) const;
    // As the close boxes do. The last pane stays; a row without any gives its room to the other one.
    void show(LowerPane pane, bool on);

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

private:
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* former);
    void OnContextMenu(CWnd* window, CPoint point);
    BOOL OnEraseBkgnd(CDC* dc);
    void layOut();
    const CFlatSplitterWnd& rowOf(LowerPane pane) const;
    void rename(int place);
    void showMenu(int place, CPoint point);

    Owner& m_owner;
    CCustomTabCtrl m_tabs;
    CFlatSplitterWnd m_rows, m_upper, m_lower;
    bool m_filling = false;  // the tabs are set by code

    DECLARE_MESSAGE_MAP()
};

}  // namespace terminal
