#include "host/WorkspaceArea.h"

#include "host/panes/DarkMenus.h"
#include "host/panes/Theme.h"
#include "host/resource/resource.h"

#include <algorithm>
#include <cmath>

namespace terminal {

using quor::platform::scaled;

namespace {

constexpr int kTabHeight = 24;
constexpr DWORD kTabStyle = CTS_AUTOHIDEBUTTONS | CTS_DRAGMOVE | CTS_DRAGCOPY | CTS_CLOSEBUTTON | CTS_BUTTONSAFTER;
constexpr int kShareUnits = 10'000;      // of a whole row
constexpr double kLeastRowShare = 0.02;  // of one with a pane in it

// Where a pane stands, and what it has at the first start.
struct Cell {
    const char* name;
    int row, column;
    double share;
};
constexpr Cell kCells[kLowerPanes] = {{"Orders", 0, 0, 0.54},
                                      {"Trades", 0, 1, 0.46},
                                      {"Option chain", 1, 0, 0.50},
                                      {"Positions", 1, 1, 0.34},
                                      {"Log", 1, 2, 0.16}};
constexpr Cell kRows[] = {{"Upper row", 0, 0, 0.52}, {"Lower row", 1, 0, 0.48}};

const Cell& cellOf(LowerPane pane) { return kCells[static_cast<int>(pane)]; }

// What a closed pane or row gets beside those that share all of the room, so that it has its first share.
double shareBesideAll(const Cell& cell) { return cell.share / (1 - cell.share); }

std::vector<int> units(const std::vector<double>& shares) {
    double total = 0;
    for (const double share : shares) total += share;
    std::vector<int> all;
    for (const double share : shares)
        all.push_back(total > 0 ? static_cast<int>(std::lround(share / total * kShareUnits)) : 0);
    return all;
}

}  // namespace

BEGIN_MESSAGE_MAP(CWorkspaceArea, CWnd)
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
    ON_WM_CONTEXTMENU()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

BOOL CWorkspaceArea::CreateArea(CWnd* parent, UINT id) {
    constexpr DWORD kInside = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    const CRect none(0, 0, 0, 0);
    if (!Create(AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), "", kInside, none, parent, id) ||
        !m_tabs.Create(kInside | WS_TABSTOP | kTabStyle, none, this, IDC_WORKSPACES) ||
        !m_rows.CreateStatic(this, 2, 1, kInside) ||
        !m_upper.CreateStatic(&m_rows, 1, 2, kInside, static_cast<UINT>(m_rows.IdFromRowCol(0, 0))) ||
        !m_lower.CreateStatic(&m_rows, 1, 3, kInside, static_cast<UINT>(m_rows.IdFromRowCol(1, 0))))
        return FALSE;
    darkenMenus(m_hWnd);
    m_tabs.SetDragCursors(::LoadCursor(nullptr, IDC_SIZEALL), ::LoadCursor(nullptr, IDC_CROSS));
    for (const Cell& cell : kCells) {
        CFlatSplitterWnd& row = cell.row == 0 ? m_upper : m_lower;
        if (!row.CreateView(0, cell.column, RUNTIME_CLASS(CPaneHolder), SIZE{0, 0}, nullptr)) return FALSE;
    }
    for (int pane = 0; pane < kLowerPanes; ++pane) {
        const auto closed = static_cast<LowerPane>(pane);
        holder(closed).setOnClose([this, closed] { show(closed, false); });
    }
    for (CFlatSplitterWnd* splitter : {&m_rows, &m_upper, &m_lower}) splitter->SetKeepShares(1);
    return TRUE;
}

const CFlatSplitterWnd& CWorkspaceArea::rowOf(LowerPane pane) const {
    return cellOf(pane).row == 0 ? m_upper : m_lower;
}

CPaneHolder& CWorkspaceArea::holder(LowerPane pane) {
    return *static_cast<CPaneHolder*>(rowOf(pane).GetPane(0, cellOf(pane).column));
}

// --- Shares --------------------------------------------------------------------------------------------------------

