#include "host/panes/LevelsMenu.h"

namespace terminal {

namespace {

// An item of a level is kFirstLevelItem + level * kItemsOfLevel + what: a columnIndex or one of these.
constexpr int kItemsOfLevel = 0x100;
constexpr int kRiseItem = 0xF0, kFallItem = 0xF1, kNoneItem = 0xF2;
constexpr int kActiveItem = kFirstLevelItem + kItemsOfLevel * static_cast<int>(kOfferedSortLevels);
constexpr int kAgainItem = kActiveItem + 1;
constexpr int kClearItem = kActiveItem + 2;
constexpr UINT kColumnsInAStrip = 30;

UINT marked(bool on) { return on ? MF_STRING | MF_CHECKED : static_cast<UINT>(MF_STRING); }
UINT offered(bool on) { return on ? 0u : static_cast<UINT>(MF_GRAYED); }

bool enough(const CCommonListCtrl& list, std::size_t levels) {
    return levels > 0 && levels >= static_cast<std::size_t>((std::max)(0, list.m_nMinMultiSortColumns));
}

std::string headingOf(const CCommonListCtrl& list, int columnIndex) {
    return list.m_arrColumns[columnIndex].szColumnName;
}

// A submenu of one level, with its caption.
void appendLevel(CMenu& menu, CCommonListCtrl& list, const SortLevels& levels, std::size_t level) {
    const bool there = level < levels.size();
    const int base = kFirstLevelItem + static_cast<int>(level) * kItemsOfLevel;
    CMenu items;
    items.CreatePopupMenu();
    const auto add = [&](UINT flags, int what, const char* text) {
        items.AppendMenu(flags, static_cast<UINT_PTR>(base + what), text);
    };
    add(marked(there && levels[level].order < 0) | offered(there), kRiseItem, "Rising");
    add(marked(there && levels[level].order > 0) | offered(there), kFallItem, "Falling");
    add(MF_STRING | offered(there), kNoneItem, "None");
    items.AppendMenu(MF_SEPARATOR);
    const CHeaderCtrl* const header = list.GetHeaderCtrl();
    for (int i = 0; header && i < header->GetItemCount(); ++i) {
        const int columnIndex = list.GetOriginalColumnPosition(header->OrderToIndex(i));
        if (columnIndex < 0 || columnIndex >= kRiseItem) continue;
        const std::string heading = headingOf(list, columnIndex);
        const UINT strip = i && static_cast<UINT>(i) % kColumnsInAStrip == 0 ? MF_MENUBARBREAK : 0u;
        add(marked(there && levels[level].heading == heading) | strip, columnIndex, heading.c_str());
    }
    std::string caption = "Level " + std::to_string(level + 1);
    if (there) caption += ": " + levels[level].heading + (levels[level].order < 0 ? ", rising" : ", falling");
    menu.AppendMenu(MF_POPUP | offered(level <= levels.size()), reinterpret_cast<UINT_PTR>(items.Detach()),
                    caption.c_str());
}

}  // namespace

SortLevels levelsOf(const CCommonListCtrl& list) {
    SortLevels levels;
    for (INT_PTR i = 0; i < list.m_arrSortOrder.GetCount(); ++i) {
        const ColumnSortInfo& level = list.m_arrSortOrder[i];
        levels.push_back({static_cast<const char*>(level.csColumnName), level.iSortOrder});
    }
    return levels;
}

void showLevels(CCommonListCtrl& list) {
    if (!list.m_bMultiSortActive) return;
    list.SortListOnMultiplelevel();
    list.DrawHeaderSortImageForMultiSortMode(1, true);
    list.Invalidate(FALSE);
}

void setLevels(CCommonListCtrl& list, const SortLevels& levels, bool active) {
    const bool wasActive = list.m_bMultiSortActive != 0;
    list.m_arrSortOrder.RemoveAll();
    for (const SortLevel& level : levels) list.BuildSortColumnOrderArray(level.heading.c_str(), level.order);
    list.m_bMultiSortActive = active && enough(list, levels.size());
    if (list.m_bMultiSortActive) {
        list.m_bSortLocked = list.m_bSorted = 0;
        if (list.IsAutoSortEnabled()) {
            list.KillAutoSortTimer();
            list.SaveAutoSort();
        }
        showLevels(list);
    } else if (wasActive) {
        list.DrawHeaderSortImageForMultiSortMode(1, false);
    }
    list.SaveSortOrderProfile();
}

void appendLevels(CMenu& menu, CCommonListCtrl& list) {
    const SortLevels levels = levelsOf(list);
    CMenu items;
    items.CreatePopupMenu();
    for (std::size_t level = 0; level < kOfferedSortLevels; ++level) appendLevel(items, list, levels, level);
    items.AppendMenu(MF_SEPARATOR);
    const bool active = list.m_bMultiSortActive != 0;
    items.AppendMenu(marked(active) | offered(active || enough(list, levels.size())), kActiveItem,
                     "Sort by These Levels");
    items.AppendMenu(MF_STRING | offered(active), kAgainItem, "Sort Again\tCtrl+0");
    items.AppendMenu(MF_STRING | offered(!levels.empty()), kClearItem, "Clear Levels");
    menu.AppendMenu(MF_POPUP | offered(!list.m_bSortLocked), reinterpret_cast<UINT_PTR>(items.Detach()), "Sort Levels");
}

void runLevelItem(CCommonListCtrl& list, int item) {
    SortLevels levels = levelsOf(list);
    const bool active = list.m_bMultiSortActive != 0;
    if (item == kAgainItem) return showLevels(list);
    if (item == kClearItem) return setLevels(list, {}, false);
    if (item == kActiveItem) return setLevels(list, levels, !active);
    const auto level = static_cast<std::size_t>((item - kFirstLevelItem) / kItemsOfLevel);
    const int what = (item - kFirstLevelItem) % kItemsOfLevel;
    if (what == kRiseItem || what == kFallItem)
        chooseOrder(levels, level, what == kRiseItem ? -1 : 1);
    else if (what == kNoneItem)
        removeLevel(levels, level);
    else if (what < list.m_arrColumns.GetCount())
        chooseColumn(levels, level, headingOf(list, what));
    setLevels(list, levels, active);
}

}  // namespace terminal
