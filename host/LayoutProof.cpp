#include "host/LayoutProof.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "host/ChainPane.h"
#include "host/LevelsMenu.h"
#include "host/ListMenu.h"
#include "host/OrdersPane.h"
#include "host/TradesPane.h"
#include "host/WatchPane.h"
#include "host/core/WatchStore.h"
#include "host/resource.h"
#include "src/foundation/TimerIds.h"
#include "src/list/ListCommands.h"

namespace terminal {

namespace {

// What the user did last to the rows of a list.
enum class LastSort { levels, autoSort, lock, click };

struct Subject {
    std::string name;
    CCommonListCtrl& list;
    LastSort sort;
    int sortColumn;     // columnIndex; of levels, the one that decides last but one
    bool keepsDrag;     // the order on screen is stored; other lists come back by place
    int arrivalColumn;  // rises with the rows as they come; it falls where the newest row is the first
    int arrivalOrder;
};

Subject watchSubject(CWatchPane& watch) {
    const int shown = watch.shownWatch();
    return {"watch " + watchLists()[static_cast<std::size_t>(shown)].name,
            watch.list(),
            shown == 0 ? LastSort::levels : LastSort::autoSort,
            static_cast<int>(WatchColumn::last),
            true,
            -1,
            0};
}

std::vector<Subject> gridSubjects(const ProofPanes& panes) {
    return {{"orders", panes.orders.list(), LastSort::lock, static_cast<int>(OrderColumn::price), false, -1, 0},
            {"trades", panes.trades.list(), LastSort::click, static_cast<int>(TradeColumn::price), false,
             static_cast<int>(TradeColumn::number), 1},
            {"option chain", panes.chain.list(), LastSort::click, static_cast<int>(ChainColumn::putPrice), false,
             static_cast<int>(ChainColumn::strike), -1}};
}

const SortLevels& levelsToLeave() {
    static const SortLevels levels{{watchColumn(static_cast<int>(WatchColumn::series)).heading, -1},
                                   {watchColumn(static_cast<int>(WatchColumn::last)).heading, 1},
                                   {watchColumn(static_cast<int>(WatchColumn::symbol)).heading, -1}};
    return levels;
}

// ---- Facts

int rowsOf(const CCommonListCtrl& list) {
    return static_cast<int>(::SendMessageA(list.GetSafeHwnd(), LVM_GETITEMCOUNT, 0, 0));
}

std::string headingOf(CCommonListCtrl& list, int columnIndex) {
    return columnIndex >= 0 && columnIndex < list.m_arrColumns.GetCount() ? list.m_arrColumns[columnIndex].szColumnName
                                                                          : "?";
}

std::string directed(CCommonListCtrl& list, int columnIndex, int order) {
    return headingOf(list, columnIndex) + (order < 0 ? " rising" : " falling");
}

// Header items from left to right: as they stand on screen, or by place.
std::vector<int> itemsOf(CCommonListCtrl& list, bool onScreen) {
    std::vector<int> items;
    const CHeaderCtrl* const header = list.GetHeaderCtrl();
    for (int i = 0; header && i < header->GetItemCount(); ++i) items.push_back(onScreen ? header->OrderToIndex(i) : i);
    return items;
}

std::string arrowsOf(CCommonListCtrl& list, const std::vector<int>& items) {
    std::string text;
    for (const int item : items) {
        HDITEM record{};
        record.mask = HDI_FORMAT | HDI_IMAGE;
        if (!list.GetHeaderCtrl()->GetItem(item, &record) || !(record.fmt & HDF_IMAGE) || record.iImage > 1) continue;
        text += directed(list, list.GetOriginalColumnPosition(item), record.iImage == 0 ? -1 : 1) + "; ";
    }
    return text.empty() ? "none" : text;
}

struct SortBy {
    int columnIndex;
    int order;
};

std::vector<SortBy> sortOf(CCommonListCtrl& list) {
    std::vector<SortBy> by;
    if (list.m_bMultiSortActive)
        for (INT_PTR i = 0; i < list.m_arrSortOrder.GetCount(); ++i)
            by.push_back({list.m_arrSortOrder[i].iColumnIndex, list.m_arrSortOrder[i].iSortOrder});
    else if (list.m_bSortLocked)
        by.push_back({list.m_nLockSortColumn, list.m_nLockSortOrder});
    else if (list.m_bAutoSort)
        by.push_back({list.GetOriginalColumnPosition(list.m_nSortCol), list.m_nSortOrder});
    return by;
}

// By a reading of its own, not by the list's: numbers as C reads them, other texts by their bytes (the columns that are
// sorted here hold one or the other).
int compared(const std::string& one, const std::string& other, int dataType) {
    if (dataType != 2 && dataType != 4 && dataType != 5) return one.compare(other);
    const double difference = std::atof(one.c_str()) - std::atof(other.c_str());
    return difference < 0 ? -1 : difference > 0 ? 1 : 0;
}

// Whether the rows really stand as the sort says, and what they show there.
std::string rowsBy(CCommonListCtrl& list, const std::vector<SortBy>& by, bool withTexts) {
    const int count = rowsOf(list);
    std::vector<std::string> former;
    std::uint64_t digest = 14695981039346656037u;  // FNV-1a (Fowler, Noll, Vo)
    for (int row = 0; row < count; ++row) {
        std::vector<std::string> texts;
        int verdict = 0;
        for (std::size_t i = 0; i < by.size(); ++i) {
            const int place = list.m_arrOrder[by[i].columnIndex];
            texts.emplace_back(static_cast<const char*>(list.GetItemText(row, place)));
            for (const char c : texts.back() + '\n') digest = (digest ^ static_cast<unsigned char>(c)) * 1099511628211u;
            if (row > 0 && verdict == 0)
                verdict = -by[i].order * compared(former[i], texts[i], list.m_arrColumns[by[i].columnIndex].iDataType);
        }
        if (verdict > 0) return "row " + std::to_string(row) + " stands behind one that comes after it";
        former = std::move(texts);
    }
    return withTexts ? std::to_string(count) + " in order, texts " + std::to_string(digest) : "in order";
}

std::string userColumnsOf(CCommonListCtrl& list) {
    std::string text;
    for (INT_PTR i = list.m_nBaseColumnCount; i < list.m_arrColumns.GetCount(); ++i) {
        const sQuorColInfo& column = list.m_arrColumns[i];
        text.append("[").append(column.szColumnName).append("|").append(column.csExpression).append("|");
        text.append(column.csToolTip).append("] ");
    }
    return text;
}

std::string levelsText(CCommonListCtrl& list) {
    std::string text;
    for (const SortLevel& level : levelsOf(list))
        text += level.heading + (level.order < 0 ? " rising, " : " falling, ");
    return text + (list.m_bMultiSortActive ? "active" : "not active");
}

// How the list stands; with `left`, as it has to come back.
ListLayout layoutOf(const Subject& subject, bool left) {
    CCommonListCtrl& list = subject.list;
    const std::vector<int> items = itemsOf(list, subject.keepsDrag || !left);
    const bool onlyClicked = list.m_bSorted && !list.m_bSortLocked && !list.m_bAutoSort && !list.m_bMultiSortActive;
    std::string columns, widths;
    for (const int item : items) {
        const std::string heading = headingOf(list, list.GetOriginalColumnPosition(item));
        columns += heading + "; ";
        widths += heading + " " + std::to_string(list.GetColumnWidth(item)) + "; ";
    }
    const std::vector<SortBy> by = sortOf(list);
    const bool forgets = left && onlyClicked;  // what a click did is gone after a restart
    ListLayout layout{subject.name, {{"columns", columns}, {"widths", widths}, {"user columns", userColumnsOf(list)}}};
    const auto add = [&](const char* name, const std::string& value) { layout.facts.push_back({name, value}); };
    add("levels", levelsText(list));
    add("lock", list.m_bSortLocked ? directed(list, list.m_nLockSortColumn, list.m_nLockSortOrder) : "none");
    add("auto-sort", list.m_bAutoSort ? directed(list, by.empty() ? -1 : by[0].columnIndex, list.m_nSortOrder) : "off");
    add("click", onlyClicked && !left ? "still there" : "forgotten");
    add("arrows", forgets ? "none" : arrowsOf(list, items));
    if (!by.empty())
        add("rows", rowsBy(list, by, true));
    else if (subject.arrivalColumn >= 0)
        add("rows", left ? "in order" : rowsBy(list, {{subject.arrivalColumn, subject.arrivalOrder}}, false));
    return layout;
}

// ---- The user's hand

LPARAM packed(POINT point) { return MAKELPARAM(point.x, point.y); }

void dragMouse(HWND window, POINT from, POINT to) {
    constexpr int steps = 4;
    ::SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, packed(from));
    for (int step = 1; step <= steps; ++step) {
        const POINT at{from.x + (to.x - from.x) * step / steps, from.y + (to.y - from.y) * step / steps};
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
constexpr int captionLine = 6;

void clickColumn(CCommonListCtrl& list, int columnIndex) {
    const CRect area = itemRect(list, list.m_arrOrder[columnIndex]);
    const POINT middle{(area.left + area.right) / 2, area.top + captionLine};
    dragMouse(list.GetHeaderCtrl()->GetSafeHwnd(), middle, middle);
}

// From one position on screen to before another, further left.
void dragColumn(CCommonListCtrl& list, int from, int before) {
    const CRect source = itemRect(list, list.GetHeaderCtrl()->OrderToIndex(from));
    const CRect target = itemRect(list, list.GetHeaderCtrl()->OrderToIndex(before));
    dragMouse(list.GetHeaderCtrl()->GetSafeHwnd(), {(source.left + source.right) / 2, source.top + captionLine},
              {target.left + 3, target.top + captionLine});
}

void dragDivider(CCommonListCtrl& list, int item, int by) {
    const CRect area = itemRect(list, item);
    const POINT divider{area.right - 2, area.top + captionLine};
    dragMouse(list.GetHeaderCtrl()->GetSafeHwnd(), divider, {divider.x + by, divider.y});
}

void chooseWatch(CWatchPane& watch, int number) {
    const HWND combo = ::GetDlgItem(watch.GetSafeHwnd(), IDC_WATCH_NAMES);
    ::SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(number), 0);
    watch.SendMessage(WM_COMMAND, MAKEWPARAM(IDC_WATCH_NAMES, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
}

// ---- Changing one list

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
        return m_list.GetOriginalColumnPosition(itemsOf(m_list, true)[static_cast<std::size_t>(position)]);
    }

    void changeColumns() {
        constexpr int toHide = 5, sized = 0, sizedBy = 13, dragged = 3, before = 1;
        int hidden = 0;
        while (hidden < m_list.m_arrOrder.GetCount() && m_list.m_arrOrder[hidden] >= 0) ++hidden;
        const int gone = columnOnScreen(toHide);
        showOrHideColumn(m_list, gone);
        expect(m_list.m_arrOrder[gone] == -1, "no column could be hidden");
        if (hidden < m_list.m_arrOrder.GetCount()) {
            showOrHideColumn(m_list, hidden);
            expect(m_list.m_arrOrder[hidden] >= 0, "no column could be shown");
        }
        const int width = m_list.GetColumnWidth(sized);
        dragDivider(m_list, sized, sizedBy);
        expect(m_list.GetColumnWidth(sized) == width + sizedBy, "no column could be sized");
        const int moved = columnOnScreen(dragged);
        dragColumn(m_list, dragged, before);
        expect(columnOnScreen(before) == moved, "no header item could be dragged");
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
        if (m_subject.sort == LastSort::autoSort) clickColumn(m_list, m_subject.sortColumn);  // falling
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

// How far two texts agree, for a message: the rest of each from a little before.
std::string restFrom(const std::string& text, std::size_t at) {
    constexpr std::size_t before = 20, shown = 160;
    return text.substr(at > before ? at - before : 0, shown);
}

}  // namespace

LeftLayouts leaveLayouts(const ProofPanes& panes) {
    LeftLayouts left;
    const int watches = static_cast<int>(watchLists().size());
    for (int number = 0; number < watches; ++number) {
        chooseWatch(panes.watch, number);
        const Subject subject = watchSubject(panes.watch);
        Change(subject, left.failures).run();
        left.lists.push_back(layoutOf(subject, true));
    }
    // Each watch once more: the other one's columns and sort are not its own.
    for (int number = watches - 1; number >= 0; --number) {
        chooseWatch(panes.watch, number);
        panes.watch.list().SendMessage(WM_TIMER, kAutoSortTimer);
        for (const std::string& line :
             differences(left.lists[static_cast<std::size_t>(number)], layoutOf(watchSubject(panes.watch), false)))
            left.failures.push_back("after another watch was shown, " + line);
    }
    for (const Subject& subject : gridSubjects(panes)) {
        Change(subject, left.failures).run();
        left.lists.push_back(layoutOf(subject, true));
    }
    return left;
}

std::vector<ListLayout> findLayouts(const ProofPanes& panes) {
    std::vector<ListLayout> found;
    for (int number = 0; number < static_cast<int>(watchLists().size()); ++number) {
        chooseWatch(panes.watch, number);
        panes.watch.list().SendMessage(WM_TIMER, kAutoSortTimer);  // the step that is due a second later
        found.push_back(layoutOf(watchSubject(panes.watch), false));
    }
    for (const Subject& subject : gridSubjects(panes)) found.push_back(layoutOf(subject, false));
    return found;
}

std::vector<std::string> differences(const ListLayout& left, const ListLayout& found) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < left.facts.size(); ++i) {
        const LayoutFact& was = left.facts[i];
        const LayoutFact is = i < found.facts.size() ? found.facts[i] : LayoutFact{was.name, "nothing"};
        if (was == is) continue;
        const std::size_t at = static_cast<std::size_t>(
            std::mismatch(was.value.begin(), was.value.end(), is.value.begin(), is.value.end()).first -
            was.value.begin());
        lines.push_back(left.list + ": " + was.name + ": left \"" + restFrom(was.value, at) + "\", found \"" +
                        restFrom(is.value, at) + "\"");
    }
    return lines;
}

}  // namespace terminal