std::vector<PaneShare> CWorkspaceArea::firstShares() {
    std::vector<PaneShare> shares;
    for (const Cell& cell : kCells) shares.push_back({cell.name, cell.share, true});
    for (const Cell& cell : kRows) shares.push_back({cell.name, cell.share, true});
    return shares;
}

Workspace CWorkspaceArea::firstWorkspace() {
    Workspace first{"Trading", firstShares(), {}, "", {}};
    for (const char* list : {"Market Watch", "Orders", "Trades", "Positions", "Option chain"})
        first.lists.push_back({list, {}, -1, false, {}});
    return first;
}

std::vector<PaneShare> CWorkspaceArea::shares() const {
    std::vector<PaneShare> shares;
    const std::vector<int> heights = m_rows.GetRowShares();
    const auto add = [&shares](const Cell& cell, const std::vector<int>& lengths, int place, bool shown) {
        double total = 0;
        for (const int length : lengths) total += length;
        const int own = lengths[static_cast<std::size_t>(place)];
        shown = shown && own > 0;
        shares.push_back({cell.name, shown ? own / total : cell.share, shown});
    };
    // A row without height keeps the widths of its panes.
    for (const Cell& cell : kCells)
        add(cell, (cell.row == 0 ? m_upper : m_lower).GetColumnShares(), cell.column,
            heights[static_cast<std::size_t>(cell.row)] > 0);
    for (const Cell& cell : kRows) add(cell, heights, cell.row, true);
    return shares;
}

void CWorkspaceArea::setShares(const std::vector<PaneShare>& shares) {
    const auto shareOf = [&shares](const Cell& cell) {
        const auto found = std::ranges::find(shares, cell.name, &PaneShare::pane);
        return found == shares.end() ? PaneShare{cell.name, cell.share, true} : *found;
    };
    std::vector<double> rows[2], both;
    for (const Cell& cell : kCells) rows[cell.row].push_back(shareOf(cell).shown ? shareOf(cell).share : 0);
    // Whether a row shows, its panes say.
    for (const Cell& cell : kRows) {
        const auto& row = rows[cell.row];
        const bool anyShows = std::ranges::any_of(row, [](double share) { return share > 0; });
        both.push_back(anyShows ? std::max(shareOf(cell).share, kLeastRowShare) : 0);
    }
    m_rows.SetRowShares(units(both));
    m_upper.SetColumnShares(units(rows[0]));
    m_lower.SetColumnShares(units(rows[1]));
}

bool CWorkspaceArea::shows(LowerPane pane) const {
    const Cell& cell = cellOf(pane);
    return m_rows.GetRowShares()[static_cast<std::size_t>(cell.row)] > 0 &&
           rowOf(pane).GetColumnShares()[static_cast<std::size_t>(cell.column)] > 0;
}

// The last one stays: there is nothing to see without it.
void CWorkspaceArea::show(LowerPane pane, bool on) {
    std::vector<PaneShare> all = shares();
    const auto shown = std::count_if(all.begin(), all.begin() + kLowerPanes, [](const auto& one) { return one.shown; });
    PaneShare& own = all[static_cast<std::size_t>(pane)];
    if (own.shown == on || (!on && shown == 1)) return;
    const bool hadFocus = ::IsChild(holder(pane), ::GetFocus());
    own.shown = on;
    if (on) {
        const Cell& row = kRows[cellOf(pane).row];
        own.share = shareBesideAll(cellOf(pane));
        PaneShare& ownRow = all[static_cast<std::size_t>(kLowerPanes + row.row)];
        if (!ownRow.shown) ownRow.share = shareBesideAll(row);
    }
    setShares(all);
    if (hadFocus && !on) SetFocus();
}

// --- Tabs ----------------------------------------------------------------------------------------------------------

void CWorkspaceArea::showTabs(const Workspaces& workspaces) {
    m_filling = true;
    m_tabs.DeleteAllItems();
    for (const Workspace& one : workspaces.all()) m_tabs.InsertItem(m_tabs.GetItemCount(), one.name.c_str());
    m_tabs.SetCurSel(static_cast<int>(workspaces.shown()));
    m_filling = false;
}

