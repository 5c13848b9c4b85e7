#include "host/proof/LayoutProof.h"

#include "host/MainFrame.h"
#include "host/core/WatchStore.h"
#include "host/panes/LevelsMenu.h"
#include "host/panes/ListMenu.h"
#include "host/proof/LayoutFacts.h"
#include "host/proof/UserHand.h"
#include "host/resource/resource.h"
#include "quor/foundation/TimerIds.h"
#include "quor/list/ListCommands.h"

namespace terminal {

namespace {

Subject watchSubject(CWatchPane& watch) {
    const int shown = watch.shownWatch();
    return {"watch " + watchLists()[static_cast<std::size_t>(shown)].name, watch.list(),
            shown == 0 ? LastSort::levels : LastSort::autoSort, static_cast<int>(WatchColumn::last)};
}

std::vector<Subject> gridSubjects(const ListPanes& panes) {
    return {{"orders", panes.orders.list(), LastSort::lock, static_cast<int>(OrderColumn::quantity)},
            {"trades", panes.trades.list(), LastSort::click, static_cast<int>(TradeColumn::price)},
            {"positions", panes.positions.list(), LastSort::lock, static_cast<int>(PositionColumn::value)},
            {"option chain", panes.chain.list(), LastSort::click, static_cast<int>(ChainColumn::putPrice)}};
}

std::vector<Subject> allSubjects(const ListPanes& panes) {
    std::vector<Subject> all{watchSubject(panes.watch)};
    for (const Subject& subject : gridSubjects(panes)) all.push_back(subject);
    return all;
}

const SortLevels& levelsToLeave() {
    static const SortLevels levels{{watchColumn(static_cast<int>(WatchColumn::series)).heading, -1},
                                   {watchColumn(static_cast<int>(WatchColumn::last)).heading, 1},
                                   {watchColumn(static_cast<int>(WatchColumn::symbol)).heading, -1}};
    return levels;
}

// ---- The user's hand

LPARAM packed(POINT point) { return MAKELPARAM(point.x, point.y); }

void dragMouse(HWND window, POINT from, POINT to) {
    constexpr int kSteps = 4;
    ::SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, packed(from));
    for (int step = 1; step <= kSteps; ++step) {
        const POINT at{from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps};
        ::SendMessageA(window, WM_MOUSEMOVE, MK_LBUTTON, packed(at));
    }
    ::SendMessageA(window, WM_LBUTTONUP, 0, packed(to));
}

CRect itemRect(CCommonListCtrl& list, int item) {
    CRect area;
    ::SendMessageA(list.GetHeaderCtrl()->GetSafeHwnd(), HDM_GETITEMRECT, static_cast<WPARAM>(item),
                   reinterpret_cast<LPARAM>(static_cast<RECT*>(&area)));
    return area;
}

// A height inside a header's caption, whatever stands below it.
constexpr int kCaptionLine = 6;

// The column may stand beyond the edge of a narrow pane.
void clickColumn(CCommonListCtrl& list, int columnIndex) {
    const int item = list.m_arrOrder[columnIndex];
    list.SendMessage(LVM_SCROLL, static_cast<WPARAM>(itemRect(list, item).left - list.GetScrollPos(SB_HORZ)));
    const CRect area = itemRect(list, item);
    const POINT middle{(area.left + area.right) / 2, area.top + kCaptionLine};
    dragMouse(list.GetHeaderCtrl()->GetSafeHwnd(), middle, middle);
}

// From one position on screen to before another, further left.
void dragColumn(CCommonListCtrl& list, int from, int before) {
    const CRect source = itemRect(list, list.GetHeaderCtrl()->OrderToIndex(from));
    const CRect target = itemRect(list, list.GetHeaderCtrl()->OrderToIndex(before));
    dragMouse(list.GetHeaderCtrl()->GetSafeHwnd(), {(source.left + source.right) / 2, source.top + kCaptionLine},
              {target.left + 3, target.top + kCaptionLine});
}

void dragDivider(CCommonListCtrl& list, int item, int by) {
    const CRect area = itemRect(list, item);
    const POINT divider{area.right - 2, area.top + kCaptionLine};
    dragMouse(list.GetHeaderCtrl()->GetSafeHwnd(), divider, {divider.x + by, divider.y});
}

void chooseWatch(CWatchPane& watch, int number) {
    const HWND holder = ::GetParent(watch.GetSafeHwnd()), combo = ::GetDlgItem(holder, IDC_WATCH_NAMES);
    ::SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(number), 0);
    ::SendMessageA(holder, WM_COMMAND, MAKEWPARAM(IDC_WATCH_NAMES, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
}

// ---- Changing one list

constexpr int kToHide = 5;  // counted on the screen
constexpr std::size_t kFewestColumns = kToHide + 1;

class Change {
public:
    Change(const Subject& subject, std::vector<std::string>& failures) : m_subject(subject), m_failures(failures) {}

    void run() {
        changeColumns();
        sort();
    }

private:
    void expect(bool done, const char* what) {
        if (!done) m_failures.push_back(m_subject.name + ": " + what);
    }
    int columnOnScreen(int position) {
        return m_list.GetOriginalColumnPosition(itemsOf(m_list)[static_cast<std::size_t>(position)]);
    }

    void changeColumns() {
        constexpr int kSized = 0, kSizedBy = 13, kDragged = 3, kBefore = 1;
        int hidden = 0;
        while (hidden < m_list.m_arrOrder.GetCount() && m_list.m_arrOrder[hidden] >= 0) ++hidden;
        const int gone = columnOnScreen(kToHide);
        showOrHideColumn(m_list, gone);
        expect(m_list.m_arrOrder[gone] == -1, "no column could be hidden");
        if (hidden < m_list.m_arrOrder.GetCount()) {
            showOrHideColumn(m_list, hidden);
            expect(m_list.m_arrOrder[hidden] >= 0, "no column could be shown");
        }
        const int width = m_list.GetColumnWidth(kSized);
        dragDivider(m_list, kSized, kSizedBy);
        expect(m_list.GetColumnWidth(kSized) == width + kSizedBy, "no column could be sized");
        const int moved = columnOnScreen(kDragged);
        dragColumn(m_list, kDragged, kBefore);
        expect(columnOnScreen(kBefore) == moved, "no header item could be dragged");
    }

    void sort() {
        const int rows = rowsOf(m_list);
        if (m_list.m_bSortLocked) m_list.SendMessage(WM_COMMAND, kLockSorting, 0);  // or clicks would do nothing
        if (m_subject.sort == LastSort::levels) {
            setLevels(m_list, levelsToLeave(), true);
            expect(m_list.m_bMultiSortActive != 0, "no levels");
            clickColumn(m_list, m_subject.sortColumn);  // levels leave a click without effect
            return;
        }
        clickColumn(m_list, m_subject.sortColumn);
        const bool toFall = m_subject.sort == LastSort::autoSort || m_subject.sort == LastSort::lock;
        if (toFall && m_list.m_nSortOrder < 0) clickColumn(m_list, m_subject.sortColumn);
        expect(m_list.m_bSorted || rows < 2, "a click did not sort");
        if (!m_list.m_bSorted) return;
        expect(rowsBy(m_list, {{m_subject.sortColumn, m_list.m_nSortOrder}}, false) == "in order",
               "a click did not order the rows");
        if (m_subject.sort == LastSort::autoSort) switchAutoSort(m_list, true);
        if (m_subject.sort == LastSort::lock) m_list.SendMessage(WM_COMMAND, kLockSorting, 0);
        expect((m_list.m_bSortLocked != 0) == (m_subject.sort == LastSort::lock), "the lock is not as it was set");
    }

    const Subject& m_subject;
    CCommonListCtrl& m_list = m_subject.list;
    std::vector<std::string>& m_failures;
};

class LayoutProof final : public Proof {
public:
    explicit LayoutProof(Outcome& outcome) : m_outcome(outcome) {}

    std::string missing(CMainFrame& frame) override {
        for (const Subject& subject : allSubjects(frame.panes())) {
            const std::size_t columns = itemsOf(subject.list).size();
            if (columns < kFewestColumns)
                return std::to_string(kFewestColumns) + " columns of " + subject.name + ", of which " +
                       std::to_string(columns) + " show";
        }
        return {};
    }

    void act(CMainFrame& frame) override {
        const ListPanes panes = frame.panes();
        for (int number = 0; number < watches(); ++number) {
            chooseWatch(panes.watch, number);
            leave(watchSubject(panes.watch));
        }
        // Each watch once more: the other one's columns and sort are not its own. The first one stays.
        for (int number = watches() - 1; number >= 0; --number)
            for (const std::string& line :
                 differences(m_left[static_cast<std::size_t>(number)], watchAgain(panes, number)))
                m_outcome.findings.push_back("after another watch was shown, " + line);
        for (const Subject& subject : gridSubjects(panes)) leave(subject);
        m_outcome.tried = static_cast<int>(m_left.size());  // none of them held before the restart shows it
    }

    void check(CMainFrame& frame) override {
        const ListPanes panes = frame.panes();
        std::vector<ListLayout> found;
        for (int number = 0; number < watches(); ++number) found.push_back(watchAgain(panes, number));
        chooseWatch(panes.watch, 0);
        for (const Subject& subject : gridSubjects(panes)) found.push_back(layoutOf(subject));
        for (std::size_t i = 0; i < m_left.size(); ++i) {
            const std::vector<std::string> lines = differences(m_left[i], found[i]);
            m_outcome.held += lines.empty();
            m_outcome.findings.insert(m_outcome.findings.end(), lines.begin(), lines.end());
        }
    }

private:
    static int watches() { return static_cast<int>(watchLists().size()); }

    void leave(const Subject& subject) {
        Change(subject, m_outcome.findings).run();
        pumpAll();  // columns that fill their pane settle
        m_left.push_back(layoutOf(subject));
    }
    ListLayout watchAgain(const ListPanes& panes, int number) {
        chooseWatch(panes.watch, number);
        panes.watch.list().SendMessage(WM_TIMER, kAutoSortTimer);  // the step that is due a second later
        return layoutOf(watchSubject(panes.watch));
    }

    Outcome& m_outcome;
    std::vector<ListLayout> m_left;
};

}  // namespace

std::unique_ptr<Proof> makeLayoutProof(TerminalRun&, Outcome& outcome) {
    return std::make_unique<LayoutProof>(outcome);
}

}  // namespace terminal
