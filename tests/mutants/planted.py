"""The planted faults: where each goes, the exact text it replaces (which must stand there once), and which tests find
it. A fault is of a kind that was or could be made by hand, and a user would see it.

kind    tests
core    a googletest filter of core_tests; the others are run where these find nothing
shell   a test program and a filter of it; no others are run
proofs  the proof of a headless run that must say what is wrong: layout or find
"""
from dataclasses import dataclass

LIBRARY = "quor"
PLATFORM = "quor/platform"
# The windowless sources, for the random mutants.
CORE = [f"{LIBRARY}/*/core/*.cpp", f"{LIBRARY}/settings/*.cpp", "host/core/*.cpp", "servers/core/*.cpp",
        f"{PLATFORM}/base/*.cpp"]
# Tests by the clock fail on a busy machine without any fault: they find nothing here.
BY_THE_CLOCK = "ExpressionRoads.CostGrowsWithTheLength"


@dataclass
class Mutant:
    name: str
    kind: str
    file: str
    old: str
    new: str
    tests: str
    why: str


def core(name, file, old, new, tests, why):
    return Mutant(name, "core", f"{LIBRARY}/{file}", old, new, tests, why)


def shell(name, file, old, new, tests, why):
    return Mutant(name, "shell", f"{LIBRARY}/{file}", old, new, tests, why)


def restart(name, file, old, new, why):
    return Mutant(name, "proofs", f"{LIBRARY}/{file}", old, new, "layout", why)


def find(name, file, old, new, why):
    return Mutant(name, "proofs", f"{LIBRARY}/{file}", old, new, "find", why)