BOOL CWorkspaceArea::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto& news = *reinterpret_cast<const sTabNotify*>(lParam);
    if (news.hdr.hwndFrom != m_tabs.m_hWnd) return CWnd::OnNotify(wParam, lParam, result);
    *result = 0;
    if (m_filling) return TRUE;
    switch (static_cast<int>(news.hdr.code)) {
        case kTabChosen:
            m_owner.showWorkspace(news.nItem);
            break;
        case kTabMoved:
            m_owner.moveWorkspace(news.nItem >> 8 & 255, news.nItem & 255);
            break;
        case kTabCopied:
            m_owner.copyWorkspace(news.nItem, m_tabs.GetItemText(news.nItem).GetString());
            break;
        case kTabClose:
            m_owner.closeWorkspace(news.nItem);
            break;
        case kTabLabel:
            rename(news.nItem);
            break;
        case static_cast<int>(NM_RCLICK):
            showMenu(news.nItem, news.point);
            break;
        default:
            break;
    }
    return TRUE;
}

// It is told before the text is changed, too: then nothing is new.
void CWorkspaceArea::rename(int place) {
    const CString text = m_tabs.GetItemText(place);
    const std::string former = m_owner.workspaceName(place);
    if (text != former.c_str() && !m_owner.renameWorkspace(place, text.GetString()))
        m_tabs.SetItemText(place, former.c_str());
}

// By keys; the mouse's are told by the strip.
void CWorkspaceArea::OnContextMenu(CWnd* window, CPoint point) {
    if (window != &m_tabs || point != CPoint(-1, -1)) return CWnd::OnContextMenu(window, point);
    CRect tab;
    m_tabs.GetItemRect(m_tabs.GetCurSel(), tab);
    showMenu(m_tabs.GetCurSel(), {tab.left, tab.bottom});
}

void CWorkspaceArea::showMenu(int place, CPoint point) {
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, kAddWorkspace, "&New Workspace");
    const UINT onTab = place >= 0 ? MF_STRING : MF_STRING | MF_GRAYED;
    menu.AppendMenu(onTab, kRenameWorkspace, "&Rename\tF2");
    menu.AppendMenu(onTab, kCopyWorkspace, "&Copy");
    menu.AppendMenu(m_tabs.GetItemCount() > 1 ? onTab : MF_STRING | MF_GRAYED, kCloseWorkspace, "C&lose\tDelete");
    m_tabs.ClientToScreen(&point);
    const HWND self = m_hWnd;
    const int chosen = menu.TrackPopupMenu(TPM_RETURNCMD, point.x, point.y, this);
    if (!::IsWindow(self)) return;
    if (chosen == static_cast<int>(kAddWorkspace)) m_owner.addWorkspace();
    if (chosen == static_cast<int>(kRenameWorkspace)) m_tabs.EditLabel(place);
    if (chosen == static_cast<int>(kCopyWorkspace)) {
        m_owner.showWorkspace(place);
        m_tabs.CopyItem(place, place + 1);
    }
    if (chosen == static_cast<int>(kCloseWorkspace)) m_owner.closeWorkspace(place);
}

// --- Window --------------------------------------------------------------------------------------------------------

void CWorkspaceArea::layOut() {
    if (!m_rows.m_hWnd) return;
    CRect area;
    GetClientRect(&area);
    const int strip = std::min<int>(area.Height(), scaled(m_hWnd, kTabHeight));
    m_tabs.MoveWindow(0, 0, area.Width(), strip);
    m_rows.MoveWindow(0, strip, area.Width(), std::max(0, area.Height() - strip));
}

void CWorkspaceArea::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    layOut();
}

// To the first pane that shows.
void CWorkspaceArea::OnSetFocus(CWnd*) { (m_rows.GetRowShares()[0] > 0 ? m_upper : m_lower).ActivateNext(); }

BOOL CWorkspaceArea::OnEraseBkgnd(CDC*) { return TRUE; }

}  // namespace terminal