MUTANTS = [
    # ---- Twenty in the library: sorts
    core("sort-ties", "list/core/MergeSort.h", "elements[right]) > 0)", "elements[right]) >= 0)",
         "MergeSort*:RowSort*:GridSort*", "rows that compare equal change places with every sort"),
    core("sort-missing-number", "list/core/RowSort.cpp", "SortRule::singleColumn ? -1 : quor::atof(text)",
         "SortRule::singleColumn ? 0 : quor::atof(text)", "SortRules*:RowSort*", "a dash counts as 0 and not as -1"),
    core("sort-levels-date", "list/core/RowSort.cpp", "SortRule::singleColumn ? -date : date",
         "SortRule::singleColumn ? -date : -date", "SortRules*:RowSort*",
         "a date among several levels comes in the order of a click"),
    core("sort-natural-zeros", "list/core/NaturalCompare.cpp", "left.end - x > right.end - y ? -1 : 1",
         "left.end - x < right.end - y ? -1 : 1", "NaturalCompare*", "01 comes behind 1"),
    core("sort-grid-ties", "grid/core/GridSort.cpp", "if (order < 0) std::reverse(rows.begin(), rows.end());",
         "if (order > 0) std::reverse(rows.begin(), rows.end());", "GridSort*",
         "equal rows of a rising sort stand the other way round"),
    core("lock-text", "list/core/SortTexts.cpp", "{true, quor::atoi(*column), quor::atoi(*order)}",
         "{true, quor::atoi(*order), quor::atoi(*column)}", "Sort*Text*", "a lock comes back on another column"),
    core("levels-text", "list/core/SortTexts.cpp", 'active ? "#1" : "#0"', 'active ? "#0" : "#1"', "Sort*Text*",
         "levels come back switched off"),
    shell("grid-click-order", "grid/FilterListCtrlSort.cpp", "columnStayed ? -m_nSortOrder : -1", "-m_nSortOrder",
          "grid_tests:*Sort*:*LiveGridMix*", "the first click on another column turns the former column's order round"),
    shell("grid-rebuild-lock", "grid/FilterListCtrlFilter.cpp", "if (locked) goOn(&CFilterListCtrl::SortByLastColumnWithLock);", "",
          "grid_tests:*Sort*:*Filter*:*LiveGridMix*", "a filter takes a locked grid out of its order"),
    shell("list-sort-data", "list/CommonListCtrlSort.cpp", "if (slot.position != kFree) return false;", "",
          "list_tests:*Sort*", "rows with the same data stay where they stand"),
    # ---- filters and finding
    core("filter-greater", "grid/core/FilterTokens.cpp", "(value > m_greater)", "(value >= m_greater)", "FilterTokens*",
         ">5 lets 5 pass"),
    core("filter-several-limits", "grid/core/FilterTokens.cpp", "m_greater = std::min(m_greater, number);",
         "m_greater = std::max(m_greater, number);", "FilterTokens*", "of several > the greatest decides"),
    core("filter-removed", "grid/core/FilterStore.cpp", "    m_compiled.erase(m_compiled.begin() + i);\n", "",
         "GridMix*", "after a filter was emptied, the next column's is judged by its texts"),
    shell("filter-exact-once", "grid/FilterListCtrlFilter.cpp", "    if (walk.gone()) return;\n    MatchExact = 0;\n",
          "    if (walk.gone()) return;\n", "grid_tests:*Filter*:*LiveGridMix*", "an exact filter makes all later ones exact"),
    shell("filter-setter-mute", "grid/FilterListCtrlFilter.cpp", "        if (i + 1 == count) SetDoFilter(1);\n", "",
          "grid_tests:*Filter*:*LiveGridMix*", "several filters at once are never told to the owner"),
    shell("filter-reset-field", "grid/FilterListCtrlFilter.cpp", "    if (m_header.m_hWnd) m_header.ClearFilter(-1);\n",
          "", "grid_tests:*Filter*:*LiveGridMix*", "a filter that was reset still stands in its field"),
    # ---- what a row looks like, selection
    core("paint-alternate", "grid/core/CellPainting.cpp", "visual % 2 == 0", "visual % 2 != 0", "CellPainting*",
         "even rows have the odd rows' ground"),
    shell("checked-mark", "grid/FilterListCtrlSort.cpp", "if (marked != 0) m_grid.moveMarkTo(marked);",
          "if (marked == 0) m_grid.moveMarkTo(marked);", "grid_tests:*LiveGridMix*",
          "the mark stays behind when checked rows go to the top"),
    # ---- stored columns, watches
    core("profile-gap", "list/core/ColumnSetPlan.cpp", "itsPlace != place) return false",
         "itsPlace < place) return false", "ColumnSetPlan*", "a column that stands at two places is shown twice"),
    core("watch-texts", "lists/core/WatchTexts.cpp",
         "readTexts(fields, {&column.name, &column.idForm, &column.displayForm}",
         "readTexts(fields, {&column.name, &column.displayForm, &column.idForm}", "WatchTexts*",
         "a user column comes back with its two forms exchanged"),

    # ---- Five in trends and keywords
    core("trend-change-again", "grid/core/TrendStore.cpp", "if (!record || record->changeTime != change.time) continue;",
         "if (!record || record->changeTime == 0) continue;", "TrendStore*",
         "a cell that changed again loses its colour with the first change"),
    core("trend-refill", "grid/core/LiveRows.cpp", "    m_trends.clearRows();\n", "", "GridMix*",
         "rows of a refilled grid flash by what others showed"),
    core("keyword-folding", "list/core/Keywords.cpp", "m_pairs[i] = pairsOf(m_folded[i]);",
         "m_pairs[i] = pairsOf(viewOf(keyword));", "Keywords*", "a keyword in small letters is never found"),
    shell("trend-reverse", "grid/FilterListCtrlTrend.cpp", "m_parts->rows.mapIndexOfVisual(visual);",
          "m_parts->rows.mapIndexOfSlot(visual);", "grid_tests:Trends*",
          "in reverse display a row shows the trend of another"),
    shell("trend-fade-hidden", "grid/FilterListCtrlTrend.cpp", "cells.push_back({row->visual, column.iVisiblePosition});",
          "cells.push_back({row->visual, 0});", "grid_tests:Trends*", "a flash stays until its cell is painted anyhow"),

    # ---- Five that a list does not survive a restart with
    restart("restart-width", "list/CommonListCtrlProfile.cpp", "entry.width = widthOf(header, column.szColumnName);",
            "entry.width = widthOf(header, column.szColumnName) ? column.iWidth : 0;",
            "widths that the user dragged are lost"),
    restart("restart-lock-order", "list/CommonListCtrlSort.cpp", "    m_nLockSortOrder = lock.order;\n",
            "    m_nLockSortOrder = -lock.order;\n", "a locked order comes back turned round"),
    restart("restart-auto-sort", "list/CommonListCtrlAutoSort.cpp",
            "    writeListSetting(m_csListName, kOrderKey, text(m_nSortOrder));\n", "",
            "auto-sort comes back in the other order"),
    restart("restart-drag", "lists/MrktWatchListCtrlProfile.cpp",
            "column.place = shownAt[static_cast<std::size_t>(item)];", "column.place = item;",
            "a watch's dragged columns come back where they were"),
    restart("restart-levels", "list/core/SortTexts.cpp", 'part.Format("%d,", level.order);',
            'part.Format("%d,", -level.order);', "levels come back turned round"),

    # ---- tabs
    core("tabs-gap", "bars/core/TabStripLayout.cpp", "while (m_nFirstVisible >= 0 && item", "while (m_nFirstVisible > 0 && item",
         "TabStrip*", "a strip that grows hides its first tab"),
    core("tabs-sliver", "bars/core/TabStripLayout.cpp", "offset += slope() - tab.m_rect.Width();",
         "offset -= tab.m_rect.Width();", "TabStrip*", "scrolled tabs lie under the buttons"),
    core("tabs-copy", "bars/core/TabStrip.cpp", "text[length - 2] >= '1'", "text[length - 2] >= '0'", "TabStrip*",
         "a copy of Watch(0) becomes Watch(2)"),
    core("tabs-held", "bars/core/TabStrip.cpp", "now - m_dwLastRepeatTime < kTabRepeatDelay",
         "now < m_dwLastRepeatTime + kTabRepeatDelay", "TabStrip*", "a held button runs once in 49 days"),
    shell("tabs-equal", "bars/CustomTabCtrlEdit.cpp", "!text.IsEmpty() && text != strip.item(index).m_strText",
          "!text.IsEmpty()", "bars_tests:*Renaming*", "a name that stayed counts as a new one"),
    shell("tabs-capture", "bars/CustomTabCtrlInput.cpp", "OnCaptureChanged(CWnd*) { endPress(); }",
          "OnCaptureChanged(CWnd*) {}", "bars_tests:*Drag*", "a drag that Esc ended drops its tab"),
    # ---- splitters, bricks and tips
    core("splitter-closed", "platform/win/core/SplitterLayout.cpp", "if (part.size > 0) shown = &part;", "shown = &part;",
         "SplitterLayout*", "a closed last pane takes the room that is left"),
    core("shares-nearest", "bars/core/PaneShares.cpp", "(2 * sum * room + all) / (2 * all)", "sum * room / all",
         "PaneShares*", "panes lose pixels with each new size"),
    core("brick-name", "bars/core/BrickTexts.cpp", "title.Replace(oldCaption + separator, newCaption + separator);",
         "title.Replace(oldCaption, newCaption);", "BrickTexts*", "a new caption changes the value too"),
    core("tip-view", "list/core/CellTips.cpp", "whole.left < cell.view.left || whole.right", "whole.right", "CellTips*",
         "a cell behind the window's left edge has no tip"),

    # ---- Four that a user cannot find rows with
    find("find-case", "grid/core/FilterTokens.cpp", "i >= 'A' && i <= 'Z' ? i + 32 : i", "i",
         "small letters find nothing"),
    find("find-typing", "grid/FilterListCtrlFilterBar.cpp",
         "            AddToFilteredCols(columnIndex, text);\n    }\n    forwardToOwner(header);\n",
         "            AddToFilteredCols(columnIndex, text);\n    }\n", "a filter that was typed waits for a rebuild"),
    find("find-tab", "grid/FilterListCtrlFilterBar.cpp", "(backwards ? count - 1 : 1)", "(backwards ? 1 : count - 1)",
         "Tab goes to the field on the left"),
    find("find-offered", "grid/FilterListCtrlFilterBar.cpp",
         "if (!text.IsEmpty() && seen.insert(text.GetString()).second) visit", "if (!text.IsEmpty()) visit",
         "the pop-up offers a value once for each row"),
]
